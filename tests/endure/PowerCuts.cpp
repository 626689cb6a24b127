// The power goes at any moment. What the disk then holds is built from the calls that reached it: what was synced, and
// of the rest nothing, all, the first part or any part, torn between sectors. What the program had told to be done is
// there, and what it was about is there whole or not at all.
#include "SystemCalls.h"
#include "Trial.h"
#include "Work.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <fmt/format.h>
#include <memory>

namespace quillmere::endure {
namespace {

struct Event {
    Call::Kind kind{};
    std::string file, target, data;
    std::int64_t at = 0;
    bool makes = false, empties = false;
    std::size_t stepsDone = 0;
};

/// Writes down what happens to the files.
class Recorder : public CallWatcher {
public:
    void After(const Call& call) override
    {
        events.push_back({call.kind, std::string(call.file), std::string(call.target), std::string(call.data), call.at,
                          call.makes, call.empties, stepsDone});
    }

    std::vector<Event> events;
    std::size_t stepsDone = 0;
};

/// A disk that keeps for certain only what was synced to it.
class Disk {
public:
    /// Begins with all that lies in a folder whose files have the names that they have in another.
    Disk(const std::filesystem::path& folder, const std::filesystem::path& as)
    {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
            if (entry.is_regular_file()) {
                auto file = std::make_shared<File>();
                file->durable = test::Content(entry.path());
                durable[(as / std::filesystem::relative(entry.path(), folder)).string()] = file;
            }
        names = durable;
    }

    /// Planted: what is synced is not.
    void Lie() { lies = true; }

    void Take(const Event& event)
    {
        const auto found = names.find(event.file);
        File* const file = found == names.end() ? nullptr : found->second.get();
        switch (event.kind) {
        case Call::Kind::Open:
            if (event.makes)
                Name({event.file, std::make_shared<File>()});
            else if (event.empties && file != nullptr)
                file->waiting.push_back({0, {}, true});
            break;
        case Call::Kind::Write:
            if (file != nullptr)
                file->waiting.push_back({static_cast<std::size_t>(event.at), event.data, false});
            break;
        case Call::Kind::Truncate:
            if (file != nullptr)
                file->waiting.push_back({static_cast<std::size_t>(event.at), {}, true});
            break;
        case Call::Kind::Sync:
            if (lies)
                break;
            if (file != nullptr)
                file->Sync();
            else
                SyncFolder(event.file);
            break;
        case Call::Kind::SyncAll:
            // The content of all files; what the file system knows of names may come later.
            for (const auto& [name, any] : names)
                if (!lies)
                    any->Sync();
            break;
        case Call::Kind::Rename:
            if (file != nullptr) {
                // One change: both names, or none.
                waiting.push_back({{event.target, found->second}, {event.file, nullptr}});
                names[event.target] = found->second;
                names.erase(event.file);
            }
            break;
        case Call::Kind::Remove:
            Name({event.file, nullptr});
            break;
        case Call::Kind::MakeFolder:
        case Call::Kind::Close:
            break;
        }
    }

    /// Puts into a folder what a cut of the power leaves. Files outside of `as` are left out.
    void Cut(std::mt19937_64& random, const std::filesystem::path& folder, const std::filesystem::path& as) const
    {
        Names kept = durable;
        const std::size_t changes = random() % 3 == 0 ? waiting.size() : random() % (waiting.size() + 1);
        for (std::size_t change = 0; change < changes; ++change)
            for (const auto& [name, file] : waiting[change])
                Put(kept, name, file);
        std::filesystem::remove_all(folder);
        for (const auto& [name, file] : kept) {
            const std::filesystem::path path = folder / std::filesystem::relative(name, as);
            std::filesystem::create_directories(path.parent_path());
            test::Store(path, file->After(random));
        }
    }

private:
    struct Change {
        std::size_t at; ///< the new length of one that cuts off
        std::string data;
        bool cutsOff;
    };
    struct File {
        std::string durable;
        std::vector<Change> waiting;

