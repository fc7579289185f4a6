// An environment variable that a test may change.
#ifndef TESTS_SUPPORT_KEPT_VARIABLE_H
#define TESTS_SUPPORT_KEPT_VARIABLE_H

#include <cstdlib>
#include <optional>
#include <string>

/// Puts an environment variable back when a test ends.
class KeptVariable {
public:
    explicit KeptVariable(const char* variable) : name(variable)
    {
        if (const char* given = std::getenv(name))
            value = given;
    }
    ~KeptVariable()
    {
        if (value)
            setenv(name, value->c_str(), 1);
        else
            unsetenv(name);
    }
    KeptVariable(const KeptVariable&) = delete;
    KeptVariable& operator=(const KeptVariable&) = delete;

private:
    const char* name;
    std::optional<std::string> value;
};

#endif
