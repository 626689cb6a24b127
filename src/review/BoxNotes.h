#pragma once

#include "frame/Session.h"
#include "review/EmployeeForm.h"

#include <map>
#include <memory>
#include <string>

namespace quillmere::review {

/// What controls say of themselves just now, beside what they always say: how much stands in the list or calculator
/// behind a picture, that further cars count in the totals, that a figure has been typed over the one that was worked
/// out. Windows show it as a mark, in the tooltip, and have it spoken.
class BoxNotes : public Onlooker {
public:
    explicit BoxNotes(Session& session) : session(session) {}

    void Entered(const Screen& screen, const Box& box) override;
    void Typed() override;
    void Left(const Screen& screen, const Box& left, std::span<const Rewritten> rewritten) override;
    void Closed() override;
    void Stored() override { LookAgain(); }

    /// What is stored has become another: reads it again for every screen that tells of it.
    void LookAgain();
    /// The note on a control; empty if there is none.
    const std::string& Of(const Screen& screen, const Box& box) const;

private:
    using ByControl = std::map<std::string, std::string, std::less<>>; ///< by the control's full name

    /// A figure that has been typed over on a screen that works all out anew when it opens.
    struct Own {
        std::string was, now;
    };

    void LookSoon(const Screen& screen);
    void Look(Screen& screen);
    const FormFacts& FactsWith(const Screen& screen);
    ByControl NotesOn(const Screen& screen);
    std::string WorkedOutOf(const Screen& screen, const Box& box) const;
    void AddOwn(const Screen& screen, ByControl& found) const;

    Session& session;
    std::unique_ptr<EmployeeForm> form;                  ///< of the open employee, until something is stored
    std::map<std::string, ByControl, std::less<>> notes; ///< of each screen
    const Box* inUse = nullptr;
    std::string before; ///< what the box in use read when the user came to it
    std::map<std::string, std::map<std::string, Own, std::less<>>, std::less<>> own;
};

/// The notes of the program that is running; nothing in one that has none.
BoxNotes* NotesOf(const Session& session);

} // namespace quillmere::review
