// The least that a program with a main window can be: menu titles and a status bar around nothing; with the word
// "blank" not even these, so that no letter is drawn and no font loaded.
#include "FirstPaint.h"

#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>

#include <string_view>

int main(int argumentCount, char** arguments)
{
    QApplication application(argumentCount, arguments);
    quillmere::bench::FirstPaint firstPaint;
    application.installEventFilter(&firstPaint);
    QMainWindow window;
    if (std::string_view(arguments[1]) != "blank") {
        for (const char* title : {"File", "Folder", "View", "Settings"})
            window.menuBar()->addMenu(title);
        window.statusBar()->addWidget(new QLabel("1.0.0"));
    }
    window.setWindowState(Qt::WindowMaximized);
    window.show();
    return QApplication::exec();
}
