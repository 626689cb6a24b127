#pragma once

#include "frame/Platform.h"

namespace quillmere {

/// The bar that shows how far a long work has come, for the length of the work. The windows repaint with each step
/// that it shows.
class ProgressBar {
public:
    enum class Shows {
        EveryStep,
        WholePercents, ///< for steps that follow each other faster than they can be seen
    };

    ProgressBar(Platform& platform, int total, Shows shows) : platform(platform), total(total), shows(shows) { Show(); }
    ~ProgressBar() { platform.ShowProgress(0, 0); }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void Advance()
    {
        const int before = Percent();
        ++done;
        if (shows == Shows::EveryStep || Percent() != before)
            Show();
    }

private:
    int Percent() const { return total > 0 ? static_cast<int>(100L * done / total) : 0; }

    void Show()
    {
        platform.ShowProgress(done, total);
        platform.YieldToMessages();
    }

    Platform& platform;
    int total;
    Shows shows;
    int done = 0;
};

} // namespace quillmere
