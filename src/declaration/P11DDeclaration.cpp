#include "declaration/P11DDeclaration.h"

#include "clientdb/store/Recordset.h"
#include "declaration/Class1A.h"
#include "declaration/Declaration.h"
#include "declaration/DeclarationWords.h"
#include "edition/Edition.h"
#include "frame/BusyPointer.h"
#include "frame/Dates.h"

#include <array>

namespace quillmere {

namespace {

/// A figure that is worked out; one with a filter may be typed over while there are adjustments.
constexpr BoxRow FigureRow(std::string_view name, std::string_view field, std::string_view spoken,
                           KeyFilter filter = nullptr)
{
    return {.name = name, .field = field, .filter = filter, .spoken = spoken, .readOnly = true, .amount = true};
}

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "EmployerRef", .field = "EmployerReference", .spoken = "Employer PAYE reference"},
    {.name = "AccOfficeRef", .field = "AccountsOffReference", .spoken = "Accounts office reference"},
    // The employer's name is the record's key: it is changed by renaming the employer, never here.
    {.name = "EmployerAdd1", .field = "EmployerName", .spoken = "Employer name", .readOnly = true},
    {.name = "EmployerAdd2", .field = "EmployerAdd2", .spoken = "Employer address, line 2"},
    {.name = "EmployerAdd3", .field = "EmployerAdd3", .spoken = "Employer address, line 3"},
    {.name = "EmployerAdd4", .field = "EmployerAdd4", .spoken = "Employer address, line 4"},
    {.name = "EmployerAdd5", .field = "EmployerAdd5", .spoken = "Employer address, line 5"},
    {.name = "EmployerAdd6", .field = "EmployerAdd6", .spoken = "Employer address, line 6"},
    {.name = "ReturnAdd1", .field = "ReturnAdd1", .spoken = "Return address for form, line 1"},
    {.name = "ReturnAdd2", .field = "ReturnAdd2", .spoken = "Return address for form, line 2"},
    {.name = "ReturnAdd3", .field = "ReturnAdd3", .spoken = "Return address for form, line 3"},
    {.name = "ReturnAdd4", .field = "ReturnAdd4", .spoken = "Return address for form, line 4"},
    {.name = "ReturnAdd5", .field = "ReturnAdd5", .spoken = "Return address for form, line 5"},
    {.name = "ReturnAdd6", .field = "ReturnAdd6", .spoken = "Return address for form, line 6"},

    {.name = "Section1BoxA",
     .field = "Section1ABox",
     .filter = MoneyKeyFilter,
     .spoken = "Section 1 box A, total benefits liable to Class 1A NICs from forms P11D",
     .amount = true},
    {.name = "AdjustTick", .kind = BoxKind::Tick, .field = "Section1Tick", .spoken = words::AdjustFigures},
    {.name = "Section1BoxB",
     .text = edition::Class1ARateText,
     .spoken = "Section 1 box B, Class 1A NICs rate",
     .readOnly = true,
     .amount = true},
    FigureRow("Section1BoxC", "Section1CBox", "Section 1 box C, Class 1A NICs payable"),

    {.name = "NoBenefitTick", .kind = BoxKind::Tick, .field = "Section2Tick1"},
    {.name = "DeclarationTick", .kind = BoxKind::Tick, .field = "Section2Tick2"},
    {.name = "Check4", .kind = BoxKind::Tick, .field = "Section2Tick3"},
    {.name = "InlRevOffice", .field = "SentToBox", .spoken = "Office that forms P11D were sent to"},
    {.name = "SentDate",
     .field = "SentToDate",
     .filter = DateKeyFilter,
     .spoken = "Date on which forms P11D were sent"},

