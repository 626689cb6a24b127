#pragma once

#include "clientdb/TypedEntries.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere::office {

/// What a clerk does to somebody: `Made`, `Renamed` to another name, `Deleted`.
enum class Act { Made, Renamed, Deleted };

/// What an operation took.
struct Took {
    std::string what;
    std::chrono::microseconds wall{}, own{}, waited{}; ///< own: at the processor; waited: for one
    std::int64_t trips = 0;
};

/// What one clerk has written down, line by line as it happened, in a file that is there whatever becomes of the clerk.
class Book {
public:
    explicit Book(const std::filesystem::path& file);
    ~Book();
    Book(const Book&) = delete;
    Book& operator=(const Book&) = delete;

    // Before and after: what is only begun may have been done or not.
    void Begins(const std::vector<TypedEntries::Line>& typed) { WriteTyped("types", typed); }
    void Acknowledged(const std::vector<TypedEntries::Line>& typed) { WriteTyped("typed", typed); }
    void Begins(Act act, std::string_view employer, std::string_view employee, std::string_view newName = {});
    void Acknowledged(Act act, std::string_view employer, std::string_view employee, std::string_view newName = {});
    void Note(const Took& took);
    void NoteTold(std::string_view words);

private:
    void WriteTyped(std::string_view word, const std::vector<TypedEntries::Line>& typed);
    void Write(std::initializer_list<std::string_view> words);

    int file;
};

/// The same as it is read.
struct Written {
    struct Done {
        Act act;
        std::string employer, employee, newName;
        bool isAcknowledged;
    };
    struct Typed {
        TypedEntries::Record record;
        std::string field, text;
    };
    struct Told {
        std::chrono::system_clock::time_point when;
        std::string words;
    };
    std::vector<Typed> acknowledged;
    std::vector<Done> done;
    std::vector<Took> took;
    std::vector<Told> told;
};

Written ReadBook(const std::filesystem::path& file);

} // namespace quillmere::office
