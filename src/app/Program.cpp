#include "app/Program.h"

#include "app/MDIForm1.h"
#include "clientdb/EmployerScreens.h"
#include "clientdb/FolderScreens.h"
#include "declaration/AdjustmentNotepad.h"
#include "declaration/P11DDeclaration.h"
#include "edition/Edition.h"
#include "frame/Folders.h"
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
    MakeTempFolder();
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
    Register<MDIForm1>(screens, "MDIForm1", printing);
    Register<frmVSPrintSettings>(screens, "frmVSPrintSettings", printing);
    Register<frmVSPrint>(screens, "frmVSPrint", printing);
    Register<frmVSPrintDialog>(screens, "frmVSPrintDialog", printing);
    Register<NewFileCheck>(screens, "NewFileCheck");
    Register<NewFile>(screens, "NewFile");
    Register<EmployerList>(screens, "EmployerList");
    Register<EmployeeList>(screens, "EmployeeList");
    Register<RenameEmp>(screens, "RenameEmp");
    Register<frmFolderManager>(screens, "frmFolderManager");
    Register<frmBackup>(screens, "frmBackup");
    Register<TransferList>(screens, "TransferList");
    Register<Form3>(screens, "Form3");
    Register<Side2Form1>(screens, "Side2Form1");
    Register<P11DDeclaration>(screens, "P11DDeclaration");
    for (const AdjustmentSchedule& schedule : AdjustmentSchedules)
        screens.Register(schedule.name, [&schedule](Session& session) {
            return std::make_unique<AdjustmentNotepad>(session, schedule);
        });
    for (const NotepadMember& member : Notepads())
        screens.Register(member.name,
                         [&member](Session& session) { return std::make_unique<ScheduleNotepad>(session, member); });
}

} // namespace quillmere
