#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace quillmere::pages {

/// Compares a listing with the one kept in expected/<name>.txt, line by line. With ACCEPT_PAGES in the environment it
/// is kept instead, and the test fails, so that such a run is never taken for a good one.
inline void ExpectAsKept(const std::string& name, const std::string& listing)
{
    const std::filesystem::path kept = std::filesystem::path(PAGES) / "expected" / (name + ".txt");
    if (std::getenv("ACCEPT_PAGES") != nullptr) {
        std::ofstream(kept) << listing;
        FAIL() << kept << " is kept as it is drawn now; run again without ACCEPT_PAGES";
    }
    std::ifstream file(kept);
    ASSERT_TRUE(file) << kept;
    std::istringstream drawn(listing);
    std::string keptLine;
    std::string drawnLine;
    for (int line = 1;; ++line) {
        const bool more = static_cast<bool>(std::getline(file, keptLine));
        const bool moreDrawn = static_cast<bool>(std::getline(drawn, drawnLine));
        ASSERT_EQ(moreDrawn, more) << kept << ':' << line;
        if (!more)
            break;
        EXPECT_EQ(drawnLine, keptLine) << kept << ':' << line;
    }
}

} // namespace quillmere::pages
