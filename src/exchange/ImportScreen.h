#pragma once

#include "exchange/Plan.h"
#include "frame/Screen.h"

#include <filesystem>
#include <string>
#include <vector>

namespace quillmere::exchange {

/// A table that is about to be taken over: which column goes where, and what each row would do. Nothing is written
/// before Import is pressed.
class ImportScreen : public Screen {
public:
    explicit ImportScreen(Session& session);

    /// Asks for the file; without one, or with one that is no table, the window does not open.
    bool Load() override;

private:
    bool Read(const std::filesystem::path& chosen);
    void ListEmployers();
    void ShowColumns();
    void ChooseColumn();
    void ChooseTarget(int position);
    void Plan();
    void ShowPlan();
    void Arrange();
    void ShowWords();
    void Import();
    void TellOfFailure(const StoreError& failure, std::size_t written);
    std::string EmployerForAll() const;
    bool HasChangedSince() const;

    Targets targets;
    std::filesystem::path file;
    Table table;
    Columns columns;
    std::vector<std::string> employers;
    ImportPlan plan;
    std::string lookedAt; ///< the database's last change before the plan was made
};

} // namespace quillmere::exchange
