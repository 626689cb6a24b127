#pragma once

#include "frame/Amount.h"
#include "review/Checks.h"

#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

/// The overview of an employer: what each employee's form comes to, section by section, as it is stored.
namespace quillmere::review {

/// A section of the form that has a total.
struct OverviewSection {
    std::string_view letter;
    std::string_view screen;                   ///< the page that holds it
    std::string_view box;                      ///< of its figure, or the first of its figures
    std::span<const std::string_view> amounts; ///< fields of what the section puts on the return
};

inline constexpr std::size_t OverviewSectionCount = 14;
/// The sections in the order of the form.
std::span<const OverviewSection, OverviewSectionCount> OverviewSections();

/// What one form, or several, come to.
struct OverviewSums {
    std::size_t employees = 0;
    std::array<Amount, OverviewSectionCount> sections;
    Amount total;         ///< of all sections
    Amount benefits;      ///< liable to Class 1A
    Amount contributions; ///< Class 1A contributions that fall due; of an employer
    std::size_t toLookAt = 0;

    OverviewSums& operator+=(const OverviewSums& other);
    friend bool operator==(const OverviewSums&, const OverviewSums&) = default;
};

/// The sums of one employee's form.
OverviewSums SumsOf(const FormFacts& form, std::size_t toLookAt);

/// The sums of an employer: those of his employees, with the contributions and the number of findings on his forms and
/// his declaration together.
OverviewSums SumsOf(const OverviewSums& employees, const DeclarationTotals& declaration, std::size_t toLookAt);

/// Which lines of a table, each its cells parted by tabs, are listed: those of which each word of `filter` is a part,
/// in the order of a column (as amounts where all its cells hold figures), equal ones as they stand. Accents and case
/// do not count.
std::vector<std::size_t> Arranged(std::span<const std::string_view> lines, std::string_view filter, Sorting sorting);

} // namespace quillmere::review
