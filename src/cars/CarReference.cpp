#include "cars/CarReference.h"

#include "frame/Amount.h"
#include "frame/Text.h"

#include <algorithm>

namespace quillmere {

CarReference::CarReference(const std::filesystem::path& file)
    : database(Database::OpenReferenceDatabase(file)),
      percentages(database.OpenRecordset("C02")),
      manufacturers(database.OpenRecordset("Manufacturers")),
      figures(database.OpenRecordset("Figures"))
{
    // A table that is missing shows only when it is read.
    for (Recordset* table : {&percentages, &manufacturers, &figures})
        table->MoveFirst();
}

std::string CarReferenceRate(const std::filesystem::path& file, int figure, SheetColumn column)
{
    Database database = Database::OpenReferenceDatabase(file);
    Recordset figures = database.OpenRecordset("Figures");
    for (figures.MoveFirst(); !figures.AtEnd(); figures.MoveNext()) {
        const std::string stored = Trim(figures.Field("C02"));
        if (!stored.empty() && ReadWholeNumber(stored) == figure)
            return std::string(figures.Field(column == SheetColumn::Column1 ? "Column 1" : "Column 2"));
    }
    return {};
}

bool ListedValues::Add(std::string_view value)
{
    if (used == Slots || std::find(values.begin(), values.begin() + used, value) != values.begin() + used)
        return false;
    values[used++] = value;
    return true;
}

} // namespace quillmere
