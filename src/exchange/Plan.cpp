#include "exchange/Plan.h"

#include "cars/CarBenefit.h"
#include "clientdb/EmployeeFinder.h"
#include "clientdb/store/TableLayouts.h"
#include "exchange/TypedBoxes.h"
#include "exchange/TypingRoom.h"
#include "frame/CellEntry.h"
#include "frame/Dates.h"
#include "frame/Text.h"

#include <algorithm>
#include <deque>
#include <fmt/format.h>
#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace quillmere::exchange {

namespace {

using What = Target::What;
constexpr int MostCars = 6;
/// So many changes of a row are told.
constexpr std::size_t MostTold = 4;

/// The table of a car's fields.
std::string_view TableOfCar(int car)
{
    return car <= 2 ? "P11D" : "ExtraCars";
}

class Planner {
public:
    Planner(Database& database, const Targets& targets, const Columns& columns, std::string_view employer)
        : stored(database), database(database), targets(targets), columns(columns), employer(employer)
    {
        ReadEverybody();
        for (const std::string_view page : {"Form3", "Side2Form1"})
            for (const int target : columns)
                if (target != Nothing && targets.At(target).what == What::OfPage && targets.At(target).screen == page &&
                    !pages.contains(page))
                    AddPage(page);
    }

    void Take(const TableRow& row)
    {
        cells.assign(targets.All().size(), {});
        for (std::size_t column = 0; column < std::min(columns.size(), row.cells.size()); ++column)
            if (columns[column] != Nothing)
                cells[static_cast<std::size_t>(columns[column])] = row.cells[column];
        PlannedRow planned{.number = row.number};
        try {
            Take(planned);
        } catch (const Fault& fault) {
            planned.state = RowState::Faulty;
            planned.words = fault.words;
        }
        ++plan.counts.at(static_cast<std::size_t>(planned.state));
        plan.rows.push_back(std::move(planned));
    }

    ImportPlan End()
    {
        for (Person& person : people) {
            if (person.written.empty() && !person.isNew)
                continue;
            PlannedEmployee& planned = plan.employees.emplace_back(
                PlannedEmployee{.employee = {person.employer, person.firstName, person.surname, person.reference},
                                .name = person.name,
                                .isNew = person.isNew,
                                .fields = {}});
            for (auto& [key, text] : person.written)
                planned.fields.push_back({key.first, key.second, std::move(text)});
        }
        return std::move(plan);
    }

private:
    // ---- who is there

    void ReadEverybody()
    {
        Recordset records = database.OpenRecordset("P11D");
        records.Fetch({"EmployerName", "EmployeeName", "NatIns", "WorkNumberBox", "PAYEBox"});
        for (records.MoveFirst(); !records.AtEnd(); records.MoveNext()) {
            const std::string name(records.Field("EmployerName"));
            if (name.empty())
                continue;
            if (const std::string_view reference = records.Field("PAYEBox"); references[name].empty())
                references[name] = reference;
            Add({.employer = name,
                 .name = std::string(records.Field("EmployeeName")),
                 .nationalInsurance = Bare(records.Field("NatIns")),
                 .worksNumber = Bare(records.Field("WorkNumberBox"))});
        }
    }

    /// As numbers are compared: without blanks, in capitals.
    static std::string Bare(std::string_view number)
    {
        std::string bare = UpperCase(number);
        std::erase(bare, ' ');
        return bare;
    }
    static std::string Key(std::string_view employer, std::string_view text)
    {
        return std::string(employer).append("\n").append(text);
    }

    /// Where several have one number it stands for nobody.
    using Index = std::unordered_map<std::string, Person*>;
    static void Note(Index& index, const Person& person, std::string_view text, Person* of)
    {
        if (text.empty())
            return;
        const auto [known, isFirst] = index.try_emplace(Key(person.employer, text), of);
        if (!isFirst && known->second != of)
            known->second = nullptr;
    }
    Person& Add(Person person)
    {
        Person& added = people.emplace_back(std::move(person));
        joinedNames.insert(JoinedName(added.employer, added.name));
        NoteAll(added);
        return added;
    }
    void NoteAll(Person& person)
    {
        Note(byName, person, person.name, &person);
        Note(byNationalInsurance, person, person.nationalInsurance, &person);
        Note(byWorksNumber, person, person.worksNumber, &person);
    }

    // ---- a row

