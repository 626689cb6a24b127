// The two sheets that are out of use: nothing opens them, and nothing that is printed changes with what they store.
#include "clientdb/CurrentRecord.h"
#include "clientdb/store/TableLayouts.h"
#include "frame/Text.h"
#include "printing/jobs/PrintJobs.h"
#include "support/ProgramFixture.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace quillmere {
namespace {

constexpr std::string_view Employer = "Acme Ltd", Employee = "Jane Smith";

/// The whole program without windows, with an employee open on page 1.
class OutOfUse : public test::ProgramFixture {
protected:
    OutOfUse()
    {
        Create(std::string(Employer), "Jane", "Smith");
        Session& session = Now();
        session.CurrentEmployer = Employer;
        session.CurrentEmployee = Employee;
        session.settings.reportPreview = 1;
    }

    /// Writes a text in every field of a table that a test names, but for the keys.
    template<typename Names>
    void Fill(std::string_view table, Names names)
    {
        Database database = Clients();
        Recordset records = OpenCurrent(database, table, Now());
        const WriteBatch batch(database);
        records.Edit();
        for (const Field& field : FieldsOf(FindTable(table)).All())
            if (field.name != "EmployerName" && field.name != "EmployeeName" && field.name != "Name" &&
                names(field.name))
                records.SetField(field.name, field.kind == FieldKind::Date ? "01/06/2010" : "3");
        records.Update();
    }

