#pragma once

#include "clientdb/EmployeeFinder.h"
#include "frame/Screen.h"

#include <memory>

namespace quillmere {

/// Finds an employee of any employer while his name is typed, and opens him by the road of Open. What is open stays so
/// until then.
class FindEmployee : public Screen {
public:
    explicit FindEmployee(Session& session);

    bool Load() override;

private:
    void Search();
    void OpenChosen();

    std::unique_ptr<EmployeeFinder> finder;
    std::vector<FoundEmployee> found; ///< in the order of the list
};

} // namespace quillmere
