// An environment variable that a test may change.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_KEPT_VARIABLE_H
#define TESTS_SUPPORT_KEPT_VARIABLE_H

#include <cstdlib>
#include <optional>
#include <string>

/// Puts an environment variable back when a test ends.
class KeptVariable {
public:
    explicit KeptVariable(const char* variable) : name_(variable)
    {
        if (const char* given = std::getenv(name_))
            value_ = given;
    }
    ~KeptVariable()
    {
        if (value_)
            setenv(name_, value_->c_str(), 1);
        else
            unsetenv(name_);
    }
    KeptVariable(const KeptVariable&) = delete;
    KeptVariable& operator=(const KeptVariable&) = delete;

private:
    const char* name_;
    std::optional<std::string> value_;
};

#endif
