#include "printing/jobs/PdfNames.h"

#include "edition/Edition.h"
#include "frame/DeskMemory.h"
#include "frame/FileNames.h"
#include "frame/Session.h"
#include "frame/Text.h"
#include "printing/jobs/JobSequence.h"

#include <fmt/format.h>
#include <set>
#include <system_error>

namespace quillmere {

namespace {

constexpr std::string_view PdfFolderKey = "PDF FOLDER";

/// Gives names that no other has.
class UniqueNames {
public:
    std::string Take(const std::string& name)
    {
        std::string unique = name;
        for (int number = 2; !taken.insert(UpperCase(unique)).second; ++number)
            unique = fmt::format("{} ({})", name, number);
        return unique + ".pdf";
    }

private:
    std::set<std::string> taken;
};

} // namespace

std::string FileNameOf(std::string_view documentName, bool isForm)
{
    return ReadyFileName(fmt::format("{}{}{}", documentName, isForm ? " - P11D " : " ", edition::YearLabel));
}

BatchFileNames::BatchFileNames(const std::string& employer, const std::vector<std::string>& employees, bool isForm)
{
    UniqueNames names;
    ofDeclaration = names.Take(FileNameOf(DeclarationDocumentName(employer), false));
    ofAll = names.Take(FileNameOf(employer, isForm));
    for (const std::string& employee : employees)
        ofEmployee[employee] = names.Take(FileNameOf(EmployeeDocumentName(employer, employee), isForm));
}

std::filesystem::path PdfFolder(const Session& session)
{
    std::filesystem::path folder = DeskMemory(session.programFolder).Recall(PdfFolderKey);
    if (std::error_code error; folder.empty() || !std::filesystem::is_directory(folder, error))
        folder = session.ClientDatabasePath().parent_path();
    return folder;
}

void RememberPdfFolder(const Session& session, const std::filesystem::path& folder)
{
    DeskMemory(session.programFolder).Remember(PdfFolderKey, folder.string());
}

} // namespace quillmere
