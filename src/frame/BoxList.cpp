#include "frame/BoxList.h"

#include "frame/Amount.h"
#include "frame/CellEntry.h"
#include "frame/Screen.h"
#include "frame/Text.h"

#include <algorithm>
#include <fmt/format.h>
#include <optional>
#include <utility>

namespace quillmere {

namespace {

std::string_view WithoutLastLineEnd(std::string_view text)
{
    for (const char end : {'\n', '\r'})
        if (text.ends_with(end))
            text.remove_suffix(1);
    return text;
}

std::string_view TakeFront(std::string_view& text, std::size_t count)
{
    const std::string_view taken = text.substr(0, count);
    text.remove_prefix(taken.size());
    return taken;
}

bool BeginsWithBreak(std::string_view text)
{
    return text.empty() || text.front() == '\t' || text.front() == '\n' || text.front() == '\r';
}

/// A cell that holds line ends or tabs of its own, which a spreadsheet puts between quotes, a quote in it doubled;
/// nothing if the text begins with none.
std::optional<std::string> TakeQuoted(std::string_view& text)
{
    std::string cell;
    for (std::size_t place = 1; text.starts_with('"') && place < text.size(); ++place) {
        if (text[place] == '"' && !text.substr(place + 1).starts_with('"')) {
            const std::string_view rest = text.substr(place + 1);
            if (!BeginsWithBreak(rest) || cell.find_first_of("\t\n\r") == std::string::npos)
                return std::nullopt;
            text = rest;
            return cell;
        }
        place += text[place] == '"' ? 1 : 0;
        cell += text[place];
    }
    return std::nullopt;
}

/// The cells of a text, line by line.
std::vector<std::vector<std::string>> CellsOf(std::string_view text)
{
    text = WithoutLastLineEnd(text);
    std::vector<std::vector<std::string>> lines(1);
    while (true) {
        std::optional<std::string> quoted = TakeQuoted(text);
        lines.back().push_back(quoted ? std::move(*quoted)
                                      : std::string(TakeFront(text, text.find_first_of("\t\n\r"))));
        if (text.empty())
            return lines;
        if (TakeFront(text, text.starts_with("\r\n") ? 2 : 1) != "\t")
            lines.emplace_back();
    }
}

const std::string& ColumnAt(const Screen& screen, std::size_t column)
{
    return screen.List()->columns[column];
}

bool TakesTyping(const Box& box)
{
    return !box.ReadOnly() && box.Enabled();
}

/// True for a column in which no line is typed in.
bool IsWorkedOut(const Screen& screen, std::size_t column)
{
    for (int line = screen.List()->first; line <= screen.List()->last; ++line)
        if (TakesTyping(screen.box(ColumnAt(screen, column), line)))
            return false;
    return true;
}

bool ReadsTheSame(const Box& box, std::string_view cell)
{
    const std::string entry = Entry(box, cell), held = Trim(box.Text());
    return held == entry ||
           (box.IsAmount() && !held.empty() && !entry.empty() && ReadAmount(held) == ReadAmount(entry));
}

std::string Plural(std::size_t count, std::string_view one, std::string_view several)
{
    return fmt::format("{} {}", count, count == 1 ? one : several);
}

/// Cells on their way into the boxes of a list.
class Putting {
public:
    explicit Putting(Screen& screen) : screen(screen) {}

    void Put(std::size_t column, int line, const std::string& cell)
    {
        if (IsWorkedOut(screen, column))
            return; // it follows from the others
        Box& box = screen.box(ColumnAt(screen, column), line);
        PutCell& put = cells.emplace_back(PutCell{&box, Entry(box, cell), Trim(box.Text()), {}});
        if (ReadsTheSame(box, cell))
            return;
        if (TakesTyping(box))
            put.wrong = TypeCell(screen, box, cell);
        else
            put.wrong = fmt::format("\"{}\" cannot be entered here", put.entry);
    }
    void PutLine(int line, const std::vector<std::string>& texts)
    {
        for (std::size_t column = 0; column < texts.size(); ++column)
            Put(column, line, texts[column]);
    }

    /// What became of the cells, once all are in: leaving a box may have emptied another one.
    std::string InWords(std::string_view done) const
    {
        const std::vector<std::string> faults = Faults(), gone = Gone();
        std::string words = fmt::format("{} {}", Plural(cells.size(), "cell", "cells"), done);
        if (!faults.empty())
            words = fmt::format("{} of {}; {}", cells.size() - faults.size(), words, Few(faults, 2, "; "));
        if (!gone.empty())
            words += fmt::format("; there stood {}", Few(gone, 4, ", "));
        return words;
    }
    bool IsWhole() const { return Faults().empty(); }

private:
    struct PutCell {
        const Box* box;
        std::string entry, before, wrong;
    };

    std::vector<std::string> Faults() const
    {
        std::vector<std::string> faults;
        for (const PutCell& cell : cells)
            if (!cell.wrong.empty())
                faults.push_back(fmt::format("{}: {}", cell.box->Spoken(), cell.wrong));
            else if (!IsTaken(*cell.box, cell.entry))
                faults.push_back(fmt::format("{}: \"{}\" does not stay there", cell.box->Spoken(), cell.entry));
        return faults;
    }
    /// What the boxes held and hold no more.
    std::vector<std::string> Gone() const
    {
        std::vector<std::string> gone;
        for (const PutCell& cell : cells)
            if (!cell.before.empty() && !ReadsTheSame(*cell.box, cell.before))
                gone.push_back(cell.before);
        return gone;
    }
    /// The first of them, and how many more there are.
    static std::string Few(const std::vector<std::string>& words, std::size_t most, std::string_view between)
    {
        std::string text;
        for (std::size_t i = 0; i < std::min(words.size(), most); ++i)
            text.append(i == 0 ? "" : between).append(words[i]);
        return words.size() > most ? text + fmt::format(" and {} more", words.size() - most) : text;
    }

