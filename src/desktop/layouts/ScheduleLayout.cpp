#include "desktop/layouts/DialogParts.h"
#include "desktop/layouts/Layouts.h"
#include "frame/Text.h"

#include <array>

namespace quillmere::layouts {

namespace {

constexpr TextLook Heading{.size = 14, .bold = true};
constexpr TextLook ColumnCaption{.size = 12, .bold = true};
constexpr TextLook AmountCaption{.size = 12, .bold = true, .align = TextLook::Align::Right};
constexpr TextLook LineNumber{.size = 11, .align = TextLook::Align::Right};

constexpr int Margin = 16, NumberWidth = 22, Gap = 8;
constexpr int DescriptionWidth = 400, AmountWidth = 136;
constexpr int LineStep = Layout::BoxHeight + 2;

bool IsDescription(const ScheduleColumn& column)
{
    return column.use == ScheduleColumn::Use::Description;
}

int WidthOf(const ScheduleColumn& column)
{
    return IsDescription(column) ? DescriptionWidth : AmountWidth;
}

} // namespace

Layout ScheduleWindow(std::string_view heading, std::span<const ScheduleColumn> columns,
                      std::span<const std::string_view> buttons)
{
    Layout layout;
    layout.Text(Margin, 12, DescriptionWidth + 2 * AmountWidth, heading, Heading);
    constexpr int First = 62;
    constexpr int Totals = First + LinesOfASchedule * LineStep + Gap;
    layout.headerHeight = First - 3;
    layout.footTop = Totals - Gap / 2;
    int x = Margin;
    for (int line = 1; line <= LinesOfASchedule; ++line)
        layout.Text(x, First + (line - 1) * LineStep + 4, NumberWidth, std::to_string(line), LineNumber);
    x += NumberWidth + Gap;
    for (const ScheduleColumn& column : columns) {
        if (!column.Exists())
            continue;
        const int width = WidthOf(column);
        layout.Text(x, First - 20, width, Trim(column.caption), IsDescription(column) ? ColumnCaption : AmountCaption);
        for (int line = 1; line <= LinesOfASchedule; ++line)
            layout.PlaceAt(column.box, line, x, First + (line - 1) * LineStep, width);
        if (IsDescription(column))
            layout.Text(x, Totals + 4, width, "TOTALS", AmountCaption);
        else
            layout.Place(column.total, x, Totals, width, Layout::BoxHeight, Trim(column.caption) + ", total");
        x += width + Gap;
    }
    layout.width = x - Gap + Margin;
    constexpr int ButtonTop = Totals + Layout::BoxHeight + 16;
    ButtonRow(layout, layout.width - Margin, ButtonTop, buttons);
    layout.height = ButtonTop + ButtonHeight + Margin;
    return layout;
}

Layout ScheduleNotepad(const NotepadMember& member)
{
    constexpr auto Buttons = std::to_array<std::string_view>({"cmdOK", "cmdDelete", "cmdCancel"});
    const std::string_view section = member.section.substr(0, member.section.rfind(" - "));
    return ScheduleWindow(section, member.columns, Buttons);
}

} // namespace quillmere::layouts