    std::string Printed(PrintedDocument document)
    {
        PrintEmployeeJob(Now(), program.Printing(), Employer, Employee, document);
        const auto ended = program.Printing().engine.Ended();
        return ended == nullptr ? std::string() : Listing(*ended);
    }
};

/// Fields of the vans' record that only the history fills.
bool IsOfHistory(std::string_view field)
{
    return field.starts_with("ChangeUse") || field.starts_with("TypeUse") || field.starts_with("TotalDays") ||
           (field.starts_with("Days") && field.size() > 4);
}

/// The history in a record of the vans, field by field.
std::map<std::string, std::string> HistoryOf(const Recordset& vans)
{
    std::map<std::string, std::string> history;
    for (const Field& field : FieldsOf(FindTable("GNotepad")).All())
        if (IsOfHistory(field.name))
            history.emplace(field.name, vans.Field(field.name));
    return history;
}

TEST_F(OutOfUse, ANewClientDatabaseHoldsTheHistoryOfThreeVansAllEmpty)
{
    Database database = Clients();
    const auto history = HistoryOf(OpenCurrent(database, "GNotepad", Now()));
    constexpr std::size_t ChangesTypesDaysAndTotal = 9 + 9 + 10 + 1;
    EXPECT_EQ(history.size(), 3 * ChangesTypesDaysAndTotal);
    for (const std::string_view last : {"Days10", "Days210", "Days310", "TypeUse39", "TotalDays3"})
        EXPECT_TRUE(history.contains(std::string(last))) << last;
    for (const auto& [field, text] : history)
        EXPECT_EQ(text, "") << field;
}

TEST_F(OutOfUse, OkOfTheVansLeavesTheHistoryAsItIs)
{
    Fill("GNotepad", IsOfHistory);
    const auto history = [this] {
        Database database = Clients();
        return HistoryOf(OpenCurrent(database, "GNotepad", Now()));
    };
    const auto before = history();
    ASSERT_NE(before.at("Days39"), "");
    Screen& vans = *Now().screens.Show("GNotepad");
    vans.box("VanRegNumber").SetText("A1");
    vans.Click(vans.box("Ok"));
    ASSERT_EQ(Now().screens.Find("GNotepad"), nullptr);
    Database database = Clients();
    EXPECT_EQ(OpenCurrent(database, "GNotepad", Now()).Field("RegNumber1"), "A1");
    EXPECT_EQ(history(), before);
}

TEST_F(OutOfUse, ThePicturesPlaceOnPage1IsEmpty)
{
    Screen& page = *Now().screens.Load("Form3");
    EXPECT_FALSE(page.box("Image6").Visible());
}

/// Clicks whatever shows and can be clicked on a screen, one after the other, on a screen opened anew for each.
TEST_F(OutOfUse, NothingThatShowsOpensTheSheets)
{
    const std::set<std::string, std::less<>> sheets = {"FNotepad", "GNotepad2", "Form1"};
    Screens& screens = Now().screens;
    std::set<std::string, std::less<>> opened;
    for (const auto& sheet : sheets)
        screens.Register(sheet, [&opened, sheet](Session& session) {
            opened.insert(sheet);
            return std::make_unique<Screen>(session, sheet, ShowMode::Modal, sheet);
        });
    int clicks = 0;
    for (const std::string& name : screens.Registered()) {
        if (sheets.contains(name))
            continue;
        std::vector<std::pair<std::string, int>> controls;
        const auto shown = screens.Make(name);
        for (const auto& box : shown->Boxes()) {
            const BoxKind kind = box->Kind();
            if (kind == BoxKind::Text || kind == BoxKind::Tick || kind == BoxKind::Option)
                continue;
            if (box->Visible() && (shown->IsClickable(*box) || shown->IsDoubleClickable(*box)))
                controls.emplace_back(box->Name(), box->Index());
        }
        for (const auto& [control, index] : controls) {
            Screen* screen = screens.Find(name) == nullptr ? screens.Load(name) : screens.Find(name);
            if (screen == nullptr)
                break;
            Box* box = screen->FindBox(control, index);
            screen->Click(*box);
            if (Screen* still = screens.Find(name))
                still->DoubleClick(*still->FindBox(control, index));
            ++clicks;
            EXPECT_TRUE(opened.empty()) << name << '.' << control << " opens " << *opened.begin();
            opened.clear();
            if (name != "MDIForm1")
                screens.Unload(name);
        }
    }
    EXPECT_GT(clicks, 150);
    // The eye that looks would see it.
    screens.Load("Form3");
    Screen* page = screens.Find("Form3");
    page->Click(page->box("Image6"));
    EXPECT_TRUE(opened.contains("FNotepad"));
}

TEST_F(OutOfUse, WhatIsPrintedDoesNotChangeWithTheSheetsRecords)
{
    const auto all = [](std::string_view) { return true; };
    const auto history = [](std::string_view field) { return IsOfHistory(field); };
    // With something on every page, so that there is something to change.
    Fill("P11D", all);
    Fill("ExtraCars", all);
    Fill("GNotepad", [](std::string_view field) { return !IsOfHistory(field); });
    const std::string employee = Printed(PrintedDocument::Employee);
    const std::string declaration = Printed(PrintedDocument::Declaration);
    ASSERT_NE(employee.find("text"), std::string::npos);
    ASSERT_NE(declaration.find("text"), std::string::npos);

    Fill("FNotepad", all);
    Fill("GNotepad", history);
    EXPECT_EQ(Printed(PrintedDocument::Employee), employee);
    EXPECT_EQ(Printed(PrintedDocument::Declaration), declaration);

    // What is not of the sheets does change it.
    Fill("P11D", [](std::string_view field) { return field == "FMakeModel1"; });
    {
        Database database = Clients();
        Recordset records = OpenCurrent(database, "P11D", Now());
        StoreField(records, "FMakeModel1", "ANOTHER CAR");
    }
    EXPECT_NE(Printed(PrintedDocument::Employee), employee);
}

TEST_F(OutOfUse, ThePagesDoNotChangeWithTheSheetsRecords)
{
    const auto texts = [&] {
        std::string shown;
        for (const std::string_view name : {"Form3", "Side2Form1", "Form3_4", "GNotepad"}) {
            Screen* screen = Now().screens.Show(name);
            for (const auto& box : screen->Boxes())
                shown += box->FullName() + "=" + box->Text() + (box->Ticked() ? "!" : "") + "\n";
            Now().screens.Unload(name);
        }
        return shown;
    };
    const std::string before = texts();
    Fill("FNotepad", [](std::string_view) { return true; });
    Fill("GNotepad", [](std::string_view field) { return IsOfHistory(field); });
    EXPECT_EQ(texts(), before);
}

} // namespace
} // namespace quillmere
