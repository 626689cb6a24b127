#pragma once

#include "Compare.h"
#include "Faults.h"
#include "Script.h"
#include "clientdb/store/Recordset.h"
#include "frame/Session.h"
#include "support/PrivateServer.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillmere::scenario {

/// Which database a step speaks of.
enum class Store { ThisYear, LastYear, Reference };

/// The files that a scenario plays with: a family root of its own with this year's program folder in it.
class World {
public:
    /// `resources` holds the empty client database that is copied into the program folder, beside an empty reference
    /// database; `root` is made, and goes with the world, unless it is to be kept: then what lies in it is not touched.
    World(const std::filesystem::path& resources, const std::filesystem::path& root, bool keepRoot = false);
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    ~World();

    const std::filesystem::path& Program() const { return program; }
    /// While the program is up its own settings say where the client folder is, else the settings file does.
    void SetSession(const Session* running) { session = running; }
    Places GetPlaces() const;
    /// A name of a step as a path: one that does not begin at the top begins in the program folder.
    std::filesystem::path File(std::string_view name) const;

    /// Where client databases are on a server, the next folder gets tables of its own.
    void ProvideTables();

    void WriteLines(const std::filesystem::path& file, const std::vector<std::string>& lines) const;
    std::vector<std::string> ReadLines(const std::filesystem::path& file) const;

    using Change = std::function<void(Database&)>;
    /// Writes into a database: later, together with what else is given before the start, or at once.
    void Later(Store store, const Step& step, Change change);
    void Now(Store store, const Change& change);
    /// Writes what was given; tells of what failed by the step that gave it.
    void WriteGiven(const std::function<void(const Step&, const std::exception&)>& failed);

    /// Opens the database for looking into it.
    void Look(Store store, const std::function<void(Database&)>& look);

    Faults& GetFaults() { return faults; }
    /// The server of this world alone, started by the first question.
    test::PrivateServer& Server();
    /// Another desk has an employee of the shared folder open, or for an empty name nobody any more.
    void OpenAtOtherDesk(std::string_view desk, std::string_view employer, std::string_view employee);

private:
    std::filesystem::path DatabaseFile(Store store) const;
    Database Open(Store store, OpenMode mode) const;
    /// Makes the database, and last year's settings file, if they are not there.
    void Provide(Store store);
    std::filesystem::path ClientFolder() const;

    struct Given {
        Store store;
        const Step* step;
        Change change;
    };
    std::filesystem::path resources;
    std::filesystem::path root, program;
    bool keepRoot;
    const Session* session = nullptr;
    std::vector<Given> given;
    Faults faults;
    std::optional<test::PrivateServer> server;
    // Who holds a lock here never gives it up meanwhile, so nobody waits for it any longer than is sure to do.
    test::LentDatabases lent{{{"options", "-c lock_timeout=50"}}};
    std::optional<Database> otherDesk;
};

/// Takes "CarC02:Figures" apart.
struct TableName {
    Store store = Store::ThisYear;
    std::string table;
};
TableName ParseTable(const std::string& name, Store store);

/// Puts a cursor on the record of an employer or employee. Throws StepFailure if there is none.
void Position(Recordset& records, const std::string& table, const std::string& employer, const std::string& employee);
/// The same, but false if there is none.
[[nodiscard]] bool TryPosition(Recordset& records, const std::string& table, const std::string& employer,
                               const std::string& employee);

} // namespace quillmere::scenario
