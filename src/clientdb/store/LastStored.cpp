#include "clientdb/store/LastStored.h"

#include "clientdb/store/HistoryTables.h"
#include "clientdb/store/ServerEngine.h"

#include <fmt/format.h>

namespace quillmere {

std::string LastStored(const std::filesystem::path& database)
{
    try {
        if (const std::optional<ServerService> service = ReadService(database))
            return fmt::format("{}", OpenServer(*service, OpenMode::ReadOnly, nullptr)
                                         ->Number(fmt::format("SELECT max([Number]) FROM [{}]", ChangeTable)));
    } catch (const StoreError&) {
        return {};
    }
    std::error_code gone;
    const auto written = std::filesystem::last_write_time(database, gone);
    return gone ? std::string() : fmt::format("{}", written.time_since_epoch().count());
}

} // namespace quillmere
