#include "exchange/Export.h"

#include "clientdb/CurrentRecord.h"
#include "clientdb/Employees.h"
#include "clientdb/store/FormMarks.h"
#include "exchange/Targets.h"
#include "exchange/TypingRoom.h"
#include "frame/Text.h"
#include "frame/Tick.h"
#include "review/EmployerReview.h"
#include "review/Explaining.h"
#include "review/Overview.h"
#include "review/Paper.h"
#include "review/ReviewMark.h"

#include <algorithm>
#include <array>
#include <functional>

namespace quillmere::exchange {

namespace {

using What = Target::What;
constexpr int MostCars = 6;

constexpr auto Rows = std::to_array<ExportRow>({
    {Exported::Overview, "Overview: what each form comes to, section by section", "Overview", 'O'},
    {Exported::Employees, "Employees: what stands on both pages", "Employees", 'E'},
    {Exported::Lists, "Lists of items behind the sections, a row a line", "Lists", 'L'},
    {Exported::Cars, "Cars, a row a car", "Cars", 'R'},
    {Exported::Working, "How the open employee's figures are worked out", "Working", 'H'},
});

// ---- cells

Cells Texts(std::initializer_list<std::string_view> texts)
{
    Cells cells;
    for (const std::string_view text : texts)
        cells.push_back({.text = std::string(text)});
    return cells;
}

/// As a number that every spreadsheet reads. A word stays one.
Cell FigureCell(std::string_view stored)
{
    std::string text = Trim(stored);
    if (text.find_first_not_of("0123456789.,()-") != std::string::npos)
        return {.text = std::move(text)};
    if (!text.empty())
        text = FormatAmount(ReadAmount(text), "0.00;-0.00;0.00");
    return {.text = std::move(text), .isFigure = true};
}
Cell FigureCell(Amount amount)
{
    return FigureCell(FormatAmount(amount, "0.00;-0.00;"));
}
Cell CountCell(std::size_t count)
{
    return {.text = std::to_string(count), .isFigure = true};
}

/// What a record holds of a box.
Cell CellOf(const Box& box, std::string_view stored)
{
    if (box.Kind() == BoxKind::Tick)
        return {.text = stored.empty() ? "" : IsSet(stored) ? "Yes" : "No"};
    if (box.IsAmount())
        return FigureCell(stored);
    return {.text = Trim(stored)};
}

// ---- employees

std::vector<std::string> EmployersOf(Database& database, const std::string& employer)
{
    return employer.empty() ? EveryEmployer(database) : std::vector{employer};
}

/// Goes through the forms of an employer, or of all.
void ForEachForm(Database& database, const std::string& employer, const std::function<void(const Recordset&)>& take)
{
    for (const std::string& of : EmployersOf(database, employer)) {
        Recordset forms = database.OpenRecordset("P11D");
        for (forms.MoveFirstOf(of); !forms.AtEnd(); forms.MoveNext())
            take(forms);
    }
}

/// Who it is, in columns by which a row finds its employee again.
constexpr auto WhoColumns = std::to_array<std::pair<std::string_view, std::string_view>>({
    {"Employer", "EmployerName"},
    {"First names", "FirstName"},
    {"Surname", "Surname"},
    {"Works number", "WorkNumberBox"},
    {"NI number", "NatIns"},
});

Cells WhoHeadings()
{
    Cells cells;
    for (const auto& [heading, field] : WhoColumns)
        cells.push_back({.text = std::string(heading)});
    return cells;
}
Cells WhoCells(const Recordset& form)
{
    Cells cells;
    for (const auto& [heading, field] : WhoColumns)
        cells.push_back({.text = Trim(form.Field(field))});
    return cells;
}

std::vector<Cells> EmployeesTable(Database& database, const std::string& employer)
{
    const TypingRoom room;
    const Targets targets;
    std::vector<const Box*> boxes;
    std::vector<Cells> table{Texts({"Employer"})};
    for (const Target& target : targets.All())
        if (target.what == What::OfPage) {
            boxes.push_back(&room.Page(target.screen).box(target.box));
            table.front().push_back({.text = target.words});
        }
    ForEachForm(database, employer, [&](const Recordset& form) {
        Cells& row = table.emplace_back(Texts({form.Field("EmployerName")}));
        for (const Box* box : boxes)
            row.push_back(CellOf(*box, form.Field(box->Field())));
    });
    return table;
}

std::vector<Cells> ListsTable(Database& database, const std::string& employer)
{
    std::vector<Cells> table{WhoHeadings()};
    for (const std::string_view heading : {"List", "Line", "Item", "Item cost", "Item made good", "Cash equivalent"})
        table.front().push_back({.text = std::string(heading)});
    std::vector<Recordset> lists;
    for (const NotepadMember& member : Notepads()) {
        lists.push_back(database.OpenRecordset(member.name));
        lists.back().Index("IndKey");
    }
    ForEachForm(database, employer, [&](const Recordset& form) {
        const std::string of(form.Field("EmployerName")), who(form.Field("EmployeeName"));
        for (std::size_t list = 0; list < lists.size(); ++list) {
            const NotepadMember& member = Notepads()[list];
            lists[list].Seek(of, who);
            for (int line = 1; line <= LinesOfASchedule && !lists[list].NoMatch(); ++line) {
                Cells cells;
                for (const ScheduleColumn& column : member.columns) {
                    const std::string text =
                        column.Exists() ? Trim(lists[list].Field(Numbered(column.field, line))) : std::string();
                    const bool isText = column.use == ScheduleColumn::Use::Description;
                    cells.push_back(isText ? Cell{.text = text} : FigureCell(text));
                }
                if (std::ranges::all_of(cells, [](const Cell& cell) { return cell.text.empty(); }))
                    continue;
                Cells& row = table.emplace_back(WhoCells(form));
                row.push_back({.text = LetterOfList(member.name)});
                row.push_back(CountCell(static_cast<std::size_t>(line)));
                row.insert(row.end(), cells.begin(), cells.end());
            }
        }
    });
    return table;
}

std::vector<Cells> CarsTable(Database& database, const std::string& employer)
{
    TypingRoom room;
    const Targets targets;
    std::vector<Cells> table{WhoHeadings()};
    table.front().push_back({.text = "Car"});
    std::vector<std::pair<std::string, int>> boxes; ///< stem and index
    for (const Target& target : targets.All())
        if (target.what == What::OfCar || target.what == What::WorkedOut) {
            const auto [stem, index] = BoxOfCar(target);
            boxes.emplace_back(stem, index);
            table.front().push_back({.text = target.words});
        }
    Recordset further = database.OpenRecordset("ExtraCars");
    further.Index("IndKey");
    ForEachForm(database, employer, [&](const Recordset& form) {
        further.Seek(form.Field("EmployerName"), form.Field("EmployeeName"));
        for (int car = 1; car <= MostCars; ++car) {
            const Recordset& record = car <= 2 ? form : further;
            if (record.NoMatch() && car > 2)
                continue;
            Cells cells;
            bool isThere = false;
            for (const auto& [stem, index] : boxes) {
                const Box& box = room.Cars().box(Numbered(stem, car), index);
                cells.push_back(CellOf(box, record.Field(box.Field())));
                isThere = isThere || (box.Kind() == BoxKind::Text && !cells.back().text.empty());
            }
            if (!isThere)
                continue;
            Cells& row = table.emplace_back(WhoCells(form));
            row.push_back(CountCell(static_cast<std::size_t>(car)));
            row.insert(row.end(), cells.begin(), cells.end());
        }
    });
    return table;
}

// ---- what is worked out

std::vector<Cells> OverviewTable(const Session& session, Database& database, const std::string& employer)
{
    std::vector<Cells> table{Texts({"Employer", "Employee", "Works number", "NI number", "Total", "Class 1A on",
                                    "To look at", "Printed", "Reviewed"})};
    for (const review::OverviewSection& section : review::OverviewSections())
        table.front().push_back({.text = std::string(section.letter)});
    const review::Paper paper(session.settings, session.platform);
    FormMarks marks(database);
    for (const std::string& of : EmployersOf(database, employer)) {
        review::EmployerReview forms(
            of, paper, [&](std::string_view employee, const review::FormFacts& form, const review::FindingList& found) {
                const review::OverviewSums sums = review::SumsOf(form, found.size());
                const auto marked = marks.Of(of, employee);
                Cells& row = table.emplace_back(Texts({of, employee, form.worksNumber, form.nationalInsurance}));
                row.push_back(FigureCell(sums.total));
                row.push_back(FigureCell(sums.benefits));
                row.push_back(CountCell(sums.toLookAt));
                row.push_back({.text = review::MarkInWords(marked, FormMark::Printed)});
                row.push_back({.text = review::MarkInWords(marked, FormMark::Reviewed)});
                for (const Amount amount : sums.sections)
                    row.push_back(FigureCell(amount));
            });
        constexpr int AtOnce = 1000;
        while (forms.GoOn(database, AtOnce))
            ;
    }
    return table;
}

/// The figures that are told of on a screen: those of the sections, and of each car.
bool IsResult(const Box& box)
{
    constexpr auto OfCars = std::to_array<std::string_view>({"FCashEqu", "FFuelEqu"});
    const auto isOfSection = [&](const review::OverviewSection& section) {
        return std::ranges::find(section.amounts, box.Field()) != section.amounts.end();
    };
    return !Trimmed(box.Text()).empty() &&
           (std::ranges::any_of(review::OverviewSections(), isOfSection) ||
            std::ranges::any_of(OfCars, [&](std::string_view stem) { return box.Name().starts_with(stem); }));
}

std::vector<Cells> WorkingTable(const Session& session, Database& database)
{
    std::vector<Cells> table{
        Texts({"Employee", "What", "Box", "What it is", "How it is worked out", "Figure", "Source"})};
    // On screens of their own: what is open stays as it is.
    struct Place {
        std::string_view screen, table;
    };
    for (const auto& [name, of] : {Place{"Form3", "P11D"}, Place{"Form3_4", "ExtraCars"}, Place{"Form5_6", "ExtraCars"},
                                   Place{"Side2Form1", "P11D"}}) {
        const std::unique_ptr<Screen> screen = session.screens.Make(name);
        const Recordset record = OpenCurrent(database, of, session);
        if (record.NoMatch())
            continue;
        for (const auto& box : screen->Boxes())
            if (!box->Field().empty())
                box->ShowStored(record.Field(box->Field()));
        for (const auto& box : screen->Boxes()) {
            const auto told = IsResult(*box) ? review::ExplainBox(session, *screen, *box) : std::nullopt;
            if (!told)
                continue;
            for (const review::WorkingLine& line : review::LinesOf(*told)) {
                Cells& row = table.emplace_back(
                    Texts({session.CurrentEmployee, told->heading, line.letter, line.says, line.sum}));
                row.push_back(FigureCell(line.figure));
                row.push_back({.text = line.source});
            }
        }
    }
    return table;
}

} // namespace

std::span<const ExportRow> Exports()
{
    return Rows;
}

std::vector<Cells> ExportedTable(const Session& session, Exported what, const std::string& employer)
{
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    const ReadBatch batch(database);
    switch (what) {
    case Exported::Overview:
        return OverviewTable(session, database, employer);
    case Exported::Employees:
        return EmployeesTable(database, employer);
    case Exported::Lists:
        return ListsTable(database, employer);
    case Exported::Cars:
        return CarsTable(database, employer);
    case Exported::Working:
        break;
    }
    return WorkingTable(session, database);
}

} // namespace quillmere::exchange
