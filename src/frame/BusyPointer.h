#pragma once

#include "frame/Platform.h"

namespace quillmere {

/// A busy pointer for the length of a scan, or until whoever it is left to takes it away.
class BusyPointer {
public:
    explicit BusyPointer(Platform& platform) : platform(platform) { platform.SetBusyPointer(true); }
    ~BusyPointer()
    {
        if (isMine)
            platform.SetBusyPointer(false);
    }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

    /// Leaves the pointer busy; from now on somebody else sets it back.
    void HandOver() { isMine = false; }

private:
    Platform& platform;
    bool isMine = true;
};

} // namespace quillmere
