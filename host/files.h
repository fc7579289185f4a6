// The host's file helpers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HOST_FILES_H
#define HOST_FILES_H

#pragma GCC visibility push(default)

/// File-system checks that need no object.
class __attribute__((visibility("default"))) FileObject {
public:
    /// True when something of that name exists.
    static bool doesPathExist(char* path);

    /// Creates one directory, whose parent exists. `mode` is a decimal number whose digits are
    /// read as octal permission digits: 777 stands for rwxrwxrwx, less the process's umask.
    /// Returns false when the directory was not created.
    static bool createDirectory(char* path, int mode);
};

#pragma GCC visibility pop

#endif
