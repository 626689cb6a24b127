#include "Clerk.h"

#include "Book.h"
#include "app/Program.h"
#include "clientdb/EmployerScreens.h"
#include "clientdb/Notepad.h"
#include "clientdb/OpenRecord.h"
#include "clientdb/store/ServerLink.h"
#include "edition/Edition.h"
#include "frame/CloseAll.h"
#include "frame/KeyFilters.h"
#include "frame/Text.h"
#include "screens/ScheduleNotepad.h"
#include "screens/Ways.h"
#include "support/ScriptedDoor.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <fmt/format.h>
#include <fstream>
#include <random>
#include <set>
#include <stdexcept>
#include <thread>

namespace quillmere::office {
namespace {

using std::chrono::microseconds;

/// What this process has had of the machine.
struct Share {
    microseconds wall, own, waited;
    std::int64_t trips;
};

Share ShareNow()
{
    timespec own = {};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &own);
    std::int64_t ran = 0, waited = 0;
    std::ifstream("/proc/self/schedstat") >> ran >> waited;
    return {.wall = std::chrono::duration_cast<microseconds>(std::chrono::steady_clock::now().time_since_epoch()),
            .own = microseconds(own.tv_sec * 1'000'000 + own.tv_nsec / 1000),
            .waited = microseconds(waited / 1000),
            .trips = ServerLink::RoundTrips()};
}

/// True for a word about something that has been done: another desk's text has been stored over.
bool TellsOfDone(const Message& message)
{
    return message.text.find("\" there, \"") != std::string::npos;
}

class Clerk {
public:
    explicit Clerk(const Shift& shift)
        : shift(shift),
          random(shift.seed),
          book(shift.book),
          program(door, nullptr, {.programFolder = ProgramFolder(), .resourceFolder = QUILLMERE_RESOURCES})
    {
        door.deskName = fmt::format("clerk{:02}@desk", shift.clerk);
        if (!program.Main())
            throw std::runtime_error("the program does not start");
        ServerService service = shift.service;
        service.file = Now().ClientDatabasePath();
        WriteService(service);
    }

    void Work()
    {
        Pause();
        while (std::chrono::steady_clock::now() < shift.end) {
            if (open.empty())
                OpenSomebody();
            else
                DoSomething();
            Rest();
        }
        // What is open is stored as the desk is left.
        Acknowledging([&] { static_cast<void>(CloseAllScreens(Now())); }, [] { return true; });
    }

private:
    std::filesystem::path ProgramFolder() const
    {
        std::filesystem::path made = shift.desk / edition::ProductFolder;
        std::filesystem::create_directories(made);
        return made;
    }

    Session& Now() { return program.TheSession(); }
    int Below(int number) { return static_cast<int>(random() % static_cast<std::uint64_t>(number)); }
    bool OneIn(int number) { return Below(number) == 0; }

    // ---- time

    void Pause() { std::this_thread::sleep_for(shift.pause / 2 + shift.pause * Below(1000) / 1000); }

    /// The keys have been dealt with: what waits behind them, and what waits for its time.
    void Rest()
    {
        const Share before = ShareNow();
        Now().screens.RunDeferred();
        NoteTime("behind the keys", before);
        NoteTold();
        Pause();
        door.LetTimePass();
        NoteTold();
    }

    void NoteTime(std::string_view what, const Share& before)
    {
        const Share now = ShareNow();
        book.Note({.what = std::string(what),
                   .wall = now.wall - before.wall,
                   .own = now.own - before.own,
                   .waited = now.waited - before.waited,
                   .trips = now.trips - before.trips});
    }

    // ---- what the program says

    /// False if something was told that tells of nothing done.
    bool NoteTold()
    {
        bool isFine = true;
        for (const Message& message : std::exchange(door.messages, {})) {
            if (message.buttons != Buttons::Ok)
                continue;
            book.NoteTold(fmt::format("{}: {}", message.title, message.text));
            isFine = isFine && TellsOfDone(message);
        }
        return isFine;
    }

