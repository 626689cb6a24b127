// A client database is spoilt at random, opened, read through, written to. It is told of or it is read; the program
// neither crashes nor hangs.
#include "Trial.h"
#include "clientdb/EmployeeFinder.h"
#include "clientdb/Employees.h"
#include "clientdb/store/Template.h"
#include "support/ReadAll.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <csignal>
#include <fmt/format.h>
#include <unistd.h>

namespace quillmere::endure {
namespace {

constexpr auto Patience = std::chrono::seconds(5);
/// So many databases one after the other in a process: starting one takes longer than a database.
constexpr std::int64_t InOneProcess = 100;

std::string Sound(const std::filesystem::path& file)
{
    CreateTables(file);
    {
        Database database = Database::OpenDatabase(file);
        WriteBatch batch(database);
        for (int i = 0; i < 30; ++i)
            CreateEmployee(database,
                           {fmt::format("Employer {}", i % 4), "Jane", fmt::format("Smith {}", i), "123/A456"});
        batch.Commit();
    }
    return test::Content(file);
}

/// Bytes, whole pages, pages in each other's place, a cut.
std::string Spoil(std::string bytes, std::uint64_t seed)
{
    constexpr std::size_t PageSize = 4096;
    std::mt19937_64 random(seed);
    const auto below = [&](std::size_t bound) { return static_cast<std::size_t>(random() % bound); };
    const std::size_t pages = bytes.size() / PageSize;
    for (std::size_t hit = 0, hits = 1 + below(12); hit < hits; ++hit)
        switch (random() % 8) {
        case 0:
            std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(below(pages) * PageSize), PageSize, '\0');
            break;
        case 1:
            std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(below(pages) * PageSize), PageSize,
                        bytes.begin() + static_cast<std::ptrdiff_t>(below(pages) * PageSize));
            break;
        case 2:
            // The head of a page says how everything in it is to be read.
            bytes[below(pages) * PageSize + below(16)] = static_cast<char>(random());
            break;
        case 3:
            if (random() % 16 == 0) {
                bytes.resize(below(bytes.size()) + 1);
                return bytes;
            }
            [[fallthrough]];
        default:
            for (std::size_t at = below(bytes.size()), end = std::min(bytes.size(), at + 1 + below(64)); at < end; ++at)
                bytes[at] = static_cast<char>(random());
        }
    return bytes;
}

/// All that the program does with a database.
void Walk(const std::filesystem::path& file)
{
    for (const OpenMode mode : {OpenMode::ReadOnly, OpenMode::ReadWrite})
        try {
            Database database = Database::OpenDatabase(file, mode);
            test::ReadAll(database);
            ListEmployers(database);
            ListEmployees(database, "Employer 1");
            EmployeeFinder finder(database);
            if (mode == OpenMode::ReadOnly)
                continue;
            CreateEmployee(database, {"New", "Max", "Moritz", ""});
            RenameEmployer(database, "Employer 1", "Employer 9", "x");
            DeleteEmployer(database, "Employer 2");
        } catch (const StoreError&) {
            // It has words for what is wrong.
        }
}

} // namespace

Findings DamagedDatabases(const Assignment& assignment)
{
    const std::filesystem::path file = assignment.folder / "clients";
    const std::string sound = Sound(file);
    Progress progress;
    Findings findings;
    for (std::int64_t next = 0; next < assignment.count;) {
        progress.At(findings.tried);
        const std::int64_t end = std::min(assignment.count, next + InOneProcess);
        const Ending ending = InAProcess(
            [&](int tell) {
                for (std::int64_t which = next; which < end; ++which) {
                    ::alarm(static_cast<unsigned>(Patience.count()));
                    Tell(tell, std::to_string(which));
                    test::Store(file, Spoil(sound, assignment.seed + static_cast<std::uint64_t>(which)));
                    Walk(file);
                    if (assignment.planted && which % InOneProcess == 7)
                        std::raise(SIGSEGV);
                }
                ::alarm(0);
            },
            Patience * InOneProcess);
        if (ending.ended) {
            next = end;
        } else {
            const std::int64_t which = std::max<std::int64_t>(next, test::LastNumberTold(ending.told));
            findings.faults.push_back(fmt::format("database of seed {}: {}",
                                                  assignment.seed + static_cast<std::uint64_t>(which),
                                                  ending.words.empty() ? "it hangs" : ending.words));
            next = which + 1;
        }
        findings.tried = next;
    }
    return findings;
}

} // namespace quillmere::endure
