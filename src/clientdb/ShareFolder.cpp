#include "clientdb/ShareFolder.h"

#include "clientdb/SafetyCopies.h"
#include "frame/BusyPointer.h"
#include "frame/CloseAll.h"
#include "frame/Session.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <fmt/format.h>

namespace quillmere {

namespace {

constexpr std::string_view ShareTitle = "Share This Folder", BackTitle = "Back to a File";

/// How long a click may have to wait.
constexpr std::chrono::milliseconds Piece(50);

KeyVerdict SchemaKeyFilter(char32_t key)
{
    constexpr char32_t Backspace = 8;
    if (key >= U'A' && key <= U'Z')
        key += U'a' - U'A';
    const bool isLetter = key >= U'a' && key <= U'z', isDigit = key >= U'0' && key <= U'9';
    return {.key = isLetter || isDigit || key == U'_' || key == Backspace ? key : 0};
}

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "ShareWhere", .kind = BoxKind::Label},
    {.name = "ServerHost", .spoken = "Server, or folder of its socket"},
    {.name = "ServerPort", .filter = WholeNumberKeyFilter, .spoken = "Port"},
    {.name = "ServerDatabase", .spoken = "Database"},
    {.name = "ServerUser", .spoken = "User"},
    {.name = "ServerSchema", .filter = SchemaKeyFilter, .spoken = "Schema of this folder"},
    {.name = "SharePassword",
     .kind = BoxKind::Label,
     .text = "No password is kept here: it goes into the file .pgpass of your home folder, as the line "
             "server:port:database:user:password."},
    {.name = "ShareProgress", .kind = BoxKind::Label},
    {.name = "ShareGo", .kind = BoxKind::Button, .text = "&Share"},
    {.name = "ShareCancel", .kind = BoxKind::Button, .text = "&Cancel"},
});

/// Which setting of a service a box is.
struct SettingBox {
    std::string_view box, setting;
};
constexpr auto SettingBoxes = std::to_array<SettingBox>({
    {"ServerHost", "host"},
    {"ServerPort", "port"},
    {"ServerDatabase", "dbname"},
    {"ServerUser", "user"},
});

/// What the schema is called that a folder has left, a name that none has had before.
std::string LeftSchema(Session& session, std::string_view schema)
{
    constexpr std::size_t MostOfOldName = 40;
    std::string time = session.platform.TimeOfDay();
    std::erase(time, ':');
    return fmt::format("{}_until_{}_{}", schema.substr(0, MostOfOldName), TodayStamp(session.platform.Today()), time);
}

} // namespace

std::string ShareWords(Session& session)
{
    try {
        if (!ReadService(session.ClientDatabasePath()))
            return fmt::format("{}...", ShareTitle);
    } catch (const Failure&) {
        // A service that is not to be used is one.
    }
    return fmt::format("{}...", BackTitle);
}

ShareFolder::ShareFolder(Session& session) : Screen(session, "ShareFolder", ShowMode::Modal, ShareTitle)
{
    AddBoxes(Rows);
    SetButtons("ShareCancel", "ShareGo");
    OnClick("ShareGo", [this](Box&) { Start(); });
    OnClick("ShareCancel", [this](Box&) { Stop(); });
}

bool ShareFolder::Load()
{
    Look();
    return true;
}

void ShareFolder::Look()
{
    const std::filesystem::path database = session.ClientDatabasePath();
    try {
        service = ReadService(database);
    } catch (const Failure& failure) {
        session.messages.Tell(BackTitle, failure.what());
        service = ServerService{.file = database, .settings = {}, .schema = {}};
    }
    SetCaption(service ? BackTitle : ShareTitle);
    box("ShareGo").SetText(service ? "&Back to a File" : "&Share");
    box("ShareWhere")
        .SetText(fmt::format("{} {}",
                             service ? "The clients of this folder are on a server. It is named by"
                                     : "The clients of this folder are in a file:",
                             database.filename().string()));
    EnableBoxes();
    if (!service)
        return;
    for (const SettingBox& of : SettingBoxes) {
        const auto found = std::ranges::find(service->settings, of.setting, &ServerService::Setting::first);
        box(of.box).SetText(found == service->settings.end() ? std::string() : found->second);
    }
    box("ServerSchema").SetText(service->schema);
}

void ShareFolder::EnableBoxes()
{
    for (const SettingBox& of : SettingBoxes)
        box(of.box).SetReadOnly(service || move);
    box("ServerSchema").SetReadOnly(service || move);
    box("ShareGo").SetEnabled(!move);
    box("ShareCancel").SetText(move ? "&Cancel" : "&Close");
}

ServerService ShareFolder::Named() const
{
    ServerService named{.file = session.ClientDatabasePath(), .settings = {}, .schema = box("ServerSchema").Text()};
    for (const SettingBox& of : SettingBoxes)
        if (!box(of.box).Empty())
            named.settings.emplace_back(of.setting, box(of.box).Text());
    return named;
}

void ShareFolder::Start()
{
    for (const SettingBox& of : SettingBoxes)
        box(of.box).TrimText();
    if (!service && !IsSchemaName(box("ServerSchema").Text())) {
        session.messages.Tell(Caption(), "A folder needs a schema of its own on the server. Its name has small "
                                         "letters, digits and lines.");
        Focus(box("ServerSchema"));
        return;
    }
    if (!CloseAllScreens(session))
        return;
    box("ShareProgress").SetText({});
    try {
        const BusyPointer busy(session.platform);
        move = NewMove();
    } catch (const Failure& failure) {
        session.messages.Tell(Caption(), fmt::format("The folder is as it was.\n\n{}", failure.what()));
        return;
    }
    EnableBoxes();
    ShowProgress();
    GoOnLater();
}

std::unique_ptr<FolderMove> ShareFolder::NewMove() const
{
    if (service)
        return UnshareFolder(*service, LeftSchema(session, service->schema));
    return ShareFolderOnServer(
        Named(), [this] { MakeSafetyCopy(session.ClientDatabasePath(), CopyOfNow(session, CopyReason::Share)); });
}

void ShareFolder::GoOnLater()
{
    session.screens.StartTimer(*this, "MoveTimer", [this] { GoOn(); });
}

void ShareFolder::GoOn()
{
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + Piece;
    bool isOver = !move;
    try {
        while (!isOver && Clock::now() < end)
            isOver = !move->GoOn();
    } catch (const Failure& failure) {
        move.reset();
        Look();
        box("ShareProgress").SetText({});
        session.messages.Tell(Caption(), fmt::format("The folder is as it was.\n\n{}", failure.what()));
        return;
    }
    if (isOver)
        return Ended();
    ShowProgress();
    GoOnLater();
}

void ShareFolder::Ended()
{
    if (!move)
        return; // it has been stopped
    ShowProgress();
    const std::string remark = move->Remark();
    move.reset();
    Look();
    box("ShareProgress")
        .SetText(service ? "Shared. The file is kept as a safety copy."
                         : "The clients are in a file again. What was on the server is kept there.");
    if (!remark.empty())
        session.messages.Tell(Caption(), remark);
}

void ShareFolder::Stop()
{
    if (!move) {
        session.screens.Unload(Name());
        return;
    }
    move.reset();
    Look();
    box("ShareProgress").SetText("Cancelled. The folder is as it was.");
}

void ShareFolder::ShowProgress()
{
    const bool compares = move->Copied() == move->Records();
    box("ShareProgress")
        .SetText(fmt::format("{} of {} records {}", compares ? move->Compared() : move->Copied(), move->Records(),
                             compares ? "compared" : "copied"));
}

} // namespace quillmere
