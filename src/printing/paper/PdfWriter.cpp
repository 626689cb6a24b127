#include "printing/paper/PdfWriter.h"

#include "edition/Edition.h"
#include "frame/Text.h"
#include "printing/paper/Deflate.h"
#include "printing/paper/PdfArchive.h"
#include "printing/paper/PdfContent.h"
#include "printing/paper/PdfFile.h"
#include "printing/paper/PdfFonts.h"
#include "printing/paper/PdfOutline.h"
#include "printing/paper/PdfProtection.h"
#include "printing/paper/PdfStructure.h"
#include "printing/paper/PdfText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/format.h>
#include <iterator>
#include <map>
#include <numeric>
#include <optional>
#include <vector>

namespace quillmere {

namespace {

/// What is made anew for every document: the quickest level is also near the smallest.
constexpr int ContentEffort = 1;

/// The objects are nearly as much as the content, and gain more from some effort.
constexpr int ObjectEffort = 5;

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
        PdfFile::AppendNumber(widths, range.first);
        widths.back() = '[';
        for (char32_t character = range.first; character <= range.last; ++character)
            PdfFile::AppendNumber(widths, static_cast<std::size_t>(PdfWidth(metrics, character)));
        widths.back() = ']';
    }
    return widths;
}

/// Streams of one file by their content. Faces that draw the same characters have the same maps.
using StreamsByContent = std::map<std::string, std::string>;

const std::string& AddStreamOnce(PdfFile& file, const std::string& deflated, StreamsByContent& streams)
{
    std::string& reference = streams[deflated];
    if (reference.empty())
        reference = file.AddDeflated(deflated);
    return reference;
}

/// Puts the font into the file and gives its reference.
std::string AddFont(PdfFile& file, Face face, const PdfFont& font, StreamsByContent& maps)
{
    const std::string program = file.AddDeflated(font.file, fmt::format("/Length1 {}", font.fileLength));
    const std::string descriptor = file.Add(
        fmt::format("<</Type/FontDescriptor/FontName/{}/Flags {}/FontBBox[{} {} {} {}]/ItalicAngle {:.4g}/Ascent {}"
                    "/Descent {}/CapHeight {}/StemV {}/FontFile2 {}>>",
                    font.name, font.flags, font.box[0], font.box[1], font.box[2], font.box[3], font.italicAngle,
                    font.ascent, font.descent, font.capHeight, font.stemWidth, program));
    const std::string descendant =
        file.Add(fmt::format("<</Type/Font/Subtype/CIDFontType2/BaseFont/{}"
                             "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>"
                             "/FontDescriptor {}/W[{}]/CIDToGIDMap {}>>",
                             font.name, descriptor, WidthsOf(face, font), AddStreamOnce(file, font.glyphs, maps)));
    return file.Add(fmt::format("<</Type/Font/Subtype/Type0/BaseFont/{}/Encoding/Identity-H"
                                "/DescendantFonts[{}]/ToUnicode {}>>",
                                font.name, descendant, AddStreamOnce(file, font.toUnicode, maps)));
}

/// What is drawn of each face.
struct DrawnCharacters {
    std::array<std::optional<CharacterGroups>, FaceCount> faces;
    bool mayBeArchived = true; ///< no glyph is missing
};

/// Adds what a text draws.
void AddText(DrawnCharacters& drawn, Face face, std::string_view text, bool isFixed)
{
    auto& groups = drawn.faces.at(static_cast<std::size_t>(face));
    if (!groups && !text.empty())
        groups.emplace().AddFixed(U' '); // stands between texts that belong together
    while (!text.empty()) {
        const char32_t character = TakeCodePoint(text);
        if (isFixed)
            groups->AddFixed(character);
        else
            groups->AddEntered(character);
        drawn.mayBeArchived = drawn.mayBeArchived && (IsPrintableAscii(character) ||
                                                      MayBeArchived(character, MetricsOf(face).GlyphOf(character)));
    }
}

DrawnCharacters CharactersOf(const Document& document, const Document::Part& part)
{
    DrawnCharacters drawn;
    for (const Operation& operation : part.operations)
        if (operation.kind == OperationKind::Text)
            AddText(drawn, document.TextStyleOf(operation).face, document.TextOf(operation), part.isFixed);
    return drawn;
}

void Add(DrawnCharacters& drawn, const DrawnCharacters& more)
{
    drawn.mayBeArchived = drawn.mayBeArchived && more.mayBeArchived;
    for (std::size_t face = 0; face < more.faces.size(); ++face) {
        if (!more.faces[face])
            continue;
        if (drawn.faces[face])
            drawn.faces[face]->Add(*more.faces[face]);
        else
            drawn.faces[face] = more.faces[face];
    }
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
            entries.append(key).append(PdfText(PropertyText(text)));
    };
    add("/Title", document.name);
    add("/Subject", document.subject);
    add("/Author", document.author);
    add("/Creator", edition::AppTitle);
    add("/Producer", edition::AppTitle);
    return "<<" + entries + ">>";
}

