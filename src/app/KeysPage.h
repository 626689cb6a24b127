#pragma once

#include "app/Guide.h"

namespace quillmere {

struct Session;

/// All keys on one page: those of the menus and of the pages as their own tables have them, and what the hands do in
/// any window.
GuideSection KeysPage(const Session& session);

} // namespace quillmere
