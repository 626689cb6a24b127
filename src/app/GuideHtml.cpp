#include "app/GuideHtml.h"

#include "app/Guide.h"

#include <cctype>
#include <fmt/format.h>
#include <md4c.h>
#include <vector>

namespace quillmere {

namespace {

std::string Escaped(std::string_view text)
{
    std::string escaped;
    for (const char character : text) {
        switch (character) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += character;
        }
    }
    return escaped;
}

struct Tags {
    std::string_view begin, end;
};

Tags TagsOf(MD_BLOCKTYPE block)
{
    switch (block) {
    case MD_BLOCK_UL:
        return {"<ul>\n", "</ul>\n"};
    case MD_BLOCK_OL:
        return {"<ol>\n", "</ol>\n"};
    case MD_BLOCK_LI:
        return {"<li>", "</li>\n"};
    case MD_BLOCK_P:
        return {"<p>", "</p>\n"};
    case MD_BLOCK_CODE:
        return {"<pre>", "</pre>\n"};
    case MD_BLOCK_TABLE:
        return {"<table border=\"1\" cellspacing=\"0\" cellpadding=\"4\">\n", "</table>\n"};
    case MD_BLOCK_TR:
        return {"<tr>", "</tr>\n"};
    case MD_BLOCK_TH:
        return {"<th>", "</th>"};
    case MD_BLOCK_TD:
        return {"<td>", "</td>"};
    default:
        return {};
    }
}

Tags TagsOf(MD_SPANTYPE span)
{
    switch (span) {
    case MD_SPAN_STRONG:
        return {"<b>", "</b>"};
    case MD_SPAN_EM:
        return {"<i>", "</i>"};
    case MD_SPAN_CODE:
        return {"<code>", "</code>"};
    default:
        return {};
    }
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
    html += TagsOf(block).begin;
}

void HtmlWriter::End(MD_BLOCKTYPE block, const void* detail)
{
    html += TagsOf(block).end;
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
    html += TagsOf(span).begin;
    if (span != MD_SPAN_A)
        return;
    const std::string target = places.link(TextOf(static_cast<const MD_SPAN_A_DETAIL*>(detail)->href));
    leads = !target.empty();
    if (leads)
        html += fmt::format("<a href=\"{}\">", Escaped(target));
}

void HtmlWriter::End(MD_SPANTYPE span, const void* detail)
{
    html += TagsOf(span).end;
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
                        Escaped(alternative));
}

void HtmlWriter::Text(MD_TEXTTYPE type, std::string_view text)
{
    const std::string_view meant = type == MD_TEXT_SOFTBR ? " " : text;
    words += meant;
    html += type == MD_TEXT_ENTITY ? std::string(meant) : Escaped(meant);
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
