#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace quillmere {

/// What has been typed and could not be stored, or is not yet: a file of text beside the client database, there as long
/// as something waits in it. Each line is an entry: table, employer, employee (empty in a table of employers), field,
/// what the store held when the box was filled, what was typed, when, and which desk is still at it, parted by tabs.
/// What more a line may hold is passed over. Desks that change the file at one moment do so one after the other.
class TypedEntries {
public:
    struct Record {
        std::string table, employer, employee;

        friend bool operator==(const Record&, const Record&) = default;
    };
    struct Entry {
        std::string field, stored, typed;
        std::string moment = {}; ///< yyyy-mm-dd hh:mm:ss

        friend bool operator==(const Entry&, const Entry&) = default;
    };

    explicit TypedEntries(const std::filesystem::path& database);

    struct Line {
        Record record;
        Entry entry;
        std::string desk = {}; ///< empty: nobody is at it any more, and it waits for whoever opens the record

        friend bool operator==(const Line&, const Line&) = default;
    };

    /// All that is there, in the order of keeping. What cannot be read waits on.
    std::vector<Line> All() const;

    // These throw FileError.
    /// Keeps lines that nobody is at, over what waits for the same fields.
    void Keep(const std::vector<Line>& lines) const;
    /// Makes these all that a desk is at.
    void KeepOf(const std::string& desk, const std::vector<Line>& lines) const;
    /// The desk has ended: what it was at waits from now on.
    void Release(const std::string& desk) const;
    /// What is kept for a record is kept for the one that `renamed` makes of it.
    void Rename(const std::function<Record(const Record&)>& renamed) const;
    /// Forgets lines that wait.
    void Forget(const std::vector<Line>& lines) const;

private:
    std::vector<Line> Read() const;
    void Write(const std::vector<Line>& lines) const;
    /// Reads, changes and writes, with the other desks kept out.
    void Change(const std::function<void(std::vector<Line>&)>& change) const;

    std::filesystem::path file;
};

} // namespace quillmere
