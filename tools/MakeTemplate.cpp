#include "clientdb/StoreErrors.h"
#include "clientdb/Template.h"

#include <cstdio>
#include <exception>
#include <filesystem>

/// make_template FILE: makes an empty client database in place of any file of that name.
int main(int argc, char** argv)
try {
    if (argc != 2) {
        std::fputs("make_template FILE\n", stderr);
        return 2;
    }
    const std::filesystem::path target = argv[1];
    std::filesystem::path part = target;
    part += ".part";
    std::filesystem::remove(part);
    quillmere::CreateTables(part);
    std::filesystem::rename(part, target);
    return 0;
} catch (const std::exception& failure) {
    std::fprintf(stderr, "make_template: %s\n", failure.what());
    return 1;
}
