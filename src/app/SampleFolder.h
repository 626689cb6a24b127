#pragma once

#include "frame/Session.h"

#include <string>

namespace quillmere {

/// What the command about the sample clients would do now.
std::string SampleWords(Session& session);

/// Adds the sample clients to the folder; where any of them is there, asks and takes just these away again. Whoever
/// else has been added to their employers stays.
void AddOrTakeSampleClients(Session& session);

} // namespace quillmere
