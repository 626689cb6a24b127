#include "review/BoxNotes.h"

#include "declaration/AdjustmentNotepad.h"
#include "frame/Text.h"
#include "review/BoxHelp.h"
#include "review/CheckParts.h"
#include "screens/Ways.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <utility>

namespace quillmere::review {

namespace {

std::string Lines(int lines, Amount total)
{
    return lines == 0 ? std::string() : fmt::format("{} line{}, total {}", lines, lines == 1 ? "" : "s", Money(total));
}

/// A line counts with whatever stands in it; the total is that of the last column that the list has.
std::string OfList(const ListFacts& list)
{
    int lines = 0;
    for (std::size_t line = 0; line < LinesOfASchedule; ++line)
        lines += Filled(list.descriptions[line]) ||
                         std::ranges::any_of(list.amounts, [&](const auto& column) { return Filled(column[line]); })
                     ? 1
                     : 0;
    Amount total;
    for (const ListFacts::Column& column : list.amounts)
        total = SumOf(column).value_or(total);
    return Lines(lines, total);
}

std::string OfFurtherCars(const FormFacts& form, int first)
{
    Amount cars, fuel;
    for (const CarOnForm& car : form.cars)
        if (car.number == first || car.number == first + 1) {
            cars += ReadAmount(car.cash);
            fuel += ReadAmount(car.fuel);
        }
    if (cars.IsZero() && fuel.IsZero())
        return {};
    return fmt::format("In the totals: {} of cars, {} of fuel", Money(cars), Money(fuel));
}

std::string WorkedOut(std::string_view figures)
{
    return figures.empty() ? std::string() : fmt::format("worked out: {}", figures);
}

/// What stands on a screen of the open employee that a control leads to.
std::string Behind(const FormFacts& form, std::string_view screen)
{
    if (screen == "Form3_4" || screen == "Form5_6")
        return OfFurtherCars(form, screen == "Form3_4" ? 3 : 5);
    if (screen == "D2Notepad")
        return WorkedOut(Trimmed(form.calculators.additionalCharge));
    const auto list = std::ranges::find(form.lists, screen, [](const ListFacts& of) { return of.notepad->name; });
    return list != form.lists.end() ? OfList(*list) : WorkedOut(FiguresOf(form.calculators, screen));
}

/// What stands in a schedule of the employer's declaration.
std::string Behind(const Session& session, const AdjustmentSchedule& schedule)
{
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    Recordset records = database.OpenRecordset(schedule.name);
    records.Index("PrimaryKey");
    records.Seek(session.CurrentEmployer);
    int lines = 0;
    Amount total;
    for (int line = 1; !records.NoMatch() && line <= LinesOfASchedule; ++line) {
        const std::string amount(records.Field(Numbered(schedule.AmountColumn().field, line)));
        lines += Filled(amount) || Filled(records.Field(Numbered(AdjustmentDescription.field, line))) ? 1 : 0;
        total += ReadAmount(amount);
    }
    return Lines(lines, total);
}

/// A screen that shows part of an employee's form, and the table of the record behind it.
struct FormScreen {
    std::string_view screen, table;
};
constexpr auto FormScreens = std::to_array<FormScreen>({
    {"Form3", "P11D"},
    {"Side2Form1", "P11D"},
    {"Form3_4", "ExtraCars"},
    {"Form5_6", "ExtraCars"},
});
const FormScreen* PartOf(std::string_view screen)
{
    const auto* const found = std::ranges::find(FormScreens, screen, &FormScreen::screen);
    return found == FormScreens.end() ? nullptr : found;
}

/// True for a screen that leads to others, whose lists and calculations its controls tell of.
bool Leads(std::string_view screen)
{
    return std::ranges::find(AllWays(), screen, &Way::from) != AllWays().end();
}

bool HasFigures(std::string_view screen)
{
    return std::ranges::any_of(AllBoxHelp(),
                               [&](const BoxHelp& help) { return help.worksOut && help.screen == screen; });
}

/// True for a screen of which there may be something to tell.
bool IsTold(std::string_view screen)
{
    return PartOf(screen) != nullptr || Leads(screen) || HasFigures(screen);
}

} // namespace

void BoxNotes::Entered(const Screen& screen, const Box& box)
{
    if (std::exchange(inUse, &box) != &box)
        before = WorkedOutOf(screen, box);
    if (!notes.contains(screen.Name()))
        LookSoon(screen);
}

/// What was worked out for a box, whether it has been typed over or not.
std::string BoxNotes::WorkedOutOf(const Screen& screen, const Box& box) const
{
    if (const auto typed = own.find(screen.Name()); typed != own.end())
        if (const auto figure = typed->second.find(box.FullName()); figure != typed->second.end())
            if (figure->second.now == box.Text())
                return figure->second.was;
    return box.Text();
}

/// A tick works its screen out at once; a text does when it is left.
void BoxNotes::Typed()
{
    for (const Screen* screen : session.screens.Open())
        if (screen->InUse() != nullptr && screen->InUse()->Kind() == BoxKind::Tick)
            LookSoon(*screen);
}

void BoxNotes::Left(const Screen& screen, const Box& left, std::span<const Rewritten> /*rewritten*/)
{
    inUse = nullptr;
    const BoxHelp* help = HelpOf(screen.Name(), left.Name());
    const bool isFigure = help != nullptr && help->worksOut;
    if (isFigure && left.IsByHand() && PartOf(screen.Name()) == nullptr &&
        ReadAmount(left.Text()) != ReadAmount(before))
        own[screen.Name()][left.FullName()] = {.was = before, .now = left.Text()};
    LookSoon(screen);
}

void BoxNotes::Closed()
{
    const auto isGone = [this](const auto& of) { return session.screens.Find(of.first) == nullptr; };
    std::erase_if(own, isGone);
    std::erase_if(notes, isGone);
    LookAgain();
}

void BoxNotes::LookAgain()
{
    form.reset();
    for (const auto& [screen, known] : notes)
        LookSoon(*session.screens.Find(screen));
}

/// Once the keys have been dealt with.
void BoxNotes::LookSoon(const Screen& screen)
{
    if (Screen* const open = session.screens.Find(screen.Name()); open != nullptr && IsTold(screen.Name()))
        session.screens.StartTimer(*open, "NotesTimer", [this, open] { Look(*open); });
}

void BoxNotes::Look(Screen& screen)
{
    try {
        ByControl now = NotesOn(screen);
        std::swap(notes[screen.Name()], now);
        if (now != notes[screen.Name()] && screen.View() != nullptr)
            for (const auto& box : screen.Boxes())
                screen.View()->BoxChanged(*box);
    } catch (const Failure&) {
        // There is no word to be had; whoever needs the records says why.
    }
}

/// What is stored of the open employee, with what stands on the screen.
const FormFacts& BoxNotes::FactsWith(const Screen& screen)
{
    if (form == nullptr) {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        form = std::make_unique<EmployeeForm>(database, session.CurrentEmployer, session.CurrentEmployee);
    }
    if (const FormScreen* part = PartOf(screen.Name()))
        form->Read(part->table, screen);
    return form->Facts();
}

BoxNotes::ByControl BoxNotes::NotesOn(const Screen& screen)
{
    ByControl found;
    AddOwn(screen, found);
    if (!Leads(screen.Name()) && PartOf(screen.Name()) == nullptr)
        return found;
    const FormFacts& facts = FactsWith(screen);
    for (const Way& way : AllWays()) {
        if (way.from != screen.Name())
            continue;
        const auto* const schedule = std::ranges::find(AdjustmentSchedules, way.to, &AdjustmentSchedule::name);
        std::string words = schedule != AdjustmentSchedules.end() ? Behind(session, *schedule) : Behind(facts, way.to);
        if (!words.empty())
            found.emplace(way.by, std::move(words));
    }
    if (PartOf(screen.Name()) != nullptr)
        for (TypedOverFigure& figure : FiguresTypedOver(facts))
            if (figure.spot.screen == screen.Name())
                found.emplace(std::move(figure.spot.box), std::move(figure.words));
    return found;
}

/// A figure that has been worked out again since is its own no longer.
void BoxNotes::AddOwn(const Screen& screen, ByControl& found) const
{
    const auto typed = own.find(screen.Name());
    if (typed == own.end())
        return;
    for (const auto& [name, figure] : typed->second)
        for (const auto& box : screen.Boxes())
            if (box->FullName() == name && ReadAmount(box->Text()) == ReadAmount(figure.now))
                found.emplace(name, fmt::format("Typed over: {} was worked out",
                                                Filled(figure.was) ? Trim(figure.was) : "nothing"));
}

const std::string& BoxNotes::Of(const Screen& screen, const Box& box) const
{
    static const std::string none;
    const auto of = notes.find(screen.Name());
    if (of == notes.end())
        return none;
    const auto note = of->second.find(box.FullName());
    return note == of->second.end() ? none : note->second;
}

BoxNotes* NotesOf(const Session& session)
{
    for (Onlooker* onlooker : session.onlookers)
        if (auto* notes = dynamic_cast<BoxNotes*>(onlooker))
            return notes;
    return nullptr;
}

} // namespace quillmere::review
