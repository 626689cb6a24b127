#pragma once

#include "clientdb/store/FormMarks.h"
#include "frame/PrintedTable.h"
#include "frame/Screen.h"
#include "review/EmployerReview.h"
#include "review/Overview.h"

#include <deque>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace quillmere::review {

/// A line for each employee of an employer, or for each employer of the folder, as their forms are stored. It stays
/// open beside the form, takes up by itself what has been stored meanwhile, and looks through an employer in pieces
/// between the keys; until it has, the lines from before stay.
class OverviewList : public Screen {
public:
    explicit OverviewList(Session& session);

    bool Load() override;
    void WindowActivated() override;

private:
    struct Line {
        std::string key; ///< the employee, or the employer
        OverviewSums sums;
        // Of an employee:
        std::string worksNumber, nationalInsurance;
        std::string printed, reviewed; ///< marks in words
        std::string cells;             ///< of all of it, parted by tabs
    };
    /// The marks of an employer's forms while they are looked through.
    struct Marks {
        explicit Marks(const std::filesystem::path& path) : database(Database::OpenDatabase(path)), forms(database) {}
        Database database;
        FormMarks forms;
    };

    bool ShowsFolder() const { return employer.empty(); }
    void Start();
    void GoOn();
    void BeginNextEmployer();
    void TakeEmployee(std::string_view employee, const FormFacts& form, const OverviewSums& sums);
    void EndEmployer();
    void ListEmployers(std::vector<std::string> newEmployers);
    void ChooseEmployer(int position);
    void Arrange(const std::string& key = {});
    void TellFoot();
    std::string KeyInUse() const;
    void OpenChosen();
    void ReviewChosen();
    PrintedTable ControlSheet() const;

    Paper paper;
    std::string employer;               ///< whose employees are shown; empty: all employers
    std::vector<std::string> employers; ///< of the folder
    std::vector<Line> lines;            ///< as they were looked through last
    std::vector<std::size_t> listed;    ///< of `lines`, in the order of the table
    OverviewSums foot;                  ///< of all lines
    // While it is looked through:
    std::vector<Line> coming;
    OverviewSums comingFoot, ofEmployer;
    std::deque<std::string> waiting; ///< employers who have not been looked through yet
    std::optional<EmployerReview> review;
    std::optional<Marks> marks;
    std::string lookedAt; ///< the database's last change before the last look
};

} // namespace quillmere::review
