#include "app/Program.h"
#include "desktop/DesktopHost.h"
#include "desktop/DesktopPlatform.h"
#include "desktop/ProgramFolder.h"
#include "desktop/SystemClose.h"
#include "edition/Edition.h"

#include <QApplication>
#include <QScreen>

#include <utility>

int main(int argumentCount, char** arguments)
{
    using namespace quillmere;
    QApplication application(argumentCount, arguments);
    QApplication::setApplicationName(QString::fromUtf8(edition::AppTitle.data(), edition::AppTitle.size()));
    QApplication::setQuitOnLastWindowClosed(false);

    DesktopHost host;
    DesktopPlatform platform(host);
    const QSize room = QGuiApplication::primaryScreen()->size();
    ProgramPlaces places =
        FindPlaces(QCoreApplication::applicationDirPath().toStdString(), room.height(), room.width());
    if (argumentCount > 1)
        places.database = arguments[1];
    Program program(platform, &host, std::move(places));
    host.SetSession(&program.TheSession());
    const SystemClose systemClose(program);
    if (!program.Main())
        return 1;
    return program.Ended() ? 0 : QApplication::exec();
}
