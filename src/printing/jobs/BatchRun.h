#pragma once

#include "printing/jobs/Batch.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace quillmere {

class Screen;

/// Has a batch run piece by piece, so that the screen that began it stays in use and can end it.
class BatchRun {
public:
    /// `words` is the screen's label that says whose document is in hand. `ended` hears of the end.
    BatchRun(Session& session, Screen& screen, std::string_view words, std::function<void()> ended);

    void Start(std::unique_ptr<Batch> newBatch);
    bool IsRunning() const { return batch != nullptr; }
    /// The batch ends before its next document.
    void Stop();
    /// Puts the batch's end, and while none runs the screen's own, behind one of its buttons.
    void EndsBy(std::string_view button);

private:
    void GoOnLater();
    void GoOn();
    void SayInHand();

    Session& session;
    Screen& screen;
    std::string words;
    std::function<void()> ended;
    std::unique_ptr<Batch> batch;
};

} // namespace quillmere
