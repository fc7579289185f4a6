// The descriptors that the SNMP library reads from.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_SNMP_READ_SET_H
#define BASE_SNMP_READ_SET_H

#include <net-snmp/net-snmp-config.h>
// The library's types come ahead of this.
#include <net-snmp/library/large_fd_set.h>
#include <sys/select.h>

namespace quelm {

/// A set that grows. The library's other kind has room for the first 1,024 descriptors of the process only.
class SnmpReadSet {
public:
    SnmpReadSet() { netsnmp_large_fd_set_init(&set_, FD_SETSIZE); }
    ~SnmpReadSet() { netsnmp_large_fd_set_cleanup(&set_); }
    SnmpReadSet(const SnmpReadSet&) = delete;
    SnmpReadSet& operator=(const SnmpReadSet&) = delete;

    netsnmp_large_fd_set* get() { return &set_; }

private:
    netsnmp_large_fd_set set_{};
};

} // namespace quelm

#endif
