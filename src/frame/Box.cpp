#include "frame/Box.h"

#include "frame/Screen.h"
#include "frame/Text.h"
#include "frame/Tick.h"

#include <utility>

namespace quillmere {

Box::Box(Screen& screen, const BoxRow& row, std::string name, int index)
    : screen(screen),
      name(std::move(name)),
      index(index),
      kind(row.kind),
      filter(row.filter),
      field(row.field),
      columns(row.columns),
      movesIn(row.movesIn),
      key(row.key),
      text(row.text),
      spoken(row.spoken),
      tip(row.tip),
      letter(row.letter),
      enabled(!row.disabled),
      visible(!row.hidden),
      readOnly(row.readOnly),
      amount(row.amount),
      monospaced(row.monospaced),
      computed(row.computed),
      ofEmployee(row.ofEmployee),
      several(row.several),
      tinted(row.tinted)
{
}

std::string Box::FullName() const
{
    return index == NoIndex ? name : name + "(" + std::to_string(index) + ")";
}

void Box::Changed()
{
    screen.BoxChanged(*this);
}

void Box::SetText(std::string_view newText)
{
    if (text == newText)
        return;
    text = newText;
    Changed();
}

void Box::Clear()
{
    if (kind == BoxKind::Tick || kind == BoxKind::Option)
        SetTicked(false);
    else
        SetText({});
}

const std::string& Box::TrimText()
{
    SetText(Trim(text));
    return text;
}

std::string Box::Stored() const
{
    return kind == BoxKind::Tick ? std::string(StoredTick(ticked)) : text;
}

void Box::ShowStored(std::string_view fieldText)
{
    isByHand = false;
    if (kind == BoxKind::Tick)
        SetTicked(IsSet(fieldText));
    else
        SetText(fieldText);
}

void Box::SetTicked(bool newTicked)
{
    if (std::exchange(ticked, newTicked) != newTicked)
        Changed();
}

void Box::SetEnabled(bool newEnabled)
{
    if (std::exchange(enabled, newEnabled) != newEnabled)
        Changed();
}

void Box::SetVisible(bool newVisible)
{
    if (std::exchange(visible, newVisible) != newVisible)
        Changed();
}

void Box::SetReadOnly(bool newReadOnly)
{
    if (std::exchange(readOnly, newReadOnly) != newReadOnly)
        Changed();
}

void Box::SetPaint(Paint newPaint)
{
    if (std::exchange(paint, newPaint) != newPaint)
        Changed();
}

void Box::SetTip(std::string_view newTip)
{
    tip = newTip;
    Changed();
}

void Box::SetSpoken(std::string_view newSpoken)
{
    spoken = newSpoken;
    Changed();
}

void Box::SetEntries(std::vector<std::string> newEntries)
{
    entries = std::move(newEntries);
    selected = -1;
    chosen.clear();
    text.clear();
    Changed();
}

void Box::AddEntry(std::string_view entry)
{
    entries.emplace_back(entry);
    Changed();
}

void Box::SetColumns(std::string_view newColumns)
{
    if (columns == newColumns)
        return;
    columns = newColumns;
    column = 0;
    sorting = {};
    Changed();
}

void Box::Select(int position)
{
    SelectLines(position, column, {position});
}

void Box::SelectLines(int position, int newColumn, std::vector<int> lines)
{
    const bool exists = position >= 0 && position < static_cast<int>(entries.size());
    selected = exists ? position : -1;
    text = exists ? entries[static_cast<std::size_t>(position)] : std::string();
    column = newColumn;
    chosen = exists ? std::move(lines) : std::vector<int>();
    Changed();
}

void Box::SetSorting(Sorting newSorting)
{
    if (std::exchange(sorting, newSorting) != newSorting)
        Changed();
}

} // namespace quillmere
