#pragma once

#include <hb.h>

#include <cstddef>
#include <memory>
#include <span>

/// Objects of HarfBuzz that are given back when their owner goes.
namespace quillmere::hb {

template<auto Destroy>
struct Destroyer {
    template<typename Object>
    void operator()(Object* object) const
    {
        Destroy(object);
    }
};
using Blob = std::unique_ptr<hb_blob_t, Destroyer<hb_blob_destroy>>;
using Face = std::unique_ptr<hb_face_t, Destroyer<hb_face_destroy>>;
using Font = std::unique_ptr<hb_font_t, Destroyer<hb_font_destroy>>;
using Set = std::unique_ptr<hb_set_t, Destroyer<hb_set_destroy>>;

/// The face of a font file, whose bytes must outlive it.
inline Face Open(std::span<const std::byte> file)
{
    const Blob blob(hb_blob_create(reinterpret_cast<const char*>(file.data()), static_cast<unsigned int>(file.size()),
                                   HB_MEMORY_MODE_READONLY, nullptr, nullptr));
    return Face(hb_face_create(blob.get(), 0));
}

} // namespace quillmere::hb
