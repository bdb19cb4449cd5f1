#include "lcd/containerpage.h"

#include <QtGui/QKeyEvent>

namespace panelhost {

namespace {

// The titles and texts of the containers in the shipped menu.
struct ContainerText
{
    const char *tail;
    const char *title;
    const char *text;
};

constexpr ContainerText containerTexts[] = {
    {"logexport", "Log Export", "Copies the device's logs to a USB stick."},
    {"resetfactory", "Factory Reset", "Restores the factory settings."},
    {"screenlight", "Screen Light", "Sets the brightness of one screen by hand."},
    {"screenbadpixel", "Screen Bad Pixel", "Shows one test pattern on one screen."},
    {"buttonlight", "Button Light", "Sets the brightness of the keys by hand."},
    {"buttonfunction", "Button Function", "Shows each key as it is pressed."},
    {"knob", "Factory Knob", "Counts the steps of the knob."},
    {"joystick", "JoyStick", "Shows the position of the joystick."},
    {"tbar", "T-Bar", "Calibrates the T-Bar."},
    {"typec", "TYPE-C", "Shows what is connected to the Type-C ports."},
    {"net", "Factory Net", "Shows the link of each net port."},
};

QString tailOf(const QString &containerKey)
{
    return containerKey.section(QLatin1Char('.'), -1);
}

}

ContainerPage::ContainerPage(QWidget *parent) : HostPage(QStringLiteral("Back"), parent)
{
    connect(this, &HostPage::controlUsed, this, &ContainerPage::left);
}

void ContainerPage::setContainerKey(const QString &key)
{
    m_containerKey = key;
    const QString tail = tailOf(key);
    for (const ContainerText &known : containerTexts) {
        if (tail == QLatin1String(known.tail)) {
            setTexts(QString::fromUtf8(known.title),
                     QStringLiteral("%1\n\nThe device opens its own page \"%2\" here.")
                         .arg(QString::fromUtf8(known.text), key));
            return;
        }
    }
    setTexts(tail, QStringLiteral("The device opens its own page \"%1\" here.").arg(key));
}

void ContainerPage::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Backspace)
        Q_EMIT left();
    else
        HostPage::keyPressEvent(event);
}

}
