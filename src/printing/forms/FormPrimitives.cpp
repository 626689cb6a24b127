#include "printing/forms/FormPrimitives.h"

#include "frame/Text.h"
#include "frame/Tick.h"

#include <array>
#include <cstddef>

namespace quillmere {

namespace {

constexpr double BoxHeight = 5.5;
constexpr double PoundBoxWidth = 22;
constexpr double NumberTagWidth = 7.5;
constexpr double LetterSquare = 5.5;
constexpr double TagSquare = 5;

void PrintWhiteText(PageLayer& page, double size)
{
    page.vsFontName("Arial");
    page.vsFont(size, true, false);
    page.vsTextColor(page.ColWhite);
}

void PrintBlackTag(PageLayer& page, double x1, double y1, double x2, double y2)
{
    page.vsFillBox(page.ColBlack, page.ColBlack, FormLine, x1, y1, x2, y2);
}

/// One character of a text, counted from 1, centred in its cell; nothing past the end of the text.
void PrintCell(PageLayer& page, std::u32string_view text, std::size_t position, double x1, double x2, double y)
{
    if (position <= text.size())
        page.vsTextCentre(x1, x2, y, Utf8(text.substr(position - 1, 1)));
}

} // namespace

std::string FieldText(std::string_view value, int kind)
{
    if (kind == 0)
        return std::string(value);
    return kind == 1 && IsSet(value) ? "Y" : "";
}

void PrintEntryBox(PageLayer& page, double x1, double x2, double y)
{
    page.vsFillBox(page.ColBlack, page.ColWhite, FormLine, x1, y, x2, y + BoxHeight);
}

void PrintPoundBox(PageLayer& page, double x, double y, ElementNumber sign)
{
    page.vsFillBox(Black, page.ColWhite, FormLine, x, y, x + PoundBoxWidth, y + BoxHeight);
    page.vsFontName("Arial");
    page.vsFont(9.5, false, false);
    page.vsTextColor(page.ColBlack);
    const BelongsTo element(page, sign);
    page.vsTextLeft(x + 1, y + 4, "£");
}

void PrintSectionLetter(PageLayer& page, double x, double y, std::string_view letter)
{
    PrintBlackTag(page, x, y, x + LetterSquare, y + LetterSquare);
    PrintWhiteText(page, 11);
    page.vsTextCentre(x, x + LetterSquare, y + 4.5, letter);
}

void PrintBoxNumber(PageLayer& page, double x, double y, std::string_view number, BoxElements elements)
{
    PrintBlackTag(page, x, y, x + NumberTagWidth, y + BoxHeight);
    PrintWhiteText(page, 10);
    {
        const BelongsTo element(page, elements.tags);
        page.vsTextLeft(x, y + 4, number);
    }
    PrintPoundBox(page, x + NumberTagWidth, y, elements.sign);
}

void PrintBoxNumber1A(PageLayer& page, double x, double y, std::string_view number, BoxElements elements)
{
    PrintBoxNumber(page, x, y, number, elements);
    PrintBlackTag(page, x + 29, y, x + 34, y + BoxHeight);
    PrintWhiteText(page, 10);
    const BelongsTo element(page, elements.tags);
    page.vsTextCentre(x + 29, x + 34, y + 4, "1A");
}

void Print1ATag(PageLayer& page, double x, double y)
{
    PrintBlackTag(page, x, y, x + TagSquare, y + TagSquare);
    PrintWhiteText(page, 10);
    page.vsTextCentre(x, x + TagSquare, y + 3.5, "1A");
}

void PrintDateCells(PageLayer& page, double x, double y, std::string_view date)
{
    // Kept: positions 3 and 6 are dropped whatever they hold, so a date in another form loses characters.
    constexpr std::array<std::size_t, 8> Positions = {1, 2, 4, 5, 7, 8, 9, 10};
    constexpr double Cell = 5.5;
    const std::u32string characters = CodePoints(date);
    for (std::size_t cell = 0; cell < Positions.size(); ++cell) {
        const double left = x + static_cast<double>(cell) * Cell;
        PrintCell(page, characters, Positions[cell], left, left + Cell, y + 4);
    }
}

void PrintNICells(PageLayer& page, double x, double y, std::string_view number)
{
    constexpr double Cell = 4.5;
    constexpr double LastCell = 7.5;
    constexpr std::size_t LastPosition = 9;
    const std::u32string characters = CodePoints(number);
    for (std::size_t position = 1; position <= LastPosition; ++position) {
        const double left = x + static_cast<double>(position - 1) * Cell;
        PrintCell(page, characters, position, left, left + (position == LastPosition ? LastCell : Cell), y + 4);
    }
}

void PrintIndented(PageLayer& page, int count, std::string_view text)
{
    page.vsTextRun(std::string(static_cast<std::size_t>(count), ' '));
    page.vsTextRun(text);
}

} // namespace quillmere
