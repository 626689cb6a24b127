#include "support/PrivateServer.h"

#include "clientdb/store/IdleLinks.h"
#include "clientdb/store/ServerEngine.h"
#include "clientdb/store/ServerSchema.h"
#include "clientdb/store/Template.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fmt/format.h>
#include <grp.h>
#include <optional>
#include <pwd.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace quillmere::test {
namespace {

constexpr std::string_view Programs = "/usr/lib/postgresql/15/bin/";
constexpr std::string_view User = "quillmere";

/// The server refuses to work for root.
const passwd* SomebodyElse()
{
    if (::geteuid() != 0)
        return nullptr;
    const passwd* user = ::getpwnam("postgres");
    return user != nullptr ? user : ::getpwnam("nobody");
}

/// Starts a program of the server's as a user that may, with its words in a file.
pid_t StartProgram(const std::string& program, std::vector<std::string> arguments, const std::filesystem::path& words)
{
    arguments.insert(arguments.begin(), std::string(Programs) + program);
    std::vector<char*> raw;
    for (std::string& argument : arguments)
        raw.push_back(argument.data());
    raw.push_back(nullptr);
    const passwd* const user = SomebodyElse();
    const pid_t child = ::fork();
    if (child != 0)
        return child;
    if (user != nullptr && (::setgroups(0, nullptr) != 0 || ::setgid(user->pw_gid) != 0 || ::setuid(user->pw_uid) != 0))
        ::_exit(126);
    // Nothing stays behind where the tests are killed.
    ::prctl(PR_SET_PDEATHSIG, SIGQUIT);
    const int out = ::open(words.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
    ::dup2(out, STDOUT_FILENO);
    ::dup2(out, STDERR_FILENO);
    if (::chdir("/") != 0)
        ::_exit(126);
    ::execv(raw[0], raw.data());
    ::_exit(127);
}

int Wait(pid_t child)
{
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

PrivateServer::PrivateServer(Sync keep) : sync(keep)
{
    // Connections that wait must not outlive what they lead to, nor end behind the list of them.
    CloseIdleServerLinks();
    std::filesystem::permissions(folder.path, std::filesystem::perms::all);
    if (const passwd* const user = SomebodyElse())
        if (::chown(folder.path.c_str(), user->pw_uid, user->pw_gid) != 0)
            throw std::runtime_error("The folder of the server cannot be given away");
    const int made = Wait(StartProgram("initdb",
                                       {"-D", folder / "data", "-U", std::string(User), "-A", "trust", "-E", "UTF8",
                                        "--locale=C", "--no-sync", "--no-instructions"},
                                       folder / "words"));
    if (made != 0)
        throw std::runtime_error("initdb failed: " + Content(folder / "words"));
    // Everybody is trusted but for one role.
    Store(folder / "data/pg_hba.conf", "local all locked scram-sha-256\n" + Content(folder / "data/pg_hba.conf"));
    Start();
}

PrivateServer::~PrivateServer()
{
    CloseIdleServerLinks();
    Kill();
}

void PrivateServer::Start()
{
    const char* const durable = sync == Sync::On ? "on" : "off";
    server = StartProgram("postgres",
                          {"-D", folder / "data", "-k", folder.path, "-h", "", "-c", "max_connections=200", "-c",
                           fmt::format("fsync={}", durable), "-c", fmt::format("synchronous_commit={}", durable), "-c",
                           fmt::format("full_page_writes={}", durable), "-c", "shared_buffers=64MB", "-c",
                           "autovacuum_naptime=10s"},
                          folder / "words");
    for (int tries = 0; tries < 600; ++tries) {
        try {
            const ServerLink link(Service({}, "public"));
            return;
        } catch (const StoreError&) {
            ::usleep(50'000);
        }
    }
    throw std::runtime_error("The server does not come up: " + Content(folder / "words"));
}

void PrivateServer::Kill()
{
    if (server <= 0)
        return;
    ::kill(server, SIGQUIT);
    Wait(server);
    server = 0;
}

ServerService PrivateServer::Service(const std::filesystem::path& file, const std::string& schema) const
{
    return {.file = file,
            .settings = {{"host", folder.path.string()}, {"dbname", "postgres"}, {"user", std::string(User)}},
            .schema = schema};
}

bool OnServer()
{
    const char* const engine = std::getenv("QUILLMERE_ENGINE");
    return engine != nullptr && std::string_view(engine) == "server";
}

PrivateServer& SharedServer()
{
    static PrivateServer server;
    return server;
}

namespace {

/// Makes tables on the server of this process and says in which schema.
std::string NewTables()
{
    static int schemas = 0;
    std::string schema = fmt::format("clients{}", ++schemas);
    CreateServerTables(SharedServer().Service({}, schema));
    return schema;
}

/// What has been lent and given back, to be emptied before it is lent again.
std::vector<std::string>& GivenBack()
{
    static std::vector<std::string> schemas;
    return schemas;
}

/// Empties the tables and begins all their numbers anew.
void Empty(const std::string& schema)
{
    ServerLink link(SharedServer().Service({}, schema));
    const std::string words = R"(DO $$
DECLARE
    it text;
BEGIN
    FOR it IN SELECT relname FROM pg_class WHERE relnamespace = current_schema()::regnamespace AND relkind = 'r' LOOP
        EXECUTE format('DELETE FROM %I', it);
    END LOOP;
    FOR it IN SELECT relname FROM pg_class WHERE relnamespace = current_schema()::regnamespace AND relkind = 'S' LOOP
        PERFORM setval(format('%I', it)::regclass, 1, false);
    END LOOP;
END $$)";
    link.Send(words, words, {}, false);
    const std::string currencies = CreateCurrencies();
    static_cast<void>(link.Wait(link.Send(currencies, currencies, {}, true)));
}

} // namespace

LentDatabases::~LentDatabases()
{
    GivenBack().insert(GivenBack().end(), schemas.begin(), schemas.end());
}

void LentDatabases::PutAt(const std::filesystem::path& file)
{
    // Those that wait for the databases of earlier tests would come to more than the server takes.
    CloseIdleServerLinks();
    if (GivenBack().empty()) {
        schemas.push_back(NewTables());
    } else {
        schemas.push_back(GivenBack().back());
        GivenBack().pop_back();
        Empty(schemas.back());
    }
    ServerService service = SharedServer().Service(file, schemas.back());
    service.settings.insert(service.settings.end(), settings.begin(), settings.end());
    WriteService(service);
}

void LentDatabases::MakeEmptyAt(const std::filesystem::path& file)
{
    const std::optional<ServerService> there = ReadService(file);
    if (there && std::ranges::find(schemas, there->schema) != schemas.end())
        Empty(there->schema);
    else
        PutAt(file);
}

void PutEmptyDatabase(const std::filesystem::path& file)
{
    static const TemporaryFolder templates;
    const std::filesystem::path empty = templates.path / "template";
    if (!std::filesystem::exists(empty))
        CreateTables(empty);
    std::filesystem::copy_file(empty, file);
}

} // namespace quillmere::test
