#pragma once

#include "clientdb/Notepad.h"

#include <array>
#include <span>
#include <string>
#include <string_view>

namespace quillmere {

/// A notepad that shows one of three vans or vehicles at a time. Three labels act as tabs.
class TabbedNotepad : public Notepad {
public:
    static constexpr int Tabs = 3;

    /// Names of the labels.
    using TabNames = std::array<std::string_view, Tabs>;

    TabbedNotepad(Session& session, std::string_view name, std::string_view caption, const Words& words,
                  const TabNames& tabs);

protected:
    /// Keeps three of each field that a box names, and binds the tabs; called when all boxes are made.
    void KeepTabs(std::span<const std::string_view> writingOrder = {});
    void TabShown() override;
    std::string Reads(const Entry& entry) const override;
    using Notepad::Reads;
    /// What a field reads on every tab.
    std::array<std::string, Tabs> Row(std::string_view stem) const;

private:
    TabNames tabs;
};

} // namespace quillmere
