#include "review/Overview.h"

#include "clientdb/EmployeeFinder.h"
#include "declaration/Class1A.h"

#include <algorithm>
#include <numeric>

namespace quillmere::review {

namespace {

// What each section puts on the return, in the fields of the form.
constexpr auto A = std::to_array<std::string_view>({"ACashEqu"});
constexpr auto B = std::to_array<std::string_view>({"B2", "BNotTax"});
constexpr auto C = std::to_array<std::string_view>({"CCashEqu"});
constexpr auto D = std::to_array<std::string_view>({"DCashEqu"});
constexpr auto E = std::to_array<std::string_view>({"ETaxAmount"});
constexpr auto F = std::to_array<std::string_view>({"FTotalCashCars", "FTotalCashFuel"});
constexpr auto G = std::to_array<std::string_view>({"GVan", "GVanFuel"});
constexpr auto H = std::to_array<std::string_view>({"HLoanCashEqu1", "HLoanCashEqu2"});
constexpr auto I = std::to_array<std::string_view>({"ICashEqu"});
constexpr auto J = std::to_array<std::string_view>({"JRelocationExp"});
constexpr auto K = std::to_array<std::string_view>({"KCashEqu"});
constexpr auto L = std::to_array<std::string_view>({"LCashEqu"});
constexpr auto N = std::to_array<std::string_view>({"NCashEqu1", "NCashEqu2", "NTaxPaid"});
constexpr auto O =
    std::to_array<std::string_view>({"OCashEqu1", "OCashEqu2", "OCashEqu3", "OCashEqu4", "OCashEqu5", "OCashEqu6"});

constexpr std::array<OverviewSection, OverviewSectionCount> Sections{{
    {"A", Page1, "ACashEqu", A},
    {"B", Page1, "B2", B},
    {"C", Page1, "CCashEqu", C},
    {"D", Page1, "DCashEqu", D},
    {"E", Page1, "ETaxAmount", E},
    {"F", Page1, "FMakeModel1", F},
    {"G", Page2, "GVan", G},
    {"H", Page2, "HLoanCashEqu1", H},
    {"I", Page2, "ICashEqu", I},
    {"J", Page2, "JRelocation", J},
    {"K", Page2, "KCashEqu", K},
    {"L", Page2, "LCashEqu", L},
    {"N", Page2, "NCashEqu1", N},
    {"O", Page2, "OCashEqu1", O},
}};

/// The cell of a line in a column.
std::string_view CellOf(std::string_view line, int column)
{
    for (; column > 0 && !line.empty(); --column)
        line.remove_prefix(std::min(line.find('\t'), line.size() - 1) + 1);
    return line.substr(0, line.find('\t'));
}

bool IsFigure(std::string_view cell)
{
    return cell.find_first_not_of("0123456789.,-()") == std::string_view::npos;
}

std::vector<std::string> WordsOf(std::string_view text)
{
    std::vector<std::string> words;
    for (std::string rest = Folded(text); !rest.empty();) {
        const std::size_t end = rest.find(' ');
        if (end != 0)
            words.push_back(rest.substr(0, end));
        rest.erase(0, end == std::string::npos ? end : end + 1);
    }
    return words;
}

} // namespace

std::span<const OverviewSection, OverviewSectionCount> OverviewSections()
{
    return Sections;
}

OverviewSums& OverviewSums::operator+=(const OverviewSums& other)
{
    employees += other.employees;
    for (std::size_t i = 0; i < sections.size(); ++i)
        sections[i] += other.sections[i];
    total += other.total;
    benefits += other.benefits;
    contributions += other.contributions;
    toLookAt += other.toLookAt;
    return *this;
}

OverviewSums SumsOf(const FormFacts& form, std::size_t toLookAt)
{
    OverviewSums sums{.employees = 1, .benefits = Class1ABenefits(form.liable), .toLookAt = toLookAt};
    auto text = form.onReturn.begin();
    for (std::size_t i = 0; i < Sections.size(); ++i)
        for (std::size_t amount = 0; amount < Sections[i].amounts.size(); ++amount)
            sums.sections[i] += ReadAmount(*text++);
    sums.total = std::accumulate(sums.sections.begin(), sums.sections.end(), Amount());
    return sums;
}

OverviewSums SumsOf(const OverviewSums& employees, const DeclarationTotals& declaration, std::size_t toLookAt)
{
    OverviewSums sums = employees;
    sums.contributions = ReadAmount(declaration.section1Tick ? declaration.section4FBox : declaration.section1CBox);
    sums.toLookAt = toLookAt;
    return sums;
}

std::vector<std::size_t> Arranged(std::span<const std::string_view> lines, std::string_view filter, Sorting sorting)
{
    const std::vector<std::string> words = WordsOf(filter);
    std::vector<std::size_t> listed;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string text = words.empty() ? std::string() : Folded(lines[i]);
        if (std::ranges::all_of(words, [&text](const std::string& word) { return text.find(word) != text.npos; }))
            listed.push_back(i);
    }
    if (sorting.column < 0)
        return listed;
    const auto cell = [&](std::size_t line) { return CellOf(lines[line], sorting.column); };
    const auto inOrder = [&](auto keyOf) {
        std::vector<decltype(keyOf(std::string_view()))> keys(lines.size());
        for (const std::size_t line : listed)
            keys[line] = keyOf(cell(line));
        std::ranges::stable_sort(listed, [&](std::size_t a, std::size_t b) {
            return sorting.descending ? keys[b] < keys[a] : keys[a] < keys[b];
        });
    };
    if (std::ranges::all_of(listed, [&](std::size_t line) { return IsFigure(cell(line)); }))
        inOrder([](std::string_view text) { return ReadAmount(text); });
    else
        inOrder([](std::string_view text) { return Folded(text); });
    return listed;
}

} // namespace quillmere::review
