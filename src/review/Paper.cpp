#include "review/Paper.h"

#include "frame/Text.h"
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
            return {.section = row.section, .screen = row.screen, .box = std::string(field)};
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
    {{"PA1", Severity::Oddity, "A text is longer than its box on paper", "The form as it prints"}, TextIsCut},
});

} // namespace

const BoxedTextList& BoxedTexts()
{
    static const BoxedTextList list = [] {
        BoxedTextList made;
        AddBoxedTextsOfP11D1(made.texts);
        AddBoxedTextsOfP11D2(made.texts);
        made.ofForm = made.texts.size();
        for (int car = CarsOnThePage + 1; car <= Cars; ++car)
            AddBoxedTextsOfCar(car, made.texts);
        return made;
    }();
    return list;
}

std::span<const PaperCheck> PaperChecks()
{
    return ChecksOfPaper;
}

Paper::Paper(const Settings& settings, Platform& platform) : engine(platform), page(settings)
{
    page.vsBindEngine(engine);
    BeginValues(page);
    widest = page.vsTextWidth("@");
}

PaperFacts Paper::Cut(const FormFacts& form) const
{
    const BoxedTextList& boxes = BoxedTexts();
    PaperFacts cut;
    for (std::size_t i = 0; i < boxes.texts.size(); ++i)
        if (std::string_view text = form.boxed[i]; !text.empty())
            if (std::string prints = Printing(boxes.texts[i], text); prints != text)
                cut.push_back({.field = boxes.texts[i].field, .prints = std::move(prints)});
    return cut;
}

std::string Paper::Printing(const BoxedText& box, std::string_view text) const
{
    // Most texts are so short that nothing of them needs measuring.
    const bool surelyFits = static_cast<double>(text.size()) * widest <= box.room;
    return surelyFits ? std::string(text) : FittingText(page, text, box.room);
}

std::size_t CutOnPaper(const Session& session, const Screen& screen, const Box& box)
{
    constexpr auto OfTheForm = std::to_array<std::string_view>({Page1, Page2, "Form3_4", "Form5_6"});
    const std::vector<BoxedText>& texts = BoxedTexts().texts;
    const auto boxed = std::ranges::find(texts, box.Field(), &BoxedText::field);
    if (box.Empty() || box.IsAmount() || boxed == texts.end() ||
        std::ranges::find(OfTheForm, screen.Name()) == OfTheForm.end())
        return 0;
    const Paper paper(session.settings, session.platform);
    return Length(box.Text()) - Length(paper.Printing(*boxed, box.Text()));
}

} // namespace quillmere::review
