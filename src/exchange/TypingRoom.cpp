#include "exchange/TypingRoom.h"

#include "exchange/Csv.h"
#include "frame/CellEntry.h"
#include "screens/Form3.h"
#include "screens/Side2Form1.h"

#include <algorithm>
#include <fmt/format.h>
#include <stdexcept>
#include <utility>

namespace quillmere::exchange {

/// Hears what is told, and does nothing else.
class TypingRoom::Door : public Platform {
public:
    std::string told;

    Answer ShowMessage(const Message& message) override
    {
        told += (told.empty() ? "" : " ") + message.text;
        return message.defaultAnswer;
    }
    void Beep() override {}
    std::optional<std::string> AskSaveFile(const SaveFileQuestion& /*question*/) override { return std::nullopt; }
    std::optional<std::string> AskOpenFile(const OpenFileQuestion& /*question*/) override { return std::nullopt; }
    std::optional<std::string> AskFolder(const FolderQuestion& /*question*/) override { return std::nullopt; }
    bool ShowPrinterSetup() override { return false; }
    std::vector<std::string> Printers() override { return {}; }
    PrintOutcome Print(const PrintRequest& /*request*/) override { return PrintOutcome::PrinterUnreachable; }
    int OpenWithDesktop(const std::filesystem::path& /*file*/) override { return 0; }
    Day Today() override { return {}; }
    std::string TimeOfDay() override { return {}; }
    void SetBusyPointer(bool /*busy*/) override {}
    void ShowProgress(int /*done*/, int /*total*/) override {}
    void YieldToMessages() override {}
    void CopyText(const std::string& /*text*/) override {}
    std::string UserName() override { return {}; }
    std::string DeskName() override { return {}; }
};

namespace {

constexpr int MostCars = 6;

} // namespace

TypingRoom::TypingRoom() : door(std::make_unique<Door>()), session(*door)
{
    page1 = std::make_unique<Form3>(session);
    page2 = std::make_unique<Side2Form1>(session);
    cars = std::make_unique<Screen>(session, "Cars", ShowMode::Child, "");
    for (int car = 1; car <= MostCars; ++car)
        columns.emplace_back(session, *cars, car, CarColumn::Totals{});
}

TypingRoom::~TypingRoom() = default;

Screen& TypingRoom::Page(std::string_view name) const
{
    return name == page1->Name() ? *page1 : *page2;
}

ScheduleNotepad& TypingRoom::List(std::string_view name)
{
    const auto known = lists.find(name);
    if (known != lists.end())
        return *known->second;
    const auto member = std::ranges::find(Notepads(), name, &NotepadMember::name);
    if (member == Notepads().end())
        throw std::logic_error("no list is named " + std::string(name));
    return *lists.emplace(name, std::make_unique<ScheduleNotepad>(session, *member)).first->second;
}

std::string TypingRoom::Type(Screen& screen, Box& box, std::string_view cell)
{
    TakeTold();
    const std::string wrong = TypeCell(screen, box, WithoutGuard(cell));
    const std::string told = TakeTold();
    return told.empty() ? wrong : fmt::format("\"{}\": {}", Entry(box, WithoutGuard(cell)), told);
}

std::string TypingRoom::TakeTold()
{
    return std::exchange(door->told, {});
}

} // namespace quillmere::exchange
