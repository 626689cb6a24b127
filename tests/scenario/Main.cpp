#include "Faults.h"
#include "Player.h"
#include "support/TemporaryFolder.h"

#include <QApplication>
#include <QColor>
#include <QPalette>
#include <QStringList>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace {

using namespace quillmere::scenario;

constexpr auto Usage =
    "scenario_player [--steps] [--pictures DIR] [--screen WIDTHxHEIGHT] [--dark] FILE...\n"
    "Plays scenarios against the windows of the program. A folder stands for all scenarios in it, a manual\n"
    "(*.md) for its examples. The screen, where there is no display, is 1366x768; --dark makes the desktop dark.\n";

/// A file that plays longer than this hangs.
constexpr unsigned SecondsForOneFile = 120;

struct Arguments {
    std::filesystem::path pictures;
    std::vector<std::string> files;
    std::string screenWidth = "1366", screenHeight = "768";
    bool dark = false;
    bool tellSteps = false;
    bool wrong = false;
};

/// Takes "1024x600" for the screen; false if it is no such thing.
bool ReadScreen(const std::string& word, Arguments& arguments)
{
    const std::size_t cross = word.find('x');
    if (cross == std::string::npos || word.find_first_not_of("0123456789x") != std::string::npos)
        return false;
    arguments.screenWidth = word.substr(0, cross);
    arguments.screenHeight = word.substr(cross + 1);
    return true;
}

/// Every *.scenario of a folder and those below it, by name; a file is itself.
void AddFiles(const std::string& name, std::vector<std::string>& files)
{
    if (!std::filesystem::is_directory(name)) {
        files.push_back(name);
        return;
    }
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(name))
        if (entry.is_regular_file() && entry.path().extension() == ".scenario")
            found.push_back(entry.path().string());
    std::ranges::sort(found);
    files.insert(files.end(), found.begin(), found.end());
}

Arguments ReadArguments(int count, char** words)
{
    Arguments arguments;
    for (int place = 1; place < count; ++place) {
        const std::string word = words[place];
        if (word == "--pictures" && place + 1 < count)
            arguments.pictures = words[++place];
        else if (word == "--screen" && place + 1 < count)
            arguments.wrong = !ReadScreen(words[++place], arguments);
        else if (word == "--dark")
            arguments.dark = true;
        else if (word == "--steps")
            arguments.tellSteps = true;
        else if (word.starts_with("--"))
            arguments.wrong = true;
        else
            AddFiles(word, arguments.files);
    }
    arguments.wrong = arguments.wrong || arguments.files.empty();
    return arguments;
}

