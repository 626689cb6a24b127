#include "clientdb/SafetyCopies.h"

#include "clientdb/store/OnlineCopy.h"
#include "clientdb/store/Recordset.h"
#include "clientdb/store/ServerService.h"
#include "frame/BusyPointer.h"
#include "frame/CheckedFile.h"
#include "frame/CloseAll.h"
#include "frame/FileLock.h"
#include "frame/Session.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fmt/format.h>
#include <map>
#include <tuple>

namespace quillmere {

namespace {

constexpr std::string_view FolderName = "Copies", Ending = ".mdb";

struct ReasonRow {
    CopyReason reason;
    std::string_view words;
    bool good = true;
};
constexpr auto Reasons = std::to_array<ReasonRow>({
    {CopyReason::FirstOfDay, "first of the day"},
    {CopyReason::Delete, "before Delete"},
    {CopyReason::Rename, "before Rename"},
    {CopyReason::Transfer, "before Transfer"},
    {CopyReason::Import, "before Import"},
    {CopyReason::PutBack, "before Put Back"},
    {CopyReason::Share, "before Share"},
    {CopyReason::Damaged, "damaged", false},
    {CopyReason::Salvaged, "salvaged", false},
});

const ReasonRow& RowOf(CopyReason reason)
{
    return *std::ranges::find(Reasons, reason, &ReasonRow::reason);
}

auto MomentOf(const SafetyCopy& copy)
{
    return std::tie(copy.day, copy.time, copy.number);
}

bool IsLater(const SafetyCopy& one, const SafetyCopy& other)
{
    return MomentOf(one) > MomentOf(other);
}

/// With what the name of every copy of a database begins.
std::string StemOf(const std::filesystem::path& database)
{
    return database.stem().string() + " ";
}

/// A number of so many digits, which are taken off the text; nothing if it does not begin with one.
std::optional<int> TakeNumber(std::string_view& text, std::size_t digits)
{
    int number = 0;
    const std::string_view piece = text.substr(0, digits);
    const auto [end, error] = std::from_chars(piece.data(), piece.data() + piece.size(), number);
    if (error != std::errc() || piece.size() != digits || end != piece.data() + digits || number < 0)
        return std::nullopt;
    text.remove_prefix(digits);
    return number;
}

/// Takes off what the text must begin with.
bool Take(std::string_view& text, std::string_view beginning)
{
    if (!text.starts_with(beginning))
        return false;
    text.remove_prefix(beginning.size());
    return true;
}

/// Three numbers with a sign between them, the first of so many digits.
std::optional<std::array<int, 3>> TakeThree(std::string_view& text, std::size_t digitsOfFirst)
{
    std::array<int, 3> numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (i > 0 && !Take(text, "-"))
            return std::nullopt;
        const auto number = TakeNumber(text, i == 0 ? digitsOfFirst : 2);
        if (!number)
            return std::nullopt;
        numbers[i] = *number;
    }
    return numbers;
}

/// The number of a second copy of one second, " (2)", taken off the end; 1 if there is none.
int TakeCount(std::string_view& text)
{
    const std::size_t opening = text.rfind(" (");
    if (opening == std::string_view::npos || !text.ends_with(')'))
        return 1;
    std::string_view digits = text.substr(opening + 2, text.size() - opening - 3);
    const auto number = TakeNumber(digits, digits.size());
    if (!number)
        return 1;
    text = text.substr(0, opening);
    return *number;
}

void Remove(const std::filesystem::path& file)
{
    std::error_code staysForNextTime;
    std::filesystem::remove(file, staysForNextTime);
}

/// What killed processes have left of copies that they were about to make.
void RemoveHalfMade(const std::filesystem::path& database)
{
    for (const std::filesystem::path& leftOver : ForgottenTemporaries(CopiesFolder(database)))
        if (leftOver.filename().string().starts_with(StemOf(database)))
            Remove(leftOver);
}

void MakeFolder(const std::filesystem::path& folder)
{
    std::error_code error;
    std::filesystem::create_directory(folder, error);
    if (error)
        throw FileError(folder, error.value());
}

bool HasNobody(const std::filesystem::path& file)
{
    Database database = Database::OpenDatabase(file, OpenMode::ReadOnly);
    Recordset records = database.OpenRecordset("P11D");
    records.Fetch({"EmployerName"});
    records.MoveFirst();
    return records.AtEnd();
}

} // namespace

std::string_view WordsOf(CopyReason reason)
{
    return RowOf(reason).words;
}

bool SafetyCopy::IsGood() const
{
    return RowOf(reason).good;
}

std::string FileNameOf(const SafetyCopy& copy, const std::filesystem::path& database)
{
    const std::chrono::year_month_day day{copy.day};
    std::string time = copy.time;
    std::ranges::replace(time, ':', '-');
    return fmt::format("{}{:04}-{:02}-{:02} {} {}{}{}", StemOf(database), static_cast<int>(day.year()),
                       static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()), time, WordsOf(copy.reason),
                       copy.number > 1 ? fmt::format(" ({})", copy.number) : "", Ending);
}

