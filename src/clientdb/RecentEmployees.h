#pragma once

#include "frame/Session.h"

#include <string>
#include <vector>

/// The ways from one employee to another that need no list.
namespace quillmere {

/// So many employees who were open are remembered for each client folder.
inline constexpr int RecentSlots = 8;

struct EmployeeKey {
    std::string employer, employee;

    friend bool operator==(const EmployeeKey&, const EmployeeKey&) = default;
};

/// Who was open in the selected folder, the latest first, as they are remembered in a file beside the settings. One who
/// is not in the database any more is left out.
std::vector<EmployeeKey> RecentEmployees(const Session& session);

/// Fills the entries of recent employees at the foot of the File menu, and says on the empty desk what to begin with.
void RebuildRecent(Session& session);

/// The same when the current employee has been opened, who is the latest from now on. A file that cannot be written
/// remembers nothing, and nothing else suffers.
void RememberOpened(Session& session);

/// Opens the recent employee of an entry, from 1 on, by the road of Open.
void OpenRecent(Session& session, int entry);

/// Opens the employee who was open before.
void OpenLastEmployee(Session& session);

/// Opens the employee who stands so many places further in the list of the employer's employees.
void OpenNeighbour(Session& session, int places);

} // namespace quillmere
