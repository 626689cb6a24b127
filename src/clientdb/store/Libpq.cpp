#include "clientdb/store/Libpq.h"

namespace quillmere {

const LateLibrary& Libpq()
{
    static const LateLibrary library(QUILLMERE_LIBRARY);
    return library;
}

} // namespace quillmere
