#include "Work.h"

#include "Trial.h"
#include "clientdb/store/StoreFaults.h"
#include "edition/Edition.h"
#include "frame/Session.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <set>
#include <span>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace quillmere::endure {
namespace {

using namespace scenario;

std::vector<Job> ReadJobs()
{
    std::set<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(QUILLMERE_JOBS))
        files.insert(entry.path());
    std::vector<Job> jobs;
    for (const std::filesystem::path& file : files) {
        jobs.push_back({file.stem().string(), ParseScript(test::Content(file))});
        for (const ScriptError& error : jobs.back().script.errors)
            throw std::runtime_error(file.string() + ":" + std::to_string(error.line) + ": " + error.text);
    }
    return jobs;
}

void Replace(const std::filesystem::path& target, const std::filesystem::path& source)
{
    std::filesystem::remove_all(target);
    std::filesystem::copy(source, target, std::filesystem::copy_options::recursive);
}

/// What the engine moves on in the file's head with each commit.
std::string ChangeCounter(const std::filesystem::path& database)
{
    constexpr std::streamoff Place = 24;
    std::string bytes(4, '\0');
    std::ifstream(database, std::ios::binary).seekg(Place).read(bytes.data(), 4);
    return bytes;
}

std::string OneLine(std::string text)
{
    std::ranges::replace(text, '\n', ' ');
    return text;
}

/// Adds what is told without a box coming up, once each time that it changes.
void TakeNotes(Stage& stage, std::vector<std::string>& notes)
{
    if (!stage.IsUp())
        return;
    Screens& screens = stage.Running().screens;
    std::string now;
    if (const Box* note = screens.FindBox("MDIForm1", "StatusNote"))
        now = note->Text();
    if (const Box* lines = screens.FindBox("LastBatch", "BatchLines"))
        for (const std::string& line : lines->Entries())
            now += "\n" + line;
    if (now = OneLine(now); !now.empty() && (notes.empty() || notes.back() != now))
        notes.push_back(now);
}

/// True for a file of single lines, each of which one of the others has: a line that could not be kept is proposed
/// anew.
bool HasLinesOf(const std::filesystem::path& file, std::span<const std::filesystem::path> others)
{
    std::set<std::string> known;
    std::string line;
    for (const std::filesystem::path& other : others)
        for (std::ifstream lines(other); std::getline(lines, line);)
            known.insert(line);
    for (std::ifstream lines(file); std::getline(lines, line);)
        if (!known.contains(line))
            return false;
    return true;
}

/// True for a file that can be told to be whole by itself, and is.
bool IsWhole(const std::filesystem::path& file, const std::string& content)
{
    if (file.extension() == ".pdf")
        return content.starts_with("%PDF-") && content.find("%%EOF", content.size() - 10) != std::string::npos;
    if (file.extension() == ".mdb") {
        ReadClientState(file);
        return true;
    }
    return false;
}

} // namespace

bool Rehearsed::MayHold(const ClientState& state, std::size_t done) const
{
    const auto first = digests.begin() + static_cast<std::ptrdiff_t>(Done(done));
    const auto last = digests.begin() + static_cast<std::ptrdiff_t>(Done(done + 1));
    return std::find(first, last + 1, DigestOf(state)) != last + 1;
}

Work::Work(const std::filesystem::path& in) : folder(in), desk(in / "desk"), jobs(ReadJobs())
{
    for (std::size_t job = 0; job < jobs.size(); ++job) {
        Give(job);
        Replace(Before(job), desk);
        rehearsed.push_back(Rehearse(job));
    }
    Replace(Before(jobs.size()), desk);
}

void Work::Give(std::size_t job) const
{
    Stage stage("given", AtDesk());
    for (const Step& step : jobs[job].script.steps)
        if (step.row->effect == Effect::Gives)
            stage.Perform(step);
    stage.world.WriteGiven([](const Step& step, const std::exception& error) {
        throw std::runtime_error(step.source + ": " + error.what());
    });
}

std::filesystem::path Work::ClientDatabase() const
{
    return desk / edition::ProductFolder / edition::ClientDatabaseName;
}

scenario::Folders Work::AtDesk() const
{
    return {.resources = QUILLMERE_RESOURCES, .root = desk, .pictures = {}, .keepRoot = true};
}

void Work::SetDesk(std::size_t job) const
{
    Replace(desk, Before(job));
}

