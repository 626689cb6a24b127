#include "Faults.h"

#include "clientdb/store/ServerLink.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <stdexcept>
#include <string>
#include <utility>

#ifdef __linux__
#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace quillmere::scenario {

namespace {

constexpr auto WriteRights =
    std::filesystem::perms::owner_write | std::filesystem::perms::group_write | std::filesystem::perms::others_write;

/// Gives up, or takes back, the administrator's privilege to pass over the rights of files. An ordinary user has none.
void PassOverRights([[maybe_unused]] bool wanted)
{
#ifdef __linux__
    __user_cap_header_struct header{.version = _LINUX_CAPABILITY_VERSION_3, .pid = 0};
    std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> sets{};
    if (::syscall(SYS_capget, &header, sets.data()) != 0)
        return;
    constexpr auto Privilege = 1U << CAP_DAC_OVERRIDE;
    if (wanted)
        sets[0].effective |= sets[0].permitted & Privilege;
    else
        sets[0].effective &= ~Privilege;
    ::syscall(SYS_capset, &header, sets.data());
#endif
}

bool IsDatabase(const std::filesystem::path& file)
{
    constexpr std::string_view Mark = "SQLite format 3";
    std::array<char, Mark.size()> start{};
    std::ifstream stream(file, std::ios::binary);
    stream.read(start.data(), start.size());
    return stream && std::string_view(start.data(), start.size()) == Mark;
}

void Execute(sqlite3* connection, const char* statement)
{
    if (sqlite3_exec(connection, statement, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(connection));
}

constexpr auto TakeLock = "BEGIN EXCLUSIVE";
constexpr auto GiveLock = "ROLLBACK";

/// Takes all the tables of the schema, so that nobody else even reads them.
constexpr auto LockTables = R"(DO $$
DECLARE
    it text;
BEGIN
    FOR it IN SELECT relname FROM pg_class WHERE relnamespace = current_schema()::regnamespace AND relkind = 'r' LOOP
        EXECUTE format('LOCK TABLE %I IN ACCESS EXCLUSIVE MODE', it);
    END LOOP;
END $$)";

constexpr std::string_view Options = "options";

void Say(ServerLink& link, const char* statement)
{
    static_cast<void>(link.Wait(link.Send(statement, statement, {}, true)));
}

void ForbidWriting(const ServerService& service)
{
    constexpr std::string_view NobodyWrites = " -c default_transaction_read_only=on";
    ServerService forbidden = service;
    const auto found = std::ranges::find(forbidden.settings, Options, &ServerService::Setting::first);
    if (found != forbidden.settings.end())
        found->second += NobodyWrites;
    else
        forbidden.settings.emplace_back(Options, NobodyWrites);
    WriteService(forbidden);
}

} // namespace

Faults::Faults(std::filesystem::path folder) : keptFolder(std::move(folder))
{
}

Faults::~Faults()
{
    for (Fault& fault : faults)
        End(fault);
    PassOverRights(true);
}

void Faults::TakeRights(Fault& fault, const std::filesystem::path& file)
{
    const std::filesystem::perms before = std::filesystem::status(file).permissions();
    fault.rights.emplace_back(file, before);
    std::filesystem::permissions(file, before & ~WriteRights);
}

/// Takes what was given up for a while.
void Faults::LockAgain(Fault& fault)
{
    if (fault.connection != nullptr)
        sqlite3_exec(fault.connection, TakeLock, nullptr, nullptr, nullptr);
    if (fault.link != nullptr) {
        Say(*fault.link, "BEGIN");
        Say(*fault.link, LockTables);
    }
    if (fault.mayBeWritten && ReadService(fault.file))
        ForbidWriting(*fault.mayBeWritten);
}

void Faults::Free(Fault& fault)
{
    if (fault.connection != nullptr)
        sqlite3_exec(fault.connection, GiveLock, nullptr, nullptr, nullptr);
    if (fault.link != nullptr)
        Say(*fault.link, GiveLock);
    if (fault.mayBeWritten && ReadService(fault.file))
        WriteService(*fault.mayBeWritten);
}

void Faults::End(Fault& fault)
{
    if (fault.mayBeWritten)
        Free(fault);
    if (fault.connection != nullptr)
        sqlite3_close(fault.connection);
    std::error_code ignored; // the file may be gone
    for (const auto& [file, rights] : fault.rights)
        std::filesystem::permissions(file, rights, ignored);
}

void Faults::Lock(const std::filesystem::path& file)
{
    if (!std::filesystem::exists(file))
        throw std::runtime_error("there is no " + file.string());
    Fault fault{.file = file};
    if (std::optional<ServerService> service = ReadService(file)) {
        // Its wait for others is not cut short.
        std::erase_if(service->settings, [](const auto& setting) { return setting.first == Options; });
        fault.link = std::make_unique<ServerLink>(*service);
        LockAgain(fault);
    } else if (IsDatabase(file)) {
        if (sqlite3_open_v2(file.c_str(), &fault.connection, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
            sqlite3_close(fault.connection);
            throw std::runtime_error("cannot open " + file.string());
        }
        try {
            Execute(fault.connection, TakeLock);
        } catch (...) {
            sqlite3_close(fault.connection);
            throw;
        }
    } else {
        TakeRights(fault, file);
        if (const auto folder = file.parent_path(); folder != keptFolder && !std::filesystem::is_directory(file))
            TakeRights(fault, folder);
        PassOverRights(false);
    }
    faults.push_back(std::move(fault));
}

void Faults::MakeReadOnly(const std::filesystem::path& file)
{
    if (!std::filesystem::exists(file))
        throw std::runtime_error("there is no " + file.string());
    Fault fault{.file = file};
    if ((fault.mayBeWritten = ReadService(file))) {
        LockAgain(fault);
    } else {
        TakeRights(fault, file);
        PassOverRights(false);
    }
    faults.push_back(std::move(fault));
}

void Faults::Unlock(const std::filesystem::path& file)
{
    const auto found = std::ranges::find(faults, file, &Fault::file);
    if (found == faults.end())
        throw std::runtime_error(file.string() + " is neither locked nor read-only");
    End(*found);
    faults.erase(found);
    if (std::ranges::all_of(faults, [](const Fault& fault) { return fault.rights.empty(); }))
        PassOverRights(true);
}

Faults::Pause::Pause(Faults& pausedFaults) : faults(pausedFaults)
{
    if (++faults.paused > 1)
        return;
    PassOverRights(true);
    for (Fault& fault : faults.faults)
        Free(fault);
}

Faults::Pause::~Pause()
{
    if (--faults.paused > 0)
        return;
    bool rights = false;
    for (Fault& fault : faults.faults) {
        rights = rights || !fault.rights.empty();
        LockAgain(fault);
    }
    PassOverRights(!rights);
}

void DoNotWaitForLocks()
{
    // The store counts how often it has slept, not how long: with a sleep that takes no time its wait ends at once.
    static sqlite3_vfs hasty = *sqlite3_vfs_find(nullptr);
    hasty.zName = "hasty";
    hasty.xSleep = [](sqlite3_vfs*, int microseconds) { return microseconds; };
    sqlite3_vfs_register(&hasty, 1);
}

} // namespace quillmere::scenario
