// What reads texts is given texts that nobody would write: each is read or refused, nothing crashes, and no character
// that a box refuses comes in.
#include "Trial.h"
#include "clientdb/ListFilter.h"
#include "clientdb/TypedEntries.h"
#include "edition/Edition.h"
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

struct ParserRow {
    std::string_view name;
    Reader read;
    int one; ///< of so many texts it reads one: those that go through a file take longer
};

constexpr std::array Readers{
    ParserRow{"amounts", ReadAmounts, 1},    ParserRow{"dates", ReadDates, 1},
    ParserRow{"keys", FilterKeys<false>, 1}, ParserRow{"names", ReadNames, 4},
    ParserRow{"settings", ReadSettings, 50}, ParserRow{"typed entries", ReadTyped, 50},
};

/// Pieces of what such texts are made of, and bytes in between.
std::string AnyText(std::mt19937_64& random)
{
    static constexpr std::array<std::string_view, 36> Pieces{
        "0",         "1",      "29",       "31",       "/",
        "/02/",      ".",      "..",       "-",        "(",
        ")",         ",",      "£",        " ",        "1e308",
        "999999999", "nan",    "\t",       "\n",       "\r\n",
        "=",         "P11D",   "é",        "\xff",     "\0\0",
        "AB",        "123456", "C",        "PATH 1",   "SELECTED FOLDER=",
        "FOLDER",    "6/4/10", "05042011", "VS LEFT=", "Acme\tJane\tBox\t",
        "TRUE"};
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
