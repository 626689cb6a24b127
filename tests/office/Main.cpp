// office [--quick] [--seconds N] [--clerks N] [--employers N] [--each N] [--pause MS] [--seed N]: twenty
// clerks work in one shared folder over a line with a delay. In the middle one connection is cut, and the server is
// killed and started again. Says what each operation took, and exits with 0 only if nothing was lost and, in a whole
// run, nobody waited too long. At the end harm is done to the folder on purpose, which must be found.
#include "Audit.h"
#include "Folder.h"
#include "Relay.h"
#include "clientdb/store/IdleLinks.h"
#include "clientdb/store/ServerEngine.h"
#include "clientdb/store/ServerSchema.h"
#include "support/PrivateServer.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <fmt/chrono.h>
#include <fmt/format.h>
#include <fstream>
#include <map>
#include <string_view>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace quillmere::office {
namespace {

using std::chrono::milliseconds, std::chrono::seconds;
using Clock = std::chrono::steady_clock;

struct Options {
    bool quick = false, wrong = false;
    seconds length{600};
    int clerks = 20;
    Clients clients{.employers = 500, .ofEach = 200};
    milliseconds pause{1000};
    std::uint64_t seed = 20110405;
};

Options ReadOptions(int count, char** words)
{
    Options options;
    if (std::any_of(words + 1, words + count, [](const char* word) { return std::string_view(word) == "--quick"; })) {
        options.quick = true;
        options.length = seconds(12);
        options.clients = {.employers = 20, .ofEach = 50};
        options.pause = milliseconds(300);
    }
    for (int place = 1; place < count; ++place) {
        const std::string_view word = words[place];
        if (word == "--quick")
            continue;
        if (place + 1 == count) {
            options.wrong = true;
            continue;
        }
        const long long value = std::stoll(words[++place]);
        if (word == "--seconds")
            options.length = seconds(value);
        else if (word == "--clerks")
            options.clerks = static_cast<int>(value);
        else if (word == "--employers")
            options.clients.employers = static_cast<int>(value);
        else if (word == "--each")
            options.clients.ofEach = static_cast<int>(value);
        else if (word == "--pause")
            options.pause = milliseconds(value);
        else if (word == "--seed")
            options.seed = static_cast<std::uint64_t>(value);
        else
            options.wrong = true;
    }
    return options;
}

/// Each way.
constexpr std::chrono::microseconds Delay(1000);

/// What a whole run demands of these, at the 95th of a hundred.
constexpr milliseconds MostToWait(50);
constexpr std::array<std::string_view, 3> Demanded = {"open an employee", "turn the page", "a notepad's OK"};

void Say(std::string_view line)
{
    fmt::print("{}\n", line);
    std::fflush(stdout);
}

class Office {
public:
    explicit Office(const Options& options) : options(options)
    {
        std::filesystem::create_directories(folder / "line");
        direct = server.Service(folder / "clients", "office");
        relay.emplace(folder / "line", server.Socket(), Delay);
        direct.copies = ServerService::Copies::ByServer; // a folder of this size
        overLine = direct;
        overLine.settings.front().second = (folder / "line").string();
    }

    bool Run()
    {
        Make();
        MeasureLine();
        Work();
        return Report();
    }

private:
    void Make()
    {
        const auto start = Clock::now();
        CreateServerTables(direct);
        WriteService(direct);
        MakeClients(direct.file, options.clients);
        Say(fmt::format("{} employees of {} employers, made in {:.1f} s",
                        options.clients.employers * options.clients.ofEach, options.clients.employers, Seconds(start)));
    }

    void MeasureLine() const
    {
        const auto one = [](const ServerService& service) {
            ServerLink link(service);
            constexpr int Times = 20;
            const auto start = Clock::now();
            for (int time = 0; time < Times; ++time)
                static_cast<void>(link.Wait(link.Send("SELECT 1", "SELECT 1", {}, true)));
            return Seconds(start) / Times * 1000;
        };
        Say(fmt::format("a round trip takes {:.2f} ms over the line, {:.2f} ms without it", one(overLine),
                        one(direct)));
    }

