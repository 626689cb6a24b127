#pragma once

#include "printing/jobs/JobDocument.h"
#include "support/ScriptedDoor.h"

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace quillmere::test {

/// The page layer with its engine, settings at their defaults and no printer, for tests that draw.
struct PrintRoom {
    explicit PrintRoom(std::filesystem::path rootFolder = {}) : root(std::move(rootFolder))
    {
        job.vsBindEngine(vp, converter);
    }

    /// The ended document; ends the open one first.
    const Document& Ended()
    {
        if (vp.IsOpen())
            job.vsEndDoc();
        return *vp.Ended();
    }
    /// The last operation of the open or ended document's last page.
    Operation Last()
    {
        const Document& document = Ended();
        return document.Page(document.PageCount()).back();
    }

    ScriptedDoor door;
    Settings settings = SetDefaultConfiguration({});
    std::filesystem::path root;
    PageEngine vp{door};
    PdfConverter converter;
    PageLayer page{settings};
    JobDocument job{door, settings, root, page};
};

/// A record as names and texts; a field that it lacks reads as empty, as a null one does.
using FieldMap = std::map<std::string, std::string, std::less<>>;

inline auto ReaderOf(const FieldMap& fields)
{
    return [&fields](std::string_view name) {
        const auto found = fields.find(name);
        return found == fields.end() ? std::string() : found->second;
    };
}

} // namespace quillmere::test
