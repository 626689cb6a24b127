#pragma once

#include "frame/Session.h"
#include "printing/PageEngine.h"
#include "printing/PageLayer.h"

namespace quillmere {

/// The page-drawing engine, its PDF converter and the layer over them: made once, and kept for the life of the process.
struct PrintSystem {
    explicit PrintSystem(Session& session)
        : engine(session.platform), layer(session.platform, session.settings, session.RootFolder)
    {
        layer.vsBindEngine(engine, converter);
    }
    PrintSystem(const PrintSystem&) = delete;
    PrintSystem& operator=(const PrintSystem&) = delete;
    ~PrintSystem() = default;

    PageEngine engine;
    PdfConverter converter;
    PageLayer layer;
};

} // namespace quillmere
