#pragma once

#include "clientdb/store/ServerLink.h"
#include "clientdb/store/ServerService.h"

#include <memory>

/// Connections that wait for the next opening. A database is opened for each operation, and connecting takes longer
/// than most of them; so these are the one thing of the store that outlives a closing.
namespace quillmere {

/// One that waits for the service and is alive, or else a new one. Throws StoreError.
std::unique_ptr<ServerLink> TakeLink(const ServerService& service);

/// Lets a connection wait for the next opening.
void KeepLink(const ServerService& service, std::unique_ptr<ServerLink> link);

/// The connections that wait for the service say no longer what this desk is at; nobody waits for that.
void SilenceIdleLinks(const ServerService& service);

/// Ends the connections that wait.
void CloseIdleServerLinks();

} // namespace quillmere
