#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace quillmere {

/// Where what a text refers to is found by whoever reads it as HTML.
struct HtmlPlaces {
    /// What a link leads to; empty where it leads nowhere, and its words stand there as plain text.
    std::function<std::string(std::string_view target)> link;
    /// Where a picture lies that the guide names "../pictures/NAME".
    std::function<std::string(std::string_view name)> picture;
};

/// The Markdown of the guide as HTML: headings with their anchors, paragraphs, lists, tables, pictures, indented lines
/// as they are; bold, slanted, code, links.
std::string HtmlOf(std::string_view markdown, const HtmlPlaces& places);

/// A path as it stands in an address.
std::string UrlOf(std::string_view path);

} // namespace quillmere
