#include "printing/paper/PdfFile.h"

#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFWriter.hh>

namespace quillmere {

struct PdfFile::State {
    QPDF file;

    QPDFObjectHandle Parse(const std::string& object)
    {
        // libqpdf takes a reference within an object only.
        if (object.size() > 4 && object.compare(object.size() - 4, 4, " 0 R") == 0 && object.front() != '<')
            return file.getObjectByID(std::stoi(object), 0);
        return QPDFObjectHandle::parse(&file, object);
    }
    static std::string ReferenceTo(const QPDFObjectHandle& object)
    {
        return std::to_string(object.getObjectID()) + " 0 R";
    }
};

PdfFile::PdfFile() : state(std::make_unique<State>())
{
    state->file.emptyPDF();
}

PdfFile::~PdfFile() = default;

std::string PdfFile::Add(const std::string& object)
{
    return State::ReferenceTo(state->file.makeIndirectObject(state->Parse(object)));
}

std::string PdfFile::AddStream(const std::string& deflated, const std::string& entries)
{
    QPDFObjectHandle stream = QPDFObjectHandle::newStream(&state->file);
    if (!entries.empty())
        stream.replaceDict(state->Parse("<< " + entries + " >>"));
    stream.replaceStreamData(deflated, QPDFObjectHandle::newName("/FlateDecode"), QPDFObjectHandle::newNull());
    return State::ReferenceTo(stream);
}

std::string PdfFile::Reserve()
{
    return State::ReferenceTo(state->file.makeIndirectObject(QPDFObjectHandle::newNull()));
}

void PdfFile::Replace(const std::string& reference, const std::string& object)
{
    state->file.replaceObject(QPDFObjGen(std::stoi(reference), 0), state->Parse(object));
}

void PdfFile::SetInCatalogue(const std::string& key, const std::string& object)
{
    state->file.getRoot().replaceKey(key, state->Parse(object));
}

void PdfFile::SetInTrailer(const std::string& key, const std::string& object)
{
    state->file.getTrailer().replaceKey(key, state->Parse(object));
}

std::string PdfFile::Bytes()
{
    QPDFWriter writer(state->file);
    writer.setOutputMemory();
    writer.setMinimumPDFVersion("1.5");
    writer.setStreamDataMode(qpdf_s_preserve);
    writer.setObjectStreamMode(qpdf_o_disable);
    writer.setDeterministicID(true);
    writer.write();
    const auto bytes = writer.getBufferSharedPointer();
    return std::string(reinterpret_cast<const char*>(bytes->getBuffer()), bytes->getSize());
}

} // namespace quillmere
