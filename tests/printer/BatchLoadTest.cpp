// Batches to a spooler on a machine that is busy with other things: each document arrives once, or is named.
// scripts/spooler-load runs many of them.
#include "PrivateSpooler.h"
#include "printing/jobs/CupsPrinters.h"
#include "printing/jobs/PrinterBatch.h"
#include "support/PrintDesk.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <fmt/format.h>
#include <map>
#include <thread>
#include <vector>

namespace quillmere {
namespace {

using test::PrintDesk;
using test::PrivateSpooler;

constexpr std::string_view Employer = "Marlow & Sons Ltd";

class SpoolerDoor : public test::ScriptedDoor {
public:
    std::vector<std::string> Printers() override { return spooler.Names(); }
    PrintOutcome Print(const PrintRequest& request) override { return spooler.Print(request); }

private:
    CupsPrinters spooler{[] {}};
};

/// Keeps every core busy while it lives.
class BusyMachine {
public:
    BusyMachine()
    {
        for (unsigned core = 0; core < std::max(1U, std::thread::hardware_concurrency()); ++core)
            cores.emplace_back([this] {
                while (!isOver)
                    ++rounds;
            });
    }
    BusyMachine(const BusyMachine&) = delete;
    BusyMachine& operator=(const BusyMachine&) = delete;
    ~BusyMachine()
    {
        isOver = true;
        for (std::thread& core : cores)
            core.join();
    }

private:
    std::atomic<bool> isOver = false;
    std::atomic<unsigned long> rounds = 0;
    std::vector<std::thread> cores;
};

int NumberFrom(const char* variable, int standard)
{
    const char* text = std::getenv(variable);
    return text == nullptr ? standard : std::atoi(text);
}

TEST(BatchesUnderLoad, EveryDocumentArrivesOnceOrIsNamed)
{
    const int batches = NumberFrom("QUILLMERE_BATCHES", 1);
    const int employees = NumberFrom("QUILLMERE_EMPLOYEES", 20);
    SpoolerDoor door;
    PrintDesk desk(door);
    desk.printing.engine.documentEnded = nullptr;
    desk.AddSmiths(Employer, employees);
    BatchSelection forms;
    forms.Set(BatchTick::P11D);
    forms.Set(BatchTick::P11DB);

    int arrived = 0, named = 0;
    const BusyMachine busy;
    for (int number = 1; number <= batches; ++number) {
        const PrivateSpooler spooler;
        if (!spooler.Missing().empty())
            GTEST_SKIP() << "no private spooler: " << spooler.Missing();
        spooler.AddPrinter("Office");
        spooler.SetDefault("Office");
        desk.session.settings.vsPrinter = "Office";
        PrinterBatch batch(desk.session, desk.printing, {.employer = std::string(Employer), .selection = forms});
        while (batch.GoOn()) {
        }
        std::map<std::string, int> jobs;
        for (const auto& job : spooler.AllJobs()) {
            EXPECT_EQ(job.at("number-of-documents"), "1") << job.at("job-name");
            ++jobs[job.at("job-name")];
        }
        ASSERT_EQ(batch.Report().lines.size(), static_cast<std::size_t>(employees) + 1);
        for (const BatchLine& line : batch.Report().lines) {
            const bool isSent = line.outcome == BatchLine::Outcome::Done;
            const std::string name = line.of == BatchLine::Of::Employee ? line.name : "P11D(b)";
            const int times = jobs[fmt::format("{} - {}", Employer, name)];
            EXPECT_EQ(times, isSent ? 1 : 0) << name << ": " << batch.Report().InWords(line);
            arrived += times;
            named += isSent ? 0 : 1;
        }
        fmt::print("batch {}: {}\n", number, batch.Report().InWords());
        std::fflush(stdout);
    }
    fmt::print("{} of {} documents arrived, {} named as not sent\n", arrived, batches * (employees + 1), named);
    EXPECT_EQ(arrived + named, batches * (employees + 1));
}

} // namespace
} // namespace quillmere
