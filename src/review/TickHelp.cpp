#include "frame/Screen.h"
#include "review/BoxHelp.h"
#include "review/BoxNames.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace quillmere::review {

namespace {

/// What a tick or an option does.
struct TickHelp {
    std::string_view screen; ///< names of all the screens that have it, parted by blanks
    std::string_view box;    ///< given name; without the number of the car
    std::string_view about;  ///< in sentences
};

// clang-format off
constexpr auto Rows = std::to_array<TickHelp>({
    {"Form3", "DirectorTick", "Tick it for a director of the employer: the form goes in whatever he earns. Forms of directors without the tick are often sent back."},
    {"Form3 Form3_4 Form5_6", "FNoC02", "Tick it for a car that never had an approved CO2 figure: the size of its engine then gives the percentage. ITEPA 2003 s.140, s.142."},
    {"Form3 Form3_4 Form5_6", "FuelTick", "Tick it if fuel for private journeys was provided: the fuel charge is worked out. ITEPA 2003 s.149."},
    {"Form3 Form3_4 Form5_6", "FWithdrawnTick", "Tick it if fuel was withdrawn and came back in the same year: then its withdrawal takes nothing off the charge. ITEPA 2003 s.152."},
    {"Form3 Form3_4 Form5_6", "Discount", "It is kept with the car. It plays no part in the sum."},
    {"Side2Form1", "MShareTick", "Tick it if shares or options on shares were given; there is no amount for them on this form."},
    {"GNotepad", "VanFuelTick", "Tick it if fuel for private journeys was provided with the van: the fuel charge is worked out. ITEPA 2003 s.160."},
    {"DNotepad", "AccommodationYTick", "The accommodation was provided for the whole tax year. It is kept with the calculation; the days count for the charge."},
    {"DNotepad", "AccommodationNTick", "The accommodation was not provided for the whole tax year. It is kept with the calculation; the days count for the charge."},
    {"FNotepad", "Check1", "This sheet works by the rules of an older year and nothing reads it. Fuel for private journeys was provided."},
    {"FNotepad", "WithdrawnTick", "This sheet works by the rules of an older year and nothing reads it. Fuel came back in the same year."},
    {"P11DDeclaration", "AdjustTick", "Tick it if box A is not the sum on which Class 1A contributions are due: then section 4 works it out, and box C stays empty."},
    {"P11DDeclaration", "NoBenefitTick", "Tick it if no forms P11D are to be sent for the year."},
    {"P11DDeclaration", "DeclarationTick", "Tick it if all forms P11D come with the declaration."},
    {"P11DDeclaration", "Check4", "Tick it if the forms P11D were sent before, and say where and when."},
    {"NewFileCheck", "Option1", "The new employee comes to an employer who is in the list."},
    {"NewFileCheck", "Option2", "A new employer comes into the list, with his first employee."},
    {"EmployeeList EmployerList PrePrint TransferList", "ListSorted", "The names show from A to Z; the order in which they are kept and printed stays as it is."},
    {"ChangeHistory CheckList", "Scope", "Whose forms are looked at."},
    {"LastYearSheet", "LastYearScope", "Whose years are compared."},
    {"ExportTable", "ExportWhat", "What is written to the file, with the names of the columns in its first row."},
    {"PrePrint", "AllSch", "Ticks all schedules, or none of them."},
    {"PrePrint", "SchTick", "The working papers of this section are printed with each employee's document."},
    {"PrePrint", "P11D", "The form itself is printed for each employee. It takes the P11D(b) along."},
    {"PrePrint", "P11DB", "The employer's declaration is printed behind the employees' documents."},
    {"PdfFiles", "PdfKind", "Which files are made of the employees' documents. The P11D(b) is always a file of its own."},
    {"frmVSPrintDialog", "optRange", "Which pages of the document go to the printer."},
    {"frmVSPrintDialog", "optDuplex", "For a printer that prints one side only: print the odd pages, put the sheets back, and print the even ones."},
    {"frmVSPrintSettings", "optDuplexMode", "How a printer that can use both sides of the paper uses them."},
    {"frmVSPrintSettings", "optFile", "Which name is proposed for a PDF file. It is kept with the settings."},
    {"frmVSPrintSettings", "chkDuplexPadding", "It is kept with the settings."},
    {"frmVSPrintSettings", "optFont", "The typeface of the printed pages."},
    {"frmVSPrintSettings", "optPreview", "Whether Print shows the preview, or makes a PDF file and opens that."},
    {"frmVSPrintSettings", "optSection", "It is kept with the settings."},
    {"frmVSPrintSettings", "optTicks", "How ticks are printed. It is kept with the settings."},
    {"frmVSPrintSettings", "chkShading", "The grey grounds of the form are printed; without it paper and ink are saved."},
});
// clang-format on

/// Screens whose workings nobody reads and F2 leaves alone.
constexpr auto OlderRules = std::to_array<std::string_view>({"FNotepad", "Form1", "GNotepad2"});

std::string_view AboutWorkedOut(std::string_view screen)
{
    return std::ranges::find(OlderRules, screen) == OlderRules.end()
               ? "It is worked out from other boxes: nothing is typed here. F2 tells how it came about."
               : "It is worked out from other boxes by the rules of an older year: nothing is typed here.";
}

std::string With(std::string_view name, std::string_view about)
{
    return fmt::format("{}{}{}", name, name.empty() ? "" : "\n\n", about);
}

} // namespace

std::string WhatsThisOf(const Screen& screen, const Box& box)
{
    switch (box.Kind()) {
    case BoxKind::Tick:
    case BoxKind::Option: {
        const TickHelp* help = RowOf(Rows, screen.Name(), box.Name());
        return help == nullptr ? std::string() : With(box.Spoken().empty() ? box.Text() : box.Spoken(), help->about);
    }
    case BoxKind::Text: {
        const BoxHelp* help = HelpOf(screen.Name(), box.Name());
        return help == nullptr ? With(box.Spoken(), AboutWorkedOut(screen.Name())) : WhatsThisOf(*help, box.Spoken());
    }
    case BoxKind::Label:
        return box.IsAmount() ? With(box.Spoken(), AboutWorkedOut(screen.Name())) : std::string();
    default:
        return {};
    }
}

} // namespace quillmere::review
