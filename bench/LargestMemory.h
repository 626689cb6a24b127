#pragma once

#include "Require.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

/// The largest memory of work that is done in a process of its own: this program, started anew for that work alone, so
/// that nothing counts which others have taken or left behind.
namespace quillmere::bench {

/// Work that can be measured, by its name: a batch of so many documents, out of a database that has been made for it.
struct MeasuredWork {
    std::string_view name;
    std::function<void(int documents, const std::filesystem::path& database)> run;
};

constexpr std::string_view MeasureMemory = "--largest-memory-of";

/// Largest memory of this process so far, in KB.
inline double LargestMemory()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:"))
            return std::strtod(line.c_str() + std::string_view("VmHWM:").size(), nullptr);
    return 0;
}

/// True if this process has been started for such work: it has done it, and said what it took.
inline bool HasMeasuredMemory(int argc, char** argv, std::initializer_list<MeasuredWork> works)
{
    if (argc != 5 || argv[1] != MeasureMemory)
        return false;
    for (const MeasuredWork& work : works)
        if (work.name == argv[2])
            work.run(std::atoi(argv[3]), argv[4]);
    fmt::print("{}\n", LargestMemory());
    return true;
}

/// Largest memory of a process that does this work and nothing else, in KB.
inline double LargestMemoryOf(std::string_view work, int documents, const std::filesystem::path& database)
{
    const std::string command =
        fmt::format("'{}' {} {} {} '{}'", std::filesystem::read_symlink("/proc/self/exe").string(), MeasureMemory, work,
                    documents, database.string());
    std::FILE* const told = ::popen(command.c_str(), "r");
    Require(told != nullptr, "a process of its own can be started");
    double most = 0;
    Require(std::fscanf(told, "%lf", &most) == 1 && ::pclose(told) == 0 && most > 0, command);
    return most;
}

/// Compares a batch of 10 with one of 1,000. `made(documents)` gives the path of a database for so many.
template<class Made>
void CompareLargestMemory(benchmark::State& state, std::string_view work, Made made)
{
    for (auto _ : state) {
        const double ofTen = LargestMemoryOf(work, 10, made(10));
        const double ofThousand = LargestMemoryOf(work, 1000, made(1000));
        state.counters["KB of 10"] = ofTen;
        state.counters["KB of 1000"] = ofThousand;
        state.counters["ratio"] = ofThousand / ofTen;
    }
}

} // namespace quillmere::bench
