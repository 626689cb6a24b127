#pragma once

#include "Compare.h"
#include "printing/paper/Document.h"

#include <memory>
#include <string>
#include <vector>

namespace quillmere::scenario {

/// Is told of every document that the program finishes, whatever is done with it then.
class DocumentWitness {
public:
    void Finished(std::shared_ptr<const Document> document)
    {
        namesSince.push_back(document->name);
        last = std::move(document);
    }

    /// The last document. Throws StepFailure before the first.
    const Document& Last() const;

    std::vector<std::string> namesSince; ///< since the scenario last asked for them

private:
    std::shared_ptr<const Document> last; ///< null before the first
};

/// The texts of a page, counted from 1, each with the left end of the line on which it stands, in millimetres.
std::vector<DrawnText> TextsOf(const Document& document, int page);

} // namespace quillmere::scenario
