#include "printing/jobs/PrintJob.h"

#include "frame/Failure.h"

namespace quillmere {

PrintJob::PrintJob(Session& session, PrintSystem& printing, std::string_view procedure, Route route)
    : session(session), page(printing.page), document(printing.document), procedure(procedure)
{
    document.route = route;
    names.compiler = session.settings.reportCompiler;
    names.today = session.platform.Today();
}

void PrintJob::OpenClients()
{
    database.emplace(Database::OpenDatabase(session.ClientDatabasePath()));
}

Recordset& PrintJob::Table(std::string_view name)
{
    const auto found = tables.find(name);
    if (found != tables.end())
        return found->second;
    return tables.emplace(name, Clients().OpenRecordset(name)).first->second;
}

bool PrintJob::Seek(std::string_view table, RecordOf whose)
{
    Recordset& records = Table(table);
    if (whose == RecordOf::Employee) {
        records.Index("IndKey");
        records.Seek(names.employer, names.employee);
    } else {
        records.Index("PrimaryKey");
        records.Seek(names.employer);
    }
    return !records.NoMatch();
}

std::string_view PrintJob::Field(std::string_view table, std::string_view field)
{
    return Table(table).Field(field);
}

void PrintJob::At(std::string_view newProcedure, int newDiagnostic)
{
    procedure = newProcedure;
    diagnostic = newDiagnostic;
}

void PrintJob::Fail(const std::exception& error)
{
    document.Drop();
    const auto* failure = dynamic_cast<const Failure*>(&error);
    session.messages.ReportError(procedure, failure != nullptr ? failure->Number() : 0, error.what(),
                                 std::to_string(diagnostic));
}

} // namespace quillmere
