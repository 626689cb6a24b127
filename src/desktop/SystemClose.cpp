#include "desktop/SystemClose.h"

#include "app/Program.h"

#include <QApplication>
#include <QDialog>
#include <QSessionManager>
#include <QSocketNotifier>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace quillmere {

namespace {

constexpr auto Ending = std::to_array<int>({SIGTERM, SIGHUP, SIGINT});

/// How often it is looked whether the program has become idle, in milliseconds.
constexpr int Patience = 50;

/// Where the handler of a signal writes to; a handler can be told nothing but the signal's number.
std::atomic<int> pipeToWrite = -1;
static_assert(std::atomic<int>::is_always_lock_free);

extern "C" void TellOfSignal(int)
{
    const int before = errno;
    const char letter = 0;
    // A pipe that is full has told already.
    [[maybe_unused]] const ssize_t written = ::write(pipeToWrite, &letter, 1);
    errno = before;
}

} // namespace

SystemClose::SystemClose(Program& program) : program(program)
{
    again.setSingleShot(true);
    again.setInterval(Patience);
    connect(&again, &QTimer::timeout, this, &SystemClose::Request);
    connect(
        qGuiApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager&) { Request(); },
        Qt::DirectConnection);
    CatchSignals();
}

SystemClose::~SystemClose()
{
    if (notifier == nullptr)
        return;
    for (const int signal : Ending)
        std::signal(signal, SIG_DFL);
    pipeToWrite = -1;
    delete notifier;
    for (const int end : pipe)
        ::close(end);
}

void SystemClose::CatchSignals()
{
    if (::pipe2(pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return; // the signals then end the process, as they would without this
    pipeToWrite = pipe[1];
    notifier = new QSocketNotifier(pipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        std::array<char, 64> letters{};
        while (::read(pipe[0], letters.data(), letters.size()) > 0) {
        }
        Request();
    });
    struct sigaction action {};
    action.sa_handler = TellOfSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int signal : Ending)
        ::sigaction(signal, &action, nullptr);
}

void SystemClose::Request()
{
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog != nullptr)
        dialog->reject();
    if (dialog != nullptr || program.TheSession().screens.IsBusy()) {
        again.start();
        return;
    }
    // A message that comes up meanwhile is taken away, too.
    again.start();
    program.CloseForSystem();
}

} // namespace quillmere
