#include "printing/forms/FormTables.h"

#include "frame/Text.h"

#include <utility>

namespace quillmere {

namespace {

constexpr int IndentOfRunOn = 2;

/// True for what is cut if it is longer than its room.
bool MayBeCut(const FormValue& value)
{
    return value.kind == ValueKind::Text && value.at != At::Right;
}

void DrawBox(PageLayer& page, const FormBox& box, double dx)
{
    switch (box.kind) {
    case PrintedKind::Entry:
        PrintEntryBox(page, box.x + dx, box.x2 + dx, box.y);
        break;
    case PrintedKind::Pound:
        PrintPoundBox(page, box.x + dx, box.y);
        break;
    case PrintedKind::Number:
        PrintBoxNumber(page, box.x + dx, box.y, box.text);
        break;
    case PrintedKind::Number1A:
        PrintBoxNumber1A(page, box.x + dx, box.y, box.text);
        break;
    case PrintedKind::Tag1A:
        Print1ATag(page, box.x + dx, box.y);
        break;
    case PrintedKind::Letter:
        PrintSectionLetter(page, box.x + dx, box.y, box.text);
        break;
    }
}

} // namespace

void DrawPanels(PageLayer& page, std::span<const Panel> panels, Colour fill)
{
    for (const Panel& panel : panels)
        page.vsFillBox(page.ColWhite, fill, 0, panel.x1, panel.y1, panel.x2, panel.y2);
}

void DrawSectionMarks(PageLayer& page, std::span<const SectionMark> marks)
{
    for (const SectionMark& mark : marks) {
        PrintSectionLetter(page, mark.x, mark.y, mark.letter);
        if (!mark.title.empty())
            page.vsBookmark(std::string(mark.letter) + "  " + std::string(mark.title), 2, mark.y);
    }
}

void DrawBoxes(PageLayer& page, std::span<const FormBox> boxes, double dx)
{
    for (const FormBox& box : boxes)
        DrawBox(page, box, dx);
}

void DrawLines(PageLayer& page, std::span<const FormLineRow> lines)
{
    for (const FormLineRow& line : lines)
        page.vsLine(FormLine, line.x1, line.y1, line.x2, line.y2);
}

void DrawText(PageLayer& page, At at, double x, double x2, double y, std::string_view text)
{
    switch (at) {
    case At::Left:
        page.vsTextLeft(x, y, text);
        break;
    case At::Right:
        page.vsTextRight(x, y, text);
        break;
    case At::Centre:
        page.vsTextCentre(x, x2, y, text);
        break;
    case At::Run:
        page.vsTextRun(text);
        break;
    case At::Indented:
        PrintIndented(page, IndentOfRunOn, text);
        break;
    }
}

void DrawLabel(PageLayer& page, const Label& label)
{
    const Weight weight = label.font.weight;
    page.vsFont(label.font.size, weight == Weight::Bold || weight == Weight::BoldItalic,
                weight == Weight::Italic || weight == Weight::BoldItalic);
    DrawText(page, label.at, label.x, label.x2, label.y, label.text);
}

void DrawLabels(PageLayer& page, std::span<const Label> labels)
{
    page.vsFontName("Arial");
    page.vsTextColor(page.ColBlack);
    for (const Label& label : labels)
        DrawLabel(page, label);
}

void BeginValues(PageLayer& page)
{
    page.vsFontName(page.ReportFont());
    page.vsFont(10, true, false);
    page.vsTextColor(page.ColBlack);
}

void DrawValues(PageLayer& page, std::span<const FormValue> values, const FieldReader& read, std::string_view suffix,
                double dx)
{
    std::string field;
    for (const FormValue& value : values) {
        field = value.field;
        field += suffix;
        const std::string text = read(field);
        switch (value.kind) {
        case ValueKind::Text:
            DrawText(page, value.at, value.x + dx, value.x2 + dx, value.y,
                     MayBeCut(value) ? FittingText(page, FieldText(text, 0), value.x2 - value.x) : FieldText(text, 0));
            break;
        case ValueKind::Tick:
            if (FieldText(text, 1) == "Y")
                page.vsTick(value.x + dx, value.y);
            break;
        case ValueKind::DateCells:
            PrintDateCells(page, value.x + dx, value.y, text);
            break;
        case ValueKind::NICells:
            PrintNICells(page, value.x + dx, value.y, text);
            break;
        }
    }
}

void AddBoxedTexts(std::span<const FormValue> values, std::string_view suffix, std::vector<BoxedText>& texts)
{
    for (const FormValue& value : values)
        if (MayBeCut(value))
            texts.push_back({.field = std::string(value.field).append(suffix), .room = value.x2 - value.x});
}

std::string FittingText(const PageLayer& page, std::string_view text, double room)
{
    std::string fitting(text);
    if (!(page.vsTextWidth(fitting) > room))
        return fitting;
    std::u32string characters = CodePoints(text);
    do {
        characters.pop_back();
        fitting = Utf8(characters);
    } while (!characters.empty() && page.vsTextWidth(fitting) > room);
    return fitting;
}

void DrawIdentifier(PageLayer& page, double y, std::string_view identifier)
{
    page.vsFontName("Arial");
    page.vsTextColor(page.ColBlack);
    page.vsFont(9, true, false);
    page.vsTextLeft(13, y, identifier);
}

} // namespace quillmere
