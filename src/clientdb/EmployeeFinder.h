#pragma once

#include "clientdb/store/Recordset.h"
#include "frame/LibraryInUse.h"

#include <cstddef>
#include <cstdint>
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
        std::vector<const FoundEmployee*> best; ///< in the order in which they are offered
        std::size_t matches = 0;                ///< of all, the ones not in `best` too
    };
    /// Everybody of whom each word of the query is a part: of first names, surname, employer, works number or National
    /// Insurance number (which may be typed with or without its blanks). First those whose surname begins with the
    /// query's first word, then those of whom some other word does, then the rest; among equals the order of adding. At
    /// most `most` are given.
    Result Find(std::string_view query, std::size_t most) const;

private:
    void Add(FoundEmployee employee, std::string_view firstName, std::string_view surname);

    /// Where an employee's words begin in `words`; they end where the next one's begin.
    std::vector<std::size_t> starts;
    std::vector<FoundEmployee> entries;
    std::string words; ///< of all, folded; each word, and first of them the surname, stands behind a line end
};

} // namespace quillmere
