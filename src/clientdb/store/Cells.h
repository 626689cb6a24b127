#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// Texts of records, copied out of the store.
class Cells {
public:
    void Clear()
    {
        cells.clear();
        bytes.clear();
    }
    std::size_t Bytes() const { return bytes.size(); }
    std::size_t Count() const { return cells.size(); }

    /// Puts a text behind the others; nothing: null.
    void Put(std::optional<std::string_view> text)
    {
        cells.push_back({static_cast<std::uint32_t>(bytes.size()), text ? static_cast<int>(text->size()) : Null});
        if (text)
            bytes += *text;
    }

    bool IsNull(std::size_t cell) const { return cells[cell].size == Null; }
    std::string_view Text(std::size_t cell) const
    {
        const Cell& at = cells[cell];
        return at.size == Null ? std::string_view()
                               : std::string_view(bytes.data() + at.offset, static_cast<std::size_t>(at.size));
    }

private:
    static constexpr int Null = -1;
    struct Cell {
        std::uint32_t offset;
        int size;
    };
    std::vector<Cell> cells;
    std::string bytes;
};

} // namespace quillmere
