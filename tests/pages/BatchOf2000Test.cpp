#include "PdfReadBack.h"
#include "frame/CheckedFile.h"
#include "printing/jobs/PrintJobs.h"
#include "support/PrintDesk.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <fmt/format.h>
#include <malloc.h>
#include <random>

#if defined(__SANITIZE_ADDRESS__)
#define QUILLMERE_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QUILLMERE_ADDRESS_SANITIZER
#endif
#endif

#ifdef QUILLMERE_ADDRESS_SANITIZER
#include <sanitizer/allocator_interface.h>
#endif

namespace quillmere::pages {
namespace {

using test::PrintDesk;
using test::ScriptedDoor;

constexpr int Employees = 2000;
constexpr std::string_view Employer = "Marlow & Sons Ltd";

#ifdef QUILLMERE_ADDRESS_SANITIZER
// The sanitizer makes a process start slowly.
constexpr int CheckedStep = 100;

/// What the program has in use. The sanitizer keeps freed memory back, so that its bytes tell nothing: it is the blocks
/// that are counted, by hooks that it calls.
class MemoryInUse {
public:
    MemoryInUse() { __sanitizer_install_malloc_and_free_hooks(&Taken, &Freed); }
    long Now() const { return blocks; }

private:
    static void Taken(const volatile void*, std::size_t) { ++blocks; }
    static void Freed(const volatile void*) { --blocks; }
    static inline std::atomic<long> blocks = 0;
};
#else
constexpr int CheckedStep = 10;

/// What the program has in use, in bytes.
class MemoryInUse {
public:
    long Now() const
    {
        const auto in = mallinfo2();
        return static_cast<long>(in.uordblks + in.hblkhd);
    }
};
#endif

/// A printer that looks at what it gets and keeps nothing of it.
class CheckingDoor : public ScriptedDoor {
public:
    explicit CheckingDoor(const std::filesystem::path& folder) : folder(folder) {}

    PrintOutcome Print(const PrintRequest& request) override
    {
        ++documents;
        EXPECT_EQ(request.pdf.substr(0, 5), "%PDF-");
        if (documents % CheckedStep == 1)
            Check(request);
        late = memory.Now();
        if (documents == Employees / 10)
            early = late;
        return PrintOutcome::Sent;
    }

    int documents = 0, checked = 0;
    long early = 0, late = 0;

private:
    void Check(const PrintRequest& request)
    {
        const std::filesystem::path file = folder / "printed.pdf";
        WriteFileChecked(file, request.pdf);
        const ProgramRun check = RunProgram({"qpdf", "--check", file.string()});
        EXPECT_EQ(check.status, 0) << request.documentName << '\n' << check.output;
        EXPECT_EQ(check.output.find("WARNING"), std::string::npos) << check.output;
        ++checked;
    }

    std::filesystem::path folder;
    MemoryInUse memory;
};

/// Fills employees at random and keeps account of the pages that each must have, by the order of the papers and not by
/// the program's own table.
class RandomEmployees {
public:
    RandomEmployees(PrintDesk& desk, unsigned start) : database(desk.Open()), random(start)
    {
        static constexpr auto tables = std::to_array<std::string_view>(
            {"P11D",      "ExtraCars", "ANotepad",  "BNotepad",  "CNotepad",  "DNotepad",  "ENotepad",  "GNotepad",
             "HNotepad",  "INotepad",  "JNotepad",  "KNotepad",  "LNotepad",  "NNotepad1", "NNotepad2", "NNotepad3",
             "ONotepad1", "ONotepad2", "ONotepad3", "ONotepad4", "ONotepad5", "ONotepad6"});
        const WriteBatch batch(database);
        for (const std::string_view table : tables) {
            cursors.emplace_back(table, database.OpenRecordset(table));
            cursors.back().second.Index("IndKey");
        }
        for (int number = 1; number <= Employees; ++number)
            Make(number);
    }

