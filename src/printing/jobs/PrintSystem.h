#pragma once

#include "frame/Session.h"
#include "printing/jobs/BatchReport.h"
#include "printing/jobs/JobDocument.h"

#include <functional>
#include <optional>
#include <string_view>

namespace quillmere {

class PrintJob;

/// How a single document is drawn, so that it can be drawn again for another place.
struct SingleDocument {
    std::string_view procedure;          ///< for the general error box
    std::function<bool(PrintJob&)> draw; ///< false if there is nobody to draw it for
};

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

    SingleDocument shown;                 ///< what the preview has been given last
    std::optional<BatchReport> lastBatch; ///< what became of the last batch
};

} // namespace quillmere
