#pragma once

#include "clientdb/store/Recordset.h"
#include "frame/Session.h"

#include <map>
#include <string>
#include <string_view>

namespace quillmere {

/// The figures of the open employee's cars 3 to 6 as they are stored, which are added to those of the cars that show.
class FurtherCars {
public:
    /// As the Ok that is under way has read them, else as one look at the store finds them. Throws StoreError.
    explicit FurtherCars(const Session& session);
    /// As they are in an open database. Throws StoreError.
    FurtherCars(Database& database, const Session& session);

    /// False if the employee has no record of them.
    bool AreThere() const { return areThere; }
    /// What a field of the figures holds, by its name; nothing for any other.
    std::string Figure(std::string_view field) const;

private:
    bool areThere = false;
    std::map<std::string, std::string, std::less<>> figures;
};

} // namespace quillmere
