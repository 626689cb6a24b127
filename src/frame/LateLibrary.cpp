#include "frame/LateLibrary.h"

#include "frame/Failure.h"

#include <dlfcn.h>
#include <fmt/format.h>

namespace quillmere {

LateLibrary::LateLibrary(const char* file) : loaded(::dlopen(file, RTLD_NOW | RTLD_LOCAL))
{
    if (loaded == nullptr)
        why = ::dlerror();
}

void* LateLibrary::Find(const char* function) const
{
    void* const found = loaded == nullptr ? nullptr : ::dlsym(loaded, function);
    if (found == nullptr)
        throw Failure(0, loaded == nullptr ? why : fmt::format("{} is missing in a library", function));
    return found;
}

} // namespace quillmere