    Screen& screen;
    std::vector<PutCell> cells;
};

std::vector<std::string> Read(const Screen& screen, int line)
{
    std::vector<std::string> cells;
    for (const std::string& column : screen.List()->columns)
        cells.push_back(screen.box(column, line).Text());
    return cells;
}

/// Why a line cannot take the cells of another one; empty if it can. In a column that is worked out it need not.
std::string WhyNot(Screen& screen, int line, const std::vector<std::string>& cells)
{
    for (std::size_t column = 0; column < cells.size(); ++column) {
        Box& box = screen.box(ColumnAt(screen, column), line);
        if (IsWorkedOut(screen, column) || Trimmed(box.Text()) == Trimmed(cells[column]))
            continue;
        const std::u32string keys = CodePoints(Trim(cells[column]));
        if (!TakesTyping(box) || screen.Keys(box, keys).size() != keys.size())
            return fmt::format("{}: \"{}\" cannot be typed here", box.Spoken(), Trimmed(cells[column]));
    }
    return {};
}

} // namespace

bool BoxList::Has(const Box& box) const
{
    return box.Index() >= first && box.Index() <= last && std::ranges::find(columns, box.Name()) != columns.end();
}

std::size_t BoxList::ColumnOf(const Box& box) const
{
    return static_cast<std::size_t>(std::ranges::find(columns, box.Name()) - columns.begin());
}

CellRange BoxList::Between(const Box& one, const Box& other) const
{
    const auto [left, right] = std::minmax({ColumnOf(one), ColumnOf(other)});
    const auto [top, bottom] = std::minmax({one.Index(), other.Index()});
    return {.left = left, .right = right, .top = top, .bottom = bottom};
}

std::string InWords(const CellRange& cells)
{
    const std::size_t count = (cells.right - cells.left + 1) * static_cast<std::size_t>(cells.bottom - cells.top + 1);
    const std::string words = Plural(count, "cell", "cells");
    return cells.top == cells.bottom ? fmt::format("{} of line {}", words, cells.top)
                                     : fmt::format("{} of lines {} to {}", words, cells.top, cells.bottom);
}

bool IsOfSeveralCells(std::string_view text)
{
    return WithoutLastLineEnd(text).find_first_of("\t\n\r") != std::string_view::npos;
}

std::string PasteCells(Screen& screen, const Box& from, std::string_view text)
{
    const BoxList& list = *screen.List();
    Putting putting(screen);
    std::size_t beyond = 0;
    int line = from.Index();
    for (const std::vector<std::string>& cells : CellsOf(text)) {
        std::size_t column = list.ColumnOf(from);
        for (const std::string& cell : cells) {
            if (line <= list.last && column < list.columns.size())
                putting.Put(column, line, cell);
            else if (!OneLine(cell).empty())
                ++beyond;
            ++column;
        }
        ++line;
    }
    std::string words = putting.InWords("pasted");
    if (beyond != 0)
        words +=
            fmt::format("; {} no room: the list ends at line {}", Plural(beyond, "cell has", "cells have"), list.last);
    return words;
}

std::string RepeatLineAbove(Screen& screen, int line)
{
    if (line <= screen.List()->first)
        return "There is no line above this one";
    Putting putting(screen);
    putting.PutLine(line, Read(screen, line - 1));
    return putting.InWords("repeated");
}

std::string EmptyCells(Screen& screen, const CellRange& cells)
{
    Putting putting(screen);
    for (int line = cells.top; line <= cells.bottom; ++line)
        for (std::size_t column = cells.left; column <= cells.right; ++column)
            putting.Put(column, line, {});
    return putting.InWords("emptied");
}

MovedLine MoveLine(Screen& screen, int line, int by)
{
    const int other = line + by;
    if (other < screen.List()->first || other > screen.List()->last)
        return {.words = by < 0 ? "This is the first line" : "This is the last line"};
    const std::vector<std::string> moved = Read(screen, line), standing = Read(screen, other);
    for (std::string wrong : {WhyNot(screen, other, moved), WhyNot(screen, line, standing)})
        if (!wrong.empty())
            return {.words = std::move(wrong)};
    Putting putting(screen);
    putting.PutLine(other, moved);
    putting.PutLine(line, standing);
    return {.moved = true,
            .words = putting.IsWhole() ? fmt::format("Line {} is line {} now", line, other) : putting.InWords("moved")};
}

std::string CellsAsText(const Screen& screen, const CellRange& cells)
{
    std::string text;
    for (int line = cells.top; line <= cells.bottom; ++line) {
        for (std::size_t column = cells.left; column <= cells.right; ++column)
            text.append(column == cells.left ? "" : "\t")
                .append(Trimmed(screen.box(ColumnAt(screen, column), line).Text()));
        text += '\n';
    }
    return text;
}

} // namespace quillmere
