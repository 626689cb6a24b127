#pragma once

#include "frame/Screens.h"

#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace quillmere {
class Notepad;
}

namespace quillmere::review {

/// The fields of the records in the words of the form: each has those by which the box is spoken that shows it, and the
/// title of the screen that the box is on. A field that no box shows has words of its own.
class FieldWords {
public:
    /// Asks the screens, which are made once for this.
    explicit FieldWords(const Screens& screens);

    struct Words {
        std::string place; ///< "Vouchers or credit cards", "Page 1"
        std::string box;   ///< "Description, line 1"
    };
    /// The words of a field of a table; nothing for a part of the key that joins others.
    const Words* Of(std::string_view table, std::string_view field) const;
    /// The title of the screen on which most of a table's fields show.
    std::string PlaceOf(std::string_view table) const;

private:
    void AddKept(const Notepad& notepad);
    void AddBoxes(const Screen& screen, std::string_view table);
    void Add(std::string_view table, std::string_view field, Words words);

    std::map<std::pair<std::string, std::string>, Words, std::less<>> words;
    std::map<std::string, std::string, std::less<>> places;
};

} // namespace quillmere::review
