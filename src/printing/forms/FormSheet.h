#pragma once

#include "printing/paper/PageLayer.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// Weight and slant of a text.
enum class Weight { Plain, Bold, Italic, BoldItalic };

struct Font {
    double size = 8; ///< points
    Weight weight = Weight::Plain;
};

/// Where a text stands: it starts or ends at x, is centred from x to x2, goes on after the text before it, or goes on
/// after an indent of two blanks (see PrintIndented).
enum class At { Left, Right, Centre, Run, Indented };

struct Label;

/// Which of several alike fields are meant: what stands behind their names, and what it is called.
struct FieldSuffix {
    std::string suffix;
    std::string words;
};

/// A page of a form while it is drawn: the pen, and what there is to be read out. Labels are read as they are drawn,
/// the pieces of one paragraph together, and each box after the label that names its field, whenever it is filled.
class FormSheet {
public:
    explicit FormSheet(PageLayer& page) : page(page) {}
    FormSheet(const FormSheet&) = delete;
    FormSheet& operator=(const FormSheet&) = delete;

    /// Of labels that are about to be drawn, the heads of columns that stand over the first one are read before it.
    void ReadHeads(std::span<const Label> labels);
    /// The element of a label that is about to be drawn; 0 for one that is for the eye only.
    ElementNumber BeginLabel(const Label& label);
    /// The label has been drawn: places for its fields follow it, once for each suffix.
    void EndLabel(const Label& label, std::span<const FieldSuffix> suffixes);

    /// A piece that is drawn before what it goes with: the mark of a section, with its label; the number, the letter or
    /// the pound sign of a box, with its figure. x and y are its top left corner.
    ElementNumber AddMark(double x, double y, bool isHeading);
    ElementNumber AddTag(double x, double y, Role role = Role::Piece);

    /// What stands in a field's box.
    ElementNumber EntryOf(std::string_view field);
    /// The same of a figure that ends at x, with the tags of its box.
    ElementNumber FigureOf(std::string_view field, double x, double y);

    PageLayer& page;

private:
    struct Piece {
        double x, y;
        ElementNumber element;
        bool isHeading = false;
    };
    struct Place {
        std::string field;
        ElementNumber element;
    };
    /// The paragraph to which the labels have come.
    struct Paragraph {
        ElementNumber element = 0; ///< 0: what comes begins another
        std::string text;
        bool isRespelled = false;
        double line = 0, end = 0;
        Font lineFont, lastFont; ///< of the first and the last piece of its last line
        At at = At::Left;        ///< of the first piece
        double x = 0;
    };
    struct Head {
        const Label* label;
        ElementNumber element;
    };

    const Head* FindHead(const Label& label) const;
    bool GoesOn(const Label& label) const;
    void Begin(const Label& label);
    void AddPlaces(const Label& label, std::span<const FieldSuffix> suffixes);
    void AddPlace(std::string field, std::string label);

    std::vector<Piece> marks, tags;
    std::vector<Place> places;
    std::size_t nextPlace = 0; ///< fields come much in the order of their labels
    std::vector<Head> heads;   ///< that are read before they are drawn
    Paragraph paragraph;
};

} // namespace quillmere