std::optional<std::string> ReadWhole(const std::string& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::string text((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    if (!stream || std::filesystem::is_directory(file))
        return std::nullopt;
    return text;
}

bool PlayFile(const std::string& file, const Folders& folders, bool tellSteps)
{
    const std::optional<std::string> text = ReadWhole(file);
    if (!text) {
        fmt::print("{}: cannot be read\n", file);
        return false;
    }
    const bool isManual = std::filesystem::path(file).extension() == ".md";
    try {
        bool passed = true;
        for (const std::string& scenario : isManual ? ExamplesOf(*text) : std::vector{*text}) {
            const Tellings tellings = TellingsOf(scenario);
            for (const ScriptError& error : tellings.errors)
                fmt::print("{}:{}: {}\n", file, error.line, error.text);
            passed = passed && tellings.errors.empty();
            for (const Telling& telling : tellings.rows)
                passed = Player(file, folders, tellSteps).Play(telling) && passed;
        }
        return passed;
    } catch (const std::exception& error) {
        fmt::print("{}: {}\n", file, error.what());
        return false;
    }
}

/// Makes the toolkit's screen the size for which the windows are laid out, where there is no display to be seen.
std::string OffscreenPlatform(const std::filesystem::path& folder, const Arguments& arguments)
{
    const std::filesystem::path file = folder / "screen.json";
    std::ofstream(file)
        << R"({"synchronousWindowSystemEvents":true,"windowFrameMargins":false,"screens":[{"name":"screen",)"
        << fmt::format(R"("x":0,"y":0,"width":{},"height":{},"logicalDpi":96,"logicalBaseDpi":96,"dpr":1}}]}})",
                       arguments.screenWidth, arguments.screenHeight);
    return "offscreen:configfile=" + file.string();
}

/// Passes on what the toolkit has to say, but for what the platform without a display cannot do.
void TellToolkitMessage(QtMsgType, const QMessageLogContext&, const QString& text)
{
    if (!text.startsWith("This plugin does not support"))
        fmt::print(stderr, "{}\n", text.toStdString());
}

/// Plays files from the given one on and writes one byte for each into the pipe: 1 for a file that passed.
[[noreturn]] void Work(const Arguments& arguments, std::size_t first, const std::filesystem::path& folder, int pipe)
{
    const bool display = std::getenv("DISPLAY") != nullptr || std::getenv("WAYLAND_DISPLAY") != nullptr;
    if (!display && std::getenv("QT_QPA_PLATFORM") == nullptr)
        ::setenv("QT_QPA_PLATFORM", OffscreenPlatform(folder, arguments).c_str(), 1);
    ::setenv("XDG_RUNTIME_DIR", folder.c_str(), 0);
    qInstallMessageHandler(TellToolkitMessage);
    {
        int count = 1;
        std::string name = "scenario_player";
        std::vector<char*> words{name.data(), nullptr};
        QApplication application(count, words.data());
        QApplication::setQuitOnLastWindowClosed(false);
        QApplication::setCursorFlashTime(0);
        QApplication::setEffectEnabled(Qt::UI_AnimateMenu, false);
        QApplication::setEffectEnabled(Qt::UI_AnimateCombo, false);
        if (arguments.dark)
            QApplication::setPalette(QPalette(QColor(0x20, 0x20, 0x20)));
        DoNotWaitForLocks();
        for (std::size_t place = first; place < arguments.files.size(); ++place) {
            ::alarm(SecondsForOneFile);
            const bool passed = PlayFile(arguments.files[place],
                                         {.resources = QUILLMERE_RESOURCES,
                                          .root = folder / std::to_string(place + 1),
                                          .pictures = arguments.pictures},
                                         arguments.tellSteps);
            fmt::print("{} {}\n", passed ? "ok" : "FAILED", arguments.files[place]);
            std::fflush(stdout);
            const char result = passed ? 1 : 0;
            if (::write(pipe, &result, 1) != 1)
                break;
        }
    }
    if (display)
        std::_Exit(0); // what the display's own libraries leave behind is no leak of the program
    std::exit(0);
}

/// Plays the files in a second process, and in another one from there on if a file makes it crash.
std::vector<bool> PlayAll(const Arguments& arguments, const std::filesystem::path& folder)
{
    std::vector<bool> results;
    while (results.size() < arguments.files.size()) {
        std::fflush(stdout);
        int ends[2];
        if (::pipe(ends) != 0)
            std::exit(2);
        const pid_t worker = ::fork();
        if (worker == 0) {
            ::close(ends[0]);
            Work(arguments, results.size(), folder, ends[1]);
        }
        ::close(ends[1]);
        for (char result = 0; ::read(ends[0], &result, 1) == 1;)
            results.push_back(result == 1);
        ::close(ends[0]);
        int status = 0;
        ::waitpid(worker, &status, 0);
        if (results.size() < arguments.files.size()) {
            const std::string& file = arguments.files[results.size()];
            fmt::print("{}: the program {}\nFAILED {}\n", file,
                       WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM ? "hangs" : "has crashed", file);
            results.push_back(false);
        } else if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
            fmt::print("the program has crashed at its end\n");
            results.back() = false;
        }
    }
    return results;
}

} // namespace

int main(int count, char** words)
{
    const Arguments arguments = ReadArguments(count, words);
    if (arguments.wrong) {
        fmt::print(stderr, "{}", Usage);
        return 2;
    }
    const quillmere::test::TemporaryFolder folder(quillmere::test::QuickFolder()); // the store syncs each operation
    std::filesystem::permissions(folder.path, std::filesystem::perms::owner_all);  // as the toolkit wants its own
    const std::vector<bool> results = PlayAll(arguments, folder.path);
    const auto passed = std::ranges::count(results, true);
    fmt::print("{} passed, {} failed\n", passed, static_cast<std::ptrdiff_t>(results.size()) - passed);
    return passed == static_cast<std::ptrdiff_t>(results.size()) ? 0 : 1;
}
