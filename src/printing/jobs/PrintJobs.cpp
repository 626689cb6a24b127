#include "printing/jobs/PrintJobs.h"

#include "clientdb/store/FormMarks.h"
#include "frame/BusyPointer.h"
#include "frame/CloseAll.h"
#include "frame/Text.h"
#include "printing/forms/TableReport.h"
#include "printing/jobs/JobSequence.h"
#include "printing/jobs/PrinterBatch.h"

#include <fmt/format.h>
#include <functional>
#include <utility>

namespace quillmere {

namespace {

constexpr std::string_view SingleJob = "Print P11D";
constexpr std::string_view TableJob = "Print Table";
constexpr std::string_view PreviewScreen = "frmVSPrint";

/// Draws the document of a single job. False if there is nobody to draw it for.
bool DrawSingleDocument(PrintJob& job, PrintedDocument document)
{
    job.OpenClients();
    if (document == PrintedDocument::Declaration) {
        // An employer without a record fails when the first field is asked for.
        static_cast<void>(job.Seek("P11DB", RecordOf::Employer));
        const std::string name = DeclarationDocumentName(job.names.employer);
        job.names.employee = job.names.employer;
        if (job.document.OpenPrintJob(name) == Opening::Open)
            PrintDeclarationDocument(job, SingleJob, DeclarationVariant::Record, ReaderOf(job.Table("P11DB")));
        return true;
    }
    if (!job.Seek("P11D", RecordOf::Employee)) {
        job.session.messages.Tell(SingleJob, "Employee not found");
        return false;
    }
    EmployeeDocument paper(job, SingleJob, job.Table("P11D"));
    if (job.document.OpenPrintJob(EmployeeDocumentName(job.names.employer, job.names.employee)) == Opening::Open)
        paper.Print(BatchSelection::All());
    return true;
}

/// What of a document should be looked at before it is sent; printing goes on.
std::string WordsOfLook(const Session& session, const std::string& employer, const std::string& employee)
{
    return session.thingsToLookAt ? session.thingsToLookAt(employer, employee) : std::string();
}

/// Draws a single document and shows it, as a PDF file where the settings say so; `look` says what of it should be
/// looked at.
void ShowJob(Session& session, PrintSystem& printing, SingleDocument shown, const std::function<std::string()>& look)
{
    BusyPointer busy(session.platform);
    printing.shown = std::move(shown);
    {
        PrintJob job(session, printing, printing.shown.procedure, Route::Screen);
        try {
            if (!printing.shown.draw(job))
                return;
            if (session.settings.reportPreview == 1) {
                job.document.EndOnPdf();
                SetStatusNote(session, look());
                return;
            }
            job.document.vsEndDoc();
        } catch (const std::exception& error) {
            job.Fail(error);
            return;
        }
    }
    if (Screen* preview = session.screens.Load(PreviewScreen)) {
        Box& words = preview->box("lblLook");
        words.SetText(look());
        words.SetVisible(!words.Empty());
    }
    // The preview sets the pointer back once it has been painted.
    if (session.screens.Show(PreviewScreen) != nullptr)
        busy.HandOver();
}

} // namespace

void PrintEmployeeJob(Session& session, PrintSystem& printing, std::string_view employer, std::string_view employee,
                      PrintedDocument document)
{
    const auto draw = [employer = std::string(employer), employee = std::string(employee), document](PrintJob& job) {
        job.names.employer = employer;
        job.names.employee = employee;
        return DrawSingleDocument(job, document);
    };
    ShowJob(session, printing, {SingleJob, draw}, [&] {
        const bool isOfEmployee = document == PrintedDocument::Employee;
        return WordsOfLook(session, std::string(employer), isOfEmployee ? std::string(employee) : std::string());
    });
}

void PrintTableJob(Session& session, PrintSystem& printing, const PrintedTable& table)
{
    const auto draw = [table](PrintJob& job) {
        job.names.employer = table.employer.empty() ? job.session.CurrentEmployer : table.employer;
        job.names.employee = table.employee.empty() ? job.names.employer : table.employee;
        if (job.document.OpenPrintJob(table.documentName) == Opening::Open)
            PrintTableReport(job.page, job.names, table);
        return true;
    };
    ShowJob(session, printing, {TableJob, draw}, [] { return std::string(); });
}

void ShowAgain(Session& session, PrintSystem& printing, const std::string& look)
{
    if (SingleDocument shown = printing.shown; shown.draw)
        ShowJob(session, printing, std::move(shown), [&look] { return look; });
}

bool SaveShown(Session& session, PrintSystem& printing, const std::filesystem::path& file)
{
    const Settings& settings = session.settings;
    const bool isSame = settings.vsLeft == settings.vsPdfLeft && settings.vsTop == settings.vsPdfTop &&
                        settings.vsScale == settings.vsPdfScale;
    if (isSame || !printing.shown.draw) {
        printing.converter.ConvertDocument(printing.engine, file);
        return true;
    }
    const BusyPointer busy(session.platform);
    PrintSystem aside(session); // the preview goes on with the document that it shows
    PrintJob job(session, aside, printing.shown.procedure, Route::File);
    if (!printing.shown.draw(job))
        return false;
    job.document.vsEndDoc();
    aside.converter.ConvertDocument(aside.engine, file);
    return true;
}

void MarkPrinted(Database& database, const JobDocument& document, Day today)
{
    if (!document.Form())
        return;
    const auto& [employer, employee] = *document.Form();
    try {
        static_cast<void>(FormMarks(database).Set(FormMark::Printed, employer, employee, FormatDate(today)));
    } catch (const StoreError&) {
        return; // a mark less
    }
}

void MarkPrinted(const Session& session, const JobDocument& document)
{
    try {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        MarkPrinted(database, document, session.platform.Today());
    } catch (const StoreError&) {
        return; // a mark less
    }
}

void SayPagesSent(Session& session, int pages, std::string_view printer, std::string_view more)
{
    SetStatusNote(session, fmt::format("{} page{} sent to {}{}{}", pages, pages == 1 ? "" : "s", printer,
                                       more.empty() ? "" : "; ", more));
}

void PrintBatchJob(Session& session, PrintSystem& printing, std::string_view employer, const BatchSelection& selection)
{
    PrinterBatch batch(session, printing, {.employer = std::string(employer), .selection = selection});
    while (batch.GoOn()) {
    }
}

} // namespace quillmere
