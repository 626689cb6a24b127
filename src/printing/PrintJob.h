#pragma once

#include "clientdb/store/Recordset.h"
#include "printing/PrintSystem.h"

#include <exception>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace quillmere {

/// A print job in hand: what its pages and reports share. A job has one connection to the client database and closes it
/// with its end, so that it can start from any screen.
class PrintJob {
public:
    PrintJob(Session& session, PrintSystem& printing, std::string_view procedure, Route route);

    Session& session;
    PageLayer& page;

    /// Whose document it is; the reports name both in their heads. For a declaration the employer stands for both.
    std::string employer, employee;
    std::string nationalInsurance;       ///< of the employee, for the sheets that are no page of the form itself
    int pageNumber = 0;                  ///< of the document in hand
    bool batchDeclaration = false;       ///< the declaration at the end of a batch is in hand
    double position = 0;                 ///< line on which a report goes on, mm
    std::function<void()> onFurtherPage; ///< draws what the report in hand repeats on each further page

    /// Opens the client database. Throws StoreError.
    void OpenClients();
    Database& Clients() { return database.value(); }
    /// A table of the client database, opened when it is first asked for.
    Recordset& Table(std::string_view name);
    /// Puts a table on the record of the job's employee. False if there is none.
    [[nodiscard]] bool SeekEmployee(std::string_view table);
    /// Puts a table that has one record for each employer on that of the job's employer. False if there is none.
    [[nodiscard]] bool SeekEmployer(std::string_view table);

    /// Opens a document of its own for the job. It does not open where there is no printer for it.
    [[nodiscard]] Opening OpenDocument(std::string_view name);
    /// Begins the next page of the forms.
    void NextPage();

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
