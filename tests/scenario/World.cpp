#include "World.h"

#include "cars/CarReference.h"
#include "clientdb/store/TableLayouts.h"
#include "clientdb/store/Template.h"
#include "edition/Edition.h"
#include "frame/CheckedFile.h"
#include "frame/Folders.h"

#include <cstdlib>
#include <fstream>
#include <system_error>
#include <utility>

namespace quillmere::scenario {

namespace {

constexpr std::string_view ReferencePrefix = "CarC02:";

std::string WithoutEnd(std::string path)
{
    while (path.size() > 1 && path.ends_with(std::filesystem::path::preferred_separator))
        path.pop_back();
    return path;
}

} // namespace

World::World(const std::filesystem::path& resourceFolder, const std::filesystem::path& rootFolder, bool keepsRoot)
    : resources(resourceFolder),
      root(rootFolder),
      program(root / edition::ProductFolder),
      keepRoot(keepsRoot),
      faults(program)
{
    if (std::filesystem::create_directories(program)) {
        if (test::OnServer())
            lent.PutAt(program / edition::TemplateDatabaseName);
        else if (std::filesystem::exists(resources / edition::TemplateDatabaseName))
            std::filesystem::copy_file(resources / edition::TemplateDatabaseName,
                                       program / edition::TemplateDatabaseName);
        // Not the one that goes with the program: what a scenario finds in it is what the scenario has put there.
        CreateReferenceTables(program / CarReferenceName);
        std::filesystem::create_directory_symlink(resources / "guide", program / "guide");
    }
    // What belongs to the user's account lies here as well.
    ::setenv("HOME", (root / "Home").c_str(), 1);
    ::setenv("XDG_CACHE_HOME", (root / "Home" / "Cache").c_str(), 1);
    std::filesystem::create_directories(root / "Home" / "Cache");
}

World::~World()
{
    if (keepRoot)
        return;
    const Faults::Pause pause(faults);
    std::error_code ignored;
    std::filesystem::remove_all(root, ignored);
}

std::filesystem::path World::ClientFolder() const
{
    Settings settings;
    if (session != nullptr) {
        settings = session->settings;
    } else {
        try {
            ReadConfiguration(settings, {.programFolder = program, .rootFolder = RootFolderOf(program)});
        } catch (const std::exception&) {
            // What was read before the bad line stands, as it does for the program.
        }
    }
    const auto slot = static_cast<std::size_t>(settings.selectedFolder);
    return slot < settings.path.size() ? std::filesystem::path(settings.path[slot]) : std::filesystem::path();
}

Places World::GetPlaces() const
{
    return {.program = WithoutEnd(program.string()),
            .root = WithoutEnd(root.string()),
            .client = WithoutEnd(ClientFolder().string()),
            .server = server ? server->Socket().string() : std::string(),
            .mayNotWrite = test::OnServer() ? "The server lets you look, but not store anything"
                                            : "attempt to write a readonly database"};
}

test::PrivateServer& World::Server()
{
    if (!server)
        server.emplace(test::PrivateServer::Sync::On);
    return *server;
}

void World::OpenAtOtherDesk(std::string_view desk, std::string_view employer, std::string_view employee)
{
    if (!otherDesk)
        otherDesk.emplace(Open(Store::ThisYear, OpenMode::ReadWrite));
    static_cast<void>(otherDesk->OthersAt(desk, employer, employee));
}

std::filesystem::path World::File(std::string_view name) const
{
    return WithoutEnd((program / name).lexically_normal().string());
}

void World::WriteLines(const std::filesystem::path& file, const std::vector<std::string>& lines) const
{
    std::filesystem::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    const Places places = GetPlaces();
    for (const std::string& line : lines)
        stream << WithPlaces(line, places) << '\n';
    stream.close();
    if (!stream)
        throw StepFailure("cannot write " + file.string());
}

std::vector<std::string> World::ReadLines(const std::filesystem::path& file) const
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream || std::filesystem::is_directory(file))
        throw StepFailure("cannot read " + file.string());
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        if (line.ends_with('\r'))
            line.pop_back();
        lines.push_back(WithSlashes(line, std::filesystem::path::preferred_separator));
    }
    return lines;
}

std::filesystem::path World::DatabaseFile(Store store) const
{
    switch (store) {
    case Store::ThisYear:
        return ClientFolder() / edition::ClientDatabaseName;
    case Store::LastYear:
        return std::filesystem::path(LastYearSelectedPath(PriorProgramFolderOf(program))) /
               edition::PriorClientDatabaseName;
    case Store::Reference:
        break;
    }
    return program / CarReferenceName;
}

