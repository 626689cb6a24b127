#pragma once

#include "frame/Platform.h"

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

namespace quillmere {

/// Work that is to be done once a while has gone by, however often it is asked for meanwhile. What waits does nothing
/// once this has gone.
class OnceLater {
public:
    OnceLater(Platform& platform, std::chrono::milliseconds delay, std::function<void()> work)
        : platform(platform), delay(delay), work(std::move(work))
    {
    }

    void Ask()
    {
        if (std::exchange(isWaiting, true))
            return;
        platform.After(delay, [this, living = std::weak_ptr<int>(life)] {
            if (living.expired())
                return;
            isWaiting = false;
            work();
        });
    }

private:
    Platform& platform;
    std::chrono::milliseconds delay;
    std::function<void()> work;
    bool isWaiting = false;
    std::shared_ptr<int> life = std::make_shared<int>();
};

} // namespace quillmere
