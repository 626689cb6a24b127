#include "frame/Screens.h"

#include "frame/Session.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace quillmere {

Screens::~Screens()
{
    Abandon();
}

Screens::EventScope::EventScope(Screens& screens) : screens(screens)
{
    if (screens.depth == 0 && screens.holdWhileBusy)
        screens.heldWhileBusy = screens.holdWhileBusy();
    ++screens.depth;
}

Screens::EventScope::~EventScope()
{
    if (--screens.depth > 0)
        return;
    screens.unloaded.clear();
    screens.heldWhileBusy.reset();
}

const Screens::KnownScreen* Screens::FindKnown(std::string_view name) const
{
    const auto found = std::ranges::find(known, name, &KnownScreen::name);
    return found == known.end() ? nullptr : &*found;
}

void Screens::Register(std::string_view name, Factory factory, Closing closing)
{
    const auto found = std::ranges::find(known, name, &KnownScreen::name);
    if (found == known.end())
        known.push_back({std::string(name), std::move(factory), closing});
    else
        found->factory = std::move(factory);
}

bool Screens::IsRegistered(std::string_view name) const
{
    return FindKnown(name) != nullptr;
}

std::vector<std::string> Screens::Registered() const
{
    std::vector<std::string> names;
    for (const KnownScreen& screen : known)
        names.push_back(screen.name);
    std::ranges::sort(names);
    return names;
}

std::unique_ptr<Screen> Screens::Make(std::string_view name) const
{
    const KnownScreen* screen = FindKnown(name);
    if (screen == nullptr)
        throw std::logic_error("no screen is named " + std::string(name));
    return screen->factory(session);
}

Screens::Slot* Screens::FindSlot(std::string_view name)
{
    const auto found = std::ranges::find_if(open, [&](const Slot& slot) { return slot.screen->Name() == name; });
    return found == open.end() ? nullptr : &*found;
}

const Screens::Slot* Screens::FindSlot(std::string_view name) const
{
    return const_cast<Screens*>(this)->FindSlot(name);
}

void Screens::Zoom(int percent)
{
    if (host != nullptr)
        host->Zoom(percent);
}

Screen* Screens::Find(std::string_view name) const
{
    const Slot* slot = FindSlot(name);
    return slot == nullptr ? nullptr : slot->screen.get();
}

Box* Screens::FindBox(std::string_view screen, std::string_view box) const
{
    Screen* found = Find(screen);
    return found == nullptr ? nullptr : found->FindBox(box);
}

Screen* Screens::Load(std::string_view name)
{
    if (Screen* loaded = Find(name))
        return loaded;
    const EventScope scope(*this);
    open.push_back(Slot{.screen = Make(name)});
    Screen* screen = open.back().screen.get();
    bool wanted = false;
    try {
        wanted = screen->Load();
    } catch (...) {
        Drop(*screen);
        throw;
    }
    if (!wanted)
        Drop(*screen);
    return Find(name);
}

void Screens::Drop(Screen& screen)
{
    std::erase_if(timers, [&](const Timer& timer) { return timer.screen == screen.Name(); });
    const auto found = std::ranges::find_if(open, [&](const Slot& slot) { return slot.screen.get() == &screen; });
    if (found == open.end())
        return;
    unloaded.push_back(std::move(found->screen));
    open.erase(found);
    for (Onlooker* onlooker : session.onlookers)
        onlooker->Closed();
}

Screen* Screens::Show(std::string_view name)
{
    const EventScope scope(*this);
    Screen* screen = Load(name);
    if (screen == nullptr)
        return nullptr;
    FindSlot(name)->shown = true;
    if (host != nullptr)
        host->Show(*screen);
    screen->Activate();
    return Find(name);
}

void Screens::Hide(std::string_view name)
{
    Slot* slot = FindSlot(name);
    if (slot == nullptr || !slot->shown)
        return;
    slot->shown = false;
    if (host != nullptr)
        host->Hide(*slot->screen);
}

bool Screens::IsShown(std::string_view name) const
{
    const Slot* slot = FindSlot(name);
    return slot != nullptr && slot->shown;
}

void Screens::LeaveBoxInUse(const Box* used)
{
    const EventScope scope(*this);
    for (Screen* screen : Open())
        screen->LeaveBoxInUse(used);
}

void Screens::WhenNoneIsModal(std::function<void()> work)
{
    afterModal.push_back(std::move(work));
    if (!IsAnyModal())
        DoAfterModal();
}

bool Screens::IsAnyModal() const
{
    return std::ranges::any_of(open,
                               [](const Slot& slot) { return slot.shown && slot.screen->Mode() == ShowMode::Modal; });
}

void Screens::DoAfterModal()
{
    for (const auto& work : std::exchange(afterModal, {}))
        work();
}

void Screens::Unload(std::string_view name)
{
    Slot* slot = FindSlot(name);
    if (slot == nullptr || slot->unloading)
        return;
    slot->unloading = true;
    const EventScope scope(*this);
    Screen* screen = slot->screen.get();
    // A step that fails is told, and the screen goes all the same: one that could never be closed would hold the end of
    // the program up.
    screen->Perform([screen] { screen->Unload(); }, "Unload");
    if (host != nullptr)
        host->Close(*screen);
    const bool wasModal = screen->Mode() == ShowMode::Modal && IsShown(screen->Name());
    Drop(*screen);
    if (!wasModal)
        return;
    if (!IsAnyModal())
        DoAfterModal();
    ActivateFront();
}

/// True for a screen that stands beside the others, and in front of none of them.
bool Screens::IsAside(const Screen& screen)
{
    return IsAtFoot(screen.Mode()) || screen.Mode() == ShowMode::Beside || screen.Mode() == ShowMode::Above;
}

void Screens::ActivateFront()
{
    // What stands beside the others takes no step when one of them has closed.
    const auto front = std::find_if(open.rbegin(), open.rend(), [](const Slot& slot) {
        return slot.shown && slot.screen->Mode() != ShowMode::Main && !IsAside(*slot.screen);
    });
    if (front != open.rend() && !front->unloading)
        front->screen->Activate();
}

void Screens::UnloadAll(Closing occasion)
{
    for (const KnownScreen& screen : known)
        if (screen.closing >= occasion)
            Unload(screen.name);
}

void Screens::Abandon()
{
    timers.clear();
    afterModal.clear();
    if (host != nullptr)
        for (const Slot& slot : open)
            host->Close(*slot.screen);
    host = nullptr;
    unloaded.clear();
    open.clear();
}

std::vector<Screen*> Screens::Open() const
{
    std::vector<Screen*> screens;
    for (const Slot& slot : open)
        screens.push_back(slot.screen.get());
    return screens;
}

void Screens::StartTimer(Screen& screen, std::string_view timer, std::function<void()> work)
{
    StopTimer(screen.Name(), timer);
    timers.push_back({screen.Name(), std::string(timer), std::move(work)});
    if (host != nullptr)
        host->WorkWaiting();
}

void Screens::StopTimer(std::string_view screen, std::string_view timer)
{
    std::erase_if(timers, [&](const Timer& waiting) { return waiting.screen == screen && waiting.name == timer; });
}

void Screens::RunDeferred()
{
    const EventScope scope(*this);
    for (std::size_t waiting = timers.size(); waiting > 0 && !timers.empty(); --waiting) {
        const Timer timer = std::move(timers.front());
        timers.pop_front();
        if (Screen* screen = Find(timer.screen))
            screen->Perform(timer.work, timer.name);
    }
}

} // namespace quillmere
