#pragma once

#include "frame/LibraryInUse.h"
#include "frame/Platform.h"

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// A printer as the print spooler tells it.
struct PrinterFacts {
    std::string name;
    std::string description; ///< what its owner calls it
    std::string location;
    std::string model;
    enum class State { Idle, Printing, Stopped } state = State::Idle;
    bool isAccepting = true; ///< takes new jobs
};

/// What the spooler is talked to with.
LibraryInUse SpoolerLibrary();

/// The printers of the print spooler (CUPS), and the way to them. Every call is bounded in time. The talking is done by
/// a thread of the call's own, while the caller's looks after the windows.
class CupsPrinters {
public:
    /// `idle` is called again and again while the spooler lets the program wait.
    explicit CupsPrinters(std::function<void()> idle);

    /// All printers, the default one first; none if there is no spooler. A list that was asked for a moment ago is
    /// given again.
    const std::vector<PrinterFacts>& Printers();
    /// Asks afresh the next time.
    void Refresh() { isFresh = false; }
    std::vector<std::string> Names();

    /// Where the printer cannot print on an A4 sheet, as the spooler tells; nothing if it does not.
    SheetEdge EdgeOf(const std::string& printer);

    /// Address of a printer's own page, on the server to which the jobs go.
    static std::string PageOf(std::string_view printer);

    /// Makes a printer the default one until the program ends.
    void Prefer(std::string_view name);

    /// Sends finished pages as one job, in the order in which they lie in the file; the spooler makes the copies.
    /// Both sides of the paper are used as the printer is set up unless the request says otherwise. A printer that the
    /// spooler does not know by that name is unreachable. A conversation that breaks off is tried again from the start;
    /// what has arrived is never sent twice. What could not be handed over whole is not printed.
    PrintOutcome Print(const PrintRequest& request);

private:
    void Read();

    std::function<void()> idle;
    std::vector<PrinterFacts> printers;
    std::string preferred;
    bool isFresh = false;
    std::chrono::steady_clock::time_point read;
};

} // namespace quillmere
