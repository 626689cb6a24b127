#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace quillmere {

/// Work that goes on beside its giver's, piece by piece in the order in which it is given, on a thread of its own. What
/// the pieces change is theirs alone until Wait has returned.
class WorkBeside {
public:
    /// So many pieces wait at most.
    explicit WorkBeside(std::size_t mostWaiting) : mostWaiting(mostWaiting) {}
    WorkBeside(const WorkBeside&) = delete;
    WorkBeside& operator=(const WorkBeside&) = delete;
    /// What has not been begun is dropped.
    ~WorkBeside();

    using Piece = std::function<void()>;
    /// Returns at once, or when there is room for one more. A piece that throws has those dropped that wait; what it
    /// has thrown comes out of the next call of this or of Wait.
    void Give(Piece piece);
    /// Returns when all has been done.
    void Wait();

private:
    void Run();
    void DoNext(std::unique_lock<std::mutex>& lock);
    void ThrowFailure();

    const std::size_t mostWaiting;
    std::mutex mutex; ///< of all that follows
    std::condition_variable changed;
    std::deque<Piece> waiting;
    bool isAtWork = false, isEnding = false;
    std::exception_ptr failure;
    std::thread thread;
};

} // namespace quillmere
