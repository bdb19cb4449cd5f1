#include "panel/knobcluster.h"

#include "panel/navbutton.h"
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

KnobCluster::KnobCluster(QWidget *parent) : QWidget(parent)
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(theme::Grid);
    column->addLayout(makeJoystick());
    column->addLayout(makeKnobRow());
}

Control *KnobCluster::forwardActions(Control *control)
{
    connect(control, &Control::actionTriggered, this, &KnobCluster::actionTriggered);
    return control;
}

QLayout *KnobCluster::makeJoystick()
{
    auto *grid = new QGridLayout;
    grid->setSpacing(theme::Grid);
    const auto directions = joystickDirections();
    for (const Direction &direction : directions)
        grid->addWidget(forwardActions(new NavButton(direction.key, direction.sign, this)), direction.row,
                        direction.column);
    return grid;
}

QLayout *KnobCluster::makeKnobRow()
{
    auto *row = new QHBoxLayout;
    row->setSpacing(2 * theme::Grid);
    row->addWidget(forwardActions(new Knob(this)));
    row->addWidget(forwardActions(new NavButton(QStringLiteral("back"), QStringLiteral("BACK"), this)));
    row->addStretch();
    return row;
}

}
