#pragma once

#include "frame/LibraryInUse.h"

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

/// The Markdown of the guide as HTML, each heading with its anchor. HTML in it is text like any other.
std::string HtmlOf(std::string_view markdown, const HtmlPlaces& places);

LibraryInUse GuideLibrary();

/// A path as it stands in an address.
std::string UrlOf(std::string_view path);

} // namespace quillmere
