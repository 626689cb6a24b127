#pragma once

#include "clientdb/Employees.h"
#include "clientdb/store/Recordset.h"
#include "clientdb/store/TableLayouts.h"
#include "clientdb/store/Template.h"
#include "edition/Edition.h"
#include "frame/Amount.h"
#include "frame/Text.h"
#include "printing/jobs/PrintSystem.h"
#include "printing/jobs/frmVSPrint.h"
#include "support/ScriptedDoor.h"
#include "support/StoreFixture.h"

#include <fmt/format.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere::test {

/// A session with a client database and the print system, without windows: for tests that run print jobs. Every
/// document that ends is kept.
class PrintDesk {
public:
    /// `door` answers what the jobs ask; it must outlive the desk.
    explicit PrintDesk(ScriptedDoor& door, const std::filesystem::path& in = std::filesystem::temp_directory_path())
        : folder(in), session(door), printing(session)
    {
        session.programFolder = session.resourceFolder = folder.path;
        session.RootFolder = folder.path;
        session.settings.path.at(1) = folder.path.string();
        session.settings.reportCompiler = "M. Jones";
        CreateTables(session.ClientDatabasePath());
        printing.engine.documentEnded = [this](std::shared_ptr<const Document> document) {
            documents.push_back(std::move(document));
        };
        session.screens.Register("frmVSPrint",
                                 [this](Session& with) { return std::make_unique<frmVSPrint>(with, printing); });
    }
    ~PrintDesk() { session.screens.Abandon(); }
    PrintDesk(const PrintDesk&) = delete;
    PrintDesk& operator=(const PrintDesk&) = delete;

    Database Open() const { return Database::OpenDatabase(session.ClientDatabasePath()); }

    void Add(std::string_view employer, std::string_view firstName, std::string_view surname)
    {
        Database database = Open();
        CreateEmployee(database, {.employer = std::string(employer),
                                  .firstName = std::string(firstName),
                                  .surname = std::string(surname),
                                  .payeReference = "123/A456"});
    }

    /// Adds so many employees at once, from "Jane Smith-0001" on.
    void AddSmiths(std::string_view employer, int count)
    {
        Database database = Open();
        const WriteBatch batch(database);
        for (int number = 1; number <= count; ++number)
            CreateEmployee(database, {.employer = std::string(employer),
                                      .firstName = "Jane",
                                      .surname = fmt::format("Smith-{:04}", number)});
    }

    /// Sets a field of the one record that the key parts name.
    void Set(std::string_view table, std::string_view employer, std::string_view employee, std::string_view field,
             std::string_view text)
    {
        Database database = Open();
        Recordset records = database.OpenRecordset(table);
        Seek(records, table, employer, employee);
        records.Edit();
        records.SetField(field, text);
        records.Update();
    }

    static void Seek(Recordset& records, std::string_view table, std::string_view employer, std::string_view employee)
    {
        if (FindTable(table).level == TableLevel::Employer) {
            records.Index("PrimaryKey");
            records.Seek(employer);
        } else {
            records.Index("IndKey");
            records.Seek(employer, employee);
        }
        if (records.NoMatch())
            throw std::runtime_error(fmt::format("no record of {} {} in {}", employer, employee, table));
    }

    /// Fills every field of a record but its keys. No two figures are alike, so that a listing tells where each comes
    /// from.
    void Fill(std::string_view table, std::string_view employer, std::string_view employee)
    {
        Database database = Open();
        Recordset records = database.OpenRecordset(table);
        Seek(records, table, employer, employee);
        FillRecord(records, table);
    }

    /// Fills every record in which the employee's papers find what they print.
    void FillAll(std::string_view employer, std::string_view employee)
    {
        for (const std::string_view table :
             {"P11D",      "ExtraCars", "ANotepad",  "BNotepad",  "CNotepad",  "DNotepad",  "ENotepad",  "GNotepad",
              "HNotepad",  "INotepad",  "JNotepad",  "KNotepad",  "LNotepad",  "NNotepad1", "NNotepad2", "NNotepad3",
              "ONotepad1", "ONotepad2", "ONotepad3", "ONotepad4", "ONotepad5", "ONotepad6"})
            Fill(table, employer, employee);
    }
    /// And those of the employer's declaration.
    void FillDeclaration(std::string_view employer)
    {
        for (const std::string_view table : {"P11DB", "P11DBNotepad1", "P11DBNotepad2"})
            Fill(table, employer, {});
    }

    /// The same for the record on which a cursor of the table stands.
    static void FillRecord(Recordset& records, std::string_view table)
    {
        records.Edit();
        int place = 0;
        for (const Field& field : FieldsOf(FindTable(table)).All()) {
            ++place;
            if (field.name != "EmployerName" && field.name != "EmployeeName" && field.name != "Name")
                records.SetField(field.name, TextFor(field, place));
        }
        records.Update();
    }

    ScriptedDoor& Door() { return static_cast<ScriptedDoor&>(session.platform); }

    /// The last document; takes all away.
    std::shared_ptr<const Document> TakeLast()
    {
        std::shared_ptr<const Document> last = documents.empty() ? nullptr : documents.back();
        documents.clear();
        return last;
    }

    TemporaryFolder folder;
    Session session;
    PrintSystem printing;
    std::vector<std::shared_ptr<const Document>> documents;

private:
    static std::string TextFor(const Field& field, int place)
    {
        switch (field.kind) {
        case FieldKind::Amount:
            if (place % 11 == 7)
                return "      0.00";
            return PadAmount(place % 7 == 3 ? fmt::format("({}.50)", place * 13) : fmt::format("{}.25", place * 13));
        case FieldKind::Date:
            return fmt::format("{:02}/{:02}/2010", place % 28 + 1, place % 9 + 4);
        case FieldKind::Tick:
            return field.name.starts_with("SexTick") ? "F" : field.name == "OEntertainTick" ? "Y" : "1";
        case FieldKind::Days:
        case FieldKind::Count:
            return std::to_string(place);
        case FieldKind::Text:
            break;
        }
        return field.name.starts_with("Description") ? fmt::format("Item {} of the list", place)
                                                     : "Text of " + field.name;
    }
};

/// The texts of a page in the order of drawing.
inline std::vector<std::string> TextsOf(const Document& document, int page)
{
    std::vector<std::string> texts;
    for (const Operation& operation : document.Page(page))
        if (operation.kind == OperationKind::Text)
            texts.emplace_back(document.TextOf(operation));
    return texts;
}

} // namespace quillmere::test
