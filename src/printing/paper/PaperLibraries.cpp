#include "printing/paper/PaperLibraries.h"

#include "printing/paper/PdfProtection.h"

#include <hb.h>
#include <libdeflate.h>

#include <fmt/core.h>

namespace quillmere {

std::vector<LibraryInUse> PaperLibraries()
{
    return {
        ProtectionLibrary(),
        {"HarfBuzz", hb_version_string()},
        {"libdeflate", AsBuilt(LIBDEFLATE_VERSION_STRING)},
        {"fmt", AsBuilt(fmt::format("{}.{}.{}", FMT_VERSION / 10000, FMT_VERSION / 100 % 100, FMT_VERSION % 100))},
    };
}

} // namespace quillmere