    std::string_view Cell(int target) const
    {
        return target == Nothing ? std::string_view() : std::string_view(cells[static_cast<std::size_t>(target)]);
    }
    std::string Cell(What what, std::string_view box = {}) const
    {
        return OneLine(WithoutGuard(Cell(targets.OfBox(what, box))));
    }

    void Take(PlannedRow& planned)
    {
        planned.employer = Cell(What::Employer);
        if (planned.employer.empty())
            planned.employer = employer;
        auto [firstName, surname] = Names();
        planned.employee = EmployeeName(firstName, surname);
        if (planned.employer.empty())
            throw Fault{"It names no employer, and none is chosen above"};
        Person made{.employer = planned.employer,
                    .name = planned.employee,
                    .nationalInsurance = Bare(Cell(What::OfPage, "NatIns")),
                    .worksNumber = Bare(Cell(What::OfPage, "WorkNumberBox")),
                    .firstName = std::move(firstName),
                    .surname = std::move(surname)};
        Person* person = Matched(made, planned.matchedBy);
        const bool isNew = person == nullptr;
        if (isNew) {
            CheckNew(made);
            made.isNew = true;
            person = &made;
        }
        planned.employee = person->name;
        std::vector<PlannedField> fields;
        std::vector<std::string> words;
        Fill(*person, fields, words);
        planned.state = isNew ? RowState::New : fields.empty() ? RowState::Same : RowState::Changed;
        planned.words = isNew ? NewWords(*person, words) : InWords(words);
        Person& kept = isNew ? AddNew(std::move(made)) : *person;
        Keep(kept, std::move(fields));
        if (list && takenLine != 0)
            kept.takenLines.insert({*list, takenLine});
        if (takenCar != 0)
            kept.takenLines.insert({"Car", takenCar});
    }

    /// First names and surname, from cells of their own or from one.
    std::pair<std::string, std::string> Names() const
    {
        std::string first = Cell(What::OfPage, "EmployeeNameBox2"), last = Cell(What::OfPage, "EmployeeNameBox");
        const std::string whole = Cell(What::WholeName);
        if (!whole.empty() && first.empty() && last.empty()) {
            if (const std::size_t comma = whole.find(','); comma != std::string::npos)
                return {Trim(whole.substr(comma + 1)), Trim(whole.substr(0, comma))};
            const std::size_t blank = whole.rfind(' ');
            last = blank == std::string::npos ? whole : whole.substr(blank + 1);
            first = blank == std::string::npos ? "" : Trim(whole.substr(0, blank));
        }
        return {first, last};
    }

    struct MatchRow {
        const char* words;
        Index Planner::*index;
        std::string Person::*text;
    };
    static constexpr std::array<MatchRow, 3> Matches()
    {
        return {{{"NI number", &Planner::byNationalInsurance, &Person::nationalInsurance},
                 {"works number", &Planner::byWorksNumber, &Person::worksNumber},
                 {"names", &Planner::byName, &Person::name}}};
    }

    Person* Matched(const Person& sought, std::string& matchedBy)
    {
        for (const MatchRow& row : Matches()) {
            const std::string& text = sought.*row.text;
            const Index& index = this->*row.index;
            const auto found = text.empty() ? index.end() : index.find(Key(sought.employer, text));
            if (found == index.end())
                continue;
            if (found->second == nullptr)
                throw Fault{fmt::format("Several employees have the {} {}", row.words, text)};
            matchedBy = row.words;
            if (row.text == &Person::name)
                CheckSameOne(*found->second, sought);
            return found->second;
        }
        return nullptr;
    }
    /// Two people may have the same names.
    static void CheckSameOne(const Person& found, const Person& sought)
    {
        for (const MatchRow& row : Matches())
            if (row.text != &Person::name && !(found.*row.text).empty() && !(sought.*row.text).empty() &&
                found.*row.text != sought.*row.text)
                throw Fault{fmt::format("There is a {} with another {}, {}", found.name, row.words, found.*row.text)};
    }

