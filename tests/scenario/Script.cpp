#include "Script.h"

#include "Compare.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <optional>
#include <stdexcept>
#include <utility>

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

const StepRow* FindRow(std::string_view step)
{
    const auto steps = Steps();
    const auto found = std::ranges::find(steps, step, &StepRow::step);
    return found == steps.end() ? nullptr : &*found;
}

std::string ChoicesOf(const StepRow& row)
{
    std::string text;
    for (const std::string_view choice : row.choices)
        text.append(text.empty() ? "" : ", ").append(choice);
    return text;
}

/// What is wrong with one word of a step; empty if nothing is.
std::string WrongWord(const StepRow& row, Argument argument, const Word& word)
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
        return !word.quoted && std::ranges::find(row.choices, word.text) != row.choices.end()
                   ? ""
                   : "unknown word \"" + word.text + "\", it must be one of: " + ChoicesOf(row);
    case Argument::Assignment:
        if (!word.isAssignment || word.column.empty())
            return "\"" + word.text + "\" must be of the form COLUMN=\"TEXT\"";
        return word.quoted || word.text == "null" ? "" : "the text of " + word.column + " must stand in quotes";
    }
    return {};
}

/// What is wrong with the words of a step; empty if nothing is.
std::string WrongWords(const StepRow& row, const std::vector<Word>& words)
{
    const std::size_t most = row.arguments.size();
    const std::size_t least = most - row.optional;
    if (words.size() < least)
        return std::string(row.step) + " takes " + (row.optional > 0 || row.repeats ? "at least " : "") +
               std::to_string(least) + " words, found " + std::to_string(words.size());
    if (words.size() > most && !row.repeats)
        return std::string(row.step) + " takes " + (row.optional > 0 ? "at most " : "") + std::to_string(most) +
               " words, found " + std::to_string(words.size());
    for (std::size_t place = 0; place < words.size(); ++place)
        if (std::string wrong = WrongWord(row, row.arguments[std::min(place, most - 1)], words[place]); !wrong.empty())
            return wrong;
    // An answer is a path in quotes or one of the words.
    if (row.step == "answer" && !words[0].quoted && std::ranges::find(row.choices, words[0].text) == row.choices.end())
        return "unknown answer \"" + words[0].text + "\", it must be a path in quotes or one of: " + ChoicesOf(row);
    return {};
}

/// `COLUMN=null` has no quote that would tell it from any other word: it is taken apart where a column is due.
void SplitNulls(const StepRow& row, std::vector<Word>& words)
{
    constexpr std::string_view Null = "=null";
    for (std::size_t place = 0; place < words.size() && !row.arguments.empty(); ++place) {
        Word& word = words[place];
        if (row.arguments[std::min(place, row.arguments.size() - 1)] != Argument::Assignment || word.quoted ||
            word.isAssignment || !word.text.ends_with(Null))
            continue;
        word.column = word.text.substr(0, word.text.size() - Null.size());
        word.text = Null.substr(1);
        word.isAssignment = true;
    }
}

constexpr std::string_view CapitalLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";

/// The table of a scenario.
struct Table {
    std::vector<std::string> columns;
    std::vector<bool> used; ///< which columns the scenario has asked for
    std::vector<std::vector<std::string>> rows;
};

bool BeginsTable(std::string_view line)
{
    return line.starts_with("for-each");
}

/// A text as it is written between quotes.
std::string Written(std::string_view text)
{
    const std::string shown = Shown(text);
    return shown.substr(1, shown.size() - 2);
}

std::vector<std::string> Cells(std::string_view line)
{
    std::vector<std::string> cells;
    for (const Word& word : ParseWords(line))
        cells.push_back(Written(word.text));
    return cells;
}

