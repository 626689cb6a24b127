#include "clientdb/TypedEntries.h"

#include "frame/CheckedFile.h"
#include "frame/FileLock.h"

#include <algorithm>
#include <cerrno>
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
                                  &line.entry.stored, &line.entry.typed, &line.entry.moment, &line.desk})
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
    for (const auto& [record, entry, desk] : lines)
        for (const std::string* word : {&record.table, &record.employer, &record.employee, &entry.field, &entry.stored,
                                        &entry.typed, &entry.moment, &desk})
            content.append(Escaped(*word)) += word == &desk ? '\n' : '\t';
    WriteFileChecked(file, content);
}

void TypedEntries::Change(const std::function<void(std::vector<Line>&)>& change) const
{
    // The folder is locked: a lock file of its own would lie about, or be removed under somebody who has just opened
    // it.
    const FileLock lock(file.parent_path(), Patience);
    const std::vector<Line> found = Read();
    std::vector<Line> lines = found;
    change(lines);
    if (lines != found)
        Write(lines);
}

std::vector<TypedEntries::Line> TypedEntries::All() const
{
    try {
        return Read();
    } catch (const FileError&) {
        return {};
    }
}

void TypedEntries::Keep(const std::vector<Line>& lines) const
{
    Change([&](std::vector<Line>& kept) {
        for (const Line& line : lines) {
            std::erase_if(kept, [&](const Line& old) {
                return old.desk.empty() && old.record == line.record && old.entry.field == line.entry.field;
            });
            kept.push_back(line);
        }
    });
}

void TypedEntries::KeepOf(const std::string& desk, const std::vector<Line>& lines) const
{
    Change([&](std::vector<Line>& kept) {
        std::erase_if(kept, [&](const Line& old) { return old.desk == desk; });
        for (const Line& line : lines)
            kept.push_back({.record = line.record, .entry = line.entry, .desk = desk});
    });
}

void TypedEntries::Release(const std::string& desk) const
{
    Change([&](std::vector<Line>& kept) {
        for (Line& line : kept)
            if (line.desk == desk)
                line.desk.clear();
    });
}

void TypedEntries::Rename(const std::function<Record(const Record&)>& renamed) const
{
    Change([&](std::vector<Line>& kept) {
        for (Line& line : kept)
            line.record = renamed(line.record);
    });
}

void TypedEntries::Forget(const std::vector<Line>& lines) const
{
    Change([&](std::vector<Line>& kept) {
        std::erase_if(kept, [&](const Line& line) { return std::ranges::find(lines, line) != lines.end(); });
    });
}

} // namespace quillmere
