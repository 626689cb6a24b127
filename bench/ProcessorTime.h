#pragma once

#include <cstdlib>
#include <ctime>
#include <string_view>

namespace quillmere::bench {

/// The processor time that this process has taken since its beginning, which other work on the machine does not
/// change much; or the time by the clock, for what another process does meanwhile (QUILLMERE_CLOCK=wall).
class ProcessorTime {
public:
    double Seconds() const { return Now() - begin; }

private:
    static double Now()
    {
        static const char* const asked = std::getenv("QUILLMERE_CLOCK");
        static const bool byTheClock = asked != nullptr && std::string_view(asked) == "wall";
        std::timespec now{};
        clock_gettime(byTheClock ? CLOCK_MONOTONIC : CLOCK_PROCESS_CPUTIME_ID, &now);
        return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
    }
    double begin = Now();
};

} // namespace quillmere::bench
