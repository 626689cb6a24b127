#pragma once

#include <string>
#include <vector>

namespace quillmere {

/// A table that a screen shows, for the paper: under a heading, its columns from the left to the right edge of the
/// page.
struct PrintedTable {
    struct Column {
        std::string caption;
        int width = 1;       ///< its share of the page's width
        bool figure = false; ///< stands at the right of its column
    };

    std::string documentName;
    std::string employer; ///< whose it is, for the head of the page; empty: the one being worked on
    std::string employee; ///< whose it is, for the head of the page; empty: the employer's
    std::string heading;
    std::string subHeading;
    std::vector<Column> columns;
    std::vector<std::vector<std::string>> rows; ///< a cell for each column
    std::vector<std::string> remarks;           ///< below the table
};

} // namespace quillmere
