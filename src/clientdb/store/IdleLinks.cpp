#include "clientdb/store/IdleLinks.h"

#include "clientdb/store/Presence.h"

#include <map>
#include <string>
#include <utility>

namespace quillmere {
namespace {

/// By what they are connected to.
using IdleLinks = std::multimap<std::string, std::unique_ptr<ServerLink>>;

IdleLinks& Idle()
{
    static IdleLinks idle;
    return idle;
}

} // namespace

std::unique_ptr<ServerLink> TakeLink(const ServerService& service)
{
    const std::string key = service.Key();
    for (auto found = Idle().find(key); found != Idle().end(); found = Idle().find(key)) {
        std::unique_ptr<ServerLink> link = std::move(found->second);
        Idle().erase(found);
        if (link->IsAlive())
            return link;
    }
    return std::make_unique<ServerLink>(service);
}

void KeepLink(const ServerService& service, std::unique_ptr<ServerLink> link)
{
    Idle().emplace(service.Key(), std::move(link));
}

void SilenceIdleLinks(const ServerService& service)
{
    const auto [first, last] = Idle().equal_range(service.Key());
    for (auto idle = first; idle != last;)
        try {
            SayPresence(*idle->second, Presence());
            ++idle;
        } catch (const StoreError&) {
            idle = Idle().erase(idle); // it is lost, and says nothing any more
        }
}

void CloseIdleServerLinks()
{
    Idle().clear();
}

} // namespace quillmere
