#pragma once

#include "app/Guide.h"
#include "frame/Screen.h"

#include <vector>

namespace quillmere {

/// The guide inside the program, opened at the section about the box in use. A word typed leaves the sections that have
/// it.
class HelpBook : public Screen {
public:
    explicit HelpBook(Session& session);

    bool Load() override;

private:
    /// Lists the sections that have the words of the line, and shows one of them.
    void Search(std::string_view title);
    void ShowChosen();
    /// Title of the section about what the user was in.
    std::string_view TitleInUse() const;

    std::vector<GuideSection> sections;
    std::vector<const GuideSection*> listed; ///< in the order of the list
};

} // namespace quillmere
