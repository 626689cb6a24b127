#include "ScriptedPlatform.h"

#include "Compare.h"
#include "Hands.h"
#include "desktop/DesktopHost.h"

#include <QApplication>
#include <QDialog>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace quillmere::scenario {

namespace {

/// What the desktop answers when it has opened a file.
constexpr int Opened = 33;

} // namespace

void ScriptedPlatform::StandInFront()
{
    QWidget* below = host == nullptr ? nullptr : host->FrontWindow();
    if (below == nullptr)
        return;
    QDialog box(below);
    box.setObjectName("a message box");
    QTimer::singleShot(0, &box, [&box] {
        hands::LetGo();
        box.accept();
    });
    box.exec();
    hands::Activate(*below);
}

std::string ScriptedPlatform::Answered(const std::string& title, const std::vector<std::string>& words,
                                       const std::string& standard, bool takesPath, bool& isPath)
{
    isPath = false;
    if (answers.empty())
        return standard;
    const ScriptedAnswer answer = answers.front();
    answers.pop_front();
    isPath = answer.isPath;
    if (answer.isPath ? takesPath : std::ranges::find(words, answer.text) != words.end())
        return answer.text;
    isPath = false;
    misfits.push_back("the box " + Shown(title) + " cannot be answered with " +
                      (answer.isPath ? "the path " + Shown(answer.text) : answer.text) + " (from line " +
                      std::to_string(answer.line) + ")");
    return standard;
}

Answer ScriptedPlatform::ShowMessage(const Message& message)
{
    StandInFront();
    unseen.push_back({message.title, message.text, line});
    bool isPath = false;
    const bool isQuestion = message.buttons == Buttons::YesNo;
    std::vector<std::string> words =
        isQuestion ? std::vector<std::string>{"yes", "no"} : std::vector<std::string>{"ok"};
    if (message.mayLeave)
        words.emplace_back("cancel");
    const std::string standard = !isQuestion ? "ok" : message.defaultAnswer == Answer::No ? "no" : "yes";
    const std::string answer = Answered(message.title, words, standard, false, isPath);
    return answer == "yes" ? Answer::Yes : answer == "no" ? Answer::No : answer == "ok" ? Answer::Ok : Answer::Cancel;
}

std::optional<std::string> ScriptedPlatform::AskSaveFile(const SaveFileQuestion& question)
{
    return AskPath(question.title, question.proposedPath);
}

std::optional<std::string> ScriptedPlatform::AskFolder(const FolderQuestion& question)
{
    return AskPath(question.title, question.proposedPath);
}

std::optional<std::string> ScriptedPlatform::AskPath(const std::string& title, const std::string& proposed)
{
    StandInFront();
    unseen.push_back({title, proposed, line});
    bool isPath = false;
    const std::string answer = Answered(title, {"ok", "cancel"}, "ok", true, isPath);
    if (isPath)
        return (programFolder / answer).lexically_normal().string();
    if (answer == "cancel")
        return std::nullopt;
    return proposed;
}

std::optional<std::string> ScriptedPlatform::AskOpenFile(const OpenFileQuestion& question)
{
    StandInFront();
    unseen.push_back({question.title, "", line});
    bool isPath = false;
    const std::string answer = Answered(question.title, {"cancel"}, "cancel", true, isPath);
    if (!isPath)
        return std::nullopt;
    return (programFolder / answer).lexically_normal().string();
}

bool ScriptedPlatform::ShowPrinterSetup()
{
    StandInFront();
    unseen.push_back({PrinterSetupTitle, "", line});
    bool isPath = false;
    return Answered(PrinterSetupTitle, {"ok", "cancel"}, "ok", false, isPath) == "ok";
}

PrintOutcome ScriptedPlatform::Print(const PrintRequest& request)
{
    if (std::ranges::find(printers, request.printer) == printers.end())
        return PrintOutcome::PrinterUnreachable;
    printed.push_back(request);
    return PrintOutcome::Sent;
}

int ScriptedPlatform::OpenWithDesktop(const std::filesystem::path& file)
{
    opened.push_back(file);
    return Opened;
}

void ScriptedPlatform::After(std::chrono::milliseconds /*wait*/, std::function<void()> work)
{
    later.push_back(std::move(work));
}

void ScriptedPlatform::LetTimePass()
{
    for (const auto& work : std::exchange(later, {}))
        work();
}

void ScriptedPlatform::SetBusyPointer(bool busy)
{
    if (busyPointer == busy)
        return;
    busyPointer = busy;
    if (busy)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void ScriptedPlatform::ShowProgress(int done, int total)
{
    if (host != nullptr)
        host->ShowProgress(done, total);
}

void ScriptedPlatform::YieldToMessages()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace quillmere::scenario
