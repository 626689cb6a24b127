#pragma once

#include "clientdb/store/ServerService.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>

namespace quillmere::office {

/// The made employees of the office: their names follow from their numbers.
struct Clients {
    int employers = 0, ofEach = 0; ///< so many employees of each employer

    static std::string Employer(int number);
    static std::string Employee(int number);
};

/// One clerk's part: which desk, whose clients, how long, and how busy.
struct Shift {
    int clerk = 0;
    Clients clients;
    ServerService service;            ///< as it stands in the client folder of the desk
    std::filesystem::path desk, book; ///< the folder of the desk; what is written down
    std::chrono::steady_clock::time_point end;
    std::chrono::milliseconds pause{}; ///< on average, between one step and the next
    std::uint64_t seed = 0;
};

/// Works at a desk, with the program's own screens, until the shift ends, and writes down what the program has taken.
void WorkShift(const Shift& shift);

} // namespace quillmere::office
