#include "app/Program.h"

#include "app/MDIForm1.h"
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
#include "clientdb/EmployerScreens.h"
#include "clientdb/FolderScreens.h"
#include "declaration/AdjustmentNotepad.h"
#include "declaration/P11DDeclaration.h"
#include "edition/Edition.h"
#include "frame/Folders.h"
#include "printing/PrePrint.h"
#include "printing/PrintJobs.h"
#include "printing/frmVSPrint.h"
#include "printing/frmVSPrintDialog.h"
#include "printing/frmVSPrintSettings.h"
#include "screens/Form3.h"
#include "screens/ScheduleNotepad.h"
#include "screens/Side2Form1.h"
#include "transfer/TransferList.h"

#include <memory>

namespace quillmere {

Program::Program(Platform& platform, ScreenHost* host, ProgramPlaces places)
    : session(platform), printing(session), places(std::move(places))
{
    RegisterScreens(session.screens, printing);
    session.printJob = [this](PrintedDocument document) {
        PrintEmployeeJob(session, printing, session.CurrentEmployer, session.CurrentEmployee, document);
    };
    session.screens.SetHost(host);
}

Program::~Program()
{
    session.screens.Abandon();
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

template<typename ScreenClass>
void Register(Screens& screens, std::string_view name)
{
    screens.Register(name, [](Session& session) { return std::make_unique<ScreenClass>(session); });
}

/// A screen that prints or shows what has been drawn.
template<typename ScreenClass>
void Register(Screens& screens, std::string_view name, PrintSystem& printing)
{
    screens.Register(name, [&printing](Session& session) { return std::make_unique<ScreenClass>(session, printing); });
}

} // namespace

void RegisterScreens(Screens& screens, PrintSystem& printing)
{
    Register<MDIForm1>(screens, "MDIForm1");
    Register<NewFileCheck>(screens, "NewFileCheck");
    Register<NewFile>(screens, "NewFile");
    Register<EmployerList>(screens, "EmployerList");
    Register<EmployeeList>(screens, "EmployeeList");
    Register<RenameEmp>(screens, "RenameEmp");
    Register<frmFolderManager>(screens, "frmFolderManager");
    Register<frmBackup>(screens, "frmBackup");
    Register<TransferList>(screens, "TransferList");
    Register<PrePrint>(screens, "PrePrint", printing);
    Register<frmVSPrintSettings>(screens, "frmVSPrintSettings", printing);
    Register<frmVSPrint>(screens, "frmVSPrint", printing);
    Register<frmVSPrintDialog>(screens, "frmVSPrintDialog", printing);
    Register<Form3>(screens, "Form3");
    Register<Side2Form1>(screens, "Side2Form1");
    for (const ExtraCars& cars : ExtraCarsScreens)
        screens.Register(cars.name,
                         [&cars](Session& session) { return std::make_unique<ExtraCarsScreen>(session, cars); });
    Register<P11DDeclaration>(screens, "P11DDeclaration");
    Register<FNotepad>(screens, "FNotepad");
    Register<Form1>(screens, "Form1");
    Register<GNotepad2>(screens, "GNotepad2");
    for (const AdjustmentSchedule& schedule : AdjustmentSchedules)
        screens.Register(schedule.name, [&schedule](Session& session) {
            return std::make_unique<AdjustmentNotepad>(session, schedule);
        });
    for (const NotepadMember& member : Notepads())
        screens.Register(member.name,
                         [&member](Session& session) { return std::make_unique<ScheduleNotepad>(session, member); });
    Register<DNotepad>(screens, "DNotepad");
    Register<D2Notepad>(screens, "D2Notepad");
    Register<D2InfoNotepad>(screens, "D2InfoNotepad");
    Register<ENotepad>(screens, "ENotepad");
    Register<GNotepad>(screens, "GNotepad");
    Register<HNotepad>(screens, "HNotepad");
    Register<HNotepad2>(screens, "HNotepad2");
    Register<JNotepad>(screens, "JNotepad");
}

} // namespace quillmere
