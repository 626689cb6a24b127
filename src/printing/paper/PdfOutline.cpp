#include "printing/paper/PdfOutline.h"

#include "printing/paper/PdfFile.h"
#include "printing/paper/PdfText.h"

#include <algorithm>
#include <fmt/format.h>

namespace quillmere {

namespace {

/// A place in the tree of bookmarks; its root comes first.
struct Node {
    int number = 0; ///< of its object, and those of its neighbours
    int parent = 0, first = 0, last = 0, previous = 0, next = 0;
    int level = 0;
    int children = 0;
    int below = 0; ///< all that hang under it
};

std::vector<Node> TreeOf(PdfFile& file, const std::vector<PdfOutlineItem>& items)
{
    std::vector<Node> nodes = {{.number = file.Reserve()}};
    nodes.reserve(items.size() + 1);
    std::vector<std::size_t> path = {0}; // from the root to the last one
    std::vector<std::size_t> lastChild(items.size() + 1);
    for (const PdfOutlineItem& item : items) {
        while (path.size() > 1 && nodes[path.back()].level >= item.level)
            path.pop_back();
        const std::size_t place = nodes.size();
        Node& parent = nodes[path.back()];
        Node node{.number = file.Reserve(), .parent = parent.number, .level = item.level};
        if (parent.children++ == 0) {
            parent.first = node.number;
        } else {
            Node& before = nodes[lastChild[path.back()]];
            before.next = node.number;
            node.previous = before.number;
        }
        parent.last = node.number;
        lastChild[path.back()] = place;
        for (const std::size_t above : path)
            ++nodes[above].below;
        nodes.push_back(node);
        path.push_back(place);
    }
    return nodes;
}

std::string Entry(std::string_view key, int number)
{
    return number == 0 ? std::string() : fmt::format("{} {} 0 R", key, number);
}

} // namespace

std::string AddOutline(PdfFile& file, const std::vector<PdfOutlineItem>& items)
{
    if (items.empty())
        return {};
    const std::vector<Node> nodes = TreeOf(file, items);
    const bool isClosed = std::ranges::any_of(items, [](const PdfOutlineItem& item) { return item.level > 2; });
    for (std::size_t at = 1; at < nodes.size(); ++at) {
        const Node& node = nodes[at];
        const PdfOutlineItem& item = items[at - 1];
        std::string object =
            fmt::format("<</Title{}/Parent {} 0 R/Dest[{}/XYZ null {:.2f} null]{}{}", PdfText(item.title), node.parent,
                        item.page, item.y, Entry("/Prev", node.previous), Entry("/Next", node.next));
        if (node.children > 0)
            object += fmt::format("{}{}/Count {}", Entry("/First", node.first), Entry("/Last", node.last),
                                  isClosed ? -node.children : node.below);
        file.Replace(node.number, object + ">>");
    }
    const Node& root = nodes.front();
    file.Replace(root.number, fmt::format("<</Type/Outlines{}{}/Count {}>>", Entry("/First", root.first),
                                          Entry("/Last", root.last), isClosed ? root.children : root.below));
    return PdfFile::ReferenceTo(root.number);
}

} // namespace quillmere