        void Sync()
        {
            for (const Change& change : waiting)
                Apply(durable, change);
            waiting.clear();
        }
        static void Apply(std::string& content, const Change& change)
        {
            if (change.cutsOff) {
                content.resize(change.at);
                return;
            }
            if (content.size() < change.at + change.data.size())
                content.resize(change.at + change.data.size());
            content.replace(change.at, change.data.size(), change.data);
        }
        /// Some of the sectors of a write.
        static void Tear(std::string& content, const Change& change, std::mt19937_64& random)
        {
            constexpr std::size_t Sector = 512;
            for (std::size_t at = 0; at < change.data.size();) {
                const std::size_t size = std::min(change.data.size() - at, Sector - (change.at + at) % Sector);
                if (random() % 2 == 0)
                    Apply(content, {change.at + at, change.data.substr(at, size), false});
                at += size;
            }
        }
        std::string After(std::mt19937_64& random) const
        {
            enum Way { Nothing, All, FirstPart, AnyPart };
            std::string content = durable;
            const auto way = static_cast<Way>(random() % 4);
            const std::size_t first = way == Nothing     ? 0
                                      : way == FirstPart ? random() % (waiting.size() + 1)
                                                         : waiting.size();
            for (std::size_t change = 0; change < first; ++change)
                if (way != AnyPart)
                    Apply(content, waiting[change]);
                else if (waiting[change].cutsOff ? random() % 2 == 0 : random() % 3 == 0)
                    Apply(content, waiting[change]);
                else if (!waiting[change].cutsOff && random() % 2 == 0)
                    Tear(content, waiting[change], random);
            if (way == FirstPart && first < waiting.size() && !waiting[first].cutsOff)
                Tear(content, waiting[first], random);
            return content;
        }
    };
    using Names = std::map<std::string, std::shared_ptr<File>>;
    /// A change of names; no file for one that goes.
    using Naming = std::vector<std::pair<std::string, std::shared_ptr<File>>>;

    static void Put(Names& names, const std::string& name, const std::shared_ptr<File>& file)
    {
        if (file == nullptr)
            names.erase(name);
        else
            names[name] = file;
    }
    void Name(const std::pair<std::string, std::shared_ptr<File>>& change)
    {
        Put(names, change.first, change.second);
        waiting.push_back({change});
    }
    /// The names in a folder last. Those before them in other folders do, too: a file system keeps their order.
    void SyncFolder(const std::string& folder)
    {
        std::size_t last = 0;
        for (std::size_t change = 0; change < waiting.size(); ++change)
            if (std::filesystem::path(waiting[change].front().first).parent_path() == folder)
                last = change + 1;
        for (std::size_t change = 0; change < last; ++change)
            for (const auto& [name, file] : waiting[change])
                Put(durable, name, file);
        waiting.erase(waiting.begin(), waiting.begin() + static_cast<std::ptrdiff_t>(last));
    }

    Names durable, names;
    std::vector<Naming> waiting;
    bool lies = false;
};

std::vector<Event> RecordJob(const Work& work, std::size_t job)
{
    work.SetDesk(job);
    Recorder recorder;
    const Watch watch(work.Desk(), recorder);
    work.Do(job, [&](std::size_t step) { recorder.stepsDone = step + 1; });
    return recorder.events;
}

} // namespace

Findings PowerCuts(const Assignment& assignment)
{
    const Work work(assignment.folder);
    std::mt19937_64 random(assignment.seed);
    Progress progress;
    Findings findings;
    const auto cutsOfAJob = assignment.count / static_cast<std::int64_t>(work.Jobs().size()) + 1;
    const std::filesystem::path left = assignment.folder / "left";
    const std::filesystem::path database = left / std::filesystem::relative(work.ClientDatabase(), work.Desk());
    for (std::size_t job = 0; job < work.Jobs().size(); ++job) {
        const std::vector<Event> events = RecordJob(work, job);
        std::vector<std::size_t> cuts(static_cast<std::size_t>(cutsOfAJob));
        for (std::size_t& cut : cuts)
            cut = random() % (events.size() + 1);
        cuts.front() = events.size(); // the job is done, and nothing of it may wait any more
        std::ranges::sort(cuts);
        Disk disk(work.Before(job), work.Desk());
        if (assignment.planted)
            disk.Lie();
        std::size_t at = 0;
        for (const std::size_t cut : cuts) {
            for (; at < cut; ++at)
                disk.Take(events[at]);
            disk.Cut(random, left, work.Desk());
            progress.At(++findings.tried);
            const Rehearsed& rehearsed = work.Of(job);
            const std::size_t done = cut == 0               ? 0
                                     : cut == events.size() ? rehearsed.after.size()
                                                            : events[cut].stepsDone;
            const auto fault = [&](const std::string& words) {
                findings.faults.push_back(
                    fmt::format("{}, cut {} of {}: {}", work.Jobs()[job].name, cut, events.size(), words));
            };
            try {
                const ClientState found = ReadClientState(database);
                if (!rehearsed.MayHold(found, done))
                    fault(fmt::format("after {} steps: {}", done,
                                      DifferenceOf(rehearsed.states[rehearsed.Done(done)], found)));
                if (const std::string torn = work.TornFile(job, left); !torn.empty())
                    fault(torn);
                if (const auto missing = work.MissingDocuments(job, left); cut == events.size() && !missing.empty())
                    fault(missing.front() + " was told to be written, and is not there");
            } catch (const std::exception& error) {
                fault(error.what());
            }
        }
    }
    return findings;
}

} // namespace quillmere::endure
