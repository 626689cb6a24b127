#include "clientdb/store/FieldsAlong.h"

#include <algorithm>
#include <numeric>

namespace quillmere {
namespace {

/// A scan that looks at more fields than these, and at half of the table's, reads whole records.
constexpr std::size_t MostFieldsApart = 24;

} // namespace

FieldsAlong::FieldsAlong(std::size_t count) : places(count, NotRead)
{
}

void FieldsAlong::Bring(std::size_t column)
{
    places[column] = static_cast<std::uint16_t>(columns.size());
    columns.push_back(static_cast<std::uint16_t>(column));
}

void FieldsAlong::Learn(std::size_t column)
{
    if (columns.size() < std::max(MostFieldsApart, places.size() / 2))
        return Bring(column);
    all = true;
    columns.clear();
    std::iota(places.begin(), places.end(), std::uint16_t{0});
}

} // namespace quillmere
