#include "app/Guide.h"

#include "frame/Text.h"
#include "review/BoxNames.h"

#include <algorithm>
#include <array>

namespace quillmere {

namespace {

/// Which section is about the boxes of some screens whose names begin alike.
struct SectionRow {
    std::string_view screens; ///< parted by blanks
    std::string_view boxes;   ///< the beginning of their names; empty: all
    std::string_view title;
};
/// The first row that fits counts.
constexpr auto Rows = std::to_array<SectionRow>({
    {"Form3", "F", "Cars"},
    {"Form3", "txtUnavailable", "Cars"},
    {"Form3_4 Form5_6 FNotepad Form1", "", "Cars"},
    {"Form3 Side2Form1 P11DDeclaration", "", "The two pages"},
    {"ANotepad BNotepad CNotepad INotepad KNotepad LNotepad NNotepad1 NNotepad2 NNotepad3", "", "Notepads"},
    {"ONotepad1 ONotepad2 ONotepad3 ONotepad4 ONotepad5 ONotepad6 P11DBNotepad1 P11DBNotepad2", "", "Notepads"},
    {"DNotepad D2Notepad D2InfoNotepad ENotepad GNotepad GNotepad2 HNotepad HNotepad2 JNotepad", "", "Notepads"},
    {"NewFileCheck NewFile EmployerList EmployeeList RenameEmp", "", "Employers and employees"},
    {"FindEmployee", "", "Find Employee"},
    {"TypedStrip TypedList", "", "Typed and not stored"},
    {"ChangeHistory", "", "Undo and history"},
    {"CheckList", "", "Check"},
    {"HelpBook", "", "Help"},
    {"LastYearSheet", "", "Compare with last year"},
    {"About", "", "About the program"},
    {"CalculatorCheck", "", "Check the Calculators"},
    {"SafetyCopies DamagedDatabase", "", "Safety copies"},
    {"frmVSPrint frmVSPrintDialog frmVSPrintSettings", "", "Printing"},
    {"PrePrint PdfFiles LastBatch", "", "A whole employer"},
    {"frmFolderManager frmBackup TransferList", "", "Folders, backup, last year"},
    {"MDIForm1", "", "The first start"},
});

/// Level of a heading; 0 for any other line.
int LevelOf(std::string_view line)
{
    const std::size_t marks = line.find_first_not_of('#');
    return marks != std::string_view::npos && marks > 0 && line[marks] == ' ' ? static_cast<int>(marks) : 0;
}

} // namespace

std::vector<GuideSection> SectionsOf(std::string_view markdown)
{
    std::vector<GuideSection> sections;
    while (!markdown.empty()) {
        const std::size_t end = std::min(markdown.find('\n'), markdown.size());
        const std::string_view line = markdown.substr(0, end);
        markdown.remove_prefix(std::min(end + 1, markdown.size()));
        const int level = LevelOf(line);
        if (level > 1)
            sections.push_back({.title = std::string(line.substr(static_cast<std::size_t>(level) + 1)),
                                .level = level,
                                .markdown = {}});
        if (line.starts_with("!["))
            continue;
        // A line belongs to its section and to those around it.
        int within = level > 1 ? level : 99;
        for (auto section = sections.rbegin(); section != sections.rend(); ++section) {
            if (section == sections.rbegin() || section->level < within) {
                section->markdown.append(line).append("\n");
                within = section->level;
            }
        }
    }
    return sections;
}

std::vector<GuideSection> ReadGuide()
{
    std::vector<GuideSection> sections = SectionsOf(GuideText);
    // The other page has a title of its own, which is a heading here.
    std::string list;
    for (std::string_view rest = CarListText; !rest.empty();) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        list.append(LevelOf(rest.substr(0, end)) > 0 ? "#" : "").append(rest.substr(0, end)).append("\n");
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    std::ranges::move(SectionsOf(list), std::back_inserter(sections));
    return sections;
}

std::string_view SectionAbout(std::string_view screen, std::string_view box)
{
    const auto row = std::ranges::find_if(Rows, [&](const SectionRow& candidate) {
        return review::IsOn(screen, candidate.screens) && box.starts_with(candidate.boxes);
    });
    return row == Rows.end() ? std::string_view() : row->title;
}

bool HasWords(const GuideSection& section, std::string_view words)
{
    const std::string text = UpperCase(section.markdown);
    std::string wanted = UpperCase(words);
    for (std::string_view rest = wanted; !rest.empty();) {
        const std::size_t end = std::min(rest.find(' '), rest.size());
        if (text.find(rest.substr(0, end)) == std::string::npos)
            return false;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return true;
}

} // namespace quillmere
