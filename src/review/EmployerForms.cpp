#include "review/EmployerForms.h"

#include <iterator>

namespace quillmere::review {

EmployerForms::EmployerForms(Database& database, std::string_view employer)
{
    for (const FactsRecord& record : RecordsOf(facts)) {
        Recordset records = database.OpenRecordset(record.table);
        records.Index("IndKey");
        const FieldPlace key = records.Prepare("EmployeeName");
        Table& table = tables.emplace_back(Table{.records = std::move(records), .key = key});
        for (const FactsRecord::Field& field : record.fields)
            table.facts.emplace_back(table.records.Prepare(field.name), field.text);
        table.records.MoveFirstOf(employer);
    }
}

bool EmployerForms::Next()
{
    Table& forms = tables.front();
    // Behind the one who was looked at last; his record may have gone meanwhile.
    while (!forms.records.AtEnd() && begun && KeyOf(forms) <= employee)
        forms.records.MoveNext();
    begun = true;
    Read(forms, !forms.records.AtEnd());
    if (!forms.isRead)
        return false;
    employee = KeyOf(forms);
    for (auto table = std::next(tables.begin()); table != tables.end(); ++table) {
        while (!table->records.AtEnd() && KeyOf(*table) < employee)
            table->records.MoveNext();
        Read(*table, !table->records.AtEnd() && KeyOf(*table) == employee);
    }
    return true;
}

/// Reads the facts of the record that the table stands on; empties them where that is not the employee's.
void EmployerForms::Read(Table& table, bool isOfEmployee)
{
    if (isOfEmployee || table.isRead)
        for (const auto& [place, text] : table.facts)
            *text = isOfEmployee ? table.records.Field(place) : std::string_view();
    table.isRead = isOfEmployee;
}

} // namespace quillmere::review
