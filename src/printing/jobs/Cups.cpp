#include "printing/jobs/Cups.h"

namespace quillmere {

const LateLibrary& Cups()
{
    static const LateLibrary library(QUILLMERE_LIBRARY);
    return library;
}

} // namespace quillmere
