#include "Documents.h"

namespace quillmere::scenario {

const Document& DocumentWitness::Last() const
{
    if (last == nullptr)
        throw StepFailure("nothing has been printed");
    return *last;
}

std::vector<DrawnText> TextsOf(const Document& document, int page)
{
    std::vector<DrawnText> texts;
    for (const Operation& operation : document.Page(page)) {
        if (operation.kind != OperationKind::Text)
            continue;
        texts.push_back({.x = operation.x1 / UnitsPerMillimetre,
                         .y = PlaceOf(document, operation).y / UnitsPerMillimetre,
                         .text = std::string(document.TextOf(operation))});
    }
    return texts;
}

} // namespace quillmere::scenario
