#include "printing/paper/PdfArchive.h"

#include "edition/Edition.h"
#include "frame/Markup.h"
#include "frame/Text.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <fmt/format.h>
#include <initializer_list>

namespace quillmere {

namespace {

std::string Escaped(std::string_view text)
{
    return MarkupText(PropertyText(text));
}

/// A property with its value in a list of one; nothing for an empty one.
std::string Listed(std::string_view name, std::string_view list, std::string_view attribute, std::string_view text)
{
    if (text.empty())
        return {};
    return fmt::format("<{0}><rdf:{1}><rdf:li{2}>{3}</rdf:li></rdf:{1}></{0}>\n", name, list, attribute, Escaped(text));
}

// ---- the colour profile -------------------------------------------------------------------------

void Append(std::string& bytes, std::uint32_t number, int size)
{
    for (int place = size - 1; place >= 0; --place)
        bytes += static_cast<char>((number >> (8 * place)) & 0xFF);
}

/// Numbers as the profile has them, in parts of 65536.
std::string Fixed(std::initializer_list<double> numbers)
{
    std::string bytes;
    for (const double number : numbers)
        Append(bytes, static_cast<std::uint32_t>(static_cast<std::int32_t>(std::lround(number * 65536))), 4);
    return bytes;
}

std::string Fixed(std::string_view type, std::initializer_list<double> numbers)
{
    return std::string(type) + std::string(4, '\0') + Fixed(numbers);
}

/// A text in one language.
std::string Words(std::string_view text)
{
    constexpr std::uint32_t TextAt = 28;
    std::string bytes = "mluc";
    Append(bytes, 0, 4);
    Append(bytes, 1, 4);
    Append(bytes, 12, 4);
    bytes += "enGB";
    Append(bytes, static_cast<std::uint32_t>(2 * text.size()), 4);
    Append(bytes, TextAt, 4);
    for (const char character : text)
        Append(bytes, static_cast<unsigned char>(character), 2);
    return bytes;
}

/// How a level of red, green or blue becomes light: linear near black, a power from there on.
std::string LightOfALevel()
{
    constexpr std::uint32_t PowerWithLinearPart = 3;
    std::string bytes = "para";
    Append(bytes, 0, 4);
    Append(bytes, PowerWithLinearPart, 2);
    Append(bytes, 0, 2);
    return bytes + Fixed({2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045});
}

struct ProfileTag {
    std::string_view name;
    std::string data;
};

/// Version, kind and white of the profile; the fields that stay 0 are not told.
std::string ProfileHeader(std::size_t size)
{
    std::string bytes;
    Append(bytes, static_cast<std::uint32_t>(size), 4);
    Append(bytes, 0, 4);
    Append(bytes, 0x04200000, 4);
    bytes += "mntrRGB XYZ ";
    for (const std::uint32_t part : {2010U, 4U, 6U, 0U, 0U, 0U}) // when it was made; any date will do
        Append(bytes, part, 2);
    bytes += "acsp";
    bytes.append(28, '\0');
    bytes += Fixed({0.9642, 1, 0.8249});
    bytes.append(48, '\0');
    return bytes;
}

} // namespace

std::string PropertyText(std::string_view text)
{
    std::u32string characters = CodePoints(text);
    for (char32_t& character : characters)
        if (character < U' ' || character == 0x7F || (character & 0xFFFE) == 0xFFFE)
            character = U' ';
    return Utf8(characters);
}

std::string PdfMetadata(const Document& document, bool isArchive)
{
    constexpr std::string_view Claim = "<pdfaid:part>2</pdfaid:part>\n<pdfaid:conformance>U</pdfaid:conformance>\n";
    constexpr std::string_view ClaimSpace = " xmlns:pdfaid=\"http://www.aiim.org/pdfa/ns/id/\"";
    constexpr std::string_view AnyLanguage = " xml:lang=\"x-default\"";
    return fmt::format("<?xpacket begin=\"\uFEFF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
                       "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n"
                       "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
                       "<rdf:Description rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\""
                       " xmlns:pdf=\"http://ns.adobe.com/pdf/1.3/\" xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\"{}>\n",
                       isArchive ? ClaimSpace : "") +
           Listed("dc:title", "Alt", AnyLanguage, document.name) +
           Listed("dc:description", "Alt", AnyLanguage, document.subject) +
           Listed("dc:creator", "Seq", {}, document.author) + Listed("dc:language", "Bag", {}, document.language) +
           fmt::format("<pdf:Producer>{0}</pdf:Producer>\n<xmp:CreatorTool>{0}</xmp:CreatorTool>\n{1}"
                       "</rdf:Description>\n</rdf:RDF>\n</x:xmpmeta>\n<?xpacket end=\"r\"?>",
                       Escaped(edition::AppTitle), isArchive ? Claim : "");
}

std::string ScreenColours()
{
    constexpr std::size_t HeaderSize = 128;
    constexpr std::size_t EntrySize = 12;
    const std::string light = LightOfALevel();
    // The primaries and the white of IEC 61966-2-1, as they look under the white of profiles.
    const auto tags = std::to_array<ProfileTag>({
        {"desc", Words("sRGB")},
        {"cprt", Words("No copyright, use freely")},
        {"wtpt", Fixed("XYZ ", {0.9642, 1, 0.8249})},
        {"chad",
         Fixed("sf32", {1.047882, 0.022919, -0.050201, 0.029587, 0.990479, -0.017059, -0.009232, 0.015076, 0.751678})},
        {"rXYZ", Fixed("XYZ ", {0.436066, 0.222488, 0.013916})},
        {"gXYZ", Fixed("XYZ ", {0.385147, 0.716873, 0.097076})},
        {"bXYZ", Fixed("XYZ ", {0.143066, 0.060608, 0.714096})},
        {"rTRC", light},
        {"gTRC", light},
        {"bTRC", light},
    });
    std::string table, data;
    Append(table, static_cast<std::uint32_t>(tags.size()), 4);
    const std::size_t start = HeaderSize + 4 + tags.size() * EntrySize;
    std::size_t place = start;
    for (const ProfileTag& tag : tags) {
        const bool isSame = !data.empty() && tag.data == light && data.ends_with(light);
        if (!isSame) {
            place = start + data.size();
            data += tag.data;
        }
        table += tag.name;
        Append(table, static_cast<std::uint32_t>(place), 4);
        Append(table, static_cast<std::uint32_t>(tag.data.size()), 4);
        data.append((4 - data.size() % 4) % 4, '\0');
    }
    return ProfileHeader(start + data.size()) + table + data;
}

} // namespace quillmere
