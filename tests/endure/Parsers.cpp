// What reads texts is given texts that nobody would write: each is read or refused, nothing crashes, and no character
// that a box refuses comes in.
#include "Trial.h"
#include "clientdb/ListFilter.h"
#include "clientdb/TypedEntries.h"
#include "clientdb/store/Template.h"
#include "edition/Edition.h"
#include "exchange/Csv.h"
#include "exchange/Plan.h"
#include "frame/Amount.h"
#include "frame/CheckedFile.h"
#include "frame/Dates.h"
#include "frame/Inserted.h"
#include "frame/KeyFilters.h"
#include "frame/Settings.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <span>
#include <unistd.h>

namespace quillmere::endure {
namespace {

constexpr char32_t Backspace = 8;

struct Fed {
    const std::filesystem::path& folder;
    const std::string& text;
    std::uint64_t number;
};

/// What is wrong with how a text was read; empty if nothing is.
using Reader = std::string (*)(const Fed&);

std::string ReadAmounts(const Fed& fed)
{
    const Amount amount = ReadAmount(fed.text);
    const std::string shown = FormatAmount(amount, edition::FormatMoneyZero);
    // To the penny, what is shown is what was read.
    const std::string again = FormatAmount(ReadAmount(shown), edition::FormatMoneyZero);
    if (again != shown || AmountText(amount, edition::FormatMoneyZero).size() != 10)
        return "shown as " + shown + ", then as " + again;
    ReadNumber(fed.text);
    ReadWholeNumber(fed.text);
    std::string changed = fed.text;
    IsNonNegative(changed);
    return {};
}

std::string ReadDates(const Fed& fed)
{
    const std::string shown = NormaliseDate(fed.text);
    if (!shown.empty() && (shown.size() != 10 || !IsDateText(shown) || NormaliseDate(shown) != shown))
        return "shown as " + shown;
    if (IsDateText(fed.text) && !fed.text.empty() && !ReadDate(fed.text))
        return "a date without a day";
    EnteredDate(fed.text);
    TestYearEnd(fed.text);
    IsDateBetween(fed.text, shown, fed.text);
    OverlapDays(fed.text, shown, shown, fed.text);
    IsNationalInsuranceNumber(fed.text);
    return {};
}

/// A filter with all that it may let in, told without it.
struct FilterRow {
    KeyFilter filter;
    std::u32string_view allowed;
};

constexpr std::u32string_view Letters = U"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";

constexpr std::array Filters{
    FilterRow{DateKeyFilter, U"0123456789/"},
    FilterRow{WholeNumberKeyFilter, U"0123456789"},
    FilterRow{MoneyKeyFilter, U"0123456789."},
    FilterRow{SignedMoneyKeyFilter, U"0123456789.()-"},
    FilterRow{NationalInsuranceKeyFilter, Letters},
    FilterRow{SexKeyFilter, U"MFmf"},
    FilterRow{YesNoKeyFilter, U"YNyn"},
};

template<bool planted>
std::string FilterKeys(const Fed& fed)
{
    const auto key = [&](std::size_t at) {
        // Every plane of characters, and often those that are typed.
        const auto byte = static_cast<unsigned char>(fed.text[at]);
        return at % 3 == 0 ? static_cast<char32_t>((byte * 7919U + fed.number) % 0x110000) : char32_t{byte};
    };
    for (std::size_t at = 0; at < fed.text.size(); ++at)
        for (const FilterRow& row : Filters) {
            const KeyVerdict verdict = planted ? KeyVerdict{key(at), false} : row.filter(key(at));
            if (verdict.key != 0 && verdict.key != Backspace && row.allowed.find(verdict.key) == std::u32string::npos)
                return fmt::format("filter {} lets U+{:04X} in", &row - Filters.data(),
                                   static_cast<std::uint32_t>(verdict.key));
        }
    return {};
}

std::string ReadSettings(const Fed& fed)
{
    const std::filesystem::path program = fed.folder / edition::ProductFolder;
    std::filesystem::create_directories(program);
    test::Store(program / SettingsFileName, "FOLDER 1=Clients\n" + fed.text);
    Settings settings;
    try {
        ReadConfiguration(settings, {.programFolder = program, .rootFolder = fed.folder});
    } catch (const SettingsValueError&) {
        return {};
    }
    return WriteConfiguration(settings, program) ? std::string() : "cannot be written";
}

std::string ReadTyped(const Fed& fed)
{
    const std::filesystem::path database = fed.folder / "clients.mdb", file = fed.folder / "clients.typed";
    const TypedEntries entries(database);
    const TypedEntries::Line kept{.record = {"P11D", "Acme", "Jane"}, .entry = {"Box", "", fed.text}};
    std::filesystem::remove(file);
    entries.Keep({kept});
    // A file of this kind, with anything behind its heading; now and then one of another kind.
    const std::string written = test::Content(file);
    test::Store(file, (fed.number % 4 == 0 ? std::string() : written.substr(0, written.find('\n') + 1)) + fed.text);
    try {
        entries.All();
        entries.Keep({kept});
    } catch (const FileError&) {
        return {};
    }
    return std::ranges::count(entries.All(), kept) == 1 ? std::string() : "what was kept is not found";
}

std::string ReadNames(const Fed& fed)
{
    const std::vector<std::string> names{fed.text, "Acme Ltd", "Åse Brøn"};
    Filtered(names, fed.text, fed.number % 2 == 0);
    std::u32string wide(fed.text.begin(), fed.text.end());
    Inserted(wide, wide.substr(wide.size() / 2), wide.size() / 3);
    return {};
}

std::string ReadTables(const Fed& fed)
{
    exchange::Table table;
    try {
        table = exchange::ParseTable(fed.text);
    } catch (const exchange::NotATable& refused) {
        return std::string_view(refused.what()).ends_with('.') ? std::string() : "refused without a sentence";
    }
    std::vector<exchange::Cells> written;
    for (const exchange::TableRow& row : table.rows) {
        if (row.cells.size() > exchange::MostColumns)
            return "more columns than a table may have";
        exchange::Cells& cells = written.emplace_back();
        for (const std::string& cell : row.cells)
            cells.push_back({cell});
    }
    // What was read is written, and read once more.
    const exchange::Table again = exchange::ParseTable(exchange::TableBytes(written));
    if (again.rows.size() != table.rows.size())
        return fmt::format("{} rows, then {}", table.rows.size(), again.rows.size());
    for (std::size_t row = 0; row < table.rows.size(); ++row)
        for (std::size_t cell = 0; cell < table.rows[row].cells.size(); ++cell)
            if (exchange::WithoutGuard(again.rows[row].cells.at(cell)) != table.rows[row].cells[cell])
                return fmt::format("\"{}\", then \"{}\"", table.rows[row].cells[cell], again.rows[row].cells[cell]);
    return {};
}

/// A row of senseless cells is left out or taken over; the same row then has nothing more to change.
std::string ReadImports(const Fed& fed)
{
    const std::filesystem::path file = fed.folder / "import";
    CreateTables(file);
    const exchange::Targets targets;
    exchange::Table table;
    exchange::TableRow headings{.number = 1, .cells = {"First names", "Surname"}};
    exchange::TableRow cells{.number = 2, .cells = {"Jane", "Smith"}};
    for (std::size_t at = 0; at <= fed.text.size();) {
        const std::size_t end = std::min(fed.text.find(',', at), fed.text.size());
        const std::size_t target = (fed.number * 31 + cells.cells.size() * 7) % targets.All().size();
        headings.cells.push_back(targets.All()[target].words);
        cells.cells.push_back(fed.text.substr(at, end - at));
        at = end + 1;
    }
    table.rows = {headings, cells};
    Database database = Database::OpenDatabase(file);
    const exchange::Columns columns = exchange::ColumnsOf(table, targets);
    const auto plan = [&] { return MakePlan(database, table, targets, columns, "Acme Ltd"); };
    const exchange::ImportPlan first = plan();
    CarryOut(database, first);
    const exchange::ImportPlan second = plan();
    std::filesystem::remove(file);
    if (first.CountOf(exchange::RowState::Faulty) == 0 && second.CountOf(exchange::RowState::Same) != 1)
        return fmt::format("taken over ({}), and then {} ({})", first.rows[0].words, WordsOf(second.rows[0].state),
                           second.rows[0].words);
    return {};
}

struct ParserRow {
    std::string_view name;
    Reader read;
    int one; ///< of so many texts it reads one: those that go through a file take longer
};

constexpr std::array Readers{
    ParserRow{"amounts", ReadAmounts, 1},    ParserRow{"dates", ReadDates, 1},
    ParserRow{"keys", FilterKeys<false>, 1}, ParserRow{"names", ReadNames, 4},
    ParserRow{"settings", ReadSettings, 50}, ParserRow{"typed entries", ReadTyped, 50},
    ParserRow{"tables", ReadTables, 4},      ParserRow{"imports", ReadImports, 2000},
};

/// Pieces of what such texts are made of, and bytes in between.
std::string AnyText(std::mt19937_64& random)
{
    static constexpr std::array<std::string_view, 42> Pieces{
        "0",         "1",      "29",       "31",       "/",
        "/02/",      ".",      "..",       "-",        "(",
        ")",         ",",      "£",        " ",        "1e308",
        "999999999", "nan",    "\t",       "\n",       "\r\n",
        "=",         "P11D",   "é",        "\xff",     "\0\0",
        "AB",        "123456", "C",        "PATH 1",   "SELECTED FOLDER=",
        "FOLDER",    "6/4/10", "05042011", "VS LEFT=", "Acme\tJane\tBox\t",
        "TRUE",      "\"",     "\"\"",     ";",        "sep=",
        "Mar"};
    std::string text;
    for (auto left = random() % 12; left > 0; --left)
        if (random() % 4 == 0)
            for (auto bytes = random() % 8; bytes > 0; --bytes)
                text += static_cast<char>(random());
        else
            text += Pieces[random() % Pieces.size()];
    if (random() % 1000 == 0)
        text.append(random() % 100'000, text.empty() ? 'x' : text.back());
    return text;
}

} // namespace

Findings Parsers(const Assignment& assignment)
{
    const Ending ending = InAProcess(
        [&](int tell) {
            std::mt19937_64 random(assignment.seed);
            Progress progress;
            for (std::int64_t number = 0; number < assignment.count; ++number) {
                progress.At(number);
                ::alarm(5);
                const std::string text = AnyText(random);
                const Fed fed{assignment.folder, text, static_cast<std::uint64_t>(number)};
                for (const ParserRow& row : Readers) {
                    if (number % row.one != 0)
                        continue;
                    const bool lies = assignment.planted && row.read == FilterKeys<false>;
                    if (const std::string words = lies ? FilterKeys<true>(fed) : row.read(fed); !words.empty())
                        Tell(tell, fmt::format("{} {}: {}", row.name, number, words));
                }
            }
        },
        std::chrono::hours(24));
    Findings findings{.tried = assignment.count, .faults = {}};
    for (std::size_t at = 0, end = 0; (end = ending.told.find('\n', at)) != std::string::npos; at = end + 1)
        findings.faults.push_back(ending.told.substr(at, end - at));
    if (!ending.ended)
        findings.faults.push_back("the process " + (ending.words.empty() ? "hangs" : ending.words));
    return findings;
}

} // namespace quillmere::endure
