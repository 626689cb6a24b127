#include "Documents.h"

#include <gtest/gtest.h>

namespace quillmere::scenario {
namespace {

constexpr double Millimetre = UnitsPerMillimetre;

std::shared_ptr<const Document> TwoPages()
{
    auto document = std::make_shared<Document>();
    document->name = "P11D";
    document->AddPage();
    document->AddLine({}, 0, 0, 100, 100);
    document->AddText({.size = 10}, Alignment::Left, 20 * Millimetre, 30 * Millimetre, "Acme");
    document->AddText({.size = 10}, Alignment::Right, 40 * Millimetre, 30 * Millimetre, "    12.00");
    document->AddPage();
    document->AddText({.size = 10}, Alignment::Left, 0, 50 * Millimetre, "behind");
    return document;
}

TEST(Documents, GiveTheTextsOfOnePageByTheirLeftEnds)
{
    const auto document = TwoPages();
    const std::vector<DrawnText> texts = TextsOf(*document, 1);
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(texts[0].text, "Acme");
    EXPECT_NEAR(texts[0].x, 20, 0.001);
    EXPECT_NEAR(texts[1].x, 40, 0.001);
    EXPECT_DOUBLE_EQ(texts[0].y, texts[1].y);
    EXPECT_GT(texts[0].y, 30);
    EXPECT_TRUE(PageHolds(texts, "Acme 12.00"));
    ASSERT_EQ(TextsOf(*document, 2).size(), 1U);
    EXPECT_FALSE(PageHolds(texts, "behind"));
}

TEST(Documents, AreWitnessedInOrder)
{
    DocumentWitness witness;
    EXPECT_THROW(static_cast<void>(witness.Last()), StepFailure);
    const auto first = std::make_shared<Document>();
    first->name = "first";
    witness.Finished(first);
    witness.Finished(TwoPages());
    EXPECT_EQ(witness.namesSince, (std::vector<std::string>{"first", "P11D"}));
    EXPECT_EQ(witness.Last().PageCount(), 2);
}

} // namespace
} // namespace quillmere::scenario
