#include "exchange/TypingRoom.h"

#include "exchange/Csv.h"
#include "frame/KeyFilters.h"
#include "frame/Text.h"
#include "screens/Form3.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <stdexcept>

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

// ---- cells

std::string Without(std::string text, std::string_view characters)
{
    std::erase_if(text, [&](char character) { return characters.find(character) != std::string_view::npos; });
    return text;
}

bool AreDigits(std::string_view text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

constexpr auto Months = std::to_array<std::string_view>(
    {"JAN", "FEB", "MAR", "APR", "MAY", "JUN", "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"});

/// "5 Apr 1961", "5-April-61": the month as a number.
std::string MonthInFigures(const std::string& piece)
{
    const auto* const month = std::ranges::find(Months, UpperCase(piece).substr(0, 3));
    return month == Months.end() || AreDigits(piece) ? piece : std::to_string(month - Months.begin() + 1);
}

/// Day first, parted by strokes: also what is written with points or dashes, with the name of the month, or year first
/// with four digits.
std::string DateEntry(const std::string& text)
{
    std::vector<std::string> pieces(1);
    for (const char character : text) {
        if (std::string_view("/.- ").find(character) == std::string_view::npos)
            pieces.back() += character;
        else if (!pieces.back().empty())
            pieces.emplace_back();
        if (pieces.size() > 3) { // the time of day, which some programs write behind it
            pieces.pop_back();
            break;
        }
    }
    if (pieces.size() != 3)
        return text;
    if (AreDigits(pieces[0]) && pieces[0].size() == 4)
        std::swap(pieces[0], pieces[2]);
    return fmt::format("{}/{}/{}", pieces[0], MonthInFigures(pieces[1]), pieces[2]);
}

/// True for digits in threes after each comma.
bool HasThousands(std::string_view text)
{
    std::size_t comma = text.find(',');
    if (comma == std::string_view::npos || comma == 0)
        return false;
    while (comma != std::string_view::npos) {
        const std::size_t next = text.find_first_of(",.)", comma + 1);
        const std::size_t end = next == std::string_view::npos ? text.size() : next;
        if (end - comma != 4 || !AreDigits(text.substr(comma + 1, 3)))
            return false;
        comma = next != std::string_view::npos && text[next] == ',' ? next : std::string_view::npos;
    }
    return true;
}

std::string AmountEntry(std::string text)
{
    constexpr std::string_view Pound = "£", Code = "GBP";
    if (const std::size_t sign = text.find(Pound); sign != std::string::npos)
        text.erase(sign, Pound.size());
    if (text.starts_with(Code))
        text.erase(0, Code.size());
    text = Without(text, " ");
    return HasThousands(text) ? Without(text, ",") : text;
}

/// A spreadsheet may write whole numbers with decimals.
std::string WholeNumberEntry(const std::string& text)
{
    std::string number = AmountEntry(text);
    const std::size_t point = number.find('.');
    if (point != std::string::npos && number.find_first_not_of('0', point + 1) == std::string::npos)
        number.erase(point);
    return number;
}

/// Words for what is ticked or not, for a man or a woman.
struct WordRow {
    std::string_view word, entry;
};
constexpr auto TickWords = std::to_array<WordRow>({{"YES", "1"},
                                                   {"Y", "1"},
                                                   {"TRUE", "1"},
                                                   {"1", "1"},
                                                   {"X", "1"},
                                                   {"NO", "0"},
                                                   {"N", "0"},
                                                   {"FALSE", "0"},
                                                   {"0", "0"}});
constexpr auto SexWords = std::to_array<WordRow>({{"MALE", "M"}, {"MAN", "M"}, {"FEMALE", "F"}, {"WOMAN", "F"}});
constexpr auto YesNoWords = std::to_array<WordRow>({{"YES", "Y"}, {"NO", "N"}});

std::string InLetters(const std::string& text, std::span<const WordRow> words)
{
    const auto found = std::ranges::find(words, UpperCase(text), &WordRow::word);
    return found == words.end() ? text : std::string(found->entry);
}

bool IsZero(std::string_view entry)
{
    return entry.find_first_not_of("0.") == std::string_view::npos;
}

} // namespace

std::string OneLine(std::string_view cell)
{
    std::u32string line;
    for (const char32_t character : CodePoints(WithoutGuard(cell))) {
        constexpr char32_t NoBreak = 0xA0, NarrowNoBreak = 0x202F;
        const bool isBlank = character == U'\n' || character == U'\r' || character == U'\t' || character == NoBreak ||
                             character == NarrowNoBreak;
        line += isBlank ? U' ' : character;
    }
    return Trim(Utf8(line));
}

std::string Entry(const Box& box, std::string_view cell)
{
    std::string text = OneLine(cell);
    if (text.empty())
        return text;
    if (box.Kind() == BoxKind::Tick)
        return InLetters(text, TickWords);
    if (box.Filter() == DateKeyFilter)
        return DateEntry(text);
    if (box.Filter() == WholeNumberKeyFilter)
        return WholeNumberEntry(text);
    if (box.IsAmount())
        return AmountEntry(text);
    if (box.Filter() == SexKeyFilter)
        return InLetters(text, SexWords);
    if (box.Filter() == YesNoKeyFilter)
        return InLetters(text, YesNoWords);
    if (box.Filter() == NationalInsuranceKeyFilter)
        return Without(text, " -");
    return text;
}

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
    const std::string entry = Entry(box, cell);
    if (box.Kind() == BoxKind::Tick) {
        if (entry != "0" && entry != "1")
            return fmt::format("\"{}\" is neither yes nor no", entry);
    } else {
        if (box.ReadOnly() && Trimmed(box.Text()) != entry)
            return fmt::format("\"{}\" cannot be entered here", entry);
        const std::u32string keys = CodePoints(entry);
        if (screen.Keys(box, keys).size() != keys.size())
            return fmt::format("\"{}\" cannot be typed here", entry);
    }
    TakeTold();
    if (!box.ReadOnly() && box.Enabled())
        screen.TypeIn(box, entry);
    if (const std::string told = TakeTold(); !told.empty())
        return fmt::format("\"{}\": {}", entry, told);
    if (box.Kind() != BoxKind::Tick && !entry.empty() && Trimmed(box.Text()).empty() && !IsZero(entry))
        return fmt::format("\"{}\" is not taken", entry);
    return {};
}

std::string TypingRoom::TakeTold()
{
    return std::exchange(door->told, {});
}

} // namespace quillmere::exchange
