#include "printing/paper/Fonts.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace quillmere {
namespace {

constexpr auto AllFaces = {Face::SansRegular,  Face::SansBold,  Face::SansItalic,  Face::SansBoldItalic,
                           Face::SerifRegular, Face::SerifBold, Face::SerifItalic, Face::SerifBoldItalic,
                           Face::MonoRegular,  Face::MonoBold,  Face::MonoItalic,  Face::MonoBoldItalic};

/// Reads a font file by the byte, as a second opinion.
class FontBytes {
public:
    explicit FontBytes(Face face) : file(FontFile(face)) {}

    unsigned int Unsigned(std::size_t at) const
    {
        return (std::to_integer<unsigned int>(file[at]) << 8) | std::to_integer<unsigned int>(file[at + 1]);
    }
    int Signed(std::size_t at) const { return static_cast<std::int16_t>(Unsigned(at)); }
    std::size_t Long(std::size_t at) const { return (std::size_t{Unsigned(at)} << 16) | Unsigned(at + 2); }
    std::size_t Table(std::string_view tag) const
    {
        for (unsigned int table = 0; table < Unsigned(4); ++table) {
            const std::size_t at = 12 + std::size_t{table} * 16;
            if (std::string_view(reinterpret_cast<const char*>(file.data()) + at, 4) == tag)
                return Long(at + 8);
        }
        return 0;
    }
    int Advance(unsigned int glyph) const
    {
        const unsigned int count = Unsigned(Table("hhea") + 34);
        return static_cast<int>(Unsigned(Table("hmtx") + std::size_t{std::min(glyph, count - 1)} * 4));
    }

private:
    std::span<const std::byte> file;
};

TEST(Fonts, NamesOfTheProgramLeadToTheBuiltInFamilies)
{
    EXPECT_EQ(FaceFor("Arial", false, false), Face::SansRegular);
    EXPECT_EQ(FaceFor("Arial", true, true), Face::SansBoldItalic);
    EXPECT_EQ(FaceFor("Times New Roman", true, false), Face::SerifBold);
    EXPECT_EQ(FaceFor("Courier New", false, true), Face::MonoItalic);
    EXPECT_EQ(FaceFor("", false, false), Face::SansRegular);
    EXPECT_EQ(FaceFor("Helvetica", true, false), Face::SansBold);
    EXPECT_EQ(FamilyOf(Face::SerifItalic), "Times New Roman");
    EXPECT_TRUE(IsBold(Face::MonoBold));
    EXPECT_FALSE(IsBold(Face::MonoItalic));
    EXPECT_TRUE(IsItalic(Face::SansBoldItalic));
}

TEST(Fonts, HeightsAreThoseOfTheHorizontalHeaderWithoutLineGap)
{
    for (const Face face : AllFaces) {
        const FontBytes bytes(face);
        const std::size_t header = bytes.Table("hhea");
        EXPECT_EQ(MetricsOf(face).Ascent(), bytes.Signed(header + 4));
        EXPECT_EQ(MetricsOf(face).Descent(), -bytes.Signed(header + 6));
        EXPECT_EQ(MetricsOf(face).UnitsPerEm(), static_cast<int>(bytes.Unsigned(bytes.Table("head") + 18)));
        // The same as what Windows clips texts at.
        EXPECT_EQ(MetricsOf(face).Ascent(), static_cast<int>(bytes.Unsigned(bytes.Table("OS/2") + 74)));
        EXPECT_EQ(MetricsOf(face).Descent(), static_cast<int>(bytes.Unsigned(bytes.Table("OS/2") + 76)));
    }
    EXPECT_DOUBLE_EQ(TextHeight(Face::SansRegular, 10), (1854 + 434) * 200.0 / 2048);
    EXPECT_DOUBLE_EQ(TextAscent(Face::SansRegular, 10), 1854 * 200.0 / 2048);
}

TEST(Fonts, AdvancesAreThoseOfTheFontFile)
{
    for (const Face face : AllFaces) {
        const FontBytes bytes(face);
        const FaceMetrics& metrics = MetricsOf(face);
        for (const char32_t character : {U'A', U'i', U' ', U'£', U'é', U'Ω', U'Ж', U'0'}) {
            EXPECT_NE(metrics.GlyphOf(character), 0) << static_cast<std::uint32_t>(character);
            EXPECT_EQ(metrics.AdvanceOf(character), bytes.Advance(metrics.GlyphOf(character)));
        }
    }
    EXPECT_EQ(MetricsOf(Face::SansRegular).AdvanceOf(U'A'), 1366);
    EXPECT_EQ(MetricsOf(Face::SerifRegular).AdvanceOf(U'A'), 1479);
    EXPECT_EQ(MetricsOf(Face::MonoRegular).AdvanceOf(U'i'), 1229);
}

TEST(Fonts, CharactersThatTheFaceLacksAreAsWideAsTheMissingGlyphBox)
{
    for (const Face face : AllFaces) {
        const FaceMetrics& metrics = MetricsOf(face);
        const int box = FontBytes(face).Advance(0);
        for (const char32_t character : {U'中', U'\U0001F600', static_cast<char32_t>(0x10FFFF)}) {
            EXPECT_EQ(metrics.GlyphOf(character), 0);
            EXPECT_EQ(metrics.AdvanceOf(character), box);
        }
        EXPECT_GT(box, 0);
    }
}

TEST(Fonts, ATextIsAsWideAsItsCharactersTogether)
{
    EXPECT_EQ(MetricsOf(Face::SansRegular).Measure("AV"),
              MetricsOf(Face::SansRegular).AdvanceOf(U'A') + MetricsOf(Face::SansRegular).AdvanceOf(U'V'));
    EXPECT_EQ(MetricsOf(Face::SansRegular).Measure("£é"),
              MetricsOf(Face::SansRegular).AdvanceOf(U'£') + MetricsOf(Face::SansRegular).AdvanceOf(U'é'));
    EXPECT_EQ(MetricsOf(Face::SansRegular).Measure("A\xFF"),
              MetricsOf(Face::SansRegular).AdvanceOf(U'A') + MetricsOf(Face::SansRegular).AdvanceOf(U'\uFFFD'));
    EXPECT_EQ(MetricsOf(Face::SansRegular).Measure(""), 0);
    EXPECT_DOUBLE_EQ(TextWidth(Face::SansRegular, 8, "A"), 1366 * 160.0 / 2048);
    EXPECT_DOUBLE_EQ(TextWidth(Face::SansRegular, 16, "Abc"), 2 * TextWidth(Face::SansRegular, 8, "Abc"));
}

} // namespace
} // namespace quillmere
