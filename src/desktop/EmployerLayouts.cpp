#include "desktop/Layouts.h"

namespace quillmere::layouts {

namespace {

constexpr int ButtonWidth = 96;
constexpr int ButtonHeight = 28;

} // namespace

Layout NewFileCheck()
{
    Layout layout{.width = 440, .height = 170};
    layout.Text(20, 18, 400, "Please choose one of the options below", {.size = 13, .bold = true});
    layout.Place("Option1", 24, 48, 400, 24);
    layout.Place("Option2", 24, 78, 400, 24);
    layout.Place("NewFileOk", 220, 124, ButtonWidth, ButtonHeight);
    layout.Place("NewFileCancel", 324, 124, ButtonWidth, ButtonHeight);
    return layout;
}

Layout NewFile()
{
    Layout layout{.width = 520, .height = 210};
    layout.Place("NewEmployer", 20, 20, 210);
    layout.Place("EmployerName", 236, 20, 264);
    layout.Line(52, 20, 210, "PAYE Reference", "PAYE", 236, 160);
    layout.Line(84, 20, 210, "Enter New Employee Firstname", "EmployeeName", 236, 264);
    layout.Line(116, 20, 210, "Enter New Employee Surname", "EmployeeSurname", 236, 264);
    layout.Place("OkEmp", 300, 162, ButtonWidth, ButtonHeight);
    layout.Place("OkEmp2", 300, 162, ButtonWidth, ButtonHeight);
    layout.Place("CancelEmp", 404, 162, ButtonWidth, ButtonHeight);
    return layout;
}

Layout EmployerList()
{
    Layout layout{.width = 460, .height = 420, .growing = "EmployerList"};
    layout.Place("EmployerList", 16, 16, 428, 346);
    layout.Place("EmpSelect", 140, 376, ButtonWidth, ButtonHeight);
    for (const std::string_view accept : {"EmpOpen", "EmpOpen2", "EmpSelect2", "EmpDelete"})
        layout.Place(accept, 244, 376, ButtonWidth, ButtonHeight);
    layout.Place("EmpCancel", 348, 376, ButtonWidth, ButtonHeight);
    return layout;
}

Layout EmployeeList()
{
    Layout layout{.width = 460, .height = 420, .growing = "EmployeeList"};
    layout.Place("EmployeeList", 16, 16, 428, 346);
    layout.Place("EmployeeOpen", 244, 376, ButtonWidth, ButtonHeight);
    layout.Place("EmpeDelete", 244, 376, ButtonWidth, ButtonHeight);
    layout.Place("EmployeeCancel", 348, 376, ButtonWidth, ButtonHeight);
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
    layout.Place("Rename", 244, 392, ButtonWidth, ButtonHeight);
    layout.Place("Rename2", 244, 392, ButtonWidth, ButtonHeight);
    layout.Place("Command1", 348, 392, ButtonWidth, ButtonHeight);
    return layout;
}

} // namespace quillmere::layouts