    void CheckNew(const Person& made)
    {
        if (made.firstName.empty() && made.surname.empty())
            throw Fault{"Nobody has this number, and it says no names"};
        if (made.firstName.empty())
            throw Fault{"A new employee needs first names"};
        if (made.surname.empty())
            throw Fault{"A new employee needs a surname"};
        if (joinedNames.contains(JoinedName(made.employer, made.name)))
            throw Fault{"Employer and names read like those of another employee"};
        if (made.employer == SampleEmployer)
            throw Fault{"The sample employer takes nobody"};
        if (!references.contains(made.employer) && references.size() >= EmployerNameSlots)
            throw Fault{fmt::format("There is room for {} employers", EmployerNameSlots)};
    }
    Person& AddNew(Person made)
    {
        std::string& reference = references[made.employer];
        if (reference.empty())
            reference = Cell(What::OfPage, "PAYEBox");
        made.reference = reference;
        return Add(std::move(made));
    }

    void Keep(Person& person, std::vector<PlannedField> fields)
    {
        for (PlannedField& field : fields)
            person.written.insert_or_assign({std::move(field.table), std::move(field.field)}, std::move(field.text));
        const std::string number = Bare(stored.Text(person, "P11D", "NatIns"));
        const std::string works = Bare(stored.Text(person, "P11D", "WorkNumberBox"));
        if (number == person.nationalInsurance && works == person.worksNumber)
            return;
        person.nationalInsurance = number;
        person.worksNumber = works;
        NoteAll(person);
    }

    // ---- the cells of a row

    void Fill(Person& person, std::vector<PlannedField>& fields, std::vector<std::string>& words)
    {
        list.reset();
        takenLine = takenCar = 0;
        for (auto& [name, page] : pages)
            FillPage(name, page, person, fields, words);
        if (!Cell(What::List).empty())
            FillLine(person, fields, words);
        if (IsAboutCar())
            FillCar(person, fields, words);
    }

    struct Page {
        TypedBoxes boxes;
        std::vector<std::pair<int, Box*>> typed; ///< in the order of the form
    };
    void AddPage(std::string_view name)
    {
        Screen& screen = room.Page(name);
        Page page{TypedBoxes(room, screen), {}};
        for (const auto& box : screen.Boxes()) {
            if (box->Field().empty() || room.Cars().FindBox(box->Name(), box->Index()) != nullptr)
                continue;
            page.boxes.Add(*box, "P11D", box->Field());
            if (const int target = targets.OfBox(What::OfPage, box->Name()); target != Nothing)
                page.typed.emplace_back(target, box.get());
        }
        pages.emplace(name, std::move(page));
    }
    void FillPage(std::string_view name, Page& page, const Person& person, std::vector<PlannedField>& fields,
                  std::vector<std::string>& words)
    {
        page.boxes.Show(stored, person);
        const auto typeNew = [&](std::string_view box, const std::string& text) {
            if (person.isNew && name == "Form3" && !text.empty())
                page.boxes.Type(room.Page(name).box(box), text);
        };
        typeNew("EmployeeNameBox", person.surname);
        typeNew("EmployeeNameBox2", person.firstName);
        for (const auto& [target, box] : page.typed)
            if (!Trimmed(Cell(target)).empty())
                page.boxes.Type(*box, Cell(target));
        page.boxes.Take(fields, words);
    }

    /// What one of the boxes of a line reads in the list as it is shown.
    static std::string OnLine(const Screen& screen, const std::string& box, int line)
    {
        return box.empty() ? std::string() : Trim(screen.box(box, line).Text());
    }

    void FillLine(Person& person, std::vector<PlannedField>& fields, std::vector<std::string>& words)
    {
        const std::string_view name = ListMeant(Cell(What::List));
        if (name.empty())
            throw Fault{fmt::format("There is no list \"{}\"", Cell(What::List))};
        list = name;
        ScheduleNotepad& notepad = room.List(name);
        TypedBoxes boxes(room, notepad);
        for (const auto& box : notepad.Boxes())
            if (!box->Field().empty())
                boxes.Add(*box, name, Numbered(box->Field(), box->Index()));
        boxes.Show(stored, person);
        const std::vector<std::string> typed = TypedBoxesOf(name);
        const std::array<std::string, 3> entries{Cell(What::OfList, ListDescription), Cell(What::OfList, ListCost),
                                                 Cell(What::OfList, ListMadeGood)};
        takenLine = LineFor(person, notepad, typed, entries);
        for (std::size_t column = 0; column < typed.size(); ++column) {
            if (entries[column].empty())
                continue;
            if (typed[column].empty())
                throw Fault{fmt::format("List {} has no such amount: {}", LetterOfList(name), entries[column])};
            boxes.Type(notepad.box(typed[column], takenLine), entries[column]);
        }
        std::vector<PlannedField> own;
        boxes.Take(own, words);
        if (own.empty())
            return;
        const auto written = notepad.WhatOkWrites(stored.Records(name));
        if (const std::string told = room.TakeTold(); !written)
            throw Fault{told};
        for (const Notepad::Written& field : *written)
            if (stored.Text(person, field.table, field.field) != field.text)
                fields.push_back({field.table, field.field, field.text});
    }

