#pragma once

#include "frame/Screen.h"

#include <string_view>

namespace quillmere::test {

/// Types a text into a box in place of what is in it, each key through the box's filter, and leaves the box.
void Enter(Screen& screen, Box& box, std::string_view text);
void Enter(Screen& screen, std::string_view box, std::string_view text, int index = Box::NoIndex);

} // namespace quillmere::test
