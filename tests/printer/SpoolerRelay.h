#pragma once

#include <atomic>
#include <string>
#include <thread>

namespace quillmere::test {

/// A port of this machine behind which a spooler answers, but for one request, counted from 1, with which something
/// goes wrong on the way.
class SpoolerRelay {
public:
    enum class Fault {
        LateBody,    ///< the answer's body comes half a second after its head
        LostRequest, ///< the connection breaks off before the request has arrived
        LostAnswer   ///< it arrives, and the connection breaks off before the answer
    };
    SpoolerRelay(std::string spoolerSocket, Fault fault, int request);
    ~SpoolerRelay();
    SpoolerRelay(const SpoolerRelay&) = delete;
    SpoolerRelay& operator=(const SpoolerRelay&) = delete;

    /// As CUPS_SERVER takes it.
    std::string Address() const { return "127.0.0.1:" + std::to_string(port); }
    /// True once the request with the fault has come.
    bool HasStruck() const { return requests >= faultAt; }

private:
    void Serve();
    void Carry(int client, int spooler);

    std::string spoolerSocket;
    Fault fault;
    int faultAt;
    int listener = -1, port = 0;
    std::atomic<int> requests = 0;
    std::atomic<bool> isOver = false;
    std::thread server;
};

} // namespace quillmere::test
