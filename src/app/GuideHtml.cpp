#include "app/GuideHtml.h"

#include "app/Guide.h"
#include "frame/Text.h"

#include <algorithm>
#include <cctype>
#include <fmt/format.h>
#include <span>
#include <vector>

namespace quillmere {

namespace {

using Lines = std::vector<std::string_view>;

Lines LinesOf(std::string_view text)
{
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

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

bool IsBlank(std::string_view line)
{
    return Trimmed(line).empty();
}

std::size_t IndentOf(std::string_view line)
{
    return std::min(line.find_first_not_of(' '), line.size());
}

bool IsIndented(std::string_view line)
{
    return !IsBlank(line) && IndentOf(line) >= 4;
}

/// Number of characters before the text of a list's item; 0 for any other line.
std::size_t ItemMark(std::string_view line)
{
    if (line.starts_with("- "))
        return 2;
    const std::size_t digits = std::min(line.find_first_not_of("0123456789"), line.size());
    return digits > 0 && line.substr(digits).starts_with(". ") ? digits + 2 : 0;
}

/// What a list's item says, with no space round it where it is one paragraph alone.
std::string_view WithoutParagraph(std::string_view html)
{
    constexpr std::string_view Begin = "<p>", End = "</p>\n";
    const bool alone = html.starts_with(Begin) && html.find(End) == html.size() - End.size();
    return alone ? html.substr(Begin.size(), html.size() - Begin.size() - End.size()) : html;
}

/// Writes what a text says, piece by piece.
class HtmlWriter {
public:
    explicit HtmlWriter(const HtmlPlaces& places) : places(places) {}

    void Blocks(Lines lines);

    std::string html;

private:
    void Heading(std::string_view line);
    void Picture(std::string_view line);
    void List(Lines& lines);
    void Table(Lines& lines);
    void AsItIs(Lines& lines);
    void Paragraph(Lines& lines);
    std::string Inline(std::string_view text) const;
    std::string Link(std::string_view& text) const;

    const HtmlPlaces& places;
};

void HtmlWriter::Blocks(Lines lines)
{
    std::ranges::reverse(lines); // what comes next is at the back
    while (!lines.empty()) {
        const std::string_view line = lines.back();
        if (IsBlank(line)) {
            lines.pop_back();
        } else if (line.starts_with('#')) {
            Heading(line);
            lines.pop_back();
        } else if (line.starts_with("![")) {
            Picture(line);
            lines.pop_back();
        } else if (ItemMark(line) > 0) {
            List(lines);
        } else if (line.starts_with('|')) {
            Table(lines);
        } else if (IsIndented(line)) {
            AsItIs(lines);
        } else {
            Paragraph(lines);
        }
    }
}

void HtmlWriter::Heading(std::string_view line)
{
    const std::size_t level = line.find_first_not_of('#');
    const std::string_view title = Trimmed(line.substr(level));
    html += fmt::format("<h{0} id=\"{1}\"><a name=\"{1}\"></a>{2}</h{0}>\n", level, AnchorOf(title), Inline(title));
}

void HtmlWriter::Picture(std::string_view line)
{
    const std::size_t words = line.find("](");
    const std::string_view path = line.substr(words + 2, line.rfind(')') - words - 2);
    html += fmt::format("<p class=\"picture\"><img src=\"{}\" alt=\"{}\"></p>\n",
                        places.picture(path.substr(path.rfind('/') + 1)), Escaped(line.substr(2, words - 2)));
}

void HtmlWriter::List(Lines& lines)
{
    const char* kind = lines.back().starts_with('-') ? "ul" : "ol";
    html += fmt::format("<{}>\n", kind);
    while (!lines.empty() && ItemMark(lines.back()) > 0) {
        const std::size_t mark = ItemMark(lines.back());
        Lines item{lines.back().substr(mark)};
        lines.pop_back();
        // What is indented belongs to the item, and blank lines before it.
        for (std::size_t next = 0; next < lines.size();) {
            const std::string_view line = lines[lines.size() - 1 - next];
            if (!IsBlank(line) && IndentOf(line) < 2)
                break;
            ++next;
            if (IsBlank(line))
                continue;
            for (; next > 1; --next, lines.pop_back())
                item.emplace_back();
            item.push_back(line.substr(std::min(mark, IndentOf(line))));
            lines.pop_back();
            next = 0;
        }
        HtmlWriter within(places);
        within.Blocks(std::move(item));
        html += fmt::format("<li>{}</li>\n", WithoutParagraph(within.html));
        while (lines.size() > 1 && IsBlank(lines.back()) && ItemMark(lines[lines.size() - 2]) > 0)
            lines.pop_back();
    }
    html += fmt::format("</{}>\n", kind);
}

void HtmlWriter::Table(Lines& lines)
{
    html += "<table border=\"1\" cellspacing=\"0\" cellpadding=\"4\">\n";
    for (bool head = true; !lines.empty() && lines.back().starts_with('|'); lines.pop_back()) {
        std::string_view line = Trimmed(lines.back());
        if (line.starts_with("|-")) {
            head = false;
            continue;
        }
        html += "<tr>";
        line = line.substr(1);
        while (!line.empty()) {
            const std::size_t end = std::min(line.find('|'), line.size());
            html += fmt::format("<{0}>{1}</{0}>", head ? "th" : "td", Inline(Trimmed(line.substr(0, end))));
            line.remove_prefix(std::min(end + 1, line.size()));
        }
        html += "</tr>\n";
    }
    html += "</table>\n";
}

void HtmlWriter::AsItIs(Lines& lines)
{
    html += "<pre>";
    for (; !lines.empty() && IsIndented(lines.back()); lines.pop_back())
        html += Escaped(lines.back().substr(4)) + "\n";
    html += "</pre>\n";
}

void HtmlWriter::Paragraph(Lines& lines)
{
    std::string text;
    do {
        text += text.empty() ? "" : " ";
        text += Trimmed(lines.back());
        lines.pop_back();
    } while (!lines.empty() && !IsBlank(lines.back()) && ItemMark(lines.back()) == 0 &&
             !lines.back().starts_with('|') && !lines.back().starts_with("!["));
    html += fmt::format("<p>{}</p>\n", Inline(text));
}

std::string HtmlWriter::Link(std::string_view& text) const
{
    const std::size_t words = text.find("](");
    const std::size_t end = text.find(')', words);
    const std::string target = places.link(text.substr(words + 2, end - words - 2));
    const std::string shown = Inline(text.substr(1, words - 1));
    text.remove_prefix(end + 1);
    return target.empty() ? shown : fmt::format("<a href=\"{}\">{}</a>", Escaped(target), shown);
}

std::string HtmlWriter::Inline(std::string_view text) const
{
    struct Mark {
        std::string_view sign, tag;
        bool asItIs = false;
    };
    static constexpr Mark Marks[] = {{"**", "b"}, {"*", "i"}, {"`", "code", true}};
    std::string written;
    while (!text.empty()) {
        if (text.front() == '[' && text.find("](") != std::string_view::npos) {
            written += Link(text);
            continue;
        }
        const auto mark = std::ranges::find_if(Marks, [&](const Mark& candidate) {
            const std::size_t length = candidate.sign.size();
            return text.starts_with(candidate.sign) && text.size() > length && text[length] != ' ' &&
                   text.find(candidate.sign, length + 1) != std::string_view::npos;
        });
        if (mark == std::end(Marks)) {
            written += Escaped(text.substr(0, 1));
            text.remove_prefix(1);
            continue;
        }
        const std::size_t begin = mark->sign.size();
        const std::size_t end = text.find(mark->sign, begin + 1);
        const std::string_view within = text.substr(begin, end - begin);
        written += fmt::format("<{0}>{1}</{0}>", mark->tag, mark->asItIs ? Escaped(within) : Inline(within));
        text.remove_prefix(end + begin);
    }
    return written;
}

} // namespace

std::string HtmlOf(std::string_view markdown, const HtmlPlaces& places)
{
    HtmlWriter writer(places);
    writer.Blocks(LinesOf(markdown));
    return std::move(writer.html);
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
