#include "panel/navigationcontrols.h"

#include "panel/knob.h"
#include "panel/navigationbutton.h"
#include "panel/theme.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QGridLayout>

namespace panelhost {

namespace {

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

NavigationControls::NavigationControls(QWidget *parent) : QWidget(parent)
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(theme::Grid);
    column->addLayout(makeJoystick());
    column->addLayout(makeKnobRow());
}

Control *NavigationControls::forwardActions(Control *control)
{
    connect(control, &Control::actionTriggered, this, &NavigationControls::actionTriggered);
    return control;
}

QLayout *NavigationControls::makeJoystick()
{
    auto *grid = new QGridLayout;
    grid->setSpacing(theme::Grid);
    const auto directions = joystickDirections();
    for (const Direction &direction : directions)
        grid->addWidget(forwardActions(new NavigationButton(direction.key, direction.sign, this)), direction.row,
                        direction.column);
    return grid;
}

QLayout *NavigationControls::makeKnobRow()
{
    auto *row = new QHBoxLayout;
    row->setSpacing(2 * theme::Grid);
    row->addWidget(forwardActions(new Knob(this)));
    row->addWidget(forwardActions(new NavigationButton(QStringLiteral("back"), QStringLiteral("BACK"), this)));
    row->addStretch();
    return row;
}

}
