// The program is killed at any moment of its work, as by the system when it runs out of memory. What it had told to be
// done is there, and what it was about is there whole or not at all.
#include "Trial.h"
#include "Work.h"

#include <charconv>
#include <fmt/format.h>

namespace quillmere::endure {
namespace {

/// How many steps were told to be done.
std::size_t StepsTold(const std::string& told)
{
    std::size_t done = 0;
    for (std::size_t at = 0, end = 0; (end = told.find('\n', at)) != std::string::npos; at = end + 1)
        std::from_chars(told.data() + at, told.data() + end, done);
    return done;
}

} // namespace

Findings Kills(const Assignment& assignment)
{
    const Work work(assignment.folder);
    std::mt19937_64 random(assignment.seed);
    Findings findings;
    while (findings.tried < assignment.count) {
        const std::size_t job = random() % work.Jobs().size();
        const Rehearsed& rehearsed = work.Of(job);
        const auto after = std::chrono::microseconds(random() % static_cast<std::uint64_t>(rehearsed.took.count()));
        work.SetDesk(job);
        const Ending ending = InAProcess(
            [&](int tell) {
                // A program that lies says of each step that it is done before it has begun.
                if (assignment.planted)
                    Tell(tell, std::to_string(rehearsed.after.size()));
                work.Do(job, [&](std::size_t step) { Tell(tell, std::to_string(step + 1)); });
            },
            after);
        ++findings.tried;
        const auto fault = [&](const std::string& words) {
            findings.faults.push_back(
                fmt::format("{} killed after {} us: {}", work.Jobs()[job].name, after.count(), words));
        };
        if (!ending.ended && ending.words != "stopped") {
            fault(ending.words + " " + ending.told);
            continue;
        }
        try {
            const ClientState found = ReadClientState(work.ClientDatabase());
            const std::size_t done = StepsTold(ending.told);
            if (!rehearsed.MayHold(found, done))
                fault(fmt::format("after step {} of {}: {}", done, rehearsed.after.size(),
                                  DifferenceOf(rehearsed.states[rehearsed.Done(done)], found)));
        } catch (const std::exception& error) {
            fault(error.what());
        }
        // The next start finds nothing to complain of. Not each time: it takes longer than the kill.
        if (random() % 8 == 0) {
            const Ending opening =
                InAProcess([&](int tell) { Tell(tell, work.OpenOnceMore()); }, std::chrono::seconds(20));
            if (!opening.ended || opening.told != "\n")
                fault("the next start: " + opening.words + " " + opening.told);
        }
    }
    return findings;
}

} // namespace quillmere::endure
