#include "Stage.h"
#include "StepFamilies.h"
#include "desktop/BoxWidgets.h"
#include "desktop/DesktopHost.h"
#include "frame/Text.h"
#include "review/BoxNotes.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLineEdit>

#include <algorithm>
#include <fmt/format.h>

namespace quillmere::scenario {

namespace {

void RequireSame(const std::string& found, const std::string& expected)
{
    if (found != expected)
        throw StepFailure("expected " + Shown(expected) + ", found " + Shown(found));
}

// ---- controls and windows

void Expect(Stage& stage, const Step& step)
{
    RequireSame(stage.TextOf(stage.Find(step.words[0])), stage.Text(step.words[1]));
}

void ExpectTrimmed(Stage& stage, const Step& step)
{
    RequireSame(Trim(stage.TextOf(stage.Find(step.words[0]))), Trim(stage.Text(step.words[1])));
}

void AddState(std::vector<std::string>& states, bool state, const char* yes, const char* no)
{
    states.emplace_back(state ? yes : no);
}

void ExpectState(Stage& stage, const Step& step)
{
    const Control control = stage.Find(step.words[0]);
    const Box& box = *control.box;
    std::vector<std::string> held, shown;
    AddState(held, box.Enabled(), "enabled", "disabled");
    AddState(held, box.Visible(), "visible", "hidden");
    AddState(held, box.ReadOnly(), "readonly", "writable");
    AddState(held, box.Ticked(), "ticked", "unticked");
    if (control.action != nullptr) {
        if (control.action->isVisible()) // the toolkit disables what it hides
            AddState(shown, control.action->isEnabled(), "enabled", "disabled");
        AddState(shown, control.action->isVisible(), "visible", "hidden");
        AddState(shown, control.action->isChecked(), "ticked", "unticked");
    } else if (control.widget != nullptr) {
        AddState(shown, control.widget->isEnabledTo(control.widget->window()), "enabled", "disabled");
        AddState(shown, !control.widget->isHidden(), "visible", "hidden");
        if (const auto* edit = qobject_cast<QLineEdit*>(control.widget))
            AddState(shown, edit->isReadOnly(), "readonly", "writable");
        if (box.Kind() == BoxKind::Tick || box.Kind() == BoxKind::Option)
            AddState(shown, static_cast<QAbstractButton*>(control.widget)->isChecked(), "ticked", "unticked");
    }
    for (const std::string& state : shown)
        if (std::ranges::find(held, state) == held.end())
            throw StepFailure("expected the window to show the state of the control, found it " + state +
                              " there alone");
    for (const Word& word : step.words) {
        if (&word == &step.words.front())
            continue;
        if (std::ranges::find(held, word.text) == held.end())
            throw StepFailure("expected " + word.text + ", found " + fmt::format("{}", fmt::join(held, " ")));
    }
}

void ExpectOpen(Stage& stage, const Step& step)
{
    const Screen& screen = stage.OpenScreen(step.words[0].text);
    const QWidget* window = stage.WindowOf(screen.Name());
    if (!stage.Running().screens.IsShown(screen.Name()) || window == nullptr || window->isHidden())
        throw StepFailure("expected " + screen.Name() + " to be open, found it hidden");
}

void ExpectClosed(Stage& stage, const Step& step)
{
    const std::string& name = step.words[0].text;
    if (!stage.IsUp())
        return;
    if (!stage.Running().screens.IsRegistered(name))
        throw StepFailure("there is no screen " + name);
    if (stage.Running().screens.IsShown(name))
        throw StepFailure("expected " + name + " to be closed, found it open");
}

void ExpectFocus(Stage& stage, const Step& step)
{
    const Control control = stage.Find(step.words[0]);
    const QWidget* focus = QApplication::focusWidget();
    if (focus == nullptr || control.widget == nullptr ||
        (focus != control.widget && !control.widget->isAncestorOf(focus)))
        throw StepFailure(
            "expected the focus in " + control.name + ", found it in " +
            (focus == nullptr || focus->objectName().isEmpty() ? "no control" : focus->objectName().toStdString()));
}

void ExpectCaption(Stage& stage, const Step& step)
{
    const Screen& screen = stage.OpenScreen(step.words[0].text);
    const std::string& held = screen.Caption();
    if (const QWidget* window = stage.WindowOf(screen.Name())) {
        const std::string title = window->windowTitle().toStdString();
        // Beside the caption it may say whom the screen is about.
        if (title != held && title != held + " - " + screen.Subject())
            throw StepFailure("expected the window to show the caption " + Shown(held) + ", found " + Shown(title));
    }
    RequireSame(held, stage.Text(step.words[1]));
}

void ExpectList(Stage& stage, const Step& step)
{
    const std::vector<std::string> expected = stage.Texts(step, 1);
    const std::vector<std::string> found = stage.EntriesOf(stage.Find(step.words[0]));
    if (found != expected)
        throw StepFailure("expected " + ShownList(expected) + ", found " + ShownList(found));
}

void ExpectTip(Stage& stage, const Step& step)
{
    const Control control = stage.Find(step.words[0]);
    const std::string& held = control.box->Tip();
    if (control.widget != nullptr) {
        const std::string whole = control.widget->toolTip().toStdString();
        const std::string tip = whole.substr(0, whole.find('\n')); // a note stands below it
        // Beside the tip it may say the letter that presses the control.
        if (tip != held && tip != held + " (Alt+" + control.box->Letter() + ")")
            throw StepFailure("expected the window to show the tip " + Shown(held) + ", found " + Shown(tip));
    }
    RequireSame(held, stage.Text(step.words[1]));
}

/// What there is to tell of the control just now: its tooltip and a screen reader say it last, and it is marked.
void ExpectNote(Stage& stage, const Step& step)
{
    const Control control = stage.Find(step.words[0]);
    const std::string note = review::NotesOf(stage.Running())->Of(*control.screen, *control.box);
    if (control.widget != nullptr) {
        const auto* edit = dynamic_cast<const BoxEdit*>(control.widget);
        const auto* picture = dynamic_cast<const PictureButton*>(control.widget);
        const auto* button = dynamic_cast<const CaptionButton*>(control.widget);
        const bool marked = (edit != nullptr && edit->IsNoted()) || (picture != nullptr && picture->IsNoted()) ||
                            (button != nullptr && button->IsNoted());
        if (marked != !note.empty())
            throw StepFailure(std::string("expected the window to show ") + (note.empty() ? "no mark" : "a mark"));
        for (const QString& said : {control.widget->toolTip(), control.widget->accessibleDescription()})
            if (!note.empty() && !said.endsWith(QString::fromStdString(note)))
                throw StepFailure("expected the window to say " + Shown(note) + ", found " + Shown(said.toStdString()));
    }
    RequireSame(note, stage.Text(step.words[1]));
}

void ExpectColour(Stage& stage, const Step& step)
{
    const Control control = stage.Find(step.words[0]);
    const bool yellow = control.box->PaintedIn() == Paint::Yellow;
    if (control.widget != nullptr) {
        const bool shown = control.widget->palette().color(QPalette::Button) == QColor(Qt::yellow) ||
                           control.widget->palette().color(QPalette::Window) == QColor(Qt::yellow);
        if (shown != yellow)
            throw StepFailure("expected the window to show the colour of the label, found another");
    }
    if (yellow != (step.words[1].text == "yellow"))
        throw StepFailure("expected " + step.words[1].text + ", found " + (yellow ? "yellow" : "plain"));
}

// ---- messages

/// How much of a message's text a step gives.
enum class Match { Whole, Piece };

SeenMessage NextMessage(Stage& stage, const Step& step)
{
    if (stage.platform.unseen.empty())
        throw StepFailure(fmt::format("expected {} {}, found no message box", Shown(stage.Text(step.words[0])),
                                      Shown(stage.Text(step.words[1]))));
    SeenMessage message = stage.platform.unseen.front();
    stage.platform.unseen.pop_front();
    message.title = Slashed(message.title);
    message.text = Slashed(message.text);
    return message;
}

template<Match match>
void ExpectMessage(Stage& stage, const Step& step)
{
    const SeenMessage found = NextMessage(stage, step);
    const std::string title = stage.Text(step.words[0]), text = stage.Text(step.words[1]);
    const bool fits = match == Match::Whole ? found.text == text : found.text.find(text) != std::string::npos;
    if (found.title != title || !fits)
        throw StepFailure(fmt::format("expected {} {}, found {} {}", Shown(title), Shown(text), Shown(found.title),
                                      Shown(found.text)));
}

void ExpectNoMessage(Stage& stage, const Step&)
{
    if (stage.platform.unseen.empty())
        return;
    const SeenMessage& found = stage.platform.unseen.front();
    throw StepFailure(fmt::format("expected no message box, found {} {}", Shown(found.title), Shown(found.text)));
}

void ExpectBeep(Stage& stage, const Step&)
{
    if (stage.platform.beeps == 0)
        throw StepFailure("expected a beep, found none");
}

void ExpectNoBeep(Stage& stage, const Step&)
{
    if (stage.platform.beeps > 0)
        throw StepFailure(fmt::format("expected no beep, found {}", stage.platform.beeps));
}

// ---- what is stored

template<Store store>
void ExpectField(Stage& stage, const Step& step)
{
    bool isNull = false;
    const std::string found = stage.FieldText(step, store, isNull);
    if (!step.words[4].IsNull())
        RequireSame(found, stage.Text(step.words[4]));
    else if (!isNull)
        throw StepFailure("expected null, found " + Shown(found));
}

void ExpectRecord(Stage& stage, const Step& step)
{
    const std::vector<std::string> words = stage.Texts(step, 0);
    bool exists = false;
    stage.world.Look(Store::ThisYear, [&](Database& database) {
        Recordset records = database.OpenRecordset(words[0]);
        exists = TryPosition(records, words[0], words[1], words[2]);
    });
    if (exists != (words[3] == "exists"))
        throw StepFailure("expected the record to be " + std::string(exists ? "absent" : "there") + ", found it " +
                          (exists ? "there" : "absent"));
}

void ExpectCount(Stage& stage, const Step& step)
{
    const TableName name = ParseTable(step.words[0].text, Store::ThisYear);
    int count = 0;
    stage.world.Look(name.store, [&](Database& database) {
        Recordset records = database.OpenRecordset(name.table);
        for (records.MoveFirst(); !records.AtEnd(); records.MoveNext())
            ++count;
    });
    if (count != step.words[1].Number())
        throw StepFailure(fmt::format("expected {} records, found {}", step.words[1].Number(), count));
}

void ExpectFile(Stage& stage, const Step& step)
{
    const std::filesystem::path target = stage.world.File(stage.Text(step.words[0]));
    const bool exists = std::filesystem::exists(target);
    if (exists != (step.words[1].text == "exists"))
        throw StepFailure("expected the file to be " + std::string(exists ? "absent" : "there") + ", found it " +
                          (exists ? "there" : "absent"));
}

void ExpectLine(Stage& stage, const Step& step)
{
    const std::string line = stage.Text(step.words[1]);
    const std::vector<std::string> lines = stage.world.ReadLines(stage.world.File(stage.Text(step.words[0])));
    if (std::ranges::find(lines, line) != lines.end())
        return;
    // A line of the same key tells more than that there is none.
    const std::string key = line.substr(0, line.find('='));
    const auto like =
        std::ranges::find_if(lines, [&](const std::string& other) { return other.substr(0, other.find('=')) == key; });
    throw StepFailure("expected the line " + Shown(line) + ", found " +
                      (like == lines.end() ? "none like it" : Shown(*like)));
}

void ExpectLineNot(Stage& stage, const Step& step)
{
    const std::string line = stage.Text(step.words[1]);
    const std::vector<std::string> lines = stage.world.ReadLines(stage.world.File(stage.Text(step.words[0])));
    if (std::ranges::find(lines, line) != lines.end())
        throw StepFailure("expected no line " + Shown(line) + ", found one");
}

void ExpectLines(Stage& stage, const Step& step)
{
    std::vector<std::string> wanted;
    for (const std::string& line : step.lines)
        wanted.push_back(Slashed(WithPlaces(line, stage.world.GetPlaces())));
    std::string missing;
    if (!StandInOrder(stage.world.ReadLines(stage.world.File(stage.Text(step.words[0]))), wanted, missing))
        throw StepFailure("expected the line " + Shown(missing) + " in its place, found none there");
}

// ---- what is printed

std::vector<DrawnText> PageTexts(Stage& stage, const Word& number)
{
    const int page = number.Number(), count = stage.witness.Last().PageCount();
    if (page < 1 || page > count)
        throw StepFailure(fmt::format("expected a page {}, found {} pages", page, count));
    return TextsOf(stage.witness.Last(), page);
}

void ExpectPages(Stage& stage, const Step& step)
{
    const int count = stage.witness.Last().PageCount();
    if (count != step.words[0].Number())
        throw StepFailure(fmt::format("expected {} pages, found {}", step.words[0].Number(), count));
}

void ExpectPage(Stage& stage, const Step& step)
{
    const std::string text = stage.Text(step.words[1]);
    if (!PageHolds(PageTexts(stage, step.words[0]), text))
        throw StepFailure("expected " + Shown(text) + " on the page, found it nowhere");
}

void ExpectPageNot(Stage& stage, const Step& step)
{
    const std::string text = stage.Text(step.words[1]);
    if (PageHolds(PageTexts(stage, step.words[0]), text))
        throw StepFailure("expected " + Shown(text) + " nowhere on the page, found it");
}

void ExpectJob(Stage& stage, const Step& step)
{
    RequireSame(stage.witness.Last().name, stage.Text(step.words[0]));
    stage.witness.namesSince.clear();
}

void ExpectJobs(Stage& stage, const Step& step)
{
    const std::vector<std::string> expected = stage.Texts(step, 0);
    const std::vector<std::string> found = std::exchange(stage.witness.namesSince, {});
    if (found != expected)
        throw StepFailure("expected " + ShownList(expected) + ", found " + ShownList(found));
}

void ExpectPrinted(Stage& stage, const Step& step)
{
    if (stage.platform.printed.empty())
        throw StepFailure("nothing has been sent to a printer");
    const PrintRequest& request = stage.platform.printed.back();
    const std::string found = fmt::format("{} \"{}\"", request.copies, fmt::join(request.pages, ","));
    const std::string expected = fmt::format("{} \"{}\"", step.words[0].Number(), stage.Text(step.words[1]));
    if (found != expected)
        throw StepFailure("expected " + expected + ", found " + found);
}

void ExpectOpenedFile(Stage& stage, const Step& step)
{
    const std::string expected = Slashed(stage.world.File(stage.Text(step.words[0])).string());
    if (stage.platform.opened.empty())
        throw StepFailure("expected " + Shown(expected) + ", found that nothing was opened");
    RequireSame(Slashed(stage.platform.opened.back().lexically_normal().string()), expected);
}

void ExpectCopied(Stage& stage, const Step& step)
{
    RequireSame(stage.platform.copied, stage.Text(step.words[0]));
}

} // namespace

std::vector<StepRow> ExpectationSteps()
{
    using enum Argument;
    using enum Effect;
    return {
        {"expect", {Control, Text}, Expect, LooksOn},
        {"expect-trimmed", {Control, Text}, ExpectTrimmed, LooksOn},
        {.step = "expect-state",
         .arguments = {Control, Choice},
         .perform = ExpectState,
         .effect = LooksOn,
         .choices = {"enabled", "disabled", "readonly", "writable", "ticked", "unticked", "visible", "hidden"},
         .repeats = true},
        {"expect-open", {Name}, ExpectOpen, LooksOn},
        {"expect-closed", {Name}, ExpectClosed, LooksOn},
        {"expect-focus", {Control}, ExpectFocus, LooksOn},
        {"expect-caption", {Name, Text}, ExpectCaption, LooksOn},
        {.step = "expect-list",
         .arguments = {Control, Text},
         .perform = ExpectList,
         .effect = LooksOn,
         .optional = 1,
         .repeats = true},
        {"expect-tip", {Control, Text}, ExpectTip, LooksOn},
        {"expect-note", {Control, Text}, ExpectNote, LooksOn},
        {"expect-colour", {Control, Choice}, ExpectColour, LooksOn, {"yellow", "plain"}},
        {"expect-message", {Text, Text}, ExpectMessage<Match::Whole>, LooksOn},
        {"expect-message-like", {Text, Text}, ExpectMessage<Match::Piece>, LooksOn},
        {"expect-no-message", {}, ExpectNoMessage, LooksOn},
        {"expect-beep", {}, ExpectBeep, LooksOn},
        {"expect-no-beep", {}, ExpectNoBeep, LooksOn},
        {"expect-field", {Name, Text, Text, Name, Value}, ExpectField<Store::ThisYear>, LooksOn},
        {"expect-last-year-field", {Name, Text, Text, Name, Value}, ExpectField<Store::LastYear>, LooksOn},
        {"expect-record", {Name, Text, Text, Choice}, ExpectRecord, LooksOn, {"exists", "absent"}},
        {"expect-count", {Name, Number}, ExpectCount, LooksOn},
        {"expect-file", {Name, Choice}, ExpectFile, LooksOn, {"exists", "absent"}},
        {"expect-line", {Name, Text}, ExpectLine, LooksOn},
        {"expect-line-not", {Name, Text}, ExpectLineNot, LooksOn},
        {.step = "expect-lines", .arguments = {Name}, .perform = ExpectLines, .effect = LooksOn, .block = true},
        {"expect-pages", {Number}, ExpectPages, LooksOn},
        {"expect-page", {Number, Text}, ExpectPage, LooksOn},
        {"expect-page-not", {Number, Text}, ExpectPageNot, LooksOn},
        {"expect-job", {Text}, ExpectJob, LooksOn},
        {.step = "expect-jobs",
         .arguments = {Text},
         .perform = ExpectJobs,
         .effect = LooksOn,
         .optional = 1,
         .repeats = true},
        {"expect-printed", {Number, Text}, ExpectPrinted, LooksOn},
        {"expect-opened-file", {Name}, ExpectOpenedFile, LooksOn},
        {"expect-copied", {Text}, ExpectCopied, LooksOn},
    };
}

} // namespace quillmere::scenario
