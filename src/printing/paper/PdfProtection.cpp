#include "printing/paper/PdfProtection.h"

#include <qpdf/qpdf-c.h>

#include <dlfcn.h>
#include <memory>
#include <stdexcept>

namespace quillmere {

namespace {

/// What is used of the library that locks files. It is loaded when it is first wanted, and stays: with the libraries
/// that it brings along it would take a tenth of every start, and few files are ever locked.
class Qpdf {
    void* const library = ::dlopen(QUILLMERE_QPDF, RTLD_NOW | RTLD_LOCAL);

    template<class Function>
    Function* Find(const char* name) const
    {
        void* const found = library == nullptr ? nullptr : ::dlsym(library, name);
        if (found == nullptr)
            throw std::runtime_error(::dlerror());
        return reinterpret_cast<Function*>(found);
    }

public:
    decltype(&qpdf_get_qpdf_version) Version = Find<decltype(qpdf_get_qpdf_version)>("qpdf_get_qpdf_version");
    decltype(&qpdf_init) Begin = Find<decltype(qpdf_init)>("qpdf_init");
    decltype(&qpdf_cleanup) End = Find<decltype(qpdf_cleanup)>("qpdf_cleanup");
    decltype(&qpdf_read_memory) Read = Find<decltype(qpdf_read_memory)>("qpdf_read_memory");
    decltype(&qpdf_init_write_memory) BeginWriting = Find<decltype(qpdf_init_write_memory)>("qpdf_init_write_memory");
    decltype(&qpdf_set_stream_data_mode) SetStreams =
        Find<decltype(qpdf_set_stream_data_mode)>("qpdf_set_stream_data_mode");
    decltype(&qpdf_set_object_stream_mode) SetObjectStreams =
        Find<decltype(qpdf_set_object_stream_mode)>("qpdf_set_object_stream_mode");
    decltype(&qpdf_set_r6_encryption_parameters2) Lock =
        Find<decltype(qpdf_set_r6_encryption_parameters2)>("qpdf_set_r6_encryption_parameters2");
    decltype(&qpdf_write) Write = Find<decltype(qpdf_write)>("qpdf_write");
    decltype(&qpdf_get_buffer) Bytes = Find<decltype(qpdf_get_buffer)>("qpdf_get_buffer");
    decltype(&qpdf_get_buffer_length) Size = Find<decltype(qpdf_get_buffer_length)>("qpdf_get_buffer_length");
    decltype(&qpdf_get_error) Error = Find<decltype(qpdf_get_error)>("qpdf_get_error");
    decltype(&qpdf_get_error_full_text) Words = Find<decltype(qpdf_get_error_full_text)>("qpdf_get_error_full_text");
};

const Qpdf& TheQpdf()
{
    static const Qpdf loaded;
    return loaded;
}

} // namespace

std::string Protected(const std::string& pdf, const std::string& password)
{
    const Qpdf& qpdf = TheQpdf();
    const auto end = [&qpdf](qpdf_data file) { qpdf.End(&file); };
    const std::unique_ptr<_qpdf_data, decltype(end)> held(qpdf.Begin(), end);
    const qpdf_data file = held.get();
    const auto require = [&](QPDF_ERROR_CODE result) {
        if ((result & QPDF_ERRORS) != 0)
            throw std::runtime_error(qpdf.Words(file, qpdf.Error(file)));
    };
    require(qpdf.Read(file, "document", pdf.data(), pdf.size(), nullptr));
    require(qpdf.BeginWriting(file));
    qpdf.SetStreams(file, qpdf_s_preserve);
    qpdf.SetObjectStreams(file, qpdf_o_preserve);
    // The owner's password is the same one: an empty one would open the file to everybody who asks as its owner.
    constexpr QPDF_BOOL Yes = QPDF_TRUE;
    qpdf.Lock(file, password.c_str(), password.c_str(), Yes, Yes, Yes, Yes, Yes, Yes, qpdf_r3p_full, Yes);
    require(qpdf.Write(file));
    return std::string(reinterpret_cast<const char*>(qpdf.Bytes(file)), qpdf.Size(file));
}

LibraryInUse ProtectionLibrary()
{
    return {"qpdf", TheQpdf().Version()};
}

} // namespace quillmere