    {.name = "Section4BoxA",
     .field = "Section4ABox",
     .filter = MoneyKeyFilter,
     .spoken = "Section 4 box A, total benefits from section 1 box A",
     .amount = true},
    {.name = "Image1",
     .kind = BoxKind::Picture,
     .spoken = "Amounts to be added: list of items",
     .tip = "List of amounts to be added",
     .disabled = true},
    {.name = "Section4DescriptionB",
     .field = "Section4BDesc",
     .spoken = "Section 4 box B, brief description",
     .readOnly = true},
    FigureRow("Section4BoxB", "Section4BBox", "Section 4 box B, amount to be added", MoneyKeyFilter),
    {.name = "Image2",
     .kind = BoxKind::Picture,
     .spoken = "Amounts to be deducted: list of items",
     .tip = "List of amounts to be deducted",
     .disabled = true},
    {.name = "Section4DescriptionC",
     .field = "Section4CDesc",
     .spoken = "Section 4 box C, brief description",
     .readOnly = true},
    FigureRow("Section4BoxC", "Section4CBox", "Section 4 box C, amount to be deducted", MoneyKeyFilter),
    FigureRow("Section4BoxD", "Section4DBox", "Section 4 box D, total of benefits on which Class 1A NICs are due"),
    {.name = "Section4BoxE",
     .text = edition::Class1ARateText,
     .spoken = "Section 4 box E, Class 1A NICs rate",
     .readOnly = true,
     .amount = true},
    FigureRow("Section4BoxF", "Section4FBox", "Section 4 box F, Class 1A NICs payable"),

    {.name = "Print", .kind = BoxKind::Button, .text = "&Print", .tip = "Print this declaration"},
    {.name = "Cancel", .kind = BoxKind::Button, .text = "&Cancel", .tip = "Close the declaration"},
});

/// What of section 4 is emptied where there are no adjustments.
constexpr auto Section4Boxes = std::to_array<std::string_view>({
    "Section4BoxA",
    "Section4BoxB",
    "Section4DescriptionB",
    "Section4BoxC",
    "Section4DescriptionC",
    "Section4BoxD",
    "Section4BoxF",
});

/// The main window's toolbar is out of use while the declaration is in front.
void EnableToolbar(Session& session, bool enabled)
{
    if (Box* toolbar = session.screens.FindBox("MDIForm1", "picToolbar"))
        toolbar->SetEnabled(enabled);
}

} // namespace

P11DDeclaration::P11DDeclaration(Session& session)
    : BoundScreen(session, "P11DDeclaration", ShowMode::Modal, "P11D(b)", EmployerRecord(session))
{
    AddBoxes(Rows);
    box("NoBenefitTick").SetSpoken(words::NoBenefits());
    box("DeclarationTick").SetSpoken(words::FormsEnclosed());
    box("Check4").SetSpoken(words::FormsSent());
    SetButtons("Cancel", {});

    OnLeave("Section1BoxA", [this](Box&) { LeaveTotal(); });
    for (const std::string_view amount : {"Section4BoxA", "Section4BoxB", "Section4BoxC"})
        OnLeave(amount, [this](Box&) { Refresh(); });
    OnLeave("SentDate", [this](Box&) { LeaveSentDate(); });
    OnClick("AdjustTick", [this](Box&) { ChangeAdjustTick(); });
    OnClick("Image1", [this](Box&) { this->session.screens.Show("P11DBNotepad1"); });
    OnClick("Image2", [this](Box&) { this->session.screens.Show("P11DBNotepad2"); });
    OnClick("Print", [this](Box&) { PrintDeclaration(); });
    OnClick("Cancel", [this](Box&) { Close(); });
    if (!session.printJob) {
        box("Print").SetEnabled(false);
        box("Print").SetTip("Print this declaration (not available in this version)");
    }
}

bool P11DDeclaration::Load()
{
    // The total is of what is stored: the open page is, before it is taken.
    if (!EmployeeRecord(session).Store())
        return false;
    // With no record the screen opens all the same. Where the store cannot be read it does not: nothing that is typed
    // would be kept.
    if (ShowEmployer("P11D(B) - loading error") == Sought::Failed)
        return false;
    EnableToolbar(session, false);
    StartP11DBTimer();
    return true;
}

void P11DDeclaration::Unload()
{
    BoundScreen::Unload();
    EnableToolbar(session, true);
}

