#include "printing/paper/Fonts.h"

#include "frame/Text.h"
#include "printing/paper/HarfBuzz.h"

#include <hb-ot.h>

#include <stdexcept>
#include <utility>

#define QUILLMERE_FONT(name)                                                                                           \
    extern "C" const std::byte quillmere_font_##name[];                                                                \
    extern "C" const std::byte quillmere_font_##name##_end[];

QUILLMERE_FONT(sans_regular)
QUILLMERE_FONT(sans_bold)
QUILLMERE_FONT(sans_italic)
QUILLMERE_FONT(sans_bold_italic)
QUILLMERE_FONT(serif_regular)
QUILLMERE_FONT(serif_bold)
QUILLMERE_FONT(serif_italic)
QUILLMERE_FONT(serif_bold_italic)
QUILLMERE_FONT(mono_regular)
QUILLMERE_FONT(mono_bold)
QUILLMERE_FONT(mono_italic)
QUILLMERE_FONT(mono_bold_italic)

#undef QUILLMERE_FONT

namespace quillmere {

namespace {

constexpr int StylesPerFamily = 4;

constexpr std::array<std::string_view, FaceCount / StylesPerFamily> Families = {"Arial", "Times New Roman",
                                                                                "Courier New"};

int IndexOf(Face face)
{
    return static_cast<int>(face);
}

/// What a font file says never changes: it is read on first use, by whichever thread comes to it first.
template<Face face>
const FaceMetrics& ReadOnce()
{
    static const FaceMetrics metrics(face);
    return metrics;
}

} // namespace

Face FaceFor(std::string_view fontName, bool bold, bool italic)
{
    int family = 0;
    for (std::size_t at = 0; at < Families.size(); ++at)
        if (Families[at] == fontName)
            family = static_cast<int>(at);
    return static_cast<Face>(family * StylesPerFamily + (bold ? 1 : 0) + (italic ? 2 : 0));
}

std::string_view FamilyOf(Face face)
{
    return Families.at(static_cast<std::size_t>(IndexOf(face) / StylesPerFamily));
}

bool IsBold(Face face)
{
    return (IndexOf(face) & 1) != 0;
}

bool IsItalic(Face face)
{
    return (IndexOf(face) & 2) != 0;
}

std::span<const std::byte> FontFile(Face face)
{
    switch (face) {
    case Face::SansRegular:
        return {quillmere_font_sans_regular, quillmere_font_sans_regular_end};
    case Face::SansBold:
        return {quillmere_font_sans_bold, quillmere_font_sans_bold_end};
    case Face::SansItalic:
        return {quillmere_font_sans_italic, quillmere_font_sans_italic_end};
    case Face::SansBoldItalic:
        return {quillmere_font_sans_bold_italic, quillmere_font_sans_bold_italic_end};
    case Face::SerifRegular:
        return {quillmere_font_serif_regular, quillmere_font_serif_regular_end};
    case Face::SerifBold:
        return {quillmere_font_serif_bold, quillmere_font_serif_bold_end};
    case Face::SerifItalic:
        return {quillmere_font_serif_italic, quillmere_font_serif_italic_end};
    case Face::SerifBoldItalic:
        return {quillmere_font_serif_bold_italic, quillmere_font_serif_bold_italic_end};
    case Face::MonoRegular:
        return {quillmere_font_mono_regular, quillmere_font_mono_regular_end};
    case Face::MonoBold:
        return {quillmere_font_mono_bold, quillmere_font_mono_bold_end};
    case Face::MonoItalic:
        return {quillmere_font_mono_italic, quillmere_font_mono_italic_end};
    case Face::MonoBoldItalic:
        return {quillmere_font_mono_bold_italic, quillmere_font_mono_bold_italic_end};
    }
    throw std::logic_error("no such face");
}

FaceMetrics::FaceMetrics(Face face)
{
    const hb::Face opened = hb::Open(FontFile(face));
    const hb::Font font(hb_font_create(opened.get()));

    unitsPerEm = static_cast<int>(hb_face_get_upem(opened.get()));
    hb_position_t position = 0;
    if (!hb_ot_metrics_get_position(font.get(), HB_OT_METRICS_TAG_HORIZONTAL_ASCENDER, &position))
        throw std::runtime_error("a built-in font has no horizontal metrics");
    ascent = position;
    hb_ot_metrics_get_position(font.get(), HB_OT_METRICS_TAG_HORIZONTAL_DESCENDER, &position);
    descent = -position;

    Block missing;
    missing.fill({0, static_cast<std::uint16_t>(hb_font_get_glyph_h_advance(font.get(), 0))});
    blocks.assign(1, missing);

    const hb::Set characters(hb_set_create());
    hb_face_collect_unicodes(opened.get(), characters.get());
    for (hb_codepoint_t character = HB_SET_VALUE_INVALID; hb_set_next(characters.get(), &character);) {
        const std::size_t block = character / BlockSize;
        hb_codepoint_t glyph = 0;
        if (block >= blockOf.size() || !hb_font_get_nominal_glyph(font.get(), character, &glyph))
            continue;
        if (blockOf[block] == 0) {
            blockOf[block] = static_cast<std::uint8_t>(blocks.size());
            blocks.push_back(missing);
        }
        blocks[blockOf[block]][character % BlockSize] = {
            static_cast<std::uint16_t>(glyph),
            static_cast<std::uint16_t>(hb_font_get_glyph_h_advance(font.get(), glyph))};
    }
    for (std::size_t character = 0; character < asciiAdvances.size(); ++character)
        asciiAdvances[character] = AdvanceOf(static_cast<char32_t>(character));
}

std::int64_t FaceMetrics::Measure(std::string_view text) const
{
    std::int64_t units = 0;
    for (std::size_t at = 0; at < text.size();) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (byte < asciiAdvances.size()) {
            units += asciiAdvances[byte];
            ++at;
            continue;
        }
        std::string_view rest = text.substr(at);
        units += AdvanceOf(TakeCodePoint(rest));
        at = text.size() - rest.size();
    }
    return units;
}

const FaceMetrics& MetricsOf(Face face)
{
    constexpr auto of = []<std::size_t... number>(std::index_sequence<number...>)
    {
        return std::array{&ReadOnce<static_cast<Face>(number)>...};
    }
    (std::make_index_sequence<FaceCount>());
    return of.at(static_cast<std::size_t>(IndexOf(face)))();
}

double TextWidth(Face face, double size, std::string_view text)
{
    const FaceMetrics& metrics = MetricsOf(face);
    return static_cast<double>(metrics.Measure(text)) * size * TwipsPerPoint / metrics.UnitsPerEm();
}

double TextHeight(Face face, double size)
{
    const FaceMetrics& metrics = MetricsOf(face);
    return (metrics.Ascent() + metrics.Descent()) * size * TwipsPerPoint / metrics.UnitsPerEm();
}

double TextAscent(Face face, double size)
{
    const FaceMetrics& metrics = MetricsOf(face);
    return metrics.Ascent() * size * TwipsPerPoint / metrics.UnitsPerEm();
}

} // namespace quillmere
