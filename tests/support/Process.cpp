#include "support/Process.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <fmt/format.h>
#include <poll.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace quillmere::test {

Ending InAProcess(const std::function<void(int tell)>& work, std::chrono::microseconds time, Patience from)
{
    constexpr int Failed = 9;
    int ends[2];
    if (::pipe(ends) != 0)
        throw std::runtime_error("no pipe");
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(ends[0]);
        try {
            work(ends[1]);
        } catch (const std::exception& error) {
            Tell(ends[1], fmt::format("failed: {}", error.what()));
            std::_Exit(Failed);
        }
        std::_Exit(0);
    }
    ::close(ends[1]);

    using Clock = std::chrono::steady_clock;
    auto end = Clock::now() + time;
    Ending ending;
    bool waits = from == Patience::FromTheStart, stopped = false;
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::nanoseconds>(end - Clock::now());
        if (waits && left.count() <= 0 && !stopped) {
            ::kill(child, SIGKILL);
            stopped = true;
        }
        const timespec wait = {.tv_sec = left.count() / 1'000'000'000, .tv_nsec = left.count() % 1'000'000'000};
        pollfd waited = {.fd = ends[0], .events = POLLIN, .revents = 0};
        if (::ppoll(&waited, 1, stopped || !waits ? nullptr : &wait, nullptr) <= 0)
            continue;
        char piece[4096];
        const ssize_t size = ::read(ends[0], piece, sizeof piece);
        if (size <= 0)
            break;
        ending.told.append(piece, static_cast<std::size_t>(size));
        if (!std::exchange(waits, true))
            end = Clock::now() + time;
    }
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    ending.ended = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    if (stopped && WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL)
        ending.words = "stopped";
    else if (WIFSIGNALED(status))
        ending.words = fmt::format("crashed by signal {}", WTERMSIG(status));
    else if (!ending.ended)
        ending.words = fmt::format("ended with {}", WEXITSTATUS(status));
    return ending;
}

void Tell(int tell, std::string_view line)
{
    std::string whole(line);
    whole += '\n';
    if (::write(tell, whole.data(), whole.size()) != static_cast<ssize_t>(whole.size()))
        std::_Exit(1);
}

long long LastNumberTold(std::string_view told)
{
    told = told.substr(0, told.rfind('\n') == std::string_view::npos ? 0 : told.rfind('\n'));
    const std::string_view last = told.substr(told.rfind('\n') + 1);
    long long number = -1;
    std::from_chars(last.data(), last.data() + last.size(), number);
    return number;
}

} // namespace quillmere::test
