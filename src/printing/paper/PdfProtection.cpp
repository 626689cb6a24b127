#include "printing/paper/PdfProtection.h"

#include "frame/LateLibrary.h"

#include <qpdf/qpdf-c.h>

#include <memory>
#include <stdexcept>

namespace quillmere {

namespace {

const LateLibrary& Qpdf()
{
    static const LateLibrary library(QUILLMERE_LIBRARY);
    return library;
}

template<TextParameter Name, class Function>
using QpdfFunction = LateFunction<Qpdf, Name, Function>;

// clang-format off
constexpr QpdfFunction<"qpdf_cleanup", decltype(::qpdf_cleanup)> qpdf_cleanup;
constexpr QpdfFunction<"qpdf_get_buffer", decltype(::qpdf_get_buffer)> qpdf_get_buffer;
constexpr QpdfFunction<"qpdf_get_buffer_length", decltype(::qpdf_get_buffer_length)> qpdf_get_buffer_length;
constexpr QpdfFunction<"qpdf_get_error", decltype(::qpdf_get_error)> qpdf_get_error;
constexpr QpdfFunction<"qpdf_get_error_full_text", decltype(::qpdf_get_error_full_text)> qpdf_get_error_full_text;
constexpr QpdfFunction<"qpdf_get_qpdf_version", decltype(::qpdf_get_qpdf_version)> qpdf_get_qpdf_version;
constexpr QpdfFunction<"qpdf_init", decltype(::qpdf_init)> qpdf_init;
constexpr QpdfFunction<"qpdf_init_write_memory", decltype(::qpdf_init_write_memory)> qpdf_init_write_memory;
constexpr QpdfFunction<"qpdf_read_memory", decltype(::qpdf_read_memory)> qpdf_read_memory;
constexpr QpdfFunction<"qpdf_set_object_stream_mode", decltype(::qpdf_set_object_stream_mode)> qpdf_set_object_stream_mode;
constexpr QpdfFunction<"qpdf_set_r6_encryption_parameters2", decltype(::qpdf_set_r6_encryption_parameters2)> qpdf_set_r6_encryption_parameters2;
constexpr QpdfFunction<"qpdf_set_stream_data_mode", decltype(::qpdf_set_stream_data_mode)> qpdf_set_stream_data_mode;
constexpr QpdfFunction<"qpdf_write", decltype(::qpdf_write)> qpdf_write;
// clang-format on

} // namespace

std::string Protected(const std::string& pdf, const std::string& password)
{
    const auto end = [](qpdf_data file) { qpdf_cleanup(&file); };
    const std::unique_ptr<_qpdf_data, decltype(end)> held(qpdf_init(), end);
    const qpdf_data file = held.get();
    const auto require = [&](QPDF_ERROR_CODE result) {
        if ((result & QPDF_ERRORS) != 0)
            throw std::runtime_error(qpdf_get_error_full_text(file, qpdf_get_error(file)));
    };
    require(qpdf_read_memory(file, "document", pdf.data(), pdf.size(), nullptr));
    require(qpdf_init_write_memory(file));
    qpdf_set_stream_data_mode(file, qpdf_s_preserve);
    qpdf_set_object_stream_mode(file, qpdf_o_preserve);
    // The owner's password is the same one: an empty one would open the file to everybody who asks as its owner.
    constexpr QPDF_BOOL Yes = QPDF_TRUE;
    qpdf_set_r6_encryption_parameters2(file, password.c_str(), password.c_str(), Yes, Yes, Yes, Yes, Yes, Yes,
                                       qpdf_r3p_full, Yes);
    require(qpdf_write(file));
    return std::string(reinterpret_cast<const char*>(qpdf_get_buffer(file)), qpdf_get_buffer_length(file));
}

LibraryInUse ProtectionLibrary()
{
    return {"qpdf", qpdf_get_qpdf_version()};
}

} // namespace quillmere
