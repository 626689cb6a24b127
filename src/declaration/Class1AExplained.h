#pragma once

#include "declaration/Class1A.h"
#include "declaration/Declaration.h"
#include "frame/Explained.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace quillmere {

/// What a field of the form is called.
using WordsOfField = std::function<std::string(std::string_view field)>;

/// Box A of the declaration: the employees and boxes that make it up, then their total.
Explained ExplainLiableBenefits(std::span<const LiableBenefit> benefits, const WordsOfField& words);

/// What a declaration goes by.
struct DeclarationFacts {
    Amount benefits; ///< section 1 box A
    bool adjusted = false;
    Amount added, deducted; ///< section 4 boxes B and C
};
/// How the contributions of sections 1 and 4 came about.
Explained ExplainContributions(const DeclarationFacts& declaration);

} // namespace quillmere
