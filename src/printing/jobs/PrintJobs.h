#pragma once

#include "clientdb/store/Recordset.h"
#include "frame/PrintedTable.h"
#include "printing/jobs/BatchSelection.h"
#include "printing/jobs/PrintSystem.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace quillmere {

/// Draws the document of one employee, or the declaration of the employer, and shows it: as a PDF file where the
/// settings say so, else in the preview. It never prints; that is done from the preview.
void PrintEmployeeJob(Session& session, PrintSystem& printing, std::string_view employer, std::string_view employee,
                      PrintedDocument document);

/// Draws a table that a screen shows and shows it as a document of its own, as PrintEmployeeJob does.
void PrintTableJob(Session& session, PrintSystem& printing, const PrintedTable& table);

/// Draws the document that was shown last anew, and shows it; `look` stands beside it again.
void ShowAgain(Session& session, PrintSystem& printing, const std::string& look);

/// Keeps the document that the preview shows as a PDF file, with the offsets and the scale of PDF files, which need not
/// be those of the preview. False if it has to be drawn anew and there is nobody any more to draw it for, which is
/// told. Throws FileError, and StoreError.
[[nodiscard]] bool SaveShown(Session& session, PrintSystem& printing, const std::filesystem::path& file);

/// Prints a document for each employee of the employer, in the order of their names, then the declaration, as selected.
/// They go to the printer; nothing is shown.
void PrintBatchJob(Session& session, PrintSystem& printing, std::string_view employer, const BatchSelection& selection);

/// Marks the form with which the document in hand begins, if it begins with one, as printed today. The mark is a help:
/// where the store cannot take it nothing else suffers.
void MarkPrinted(Database& database, const JobDocument& document, Day today);
void MarkPrinted(const Session& session, const JobDocument& document);

/// Says in the status bar how many pages a printer has been sent, and perhaps something more.
void SayPagesSent(Session& session, int pages, std::string_view printer, std::string_view more = {});

} // namespace quillmere
