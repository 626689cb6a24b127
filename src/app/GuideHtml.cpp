#include "app/GuideHtml.h"

#include "app/Guide.h"
#include "frame/Markup.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <fmt/format.h>
#include <md4c.h>

namespace quillmere {

namespace {

/// What stands before and behind a block or a span in HTML. Those that are not listed have no tags, or decide on them
/// at their end.
template<class Type>
struct Tags {
    Type type;
    std::string_view begin, end;
};

constexpr auto BlockTags = std::to_array<Tags<MD_BLOCKTYPE>>({
    {MD_BLOCK_UL, "<ul>\n", "</ul>\n"},
    {MD_BLOCK_OL, "<ol>\n", "</ol>\n"},
    {MD_BLOCK_LI, "<li>", "</li>\n"},
    {MD_BLOCK_P, "<p>", "</p>\n"},
    {MD_BLOCK_CODE, "<pre>", "</pre>\n"},
    {MD_BLOCK_TABLE, "<table border=\"1\" cellspacing=\"0\" cellpadding=\"4\">\n", "</table>\n"},
    {MD_BLOCK_TR, "<tr>", "</tr>\n"},
    {MD_BLOCK_TH, "<th>", "</th>"},
    {MD_BLOCK_TD, "<td>", "</td>"},
});

constexpr auto SpanTags = std::to_array<Tags<MD_SPANTYPE>>({
    {MD_SPAN_STRONG, "<b>", "</b>"},
    {MD_SPAN_EM, "<i>", "</i>"},
    {MD_SPAN_CODE, "<code>", "</code>"},
});

template<class Type, std::size_t Count>
Tags<Type> TagsOf(const std::array<Tags<Type>, Count>& all, Type type)
{
    const auto found = std::ranges::find(all, type, &Tags<Type>::type);
    return found == all.end() ? Tags<Type>{type, {}, {}} : *found;
}

std::string_view TextOf(const MD_ATTRIBUTE& attribute)
{
    return {attribute.text, attribute.size};
}

/// Writes what the parser meets.
class HtmlWriter {
public:
    explicit HtmlWriter(const HtmlPlaces& places) : places(places) {}

    void Begin(MD_BLOCKTYPE block);
    void End(MD_BLOCKTYPE block, const void* detail);
    void Begin(MD_SPANTYPE span, const void* detail);
    void End(MD_SPANTYPE span, const void* detail);
    void Text(MD_TEXTTYPE type, std::string_view text);

    std::string html;

private:
    /// Where something has begun whose tags its end decides.
    struct Begun {
        std::size_t html, words;
    };

    void EndHeading(unsigned level);
    void EndParagraph();
    void EndPicture(std::string_view path);

    const HtmlPlaces& places;
    std::string words; ///< of the text, without its tags
    Begun heading{}, paragraph{}, picture{};
    bool leads = false; ///< the link that is open does
};

void HtmlWriter::Begin(MD_BLOCKTYPE block)
{
    if (block == MD_BLOCK_H)
        heading = {html.size(), words.size()};
    if (block == MD_BLOCK_P)
        paragraph = {html.size(), words.size()};
    html += TagsOf(BlockTags, block).begin;
}

void HtmlWriter::End(MD_BLOCKTYPE block, const void* detail)
{
    html += TagsOf(BlockTags, block).end;
    if (block == MD_BLOCK_H)
        EndHeading(static_cast<const MD_BLOCK_H_DETAIL*>(detail)->level);
    if (block == MD_BLOCK_P)
        EndParagraph();
}

void HtmlWriter::EndHeading(unsigned level)
{
    const std::string title = html.substr(heading.html);
    html.resize(heading.html);
    html += fmt::format("<h{0} id=\"{1}\"><a name=\"{1}\"></a>{2}</h{0}>\n", level,
                        AnchorOf(std::string_view(words).substr(heading.words)), title);
}

/// A picture that stands alone is shown as one.
void HtmlWriter::EndParagraph()
{
    constexpr std::string_view Alone = "<p><img";
    if (words.size() == paragraph.words && std::string_view(html).substr(paragraph.html).starts_with(Alone))
        html.insert(paragraph.html + std::string_view("<p").size(), " class=\"picture\"");
}

void HtmlWriter::Begin(MD_SPANTYPE span, const void* detail)
{
    if (span == MD_SPAN_IMG)
        picture = {html.size(), words.size()};
    html += TagsOf(SpanTags, span).begin;
    if (span != MD_SPAN_A)
        return;
    const std::string target = places.link(TextOf(static_cast<const MD_SPAN_A_DETAIL*>(detail)->href));
    leads = !target.empty();
    if (leads)
        html += fmt::format("<a href=\"{}\">", MarkupText(target));
}

void HtmlWriter::End(MD_SPANTYPE span, const void* detail)
{
    html += TagsOf(SpanTags, span).end;
    if (span == MD_SPAN_A && leads)
        html += "</a>";
    if (span == MD_SPAN_IMG)
        EndPicture(TextOf(static_cast<const MD_SPAN_IMG_DETAIL*>(detail)->src));
}

void HtmlWriter::EndPicture(std::string_view path)
{
    const std::string alternative = words.substr(picture.words);
    html.resize(picture.html);
    words.resize(picture.words);
    html += fmt::format("<img src=\"{}\" alt=\"{}\">", places.picture(path.substr(path.rfind('/') + 1)),
                        MarkupText(alternative));
}

void HtmlWriter::Text(MD_TEXTTYPE type, std::string_view text)
{
    const std::string_view meant = type == MD_TEXT_SOFTBR ? " " : text;
    words += meant;
    html += type == MD_TEXT_ENTITY ? std::string(meant) : MarkupText(meant);
}

HtmlWriter& WriterOf(void* writer)
{
    return *static_cast<HtmlWriter*>(writer);
}

} // namespace

std::string HtmlOf(std::string_view markdown, const HtmlPlaces& places)
{
    constexpr MD_PARSER Parser{
        .abi_version = 0,
        .flags = MD_FLAG_TABLES | MD_FLAG_NOHTML,
        .enter_block = [](MD_BLOCKTYPE block, void*, void* writer) { return WriterOf(writer).Begin(block), 0; },
        .leave_block = [](MD_BLOCKTYPE block, void* detail,
                          void* writer) { return WriterOf(writer).End(block, detail), 0; },
        .enter_span = [](MD_SPANTYPE span, void* detail,
                         void* writer) { return WriterOf(writer).Begin(span, detail), 0; },
        .leave_span = [](MD_SPANTYPE span, void* detail,
                         void* writer) { return WriterOf(writer).End(span, detail), 0; },
        .text =
            [](MD_TEXTTYPE type, const MD_CHAR* text, MD_SIZE size, void* writer) {
                return WriterOf(writer).Text(type, {text, size}), 0;
            },
        .debug_log = nullptr,
        .syntax = nullptr};
    HtmlWriter writer(places);
    md_parse(markdown.data(), static_cast<MD_SIZE>(markdown.size()), &Parser, &writer);
    return std::move(writer.html);
}

LibraryInUse GuideLibrary()
{
    return {"md4c", AsBuilt(QUILLMERE_MD4C_VERSION)};
}

std::string UrlOf(std::string_view path)
{
    std::string address;
    for (const char character : path) {
        const auto byte = static_cast<unsigned char>(character);
        if (std::isalnum(byte) != 0 || std::string_view("/-_.~").find(character) != std::string_view::npos)
            address += character;
        else
            address += fmt::format("%{:02X}", static_cast<unsigned>(byte));
    }
    return address;
}

} // namespace quillmere
