#include "lcd/hostpage.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

namespace panelhost {

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

}
