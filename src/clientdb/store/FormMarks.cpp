#include "clientdb/store/FormMarks.h"

#include "clientdb/store/Connection.h"

#include <cstdint>
#include <fmt/format.h>
#include <set>

namespace quillmere {
namespace {

/// Fields that name an employee and say nothing of the form.
const std::set<std::string_view> Keys{"EmployerName", "EmployeeName", "Name"};

/// A number for all that is put into it, in its order: texts that differ in anything come to different ones but for one
/// chance in 2^64.
class Digest {
public:
    void Put(std::string_view text)
    {
        // With its length, so that two texts are not taken for one.
        for (std::size_t length = text.size(); length > 0; length >>= 8)
            Put(static_cast<unsigned char>(length));
        Put(0);
        for (const char byte : text)
            Put(static_cast<unsigned char>(byte));
    }
    std::string Text() const { return fmt::format("{:016x}", number); }

private:
    // FNV-1a
    void Put(unsigned char byte) { number = (number ^ byte) * 0x100000001b3U; }
    std::uint64_t number = 0xcbf29ce484222325U;
};

std::int64_t NumberOf(FormMark mark)
{
    return static_cast<std::int64_t>(mark);
}

} // namespace

FormMarks::FormMarks(Database& of) : database(of), connection(of.connection)
{
}

FormMarks::Table FormMarks::Look() const
{
    const std::string words = connection->TableWords("FormMarks");
    if (words.empty())
        return Table::None;
    return words == CreateMarks ? Table::There : Table::OfOthers;
}

/// What all records of the employee hold; an empty field reads as one that was never filled.
std::string FormMarks::FormOf(std::string_view employer, std::string_view employee) const
{
    Digest digest;
    const Key key{employer, employee};
    for (const TableLayout& layout : ClientTables())
        if (layout.level == TableLevel::Employee)
            connection->Foresee(connection->Statements(layout), layout.indexes.front(), key);
    for (const TableLayout& layout : ClientTables()) {
        if (layout.level != TableLevel::Employee)
            continue;
        TableStatements& statements = connection->Statements(layout);
        Prepared* const foreseen = connection->Foreseen(statements, layout.indexes.front(), key);
        Run record(foreseen != nullptr ? *foreseen : statements.Seek(layout.indexes.front(), {}, true));
        key.BindTo(record);
        if (!record.Step())
            continue;
        digest.Put(layout.name);
        int column = 0; // the number of the record
        for (const Field& field : statements.Fields().All()) {
            ++column;
            if (!Keys.contains(field.name))
                digest.Put(record.Text(column));
        }
    }
    return digest.Text();
}

bool FormMarks::Set(FormMark mark, std::string_view employer, std::string_view employee, std::string_view day) const
{
    WriteBatch batch(database);
    batch.Begin();
    const Table table = Look();
    if (table == Table::OfOthers)
        return false;
    if (table == Table::None)
        connection->Execute(std::string(CreateMarks));
    const std::string form = FormOf(employer, employee);
    Run(connection->Own("INSERT INTO [FormMarks] VALUES(?,?,?,?,?) ON CONFLICT([EmployerName],[EmployeeName],"
                        "[Mark]) DO UPDATE SET [Day]=excluded.[Day],[Form]=excluded.[Form]"))
        .Bind(employer)
        .Bind(employee)
        .Bind(NumberOf(mark))
        .Bind(day)
        .Bind(form)
        .Change();
    batch.Commit();
    return true;
}

void FormMarks::Clear(FormMark mark, std::string_view employer, std::string_view employee) const
{
    if (AreThere())
        Run(connection->Own("DELETE FROM [FormMarks] WHERE [EmployerName]=? AND [EmployeeName]=? AND [Mark]=?"))
            .Bind(employer)
            .Bind(employee)
            .Bind(NumberOf(mark))
            .Change();
}

std::map<FormMark, MarkOfForm> FormMarks::Of(std::string_view employer, std::string_view employee) const
{
    std::map<FormMark, MarkOfForm> marks;
    if (!AreThere())
        return marks;
    std::string form; // worked out for the first mark
    Run found(connection->Own("SELECT [Mark],[Day],[Form] FROM [FormMarks] WHERE [EmployerName]=? AND "
                              "[EmployeeName]=?"));
    for (found.Bind(employer).Bind(employee); found.Step();) {
        if (form.empty())
            form = FormOf(employer, employee);
        marks[static_cast<FormMark>(found.Number(0))] = {.day = std::string(found.Text(1)),
                                                         .isOutdated = found.Text(2) != form};
    }
    return marks;
}

void FormMarks::Forget(std::string_view employer, std::string_view employee) const
{
    if (AreThere())
        Run(connection->Own("DELETE FROM [FormMarks] WHERE [EmployerName]=?1 AND (?2='' OR [EmployeeName]=?2)"))
            .Bind(employer)
            .Bind(employee)
            .Post();
}

void FormMarks::RenameEmployee(std::string_view employer, std::string_view employee, std::string_view newName) const
{
    if (!AreThere())
        return;
    // Whoever had the new name before loses the marks that are renamed.
    for (const std::string_view text :
         {"DELETE FROM [FormMarks] WHERE [EmployeeName]=?1 AND [EmployerName]=?2 AND [EmployeeName]<>?3 AND [Mark] IN "
          "(SELECT [Mark] FROM [FormMarks] WHERE [EmployerName]=?2 AND [EmployeeName]=?3)",
          "UPDATE [FormMarks] SET [EmployeeName]=?1 WHERE [EmployerName]=?2 AND [EmployeeName]=?3"})
        Run(connection->Own(std::string(text))).Bind(newName).Bind(employer).Bind(employee).Post();
}

void FormMarks::RenameEmployer(std::string_view employer, std::string_view newName) const
{
    // Whoever goes on under the old name because the new one is taken is left without marks.
    if (AreThere())
        Run(connection->Own("UPDATE [FormMarks] SET [EmployerName]=?1 WHERE [EmployerName]=?2 AND NOT EXISTS "
                            "(SELECT 1 FROM [FormMarks] AS taken WHERE taken.[EmployerName]=?1 AND "
                            "taken.[EmployeeName]=[FormMarks].[EmployeeName] AND taken.[Mark]=[FormMarks].[Mark])"))
            .Bind(newName)
            .Bind(employer)
            .Change();
}

} // namespace quillmere
