#include "printing/paper/PdfWriter.h"

#include "edition/Edition.h"
#include "frame/Text.h"
#include "printing/paper/Deflate.h"
#include "printing/paper/PdfContent.h"
#include "printing/paper/PdfFile.h"
#include "printing/paper/PdfFonts.h"
#include "printing/paper/PdfOutline.h"
#include "printing/paper/PdfProtection.h"
#include "printing/paper/PdfText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/format.h>
#include <iterator>
#include <map>
#include <numeric>
#include <optional>
#include <unordered_map>
#include <vector>

namespace quillmere {

namespace {

/// What is made anew for every document: the quickest level is also near the smallest.
constexpr int ContentEffort = 1;

/// Fixed parts are deflated once for many documents, as the fonts are.
constexpr int FixedEffort = 12;

/// Fixed parts of pages that are kept deflated at most; a form with its settings needs one or two a page.
constexpr std::size_t KeptParts = 32;

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

/// Streams of one file by their content. Faces that draw the same characters have the same maps.
using StreamsByContent = std::map<std::string, std::string>;

const std::string& AddStreamOnce(PdfFile& file, const std::string& deflated, StreamsByContent& streams)
{
    std::string& reference = streams[deflated];
    if (reference.empty())
        reference = file.AddStream(deflated);
    return reference;
}

/// Puts the font into the file and gives its reference.
std::string AddFont(PdfFile& file, Face face, const PdfFont& font, StreamsByContent& maps)
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
                             font.name, descriptor, WidthsOf(face, font), AddStreamOnce(file, font.glyphs, maps)));
    return file.Add(fmt::format("<< /Type /Font /Subtype /Type0 /BaseFont /{} /Encoding /Identity-H "
                                "/DescendantFonts [{}] /ToUnicode {} >>",
                                font.name, descendant, AddStreamOnce(file, font.toUnicode, maps)));
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

/// A height that readers take, whatever the scale made of it.
double OnTheSheet(double y)
{
    return std::isnan(y) ? 0 : std::clamp(y, 0.0, SheetHeight);
}

/// Bookmarks of the pages that are in the file; each points at its page's first copy.
std::vector<PdfOutlineItem> OutlineOf(const Document& document, const std::map<int, std::string>& pageReferences)
{
    std::vector<PdfOutlineItem> items;
    for (const Bookmark& bookmark : document.bookmarks)
        if (const auto found = pageReferences.find(bookmark.page); found != pageReferences.end())
            items.push_back({.title = bookmark.title,
                             .level = bookmark.level,
                             .page = found->second,
                             .y = (SheetHeight - OnTheSheet(bookmark.y)) / TwipsPerPoint});
    return items;
}

/// The document's properties; what is not known is left out.
std::string InformationOf(const Document& document)
{
    std::string entries;
    const auto add = [&entries](std::string_view key, std::string_view text) {
        if (!text.empty())
            fmt::format_to(std::back_inserter(entries), "{} {} ", key, PdfText(text));
    };
    add("/Title", document.name);
    add("/Subject", document.subject);
    add("/Author", document.author);
    add("/Creator", edition::AppTitle);
    return "<< " + entries + ">>";
}

/// True if two stretches of one document draw the same.
bool AreSame(const Document& document, std::span<const Operation> one, std::span<const Operation> other)
{
    const auto same = [&document](const Operation& a, const Operation& b) {
        if (a.kind != b.kind || a.style != b.style || a.x1 != b.x1 || a.y1 != b.y1 || a.x2 != b.x2 || a.y2 != b.y2)
            return false;
        if (a.kind == OperationKind::Text)
            return document.TextOf(a) == document.TextOf(b);
        return a.kind != OperationKind::Polygon || std::ranges::equal(document.CornersOf(a), document.CornersOf(b));
    };
    return one.size() == other.size() && std::equal(one.begin(), one.end(), other.begin(), same);
}

/// A fixed part of a page that is in the file, and its stream.
struct FixedStream {
    std::span<const Operation> operations;
    std::string reference;
};

} // namespace

