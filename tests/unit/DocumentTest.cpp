#include "printing/paper/Document.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <utility>
#include <vector>

namespace quillmere {
namespace {

constexpr double Mm = UnitsPerMillimetre;

TEST(Document, ListsOneOperationALineInMillimetres)
{
    Document document;
    document.AddPage();
    document.AddLine({.pen = Black, .width = 0.2 * Mm}, 2 * Mm, 68 * Mm, 195 * Mm, 68 * Mm);
    document.AddRectangle({.pen = White, .brush = Grey(225), .filled = true}, 2 * Mm, 75 * Mm, 195 * Mm, 87 * Mm);
    document.AddRectangle({.pen = Black, .brush = Grey(225), .filled = false, .width = 0.2 * Mm}, 0, 0, Mm, Mm);
    document.AddCircle({.pen = {1, 0, 0}, .brush = {1, 0, 0}, .filled = true}, 11.5 * Mm, 29.5 * Mm, 0.5 * Mm);
    document.AddPolygon({.filled = true}, std::array{1 * Mm, 2 * Mm, 3 * Mm, 4 * Mm, 5 * Mm, 6 * Mm});
    document.AddText({.face = Face::SansBold, .size = 10}, Alignment::Right,
                     188 * Mm - TextWidth(Face::SansBold, 10, "    250.00"),
                     85 * Mm + TextDrop - TextHeight(Face::SansBold, 10), "    250.00");
    document.AddText({.face = Face::SerifItalic, .colour = {0, 0, 128}, .size = 7.5}, Alignment::Left, 5 * Mm,
                     27 * Mm + TextDrop - TextHeight(Face::SerifItalic, 7.5), "a \"b\" \\ c\nd");
    document.AddPage();

    EXPECT_EQ(Listing(document), "page 1\n"
                                 "line 2.00 68.00 195.00 68.00 pen 0 width 0.20\n"
                                 "rectangle 2.00 75.00 195.00 87.00 pen 255 width 0.00 fill 225\n"
                                 "rectangle 0.00 0.00 1.00 1.00 pen 0 width 0.20\n"
                                 "circle 11.50 29.50 radius 0.50 pen 1,0,0 width 0.00 fill 1,0,0\n"
                                 "polygon 1.00 2.00 3.00 4.00 5.00 6.00 pen 0 width 0.00 fill 0\n"
                                 "text right 188.00 85.00 10 bold \"    250.00\"\n"
                                 "text left 5.00 27.00 \"Times New Roman\" 7.5 italic colour 0,0,128 "
                                 "\"a \\\"b\\\" \\\\ c\\nd\"\n"
                                 "page 2\n");
}

TEST(Document, NamesThePlaceThatAnAlignmentMeans)
{
    Document document;
    document.AddPage();
    const TextStyle style{.face = Face::SansRegular, .size = 8};
    const double top = 100 * Mm + TextDrop - TextHeight(style.face, style.size);
    const double width = TextWidth(style.face, style.size, "1.2.3");
    for (const Alignment alignment :
         {Alignment::Left, Alignment::Right, Alignment::Centre, Alignment::Decimal, Alignment::Run})
        document.AddText(style, alignment, 50 * Mm, top, "1.2.3");

    const auto operations = document.Page(1);
    EXPECT_DOUBLE_EQ(PlaceOf(document, operations[0]).x, 50 * Mm);
    EXPECT_DOUBLE_EQ(PlaceOf(document, operations[1]).x, 50 * Mm + width);
    EXPECT_DOUBLE_EQ(PlaceOf(document, operations[2]).x, 50 * Mm + width / 2);
    EXPECT_DOUBLE_EQ(PlaceOf(document, operations[3]).x, 50 * Mm + TextWidth(style.face, style.size, "1"));
    EXPECT_DOUBLE_EQ(PlaceOf(document, operations[4]).x, 50 * Mm);
    for (const Operation& operation : operations)
        EXPECT_NEAR(PlaceOf(document, operation).y, 100 * Mm, 1e-9);
}

TEST(Document, KeepsItsPagesApart)
{
    Document document;
    EXPECT_EQ(document.PageCount(), 0);
    EXPECT_THROW(document.Page(1), std::out_of_range);
    document.AddPage();
    document.AddLine({}, 0, 0, 1, 1);
    document.AddPage();
    document.AddPage();
    document.AddLine({}, 0, 0, 2, 2);
    document.AddLine({}, 0, 0, 3, 3);
    EXPECT_EQ(document.PageCount(), 3);
    EXPECT_EQ(document.Page(1).size(), 1U);
    EXPECT_EQ(document.Page(2).size(), 0U);
    EXPECT_EQ(document.Page(3).size(), 2U);
    EXPECT_THROW(document.Page(0), std::out_of_range);
    EXPECT_THROW(document.Page(4), std::out_of_range);
}

TEST(Document, PartsAPageIntoFixedAndOtherStretches)
{
    Document document;
    const auto draw = [&document](int lines) {
        for (int line = 0; line < lines; ++line)
            document.AddLine({}, 0, 0, 1, 1);
    };
    const auto parts = [&document](int page) {
        std::vector<std::pair<std::size_t, bool>> found;
        for (const Document::Part& part : document.Parts(page))
            found.emplace_back(part.operations.size(), part.isFixed);
        return found;
    };
    using Parts = std::vector<std::pair<std::size_t, bool>>;
    document.AddPage();
    draw(2);
    document.BeginPart(true);
    draw(3);
    document.BeginPart(false);
    draw(1);
    document.AddPage();
    document.BeginPart(true);
    draw(4);
    document.AddPage();
    draw(1);
    document.AddPage();
    EXPECT_EQ(parts(1), (Parts{{2, false}, {3, true}, {1, false}}));
    EXPECT_EQ(parts(2), (Parts{{4, true}}));
    EXPECT_EQ(parts(3), (Parts{{1, false}})) << "a page begins with a part of its own";
    EXPECT_EQ(parts(4), Parts{});
}

TEST(Document, HoldsGreysWithinTheirRange)
{
    EXPECT_EQ(Grey(-5), Black);
    EXPECT_EQ(Grey(300), White);
    EXPECT_EQ(Grey(200), (Colour{200, 200, 200}));
}

} // namespace
} // namespace quillmere
