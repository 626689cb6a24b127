#pragma once

#include "clientdb/Employees.h"
#include "clientdb/ListFilter.h"
#include "frame/Screen.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

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
    /// The names in the boxes become the current employer and employee.
    NewEmployee TakeNames();
    /// Makes the records, closes what is open and opens page 1, with the database closed before. Page 1, as OpenPage1
    /// gives it.
    Screen* CreateAndOpen(const NewEmployee& employee);
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

    std::optional<ListFilter> filter;
};

/// The list of one employer's employees.
class EmployeeList : public Screen {
public:
    explicit EmployeeList(Session& session);
    bool Load() override;

private:
    void OpenChosen();
    void DeleteChosen();

    std::optional<ListFilter> filter;
};

/// "Rename Files": an employer with its PAYE reference, or an employee.
class RenameEmp : public Screen {
public:
    explicit RenameEmp(Session& session);
    bool Load() override;

private:
    bool FillList();
    void ClearBoxes();
    void ChooseEmployer();
    void ChooseEmployee();
    void RenameChosenEmployer();
    void RenameChosenEmployee();

    std::string filledFrom; ///< whose name the boxes have: the one that is renamed, whatever the list shows
};

/// The employers for a list on a screen; nothing, with the message that there are none, if the database has none.
/// Throws StoreError.
[[nodiscard]] std::optional<std::vector<std::string>> EmployersToShow(Session& session);

/// Shows page 1 for the current employee; with no record it opens blank after "Employee not found" under `errorTitle`.
/// Gives the page; none, with the store's words, if the store fails: then nothing is shown, and what is open stays.
[[nodiscard]] Screen* OpenPage1(Session& session, std::string_view errorTitle);

/// Opens an employee of any employer, as from the lists: what is open is stored and closed first. False if it has to
/// stay open, or the store cannot be read.
[[nodiscard]] bool OpenEmployee(Session& session, const std::string& employer, const std::string& employee);

} // namespace quillmere
