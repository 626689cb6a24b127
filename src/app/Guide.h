#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The user guide inside the program: its chapters and sections, and which of them is about what.
namespace quillmere {

/// A chapter of the guide, as its file was when the program was built.
struct GuideChapter {
    std::string_view file; ///< its name in docs/guide
    std::string_view text;
};

/// All chapters, in the order of the guide's own list.
std::span<const GuideChapter> GuideChapters();

/// A heading of a chapter with what stands below it; the whole chapter begins with one of level 1.
struct GuideSection {
    std::string title;
    int level = 1;             ///< one of a lower level has those of a higher one within
    std::string_view file;     ///< of its chapter
    std::string markdown = {}; ///< heading, text and the sections within
};

/// The sections of a chapter, in its order, the chapter itself first.
std::vector<GuideSection> SectionsOf(const GuideChapter& chapter);

/// All sections of the guide.
std::vector<GuideSection> ReadGuide();

/// What a link to a section ends with: its title in small letters, with a stroke for each blank.
std::string AnchorOf(std::string_view title);

/// The section that a link in a chapter leads to: "cars.md", "cars.md#fuel", "#fuel". Null if it leads to none.
const GuideSection* SectionAt(const std::vector<GuideSection>& sections, std::string_view file, std::string_view link);

/// Title of the section about a box of a screen; empty if the guide has none for it.
std::string_view SectionAbout(std::string_view screen, std::string_view box);

/// True if the section has every word of the text, capitals apart.
bool HasWords(const GuideSection& section, std::string_view words);

} // namespace quillmere
