#include "LastYearSample.h"
#include "clientdb/store/StoreErrors.h"
#include "clientdb/store/Template.h"

#include <cstdio>
#include <exception>
#include <filesystem>

/// make_template client|last-year FILE: makes an empty client database, or the sample of last year's, in place of any
/// file of that name.
int main(int argc, char** argv)
try {
    const std::string_view kind = argc == 3 ? argv[1] : "";
    if (kind != "client" && kind != "last-year") {
        std::fputs("make_template client|last-year FILE\n", stderr);
        return 2;
    }
    const std::filesystem::path target = argv[2];
    std::filesystem::path part = target;
    part += ".part";
    std::filesystem::remove(part);
    if (kind == "client")
        quillmere::CreateTables(part);
    else
        quillmere::sample::CreateLastYear(part);
    std::filesystem::rename(part, target);
    return 0;
} catch (const std::exception& failure) {
    std::fprintf(stderr, "make_template: %s\n", failure.what());
    return 1;
}
