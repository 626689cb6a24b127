// Somebody presses anything, anywhere, in any order, in the real windows: no crash, no hang, and no memory that is
// kept.
#include "Hands.h"
#include "Stage.h"
#include "SystemCalls.h"
#include "Trial.h"
#include "clientdb/Employees.h"
#include "desktop/DesktopHost.h"
#include "desktop/MainWindow.h"
#include "desktop/layouts/Layout.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QWidget>

#include <array>
#include <cerrno>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <malloc.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__)
#define QUILLMERE_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QUILLMERE_ADDRESS_SANITIZER
#endif
#endif
#ifdef QUILLMERE_ADDRESS_SANITIZER
#include <sanitizer/allocator_interface.h>
#endif

namespace quillmere::endure {
namespace {

using namespace scenario;

/// A session is so long; then the program is closed, and all that it held must be given back.
constexpr std::int64_t StepsOfASession = 250;

std::size_t BytesInUse()
{
#ifdef QUILLMERE_ADDRESS_SANITIZER
    return __sanitizer_get_current_allocated_bytes();
#else
    return ::mallinfo2().uordblks;
#endif
}

/// Keeps what senseless hands write to the folder of the trial: they name folders too.
class Fence : public CallWatcher {
public:
    explicit Fence(const std::filesystem::path& within) : folder(within.string()) {}

    int Before(const Call& call) override { return call.file.starts_with(folder) ? 0 : EACCES; }

private:
    std::string folder;
};

class Session {
public:
    Session(const std::filesystem::path& folder, std::uint64_t seed)
        : random(seed),
          stage("anything", {.resources = QUILLMERE_RESOURCES, .root = folder, .pictures = folder, .keepRoot = false})
    {
        stage.world.Now(Store::ThisYear, [](Database& database) {
            CreateEmployee(database, {"Acme Ltd", "Jane", "Smith", "123/A456"});
            CreateEmployee(database, {"Acme Ltd", "John", "Brown", "123/A456"});
            CreateEmployee(database, {"Bolt Ltd", "Ann", "Other", "777/B1"});
        });
        stage.StartProgram();
    }

    void Step()
    {
        if (!stage.IsUp())
            stage.StartProgram();
        stage.platform.answers.clear();
        stage.platform.unseen.clear();
        stage.platform.misfits.clear();
        stage.platform.opened.clear();
        for (auto answers = random() % 3; answers > 0; --answers)
            stage.platform.answers.push_back({Any(std::array{"yes", "no", "ok", "cancel"}), false, 0});
        try {
            DoAnything();
        } catch (const StepFailure&) {
            // A user could not do it.
        }
        stage.RunOut();
    }

private:
    template<typename List>
    auto Any(const List& list) -> decltype(std::string(list[0]))
    {
        return std::string(list[random() % std::size(list)]);
    }

    std::vector<QWidget*> InReach() const
    {
        std::vector<QWidget*> found;
        QWidget* const window = QApplication::activeModalWidget() != nullptr ? QApplication::activeModalWidget()
                                                                             : QApplication::activeWindow();
        if (window == nullptr)
            return found;
        for (QWidget* widget : window->findChildren<QWidget*>())
            if (widget->isVisible() && widget->isEnabled() &&
                (qobject_cast<QAbstractButton*>(widget) != nullptr || qobject_cast<QLineEdit*>(widget) != nullptr ||
                 qobject_cast<QComboBox*>(widget) != nullptr || widget->inherits("QAbstractItemView")))
                found.push_back(widget);
        return found;
    }

