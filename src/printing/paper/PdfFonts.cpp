#include "printing/paper/PdfFonts.h"

#include "printing/paper/Deflate.h"
#include "printing/paper/HarfBuzz.h"

#include <hb-ot.h>
#include <hb-subset.h>

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace quillmere {

namespace {

constexpr char32_t GroupSize = 64;
constexpr char32_t PoundSign = 0xA3;

/// Kept subsets at most; documents of one office need a handful.
constexpr std::size_t KeptFonts = 96;

/// Subsets are made once and stand in every file.
constexpr int FontEffort = 12;

using AsciiBits = std::array<std::uint64_t, 2>;

constexpr void Set(AsciiBits& bits, char32_t character)
{
    bits[character / 64] |= std::uint64_t{1} << (character % 64);
}

/// The printable characters of ASCII in groups that are entered together.
constexpr auto AsciiGroups = [] {
    constexpr auto groups = std::to_array<std::string_view>({
        "0123456789 .,-/&'()",
        "ABCDEFGHI",
        "JKLMNOPQR",
        "STUVWXYZ",
        "abcdefghi",
        "jklmnopqr",
        "stuvwxyz",
    });
    std::array<AsciiBits, groups.size() + 1> bits{};
    AsciiBits& rest = bits.back();
    for (char32_t character = 0x20; character <= 0x7E; ++character)
        Set(rest, character);
    for (std::size_t group = 0; group < groups.size(); ++group)
        for (const char character : groups[group])
            Set(bits[group], static_cast<unsigned char>(character));
    for (std::size_t group = 0; group < groups.size(); ++group)
        for (std::size_t half = 0; half < rest.size(); ++half)
            rest[half] &= ~bits[group][half];
    return bits;
}();

/// Puts a number among others, which are in ascending order.
void Insert(std::vector<char16_t>& numbers, char16_t number)
{
    const auto place = std::ranges::lower_bound(numbers, number);
    if (place == numbers.end() || *place != number)
        numbers.insert(place, number);
}

using SubsetInput = std::unique_ptr<hb_subset_input_t, hb::Destroyer<hb_subset_input_destroy>>;
using SubsetPlan = std::unique_ptr<hb_subset_plan_t, hb::Destroyer<hb_subset_plan_destroy>>;

SubsetInput InputFor(const std::vector<CharacterRange>& characters)
{
    SubsetInput input(hb_subset_input_create_or_fail());
    if (!input)
        throw std::bad_alloc();
    for (const CharacterRange range : characters)
        hb_set_add_range(hb_subset_input_unicode_set(input.get()), range.first, range.last);
    hb_subset_input_set_flags(input.get(), HB_SUBSET_FLAGS_NO_HINTING | HB_SUBSET_FLAGS_NOTDEF_OUTLINE);
    // A PDF file reaches glyphs by number and has its own list of widths and characters.
    for (const char* table : {"cmap", "name", "OS/2", "post", "GSUB", "GPOS", "GDEF", "kern", "gasp", "DSIG", "FFTM"})
        hb_set_add(hb_subset_input_set(input.get(), HB_SUBSET_SETS_DROP_TABLE_TAG), hb_tag_from_string(table, -1));
    return input;
}

std::string BytesOf(hb_face_t* face)
{
    const hb::Blob blob(hb_face_reference_blob(face));
    unsigned int length = 0;
    const char* bytes = hb_blob_get_data(blob.get(), &length);
    return {bytes, length};
}

/// The glyph of each code, two bytes each.
std::string GlyphsByCode(hb_subset_plan_t* plan, const std::vector<CharacterRange>& characters)
{
    const hb_map_t* glyphOf = hb_subset_plan_unicode_to_old_glyph_mapping(plan);
    const hb_map_t* newGlyphOf = hb_subset_plan_old_to_new_glyph_mapping(plan);
    std::string glyphs((std::size_t{characters.back().last} + 1) * 2, '\0');
    for (const CharacterRange range : characters)
        for (char32_t character = range.first; character <= range.last; ++character) {
            const hb_codepoint_t old = hb_map_get(glyphOf, character);
            const hb_codepoint_t glyph = old == HB_MAP_VALUE_INVALID ? 0 : hb_map_get(newGlyphOf, old);
            const std::size_t at = std::size_t{character} * 2;
            glyphs[at] = static_cast<char>(glyph >> 8);
            glyphs[at + 1] = static_cast<char>(glyph & 0xFF);
        }
    return glyphs;
}

/// The map from codes to characters: each stands for itself. It has whole rows of 256, which a range may not go beyond,
/// so that the fonts of most files have the same map.
std::string ToUnicode(const std::vector<CharacterRange>& characters)
{
    std::vector<char32_t> rows;
    for (const CharacterRange range : characters)
        for (char32_t row = range.first >> 8; row <= range.last >> 8; ++row)
            if (rows.empty() || rows.back() != row)
                rows.push_back(row);
    std::string map = "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n"
                      "/CIDSystemInfo << /Registry (Adobe) /Ordering (UCS) /Supplement 0 >> def\n"
                      "/CMapName /Adobe-Identity-UCS def\n/CMapType 2 def\n"
                      "1 begincodespacerange\n<0000> <FFFF>\nendcodespacerange\n";
    constexpr std::size_t AtOnce = 100;
    for (std::size_t start = 0; start < rows.size(); start += AtOnce) {
        const std::size_t end = std::min(start + AtOnce, rows.size());
        map += fmt::format("{} beginbfrange\n", end - start);
        for (std::size_t at = start; at < end; ++at)
            map += fmt::format("<{0:02X}00> <{0:02X}FF> <{0:02X}00>\n", static_cast<std::uint32_t>(rows[at]));
        map += "endbfrange\n";
    }
    return map + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
}

/// The tag that sets one subset of a face apart from another: six capital letters that follow from what it holds.
std::string SubsetTag(std::string_view glyphs)
{
    std::uint64_t hash = 0xCBF29CE484222325U; // FNV-1a
    for (const char byte : glyphs)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
    std::string tag;
    for (int letter = 0; letter < 6; ++letter, hash /= 26)
        tag += static_cast<char>('A' + hash % 26);
    return tag;
}

std::string_view PostScriptName(Face face)
{
    constexpr std::array<std::string_view, FaceCount> Names = {
        "LiberationSans",  "LiberationSans-Bold",  "LiberationSans-Italic",  "LiberationSans-BoldItalic",
        "LiberationSerif", "LiberationSerif-Bold", "LiberationSerif-Italic", "LiberationSerif-BoldItalic",
        "LiberationMono",  "LiberationMono-Bold",  "LiberationMono-Italic",  "LiberationMono-BoldItalic",
    };
    return Names.at(static_cast<std::size_t>(face));
}

/// Flags of a font descriptor.
constexpr int FixedPitch = 1, Serif = 2, Symbolic = 4, Italic = 64;

void Describe(PdfFont& font, Face face, hb_face_t* opened)
{
    const hb::Font metrics(hb_font_create(opened));
    const double unitsPerEm = hb_face_get_upem(opened);
    const auto thousandths = [unitsPerEm](double units) {
        return static_cast<int>(std::lround(units * 1000.0 / unitsPerEm));
    };
    font.ascent = thousandths(MetricsOf(face).Ascent());
    font.descent = -thousandths(MetricsOf(face).Descent());
    hb_position_t capHeight = 0;
    hb_ot_metrics_get_position(metrics.get(), HB_OT_METRICS_TAG_CAP_HEIGHT, &capHeight);
    font.capHeight = thousandths(capHeight);
    font.italicAngle = hb_style_get_value(metrics.get(), HB_STYLE_TAG_SLANT_ANGLE);
    font.stemWidth = IsBold(face) ? 140 : 80;
    font.flags = Symbolic | (IsItalic(face) ? Italic : 0);
    if (FamilyOf(face) == FamilyOf(Face::SerifRegular))
        font.flags |= Serif;
    if (FamilyOf(face) == FamilyOf(Face::MonoRegular))
        font.flags |= FixedPitch;

    const hb::Blob head(hb_face_reference_table(opened, HB_TAG('h', 'e', 'a', 'd')));
    unsigned int length = 0;
    const auto* bytes = reinterpret_cast<const unsigned char*>(hb_blob_get_data(head.get(), &length));
    constexpr unsigned int BoxAt = 36;
    if (length < BoxAt + 8)
        throw std::runtime_error("a built-in font has no header");
    for (unsigned int side = 0; side < 4; ++side)
        font.box[side] =
            thousandths(static_cast<std::int16_t>((bytes[BoxAt + side * 2] << 8) | bytes[BoxAt + side * 2 + 1]));
}

PdfFont MakeFont(Face face, const CharacterGroups& groups)
{
    PdfFont font;
    font.characters = groups.Ranges();
    const hb::Face opened = hb::Open(FontFile(face));
    Describe(font, face, opened.get());

    const SubsetInput input = InputFor(font.characters);
    const SubsetPlan plan(hb_subset_plan_create_or_fail(opened.get(), input.get()));
    const hb::Face subset(plan ? hb_subset_plan_execute_or_fail(plan.get()) : nullptr);
    if (!subset)
        throw std::runtime_error("a built-in font could not be cut down");

    Deflate deflate(FontEffort);
    const std::string file = BytesOf(subset.get());
    const std::string glyphs = GlyphsByCode(plan.get(), font.characters);
    font.fileLength = file.size();
    font.file = deflate.Compress(file);
    font.glyphs = deflate.Compress(glyphs);
    font.toUnicode = deflate.Compress(ToUnicode(font.characters));
    font.name = SubsetTag(glyphs) + '+' + std::string(PostScriptName(face));
    return font;
}

} // namespace

void CharacterGroups::Put(char32_t character, bool withItsGroup)
{
    if (IsPrintableAscii(character)) {
        if (!withItsGroup)
            return Set(ascii, character);
        const std::size_t half = character / 64;
        for (const AsciiBits& group : AsciiGroups)
            if ((group[half] >> (character % 64) & 1) != 0)
                for (std::size_t part = 0; part < ascii.size(); ++part)
                    ascii[part] |= group[part];
    } else if (withItsGroup && character != PoundSign) {
        Insert(groups, static_cast<char16_t>(PdfCode(character) / GroupSize));
    } else {
        Insert(apart, PdfCode(character));
    }
}

void CharacterGroups::Add(const CharacterGroups& others)
{
    for (std::size_t half = 0; half < ascii.size(); ++half)
        ascii[half] |= others.ascii[half];
    for (const char16_t group : others.groups)
        Insert(groups, group);
    for (const char16_t character : others.apart)
        Insert(apart, character);
}

std::vector<CharacterRange> CharacterGroups::Ranges() const
{
    std::vector<CharacterRange> ranges;
    for (char32_t character = 0x20; character <= 0x7E; ++character)
        if ((ascii[character / 64] >> (character % 64) & 1) != 0)
            ranges.push_back({character, character});
    for (const char16_t character : apart)
        ranges.push_back({character, character});
    for (const char16_t group : groups)
        ranges.push_back({group * GroupSize, group * GroupSize + GroupSize - 1});
    std::ranges::sort(ranges, {}, &CharacterRange::first);
    std::vector<CharacterRange> joined;
    for (const CharacterRange range : ranges)
        if (!joined.empty() && range.first <= joined.back().last + 1)
            joined.back().last = std::max(joined.back().last, range.last);
        else
            joined.push_back(range);
    return joined;
}

const PdfFont& PdfFonts::FontFor(Face face, const CharacterGroups& characters)
{
    const std::pair key(face, characters);
    auto kept = fonts.find(key);
    if (kept == fonts.end()) {
        if (fonts.size() >= KeptFonts)
            fonts.clear();
        kept = fonts.emplace(key, MakeFont(face, characters)).first;
    }
    return kept->second;
}

} // namespace quillmere