    /// Expected number of pages, by the document's name.
    std::map<std::string, int> pages;

private:
    bool Chance(int percent) { return static_cast<int>(random() % 100) < percent; }
    int Upto(int most) { return static_cast<int>(random() % static_cast<unsigned>(most)) + 1; }
    std::string Money()
    {
        const std::string figure = fmt::format("{}.{:02}", Upto(99999), Upto(100) - 1);
        return PadAmount(Chance(10) ? "(" + figure + ")" : figure);
    }
    std::string Date() { return fmt::format("{:02}/{:02}/2010", Upto(28), Upto(9) + 3); }
    std::string Words(int most = 12)
    {
        static constexpr auto words = std::to_array<std::string_view>(
            {"Laptop", "season ticket", "Yacht", "£ vouchers", "Café", "Łódź", "Αθήνα", "car", "van", "Smith & Sons"});
        std::string text(words.at(random() % words.size()));
        for (int count = 1; count < most && Chance(60); ++count)
            text.append(" ").append(words.at(random() % words.size()));
        return text;
    }

    void Make(int number)
    {
        const std::string surname = fmt::format("O'{}-{}", Words(3), number);
        const std::string employee = "José " + surname;
        CreateEmployee(database, {.employer = std::string(Employer), .firstName = "José", .surname = surname});
        current = employee;
        fields.clear();

        int count = 2;
        Put("P11D", "NatIns", "AB123456C");
        for (const std::string_view field : {"ACashEqu", "B2", "CGrossAmount", "GVan", "HOutstand1", "LCashEqu"})
            if (Chance(50))
                Put("P11D", field, Money());
        count += Cars();
        for (const auto& [table, stem] : Schedules)
            count += Schedule(table, stem);
        count += One("DNotepad", "BasicChargeA");
        count += One("JNotepad", "ABox");
        for (int vehicle = 1; vehicle <= 3; ++vehicle)
            count += One("ENotepad", Numbered("ABox", vehicle));
        for (int van = 1; van <= 3; ++van)
            count += Van(van);
        for (int loan = 1; loan <= 5; ++loan)
            count += One("HNotepad", Numbered("MaxBalanceLater", loan));
        Store();
        pages[std::string(Employer) + " - " + employee] = count;
    }

    int Cars()
    {
        int count = 0;
        for (int car = 1; car <= 2; ++car) {
            if (!Chance(50))
                continue;
            ++count;
            Car("P11D", car);
        }
        for (const int first : {3, 5}) {
            bool sheet = false;
            int papers = 0;
            for (int car = first; car <= first + 1; ++car) {
                if (!Chance(25))
                    continue;
                ++papers;
                Car("ExtraCars", car);
                if (Chance(70)) {
                    Put("ExtraCars", Numbered(Chance(50) ? "FCashEqu" : "FFuelEqu", car), Money());
                    sheet = true;
                }
            }
            // Without a cash or fuel equivalent there is neither the sheet nor the cars' papers.
            if (sheet)
                count += 1 + papers;
        }
        return count;
    }

    void Car(std::string_view table, int car)
    {
        Put(table, Numbered("FMakeModel", car), Words(3));
        if (Chance(50))
            Put(table, Numbered("FListPrice", car), Money());
        if (Chance(50))
            Put(table, Numbered("FUnavailableFirst2", car), Date());
    }

    int Schedule(std::string_view table, std::string_view stem)
    {
        if (!Chance(30))
            return 0;
        const int lines = Upto(20);
        for (int line = 1; line <= lines; ++line) {
            Put(table, Numbered("Description", line), Words());
            if (Chance(80))
                Put(table, Numbered(stem, line), Money());
        }
        return 1;
    }

    int One(std::string_view table, std::string_view field)
    {
        if (!Chance(25))
            return 0;
        Put(table, field, Money());
        return 1;
    }

    int Van(int van)
    {
        // The tick alone makes no van.
        if (Chance(30))
            Put("GNotepad", Numbered("FuelVanTick", van), "1");
        if (!Chance(25))
            return 0;
        Put("GNotepad", Numbered("RegNumber", van), "V123 ABC");
        return 1;
    }

    void Put(std::string_view table, std::string_view field, std::string_view text)
    {
        fields[std::string(table)].emplace_back(field, text);
    }