struct PdfWriter::State {
    /// A fixed part of a page as deflated content, made once for many documents.
    const std::string& DeflatedOnce(const std::string& content)
    {
        const auto kept = fixedParts.find(content);
        if (kept != fixedParts.end())
            return kept->second;
        if (fixedParts.size() >= KeptParts)
            fixedParts.clear();
        return fixedParts.emplace(content, thoroughDeflate.Compress(content)).first->second;
    }

    /// Puts a page's content into the file and gives the references of its streams. `fixed` has the streams of fixed
    /// parts that are in the file already.
    std::string AddContent(PdfFile& file, const Document& document, int page, std::vector<FixedStream>& fixed)
    {
        std::string references;
        for (const Document::Part& part : document.Parts(page)) {
            const auto found = std::ranges::find_if(fixed, [&](const FixedStream& stream) {
                return part.isFixed && AreSame(document, stream.operations, part.operations);
            });
            if (found != fixed.end()) {
                references += found->reference + ' ';
                continue;
            }
            const std::string content = PdfContent(document, part.operations);
            const std::string stream = file.AddStream(part.isFixed ? DeflatedOnce(content) : deflate.Compress(content));
            if (part.isFixed)
                fixed.push_back({part.operations, stream});
            references += stream + ' ';
        }
        return references;
    }

    PdfFonts fonts;
    Deflate deflate{ContentEffort};
    Deflate thoroughDeflate{FixedEffort};
    std::unordered_map<std::string, std::string> fixedParts; ///< deflated, by content
};

PdfWriter::PdfWriter() : state(std::make_unique<State>())
{
}
PdfWriter::~PdfWriter() = default;

std::string PdfWriter::Write(const Document& document, const PdfOptions& options)
{
    std::vector<int> pages(static_cast<std::size_t>(document.PageCount()));
    std::iota(pages.begin(), pages.end(), 1);
    return Write(document, pages, options);
}

std::string PdfWriter::Write(const Document& document, std::span<const int> pages, const PdfOptions& options)
{
    PdfFile file;

    std::string fonts;
    StreamsByContent maps;
    const auto characters = CharactersOf(document, pages);
    for (int number = 0; number < FaceCount; ++number) {
        const auto& used = characters.at(static_cast<std::size_t>(number));
        if (used) {
            const auto face = static_cast<Face>(number);
            fonts +=
                fmt::format("{} {} ", PdfFontName(face), AddFont(file, face, state->fonts.FontFor(face, *used), maps));
        }
    }

    const std::string tree = file.Reserve();
    std::string kids;
    std::map<int, std::string> contents, pageReferences;
    std::vector<FixedStream> fixedStreams;
    for (const int page : pages) {
        if (!contents.contains(page))
            contents[page] = state->AddContent(file, document, page, fixedStreams);
        const std::string reference =
            file.Add(fmt::format("<< /Type /Page /Parent {} /Contents [{}] >>", tree, contents[page]));
        pageReferences.emplace(page, reference);
        kids += reference + ' ';
    }
    // Sheet and fonts are the same for all pages.
    file.Replace(tree, fmt::format("<< /Type /Pages /Count {} /Kids [{}] /MediaBox [0 0 {} {}] "
                                   "/Resources << /Font << {} >> >> >>",
                                   pages.size(), kids, SheetWidth / TwipsPerPoint, SheetHeight / TwipsPerPoint, fonts));

    if (const std::string outline = AddOutline(file, OutlineOf(document, pageReferences)); !outline.empty())
        file.SetInCatalogue("/Outlines", outline);
    file.SetInCatalogue("/Pages", tree);
    file.SetInCatalogue("/Lang", fmt::format("({})", document.language));
    file.SetInCatalogue("/ViewerPreferences", "<< /DisplayDocTitle true >>");
    file.SetInTrailer("/Info", file.Add(InformationOf(document)));
    return options.password.empty() ? file.Bytes() : Protected(file.Bytes(), options.password);
}

} // namespace quillmere
