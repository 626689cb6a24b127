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
    /// As they have been read along (FurtherCarsAlong), else as one look at the store finds them. Throws StoreError.
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

/// Has the further cars read along with what is being read or stored, for page 1, which adds them up when it comes to
/// the front by that, and looks for them no more. Up to the end of this.
class FurtherCarsAlong {
public:
    explicit FurtherCarsAlong(Session& session) : session(session) {}
    ~FurtherCarsAlong() { Forget(); }
    FurtherCarsAlong(const FurtherCarsAlong&) = delete;
    FurtherCarsAlong& operator=(const FurtherCarsAlong&) = delete;

    void WillSeek(Database& database) const;
    /// Where they cannot be read page 1 looks itself, and tells of that.
    void Read(Database& database) const;
    void Forget() const { session.furtherCars.reset(); }

private:
    Session& session;
};

} // namespace quillmere
