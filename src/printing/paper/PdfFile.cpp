#include "printing/paper/PdfFile.h"

#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFWriter.hh>

namespace quillmere {

namespace {

/// A node of the tree of bookmarks as it grows.
struct OutlineNode {
    QPDFObjectHandle object;
    QPDFObjectHandle last; ///< child
    int children = 0;
};

void Hang(OutlineNode& parent, QPDFObjectHandle& child)
{
    child.replaceKey("/Parent", parent.object);
    if (parent.children == 0) {
        parent.object.replaceKey("/First", child);
    } else {
        child.replaceKey("/Prev", parent.last);
        parent.last.replaceKey("/Next", child);
    }
    parent.last = child;
    ++parent.children;
}

void Close(OutlineNode& node, int count)
{
    if (node.children == 0)
        return;
    node.object.replaceKey("/Last", node.last);
    node.object.replaceKey("/Count", QPDFObjectHandle::newInteger(count));
}

} // namespace

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

void PdfFile::SetOutline(const std::vector<PdfOutlineItem>& items)
{
    if (items.empty())
        return;
    const auto add = [this] { return state->file.makeIndirectObject(QPDFObjectHandle::newDictionary()); };
    const QPDFObjectHandle xyz = QPDFObjectHandle::newName("/XYZ");
    const QPDFObjectHandle none = QPDFObjectHandle::newNull();

    OutlineNode root;
    root.object = add();
    OutlineNode page;
    for (const PdfOutlineItem& item : items) {
        QPDFObjectHandle object = add();
        object.replaceKey("/Title", QPDFObjectHandle::newUnicodeString(item.title));
        object.replaceKey("/Dest",
                          QPDFObjectHandle::newArray(std::vector<QPDFObjectHandle>{
                              state->Parse(item.page), xyz, none, QPDFObjectHandle::newReal(item.y, 2, true), none}));
        if (item.level > 1 && page.object.isInitialized()) {
            Hang(page, object);
            continue;
        }
        Close(page, page.children);
        page = OutlineNode();
        page.object = object;
        Hang(root, object);
    }
    Close(page, page.children);
    Close(root, static_cast<int>(items.size()));
    root.object.replaceKey("/Type", QPDFObjectHandle::newName("/Outlines"));
    state->file.getRoot().replaceKey("/Outlines", root.object);
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
