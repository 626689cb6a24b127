#pragma once

#include "Documents.h"
#include "Script.h"
#include "ScriptedPlatform.h"
#include "World.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

class QAction;
class QWidget;

namespace quillmere {
class DesktopHost;
class Program;
class Screen;
class Box;
} // namespace quillmere

namespace quillmere::scenario {

/// Where a scenario finds and leaves its files.
struct Folders {
    std::filesystem::path resources; ///< has the empty client database
    std::filesystem::path root;      ///< the family root of the world, made for this one scenario
    std::filesystem::path pictures;  ///< relative pictures and PDF files go here; empty: to where the caller stands
    bool keepRoot = false;           ///< the root is taken as it is found, and stays
};

/// A control with what shows it: a widget, an entry of a menu, or nothing while it is hidden.
struct Control {
    std::string name;
    Screen* screen = nullptr;
    Box* box = nullptr;
    QWidget* widget = nullptr;
    QAction* action = nullptr;
};

/// What the steps of one scenario act on: the program with its windows while it is up, its files, and its door to the
/// outside.
class Stage {
public:
    /// `file` is the name under which the scenario is told of.
    Stage(std::string file, const Folders& folders);
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    ~Stage();

    /// Does one step and lets what comes of it run out. Throws what the step throws.
    void Perform(const Step& step);

    // The program
    void StartProgram();
    /// Ends the process with no close-down.
    void DropProgram();
    bool IsUp() const { return program != nullptr; }
    /// The rest of what the program is asked for throws StepFailure while it is down.
    Session& Running();
    DesktopHost& Host() { return *host; }
    /// Lets one-shot timers and pending work run out.
    void RunOut();

    // Finding
    Screen& OpenScreen(const std::string& name);
    /// The window of an open screen; null for one that has none.
    QWidget* WindowOf(const std::string& name);
    Control Find(const Word& word);
    /// Throws StepFailure for a control that no widget shows.
    QWidget& WidgetOf(const Control& control);
    /// What a control holds, which must be what its widget shows.
    std::string TextOf(const Control& control);
    std::vector<std::string> EntriesOf(const Control& control);
    /// The field that the words of a step name: table, employer, employee, field.
    std::string FieldText(const Step& step, Store store, bool& isNull);

    /// A word of a step with the folders put in, and "/" between folders.
    std::string Text(const Word& word) const;
    std::vector<std::string> Texts(const Step& step, std::size_t from) const;

    World world;
    ScriptedPlatform platform;
    DocumentWitness witness;
    const std::string file;
    const std::filesystem::path pictures;

private:
    /// Gives the focus to the window in front, as a window manager does when the one that had it has gone.
    void ActivateFront();

    std::unique_ptr<DesktopHost> host;
    std::unique_ptr<Program> program;
};

/// A text of the program as it is compared: with "/" between folders.
std::string Slashed(std::string_view text);

} // namespace quillmere::scenario
