#include "clientdb/UserOperation.h"

#include "frame/CloseAll.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace quillmere {

namespace {

std::shared_ptr<OperationNote> NoteOf(Session& session, std::string_view words)
{
    OperationNote note{.words = std::string(words), .who = session.platform.DeskName(), .when = MomentNow(session)};
    return std::make_shared<OperationNote>(std::move(note));
}

/// Said once what is being done is done and has said what it says.
void TellHistoryOff(Session& session)
{
    if (std::exchange(session.historyOffTold, true))
        return;
    if (Screen* main = session.screens.Find("MDIForm1"))
        session.screens.StartTimer(*main, "HistoryOff", [&session] {
            SetStatusNote(session, "The change history cannot be written: what is changed cannot be undone");
        });
}

struct PageWords {
    std::string_view screen, words;
};
constexpr auto Pages = std::to_array<PageWords>({{"Form3", "Page 1"}, {"Side2Form1", "Page 2"}});

} // namespace

UserOperation::UserOperation(Session& session, std::string_view words)
    : session(session), isOutermost(session.operation == nullptr)
{
    if (isOutermost)
        session.operation = NoteOf(session, words);
}

UserOperation::~UserOperation()
{
    if (!isOutermost)
        return;
    if (session.operation->historyIsOff)
        TellHistoryOff(session);
    session.operation.reset();
}

std::string MomentNow(Session& session)
{
    const std::chrono::year_month_day today{session.platform.Today()};
    return fmt::format("{:04}-{:02}-{:02} {}", static_cast<int>(today.year()), static_cast<unsigned>(today.month()),
                       static_cast<unsigned>(today.day()), session.platform.TimeOfDay());
}

std::string ScreenWords(const Screen& screen)
{
    const auto* const page = std::ranges::find(Pages, screen.Name(), &PageWords::screen);
    return page != Pages.end() ? std::string(page->words) : screen.Caption().substr(0, screen.Caption().find(" - "));
}

Database OpenForWriting(Session& session, const std::filesystem::path& path)
{
    return Database::OpenDatabase(path, OpenMode::ReadWrite,
                                  session.operation ? session.operation : NoteOf(session, "Change"));
}

Database OpenClients(Session& session)
{
    return OpenForWriting(session, session.ClientDatabasePath());
}

} // namespace quillmere
