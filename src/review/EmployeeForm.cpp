#include "review/EmployeeForm.h"

#include <algorithm>

namespace quillmere::review {

EmployeeForm::EmployeeForm(Database& database, std::string_view employer, std::string_view employee)
    : records(RecordsOf(facts, Descriptions::OfEveryList))
{
    for (const FactsRecord& record : records)
        database.WillSeek(record.table, employer, employee);
    for (const FactsRecord& record : records) {
        Recordset held = database.OpenRecordset(record.table);
        held.Index("IndKey");
        held.Seek(employer, employee);
        if (held.NoMatch())
            continue;
        for (const FactsRecord::Field& field : record.fields)
            if (const std::string_view text = held.Field(field.name); !text.empty())
                *field.text = stored.emplace_back(text);
    }
}

void EmployeeForm::Read(std::string_view table, const Screen& screen)
{
    std::deque<std::string>& texts = onScreen[screen.Name()];
    texts.clear();
    const auto record = std::ranges::find(records, table, &FactsRecord::table);
    for (const auto& box : screen.Boxes()) {
        if (box->Field().empty())
            continue;
        const std::string_view text = texts.emplace_back(box->Stored());
        for (const FactsRecord::Field& field : record->fields)
            if (field.name == box->Field())
                *field.text = text;
    }
}

} // namespace quillmere::review