/// A stretch of a page in its document, with the first element of the page and the number of its first mark.
struct Stretch {
    const Document& document;
    std::span<const Operation> operations;
    ElementNumber firstElement;
    int firstMark;
};

/// True if two of them become the same content: they draw the same for the same elements, counted from the first one of
/// each page.
bool AreSame(const Stretch& one, const Stretch& other)
{
    const auto styleIsSame = [&](const Operation& a, const Operation& b) {
        return a.kind == OperationKind::Text ? one.document.TextStyleOf(a) == other.document.TextStyleOf(b)
                                             : one.document.ShapeStyleOf(a) == other.document.ShapeStyleOf(b);
    };
    const auto same = [&](const Operation& a, const Operation& b) {
        if (a.kind != b.kind || a.x1 != b.x1 || a.y1 != b.y1 || a.x2 != b.x2 || a.y2 != b.y2 || !styleIsSame(a, b))
            return false;
        if ((a.element == 0) != (b.element == 0) ||
            (a.element != 0 && a.element - one.firstElement != b.element - other.firstElement))
            return false;
        if (a.kind == OperationKind::Text)
            return one.document.TextOf(a) == other.document.TextOf(b);
        return a.kind != OperationKind::Polygon ||
               std::ranges::equal(one.document.CornersOf(a), other.document.CornersOf(b));
    };
    return one.firstMark == other.firstMark && one.operations.size() == other.operations.size() &&
           std::equal(one.operations.begin(), one.operations.end(), other.operations.begin(), same);
}

/// A fixed part of a page, kept for many documents with what is made of it.
struct KeptPart {
    Document drawing;
    ElementNumber firstElement;
    int firstMark;
    std::string deflated;
    DrawnCharacters characters;

    Stretch Drawn() const { return {drawing, drawing.Page(1), firstElement, firstMark}; }
};

/// A fixed part that is in the file, and its stream.
struct FixedStream {
    Stretch drawn;
    std::string reference;
};

/// What has been gathered for a file while its pages were put into it.
struct Gathered {
    std::vector<FixedStream> fixed;
    DrawnCharacters characters;
};

/// The content of a page: the references of its streams, and the element behind each mark in them.
struct PageContent {
    std::string streams;
    std::vector<ElementNumber> marks;
};

} // namespace

struct PdfWriter::State {
    Deflate deflate{ContentEffort};
    Deflate objectDeflate{ObjectEffort};
    Deflate thoroughDeflate{FixedEffort};

    /// What is made of a fixed part, once for many documents. Valid until the next call.
    const KeptPart& KeptFor(const Stretch& part)
    {
        const auto kept =
            std::ranges::find_if(keptParts, [&part](const KeptPart& one) { return AreSame(one.Drawn(), part); });
        if (kept != keptParts.end())
            return *kept;
        if (keptParts.size() >= KeptParts)
            keptParts.clear();
        return keptParts.emplace_back(
            KeptPart{.drawing = part.document.Excerpt(part.operations),
                     .firstElement = part.firstElement,
                     .firstMark = part.firstMark,
                     .deflated = thoroughDeflate.Compress(PdfContent(part.document, part.operations, part.firstMark)),
                     .characters = CharactersOf(part.document, {.operations = part.operations, .isFixed = true})});
    }

    std::string AddFixedPart(PdfFile& file, const Stretch& part, Gathered& gathered)
    {
        const auto found = std::ranges::find_if(
            gathered.fixed, [&part](const FixedStream& stream) { return AreSame(stream.drawn, part); });
        if (found != gathered.fixed.end())
            return found->reference;
        const KeptPart& kept = KeptFor(part);
        Add(gathered.characters, kept.characters);
        return gathered.fixed.emplace_back(FixedStream{part, file.AddDeflated(kept.deflated)}).reference;
    }

    /// The stream of a part of a page, whose marks begin with this one.
    std::string AddPart(PdfFile& file, const Document& document, int page, const Document::Part& part, int firstMark,
                        Gathered& gathered)
    {
        if (part.isFixed)
            return AddFixedPart(file, {document, part.operations, document.FirstElement(page), firstMark}, gathered);
        Add(gathered.characters, CharactersOf(document, part));
        return file.AddDeflated(deflate.Compress(PdfContent(document, part.operations, firstMark)));
    }

