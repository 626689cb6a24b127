#pragma once

#include "clientdb/store/FolderMove.h"
#include "frame/Screen.h"

#include <memory>
#include <optional>
#include <string>

namespace quillmere {

/// "Share This Folder", or "Back to a File" for one that is shared: where the clients of the selected folder are, and
/// the way to the other place.
class ShareFolder : public Screen {
public:
    explicit ShareFolder(Session& session);

    bool Load() override;

private:
    /// Shows where the clients are now.
    void Look();
    void Start();
    std::unique_ptr<FolderMove> NewMove() const;
    /// The service that the boxes name.
    ServerService Named() const;
    void GoOnLater();
    void GoOn();
    void Ended();
    void Stop();
    void ShowProgress();
    void EnableBoxes();

    std::optional<ServerService> service; ///< of a folder that is shared
    std::unique_ptr<FolderMove> move;     ///< on its way
};

/// What the menu calls it.
std::string ShareWords(Session& session);

} // namespace quillmere