    static double Seconds(Clock::time_point since)
    {
        return std::chrono::duration<double>(Clock::now() - since).count();
    }

    void Work()
    {
        CloseIdleServerLinks(); // no connection is to be had twice
        end = Clock::now() + options.length;
        for (int clerk = 0; clerk < options.clerks; ++clerk)
            clerks.push_back(Begin(clerk));
        const auto start = Clock::now();
        const Machine before = Machine::Now();
        std::this_thread::sleep_until(start + options.length * 4 / 10);
        relay->Cut();
        std::this_thread::sleep_until(start + options.length * 6 / 10);
        breakBegan = std::chrono::system_clock::now();
        server.Kill();
        std::this_thread::sleep_for(options.quick ? seconds(1) : seconds(5));
        server.Start();
        breakEnded = std::chrono::system_clock::now() + seconds(2);
        std::this_thread::sleep_until(end);
        TellOf(before, Machine::Now());
        for (const pid_t clerk : clerks) {
            int status = 0;
            ::waitpid(clerk, &status, 0);
            if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
                faults.push_back(fmt::format("a clerk ended with the status {}", status));
        }
        for (int clerk = 0; clerk < options.clerks; ++clerk)
            books.push_back(ReadBook(BookOf(clerk)));
    }

    /// Ticks of all processors together since the machine's start.
    struct Machine {
        long long all = 0, idle = 0;

        static Machine Now()
        {
            std::ifstream in("/proc/stat");
            std::string word;
            in >> word;
            Machine machine;
            long long ticks = 0;
            constexpr int Kinds = 8, Idle = 3, Waiting = 4;
            for (int kind = 0; kind < Kinds && in >> ticks; ++kind) {
                machine.all += ticks;
                machine.idle += kind == Idle || kind == Waiting ? ticks : 0;
            }
            return machine;
        }
    };

    static void TellOf(const Machine& before, const Machine& after)
    {
        const auto all = static_cast<double>(after.all - before.all);
        Say(fmt::format("the machine was busy for {:.0f} of a hundred, with all that ran on it",
                        100 - 100 * static_cast<double>(after.idle - before.idle) / all));
    }

    std::filesystem::path BookOf(int clerk) const { return folder / fmt::format("book {}", clerk); }

    /// A clerk is a process of his own, as a desk is.
    pid_t Begin(int clerk)
    {
        const pid_t process = ::fork();
        if (process != 0)
            return process;
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        try {
            WorkShift({.clerk = clerk,
                       .clients = options.clients,
                       .service = overLine,
                       .desk = folder / fmt::format("desk {}", clerk),
                       .book = BookOf(clerk),
                       .end = end,
                       .pause = options.pause,
                       .seed = options.seed + static_cast<std::uint64_t>(clerk)});
        } catch (const std::exception& error) {
            fmt::print(stderr, "clerk {}: {}\n", clerk, error.what());
            std::_Exit(1);
        }
        std::_Exit(0);
    }

    // ---- what came out

    bool Report()
    {
        std::size_t changes = 0, acts = 0;
        for (const Written& book : books) {
            changes += book.acknowledged.size();
            acts += static_cast<std::size_t>(std::ranges::count_if(book.done, &Written::Done::isAcknowledged));
        }
        TellTimes();
        TellWords();
        std::ranges::copy(FaultsIn(direct.file, books), std::back_inserter(faults));
        Say(fmt::format("{} texts and {} new, renamed or deleted employees acknowledged, {} faults", changes, acts,
                        faults.size()));
        constexpr std::size_t MostTold = 20;
        for (std::size_t fault = 0; fault < std::min(faults.size(), MostTold); ++fault)
            Say("    " + faults[fault]);
        const std::vector<std::string> notFound = HarmsNotFound(direct.file, books);
        for (const std::string& harm : notFound)
            Say("    harm done on purpose was not found: " + harm);
        return faults.empty() && notFound.empty();
    }

