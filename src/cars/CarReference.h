#pragma once

#include "cars/CarSheet.h"
#include "clientdb/store/Recordset.h"

#include <array>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

/// The reference database of car models, which stands beside the program and is only read.
namespace quillmere {

/// Its file's name, beside the executable.
inline constexpr std::string_view CarReferenceName = "CarC02";

/// The reference database with its three tables open.
struct CarReference {
    /// Throws StoreError if the file is missing, damaged or without one of the tables.
    explicit CarReference(const std::filesystem::path& file);

    Database database;
    Recordset percentages;   ///< `C02`, which nothing reads
    Recordset manufacturers; ///< `Manufacturers`
    Recordset figures;       ///< `Figures`, one row for each version of a model
};

/// The rate of a rounded figure: the column's text in the first row of `Figures` whose `C02` equals it; empty if there
/// is none. Opens the file and closes it. Throws StoreError.
std::string CarReferenceRate(const std::filesystem::path& file, int figure, SheetColumn column);

/// The values that a list shows already, each once, in the order in which they were met. It holds a limited number.
class ListedValues {
public:
    static constexpr std::size_t Slots = 501;

    /// True if the value is new and there is room for it, so that the list takes it.
    [[nodiscard]] bool Add(std::string_view value);
    void Clear() { used = 0; }

private:
    std::array<std::string, Slots> values;
    std::size_t used = 0;
};

} // namespace quillmere
