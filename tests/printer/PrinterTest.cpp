// Real jobs to a private spooler: what the user chooses in the print dialog is what arrives, page by page.
#include "PrivateSpooler.h"
#include "SpoolerRelay.h"
#include "printing/jobs/CupsPrinters.h"
#include "support/Enter.h"
#include "support/PreviewRoom.h"
#include "support/ScriptedDoor.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <array>
#include <chrono>
#include <cstdlib>
#include <fmt/format.h>
#include <memory>
#include <netinet/in.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace quillmere {
namespace {

using test::Enter;
using test::PrivateSpooler;
using test::SpoolerRelay;
using Pages = std::vector<std::string>;

/// The scripted door, with the spooler's printers behind it.
class SpoolerDoor : public test::ScriptedDoor {
public:
    std::vector<std::string> Printers() override { return spooler.Names(); }
    PrintOutcome Print(const PrintRequest& request) override
    {
        PrintRequest sooner = request;
        sooner.patience = patience;
        return spooler.Print(sooner);
    }

    CupsPrinters spooler{[this] { ++idled; }};
    std::chrono::seconds patience{20};
    int idled = 0;
};

class PrinterTest : public ::testing::Test {
protected:
    using Room = test::PreviewRoom<SpoolerDoor>;

    static void SetUpTestSuite()
    {
        spooler = std::make_unique<PrivateSpooler>();
        if (!spooler->Missing().empty())
            return;
        for (const char* name : {"Attic", "Office", "Cellar"})
            spooler->AddPrinter(name);
        spooler->SetDefault("Office");
    }
    static void TearDownTestSuite() { spooler.reset(); }

    void SetUp() override
    {
        if (!spooler->Missing().empty())
            GTEST_SKIP() << "no private spooler: " << spooler->Missing();
        before = spooler->Jobs().size();
    }

    static std::string PdfOfOnePage()
    {
        Room room;
        room.Draw(1);
        return room.printing.engine.Pdf();
    }
    /// The only job since the test began.
    PrivateSpooler::Job Arrived()
    {
        const auto jobs = spooler->Jobs();
        EXPECT_EQ(jobs.size(), before + 1);
        return jobs.empty() ? PrivateSpooler::Job{} : jobs.back();
    }
    void ExpectNothingArrived() { EXPECT_EQ(spooler->Jobs().size(), before); }
    static void Press(Screen& dialog) { dialog.Click(dialog.box("cmdPrint")); }