    /// Puts a page's content into the file. The marks of its fixed parts come first, so that they are the same whatever
    /// stands between them.
    PageContent AddContent(PdfFile& file, const Document& document, int page, Gathered& gathered)
    {
        PageContent content;
        const std::vector<Document::Part> parts = document.Parts(page);
        std::vector<std::string> streams(parts.size());
        for (const bool isFixed : {true, false})
            for (std::size_t at = 0; at < parts.size(); ++at) {
                if (parts[at].isFixed != isFixed)
                    continue;
                streams[at] =
                    AddPart(file, document, page, parts[at], static_cast<int>(content.marks.size()), gathered);
                std::ranges::copy(PdfMarks(parts[at].operations), std::back_inserter(content.marks));
            }
        for (const std::string& stream : streams)
            content.streams += stream + ' ';
        return content;
    }

    /// Puts the fonts of these characters into the file. Gives their names with their references.
    std::string AddFonts(PdfFile& file, const DrawnCharacters& characters)
    {
        std::string names;
        StreamsByContent maps;
        for (int number = 0; number < FaceCount; ++number)
            if (const auto& used = characters.faces.at(static_cast<std::size_t>(number))) {
                const auto face = static_cast<Face>(number);
                names += fmt::format("{} {}", PdfFontName(face), AddFont(file, face, fonts.FontFor(face, *used), maps));
            }
        return names;
    }

    /// What all files have alike.
    const std::string screenColours = thoroughDeflate.Compress(ScreenColours());

    PdfFonts fonts;
    std::vector<KeptPart> keptParts;
};

PdfWriter::PdfWriter() = default;
PdfWriter::~PdfWriter() = default;

std::string PdfWriter::Write(const Document& document, const PdfOptions& options)
{
    std::vector<int> pages(static_cast<std::size_t>(document.PageCount()));
    std::iota(pages.begin(), pages.end(), 1);
    return Write(document, pages, options);
}

std::string PdfWriter::Write(const Document& document, std::span<const int> pages, const PdfOptions& options)
{
    // A program that writes nothing makes no tables for compressing.
    if (state == nullptr)
        state = std::make_unique<State>();
    PdfFile file(state->objectDeflate);

    // The same for all pages, but each names them itself.
    const int resources = file.Reserve();
    const int tree = file.Reserve();
    PdfStructure structure(file);
    std::string kids;
    std::map<int, PageContent> contents;
    std::map<int, std::string> pageReferences;
    Gathered gathered;
    for (const int page : pages) {
        const auto content = contents.find(page) != contents.end()
                                 ? contents.find(page)
                                 : contents.emplace(page, state->AddContent(file, document, page, gathered)).first;
        const int number = file.Reserve();
        const std::string reference = PdfFile::ReferenceTo(number);
        file.Replace(number, fmt::format("<</Type/Page/Parent {} 0 R/Resources {} 0 R/Contents[{}]{}>>", tree,
                                         resources, content->second.streams,
                                         structure.AddPage(document, page, reference, content->second.marks)));
        pageReferences.emplace(page, reference);
        kids += reference + ' ';
    }
    file.Replace(tree, fmt::format("<</Type/Pages/Count {}/Kids[{}]/MediaBox[0 0 {} {}]>>", pages.size(), kids,
                                   SheetWidth / TwipsPerPoint, SheetHeight / TwipsPerPoint));
    structure.Finish();
    file.Replace(resources, fmt::format("<</Font<<{}>>>>", state->AddFonts(file, gathered.characters)));

    if (const std::string outline = AddOutline(file, OutlineOf(document, pageReferences)); !outline.empty())
        file.SetInCatalogue("/Outlines", outline);
    file.SetInCatalogue("/Pages", PdfFile::ReferenceTo(tree));
    file.SetInCatalogue("/Lang", PdfText(document.language));
    file.SetInCatalogue("/ViewerPreferences", "<</DisplayDocTitle true>>");
    // A lock is against the rules of archives.
    const bool isArchive = gathered.characters.mayBeArchived && options.password.empty();
    file.SetInCatalogue("/Metadata", file.AddStream(PdfMetadata(document, isArchive), "/Type/Metadata/Subtype/XML"));
    file.SetInCatalogue("/OutputIntents",
                        fmt::format("[<</Type/OutputIntent/S/GTS_PDFA1/OutputConditionIdentifier(sRGB IEC61966-2.1)"
                                    "/Info(sRGB IEC61966-2.1)/DestOutputProfile {}>>]",
                                    file.AddDeflated(state->screenColours, "/N 3")));
    file.SetInTrailer("/Info", file.Add(InformationOf(document)));
    return options.password.empty() ? file.Bytes() : Protected(file.Bytes(), options.password);
}

} // namespace quillmere
