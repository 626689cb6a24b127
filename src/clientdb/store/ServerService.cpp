#include "clientdb/store/ServerService.h"

#include "clientdb/store/Connection.h"
#include "frame/CheckedFile.h"
#include "frame/Text.h"

#include <algorithm>
#include <fmt/format.h>
#include <fstream>

namespace quillmere {
namespace {

constexpr std::string_view Heading = "[quillmere]";
constexpr std::string_view SchemaSetting = "schema";
constexpr std::string_view CopiesSetting = "copies", CopiesByServer = "server";

[[noreturn]] void Refuse(const std::filesystem::path& file, std::string_view why)
{
    throw StoreError(SQLITE_CANTOPEN, fmt::format("{} cannot be opened: {}", PathText(file), why), "");
}

/// A service takes less, and a database more, unless most of it is gone.
constexpr std::uintmax_t MostBytes = 16'384;

} // namespace

std::string ServerService::Key() const
{
    std::string key = schema;
    for (const auto& [name, value] : settings)
        key += fmt::format("\n{}={}", name, value);
    return key;
}

/// It needs no quoting in any place where it stands.
bool IsSchemaName(std::string_view name)
{
    constexpr std::size_t Longest = 63;
    return !name.empty() && name.size() <= Longest && std::ranges::all_of(name, [](char letter) {
        return (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9') || letter == '_';
    });
}

std::optional<ServerService> ReadService(const std::filesystem::path& file)
{
    // A database is not even opened: to close it would take away the locks that this process has on it.
    std::error_code thereIsNone;
    if (std::filesystem::file_size(file, thereIsNone) > MostBytes)
        return std::nullopt;
    std::ifstream in(file, std::ios::binary);
    std::string line;
    // The head of a damaged database may begin with a bracket, but it does not close it.
    if (in.peek() != '[' || !std::getline(in, line) || !Trim(line.substr(0, line.find('\r'))).ends_with(']'))
        return std::nullopt;
    ServerService service{.file = file, .settings = {}, .schema = {}};
    while (std::getline(in, line)) {
        line = Trim(line.substr(0, line.find('\r')));
        if (line.empty() || line.front() == '#')
            continue;
        const std::size_t sign = line.find('=');
        if (sign == std::string::npos)
            Refuse(file, fmt::format("\"{}\" is no setting", line));
        const std::string name = Trim(line.substr(0, sign)), value = Trim(line.substr(sign + 1));
        if (name == "password" || name == "passfile")
            Refuse(file, "it names a password, which does not belong into it");
        if (name == SchemaSetting)
            service.schema = value;
        else if (name == CopiesSetting && value == CopiesByServer)
            service.copies = ServerService::Copies::ByServer;
        else if (name == CopiesSetting)
            Refuse(file,
                   fmt::format("copies are made by the {} or by the desks, not by \"{}\"", CopiesByServer, value));
        else
            service.settings.emplace_back(name, value);
    }
    if (!IsSchemaName(service.schema))
        Refuse(file, "its schema is not named in small letters, digits and lines");
    return service;
}

bool LeavesCopiesToServer(const std::filesystem::path& database)
{
    const std::optional<ServerService> service = ReadService(database);
    return service && service->copies == ServerService::Copies::ByServer;
}

bool MayOnlyLook(const std::filesystem::path& database, const StoreError& failure)
{
    return (failure.Number() & 0xff) == SQLITE_READONLY && ReadService(database).has_value();
}

void WriteService(const ServerService& service)
{
    std::string text = fmt::format("{}\n", Heading);
    for (const auto& [name, value] : service.settings)
        text += fmt::format("{}={}\n", name, value);
    text += fmt::format("{}={}\n", SchemaSetting, service.schema);
    if (service.copies == ServerService::Copies::ByServer)
        text += fmt::format("{}={}\n", CopiesSetting, CopiesByServer);
    WriteFileChecked(service.file, text);
}

} // namespace quillmere
