#pragma once

#include "frame/Session.h"
#include "printing/jobs/JobDocument.h"

namespace quillmere {

/// The page-drawing engine, its PDF converter, the layer over them and the document of the job in hand: made once, and
/// kept for the life of the process.
struct PrintSystem {
    explicit PrintSystem(Session& session)
        : engine(session.platform),
          page(session.settings),
          document(session.platform, session.settings, session.RootFolder, page)
    {
        document.vsBindEngine(engine, converter);
    }
    PrintSystem(const PrintSystem&) = delete;
    PrintSystem& operator=(const PrintSystem&) = delete;
    ~PrintSystem() = default;

    PageEngine engine;
    PdfConverter converter;
    PageLayer page;
    JobDocument document;
};

} // namespace quillmere
