#pragma once

#include "frame/TextParameter.h"

#include <string>

namespace quillmere {

/// A library of others that is loaded when it is first wanted, and stays: with all that it brings along it would take
/// its part of every start, and few sessions come to it.
class LateLibrary {
public:
    /// Takes the name by which the system knows the library, with its number.
    explicit LateLibrary(const char* file);
    /// Throws Failure if there is no such library, or no such function in it.
    void* Find(const char* function) const;

private:
    void* loaded = nullptr;
    std::string why; ///< it is not
};

/// A function of such a library, called as if it were linked.
template<const LateLibrary& (*Library)(), TextParameter Name, class Function>
struct LateFunction {
    operator Function*() const
    {
        static auto* const found = reinterpret_cast<Function*>(Library().Find(Name.text));
        return found;
    }
};

} // namespace quillmere
