#include "printing/forms/FormTables.h"

#include "frame/Text.h"

namespace quillmere {

namespace {

constexpr int IndentOfRunOn = 2;

/// True for what is cut if it is longer than its room.
bool MayBeCut(const FormValue& value)
{
    return value.kind == ValueKind::Text && value.at != At::Right;
}

void DrawBox(FormSheet& sheet, const FormBox& box, double dx)
{
    PageLayer& page = sheet.page;
    const double x = box.x + dx;
    const auto tag = [&] { return sheet.AddTag(x, box.y); };
    const auto sign = [&] { return sheet.AddTag(x, box.y, Role::Sign); };
    switch (box.kind) {
    case PrintedKind::Entry:
        PrintEntryBox(page, x, box.x2 + dx, box.y);
        break;
    case PrintedKind::Pound:
        PrintPoundBox(page, x, box.y, sign());
        break;
    case PrintedKind::Number: {
        const ElementNumber number = tag();
        PrintBoxNumber(page, x, box.y, box.text, {number, sign()});
        break;
    }
    case PrintedKind::Number1A: {
        const ElementNumber number = tag();
        PrintBoxNumber1A(page, x, box.y, box.text, {number, sign()});
        break;
    }
    case PrintedKind::Tag1A: {
        const BelongsTo piece(page, tag());
        Print1ATag(page, x, box.y);
        break;
    }
    case PrintedKind::Letter: {
        const BelongsTo piece(page, tag());
        PrintSectionLetter(page, x, box.y, box.text);
        break;
    }
    }
}

/// A text of which each character has a cell of its own is read as one.
void Speak(PageLayer& page, ElementNumber entry, const std::string& text)
{
    if (Element* element = page.FindElement(entry))
        element->spoken = text;
}

} // namespace

void DrawTick(PageLayer& page, ElementNumber entry, double x, double y)
{
    if (Element* element = page.FindElement(entry))
        element->role = Role::Tick;
    const BelongsTo box(page, entry);
    page.vsTick(x, y);
}

void DrawPanels(PageLayer& page, std::span<const Panel> panels, Colour fill)
{
    for (const Panel& panel : panels)
        page.vsFillBox(page.ColWhite, fill, 0, panel.x1, panel.y1, panel.x2, panel.y2);
}

void DrawSectionMarks(FormSheet& sheet, std::span<const SectionMark> marks)
{
    PageLayer& page = sheet.page;
    for (const SectionMark& mark : marks) {
        const BelongsTo piece(page, sheet.AddMark(mark.x, mark.y, !mark.title.empty()));
        PrintSectionLetter(page, mark.x, mark.y, mark.letter);
        if (!mark.title.empty())
            page.vsBookmark(std::string(mark.letter) + "  " + std::string(mark.title), 2, mark.y);
    }
}

void DrawBoxes(FormSheet& sheet, std::span<const FormBox> boxes, double dx)
{
    for (const FormBox& box : boxes)
        DrawBox(sheet, box, dx);
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

void DrawLabel(FormSheet& sheet, const Label& label, std::span<const FieldSuffix> suffixes)
{
    PageLayer& page = sheet.page;
    const Weight weight = label.font.weight;
    page.vsFont(label.font.size, weight == Weight::Bold || weight == Weight::BoldItalic,
                weight == Weight::Italic || weight == Weight::BoldItalic);
    {
        const BelongsTo element(page, sheet.BeginLabel(label));
        DrawText(page, label.at, label.x, label.x2, label.y, label.text);
    }
    sheet.EndLabel(label, suffixes);
}

void DrawLabels(FormSheet& sheet, std::span<const Label> labels, std::span<const FieldSuffix> suffixes)
{
    PageLayer& page = sheet.page;
    page.vsFontName("Arial");
    page.vsTextColor(page.ColBlack);
    for (; !labels.empty(); labels = labels.subspan(1)) {
        sheet.ReadHeads(labels);
        DrawLabel(sheet, labels.front(), suffixes);
    }
}

void BeginValues(PageLayer& page)
{
    page.vsFontName(page.ReportFont());
    page.vsFont(10, true, false);
    page.vsTextColor(page.ColBlack);
}

void DrawValues(FormSheet& sheet, std::span<const FormValue> values, const FieldReader& read, std::string_view suffix,
                double dx)
{
    PageLayer& page = sheet.page;
    std::string field;
    for (const FormValue& value : values) {
        field = value.field;
        field += suffix;
        const std::string text = read(field);
        const ElementNumber entry =
            value.at == At::Right ? sheet.FigureOf(field, value.x + dx, value.y) : sheet.EntryOf(field);
        const BelongsTo element(page, entry);
        switch (value.kind) {
        case ValueKind::Text:
            DrawText(page, value.at, value.x + dx, value.x2 + dx, value.y,
                     MayBeCut(value) ? FittingText(page, FieldText(text, 0), value.x2 - value.x) : FieldText(text, 0));
            break;
        case ValueKind::Tick:
            if (FieldText(text, 1) == "Y")
                DrawTick(page, entry, value.x + dx, value.y);
            break;
        case ValueKind::DateCells:
            Speak(page, entry, text);
            PrintDateCells(page, value.x + dx, value.y, text);
            break;
        case ValueKind::NICells:
            Speak(page, entry, text);
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

void DrawNumberAtTop(PageLayer& page, std::string_view number)
{
    page.vsTextColor(page.ColBlack);
    page.vsFont(9, true, true);
    const BelongsTo element(page, Role::Paragraph);
    page.vsTextRight(193, 1, number);
}

void DrawIdentifier(PageLayer& page, double y, std::string_view identifier)
{
    page.vsFontName("Arial");
    page.vsTextColor(page.ColBlack);
    page.vsFont(9, true, false);
    const BelongsTo element(page, Role::Paragraph);
    page.vsTextLeft(13, y, identifier);
}

} // namespace quillmere
