#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The user guide inside the program: its sections, and which of them is about what.
namespace quillmere {

/// The files of the guide, as they were when the program was built.
extern const std::string_view GuideText;
extern const std::string_view CarListText;

struct GuideSection {
    std::string title;
    int level = 2;        ///< of its heading; one of a lower level has those of a higher one within
    std::string markdown; ///< heading, text and the sections within
};

/// The sections of a text in Markdown, in its order. Its title and pictures are left out: the screens themselves are at
/// hand.
std::vector<GuideSection> SectionsOf(std::string_view markdown);

/// All sections of the guide, that about car figures last.
std::vector<GuideSection> ReadGuide();

/// Title of the section about a box of a screen; empty if the guide has none for it.
std::string_view SectionAbout(std::string_view screen, std::string_view box);

/// True if the section has every word of the text, capitals apart.
bool HasWords(const GuideSection& section, std::string_view words);

} // namespace quillmere
