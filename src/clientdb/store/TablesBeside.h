#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// A table that stands beside those of the layouts, column by column, for whoever makes it elsewhere or copies it.
struct TableBeside {
    enum class Kind { Number, Text, Bytes };
    struct Column {
        std::string_view name;
        Kind kind;
    };

    std::string_view name;
    std::string_view number; ///< the column by which the records are counted up
    std::vector<Column> columns;
    std::vector<std::string_view> key; ///< unique, where it is not the number
    std::string words;                 ///< that make the table in a file
};

/// The change history and the marks of the forms.
std::vector<TableBeside> TablesBeside();

} // namespace quillmere
