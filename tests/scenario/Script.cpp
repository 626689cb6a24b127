#include "Script.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <optional>
#include <stdexcept>

namespace quillmere::scenario {

namespace {

constexpr std::string_view MainScreen = "MDIForm1";

std::string_view WithoutOuterBlanks(std::string_view text)
{
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

bool IsBlank(char character)
{
    return character == ' ' || character == '\t' || character == '\r';
}

/// A whole number without sign; nothing if the text is none.
std::optional<int> WholeNumber(std::string_view text)
{
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() || number < 0)
        return std::nullopt;
    return number;
}

bool IsDate(std::string_view text)
{
    if (text.size() != 10 || text[4] != '-' || text[7] != '-')
        return false;
    const auto year = WholeNumber(text.substr(0, 4));
    const auto month = WholeNumber(text.substr(5, 2));
    const auto day = WholeNumber(text.substr(8, 2));
    return year && month && day &&
           (std::chrono::year(*year) / std::chrono::month(static_cast<unsigned>(*month)) /
            std::chrono::day(static_cast<unsigned>(*day)))
               .ok();
}

/// Takes a line apart from its front.
class WordReader {
public:
    explicit WordReader(std::string_view text) : line(text) {}

    std::vector<Word> All()
    {
        std::vector<Word> words;
        for (;;) {
            while (at < line.size() && IsBlank(line[at]))
                ++at;
            if (at == line.size() || line[at] == '#')
                return words;
            words.push_back(Next());
        }
    }

private:
    Word Next()
    {
        Word word;
        word.quoted = line[at] == '"';
        word.text = word.quoted ? Quoted() : Plain();
        if (word.quoted && at < line.size() && line[at] == '=') {
            ++at;
            Assign(word, word.text);
        } else if (!word.quoted && word.text.size() > 1 && word.text.ends_with('=') && at < line.size() &&
                   line[at] == '"') {
            Assign(word, word.text.substr(0, word.text.size() - 1));
        }
        if (at < line.size() && !IsBlank(line[at]) && line[at] != '#')
            throw std::invalid_argument("a quote stands in the middle of a word");
        return word;
    }

    void Assign(Word& word, std::string column)
    {
        word.column = std::move(column);
        word.isAssignment = true;
        word.quoted = at < line.size() && line[at] == '"';
        word.text = word.quoted ? Quoted() : Plain();
    }

    std::string Plain()
    {
        const std::size_t start = at;
        while (at < line.size() && !IsBlank(line[at]) && line[at] != '#' && line[at] != '"')
            ++at;
        return std::string(line.substr(start, at - start));
    }

    std::string Quoted()
    {
        std::string text;
        for (++at; at < line.size(); ++at) {
            if (line[at] == '"') {
                ++at;
                return text;
            }
            if (line[at] != '\\') {
                text += line[at];
                continue;
            }
            if (++at == line.size())
                break;
            text += Escaped(line[at]);
        }
        throw std::invalid_argument("a quote is not closed");
    }

    static char Escaped(char character)
    {
        switch (character) {
        case '"':
        case '\\':
            return character;
        case 'n':
            return '\n';
        case 't':
            return '\t';
        default:
            throw std::invalid_argument(std::string("\\") + character + " means nothing in a quoted word");
        }
    }

