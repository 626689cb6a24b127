#pragma once

#include "support/TemporaryFolder.h"

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace quillmere::test {

/// A print spooler (cupsd) of the test's own, in a folder of its own and reached through a socket in it, so that
/// neither the machine's spooler nor its network takes part. It keeps what it gets. Stopped with the object, and by the
/// system should the test die first.
class PrivateSpooler {
public:
    PrivateSpooler();
    ~PrivateSpooler();
    PrivateSpooler(const PrivateSpooler&) = delete;
    PrivateSpooler& operator=(const PrivateSpooler&) = delete;

    /// Why it could not be had; empty if it is running.
    const std::string& Missing() const { return missing; }
    std::string Socket() const { return (folder / "cups.sock").string(); }

    void AddPrinter(std::string_view name) const;
    /// One whose description says how far from the edges of A4 it begins to print: left, bottom, right, top, points.
    void AddPrinterWithEdge(std::string_view name, double left, double bottom, double right, double top) const;
    void RemovePrinter(std::string_view name) const;
    void SetDefault(std::string_view name) const;
    /// The printer takes no more jobs.
    void Reject(std::string_view name) const;
    /// Holds the spooler's process still, and lets it go on.
    void Freeze() const;
    void Thaw() const;

    /// Options that the user of these tests has saved for a printer, as lpoptions does: "sides=one-sided copies=2".
    void SaveOptions(std::string_view printer, std::string_view options) const;
    void ForgetOptions() const;

    /// It refuses larger ones, in bytes.
    static constexpr std::size_t LargestDocument = 4000000;
    /// What it tells of each job, also of one without a document, the oldest first.
    std::vector<std::map<std::string, std::string>> AllJobs() const;
    /// The same of the first job of that name; empty if it knows none.
    std::map<std::string, std::string> AttributesOfJob(std::string_view name) const;

    /// A job as it arrived.
    struct Job {
        std::map<std::string, std::string> attributes; ///< as the spooler tells them: "copies", "sides", "job-name"
        std::vector<std::string> pages;                ///< the text of each page of its document
    };
    /// All jobs so far, the oldest first.
    std::vector<Job> Jobs() const;

private:
    bool Start();
    bool Run(const std::string& command) const;

    const TemporaryFolder folder;
    std::string missing;
    pid_t process = -1;
};

} // namespace quillmere::test
