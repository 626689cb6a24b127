#include "clientdb/RecentEmployees.h"

#include "clientdb/Employees.h"
#include "clientdb/EmployerScreens.h"
#include "frame/CheckedFile.h"
#include "frame/CloseAll.h"
#include "frame/Folders.h"
#include "frame/Text.h"

#include <algorithm>
#include <fmt/format.h>
#include <sstream>

namespace quillmere {

namespace {

constexpr std::string_view FileName = "RECENT.TXT";

/// The file's lines: a folder's path, and below it its employees, each an employer and an employee parted by a tab.
std::vector<std::string> LinesOf(const std::filesystem::path& file)
{
    std::vector<std::string> lines;
    try {
        std::istringstream text(ReadFile(file));
        for (std::string line; std::getline(text, line);)
            lines.push_back(line);
    } catch (const FileError&) {
        // Nobody has been opened yet.
    }
    return lines;
}

bool IsEmployee(std::string_view line)
{
    return line.find('\t') != std::string_view::npos;
}

std::filesystem::path FileOf(const Session& session)
{
    return session.programFolder / FileName;
}

std::string FolderOf(const Session& session)
{
    return session.settings.path.at(static_cast<std::size_t>(session.settings.selectedFolder));
}

/// Everybody who is remembered for the selected folder, there or not.
std::vector<EmployeeKey> Remembered(const Session& session)
{
    const std::vector<std::string> lines = LinesOf(FileOf(session));
    std::vector<EmployeeKey> keys;
    auto line = std::ranges::find(lines, FolderOf(session));
    if (line == lines.end())
        return keys;
    for (++line; line != lines.end() && IsEmployee(*line); ++line) {
        const std::size_t tab = line->find('\t');
        keys.push_back({line->substr(0, tab), line->substr(tab + 1)});
    }
    return keys;
}

/// A name as a menu shows it: an ampersand in it marks no letter.
std::string InMenu(std::string_view name)
{
    std::string text;
    for (const char c : name)
        text.append(c == '&' ? 2 : 1, c);
    return text;
}

bool IsOfAnEmployer(const EmployeeKey& key)
{
    return !key.employer.empty() && key.employer != SampleEmployer;
}

/// Whether there is anybody to open in the folder.
enum class Folder { HasEmployers, HasNone, IsUnreadable };

Folder Look(Database& database)
{
    try {
        Recordset records = database.OpenRecordset("P11D");
        records.Fetch({"EmployerName"});
        for (records.MoveFirst(); !records.AtEnd(); records.MoveNext())
            if (!records.Field("EmployerName").empty() && records.Field("EmployerName") != SampleEmployer)
                return Folder::HasEmployers;
        return Folder::HasNone;
    } catch (const Failure&) {
        return Folder::IsUnreadable;
    }
}

std::string_view FirstWords(Folder folder)
{
    switch (folder) {
    case Folder::HasEmployers:
        return "Open an employee from the list, find one by any part of his name, or add one.";
    case Folder::HasNone:
        return "There is no employer in this folder yet. Add the first one, or bring everybody over.";
    default:
        return {};
    }
}

/// Those of them who are in the database.
std::vector<EmployeeKey> ThoseThere(Database& database, std::vector<EmployeeKey> keys)
{
    for (const EmployeeKey& key : keys)
        database.WillSeek("P11D", key.employer, key.employee);
    std::erase_if(keys, [&](const EmployeeKey& key) { return !EmployeeExists(database, key.employer, key.employee); });
    return keys;
}

/// What the selected folder has to open.
struct ToOpen {
    std::vector<EmployeeKey> recent;
    Folder folder = Folder::IsUnreadable;
};

ToOpen LookWhatIsThere(const Session& session)
{
    ToOpen found;
    try {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        found.recent = ThoseThere(database, Remembered(session));
        const bool isAnybody = std::ranges::any_of(found.recent, IsOfAnEmployer);
        found.folder = isAnybody ? Folder::HasEmployers : Look(database);
    } catch (const Failure&) {
        // Nobody is known to be there.
    }
    return found;
}

bool IsOpen(const Session& session, const EmployeeKey& key)
{
    return session.screens.Find("Form3") != nullptr &&
           key == EmployeeKey{session.CurrentEmployer, session.CurrentEmployee};
}

/// Opens an employee, with the page in front that was in front.
void GoTo(Session& session, const EmployeeKey& key)
{
    const bool onPage2 = session.screens.IsShown("Side2Form1");
    if (!OpenEmployee(session, key.employer, key.employee) || !onPage2)
        return;
    Screen* page = session.screens.Find("Form3");
    page->Click(page->box("Page2"));
}

} // namespace

std::vector<EmployeeKey> RecentEmployees(const Session& session)
{
    std::vector<EmployeeKey> keys = Remembered(session);
    if (keys.empty())
        return keys;
    try {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        return ThoseThere(database, std::move(keys));
    } catch (const Failure&) {
        return {};
    }
}

namespace {

/// Puts the current employee in front of those who are remembered.
void Remember(const Session& session, std::vector<EmployeeKey>& keys)
{
    const EmployeeKey opened{session.CurrentEmployer, session.CurrentEmployee};
    if (!keys.empty() && keys.front() == opened)
        return;
    std::vector<EmployeeKey> before = keys;
    std::erase(keys, opened);
    keys.insert(keys.begin(), opened);
    keys.resize(std::min<std::size_t>(keys.size(), RecentSlots));
    std::string text = FolderOf(session) + "\n";
    for (const EmployeeKey& key : keys)
        text += key.employer + "\t" + key.employee + "\n";
    // The other folders keep theirs.
    bool others = false;
    for (const std::string& line : LinesOf(FileOf(session))) {
        if (!IsEmployee(line))
            others = line != FolderOf(session);
        if (others)
            text += line + "\n";
    }
    try {
        WriteFileChecked(FileOf(session), text);
    } catch (const FileError&) {
        keys = std::move(before); // it is remembered where there is room to
    }
}

void ShowToOpen(Session& session, const ToOpen& found)
{
    Screen* const main = session.screens.Find("MDIForm1");
    Box* const words = session.screens.FindBox("MDIForm1", "StartWords");
    if (words == nullptr)
        return;
    const std::vector<EmployeeKey>& keys = found.recent;
    for (int slot = 1; slot <= RecentSlots; ++slot) {
        Box& entry = main->box("mnuRecent", slot);
        const bool used = static_cast<std::size_t>(slot) <= keys.size();
        entry.SetVisible(used);
        if (!used)
            continue;
        const EmployeeKey& key = keys[static_cast<std::size_t>(slot - 1)];
        entry.SetText(fmt::format("&{} {} ({})", slot, InMenu(key.employee), InMenu(key.employer)));
    }
    words->SetText(FirstWords(found.folder));
    main->box("StartWithEmployers").SetVisible(found.folder != Folder::HasNone);
    main->box("StartWithNone").SetVisible(found.folder == Folder::HasNone);
}

} // namespace

void RememberOpened(Session& session)
{
    ToOpen found = LookWhatIsThere(session);
    Remember(session, found.recent);
    ShowToOpen(session, found);
}

void RebuildRecent(Session& session)
{
    ShowToOpen(session, LookWhatIsThere(session));
}

void OpenRecent(Session& session, int entry)
{
    const std::vector<EmployeeKey> keys = RecentEmployees(session);
    if (static_cast<std::size_t>(entry) > keys.size())
        return;
    const EmployeeKey& key = keys[static_cast<std::size_t>(entry - 1)];
    if (!IsOpen(session, key))
        GoTo(session, key);
}

void OpenLastEmployee(Session& session)
{
    for (const EmployeeKey& key : RecentEmployees(session))
        if (!IsOpen(session, key))
            return GoTo(session, key);
    SetStatusNote(session, "Nobody else has been open yet");
}

void OpenNeighbour(Session& session, int places)
{
    std::vector<std::string> employees;
    {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        employees = ListEmployees(database, session.CurrentEmployer);
    }
    const auto current = std::ranges::find(employees, session.CurrentEmployee);
    const auto place = current - employees.begin() + places;
    if (current == employees.end() || place < 0 || place >= std::ssize(employees))
        return SetStatusNote(session, fmt::format("{} is the {} employee of {}", session.CurrentEmployee,
                                                  places < 0 ? "first" : "last", session.CurrentEmployer));
    GoTo(session, {session.CurrentEmployer, employees[static_cast<std::size_t>(place)]});
}

} // namespace quillmere
