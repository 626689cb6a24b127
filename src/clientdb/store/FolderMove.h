#pragma once

#include "clientdb/store/ServerService.h"
#include "clientdb/store/StoreErrors.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace quillmere {

/// A client folder on its way from a file to a server, or back. It goes in pieces; whoever drops one that has not come
/// to its end leaves the folder as it was, and so does every failure. Others read meanwhile, and cannot write.
class FolderMove {
public:
    FolderMove() = default;
    virtual ~FolderMove() = default;
    FolderMove(const FolderMove&) = delete;
    FolderMove& operator=(const FolderMove&) = delete;

    /// Does the next piece. False once the folder has moved. Throws StoreError, FileError, and what the keeping throws.
    virtual bool GoOn() = 0;
    /// How many records there are to copy and compare, and how many of each have been.
    virtual std::int64_t Records() const = 0;
    virtual std::int64_t Copied() const = 0;
    virtual std::int64_t Compared() const = 0;
    /// What has been left undone with the folder that has moved, in words; empty for nothing.
    virtual std::string Remark() const { return {}; }
};

/// Moves the tables of a file to a server: a schema that is not there yet, or is empty. What is `kept` before the
/// service takes the place of the file is the caller's: a copy of the file. Throws StoreError.
std::unique_ptr<FolderMove> ShareFolderOnServer(const ServerService& service, std::function<void()> keep);

/// Moves the tables of a shared folder into a file, which takes the place of the service. What is on the server stays
/// there, in the schema under another name. Throws StoreError and FileError.
std::unique_ptr<FolderMove> UnshareFolder(const ServerService& service, const std::string& newSchema);

} // namespace quillmere