    void DoAnything()
    {
        static constexpr std::array Texts{"6/4/10", "31/12/2010", "123.45", "-5",  "ab123456c", "Smith", "99999999999",
                                          "H",      "x",          "12",     "(7)", "é",         "1/1/1", "  "};
        static constexpr std::array Keys{"Tab",      "Shift+Tab", "Enter",    "Escape", "Up",          "Down",
                                         "Space",    "Backspace", "Delete",   "F1",     "F2",          "F4",
                                         "F9",       "Alt+F",     "Ctrl+F",   "Ctrl+E", "Ctrl+PgDown", "Ctrl+PgUp",
                                         "Alt+Left", "Ctrl+W",    "Ctrl+Up",  "Ctrl+Z", "Home",        "End",
                                         "Ctrl+3",   "Ctrl+B",    "Shift+F1", "Ctrl+H", "Alt+O",       "Alt+D"};
        const std::vector<QWidget*> widgets = InReach();
        QWidget* const widget = widgets.empty() ? nullptr : widgets[random() % widgets.size()];
        switch (random() % 10) {
        case 0:
        case 1:
        case 2:
            if (widget != nullptr)
                hands::Click(*widget, "any");
            break;
        case 3:
            if (auto* list = qobject_cast<QAbstractItemView*>(widget); list != nullptr)
                if (const auto entries = hands::EntriesOf(*list); !entries.empty())
                    hands::ClickEntry(*list, Any(entries), random() % 2 == 0, "any");
            break;
        case 4:
        case 5:
            hands::Type(Any(Texts));
            break;
        case 6:
            hands::Paste(Any(Texts));
            break;
        case 7: {
            const auto actions = stage.Host().Main()->findChildren<QAction*>();
            // What ends the program comes of itself often enough. Each size of the letters leaves the toolkit some of
            // its own for good, and as it comes to them one after the other, that would look like growth.
            if (QAction* action = actions.empty() ? nullptr : actions[random() % actions.size()];
                action != nullptr && action->isEnabled() && !action->objectName().contains(".mnuZoom") &&
                QApplication::activeModalWidget() == nullptr)
                action->trigger();
            break;
        }
        default:
            hands::Press(Any(Keys));
        }
    }

    std::mt19937_64 random;
    Stage stage;
};

} // namespace

Findings RandomHands(const Assignment& assignment)
{
    Progress progress;
    Findings findings;
    std::int64_t session = 0;
    while (findings.tried < assignment.count) {
        const Ending ending = InAProcess(
            [&](int tell) {
                // What is kept for good is there after the first few: each layout is written once, and the toolkit
                // keeps the letters of each size.
                constexpr std::int64_t Settled = 6;
                for (const std::string_view screen : ScreensWithLayout())
                    static_cast<void>(LayoutOf(screen));
                std::filesystem::current_path(assignment.folder); // a name without a start is in there, too
                Fence fence(assignment.folder);
                const Watch watch("/", fence);
                for (std::int64_t steps = findings.tried; steps < assignment.count; ++session) {
                    {
                        Session one(assignment.folder / "desk", assignment.seed + static_cast<std::uint64_t>(session));
                        progress.At(steps);
                        for (std::int64_t step = 0; step < StepsOfASession; ++step, ++steps) {
                            ::alarm(60);
                            one.Step();
                            if (assignment.planted && step == 3) [[maybe_unused]]
                                static thread_local auto* const kept = new std::vector<char>(std::size_t{4} << 20);
                            if (assignment.planted && session == 1 && step == 5)
                                std::abort();
                        }
                    }
                    Tell(tell,
                         fmt::format("{} {} {}", session, steps, session % Settled == Settled - 1 ? BytesInUse() : 0));
                }
            },
            std::chrono::hours(24));
        std::vector<std::size_t> memory;
        std::size_t at = 0;
        for (std::size_t end = 0; (end = ending.told.find('\n', at)) != std::string::npos; at = end + 1) {
            long long number = 0, steps = 0;
            std::size_t bytes = 0;
            if (std::sscanf(ending.told.c_str() + at, "%lld %lld %zu", &number, &steps, &bytes) != 3)
                continue;
            session = number + 1;
            findings.tried = steps;
            if (bytes != 0)
                memory.push_back(bytes);
        }
        if (!ending.ended) {
            findings.faults.push_back(
                fmt::format("session of seed {} {}", assignment.seed + static_cast<std::uint64_t>(session),
                            ending.words.empty() ? "hangs" : ending.words + " " + ending.told.substr(at)));
            findings.tried += StepsOfASession;
            ++session;
        }
        // No growth: the last third holds no more than the first, but for what a cache may take.
        constexpr std::size_t Allowed = 1 << 20;
        if (memory.size() >= 3 && memory.back() > memory.front() + Allowed)
            findings.faults.push_back(fmt::format("bytes in use: {}", fmt::join(memory, ", ")));
    }
    return findings;
}

} // namespace quillmere::endure
