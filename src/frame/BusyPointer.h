#pragma once

#include "frame/Platform.h"

namespace quillmere {

/// A busy pointer for the length of a scan.
class BusyPointer {
public:
    explicit BusyPointer(Platform& platform) : platform(platform) { platform.SetBusyPointer(true); }
    ~BusyPointer() { platform.SetBusyPointer(false); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

private:
    Platform& platform;
};

} // namespace quillmere
