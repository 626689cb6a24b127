#include "review/Checks.h"

#include "clientdb/Employees.h"
#include "clientdb/store/TableLayouts.h"
#include "review/EmployerForms.h"
#include "review/EmployerReview.h"
#include "review/Paper.h"
#include "support/ScriptedDoor.h"
#include "support/StoreFixture.h"

#include <algorithm>
#include <map>
#include <set>

namespace quillmere::review {

void PrintTo(const Finding& finding, std::ostream* out)
{
    *out << finding.check->code << " " << finding.Employee() << " " << finding.spot.screen << "." << finding.spot.box
         << " " << finding.spot.detail;
}

} // namespace quillmere::review

namespace quillmere::test {
namespace {

using review::Finding;
using review::FindingList;
using review::Severity;

/// Texts of an employee's records by "Table.Field"; a field of the form by its name alone.
using Texts = std::map<std::string, std::string>;

std::string Key(std::string_view table, std::string_view field)
{
    return table == "P11D" ? std::string(field) : std::string(table) + "." + std::string(field);
}

/// A desk at which paper can be measured.
struct Measure {
    test::ScriptedDoor door;
    Settings settings = SetDefaultConfiguration({});
    review::Paper paper{settings, door};
};

FindingList CheckForm(const Texts& form)
{
    static const Measure measure;
    review::FormFacts facts;
    for (const review::FactsRecord& record : RecordsOf(facts))
        for (const review::FactsRecord::Field& field : record.fields)
            if (const auto found = form.find(Key(record.table, field.name)); found != form.end())
                *field.text = found->second;
    FindingList findings;
    review::CheckEmployee("Jane Smith", facts, findings);
    review::CheckPaper("Jane Smith", measure.paper.Cut(facts), findings);
    return findings;
}

/// A form with something in every section, and nothing to look at.
const Texts WholeForm = {
    {"PAYEBox", "123/A456"},
    {"Surname", "Smith"},
    {"FirstName", "Jane"},
    {"NatIns", "AB123456C"},
    {"ADescriptionAsset", "As per attached"},
    {"ACostMarketBox", "    100.00"},
    {"AAmountGood", "     20.00"},
    {"ACashEqu", "     80.00"},
    {"ANotepad.Description1", "Desk"},
    {"ANotepad.CostMarket1", "    100.00"},
    {"ANotepad.Tax1", "     20.00"},
    {"ANotepad.CashEq1", "     80.00"},
    {"BDescriptionPayment", "Rent"},
    {"B2", "     50.00"},
    {"KCostYou", "     10.00"},
    {"KCashEqu", "     10.00"},
    {"FMakeModel1", "Estate"},
    {"FRegDate1", "01/03/2009"},
    {"FC021", "150"},
    {"FFuel1", "P"},
    {"FDateFrom1", "01/10/2010"},
    {"FListPrice1", "  20000.00"},
    {"FCashEqu1", "   1582.00"}, // 3,800 for the year, less 213 of its 365 days
    {"FFuelTick1", "1"},
    {"FFuelEqu1", "    833.00"}, // 3,420 for the year, less 276 of its 365 days
    {"FUnavailableFirst11", "01/11/2010"},
    {"FUnavailableLast11", "05/12/2010"},
    {"FDateWithdrawn1", "01/02/2011"},
    {"ExtraCars.FMakeModel3", "Van-like car"},
    {"ExtraCars.FListPrice3", "  10000.00"},
    {"ExtraCars.FCashEqu3", "    500.00"},
    {"FTotalCashCars", "   2082.00"},
    {"FTotalCashFuel", "    833.00"},
    {"GVan", "   3000.00"},
    {"GVanFuel", "    550.00"},
    {"HMaxLoan1", "   9000.00"},
    {"HLoanDate1", "01/05/2010"},
    {"HLoanDischarge1", "01/05/2010"},
    {"HLoanCashEqu1", "    240.00"},
};

/// What is changed of the whole form: an empty text takes the field away.
Texts With(const Texts& changes)
{
    Texts form = WholeForm;
    for (const auto& [field, text] : changes)
        form[field] = text;
    return form;
}

/// How one check is tripped, where it then stands, and what comes close and does not trip it.
struct CheckCase {
    std::string_view code;
    std::string_view box;
    Texts trips;
    Texts spares;
};

const std::vector<CheckCase> Cases = {
    {"ID1", "PAYEBox", {{"PAYEBox", "   "}}, {{"PAYEBox", "1"}}},
    {"ID2", "EmployeeNameBox", {{"Surname", ""}}, {{"Surname", "O"}}},
    {"ID2", "EmployeeNameBox2", {{"FirstName", ""}}, {{"FirstName", "J"}}},
    {"ID3",
     "NatIns",
     {{"NatIns", ""}, {"DOB", "01/01/1970"}},
     {{"NatIns", ""}, {"DOB", "01/01/1970"}, {"SexTick", "F"}}},
    {"ID3", "NatIns", {{"NatIns", ""}, {"SexTick", "F"}}, {{"NatIns", "AB123456"}}},
    {"ID4", "NatIns", {{"NatIns", "AB1234"}}, {{"NatIns", "AB123456D"}}},
    {"SE1", "ADescriptionAsset", {{"ADescriptionAsset", ""}}, {{"ADescriptionAsset", "Desk"}}},
    {"SE1", "BDescriptionPayment", {{"BDescriptionPayment", ""}}, {{"BDescriptionPayment", ""}, {"B2", ""}}},
    {"SE1", "LDescriptAsset", {{"LCashEqu", "5.00"}}, {{"LCashEqu", "5.00"}, {"LDescriptAsset", "Boat"}}},
    {"SE1", "NDescriptItems2", {{"NCostYou2", "5.00"}}, {{"NDescriptItems2", "Club"}, {"NCostYou2", "5.00"}}},
    {"SE1", "ODescExpenses", {{"OCostYou6", "5.00"}}, {{"OCostYou5", "5.00"}}},
    {"SE2", "KCashEqu", {{"KCashEqu", ""}}, {{"KCashEqu", ""}, {"KCostYou", ""}}},
    {"SE2", "OCashEqu1", {{"OCostYou1", "5.00"}}, {{"OCostYou1", "5.00"}, {"OCashEqu1", "5.00"}}},
    {"SE3", "LAnnualValue", {{"LDescriptAsset", "Boat"}}, {{"LDescriptAsset", "Boat"}, {"LCashEqu", "5.00"}}},
    {"SE4", "KAmountGood", {{"KAmountGood", "10.01"}}, {{"KAmountGood", "10.00"}}},
    {"SE5", "KCashEqu", {{"KCashEqu", "9.00"}}, {{"KAmountGood", "12.00"}, {"KCashEqu", "0.00"}}},
    {"SE6", "ACostMarketBox", {{"ANotepad.CostMarket2", "1.00"}}, {{"ANotepad.CostMarket2", "0.00"}}},
    {"SE6", "NTaxPaid", {{"NNotepad3.Tax20", "1.00"}}, {{"NNotepad3.Tax20", "1.00"}, {"NTaxPaid", "1.00"}}},
    {"SE7",
     "ADescriptionAsset",
     {{"ANotepad.Description1", ""}},
     {{"ANotepad.Description1", ""}, {"ADescriptionAsset", "Desk"}}},
    {"SE8",
     "DCashEqu",
     {{"DNotepad.BasicChargeE", "1000.00"}, {"DCashEqu", "900.00"}},
     {{"DNotepad.BasicChargeE", "900.00"}, {"DCashEqu", "900.00"}}},
    {"SE8",
     "DCashEqu",
     {{"DNotepad.BasicChargeE", "900.00"}, {"DNotepad.AddChargeQ", "400.00"}, {"DCashEqu", "900.00"}},
     {{"DNotepad.BasicChargeE", "900.00"}, {"DNotepad.AddChargeQ", "400.00"}, {"DCashEqu", "1300.00"}}},
    {"SE8",
     "ETaxAmount",
     {{"ENotepad.QBox1", "100.00"}, {"ENotepad.QBox3", "20.00"}, {"ETaxAmount", "100.00"}},
     {{"ENotepad.QBox1", "100.00"}, {"ENotepad.QBox3", "20.00"}, {"ETaxAmount", "120.00"}}},
    {"SE8", "GVan", {{"GNotepad.MBox1", "2900.00"}}, {{"GNotepad.MBox1", "2900.00"}, {"GNotepad.MBox2", "100.00"}}},
    {"SE8", "GVanFuel", {{"GNotepad.MBox3", "3000.00"}}, {{"GNotepad.MBox3", "3000.00"}, {"GNotepad.XBox3", "550.00"}}},
    {"SE8", "HLoanCashEqu1", {{"HNotepad.CashEq1", "360.00"}}, {{"HNotepad.CashEq1", "240.00"}}},
    {"SE8",
     "HLoanCashEqu2",
     {{"HNotepad.CashEq2", "360.00"}},
     {{"HNotepad.CashEq3", "240.00"}, {"HLoanCashEqu2", "See Attach"}}},
    {"SE8",
     "HLoanCashEqu1",
     {{"HNotepad.CashEq3", "100.00"}, {"HNotepad.CashEq5", "100.00"}},
     {{"HNotepad.CashEq3", "100.00"}, {"HNotepad.CashEq5", "140.00"}}},
    {"SE8",
     "JRelocation",
     {{"JNotepad.ABox", "9000.00"}},
     {{"JNotepad.ABox", "9000.00"}, {"JRelocationExp", "1000.00"}}},
    {"SE8",
     "JRelocation",
     {{"JNotepad.CBox", "7000.00"}, {"JNotepad.QualExp", "2000.00"}},
     {{"JNotepad.CBox", "7000.00"}, {"JRelocationExp", "Nil"}}},
    {"CA1", "FListPrice1", {{"FListPrice1", ""}}, {{"FListPrice1", "1.00"}}},
    {"CA1", "FListPrice3", {{"ExtraCars.FListPrice3", ""}}, {{"ExtraCars.FListPrice6", ""}}},
    {"CA2", "FTotalCashCars", {{"FTotalCashCars", ""}}, {{"FTotalCashCars", ""}, {"FTotalCashFuel", ""}}},
    {"CA3", "FCashEqu1", {{"FCashEqu1", ""}}, {{"FCashEqu1", "0.00"}}},
    {"CA4", "FFuelEqu1", {{"FFuelEqu1", ""}}, {{"FFuelEqu1", ""}, {"FFuelTick1", "0"}}},
    {"CA5", "FuelTick1", {{"FFuelTick1", "0"}}, {{"FFuelTick1", "0"}, {"FFuelEqu1", "0.00"}}},
    {"CA6", "FTotalCashCars", {{"FTotalCashCars", "2081.99"}}, {{"FTotalCashCars", "2,082"}}},
    {"CA6", "FTotalCashFuel", {{"ExtraCars.FFuelEqu6", "1.00"}}, {{"ExtraCars.FFuelEqu6", "Nil"}}},
    {"CA7", "FDateFrom1", {{"FDateFrom1", "05/04/2010"}}, {{"FDateFrom1", "06/04/2010"}}},
    {"CA7", "FDateFrom1", {{"FDateTo1", "06/04/2011"}}, {{"FDateTo1", "05/04/2011"}}},
    {"CA7", "FDateFrom1", {{"FDateTo1", "30/09/2010"}}, {{"FDateTo1", "01/10/2010"}}},
    {"CA8", "FRegDate1", {{"FRegDate1", "02/10/2010"}}, {{"FRegDate1", "01/10/2010"}}},
    {"CA9",
     "txtUnavailableFirst1",
     {{"FUnavailableFirst21", "05/12/2010"}, {"FUnavailableLast21", "10/01/2011"}},
     {{"FUnavailableFirst21", "06/12/2010"}, {"FUnavailableLast21", "10/01/2011"}}},
    {"CA9", "txtUnavailableFirst1", {{"FDateTo1", "04/12/2010"}}, {{"FDateTo1", "05/12/2010"}}},
    {"CA10", "FDateWithdrawn1", {{"FDateWithdrawn1", "30/09/2010"}}, {{"FDateWithdrawn1", "01/10/2010"}}},
    {"CA11", "FC021", {{"FC021", ""}}, {{"FC021", ""}, {"FNoC021", "1"}}},
    {"CA11", "FC021", {{"FC021", ""}, {"FRegDate1", "01/01/1998"}}, {{"FC021", ""}, {"FRegDate1", "31/12/1997"}}},
    {"CA12", "FDateFrom1", {{"FDateFrom1", "06/04/2010"}, {"FDateTo1", "05/04/2011"}}, {{"FDateFrom1", "06/04/2010"}}},
    {"CA13", "FCashEqu1", {{"FCashEqu1", "1582.01"}}, {{"FCashEqu1", "1,582"}}},
    {"CA13", "FCashEqu1", {{"FCaptContr1", "100.00"}}, {{"FCaptContr1", "100.00"}, {"FRegDate1", ""}}},
    {"CA13", "FCashEqu1", {{"FPrivateUse1", "10.00"}}, {{"FPrivateUse1", "10.00"}, {"FCashEqu1", "1572.00"}}},
    {"CA13", "FFuelEqu1", {{"FFuelEqu1", "900.00"}}, {{"FFuelEqu1", "900.00"}, {"FFuelTick1", "0"}}},
    {"CA13", "FFuelEqu1", {{"FDateWithdrawnTick1", "1"}}, {{"FDateWithdrawnTick1", "1"}, {"FFuelEqu1", "1424.00"}}},
    {"CA13",
     "FCashEqu3",
     {{"ExtraCars.FRegDate3", "01/03/1997"}, {"ExtraCars.FFuel3", "P"}, {"ExtraCars.FEngine3", "1400"}},
     {{"ExtraCars.FRegDate3", "01/03/1997"},
      {"ExtraCars.FFuel3", "P"},
      {"ExtraCars.FEngine3", "1400"},
      {"ExtraCars.FCashEqu3", "1500.00"}}},
    {"VA1", "GVan", {{"GVan", ""}}, {{"GVan", ""}, {"GVanFuel", ""}}},
    {"LO1", "HLoanCashEqu1", {{"HLoanCashEqu1", ""}}, {{"HLoanCashEqu1", "Nil"}}},
    {"LO1", "HLoanCashEqu2", {{"HOutstand2", "5.00"}}, {{"HLoanDate2", "01/05/2010"}}},
    {"LO2", "HLoanDischarge1", {{"HLoanDischarge1", "30/04/2010"}}, {{"HLoanDischarge1", "01/05/2010"}}},
    {"LO3", "HMaxLoan1", {{"HMaxLoan1", "5000.00"}}, {{"HMaxLoan1", "5000.01"}}},
    {"PA1",
     "LDescriptAsset",
     {{"LDescriptAsset", "A motor yacht with two cabins and a boat"}, {"LCashEqu", "5.00"}},
     {{"LDescriptAsset", "A motor yacht with a cabin"}, {"LCashEqu", "5.00"}}},
    {"PA1", "EmployeeNameBox", {{"Surname", std::string(40, 'W')}}, {{"Surname", std::string(40, 'i')}}},
    {"PA1",
     "FMakeModel6",
     {{"ExtraCars.FMakeModel6", "An estate car with leather seats"}},
     {{"ExtraCars.FMakeModel6", "An estate car"}}},
};

std::string_view CodeOf(const Finding& finding)
{
    return finding.check->code;
}

std::set<std::string> BoxesOf(const FindingList& findings, std::string_view code)
{
    std::set<std::string> boxes;
    for (const Finding& finding : findings)
        if (finding.check->code == code)
            boxes.insert(finding.spot.box);
    return boxes;
}

TEST(Checks, AWholeFormHasNothingToLookAt)
{
    EXPECT_EQ(CheckForm(WholeForm), FindingList{}) << "a test of the cases would prove nothing";
}

TEST(Checks, EachIsTrippedByItsFaultAndSparesWhatComesClose)
{
    for (const CheckCase& check : Cases) {
        SCOPED_TRACE(std::string(check.code) + " " + std::string(check.box));
        EXPECT_TRUE(BoxesOf(CheckForm(With(check.trips)), check.code).contains(std::string(check.box)));
        EXPECT_FALSE(BoxesOf(CheckForm(With(check.spares)), check.code).contains(std::string(check.box)));
    }
}

TEST(Checks, EveryCheckOfAFormHasACase)
{
    std::set<std::string_view> codes;
    for (const CheckCase& check : Cases)
        codes.insert(check.code);
    for (const review::EmployeeCheck& row : review::EmployeeChecks())
        EXPECT_TRUE(codes.contains(row.check.code)) << row.check.code;
    for (const review::PaperCheck& row : review::PaperChecks())
        EXPECT_TRUE(codes.contains(row.check.code)) << row.check.code;
}

TEST(Checks, EveryFieldOfTheFactsIsOfALayout)
{
    review::FormFacts facts;
    for (const review::FactsRecord& record : RecordsOf(facts))
        for (const review::FactsRecord::Field& field : record.fields)
            EXPECT_NE(FieldsOf(FindTable(record.table)).Find(field.name), TableFields::None)
                << record.table << "." << field.name;
}

TEST(Checks, CodesAreOnesOfTheirKindAndEachNamesWhoSaysSo)
{
    std::set<std::string_view> codes;
    const auto look = [&](const auto& checks) {
        for (const auto& row : checks) {
            const review::Check& check = row.check;
            EXPECT_TRUE(codes.insert(check.code).second) << check.code;
            EXPECT_FALSE(check.words.empty()) << check.code;
            EXPECT_FALSE(check.source.empty()) << check.code;
        }
    };
    look(review::EmployeeChecks());
    look(review::PaperChecks());
    look(review::EmployerChecks());
}

TEST(Checks, AFindingSaysWhichCarAndByHowMuch)
{
    const auto detailOf = [](const FindingList& findings, std::string_view code) {
        const auto found = std::ranges::find(findings, code, CodeOf);
        return found == findings.end() ? "no finding" : found->spot.detail;
    };
    EXPECT_EQ(detailOf(CheckForm(With({{"ExtraCars.FListPrice3", ""}})), "CA1"), "Car 3");
    EXPECT_EQ(detailOf(CheckForm(With({{"FTotalCashCars", "1.00"}})), "CA6"),
              "1.00 on the form, 2082.00 over the cars");
    EXPECT_EQ(detailOf(CheckForm(With({{"ANotepad.CostMarket2", "1.00"}})), "SE6"),
              "100.00 on the form, 101.00 in the list");
    EXPECT_EQ(detailOf(CheckForm(With({{"FCashEqu1", "1.00"}})), "CA13"),
              "Car 1, 1.00 on the form, 1582.00 worked out");
    EXPECT_EQ(detailOf(CheckForm(With({{"JNotepad.ABox", "9000.00"}})), "SE8"), "0.00 on the form, 1000.00 worked out");
    EXPECT_EQ(detailOf(CheckForm(With({{"FMakeModel1", "An estate car with leather seats"}})), "PA1"),
              "Car 1, \"An estate car with leather seat\" is all that prints");
}

// ---- employers ----------------------------------------------------------------------------------

review::EmployerFacts GoodFacts()
{
    review::EmployerFacts facts;
    facts.employees = {{.name = "Jane Smith",
                        .payeReference = "123/A456",
                        .nationalInsurance = "AB123456C",
                        .director = true,
                        .anyBenefit = true},
                       {.name = "Peter Cooper", .payeReference = "123/A456", .nationalInsurance = "YZ654321A"}};
    facts.declaration.employerReference = "123/A456";
    facts.declaration.accountsOffReference = "123PA00045678";
    facts.declaration.section1ABox = "    100.00";
    facts.declaration.section2Tick2 = true;
    facts.storedBoxA = "    100.00";
    return facts;
}

struct EmployerCase {
    std::string_view code;
    std::string_view box;
    void (*trip)(review::EmployerFacts&);
    void (*spare)(review::EmployerFacts&);
};

const std::vector<EmployerCase> EmployerCases = {
    {"EM1", "NatIns", [](auto& facts) { facts.employees[1].nationalInsurance = "AB123456C"; },
     [](auto& facts) {
         facts.employees[0].nationalInsurance.clear();
         facts.employees[1].nationalInsurance.clear();
     }},
    {"EM2", "DirectorTick", [](auto& facts) { facts.employees[0].director = false; },
     [](auto& facts) { facts.employees.clear(); }},
    {"DE1", "EmployerRef", [](auto& facts) { facts.employees[1].payeReference = "123/A457"; },
     [](auto& facts) { facts.employees[1].payeReference.clear(); }},
    {"DE2", "NoBenefitTick", [](auto& facts) { facts.declaration.section2Tick1 = true; },
     [](auto& facts) {
         facts.declaration.section2Tick1 = true;
         facts.employees[0].anyBenefit = false;
     }},
    {"DE3", "DeclarationTick", [](auto& facts) { facts.declaration.section2Tick2 = false; },
     [](auto& facts) {
         facts.declaration.section2Tick2 = false;
         facts.declaration.section2Tick3 = true;
     }},
    {"DE4", "Section1BoxA", [](auto& facts) { facts.storedBoxA = "     99.99"; },
     [](auto& facts) { facts.storedBoxA.clear(); }},
    {"DE5", "AdjustTick", [](auto& facts) { facts.declaration.section1Tick = true; },
     [](auto& facts) {
         facts.declaration.section1Tick = true;
         facts.declaration.section4CBox = "1.00";
     }},
    {"DE6", "InlRevOffice", [](auto& facts) { facts.declaration.section2Tick3 = true; },
     [](auto& facts) { facts.declaration.sentToBox.clear(); }},
    {"DE6", "SentDate",
     [](auto& facts) {
         facts.declaration.section2Tick3 = true;
         facts.declaration.sentToBox = "Leeds";
     },
     [](auto& facts) {
         facts.declaration.section2Tick3 = true;
         facts.declaration.sentToBox = "Leeds";
         facts.declaration.sentToDate = "01/07/2011";
     }},
    {"DE7", "AccOfficeRef", [](auto& facts) { facts.declaration.accountsOffReference = " "; },
     [](auto& facts) {
         facts.declaration.accountsOffReference.clear();
         facts.declaration.section1ABox.clear();
         facts.storedBoxA.clear();
     }},
};

FindingList CheckEmployer(const review::EmployerFacts& facts)
{
    FindingList findings;
    review::CheckEmployer(facts, findings);
    return findings;
}

TEST(EmployerChecks, AGoodEmployerHasNothingToLookAt)
{
    EXPECT_EQ(CheckEmployer(GoodFacts()), FindingList{});
}

TEST(EmployerChecks, EachIsTrippedByItsFaultAndSparesWhatComesClose)
{
    std::set<std::string_view> codes;
    for (const EmployerCase& check : EmployerCases) {
        SCOPED_TRACE(std::string(check.code) + " " + std::string(check.box));
        codes.insert(check.code);
        review::EmployerFacts tripped = GoodFacts();
        check.trip(tripped);
        EXPECT_TRUE(BoxesOf(CheckEmployer(tripped), check.code).contains(std::string(check.box)));
        review::EmployerFacts spared = GoodFacts();
        check.spare(spared);
        EXPECT_FALSE(BoxesOf(CheckEmployer(spared), check.code).contains(std::string(check.box)));
    }
    for (const review::EmployerCheck& check : review::EmployerChecks())
        EXPECT_TRUE(codes.contains(check.check.code)) << check.check.code << " has no case";
}

// ---- over a database ----------------------------------------------------------------------------

class Review : public StoreFixture {
protected:
    Review() : database(Open()) {}

