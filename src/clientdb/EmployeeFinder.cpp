#include "clientdb/EmployeeFinder.h"

#include "clientdb/Employees.h"

#include <algorithm>
#include <limits>
#include <span>
#include <utf8proc.h>

namespace quillmere {

namespace {

/// Stands before each word of an employee. No word holds it: it is a blank to the boxes.
constexpr char WordStart = '\n';

constexpr bool IsAscii(char byte)
{
    return static_cast<unsigned char>(byte) < 0x80;
}

constexpr char LowerCase(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

constexpr bool IsBlank(char byte)
{
    return byte == ' ' || byte == '\t' || byte == '\r' || byte == WordStart;
}

/// What each byte of a text becomes among words.
constexpr auto AmongWords = [] {
    std::array<char, std::numeric_limits<unsigned char>::max() + 1> made{};
    for (std::size_t i = 0; i < made.size(); ++i) {
        const char byte = static_cast<char>(i);
        made[i] = IsBlank(byte) ? WordStart : LowerCase(byte);
    }
    return made;
}();

/// Takes the first character off a text and puts it folded behind others. A byte that is no UTF-8 stays as it is.
void TakeFolded(std::string_view& text, std::string& folded)
{
    constexpr auto options = static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPAT | UTF8PROC_DECOMPOSE |
                                                            UTF8PROC_CASEFOLD | UTF8PROC_STRIPMARK);
    constexpr std::size_t LongestDecomposition = 18;
    utf8proc_int32_t character = 0;
    const utf8proc_ssize_t bytes = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                                    static_cast<utf8proc_ssize_t>(text.size()), &character);
    if (bytes < 1) {
        folded += text.front();
        text.remove_prefix(1);
        return;
    }
    std::array<utf8proc_int32_t, LongestDecomposition> parts{};
    const utf8proc_ssize_t count =
        utf8proc_decompose_char(character, parts.data(), LongestDecomposition, options, nullptr);
    for (utf8proc_ssize_t i = 0; i < count; ++i) {
        std::array<utf8proc_uint8_t, 4> encoded{};
        const utf8proc_ssize_t size = utf8proc_encode_char(parts.at(static_cast<std::size_t>(i)), encoded.data());
        folded.append(encoded.begin(), encoded.begin() + size);
    }
    text.remove_prefix(static_cast<std::size_t>(bytes));
}

/// Makes a text words. False if not all of it is ASCII.
bool MakeWords(std::span<char> text)
{
    unsigned char all = 0;
    for (char& byte : text) {
        const auto read = static_cast<unsigned char>(byte);
        all |= read;
        byte = AmongWords[read];
    }
    return all < 0x80;
}

/// Puts the words of a text behind others, each behind a WordStart.
void AddWords(std::string_view text, std::string& words)
{
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    if (text.empty())
        return;
    words += WordStart;
    const std::size_t begin = words.size();
    words += text;
    if (MakeWords(std::span(words).subspan(begin)))
        return;
    words.replace(begin, words.npos, Folded(text));
    MakeWords(std::span(words).subspan(begin));
}

std::string WithoutBlanks(std::string_view text)
{
    std::string kept(text);
    std::erase(kept, ' ');
    return kept;
}

/// The words of a query, the first of them behind a WordStart.
std::vector<std::string> WordsSought(std::string_view query)
{
    std::string words;
    AddWords(query, words);
    std::vector<std::string> sought;
    for (std::size_t begin = 0; begin < words.size();) {
        const std::size_t end = std::min(words.find(WordStart, begin + 1), words.size());
        if (end > begin + 1)
            sought.push_back(words.substr(begin + (sought.empty() ? 0 : 1), end - begin - (sought.empty() ? 0 : 1)));
        begin = end;
    }
    return sought;
}

/// How well an employee fits; the lower the better.
enum class Fit { Surname, WordBegins, Within, None };

Fit FitOf(std::string_view words, const std::vector<std::string>& sought)
{
    const std::string& first = sought.front(); // with a WordStart before it
    for (std::size_t i = 1; i < sought.size(); ++i)
        if (words.find(sought[i]) == std::string_view::npos)
            return Fit::None;
    if (words.starts_with(first))
        return Fit::Surname;
    if (words.find(first) != std::string_view::npos)
        return Fit::WordBegins;
    return words.find(std::string_view(first).substr(1)) != std::string_view::npos ? Fit::Within : Fit::None;
}

} // namespace

