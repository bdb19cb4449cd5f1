#include "panel/navigationcontrols.h"

#include "panel/knob.h"
#include "panel/navigationbutton.h"
#include "panel/theme.h"

namespace panelhost {

using theme::Grid;

namespace {

constexpr QSize DirectionPitch(7 * Grid, 6 * Grid); ///< from one direction of the joystick to the next

struct Direction
{
    QString key;
    QString sign;
    int row;
    int column;
};

QList<Direction> joystickDirections()
{
    return {
        {QStringLiteral("up"), QStringLiteral("▲"), 0, 1},     {QStringLiteral("left"), QStringLiteral("◀"), 1, 0},
        {QStringLiteral("enter"), QStringLiteral("OK"), 1, 1}, {QStringLiteral("right"), QStringLiteral("▶"), 1, 2},
        {QStringLiteral("down"), QStringLiteral("▼"), 2, 1},
    };
}

}

NavigationControls::NavigationControls(QWidget *parent) : ScaledWidget(parent)
{
    const auto directions = joystickDirections();
    for (const Direction &direction : directions)
        add(new NavigationButton(direction.key, direction.sign, this),
            {direction.column * DirectionPitch.width(), direction.row * DirectionPitch.height()});
    const int top = 3 * DirectionPitch.height() + Grid;
    auto *knob = new Knob(this);
    auto *back = new NavigationButton(QStringLiteral("back"), QStringLiteral("BACK"), this);
    add(knob, {0, top});
    add(back, {2 * DirectionPitch.width(), top + (knob->naturalSize().height() - back->naturalSize().height()) / 2});
    resize(sizeHint());
}

void NavigationControls::add(Control *control, const QPoint &topLeft)
{
    connect(control, &Control::actionTriggered, this, &NavigationControls::actionTriggered);
    m_places.append({control, topLeft});
}

QSize NavigationControls::naturalSize() const
{
    QRect all;
    for (const Place &place : m_places)
        all |= QRect(place.topLeft, place.control->naturalSize());
    return all.size();
}

void NavigationControls::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    for (const Place &place : qAsConst(m_places)) {
        place.control->setScale(scale());
        place.control->setGeometry(scaled({place.topLeft, place.control->naturalSize()}));
    }
}

}