    void Create(std::string employer, std::string first, std::string surname)
    {
        CreateEmployee(database, {std::move(employer), std::move(first), std::move(surname), "123/A456"});
    }
    void Set(std::string_view table, std::string_view employee, const Texts& texts)
    {
        Recordset records = database.OpenRecordset(table);
        records.Index("IndKey");
        records.Seek("Acme Ltd", employee);
        records.Edit();
        for (const auto& [field, text] : texts)
            records.SetField(field, text);
        records.Update();
    }

    Database database;
    Measure measure;
};

TEST_F(Review, EachFindingIsOfItsOwnEmployee)
{
    for (const char* surname : {"Young", "Smith", "Cooper", "Adams"})
        Create("Acme Ltd", "Jane", surname);
    Create("Other Ltd", "Jane", "Smith");
    for (const char* name : {"Jane Young", "Jane Smith", "Jane Cooper", "Jane Adams"})
        Set("P11D", name, {{"NatIns", "AB12345" + std::to_string(name[5] % 10) + "A"}});
    Set("ExtraCars", "Jane Smith", {{"FMakeModel4", "Estate"}, {"FCashEqu4", "0.00"}});
    Set("ANotepad", "Jane Young", {{"CostMarket1", "5.00"}});

    std::vector<std::string> found;
    for (const Finding& finding : review::CheckAllOf(database, "Acme Ltd", measure.paper))
        if (!finding.Employee().empty())
            found.push_back(finding.Employee() + " " + std::string(CodeOf(finding)));
    EXPECT_EQ(found, (std::vector<std::string>{"Jane Smith CA1", "Jane Young SE6"}));
}

TEST_F(Review, AMissingRecordReadsEmptyAndNoOtherEmployeesIsTaken)
{
    for (const char* surname : {"Adams", "Cooper", "Dunn"})
        Create("Acme Ltd", "Jane", surname);
    Set("ExtraCars", "Jane Cooper", {{"FMakeModel4", "Estate"}});
    for (const char* employee : {"Jane Adams", "Jane Dunn"}) {
        Recordset records = database.OpenRecordset("ExtraCars");
        records.Index("IndKey");
        records.Seek("Acme Ltd", employee);
        records.Delete();
    }
    review::EmployerForms forms(database, "Acme Ltd");
    ASSERT_TRUE(forms.Next());
    EXPECT_EQ(forms.Employee(), "Jane Adams");
    EXPECT_EQ(forms.Facts().cars[3].makeModel, "");
    ASSERT_TRUE(forms.Next());
    EXPECT_EQ(forms.Facts().cars[3].makeModel, "Estate");
    ASSERT_TRUE(forms.Next());
    EXPECT_EQ(forms.Facts().cars[3].makeModel, "") << "of the employee before";
    EXPECT_FALSE(forms.Next());
    EXPECT_FALSE(forms.Next());
}

TEST_F(Review, PiecesOfAnySizeFindTheSame)
{
    for (const char* employer : {"Acme", "Acme Ltd", "Acme Ltd 2"})
        for (const char* surname : {"Young", "Smith", "Cooper", "Adams", "Baker"})
            Create(employer, "Jane", surname);
    Set("ANotepad", "Jane Young", {{"CostMarket1", "5.00"}});
    Set("ExtraCars", "Jane Cooper", {{"FMakeModel4", "Estate"}});
    const FindingList whole = review::CheckAllOf(database, "Acme Ltd", measure.paper);
    EXPECT_FALSE(whole.empty());
    for (const int most : {1, 2, 3, 5, 6}) {
        review::EmployerReview review("Acme Ltd", measure.paper);
        while (review.GoOn(database, most)) {
        }
        EXPECT_EQ(review.Findings(), whole) << most;
        EXPECT_EQ(review.EmployeesSeen(), 5U);
    }
}

TEST_F(Review, OneWhoGoesBetweenTwoPiecesIsNoBar)
{
    for (const char* surname : {"Adams", "Baker", "Cooper"})
        Create("Acme Ltd", "Jane", surname);
    review::EmployerReview review("Acme Ltd", measure.paper);
    ASSERT_TRUE(review.GoOn(database, 2));
    DeleteEmployee(database, "Acme Ltd", "Jane Baker");
    while (review.GoOn(database, 1)) {
    }
    EXPECT_EQ(review.EmployeesSeen(), 3U);
}

TEST_F(Review, BetweenTwoEmployeesTheDatabaseIsFreeForOthers)
{
    for (const char* surname : {"Adams", "Baker", "Cooper"})
        Create("Acme Ltd", "Jane", surname);
    review::EmployerForms forms(database, "Acme Ltd");
    ASSERT_TRUE(forms.Next());
    EXPECT_EQ(forms.Facts().surname, "Adams");
    Database other = Open();
    {
        Recordset records = other.OpenRecordset("P11D");
        records.Index("IndKey");
        records.Seek("Acme Ltd", "Jane Cooper");
        records.Edit();
        records.SetField("NatIns", "AB123456C");
        records.Update();
    }
    ASSERT_TRUE(forms.Next());
    ASSERT_TRUE(forms.Next());
    EXPECT_EQ(forms.Facts().nationalInsurance, "AB123456C");
}

TEST_F(Review, OneEmployeeIsCheckedAsAmongAll)
{
    for (const char* surname : {"Adams", "Baker"})
        Create("Acme Ltd", "Jane", surname);
    Set("ANotepad", "Jane Baker", {{"CostMarket1", "5.00"}});
    FindingList all = review::CheckAllOf(database, "Acme Ltd", measure.paper);
    std::erase_if(all, [](const Finding& finding) { return finding.Employee() != "Jane Baker"; });
    EXPECT_EQ(review::CheckEmployeeOf(database, "Acme Ltd", "Jane Baker", measure.paper), all);
    EXPECT_GT(all.size(), 1U);
    EXPECT_FALSE(review::CheckEmployeeOf(database, "Acme Ltd", "Nobody", measure.paper).empty());
}

TEST_F(Review, TheDeclarationIsHeldAgainstTheFormsOfToday)
{
    Create("Acme Ltd", "Jane", "Smith");
    Set("P11D", "Jane Smith", {{"NatIns", "AB123456C"}, {"DCashEqu", "    100.00"}, {"DirectorTick", "1"}});
    {
        Recordset records = database.OpenRecordset("P11DB");
        records.Index("PrimaryKey");
        records.Seek("Acme Ltd");
        records.Edit();
        records.SetField("Section1ABox", "     90.00");
        records.SetField("AccountsOffReference", "123PA00045678");
        records.SetField("Section2Tick2", "1");
        records.Update();
    }
    const FindingList findings = review::CheckAllOf(database, "Acme Ltd", measure.paper);
    ASSERT_EQ(findings.size(), 1U) << ::testing::PrintToString(findings);
    EXPECT_EQ(findings.front().check->code, "DE4");
    EXPECT_EQ(findings.front().spot.detail, "90.00 on the declaration, 100.00 over the forms today");
}

TEST_F(Review, AnEmployerWithoutEmployeesHasNothingToLookAt)
{
    EXPECT_TRUE(review::CheckAllOf(database, "Nobody Ltd", measure.paper).empty());
}

} // namespace
} // namespace quillmere::test