    static std::unique_ptr<PrivateSpooler> spooler;
    std::size_t before = 0;
};

std::unique_ptr<PrivateSpooler> PrinterTest::spooler;

TEST_F(PrinterTest, ListsThePrintersTheDefaultOneFirst)
{
    SpoolerDoor door;
    const std::vector<std::string> names = door.Printers();
    ASSERT_EQ(names.size(), 3U);
    EXPECT_EQ(names.front(), "Office");
    const PrinterFacts& facts = door.spooler.Printers().front();
    EXPECT_EQ(facts.description, "Printer Office");
    EXPECT_EQ(facts.location, "First floor");
    EXPECT_TRUE(facts.isAccepting);
    door.spooler.Prefer("Cellar");
    EXPECT_EQ(door.Printers().front(), "Cellar");
}

TEST_F(PrinterTest, ADocumentArrivesWholeWithItsNameAndOneCopy)
{
    Room room;
    Press(room.Dialog(room.Preview(3)));
    const auto job = Arrived();
    EXPECT_EQ(job.pages, (Pages{"Page 1", "Page 2", "Page 3"}));
    EXPECT_EQ(job.attributes.at("job-name"), "Acme Ltd - Jane Smith");
    EXPECT_EQ(job.attributes.at("copies"), "1");
    EXPECT_EQ(job.attributes.at("document-format"), "application/pdf");
    EXPECT_EQ(job.attributes.at("media"), "iso_a4_210x297mm");
    EXPECT_TRUE(job.attributes.at("job-printer-uri").ends_with("/printers/Office"));
    EXPECT_FALSE(job.attributes.contains("sides")) << "left to the printer";
    EXPECT_TRUE(room.door.messages.empty());
}

TEST_F(PrinterTest, CopiesAreLeftToTheSpooler)
{
    Room room;
    Screen& dialog = room.Dialog(room.Preview(2));
    Enter(dialog, dialog.box("txtCopies"), "3");
    Press(dialog);
    const auto job = Arrived();
    EXPECT_EQ(job.attributes.at("copies"), "3");
    EXPECT_EQ(job.pages, (Pages{"Page 1", "Page 2"}));
}

TEST_F(PrinterTest, ARangeInReverseOrderArrivesInThatOrder)
{
    Room room;
    room.session.settings.reportReverse = true;
    Screen& dialog = room.Dialog(room.Preview(12));
    dialog.Click(dialog.box("optRange", 2));
    Enter(dialog, dialog.box("txtPageNumbers"), "1,3,5-7");
    Press(dialog);
    EXPECT_EQ(Arrived().pages, (Pages{"Page 7", "Page 6", "Page 5", "Page 3", "Page 1"}));
}

TEST_F(PrinterTest, TheTwoPassesOfManualDuplexMeet)
{
    Room room;
    Screen& preview = room.Preview(5);
    for (const int pass : {1, 2}) {
        Screen& dialog = room.Dialog(preview);
        dialog.Click(dialog.box("optDuplex", pass));
        Press(dialog);
    }
    const auto jobs = spooler->Jobs();
    ASSERT_EQ(jobs.size(), before + 2);
    EXPECT_EQ(jobs[before].pages, (Pages{"Page 1", "Page 3", "Page 5"}));
    EXPECT_EQ(jobs[before + 1].pages, (Pages{"Page 2", "Page 4"}));
}

TEST_F(PrinterTest, TheSidesAreThoseOfTheSettings)
{
    for (const auto& [mode, sides] : {std::pair(1, "one-sided"), std::pair(2, "two-sided-long-edge")}) {
        before = spooler->Jobs().size();
        Room room;
        room.session.settings.vsDuplexMode = mode;
        Press(room.Dialog(room.Preview(2)));
        EXPECT_EQ(Arrived().attributes.at("sides"), sides);
    }
}

TEST_F(PrinterTest, AnEmptyPageListSendsNothing)
{
    Room room;
    Screen& dialog = room.Dialog(room.Preview(3));
    dialog.Click(dialog.box("optRange", 2));
    Press(dialog);
    ExpectNothingArrived();
    EXPECT_EQ(room.door.messages.size(), 1U);
}

TEST_F(PrinterTest, APrinterThatIsGoneGetsNothingAndNoOtherDoesInstead)
{
    spooler->AddPrinter("Borrowed");
    Room room;
    room.session.settings.vsPrinter = "Borrowed";
    Screen& dialog = room.Dialog(room.Preview(2));
    EXPECT_EQ(dialog.Caption(), "Borrowed");
    spooler->RemovePrinter("Borrowed");
    Press(dialog);
    ExpectNothingArrived();
    EXPECT_EQ(room.door.TakeText(),
              "An error occurred while attempting to access the following printer:\n\nBorrowed\n\n"
              "Make sure this printer is available and properly set up.");
    // The next job asks.
    room.door.answers = {Answer::Yes};
    EXPECT_TRUE(room.Draw(1));
    EXPECT_EQ(room.door.TakeText(), "This printer is not available.\n\n"
                                    "Do you wish to use the default printer 'Office' instead?");
    EXPECT_EQ(room.session.settings.vsPrinter, "Office");
}

TEST_F(PrinterTest, APrinterThatTakesNoJobsIsNamed)
{
    spooler->AddPrinter("Full");
    spooler->Reject("Full");
    Room room;
    room.session.settings.vsPrinter = "Full";
    Press(room.Dialog(room.Preview(2)));
    ExpectNothingArrived();
    EXPECT_NE(room.door.TakeText().find("Full"), std::string::npos);
    spooler->RemovePrinter("Full");
}

TEST_F(PrinterTest, ASpoolerThatDoesNotAnswerIsGivenUpInTime)
{
    Room room;
    Screen& dialog = room.Dialog(room.Preview(2));
    room.door.patience = std::chrono::seconds(1);
    room.door.idled = 0;
    spooler->Freeze();
    const auto start = std::chrono::steady_clock::now();
    Press(dialog);
    const auto waited = std::chrono::steady_clock::now() - start;
    spooler->Thaw();
    EXPECT_LT(waited, std::chrono::seconds(8));
    EXPECT_GT(room.door.idled, 0) << "the windows are looked after meanwhile";
    EXPECT_EQ(room.door.TakeText(), "The printing system is not ready.\nThe print job has been abandoned.");
    ExpectNothingArrived();
}

TEST_F(PrinterTest, OptionsThatTheUserHasSavedChangeNoPages)
{
    spooler->SaveOptions("Office", "page-ranges=1 page-set=odd outputorder=reverse OutputOrder=Reverse number-up=4 "
                                   "fit-to-page=true sides=two-sided-short-edge job-priority=40");
    Room room;
    Press(room.Dialog(room.Preview(3)));
    spooler->ForgetOptions();
    const auto job = Arrived();
    EXPECT_EQ(job.pages, (Pages{"Page 1", "Page 2", "Page 3"}));
    for (const char* option : {"page-ranges", "page-set", "outputorder", "OutputOrder", "number-up", "fit-to-page"})
        EXPECT_FALSE(job.attributes.contains(option)) << option;
    // The others hold.
    EXPECT_EQ(job.attributes.at("sides"), "two-sided-short-edge");
    EXPECT_EQ(job.attributes.at("job-priority"), "40");
}

TEST_F(PrinterTest, AJobWhoseDocumentDoesNotGetThereWholeIsTakenBack)
{
    SpoolerDoor door;
    const std::string tooLarge = "%PDF-1.4\n" + std::string(PrivateSpooler::LargestDocument + 1000000, ' ');
    EXPECT_EQ(door.Print({.printer = "Office", .documentName = "Too large for it", .pdf = tooLarge, .pages = {1}}),
              PrintOutcome::PrinterUnreachable);
    const auto job = spooler->AttributesOfJob("Too large for it");
    ASSERT_FALSE(job.empty());
    EXPECT_EQ(job.at("job-state"), "canceled");
}

/// Whatever goes wrong with whichever request on the way to a busy spooler: the document is there once in the end, and
/// no job without one stays behind.
TEST_F(PrinterTest, WhateverIsLostOnTheWayEachDocumentArrivesOnce)
{
    for (const auto& [fault, what] : {std::pair(SpoolerRelay::Fault::LateBody, "late body"),
                                      std::pair(SpoolerRelay::Fault::LostRequest, "lost request"),
                                      std::pair(SpoolerRelay::Fault::LostAnswer, "lost answer")}) {
        bool hasStruck = true;
        for (int request = 1; hasStruck; ++request) {
            const std::string name = fmt::format("Acme Ltd - {} {}", what, request);
            SCOPED_TRACE(name);
            {
                const SpoolerRelay relay(spooler->Socket(), fault, request);
                setenv("CUPS_SERVER", relay.Address().c_str(), 1);
                CupsPrinters printers([] {});
                EXPECT_EQ(
                    printers.Print({.printer = "Office", .documentName = name, .pdf = PdfOfOnePage(), .pages = {1}}),
                    PrintOutcome::Sent);
                setenv("CUPS_SERVER", spooler->Socket().c_str(), 1);
                hasStruck = relay.HasStruck();
            }
            int arrived = 0;
            for (const auto& job : spooler->AllJobs()) {
                if (job.at("job-name") != name)
                    continue;
                if (job.at("number-of-documents") == "1" && job.at("job-state") != "canceled")
                    ++arrived;
                else
                    EXPECT_EQ(job.at("job-state"), "canceled");
            }
            EXPECT_EQ(arrived, 1);
        }
    }
}

/// A port of this machine at which nobody takes the calls: those that come wait.
class SilentPort {
public:
    SilentPort()
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        listener = socket(AF_INET, SOCK_STREAM, 0);
        socklen_t size = sizeof address;
        bind(listener, reinterpret_cast<sockaddr*>(&address), size);
        listen(listener, 0);
        getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
        port = ntohs(address.sin_port);
        for (int& caller : callers) {
            caller = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
            connect(caller, reinterpret_cast<sockaddr*>(&address), size);
        }
    }
    ~SilentPort()
    {
        for (const int caller : callers)
            close(caller);
        close(listener);
    }
    SilentPort(const SilentPort&) = delete;
    SilentPort& operator=(const SilentPort&) = delete;

