#pragma once

#include "cars/CarColumn.h"
#include "frame/Session.h"
#include "screens/ScheduleNotepad.h"

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace quillmere::exchange {

/// The screens of an employee where nobody sees them and nothing is open: what is put into their boxes goes through the
/// filter of each and is left as if it were typed, and what a box has to say is heard here.
class TypingRoom {
public:
    TypingRoom();
    TypingRoom(const TypingRoom&) = delete;
    TypingRoom& operator=(const TypingRoom&) = delete;
    ~TypingRoom();

    Screen& Page(std::string_view name) const;
    ScheduleNotepad& List(std::string_view name);
    /// The columns of all six cars.
    Screen& Cars() { return *cars; }
    /// Empties a car's column and makes it writable.
    void EmptyCar(int car) { columns.at(static_cast<std::size_t>(car - 1)).Empty(); }

    /// Types a cell of a table into a box and leaves it. What is wrong with it, in words; empty if the box has taken
    /// it.
    std::string Type(Screen& screen, Box& box, std::string_view cell);
    /// What has been told since this was asked last.
    std::string TakeTold();

private:
    class Door;
    std::unique_ptr<Door> door;
    Session session;
    std::unique_ptr<Screen> page1, page2, cars;
    std::deque<CarColumn> columns;
    std::map<std::string, std::unique_ptr<ScheduleNotepad>, std::less<>> lists;
};

} // namespace quillmere::exchange
