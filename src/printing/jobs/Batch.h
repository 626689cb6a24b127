#pragma once

#include "frame/BusyPointer.h"
#include "frame/ProgressBar.h"
#include "printing/jobs/BatchReport.h"
#include "printing/jobs/PrintJob.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// Everything that an employer's batch prints, document by document: one for each employee, in the order of their
/// names, then the declaration, as selected. Where the documents go is what kinds of batches differ in.
class Batch {
public:
    virtual ~Batch() = default;
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

    /// Goes on by one document. False once the batch has ended.
    bool GoOn();
    /// The user has had enough of it: it ends before the next document.
    void Stop() { isCancelled = true; }

    /// Called with each document that is taken in hand.
    std::function<void()> taken;
    /// Whose document is in hand, or was last, and the how-manyeth of how many it was.
    const std::string& InHand() const { return inHand; }
    int NumberInHand() const { return std::min(passed + 1, documents); }
    int Documents() const { return documents; }
    /// What has become of it, once it has ended.
    const BatchReport& Report() const { return report; }

protected:
    Batch(Session& session, PrintSystem& printing, BatchOrder order, Route route);

    /// Opens the document that comes next. Nothing else is opened once one has been left.
    [[nodiscard]] virtual Opening Open(const std::string& name, BatchLine::Of of) = 0;
    /// Ends the document in hand, and notes what became of it.
    virtual void Close(BatchLine line) = 0;
    /// The names of all employees are known, and no document is open yet.
    virtual void Prepare() {}
    /// True if an employee is printed in the round that is under way.
    virtual bool Takes(const std::string& employee) const;
    /// All employees have been gone over. True if they are to be gone over again.
    virtual bool EndRound() { return false; }
    /// How many times employees will be printed in all rounds.
    virtual int Printings() const;
    virtual ProgressBar::Shows Shows() const { return ProgressBar::Shows::EveryStep; }
    /// The documents that the batch is to make.
    virtual std::vector<BatchLine> Expected() const;
    /// Nothing more comes: what has been put off until then is done, so that it is known what became of each document.
    /// It fails in no other way than TellOfEnd then does.
    virtual void Settle() {}
    /// What is told once the batch has ended, and before a failure that has ended it is told of.
    virtual void TellOfEnd();
    virtual void TellBeforeFailure() {}

    bool IsCancelled() const { return isCancelled; }
    void Note(BatchLine line) { report.lines.push_back(std::move(line)); }
    /// The form of the employee in hand.
    const Recordset& Record() const { return employees.value(); }
    /// Of all employees, in the order of printing.
    const std::vector<std::string>& Names() const { return names; }
    int DocumentsLeft() const { return documents - passed; }

    PrintJob job;
    BatchReport report;

private:
    bool Step();
    void Begin();
    void TakeUpEmployees();
    void PrintEmployee();
    void PrintDeclaration();
    void Take(std::string_view whose);
    void Pass();
    void Complete();

    PrintSystem& printing;
    BusyPointer busy;
    std::optional<ProgressBar> progress;
    std::vector<std::string> names;
    std::optional<Recordset> employees;
    bool hasDeclaration = false, hasEnded = false, isCancelled = false;
    std::string inHand;
    int documents = 0, passed = 0;
};

/// The batch of an order, on its way to where it says.
std::unique_ptr<Batch> MakeBatch(Session& session, PrintSystem& printing, BatchOrder order);

} // namespace quillmere
