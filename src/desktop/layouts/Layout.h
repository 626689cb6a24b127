#pragma once

#include "frame/Box.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// How a text of a layout is drawn. Sizes are in pixels at scale 1.
struct TextLook {
    int size = 12;
    bool bold = false;
    bool italic = false;
    enum class Align { Left, Right, Centre } align = Align::Left;
};

/// Where everything of a screen stands, in pixels at scale 1: what is only drawn, and the controls by name. Written by
/// the functions below from top to bottom in the order of the form.
struct Layout {
    struct Drawn {
        enum class What { Panel, Frame, Letter, Tag, Text, Line } what;
        int x = 0, y = 0, width = 0, height = 0;
        std::string text = {};
        TextLook look = {};
        int page = 0; ///< as of a control
    };
    struct Placed {
        std::string box;
        int index = Box::NoIndex;
        int x = 0, y = 0, width = 0, height = 0;
        std::string spoken = {};           ///< what a screen reader says; empty: the box's own
        int page = 0;                      ///< page of the tab strip on which it stands, from 1; 0: on every page
        std::optional<TextLook> look = {}; ///< of its words, where that is not the window's
    };

    int width = 0, height = 0;
    int headerHeight = 0;  ///< this much at the top stays in place while the rest scrolls
    int footTop = 0;       ///< what stands from here on stays in place at the foot; 0: nothing does
    bool onScreen = false; ///< opens in the middle of the screen, not of the window below it
    std::string pageBox;   ///< array of the frames that are the pages of the tab strip
    std::string growing;   ///< list that takes the room of a window made larger, or gives that of a smaller one
    int page = 0;          ///< page on which the next things are put, from 1, at places within it; 0: on none
    std::vector<Drawn> drawn;
    std::vector<Placed> placed;
    /// Where a page says its caption, which has no title bar of its own; no width: nowhere.
    struct Words {
        int x = 0, y = 0, width = 0, height = 0;
    } captionPlace = {};

    static constexpr int BoxHeight = 22;

    /// A light grey panel behind a section.
    void Panel(int x, int y, int w, int h);
    /// An outlined group with its title in the line.
    void Frame(int x, int y, int w, int h, std::string_view title = {});
    /// A section's letter, white in a black square.
    void Letter(int x, int y, std::string_view letter);
    /// The mark of a Class 1A box, or the number of a box, white on black.
    void Tag(int x, int y, std::string_view text = "1A");
    /// A text whose box is w wide (its alignment works in it) and one line high, or as high as its lines need.
    void Text(int x, int y, int w, std::string_view text, TextLook look = {}, int h = 0);
    void Line(int x, int y, int w, int h);

    /// Where what scrolls ends.
    int FormBottom() const { return footTop > 0 ? footTop : height; }

    /// A control of the screen.
    void Place(std::string_view box, int x, int y, int w, int h = BoxHeight, std::string_view spoken = {});
    /// A control of an array.
    void PlaceAt(std::string_view box, int index, int x, int y, int w, int h = BoxHeight, std::string_view spoken = {});
    /// Gives the control that was placed last the look of what stands around it.
    void Looks(const TextLook& look) { placed.back().look = look; }
    /// A caption with its box to the right of it: the usual line of a dialog.
    void Field(int y, int captionX, int captionWidth, std::string_view caption, std::string_view box, int boxX,
               int boxWidth);
};

/// A layout at so many percent of its size.
Layout Zoomed(Layout layout, int percent);

/// The layout of a screen by its name. An unknown name is a mistake in the program: std::logic_error.
const Layout& LayoutOf(std::string_view screen);

/// Names of all screens that have a layout.
std::vector<std::string_view> ScreensWithLayout();

} // namespace quillmere
