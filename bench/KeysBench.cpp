// What the user waits for at the keyboard: each key in every box of page 1 that takes typing, with the rule, the
// totals, what is kept against a crash and the picture; and a page turned, with its painting.
#include "ProcessorTime.h"
#include "Require.h"
#include "desktop/RunningProgram.h"
#include "desktop/ScreenWindow.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <fmt/format.h>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {
namespace {

using bench::Require;

/// What is typed into a box whose name begins so, such that nothing is to be told when it is left.
struct Typed {
    std::string_view box, text;
};
constexpr auto TypedTexts = std::to_array<Typed>({
    {"DateofBirth", "01/02/1970"},
    {"NatIns", "AB123456C"},
    {"SexBox", "F"},
    {"FRegDate", "01/02/2008"},
    {"FC02", "152"},
    {"FEngine", "1496"},
    {"FFuel", "P"},
    {"FDateFrom", "01/05/2010"},
    {"FDateTo", "01/03/2011"},
    {"FDateWithdrawn", "01/02/2011"},
    {"FListPrice", "21500"},
    {"FAccessories", "350"},
    {"FCaptContr", "1000"},
    {"FPrivateUse", "120"},
});

std::string_view TextFor(const Box& box)
{
    const auto found = std::ranges::find_if(
        TypedTexts, [&](const Typed& typed) { return std::string_view(box.FullName()).starts_with(typed.box); });
    return found != TypedTexts.end() ? found->text : box.IsAmount() ? "1250.50" : "Two words";
}

/// Times of single pieces of work in milliseconds, sorted when they are told.
class Times {
public:
    void Add(double milliseconds) { times.push_back(milliseconds); }
    std::size_t Count() const { return times.size(); }
    double Percentile(std::size_t percent)
    {
        std::ranges::sort(times);
        return times.at((times.size() - 1) * percent / 100);
    }

private:
    std::vector<double> times;
};

/// What the user does, each by itself: how long it takes up to its picture, which comes before what the windows leave
/// for a moment behind it, and with that.
class Watch : public QObject {
public:
    Watch() { qApp->installEventFilter(this); }

    /// `work` is what the user does, `settle` all that comes of it.
    template<class Work, class Settle>
    void Take(Work work, Settle settle)
    {
        begin.emplace();
        isPainting = true;
        work();
        settle();
        whole.Add(begin->processor.Seconds() * 1000);
        if (painted) {
            picture.Add(painted->processor);
            wall.Add(painted->wall);
        }
        painted.reset();
    }
    void Tell(benchmark::State& state)
    {
        Require(picture.Count() * 2 > whole.Count(), "not much was painted");
        state.counters["count"] = static_cast<double>(whole.Count());
        for (const std::size_t percent : {50, 99, 100}) {
            const std::string name = percent == 100 ? "max" : fmt::format("p{}", percent);
            state.counters[name] = picture.Percentile(percent);
            state.counters["whole " + name] = whole.Percentile(percent);
            state.counters["wall " + name] = wall.Percentile(percent);
        }
    }

private:
    struct Begin {
        bench::ProcessorTime processor;
        std::chrono::steady_clock::time_point moment = std::chrono::steady_clock::now();
    };
    struct Painted {
        double processor, wall;
    };

    bool eventFilter(QObject*, QEvent* event) override
    {
        isPainting = isPainting && event->type() != QEvent::User;
        if (event->type() == QEvent::Paint && isPainting && begin) {
            const std::chrono::duration<double, std::milli> wallTime = std::chrono::steady_clock::now() - begin->moment;
            painted = Painted{.processor = begin->processor.Seconds() * 1000, .wall = wallTime.count()};
        }
        return false;
    }

    std::optional<Begin> begin;
    std::optional<Painted> painted; ///< when the last control came to be painted
    bool isPainting = false;
    Times picture, wall, whole;
};

/// The program with page 1 of an employee in front.
class Desk {
public:
    Desk()
    {
        Require(run.Show("Form3") != nullptr, "page 1 does not open");
        Settle();
    }

