#include "ReferenceRows.h"

#include <cstdio>
#include <exception>

/// make_reference FOLDER FILE: makes the reference database of car models from the text tables Manufacturers.csv,
/// Figures.csv and C02.csv of a folder, in place of any file of that name.
int main(int argc, char** argv)
try {
    if (argc != 3) {
        std::fputs("make_reference FOLDER FILE\n", stderr);
        return 2;
    }
    quillmere::tools::MakeReferenceDatabase(argv[1], argv[2]);
    return 0;
} catch (const std::exception& failure) {
    std::fprintf(stderr, "make_reference: %s\n", failure.what());
    return 1;
}
