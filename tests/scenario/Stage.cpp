#include "Stage.h"

#include "Hands.h"
#include "app/Program.h"
#include "desktop/DesktopHost.h"
#include "desktop/MainWindow.h"
#include "edition/Edition.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>
#include <fmt/format.h>

namespace quillmere::scenario {

namespace {

constexpr auto MainScreen = "MDIForm1";

/// The day on which a scenario plays unless it says otherwise.
// The end of June, when the forms are due.
constexpr auto StandardDay = edition::TaxYearEndDay + std::chrono::days(86);

/// Size of the screen for which the windows are laid out.
constexpr int ScreenHeight = 768, ScreenWidth = 1366;

/// What a widget shows as its text; nothing for one that shows none.
std::optional<std::string> ShownText(const QWidget& widget)
{
    if (const auto* edit = qobject_cast<const QLineEdit*>(&widget))
        return edit->text().toStdString();
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return label->text().toStdString();
    if (const auto* list = qobject_cast<const QAbstractItemView*>(&widget))
        return hands::ChosenEntry(*list);
    if (const auto* list = qobject_cast<const QComboBox*>(&widget))
        return list->currentIndex() < 0 ? "" : list->currentText().toStdString();
    if (qobject_cast<const QPushButton*>(&widget) != nullptr || qobject_cast<const QCheckBox*>(&widget) != nullptr ||
        qobject_cast<const QRadioButton*>(&widget) != nullptr)
        return static_cast<const QAbstractButton&>(widget).text().toStdString();
    return std::nullopt;
}

} // namespace

Stage::Stage(std::string fileName, const Folders& folders)
    : world(folders.resources, folders.root, folders.keepRoot), file(std::move(fileName)), pictures(folders.pictures)
{
    platform.today = StandardDay;
    platform.programFolder = world.Program();
}

Stage::~Stage()
{
    DropProgram();
}

void Stage::Perform(const Step& step)
{
    const Effect effect = step.row->effect;
    const bool timeGoesOn = effect == Effect::Acts || effect == Effect::Gives;
    if (timeGoesOn)
        platform.beeps = 0;
    step.row->perform(*this, step);
    if (timeGoesOn)
        RunOut();
}

// ---- the program

Session& Stage::Running()
{
    if (program == nullptr)
        throw StepFailure("expected the program to be up, found it down");
    return program->TheSession();
}

void Stage::RunOut()
{
    constexpr int MostRounds = 100;
    for (int round = 0; round < MostRounds; ++round) {
        hands::Settle();
        if (program == nullptr || !program->TheSession().screens.HasDeferred())
            break;
        program->TheSession().screens.RunDeferred();
    }
    if (program != nullptr && program->Ended())
        DropProgram();
    if (program != nullptr && QApplication::activeWindow() == nullptr)
        ActivateFront();
    world.ProvideTables();
}

void Stage::ActivateFront()
{
    const std::vector<Screen*> open = program->TheSession().screens.Open();
    const auto front = std::find_if(open.rbegin(), open.rend(), [this](const Screen* screen) {
        const QWidget* window = host->WindowOf(*screen);
        return window != nullptr && window->isWindow() && window->isVisible();
    });
    if (front != open.rend())
        hands::Activate(*host->WindowOf(**front));
}

void Stage::StartProgram()
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
    host->SetSession(&program->TheSession());
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
    world.SetSession(&program->TheSession());
    RunOut();
    if (program != nullptr && program->TheSession().settings.applicationMaximised)
        hands::FillScreen(*host->Main());
}

void Stage::DropProgram()
{
    world.SetSession(nullptr);
    platform.host = nullptr;
    if (program != nullptr)
        program->TheSession().screens.Abandon();
    hands::Settle();
    program.reset();
    host.reset();
    hands::Settle();
}

// ---- finding

