#include "printing/PdfWriter.h"

#include "edition/Edition.h"
#include "frame/Text.h"
#include "printing/Deflate.h"
#include "printing/PdfContent.h"
#include "printing/PdfFile.h"
#include "printing/PdfFonts.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <iterator>
#include <map>
#include <numeric>
#include <optional>
#include <vector>

namespace quillmere {

namespace {

/// Contents are made for every document: the quickest level is also near the smallest.
constexpr int ContentEffort = 1;

/// A text of the document's properties or bookmarks: UTF-16 with its mark, in hexadecimal.
std::string TextObject(std::string_view text)
{
    std::string object = "<FEFF";
    const auto append = [&object](std::uint32_t unit) { fmt::format_to(std::back_inserter(object), "{:04X}", unit); };
    while (!text.empty()) {
        const char32_t character = TakeCodePoint(text);
        if (character > 0xFFFF) {
            append(0xD800 + ((character - 0x10000) >> 10));
            append(0xDC00 + ((character - 0x10000) & 0x3FF));
        } else {
            append(character);
        }
    }
    return object + '>';
}

/// Widths of the codes, from each range's first one on.
std::string WidthsOf(Face face, const PdfFont& font)
{
    const FaceMetrics& metrics = MetricsOf(face);
    std::string widths;
    for (const CharacterRange range : font.characters) {
        fmt::format_to(std::back_inserter(widths), "{} [", static_cast<std::uint32_t>(range.first));
        for (char32_t character = range.first; character <= range.last; ++character)
            fmt::format_to(std::back_inserter(widths), "{} ", PdfWidth(metrics, character));
        widths += "] ";
    }
    return widths;
}

/// Puts the font into the file and gives its reference.
std::string AddFont(PdfFile& file, Face face, const PdfFont& font)
{
    const std::string program = file.AddStream(font.file, fmt::format("/Length1 {}", font.fileLength));
    const std::string descriptor = file.Add(fmt::format(
        "<< /Type /FontDescriptor /FontName /{} /Flags {} /FontBBox [{} {} {} {}] /ItalicAngle {:.4g} /Ascent {} "
        "/Descent {} /CapHeight {} /StemV {} /FontFile2 {} >>",
        font.name, font.flags, font.box[0], font.box[1], font.box[2], font.box[3], font.italicAngle, font.ascent,
        font.descent, font.capHeight, font.stemWidth, program));
    const std::string descendant =
        file.Add(fmt::format("<< /Type /Font /Subtype /CIDFontType2 /BaseFont /{} "
                             "/CIDSystemInfo << /Registry (Adobe) /Ordering (Identity) /Supplement 0 >> "
                             "/FontDescriptor {} /W [{}] /CIDToGIDMap {} >>",
                             font.name, descriptor, WidthsOf(face, font), file.AddStream(font.glyphs)));
    return file.Add(fmt::format("<< /Type /Font /Subtype /Type0 /BaseFont /{} /Encoding /Identity-H "
                                "/DescendantFonts [{}] /ToUnicode {} >>",
                                font.name, descendant, file.AddStream(font.toUnicode)));
}

/// What of each face the given pages draw.
std::array<std::optional<CharacterGroups>, FaceCount> CharactersOf(const Document& document, std::span<const int> pages)
{
    std::array<std::optional<CharacterGroups>, FaceCount> characters;
    for (const int page : pages)
        for (const Operation& operation : document.Page(page)) {
            if (operation.kind != OperationKind::Text)
                continue;
            auto& groups = characters.at(static_cast<std::size_t>(document.TextStyleOf(operation).face));
            if (!groups)
                groups.emplace();
            for (std::string_view rest = document.TextOf(operation); !rest.empty();) {
                const auto byte = static_cast<unsigned char>(rest.front());
                if (byte >= 0x20 && byte < 0x7F)
                    rest.remove_prefix(1); // in every subset
                else
                    groups->Add(TakeCodePoint(rest));
            }
        }
    return characters;
}

/// A bookmark on its way into the file.
struct OutlineItem {
    std::string reference, title, place;
    std::size_t parent = 0; ///< item, counted from 1; 0 is the root
    std::vector<std::size_t> children;
};

/// Bookmarks of the pages that are in the file; each points at its page's first copy. The first item is the root.
std::vector<OutlineItem> OutlineOf(const Document& document, const std::map<int, std::string>& pageReferences)
{
    std::vector<OutlineItem> items(1);
    std::size_t page = 0;
    for (const Bookmark& bookmark : document.bookmarks) {
        const auto found = pageReferences.find(bookmark.page);
        if (found == pageReferences.end())
            continue;
        const std::size_t parent = bookmark.level > 1 ? page : 0;
        if (bookmark.level <= 1)
            page = items.size();
        items[parent].children.push_back(items.size());
        items.push_back({.reference = {},
                         .title = bookmark.title,
                         .place = fmt::format("[{} /XYZ null {:.2f} null]", found->second,
                                              (SheetHeight - bookmark.y) / TwipsPerPoint),
                         .parent = parent,
                         .children = {}});
    }
    return items;
}

void AddOutline(PdfFile& file, std::vector<OutlineItem> items)
{
    if (items.size() == 1)
        return;
    for (OutlineItem& item : items)
        item.reference = file.Reserve();
    for (std::size_t at = 0; at < items.size(); ++at) {
        const OutlineItem& item = items[at];
        std::string object = "<< ";
        if (at == 0) {
            object += fmt::format("/Type /Outlines /Count {} ", items.size() - 1);
        } else {
            object += fmt::format("/Title {} /Dest {} /Parent {} ", TextObject(item.title), item.place,
                                  items[item.parent].reference);
            const auto& siblings = items[item.parent].children;
            const auto own = std::find(siblings.begin(), siblings.end(), at);
            if (own != siblings.begin())
                object += fmt::format("/Prev {} ", items[*std::prev(own)].reference);
            if (std::next(own) != siblings.end())
                object += fmt::format("/Next {} ", items[*std::next(own)].reference);
            if (!item.children.empty())
                object += fmt::format("/Count {} ", item.children.size());
        }
        if (!item.children.empty())
            object += fmt::format("/First {} /Last {} ", items[item.children.front()].reference,
                                  items[item.children.back()].reference);
        file.Replace(item.reference, object + ">>");
    }
    file.SetInCatalogue("/Outlines", items.front().reference);
}

} // namespace

struct PdfWriter::State {
    PdfFonts fonts;
    Deflate deflate{ContentEffort};
};

PdfWriter::PdfWriter() : state(std::make_unique<State>())
{
}
PdfWriter::~PdfWriter() = default;

std::string PdfWriter::Write(const Document& document)
{
    std::vector<int> pages(static_cast<std::size_t>(document.PageCount()));
    std::iota(pages.begin(), pages.end(), 1);
    return Write(document, pages);
}

std::string PdfWriter::Write(const Document& document, std::span<const int> pages)
{
    PdfFile file;

    std::string fonts;
    const auto characters = CharactersOf(document, pages);
    for (int number = 0; number < FaceCount; ++number) {
        const auto& used = characters.at(static_cast<std::size_t>(number));
        if (used) {
            const auto face = static_cast<Face>(number);
            fonts += fmt::format("{} {} ", PdfFontName(face), AddFont(file, face, state->fonts.FontFor(face, *used)));
        }
    }

    const std::string tree = file.Reserve();
    std::string kids;
    std::map<int, std::string> contents, pageReferences;
    for (const int page : pages) {
        if (!contents.contains(page))
            contents[page] = file.AddStream(state->deflate.Compress(PdfContent(document, page)));
        const std::string reference =
            file.Add(fmt::format("<< /Type /Page /Parent {} /Contents {} >>", tree, contents[page]));
        pageReferences.emplace(page, reference);
        kids += reference + ' ';
    }
    // Sheet and fonts are the same for all pages.
    file.Replace(tree, fmt::format("<< /Type /Pages /Count {} /Kids [{}] /MediaBox [0 0 {} {}] "
                                   "/Resources << /Font << {} >> >> >>",
                                   pages.size(), kids, SheetWidth / TwipsPerPoint, SheetHeight / TwipsPerPoint, fonts));

    AddOutline(file, OutlineOf(document, pageReferences));
    file.SetInCatalogue("/Pages", tree);
    file.SetInCatalogue("/Lang", fmt::format("({})", document.language));
    file.SetInCatalogue("/ViewerPreferences", "<< /DisplayDocTitle true >>");
    file.SetInTrailer("/Info",
                      file.Add(fmt::format("<< /Title {} /Subject {} /Creator {} >>", TextObject(document.name),
                                           TextObject(document.subject), TextObject(edition::AppTitle))));
    return file.Bytes();
}

} // namespace quillmere