    std::string_view line;
    std::size_t at = 0;
};

const Grammar* FindGrammar(std::string_view step)
{
    const auto steps = Steps();
    const auto found = std::ranges::find(steps, step, &Grammar::step);
    return found == steps.end() ? nullptr : &*found;
}

std::string ChoicesOf(const Grammar& grammar)
{
    std::string text;
    for (const std::string_view choice : grammar.choices)
        text.append(text.empty() ? "" : ", ").append(choice);
    return text;
}

/// What is wrong with one word of a step; empty if nothing is.
std::string WrongWord(const Grammar& grammar, Argument argument, const Word& word)
{
    if (word.isAssignment && argument != Argument::Assignment)
        return word.column + "=" + word.text + " must stand in quotes as a whole";
    switch (argument) {
    case Argument::Text:
    case Argument::Value:
        return {};
    case Argument::Name:
        return word.text.empty() ? "a name is empty" : "";
    case Argument::Control:
        try {
            ParseControl(word.text);
            return {};
        } catch (const std::invalid_argument& error) {
            return error.what();
        }
    case Argument::Number:
        return WholeNumber(word.text) ? "" : "\"" + word.text + "\" is no whole number";
    case Argument::Date:
        return IsDate(word.text) ? "" : "\"" + word.text + "\" is no date of the form yyyy-mm-dd";
    case Argument::Choice:
        return !word.quoted && std::ranges::find(grammar.choices, word.text) != grammar.choices.end()
                   ? ""
                   : "unknown word \"" + word.text + "\", it must be one of: " + ChoicesOf(grammar);
    case Argument::Assignment:
        if (!word.isAssignment || word.column.empty())
            return "\"" + word.text + "\" must be of the form COLUMN=\"TEXT\"";
        return word.quoted || word.text == "null" ? "" : "the text of " + word.column + " must stand in quotes";
    }
    return {};
}

/// What is wrong with the words of a step; empty if nothing is.
std::string WrongWords(const Grammar& grammar, const std::vector<Word>& words)
{
    const std::size_t most = grammar.arguments.size();
    const std::size_t least = most - grammar.optional;
    if (words.size() < least)
        return std::string(grammar.step) + " takes " + (grammar.optional > 0 || grammar.repeats ? "at least " : "") +
               std::to_string(least) + " words, found " + std::to_string(words.size());
    if (words.size() > most && !grammar.repeats)
        return std::string(grammar.step) + " takes " + (grammar.optional > 0 ? "at most " : "") + std::to_string(most) +
               " words, found " + std::to_string(words.size());
    for (std::size_t place = 0; place < words.size(); ++place)
        if (std::string wrong = WrongWord(grammar, grammar.arguments[std::min(place, most - 1)], words[place]);
            !wrong.empty())
            return wrong;
    // An answer is a path in quotes or one of the words.
    if (grammar.step == "answer" && !words[0].quoted &&
        std::ranges::find(grammar.choices, words[0].text) == grammar.choices.end())
        return "unknown answer \"" + words[0].text + "\", it must be a path in quotes or one of: " + ChoicesOf(grammar);
    return {};
}

/// `COLUMN=null` has no quote that would tell it from any other word: it is taken apart where a column is due.
void SplitNulls(const Grammar& grammar, std::vector<Word>& words)
{
    constexpr std::string_view Null = "=null";
    for (std::size_t place = 0; place < words.size() && !grammar.arguments.empty(); ++place) {
        Word& word = words[place];
        if (grammar.arguments[std::min(place, grammar.arguments.size() - 1)] != Argument::Assignment || word.quoted ||
            word.isAssignment || !word.text.ends_with(Null))
            continue;
        word.column = word.text.substr(0, word.text.size() - Null.size());
        word.text = Null.substr(1);
        word.isAssignment = true;
    }
}

/// The lines of a text, without their ends.
std::vector<std::string_view> LinesOf(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const auto end = text.find('\n');
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        lines.push_back(line);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

} // namespace

std::span<const Grammar> Steps()
{
    using enum Argument;
    static const std::vector<Grammar> steps = {
        // Setting up
        {"today", {Date}},
        {.step = "given-file", .arguments = {Name}, .block = true},
        {"given-employee", {Text, Text, Text, Text}},
        {"given-last-year-employee", {Text, Text, Text, Text}},
        {"given-field", {Name, Text, Text, Name, Value}},
        {"given-last-year-field", {Name, Text, Text, Name, Value}},
        {.step = "given-row", .arguments = {Name, Assignment}, .repeats = true},
        {"remove-record", {Name, Text, Text}},
        {"remove-last-year-record", {Name, Text, Text}},
        {.step = "given-printers", .arguments = {Text}, .optional = 1, .repeats = true},
        {"remove-file", {Name}},
        {"lock-file", {Name}},
        {"unlock-file", {Name}},
        {"read-only", {Name}},
        // The program
        {"start", {}},
        {"quit", {}},
        {"restart", {}},
        {"kill", {}},
        {"start-second", {}},
        // The user
        {"menu", {Control}},
        {"click", {Control}},
        {.step = "doubleclick", .arguments = {Control, Text}, .optional = 1},
        {"type", {Control, Text}},
        {"enter", {Control, Text}},
        {"leave", {}},
        {"tick", {Control}},
        {"untick", {Control}},
        {"paste", {Control, Text}},
        {"choose", {Control, Text}},
        {"window", {Name, Choice}, {"minimised", "maximised", "normal"}},
        {.step = "open-screen", .arguments = {Name, Number}, .optional = 1},
        {.step = "key", .arguments = {Name}, .repeats = true},
        {"answer", {Text}, {"yes", "no", "ok", "cancel"}},
        {"wait-idle", {}},
        // Expecting
        {"expect", {Control, Text}},
        {"expect-trimmed", {Control, Text}},
        {.step = "expect-state",
         .arguments = {Control, Choice},
         .choices = {"enabled", "disabled", "readonly", "writable", "ticked", "unticked", "visible", "hidden"},
         .repeats = true},
        {"expect-message", {Text, Text}},
        {"expect-message-like", {Text, Text}},
        {"expect-no-message", {}},
        {"expect-beep", {}},
        {"expect-no-beep", {}},
        {"expect-open", {Name}},
        {"expect-closed", {Name}},
        {"expect-focus", {Control}},
        {"expect-caption", {Name, Text}},
        {.step = "expect-list", .arguments = {Control, Text}, .optional = 1, .repeats = true},
        {"expect-field", {Name, Text, Text, Name, Value}},
        {"expect-last-year-field", {Name, Text, Text, Name, Value}},
        {"expect-record", {Name, Text, Text, Choice}, {"exists", "absent"}},
        {"expect-count", {Name, Number}},
        {"expect-file", {Name, Choice}, {"exists", "absent"}},
        {"expect-line", {Name, Text}},
        {"expect-line-not", {Name, Text}},
        {.step = "expect-lines", .arguments = {Name}, .block = true},
        {"expect-tip", {Control, Text}},
        {"expect-colour", {Control, Choice}, {"yellow", "plain"}},
        {"expect-pages", {Number}},
        {"expect-page", {Number, Text}},
        {"expect-page-not", {Number, Text}},
        {"expect-job", {Text}},
        {.step = "expect-jobs", .arguments = {Text}, .optional = 1, .repeats = true},
        {"expect-printed", {Number, Text}},
        {"expect-opened-file", {Name}},
        // Showing
        {"show", {Control}},
        {"show-field", {Name, Text, Text, Name}},
        {"show-document", {}},
        {"picture", {Name, Name}},
        {"save-pdf", {Name}},
        {"note", {Text}},
    };
    return steps;
}

std::vector<Word> ParseWords(std::string_view line)
{
    return WordReader(line).All();
}

ControlName ParseControl(std::string_view name)
{
    const std::string wrong = "\"" + std::string(name) + "\" is no control's name";
    ControlName control;
    if (const auto point = name.find('.'); point != std::string_view::npos) {
        control.screen = name.substr(0, point);
        name.remove_prefix(point + 1);
    } else {
        control.screen = MainScreen;
    }
    if (const auto open = name.find('('); open != std::string_view::npos) {
        const auto index =
            name.ends_with(')') ? WholeNumber(name.substr(open + 1, name.size() - open - 2)) : std::nullopt;
        if (!index)
            throw std::invalid_argument(wrong);
        control.index = *index;
        name = name.substr(0, open);
    }
    control.box = name;
    constexpr std::string_view NotInNames = " .()\t\n";
    if (control.screen.empty() || control.box.empty() || control.box.find_first_of(NotInNames) != std::string::npos ||
        control.screen.find_first_of(NotInNames) != std::string::npos)
        throw std::invalid_argument(wrong);
    return control;
}

Script ParseScript(std::string_view text)
{
    Script script;
    const std::vector<std::string_view> lines = LinesOf(text);
    for (std::size_t at = 0; at < lines.size(); ++at) {
        Step step{.line = static_cast<int>(at) + 1, .source = std::string(WithoutOuterBlanks(lines[at]))};
        try {
            step.words = ParseWords(lines[at]);
        } catch (const std::invalid_argument& error) {
            script.errors.push_back({step.line, error.what()});
            continue;
        }
        if (step.words.empty())
            continue;
        step.name = step.words[0].text;
        const Grammar* grammar = step.words[0].quoted ? nullptr : FindGrammar(step.name);
        step.words.erase(step.words.begin());
        if (grammar == nullptr) {
            script.errors.push_back({step.line, "unknown step \"" + step.name + "\""});
            continue;
        }
        if (grammar->block) {
            bool ended = false;
            while (!ended && ++at < lines.size()) {
                ended = WithoutOuterBlanks(lines[at]) == "end";
                if (!ended)
                    step.lines.emplace_back(lines[at]);
            }
            if (!ended) {
                script.errors.push_back({step.line, step.name + " has no end"});
                continue;
            }
        }
        SplitNulls(*grammar, step.words);
        if (std::string wrong = WrongWords(*grammar, step.words); !wrong.empty())
            script.errors.push_back({step.line, std::move(wrong)});
        else
            script.steps.push_back(std::move(step));
    }
    return script;
}

} // namespace quillmere::scenario
