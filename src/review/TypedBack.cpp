#include "review/TypedBack.h"

#include "clientdb/BoundScreen.h"
#include "clientdb/Notepad.h"
#include "clientdb/TypedJournal.h"
#include "frame/CloseAll.h"
#include "frame/Text.h"
#include "screens/Ways.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace quillmere::review {

namespace {

using Lines = std::vector<TypedEntries::Line>;

constexpr auto Months = std::to_array<std::string_view>({"January", "February", "March", "April", "May", "June", "July",
                                                         "August", "September", "October", "November", "December"});
constexpr std::string_view Nothing = "Nothing that was typed waits to be stored";

/// Closes what offers it once nothing waits any more, else says what still does.
void ShowWhatWaits(Session& session)
{
    const bool isEmpty = session.typedJournal->Waiting().empty();
    for (const std::string_view name : {"TypedStrip", "TypedList"})
        if (Screen* offer = session.screens.Find(name); offer != nullptr && isEmpty)
            session.screens.Unload(name);
        else if (offer != nullptr)
            offer->Activate();
}

void ForgetTyped(Session& session, const Lines& lines)
{
    try {
        session.typedJournal->Forget(lines);
    } catch (const Failure& failure) {
        SetStatusNote(session, failure.what());
    }
    ShowWhatWaits(session);
}

// ---- the way back into the boxes

/// The fields of a table that a screen takes, with the boxes that take them, in the order of typing.
struct Place {
    std::string field;
    std::string box;
    int index, tab;
};

std::vector<Place> PlacesOn(const Screen& screen, std::string_view table)
{
    std::vector<Place> places;
    if (const auto* const page = dynamic_cast<const BoundScreen*>(&screen); page != nullptr && page->Table() == table)
        for (const auto& box : page->Boxes())
            if (!box->Field().empty())
                places.push_back({box->Field(), box->Name(), box->Index(), 1});
    if (const auto* const notepad = dynamic_cast<const Notepad*>(&screen);
        notepad != nullptr && notepad->Table() == table)
        for (const std::string& field : notepad->Fields())
            if (const Notepad::Shown shown = notepad->WhereShown(field); shown.box != nullptr)
                places.push_back({field, shown.box->Name(), shown.box->Index(), shown.tab});
    return places;
}

/// The lines that a screen has places for.
Lines LinesFor(const Screen& screen, const Lines& waiting)
{
    Lines lines;
    for (const TypedEntries::Line& line : waiting) {
        const std::vector<Place> places = PlacesOn(screen, line.record.table);
        if (std::ranges::find(places, line.entry.field, &Place::field) != places.end())
            lines.push_back(line);
    }
    return lines;
}

/// Types the lines of one record into the boxes of a screen, and gives those that have gone in.
Lines TypeLines(Screen& screen, const Lines& lines)
{
    Lines typed;
    Box* last = nullptr;
    for (const Place& place : PlacesOn(screen, lines.front().record.table)) {
        const auto line = std::ranges::find(lines, place.field, [](const auto& of) { return of.entry.field; });
        if (line == lines.end())
            continue;
        if (auto* notepad = dynamic_cast<Notepad*>(&screen))
            notepad->ShowTab(place.tab);
        Box* box = screen.FindBox(place.box, place.index);
        if (box == nullptr || !box->Enabled() || box->ReadOnly())
            continue;
        screen.TypeIn(*box, line->entry.typed);
        typed.push_back(*line);
        last = box;
    }
    if (last != nullptr)
        screen.Focus(*last);
    return typed;
}

std::string CountOfBoxes(std::size_t count)
{
    return fmt::format("{} {}", count, count == 1 ? "box" : "boxes");
}

} // namespace

void OfferTyped(Session& session)
{
    Lines waiting;
    try {
        waiting = session.typedJournal->Waiting();
    } catch (const Failure&) {
        // It waits on, and whoever asks for it is told.
    }
    if (waiting.empty())
        return;
    session.screens.Show("TypedStrip");
    // A strip without the focus is not spoken, but what the status bar says is.
    SetStatusNote(session, WordsOfWaiting(waiting));
}

void ShowTyped(Session& session)
{
    if (session.typedJournal->Waiting().empty())
        SetStatusNote(session, Nothing);
    else
        session.screens.Show("TypedList");
}

