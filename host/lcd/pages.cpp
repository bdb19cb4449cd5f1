#include "lcd/pages.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

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
    {"resetfactory", "Factory Reset", "Puts all settings back to how they left the factory."},
    {"screenlight", "Screen Light", "Sets the brightness of one screen by hand."},
    {"screenbadpixel", "Screen Bad Pixel", "Shows one test pattern on one screen."},
    {"buttonlight", "Button Light", "Sets the brightness of the keys by hand."},
    {"buttonfunction", "Button Function", "Shows each key as it is pressed."},
    {"knob", "Factory Knob", "Counts the steps of the knob."},
    {"joystick", "JoyStick", "Shows where the joystick stands."},
    {"tbar", "T-Bar", "Calibrates the T-Bar."},
    {"typec", "TYPE-C", "Shows what is connected to the Type-C ports."},
    {"net", "Factory Net", "Shows the link of each net port."},
};

QString tailOf(const QString &containerKey)
{
    return containerKey.section(QLatin1Char('.'), -1);
}

}

HostPage::HostPage(const QString &control, QWidget *parent)
    : QWidget(parent), m_title(new QLabel(this)), m_text(new QLabel(this))
{
    setAttribute(Qt::WA_StyledBackground);
    setFocusPolicy(Qt::StrongFocus);
    m_title->setObjectName(QStringLiteral("hostPageTitle"));
    m_text->setObjectName(QStringLiteral("hostPageText"));
    m_text->setWordWrap(true);
    auto *button = new QPushButton(control, this);
    button->setObjectName(QStringLiteral("hostPageControl"));
    button->setFocusPolicy(Qt::NoFocus);
    connect(button, &QPushButton::clicked, this, &HostPage::controlUsed);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 24, 32, 24);
    layout->setSpacing(16);
    layout->addWidget(m_title);
    layout->addWidget(m_text);
    layout->addStretch();
    layout->addWidget(button, 0, Qt::AlignLeft);
}

void HostPage::setTexts(const QString &title, const QString &text)
{
    m_title->setText(title);
    m_text->setText(text);
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

HomePage::HomePage(QWidget *parent) : HostPage(QStringLiteral("Factory mode"), parent)
{
    setTexts(QStringLiteral("Ready"), QStringLiteral("Press Enter to go to factory mode."));
    connect(this, &HostPage::controlUsed, this, &HomePage::factoryModeWanted);
}

void HomePage::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Q_EMIT factoryModeWanted();
    else
        HostPage::keyPressEvent(event);
}

}
