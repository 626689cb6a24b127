#include "frame/Screen.h"

#include "frame/CloseAll.h"
#include "frame/Session.h"
#include "frame/Text.h"

#include <algorithm>
#include <stdexcept>

namespace quillmere {

namespace {

/// Line ends and the like, which a paste may bring along: they have no place in a box of one line, and would part a
/// name or a path in two where it is kept in a file of lines. Backspace is a key that the boxes know.
constexpr bool IsControl(char32_t key)
{
    constexpr char32_t Backspace = 8, Delete = 0x7F, LastControl = 0x9F;
    constexpr char32_t LineSeparator = 0x2028, ParagraphSeparator = 0x2029;
    return (key < U' ' && key != Backspace) || (key >= Delete && key <= LastControl) || key == LineSeparator ||
           key == ParagraphSeparator;
}

} // namespace

Screen::Screen(Session& session, std::string_view name, ShowMode mode, std::string_view caption)
    : session(session), name(name), mode(mode), caption(caption)
{
}

Screen::~Screen() = default;

void Screen::SetCaption(std::string_view newCaption)
{
    caption = newCaption;
    if (view != nullptr)
        view->CaptionChanged();
}

void Screen::AddBoxes(std::span<const BoxRow> rows)
{
    for (const BoxRow& row : rows) {
        if (row.last < row.first) {
            AddBox(row, std::string(row.name));
            continue;
        }
        for (int index = row.first; index <= row.last; ++index)
            AddBox(row, std::string(row.name), index);
    }
}

Box& Screen::AddBox(const BoxRow& row, std::string boxName, int index)
{
    auto made = std::make_unique<Box>(*this, row, std::move(boxName), index);
    Box& added = *made;
    if (!byName.emplace(std::pair(added.Name(), index), &added).second)
        throw std::logic_error(name + ": two controls are named " + added.FullName());
    boxes.push_back(std::move(made));
    return added;
}

Box* Screen::FindBox(std::string_view boxName, int index)
{
    const auto found = byName.find(std::pair<std::string, int>(boxName, index));
    return found == byName.end() ? nullptr : found->second;
}

const Box* Screen::FindBox(std::string_view boxName, int index) const
{
    return const_cast<Screen*>(this)->FindBox(boxName, index);
}

Box& Screen::box(std::string_view boxName, int index)
{
    if (Box* found = FindBox(boxName, index))
        return *found;
    throw std::logic_error(name + " has no control " + std::string(boxName) +
                           (index == Box::NoIndex ? "" : "(" + std::to_string(index) + ")"));
}

const Box& Screen::box(std::string_view boxName, int index) const
{
    return const_cast<Screen*>(this)->box(boxName, index);
}

std::string Screen::Known(std::string_view boxName) const
{
    if (std::ranges::find(boxes, boxName, [](const auto& control) -> std::string_view { return control->Name(); }) ==
        boxes.end())
        throw std::logic_error(name + " has no control " + std::string(boxName));
    return std::string(boxName);
}

void Screen::OnLeave(std::string_view boxName, Operation operation)
{
    leaveOperations.insert_or_assign(Known(boxName), std::move(operation));
}

void Screen::OnClick(std::string_view boxName, Operation operation)
{
    clickOperations.insert_or_assign(Known(boxName), std::move(operation));
}

void Screen::OnDoubleClick(std::string_view boxName, Operation operation)
{
    doubleClickOperations.insert_or_assign(Known(boxName), std::move(operation));
}

void Screen::OnChoose(std::string_view boxName, Operation operation)
{
    chooseOperations.insert_or_assign(Known(boxName), std::move(operation));
}

void Screen::OnSelect(std::string_view boxName, Operation operation)
{
    selectOperations.insert_or_assign(Known(boxName), std::move(operation));
}

void Screen::OnSort(std::string_view boxName, Operation operation)
{
    sortOperations.insert_or_assign(Known(boxName), std::move(operation));
}

void Screen::OnType(std::string_view boxName, Operation operation)
{
    typeOperations.insert_or_assign(std::string(boxName), std::move(operation));
}

void Screen::OnKey(std::string_view boxName, std::function<Guard(Box&)> guard)
{
    keyGuards.insert_or_assign(Known(boxName), std::move(guard));
}

void Screen::Guarded(const std::function<void()>& operation, const Box* box, std::string_view event)
{
    const Screens::EventScope scope(session.screens);
    try {
        operation();
    } catch (const std::exception& error) {
        std::string procedure = name;
        if (box != nullptr)
            procedure += " - " + box->FullName();
        procedure.append(" - ").append(event);
        ReportError(procedure, error);
    }
}

void Screen::ReportError(std::string_view procedure, const std::exception& error)
{
    session.messages.ReportError(procedure, error);
}

void Screen::Run(const std::unordered_map<std::string, Operation>& operations, Box& box, std::string_view event)
{
    const auto found = operations.find(box.Name());
    if (found != operations.end())
        Guarded([&] { found->second(box); }, &box, event);
}

char32_t Screen::Key(Box& box, char32_t key)
{
    const std::u32string passed = Keys(box, {&key, 1});
    return passed.empty() ? 0 : passed.front();
}

std::u32string Screen::Keys(Box& box, std::u32string_view keys)
{
    Guard verdict = Guard::Filters;
    if (const auto guard = keyGuards.find(box.Name()); guard != keyGuards.end() && !keys.empty()) {
        verdict = Guard::Drops;
        Guarded([&] { verdict = guard->second(box); }, &box, "KeyPress");
    }
    std::u32string passed;
    if (verdict != Guard::Drops)
        for (const char32_t key : keys)
            if (const char32_t let = Passed(box, key, verdict == Guard::Filters))
                passed += let;
    return passed;
}

/// One character through the box's filter; 0 for none.
char32_t Screen::Passed(const Box& box, char32_t key, bool filters)
{
    KeyVerdict verdict{.key = key};
    if (filters && box.Filter() != nullptr)
        verdict = box.Filter()(key);
    if (verdict.beep)
        session.platform.Beep();
    return IsControl(verdict.key) ? 0 : verdict.key;
}

void Screen::Enter(Box& box)
{
    inUse = &box;
    left = false;
    for (Onlooker* onlooker : session.onlookers)
        onlooker->Entered(*this, box);
}

/// What leaving the box does; who looks on hears which entries it has rewritten.
void Screen::RunLeave(Box& box)
{
    if (session.onlookers.empty() || box.Kind() != BoxKind::Text) {
        Run(leaveOperations, box, "LostFocus");
        return;
    }
    const Screens::EventScope scope(session.screens);
    std::vector<Rewritten> entries;
    for (const auto& entered : boxes) {
        const bool isText = entered->Kind() == BoxKind::Text && !entered->ReadOnly();
        if (entered->Visible() && (isText || entered->Kind() == BoxKind::Tick))
            entries.push_back({entered.get(), entered->Stored()});
    }
    Run(leaveOperations, box, "LostFocus");
    std::erase_if(entries, [](const Rewritten& entry) { return entry.box->Stored() == entry.before; });
    for (Onlooker* onlooker : session.onlookers)
        onlooker->Left(*this, box, entries);
}

void Screen::Typed(Box& box)
{
    box.MarkByHand();
    Run(typeOperations, box, "Change");
    TellTyped();
}

void Screen::TellTyped() const
{
    for (Onlooker* onlooker : session.onlookers)
        onlooker->Typed();
}

void Screen::TypeIn(Box& box, std::string_view entry)
{
    const Screens::EventScope scope(session.screens);
    if (box.Kind() == BoxKind::Tick) {
        if (box.Stored() != entry)
            Click(box);
        return;
    }
    if (box.Kind() == BoxKind::DropDown) {
        if (const auto found = std::ranges::find(box.Entries(), entry); found != box.Entries().end())
            Choose(box, static_cast<int>(found - box.Entries().begin()));
        return;
    }
    Enter(box);
    box.SetText(Utf8(Keys(box, CodePoints(Trim(entry)))));
    Typed(box);
    Leave(box);
}

void Screen::UseList(Box& box, const std::function<std::string()>& work)
{
    const Screens::EventScope scope(session.screens);
    session.screens.LeaveBoxInUse();
    Guarded([&] { SetStatusNote(session, work()); }, &box, "List");
    Enter(box);
}

void Screen::Leave(Box& box)
{
    const bool isLeft = inUse == &box && left;
    if (inUse == &box)
        inUse = nullptr;
    if (!isLeft)
        RunLeave(box);
}

void Screen::LeaveBoxInUse(const Box* used)
{
    if (inUse == nullptr || inUse == used || left)
        return;
    left = true;
    RunLeave(*inUse);
}

void Screen::Click(Box& box)
{
    const Screens::EventScope scope(session.screens);
    session.screens.LeaveBoxInUse(&box);
    const bool isTick = box.Kind() == BoxKind::Tick;
    if (isTick) {
        box.SetTicked(!box.Ticked());
        box.MarkByHand();
    }
    if (box.Kind() == BoxKind::Option) {
        for (const auto& other : boxes)
            if (other->Kind() == BoxKind::Option && other->Name() == box.Name())
                other->SetTicked(other.get() == &box);
    }
    Run(clickOperations, box, "Click");
    if (isTick)
        TellTyped();
}

void Screen::DoubleClick(Box& box)
{
    const Screens::EventScope scope(session.screens);
    session.screens.LeaveBoxInUse(&box);
    Run(doubleClickOperations, box, "DblClick");
}

void Screen::Choose(Box& box, int position)
{
    const Screens::EventScope scope(session.screens);
    session.screens.LeaveBoxInUse(&box);
    Select(box, position);
    Run(chooseOperations, box, "Click");
    TellTyped();
}

void Screen::Select(Box& box, int position)
{
    box.Select(position);
    Run(selectOperations, box, "Click");
}

void Screen::Explain(Box& box)
{
    if (!session.explain)
        return;
    const Screens::EventScope scope(session.screens);
    session.screens.LeaveBoxInUse();
    Guarded([&] { session.explain(*this, box); }, &box, "Explain");
}

void Screen::SelectLines(Box& box, int position, int column, std::vector<int> lines)
{
    box.SelectLines(position, column, std::move(lines));
    Run(selectOperations, box, "Click");
}

void Screen::Sort(Box& box, int column)
{
    const Sorting before = box.SortedBy();
    box.SetSorting({.column = column, .descending = before.column == column && !before.descending});
    Run(sortOperations, box, "Sort");
}

void Screen::SetButtons(std::string_view cancel, std::string_view accept)
{
    cancelButton = cancel;
    defaultButton = accept;
    if (!cancel.empty())
        clickOperations.try_emplace(Known(cancel), [this](Box&) { session.screens.Unload(name); });
}

Box* Screen::DefaultButton()
{
    return FindBox(defaultButton);
}

void Screen::RequestClose()
{
    Guarded([&] { CloseRequested(); }, nullptr, "Close");
}

void Screen::CloseRequested()
{
    Box* cancel = FindBox(cancelButton);
    if (cancel != nullptr && cancel->Enabled())
        Run(clickOperations, *cancel, "Click");
    else
        session.screens.Unload(name);
}

std::optional<int> Screen::ChosenOption(std::string_view group) const
{
    const auto chosen =
        std::ranges::find_if(boxes, [group](const auto& box) { return box->Name() == group && box->Ticked(); });
    return chosen == boxes.end() ? std::nullopt : std::optional((*chosen)->Index());
}

void Screen::ChooseOption(std::string_view group, int index)
{
    for (const auto& option : boxes)
        if (option->Name() == group)
            option->SetTicked(option->Index() == index);
}

void Screen::Focus(Box& box)
{
    if (view != nullptr)
        view->FocusOn(box);
}

void Screen::BoxChanged(const Box& box)
{
    if (view != nullptr)
        view->BoxChanged(box);
}

} // namespace quillmere