    int port = 0;

private:
    int listener = -1;
    std::array<int, 8> callers{};
};

TEST_F(PrinterTest, ASpoolerThatTakesNoCallsIsNotReady)
{
    const SilentPort silent;
    setenv("CUPS_SERVER", ("127.0.0.1:" + std::to_string(silent.port)).c_str(), 1);
    std::thread([] {
        SpoolerDoor door;
        door.patience = std::chrono::seconds(1);
        EXPECT_EQ(door.Print({.printer = "Office", .documentName = "A", .pdf = "%PDF", .pages = {1}}),
                  PrintOutcome::NotReady);
    }).join();
    setenv("CUPS_SERVER", spooler->Socket().c_str(), 1);
}

TEST_F(PrinterTest, APrintersPageIsOnTheServerThatGetsTheJobs)
{
    EXPECT_TRUE(CupsPrinters::PageOf("Office").starts_with("http://localhost:"));
    EXPECT_TRUE(CupsPrinters::PageOf("Office").ends_with("/printers/Office"));
    setenv("CUPS_SERVER", "print.example:8631", 1);
    std::thread([] {
        EXPECT_EQ(CupsPrinters::PageOf("Top floor"), "http://print.example:8631/printers/Top%20floor");
    }).join();
    setenv("CUPS_SERVER", spooler->Socket().c_str(), 1);
}

