#include "printing/PrintJobs.h"

#include "frame/BusyPointer.h"
#include "printing/ExtraCarSheets.h"
#include "printing/P11DBPages.h"
#include "printing/P11DPages.h"
#include "printing/PrintJob.h"

#include <array>
#include <fmt/format.h>

namespace quillmere {

namespace {

constexpr std::string_view SingleJob = "Print P11D";
constexpr std::string_view PreviewScreen = "frmVSPrint";

FieldReader ReaderOf(const Recordset& records)
{
    return [&records](std::string_view field) { return std::string(records.Field(field)); };
}

void PrintEmployeeDocument(PrintJob& job)
{
    const FieldReader read = ReaderOf(job.Table("P11D"));
    job.At("Print P11D(1)", 1);
    job.NextPage();
    PrintP11D1(job.page, read);
    job.At("Print P11D(2)", 2);
    job.NextPage();
    PrintP11D2(job.page, read);
    for (const ExtraCarSheet* sheet : {&Cars3And4, &Cars5And6}) {
        job.At(sheet->procedure, sheet->firstCar);
        if (!ExtraCarsHaveData(job, "ExtraCars", sheet->firstCar, sheet->firstCar + 1))
            continue;
        job.NextPage();
        PrintExtraCarSheet(job, *sheet);
    }
}

void PrintDeclarationDocument(PrintJob& job, DeclarationVariant variant, const FieldReader& read)
{
    job.NextPage();
    PrintP11DBDeclaration(job.page, variant, read);
    job.NextPage();
    PrintP11DBNotes(job.page, variant, read);
}

std::string EmployeeDocumentName(const PrintJob& job)
{
    return job.employer + " - " + job.employee;
}

std::string DeclarationDocumentName(const PrintJob& job)
{
    return job.employer + " - P11D(b)";
}

/// Draws the document of a single job. False if there is nobody to draw it for.
bool DrawSingleDocument(PrintJob& job, PrintedDocument document)
{
    job.OpenClients();
    if (document == PrintedDocument::Declaration) {
        // An employer without a record fails when the first field is asked for.
        static_cast<void>(job.SeekEmployer("P11DB"));
        if (job.OpenDocument(DeclarationDocumentName(job)))
            PrintDeclarationDocument(job, DeclarationVariant::Record, ReaderOf(job.Table("P11DB")));
        return true;
    }
    if (!job.SeekEmployee("P11D")) {
        job.session.messages.Tell(SingleJob, "Employee not found");
        return false;
    }
    job.nationalInsurance = job.Table("P11D").Field("NatIns");
    if (job.OpenDocument(EmployeeDocumentName(job)))
        PrintEmployeeDocument(job);
    return true;
}

} // namespace

void PrintEmployeeJob(Session& session, PrintSystem& printing, std::string_view employer, std::string_view employee,
                      PrintedDocument document)
{
    {
        const BusyPointer busy(session.platform);
        PrintJob job(session, printing, SingleJob, Route::Screen);
        job.employer = employer;
        job.employee = employee;
        try {
            if (!DrawSingleDocument(job, document))
                return;
        } catch (const std::exception& error) {
            job.Fail(error);
            return;
        }
        if (session.settings.reportPreview == 1) {
            job.page.EndOnPdf();
            return;
        }
        job.page.vsEndDoc();
    }
    if (session.screens.IsRegistered(PreviewScreen))
        session.screens.Show(PreviewScreen);
}

} // namespace quillmere