    /// What is typed and not stored, as the program sees it: in the notepad that is open, or else on the page. Only
    /// texts that nobody else types, because others cannot be told apart.
    std::vector<TypedEntries::Line> Typed()
    {
        std::vector<TypedEntries::Line> typed;
        if (const auto* const notepad = Now().screens.Find<Notepad>())
            typed = notepad->Typed();
        else
            for (const auto& record : Now().openRecords)
                std::ranges::copy(record->Typed(), std::back_inserter(typed));
        std::erase_if(typed, [this](const TypedEntries::Line& line) {
            std::string text = Trim(line.entry.typed);
            std::erase(text, ',');
            return !marks.contains(text);
        });
        return typed;
    }

    /// Does what stores all that is typed; once the program has taken it, it is written down. False if it has not.
    template<class Press, class Done>
    bool Acknowledging(Press press, Done isDone)
    {
        const std::vector<TypedEntries::Line> typed = Typed();
        book.Begins(typed);
        press();
        const bool isTaken = NoteTold() && isDone();
        if (isTaken)
            book.Acknowledged(typed);
        return isTaken;
    }

    /// Tries until it is done: what stands on the screen stays there while the server is away.
    template<class Try>
    bool Insist(Try once)
    {
        constexpr int MostTries = 40;
        for (int tries = 0; tries < MostTries; ++tries) {
            if (once())
                return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(250));
        }
        return false;
    }

    // ---- typing

    /// A text that nobody else types, and this clerk once; an amount likewise.
    std::string Mark(const Box& box)
    {
        const int number = static_cast<int>(marks.size()) + 1, pence = shift.clerk * 100'000 + number;
        return *marks
                    .insert(box.Filter() == MoneyKeyFilter ? fmt::format("{}.{:02}", pence / 100, pence % 100)
                                                           : fmt::format("c{:02} {:05}", shift.clerk, number))
                    .first;
    }

    void TypeIn(Screen& screen, Box& box) { screen.TypeIn(box, Mark(box)); }

    /// Types in some of the boxes that take any text.
    void TypeOn(Screen& screen)
    {
        std::vector<Box*> texts;
        for (const auto& box : screen.Boxes())
            if (box->Kind() == BoxKind::Text && box->Visible() && !box->ReadOnly() && !box->Field().empty() &&
                box->Filter() == nullptr)
                texts.push_back(box.get());
        for (int i = 0; i < 2 && !texts.empty(); ++i)
            TypeIn(screen, *texts[static_cast<std::size_t>(Below(static_cast<int>(texts.size())))]);
    }

    void TypeInNotepad(Screen& screen)
    {
        const auto member = std::ranges::find(Notepads(), screen.Name(), &NotepadMember::name);
        if (member == Notepads().end())
            return TypeOn(screen);
        const int line = 1 + Below(LinesOfASchedule);
        for (const ScheduleColumn& column : {member->columns.front(), member->Cost()})
            if (column.Exists())
                TypeIn(screen, screen.box(column.box, line));
    }

    // ---- what a clerk does

    Screen* Page()
    {
        for (const std::string_view page : {"Form3", "Side2Form1"})
            if (Now().screens.IsShown(page))
                return Now().screens.Find(page);
        return nullptr;
    }

    bool IsThere() { return Page() != nullptr && EmployeeRecord(Now()).IsThere(); }

    void Click(std::string_view screen, std::string_view box, int index = Box::NoIndex)
    {
        Screen* const found = Now().screens.Find(screen);
        if (found == nullptr)
            throw std::runtime_error(fmt::format("{} is not there for {}", screen, box));
        found->Click(found->box(box, index));
    }

    void Choose(std::string_view screen, std::string_view list, std::string_view entry)
    {
        Screen* const found = Now().screens.Find(screen);
        Box& box = found->box(list);
        const auto place = std::ranges::find(box.Entries(), entry);
        if (place == box.Entries().end())
            throw std::runtime_error(fmt::format("{} is not in {}", entry, list));
        found->Select(box, static_cast<int>(place - box.Entries().begin()));
    }

    /// Some employees are everybody's: there several clerks meet, and from time to time one of them is gone.