std::optional<SafetyCopy> ReadCopyName(const std::filesystem::path& file, const std::filesystem::path& database)
{
    const std::string name = file.filename().string();
    std::string_view rest = name;
    if (!rest.ends_with(Ending) || !Take(rest, StemOf(database)))
        return std::nullopt;
    rest.remove_suffix(Ending.size());
    const auto date = TakeThree(rest, 4);
    if (!date || !Take(rest, " "))
        return std::nullopt;
    const auto time = TakeThree(rest, 2);
    if (!time || !Take(rest, " "))
        return std::nullopt;
    const int number = TakeCount(rest);
    const auto* const row = std::ranges::find(Reasons, rest, &ReasonRow::words);
    const std::chrono::year_month_day day{std::chrono::year((*date)[0]),
                                          std::chrono::month(static_cast<unsigned>((*date)[1])),
                                          std::chrono::day(static_cast<unsigned>((*date)[2]))};
    if (row == Reasons.end() || !day.ok())
        return std::nullopt;
    return SafetyCopy{.day = day,
                      .time = fmt::format("{:02}:{:02}:{:02}", (*time)[0], (*time)[1], (*time)[2]),
                      .reason = row->reason,
                      .number = number,
                      .file = file};
}

std::filesystem::path CopiesFolder(const std::filesystem::path& database)
{
    return database.parent_path() / FolderName;
}

std::vector<SafetyCopy> SafetyCopiesOf(const std::filesystem::path& database)
{
    std::vector<SafetyCopy> copies;
    std::error_code thereIsNone;
    std::filesystem::directory_iterator entry(CopiesFolder(database), thereIsNone);
    for (; !thereIsNone && entry != std::filesystem::directory_iterator(); entry.increment(thereIsNone))
        if (auto copy = ReadCopyName(entry->path(), database))
            copies.push_back(std::move(*copy));
    std::ranges::sort(copies, IsLater);
    return copies;
}

std::vector<SafetyCopy> Outdated(std::vector<SafetyCopy> copies, Day today)
{
    constexpr int DaysOfAll = 7, DaysOfOneADay = 30;
    std::ranges::sort(copies, IsLater);
    // Good or not, and its day or its month: the latest of each stays.
    std::map<std::tuple<bool, std::chrono::year_month, unsigned>, bool> met;
    std::erase_if(copies, [&](const SafetyCopy& copy) {
        const int age = DaysBetween(copy.day, today);
        if (age < DaysOfAll)
            return true;
        const std::chrono::year_month_day date{copy.day};
        const unsigned dayOfMonth = age < DaysOfOneADay ? static_cast<unsigned>(date.day()) : 0;
        return met.try_emplace({copy.IsGood(), date.year() / date.month(), dayOfMonth}).second;
    });
    return copies;
}

std::filesystem::path PlaceOfCopy(const std::filesystem::path& database, SafetyCopy copy)
{
    const std::filesystem::path folder = CopiesFolder(database);
    MakeFolder(folder);
    for (const SafetyCopy& there : SafetyCopiesOf(database))
        if (there.day == copy.day && there.time == copy.time)
            copy.number = std::max(copy.number, there.number + 1);
    return folder / FileNameOf(copy, database);
}

void MakeSafetyCopy(const std::filesystem::path& database, const SafetyCopy& copy)
{
    // Two desks that make a copy at one moment do so one after the other.
    constexpr std::chrono::seconds Patience(2);
    MakeFolder(CopiesFolder(database));
    const FileLock alone(CopiesFolder(database), Patience);
    const std::filesystem::path file = PlaceOfCopy(database, copy);
    RemoveHalfMade(database);
    CopyDatabase(database, file);
    for (const SafetyCopy& old : Outdated(SafetyCopiesOf(database), copy.day))
        Remove(old.file);
}

SafetyCopy CopyOfNow(Session& session, CopyReason reason)
{
    return {.day = session.platform.Today(), .time = session.platform.TimeOfDay(), .reason = reason};
}

void KeepCopy(Session& session, CopyReason reason)
{
    const BusyPointer busy(session.platform);
    const std::filesystem::path database = session.ClientDatabasePath();
    try {
        if (LeavesCopiesToServer(database) || HasNobody(database))
            return;
        MakeSafetyCopy(database, CopyOfNow(session, reason));
        session.noCopyTold = false;
    } catch (const Failure& failure) {
        if (!std::exchange(session.noCopyTold, true))
            SetStatusNote(session, fmt::format("No safety copy, {}: {}", WordsOf(reason), failure.what()));
    }
}

void KeepDailyCopy(Session& session)
{
    const Day today = session.platform.Today();
    const auto isToday = [today](const SafetyCopy& copy) {
        return copy.day == today && copy.reason == CopyReason::FirstOfDay;
    };
    if (std::ranges::none_of(SafetyCopiesOf(session.ClientDatabasePath()), isToday))
        KeepCopy(session, CopyReason::FirstOfDay);
}

void KeepDailyCopySoon(Session& session)
{
    if (Screen* main = session.screens.Find("MDIForm1"))
        session.screens.StartTimer(*main, "CopyTimer", [&session] { KeepDailyCopy(session); });
}

} // namespace quillmere
