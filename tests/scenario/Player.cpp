#include "Player.h"

#include "Hands.h"
#include "app/Program.h"
#include "clientdb/Employees.h"
#include "desktop/DesktopHost.h"
#include "desktop/MainWindow.h"
#include "frame/Text.h"
#include "printing/PdfWriter.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>
#include <fmt/format.h>
#include <fstream>

namespace quillmere::scenario {

namespace {

constexpr auto MainScreen = "MDIForm1";
constexpr char Separator = std::filesystem::path::preferred_separator;

/// The day on which a scenario plays unless it says otherwise.
constexpr auto StandardDay = std::chrono::sys_days(std::chrono::year(2011) / 6 / 30);

/// Size of the screen for which the windows are laid out.
constexpr int ScreenHeight = 768, ScreenWidth = 1366;

int Number(const Word& word)
{
    return std::stoi(word.text);
}

bool IsNull(const Word& word)
{
    return !word.quoted && word.text == "null";
}

/// A step with which time goes on: beeps are counted from it.
bool IsAct(const Step& step)
{
    constexpr auto Others = std::to_array<std::string_view>({"answer", "wait-idle", "note", "picture", "save-pdf"});
    return !step.name.starts_with("expect") && !step.name.starts_with("show") &&
           std::ranges::find(Others, step.name) == Others.end();
}

/// A step that gives records, which are written in one go.
bool GivesRecords(const Step& step)
{
    constexpr auto Giving = std::to_array<std::string_view>({"today", "note", "given-file", "given-printers",
                                                             "given-employee", "given-last-year-employee",
                                                             "given-field", "given-last-year-field", "given-row"});
    return std::ranges::find(Giving, step.name) != Giving.end();
}

std::string Utf8(const QString& text)
{
    return text.toStdString();
}

/// What a widget shows as its text; nothing for one that shows none.
std::optional<std::string> ShownText(const QWidget& widget)
{
    if (const auto* edit = qobject_cast<const QLineEdit*>(&widget))
        return Utf8(edit->text());
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return Utf8(label->text());
    if (const auto* list = qobject_cast<const QListWidget*>(&widget)) {
        const QList<QListWidgetItem*> chosen = list->selectedItems();
        return chosen.isEmpty() ? "" : Utf8(chosen.front()->text());
    }
    if (const auto* list = qobject_cast<const QComboBox*>(&widget))
        return list->currentIndex() < 0 ? "" : Utf8(list->currentText());
    if (qobject_cast<const QPushButton*>(&widget) != nullptr || qobject_cast<const QCheckBox*>(&widget) != nullptr ||
        qobject_cast<const QRadioButton*>(&widget) != nullptr)
        return Utf8(static_cast<const QAbstractButton&>(widget).text());
    return std::nullopt;
}

void AddState(std::vector<std::string>& states, bool state, const char* yes, const char* no)
{
    states.emplace_back(state ? yes : no);
}

} // namespace

Player::Player(std::string fileName, const Folders& folders)
    : file(std::move(fileName)),
      pictures(folders.pictures),
      tellSteps(folders.tellSteps),
      world(folders.resources, folders.root)
{
    platform.today = StandardDay;
    platform.programFolder = world.Program();
}

Player::~Player()
{
    DropProgram();
}

const std::unordered_map<std::string_view, Player::Action>& Player::Actions()
{
    static const std::unordered_map<std::string_view, Action> actions = {
        {"today", &Player::Today},
        {"given-file", &Player::GivenFile},
        {"given-employee", &Player::GivenThisEmployee},
        {"given-last-year-employee", &Player::GivenLastYearEmployee},
        {"given-field", &Player::GivenThisField},
        {"given-last-year-field", &Player::GivenLastYearField},
        {"given-row", &Player::GivenRow},
        {"remove-record", &Player::RemoveThisRecord},
        {"remove-last-year-record", &Player::RemoveLastYearRecord},
        {"given-printers", &Player::GivenPrinters},
        {"remove-file", &Player::RemoveFile},
        {"lock-file", &Player::LockFile},
        {"unlock-file", &Player::UnlockFile},
        {"read-only", &Player::ReadOnly},
        {"start", &Player::Start},
        {"quit", &Player::Quit},
        {"restart", &Player::Restart},
        {"kill", &Player::Kill},
        {"start-second", &Player::StartSecond},
        {"menu", &Player::Menu},
        {"click", &Player::Click},
        {"doubleclick", &Player::DoubleClick},
        {"type", &Player::Type},
        {"enter", &Player::Enter},
        {"leave", &Player::Leave},
        {"tick", &Player::Tick},
        {"untick", &Player::Untick},
        {"paste", &Player::Paste},
        {"choose", &Player::Choose},
        {"window", &Player::Window},
        {"open-screen", &Player::OpenUnreached},
        {"key", &Player::Key},
        {"answer", &Player::AnswerNext},
        {"wait-idle", &Player::WaitIdle},
        {"expect", &Player::Expect},
        {"expect-trimmed", &Player::ExpectTrimmed},
        {"expect-state", &Player::ExpectState},
        {"expect-message", &Player::ExpectWholeMessage},
        {"expect-message-like", &Player::ExpectMessageLike},
        {"expect-no-message", &Player::ExpectNoMessage},
        {"expect-beep", &Player::ExpectBeep},
        {"expect-no-beep", &Player::ExpectNoBeep},
        {"expect-open", &Player::ExpectOpen},
        {"expect-closed", &Player::ExpectClosed},
        {"expect-focus", &Player::ExpectFocus},
        {"expect-caption", &Player::ExpectCaption},
        {"expect-list", &Player::ExpectList},
        {"expect-field", &Player::ExpectThisField},
        {"expect-last-year-field", &Player::ExpectLastYearField},
        {"expect-record", &Player::ExpectRecord},
        {"expect-count", &Player::ExpectCount},
        {"expect-file", &Player::ExpectFile},
        {"expect-line", &Player::ExpectLine},
        {"expect-line-not", &Player::ExpectLineNot},
        {"expect-lines", &Player::ExpectLines},
        {"expect-tip", &Player::ExpectTip},
        {"expect-colour", &Player::ExpectColour},
        {"expect-pages", &Player::ExpectPages},
        {"expect-page", &Player::ExpectPage},
        {"expect-page-not", &Player::ExpectPageNot},
        {"expect-job", &Player::ExpectJob},
        {"expect-jobs", &Player::ExpectJobs},
        {"expect-printed", &Player::ExpectPrinted},
        {"expect-opened-file", &Player::ExpectOpenedFile},
        {"show", &Player::Show},
        {"show-field", &Player::ShowField},
        {"show-document", &Player::ShowDocument},
        {"picture", &Player::Picture},
        {"save-pdf", &Player::SavePdf},
        {"note", &Player::Note},
    };
    return actions;
}

// ---- the whole file

bool Player::Play(std::string_view text)
{
    const Script script = ParseScript(text);
    for (const ScriptError& error : script.errors)
        Fail(error.line, error.text);
    if (!script.errors.empty())
        return false;
    for (const Step& step : script.steps)
        Perform(step);
    world.WriteGiven([this](const Step& given, const std::exception& error) { FailStep(given, error.what()); });
    LookForLeftOvers();
    return failures == 0;
}

void Player::Perform(const Step& step)
{
    platform.line = step.line;
    if (tellSteps && step.name != "note")
        fmt::print("    {}\n", step.source);
    try {
        if (!GivesRecords(step))
            world.WriteGiven([this](const Step& given, const std::exception& error) { FailStep(given, error.what()); });
        if (IsAct(step))
            platform.beeps = 0;
        (this->*Actions().at(step.name))(step);
        if (IsAct(step))
            RunOut();
    } catch (const std::exception& error) {
        FailStep(step, error.what());
    }
    TellMisfits(step);
}

void Player::Fail(int line, const std::string& text)
{
    ++failures;
    fmt::print("{}:{}: {}\n", file, line, text);
}

void Player::FailStep(const Step& step, const std::string& text)
{
    Fail(step.line, step.source + ": " + text);
}

void Player::TellMisfits(const Step& step)
{
    for (const std::string& misfit : std::exchange(platform.misfits, {}))
        FailStep(step, misfit);
}

void Player::LookForLeftOvers()
{
    for (const SeenMessage& message : platform.unseen)
        Fail(message.line,
             fmt::format("expected no more message boxes, found {} {}", Shown(message.title), Shown(message.text)));
    for (const ScriptedAnswer& answer : platform.answers)
        Fail(answer.line, fmt::format("expected a box to answer with {}, found none", answer.text));
}

// ---- the program

Session& Player::Running()
{
    if (program == nullptr)
        throw StepFailure("expected the program to be up, found it down");
    return program->GetSession();
}

void Player::RunOut()
{
    constexpr int MostRounds = 100;
    for (int round = 0; round < MostRounds; ++round) {
        hands::Settle();
        if (program == nullptr || !program->GetSession().screens.HasDeferred())
            break;
        program->GetSession().screens.RunDeferred();
    }
    if (program != nullptr && program->Ended())
        DropProgram();
    if (program != nullptr && QApplication::activeWindow() == nullptr)
        ActivateFront();
}

void Player::ActivateFront()
{
    const std::vector<Screen*> open = program->GetSession().screens.Open();
    const auto front = std::find_if(open.rbegin(), open.rend(), [this](const Screen* screen) {
        const QWidget* window = host->WindowOf(*screen);
        return window != nullptr && window->isWindow() && window->isVisible();
    });
    if (front != open.rend())
        hands::Activate(*host->WindowOf(**front));
}

void Player::StartProgram()
{
    if (program != nullptr)
        throw StepFailure("expected the program to be down, found it up");
    host = std::make_unique<DesktopHost>();
    platform.host = host.get();
    program = std::make_unique<quillmere::Program>(platform, host.get(),
                                                   ProgramPlaces{.programFolder = world.Program(),
                                                                 .resourceFolder = world.Program(),
                                                                 .screenHeight = ScreenHeight,
                                                                 .screenWidth = ScreenWidth});
    host->SetScreens(&program->GetSession().screens);
    program->Printing().engine.documentEnded = [this](std::shared_ptr<const Document> document) {
        witness.Finished(std::move(document));
    };
    bool started = false;
    try {
        started = program->Main();
    } catch (...) {
        DropProgram();
        throw;
    }
    if (!started) {
        DropProgram();
        throw StepFailure("expected the program to start, found that it ended at once");
    }
    world.SetSession(&program->GetSession());
    RunOut();
    if (program != nullptr && program->GetSession().settings.applicationMaximised)
        hands::FillScreen(*host->Main());
}

void Player::DropProgram()
{
    world.SetSession(nullptr);
    platform.host = nullptr;
    if (program != nullptr)
        program->GetSession().screens.Abandon();
    hands::Settle();
    program.reset();
    host.reset();
    hands::Settle();
}

void Player::Start(const Step&)
{
    StartProgram();
}

void Player::Quit(const Step&)
{
    Running();
    host->Main()->close();
    RunOut();
    if (program != nullptr)
        throw StepFailure("expected the program to end, found it still up");
}

void Player::Restart(const Step& step)
{
    Quit(step);
    StartProgram();
}

void Player::Kill(const Step&)
{
    Running();
    DropProgram();
}

void Player::StartSecond(const Step&)
{
    Running();
    quillmere::Program second(platform, nullptr,
                              ProgramPlaces{.programFolder = world.Program(), .resourceFolder = world.Program()});
    if (second.Main())
        throw StepFailure("expected the second instance to end at once, found it started");
}

// ---- finding

Screen& Player::OpenScreen(const std::string& name)
{
    Screens& screens = Running().screens;
    Screen* screen = screens.Find(name);
    if (screen != nullptr)
        return *screen;
    if (!screens.IsRegistered(name))
        throw StepFailure("there is no screen " + name);
    throw StepFailure("expected " + name + " to be open, found it closed");
}

Player::Control Player::Find(const Word& word)
{
    const ControlName name = ParseControl(word.text);
    Control control{.name = word.text, .screen = &OpenScreen(name.screen)};
    control.box = control.screen->FindBox(name.box, name.index);
    if (control.box == nullptr)
        throw StepFailure(name.screen + " has no control " + word.text.substr(word.text.find('.') + 1));
    if (control.box->GetKind() == Kind::Menu)
        control.action = host->Main()->findChild<QAction*>(
            QString::fromStdString(std::string(MainScreen) + "." + control.box->FullName()));
    else
        control.widget = host->WidgetOf(*control.screen, *control.box);
    return control;
}

QWidget& Player::WidgetOf(const Control& control)
{
    if (control.widget == nullptr)
        throw StepFailure("expected " + control.name + " to be within reach, found it hidden");
    return *control.widget;
}

std::string Player::Text(const Word& word) const
{
    return WithSlashes(WithPlaces(word.text, world.GetPlaces()), Separator);
}

std::vector<std::string> Player::Texts(const Step& step, std::size_t from) const
{
    std::vector<std::string> texts;
    for (std::size_t place = from; place < step.words.size(); ++place)
        texts.push_back(Text(step.words[place]));
    return texts;
}

std::string Player::TextOf(const Control& control)
{
    const std::string& held = control.box->Text();
    std::optional<std::string> shown;
    if (control.action != nullptr)
        shown = Utf8(control.action->text());
    else if (control.widget != nullptr)
        shown = ShownText(*control.widget);
    if (shown && *shown != held)
        throw StepFailure("expected the window to show what the box holds, " + Shown(held) + ", found " +
                          Shown(*shown));
    return WithSlashes(held, Separator);
}

std::vector<std::string> Player::EntriesOf(const Control& control)
{
    const Kind kind = control.box->GetKind();
    if (kind != Kind::List && kind != Kind::DropDown)
        throw StepFailure(control.name + " is no list");
    std::vector<std::string> shown;
    if (auto* list = qobject_cast<QListWidget*>(control.widget)) {
        for (int row = 0; row < list->count(); ++row)
            shown.push_back(Utf8(list->item(row)->text()));
    } else if (auto* drop = qobject_cast<QComboBox*>(control.widget)) {
        for (int row = 0; row < drop->count(); ++row)
            shown.push_back(Utf8(drop->itemText(row)));
    }
    const auto& held = control.box->Entries();
    if (control.widget != nullptr && shown != held)
        throw StepFailure("expected the window to show what the list holds, " + ShownList(held) + ", found " +
                          ShownList(shown));
    return held;
}

const Document& Player::LastDocument() const
{
    if (witness.last == nullptr)
        throw StepFailure("nothing has been printed");
    return *witness.last;
}

std::vector<DrawnText> Player::PageTexts(const Word& number) const
{
    const int page = Number(number), count = LastDocument().PageCount();
    if (page < 1 || page > count)
        throw StepFailure(fmt::format("expected a page {}, found {} pages", page, count));
    return TextsOf(LastDocument(), page);
}

void Player::RequireSame(const std::string& found, const std::string& expected) const
{
    if (found != expected)
        throw StepFailure("expected " + Shown(expected) + ", found " + Shown(found));
}

// ---- setting up

void Player::Today(const Step& step)
{
    const std::string& text = step.words[0].text;
    platform.today = std::chrono::sys_days(std::chrono::year(std::stoi(text.substr(0, 4))) /
                                           std::stoi(text.substr(5, 2)) / std::stoi(text.substr(8, 2)));
}

void Player::GivenFile(const Step& step)
{
    world.WriteLines(world.File(Text(step.words[0])), step.lines);
}

void Player::ChangeStore(const Step& step, Store store, World::Change change)
{
    if (program == nullptr && GivesRecords(step))
        world.Later(store, step, std::move(change));
    else
        world.Now(store, change);
}

void Player::GivenEmployee(const Step& step, Store store)
{
    const NewEmployee employee{.employer = Text(step.words[0]),
                               .firstName = Text(step.words[1]),
                               .surname = Text(step.words[2]),
                               .payeReference = Text(step.words[3])};
    ChangeStore(step, store, [employee](Database& database) { CreateEmployee(database, employee); });
}

void Player::GivenField(const Step& step, Store store)
{
    const std::vector<std::string> words = Texts(step, 0);
    ChangeStore(step, store, [words, null = IsNull(step.words[4])](Database& database) {
        Recordset records = database.OpenRecordset(words[0]);
        Position(records, words[0], words[1], words[2]);
        records.Edit();
        if (null)
            records.SetNull(words[3]);
        else
            records.SetField(words[3], words[4]);
        records.Update();
    });
}

void Player::GivenRow(const Step& step)
{
    const TableName name = ParseTable(step.words[0].text, Store::ThisYear);
    const std::vector<std::string> texts = Texts(step, 0);
    ChangeStore(step, name.store, [name, texts, words = step.words](Database& database) {
        Recordset records = database.OpenRecordset(name.table);
        records.AddNew();
        for (std::size_t place = 1; place < words.size(); ++place) {
            if (IsNull(words[place]))
                records.SetNull(words[place].column);
            else
                records.SetField(words[place].column, texts[place]);
        }
        records.Update();
    });
}

void Player::RemoveRecord(const Step& step, Store store)
{
    const std::vector<std::string> words = Texts(step, 0);
    ChangeStore(step, store, [words](Database& database) {
        Recordset records = database.OpenRecordset(words[0]);
        Position(records, words[0], words[1], words[2]);
        records.Delete();
    });
}

void Player::GivenPrinters(const Step& step)
{
    platform.printers = Texts(step, 0);
}

void Player::RemoveFile(const Step& step)
{
    const std::filesystem::path target = world.File(Text(step.words[0]));
    if (std::filesystem::remove_all(target) == 0)
        throw StepFailure("expected " + target.string() + " to be there, found nothing");
}

void Player::LockFile(const Step& step)
{
    world.GetFaults().Lock(world.File(Text(step.words[0])));
}

void Player::UnlockFile(const Step& step)
{
    world.GetFaults().Unlock(world.File(Text(step.words[0])));
}

void Player::ReadOnly(const Step& step)
{
    world.GetFaults().MakeReadOnly(world.File(Text(step.words[0])));
}

// ---- the user

void Player::Menu(const Step& step)
{
    const Control control = Find(step.words[0]);
    if (control.action == nullptr)
        throw StepFailure(control.name + " is no entry of a menu");
    hands::RequireNotBlocked(*host->Main(), control.name);
    if (!control.box->Visible() || !control.action->isVisible())
        throw StepFailure("expected " + control.name + " to be in the menu, found it hidden");
    if (!control.box->Enabled() || !control.action->isEnabled())
        throw StepFailure("expected " + control.name + " to be enabled, found it disabled");
    control.action->trigger();
}

void Player::Click(const Step& step)
{
    const Control control = Find(step.words[0]);
    if (control.box->GetKind() == Kind::Menu)
        return Menu(step);
    hands::Click(WidgetOf(control), control.name);
}

void Player::DoubleClick(const Step& step)
{
    const Control control = Find(step.words[0]);
    QWidget& widget = WidgetOf(control);
    if (step.words.size() == 1)
        return hands::DoubleClick(widget, control.name);
    auto* list = qobject_cast<QListWidget*>(&widget);
    if (list == nullptr)
        throw StepFailure(control.name + " is no list");
    hands::ClickEntry(*list, Text(step.words[1]), true, control.name);
}

void Player::Choose(const Step& step)
{
    const Control control = Find(step.words[0]);
    QWidget& widget = WidgetOf(control);
    const std::string entry = Text(step.words[1]);
    if (auto* list = qobject_cast<QListWidget*>(&widget))
        hands::ClickEntry(*list, entry, false, control.name);
    else if (auto* drop = qobject_cast<QComboBox*>(&widget))
        hands::ChooseEntry(*drop, entry, control.name);
    else
        throw StepFailure(control.name + " is no list");
}

void Player::FocusForTyping(const Control& control)
{
    hands::PutFocus(WidgetOf(control), control.name);
}

void Player::Type(const Step& step)
{
    FocusForTyping(Find(step.words[0]));
    hands::Press("End");
    hands::Type(Text(step.words[1]));
}

void Player::Enter(const Step& step)
{
    FocusForTyping(Find(step.words[0]));
    hands::Press("Ctrl+A");
    hands::Press("Del");
    hands::Type(Text(step.words[1]));
    hands::TakeFocus();
}

void Player::Paste(const Step& step)
{
    FocusForTyping(Find(step.words[0]));
    hands::Press("End");
    hands::Paste(Text(step.words[1]));
}

void Player::Leave(const Step&)
{
    Running();
    hands::TakeFocus();
}

void Player::SetTick(const Step& step, bool wanted)
{
    const Control control = Find(step.words[0]);
    const Kind kind = control.box->GetKind();
    if (kind != Kind::Tick && kind != Kind::Option)
        throw StepFailure(control.name + " is neither a tick box nor an option");
    if (control.box->Ticked() == wanted)
        return;
    if (kind == Kind::Option && !wanted)
        throw StepFailure("expected " + control.name + " to be cleared, but a click does not clear an option");
    hands::Click(WidgetOf(control), control.name);
}

void Player::Window(const Step& step)
{
    QWidget* window = host == nullptr ? nullptr : host->WindowOf(OpenScreen(step.words[0].text));
    if (window == nullptr || !window->isWindow())
        throw StepFailure("expected " + step.words[0].text + " to have a window of its own, found none");
    const std::string& state = step.words[1].text;
    if (state == "minimised")
        window->showMinimized();
    else if (state == "maximised")
        window->showMaximized();
    else
        window->showNormal();
}

void Player::OpenUnreached(const Step& step)
{
    const std::string& name = step.words[0].text;
    Screens& screens = Running().screens;
    if (!screens.IsRegistered(name))
        throw StepFailure("there is no screen " + name);
    constexpr std::string_view ofVan = "GNotepad2";
    if (step.words.size() > 1 && name != ofVan)
        throw StepFailure(name + " is one screen: it takes no number");
    if (name == ofVan) {
        const int van = step.words.size() > 1 ? std::stoi(step.words[1].text) : 1;
        if (van < 1 || van > 3)
            throw StepFailure("there is no van " + step.words[1].text);
        Running().VanOfHistory = van;
    }
    if (screens.Show(name) == nullptr)
        throw StepFailure("expected " + name + " to open, found it closed");
}

void Player::Key(const Step& step)
{
    Running();
    for (const Word& word : step.words)
        hands::Press(word.text);
}

void Player::AnswerNext(const Step& step)
{
    const Word& word = step.words[0];
    platform.answers.push_back(
        {word.quoted ? WithPlaces(word.text, world.GetPlaces()) : word.text, word.quoted, step.line});
}

void Player::WaitIdle(const Step&)
{
    RunOut();
}

// ---- expecting

void Player::Expect(const Step& step)
{
    RequireSame(TextOf(Find(step.words[0])), Text(step.words[1]));
}

void Player::ExpectTrimmed(const Step& step)
{
    RequireSame(Trim(TextOf(Find(step.words[0]))), Trim(Text(step.words[1])));
}

void Player::ExpectState(const Step& step)
{
    const Control control = Find(step.words[0]);
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
        if (box.GetKind() == Kind::Tick || box.GetKind() == Kind::Option)
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

SeenMessage Player::NextMessage(const Step& step)
{
    if (platform.unseen.empty())
        throw StepFailure(fmt::format("expected {} {}, found no message box", Shown(Text(step.words[0])),
                                      Shown(Text(step.words[1]))));
    SeenMessage message = platform.unseen.front();
    platform.unseen.pop_front();
    message.title = WithSlashes(message.title, Separator);
    message.text = WithSlashes(message.text, Separator);
    return message;
}

void Player::ExpectMessage(const Step& step, bool whole)
{
    const SeenMessage found = NextMessage(step);
    const std::string title = Text(step.words[0]), text = Text(step.words[1]);
    const bool fits = whole ? found.text == text : found.text.find(text) != std::string::npos;
    if (found.title != title || !fits)
        throw StepFailure(fmt::format("expected {} {}, found {} {}", Shown(title), Shown(text), Shown(found.title),
                                      Shown(found.text)));
}

void Player::ExpectNoMessage(const Step&)
{
    if (platform.unseen.empty())
        return;
    const SeenMessage& found = platform.unseen.front();
    throw StepFailure(fmt::format("expected no message box, found {} {}", Shown(found.title), Shown(found.text)));
}

void Player::ExpectBeep(const Step&)
{
    if (platform.beeps == 0)
        throw StepFailure("expected a beep, found none");
}

void Player::ExpectNoBeep(const Step&)
{
    if (platform.beeps > 0)
        throw StepFailure(fmt::format("expected no beep, found {}", platform.beeps));
}

void Player::ExpectOpen(const Step& step)
{
    const Screen& screen = OpenScreen(step.words[0].text);
    const QWidget* window = host->WindowOf(screen);
    if (!Running().screens.IsShown(screen.Name()) || window == nullptr || window->isHidden())
        throw StepFailure("expected " + screen.Name() + " to be open, found it hidden");
}

void Player::ExpectClosed(const Step& step)
{
    const std::string& name = step.words[0].text;
    if (program == nullptr)
        return;
    if (!Running().screens.IsRegistered(name))
        throw StepFailure("there is no screen " + name);
    if (Running().screens.IsShown(name))
        throw StepFailure("expected " + name + " to be closed, found it open");
}

void Player::ExpectFocus(const Step& step)
{
    const Control control = Find(step.words[0]);
    const QWidget* focus = QApplication::focusWidget();
    if (focus == nullptr || control.widget == nullptr ||
        (focus != control.widget && !control.widget->isAncestorOf(focus)))
        throw StepFailure("expected the focus in " + control.name + ", found it in " +
                          (focus == nullptr ? "nothing" : Utf8(focus->objectName())));
}

void Player::ExpectCaption(const Step& step)
{
    const Screen& screen = OpenScreen(step.words[0].text);
    const std::string& held = screen.Caption();
    if (const QWidget* window = host->WindowOf(screen); window != nullptr && Utf8(window->windowTitle()) != held)
        throw StepFailure("expected the window to show the caption " + Shown(held) + ", found " +
                          Shown(Utf8(window->windowTitle())));
    RequireSame(held, Text(step.words[1]));
}

void Player::ExpectList(const Step& step)
{
    const std::vector<std::string> expected = Texts(step, 1);
    const std::vector<std::string> found = EntriesOf(Find(step.words[0]));
    if (found != expected)
        throw StepFailure("expected " + ShownList(expected) + ", found " + ShownList(found));
}

std::string Player::FieldText(const Step& step, Store store, bool& isNull)
{
    const std::vector<std::string> words = Texts(step, 0);
    std::string text;
    world.Look(store, [&](Database& database) {
        Recordset records = database.OpenRecordset(words[0]);
        Position(records, words[0], words[1], words[2]);
        isNull = records.IsNull(words[3]);
        text = records.Field(words[3]);
    });
    return WithSlashes(text, Separator);
}

void Player::ExpectField(const Step& step, Store store)
{
    bool isNull = false;
    const std::string found = FieldText(step, store, isNull);
    if (!IsNull(step.words[4]))
        RequireSame(found, Text(step.words[4]));
    else if (!isNull)
        throw StepFailure("expected null, found " + Shown(found));
}

void Player::ExpectRecord(const Step& step)
{
    const std::vector<std::string> words = Texts(step, 0);
    bool exists = false;
    world.Look(Store::ThisYear, [&](Database& database) {
        Recordset records = database.OpenRecordset(words[0]);
        exists = TryPosition(records, words[0], words[1], words[2]);
    });
    if (exists != (words[3] == "exists"))
        throw StepFailure("expected the record to be " + std::string(exists ? "absent" : "there") + ", found it " +
                          (exists ? "there" : "absent"));
}

void Player::ExpectCount(const Step& step)
{
    const TableName name = ParseTable(step.words[0].text, Store::ThisYear);
    int count = 0;
    world.Look(name.store, [&](Database& database) {
        Recordset records = database.OpenRecordset(name.table);
        for (records.MoveFirst(); !records.AtEnd(); records.MoveNext())
            ++count;
    });
    if (count != Number(step.words[1]))
        throw StepFailure(fmt::format("expected {} records, found {}", Number(step.words[1]), count));
}

void Player::ExpectFile(const Step& step)
{
    const std::filesystem::path target = world.File(Text(step.words[0]));
    const bool exists = std::filesystem::exists(target);
    if (exists != (step.words[1].text == "exists"))
        throw StepFailure("expected the file to be " + std::string(exists ? "absent" : "there") + ", found it " +
                          (exists ? "there" : "absent"));
}

void Player::ExpectLine(const Step& step)
{
    const std::string line = Text(step.words[1]);
    const std::vector<std::string> lines = world.ReadLines(world.File(Text(step.words[0])));
    if (std::ranges::find(lines, line) != lines.end())
        return;
    // A line of the same key tells more than that there is none.
    const std::string key = line.substr(0, line.find('='));
    const auto like =
        std::ranges::find_if(lines, [&](const std::string& other) { return other.substr(0, other.find('=')) == key; });
    throw StepFailure("expected the line " + Shown(line) + ", found " +
                      (like == lines.end() ? "none like it" : Shown(*like)));
}

void Player::ExpectLineNot(const Step& step)
{
    const std::string line = Text(step.words[1]);
    const std::vector<std::string> lines = world.ReadLines(world.File(Text(step.words[0])));
    if (std::ranges::find(lines, line) != lines.end())
        throw StepFailure("expected no line " + Shown(line) + ", found one");
}

void Player::ExpectLines(const Step& step)
{
    std::vector<std::string> wanted;
    for (const std::string& line : step.lines)
        wanted.push_back(WithSlashes(WithPlaces(line, world.GetPlaces()), Separator));
    std::string missing;
    if (!StandInOrder(world.ReadLines(world.File(Text(step.words[0]))), wanted, missing))
        throw StepFailure("expected the line " + Shown(missing) + " in its place, found none there");
}

void Player::ExpectTip(const Step& step)
{
    const Control control = Find(step.words[0]);
    const std::string& held = control.box->Tip();
    if (control.widget != nullptr && Utf8(control.widget->toolTip()) != held)
        throw StepFailure("expected the window to show the tip " + Shown(held) + ", found " +
                          Shown(Utf8(control.widget->toolTip())));
    RequireSame(held, Text(step.words[1]));
}

void Player::ExpectColour(const Step& step)
{
    const Control control = Find(step.words[0]);
    const bool yellow = control.box->GetPaint() == Paint::Yellow;
    if (control.widget != nullptr) {
        const bool shown = control.widget->palette().color(QPalette::Button) == QColor(Qt::yellow) ||
                           control.widget->palette().color(QPalette::Window) == QColor(Qt::yellow);
        if (shown != yellow)
            throw StepFailure("expected the window to show the colour of the label, found another");
    }
    if (yellow != (step.words[1].text == "yellow"))
        throw StepFailure("expected " + step.words[1].text + ", found " + (yellow ? "yellow" : "plain"));
}

void Player::ExpectPages(const Step& step)
{
    const int count = LastDocument().PageCount();
    if (count != Number(step.words[0]))
        throw StepFailure(fmt::format("expected {} pages, found {}", Number(step.words[0]), count));
}

void Player::ExpectPage(const Step& step)
{
    const std::string text = Text(step.words[1]);
    if (!PageHolds(PageTexts(step.words[0]), text))
        throw StepFailure("expected " + Shown(text) + " on the page, found it nowhere");
}

void Player::ExpectPageNot(const Step& step)
{
    const std::string text = Text(step.words[1]);
    if (PageHolds(PageTexts(step.words[0]), text))
        throw StepFailure("expected " + Shown(text) + " nowhere on the page, found it");
}

void Player::ExpectJob(const Step& step)
{
    RequireSame(LastDocument().name, Text(step.words[0]));
    witness.namesSince.clear();
}

void Player::ExpectJobs(const Step& step)
{
    const std::vector<std::string> expected = Texts(step, 0);
    const std::vector<std::string> found = std::exchange(witness.namesSince, {});
    if (found != expected)
        throw StepFailure("expected " + ShownList(expected) + ", found " + ShownList(found));
}

void Player::ExpectPrinted(const Step& step)
{
    if (platform.printed.empty())
        throw StepFailure("nothing has been sent to a printer");
    const PrintRequest& request = platform.printed.back();
    const std::string found = fmt::format("{} \"{}\"", request.copies, fmt::join(request.pages, ","));
    const std::string expected = fmt::format("{} \"{}\"", Number(step.words[0]), Text(step.words[1]));
    if (found != expected)
        throw StepFailure("expected " + expected + ", found " + found);
}

void Player::ExpectOpenedFile(const Step& step)
{
    const std::string expected = WithSlashes(world.File(Text(step.words[0])).string(), Separator);
    if (platform.opened.empty())
        throw StepFailure("expected " + Shown(expected) + ", found that nothing was opened");
    RequireSame(WithSlashes(platform.opened.back().lexically_normal().string(), Separator), expected);
}

// ---- showing

void Player::Show(const Step& step)
{
    const Control control = Find(step.words[0]);
    fmt::print("{}:{}: {} = {}\n", file, step.line, control.name, Shown(control.box->Text()));
}

void Player::ShowField(const Step& step)
{
    bool isNull = false;
    const std::string text = FieldText(step, Store::ThisYear, isNull);
    fmt::print("{}:{}: {} = {}\n", file, step.line, step.words[3].text, isNull ? "null" : Shown(text));
}

void Player::ShowDocument(const Step&)
{
    const Document& document = LastDocument();
    fmt::print("document {}\n{}", Shown(document.name), Listing(document));
}

void Player::Picture(const Step& step)
{
    QWidget* window = host == nullptr ? nullptr : host->WindowOf(OpenScreen(step.words[0].text));
    if (window == nullptr)
        throw StepFailure("expected " + step.words[0].text + " to have a window, found none");
    const std::filesystem::path target = pictures / Text(step.words[1]);
    if (target.has_parent_path())
        std::filesystem::create_directories(target.parent_path());
    if (!window->grab().save(QString::fromStdString(target.string())))
        throw StepFailure("cannot write " + target.string());
}

void Player::SavePdf(const Step& step)
{
    const std::filesystem::path target = pictures / Text(step.words[0]);
    if (target.has_parent_path())
        std::filesystem::create_directories(target.parent_path());
    std::ofstream stream(target, std::ios::binary | std::ios::trunc);
    stream << PdfWriter().Write(LastDocument());
    if (!stream.flush())
        throw StepFailure("cannot write " + target.string());
}

void Player::Note(const Step& step)
{
    fmt::print("{}:{}: {}\n", file, step.line, Text(step.words[0]));
}

} // namespace quillmere::scenario