    void OpenSomebody()
    {
        constexpr int OneInCommon = 8;
        const bool isCommon = OneIn(OneInCommon);
        employer = Clients::Employer(isCommon ? 0 : 1 + Below(shift.clients.employers - 1));
        open = Clients::Employee(Below(isCommon ? std::min(shift.clients.ofEach, 40) : shift.clients.ofEach));
        const bool isOpen = Insist([&] {
            const Share before = ShareNow();
            const bool isDone = Acknowledging([&] { static_cast<void>(OpenEmployee(Now(), employer, open)); },
                                              [&] { return IsThere(); });
            if (isDone)
                NoteTime("open an employee", before);
            // One who is gone is told of, and there is a page without him.
            return isDone || Page() != nullptr;
        });
        if (!isOpen || !IsThere())
            open.clear();
    }

    void DoSomething()
    {
        constexpr int OneInOpen = 8, OneInNew = 40, OneInGone = 80;
        if (OneIn(OneInGone))
            return OneIn(2) ? Delete() : Rename();
        if (OneIn(OneInNew))
            return MakeNew();
        if (OneIn(OneInOpen) || !IsThere())
            return OpenSomebody();
        if (OneIn(2))
            Turn();
        else
            FillNotepad();
    }

    void Turn()
    {
        Screen* const page = Page();
        if (!OneIn(3))
            TypeOn(*page);
        const std::string from = page->Name(), to = from == "Form3" ? "Side2Form1" : "Form3";
        static_cast<void>(Insist([&] {
            const Share before = ShareNow();
            const bool isDone = Acknowledging([&] { Click(from, to == "Form3" ? "Page1" : "Page2"); },
                                              [&] { return Now().screens.IsShown(to) && IsThere(); });
            if (isDone)
                NoteTime("turn the page", before);
            return isDone || Now().screens.IsShown(to);
        }));
    }

    void FillNotepad()
    {
        const std::span<const Way> ways = AllWays();
        const Way& way = ways[static_cast<std::size_t>(Below(static_cast<int>(ways.size())))];
        // A loan is to be typed in whole.
        constexpr std::array<std::string_view, 4> Others = {"Form3", "Side2Form1", "P11DDeclaration", "HNotepad"};
        if (way.from != Page()->Name() || std::ranges::find(Others, way.to) != Others.end())
            return Turn();
        bool isOpen = false;
        {
            const Share before = ShareNow();
            isOpen = Acknowledging([&] { Click(way.from, way.by); }, [&] { return Now().screens.IsShown(way.to); });
            if (isOpen)
                NoteTime("open a notepad", before);
        }
        Screen* const notepad = Now().screens.Find(way.to);
        if (!isOpen || notepad == nullptr)
            return GiveUp(way.to);
        Rest();
        TypeInNotepad(*notepad);
        const std::string ok = notepad->FindBox("cmdOK") != nullptr ? "cmdOK" : "Ok";
        const bool isTaken = Insist([&] {
            const Share before = ShareNow();
            const bool isDone = Acknowledging([&] { Click(way.to, ok); },
                                              [&] { return Now().screens.Find(way.to) == nullptr && IsThere(); });
            if (isDone)
                NoteTime("a notepad's OK", before);
            return isDone || Now().screens.Find(way.to) == nullptr;
        });
        if (!isTaken)
            GiveUp(way.to);
    }

    void GiveUp(std::string_view screen) { Now().screens.Unload(screen); }

    void MakeNew()
    {
        const std::string to = Clients::Employer(Below(shift.clients.employers));
        const std::string first = "New", last = fmt::format("{:02} {:04}", shift.clerk, ++people);
        const std::string name = first + " " + last;
        static_cast<void>(Insist([&] {
            Click("MDIForm1", "New");
            if (Now().screens.Find("NewFileCheck") == nullptr)
                return NoteTold() && false;
            Click("NewFileCheck", "Option1");
            Click("NewFileCheck", "NewFileOk");
            if (Now().screens.Find("EmployerList") == nullptr)
                return NoteTold() && false;
            Choose("EmployerList", "EmployerList", to);
            Click("EmployerList", "EmpOpen2");
            Screen* const names = Now().screens.Find("NewFile");
            if (names == nullptr)
                return NoteTold() && false;
            names->TypeIn(names->box("EmployeeName"), first);
            names->TypeIn(names->box("EmployeeSurname"), last);
            if (!NoteTold())
                return false;
            book.Begins(Act::Made, to, name);
            const Share before = ShareNow();
            Click("NewFile", "OkEmp2");
            const bool isDone = NoteTold() && IsThere();
            if (isDone) {
                NoteTime("a new employee", before);
                book.Acknowledged(Act::Made, to, name);
                own.emplace_back(to, name);
                employer = to;
                open = name;
            }
            // One who was stored, although the program could not say so, is there the next time.
            return isDone || EmployeeIsThere(to, name);
        }));
        if (!IsThere())
            open.clear();
    }

