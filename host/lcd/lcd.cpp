#include "lcd/lcd.h"

#include "lcd/containerpage.h"
#include "lcd/homepage.h"

#include <QtCore/QFile>

// The macro for resources of a static library must be used outside of any namespace.
static void initLcdResources()
{
    Q_INIT_RESOURCE(lcd);
}

namespace panelhost {

namespace {

QString styleSheetText()
{
    initLcdResources();
    QFile file(QStringLiteral(":/lcd/lcd.qss"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}

Lcd::Lcd(const QSize &size) : m_container(new ContainerPage(this)), m_home(new HomePage(this))
{
    setObjectName(QStringLiteral("lcd"));
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(styleSheetText());
    setFixedSize(size);
    connect(m_container, &ContainerPage::left, this, &Lcd::containerLeft);
    connect(m_home, &HomePage::factoryModeWanted, this, &Lcd::factoryModeWanted);
    m_container->hide();
    m_home->hide();
}

// The widgets of components are deleted by their libraries, not by their parent.
Lcd::~Lcd()
{
    if (m_component)
        m_component->setParent(nullptr);
    if (m_repairMode)
        m_repairMode->setParent(nullptr);
}

void Lcd::setComponent(QWidget *component)
{
    m_component = component;
    embed(component);
}

void Lcd::setRepairMode(QWidget *repairMode)
{
    m_repairMode = repairMode;
    embed(repairMode);
}

void Lcd::embed(QWidget *widget)
{
    widget->setParent(this);
    widget->setGeometry(rect());
}

void Lcd::showComponent()
{
    showPage(m_component);
    // Restores the focus in the component.
    if (m_component && m_component->focusWidget())
        m_component->focusWidget()->setFocus(Qt::OtherFocusReason);
}

void Lcd::showRepairMode()
{
    showPage(m_repairMode);
}

void Lcd::showContainer(const QString &containerKey)
{
    m_container->setContainerKey(containerKey);
    showPage(m_container);
    m_container->setFocus(Qt::OtherFocusReason);
}

void Lcd::showHome()
{
    showPage(m_home);
    m_home->setFocus(Qt::OtherFocusReason);
}

void Lcd::translate()
{
    m_container->translate();
    m_home->translate();
}

// Shows the new page before it hides the others, so that no other page gets the focus in between.
void Lcd::showPage(QWidget *page)
{
    if (page) {
        page->setGeometry(rect());
        page->show();
        page->raise();
    }
    for (QWidget *other : pages()) {
        if (other && other != page)
            other->hide();
    }
}

QList<QWidget *> Lcd::pages() const
{
    return {m_component, m_repairMode, m_container, m_home};
}

void Lcd::resizeEvent(QResizeEvent *)
{
    for (QWidget *page : pages()) {
        if (page)
            page->setGeometry(rect());
    }
}

}
