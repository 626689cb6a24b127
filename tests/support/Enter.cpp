#include "support/Enter.h"

#include "frame/Text.h"

#include <string>

namespace quillmere::test {

void Enter(Screen& screen, Box& box, std::string_view text)
{
    std::u32string typed;
    for (const char32_t key : CodePoints(text))
        if (const char32_t passed = screen.Key(box, key))
            typed += passed;
    box.SetText(Utf8(typed));
    screen.Leave(box);
}

void Enter(Screen& screen, std::string_view box, std::string_view text, int index)
{
    Enter(screen, screen.box(box, index), text);
}

} // namespace quillmere::test
