#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace quillmere::pages {

/// Compares a listing with the one kept in expected/<name>.txt, line by line. What is drawn now goes into the folder
/// that DRAWN_PAGES in the environment names, if it does, from which scripts/rebaseline takes it.
inline void ExpectAsKept(const std::string& name, const std::string& listing)
{
    const std::string file = name + ".txt";
    const std::filesystem::path kept = std::filesystem::path(PAGES) / "expected" / file;
    if (const char* folder = std::getenv("DRAWN_PAGES")) {
        const std::filesystem::path target = std::filesystem::path(folder) / file;
        std::filesystem::create_directories(target.parent_path());
        std::ofstream(target) << listing;
    }
    std::ifstream expected(kept);
    ASSERT_TRUE(expected) << kept;
    std::istringstream drawn(listing);
    std::string keptLine;
    std::string drawnLine;
    for (int line = 1;; ++line) {
        const bool more = static_cast<bool>(std::getline(expected, keptLine));
        const bool moreDrawn = static_cast<bool>(std::getline(drawn, drawnLine));
        ASSERT_EQ(moreDrawn, more) << kept << ':' << line;
        if (!more)
            break;
        EXPECT_EQ(drawnLine, keptLine) << kept << ':' << line;
    }
}

} // namespace quillmere::pages
