#include "desktop/layouts/DialogParts.h"
#include "desktop/layouts/Layouts.h"

namespace quillmere::layouts {

Layout NewFileCheck()
{
    Layout layout{.width = 440, .height = 170};
    layout.Text(20, 18, 400, "Please choose one of the options below", {.size = 13, .bold = true});
    layout.Place("Option1", 24, 48, 400, 24);
    layout.Place("Option2", 24, 78, 400, 24);
    ButtonRow(layout, 420, 124, {"NewFileOk", "NewFileCancel"});
    return layout;
}

Layout NewFile()
{
    Layout layout{.width = 520, .height = 210};
    layout.Place("NewEmployer", 20, 20, 210);
    layout.Place("EmployerName", 236, 20, 264);
    layout.Field(52, 20, 210, "PAYE Reference", "PAYE", 236, 160);
    layout.Field(84, 20, 210, "Enter New Employee Firstname", "EmployeeName", 236, 264);
    layout.Field(116, 20, 210, "Enter New Employee Surname", "EmployeeSurname", 236, 264);
    TakeTurns(layout, 500, 162, {"OkEmp", "OkEmp2"}, "CancelEmp");
    return layout;
}

Layout EmployerList()
{
    Layout layout{.width = 460, .height = 474, .growing = "EmployerList"};
    FilterLine(layout, 16, 14, 428);
    layout.Place("EmployerList", 16, 48, 428, 346);
    layout.Place("ListCount", 16, 400, 428, 20);
    Button(layout, 236, 430, "EmpSelect");
    TakeTurns(layout, 444, 430, {"EmpOpen", "EmpOpen2", "EmpSelect2", "EmpDelete"}, "EmpCancel");
    return layout;
}

Layout EmployeeList()
{
    Layout layout{.width = 460, .height = 474, .growing = "EmployeeList"};
    FilterLine(layout, 16, 14, 428);
    layout.Place("EmployeeList", 16, 48, 428, 346);
    layout.Place("ListCount", 16, 400, 428, 20);
    TakeTurns(layout, 444, 430, {"EmployeeOpen", "EmpeDelete"}, "EmployeeCancel");
    return layout;
}

Layout RenameEmp()
{
    Layout layout{.width = 460, .height = 440, .growing = "RenameE"};
    layout.Place("RenameE", 16, 16, 428, 284);
    layout.Place("RenameEmployee", 16, 16, 428, 284);
    layout.Place("NewName", 16, 314, 90);
    layout.Place("NewEmployer", 110, 314, 334);
    layout.Place("NewReference", 16, 346, 90);
    layout.Place("NewPAYE", 110, 346, 180);
    TakeTurns(layout, 444, 392, {"Rename", "Rename2"}, "Command1");
    return layout;
}

} // namespace quillmere::layouts
