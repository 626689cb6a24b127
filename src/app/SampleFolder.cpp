#include "app/SampleFolder.h"

#include "clientdb/Employees.h"
#include "clientdb/RecentEmployees.h"
#include "clientdb/UserOperation.h"
#include "edition/Edition.h"
#include "edition/SampleClients.h"
#include "frame/CloseAll.h"

#include <fmt/format.h>
#include <vector>

namespace quillmere {

namespace {

std::string NameOf(const edition::SampleClient& client)
{
    return EmployeeName(client.firstName, client.surname);
}

/// Those of the sample clients who are there.
std::vector<const edition::SampleClient*> Present(Database& database)
{
    std::vector<const edition::SampleClient*> present;
    for (const edition::SampleClient& client : edition::SampleClients)
        if (EmployeeExists(database, client.employer, NameOf(client)))
            present.push_back(&client);
    return present;
}

void Add(Database& database)
{
    WriteBatch batch(database);
    for (const edition::SampleClient& client : edition::SampleClients) {
        CreateEmployee(database, {std::string(client.employer), std::string(client.firstName),
                                  std::string(client.surname), std::string(client.payeReference)});
        for (const edition::SampleField& field : client.fields) {
            Recordset records = database.OpenRecordset(field.table);
            records.Index("IndKey");
            records.Seek(client.employer, NameOf(client));
            records.Edit();
            records.SetField(field.field, field.text);
            records.Update();
        }
    }
    batch.Commit();
}

void TakeAway(Database& database)
{
    WriteBatch batch(database);
    for (const edition::SampleClient* client : Present(database)) {
        DeleteEmployee(database, client->employer, NameOf(*client));
        // The employer's own records go with the last of his employees.
        if (!EmployerExists(database, client->employer))
            DeleteEmployer(database, client->employer);
    }
    batch.Commit();
}

/// An employer of the user's own who has the name of a sample one.
std::string NameTaken(Database& database)
{
    for (const edition::SampleClient& client : edition::SampleClients)
        if (EmployerExists(database, client.employer))
            return std::string(client.employer);
    return {};
}

} // namespace

std::string SampleWords(Session& session)
{
    try {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        if (!Present(database).empty())
            return "Take Sample Clients Away";
    } catch (const Failure&) {
        // Whoever chooses it is told.
    }
    return "Add Sample Clients";
}

void AddOrTakeSampleClients(Session& session)
{
    if (!CloseAllScreens(session))
        return;
    const UserOperation operation(session, "Sample clients");
    Database database = OpenClients(session);
    if (Present(database).empty()) {
        if (const std::string taken = NameTaken(database); !taken.empty())
            return SetStatusNote(session, fmt::format("There is an employer {} already", taken));
        Add(database);
        SetStatusNote(session, fmt::format("{} sample clients added", edition::SampleClients.size()));
    } else {
        if (!session.messages.Ask(edition::AppTitle,
                                  "Take the sample clients away?\n\nWhat has been entered for them goes, too.",
                                  Icon::Question, Answer::No))
            return;
        TakeAway(database);
        SetStatusNote(session, "The sample clients are gone");
    }
    RebuildRecent(session);
}

} // namespace quillmere