Screen& Stage::OpenScreen(const std::string& name)
{
    Screens& screens = Running().screens;
    Screen* screen = screens.Find(name);
    if (screen != nullptr)
        return *screen;
    if (!screens.IsRegistered(name))
        throw StepFailure("there is no screen " + name);
    throw StepFailure("expected " + name + " to be open, found it closed");
}

Control Stage::Find(const Word& word)
{
    const ControlName name = ParseControl(word.text);
    Control control{.name = word.text, .screen = &OpenScreen(name.screen)};
    control.box = control.screen->FindBox(name.box, name.index);
    if (control.box == nullptr)
        throw StepFailure(name.screen + " has no control " + word.text.substr(word.text.find('.') + 1));
    if (control.box->Kind() == BoxKind::Menu)
        control.action = host->Main()->findChild<QAction*>(
            QString::fromStdString(std::string(MainScreen) + "." + control.box->FullName()));
    else
        control.widget = host->WidgetOf(*control.screen, *control.box);
    return control;
}

QWidget& Stage::WidgetOf(const Control& control)
{
    if (control.widget == nullptr)
        throw StepFailure("expected " + control.name + " to be within reach, found it hidden");
    return *control.widget;
}

std::string Stage::Text(const Word& word) const
{
    return Slashed(WithPlaces(word.text, world.GetPlaces()));
}

std::vector<std::string> Stage::Texts(const Step& step, std::size_t from) const
{
    std::vector<std::string> texts;
    for (std::size_t place = from; place < step.words.size(); ++place)
        texts.push_back(Text(step.words[place]));
    return texts;
}

std::string Stage::TextOf(const Control& control)
{
    const std::string& held = control.box->Text();
    std::optional<std::string> shown;
    if (control.action != nullptr)
        shown = control.action->text().toStdString();
    else if (control.widget != nullptr)
        shown = ShownText(*control.widget);
    // The letter of a menu or button whose caption has no mark is marked in the window alone.
    const bool isPressed = control.action != nullptr || qobject_cast<const QAbstractButton*>(control.widget) != nullptr;
    if (shown && isPressed && held.find('&') == std::string::npos)
        std::erase(*shown, '&');
    if (shown && *shown != held)
        throw StepFailure("expected the window to show what the box holds, " + Shown(held) + ", found " +
                          Shown(*shown));
    return Slashed(held);
}

std::vector<std::string> Stage::EntriesOf(const Control& control)
{
    const BoxKind kind = control.box->Kind();
    if (kind != BoxKind::List && kind != BoxKind::Table && kind != BoxKind::DropDown)
        throw StepFailure(control.name + " is no list");
    std::vector<std::string> shown;
    if (auto* list = qobject_cast<QAbstractItemView*>(control.widget)) {
        shown = hands::EntriesOf(*list);
    } else if (auto* drop = qobject_cast<QComboBox*>(control.widget)) {
        for (int row = 0; row < drop->count(); ++row)
            shown.push_back(drop->itemText(row).toStdString());
    }
    const auto& held = control.box->Entries();
    if (control.widget != nullptr && shown != held)
        throw StepFailure("expected the window to show what the list holds, " + ShownList(held) + ", found " +
                          ShownList(shown));
    return held;
}

QWidget* Stage::WindowOf(const std::string& name)
{
    Screen& screen = OpenScreen(name);
    return host->WindowOf(screen);
}

std::string Stage::FieldText(const Step& step, Store store, bool& isNull)
{
    const std::vector<std::string> words = Texts(step, 0);
    std::string text;
    world.Look(store, [&](Database& database) {
        Recordset records = database.OpenRecordset(words[0]);
        Position(records, words[0], words[1], words[2]);
        isNull = records.IsNull(words[3]);
        text = records.Field(words[3]);
    });
    return Slashed(text);
}

std::string Slashed(std::string_view text)
{
    return WithSlashes(text, std::filesystem::path::preferred_separator);
}

} // namespace quillmere::scenario
