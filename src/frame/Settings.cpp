#include "frame/Settings.h"

#include "edition/Edition.h"
#include "frame/Amount.h"
#include "frame/CheckedFile.h"
#include "frame/Folders.h"
#include "frame/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <fmt/format.h>
#include <limits>
#include <optional>
#include <system_error>
#include <variant>

namespace quillmere {

namespace {

constexpr std::string_view DefaultUserName = "Marlowby User";
constexpr std::string_view DefaultFolderName = "Default client folder";
constexpr std::size_t LastSlot = 4;

enum class Kind { Text, Integer, Long, Real, Boolean };

/// Where the default comes from when no constant can say it.
enum class Source { Constant, UserName, ProgramFolder, ScreenHeight, ScreenWidth };

/// The member of the record behind a key. A key that is one of several names the whole group and its own slot.
using Member = std::variant<std::string Settings::*, int Settings::*, double Settings::*, bool Settings::*,
                            Settings::Slots Settings::*, std::array<std::string, 6> Settings::*,
                            std::array<Settings::Slots, 5> Settings::*>;

/// One key of the file.
struct Row {
    std::string_view key;
    Member member;
    std::size_t slot = 0;   ///< of a group
    std::size_t recent = 0; ///< of a folder's recent list
    Kind kind = Kind::Text;
    std::string_view standard = "";
    Source source = Source::Constant;
    bool isRead = true; ///< false: written only, its value is that of the run
};

/// Every key in the order of the file. Reading, writing and the defaults follow this list.
constexpr auto Rows = std::to_array<Row>({
    {.key = "USER", .member = &Settings::user, .source = Source::UserName, .isRead = false},
    {.key = "FOLDER 1", .member = &Settings::folder, .slot = 1, .standard = DefaultFolderName},
    {.key = "FOLDER 2", .member = &Settings::folder, .slot = 2},
    {.key = "FOLDER 3", .member = &Settings::folder, .slot = 3},
    {.key = "FOLDER 4", .member = &Settings::folder, .slot = 4},
    {.key = "PATH 1", .member = &Settings::path, .slot = 1, .source = Source::ProgramFolder},
    {.key = "PATH 2", .member = &Settings::path, .slot = 2},
    {.key = "PATH 3", .member = &Settings::path, .slot = 3},
    {.key = "PATH 4", .member = &Settings::path, .slot = 4},
    {.key = "SELECTED FOLDER", .member = &Settings::selectedFolder, .kind = Kind::Integer, .standard = "1"},
    {.key = "FOLDER 1 RECENT 1", .member = &Settings::folderRecent, .slot = 1, .recent = 1},
    {.key = "FOLDER 1 RECENT 2", .member = &Settings::folderRecent, .slot = 1, .recent = 2},
    {.key = "FOLDER 1 RECENT 3", .member = &Settings::folderRecent, .slot = 1, .recent = 3},
    {.key = "FOLDER 1 RECENT 4", .member = &Settings::folderRecent, .slot = 1, .recent = 4},
    {.key = "FOLDER 2 RECENT 1", .member = &Settings::folderRecent, .slot = 2, .recent = 1},
    {.key = "FOLDER 2 RECENT 2", .member = &Settings::folderRecent, .slot = 2, .recent = 2},
    {.key = "FOLDER 2 RECENT 3", .member = &Settings::folderRecent, .slot = 2, .recent = 3},
    {.key = "FOLDER 2 RECENT 4", .member = &Settings::folderRecent, .slot = 2, .recent = 4},
    {.key = "FOLDER 3 RECENT 1", .member = &Settings::folderRecent, .slot = 3, .recent = 1},
    {.key = "FOLDER 3 RECENT 2", .member = &Settings::folderRecent, .slot = 3, .recent = 2},
    {.key = "FOLDER 3 RECENT 3", .member = &Settings::folderRecent, .slot = 3, .recent = 3},
    {.key = "FOLDER 3 RECENT 4", .member = &Settings::folderRecent, .slot = 3, .recent = 4},
    {.key = "FOLDER 4 RECENT 1", .member = &Settings::folderRecent, .slot = 4, .recent = 1},
    {.key = "FOLDER 4 RECENT 2", .member = &Settings::folderRecent, .slot = 4, .recent = 2},
    {.key = "FOLDER 4 RECENT 3", .member = &Settings::folderRecent, .slot = 4, .recent = 3},
    {.key = "FOLDER 4 RECENT 4", .member = &Settings::folderRecent, .slot = 4, .recent = 4},
    {.key = "VIEW picToolbar", .member = &Settings::viewPicToolbar, .kind = Kind::Boolean, .standard = "True"},
    {.key = "VIEW EDIT BAR", .member = &Settings::viewEditBar, .kind = Kind::Boolean, .standard = "False"},
    {.key = "VIEW STATUS BAR", .member = &Settings::viewStatusBar, .kind = Kind::Boolean, .standard = "True"},
    {.key = "VIEW TOOLTIPS", .member = &Settings::viewTooltips, .kind = Kind::Boolean, .standard = "True"},
    {.key = "APPLICATION MAXIMISED",
     .member = &Settings::applicationMaximised,
     .kind = Kind::Boolean,
     .standard = "True"},
    {.key = "APPLICATION TOP", .member = &Settings::applicationTop, .kind = Kind::Integer, .standard = "0"},
    {.key = "APPLICATION LEFT", .member = &Settings::applicationLeft, .kind = Kind::Integer, .standard = "0"},
    {.key = "APPLICATION HEIGHT",
     .member = &Settings::applicationHeight,
     .kind = Kind::Integer,
     .source = Source::ScreenHeight},
    {.key = "APPLICATION WIDTH",
     .member = &Settings::applicationWidth,
     .kind = Kind::Integer,
     .source = Source::ScreenWidth},
    {.key = "BACKGROUND COLOUR", .member = &Settings::backgroundColour, .kind = Kind::Long, .standard = "0"},
    {.key = "AGENT REFERENCE", .member = &Settings::agentReference},
    {.key = "AGENT TELEPHONE", .member = &Settings::agentTelephone},
    {.key = "AGENT NAME", .member = &Settings::agentName},
    {.key = "AGENT ADDRESS 1", .member = &Settings::agentAddress, .slot = 1},
    {.key = "AGENT ADDRESS 2", .member = &Settings::agentAddress, .slot = 2},
    {.key = "AGENT ADDRESS 3", .member = &Settings::agentAddress, .slot = 3},
    {.key = "AGENT ADDRESS 4", .member = &Settings::agentAddress, .slot = 4},
    {.key = "AGENT ADDRESS 5", .member = &Settings::agentAddress, .slot = 5},
    {.key = "NOTEPAD NAME", .member = &Settings::notepadName, .standard = "Note19"},
    {.key = "NOTEPAD TYPE", .member = &Settings::notepadType, .standard = "TAX RETURN"},
    {.key = "NOTEPAD IDENTIFIER", .member = &Settings::notepadIdentifier, .standard = "Tax Return"},
    {.key = "NOTEPAD OCCURRENCE", .member = &Settings::notepadOccurrence, .standard = "0"},
    {.key = "CALCULATION NEXT", .member = &Settings::calculationNext, .kind = Kind::Boolean, .standard = "False"},
    {.key = "REPORT COMPILER", .member = &Settings::reportCompiler},
    {.key = "REPORT DATE", .member = &Settings::reportDate},
    {.key = "REPORT MODE", .member = &Settings::reportMode, .standard = "Select"},
    {.key = "REPORT TYPE", .member = &Settings::reportType, .standard = "TAX RETURN"},
    {.key = "REPORT PAGE", .member = &Settings::reportPage, .kind = Kind::Integer, .standard = "1"},
    {.key = "REPORT IDENTIFIER", .member = &Settings::reportIdentifier, .standard = "Tax Return"},
    {.key = "REPORT OCCURRENCE", .member = &Settings::reportOccurrence, .standard = "0"},
    {.key = "REPORT LINKED", .member = &Settings::reportLinked, .kind = Kind::Boolean, .standard = "False"},
    {.key = "REPORT SHADING", .member = &Settings::reportShading, .kind = Kind::Boolean, .standard = "True"},
    {.key = "REPORT SCALE", .member = &Settings::reportScale, .kind = Kind::Integer, .standard = "0"},
    {.key = "REPORT FONT", .member = &Settings::reportFont, .standard = "Arial"},
    {.key = "REPORT REVERSE", .member = &Settings::reportReverse, .kind = Kind::Boolean, .standard = "False"},
    {.key = "REPORT PRINTER", .member = &Settings::reportPrinter},
    {.key = "REPORT TICKS", .member = &Settings::reportTicks, .kind = Kind::Integer, .standard = "0"},
    {.key = "REPORT PREVIEW", .member = &Settings::reportPreview, .kind = Kind::Integer, .standard = "0"},
    {.key = "REPORT CALCULATION", .member = &Settings::reportCalculation, .kind = Kind::Integer, .standard = "0"},
    {.key = "REPORT PADDING", .member = &Settings::reportPadding, .kind = Kind::Boolean, .standard = "False"},
    {.key = "PW TEMPLATE", .member = &Settings::pwTemplate},
    {.key = "PW LEFT", .member = &Settings::pwLeft, .standard = "0"},
    {.key = "PW TOP", .member = &Settings::pwTop, .standard = "0"},
    {.key = "PW WIDTH", .member = &Settings::pwWidth, .standard = "196"},
    {.key = "PW HEIGHT", .member = &Settings::pwHeight, .standard = "279"},
    {.key = "PW RESOLUTION", .member = &Settings::pwResolution, .standard = "100"},
    {.key = "PW SPACING", .member = &Settings::pwSpacing, .kind = Kind::Integer, .standard = "0"},
    {.key = "PW MIX FONTS", .member = &Settings::pwMixFonts, .kind = Kind::Boolean, .standard = "True"},
    {.key = "PW ZOOM", .member = &Settings::pwZoom, .standard = "30"},
    {.key = "PW BLACK", .member = &Settings::pwBlack, .kind = Kind::Integer, .standard = "0"},
    {.key = "PW DARK", .member = &Settings::pwDark, .kind = Kind::Integer, .standard = "200"},
    {.key = "PW LIGHT", .member = &Settings::pwLight, .kind = Kind::Integer, .standard = "225"},
    {.key = "PW WHITE", .member = &Settings::pwWhite, .kind = Kind::Integer, .standard = "255"},
    {.key = "PW SECTION", .member = &Settings::pwSection, .kind = Kind::Integer, .standard = "0"},
    // Kept: the printer is chosen anew in each run, so that a name in the file never leads to a printer that is gone.
    {.key = "VS PRINTER", .member = &Settings::vsPrinter, .isRead = false},
    {.key = "VS LEFT", .member = &Settings::vsLeft, .kind = Kind::Real, .standard = "0"},
    {.key = "VS TOP", .member = &Settings::vsTop, .kind = Kind::Real, .standard = "0"},
    {.key = "VS SCALE", .member = &Settings::vsScale, .kind = Kind::Real, .standard = "100"},
    {.key = "VS PDF FOLDER", .member = &Settings::vsPdfFolder},
    {.key = "VS PDF FILE OPTION", .member = &Settings::vsPdfFileOption, .kind = Kind::Integer, .standard = "0"},
    {.key = "VS PDF FILE NAME", .member = &Settings::vsPdfFileName, .standard = edition::DefaultPdfFileName},
    {.key = "VS PDF LEFT", .member = &Settings::vsPdfLeft, .kind = Kind::Real, .standard = "0"},
    {.key = "VS PDF TOP", .member = &Settings::vsPdfTop, .kind = Kind::Real, .standard = "0"},
    {.key = "VS PDF SCALE", .member = &Settings::vsPdfScale, .kind = Kind::Real, .standard = "100"},
    {.key = "VS BLACK", .member = &Settings::vsBlack, .kind = Kind::Integer, .standard = "0"},
    {.key = "VS DARK", .member = &Settings::vsDark, .kind = Kind::Integer, .standard = "200"},
    {.key = "VS LIGHT", .member = &Settings::vsLight, .kind = Kind::Integer, .standard = "225"},
    {.key = "VS WHITE", .member = &Settings::vsWhite, .kind = Kind::Integer, .standard = "255"},
    {.key = "VS SECTION", .member = &Settings::vsSection, .kind = Kind::Integer, .standard = "0"},
    {.key = "VS PREVIEW MAXIMISED", .member = &Settings::vsPreviewMaximised, .kind = Kind::Boolean, .standard = "True"},
    {.key = "VS PREVIEW TOP", .member = &Settings::vsPreviewTop, .kind = Kind::Long, .standard = "0"},
    {.key = "VS PREVIEW LEFT", .member = &Settings::vsPreviewLeft, .kind = Kind::Long, .standard = "0"},
    {.key = "VS PREVIEW HEIGHT",
     .member = &Settings::vsPreviewHeight,
     .kind = Kind::Long,
     .source = Source::ScreenHeight},
    {.key = "VS PREVIEW WIDTH", .member = &Settings::vsPreviewWidth, .kind = Kind::Long, .source = Source::ScreenWidth},
    {.key = "VS ALIGN TEXT METHOD", .member = &Settings::vsAlignTextMethod, .kind = Kind::Integer, .standard = "0"},
    {.key = "VS ALIGN TEXT X", .member = &Settings::vsAlignTextX, .kind = Kind::Real, .standard = "0"},
    {.key = "VS ALIGN TEXT Y", .member = &Settings::vsAlignTextY, .kind = Kind::Real, .standard = "0"},
    {.key = "VS DUPLEX MODE", .member = &Settings::vsDuplexMode, .kind = Kind::Integer, .standard = "0"},
    {.key = "ELS MODE", .member = &Settings::elsMode, .standard = "Administration"},
    {.key = "ELS FOLDER", .member = &Settings::elsFolder, .standard = "C:\\MARLHOME"},
    {.key = "ELS MAILBOX 1", .member = &Settings::elsMailbox, .slot = 1},
    {.key = "ELS MAILBOX 2", .member = &Settings::elsMailbox, .slot = 2},
    {.key = "ELS MAILBOX 3", .member = &Settings::elsMailbox, .slot = 3},
    {.key = "ELS MAILBOX 4", .member = &Settings::elsMailbox, .slot = 4},
    {.key = "ELS ADJUST", .member = &Settings::elsAdjust, .kind = Kind::Boolean, .standard = "False"},
    {.key = "ACCOUNTS FORMAT", .member = &Settings::accountsFormat, .standard = "Standard"},
    {.key = "ACCOUNTS FILE", .member = &Settings::accountsFile},
});

constexpr bool KindFits(const Row& row)
{
    switch (row.kind) {
    case Kind::Integer:
    case Kind::Long:
        return std::holds_alternative<int Settings::*>(row.member);
    case Kind::Real:
        return std::holds_alternative<double Settings::*>(row.member);
    case Kind::Boolean:
        return std::holds_alternative<bool Settings::*>(row.member);
    case Kind::Text:
        return !std::holds_alternative<int Settings::*>(row.member) &&
               !std::holds_alternative<double Settings::*>(row.member) &&
               !std::holds_alternative<bool Settings::*>(row.member);
    }
    return false;
}

static_assert(std::ranges::all_of(Rows, KindFits));

/// The place of one key in one record.
using Place = std::variant<std::string*, int*, double*, bool*>;

template<class... Handlers>
struct Overloaded : Handlers... {
    using Handlers::operator()...;
};
template<class... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

Place PlaceOf(Settings& settings, const Row& row)
{
    return std::visit(
        Overloaded{[&](Settings::Slots Settings::*group) -> Place { return &(settings.*group)[row.slot]; },
                   [&](std::array<std::string, 6> Settings::*group) -> Place { return &(settings.*group)[row.slot]; },
                   [&](std::array<Settings::Slots, 5> Settings::*group) -> Place {
                       return &(settings.*group)[row.slot][row.recent];
                   },
                   [&](auto Settings::*member) -> Place { return &(settings.*member); }},
        row.member);
}

struct Range {
    std::int32_t least, most;
};

constexpr Range RangeOf(Kind kind)
{
    if (kind == Kind::Integer)
        return {std::numeric_limits<std::int16_t>::min(), std::numeric_limits<std::int16_t>::max()};
    return {std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()};
}

/// The whole text as a finite number, else nothing.
std::optional<double> ToReal(std::string_view text)
{
    const std::string trimmed = Trim(text);
    std::string_view digits = trimmed;
    const bool negative = digits.starts_with('-');
    if (negative || digits.starts_with('+'))
        digits.remove_prefix(1);
    // Keeps out a second sign, and the words for infinity and for no number.
    if (digits.empty() || digits.find_first_not_of("0123456789.eE+-") != std::string_view::npos ||
        digits.front() == '-')
        return std::nullopt;
    double value = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (read.ec != std::errc() || read.ptr != digits.data() + digits.size() || !std::isfinite(value))
        return std::nullopt;
    return negative ? -value : value;
}

/// A decimal text as a whole number of the kind's range, ties to the even one.
std::optional<int> ToWhole(std::string_view text, Kind kind)
{
    const auto value = ToReal(text);
    if (!value)
        return std::nullopt;
    const double whole = std::nearbyint(*value);
    const Range range = RangeOf(kind);
    if (whole < range.least || whole > range.most)
        return std::nullopt;
    return static_cast<int>(whole);
}

/// The general conversion: the two words in any case, or a number, of which only 0 is false.
std::optional<bool> ToBoolean(std::string_view text)
{
    const std::string word = UpperCase(Trim(text));
    if (word == "TRUE")
        return true;
    if (word == "FALSE")
        return false;
    const auto value = ToReal(text);
    if (!value)
        return std::nullopt;
    return *value != 0.0;
}

template<class T>
[[nodiscard]] bool Put(T& target, const std::optional<T>& value)
{
    if (!value)
        return false;
    target = *value;
    return true;
}

/// Stores a value's text under its key. False if the text does not fit the kind; the record is then as it was.
[[nodiscard]] bool StoreValue(Settings& settings, const Row& row, std::string_view text)
{
    return std::visit(Overloaded{[&](std::string* target) {
                                     *target = text;
                                     return true;
                                 },
                                 [&](int* target) { return Put(*target, ToWhole(text, row.kind)); },
                                 [&](double* target) { return Put(*target, ToReal(text)); },
                                 [&](bool* target) { return Put(*target, ToBoolean(text)); }},
                      PlaceOf(settings, row));
}

/// A text on one line: what stands behind a line end would be read as the next setting.
std::string OnOneLine(std::string text)
{
    std::erase_if(text, [](char character) { return character == '\n' || character == '\r'; });
    return text;
}

/// A path with a line end in it, as the program folder's may have, would lead elsewhere without. Its slot is left
/// empty: an empty first one is the program's folder at the next start.
void ForgetFoldersNoLineHolds(Settings& settings)
{
    for (std::size_t slot = 0; slot < settings.path.size(); ++slot)
        if (OnOneLine(settings.path[slot]) != settings.path[slot]) {
            settings.folder[slot].clear();
            settings.path[slot].clear();
        }
}

/// The text of a value as the file has it.
std::string ValueText(Settings& settings, const Row& row)
{
    return std::visit(Overloaded{[](const std::string* value) { return OnOneLine(*value); },
                                 [&](const int* value) {
                                     const Range range = RangeOf(row.kind);
                                     return std::to_string(std::clamp(*value, range.least, range.most));
                                 },
                                 [](const double* value) { return PlainNumber(*value); },
                                 [](const bool* value) { return std::string(*value ? "True" : "False"); }},
                      PlaceOf(settings, row));
}

std::string DefaultText(const Row& row, const SettingsSurroundings& surroundings)
{
    const Range range = RangeOf(row.kind);
    switch (row.source) {
    case Source::UserName:
        return surroundings.userName.empty() ? std::string(DefaultUserName) : surroundings.userName;
    case Source::ProgramFolder:
        return surroundings.programFolder.string();
    case Source::ScreenHeight:
        return std::to_string(std::clamp(surroundings.screenHeight, range.least, range.most));
    case Source::ScreenWidth:
        return std::to_string(std::clamp(surroundings.screenWidth, range.least, range.most));
    case Source::Constant:
        break;
    }
    return std::string(row.standard);
}

/// One line of the file parted at its first "=".
struct Line {
    int number;
    std::string_view text, key, value;
};

/// Hands every line that holds a setting to `use`; the others are passed over.
template<class Use>
void ForEachSetting(std::string_view content, Use use)
{
    for (int number = 1; !content.empty(); ++number) {
        const auto end = content.find('\n');
        std::string_view text = content.substr(0, end);
        content = end == std::string_view::npos ? std::string_view() : content.substr(end + 1);
        if (text.ends_with('\r'))
            text.remove_suffix(1);
        const auto equals = text.find('=');
        if (Length(text) < 3 || equals == std::string_view::npos || equals == 0)
            continue;
        use(Line{.number = number, .text = text, .key = text.substr(0, equals), .value = text.substr(equals + 1)});
    }
}

/// A line fit for a message box: no control characters, no broken UTF-8, not endless.
std::string Printable(std::string_view text)
{
    constexpr std::size_t most = 80;
    std::u32string characters = CodePoints(Left(text, most));
    std::ranges::replace_if(
        characters, [](char32_t character) { return character < 32 || character == 127; }, U'?');
    return Utf8(characters);
}

/// What a value of the kind is, in words.
std::string_view Expected(Kind kind)
{
    switch (kind) {
    case Kind::Integer:
        return "a whole number from -32768 to 32767";
    case Kind::Long:
        return "a whole number";
    case Kind::Real:
        return "a number";
    case Kind::Boolean:
        return "True or False";
    case Kind::Text:
        break;
    }
    return "a text";
}

void ReadLines(Settings& settings, std::string_view content)
{
    ForEachSetting(content, [&settings](const Line& line) {
        const auto row = std::ranges::find(Rows, line.key, &Row::key);
        if (row == Rows.end() || !row->isRead)
            return;
        if (!StoreValue(settings, *row, line.value))
            throw SettingsValueError(fmt::format("Type mismatch: line {} of {} should hold {}: {}", line.number,
                                                 SettingsFileName, Expected(row->kind), Printable(line.text)));
    });
}

/// The settings file of a folder: the first whose name is the given one in any case. Empty if there is none.
std::filesystem::path FindSettingsFile(const std::filesystem::path& folder)
{
    std::error_code ignored;
    std::filesystem::path exact = folder / SettingsFileName;
    if (std::filesystem::is_regular_file(exact, ignored))
        return exact;
    std::filesystem::path found;
    std::filesystem::directory_iterator entry(folder, ignored);
    for (; !ignored && entry != std::filesystem::directory_iterator(); entry.increment(ignored)) {
        std::error_code status;
        const bool isNamed = UpperCase(entry->path().filename().string()) == SettingsFileName;
        if (isNamed && entry->is_regular_file(status) && (found.empty() || entry->path() < found))
            found = entry->path();
    }
    return found;
}

/// Carries the client folders of last year's edition over: those below its product folder move to this year's, the
/// others are not taken.
void TakeOverFolders(Settings& settings)
{
    for (std::size_t slot = 1; slot <= LastSlot; ++slot) {
        std::string& path = settings.path[slot];
        const std::size_t ending = edition::PriorProductFolder.size();
        if (path.size() > ending && UpperCase(path).ends_with(edition::PriorProductFolder)) {
            path.replace(path.size() - ending, ending, edition::ProductFolder);
            std::error_code mayExist;
            std::filesystem::create_directory(path, mayExist);
        } else {
            settings.folder[slot].clear();
            path.clear();
            settings.elsMailbox[slot].clear();
        }
    }
}

void SelectExistingFolder(Settings& settings, const SettingsSurroundings& surroundings)
{
    const auto selected = static_cast<std::size_t>(settings.selectedFolder);
    const bool isSlot = settings.selectedFolder >= 1 && selected <= LastSlot;
    if (isSlot && !settings.folder[selected].empty())
        return;
    settings.selectedFolder = 1;
    if (settings.folder[1].empty()) {
        settings.folder[1] = DefaultFolderName;
        settings.path[1] = surroundings.programFolder.string();
    }
}

/// What follows the reading of the lines, whether or not all of them could be read.
void MakeConsistent(Settings& settings, const SettingsSurroundings& surroundings, bool isFirstStart)
{
    if (isFirstStart)
        TakeOverFolders(settings);
    SelectExistingFolder(settings, surroundings);
    if (isFirstStart) {
        settings.folderRecent = {};
        settings.vsPdfFileName = edition::DefaultPdfFileName;
    }
}

/// The entry of the selected folder among the four lines of a stem such as "PATH ".
std::string LastYearSelectedEntry(const std::filesystem::path& priorProgramFolder, std::string_view stem)
{
    const std::filesystem::path file = FindSettingsFile(priorProgramFolder);
    if (file.empty())
        return {};
    std::string content;
    try {
        content = ReadFile(file);
    } catch (const FileError&) {
        return {}; // No more to be had than from a file that is not there; the transfer says that there is no data.
    }
    Settings::Slots entries;
    int selected = 1;
    ForEachSetting(content, [&](const Line& line) {
        if (line.key == "SELECTED FOLDER")
            selected = ToWhole(line.value, Kind::Integer).value_or(0);
        for (std::size_t slot = 1; slot <= LastSlot; ++slot)
            if (line.key == Numbered(stem, static_cast<int>(slot)))
                entries[slot] = line.value;
    });
    if (selected < 1 || selected > static_cast<int>(LastSlot))
        return {};
    return entries[static_cast<std::size_t>(selected)];
}

} // namespace

Settings SetDefaultConfiguration(const SettingsSurroundings& surroundings)
{
    Settings settings;
    for (const Row& row : Rows)
        if (!StoreValue(settings, row, DefaultText(row, surroundings)))
            throw std::logic_error(fmt::format("The default of {} does not fit its kind", row.key));
    return settings;
}

void ReadConfiguration(Settings& settings, const SettingsSurroundings& surroundings)
{
    settings = SetDefaultConfiguration(surroundings);
    bool isFirstStart = false;
    std::filesystem::path file = FindSettingsFile(surroundings.programFolder);
    if (file.empty()) {
        file = FindSettingsFile(InFolder(surroundings.rootFolder, edition::PriorProductFolder));
        isFirstStart = true;
    }
    if (file.empty())
        return;
    try {
        ReadLines(settings, ReadFile(file));
    } catch (const std::runtime_error&) {
        MakeConsistent(settings, surroundings, isFirstStart);
        throw;
    }
    MakeConsistent(settings, surroundings, isFirstStart);
}

bool WriteConfiguration(const Settings& settings, const std::filesystem::path& programFolder)
{
    Settings record = settings;
    ForgetFoldersNoLineHolds(record);
    std::string content;
    for (const Row& row : Rows)
        content += fmt::format("{}={}\n", row.key, ValueText(record, row));
    try {
        WriteFileChecked(programFolder / SettingsFileName, content);
        return true;
    } catch (const FileError&) {
        return false;
    }
}

std::string LastYearSelectedPath(const std::filesystem::path& priorProgramFolder)
{
    return LastYearSelectedEntry(priorProgramFolder, "PATH ");
}

std::string LastYearSelectedFolderName(const std::filesystem::path& priorProgramFolder)
{
    return LastYearSelectedEntry(priorProgramFolder, "FOLDER ");
}

} // namespace quillmere
