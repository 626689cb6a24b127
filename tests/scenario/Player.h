#pragma once

#include "Documents.h"
#include "Script.h"
#include "ScriptedPlatform.h"
#include "World.h"

#include <filesystem>
#include <memory>
#include <string>
#include <unordered_map>

class QAction;
class QWidget;

namespace quillmere {
class DesktopHost;
class Program;
class Screen;
class Box;
} // namespace quillmere

namespace quillmere::scenario {

/// Plays one scenario in a world of its own, against the real windows.
class Player {
public:
    /// Where a player finds and leaves its files.
    struct Folders {
        std::filesystem::path resources; ///< has the empty client database
        std::filesystem::path root;      ///< the family root of the world, made for this one scenario
        std::filesystem::path pictures;  ///< relative pictures and PDF files go here; empty: to where the caller stands
        bool tellSteps = false;          ///< prints each step as it is played
    };

    /// `file` is the name under which failures are told.
    Player(std::string file, const Folders& folders);
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;
    ~Player();

    /// Plays the text of the scenario to its end and prints each failure. True if there was none.
    bool Play(std::string_view text);

private:
    using Action = void (Player::*)(const Step&);
    static const std::unordered_map<std::string_view, Action>& Actions();

    /// A control with what shows it: a widget, an entry of a menu, or nothing while it is hidden.
    struct Control {
        std::string name;
        Screen* screen = nullptr;
        Box* box = nullptr;
        QWidget* widget = nullptr;
        QAction* action = nullptr;
    };

    void Perform(const Step& step);
    void Fail(int line, const std::string& text);
    void FailStep(const Step& step, const std::string& text);
    void TellMisfits(const Step& step);
    void LookForLeftOvers();

    // The program
    void StartProgram();
    void DropProgram();
    Session& Running();
    void RunOut();
    /// Gives the focus to the window in front, as a window manager does when the one that had it has gone.
    void ActivateFront();

    // Finding
    Screen& FindScreen(const std::string& name);
    Screen& OpenScreen(const std::string& name);
    Control Find(const Word& word);
    QWidget& WidgetOf(const Control& control);
    std::string Text(const Word& word) const;
    std::vector<std::string> Texts(const Step& step, std::size_t from) const;
    std::string TextOf(const Control& control);
    std::vector<std::string> EntriesOf(const Control& control);
    const Document& LastDocument() const;
    std::vector<DrawnText> PageTexts(const Word& number) const;

    // What steps have in common
    void RequireSame(const std::string& found, const std::string& expected) const;
    void GivenEmployee(const Step& step, Store store);
    void GivenField(const Step& step, Store store);
    void RemoveRecord(const Step& step, Store store);
    void ChangeStore(const Step& step, Store store, World::Change change);
    void ExpectField(const Step& step, Store store);
    void ExpectMessage(const Step& step, bool whole);
    SeenMessage NextMessage(const Step& step);
    std::string FieldText(const Step& step, Store store, bool& isNull);
    void SetTick(const Step& step, bool wanted);
    void FocusForTyping(const Control& control);

    // The steps
    void Today(const Step& step);
    void GivenFile(const Step& step);
    void GivenThisEmployee(const Step& step) { GivenEmployee(step, Store::ThisYear); }
    void GivenLastYearEmployee(const Step& step) { GivenEmployee(step, Store::LastYear); }
    void GivenThisField(const Step& step) { GivenField(step, Store::ThisYear); }
    void GivenLastYearField(const Step& step) { GivenField(step, Store::LastYear); }
    void GivenRow(const Step& step);
    void RemoveThisRecord(const Step& step) { RemoveRecord(step, Store::ThisYear); }
    void RemoveLastYearRecord(const Step& step) { RemoveRecord(step, Store::LastYear); }
    void GivenPrinters(const Step& step);
    void RemoveFile(const Step& step);
    void LockFile(const Step& step);
    void UnlockFile(const Step& step);
    void ReadOnly(const Step& step);
    void Start(const Step& step);
    void Quit(const Step& step);
    void Restart(const Step& step);
    void Kill(const Step& step);
    void StartSecond(const Step& step);
    void Menu(const Step& step);
    void Click(const Step& step);
    void DoubleClick(const Step& step);
    void Type(const Step& step);
    void Enter(const Step& step);
    void Leave(const Step& step);
    void Tick(const Step& step) { SetTick(step, true); }
    void Untick(const Step& step) { SetTick(step, false); }
    void Paste(const Step& step);
    void Choose(const Step& step);
    void Window(const Step& step);
    void OpenUnreached(const Step& step);
    void Key(const Step& step);
    void AnswerNext(const Step& step);
    void WaitIdle(const Step& step);
    void Expect(const Step& step);
    void ExpectTrimmed(const Step& step);
    void ExpectState(const Step& step);
    void ExpectWholeMessage(const Step& step) { ExpectMessage(step, true); }
    void ExpectMessageLike(const Step& step) { ExpectMessage(step, false); }
    void ExpectNoMessage(const Step& step);
    void ExpectBeep(const Step& step);
    void ExpectNoBeep(const Step& step);
    void ExpectOpen(const Step& step);
    void ExpectClosed(const Step& step);
    void ExpectFocus(const Step& step);
    void ExpectCaption(const Step& step);
    void ExpectList(const Step& step);
    void ExpectThisField(const Step& step) { ExpectField(step, Store::ThisYear); }
    void ExpectLastYearField(const Step& step) { ExpectField(step, Store::LastYear); }
    void ExpectRecord(const Step& step);
    void ExpectCount(const Step& step);
    void ExpectFile(const Step& step);
    void ExpectLine(const Step& step);
    void ExpectLineNot(const Step& step);
    void ExpectLines(const Step& step);
    void ExpectTip(const Step& step);
    void ExpectColour(const Step& step);
    void ExpectPages(const Step& step);
    void ExpectPage(const Step& step);
    void ExpectPageNot(const Step& step);
    void ExpectJob(const Step& step);
    void ExpectJobs(const Step& step);
    void ExpectPrinted(const Step& step);
    void ExpectOpenedFile(const Step& step);
    void Show(const Step& step);
    void ShowField(const Step& step);
    void ShowDocument(const Step& step);
    void Picture(const Step& step);
    void SavePdf(const Step& step);
    void Note(const Step& step);

    std::string file;
    std::filesystem::path pictures;
    bool tellSteps;
    World world;
    ScriptedPlatform platform;
    DocumentWitness witness;
    std::unique_ptr<DesktopHost> host;
    std::unique_ptr<Program> program;
    int failures = 0;
};

} // namespace quillmere::scenario
