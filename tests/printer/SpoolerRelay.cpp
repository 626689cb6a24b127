#include "SpoolerRelay.h"

#include <arpa/inet.h>
#include <array>
#include <chrono>
#include <cstring>
#include <netinet/in.h>
#include <poll.h>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace quillmere::test {

namespace {

constexpr int PollStep = 20; // milliseconds
constexpr auto Lateness = std::chrono::milliseconds(500);

bool SendAll(int to, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t sent = send(to, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

std::string_view Received(int from, std::array<char, 65536>& buffer)
{
    const ssize_t got = recv(from, buffer.data(), buffer.size(), 0);
    return {buffer.data(), got > 0 ? static_cast<std::size_t>(got) : 0};
}

} // namespace

SpoolerRelay::SpoolerRelay(std::string socketName, Fault fault, int request)
    : spoolerSocket(std::move(socketName)), fault(fault), faultAt(request)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    listener = socket(AF_INET, SOCK_STREAM, 0);
    socklen_t size = sizeof address;
    bind(listener, reinterpret_cast<sockaddr*>(&address), size);
    listen(listener, 8);
    getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
    port = ntohs(address.sin_port);
    server = std::thread([this] { Serve(); });
}

SpoolerRelay::~SpoolerRelay()
{
    isOver = true;
    server.join();
    close(listener);
}

/// One connection after the other: the program has no two at a time.
void SpoolerRelay::Serve()
{
    while (!isOver) {
        pollfd calls{.fd = listener, .events = POLLIN, .revents = 0};
        if (poll(&calls, 1, PollStep) != 1)
            continue;
        const int client = accept(listener, nullptr, nullptr);
        const int spooler = socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, spoolerSocket.c_str(), sizeof address.sun_path - 1);
        if (connect(spooler, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0)
            Carry(client, spooler);
        close(spooler);
        close(client);
    }
}

void SpoolerRelay::Carry(int client, int spooler)
{
    std::array<char, 65536> buffer{};
    bool strikes = false;
    while (!isOver) {
        std::array<pollfd, 2> ends{
            {{.fd = client, .events = POLLIN, .revents = 0}, {.fd = spooler, .events = POLLIN, .revents = 0}}};
        if (poll(ends.data(), ends.size(), PollStep) < 1)
            continue;
        if (ends[0].revents != 0) {
            const std::string_view asked = Received(client, buffer);
            if (asked.starts_with("POST "))
                strikes = ++requests == faultAt;
            if (asked.empty() || (strikes && fault == Fault::LostRequest) || !SendAll(spooler, asked))
                return;
        }
        if (ends[1].revents != 0) {
            const std::string_view told = Received(spooler, buffer);
            if (told.empty())
                return;
            // What lets the client go on with its document is no answer yet.
            const std::size_t answer = strikes ? told.find("HTTP/1.1 200") : std::string_view::npos;
            std::size_t atOnce = told.size();
            if (answer != std::string_view::npos) {
                strikes = false;
                if (fault == Fault::LostAnswer)
                    return;
                if (const std::size_t end = told.find("\r\n\r\n", answer); end != std::string_view::npos)
                    atOnce = end + 4;
                if (!SendAll(client, told.substr(0, atOnce)))
                    return;
                std::this_thread::sleep_for(Lateness);
                if (!SendAll(client, told.substr(atOnce)))
                    return;
            } else if (!SendAll(client, told)) {
                return;
            }
        }
    }
}

} // namespace quillmere::test
