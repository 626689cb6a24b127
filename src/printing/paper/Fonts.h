#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace quillmere {

/// The built-in font files: three families in four styles each.
enum class Face : std::uint8_t {
    SansRegular,
    SansBold,
    SansItalic,
    SansBoldItalic,
    SerifRegular,
    SerifBold,
    SerifItalic,
    SerifBoldItalic,
    MonoRegular,
    MonoBold,
    MonoItalic,
    MonoBoldItalic,
};

inline constexpr int FaceCount = 12;

/// The built-in face for a font name of the program: "Arial" is Liberation Sans, "Times New Roman" Liberation Serif,
/// "Courier New" Liberation Mono, each with the same widths. Any other name gives Sans.
Face FaceFor(std::string_view fontName, bool bold, bool italic);

/// The program's name of the face's family, "Arial" for the Sans faces.
std::string_view FamilyOf(Face face);
bool IsBold(Face face);
bool IsItalic(Face face);

/// The bytes of the face's TrueType file.
std::span<const std::byte> FontFile(Face face);

/// Widths and heights of one face in its own units, read from the file once. No hinting and no kerning: a text is as
/// wide as its characters together, at every size and on every device.
///
/// Ascent and descent are those of the `hhea` table, without its line gap. In all twelve files they equal the `OS/2`
/// table's Windows ascent and descent, and cover every glyph of Western texts.
class FaceMetrics {
public:
    explicit FaceMetrics(Face face);

    int UnitsPerEm() const { return unitsPerEm; }
    int Ascent() const { return ascent; }
    /// Depth below the base line, positive.
    int Descent() const { return descent; }

    /// The glyph of a character; 0, the missing-glyph box, for one that the face lacks.
    std::uint16_t GlyphOf(char32_t character) const { return EntryOf(character).glyph; }
    std::uint16_t AdvanceOf(char32_t character) const { return EntryOf(character).advance; }

    /// Width of a UTF-8 text, in units. A byte that is no UTF-8 is as wide as U+FFFD.
    std::int64_t Measure(std::string_view text) const;

private:
    struct Entry {
        std::uint16_t glyph = 0;
        std::uint16_t advance = 0;
    };
    static constexpr std::size_t BlockSize = 256;
    using Block = std::array<Entry, BlockSize>;

    const Entry& EntryOf(char32_t character) const
    {
        const std::size_t block = character / BlockSize;
        return blocks[block < blockOf.size() ? blockOf[block] : 0][character % BlockSize];
    }

    int unitsPerEm = 0, ascent = 0, descent = 0;
    std::array<std::uint16_t, 128> asciiAdvances{};
    std::array<std::uint8_t, 256> blockOf{}; ///< block of each 256 characters of the first plane; 0 is all missing
    std::vector<Block> blocks;
};

/// The face's metrics, read on first use.
const FaceMetrics& MetricsOf(Face face);

/// Twips to an em at a size in points.
constexpr double TwipsPerPoint = 20.0;

/// Width of a text and height of a line (ascent and descent, without line gap), in twips, at a size in points.
double TextWidth(Face face, double size, std::string_view text);
double TextHeight(Face face, double size);

/// Distance from the top of a line to its base line, in twips.
double TextAscent(Face face, double size);

} // namespace quillmere