void BringTypedBack(Session& session)
{
    Lines waiting = session.typedJournal->Waiting(), back;
    for (const std::string_view name : ReachedScreens()) {
        const Lines lines = LinesFor(*session.screens.Make(name), waiting);
        Screen* const screen = lines.empty() ? nullptr : Reach(session.screens, name);
        if (screen == nullptr)
            continue;
        const Lines typed = TypeLines(*screen, lines);
        std::erase_if(waiting, [&](const auto& line) { return std::ranges::find(typed, line) != typed.end(); });
        back.insert(back.end(), typed.begin(), typed.end());
        // What follows a notepad waits until that is closed.
        if (screen->Mode() == ShowMode::Modal)
            break;
    }
    ForgetTyped(session, back);
    if (!back.empty())
        SetStatusNote(session, fmt::format("{} brought back, to be stored", CountOfBoxes(back.size())));
}

std::string WordsOfWaiting(const Lines& waiting)
{
    std::string last;
    for (const TypedEntries::Line& line : waiting)
        last = std::max(last, line.entry.moment);
    const std::size_t count = waiting.size();
    std::string when = "earlier";
    constexpr std::string_view form = "yyyy-mm-dd hh:mm";
    if (last.size() >= form.size())
        if (const int month = std::atoi(last.substr(5, 2).c_str()); month >= 1 && month <= 12)
            when = fmt::format("on {} {} {}", std::atoi(last.substr(8, 2).c_str()),
                               Months.at(static_cast<std::size_t>(month) - 1), last.substr(11, 5));
    return fmt::format("{} typed {} {} not stored", CountOfBoxes(count), when, count == 1 ? "was" : "were");
}

// ---- TypedStrip

TypedStrip::TypedStrip(Session& session) : Screen(session, "TypedStrip", ShowMode::Strip, "Typed and not stored")
{
    // It stands beside a page, whose letters and those of the menus it leaves alone.
    static constexpr auto Rows = std::to_array<BoxRow>({
        {.name = "StripWords", .kind = BoxKind::Label},
        {.name = "StripShow", .kind = BoxKind::Button, .text = "Sho&w"},
        {.name = "StripBack", .kind = BoxKind::Button, .text = "B&ring Back"},
        {.name = "StripForget", .kind = BoxKind::Button, .text = "Forge&t"},
    });
    AddBoxes(Rows);
    OnClick("StripShow", [this](Box&) { ShowTyped(this->session); });
    OnClick("StripBack", [this](Box&) { BringTypedBack(this->session); });
    OnClick("StripForget", [this](Box&) { ForgetTyped(this->session, this->session.typedJournal->Waiting()); });
}

void TypedStrip::Activate()
{
    box("StripWords").SetText(WordsOfWaiting(session.typedJournal->Waiting()));
}

// ---- TypedList

TypedList::TypedList(Session& session) : Screen(session, "TypedList", ShowMode::Window, "Typed and not stored")
{
    static constexpr auto Rows = std::to_array<BoxRow>({
        TableBoxRow("TypedLines", "What was typed and not stored", "Where\tBox\tTyped\tStored"),
        {.name = "TypedWords", .kind = BoxKind::Label},
        {.name = "TypedBack", .kind = BoxKind::Button, .text = "&Bring Back"},
        {.name = "TypedForget", .kind = BoxKind::Button, .text = "&Forget"},
        {.name = "TypedClose", .kind = BoxKind::Button, .text = "&Close"},
    });
    AddBoxes(Rows);
    SetButtons("TypedClose", {});
    OnClick("TypedBack", [this](Box&) { BringTypedBack(this->session); });
    OnClick("TypedForget", [this](Box&) { ForgetTyped(this->session, this->session.typedJournal->Waiting()); });
}

bool TypedList::Load()
{
    words.emplace(session.screens);
    return true;
}

void TypedList::Activate()
{
    const Lines waiting = session.typedJournal->Waiting();
    std::vector<std::string> lines;
    for (const auto& [record, entry, desk] : waiting)
        if (const FieldWords::Words* const of = words->Of(record.table, entry.field))
            lines.push_back(fmt::format("{}\t{}\t{}\t{}", of->place, of->box, Trim(entry.typed), Trim(entry.stored)));
    box("TypedLines").SetEntries(std::move(lines));
    box("TypedLines").Select(waiting.empty() ? -1 : 0);
    box("TypedWords").SetText(WordsOfWaiting(waiting));
}

} // namespace quillmere::review
