#pragma once

#include "frame/Box.h"

#include <span>
#include <string>

namespace quillmere {

class Screen;

/// A box whose entry has become another one without the user's hands.
struct Rewritten {
    const Box* box;
    std::string before; ///< as `Box::Stored` gave it
};

/// Who looks on while the user goes from box to box, and says a word about it. It changes nothing.
class Onlooker {
public:
    Onlooker() = default;
    Onlooker(const Onlooker&) = delete;
    Onlooker& operator=(const Onlooker&) = delete;
    virtual ~Onlooker() = default;

    /// The user has come to a control.
    virtual void Entered(const Screen& screen, const Box& box) = 0;
    /// A text box has been left, and leaving has rewritten these entries of its screen.
    virtual void Left(const Screen& screen, const Box& left, std::span<const Rewritten> rewritten) = 0;
    /// A screen has gone; its boxes are not there any more.
    virtual void Closed() = 0;
    /// The store has taken what was typed.
    virtual void Stored() = 0;
};

} // namespace quillmere
