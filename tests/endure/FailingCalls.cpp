// The n-th system call of a job fails, or the disk is full from the n-th on. The job ends in a message or in success;
// the database and every other file are whole; success without a word means that all is stored.
#include "SystemCalls.h"
#include "Trial.h"
#include "Work.h"
#include "edition/Edition.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fmt/format.h>
#include <set>

namespace quillmere::endure {
namespace {

/// How a call is made to fail.
struct Fault {
    std::int64_t at = 0; ///< the first call that fails, from 1
    int error = EIO;
    bool lasting = false; ///< writes fail from there on: the disk is full
    bool silent = false;  ///< planted: a write is said to have succeeded, and has not
};

class Failing : public CallWatcher {
public:
    explicit Failing(const Fault& wanted) : fault(wanted) {}

    int Before(const Call& call) override
    {
        const bool needsRoom = call.kind == Call::Kind::Write || call.makes;
        if (fault.lasting && !needsRoom)
            return 0;
        ++count;
        return (fault.lasting ? count >= fault.at : count == fault.at) ? fault.error : 0;
    }
    /// True once a call has failed.
    bool Reached() const { return count >= fault.at; }

private:
    Fault fault;
    std::int64_t count = 0;
};

/// What a job with a fault in it came to, as its process tells it.
struct Outcome {
    bool reached = false, quiet = false;
};

/// Every text that a field had in the course of the job; an empty one for a record that was not there.
using Texts = std::map<std::string, std::set<std::string>>;

Texts TextsOf(const Rehearsed& rehearsed)
{
    Texts texts;
    for (const ClientState& state : rehearsed.states)
        for (const auto& [field, text] : state.fields)
            texts[field].insert(text);
    for (auto& [field, known] : texts)
        for (const ClientState& state : rehearsed.states)
            if (!state.fields.contains(field))
                known.emplace();
    return texts;
}

std::string Unknown(const Texts& texts, const ClientState& found)
{
    for (const auto& [field, text] : found.fields)
        if (const auto known = texts.find(field); known == texts.end() || !known->second.contains(text))
            return fmt::format("{} holds \"{}\", which it never did", field, text);
    for (const auto& [field, known] : texts)
        if (!known.contains("") && !found.fields.contains(field))
            return field + " has gone";
    return {};
}

/// What is wrong with what was told of the documents; empty if those that are missing were told of.
std::string Untold(const Work& work, std::size_t job, const Doing& doing)
{
    for (const std::string& document : work.MissingDocuments(job, work.Desk())) {
        for (const std::string& note : doing.notes)
            if (note.find(document) != std::string::npos)
                return document + " is told to be written, and is not there";
        if (doing == work.Of(job).doing)
            return "no word of " + document + ", which is not there";
    }
    return {};
}

/// Does the job with the fault and looks at what is left. False if there was no such call any more.
bool TryOne(const Work& work, std::size_t job, const Fault& fault, const Texts& texts, Findings& findings)
{
    constexpr auto Patience = std::chrono::seconds(60);
    work.SetDesk(job);
    const Ending ending = InAProcess(
        [&](int tell) {
            Failing failing(fault);
            Doing doing;
            {
                const Watch watch(work.Desk(), failing);
                doing = work.Do(job);
            }
            const Doing& rehearsed = work.Of(job).doing;
            const bool quiet = (doing.messages == rehearsed.messages && doing.stuck == rehearsed.stuck) || fault.silent;
            Tell(tell, fmt::format("{} {} {}{}", failing.Reached(), quiet, doing.stuck,
                                   doing.messages.empty() ? "" : " " + doing.messages.back()));
            Tell(tell, "documents: " + Untold(work, job, doing));
        },
        Patience);
    ++findings.tried;
    const auto fail = [&](const std::string& words) {
        findings.faults.push_back(fmt::format("{}, call {} ({}{}): {}", work.Jobs()[job].name, fault.at,
                                              fault.lasting ? "full disk" : "error ", fault.error, words));
    };
    if (!ending.ended) {
        fail(ending.words + " " + ending.told);
        return true;
    }
    const bool reached = ending.told.starts_with("true"), quiet = ending.told.find(" true ") < 6;
    try {
        const ClientState found = ReadClientState(work.ClientDatabase());
        if (quiet && !(found == work.Of(job).states.back()))
            fail("no word of what is not stored: " + DifferenceOf(work.Of(job).states.back(), found));
        if (const std::string unknown = Unknown(texts, found); !unknown.empty())
            fail(unknown + " after " + ending.told);
        if (const std::string torn = work.TornFile(job, work.Desk()); !torn.empty())
            fail(torn);
        constexpr std::string_view Documents = "\ndocuments: ";
        const std::string untold = ending.told.substr(ending.told.rfind(Documents) + Documents.size());
        if (untold.size() > 1)
            fail(untold);
    } catch (const std::exception& error) {
        fail(error.what());
    }
    return reached;
}

/// Goes through the calls of each job, one after the other, until a job passes.
Findings GoThrough(const Assignment& assignment, const std::vector<Fault>& kinds)
{
    const Work work(assignment.folder);
    std::mt19937_64 random(assignment.seed);
    Progress progress;
    Findings findings;
    for (std::size_t job = 0; job < work.Jobs().size(); ++job) {
        const Texts texts = TextsOf(work.Of(job));
        for (Fault fault : kinds) {
            // A quick run takes so many calls of each job at random, the whole run each of them.
            const std::uint64_t stride =
                assignment.quick ? std::max<std::uint64_t>(1, 3000 / static_cast<std::uint64_t>(assignment.count)) : 1;
            for (fault.at = static_cast<std::int64_t>(1 + random() % stride); TryOne(work, job, fault, texts, findings);
                 fault.at += static_cast<std::int64_t>(1 + random() % (2 * stride - 1))) {
                progress.At(findings.tried);
                if (assignment.planted && !findings.faults.empty())
                    return findings;
            }
        }
    }
    return findings;
}

} // namespace

Findings FailingCalls(const Assignment& assignment)
{
    std::vector<Fault> kinds;
    for (const int error : {EIO, ENOSPC, EACCES})
        kinds.push_back({.error = error, .silent = assignment.planted});
    return GoThrough(assignment, kinds);
}

Findings FullDisks(const Assignment& assignment)
{
    return GoThrough(assignment, {{.error = ENOSPC, .lasting = true, .silent = assignment.planted}});
}

} // namespace quillmere::endure
