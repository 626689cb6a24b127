#pragma once

#include "clientdb/store/Recordset.h"
#include "printing/forms/Records.h"
#include "printing/forms/ReportPage.h"
#include "printing/jobs/PrintSystem.h"

#include <exception>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace quillmere {

/// A print job in hand: what its pages and reports share. A job has one connection to the client database and closes it
/// with its end, so that it can start from any screen.
class PrintJob : public Records {
public:
    PrintJob(Session& session, PrintSystem& printing, std::string_view procedure, Route route);

    Session& session;
    PageLayer& page;
    JobDocument& document;

    /// Whose document it is; the reports name both in their heads. For a declaration the employer stands for both.
    ReportNames names;
    std::string nationalInsurance; ///< of the employee, for the sheets that are no page of the form itself
    bool batchDeclaration = false; ///< the declaration at the end of a batch is in hand

    /// Opens the client database. Throws StoreError.
    void OpenClients();
    Database& Clients() { return database.value(); }
    /// A table of the client database, opened when it is first asked for.
    Recordset& Table(std::string_view name);
    [[nodiscard]] bool Seek(std::string_view table, RecordOf whose) override;
    [[nodiscard]] std::string_view Field(std::string_view table, std::string_view field) override;

    /// What is in hand, for the general error box: the procedure's name and a number that says how far it has come.
    void At(std::string_view newProcedure, int newDiagnostic);
    /// Ends the job in the general error box. What has been drawn of the document in hand is dropped.
    void Fail(const std::exception& error);

private:
    std::string_view procedure;
    int diagnostic = 0;
    std::optional<Database> database;
    std::map<std::string, Recordset, std::less<>> tables;
};

} // namespace quillmere
