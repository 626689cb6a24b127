#include "Relay.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <deque>
#include <fcntl.h>
#include <list>
#include <optional>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace quillmere::office {
namespace {

using Clock = std::chrono::steady_clock;

sockaddr_un AddressIn(const std::filesystem::path& folder)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const std::string path = folder / ".s.PGSQL.5432";
    if (path.size() >= sizeof address.sun_path)
        throw std::runtime_error(path + " is too long for a socket");
    std::ranges::copy(path, address.sun_path);
    return address;
}

/// What goes one way along a connection.
struct Way {
    struct Piece {
        Clock::time_point due;
        std::string bytes; ///< none: the end
    };
    int from, to;
    std::deque<Piece> pieces = {};
    bool isFull = false, hasEnded = false;

    /// False once nothing more will come.
    bool Take(std::chrono::microseconds delay)
    {
        std::array<char, 65536> bytes;
        const ssize_t size = ::read(from, bytes.data(), bytes.size());
        if (size < 0 && (errno == EAGAIN || errno == EINTR))
            return true;
        hasEnded = size <= 0;
        pieces.push_back({.due = Clock::now() + delay,
                          .bytes = std::string(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0)))});
        return !hasEnded;
    }

    /// Hands on what is due. False once the end has been handed on.
    bool Give()
    {
        isFull = false;
        while (!pieces.empty() && pieces.front().due <= Clock::now()) {
            std::string& bytes = pieces.front().bytes;
            if (bytes.empty())
                return false;
            const ssize_t size = ::send(to, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (size < 0 && errno != EAGAIN && errno != EINTR)
                return false;
            bytes.erase(0, static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
            isFull = !bytes.empty();
            if (isFull)
                return true;
            pieces.pop_front();
        }
        return true;
    }
};

struct Connection {
    int client, server;
    std::array<Way, 2> ways;

    Connection(int client, int server)
        : client(client), server(server), ways{Way{.from = client, .to = server}, Way{.from = server, .to = client}}
    {
        ::fcntl(client, F_SETFL, O_NONBLOCK);
        ::fcntl(server, F_SETFL, O_NONBLOCK);
    }
    ~Connection()
    {
        ::close(client);
        ::close(server);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
};

class Relaying {
public:
    Relaying(int door, const sockaddr_un& far, int orders, std::chrono::microseconds delay)
        : door(door), far(far), orders(orders), delay(delay)
    {
    }

    void Run()
    {
        while (!isOver) {
            Wait();
            // In the order in which they were put there.
            std::size_t place = 2;
            for (Connection& connection : connections)
                for (Way& way : connection.ways)
                    if (const short met = waited[place++].revents; !way.hasEnded && met != 0)
                        way.Take(delay);
            connections.remove_if(
                [](Connection& of) { return !std::ranges::all_of(of.ways, [](Way& way) { return way.Give(); }); });
            if (waited[1].revents != 0)
                Obey();
            if (waited[0].revents != 0)
                Accept();
        }
    }

private:
    void Wait()
    {
        waited.assign({{.fd = door, .events = POLLIN, .revents = 0}, {.fd = orders, .events = POLLIN, .revents = 0}});
        std::optional<Clock::time_point> next;
        for (const Connection& connection : connections)
            for (const Way& way : connection.ways) {
                // What has ended is asked for nothing, and whoever takes nothing is tried again a little later.
                waited.push_back({.fd = way.hasEnded ? -1 : way.from, .events = POLLIN, .revents = 0});
                if (!way.pieces.empty()) {
                    const auto due = way.isFull ? Clock::now() + delay : way.pieces.front().due;
                    next = std::min(next.value_or(due), due);
                }
            }
        const auto left =
            std::max(std::chrono::nanoseconds(0), next ? *next - Clock::now() : std::chrono::nanoseconds(0));
        const timespec wait = {.tv_sec = left.count() / 1'000'000'000, .tv_nsec = left.count() % 1'000'000'000};
        if (::ppoll(waited.data(), waited.size(), next ? &wait : nullptr, nullptr) < 0)
            for (pollfd& of : waited)
                of.revents = 0;
    }

    void Accept()
    {
        const int client = ::accept(door, nullptr, nullptr);
        if (client < 0)
            return;
        const int server = ::socket(AF_UNIX, SOCK_STREAM, 0);
        if (::connect(server, reinterpret_cast<const sockaddr*>(&far), sizeof far) == 0) {
            connections.emplace_back(client, server);
            return;
        }
        ::close(server);
        ::close(client);
    }

    /// Each byte cuts a connection; whoever gives the orders has gone with the last of them.
    void Obey()
    {
        char order = 0;
        isOver = ::read(orders, &order, 1) <= 0;
        if (!isOver && !connections.empty())
            connections.pop_front();
    }

    int door;
    sockaddr_un far;
    int orders;
    std::chrono::microseconds delay;
    std::list<Connection> connections;
    std::vector<pollfd> waited;
    bool isOver = false;
};

} // namespace

Relay::Relay(const std::filesystem::path& near, const std::filesystem::path& far, std::chrono::microseconds delay)
{
    const sockaddr_un here = AddressIn(near), there = AddressIn(far);
    const int door = ::socket(AF_UNIX, SOCK_STREAM, 0);
    constexpr int MostWaiting = 128;
    if (::bind(door, reinterpret_cast<const sockaddr*>(&here), sizeof here) != 0 || ::listen(door, MostWaiting) != 0)
        throw std::runtime_error(std::string("no socket for the relay: ") + std::strerror(errno));
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe for the relay");
    process = ::fork();
    if (process == 0) {
        ::close(ends[1]);
        ::prctl(PR_SET_TIMERSLACK, 1);
        Relaying(door, there, ends[0], delay).Run();
        std::_Exit(0);
    }
    ::close(ends[0]);
    ::close(door);
    orders = ends[1];
}

Relay::~Relay()
{
    ::kill(process, SIGKILL);
    ::waitpid(process, nullptr, 0);
    ::close(orders);
}

void Relay::Cut()
{
    if (::write(orders, "c", 1) != 1)
        throw std::runtime_error("the relay is gone");
}

} // namespace quillmere::office
