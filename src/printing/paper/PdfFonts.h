#pragma once

#include "printing/paper/Fonts.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace quillmere {

/// A run of characters that a subset holds in full, both ends included.
struct CharacterRange {
    char32_t first, last;
};

constexpr bool IsPrintableAscii(char32_t character)
{
    return character >= 0x20 && character <= 0x7E;
}

/// The characters that a subset holds of one face. Those of a form's own words are taken as they are. What differs from
/// document to document brings its group in: a third of the letters of one case, the digits with what stands in amounts
/// and dates, the rest of ASCII, or beyond it 64 characters. So there are few different subsets, and which one a
/// document gets follows from the document alone.
class CharacterGroups {
public:
    /// A character of a form's own words.
    void AddFixed(char32_t character) { Put(character, false); }
    /// A character of what has been entered.
    void AddEntered(char32_t character) { Put(character, true); }
    void Add(const CharacterGroups& others);
    /// In ascending order, neighbours joined.
    std::vector<CharacterRange> Ranges() const;
    /// Any order, for a place in a map.
    friend bool operator<(const CharacterGroups& a, const CharacterGroups& b)
    {
        return std::tie(a.ascii, a.groups, a.apart) < std::tie(b.ascii, b.groups, b.apart);
    }

private:
    void Put(char32_t character, bool withItsGroup);

    std::array<std::uint64_t, 2> ascii{}; ///< a bit for each code
    std::vector<char16_t> groups;         ///< numbers of those beyond, ascending
    std::vector<char16_t> apart;          ///< characters beyond, ascending
};

/// The code under which a character stands in a text of the PDF file: its UTF-16 code. The fonts know no characters
/// beyond that, which all stand under the replacement character's code.
constexpr char16_t PdfCode(char32_t character)
{
    return character > 0xFFFF ? u'\uFFFD' : static_cast<char16_t>(character);
}

/// The character's width in the fonts of a PDF file: thousandths of an em, rounded.
inline int PdfWidth(const FaceMetrics& metrics, char32_t character)
{
    const int unitsPerEm = metrics.UnitsPerEm();
    return (metrics.AdvanceOf(character) * 1000 + unitsPerEm / 2) / unitsPerEm;
}

/// A face's subset as it stands in a PDF file; streams are compressed.
struct PdfFont {
    std::string name;          ///< with the six-letter tag of a subset
    int flags = 0;             ///< of the font descriptor
    int box[4] = {0, 0, 0, 0}; ///< the next ones in thousandths of an em
    int ascent = 0, descent = 0, capHeight = 0, stemWidth = 0;
    double italicAngle = 0;
    std::vector<CharacterRange> characters;
    std::string file;           ///< TrueType subset
    std::size_t fileLength = 0; ///< of it before compression
    std::string glyphs;         ///< glyph of each code, 0 for those that the face lacks: its missing-glyph box
    std::string toUnicode;
};

/// Makes the subsets and keeps them.
class PdfFonts {
public:
    /// Valid until the next call.
    const PdfFont& FontFor(Face face, const CharacterGroups& characters);

private:
    std::map<std::pair<Face, CharacterGroups>, PdfFont> fonts;
};

} // namespace quillmere
