#include "clientdb/PutBack.h"

#include "clientdb/RecentEmployees.h"
#include "clientdb/store/Backup.h"
#include "clientdb/store/OnlineCopy.h"
#include "clientdb/store/StoreErrors.h"
#include "edition/Edition.h"
#include "frame/BusyPointer.h"
#include "frame/CloseAll.h"
#include "frame/Session.h"
#include "frame/Text.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <ctime>
#include <fmt/format.h>

namespace quillmere {

namespace {

constexpr std::string_view Title = "Put Back";
constexpr std::size_t DayLength = std::string_view("yyyy-mm-dd").size();

/// A day as names of files have it, as the form writes it.
std::string Shown(std::string_view day)
{
    return fmt::format("{}/{}/{}", day.substr(8, 2), day.substr(5, 2), day.substr(0, 4));
}

std::string DayText(Day day)
{
    const std::string stamp = TodayStamp(day);
    return fmt::format("{}-{}-{}", stamp.substr(0, 4), stamp.substr(4, 2), stamp.substr(6));
}

std::uintmax_t SizeOf(const std::filesystem::path& file)
{
    std::error_code gone;
    const std::uintmax_t size = std::filesystem::file_size(file, gone);
    return gone ? 0 : size;
}

KeptCopy Of(const SafetyCopy& copy)
{
    constexpr std::size_t HoursAndMinutes = 5;
    const std::string day = DayText(copy.day);
    return {.file = copy.file,
            .when = fmt::format("{} {}", Shown(day), copy.time.substr(0, HoursAndMinutes)),
            .why = std::string(WordsOf(copy.reason)),
            .order = fmt::format("{} {} {:09}", day, copy.time, copy.number),
            .size = SizeOf(copy.file),
            .good = copy.IsGood(),
            .left = copy.reason == CopyReason::PutBack};
}

/// When a file was last written, to the minute, on the desk's clock.
std::string WrittenAt(const std::filesystem::path& file)
{
    std::error_code gone;
    const auto written = std::filesystem::last_write_time(file, gone);
    if (gone)
        return {};
    const std::time_t time = std::chrono::system_clock::to_time_t(
        std::chrono::time_point_cast<std::chrono::system_clock::duration>(std::chrono::file_clock::to_sys(written)));
    std::tm local{};
    localtime_r(&time, &local);
    return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}", local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                       local.tm_hour, local.tm_min);
}

/// The day with which a backup's name ends where the proposed one was taken; else when it was written.
KeptCopy OfBackup(const std::filesystem::path& file, const std::filesystem::path& database)
{
    const std::string name = file.stem().string(), stem = database.stem().string() + "-";
    const auto isDay = [](std::string_view text) {
        constexpr std::string_view Pattern = "0000-00-00";
        return text.size() == Pattern.size() && std::ranges::equal(text, Pattern, [](char sign, char wanted) {
                   return wanted == '0' ? sign >= '0' && sign <= '9' : sign == wanted;
               });
    };
    KeptCopy copy{.file = file,
                  .when = {},
                  .why = "Backup: " + file.filename().string(),
                  .order = WrittenAt(file),
                  .size = SizeOf(file)};
    if (name.starts_with(stem) && isDay(std::string_view(name).substr(stem.size())))
        copy.order = name.substr(stem.size());
    if (copy.order.size() >= DayLength)
        copy.when = Shown(copy.order.substr(0, DayLength)) + copy.order.substr(DayLength);
    return copy;
}

/// A file that a backup has put beside the database, whatever the user has named it.
bool IsBackup(const std::filesystem::path& file, const std::filesystem::path& database)
{
    const std::string name = file.filename().string();
    if (UpperCase(file.extension().string()) != ".MDB" || IsSameFile(file, database) ||
        name == edition::TemplateDatabaseName)
        return false;
    return name.starts_with(database.stem().string() + "-") || BeginsAsClientDatabase(file);
}

std::vector<KeptCopy> BackupsOf(const std::filesystem::path& database)
{
    std::vector<KeptCopy> backups;
    std::error_code thereIsNone;
    std::filesystem::directory_iterator entry(database.parent_path(), thereIsNone);
    for (; !thereIsNone && entry != std::filesystem::directory_iterator(); entry.increment(thereIsNone))
        if (std::error_code gone; entry->is_regular_file(gone) && IsBackup(entry->path(), database))
            backups.push_back(OfBackup(entry->path(), database));
    return backups;
}

/// Keeps the database as it is now: a copy of one that is whole, the file itself of one that is damaged, so that what
/// can be read of it still can be. Why it could not, in words; empty if it is kept.
std::string KeepPresent(Session& session)
{
    const std::filesystem::path database = session.ClientDatabasePath();
    std::error_code unreadable;
    if (!std::filesystem::exists(database, unreadable))
        return {};
    try {
        try {
            MakeSafetyCopy(database, CopyOfNow(session, CopyReason::PutBack));
        } catch (const StoreError& failure) {
            if (!failure.IsDamage())
                throw;
            static_cast<void>(BackUpDatabase(database, PlaceOfCopy(database, CopyOfNow(session, CopyReason::Damaged))));
        }
    } catch (const Failure& failure) {
        return failure.what();
    }
    return {};
}

bool Confirmed(Session& session, const KeptCopy& copy, const DatabaseState& state)
{
    const CopyLook now = LookAt(session.ClientDatabasePath());
    return session.messages.Ask(
        Title,
        fmt::format("Put back the database of {}?\n\nIt: {}\nNow: {}\n\nWhatever has been stored since then is "
                    "replaced. A copy of the database as it is now is kept first.",
                    InWords(copy), InWords(state), now.words),
        Icon::Question, Answer::No);
}

/// Nothing on the desk shows the state that was: what showed it is closed, and nobody is the one being worked on.
void ShowWhatIsBack(Session& session)
{
    constexpr std::array<std::string_view, 2> Stay = {"MDIForm1", "SafetyCopies"};
    for (Screen* screen : session.screens.Open())
        if (std::ranges::find(Stay, screen->Name()) == Stay.end())
            session.screens.Unload(screen->Name());
    session.CurrentEmployer.clear();
    session.CurrentEmployee.clear();
    RebuildRecent(session);
}

} // namespace