    /// The line or car that the row names by its number; nothing where it names none.
    std::optional<int> Named(What what, std::string_view words, int places) const
    {
        const std::string said = Cell(what);
        if (said.empty())
            return std::nullopt;
        const int place = ReadWholeNumber(said);
        if (place < 1 || place > places || std::to_string(place) != said)
            throw Fault{fmt::format("There is no {} \"{}\"", words, said)};
        return place;
    }

    /// Of the places that no other row of the file stands for, the first that is this one's, else the first empty one;
    /// nothing if there is neither.
    template<typename IsIts, typename IsEmpty>
    static std::optional<int> FirstPlace(const Person& person, const std::string& of, int places, const IsIts& isIts,
                                         const IsEmpty& isEmpty)
    {
        std::optional<int> empty;
        for (int place = 1; place <= places; ++place) {
            if (person.takenLines.contains({of, place}))
                continue;
            if (isIts(place))
                return place;
            if (!empty && isEmpty(place))
                empty = place;
        }
        return empty;
    }

    /// The line that the row names, else the one with its description that no other row of the file stands for, else
    /// the first empty one.
    int LineFor(const Person& person, const Screen& screen, const std::vector<std::string>& typed,
                const std::array<std::string, 3>& entries) const
    {
        if (const auto named = Named(What::Line, "line", LinesOfASchedule))
            return *named;
        const auto isEmpty = [&](int line) {
            return std::ranges::all_of(typed,
                                       [&](const std::string& box) { return OnLine(screen, box, line).empty(); });
        };
        const auto isIts = [&](int line) {
            return !isEmpty(line) && Folded(OnLine(screen, typed[0], line)) == Folded(entries[0]) &&
                   (!entries[0].empty() || typed[1].empty() ||
                    ReadAmount(OnLine(screen, typed[1], line)) ==
                        ReadAmount(Entry(screen.box(typed[1], line), entries[1])));
        };
        if (const auto line = FirstPlace(person, *list, LinesOfASchedule, isIts, isEmpty))
            return *line;
        throw Fault{fmt::format("All {} lines of list {} are taken", LinesOfASchedule, LetterOfList(*list))};
    }

    bool IsAboutCar() const
    {
        return std::ranges::any_of(columns, [this](int target) {
            return target != Nothing && targets.At(target).what == What::OfCar && !Trimmed(Cell(target)).empty();
        });
    }

    void FillCar(Person& person, std::vector<PlannedField>& fields, std::vector<std::string>& words)
    {
        takenCar = CarFor(person);
        room.EmptyCar(takenCar);
        TypedBoxes boxes(room, room.Cars());
        const auto isOfIt = [&](const Box& box) { return box.Name().ends_with(std::to_string(takenCar)); };
        for (const auto& box : room.Cars().Boxes())
            if (isOfIt(*box) && !box->Field().empty())
                boxes.Add(*box, TableOfCar(takenCar), box->Field());
        boxes.Show(stored, person);
        for (const Target& target : targets.All()) {
            const std::string_view cell = Cell(static_cast<int>(&target - targets.All().data()));
            if (target.what != What::OfCar || Trimmed(cell).empty())
                continue;
            const auto [stem, index] = BoxOfCar(target);
            boxes.Type(room.Cars().box(Numbered(stem, takenCar), index), cell);
        }
        std::vector<PlannedField> own;
        boxes.Take(own, words);
        if (own.empty())
            return;
        TotalCars(person, own);
        fields.insert(fields.end(), std::make_move_iterator(own.begin()), std::make_move_iterator(own.end()));
    }

    /// The totals of section F, of the cars as they are planned.
    void TotalCars(const Person& person, std::vector<PlannedField>& fields)
    {
        constexpr std::array<std::pair<const char*, const char*>, 2> Totals{
            {{"FCashEqu", "FTotalCashCars"}, {"FFuelEqu", "FTotalCashFuel"}}};
        for (const auto& [stem, total] : Totals) {
            std::array<std::string, MostCars> figures;
            for (int car = 1; car <= MostCars; ++car)
                figures.at(static_cast<std::size_t>(car - 1)) =
                    car == takenCar ? room.Cars().box(Numbered(stem, car)).Text()
                                    : stored.Text(person, TableOfCar(car), Numbered(stem, car));
            const std::string text = TotalOfCars(figures).Text();
            if (stored.Text(person, "P11D", total) != text)
                fields.push_back({"P11D", total, text});
        }
    }

