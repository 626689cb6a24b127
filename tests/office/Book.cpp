#include "Book.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <fmt/format.h>
#include <fstream>
#include <stdexcept>
#include <unistd.h>

namespace quillmere::office {
namespace {

constexpr std::array<std::string_view, 3> Acts = {"made", "renamed", "deleted"};

std::string_view WordOf(Act act)
{
    return Acts.at(static_cast<std::size_t>(act));
}

std::int64_t Now()
{
    return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

std::vector<std::string> Words(const std::string& line)
{
    std::vector<std::string> words(1);
    for (const char letter : line)
        if (letter == '\t')
            words.emplace_back();
        else
            words.back() += letter;
    return words;
}

} // namespace

Book::Book(const std::filesystem::path& path)
    : file(::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644))
{
    if (file < 0)
        throw std::runtime_error(path.string() + " cannot be written");
}

Book::~Book()
{
    ::close(file);
}

void Book::Write(std::initializer_list<std::string_view> words)
{
    std::string line;
    for (const std::string_view word : words) {
        if (!line.empty())
            line += '\t';
        for (const char letter : word)
            line += letter == '\t' || letter == '\n' ? ' ' : letter;
    }
    line += '\n';
    if (::write(file, line.data(), line.size()) != static_cast<ssize_t>(line.size()))
        throw std::runtime_error("a clerk's book cannot be written");
}

void Book::WriteTyped(std::string_view word, const std::vector<TypedEntries::Line>& typed)
{
    for (const TypedEntries::Line& line : typed)
        Write(
            {word, line.record.table, line.record.employer, line.record.employee, line.entry.field, line.entry.typed});
}

void Book::Begins(Act act, std::string_view employer, std::string_view employee, std::string_view newName)
{
    Write({"begins", WordOf(act), employer, employee, newName});
}

void Book::Acknowledged(Act act, std::string_view employer, std::string_view employee, std::string_view newName)
{
    Write({"done", WordOf(act), employer, employee, newName});
}

void Book::Note(const Took& took)
{
    Write({"took", took.what, std::to_string(took.wall.count()), std::to_string(took.own.count()),
           std::to_string(took.waited.count()), std::to_string(took.trips)});
}

void Book::NoteTold(std::string_view words)
{
    Write({"told", std::to_string(Now()), words});
}

Written ReadBook(const std::filesystem::path& file)
{
    Written book;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) {
        std::vector<std::string> words = Words(line);
        words.resize(6);
        const std::string& kind = words.front();
        if (kind == "typed")
            book.acknowledged.push_back({.record = {.table = words[1], .employer = words[2], .employee = words[3]},
                                         .field = words[4],
                                         .text = words[5]});
        else if (kind == "begins" || kind == "done")
            book.done.push_back({.act = static_cast<Act>(std::ranges::find(Acts, words[1]) - Acts.begin()),
                                 .employer = words[2],
                                 .employee = words[3],
                                 .newName = words[4],
                                 .isAcknowledged = kind == "done"});
        else if (kind == "took")
            book.took.push_back({.what = words[1],
                                 .wall = std::chrono::microseconds(std::stoll(words[2])),
                                 .own = std::chrono::microseconds(std::stoll(words[3])),
                                 .waited = std::chrono::microseconds(std::stoll(words[4])),
                                 .trips = std::stoll(words[5])});
        else if (kind == "told")
            book.told.push_back(
                {.when = std::chrono::system_clock::time_point(std::chrono::microseconds(std::stoll(words[1]))),
                 .words = words[2]});
    }
    return book;
}

} // namespace quillmere::office