void P11DDeclaration::Close()
{
    // It stays where the store does not take what it holds.
    if (MayClose())
        session.screens.Unload(Name());
}

P11DDeclaration::Sought P11DDeclaration::ShowEmployer(std::string_view errorTitle)
{
    const Sought sought = StoreAndShow(errorTitle);
    OpenAdjustments();
    return sought;
}

void P11DDeclaration::StartP11DBTimer()
{
    session.screens.StartTimer(*this, "P11DBTimer", [this] { P11DBTimer(); });
}

void P11DDeclaration::P11DBTimer()
{
    Amount total;
    try {
        const BusyPointer busy(session.platform);
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        total = EmployerTotal(database, session.CurrentEmployer);
    } catch (const StoreError& error) {
        session.messages.Tell(Caption(), error.what());
        // What a schedule has handed over counts all the same.
        Refresh();
        return;
    }
    EmployeeRecord(session).StoreAndShowAgain("Recovering Recordset after P11DB NICs");
    box("Section1BoxA").SetText(Class1AText(total));
    Refresh();
}

void P11DDeclaration::Refresh()
{
    if (box("AdjustTick").Ticked()) {
        RefreshSection4();
        box("Section1BoxC").Clear();
        return;
    }
    RefreshSection1();
    for (const std::string_view name : Section4Boxes)
        box(name).Clear();
}

void P11DDeclaration::RefreshSection1()
{
    const Section1 section = ComputeSection1(ReadAmount(box("Section1BoxA").Text()));
    box("Section1BoxC").SetText(Class1AText(section.C));
    box("Section1BoxA").SetText(Class1AText(section.A));
}

void P11DDeclaration::RefreshSection4()
{
    // Kept: A is that of section 1, whatever has been typed into section 4's own.
    const Section4 section =
        ComputeSection4(ReadAmount(box("Section1BoxA").Text()), ReadAmount(box("Section4BoxB").Text()),
                        ReadAmount(box("Section4BoxC").Text()));
    box("Section4BoxA").SetText(Class1AText(section.A));
    box("Section4BoxB").SetText(Class1AText(section.B));
    box("Section4BoxC").SetText(Class1AText(section.C));
    box("Section4BoxD").SetText(Class1AText(section.D));
    box("Section4BoxF").SetText(Class1AText(section.F));
}

void P11DDeclaration::LeaveTotal()
{
    Refresh();
    // With adjustments the refresh reads this box and writes section 4's.
    Box& total = box("Section1BoxA");
    if (box("AdjustTick").Ticked())
        total.SetText(Class1AText(ReadAmount(total.Text())));
}

void P11DDeclaration::LeaveSentDate()
{
    Box& date = box("SentDate");
    const std::string text = date.TrimText();
    if (text.empty())
        return;
    const bool valid = IsDateText(text);
    if (!valid)
        session.messages.Tell(edition::AppTitle, "Invalid Date Format - Please Re-enter");
    date.SetText(valid ? NormaliseDate(text) : std::string());
}

void P11DDeclaration::ChangeAdjustTick()
{
    Box& tick = box("AdjustTick");
    if (!tick.Ticked()) {
        if (!session.messages.Ask(edition::AppTitle, words::UntickQuestion)) {
            tick.SetTicked(true);
            return;
        }
        Refresh();
    }
    OpenAdjustments();
    // Kept: after an untick it runs a second time, on what the first has written.
    Refresh();
}

/// The adjustments can be entered while the tick is set.
void P11DDeclaration::OpenAdjustments()
{
    const bool open = box("AdjustTick").Ticked();
    for (const std::string_view name : {"Section4DescriptionB", "Section4BoxB", "Section4DescriptionC", "Section4BoxC"})
        box(name).SetReadOnly(!open);
    for (const std::string_view picture : {"Image1", "Image2"})
        box(picture).SetEnabled(open);
}

void P11DDeclaration::PrintDeclaration()
{
    // What the store has not taken would be missing on the paper.
    if (ShowEmployer("P11D(B) - Refresh error") != Sought::Failed)
        session.printJob(PrintedDocument::Declaration);
}

} // namespace quillmere
