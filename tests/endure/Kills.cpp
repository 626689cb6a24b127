// The program is killed at any moment of its work, as by the system when it runs out of memory. What it had told to be
// done is there, and what it was about is there whole or not at all.
#include "Trial.h"
#include "Work.h"

#include <algorithm>
#include <fmt/format.h>

namespace quillmere::endure {
Findings Kills(const Assignment& assignment)
{
    const Work work(assignment.folder);
    std::mt19937_64 random(assignment.seed);
    Progress progress;
    Findings findings;
    while (findings.tried < assignment.count) {
        progress.At(findings.tried);
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
        if (!ending.ended && !ending.WasStopped()) {
            fault(ending.words + " " + ending.told);
            continue;
        }
        try {
            const ClientState found = ReadClientState(work.ClientDatabase());
            const auto done = static_cast<std::size_t>(std::max(0LL, test::LastNumberTold(ending.told)));
            if (!rehearsed.MayHold(found, done))
                fault(fmt::format("after step {} of {}: {}", done, rehearsed.after.size(),
                                  DifferenceOf(rehearsed.states[rehearsed.Done(done)], found)));
            if (const std::string torn = work.TornFile(job, work.Desk()); !torn.empty())
                fault(torn);
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