    bool EmployeeIsThere(const std::string& to, const std::string& name)
    {
        try {
            Database database = Database::OpenDatabase(Now().ClientDatabasePath());
            return EmployeeExists(database, to, name);
        } catch (const StoreError&) {
            return false;
        }
    }

    /// One of the clerk's own, or one of everybody's.
    std::pair<std::string, std::string> SomebodyToLose()
    {
        if (own.empty() || OneIn(2))
            return {Clients::Employer(0), Clients::Employee(Below(std::min(shift.clients.ofEach, 40)))};
        const auto chosen = own.begin() + Below(static_cast<int>(own.size()));
        std::pair<std::string, std::string> lost = *chosen;
        own.erase(chosen);
        return lost;
    }

    /// What a list does with somebody; gone already is as good.
    template<class Press>
    void FromTheList(Act act, std::string_view menu, std::string_view list, std::string_view box,
                     const std::string& newName, Press press)
    {
        const auto lost = SomebodyToLose();
        const std::string &of = lost.first, &who = lost.second;
        open.clear();
        static_cast<void>(Insist([&] {
            door.answers.clear();
            Click("MDIForm1", menu);
            if (Now().screens.Find("EmployerList") == nullptr)
                return NoteTold() && false;
            Choose("EmployerList", "EmployerList", of);
            const bool isRename = act == Act::Renamed;
            Click("EmployerList", isRename ? "EmpSelect2" : "EmpSelect");
            Screen* const names = Now().screens.Find(list);
            if (names == nullptr || !NoteTold())
                return false;
            if (std::ranges::find(names->box(box).Entries(), who) == names->box(box).Entries().end())
                return true;
            Choose(list, box, who);
            book.Begins(act, of, who, newName);
            const Share before = ShareNow();
            press();
            const bool isDone = NoteTold();
            if (isDone) {
                NoteTime(isRename ? "rename an employee" : "delete an employee", before);
                book.Acknowledged(act, of, who, newName);
            }
            return isDone;
        }));
        static_cast<void>(CloseAllScreens(Now()));
    }

    void Delete()
    {
        FromTheList(Act::Deleted, "FileDeleteEmployee", "EmployeeList", "EmployeeList", {}, [this] {
            door.answers.push_back(Answer::Yes);
            Click("EmployeeList", "EmpeDelete");
        });
    }

    void Rename()
    {
        const std::string newName = fmt::format("Renamed {:02} {:04}", shift.clerk, ++people);
        FromTheList(Act::Renamed, "FileRename", "RenameEmp", "RenameEmployee", newName, [this, &newName] {
            Screen* const names = Now().screens.Find("RenameEmp");
            names->TypeIn(names->box("NewEmployer"), newName);
            Click("RenameEmp", "Rename2");
        });
    }

    Shift shift;
    std::mt19937_64 random;
    Book book;
    test::ScriptedDoor door;
    Program program;
    std::string employer, open;
    std::vector<std::pair<std::string, std::string>> own; ///< whom the clerk has made
    std::set<std::string> marks;
    int people = 0;
};

} // namespace

std::string Clients::Employer(int number)
{
    return fmt::format("Employer {:03}", number);
}

std::string Clients::Employee(int number)
{
    return fmt::format("Jane Smith {}", number + 1);
}

void WorkShift(const Shift& shift)
{
    Clerk(shift).Work();
}

} // namespace quillmere::office