Doing Work::Do(std::size_t job, const std::function<void(std::size_t step)>& done) const
{
    Stage stage(jobs[job].name, AtDesk());
    Doing doing;
    const std::vector<Step>& steps = jobs[job].script.steps;
    try {
        for (std::size_t step = 0; step < steps.size(); ++step) {
            if (steps[step].row->effect != Effect::Gives) // an answer is no act, and yet is needed
                stage.Perform(steps[step]);
            TakeNotes(stage, doing.notes);
            if (done)
                done(step);
        }
    } catch (const std::exception& error) {
        doing.stuck = error.what();
    }
    for (const SeenMessage& message : stage.platform.unseen)
        doing.messages.push_back(OneLine(message.title + ": " + message.text));
    return doing;
}

std::string Work::TornFile(std::size_t job, const std::filesystem::path& in) const
{
    const std::filesystem::path database = std::filesystem::relative(ClientDatabase(), desk);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(in)) {
        const std::filesystem::path file = std::filesystem::relative(entry.path(), in);
        const std::string name = file.filename().string();
        if (!entry.is_regular_file() || file == database || name.ends_with("-journal") || name.ends_with(".tmp") ||
            file.string().starts_with("Home"))
            continue;
        const std::string content = test::Content(entry.path());
        const auto isAsIn = [&](const std::filesystem::path& other) {
            return std::filesystem::exists(other / file) && test::Content(other / file) == content;
        };
        const std::array others{Before(job) / file, After(job) / file};
        if (!isAsIn(Before(job)) && !isAsIn(After(job)) && !IsWhole(entry.path(), content) &&
            (name != "DESK.TXT" || !HasLinesOf(entry.path(), others)))
            return file.string() + " is torn";
    }
    return {};
}

std::vector<std::string> Work::MissingDocuments(std::size_t job, const std::filesystem::path& in) const
{
    std::vector<std::string> missing;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(After(job))) {
        const std::filesystem::path file = std::filesystem::relative(entry.path(), After(job));
        if (file.extension() == ".pdf" && !std::filesystem::exists(in / file))
            missing.push_back(file.filename().string());
    }
    return missing;
}

std::string Work::OpenOnceMore() const
{
    Stage stage("opening", AtDesk());
    try {
        stage.StartProgram();
    } catch (const std::exception& error) {
        return error.what();
    }
    return stage.platform.unseen.empty() ? std::string() : stage.platform.unseen.front().text;
}

void Work::TellRehearsal(std::size_t job, int tell) const
{
    std::string seen;
    const auto look = [&] {
        if (const std::string now = ChangeCounter(ClientDatabase()); now == std::exchange(seen, now))
            return;
        Tell(tell, "state");
        for (const auto& [field, text] : ReadClientState(ClientDatabase()).fields)
            Tell(tell, "field\t" + field + "\t" + text);
    };
    Tell(tell, "state");
    look();
    // What is committed can be read whenever the next statement is about to run.
    SetStoreFaultHook([&](std::string_view statement) {
        if (!statement.starts_with("SELECT") && !statement.starts_with("PRAGMA"))
            look();
        return 0;
    });
    const Doing doing = Do(job, [&](std::size_t) {
        look();
        Tell(tell, "step");
    });
    SetStoreFaultHook({});
    for (const std::string& note : doing.notes)
        Tell(tell, "note\t" + note);
    for (const std::string& message : doing.messages)
        Tell(tell, "message\t" + message);
    if (!doing.stuck.empty())
        Tell(tell, "stuck\t" + doing.stuck);
    SetDesk(job);
    const auto start = std::chrono::steady_clock::now();
    Do(job);
    const auto took = std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start);
    Tell(tell, "took\t" + std::to_string(took.count()));
}

Rehearsed Work::Rehearse(std::size_t job) const
{
    // In a process of its own: the toolkit's threads do not come along into those that are made later.
    const Ending ending = InAProcess([&](int tell) { TellRehearsal(job, tell); }, std::chrono::minutes(5));
    Rehearsed result;
    std::istringstream lines(ending.told);
    for (std::string line; std::getline(lines, line);) {
        const std::string word = line.substr(0, line.find('\t'));
        const std::string rest = line.substr(std::min(line.size(), word.size() + 1));
        if (word == "state")
            result.states.emplace_back();
        else if (word == "field")
            result.states.back().fields.emplace(rest.substr(0, rest.find('\t')), rest.substr(rest.find('\t') + 1));
        else if (word == "step")
            result.after.push_back(result.states.size() - 1);
        else if (word == "note")
            result.doing.notes.push_back(rest);
        else if (word == "message")
            result.doing.messages.push_back(rest);
        else if (word == "took")
            result.took = std::chrono::microseconds(std::stoll(rest));
        else
            throw std::runtime_error(jobs[job].name + ": " + line);
    }
    if (!ending.ended)
        throw std::runtime_error(jobs[job].name + ": " + ending.words);
    for (const ClientState& state : result.states)
        result.digests.push_back(DigestOf(state));
    return result;
}

} // namespace quillmere::endure
