#include "printing/forms/FormSheet.h"

#include "frame/Text.h"
#include "printing/forms/FormTables.h"

#include <algorithm>
#include <cmath>

namespace quillmere {

namespace {

constexpr double LinePitch = 4.5;    ///< lines of one paragraph are no further apart, mm
constexpr double SameLine = 0.3;     ///< lines so close are one
constexpr double WordGap = 5;        ///< and pieces of a line, from the end of one to the next
constexpr double ColumnHeadSize = 7; ///< heads of columns stand side by side, each by itself

bool IsHead(const Label& label)
{
    return label.font.size <= ColumnHeadSize && label.font.weight == Weight::Plain && label.at == At::Left;
}

bool RunsOn(const Label& label)
{
    return label.at == At::Run || label.at == At::Indented;
}

/// True for a label that means nothing by itself: the signs between the boxes, and the lowered 2 of CO2.
bool IsSign(std::string_view text)
{
    return text.size() == 1;
}

/// The lowered 2 is drawn by itself, and the label leaves room for it.
constexpr std::string_view RoomOfTwo = "CO   ";

std::string Respelled(std::string_view text)
{
    std::string whole = Trim(text);
    if (const std::size_t at = whole.find(RoomOfTwo); at != std::string::npos)
        whole.replace(at, RoomOfTwo.size(), "CO2 ");
    return whole;
}

} // namespace

/// True for a label that is a further piece of the paragraph: on its line, or as its next line.
bool FormSheet::GoesOn(const Label& label) const
{
    if (paragraph.element == 0)
        return false;
    if (RunsOn(label))
        return true;
    const double down = label.y - paragraph.line;
    if (std::abs(down) < SameLine)
        return label.at == At::Left && label.font.size == paragraph.lineFont.size && !IsHead(label) &&
               std::abs(label.x - paragraph.end) < WordGap;
    const auto isAlike = [&label](const Font& font) {
        return label.font.size == font.size && label.font.weight == font.weight;
    };
    return label.at == paragraph.at && label.x == paragraph.x && down > 0 && down <= LinePitch &&
           (isAlike(paragraph.lineFont) || isAlike(paragraph.lastFont));
}

void FormSheet::Begin(const Label& label)
{
    const auto isBeside = [&label](const Piece& mark) {
        constexpr double Width = 15, Top = 2, Bottom = 6;
        return label.x > mark.x && label.x < mark.x + Width && label.y > mark.y + Top && label.y < mark.y + Bottom;
    };
    const auto mark = std::ranges::find_if(marks, isBeside);
    const bool isHeading = mark != marks.end() && mark->isHeading;
    const Role role = label.reads == Reads::Title ? Role::Title : isHeading ? Role::Heading : Role::Paragraph;
    paragraph = {.element = page.AddElement({.role = role}), .at = label.at, .x = label.x};
    if (mark == marks.end())
        return;
    if (Element* piece = page.FindElement(mark->element))
        piece->parent = paragraph.element;
    marks.erase(mark);
}

void FormSheet::ReadHeads(std::span<const Label> labels)
{
    const Label& label = labels.front();
    if (label.font.weight == Weight::Bold || IsHead(label) || GoesOn(label))
        return;
    for (const Label& other : labels.subspan(1)) {
        if (other.font.weight == Weight::Bold) // of the next section
            break;
        if (!IsHead(other) || other.y > label.y || FindHead(other) != nullptr)
            continue;
        const ElementNumber element = BeginLabel(other);
        EndLabel(other, {});
        heads.push_back({&other, element});
    }
}

const FormSheet::Head* FormSheet::FindHead(const Label& label) const
{
    const auto head = std::ranges::find(heads, &label, &Head::label);
    return head == heads.end() ? nullptr : &*head;
}

ElementNumber FormSheet::BeginLabel(const Label& label)
{
    if (label.reads == Reads::Nothing || IsSign(label.text))
        return 0;
    if (const Head* head = FindHead(label))
        return head->element;
    const bool isNew = !GoesOn(label);
    if (isNew)
        Begin(label);
    if (isNew || (!RunsOn(label) && std::abs(label.y - paragraph.line) >= SameLine)) {
        paragraph.line = label.y;
        paragraph.lineFont = label.font;
    }
    paragraph.lastFont = label.font;
    return paragraph.element;
}

void FormSheet::EndLabel(const Label& label, std::span<const FieldSuffix> suffixes)
{
    if (label.reads == Reads::Nothing || IsSign(label.text) || FindHead(label) != nullptr)
        return;
    const std::string whole = Respelled(label.text);
    if (!paragraph.text.empty())
        paragraph.text += ' ';
    paragraph.text += whole;
    paragraph.isRespelled = paragraph.isRespelled || whole.find("CO2") != std::string::npos;
    paragraph.end = page.vsTextEnd();
    Element* const element = page.FindElement(paragraph.element);
    if (element != nullptr && paragraph.isRespelled)
        element->spoken = paragraph.text;
    const bool isHeading = element != nullptr && element->role != Role::Paragraph;
    AddPlaces(label, suffixes);
    if (isHeading || !label.fields.empty())
        paragraph = {};
}

/// Adds the places of the label's fields, each with its own label.
void FormSheet::AddPlaces(const Label& label, std::span<const FieldSuffix> suffixes)
{
    std::size_t column = 0;
    for (std::string_view rest = label.fields; !rest.empty(); ++column) {
        const std::string_view field = rest.substr(0, rest.find(' '));
        rest.remove_prefix(std::min(rest.size(), field.size() + 1));
        std::string words = paragraph.text;
        if (column < label.columns.size() && !label.columns[column].empty())
            words.append(", ").append(label.columns[column]);
        for (const FieldSuffix& suffix : suffixes)
            AddPlace(std::string(field) + suffix.suffix, suffix.words + ", " + words);
        if (suffixes.empty())
            AddPlace(std::string(field), words);
    }
}

void FormSheet::AddPlace(std::string field, std::string label)
{
    const ElementNumber element = page.AddElement({.role = Role::Entry, .label = std::move(label)});
    places.push_back({std::move(field), element});
}

ElementNumber FormSheet::AddMark(double x, double y, bool isHeading)
{
    marks.push_back({x, y, page.AddElement({.role = Role::Piece}), isHeading});
    return marks.back().element;
}

ElementNumber FormSheet::AddTag(double x, double y, Role role)
{
    tags.push_back({.x = x, .y = y, .element = page.AddElement({.role = role})});
    return tags.back().element;
}

ElementNumber FormSheet::EntryOf(std::string_view field)
{
    for (std::size_t tried = 0; tried < places.size(); ++tried) {
        const Place& place = places[nextPlace];
        nextPlace = (nextPlace + 1) % places.size();
        if (place.field == field)
            return place.element;
    }
    AddPlace(std::string(field), std::string(field));
    return places.back().element;
}

ElementNumber FormSheet::FigureOf(std::string_view field, double x, double y)
{
    constexpr double Before = 28, Behind = 5, Top = 2, Bottom = 6.5;
    const ElementNumber entry = EntryOf(field);
    for (const Piece& tag : tags)
        if (tag.x > x - Before && tag.x < x + Behind && y > tag.y + Top && y < tag.y + Bottom)
            if (Element* piece = page.FindElement(tag.element))
                piece->parent = entry;
    return entry;
}

} // namespace quillmere
