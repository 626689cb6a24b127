// The program as it starts, in the program folder named on the command line, up to its first window.
#include "FirstPaint.h"
#include "app/Program.h"
#include "desktop/DesktopHost.h"
#include "desktop/DesktopPlatform.h"

int main(int argumentCount, char** arguments)
{
    using namespace quillmere;
    QApplication application(argumentCount, arguments);
    bench::FirstPaint firstPaint;
    application.installEventFilter(&firstPaint);
    DesktopHost host;
    DesktopPlatform platform(host);
    Program program(platform, &host, {.programFolder = arguments[1], .resourceFolder = QUILLMERE_RESOURCES});
    host.SetSession(&program.TheSession());
    if (!program.Main())
        return 1;
    return QApplication::exec();
}
