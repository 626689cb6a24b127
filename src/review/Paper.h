#pragma once

#include "printing/forms/FormTables.h"
#include "printing/paper/PageEngine.h"
#include "printing/paper/PageLayer.h"
#include "review/Checks.h"

#include <vector>

namespace quillmere::review {

/// What of an employee's texts has room on the paper of his form, in the font that is chosen for reports.
class Paper {
public:
    /// `settings` and `platform` outlive it.
    Paper(const Settings& settings, Platform& platform);

    /// The texts of the form and of its further cars that are cut at the edges of their boxes.
    std::vector<CutText> Cut(const FieldReader& read) const;

private:
    PageEngine engine;
    PageLayer page;
};

} // namespace quillmere::review
