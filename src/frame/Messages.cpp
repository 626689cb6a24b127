#include "frame/Messages.h"

#include "edition/Edition.h"
#include "frame/ErrorReport.h"
#include "frame/Failure.h"

namespace quillmere {

void Messages::Tell(std::string_view title, std::string_view text, Icon icon)
{
    platform.ShowMessage({.title = std::string(title), .text = std::string(text), .icon = icon});
}

bool Messages::Ask(std::string_view title, std::string_view text, Icon icon, Answer defaultAnswer)
{
    return platform.ShowMessage({.title = std::string(title),
                                 .text = std::string(text),
                                 .icon = icon,
                                 .buttons = Buttons::YesNo,
                                 .defaultAnswer = defaultAnswer}) == Answer::Yes;
}

void Messages::ReportError(std::string_view procedure, long number, std::string_view text, std::string_view diagnostic)
{
    Tell(edition::AppTitle, ErrorReportText(procedure, number, text, diagnostic), Icon::Critical);
    platform.SetBusyPointer(false);
}

void Messages::ReportError(std::string_view procedure, const std::exception& error)
{
    const auto* failure = dynamic_cast<const Failure*>(&error);
    ReportError(procedure, failure != nullptr ? failure->Number() : 0, error.what());
}

} // namespace quillmere
