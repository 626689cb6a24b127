#pragma once

#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// What has been typed and could not be stored: a file of text beside the client database, there as long as something
/// waits in it. Each line is an entry: table, employer, employee (empty in a table of employers), field, what the store
/// held when the box was filled, and what was typed, parted by tabs. What more a line may hold is passed over. Desks
/// that change the file at one moment do so one after the other.
class TypedEntries {
public:
    struct Record {
        std::string table, employer, employee;

        friend bool operator==(const Record&, const Record&) = default;
    };
    struct Entry {
        std::string field, stored, typed;

        friend bool operator==(const Entry&, const Entry&) = default;
    };

    explicit TypedEntries(const std::filesystem::path& database);

    /// What waits for a record, in the order of keeping. What cannot be read waits on.
    std::vector<Entry> Of(const Record& record) const;
    /// Keeps the entries, over what waits for the same fields. Throws FileError.
    void Keep(const Record& record, std::span<const Entry> entries) const;
    /// Forgets what waits for these fields of a record. Throws FileError.
    void Forget(const Record& record, std::span<const std::string> fields) const;

private:
    struct Line {
        Record record;
        Entry entry;
    };
    std::vector<Line> Read() const;
    void Write(const std::vector<Line>& lines) const;
    /// Reads, changes and writes, with the other desks kept out.
    void Change(const std::function<void(std::vector<Line>&)>& change) const;

    std::filesystem::path file;
};

} // namespace quillmere
