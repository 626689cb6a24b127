#include "desktop/ChoicePopup.h"

#include "desktop/Look.h"
#include "review/BoxChoices.h"

#include <QCalendarWidget>
#include <QCoreApplication>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QScreen>
#include <QTextCharFormat>
#include <QVBoxLayout>

#include <algorithm>

namespace quillmere {

namespace {

using review::BoxChoices;
using review::Choice;

QDate DateOf(Day day)
{
    const std::chrono::year_month_day date(day);
    return {static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day()))};
}

Day DayOf(QDate date)
{
    return Day(std::chrono::year(date.year()) / date.month() / date.day());
}

/// In place of what stands in the edit, key by key as the user's own hands would.
void TypeInto(BoxEdit& edit, const QString& text)
{
    edit.setFocus(Qt::PopupFocusReason);
    edit.selectAll();
    for (const QChar character : text)
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent key(type, character.toUpper().unicode(), Qt::NoModifier, QString(character));
            QCoreApplication::sendEvent(&edit, &key);
        }
}

/// Where a popup of that size stands: below the edit, or above it where there is no room.
QPoint PlaceBeside(const QWidget& edit, QSize size)
{
    const QRect room = edit.screen()->availableGeometry();
    QPoint place = edit.mapToGlobal(QPoint(0, edit.height()));
    if (place.y() + size.height() > room.bottom())
        place.setY(edit.mapToGlobal(QPoint()).y() - size.height());
    place.setX(std::clamp(place.x(), room.left(), std::max(room.left(), room.right() - size.width())));
    return place;
}

void OfferLetters(const BoxChoices& choices, const Box& box, BoxEdit& edit)
{
    auto* menu = new QMenu(&edit);
    menu->setObjectName(QStringLiteral("Letters"));
    menu->setAccessibleName(look::Text(box.Spoken()));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const Choice& choice : choices.letters) {
        const QString text = look::Text(std::string(choice.text));
        QAction* action =
            menu->addAction(QStringLiteral("&%1   %2").arg(text, look::Text(std::string(choice.meaning))));
        QObject::connect(action, &QAction::triggered, &edit, [&edit, text] { TypeInto(edit, text); });
        if (edit.text().trimmed().compare(text, Qt::CaseInsensitive) == 0)
            menu->setActiveAction(action);
    }
    if (menu->activeAction() == nullptr)
        menu->setActiveAction(menu->actions().front());
    menu->popup(PlaceBeside(edit, menu->sizeHint()));
}

/// A calendar that closes with the choice of a day.
class DayPopup : public QFrame {
public:
    DayPopup(DayRange days, bool opensAtFirst, const quillmere::Box& box, BoxEdit& edit) : QFrame(&edit, Qt::Popup)
    {
        setObjectName(QStringLiteral("Days"));
        setAttribute(Qt::WA_DeleteOnClose);
        setFrameShape(StyledPanel);
        auto* calendar = new QCalendarWidget(this);
        calendar->setLocale(QLocale(QLocale::English, QLocale::UnitedKingdom));
        calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
        calendar->setDateEditEnabled(false); // digits are typed into the box itself
        calendar->setAccessibleName(look::Text(box.Spoken()));
        for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
            calendar->setWeekdayTextFormat(day, QTextCharFormat());
        calendar->setDateRange(DateOf(days.first), DateOf(days.last));
        const auto held = ReadDate(box.Text());
        const Day opensAt = opensAtFirst ? days.first : days.last;
        calendar->setSelectedDate(DateOf(std::clamp(held.value_or(opensAt), days.first, days.last)));
        const QString words = QStringLiteral("d MMMM yyyy");
        auto* range = new QLabel(QStringLiteral("%1 to %2")
                                     .arg(calendar->locale().toString(DateOf(days.first), words),
                                          calendar->locale().toString(DateOf(days.last), words)),
                                 this);
        range->setAlignment(Qt::AlignCenter);
        auto* column = new QVBoxLayout(this);
        column->setContentsMargins(4, 4, 4, 4);
        column->addWidget(calendar);
        column->addWidget(range);
        const auto choose = [this, &edit](QDate date) {
            if (!isVisible()) // a double click is heard of twice
                return;
            close();
            TypeInto(edit, look::Text(FormatDate(DayOf(date))));
        };
        QObject::connect(calendar, &QCalendarWidget::clicked, this, choose);
        QObject::connect(calendar, &QCalendarWidget::activated, this, choose);
        setFocusProxy(calendar);
        move(PlaceBeside(edit, sizeHint()));
        show();
        calendar->setFocus(Qt::PopupFocusReason);
    }
};

} // namespace

bool AsksForChoices(const QKeyEvent& key)
{
    return (key.key() == Qt::Key_F4 && key.modifiers() == Qt::NoModifier) ||
           (key.key() == Qt::Key_Down && key.modifiers().testFlag(Qt::AltModifier));
}

bool OfferChoices(const Screen& screen, const Box& box, BoxEdit& edit)
{
    const BoxChoices* choices = review::ChoicesOf(screen.Name(), box.Name());
    if (choices == nullptr || edit.isReadOnly())
        return false;
    if (choices->letters.empty())
        new DayPopup(review::DaysOf(*choices, screen, box), choices->opensAtFirst, box, edit);
    else
        OfferLetters(*choices, box, edit);
    return true;
}

} // namespace quillmere
