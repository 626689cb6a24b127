#include "desktop/Style.h"

#include <QFontInfo>
#include <QPainter>
#include <QStyleOption>
#include <QWidget>

#include <algorithm>

namespace quillmere::look {

namespace {

/// The square or circle of a mark.
QRectF Outlined(const QStyleOption& option, QPainter& painter)
{
    const bool usable = option.state.testFlag(QStyle::State_Enabled);
    const bool focused = option.state.testFlag(QStyle::State_HasFocus);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(
        QPen(option.palette.color(focused ? QPalette::Link : QPalette::PlaceholderText), usable ? 1.2 : 0.8));
    painter.setBrush(
        option.palette.color(option.state.testFlag(QStyle::State_Sunken) ? QPalette::Mid : QPalette::Base));
    const qreal side = std::min(option.rect.width(), option.rect.height()) - 1.0;
    QRectF place(0, 0, side, side);
    place.moveCenter(QRectF(option.rect).center());
    return place;
}

} // namespace

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    const int usual = QProxyStyle::pixelMetric(metric, option, widget);
    switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight: {
        constexpr int UsualLetters = 13;
        return widget == nullptr ? usual : usual * QFontInfo(widget->font()).pixelSize() / UsualLetters;
    }
    default:
        return usual;
    }
}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const
{
    const bool isTick = element == PE_IndicatorCheckBox;
    if (!isTick && element != PE_IndicatorRadioButton)
        return QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool set = option->state.testFlag(State_On);
    const QColor ink = option->palette.color(QPalette::Text);
    painter->save();
    const QRectF place = Outlined(*option, *painter);
    if (isTick) {
        painter->drawRoundedRect(place, 2, 2);
        painter->setPen(QPen(ink, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const auto at = [&](qreal x, qreal y) { return place.topLeft() + QPointF(x, y) * place.width(); };
        if (set)
            painter->drawPolyline(QPolygonF({at(0.24, 0.52), at(0.42, 0.72), at(0.78, 0.28)}));
    } else {
        painter->drawEllipse(place);
        painter->setPen(Qt::NoPen);
        painter->setBrush(ink);
        if (set)
            painter->drawEllipse(place.center(), place.width() / 4, place.width() / 4);
    }
    painter->restore();
}

} // namespace quillmere::look
