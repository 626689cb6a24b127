#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace quillmere::test {

/// Sets a variable of the environment, or with a null value takes it out, for the length of a test.
class Variable {
public:
    Variable(const char* variable, const char* value) : name(variable)
    {
        if (const char* old = std::getenv(variable))
            before = old;
        if (value != nullptr)
            ::setenv(variable, value, 1);
        else
            ::unsetenv(variable);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable()
    {
        if (before)
            ::setenv(name, before->c_str(), 1);
        else
            ::unsetenv(name);
    }

private:
    const char* name;
    std::optional<std::string> before;
};

} // namespace quillmere::test
