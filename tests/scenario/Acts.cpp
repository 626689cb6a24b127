#include "Hands.h"
#include "Stage.h"
#include "StepFamilies.h"
#include "app/Program.h"
#include "desktop/DesktopHost.h"
#include "desktop/MainWindow.h"

#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>

namespace quillmere::scenario {

namespace {

// ---- the program

void Start(Stage& stage, const Step&)
{
    stage.StartProgram();
}

void Quit(Stage& stage, const Step&)
{
    stage.Running();
    stage.Host().Main()->close();
    stage.RunOut();
    if (stage.IsUp())
        throw StepFailure("expected the program to end, found it still up");
}

void Restart(Stage& stage, const Step& step)
{
    Quit(stage, step);
    stage.StartProgram();
}

void Kill(Stage& stage, const Step&)
{
    stage.Running();
    stage.DropProgram();
}

void Later(Stage& stage, const Step&)
{
    stage.Running();
    stage.platform.LetTimePass();
}

void StartSecond(Stage& stage, const Step&)
{
    stage.Running();
    quillmere::Program second(
        stage.platform, nullptr,
        ProgramPlaces{.programFolder = stage.world.Program(), .resourceFolder = stage.world.Program()});
    if (second.Main())
        throw StepFailure("expected the second instance to end at once, found it started");
}

// ---- the user

void Menu(Stage& stage, const Step& step)
{
    const Control control = stage.Find(step.words[0]);
    if (control.action == nullptr)
        throw StepFailure(control.name + " is no entry of a menu");
    hands::RequireNotBlocked(*stage.Host().Main(), control.name);
    if (!control.box->Visible() || !control.action->isVisible())
        throw StepFailure("expected " + control.name + " to be in the menu, found it hidden");
    if (!control.box->Enabled() || !control.action->isEnabled())
        throw StepFailure("expected " + control.name + " to be enabled, found it disabled");
    control.action->trigger();
}

void Click(Stage& stage, const Step& step)
{
    const Control control = stage.Find(step.words[0]);
    if (control.box->Kind() == BoxKind::Menu)
        return Menu(stage, step);
    hands::Click(stage.WidgetOf(control), control.name);
}

void DoubleClick(Stage& stage, const Step& step)
{
    const Control control = stage.Find(step.words[0]);
    QWidget& widget = stage.WidgetOf(control);
    if (step.words.size() == 1)
        return hands::DoubleClick(widget, control.name);
    auto* list = qobject_cast<QAbstractItemView*>(&widget);
    if (list == nullptr)
        throw StepFailure(control.name + " is no list");
    hands::ClickEntry(*list, stage.Text(step.words[1]), true, control.name);
}

void Choose(Stage& stage, const Step& step)
{
    const Control control = stage.Find(step.words[0]);
    QWidget& widget = stage.WidgetOf(control);
    const std::string entry = stage.Text(step.words[1]);
    if (auto* list = qobject_cast<QAbstractItemView*>(&widget))
        hands::ClickEntry(*list, entry, false, control.name);
    else if (auto* drop = qobject_cast<QComboBox*>(&widget))
        hands::ChooseEntry(*drop, entry, control.name);
    else
        throw StepFailure(control.name + " is no list");
}

/// Puts the focus in the box of a step.
void PutFocus(Stage& stage, const Step& step)
{
    const Control control = stage.Find(step.words[0]);
    hands::PutFocus(stage.WidgetOf(control), control.name);
}

void Type(Stage& stage, const Step& step)
{
    PutFocus(stage, step);
    hands::Press("End");
    hands::Type(stage.Text(step.words[1]));
}

void Enter(Stage& stage, const Step& step)
{
    PutFocus(stage, step);
    hands::Press("Ctrl+A");
    hands::Press("Del");
    hands::Type(stage.Text(step.words[1]));
    hands::TakeFocus();
}

void Paste(Stage& stage, const Step& step)
{
    PutFocus(stage, step);
    hands::Press("End");
    hands::Paste(stage.Text(step.words[1]));
}

void Leave(Stage& stage, const Step&)
{
    stage.Running();
    hands::TakeFocus();
}

template<bool wanted>
void SetTick(Stage& stage, const Step& step)
{
    const Control control = stage.Find(step.words[0]);
    const BoxKind kind = control.box->Kind();
    if (kind != BoxKind::Tick && kind != BoxKind::Option)
        throw StepFailure(control.name + " is neither a tick box nor an option");
    if (control.box->Ticked() == wanted)
        return;
    if (kind == BoxKind::Option && !wanted)
        throw StepFailure("expected " + control.name + " to be cleared, but a click does not clear an option");
    hands::Click(stage.WidgetOf(control), control.name);
}

void Window(Stage& stage, const Step& step)
{
    QWidget* window = stage.WindowOf(step.words[0].text);
    if (window == nullptr || !window->isWindow())
        throw StepFailure("expected " + step.words[0].text + " to have a window of its own, found none");
    const std::string& state = step.words[1].text;
    if (state == "minimised")
        window->showMinimized();
    else if (state == "maximised")
        window->showMaximized();
    else if (state == "closed")
        window->close();
    else
        window->showNormal();
}

void OpenUnreached(Stage& stage, const Step& step)
{
    const std::string& name = step.words[0].text;
    Screens& screens = stage.Running().screens;
    if (!screens.IsRegistered(name))
        throw StepFailure("there is no screen " + name);
    constexpr std::string_view ofVan = "GNotepad2";
    if (step.words.size() > 1 && name != ofVan)
        throw StepFailure(name + " is one screen: it takes no number");
    if (name == ofVan) {
        const int van = step.words.size() > 1 ? std::stoi(step.words[1].text) : 1;
        if (van < 1 || van > 3)
            throw StepFailure("there is no van " + step.words[1].text);
        stage.Running().VanOfHistory = van;
    }
    if (screens.Show(name) == nullptr)
        throw StepFailure("expected " + name + " to open, found it closed");
}

void Key(Stage& stage, const Step& step)
{
    stage.Running();
    for (const Word& word : step.words)
        hands::Press(word.text);
}

/// Types where the focus is, wherever that may be.
void Write(Stage& stage, const Step& step)
{
    stage.Running();
    hands::Type(stage.Text(step.words[0]));
}

void AnswerNext(Stage& stage, const Step& step)
{
    const Word& word = step.words[0];
    stage.platform.answers.push_back(
        {word.quoted ? WithPlaces(word.text, stage.world.GetPlaces()) : word.text, word.quoted, step.line});
}

void WaitIdle(Stage& stage, const Step&)
{
    stage.RunOut();
}

} // namespace

std::vector<StepRow> ActSteps()
{
    using enum Argument;
    using enum Effect;
    return {
        {"start", {}, Start, Acts},
        {"quit", {}, Quit, Acts},
        {"restart", {}, Restart, Acts},
        {"kill", {}, Kill, Acts},
        {"later", {}, Later, Acts},
        {"start-second", {}, StartSecond, Acts},
        {"menu", {Control}, Menu, Acts},
        {"click", {Control}, Click, Acts},
        {.step = "doubleclick", .arguments = {Control, Text}, .perform = DoubleClick, .effect = Acts, .optional = 1},
        {"type", {Control, Text}, Type, Acts},
        {"enter", {Control, Text}, Enter, Acts},
        {"leave", {}, Leave, Acts},
        {"tick", {Control}, SetTick<true>, Acts},
        {"untick", {Control}, SetTick<false>, Acts},
        {"paste", {Control, Text}, Paste, Acts},
        {"choose", {Control, Text}, Choose, Acts},
        {"window", {Name, Choice}, Window, Acts, {"minimised", "maximised", "normal", "closed"}},
        {.step = "open-screen", .arguments = {Name, Number}, .perform = OpenUnreached, .effect = Acts, .optional = 1},
        {.step = "key", .arguments = {Name}, .perform = Key, .effect = Acts, .repeats = true},
        {"write", {Text}, Write, Acts},
        {"answer", {Text}, AnswerNext, LooksOn, {"yes", "no", "ok", "cancel"}},
        {"wait-idle", {}, WaitIdle, LooksOn},
    };
}

} // namespace quillmere::scenario
