#include "clientdb/EmployeeFinder.h"

#include "clientdb/Employees.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <utf8proc.h>

namespace quillmere {

namespace {

/// Stands before each word of an employee. No word holds it: it is a blank to the boxes.
constexpr char WordStart = '\n';

bool IsAscii(std::string_view text)
{
    return std::ranges::all_of(text, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

constexpr char LowerCase(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

constexpr bool IsBlank(char byte)
{
    return byte == ' ' || byte == '\t' || byte == '\r' || byte == WordStart;
}

std::string FoldedAscii(std::string_view text)
{
    std::string folded(text);
    std::ranges::transform(folded, folded.begin(), LowerCase);
    return folded;
}

/// Calls `take` with each word of a text, in order.
template<class Take>
void EachWord(std::string_view text, Take take)
{
    while (!text.empty()) {
        const auto begin = std::ranges::find_if_not(text, IsBlank);
        const auto end = std::find_if(begin, text.end(), IsBlank);
        if (begin != end)
            take(std::string_view(begin, end));
        text = std::string_view(end, text.end());
    }
}

std::string WithoutBlanks(std::string_view text)
{
    std::string kept(text);
    std::erase(kept, ' ');
    return kept;
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
    if (IsAscii(text))
        return FoldedAscii(text);
    utf8proc_uint8_t* mapped = nullptr;
    constexpr auto options = static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPAT | UTF8PROC_DECOMPOSE |
                                                            UTF8PROC_CASEFOLD | UTF8PROC_STRIPMARK);
    const utf8proc_ssize_t length = utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                                 static_cast<utf8proc_ssize_t>(text.size()), &mapped, options);
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(mapped, &std::free);
    if (length < 0)
        return FoldedAscii(text);
    return {reinterpret_cast<const char*>(mapped), static_cast<std::size_t>(length)};
}

LibraryInUse FoldingLibrary()
{
    return {"utf8proc", utf8proc_version()};
}

EmployeeFinder::EmployeeFinder(Database& database)
{
    Recordset records = database.OpenRecordset("P11D");
    records.Fetch({"EmployerName", "EmployeeName", "WorkNumberBox", "NatIns", "FirstName", "Surname"});
    for (records.MoveFirst(); !records.AtEnd(); records.MoveNext()) {
        FoundEmployee employee{.employer = std::string(records.Field("EmployerName")),
                               .employee = std::string(records.Field("EmployeeName")),
                               .worksNumber = std::string(records.Field("WorkNumberBox")),
                               .nationalInsurance = std::string(records.Field("NatIns"))};
        // A record with no employer is on no list, and nobody could open it.
        if (employee.employer.empty() || employee.employer == SampleEmployer)
            continue;
        Add(std::move(employee), records.Field("FirstName"), records.Field("Surname"));
    }
    starts.push_back(words.size());
}

void EmployeeFinder::Add(FoundEmployee employee, std::string_view firstName, std::string_view surname)
{
    starts.push_back(words.size());
    const std::string number = WithoutBlanks(employee.nationalInsurance);
    // The key comes last: after a renaming it may hold a name that the name's own boxes do not.
    const auto texts = std::to_array<std::string_view>(
        {surname, firstName, employee.worksNumber, number, employee.employer, employee.employee});
    for (const std::string_view text : texts)
        EachWord(Folded(text), [this](std::string_view word) { words.append(1, WordStart).append(word); });
    entries.push_back(std::move(employee));
}

EmployeeFinder::Result EmployeeFinder::Find(std::string_view query, std::size_t most) const
{
    std::vector<std::string> sought;
    EachWord(Folded(query), [&](std::string_view word) {
        sought.push_back(sought.empty() ? WordStart + std::string(word) : std::string(word));
    });
    Result result;
    if (sought.empty())
        return result;
    std::array<std::vector<const FoundEmployee*>, static_cast<std::size_t>(Fit::None)> fitting;
    const std::string_view all = words;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const Fit fit = FitOf(all.substr(starts[i], starts[i + 1] - starts[i]), sought);
        if (fit == Fit::None)
            continue;
        ++result.matches;
        if (auto& among = fitting[static_cast<std::size_t>(fit)]; among.size() < most)
            among.push_back(&entries[i]);
    }
    for (const auto& among : fitting)
        for (const FoundEmployee* employee : among)
            if (result.best.size() < most)
                result.best.push_back(employee);
    return result;
}

} // namespace quillmere
