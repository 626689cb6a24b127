#pragma once

#include <cstdlib>
#include <fstream>
#include <malloc.h>
#include <string>
#include <string_view>

namespace quillmere::bench {

/// Gives unused memory back and makes the system count the largest memory of this process afresh.
inline void ForgetLargestMemory()
{
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";
}

/// Largest memory of the process since then, in KB.
inline double LargestMemory()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:"))
            return std::strtod(line.c_str() + std::string_view("VmHWM:").size(), nullptr);
    return 0;
}

} // namespace quillmere::bench
