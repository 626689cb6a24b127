#include "clientdb/store/FolderMove.h"

#include "clientdb/store/DatabaseState.h"
#include "clientdb/store/FileEngine.h"
#include "clientdb/store/IdleLinks.h"
#include "clientdb/store/ServerEngine.h"
#include "clientdb/store/TableCopy.h"
#include "clientdb/store/Template.h"
#include "frame/CheckedFile.h"

#include <fmt/format.h>
#include <optional>
#include <utility>

namespace quillmere {
namespace {

void RequireWhole(const DatabaseState& state)
{
    if (!state.IsWhole())
        throw StoreError(SQLITE_CORRUPT, fmt::format("It is damaged: {}", state.faults.front()), {});
}

void RequireSame(const std::filesystem::path& database, const DatabaseState& there)
{
    const DatabaseState here = LookAtDatabase(database);
    RequireWhole(here);
    if (here != there)
        throw StoreError(SQLITE_IOERR, "Not everybody is in the file.", {});
}

/// What both ways have in common: the copying, and its figures.
class CopyingMove : public FolderMove {
public:
    bool GoOn() final
    {
        if (copy->CopyOn() || copy->CompareOn())
            return true;
        Finish();
        return false;
    }
    std::int64_t Records() const final { return copy->Records(); }
    std::int64_t Copied() const final { return copy->Copied(); }
    std::int64_t Compared() const final { return copy->Compared(); }
    std::string Remark() const final { return remark; }

protected:
    explicit CopyingMove(ServerService of) : service(std::move(of)) {}
    /// Everything is at its new place, and compared.
    virtual void Finish() = 0;
    /// Puts what the folder has moved to in the place of what it had. Once it is there, the move has happened.
    void TakePlace(const std::function<void()>& put)
    {
        try {
            put();
        } catch (const NameNotSynced& failure) {
            AddRemark(fmt::format("The disk has not confirmed it: a power cut may bring back what this folder was "
                                  "before.\n\n{}",
                                  failure.what()));
        }
    }
    void AddRemark(const std::string& more) { remark += (remark.empty() ? "" : "\n\n") + more; }

    ServerService service;
    std::optional<TableCopy> copy;

private:
    std::string remark;
};

class Sharing final : public CopyingMove {
public:
    Sharing(const ServerService& to, std::function<void()> kept)
        : CopyingMove(to), keep(std::move(kept)), file(Look(service.file), SQLITE_OPEN_READWRITE)
    {
        // Whoever would write to the file is kept out until it is no longer the database.
        file.BeginWriting();
        server = std::make_shared<ServerConnection>(service, ServerConnection::WithNewTables());
        copy.emplace(file, *server);
    }

private:
    static const std::filesystem::path& Look(const std::filesystem::path& database)
    {
        RequireWhole(LookAtDatabase(database));
        return database;
    }

    void Finish() override
    {
        keep();
        StoreThere();
        try {
            TakePlace([&] { WriteService(service); });
        } catch (const FileError&) {
            DropServerTables(service, server->HasNewSchema());
            throw;
        }
    }

    void StoreThere()
    {
        try {
            server->EndTransactionForSure();
        } catch (const OutcomeUnknown& failure) {
            throw StoreError(
                static_cast<int>(failure.Number()),
                fmt::format(
                    "It is not known whether the server has stored the copy: the connection was lost meanwhile, "
                    "and cannot be made again. The clients are in the file, and nothing of them is lost.\n\n"
                    "Before you share the folder again, have it looked whether there is a schema {0} on the "
                    "server, and have it removed; or share the folder into a schema of another name.\n\n{1}",
                    service.schema, failure.what()),
                failure.Statement());
        }
    }

    std::function<void()> keep;
    FileConnection file;
    std::shared_ptr<ServerConnection> server;
};

class Unsharing final : public CopyingMove {
public:
    Unsharing(const ServerService& from, std::string schema)
        : CopyingMove(from),
          newSchema(std::move(schema)),
          making(service.file),
          server(OpenServer(service, OpenMode::ReadWrite, nullptr))
    {
        if (!server->OwnsSchema())
            throw StoreError(
                SQLITE_READONLY,
                fmt::format("Only the owner of the schema {} can take it away from the others.", service.schema), {});
        server->BeginAlone();
        FillWithTables(making.Path());
        file.emplace(making.Path(), SQLITE_OPEN_READWRITE);
        file->BeginFilling();
        copy.emplace(*server, *file);
    }

private:
    void Finish() override
    {
        const DatabaseState there = CountIn(*server);
        copy.reset();
        file->EndTransaction();
        file.reset();
        server->RenameSchema(newSchema);
        TakePlace(
            [&] { making.TakePlace([&](const std::filesystem::path& complete) { RequireSame(complete, there); }); });
        try {
            server->EndTransactionForSure();
        } catch (const StoreError& failure) {
            AddRemark(fmt::format("On the server the tables may still be in the schema {}: {}", service.schema,
                                  failure.what()));
        }
        server->Close();
        CloseIdleServerLinks();
    }

    std::string newSchema;
    FileInMaking making;
    std::shared_ptr<ServerConnection> server;
    std::optional<FileConnection> file;
};

} // namespace

std::unique_ptr<FolderMove> ShareFolderOnServer(const ServerService& service, std::function<void()> keep)
{
    return std::make_unique<Sharing>(service, std::move(keep));
}

std::unique_ptr<FolderMove> UnshareFolder(const ServerService& service, const std::string& newSchema)
{
    return std::make_unique<Unsharing>(service, newSchema);
}

} // namespace quillmere
