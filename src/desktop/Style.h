#pragma once

#include <QProxyStyle>

namespace quillmere::look {

/// The toolkit's own style, but for the marks of ticks and options: their outlines stand out from any ground in either
/// shade, and they are as large as the words beside them.
class Style : public QProxyStyle {
public:
    Style() : QProxyStyle(QStringLiteral("Fusion")) {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
};

} // namespace quillmere::look
