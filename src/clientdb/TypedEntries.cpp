#include "clientdb/TypedEntries.h"

#include "frame/CheckedFile.h"
#include "frame/FileLock.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <system_error>

namespace quillmere {

namespace {

constexpr std::string_view Heading = "Quillmere typed entries 1\n";

/// How long another desk is waited for: it needs some milliseconds, unless it has been halted.
constexpr std::chrono::seconds Patience(2);

/// What parts words and lines stands in a word as a letter behind a backslash.
struct Escape {
    char letter, stands;
};
constexpr Escape Escapes[] = {{'\\', '\\'}, {'t', '\t'}, {'n', '\n'}, {'r', '\r'}};

std::string Escaped(std::string_view word)
{
    std::string written;
    for (const char letter : word) {
        const auto* escape = std::ranges::find(Escapes, letter, &Escape::stands);
        if (escape == std::end(Escapes))
            written += letter;
        else
            written.append({'\\', escape->letter});
    }
    return written;
}

std::string Unescaped(std::string_view written)
{
    std::string word;
    for (std::size_t at = 0; at < written.size(); ++at) {
        const auto* escape = written[at] == '\\' && at + 1 < written.size()
                                 ? std::ranges::find(Escapes, written[at + 1], &Escape::letter)
                                 : std::end(Escapes);
        word += escape == std::end(Escapes) ? written[at] : escape->stands;
        at += escape == std::end(Escapes) ? 0 : 1;
    }
    return word;
}

/// Cuts the text before the next `end` off; all of it if there is none.
std::string_view CutBefore(std::string_view& text, char end)
{
    const std::size_t length = std::min(text.find(end), text.size());
    const std::string_view cut = text.substr(0, length);
    text.remove_prefix(std::min(length + 1, text.size()));
    return cut;
}

} // namespace

TypedEntries::TypedEntries(const std::filesystem::path& database)
    : file(std::filesystem::path(database).replace_extension(".typed"))
{
}

std::vector<TypedEntries::Line> TypedEntries::Read() const
{
    std::error_code unreadable;
    if (!std::filesystem::exists(file, unreadable))
        return {};
    const std::string content = ReadFile(file);
    // A file of another kind is nobody's to write over.
    if (!content.starts_with(Heading))
        throw FileError(file, EINVAL);
    std::string_view rest = std::string_view(content).substr(Heading.size());
    std::vector<Line> lines;
    while (!rest.empty()) {
        std::string_view words = CutBefore(rest, '\n');
        Line line;
        for (std::string* word : {&line.record.table, &line.record.employer, &line.record.employee, &line.entry.field,
                                  &line.entry.stored, &line.entry.typed})
            *word = Unescaped(CutBefore(words, '\t'));
        lines.push_back(std::move(line));
    }
    return lines;
}

void TypedEntries::Write(const std::vector<Line>& lines) const
{
    if (lines.empty()) {
        std::error_code error;
        std::filesystem::remove(file, error);
        if (error)
            throw FileError(file, error.value());
        return;
    }
    std::string content(Heading);
    for (const auto& [record, entry] : lines)
        for (const std::string* word :
             {&record.table, &record.employer, &record.employee, &entry.field, &entry.stored, &entry.typed})
            content.append(Escaped(*word)) += word == &entry.typed ? '\n' : '\t';
    WriteFileChecked(file, content);
}

void TypedEntries::Change(const std::function<void(std::vector<Line>&)>& change) const
{
    // The folder is locked: a lock file of its own would lie about, or be removed under somebody who has just opened
    // it.
    const FileLock lock(file.parent_path(), Patience);
    std::vector<Line> lines = Read();
    change(lines);
    Write(lines);
}

std::vector<TypedEntries::Entry> TypedEntries::Of(const Record& record) const
{
    std::vector<Entry> entries;
    try {
        for (Line& line : Read())
            if (line.record == record)
                entries.push_back(std::move(line.entry));
    } catch (const FileError&) {
        return {};
    }
    return entries;
}

void TypedEntries::Keep(const Record& record, std::span<const Entry> entries) const
{
    Change([&](std::vector<Line>& lines) {
        for (const Entry& entry : entries) {
            std::erase_if(lines,
                          [&](const Line& line) { return line.record == record && line.entry.field == entry.field; });
            lines.push_back({.record = record, .entry = entry});
        }
    });
}

void TypedEntries::Forget(const Record& record, std::span<const std::string> fields) const
{
    Change([&](std::vector<Line>& lines) {
        std::erase_if(lines, [&](const Line& line) {
            return line.record == record && std::ranges::find(fields, line.entry.field) != fields.end();
        });
    });
}

} // namespace quillmere
