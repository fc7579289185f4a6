// Switches that make the fake host's operations fail.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_FAULTS_H
#define TESTS_SUPPORT_FAULTS_H

#include <string>
#include <string_view>
#include <vector>

namespace fake {

/// The operations of the host that can be told to fail.
enum class Op {
    parse,
    registerResource,
    setProperty,
    readProperty,
    createRow,
    createChooser,
    readCell,
    countSelection,
    createDirectory,
    openDatabase,
    createDatabase,
    reopenDatabase,
    closeDatabase,
    saveRecord,
    serializeDatabase,
    countRecords,
    openSession,
    bindSession,
    requestSearch,
    readDeviceTable,
    readDeviceObject,
};

/// Which calls fail. A fault counts the calls that it applies to from the moment it is switched on.
class Faults {
public:
    /// Every call of `op` fails from now on.
    void fail(Op op) { faults_.push_back({op, {}, 0, 0}); }
    /// Every call of `op` on `target` (a widget's name, a path, a key) fails from now on.
    void failOn(Op op, std::string target) { faults_.push_back({op, std::move(target), 0, 0}); }
    /// Only the `nth` call of `op` fails, counted from 1.
    void failNth(Op op, int nth) { faults_.push_back({op, {}, nth, 0}); }

    /// The operation's own question: does this call fail?
    bool hits(Op op, std::string_view target)
    {
        bool hit = false;
        for (Fault& fault : faults_) {
            if (fault.op != op || (!fault.target.empty() && fault.target != target))
                continue;
            ++fault.calls;
            hit = hit || fault.nth == 0 || fault.calls == fault.nth;
        }
        return hit;
    }

    void clear() { faults_.clear(); }

private:
    struct Fault {
        Op op;
        std::string target;
        int nth;
        int calls;
    };

    std::vector<Fault> faults_;
};

} // namespace fake

#endif
