// endure [--quick] [--only TRIAL] [--count N] [--seed N]: puts the program through all trials and says what held. The
// exit status is 0 only if all did, and if each trial found the fault that was planted for it. With --count none is
// planted.
#include "Faults.h"
#include "Trial.h"
#include "support/TemporaryFolder.h"

#include <QApplication>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <fmt/format.h>
#include <optional>
#include <sstream>
#include <stdexcept>

namespace quillmere::endure {
namespace {

constexpr std::array All{
    Trial{"kills", "killed at any moment: nothing told is lost, nothing is torn", 10'000, 40, 30, Kills},
    Trial{"failing calls", "the n-th system call fails: told or done, every file whole", 1, 30, 60, FailingCalls},
    Trial{"full disk", "no room from the n-th write on: told or done, every file whole", 1, 40, 60, FullDisks},
    Trial{"power cuts", "unsynced writes lost, torn, reordered: nothing told is lost, nothing is torn", 100'000, 400,
          200, PowerCuts},
    Trial{"damage", "spoilt databases: no crash, none takes over 5 s", 100'000, 200, 100, DamagedDatabases},
    Trial{"texts", "what reads texts: no crash, no refused character let in", 10'000'000, 40'000, 100, Parsers},
    Trial{"anything", "random hands on the windows: no crash, no growth of memory", 1'000'000, 4'000, 1'000,
          RandomHands},
};

struct Options {
    bool quick = false, wrong = false;
    std::string only;
    std::optional<std::int64_t> count;
    std::uint64_t seed = 20110405;
};

Options ReadOptions(int count, char** words)
{
    Options options;
    for (int place = 1; place < count; ++place) {
        const std::string_view word = words[place];
        const bool hasValue = place + 1 < count;
        if (word == "--quick")
            options.quick = true;
        else if (word == "--only" && hasValue)
            options.only = words[++place];
        else if (word == "--count" && hasValue)
            options.count = std::stoll(words[++place]);
        else if (word == "--seed" && hasValue)
            options.seed = std::stoull(words[++place]);
        else
            options.wrong = true;
    }
    return options;
}

/// A run in a process of its own: what one leaves in the toolkit, the next does not find.
Findings RunIn(const std::filesystem::path& folder, const Trial& trial, Assignment assignment)
{
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    assignment.folder = folder;
    const Ending ending = InAProcess(
        [&](int tell) {
            const Findings findings = trial.run(assignment);
            Tell(tell, std::to_string(findings.tried));
            for (std::string fault : findings.faults) {
                std::ranges::replace(fault, '\n', ' ');
                Tell(tell, fault);
            }
        },
        std::chrono::hours(24));
    Findings findings;
    std::istringstream lines(ending.told);
    std::string line;
    if (std::getline(lines, line))
        findings.tried = std::atoll(line.c_str());
    while (std::getline(lines, line))
        findings.faults.push_back(line);
    if (!ending.ended)
        throw std::runtime_error(fmt::format("the trial itself {}: {}", ending.words, ending.told));
    return findings;
}

/// True if the trial finds what was planted, and then finds nothing.
bool Hold(const std::filesystem::path& folder, const Trial& trial, const Options& options)
{
    const auto start = std::chrono::steady_clock::now();
    // Whoever says how often looks again at something that was found.
    const bool proves = !options.count;
    const Findings planted =
        proves ? RunIn(folder, trial,
                       {.folder = {}, .count = trial.planted, .seed = options.seed, .planted = true, .quick = true})
               : Findings();
    const Findings found = RunIn(folder, trial,
                                 {.folder = {},
                                  .count = options.count.value_or(options.quick ? trial.quick : trial.whole),
                                  .seed = options.seed,
                                  .planted = false,
                                  .quick = options.quick});
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    fmt::print("{:<14} {:>10} tried {:>6} faults   {:>8.1f} s   {}\n", trial.name, found.tried, found.faults.size(),
               took.count(), trial.holds);
    constexpr std::size_t MostTold = 20;
    for (std::size_t fault = 0; fault < std::min(found.faults.size(), MostTold); ++fault)
        fmt::print("    {}\n", found.faults[fault]);
    if (proves && planted.faults.empty())
        fmt::print("    the planted fault was not found in {} tries\n", planted.tried);
    std::fflush(stdout);
    return found.faults.empty() && (!proves || !planted.faults.empty());
}

} // namespace

std::span<const Trial> Trials()
{
    return All;
}

void Progress::At(std::int64_t tried)
{
    if (Clock::now() - told < std::chrono::minutes(1))
        return;
    told = Clock::now();
    fmt::print(stderr, "{} tried so far\n", tried);
}

} // namespace quillmere::endure

int main(int count, char** words)
{
    using namespace quillmere::endure;
    const Options options = ReadOptions(count, words);
    const auto wanted = [&](const Trial& trial) { return options.only.empty() || trial.name == options.only; };
    if (options.wrong || std::ranges::none_of(Trials(), wanted)) {
        fmt::print(stderr, "endure [--quick] [--only TRIAL] [--count N] [--seed N]\n");
        for (const Trial& trial : Trials())
            fmt::print(stderr, "  {:<14} {}\n", trial.name, trial.holds);
        return 2;
    }
    const quillmere::test::TemporaryFolder folder(quillmere::test::QuickFolder());
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    ::setenv("XDG_RUNTIME_DIR", folder.path.c_str(), 0);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QApplication application(count, words);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setCursorFlashTime(0);
    quillmere::scenario::DoNotWaitForLocks();
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    bool held = true;
    for (const Trial& trial : Trials())
        if (wanted(trial))
            held = Hold(folder / "trial", trial, options) && held;
    return held ? 0 : 1;
}
