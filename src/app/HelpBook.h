#pragma once

#include "app/Guide.h"
#include "frame/Screen.h"

#include <vector>

namespace quillmere {

/// The guide inside the program, opened at the section about the box in use. A word typed leaves the sections that have
/// it; a link in the text leads to its section.
class HelpBook : public Screen {
public:
    explicit HelpBook(Session& session);

    bool Load() override;

private:
    /// Lists the sections that have the words of the line, and shows one of them.
    void Search(const GuideSection* wanted);
    void ShowChosen();
    /// Shows the section that a link leads to, whatever the words of the line.
    void Follow(int link);
    std::string HtmlOfSection(const GuideSection& section) const;
    /// The section about what the user was in.
    const GuideSection* SectionInUse() const;

    std::vector<GuideSection> sections;
    std::vector<const GuideSection*> listed; ///< in the order of the list
};

} // namespace quillmere
