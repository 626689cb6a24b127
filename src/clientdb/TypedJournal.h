#pragma once

#include "clientdb/TypedEntries.h"
#include "clientdb/store/Recordset.h"
#include "frame/OnceLater.h"
#include "frame/Session.h"

#include <filesystem>
#include <string>
#include <vector>

namespace quillmere {

/// Keeps what is typed on the open pages and notepads and not stored yet in the file beside the client database: it is
/// written whole at most every two seconds, and goes when the store has taken what it holds. So a crash loses two
/// seconds. It keeps as well what a notepad held that was cancelled, until the employee is closed.
///
/// What an earlier run has left there, by a crash or because the store did not take it at the system's end, waits for
/// whoever opens the employee.
class TypedJournal : public Onlooker {
public:
    explicit TypedJournal(Session& session);

    void Typed() override { writing.Ask(); }
    void Left(const Screen&, const Box&, std::span<const Rewritten>) override { writing.Ask(); }
    void GivenUp(const Screen& screen) override;
    void Closed() override;
    void Stored() override { WriteWhereKept(); }

    /// What waits for the open employee or his employer, one line a field, and what his cancelled notepads held. What
    /// the store holds by now is not among it.
    std::vector<TypedEntries::Line> Waiting();
    /// The lines are back in their boxes, or not wanted.
    void Forget(const std::vector<TypedEntries::Line>& lines);
    /// Writes what is typed now.
    void Write();
    /// The program ends at the system's wish: what is kept waits for the next start.
    void LeaveForNextStart();

private:
    bool IsOpen(const TypedEntries::Record& record) const;
    std::vector<TypedEntries::Line> Pending();
    void WriteWhereKept();
    void TakeOver(const std::filesystem::path& database);
    std::string Desk() const;
    void TellOnce(std::string_view why);

    Session& session;
    std::vector<TypedEntries::Line> cancelled; ///< of notepads, for the open employee
    std::vector<TypedEntries::Line> written;   ///< what the file holds of this desk
    std::filesystem::path database;            ///< beside which it does; from its first use on
    bool hasEnded = false, isTold = false;
    OnceLater writing;
};

/// What waits for an employer, or for one of his employees, who has got another name in the store waits for him under
/// that name. A record that has kept its old one, since the new one was taken, keeps what waits for it.
void CarryWaiting(Session& session, Database& database, const TypedEntries::Record& from,
                  const TypedEntries::Record& to);

} // namespace quillmere
