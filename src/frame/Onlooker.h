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

/// Who looks on while the user goes from box to box, to say a word about it or to keep what he types. It changes
/// nothing. What it does not care about it need not answer.
class Onlooker {
public:
    Onlooker() = default;
    Onlooker(const Onlooker&) = delete;
    Onlooker& operator=(const Onlooker&) = delete;
    virtual ~Onlooker() = default;

    /// The user has come to a control.
    virtual void Entered(const Screen& /*screen*/, const Box& /*box*/) {}
    /// The user has changed what a box reads.
    virtual void Typed() {}
    /// A text box has been left, and leaving has rewritten these entries of its screen.
    virtual void Left(const Screen& /*screen*/, const Box& /*left*/, std::span<const Rewritten> /*rewritten*/) {}
    /// A screen that stores its boxes only when asked to closes without having been.
    virtual void GivenUp(const Screen& /*screen*/) {}
    /// A screen has gone; its boxes are not there any more.
    virtual void Closed() {}
    /// A page shows the open employee, or anew.
    virtual void Shown() {}
    /// The store has taken what was typed.
    virtual void Stored() {}
};

} // namespace quillmere
