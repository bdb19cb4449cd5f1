#include "panel/knobcluster.h"

#include "panel/look.h"
#include "panel/navbutton.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QGridLayout>

namespace panelhost {

namespace {

struct Way
{
    QString key;
    QString sign;
    int row;
    int column;
};

QList<Way> joystickWays()
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
    column->setSpacing(look::Grid);
    column->addLayout(makeJoystick());
    column->addLayout(makeKnobRow());
}

Control *KnobCluster::listen(Control *control)
{
    connect(control, &Control::actionTriggered, this, &KnobCluster::actionTriggered);
    return control;
}

QLayout *KnobCluster::makeJoystick()
{
    auto *grid = new QGridLayout;
    grid->setSpacing(look::Grid);
    const auto ways = joystickWays();
    for (const Way &way : ways)
        grid->addWidget(listen(new NavButton(way.key, way.sign, this)), way.row, way.column);
    return grid;
}

QLayout *KnobCluster::makeKnobRow()
{
    auto *row = new QHBoxLayout;
    row->setSpacing(2 * look::Grid);
    row->addWidget(listen(new Knob(this)));
    row->addWidget(listen(new NavButton(QStringLiteral("back"), QStringLiteral("BACK"), this)));
    row->addStretch();
    return row;
}

}
