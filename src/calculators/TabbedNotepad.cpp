#include "calculators/TabbedNotepad.h"

#include "frame/Text.h"
#include "frame/Tick.h"

namespace quillmere {

TabbedNotepad::TabbedNotepad(Session& session, std::string_view name, std::string_view caption, const Words& words,
                             const TabNames& tabs)
    : Notepad(session, name, caption, name, words), tabs(tabs)
{
}

void TabbedNotepad::KeepTabs(std::span<const std::string_view> writingOrder)
{
    int tab = 0;
    for (const std::string_view label : tabs) {
        ++tab;
        for (Box* named : FieldBoxes(writingOrder))
            Keep(Numbered(named->Field(), tab), named, tab, tab);
        OnClick(label, [this, tab](Box&) { TurnTo(tab); });
    }
}

void TabbedNotepad::TabShown()
{
    int tab = 0;
    for (const std::string_view label : tabs)
        box(label).SetPaint(++tab == Tab() ? Paint::Yellow : Paint::Plain);
}

/// A tick of a tab that has not been shown is what it was stored as.
std::string TabbedNotepad::Reads(const Entry& entry) const
{
    std::string text = Notepad::Reads(entry);
    if (entry.box->Kind() == BoxKind::Tick)
        return std::string(StoredTick(!text.empty() && text != "0"));
    return text;
}

std::array<std::string, TabbedNotepad::Tabs> TabbedNotepad::Row(std::string_view stem) const
{
    return {Reads(Numbered(stem, 1)), Reads(Numbered(stem, 2)), Reads(Numbered(stem, 3))};
}

} // namespace quillmere
