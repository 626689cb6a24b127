#pragma once

#include "frame/Session.h"
#include "printing/forms/FormTables.h"
#include "printing/paper/PageEngine.h"
#include "printing/paper/PageLayer.h"
#include "review/Checks.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere::review {

/// The texts that are cut if they are longer than their boxes: those of the form's own record, then those of the
/// further cars.
struct BoxedTextList {
    std::vector<BoxedText> texts;
    std::size_t ofForm = 0;
};
const BoxedTextList& BoxedTexts();

/// What of an employee's texts has room on the paper of his form, in the font that is chosen for reports.
class Paper {
public:
    /// `settings` and `platform` outlive it.
    Paper(const Settings& settings, Platform& platform);

    /// The texts of the form and of its further cars that are cut at the edges of their boxes.
    PaperFacts Cut(const FormFacts& form) const;

    /// As much of a text, from its beginning, as prints in its box.
    std::string Printing(const BoxedText& box, std::string_view text) const;

private:
    PageEngine engine;
    PageLayer page;
    double widest; ///< of a byte of any text
};

/// How many characters at the end of what a box reads have no room on the paper of the form; 0 for a box that does not
/// print, or whose text is never cut.
std::size_t CutOnPaper(const Session& session, const Screen& screen, const Box& box);

} // namespace quillmere::review
