#include "lcd/containerpage.h"

#include <QtGui/QKeyEvent>

namespace panelhost {

namespace {

// The keys of the titles of the containers in the shipped menu.
struct ContainerTitle
{
    const char *tail;
    const char *key;
};

constexpr ContainerTitle containerTitles[] = {
    {"logexport", "RepairExportTitle"},
    {"resetfactory", "RepairResetTitle"},
    {"screenlight", "FCScreenLight"},
    {"screenbadpixel", "FCScreenBadPixel"},
    {"buttonlight", "FCBtnLight"},
    {"buttonfunction", "ButtonFunction"},
    {"knob", "RepairKnob"},
    {"joystick", "RepairJoystick"},
    {"tbar", "RepairTBar"},
    {"net", "FCNet"},
    {"touchscreen", "RepairTouch"},
    {"usb", "FCUSB"},
};

QString tailOf(const QString &containerKey)
{
    return containerKey.section(QLatin1Char('.'), -1);
}

}

ContainerPage::ContainerPage(QWidget *parent) : HostPage("HostBack", parent)
{
    connect(this, &HostPage::controlUsed, this, &ContainerPage::left);
}

void ContainerPage::setContainerKey(const QString &key)
{
    m_containerKey = key;
    translate();
}

void ContainerPage::translate()
{
    HostPage::translate();
    QString title = tailOf(m_containerKey);
    for (const ContainerTitle &known : containerTitles) {
        if (title == QLatin1String(known.tail)) {
            title = text(known.key);
            break;
        }
    }
    setTexts(title, text("HostContainer").arg(m_containerKey));
}

void ContainerPage::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Backspace)
        Q_EMIT left();
    else
        HostPage::keyPressEvent(event);
}

}
