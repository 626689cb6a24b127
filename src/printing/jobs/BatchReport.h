#pragma once

#include "printing/jobs/BatchSelection.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace quillmere {

/// What opens a protected file: something that the employee knows.
enum class OpeningWord { None, NationalInsurance, BirthDate, WorksNumber };

/// Which PDF files a batch makes, and where.
struct FilesOrder {
    std::filesystem::path folder;
    bool each = true;   ///< one for each employee
    bool whole = false; ///< one with the papers of all employees
    OpeningWord word = OpeningWord::None;
    bool replaces = true; ///< files that are there already; else they stay as they are
};

/// What a batch is to print.
struct BatchOrder {
    std::string employer;
    BatchSelection selection;
    /// These employees alone; all of them without.
    std::optional<std::set<std::string, std::less<>>> only = {};
    /// The batch makes files; without, it goes to the printer.
    std::optional<FilesOrder> files = {};
};

/// What became of one document of a batch.
struct BatchLine {
    enum class Of { Employee, Declaration, Employer } of = Of::Employee;
    enum class Outcome {
        Done,
        Failed,
        Left,  ///< the batch ended before
        Empty, ///< there was nothing to print in it
        Kept,  ///< a file that was there has been kept
    } outcome = Outcome::Left;
    std::string name; ///< the employee's, or what the document is
    int pages = 0;
    std::string words = {}; ///< why it failed; of a file that was written its name
};

/// What became of a batch.
struct BatchReport {
    BatchOrder order;
    std::string to; ///< the printer, or the folder
    std::vector<BatchLine> lines;

    /// In a sentence: "42 employees, 118 pages, 41 sent to Office, 1 not: Jane Smith, the printer did not answer".
    std::string InWords() const;
    /// What became of a line's document: "sent", "not printed: the printer did not answer".
    std::string InWords(const BatchLine& line) const;
    /// The same batch for what has not been printed; nothing if all has.
    std::optional<BatchOrder> Again() const;

private:
    std::size_t Count(BatchLine::Outcome outcome) const;
    std::string NotDone() const;
};

} // namespace quillmere
