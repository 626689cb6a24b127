#include "printing/jobs/Batch.h"

#include "clientdb/Employees.h"
#include "frame/CloseAll.h"
#include "printing/jobs/FileBatch.h"
#include "printing/jobs/JobSequence.h"
#include "printing/jobs/PrinterBatch.h"

#include <exception>
#include <set>
#include <utility>

namespace quillmere {

namespace {

constexpr std::string_view BatchJob = "Batch Print";
constexpr std::string_view Declaration = "the P11D(b)";

/// A document as it is expected.
BatchLine Expecting(BatchLine::Of of, std::string_view name)
{
    return {.of = of, .name = std::string(name)};
}

} // namespace

Batch::Batch(Session& session, PrintSystem& printing, BatchOrder newOrder, Route route)
    : job(session, printing, BatchJob, route),
      report{.order = std::move(newOrder), .to = {}, .lines = {}},
      printing(printing),
      busy(session.platform)
{
    job.names.employer = report.order.employer;
}

bool Batch::GoOn()
{
    if (hasEnded)
        return false;
    try {
        hasEnded = !Step();
        if (hasEnded) {
            Complete();
            TellOfEnd();
        }
    } catch (const std::exception& error) {
        hasEnded = true;
        Complete();
        TellBeforeFailure();
        job.Fail(error);
    }
    if (hasEnded)
        progress.reset();
    return !hasEnded;
}

bool Batch::Step()
{
    if (!progress) {
        Begin();
        return true;
    }
    if (isCancelled)
        return false;
    if (employees && !employees->AtEnd()) {
        PrintEmployee();
        return true;
    }
    if (employees) {
        employees.reset();
        if (EndRound())
            TakeUpEmployees();
        return true;
    }
    if (!std::exchange(hasDeclaration, false))
        return false;
    PrintDeclaration();
    return true;
}

void Batch::Begin()
{
    job.OpenClients();
    const BatchSelection& selection = report.order.selection;
    hasDeclaration = selection.Has(BatchTick::P11DB);
    if (selection.HasPapersOfEmployees()) {
        names = ListEmployees(job.Clients(), job.names.employer);
        std::ranges::sort(names);
        Prepare();
        TakeUpEmployees();
    }
    documents = Printings() + (hasDeclaration ? 1 : 0);
    progress.emplace(job.session.platform, documents, Shows());
}

void Batch::TakeUpEmployees()
{
    employees.emplace(job.Clients().OpenRecordset("P11D"));
    employees->Index("IndKey");
    employees->MoveFirstOf(job.names.employer);
}

bool Batch::Takes(const std::string& employee) const
{
    return !report.order.only || report.order.only->contains(employee);
}

int Batch::Printings() const
{
    return static_cast<int>(std::ranges::count_if(names, [this](const std::string& name) { return Takes(name); }));
}

std::vector<BatchLine> Batch::Expected() const
{
    std::vector<BatchLine> lines;
    for (const std::string& name : names)
        if (!report.order.only || report.order.only->contains(name))
            lines.push_back(Expecting(BatchLine::Of::Employee, name));
    if (report.order.selection.Has(BatchTick::P11DB))
        lines.push_back(Expecting(BatchLine::Of::Declaration, Declaration));
    return lines;
}

/// Notes the documents that the batch has not come to, in their order, and keeps the report.
void Batch::Complete()
{
    Settle();
    std::set<std::pair<BatchLine::Of, std::string>> noted;
    for (const BatchLine& line : report.lines)
        noted.emplace(line.of, line.name);
    for (BatchLine& line : Expected())
        if (!noted.contains({line.of, line.name}))
            Note(std::move(line));
    printing.lastBatch = report;
}

void Batch::Take(std::string_view whose)
{
    inHand = whose;
    if (taken)
        taken();
}

void Batch::Pass()
{
    ++passed;
    progress->Advance();
}

void Batch::PrintEmployee()
{
    job.At(BatchJob, 0);
    job.names.employee = employees->Field("EmployeeName");
    if (!Takes(job.names.employee)) {
        employees->MoveNext();
        return;
    }
    Take(job.names.employee);
    EmployeeDocument paper(job, BatchJob, *employees);
    const Opening opening = Open(EmployeeDocumentName(job.names.employer, job.names.employee), BatchLine::Of::Employee);
    if (opening == Opening::Left)
        employees.reset();
    // Kept: without a printer that opens the same question is asked again, for the same employee.
    if (opening != Opening::Open)
        return;
    paper.Print(report.order.selection);
    job.At(BatchJob, DocumentEndStep);
    Close(Expecting(BatchLine::Of::Employee, job.names.employee));
    Pass();
    employees->MoveNext();
}

void Batch::PrintDeclaration()
{
    job.At(BatchJob, DeclarationStep);
    job.names.employee = job.names.employer;
    Take(Declaration);
    const Opening opening = Open(DeclarationDocumentName(job.names.employer), BatchLine::Of::Declaration);
    if (opening == Opening::NotOpen)
        Pass();
    if (opening != Opening::Open)
        return;
    job.batchDeclaration = true;
    PrintDeclarationDocument(job, BatchJob, DeclarationVariant::Totals,
                             ReaderOf(ComputeDeclarationTotals(job.Clients(), job.names.employer)));
    job.batchDeclaration = false;
    Close(Expecting(BatchLine::Of::Declaration, Declaration));
    Pass();
}

void Batch::TellOfEnd()
{
    if (report.lines.empty())
        return;
    const auto& look = job.session.thingsToLookAt;
    const std::string words = look ? look(report.order.employer, {}) : std::string();
    SetStatusNote(job.session, report.InWords() + (words.empty() ? "" : "; " + words));
}

std::unique_ptr<Batch> MakeBatch(Session& session, PrintSystem& printing, BatchOrder order)
{
    if (order.files)
        return std::make_unique<FileBatch>(session, printing, std::move(order));
    return std::make_unique<PrinterBatch>(session, printing, std::move(order));
}

} // namespace quillmere
