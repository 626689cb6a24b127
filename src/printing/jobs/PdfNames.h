#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Names and places of the PDF files that leave the program.
namespace quillmere {

struct Session;

/// The name of a document's file, ready to send and without its ending: the document's and the year's. One that
/// is or begins with an employee's form says so, since he has those of other years too.
std::string FileNameOf(std::string_view documentName, bool isForm);

/// The files of an employer's batch, with their endings.
struct BatchFileNames {
    /// `isForm` as for FileNameOf, of the employees' files. Names that would be the same, on a disk that does not tell
    /// small letters from capitals too, are told apart by a number: by the order of the employees, whoever is printed.
    BatchFileNames(const std::string& employer, const std::vector<std::string>& employees, bool isForm);

    std::map<std::string, std::string, std::less<>> ofEmployee;
    std::string ofAll, ofDeclaration;
};

/// The folder into which a file was saved last, or the client folder.
std::filesystem::path PdfFolder(const Session& session);
void RememberPdfFolder(const Session& session, const std::filesystem::path& folder);

} // namespace quillmere