TEST_F(PrinterTest, WithoutASpoolerThereAreNoPrinters)
{
    setenv("CUPS_SERVER", "/nowhere/cups.sock", 1);
    // Each thread looks the spooler's place up for itself, once.
    std::thread([] {
        SpoolerDoor door;
        EXPECT_TRUE(door.Printers().empty());
        EXPECT_EQ(door.Print({.printer = "Office", .documentName = "A", .pdf = "%PDF", .pages = {1}}),
                  PrintOutcome::PrinterUnreachable);
    }).join();
    setenv("CUPS_SERVER", spooler->Socket().c_str(), 1);
}

// ---- the edge

TEST_F(PrinterTest, TellsWhereAPrinterCannotPrint)
{
    constexpr double Point = 25.4 / 72;
    spooler->AddPrinterWithEdge("Edged", 12, 14.5, 18, 9);
    CupsPrinters printers([] {});
    const SheetEdge edge = printers.EdgeOf("Edged");
    EXPECT_NEAR(edge.left, 12 * Point, 0.02);
    EXPECT_NEAR(edge.bottom, 14.5 * Point, 0.02);
    EXPECT_NEAR(edge.right, 18 * Point, 0.02);
    EXPECT_NEAR(edge.top, 9 * Point, 0.02);
    EXPECT_EQ(printers.EdgeOf("Nowhere"), SheetEdge{});
    EXPECT_EQ(printers.EdgeOf(""), SheetEdge{});
    spooler->RemovePrinter("Edged");
}

} // namespace
} // namespace quillmere
