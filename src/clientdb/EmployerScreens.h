#pragma once

#include "frame/Screen.h"

#include <string_view>

namespace quillmere {

/// Why the employer list is open (`EmployerListMode`).
enum EmployerListPurpose : int {
    ChooseToOpen = 0,
    ChooseToRenameEmployee = 1,
    ChooseToDeleteEmployee = 2,
    ChooseForNewEmployee = 4,
    ChooseToDelete = 5,
};

/// "New File Options": a new employee of an employer who is there, or a new employer.
class NewFileCheck : public Screen {
public:
    explicit NewFileCheck(Session& session);

private:
    void Accept();
};

/// "New File": the names of a new employer and employee.
class NewFile : public Screen {
public:
    explicit NewFile(Session& session);
    bool Load() override;

private:
    /// `OkEmp`: a new employer with a first employee.
    void AddEmployer();
    /// `OkEmp2`: a new employee of an employer who is there.
    void AddEmployee();
    void Cancel();
    [[nodiscard]] bool Missing(std::string_view boxName, std::string_view title, std::string_view message);
    /// Makes the records, closes what is open and opens page 1. False if there is no record afterwards.
    void CreateAndOpen();
};

/// The list of employers.
class EmployerList : public Screen {
public:
    explicit EmployerList(Session& session);
    bool Load() override;

private:
    /// Goes on with the employer that is chosen in the list.
    void Proceed();
    void DeleteChosen();
};

/// The list of one employer's employees.
class EmployeeList : public Screen {
public:
    explicit EmployeeList(Session& session);
    bool Load() override;

private:
    void OpenChosen();
    void DeleteChosen();
};

/// "Rename Files": an employer with its PAYE reference, or an employee.
class RenameEmp : public Screen {
public:
    explicit RenameEmp(Session& session);
    bool Load() override;

private:
    bool FillList();
    void ChooseEmployer();
    void RenameChosenEmployer();
    void RenameChosenEmployee();
};

/// Shows page 1 for the current employee. False, with "Employee not found" under `errorTitle`, if there is no record.
[[nodiscard]] bool OpenPage1(Session& session, std::string_view errorTitle);

} // namespace quillmere
