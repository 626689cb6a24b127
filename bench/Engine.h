#pragma once

#include "clientdb/store/FolderMove.h"
#include "clientdb/store/IdleLinks.h"
#include "clientdb/store/ServerEngine.h"
#include "support/PrivateServer.h"

#include <filesystem>
#include <fmt/format.h>
#include <map>

/// The engine that a benchmark is about: a file, or a private server whose writes are on the disk like the file's
/// (QUILLMERE_ENGINE=server).
namespace quillmere::bench {

/// Has the tables of a client database in a file go to the server, if that is asked for; the file then names them.
inline void PutOnEngine(const std::filesystem::path& file)
{
    if (!test::OnServer())
        return;
    static test::PrivateServer server(test::PrivateServer::Sync::On);
    static int schemas = 0;
    const auto move = ShareFolderOnServer(server.Service(file, fmt::format("bench{}", ++schemas)), [] {});
    while (move->GoOn()) {
    }
    // Connections to what is not asked for any more would come to more than the server takes.
    CloseIdleServerLinks();
}

/// A database that has been made in a file, on the engine: the file itself, or what a copy of it names.
inline const std::filesystem::path& OnEngine(const std::filesystem::path& file)
{
    if (!test::OnServer())
        return file;
    static std::map<std::filesystem::path, std::filesystem::path> shared;
    const auto [found, isNew] = shared.try_emplace(file, file.string() + "-shared");
    if (isNew) {
        std::filesystem::copy_file(file, found->second);
        PutOnEngine(found->second);
    }
    return found->second;
}

} // namespace quillmere::bench