/// Reads the table that begins at a line, and ends at its last. Throws std::invalid_argument with what is wrong at it.
Table ReadTable(const std::vector<std::string_view>& lines, std::size_t& at)
{
    const std::size_t first = at;
    Table table{.columns = Cells(lines[at]), .used = {}, .rows = {}};
    table.columns.erase(table.columns.begin());
    table.used.resize(table.columns.size());
    for (const std::string& column : table.columns)
        if (column.empty() || column.find_first_not_of(CapitalLetters) != std::string::npos)
            throw std::invalid_argument("\"" + column + "\" is no name of a column: it stands in capital letters");
    while (++at < lines.size() && WithoutOuterBlanks(lines[at]) != "end") {
        std::vector<std::string> cells = Cells(lines[at]);
        if (!cells.empty() && cells.size() != table.columns.size())
            throw std::invalid_argument("a row takes " + std::to_string(table.columns.size()) + " cells, found " +
                                        std::to_string(cells.size()));
        if (!cells.empty())
            table.rows.push_back(std::move(cells));
    }
    const std::size_t last = std::exchange(at, first);
    if (last == lines.size())
        throw std::invalid_argument("for-each has no end");
    if (table.rows.empty())
        throw std::invalid_argument("the table has no rows");
    at = last;
    return table;
}

/// A line with the cells of a row in place of `$COLUMN`. Throws std::invalid_argument for a column that there is not.
std::string WithCells(std::string_view line, Table& table, const std::vector<std::string>& cells)
{
    if (BeginsTable(line))
        throw std::invalid_argument("there is a table already");
    std::string text;
    for (auto mark = line.find('$'); mark != std::string_view::npos; mark = line.find('$')) {
        text.append(line.substr(0, mark));
        line.remove_prefix(mark + 1);
        const std::string_view name = line.substr(0, line.find_first_not_of(CapitalLetters));
        const auto found = std::ranges::find(table.columns, name);
        if (found == table.columns.end())
            throw std::invalid_argument("the table has no column \"" + std::string(name) + "\"");
        const auto column = static_cast<std::size_t>(found - table.columns.begin());
        table.used[column] = true;
        text.append(cells[column]);
        line.remove_prefix(name.size());
    }
    return text.append(line);
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

Tellings TellingsOf(std::string_view text)
{
    const std::vector<std::string_view> lines = LinesOf(text);
    const auto first = static_cast<std::size_t>(std::ranges::find_if(lines, BeginsTable) - lines.begin());
    if (first == lines.size())
        return {.rows = {{.row = {}, .text = std::string(text)}}, .errors = {}};
    Tellings tellings;
    std::size_t at = first;
    try {
        Table table = ReadTable(lines, at);
        const std::size_t last = at;
        for (const std::vector<std::string>& cells : table.rows) {
            Telling& telling = tellings.rows.emplace_back(Telling{.row = cells.front(), .text = {}});
            for (at = 0; at < lines.size(); ++at)
                telling.text.append(at >= first && at <= last ? "" : WithCells(lines[at], table, cells)).append("\n");
        }
        at = first;
        if (const auto idle = std::ranges::find(table.used, false); idle != table.used.end())
            throw std::invalid_argument("the column " +
                                        table.columns[static_cast<std::size_t>(idle - table.used.begin())] +
                                        " is used nowhere");
    } catch (const std::invalid_argument& error) {
        return {.rows = {}, .errors = {{static_cast<int>(at) + 1, error.what()}}};
    }
    return tellings;
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
        const Word name = step.words[0];
        step.words.erase(step.words.begin());
        step.row = name.quoted ? nullptr : FindRow(name.text);
        if (step.row == nullptr) {
            script.errors.push_back({step.line, "unknown step \"" + name.text + "\""});
            continue;
        }
        if (step.row->block) {
            bool ended = false;
            while (!ended && ++at < lines.size()) {
                ended = WithoutOuterBlanks(lines[at]) == "end";
                if (!ended)
                    step.lines.emplace_back(lines[at]);
            }
            if (!ended) {
                script.errors.push_back({step.line, name.text + " has no end"});
                continue;
            }
        }
        SplitNulls(*step.row, step.words);
        if (std::string wrong = WrongWords(*step.row, step.words); !wrong.empty())
            script.errors.push_back({step.line, std::move(wrong)});
        else
            script.steps.push_back(std::move(step));
    }
    return script;
}

std::vector<std::string> ExamplesOf(std::string_view manual)
{
    std::vector<std::string> examples;
    bool inside = false;
    std::size_t number = 0;
    for (const std::string_view line : LinesOf(manual)) {
        ++number;
        if (line.starts_with("```")) {
            inside = line == "```scenario";
            if (inside)
                examples.emplace_back(number, '\n');
        } else if (inside) {
            examples.back().append(line).append("\n");
        }
    }
    return examples;
}

} // namespace quillmere::scenario
