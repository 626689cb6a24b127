#include "printing/jobs/BatchRun.h"

#include "frame/Screen.h"
#include "frame/Session.h"

#include <chrono>
#include <fmt/format.h>
#include <utility>

namespace quillmere {

namespace {

using Clock = std::chrono::steady_clock;

/// How long a click may have to wait for documents that are quickly made.
constexpr std::chrono::milliseconds Piece(50);

} // namespace

BatchRun::BatchRun(Session& session, Screen& screen, std::string_view words, std::function<void()> ended)
    : session(session), screen(screen), words(words), ended(std::move(ended))
{
}

void BatchRun::Start(std::unique_ptr<Batch> newBatch)
{
    batch = std::move(newBatch);
    batch->taken = [this] { SayInHand(); };
    GoOnLater();
}

void BatchRun::Stop()
{
    if (batch == nullptr)
        return;
    batch->Stop();
    screen.box(words).SetText("Ending ...");
}

void BatchRun::EndsBy(std::string_view button)
{
    screen.OnClick(button, [this](Box&) {
        if (IsRunning())
            Stop();
        else
            session.screens.Unload(screen.Name());
    });
}

void BatchRun::SayInHand()
{
    screen.box(words).SetText(fmt::format("{}, {} of {}", batch->InHand(), batch->NumberInHand(), batch->Documents()));
}

void BatchRun::GoOnLater()
{
    session.screens.StartTimer(screen, "BatchTimer", [this] { GoOn(); });
}

void BatchRun::GoOn()
{
    const auto end = Clock::now() + Piece;
    bool isOver = false;
    do
        isOver = !batch->GoOn();
    while (!isOver && Clock::now() < end);
    if (!isOver)
        return GoOnLater();
    batch.reset();
    screen.box(words).SetText({});
    ended();
}

} // namespace quillmere
