#include "app/Guide.h"

#include "frame/Text.h"
#include "review/BoxNames.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <iterator>

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
    {"Form3_4 Form5_6", "", "Further cars"},
    {"FNotepad Form1", "", "The list of car figures"},
    {"Form3", "", "Page 1"},
    {"Side2Form1", "", "Page 2"},
    {"P11DDeclaration", "", "The P11D(b)"},
    {"P11DBNotepad1 P11DBNotepad2", "", "Adjustments"},
    {"ANotepad BNotepad CNotepad INotepad KNotepad LNotepad NNotepad1 NNotepad2 NNotepad3", "", "Lists of items"},
    {"ONotepad1 ONotepad2 ONotepad3 ONotepad4 ONotepad5 ONotepad6", "", "Lists of items"},
    {"DNotepad D2Notepad D2InfoNotepad", "", "Living accommodation"},
    {"ENotepad", "", "Mileage"},
    {"GNotepad GNotepad2", "", "Vans"},
    {"HNotepad HNotepad2", "", "Loans"},
    {"JNotepad", "", "Relocation"},
    {"NewFileCheck NewFile", "", "New employers and employees"},
    {"EmployerList EmployeeList", "", "Opening an employee"},
    {"RenameEmp", "", "Renaming and deleting"},
    {"FindEmployee", "", "Find Employee"},
    {"TypedStrip TypedList", "", "Typed and not stored"},
    {"ChangeHistory", "", "Undo and history"},
    {"CheckList", "", "Check"},
    {"Explanation", "", "Explain"},
    {"OverviewList", "", "Overview"},
    {"LastYearSheet", "", "Compare with last year"},
    {"CalculatorCheck", "", "Check the Calculators"},
    {"HelpBook", "", "Help"},
    {"About", "", "About the program"},
    {"ImportTable", "", "Import"},
    {"ExportTable", "", "Export"},
    {"SafetyCopies", "", "Safety copies"},
    {"ShareFolder", "", "Sharing a folder"},
    {"DamagedDatabase", "", "A damaged database"},
    {"frmVSPrint frmVSPrintDialog", "", "The preview"},
    {"frmVSPrintSettings", "", "Report Settings"},
    {"PrePrint", "", "A whole employer"},
    {"PdfFiles", "", "A whole employer as PDF files"},
    {"LastBatch", "", "The last batch"},
    {"frmFolderManager", "", "Client folders"},
    {"frmBackup", "", "Backup"},
    {"TransferList", "", "Last year"},
    {"MDIForm1", "", "The main window"},
});

/// Level of a heading; 0 for any other line.
int LevelOf(std::string_view line)
{
    const std::size_t marks = line.find_first_not_of('#');
    return marks != std::string_view::npos && marks > 0 && line[marks] == ' ' ? static_cast<int>(marks) : 0;
}

} // namespace

std::vector<GuideSection> SectionsOf(const GuideChapter& chapter)
{
    std::vector<GuideSection> sections;
    for (std::string_view rest = chapter.text; !rest.empty();) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        const int level = LevelOf(line);
        if (level > 0)
            sections.push_back({.title = std::string(line.substr(static_cast<std::size_t>(level) + 1)),
                                .level = level,
                                .file = chapter.file});
        // A line belongs to its section and to those around it.
        int within = level > 0 ? level : 99;
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
    std::vector<GuideSection> sections;
    for (const GuideChapter& chapter : GuideChapters())
        std::ranges::move(SectionsOf(chapter), std::back_inserter(sections));
    return sections;
}

std::string AnchorOf(std::string_view title)
{
    std::string anchor;
    for (const char character : title) {
        if (std::isalnum(static_cast<unsigned char>(character)) != 0)
            anchor += static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
        else if (character == ' ' || character == '-')
            anchor += '-';
    }
    return anchor;
}

const GuideSection* SectionAt(const std::vector<GuideSection>& sections, std::string_view file, std::string_view link)
{
    const std::size_t mark = std::min(link.find('#'), link.size());
    const std::string_view wanted = mark == 0 ? file : link.substr(0, mark);
    const std::string_view anchor = link.substr(std::min(mark + 1, link.size()));
    const auto found = std::ranges::find_if(sections, [&](const GuideSection& section) {
        return section.file == wanted && (anchor.empty() || AnchorOf(section.title) == anchor);
    });
    return found == sections.end() ? nullptr : &*found;
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
