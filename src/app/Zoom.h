#pragma once

#include "frame/Session.h"

namespace quillmere {

/// Shows the windows a step larger or smaller, 80 to 200 percent of the desktop's size, or as large as the desktop's
/// own letters. The size is kept for the next run.
void ZoomIn(Session& session);
void ZoomOut(Session& session);
void ZoomAsDesktop(Session& session);

/// Shows the windows as large as they were in the last run.
void ZoomAsBefore(Session& session);

} // namespace quillmere
