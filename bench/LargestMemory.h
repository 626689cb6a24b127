#pragma once

#include <benchmark/benchmark.h>

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

/// Measures the largest memory while a batch of 10 is made, and while one of 1,000 is, once what is read only once has
/// been read.
template<class BatchOf>
void CompareLargestMemory(benchmark::State& state, BatchOf largestMemoryOf)
{
    for (auto _ : state) {
        largestMemoryOf(10);
        const double ofTen = largestMemoryOf(10);
        const double ofThousand = largestMemoryOf(1000);
        state.counters["KB of 10"] = ofTen;
        state.counters["KB of 1000"] = ofThousand;
        state.counters["ratio"] = ofThousand / ofTen;
    }
}

} // namespace quillmere::bench
