#include "lcd/hostpage.h"

#include "lcd/translate/lcdfwtranslatemanager.h"
#include "veltor/trans/translate.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

namespace panelhost {

HostPage::HostPage(const char *control, QWidget *parent)
    : QWidget(parent), m_control(control), m_button(new QPushButton(text(control), this)), m_title(new QLabel(this)),
      m_text(new QLabel(this))
{
    setAttribute(Qt::WA_StyledBackground);
    setFocusPolicy(Qt::StrongFocus);
    m_title->setObjectName(QStringLiteral("hostPageTitle"));
    m_text->setObjectName(QStringLiteral("hostPageText"));
    m_text->setWordWrap(true);
    m_button->setObjectName(QStringLiteral("hostPageControl"));
    m_button->setFocusPolicy(Qt::NoFocus);
    connect(m_button, &QPushButton::clicked, this, &HostPage::controlUsed);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 24, 32, 24);
    layout->setSpacing(16);
    layout->addWidget(m_title);
    layout->addWidget(m_text);
    layout->addStretch();
    layout->addWidget(m_button, 0, Qt::AlignLeft);
}

void HostPage::translate()
{
    m_button->setText(text(m_control));
}

QString HostPage::text(const char *key)
{
    return veltor::trans::translate(LCDFWTranslateManager::instance()->translator(), QStringLiteral("LCD::HomeWidgets"),
                                    QStringLiteral("Global"), QLatin1String(key));
}

void HostPage::setTexts(const QString &title, const QString &text)
{
    m_title->setText(title);
    m_text->setText(text);
}

}