    /// The car that the row names, else the one with its make and its dates, as far as it says them, else the first
    /// that is not there.
    int CarFor(const Person& person)
    {
        if (const auto named = Named(What::Car, "car", MostCars))
            return *named;
        const auto held = [&](const char* stem, int car) {
            return Trim(stored.Text(person, TableOfCar(car), Numbered(stem, car)));
        };
        const auto isDate = [&](const char* stem, int car) {
            const std::string said = Entry(room.Cars().box(Numbered(stem, car)), Cell(What::OfCar, stem));
            return said.empty() || NormaliseDate(said) == held(stem, car);
        };
        const auto isIts = [&](int car) {
            const std::string make = held("FMakeModel", car);
            return !make.empty() && Folded(make) == Folded(Cell(What::OfCar, "FMakeModel")) &&
                   isDate("FRegDate", car) && isDate("FDateFrom", car);
        };
        const auto isEmpty = [&](int car) {
            return held("FMakeModel", car).empty() && held("FRegDate", car).empty() && held("FListPrice", car).empty();
        };
        if (const auto car = FirstPlace(person, "Car", MostCars, isIts, isEmpty))
            return *car;
        throw Fault{fmt::format("All {} cars are taken", MostCars)};
    }

    // ---- words

    static std::string InWords(const std::vector<std::string>& words)
    {
        std::string text;
        for (std::size_t i = 0; i < std::min(words.size(), MostTold); ++i)
            text += (text.empty() ? "" : "; ") + words[i];
        return words.size() > MostTold ? text + fmt::format("; and {} more", words.size() - MostTold) : text;
    }
    std::string NewWords(const Person& person, const std::vector<std::string>& words) const
    {
        const std::string text = InWords(words);
        return references.contains(person.employer) ? text : "New employer" + (text.empty() ? "" : "; " + text);
    }

    StoredTexts stored;
    Database& database;
    const Targets& targets;
    const Columns& columns;
    std::string employer;
    TypingRoom room;
    std::map<std::string_view, Page> pages;
    std::deque<Person> people;
    Index byName, byNationalInsurance, byWorksNumber;
    std::unordered_set<std::string> joinedNames;
    std::unordered_map<std::string, std::string> references; ///< of each employer, the first that is not empty
    std::vector<std::string> cells;                          ///< of the row in work, by target
    std::optional<std::string> list;                         ///< that the row is a line of
    int takenLine = 0, takenCar = 0;
    ImportPlan plan;
};

} // namespace

std::string_view WordsOf(RowState state)
{
    constexpr std::array<std::string_view, RowStates> Words{"New", "Changed", "Same", "Faulty"};
    return Words.at(static_cast<std::size_t>(state));
}

Columns ColumnsOf(const Table& table, const Targets& targets)
{
    Columns columns;
    for (const std::string& heading : table.rows.front().cells) {
        const int meant = targets.Meant(heading);
        columns.push_back(std::ranges::find(columns, meant) == columns.end() ? meant : Nothing);
    }
    return columns;
}

ImportPlan MakePlan(Database& database, const Table& table, const Targets& targets, const Columns& columns,
                    std::string_view employer)
{
    const ReadBatch batch(database);
    Planner planner(database, targets, columns, employer);
    for (std::size_t row = 1; row < table.rows.size(); ++row)
        planner.Take(table.rows[row]);
    return planner.End();
}

void CarryOut(Database& database, const ImportPlan& plan, std::size_t& written)
{
    WriteBatch batch(database);
    EmployeeRecords records(database);
    std::vector<RecordText> texts;
    for (const PlannedEmployee& planned : plan.employees) {
        texts.clear();
        for (const PlannedField& field : planned.fields)
            texts.push_back({field.table, field.field, field.text});
        if (planned.isNew)
            records.Make(planned.employee, texts);
        else
            records.Change(planned.employee.employer, planned.name, texts);
        ++written;
    }
    batch.Commit();
}

} // namespace quillmere::exchange
