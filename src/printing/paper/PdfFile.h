#pragma once

#include <memory>
#include <string>

namespace quillmere {

/// A PDF file in the making: objects in the syntax of the format, which libqpdf numbers, checks and writes. It alone
/// includes libqpdf, whose headers clang 14 takes as C++17 only, so its own header keeps to that too.
class PdfFile {
public:
    PdfFile();
    PdfFile(const PdfFile&) = delete;
    PdfFile& operator=(const PdfFile&) = delete;
    ~PdfFile();

    /// Adds an object and gives its reference, "7 0 R". Throws std::exception on a fault of syntax.
    std::string Add(const std::string& object);
    /// Adds a stream of deflated data with further entries of its dictionary, "/Length1 100".
    std::string AddStream(const std::string& deflated, const std::string& entries = {});
    /// A reference to an object that is given later.
    std::string Reserve();
    void Replace(const std::string& reference, const std::string& object);
    /// Sets an entry of the file's catalogue or of its trailer.
    void SetInCatalogue(const std::string& key, const std::string& object);
    void SetInTrailer(const std::string& key, const std::string& object);

    /// The bytes of the file; its identifier follows from its content.
    std::string Bytes();

private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace quillmere
