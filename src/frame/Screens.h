#pragma once

#include "frame/Screen.h"

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// Puts screens on the desktop. Without one (in tests of a single screen) nothing is seen, all else is the same.
class ScreenHost {
public:
    ScreenHost() = default;
    ScreenHost(const ScreenHost&) = delete;
    ScreenHost& operator=(const ScreenHost&) = delete;
    virtual ~ScreenHost() = default;
    /// Makes the window if there is none yet, and brings it to the front.
    virtual void Show(Screen& screen) = 0;
    virtual void Hide(Screen& screen) = 0;
    virtual void Close(Screen& screen) = 0;
    /// There is deferred work: call RunDeferred as soon as the windows are up.
    virtual void WorkWaiting() = 0;
    /// Every window is to show at so many percent of its own size.
    virtual void Zoom(int /*percent*/) {}
};

/// On which occasions a screen is closed along with others.
enum class Closing {
    ByItself,   ///< on none
    WithAll,    ///< when something else than this employee is worked on
    WithOpened, ///< then, and when an employee has just been opened
};

/// The screens that are open. They are made on demand by name, so that one screen can open another without knowing its
/// class, and live until they are unloaded.
class Screens {
public:
    using Factory = std::function<std::unique_ptr<Screen>(Session&)>;

    explicit Screens(Session& session) : session(session) {}
    Screens(const Screens&) = delete;
    Screens& operator=(const Screens&) = delete;
    ~Screens();

    /// The order of registration is the order of closing. One that is known gets another factory and keeps its place.
    void Register(std::string_view name, Factory factory, Closing closing = Closing::ByItself);
    bool IsRegistered(std::string_view name) const;
    /// Names of all registered screens, in alphabetical order.
    std::vector<std::string> Registered() const;
    /// A screen as its class makes it, neither loaded nor kept: for looking at its controls.
    std::unique_ptr<Screen> Make(std::string_view name) const;
    void SetHost(ScreenHost* newHost) { host = newHost; }
    /// Shows all windows, and those to come, at so many percent of the desktop's size.
    void Zoom(int percent);

    /// The screen if it is loaded, else nothing.
    Screen* Find(std::string_view name) const;
    /// The loaded screen of a class, or of a name and a class, else nothing.
    template<class S>
    S* Find() const
    {
        for (const Slot& slot : open)
            if (auto* screen = dynamic_cast<S*>(slot.screen.get()))
                return screen;
        return nullptr;
    }
    template<class S>
    S* Find(std::string_view name) const
    {
        return dynamic_cast<S*>(Find(name));
    }
    /// The box of a loaded screen, else nothing.
    Box* FindBox(std::string_view screen, std::string_view box) const;
    /// The screen, made and run through its load step if it is not loaded yet, without showing it.
    /// Nothing if its load step decided against it.
    Screen* Load(std::string_view name);
    /// The same for a screen whose class is known by name.
    template<class S>
    S* Load(std::string_view name)
    {
        return dynamic_cast<S*>(Load(name));
    }
    /// Loads the screen if need be, shows it in front and runs its activate step.
    Screen* Show(std::string_view name);
    void Hide(std::string_view name);
    bool IsShown(std::string_view name) const;
    /// Before anything is done that closes, hides, stores or prints what is open: what has just been typed is checked,
    /// put in form and worked out, although the focus stays in its box. `used` is the control that is being used.
    void LeaveBoxInUse(const Box* used = nullptr);
    /// Does the work as soon as no modal screen is in front: at once, or when the last of them has closed.
    void WhenNoneIsModal(std::function<void()> work);
    /// Runs the unload step and closes the screen; nothing happens if it is not loaded.
    void Unload(std::string_view name);
    /// Unloads the screens that are closed on that occasion.
    void UnloadAll(Closing occasion);
    /// Drops every screen without its unload step: the end of the process.
    void Abandon();

    /// Loaded screens in the order of loading.
    std::vector<Screen*> Open() const;

    /// A one-shot timer of a screen: its work is done once the windows are up. Started again before that, it has
    /// only the new work to do.
    void StartTimer(Screen& screen, std::string_view timer, std::function<void()> work);
    void StopTimer(std::string_view screen, std::string_view timer);
    /// Does the deferred work that is waiting, in the order of starting. What it starts anew waits for the next time,
    /// so that a long work in slices leaves room for keys.
    void RunDeferred();
    bool HasDeferred() const { return !timers.empty(); }

    /// True while an event of a screen runs, in a message box that it shows too.
    bool IsBusy() const { return depth > 0; }

    /// What `hold` gives is kept while an event of a screen runs.
    void HoldWhileBusy(std::function<std::shared_ptr<void>()> hold) { holdWhileBusy = std::move(hold); }

    /// Held while an event of a screen runs: screens unloaded meanwhile live until the outermost event has ended.
    class EventScope {
    public:
        explicit EventScope(Screens& screens);
        ~EventScope();
        EventScope(const EventScope&) = delete;
        EventScope& operator=(const EventScope&) = delete;

    private:
        Screens& screens;
    };

private:
    struct Slot {
        std::unique_ptr<Screen> screen;
        bool shown = false;
        bool unloading = false;
    };
    struct KnownScreen {
        std::string name;
        Factory factory;
        Closing closing;
    };
    struct Timer {
        std::string screen, name;
        std::function<void()> work;
    };
    const KnownScreen* FindKnown(std::string_view name) const;
    Slot* FindSlot(std::string_view name);
    const Slot* FindSlot(std::string_view name) const;
    bool IsAnyModal() const;
    void DoAfterModal();
    static bool IsAside(const Screen& screen);
    void ActivateFront();
    void Drop(Screen& screen);

    Session& session;
    ScreenHost* host = nullptr;
    std::vector<KnownScreen> known;
    std::vector<Slot> open;
    std::vector<std::unique_ptr<Screen>> unloaded;
    std::deque<Timer> timers;
    std::vector<std::function<void()>> afterModal;
    std::function<std::shared_ptr<void>()> holdWhileBusy;
    std::shared_ptr<void> heldWhileBusy;
    int depth = 0;
};

} // namespace quillmere
