#include "clientdb/store/Unreadable.h"

#include <fmt/format.h>

namespace quillmere {

bool IsTooLong(const StoreError& failure)
{
    return (failure.Number() & 0xff) == SQLITE_TOOBIG;
}

void FailOfRecord(TableStatements& statements, std::int64_t record, const StoreError& failure)
{
    const auto keyOf = [&](std::string_view name) -> std::string {
        const auto column = static_cast<std::uint16_t>(statements.Fields().Find(name));
        Run run(statements.Read({&column, 1}, false));
        return run.Bind(record).Step() ? std::string(run.Text(0)) : std::string();
    };
    std::string whose;
    switch (statements.Layout().level) {
    case TableLevel::Employee:
        whose = fmt::format(" of {} ({})", keyOf("EmployeeName"), keyOf("EmployerName"));
        break;
    case TableLevel::Employer:
        whose = fmt::format(" of {}", keyOf("EmployerName"));
        break;
    default:
        break;
    }
    throw StoreError(
        failure.Number(),
        fmt::format("The record{} in table {} cannot be read: {}", whose, statements.Layout().name, failure.what()),
        failure.Statement());
}

} // namespace quillmere
