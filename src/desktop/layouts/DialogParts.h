#pragma once

#include "desktop/layouts/Layout.h"

#include <array>
#include <initializer_list>
#include <span>
#include <string_view>

/// What the layouts of dialogs have in common. Positions are in pixels at scale 1.
namespace quillmere::layouts {

inline constexpr int ButtonWidth = 96, ButtonHeight = 28, ButtonGap = 8;

inline constexpr auto OkDeleteCancel = std::to_array<std::string_view>({"Ok", "Delete", "Cancel"});

/// Buttons side by side, of which the last ends at `right`.
void ButtonRow(Layout& layout, int right, int y, std::span<const std::string_view> buttons, int width = ButtonWidth);
inline void ButtonRow(Layout& layout, int right, int y, std::initializer_list<std::string_view> buttons,
                      int width = ButtonWidth)
{
    ButtonRow(layout, right, y, std::span(buttons.begin(), buttons.size()), width);
}
/// One button, ending at `right`.
void Button(Layout& layout, int right, int y, std::string_view button);
/// Cancel at the end, and before it the buttons of which one is shown at a time.
void TakeTurns(Layout& layout, int right, int y, std::initializer_list<std::string_view> accepting,
               std::string_view cancel);

/// The line over a list of names that says which of them show.
void FilterLine(Layout& layout, int x, int y, int width);

/// Height of a text that is wrapped at its blanks to a width, and the width of one line.
int HeightOf(std::string_view text, int width, const TextLook& look);
double WidthOf(std::string_view text, const TextLook& look);

} // namespace quillmere::layouts
