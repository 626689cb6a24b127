#include "Folder.h"

#include "clientdb/Employees.h"
#include "support/RawDatabase.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <vector>

namespace quillmere::office {
namespace {

/// What makes of each employer's first employee all the others: the same records, with names of their own.
std::string Multiply(const TableLayout& table, int ofEach)
{
    constexpr std::array<std::string_view, 3> Named = {"EmployeeName", "Name", "Surname"};
    std::vector<std::string> columns, values;
    for (const Field& field : FieldsOf(table).All()) {
        columns.push_back(fmt::format("[{}]", field.name));
        values.push_back(std::ranges::find(Named, field.name) == Named.end()
                             ? fmt::format("t.[{}]", field.name)
                             : fmt::format("regexp_replace(t.[{}],' 1$',' '||n)", field.name));
    }
    return fmt::format("INSERT INTO [{0}] ({1}) SELECT {2} FROM [{0}] t, generate_series(2,{3}) n ORDER BY t.rowid, n",
                       table.name, fmt::join(columns, ","), fmt::join(values, ","), ofEach);
}

} // namespace

void MakeClients(const std::filesystem::path& file, const Clients& clients)
{
    {
        Database database = Database::OpenDatabase(file);
        WriteBatch batch(database);
        EmployeeRecords records(database);
        for (int employer = 0; employer < clients.employers; ++employer)
            records.Make({.employer = Clients::Employer(employer),
                          .firstName = "Jane",
                          .surname = "Smith 1",
                          .payeReference = "123/A456"});
        batch.Commit();
    }
    for (const TableLayout* const layout : NewEmployeeTables())
        if (layout->level == TableLevel::Employee)
            test::ExecuteRaw(file, Multiply(*layout, clients.ofEach));
    test::ExecuteRaw(file, "ANALYZE");
    test::ExecuteRaw(file, "CHECKPOINT");
}

} // namespace quillmere::office