std::vector<KeptCopy> KeptCopiesOf(const std::filesystem::path& database)
{
    std::vector<KeptCopy> copies = BackupsOf(database);
    for (const SafetyCopy& copy : SafetyCopiesOf(database))
        copies.push_back(Of(copy));
    std::ranges::sort(copies, std::ranges::greater(), &KeptCopy::order);
    return copies;
}

std::string InWords(const KeptCopy& copy)
{
    return fmt::format("{}, {}", copy.when, copy.why);
}

CopyLook LookAt(const std::filesystem::path& file)
{
    try {
        DatabaseState state = LookAtDatabase(file);
        std::string words = InWords(state);
        return {.state = std::move(state), .words = std::move(words)};
    } catch (const Failure& failure) {
        return {.state = std::nullopt, .words = failure.what()};
    }
}

std::optional<GoodCopy> NewestGoodCopy(const std::filesystem::path& database)
{
    std::vector<KeptCopy> copies = KeptCopiesOf(database);
    std::ranges::stable_sort(copies, {}, &KeptCopy::left);
    for (const KeptCopy& copy : copies)
        if (copy.good)
            if (const CopyLook look = LookAt(copy.file); look.IsWhole())
                return GoodCopy{.copy = copy, .state = *look.state};
    return std::nullopt;
}

bool PutBack(Session& session, const KeptCopy& copy)
{
    const CopyLook look = LookAt(copy.file);
    if (!look.IsWhole()) {
        session.messages.Tell(Title, fmt::format("This copy cannot be put back.\n\n{}", look.words));
        return false;
    }
    if (!Confirmed(session, copy, *look.state) || !CloseAllScreens(session))
        return false;
    const BusyPointer busy(session.platform);
    if (const std::string why = KeepPresent(session);
        !why.empty() &&
        !session.messages.Ask(
            Title, fmt::format("The database as it is now cannot be kept.\n\n{}\n\nPut back all the same?", why),
            Icon::Question, Answer::No))
        return false;
    std::string doubt;
    try {
        PutBackDatabase(copy.file, session.ClientDatabasePath());
    } catch (const PutBackUnconfirmed& failure) {
        doubt = failure.what();
    } catch (const Failure& failure) {
        session.messages.Tell(
            Title, fmt::format("The copy could not be put back. The database is as it was.\n\n{}", failure.what()));
        return false;
    }
    ShowWhatIsBack(session);
    SetStatusNote(session, fmt::format("Put back: {}", InWords(copy)));
    if (!doubt.empty())
        session.messages.Tell(Title,
                              fmt::format("The copy has been put back, but the disk has not confirmed it: look at "
                                          "the database once more before you work on.\n\n{}",
                                          doubt));
    return true;
}

} // namespace quillmere
