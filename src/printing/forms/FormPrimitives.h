#pragma once

#include "printing/paper/PageLayer.h"

#include <functional>
#include <string>
#include <string_view>

namespace quillmere {

/// Gives the text of a field by its name, empty for a null field: of an open record, or of totals held in memory.
using FieldReader = std::function<std::string(std::string_view field)>;

/// A field's text for printing. Kind 0: as stored. Kind 1: "Y" if it is stored as true (1, -1, True or Y), else "".
/// Any other kind: "".
std::string FieldText(std::string_view value, int kind);

// The small boxes of the forms. x and y are the top left corner, mm. Each sets font and colour for itself, so that what
// is drawn next must set its own.

/// White box from x1 to x2, 5.5 high.
void PrintEntryBox(PageLayer& page, double x1, double x2, double y);

/// White box of 22 by 5.5 with a pound sign at its left.
void PrintPoundBox(PageLayer& page, double x, double y, ElementNumber sign = 0);

/// Black square of 5.5 with a white letter.
void PrintSectionLetter(PageLayer& page, double x, double y, std::string_view letter);

/// What the texts of a box belong to: those in its tags, and the pound sign.
struct BoxElements {
    ElementNumber tags = 0, sign = 0;
};

/// Black tag of 7.5 by 5.5 with a white number, then a pound box. The number's own blanks set its place in the tag.
void PrintBoxNumber(PageLayer& page, double x, double y, std::string_view number, BoxElements elements = {});

/// PrintBoxNumber, then a black tag of 5 with "1A" behind the box.
void PrintBoxNumber1A(PageLayer& page, double x, double y, std::string_view number, BoxElements elements = {});

/// Black square of 5 with "1A".
void Print1ATag(PageLayer& page, double x, double y);

/// The characters of a dd/mm/yyyy text but the two "/", each centred in a cell of 5.5.
void PrintDateCells(PageLayer& page, double x, double y, std::string_view date);

/// Eight characters in cells of 4.5, the ninth in one of 7.5.
void PrintNICells(PageLayer& page, double x, double y, std::string_view number);

/// A text that goes on where the last one ended. `count` blanks come first, as a text of their own, since the text
/// before it ends in another font.
void PrintIndented(PageLayer& page, int count, std::string_view text);

} // namespace quillmere