Database World::Open(Store store, OpenMode mode) const
{
    return store == Store::Reference ? Database::OpenReferenceDatabase(DatabaseFile(store), mode)
                                     : Database::OpenDatabase(DatabaseFile(store), mode);
}

void World::Provide(Store store)
{
    const std::filesystem::path priorFolder = PriorProgramFolderOf(program);
    if (const auto settings = priorFolder / SettingsFileName;
        store == Store::LastYear && !std::filesystem::exists(settings))
        WriteLines(settings, {"FOLDER 1=Clients", "PATH 1=" + priorFolder.string(), "SELECTED FOLDER=1"});
    const std::filesystem::path file = DatabaseFile(store);
    if (std::filesystem::exists(file))
        return;
    if (store == Store::Reference)
        return CreateReferenceTables(file);
    std::filesystem::create_directories(file.parent_path());
    if (test::OnServer())
        lent.PutAt(file);
    else
        std::filesystem::copy_file(resources / edition::TemplateDatabaseName, file);
}

/// The program copies what stands in the place of the empty database, which names tables that are one folder's from
/// then on.
void World::ProvideTables()
{
    const std::filesystem::path next = program / edition::TemplateDatabaseName;
    const std::optional<ServerService> service = ReadService(next);
    if (!service)
        return;
    const auto taken = ReadService(DatabaseFile(Store::ThisYear));
    if (taken && taken->schema == service->schema)
        lent.PutAt(next);
}

void World::Later(Store store, const Step& step, Change change)
{
    given.push_back({store, &step, std::move(change)});
}

void World::Now(Store store, const Change& change)
{
    const Faults::Pause pause(faults);
    Provide(store);
    Database database = Open(store, OpenMode::ReadWrite);
    change(database);
}

void World::WriteGiven(const std::function<void(const Step&, const std::exception&)>& failed)
{
    if (given.empty())
        return;
    const Faults::Pause pause(faults);
    const std::vector<Given> all = std::exchange(given, {});
    for (const Store store : {Store::ThisYear, Store::LastYear, Store::Reference}) {
        const Given* at = nullptr;
        try {
            std::optional<Database> database;
            std::optional<WriteBatch> batch;
            for (const Given& one : all) {
                if (one.store != store)
                    continue;
                at = &one;
                if (!database) {
                    Provide(store);
                    database.emplace(Open(store, OpenMode::ReadWrite));
                    batch.emplace(*database);
                }
                try {
                    one.change(*database);
                } catch (const std::exception& error) {
                    failed(*one.step, error);
                }
            }
            if (batch)
                batch->Commit();
        } catch (const std::exception& error) {
            failed(*at->step, error);
        }
    }
}

void World::Look(Store store, const std::function<void(Database&)>& look)
{
    const Faults::Pause pause(faults);
    Database database = Open(store, OpenMode::ReadOnly);
    look(database);
}

TableName ParseTable(const std::string& name, Store store)
{
    if (name.starts_with(ReferencePrefix))
        return {Store::Reference, name.substr(ReferencePrefix.size())};
    return {store, name};
}

bool TryPosition(Recordset& records, const std::string& table, const std::string& employer, const std::string& employee)
{
    switch (FindTable(table).level) {
    case TableLevel::Employee:
        records.Index("IndKey");
        records.Seek(employer, employee);
        return !records.NoMatch();
    case TableLevel::Employer:
        if (!employee.empty())
            throw StepFailure(table + " has one record for each employer: the employee must be \"\"");
        records.Index("PrimaryKey");
        records.Seek(employer);
        return !records.NoMatch();
    case TableLevel::Database:
        if (!employer.empty() || !employee.empty())
            throw StepFailure(table + " has one record: employer and employee must be \"\"");
        records.MoveFirst();
        return !records.AtEnd();
    case TableLevel::Reference:
        break;
    }
    throw StepFailure("the records of " + table + " belong to nobody");
}

void Position(Recordset& records, const std::string& table, const std::string& employer, const std::string& employee)
{
    if (!TryPosition(records, table, employer, employee))
        throw StepFailure("expected a record of " + table + " for " + Shown(employer) + " " + Shown(employee) +
                          ", found none");
}

} // namespace quillmere::scenario
