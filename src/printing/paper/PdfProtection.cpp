#include "printing/paper/PdfProtection.h"

#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFWriter.hh>

namespace quillmere {

std::string Protected(const std::string& pdf, const std::string& password)
{
    QPDF file;
    file.processMemoryFile("document", pdf.data(), pdf.size());
    QPDFWriter writer(file);
    writer.setOutputMemory();
    writer.setStreamDataMode(qpdf_s_preserve);
    writer.setObjectStreamMode(qpdf_o_preserve);
    // The owner's password is the same one: an empty one would open the file to everybody who asks as its owner.
    writer.setR6EncryptionParameters(password.c_str(), password.c_str(), true, true, true, true, true, true,
                                     qpdf_r3p_full, true);
    writer.write();
    const auto bytes = writer.getBufferSharedPointer();
    return std::string(reinterpret_cast<const char*>(bytes->getBuffer()), bytes->getSize());
}

} // namespace quillmere
