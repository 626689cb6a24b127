#include "clientdb/store/TablesBeside.h"

#include "clientdb/store/FormMarks.h"
#include "clientdb/store/HistoryTables.h"

namespace quillmere {

std::vector<TableBeside> TablesBeside()
{
    using enum TableBeside::Kind;
    return {
        {.name = OperationTable,
         .number = "Number",
         .columns = {{"Words", Text},
                     {"Who", Text},
                     {"Moment", Text},
                     {"First", Number},
                     {"Last", Number},
                     {"Bytes", Number},
                     {"Undoes", Number},
                     {"Root", Number},
                     {"Backward", Number}},
         .key = {},
         .words = CreateHistoryTableText(OperationTable)},
        {.name = ChangeTable,
         .number = "Number",
         .columns = {{"Operation", Number},
                     {"EmployerName", Text},
                     {"EmployeeName", Text},
                     {"Records", Number},
                     {"Changes", Bytes}},
         .key = {},
         .words = CreateHistoryTableText(ChangeTable)},
        {.name = "FormMarks",
         .number = "rowid",
         .columns = {{"EmployerName", Text}, {"EmployeeName", Text}, {"Mark", Number}, {"Day", Text}, {"Form", Text}},
         .key = {"EmployerName", "EmployeeName", "Mark"},
         .words = std::string(CreateMarks)}};
}

} // namespace quillmere
