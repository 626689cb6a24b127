#include "app/Program.h"

#include "app/About.h"
#include "app/HelpBook.h"
#include "app/MDIForm1.h"
#include "app/Zoom.h"
#include "calculators/D2Notepad.h"
#include "calculators/DNotepad.h"
#include "calculators/ENotepad.h"
#include "calculators/GNotepad.h"
#include "calculators/GNotepad2.h"
#include "calculators/HNotepad.h"
#include "calculators/HNotepad2.h"
#include "calculators/JNotepad.h"
#include "cars/ExtraCarsScreen.h"
#include "cars/FNotepad.h"
#include "cars/Form1.h"
#include "clientdb/CopyScreens.h"
#include "clientdb/DamagedDatabase.h"
#include "clientdb/EmployerScreens.h"
#include "clientdb/FindEmployee.h"
#include "clientdb/FolderScreens.h"
#include "clientdb/ShareFolder.h"
#include "clientdb/store/KeptOpen.h"
#include "declaration/AdjustmentNotepad.h"
#include "declaration/P11DDeclaration.h"
#include "edition/Edition.h"
#include "exchange/ExportScreen.h"
#include "exchange/ImportScreen.h"
#include "frame/Folders.h"
#include "printing/jobs/LastBatch.h"
#include "printing/jobs/PdfFiles.h"
#include "printing/jobs/PrePrint.h"
#include "printing/jobs/PrintJobs.h"
#include "printing/jobs/frmVSPrint.h"
#include "printing/jobs/frmVSPrintDialog.h"
#include "printing/jobs/frmVSPrintSettings.h"
#include "review/CalculatorCheck.h"
#include "review/ChangeHistory.h"
#include "review/CheckList.h"
#include "review/EmployerReview.h"
#include "review/Explanation.h"
#include "review/LastYearSheet.h"
#include "review/OverviewList.h"
#include "review/TypedBack.h"
#include "screens/Form3.h"
#include "screens/ScheduleNotepad.h"
#include "screens/Side2Form1.h"
#include "transfer/TransferList.h"

#include <algorithm>
#include <array>
#include <memory>

