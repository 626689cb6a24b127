#pragma once

#include "frame/CheckedFile.h"
#include "frame/WorkBeside.h"
#include "printing/jobs/Batch.h"
#include "printing/jobs/PdfNames.h"
#include "printing/paper/PdfWriter.h"

#include <cstddef>
#include <exception>
#include <optional>
#include <string>
#include <vector>

namespace quillmere {

/// A batch that makes PDF files: one for each employee, one with the papers of all, or both, and one of the
/// declaration. It needs no printer, prints no empty page, and no file without papers. While one document is drawn,
/// those before it are made into files and written beside that, in their order.
class FileBatch : public Batch {
public:
    FileBatch(Session& session, PrintSystem& printing, BatchOrder order);

protected:
    Opening Open(const std::string& name, BatchLine::Of of) override;
    void Close(BatchLine line) override;
    void Prepare() override;
    bool Takes(const std::string& employee) const override;
    bool EndRound() override;
    int Printings() const override;
    ProgressBar::Shows Shows() const override { return ProgressBar::Shows::WholePercents; }
    std::vector<BatchLine> Expected() const override;
    void Settle() override;
    void TellOfEnd() override;

private:
    const FilesOrder& Files() const { return *report.order.files; }
    /// Ends the document in hand and has it written, under a name of the folder.
    void Finish(BatchLine line, const std::string& file, const std::string& password = {});
    void WriteBeside(BatchLine line, const PdfOptions& options);
    /// Waits for the files, gives them their names and notes what has become of them.
    void EndFiles();

    std::optional<BatchFileNames> fileNames;
    bool isWhole;              ///< the round that is under way is for the one file of all employees
    bool isWholeBegun = false; ///< and its document is open

    /// A document that has been handed over, and where the report has its line.
    struct Handed {
        std::size_t place;
        BatchLine line;
    };
    PdfWriter writer;
    FolderWriter folder;
    std::vector<Handed> handled; ///< what has become of them
    std::exception_ptr failure;  ///< that is told of at the end
    WorkBeside beside;           ///< has the writer, the folder and what is handled
};

/// The files of the order that are in its folder already. Throws StoreError.
std::vector<std::string> FilesThere(const Session& session, const BatchOrder& order);

/// The word that opens an employee's file; empty if the record does not have it.
std::string OpeningWordOf(const Recordset& records, OpeningWord word);

} // namespace quillmere
