#pragma once

#include "frame/Box.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What a column of a table can stand for.
namespace quillmere::exchange {

struct Target {
    enum class What {
        Employer,
        WholeName, ///< first names and surname in one cell
        OfPage,    ///< a box of one of the two pages
        List,      ///< which list of items the row is a line of
        Line,      ///< which line of it
        OfList,    ///< a box of that line
        Car,       ///< which car the row is about
        OfCar,     ///< a box of that car
        WorkedOut, ///< what a car comes to: written, and passed over when it is read
    };
    What what;
    std::string words;            ///< what the user reads; heads the column where it is written
    std::string_view screen = {}; ///< that has the box
    std::string box = {};         ///< a box's name; of a car without its number
};

/// Position of no target: the column is passed over.
inline constexpr int Nothing = -1;

/// All of them, in the order in which they are offered and written: those of the employee, of the pages, of a line of a
/// list, of a car.
class Targets {
public:
    Targets();
    std::span<const Target> All() const { return all; }
    const Target& At(int target) const { return all.at(static_cast<std::size_t>(target)); }
    /// The one that a column's heading means: by its own words, or by others that are in use for it; Nothing for none.
    int Meant(std::string_view heading) const;
    /// The one of a box; Nothing if no column stands for it.
    int OfBox(Target::What what, std::string_view box) const;

private:
    void AddPages();
    void AddCars();
    std::vector<Target> all;
};

/// The box of a target of a car: its name without the car's number, and its index.
struct CarBox {
    std::string stem;
    int index;
};
CarBox BoxOfCar(const Target& target);

/// The lists of items by what a cell says: "A", "O3", or the words over the list. The name of the notepad; empty for
/// none.
std::string_view ListMeant(std::string_view cell);
/// "A", "O3".
std::string LetterOfList(std::string_view notepad);
/// The names of the boxes of a line of a list that are typed in: description, cost, made good. Empty for one that it
/// lacks.
std::vector<std::string> TypedBoxesOf(std::string_view notepad);

/// Columns of a list.
inline constexpr std::string_view ListDescription = "Description", ListCost = "Cost", ListMadeGood = "MadeGood";

} // namespace quillmere::exchange
