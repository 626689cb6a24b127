#include "declaration/Declaration.h"

#include "declaration/Class1A.h"
#include "frame/Text.h"
#include "frame/Tick.h"

namespace quillmere {

Amount EmployerTotal(Database& database, std::string_view employer)
{
    Amount total;
    Recordset records = database.OpenRecordset("P11D");
    for (const std::string_view field : Class1AFields)
        records.Fetch({field});
    for (records.MoveFirstOf(employer); !records.AtEnd(); records.MoveNext())
        total += Class1ABenefitsOf([&records](std::string_view field) { return records.Field(field); });
    return total;
}

std::vector<LiableBenefit> LiableBenefits(Database& database, std::string_view employer)
{
    std::vector<LiableBenefit> benefits;
    Recordset records = database.OpenRecordset("P11D");
    records.Index("IndKey");
    for (records.MoveFirstOf(employer); !records.AtEnd(); records.MoveNext())
        for (const std::string_view field : Class1AFields)
            if (const Amount amount = ReadAmount(records.Field(field)); !amount.IsZero())
                benefits.push_back({std::string(records.Field("EmployeeName")), field, amount});
    return benefits;
}

DeclarationTotals ComputeDeclarationTotals(Database& database, std::string_view employer)
{
    return ComputeDeclarationTotals(database, employer, EmployerTotal(database, employer));
}

DeclarationTotals ComputeDeclarationTotals(Database& database, std::string_view employer, Amount benefits)
{
    DeclarationTotals totals;
    totals.section1ABox = Class1AText(benefits);

    Recordset records = database.OpenRecordset("P11DB");
    records.MoveFirstOf(employer);
    const auto field = [&records](std::string_view name) {
        return records.AtEnd() ? std::string() : std::string(records.Field(name));
    };
    totals.employerReference = field("EmployerReference");
    totals.accountsOffReference = field("AccountsOffReference");
    for (std::size_t line = 0; line < AddressLines; ++line) {
        totals.employerAdd[line] = field(Numbered("EmployerAdd", static_cast<int>(line) + 1));
        totals.returnAdd[line] = field(Numbered("ReturnAdd", static_cast<int>(line) + 1));
    }
    totals.sentToBox = field("SentToBox");
    totals.sentToDate = field("SentToDate");
    totals.section1Tick = IsSet(field("Section1Tick"));
    totals.section2Tick1 = IsSet(field("Section2Tick1"));
    totals.section2Tick2 = IsSet(field("Section2Tick2"));
    totals.section2Tick3 = IsSet(field("Section2Tick3"));

    if (!totals.section1Tick) {
        totals.section1CBox = Class1AText(ComputeSection1(benefits).C);
        return totals;
    }
    totals.section4BBox = field("Section4BBox");
    totals.section4BDesc = field("Section4BDesc");
    totals.section4CBox = field("Section4CBox");
    totals.section4CDesc = field("Section4CDesc");
    const Section4 section =
        ComputeSection4(benefits, ReadAmount(totals.section4BBox), ReadAmount(totals.section4CBox));
    totals.section4ABox = Class1AText(section.A);
    totals.section4DBox = Class1AText(section.D);
    totals.section4FBox = Class1AText(section.F);
    return totals;
}

} // namespace quillmere
