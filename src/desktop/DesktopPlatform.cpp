#include "desktop/DesktopPlatform.h"

#include "desktop/DesktopHost.h"
#include "desktop/Look.h"
#include "desktop/PrinterSetup.h"
#include "edition/Edition.h"
#include "frame/ShellOpen.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFontMetrics>
#include <QGridLayout>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QSysInfo>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <fmt/format.h>
#include <pwd.h>
#include <unistd.h>

namespace quillmere {

namespace {

/// Results of opening a file with the desktop's viewer, as `ShellErrorText` knows them.
constexpr int Opened = 33;
constexpr int FileNotFound = 2;
constexpr int InvalidPath = 3;
constexpr int AccessRefused = 5;
constexpr int UnknownProgram = 14;

QMessageBox::Icon IconOf(Icon icon)
{
    switch (icon) {
    case Icon::Information:
        return QMessageBox::Information;
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::Exclamation:
        return QMessageBox::Warning;
    case Icon::Critical:
        return QMessageBox::Critical;
    case Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

std::tm LocalTime()
{
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm local{};
    localtime_r(&now, &local);
    return local;
}

int WidestLine(const QString& text, const QFont& font)
{
    int widest = 0;
    for (const QString& line : text.split('\n'))
        widest = std::max(widest, QFontMetrics(font).horizontalAdvance(line));
    return widest;
}

/// Makes a message box so wide that its title stands whole beside the window's own buttons, and that a line which the
/// text breaks by itself is not broken again.
void GiveRoom(QMessageBox& box)
{
    constexpr int TitleButtons = 200, Margins = 60, ScreenEdge = 40;
    QFont titleFont = QApplication::font("QMdiSubWindowTitleBar");
    titleFont.setBold(true);
    const int icon =
        box.icon() == QMessageBox::NoIcon ? 0 : box.style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, &box);
    const int wanted = std::max(WidestLine(box.windowTitle(), titleFont) + TitleButtons,
                                WidestLine(box.text(), box.font()) + icon + Margins);
    const int room = box.screen()->availableGeometry().width() - ScreenEdge;
    auto* grid = qobject_cast<QGridLayout*>(box.layout());
    grid->addItem(new QSpacerItem(std::min(wanted, room), 0), grid->rowCount(), 0, 1, grid->columnCount());
}

} // namespace

DesktopPlatform::DesktopPlatform(DesktopHost& host) : host(host), printers([this] { YieldToMessages(); })
{
}

Answer DesktopPlatform::ShowMessage(const Message& message)
{
    const bool wasBusy = busy;
    SetBusyPointer(false);
    // The window below may be closed while the box is up, at the system's wish, and takes the box along.
    const QPointer<QMessageBox> box =
        new QMessageBox(IconOf(message.icon), look::Text(message.title), look::Text(message.text),
                        QMessageBox::NoButton, host.FrontWindow());
    box->setFont(host.Letters());
    box->setTextFormat(Qt::PlainText);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    if (message.buttons == Buttons::YesNo) {
        box->setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box->setDefaultButton(message.defaultAnswer == Answer::No ? QMessageBox::No : QMessageBox::Yes);
        box->setEscapeButton(QMessageBox::No);
    } else {
        box->setStandardButtons(QMessageBox::Ok);
    }
    if (message.mayLeave) {
        // Not shown: the box has the buttons that it names, and Escape presses this one.
        QPushButton* const leave = box->addButton(QMessageBox::Cancel);
        leave->hide();
        box->setEscapeButton(leave);
    }
    GiveRoom(*box);
    const int pressed = box->exec();
    delete box;
    SetBusyPointer(wasBusy);
    if (message.mayLeave && pressed == QMessageBox::Cancel)
        return Answer::Cancel;
    if (message.buttons == Buttons::Ok)
        return Answer::Ok;
    return pressed == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

void DesktopPlatform::Beep()
{
    QApplication::beep();
}

std::optional<std::string> DesktopPlatform::AskSaveFile(const SaveFileQuestion& question)
{
    QFileDialog dialog(host.FrontWindow(), look::Text(question.title));
    dialog.setFont(host.Letters());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilter(look::Text(question.filterName + " (" + question.filterPattern + ")"));
    dialog.setDefaultSuffix(look::Text(question.defaultExtension));
    // The program asks for itself whether a file is to be replaced.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.selectFile(look::Text(question.proposedPath));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().front().toStdString();
}

std::optional<std::string> DesktopPlatform::AskFolder(const FolderQuestion& question)
{
    QFileDialog dialog(host.FrontWindow(), look::Text(question.title), look::Text(question.proposedPath));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().front().toStdString();
}

std::optional<std::string> DesktopPlatform::AskOpenFile(const OpenFileQuestion& question)
{
    QFileDialog dialog(host.FrontWindow(), look::Text(question.title));
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilters(
        {look::Text(question.filterName + " (" + question.filterPattern + ")"), QFileDialog::tr("All files (*)")});
    if (!question.folder.empty())
        dialog.setDirectory(look::Text(question.folder));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().front().toStdString();
}

bool DesktopPlatform::ShowPrinterSetup()
{
    printers.Refresh();
    const auto openPage = [this](const std::string& printer) {
        if (!QDesktopServices::openUrl(QUrl(look::Text(CupsPrinters::PageOf(printer)))))
            ShowMessage({.title = std::string(edition::AppTitle), .text = ShellErrorMessage(UnknownProgram)});
    };
    PrinterSetup dialog(printers.Printers(), openPage, host.Letters(), host.FrontWindow());
    if (dialog.exec() != QDialog::Accepted)
        return false;
    printers.Prefer(dialog.Chosen());
    return true;
}

std::vector<std::string> DesktopPlatform::Printers()
{
    return printers.Names();
}

PrintOutcome DesktopPlatform::Print(const PrintRequest& request)
{
    return printers.Print(request);
}

SheetEdge DesktopPlatform::EdgeOf(const std::string& printer)
{
    return printers.EdgeOf(printer);
}

QUrl AddressOf(const std::filesystem::path& file)
{
    const QByteArray name = QByteArray::fromStdString(std::filesystem::absolute(file).string());
    return QUrl::fromEncoded("file://" + name.toPercentEncoding("/"));
}

int DesktopPlatform::OpenWithDesktop(const std::filesystem::path& file)
{
    std::error_code failure;
    const bool exists = std::filesystem::exists(file, failure);
    if (failure == std::errc::permission_denied)
        return AccessRefused;
    if (failure)
        return InvalidPath;
    if (!exists)
        return FileNotFound;
    return QDesktopServices::openUrl(AddressOf(file)) ? Opened : UnknownProgram;
}

Day DesktopPlatform::Today()
{
    const std::tm local = LocalTime();
    return std::chrono::sys_days(std::chrono::year(local.tm_year + 1900) / (local.tm_mon + 1) / local.tm_mday);
}

std::string DesktopPlatform::TimeOfDay()
{
    const std::tm local = LocalTime();
    return fmt::format("{:02}:{:02}:{:02}", local.tm_hour, local.tm_min, local.tm_sec);
}

void DesktopPlatform::After(std::chrono::milliseconds wait, std::function<void()> work)
{
    QTimer::singleShot(wait, std::move(work));
}

void DesktopPlatform::SetBusyPointer(bool newBusy)
{
    if (busy == newBusy)
        return;
    busy = newBusy;
    if (busy)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void DesktopPlatform::ShowProgress(int done, int total)
{
    host.ShowProgress(done, total);
}

void DesktopPlatform::YieldToMessages()
{
    // Repainting only: what the user does meanwhile waits until the work is done.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void DesktopPlatform::CopyText(const std::string& text)
{
    QGuiApplication::clipboard()->setText(look::Text(text));
}

std::vector<LibraryInUse> DesktopLibraries()
{
    return {{"Qt", qVersion()}};
}

std::string DesktopPlatform::UserName()
{
    const passwd* account = getpwuid(getuid());
    if (account == nullptr || account->pw_gecos == nullptr)
        return {};
    const std::string full(account->pw_gecos);
    return full.substr(0, full.find(','));
}

std::string DesktopPlatform::DeskName()
{
    const passwd* account = getpwuid(getuid());
    const std::string user =
        account == nullptr || account->pw_name == nullptr ? std::to_string(getuid()) : account->pw_name;
    return user + "@" + QSysInfo::machineHostName().toStdString();
}

} // namespace quillmere
