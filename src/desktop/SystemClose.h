#pragma once

#include <QObject>
#include <QTimer>

#include <array>

class QSocketNotifier;

namespace quillmere {

class Program;

/// Closes the main window when the system asks for the program's end: the signals of a logout, a lost terminal and an
/// interrupt, and the desktop's session manager. What is open is stored and the settings are written, as from the close
/// box; what the store does not take is kept for the next start. One at a time.
class SystemClose : public QObject {
public:
    explicit SystemClose(Program& program);
    ~SystemClose() override;

    /// Closes the program as soon as nothing runs: a work under way is finished first, and a message box or a dialog
    /// that is up is taken away like by Escape.
    void Request();

private:
    void CatchSignals();

    Program& program;
    QTimer again;
    std::array<int, 2> pipe{-1, -1};
    QSocketNotifier* notifier = nullptr;
};

} // namespace quillmere
