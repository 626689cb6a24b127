#pragma once

#include "support/Process.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What the program is put through to see that nothing is lost. Each trial does one thing to it many times, at random
/// places that its seed decides, and says what did not hold.
namespace quillmere::endure {

/// What a run of a trial came to.
struct Findings {
    std::int64_t tried = 0;
    std::vector<std::string> faults; ///< what did not hold, each with what it takes to see it again
};

/// What a run is asked for.
struct Assignment {
    std::filesystem::path folder; ///< empty, for this run alone
    std::int64_t count = 0;       ///< so many tries, or few more
    std::uint64_t seed = 0;
    /// The run is to see its own work hurt on purpose: it must find faults, or it could never find any.
    bool planted = false;
    bool quick = false; ///< a trial that goes through all of something takes a part of it
};

/// Says on stderr once a minute how far a trial has come.
class Progress {
public:
    void At(std::int64_t tried);

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point told = Clock::now();
};

struct Trial {
    std::string_view name;
    std::string_view holds;    ///< what is promised
    std::int64_t whole, quick; ///< tries of the whole run and of the quick one
    std::int64_t planted;      ///< tries in which a planted fault must show
    Findings (*run)(const Assignment&);
};

/// Every trial, in the order in which they are told.
std::span<const Trial> Trials();

Findings Kills(const Assignment& assignment);
Findings FailingCalls(const Assignment& assignment);
Findings FullDisks(const Assignment& assignment);
Findings PowerCuts(const Assignment& assignment);
Findings DamagedDatabases(const Assignment& assignment);
Findings Parsers(const Assignment& assignment);
Findings RandomHands(const Assignment& assignment);

using test::Ending, test::InAProcess, test::Tell;

} // namespace quillmere::endure
