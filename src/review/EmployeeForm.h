#pragma once

#include "clientdb/store/Recordset.h"
#include "frame/Screen.h"
#include "review/FormFacts.h"

#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere::review {

/// The facts of one employee's form, as they are stored or as they stand on a screen just now, with the texts that they
/// are views of.
class EmployeeForm {
public:
    /// Reads them all, with the descriptions of every list. Throws StoreError.
    EmployeeForm(Database& database, std::string_view employer, std::string_view employee);
    EmployeeForm(const EmployeeForm&) = delete;
    EmployeeForm& operator=(const EmployeeForm&) = delete;

    const FormFacts& Facts() const { return facts; }
    /// Facts of a table are from now on what reads in the boxes of the screen that hold its fields.
    void Read(std::string_view table, const Screen& screen);

private:
    FormFacts facts;
    std::vector<FactsRecord> records;
    std::deque<std::string> stored;
    std::map<std::string, std::deque<std::string>> onScreen; ///< by the name of the screen
};

} // namespace quillmere::review
