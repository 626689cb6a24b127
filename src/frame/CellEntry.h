#pragma once

#include <string>
#include <string_view>

/// Cells of other programs' tables, put into boxes.
namespace quillmere {

class Box;
class Screen;

/// A cell in one line, without outer blanks.
std::string OneLine(std::string_view cell);

/// A cell as it would be typed into the box: a date day first, an amount without pound sign and thousands, a word for a
/// tick as "1" or "0". What is nothing of the kind stays as it is.
std::string Entry(const Box& box, std::string_view cell);

/// Types a cell into a box and leaves it. What is wrong with it, in words; empty if the box has taken it. A cell with a
/// character that the box lets nobody type is left out whole, for a part of it would be another figure.
std::string TypeCell(Screen& screen, Box& box, std::string_view cell);

/// True if what has been typed still stands in the box, in whichever form; a zero may go blank.
bool IsTaken(const Box& box, std::string_view entry);

} // namespace quillmere
