#pragma once

#include "edition/CalculatorExamples.h"

#include <string>
#include <string_view>
#include <vector>

/// The published examples, worked by the rules that work the forms.
namespace quillmere::review {

enum class Verdict {
    Passes,  ///< just the expected figures
    Differs, ///< those that are known to be other than the authority's
    Fails,
};

struct WorkedExample {
    const edition::CalculatorExample* example = nullptr;
    std::string got; ///< the figures that the example names, in its form
    Verdict verdict = Verdict::Fails;
};

/// Works an example. A fact that no rule reads, a figure that no rule has and an unknown rule are mistakes in the list:
/// std::logic_error.
WorkedExample WorkOut(const edition::CalculatorExample& example);

/// All of them, in the order of the list.
std::vector<WorkedExample> WorkOutAll();

/// "N=10; charge=1500.00" for a reader: "N 10, charge 1500.00".
std::string FiguresInWords(std::string_view figures);

/// "passes", "differs" or "FAILS".
std::string_view WordOf(Verdict verdict);
/// "direct" or "shifted".
std::string_view WordOf(edition::ExampleKind kind);

} // namespace quillmere::review