    static double At(const std::vector<Took>& sorted, double part)
    {
        const auto place = static_cast<std::size_t>(part * static_cast<double>(sorted.size() - 1));
        return static_cast<double>(sorted[place].wall.count()) / 1000;
    }

    void TellTimes()
    {
        std::map<std::string, std::vector<Took>> all;
        for (const Written& book : books)
            for (const Took& took : book.took)
                all[took.what].push_back(took);
        Say(fmt::format("{:<20} {:>6} {:>8} {:>8} {:>8} {:>8}   of that on average: {:>6} {:>6} {:>6} {:>8}", "ms",
                        "count", "median", "95th", "99th", "worst", "own", "queue", "line", "trips"));
        for (auto& [what, took] : all) {
            std::ranges::sort(took, {}, &Took::wall);
            double own = 0, waited = 0, trips = 0;
            for (const Took& one : took) {
                own += static_cast<double>(one.own.count()) / 1000;
                waited += static_cast<double>(one.waited.count()) / 1000;
                trips += static_cast<double>(one.trips);
            }
            const auto count = static_cast<double>(took.size());
            Say(fmt::format("{:<20} {:>6} {:>8.1f} {:>8.1f} {:>8.1f} {:>8.1f} {:>28.1f} {:>6.1f} {:>6.1f} {:>8.2f}",
                            what, took.size(), At(took, 0.5), At(took, 0.95), At(took, 0.99), At(took, 1), own / count,
                            waited / count, trips / count * 2, trips / count));
        }
        for (const std::string_view what : Demanded) {
            const std::vector<Took>& took = all[std::string(what)];
            if (took.empty())
                faults.push_back(fmt::format("nobody came to {}", what));
            else if (!options.quick && At(took, 0.95) >= static_cast<double>(MostToWait.count()))
                faults.push_back(fmt::format("to {} took {:.1f} ms at the 95th of a hundred", what, At(took, 0.95)));
        }
    }

    void TellWords() const
    {
        std::map<std::string, int> during, otherwise;
        for (const Written& book : books)
            for (const Written::Told& told : book.told)
                ++(told.when >= breakBegan && told.when <= breakEnded ? during : otherwise)[Alike(told.words)];
        const auto tell = [](std::string_view heading, const std::map<std::string, int>& words) {
            Say(heading);
            for (const auto& [text, count] : words)
                Say(fmt::format("    {:>4} {}", count, text));
        };
        tell("told while the server was away:", during);
        tell("told at other times:", otherwise);
    }

    /// Titles, names, numbers and texts differ from one to the other, and only the beginning matters.
    static std::string Alike(const std::string& words)
    {
        constexpr std::size_t Longest = 150;
        constexpr std::string_view File = ".mdb ";
        const std::size_t title = words.find(": "), file = words.find(File);
        std::string alike;
        bool isQuoted = false;
        for (const char letter : words.substr(file != std::string::npos ? file + File.size() : title + 2)) {
            isQuoted = isQuoted != (letter == '"');
            if (isQuoted && letter != '"')
                continue;
            const bool isDigit = letter >= '0' && letter <= '9';
            if (!isDigit || !alike.ends_with('#'))
                alike += isDigit ? '#' : letter;
        }
        return alike.substr(0, Longest);
    }

    Options options;
    test::TemporaryFolder folder;
    test::PrivateServer server{test::PrivateServer::Sync::On};
    ServerService direct, overLine;
    std::optional<Relay> relay;
    Clock::time_point end;
    std::vector<pid_t> clerks;
    std::chrono::system_clock::time_point breakBegan, breakEnded;
    std::vector<Written> books;
    std::vector<std::string> faults;
};

} // namespace
} // namespace quillmere::office

int main(int count, char** words)
{
    using namespace quillmere::office;
    const Options options = ReadOptions(count, words);
    if (options.wrong) {
        fmt::print(stderr,
                   "office [--quick] [--seconds N] [--clerks N] [--employers N] [--each N] [--pause MS] [--seed N]\n");
        return 2;
    }
    return Office(options).Run() ? 0 : 1;
}
