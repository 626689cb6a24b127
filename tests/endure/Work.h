#pragma once

#include "ClientState.h"
#include "Script.h"
#include "Stage.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace quillmere::endure {

/// One job of a user's year, as a scenario. Jobs follow one another: each finds what the one before has left.
struct Job {
    std::string name;
    scenario::Script script;
};

/// How a job went.
struct Doing {
    std::vector<std::string> notes;    ///< what the status bar and the list of the last batch said, in order
    std::vector<std::string> messages; ///< boxes that came up
    std::string stuck;                 ///< why a step could not be done; empty if all were

    friend bool operator==(const Doing&, const Doing&) = default;
};

/// What the store went through in each job, done without a fault.
struct Rehearsed {
    std::vector<ClientState> states; ///< each that was committed, in order; first the one before the job
    std::vector<std::uint64_t> digests;
    std::vector<std::size_t> after; ///< each step: the place of its last state
    std::chrono::microseconds took{};
    Doing doing;

    /// The state when so many steps are done.
    std::size_t Done(std::size_t steps) const { return steps == 0 ? 0 : after[std::min(steps, after.size()) - 1]; }
    /// True if a state is one that the store may be in when so many steps are done and the next one has begun.
    bool MayHold(const ClientState& state, std::size_t done) const;
};

/// The jobs, and the desk on which they are done: the same folder each time, put back to how a job found it.
class Work {
public:
    /// Does every job once in a folder below the given one.
    explicit Work(const std::filesystem::path& folder);

    const std::vector<Job>& Jobs() const { return jobs; }
    const Rehearsed& Of(std::size_t job) const { return rehearsed.at(job); }
    const std::filesystem::path& Desk() const { return desk; }
    std::filesystem::path ClientDatabase() const;
    std::filesystem::path Before(std::size_t job) const { return folder / ("before-" + std::to_string(job)); }
    std::filesystem::path After(std::size_t job) const { return Before(job + 1); }

    /// Makes the desk what the job found.
    void SetDesk(std::size_t job) const;
    /// Does a job on the desk. What happens is told as it happens. It stops at a step that a user could not do.
    Doing Do(std::size_t job, const std::function<void(std::size_t step)>& done = {}) const;
    /// A file in a folder, such as the desk, that is neither as the job found it nor as it was to be, nor whole in
    /// itself: in words, empty if there is none. The database is not looked at.
    std::string TornFile(std::size_t job, const std::filesystem::path& in) const;
    /// The documents that the job makes and that are not in the folder.
    std::vector<std::string> MissingDocuments(std::size_t job, const std::filesystem::path& in) const;
    /// Opens the program once more on what is there and closes it; in words what is wrong with that.
    std::string OpenOnceMore() const;

private:
    scenario::Folders AtDesk() const;
    /// Writes what the job is given, which is nobody's work.
    void Give(std::size_t job) const;
    /// Does a job and tells what the store goes through.
    void TellRehearsal(std::size_t job, int tell) const;
    Rehearsed Rehearse(std::size_t job) const;

    std::filesystem::path folder, desk;
    std::vector<Job> jobs;
    std::vector<Rehearsed> rehearsed;
};

} // namespace quillmere::endure
