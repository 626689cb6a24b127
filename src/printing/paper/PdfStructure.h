#pragma once

#include "printing/paper/Document.h"
#include "printing/paper/PdfFile.h"

#include <span>
#include <string>

namespace quillmere {

/// The tree by which a reader of a PDF file finds what to read out, in which order and as what: a section a page, with
/// the page's elements under it. An element of which nothing has been drawn is left out.
class PdfStructure {
public:
    explicit PdfStructure(PdfFile& file);

    /// Adds a page of the file. `marks` has the element behind each mark of its content. Gives the entries of the
    /// page's dictionary.
    std::string AddPage(const Document& document, int page, const std::string& reference,
                        std::span<const ElementNumber> marks);
    /// Puts the tree into the file, if there is anything in it.
    void Finish();

private:
    PdfFile& file;
    int root, whole;            ///< the tree and its topmost element
    std::string sections;       ///< references
    std::string parentsOfMarks; ///< for each page the list of elements behind its marks
    int pages = 0;
};

} // namespace quillmere
