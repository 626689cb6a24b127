#pragma once

#include "desktop/layouts/Layout.h"
#include "screens/P11DPage.h"

#include <string_view>

/// What the layouts of the form's two sides, and of the screens that continue them, have in common. Positions are in
/// pixels at scale 1; `y` is the top.
namespace quillmere::layouts {

inline constexpr TextLook Heading{.size = 13, .bold = true};
inline constexpr TextLook Small{.size = 11};
inline constexpr TextLook Italic{.size = 11, .italic = true};
inline constexpr TextLook Sign{.size = 14, .bold = true, .align = TextLook::Align::Centre};

// Columns of the sections, as on the form.
inline constexpr int PageWidth = 980;
inline constexpr int SectionX = 10, SectionWidth = 960;
inline constexpr int TextX = 44;
inline constexpr int CostX = 490, GoodX = 634, CashTagX = 772, CashX = 798, MarkX = 922;
inline constexpr int AmountWidth = 120;
inline constexpr int CarRow = 27; ///< height of one row of the cars

/// Whether the employer owes Class 1A contributions on a box's amount: it then carries the mark.
enum class Liability { None, Class1A };

/// The fixed strip above a page, with its two tabs on the left.
void PageHeader(Layout& layout);
/// A section's panel with its letter and heading, and the picture that opens its notepad below the letter.
void Section(Layout& layout, int y, int height, std::string_view letter, std::string_view heading,
             std::string_view picture = {});
/// The picture of a line of a section.
void Picture(Layout& layout, int y, std::string_view picture);
/// Captions over the three amount columns of a section. The first may have two lines.
void TripleCaptions(Layout& layout, int y, std::string_view cost, std::string_view result = "Cash equivalent");
/// Three amounts with their signs, and the number of the last.
void Triple(Layout& layout, int y, const AmountTriple& boxes, std::string_view number, Liability liability);
/// One amount with its number at the right of a section.
void Single(Layout& layout, int y, std::string_view box, std::string_view number, Liability liability);
/// The columns of two cars side by side with the captions of their rows. Gives the top of the row below.
int CarRows(Layout& layout, int y, int firstCar);

} // namespace quillmere::layouts
