#pragma once

#include <memory>
#include <string>
#include <string_view>

struct libdeflate_compressor;

namespace quillmere {

/// A zlib stream of a text, at one level of effort from 1 to 12.
class Deflate {
public:
    explicit Deflate(int level);
    std::string Compress(std::string_view content);

private:
    struct Free {
        void operator()(libdeflate_compressor* compressor) const;
    };
    std::unique_ptr<libdeflate_compressor, Free> compressor;
    std::string room; ///< as large as the largest result so far could have been
};

} // namespace quillmere
