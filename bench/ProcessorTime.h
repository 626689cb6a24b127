#pragma once

#include <ctime>

namespace quillmere::bench {

/// The processor time that this process has taken since its beginning, which other work on the machine does not
/// change much.
class ProcessorTime {
public:
    double Seconds() const { return Now() - begin; }

private:
    static double Now()
    {
        std::timespec now{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
        return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
    }
    double begin = Now();
};

} // namespace quillmere::bench
