#include "desktop/BookReader.h"

#include <QImage>
#include <QStyle>

#include <algorithm>
#include <cmath>
#include <utility>

namespace quillmere {

BookReader::BookReader(std::function<void(int)> follow, QWidget* parent) : QTextBrowser(parent)
{
    setOpenLinks(false);
    document()->setDefaultStyleSheet("h1 { font-size: x-large; } h2 { font-size: large; } h3 { font-size: medium; } "
                                     "table { border-collapse: collapse; }");
    connect(this, &QTextBrowser::anchorClicked, this, [follow = std::move(follow)](const QUrl& link) {
        bool isNumber = false;
        if (const int number = link.toString().toInt(&isNumber); isNumber)
            follow(number);
    });
}

void BookReader::Show(const QString& html)
{
    if (shown == html)
        return;
    shown = html;
    shownWide = width();
    setHtml(html);
}

void BookReader::resizeEvent(QResizeEvent* event)
{
    QTextBrowser::resizeEvent(event);
    // The pictures are made for a width.
    if (std::exchange(shownWide, width()) != width())
        setHtml(shown);
}

QVariant BookReader::loadResource(int type, const QUrl& name)
{
    if (type != QTextDocument::ImageResource)
        return {};
    QImage image(name.path(QUrl::FullyDecoded));
    if (image.isNull())
        return {};
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    const double room = (width() - bar - 2 * (frameWidth() + document()->documentMargin())) * devicePixelRatioF();
    const int width = static_cast<int>(std::lround(std::min(image.width() * devicePixelRatioF(), room)));
    image = image.scaledToWidth(std::max(1, width), Qt::SmoothTransformation);
    image.setDevicePixelRatio(devicePixelRatioF());
    return image;
}

} // namespace quillmere