namespace quillmere {

Program::Program(Platform& platform, ScreenHost* host, ProgramPlaces places)
    : session(platform),
      printing(session),
      statusTalk(session),
      boxNotes(session),
      typedJournal(session),
      alsoOpen(session),
      places(std::move(places))
{
    RegisterScreens(session.screens, printing);
    session.printJob = [this](PrintedDocument document) {
        PrintEmployeeJob(session, printing, session.CurrentEmployer, session.CurrentEmployee, document);
    };
    session.printTable = [this](const PrintedTable& table) { PrintTableJob(session, printing, table); };
    session.explain = [this](Screen& screen, Box& box) { review::ShowExplanation(session, screen, box); };
    session.thingsToLookAt = [this](const std::string& employer, const std::string& employee) {
        return review::ThingsToLookAt(session, employer, employee);
    };
    session.onlookers = {&statusTalk, &boxNotes, &typedJournal, &alsoOpen};
    session.typedJournal = &typedJournal;
    session.offerTyped = [this] { review::OfferTyped(session); };
    session.screens.SetHost(host);
    session.screens.HoldWhileBusy([] { return std::make_shared<KeptOpen>(); });
}

Program::~Program()
{
    session.screens.Abandon();
    session.onlookers.clear();
    session.typedJournal = nullptr;
}

bool Program::Main()
{
    instance.emplace(places.programFolder);
    if (!instance->IsFirst()) {
        session.platform.Beep();
        session.messages.Tell(edition::AppTitle, std::string(edition::AppTitle) + " is already running");
        return false;
    }
    session.WindowsFolder = WindowsFolder();
    MakeTempFolder(session.WindowsFolder);
    session.programFolder = places.programFolder;
    session.resourceFolder = places.resourceFolder;
    session.RootFolder = RootFolderOf(places.programFolder);
    session.screenHeight = places.screenHeight;
    session.screenWidth = places.screenWidth;
    session.databaseNamed = places.database;
    ZoomAsBefore(session);
    session.screens.Show("MDIForm1");
    return true;
}

void Program::Close()
{
    if (Screen* main = session.screens.Find("MDIForm1"))
        main->RequestClose();
}

void Program::CloseForSystem()
{
    session.endsBySystem = true;
    Close();
}

bool Program::Ended() const
{
    return session.screens.Find("MDIForm1") == nullptr;
}

namespace {

// How a screen of a table's row is made.

template<class S>
std::unique_ptr<Screen> Plain(std::string_view, Session& session, PrintSystem&)
{
    return std::make_unique<S>(session);
}

/// A screen that prints or shows what has been drawn.
template<class S>
std::unique_ptr<Screen> Printing(std::string_view, Session& session, PrintSystem& printing)
{
    return std::make_unique<S>(session, printing);
}

/// A member of a family that has one class and a table of its members.
template<class S>
std::unique_ptr<Screen> Member(const auto& members, std::string_view name, Session& session)
{
    return std::make_unique<S>(session,
                               *std::ranges::find_if(members, [&](const auto& member) { return member.name == name; }));
}

std::unique_ptr<Screen> Schedule(std::string_view name, Session& session, PrintSystem&)
{
    return Member<ScheduleNotepad>(Notepads(), name, session);
}

std::unique_ptr<Screen> Adjustment(std::string_view name, Session& session, PrintSystem&)
{
    return Member<AdjustmentNotepad>(AdjustmentSchedules, name, session);
}

std::unique_ptr<Screen> FurtherCars(std::string_view name, Session& session, PrintSystem&)
{
    return Member<ExtraCarsScreen>(ExtraCarsScreens, name, session);
}

/// A screen of the program: how it is made, and when it is closed along with others.
struct ScreenRow {
    std::string_view name;
    std::unique_ptr<Screen> (*make)(std::string_view name, Session& session, PrintSystem& printing);
    Closing closing = Closing::ByItself;
};

/// Every screen, in the order in which they are closed.
constexpr auto ScreenRows = std::to_array<ScreenRow>({
    {"Side2Form1", Plain<Side2Form1>, Closing::WithOpened},
    {"Form3", Plain<Form3>, Closing::WithAll},
    {"ANotepad", Schedule, Closing::WithOpened},
    {"BNotepad", Schedule, Closing::WithOpened},
    {"CNotepad", Schedule, Closing::WithOpened},
    {"DNotepad", Plain<DNotepad>, Closing::WithOpened},
    {"D2Notepad", Plain<D2Notepad>, Closing::WithOpened},
    {"D2InfoNotepad", Plain<D2InfoNotepad>, Closing::WithAll},
    {"ENotepad", Plain<ENotepad>, Closing::WithOpened},
    {"FNotepad", Plain<FNotepad>, Closing::WithOpened},
    {"GNotepad", Plain<GNotepad>, Closing::WithOpened},
    {"GNotepad2", Plain<GNotepad2>, Closing::WithOpened},
    {"HNotepad", Plain<HNotepad>, Closing::WithOpened},
    {"HNotepad2", Plain<HNotepad2>, Closing::WithOpened},
    {"INotepad", Schedule, Closing::WithOpened},
    {"JNotepad", Plain<JNotepad>, Closing::WithOpened},
    {"KNotepad", Schedule, Closing::WithOpened},
    {"LNotepad", Schedule, Closing::WithOpened},
    {"NNotepad1", Schedule, Closing::WithOpened},
    {"NNotepad2", Schedule, Closing::WithOpened},
    {"NNotepad3", Schedule, Closing::WithOpened},
    {"ONotepad1", Schedule, Closing::WithOpened},
    {"ONotepad2", Schedule, Closing::WithOpened},
    {"ONotepad3", Schedule, Closing::WithOpened},
    {"ONotepad4", Schedule, Closing::WithOpened},
    {"ONotepad5", Schedule, Closing::WithOpened},
    {"ONotepad6", Schedule, Closing::WithOpened},
    {"EmployeeList", Plain<EmployeeList>, Closing::WithAll},
    {"EmployerList", Plain<EmployerList>, Closing::WithAll},
    {"Form1", Plain<Form1>, Closing::WithAll},
    {"NewFile", Plain<NewFile>, Closing::WithAll},
    {"NewFileCheck", Plain<NewFileCheck>, Closing::WithAll},
    {"RenameEmp", Plain<RenameEmp>, Closing::WithAll},
    {"P11DDeclaration", Plain<P11DDeclaration>, Closing::WithAll},
    {"P11DBNotepad1", Adjustment, Closing::WithAll},
    {"P11DBNotepad2", Adjustment, Closing::WithAll},
    {"PrePrint", Printing<PrePrint>, Closing::WithAll},
    {"TransferList", Plain<TransferList>, Closing::WithAll},

    {"MDIForm1", Plain<MDIForm1>},
    {"Form3_4", FurtherCars},
    {"Form5_6", FurtherCars},
    {"FindEmployee", Plain<FindEmployee>},
    {"CheckList", Plain<review::CheckList>},
    {"CalculatorCheck", Plain<review::CalculatorCheck>},
    {"Explanation", Plain<review::Explanation>, Closing::WithAll},
    {"HelpBook", Plain<HelpBook>},
    {"About", Plain<About>},
    {"LastYearSheet", Plain<review::LastYearSheet>},
    {"OverviewList", Plain<review::OverviewList>},
    {"ChangeHistory", Plain<review::ChangeHistory>},
    {"ImportTable", Plain<exchange::ImportScreen>},
    {"ExportTable", Plain<exchange::ExportScreen>},
    {"SafetyCopies", Plain<SafetyCopies>},
    {"ShareFolder", Plain<ShareFolder>},
    {"TypedStrip", Plain<review::TypedStrip>, Closing::WithAll},
    {"TypedList", Plain<review::TypedList>, Closing::WithAll},
    {"DamagedDatabase", Plain<DamagedDatabase>},
    {"frmFolderManager", Plain<frmFolderManager>},
    {"frmBackup", Plain<frmBackup>},
    {"PdfFiles", Printing<PdfFiles>},
    {"LastBatch", Printing<LastBatch>},
    {"frmVSPrintSettings", Printing<frmVSPrintSettings>},
    {"frmVSPrint", Printing<frmVSPrint>},
    {"frmVSPrintDialog", Printing<frmVSPrintDialog>},
});

} // namespace

void RegisterScreens(Screens& screens, PrintSystem& printing)
{
    for (const ScreenRow& row : ScreenRows)
        screens.Register(
            row.name, [&row, &printing](Session& session) { return row.make(row.name, session, printing); },
            row.closing);
}

} // namespace quillmere
