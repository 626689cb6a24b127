#pragma once

#include <string_view>

namespace quillmere {

/// Whose record of a table is meant.
enum class RecordOf { Employee, Employer };

/// The door through which the papers read the records of the employee, or the employer, whom the document is about.
class Records {
public:
    Records() = default;
    Records(const Records&) = delete;
    Records& operator=(const Records&) = delete;
    virtual ~Records() = default;

    /// Puts a table on its record. False if there is none.
    [[nodiscard]] virtual bool Seek(std::string_view table, RecordOf whose) = 0;
    /// A field of the record on which the table stands, empty for a null one.
    [[nodiscard]] virtual std::string_view Field(std::string_view table, std::string_view field) = 0;
};

} // namespace quillmere
