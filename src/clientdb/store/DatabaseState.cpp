#include "clientdb/store/DatabaseState.h"

#include "clientdb/store/FileEngine.h"
#include "clientdb/store/ServerEngine.h"

#include <algorithm>
#include <cstdint>
#include <fmt/format.h>
#include <system_error>

namespace quillmere {

namespace {

/// More than that nobody reads.
constexpr std::string_view LookThrough = "PRAGMA integrity_check(20)";

/// It goes from each record of a table into its indexes and back, in another order than theirs: what it has seen of
/// them is not to be read from the file again for each. A sixty-fourth of the file holds those of one table. More would
/// cost time, for what is kept of the records is read once.
std::string RoomForAnIndex(const std::filesystem::path& file)
{
    constexpr std::uintmax_t Usual = 2000, Most = 131'072; // kibibytes
    std::error_code unknown;
    const std::uintmax_t size = std::filesystem::file_size(file, unknown);
    return fmt::format("PRAGMA cache_size=-{}", unknown ? Usual : std::clamp(size / 1024 / 64, Usual, Most));
}

/// With what the store begins its list.
constexpr std::string_view Heading = "*** in database main ***\n";

/// The store's words without the file's name, which is known.
std::string WordsOf(const StoreError& failure, const std::filesystem::path& file)
{
    const std::string words = failure.what(), name = PathText(file) + " cannot be opened: ";
    return words.starts_with(name) ? words.substr(name.size()) : words;
}

} // namespace

DatabaseState LookAtDatabase(const std::filesystem::path& file)
{
    if (const std::optional<ServerService> service = ReadService(file))
        return CountIn(*OpenServer(*service, OpenMode::ReadOnly, nullptr));
    DatabaseState state;
    try {
        Database::OpenDatabase(file, OpenMode::ReadOnly).Close();
        FileConnection connection(file, SQLITE_OPEN_READWRITE);
        connection.Pragma(RoomForAnIndex(file));
        Run look(connection.Prepare(std::string(LookThrough)));
        while (look.Step())
            if (const std::string_view found = look.Text(0); found != "ok")
                state.faults.emplace_back(found.substr(found.starts_with(Heading) ? Heading.size() : 0));
        if (!state.IsWhole())
            return state;
        return CountIn(connection);
    } catch (const StoreError& failure) {
        if (!failure.IsDamage())
            throw;
        state.faults.push_back(WordsOf(failure, file));
    }
    return state;
}

DatabaseState CountIn(Database::Connection& connection)
{
    return {.faults = {},
            .employers = connection.Number("SELECT count(DISTINCT [EmployerName]) FROM [P11D]"),
            .employees = connection.Number("SELECT count(*) FROM [P11D]")};
}

std::string InWords(const DatabaseState& state)
{
    if (!state.IsWhole())
        return "damaged: " + state.faults.front();
    return fmt::format("opened, {} employee{}, complete", state.employees, state.employees == 1 ? "" : "s");
}

} // namespace quillmere
