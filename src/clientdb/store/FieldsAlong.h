#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quillmere {

/// Which fields of a table a cursor reads of each record, and where in the row they stand: those that it has been asked
/// for so far, in that order. Once so many were asked for one by one, they are all read, in the order of the table.
class FieldsAlong {
public:
    explicit FieldsAlong(std::size_t count);

    bool Has(std::size_t column) const { return places[column] != NotRead; }
    std::size_t PlaceOf(std::size_t column) const { return places[column]; }
    std::size_t Width() const { return all ? places.size() : columns.size(); }
    /// None where all come along.
    std::span<const std::uint16_t> Columns() const { return columns; }
    bool All() const { return all; }

    void Bring(std::size_t column);
    /// Brings a field that a scan has met with a question for it.
    void Learn(std::size_t column);

private:
    static constexpr std::uint16_t NotRead = UINT16_MAX;
    std::vector<std::uint16_t> columns;
    std::vector<std::uint16_t> places;
    bool all = false;
};

} // namespace quillmere
