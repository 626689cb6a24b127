#pragma once

#include "Compare.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillmere::scenario {

/// One finished page: its texts, and every drawing operation as a line of text in millimetres.
struct WitnessedPage {
    std::vector<DrawnText> texts;
    std::vector<std::string> listing;
};

/// A finished document, whatever is done with it then.
struct WitnessedDocument {
    std::string name;
    std::vector<WitnessedPage> pages;
    std::function<std::string()> pdf; ///< makes the bytes of its PDF file
};

/// Is told of every document that the program finishes.
class DocumentWitness {
public:
    void Finished(WitnessedDocument document)
    {
        namesSince.push_back(document.name);
        last = std::move(document);
    }

    std::optional<WitnessedDocument> last;
    std::vector<std::string> namesSince; ///< since the scenario last asked for them
};

} // namespace quillmere::scenario
