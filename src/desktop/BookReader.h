#pragma once

#include <QTextBrowser>

#include <functional>

namespace quillmere {

/// A text that is read, with its pictures no wider than itself and its links told by their number.
class BookReader : public QTextBrowser {
public:
    BookReader(std::function<void(int)> follow, QWidget* parent);

    void Show(const QString& html);

protected:
    QVariant loadResource(int type, const QUrl& name) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QString shown; ///< not laid out again while it stays the same
    int shownWide = 0;
};

} // namespace quillmere
