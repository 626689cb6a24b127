#pragma once

#include "frame/Session.h"

#include <span>
#include <string>
#include <string_view>

namespace quillmere {

/// A command that stands beside the form: in nobody's way while it is not used.
struct DeskCommand {
    std::string_view menu; ///< behind what is in it; a new one comes last
    std::string_view name; ///< of its box in the main window
    std::string_view text;
    char letter;
    std::string_view key = {};      ///< "Ctrl+F"
    std::string_view otherKey = {}; ///< that does it, too, and is not shown
    void (*run)(Session&);
    bool separatorBefore = false;
    bool ofEmployee = false;                  ///< in use only while an employee is open
    std::string (*words)(Session&) = nullptr; ///< what it says once its menu opens, if that changes

    constexpr DeskCommand AlsoBy(std::string_view theOtherKey) const
    {
        DeskCommand command = *this;
        command.otherKey = theOtherKey;
        return command;
    }
    constexpr DeskCommand Parted() const
    {
        DeskCommand command = *this;
        command.separatorBefore = true;
        return command;
    }
    constexpr DeskCommand OfEmployee() const
    {
        DeskCommand command = *this;
        command.ofEmployee = true;
        return command;
    }
    constexpr DeskCommand Saying(std::string (*its)(Session&)) const
    {
        DeskCommand command = *this;
        command.words = its;
        return command;
    }
};

/// All of them, in the order of their menus.
std::span<const DeskCommand> DeskCommands();

} // namespace quillmere
