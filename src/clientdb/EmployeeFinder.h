#pragma once

#include "clientdb/store/Recordset.h"
#include "frame/LibraryInUse.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory_resource>
#include <string>
#include <string_view>
#include <vector>

/// Finding an employee by any part of any word: over all employers, however many there are.
namespace quillmere {

/// A text as it is compared when somebody is sought: without accents and in one case, so that "Zoe" finds "Zoë" and
/// "strasse" "Straße". Bytes that are no UTF-8 stay as they are.
std::string Folded(std::string_view text);
/// What does it.
LibraryInUse FoldingLibrary();

/// What is shown of an employee who was found.
struct FoundEmployee {
    std::string employer, employee;
    std::string worksNumber, nationalInsurance;
};

/// The employees of a client database at one moment, ready to be searched at each key.
class EmployeeFinder {
public:
    /// Reads everybody but the sample employer's people in one scan of P11D. Throws StoreError.
    explicit EmployeeFinder(Database& database);

    std::size_t Count() const { return entries.size(); }

    struct Result {
        std::vector<FoundEmployee> best; ///< in the order in which they are offered
        std::size_t matches = 0;         ///< of all, the ones not in `best` too
    };
    /// Everybody of whom each word of the query is a part: of first names, surname, employer, works number or National
    /// Insurance number (which may be typed with or without its blanks). First those whose surname begins with the
    /// query's first word, then those of whom some other word does, then the rest; among equals the order of adding. At
    /// most `most` are given.
    Result Find(std::string_view query, std::size_t most) const;

private:
    /// The texts of a FoundEmployee, in its order.
    using Shown = std::array<std::string_view, 4>;
    /// One employee's texts, one behind the other, and their lengths.
    struct Entry {
        const char* texts = nullptr;
        std::uint32_t words = 0; ///< folded; each word, and first of them the surname, stands behind a WordStart
        std::array<std::uint32_t, 4> shown{};
    };
    void Add(const Shown& shown, std::string_view firstName, std::string_view surname);
    static FoundEmployee Found(const Entry& entry);

    std::pmr::monotonic_buffer_resource room; ///< of the texts: it grows without moving what it has
    std::deque<Entry> entries;
    std::string adding; ///< the texts of the one who is being added
};

} // namespace quillmere