    void Store()
    {
        for (auto& [table, records] : cursors) {
            const auto found = fields.find(std::string(table));
            if (found == fields.end())
                continue;
            records.Seek(Employer, current);
            records.Edit();
            for (const auto& [field, text] : found->second)
                records.SetField(field, text);
            records.Update();
        }
    }

    static constexpr std::array<std::pair<std::string_view, std::string_view>, 15> Schedules = {{
        {"ANotepad", "CostMarket"},
        {"BNotepad", "Payment"},
        {"CNotepad", "Gross"},
        {"INotepad", "Cost"},
        {"KNotepad", "AmountGood"},
        {"LNotepad", "CashEqu"},
        {"NNotepad1", "Cost"},
        {"NNotepad2", "CashEq"},
        {"NNotepad3", "Tax"},
        {"ONotepad1", "Cost"},
        {"ONotepad2", "Cost"},
        {"ONotepad3", "Cost"},
        {"ONotepad4", "Cost"},
        {"ONotepad5", "Cost"},
        {"ONotepad6", "Cost"},
    }};

    Database database;
    std::mt19937 random;
    std::vector<std::pair<std::string_view, Recordset>> cursors;
    std::string current;
    std::map<std::string, std::vector<std::pair<std::string, std::string>>> fields;
};

/// Where its letters are drawn: from the top of the capitals to the line on which they stand.
bool LiesOnTheSheet(const Document& document, const Operation& text)
{
    constexpr double capitals = 0.75; // of the size
    const TextStyle& style = document.TextStyleOf(text);
    const double line = text.y1 + TextAscent(style.face, style.size);
    return text.x1 >= 0 && text.x1 + text.x2 <= SheetWidth && line - capitals * style.size * TwipsPerPoint >= 0 &&
           line <= SheetHeight;
}

TEST(ABatchOf2000RandomEmployees, HasThePagesOfTheSequenceAndNothingOutsideTheSheet)
{
    const std::filesystem::path in = test::QuickFolder();
    const test::TemporaryFolder scratch(in);
    CheckingDoor door(scratch.path);
    door.printers = {"Office"};
    PrintDesk desk(door, in);
    const unsigned start = std::random_device()();
    SCOPED_TRACE(fmt::format("random numbers from {}", start));
    RandomEmployees employees(desk, start);
    ASSERT_EQ(employees.pages.size(), static_cast<std::size_t>(Employees));

    int pages = 0;
    constexpr int printed = 0;
    std::string before;
    std::weak_ptr<const Document> last;
    desk.printing.engine.documentEnded = [&](const std::shared_ptr<const Document>& document) {
        EXPECT_LT(before, document->name);
        before = document->name;
        const auto expected = employees.pages.find(document->name);
        ASSERT_NE(expected, employees.pages.end()) << document->name;
        EXPECT_EQ(document->PageCount(), expected->second) << document->name;
        expected->second = printed; // struck off the list, which keeps its size
        EXPECT_TRUE(last.expired()) << "the document before " << document->name << " is still there";
        last = document;
        pages += document->PageCount();
        for (int page = 1; page <= document->PageCount(); ++page)
            for (const Operation& operation : document->Page(page)) {
                if (operation.kind != OperationKind::Text)
                    continue;
                ASSERT_TRUE(LiesOnTheSheet(*document, operation))
                    << document->name << " page " << page << ": " << document->TextOf(operation);
            }
    };
    BatchSelection all = BatchSelection::All();
    all.Set(BatchTick::P11DB, false);
    PrintBatchJob(desk.session, desk.printing, Employer, all);

    for (const auto& [name, count] : employees.pages)
        EXPECT_EQ(count, printed) << name;
    EXPECT_EQ(door.documents, Employees);
    EXPECT_GE(door.checked, Employees / CheckedStep);
    EXPECT_GT(pages, 4 * Employees);
    EXPECT_TRUE(door.messages.empty());
    ASSERT_EQ(door.progress.size(), static_cast<std::size_t>(Employees) + 2);
    EXPECT_EQ(door.progress[Employees], std::make_pair(Employees, Employees));
    EXPECT_GT(door.early, 0);
    EXPECT_LE(door.late, door.early * 11 / 10) << "memory in use after a tenth of the batch and at its end";
}

} // namespace
} // namespace quillmere::pages
