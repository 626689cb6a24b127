#pragma once

#include "frame/Platform.h"

#include <exception>
#include <string_view>

namespace quillmere {

/// The system's message boxes over the one door.
class Messages {
public:
    explicit Messages(Platform& platform) : platform(platform) {}

    /// A box with an OK button.
    void Tell(std::string_view title, std::string_view text, Icon icon = Icon::Exclamation);
    /// A box with Yes and No. True for Yes.
    [[nodiscard]] bool Ask(std::string_view title, std::string_view text, Icon icon = Icon::Question,
                           Answer defaultAnswer = Answer::Yes);
    /// The general error box, which every operation with no message of its own ends in. The pointer goes back to
    /// normal.
    void ReportError(std::string_view procedure, long number, std::string_view text, std::string_view diagnostic = {});
    /// The same for a failure that was caught, with its number if it has one and 0 if not.
    void ReportError(std::string_view procedure, const std::exception& error);

private:
    Platform& platform;
};

} // namespace quillmere
