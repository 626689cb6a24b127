#include "printing/PrintJob.h"

#include "frame/Failure.h"

namespace quillmere {

PrintJob::PrintJob(Session& session, PrintSystem& printing, std::string_view procedure, Route route)
    : session(session), page(printing.layer), procedure(procedure)
{
    page.route = route;
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

bool PrintJob::SeekEmployee(std::string_view table)
{
    Recordset& records = Table(table);
    records.Index("IndKey");
    records.Seek(employer, employee);
    return !records.NoMatch();
}

bool PrintJob::SeekEmployer(std::string_view table)
{
    Recordset& records = Table(table);
    records.Index("PrimaryKey");
    records.Seek(employer);
    return !records.NoMatch();
}

Opening PrintJob::OpenDocument(std::string_view name)
{
    pageNumber = 0;
    return page.OpenPrintJob(name);
}

void PrintJob::NextPage()
{
    ++pageNumber;
    page.NextPrintPage(pageNumber);
}

void PrintJob::At(std::string_view newProcedure, int newDiagnostic)
{
    procedure = newProcedure;
    diagnostic = newDiagnostic;
}

void PrintJob::Fail(const std::exception& error)
{
    page.Engine().Clear();
    const auto* failure = dynamic_cast<const Failure*>(&error);
    session.messages.ReportError(procedure, failure != nullptr ? failure->Number() : 0, error.what(),
                                 std::to_string(diagnostic));
}

} // namespace quillmere
