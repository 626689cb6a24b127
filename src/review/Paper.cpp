#include "review/Paper.h"

#include "printing/forms/CarSection.h"
#include "printing/forms/P11DPages.h"
#include "review/CheckParts.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace quillmere::review {

namespace {

/// The box that a text of page 1 is typed into, where it has another name than the field.
struct BoxOfField {
    std::string_view field, box;
};
constexpr auto NamedOtherwise = std::to_array<BoxOfField>({
    {"EmployerName", "EmployerNameBox"},
    {"Surname", "EmployeeNameBox"},
    {"FirstName", "EmployeeNameBox2"},
});

Spot SpotOf(std::string_view field)
{
    for (const SectionRow& row : SectionRows())
        if (field == row.description)
            return {.section = std::string(row.section), .screen = row.screen, .box = std::string(field)};
    if (field.starts_with('F') && field.back() >= '1' && field.back() <= '0' + Cars)
        return SpotOfCar(field.back() - '0', field.substr(0, field.size() - 1));
    const auto named = std::ranges::find(NamedOtherwise, field, &BoxOfField::field);
    return {.section = {}, .screen = Page1, .box = std::string(named == NamedOtherwise.end() ? field : named->box)};
}

Spots TextIsCut(const PaperFacts& cut)
{
    Spots spots;
    for (const CutText& text : cut) {
        Spot spot = SpotOf(text.field);
        spot.detail += fmt::format("{}\"{}\" is all that prints", spot.detail.empty() ? "" : ", ", text.prints);
        spots.push_back(std::move(spot));
    }
    return spots;
}

constexpr auto ChecksOfPaper = std::to_array<PaperCheck>({
    {"PA1", Severity::Oddity, "A text is longer than its box on paper", "The form as it prints", TextIsCut},
});

} // namespace

std::span<const PaperCheck> PaperChecks()
{
    return ChecksOfPaper;
}

Paper::Paper(const Settings& settings, Platform& platform) : engine(platform), page(settings)
{
    page.vsBindEngine(engine);
    BeginValues(page);
}

std::vector<CutText> Paper::Cut(const FieldReader& read) const
{
    const auto of = [&read](std::string_view table) {
        return [&read, table](std::string_view field) { return std::string(read(table, field)); };
    };
    std::vector<CutText> cut;
    FindCutOnP11D1(page, of("P11D"), cut);
    FindCutOnP11D2(page, of("P11D"), cut);
    for (int car = 3; car <= Cars; ++car)
        FindCutOfCar(page, car, of("ExtraCars"), cut);
    return cut;
}

} // namespace quillmere::review