    Screen& Front()
    {
        Screens& screens = run.program.TheSession().screens;
        return *screens.Find(screens.IsShown("Side2Form1") ? "Side2Form1" : "Form3");
    }
    ScreenWindow& Window() { return dynamic_cast<ScreenWindow&>(*run.host.WindowOf(Front())); }

    /// Paints what has changed, and does what waits for a moment.
    void Settle()
    {
        QCoreApplication::processEvents();
        run.door.LetTimePass();
        QCoreApplication::processEvents();
    }

    void Press(int key, const QString& text)
    {
        QWidget* const focus = QApplication::focusWidget();
        Require(focus != nullptr, "no box is in use");
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, Qt::NoModifier, text);
            QCoreApplication::sendEvent(focus, &event);
        }
    }

    test::RunningProgram run;
};

/// The box in use, if it takes typing.
Box* BoxInUse(Desk& desk)
{
    auto* const edit = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    if (edit == nullptr || edit->isReadOnly())
        return nullptr;
    for (const auto& box : desk.Front().Boxes())
        if (desk.Window().WidgetOf(*box) == edit)
            return box.get();
    return nullptr;
}

/// Types into the box in use and leaves it, each key by itself.
void TypeInto(Desk& desk, const Box& box, Watch& watch)
{
    for (const char letter : TextFor(box))
        watch.Take([&] { desk.Press(Qt::Key_unknown, QString(QChar::fromLatin1(letter))); }, [&] { desk.Settle(); });
    watch.Take([&] { desk.Press(Qt::Key_Tab, "\t"); }, [&] { desk.Settle(); });
}

void KeysOfPage1(benchmark::State& state)
{
    Desk desk;
    Watch watch;
    std::set<const Box*> met;
    for (auto _ : state) {
        desk.Window().FocusFirst();
        met.clear();
        // Tab goes through all controls of the page and comes back to the first one.
        const QWidget* const first = QApplication::focusWidget();
        do {
            Box* const box = BoxInUse(desk);
            if (box == nullptr) {
                desk.Press(Qt::Key_Tab, "\t");
                continue;
            }
            Require(met.insert(box).second, box->FullName() + " is not left");
            TypeInto(desk, *box, watch);
        } while (QApplication::focusWidget() != first);
    }
    for (const Message& message : desk.run.door.messages)
        state.SkipWithError(message.text.c_str());
    Require(!desk.Front().box("FCashEqu1").Text().empty(), "nothing came of the keys");
    watch.Tell(state);
    state.counters["boxes"] = static_cast<double>(met.size());
}
BENCHMARK(KeysOfPage1)->Unit(benchmark::kMillisecond);

/// From page to page; with a text changed on each before, which is stored.
void PagesTurned(benchmark::State& state, bool isChanged)
{
    Desk desk;
    Watch watch;
    int number = 0;
    for (auto _ : state) {
        Screen& page = desk.Front();
        const bool isPage1 = page.Name() == "Form3";
        if (isChanged)
            page.box(isPage1 ? "ADescriptionAsset" : "ODescExpenses").SetText(std::to_string(++number));
        desk.Settle();
        watch.Take([&] { page.Click(page.box(isPage1 ? "Page2" : "Page1")); }, [&] { desk.Settle(); });
        Require(desk.Front().Name() != page.Name(), "the page is not turned");
    }
    watch.Tell(state);
}
BENCHMARK_CAPTURE(PagesTurned, Seen, false)->Unit(benchmark::kMillisecond)->Iterations(100);
BENCHMARK_CAPTURE(PagesTurned, Stored, true)->Unit(benchmark::kMillisecond)->Iterations(100);

} // namespace
} // namespace quillmere

int main(int argumentCount, char** arguments)
{
    QApplication application(argumentCount, arguments);
    benchmark::Initialize(&argumentCount, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
