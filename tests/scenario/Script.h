#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Scenarios as text: words, steps, and which words a step takes.
namespace quillmere::scenario {

/// One word of a step. Quotes matter: `null` without them is no text at all.
struct Word {
    std::string text;
    bool quoted = false;
    /// What stands before the "=" of a word like `FirstName="Jane"`, whose text is then what stands behind it.
    std::string column;
    bool isAssignment = false;

    bool IsNull() const { return !quoted && text == "null"; }
    int Number() const { return std::stoi(text); }
};

/// What a word of a step must be.
enum class Argument {
    Text,       ///< any word
    Value,      ///< any word; `null` without quotes is null
    Name,       ///< a word that is not empty
    Control,    ///< `Screen.Control`, `Screen.Control(3)`, or an entry of the main window by its own name alone
    Number,     ///< a whole number, not negative
    Date,       ///< yyyy-mm-dd
    Choice,     ///< one of the words listed
    Assignment, ///< COLUMN="TEXT"
};

/// What a step does to the scenario's time.
enum class Effect {
    Gives,   ///< may wait until all that is given before the start is written in one go
    Acts,    ///< something happens, and what comes of it runs out
    LooksOn, ///< nothing happens
    Says,    ///< nothing happens, and what is given goes on waiting
};

class Stage;
struct Step;

/// A step of the language: its word, what it takes and what it does.
struct StepRow {
    std::string_view step;
    std::vector<Argument> arguments;
    void (*perform)(Stage&, const Step&);
    Effect effect;
    std::vector<std::string_view> choices = {}; ///< of the arguments that are a Choice
    std::size_t optional = 0;                   ///< so many arguments at the end may be left out
    bool repeats = false;                       ///< the last argument may be given any number of times
    bool block = false;                         ///< lines follow, up to `end`
};

/// Every step that there is.
std::span<const StepRow> Steps();

/// One step: its own word, the words behind it, and the lines of a step that ends with `end`.
struct Step {
    int line = 0;       ///< in the file, from 1
    std::string source; ///< the line as it stands there, without outer blanks
    const StepRow* row = nullptr;
    std::vector<Word> words;
    std::vector<std::string> lines;
};

/// Something in a file that is no scenario.
struct ScriptError {
    int line = 0;
    std::string text;
};

struct Script {
    std::vector<Step> steps;
    std::vector<ScriptError> errors;
};

/// A scenario told for one row of its table: the row's first cell, and the text with the row's cells put in. The lines
/// stand where they stood.
struct Telling {
    std::string row;
    std::string text;
};

struct Tellings {
    std::vector<Telling> rows;
    std::vector<ScriptError> errors;
};

/// A scenario for each row of its `for-each` table; without a table it is told once, for the row "".
Tellings TellingsOf(std::string_view text);

/// Reads a scenario. Whatever is wrong stands among the errors with its line; the steps are those that are right.
Script ParseScript(std::string_view text);

/// The examples of a manual: the blocks that begin with ```scenario and end with ```, each with as many empty lines
/// before it as put it where it stands in the manual.
std::vector<std::string> ExamplesOf(std::string_view manual);

/// The words of one line. Throws std::invalid_argument with what is wrong.
std::vector<Word> ParseWords(std::string_view line);

/// A control's name taken apart.
struct ControlName {
    static constexpr int NoIndex = -1;
    std::string screen;
    std::string box;
    int index = NoIndex;

    friend bool operator==(const ControlName&, const ControlName&) = default;
};

/// Throws std::invalid_argument with what is wrong.
ControlName ParseControl(std::string_view name);

} // namespace quillmere::scenario
