#include "printing/paper/Deflate.h"

#include <libdeflate.h>

#include <new>

namespace quillmere {

void Deflate::Free::operator()(libdeflate_compressor* freed) const
{
    libdeflate_free_compressor(freed);
}

Deflate::Deflate(int level) : compressor(libdeflate_alloc_compressor(level))
{
    if (!compressor)
        throw std::bad_alloc();
}

std::string Deflate::Compress(std::string_view content)
{
    std::string compressed(libdeflate_zlib_compress_bound(compressor.get(), content.size()), '\0');
    compressed.resize(libdeflate_zlib_compress(compressor.get(), content.data(), content.size(), compressed.data(),
                                               compressed.size()));
    compressed.shrink_to_fit();
    return compressed;
}

} // namespace quillmere
