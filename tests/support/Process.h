#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

/// Work in a process of its own, for what may crash, hang, or is to be killed.
namespace quillmere::test {

/// How such a process ended.
struct Ending {
    std::string told;   ///< what it has written to the descriptor that it was given
    bool ended = false; ///< by itself and without an error
    std::string words;  ///< what else happened: a crash, or that it was stopped

    bool WasStopped() const { return words == "stopped"; }
};

/// From when on a process has its time.
enum class Patience { FromTheStart, FromTheFirstWord };

/// Does the work in a process of its own, which is killed when its time is over. The work writes what it has to tell
/// to the descriptor; that it returns is the good end.
Ending InAProcess(const std::function<void(int tell)>& work, std::chrono::microseconds time,
                  Patience from = Patience::FromTheStart);

/// Tells the parent a line; a process whose parent has gone ends.
void Tell(int tell, std::string_view line);

/// The number in the last whole line that was told; -1 if there is none.
long long LastNumberTold(std::string_view told);

} // namespace quillmere::test
