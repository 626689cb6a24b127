#pragma once

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

namespace quillmere::bench {

/// Ends the process once the first window has been painted.
class FirstPaint : public QObject {
protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && watched->isWidgetType())
            QTimer::singleShot(0, qApp, [] { QApplication::exit(0); });
        return false;
    }
};

} // namespace quillmere::bench
