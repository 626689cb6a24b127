#pragma once

#include "frame/Platform.h"
#include "frame/Session.h"

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace quillmere::test {

/// The door to the outside for tests without windows: keeps what is shown and answers from a queue.
class ScriptedDoor : public Platform {
public:
    Answer ShowMessage(const Message& message) override
    {
        messages.push_back(message);
        const bool leaves = message.mayLeave && !answers.empty() && answers.front() == Answer::Cancel;
        if (message.buttons == Buttons::Ok && !leaves)
            return Answer::Ok;
        if (answers.empty())
            return message.defaultAnswer;
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    void Beep() override { ++beeps; }
    std::optional<std::string> AskSaveFile(const SaveFileQuestion&) override { return savePath; }
    std::optional<std::string> AskFolder(const FolderQuestion&) override { return folderPath; }
    std::optional<std::string> AskOpenFile(const OpenFileQuestion&) override { return openPath; }
    bool ShowPrinterSetup() override { return false; }
    std::vector<std::string> Printers() override { return printers; }
    PrintOutcome Print(const PrintRequest& request) override
    {
        printed.push_back(request);
        return printOutcome;
    }
    SheetEdge EdgeOf(const std::string& /*printer*/) override { return edge; }
    int OpenWithDesktop(const std::filesystem::path& file) override
    {
        opened.push_back(file);
        return openResult;
    }
    Day Today() override { return today; }
    std::string TimeOfDay() override { return "12:00:00"; }
    void After(std::chrono::milliseconds, std::function<void()> work) override { later.push_back(std::move(work)); }
    /// Does what waits for a time to be over.
    void LetTimePass()
    {
        for (const auto& work : std::exchange(later, {}))
            work();
    }
    void SetBusyPointer(bool newBusy) override { busy = newBusy; }
    void ShowProgress(int done, int total) override { progress.emplace_back(done, total); }
    void YieldToMessages() override { ++yields; }
    void CopyText(const std::string& text) override { copied = text; }
    std::string UserName() override { return {}; }
    std::string DeskName() override { return deskName; }

    /// The last message's text, taken away; an empty text if there is none.
    std::string TakeText()
    {
        if (messages.empty())
            return {};
        std::string text = messages.back().text;
        messages.pop_back();
        return text;
    }

    std::vector<Message> messages;
    std::deque<Answer> answers;
    std::optional<std::string> savePath;
    std::optional<std::string> folderPath;
    std::optional<std::string> openPath;
    std::vector<std::string> printers;
    std::vector<PrintRequest> printed;
    PrintOutcome printOutcome = PrintOutcome::Sent;
    SheetEdge edge; ///< of every printer
    std::vector<std::filesystem::path> opened;
    int openResult = 33;
    std::string copied;
    std::string deskName = "clerk@desk";
    Day today = std::chrono::sys_days(std::chrono::year(2011) / 6 / 30);
    std::vector<std::function<void()>> later;
    bool busy = false;
    int beeps = 0;
    int yields = 0;
    std::vector<std::pair<int, int>> progress;
};

} // namespace quillmere::test
