#pragma once

#include "clientdb/store/Connection.h"

namespace quillmere {

/// What was set since Edit or AddNew and is not written yet. One change a field, in the order of the fields, so that
/// the same fields always make the same statement; none while nothing is being written.
class PendingEdit {
public:
    /// A field to be written.
    struct Change {
        std::uint16_t column;
        bool isNull;
        std::string text;
    };

    void BeginRecord() { Begin(Writing::Record); }
    void BeginNewRecord() { Begin(Writing::NewRecord); }
    void Drop() { Begin(Writing::Nothing); }
    bool IsOpen() const { return writing != Writing::Nothing; }
    bool IsNewRecord() const { return writing == Writing::NewRecord; }
    /// True if Update has nothing to do.
    bool IsEmpty() const { return !IsNewRecord() && count == 0; }

    /// Throws std::logic_error if nothing is being written.
    void Set(std::size_t column, std::string_view text, bool isNull);
    /// The change of a field; nullptr if it stays as it is.
    const Change* Find(std::size_t column) const;
    std::span<const Change> Changes() const { return std::span(changes).first(count); }
    /// Writes the record, or adds it: the number of records written. A record that is held is there: its writing can be
    /// posted, that of its key only where it `mayBeRefused` later; so can the adding of one that has a number already.
    int Write(TableStatements& statements, std::int64_t rowid, bool isHeld, bool mayBeRefused) const;

private:
    enum class Writing { Nothing, Record, NewRecord };
    void Begin(Writing what)
    {
        count = 0;
        writing = what;
    }
    void Insert(std::ptrdiff_t at, std::uint16_t column, std::string_view text, bool isNull);

    Writing writing = Writing::Nothing;
    std::vector<Change> changes; ///< those behind the first `count` are left over for their room
    std::size_t count = 0;
};

} // namespace quillmere
