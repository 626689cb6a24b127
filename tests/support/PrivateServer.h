#pragma once

#include "clientdb/store/ServerService.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

/// A database server of the tests' own: its data lie in a folder that goes away, and it is reached by a socket there.
namespace quillmere::test {

class PrivateServer {
public:
    /// Whether what the server says is stored has to be on the disk. Tests that kill nobody need not wait for it.
    enum class Sync { Off, On };

    /// Makes the data and starts the server, as a user that is not root. Throws std::runtime_error.
    explicit PrivateServer(Sync sync = Sync::Off);
    ~PrivateServer();
    PrivateServer(const PrivateServer&) = delete;
    PrivateServer& operator=(const PrivateServer&) = delete;

    /// What a service file says of a schema here.
    ServerService Service(const std::filesystem::path& file, const std::string& schema) const;

    /// The folder of its socket, by which it is reached as the user "quillmere" in the database "postgres".
    const std::filesystem::path& Socket() const { return folder.path; }

    void Start();
    /// Ends the server at once, as if its machine had lost its power, but that the disk has what was written.
    void Kill();

private:
    TemporaryFolder folder;
    Sync sync;
    pid_t server = 0;
};

/// True if the tests are to keep their client databases on a server (QUILLMERE_ENGINE=server).
bool OnServer();

/// Puts an empty client database at a path where there is none: a copy of the template.
void PutEmptyDatabase(const std::filesystem::path& file);

/// Empty client databases on the private server of this process, each lent for as long as this lives: making the tables
/// takes much longer than emptying them, so they are lent again.
class LentDatabases {
public:
    /// What their services say besides.
    explicit LentDatabases(std::vector<ServerService::Setting> more = {}) : settings(std::move(more)) {}
    ~LentDatabases();
    LentDatabases(const LentDatabases&) = delete;
    LentDatabases& operator=(const LentDatabases&) = delete;

    /// Puts the file at a path that names one of them.
    void PutAt(const std::filesystem::path& file);
    /// Empties the one that the file at a path names, or puts one there.
    void MakeEmptyAt(const std::filesystem::path& file);

private:
    std::vector<ServerService::Setting> settings;
    std::vector<std::string> schemas;
};

/// The private server of this process, which the first question starts.
PrivateServer& SharedServer();

} // namespace quillmere::test
