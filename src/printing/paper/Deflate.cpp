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
    const std::size_t bound = libdeflate_zlib_compress_bound(compressor.get(), content.size());
    if (room.size() < bound)
        room.resize(bound);
    return room.substr(
        0, libdeflate_zlib_compress(compressor.get(), content.data(), content.size(), room.data(), room.size()));
}

} // namespace quillmere
