#include "printing/jobs/FileBatch.h"

#include "clientdb/Employees.h"
#include "frame/CloseAll.h"
#include "frame/Dates.h"
#include "frame/Text.h"
#include "printing/jobs/HeldFile.h"

#include <algorithm>
#include <iterator>
#include <system_error>
#include <utility>

namespace quillmere {

namespace {

using Outcome = BatchLine::Outcome;

constexpr std::string_view FileWithAll = "the file with all";

/// Documents that wait for being written at most: enough for one that takes longer than the next one's drawing.
constexpr std::size_t MostWaiting = 4;

/// What an employee's file cannot be protected with.
std::string_view Missing(OpeningWord word)
{
    switch (word) {
    case OpeningWord::NationalInsurance:
        return "no National Insurance number to open it with";
    case OpeningWord::BirthDate:
        return "no date of birth to open it with";
    case OpeningWord::WorksNumber:
        return "no works number to open it with";
    case OpeningWord::None:
        break;
    }
    return {};
}

bool IsThere(const std::filesystem::path& file)
{
    std::error_code error;
    return std::filesystem::exists(std::filesystem::symlink_status(file, error));
}

} // namespace

std::string OpeningWordOf(const Recordset& records, OpeningWord word)
{
    const auto without = [](std::string text, char dropped) {
        std::erase(text, dropped);
        return text;
    };
    switch (word) {
    case OpeningWord::NationalInsurance:
        return UpperCase(without(std::string(records.Field("NatIns")), ' '));
    case OpeningWord::BirthDate: {
        const auto day = ReadDate(records.Field("DOB"));
        return day ? without(FormatDate(*day), '/') : std::string();
    }
    case OpeningWord::WorksNumber:
        return Trim(records.Field("WorkNumberBox"));
    case OpeningWord::None:
        break;
    }
    return {};
}

FileBatch::FileBatch(Session& session, PrintSystem& printing, BatchOrder order)
    : Batch(session, printing, std::move(order), Route::File),
      isWhole(!Files().each),
      folder(Files().folder),
      beside(MostWaiting)
{
    report.to = Files().folder.string();
}

void FileBatch::Prepare()
{
    fileNames.emplace(report.order.employer, Names(), report.order.selection.Has(BatchTick::P11D));
}

bool FileBatch::Takes(const std::string& employee) const
{
    return fileNames->ofEmployee.contains(employee) && (isWhole || Batch::Takes(employee));
}

int FileBatch::Printings() const
{
    const int all = static_cast<int>(Names().size());
    return (Files().each && !isWhole ? Batch::Printings() : 0) + (Files().whole ? all : 0);
}

std::vector<BatchLine> FileBatch::Expected() const
{
    std::vector<BatchLine> lines = Batch::Expected();
    if (!Files().each)
        std::erase_if(lines, [](const BatchLine& line) { return line.of == BatchLine::Of::Employee; });
    if (Files().whole && report.order.selection.HasPapersOfEmployees())
        lines.push_back({.of = BatchLine::Of::Employer, .name = std::string(FileWithAll)});
    return lines;
}

Opening FileBatch::Open(const std::string& name, BatchLine::Of of)
{
    const bool isOfAll = isWhole && of == BatchLine::Of::Employee;
    if (!isOfAll || !isWholeBegun) {
        static_cast<void>(job.document.OpenPrintJob(isOfAll ? report.order.employer : name)); // needs no printer
        job.page.LeaveNoPageEmpty();
    }
    isWholeBegun = isOfAll;
    if (isOfAll)
        job.page.BeginChapter(job.names.employee);
    return Opening::Open;
}

void FileBatch::Close(BatchLine line)
{
    if (line.of == BatchLine::Of::Declaration) {
        Finish(line, fileNames->ofDeclaration);
        return;
    }
    if (isWhole)
        return;
    const std::string word = OpeningWordOf(Record(), Files().word);
    if (Files().word == OpeningWord::None || !word.empty()) {
        Finish(line, fileNames->ofEmployee.at(line.name), word);
        return;
    }
    job.document.Drop();
    line.outcome = Outcome::Failed;
    line.words = Missing(Files().word);
    Note(std::move(line));
}

bool FileBatch::EndRound()
{
    if (!isWhole) {
        isWhole = Files().whole;
        return isWhole;
    }
    if (isWholeBegun)
        Finish({.of = BatchLine::Of::Employer, .name = std::string(FileWithAll)}, fileNames->ofAll);
    return false;
}

void FileBatch::Finish(BatchLine line, const std::string& file, const std::string& password)
{
    job.document.vsEndDoc();
    line.pages = job.page.PageNumber();
    line.words = file;
    const std::filesystem::path path = Files().folder / file;
    if (line.pages == 0) {
        line.outcome = Outcome::Empty;
    } else if (!Files().replaces && IsThere(path)) {
        line.outcome = Outcome::Kept;
    } else if (!MayBeReplaced(path)) {
        line.outcome = Outcome::Failed;
        line.words = "another program has the file open, or it may not be written";
    } else {
        return WriteBeside(std::move(line), {.password = password});
    }
    Note(std::move(line));
}

/// Until the file has been written its document is one that the batch has not come to.
void FileBatch::WriteBeside(BatchLine line, const PdfOptions& options)
{
    const std::size_t place = report.lines.size();
    Note({.of = line.of, .name = line.name});
    beside.Give([this, place, line = std::move(line), options, document = job.document.Ended()] {
        const auto failed = [this, handed = handled.size()](const FileError& error) {
            handled.at(handed).line.outcome = Outcome::Failed;
            handled.at(handed).line.words = std::generic_category().message(static_cast<int>(error.Number()));
        };
        const std::string pdf = writer.Write(*document, options);
        handled.push_back({place, line});
        handled.back().line.outcome = Outcome::Done;
        try {
            folder.Write(line.words, pdf, failed);
        } catch (const FileError& error) {
            failed(error);
        }
    });
}

void FileBatch::Settle()
{
    if (IsCancelled())
        job.document.Drop();
    EndFiles();
}

void FileBatch::EndFiles()
{
    const auto keepFailure = [this](const auto& step) {
        try {
            step();
        } catch (const std::exception&) {
            failure = std::current_exception();
        }
    };
    // What has been written gets its name, whatever has become of what came after it.
    keepFailure([this] { beside.Wait(); });
    keepFailure([this] { folder.Sync(); });
    for (Handed& one : handled)
        report.lines.at(one.place) = std::move(one.line);
    handled.clear();
}

void FileBatch::TellOfEnd()
{
    if (failure)
        std::rethrow_exception(failure);
    Batch::TellOfEnd();
}

std::vector<std::string> FilesThere(const Session& session, const BatchOrder& order)
{
    std::vector<std::string> wanted, there;
    const FilesOrder& files = *order.files;
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    std::vector<std::string> employees = ListEmployees(database, order.employer);
    std::ranges::sort(employees);
    const BatchFileNames names(order.employer, employees, order.selection.Has(BatchTick::P11D));
    if (order.selection.HasPapersOfEmployees()) {
        for (const std::string& employee : employees)
            if (files.each && (!order.only || order.only->contains(employee)))
                wanted.push_back(names.ofEmployee.at(employee));
        if (files.whole)
            wanted.push_back(names.ofAll);
    }
    if (order.selection.Has(BatchTick::P11DB))
        wanted.push_back(names.ofDeclaration);
    std::ranges::copy_if(wanted, std::back_inserter(there),
                         [&](const std::string& name) { return IsThere(files.folder / name); });
    return there;
}

} // namespace quillmere
