#include "desktop/layouts/Layouts.h"

#include <array>
#include <map>
#include <stdexcept>

namespace quillmere {

namespace {

struct LayoutRow {
    std::string_view screen;
    Layout (*write)();
};

constexpr auto Rows = std::to_array<LayoutRow>({
    {"NewFileCheck", layouts::NewFileCheck},
    {"NewFile", layouts::NewFile},
    {"EmployerList", layouts::EmployerList},
    {"EmployeeList", layouts::EmployeeList},
    {"RenameEmp", layouts::RenameEmp},
    {"FindEmployee", layouts::FindEmployee},
    {"CheckList", layouts::CheckList},
    {"CalculatorCheck", layouts::CalculatorCheck},
    {"Explanation", layouts::Explanation},
    {"HelpBook", layouts::HelpBook},
    {"About", layouts::About},
    {"LastYearSheet", layouts::LastYearSheet},
    {"OverviewList", layouts::OverviewList},
    {"ChangeHistory", layouts::ChangeHistory},
    {"ExportTable", layouts::ExportTable},
    {"ImportTable", layouts::ImportTable},
    {"SafetyCopies", layouts::SafetyCopies},
    {"ShareFolder", layouts::ShareFolder},
    {"TypedStrip", layouts::TypedStrip},
    {"TypedList", layouts::TypedList},
    {"DamagedDatabase", layouts::DamagedDatabase},
    {"frmFolderManager", layouts::frmFolderManager},
    {"frmBackup", layouts::frmBackup},
    {"TransferList", layouts::TransferList},
    {"frmVSPrintSettings", layouts::frmVSPrintSettings},
    {"frmVSPrint", layouts::frmVSPrint},
    {"frmVSPrintDialog", layouts::frmVSPrintDialog},
    {"PrePrint", layouts::PrePrint},
    {"PdfFiles", layouts::PdfFiles},
    {"LastBatch", layouts::LastBatch},
    {"Form3", layouts::Form3},
    {"Side2Form1", layouts::Side2Form1},
    {"P11DDeclaration", layouts::P11DDeclaration},
    {"FNotepad", layouts::FNotepad},
    {"Form1", layouts::Form1},
    {"GNotepad2", layouts::GNotepad2},
    {"P11DBNotepad1", layouts::P11DBNotepad1},
    {"P11DBNotepad2", layouts::P11DBNotepad2},
    {"DNotepad", layouts::DNotepad},
    {"D2Notepad", layouts::D2Notepad},
    {"D2InfoNotepad", layouts::D2InfoNotepad},
    {"ENotepad", layouts::ENotepad},
    {"GNotepad", layouts::GNotepad},
    {"HNotepad", layouts::HNotepad},
    {"HNotepad2", layouts::HNotepad2},
    {"JNotepad", layouts::JNotepad},
});

} // namespace

const Layout& LayoutOf(std::string_view screen)
{
    static std::map<std::string_view, Layout> written;
    const auto found = written.find(screen);
    if (found != written.end())
        return found->second;
    for (const LayoutRow& row : Rows)
        if (row.screen == screen)
            return written.emplace(row.screen, row.write()).first->second;
    for (const ExtraCars& cars : ExtraCarsScreens)
        if (cars.name == screen)
            return written.emplace(cars.name, layouts::ExtraCarsScreen(cars)).first->second;
    for (const NotepadMember& member : Notepads())
        if (member.name == screen)
            return written.emplace(member.name, layouts::ScheduleNotepad(member)).first->second;
    throw std::logic_error("no layout for the screen " + std::string(screen));
}

std::vector<std::string_view> ScreensWithLayout()
{
    std::vector<std::string_view> screens;
    screens.reserve(std::size(Rows) + std::size(Notepads()) + std::size(ExtraCarsScreens));
    for (const LayoutRow& row : Rows)
        screens.push_back(row.screen);
    for (const ExtraCars& cars : ExtraCarsScreens)
        screens.push_back(cars.name);
    for (const NotepadMember& member : Notepads())
        screens.push_back(member.name);
    return screens;
}

} // namespace quillmere
