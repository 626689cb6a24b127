#include "clientdb/FurtherCars.h"

#include "clientdb/CurrentRecord.h"
#include "frame/Text.h"

namespace quillmere {

namespace {

FurtherCars Look(const Session& session)
{
    if (session.furtherCars)
        return *session.furtherCars;
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    return {database, session};
}

} // namespace

FurtherCars::FurtherCars(const Session& session) : FurtherCars(Look(session))
{
}

FurtherCars::FurtherCars(Database& database, const Session& session)
{
    const Recordset record = OpenCurrent(database, "ExtraCars", session);
    areThere = !record.NoMatch();
    if (!areThere)
        return;
    for (const std::string_view stem : {"FCashEqu", "FFuelEqu"})
        for (int car = 3; car <= 6; ++car) {
            const std::string field = Numbered(stem, car);
            figures.emplace(field, record.Field(field));
        }
}

void FurtherCarsAlong::WillSeek(Database& database) const
{
    database.WillSeek("ExtraCars", session.CurrentEmployer, session.CurrentEmployee);
}

void FurtherCarsAlong::Read(Database& database) const
{
    try {
        session.furtherCars = std::make_shared<const FurtherCars>(database, session);
    } catch (const StoreError&) {
        Forget();
    }
}

std::string FurtherCars::Figure(std::string_view field) const
{
    const auto found = figures.find(field);
    return found == figures.end() ? std::string() : found->second;
}

} // namespace quillmere