std::string Folded(std::string_view text)
{
    std::string folded;
    folded.reserve(text.size());
    while (!text.empty()) {
        if (!IsAscii(text.front())) {
            TakeFolded(text, folded);
            continue;
        }
        folded += LowerCase(text.front());
        text.remove_prefix(1);
    }
    return folded;
}

LibraryInUse FoldingLibrary()
{
    return {"utf8proc", utf8proc_version()};
}

EmployeeFinder::EmployeeFinder(Database& database)
{
    const ReadBatch batch(database);
    Recordset records = database.OpenRecordset("P11D");
    const FieldPlace employer = records.Prepare("EmployerName");
    const FieldPlace employee = records.Prepare("EmployeeName");
    const FieldPlace worksNumber = records.Prepare("WorkNumberBox");
    const FieldPlace nationalInsurance = records.Prepare("NatIns");
    const FieldPlace firstName = records.Prepare("FirstName");
    const FieldPlace surname = records.Prepare("Surname");
    for (records.MoveFirst(); !records.AtEnd(); records.MoveNext()) {
        const Shown shown{records.Field(employer), records.Field(employee), records.Field(worksNumber),
                          records.Field(nationalInsurance)};
        // A record with no employer is on no list, and nobody could open it.
        if (!shown.front().empty() && shown.front() != SampleEmployer)
            Add(shown, records.Field(firstName), records.Field(surname));
    }
}

void EmployeeFinder::Add(const Shown& shown, std::string_view firstName, std::string_view surname)
{
    const auto& [employer, employee, worksNumber, nationalInsurance] = shown;
    adding.clear();
    AddWords(surname, adding);
    AddWords(firstName, adding);
    AddWords(worksNumber, adding);
    AddWords(WithoutBlanks(nationalInsurance), adding);
    AddWords(employer, adding);
    // The key comes last: after a renaming it may hold a name that the name's own boxes do not.
    AddWords(employee, adding);
    Entry& entry = entries.emplace_back();
    entry.words = static_cast<std::uint32_t>(adding.size());
    for (std::size_t i = 0; i < shown.size(); ++i) {
        adding += shown[i];
        entry.shown[i] = static_cast<std::uint32_t>(shown[i].size());
    }
    char* const texts = static_cast<char*>(room.allocate(adding.size(), 1));
    std::ranges::copy(adding, texts);
    entry.texts = texts;
}

FoundEmployee EmployeeFinder::Found(const Entry& entry)
{
    const char* begin = entry.texts + entry.words;
    std::array<std::string, 4> texts;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        texts[i].assign(begin, entry.shown[i]);
        begin += entry.shown[i];
    }
    auto& [employer, employee, worksNumber, nationalInsurance] = texts;
    return {std::move(employer), std::move(employee), std::move(worksNumber), std::move(nationalInsurance)};
}

EmployeeFinder::Result EmployeeFinder::Find(std::string_view query, std::size_t most) const
{
    const std::vector<std::string> sought = WordsSought(query);
    Result result;
    if (sought.empty())
        return result;
    std::array<std::vector<const Entry*>, static_cast<std::size_t>(Fit::None)> fitting;
    for (const Entry& entry : entries) {
        const Fit fit = FitOf({entry.texts, entry.words}, sought);
        if (fit == Fit::None)
            continue;
        ++result.matches;
        if (auto& among = fitting[static_cast<std::size_t>(fit)]; among.size() < most)
            among.push_back(&entry);
    }
    for (const auto& among : fitting)
        for (const Entry* entry : among)
            if (result.best.size() < most)
                result.best.push_back(Found(*entry));
    return result;
}

} // namespace quillmere
