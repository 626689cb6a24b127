#include "frame/WorkBeside.h"

#include <utility>

namespace quillmere {

WorkBeside::~WorkBeside()
{
    {
        const std::lock_guard lock(mutex);
        isEnding = true;
    }
    changed.notify_all();
    if (thread.joinable())
        thread.join();
}

void WorkBeside::Give(Piece piece)
{
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return waiting.size() < mostWaiting; });
    ThrowFailure();
    if (!thread.joinable())
        thread = std::thread([this] { Run(); });
    waiting.push_back(std::move(piece));
    changed.notify_all();
}

void WorkBeside::Wait()
{
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return waiting.empty() && !isAtWork; });
    ThrowFailure();
}

void WorkBeside::Run()
{
    std::unique_lock lock(mutex);
    for (;;) {
        changed.wait(lock, [this] { return isEnding || !waiting.empty(); });
        if (isEnding)
            return;
        DoNext(lock);
        changed.notify_all();
    }
}

/// Does the piece that comes next, without the lock, and lets go of all that it holds.
void WorkBeside::DoNext(std::unique_lock<std::mutex>& lock)
{
    Piece piece = std::move(waiting.front());
    waiting.pop_front();
    isAtWork = true;
    changed.notify_all(); // there is room
    lock.unlock();
    std::exception_ptr thrown;
    try {
        piece();
    } catch (...) {
        thrown = std::current_exception();
    }
    piece = nullptr;
    lock.lock();
    isAtWork = false;
    if (thrown) {
        failure = thrown;
        waiting.clear();
    }
}

void WorkBeside::ThrowFailure()
{
    if (failure)
        std::rethrow_exception(std::exchange(failure, nullptr));
}

} // namespace quillmere
