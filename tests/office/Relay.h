#pragma once

#include <chrono>
#include <filesystem>
#include <sys/types.h>

namespace quillmere::office {

/// A server's socket a little further away: a process of its own that hands on what comes, either way, so much later.
class Relay {
public:
    /// `near` and `far` are the folders of the two sockets: those who connect find the first, the server has the
    /// second.
    Relay(const std::filesystem::path& near, const std::filesystem::path& far, std::chrono::microseconds delay);
    ~Relay();
    Relay(const Relay&) = delete;
    Relay& operator=(const Relay&) = delete;

    /// Cuts the connection that has been there longest, without a word to either end.
    void Cut();

private:
    int orders = -1;
    pid_t process = 0;
};

} // namespace quillmere::office
