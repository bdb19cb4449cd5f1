#include "window/unitbar.h"

#include "panel/theme.h"
#include "panel/translated.h"
#include "window/elidedlabel.h"
#include "window/placeholder.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QStyle>

namespace panelhost {

namespace {

constexpr int FieldWidth = 45 * theme::Grid;
constexpr int MaxInput = 1000; // more than a serial number may have, so that a longer one is seen to be wrong

QLabel *makeLabel(const QString &name, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QString kindText(const Run &run)
{
    switch (run.kind) {
    case RunKind::Machine:
        return UnitBar::tr("Complete machine test");
    case RunKind::Aging:
        return UnitBar::tr("Aging test");
    case RunKind::Repair:
        break;
    }
    return run.phases.isEmpty() ? UnitBar::tr("Repair page")
                                : UnitBar::tr("Repair page: %1").arg(run.phases.first().name);
}

QString detailOf(const Run &run)
{
    const QString phase = run.kind == RunKind::Machine ? run.failedPhase() : QString();
    return phase.isEmpty() ? kindText(run) : QStringLiteral("%1: %2").arg(kindText(run), phase);
}

// The style sheet has a rule for each value of a property; Qt applies it only when the style is set again.
void setState(QWidget *widget, const QString &state)
{
    widget->setProperty("state", state);
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
}

}

UnitBar::UnitBar(const UnitPattern &pattern, QWidget *parent)
    : QWidget(parent), m_pattern(pattern), m_field(new QWidget(this)),
      m_headline(makeLabel(QStringLiteral("verdict-headline"), m_field)),
      m_detail(makeLabel(QStringLiteral("verdict-detail"), m_field)), m_input(new QLineEdit(this)),
      m_message(new ElidedLabel(QStringLiteral("unit-message"), this))
{
    setObjectName(QStringLiteral("unit-bar"));
    setAttribute(Qt::WA_StyledBackground);
    m_field->setObjectName(QStringLiteral("verdict"));
    m_field->setAttribute(Qt::WA_StyledBackground);
    m_field->setFixedWidth(FieldWidth);
    auto *lines = new QVBoxLayout(m_field);
    lines->setContentsMargins(2 * theme::Grid, theme::Grid / 2, 2 * theme::Grid, theme::Grid / 2);
    lines->setSpacing(0);
    lines->addWidget(m_headline);
    lines->addWidget(m_detail);
    m_input->setObjectName(QStringLiteral("unit-input"));
    m_input->setMaxLength(MaxInput);
    dimPlaceholder(*m_input);
    m_input->setFocusPolicy(Qt::ClickFocus);
    auto *column = new QVBoxLayout;
    column->setSpacing(theme::Grid / 2);
    column->addWidget(m_input);
    column->addWidget(m_message);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(theme::Grid, theme::Grid / 2, theme::Grid, theme::Grid / 2);
    row->setSpacing(2 * theme::Grid);
    row->addWidget(m_field);
    row->addLayout(column, 1);
    theme::applyTo(this);
    keepTranslated(this, [this] { setTexts(); });
    QCoreApplication::instance()->installEventFilter(this);
}

void UnitBar::setUnit(const QString &unit)
{
    m_unit = unit;
    m_verdict.reset();
    m_input->clear();
    showMessage({}, false);
}

void UnitBar::setVerdict(const Run &run)
{
    if (run.session.unit != m_unit || run.outcome == RunOutcome::Aborted)
        return;
    m_verdict = run;
    setTexts();
}

void UnitBar::setTexts()
{
    m_input->setPlaceholderText(m_unit.isEmpty() ? tr("Serial number of the unit")
                                                 : tr("Serial number of the next unit"));
    const QString message = m_messageText ? m_messageText() : QString();
    m_message->setText(message);
    m_message->setToolTip(message);
    if (m_verdict) {
        const QString word = m_verdict->outcome == RunOutcome::Passed ? tr("PASSED") : tr("FAILED");
        showField(toText(m_verdict->outcome), QStringLiteral("%1  %2").arg(word, m_unit), detailOf(*m_verdict));
    } else {
        showField(QStringLiteral("none"), m_unit.isEmpty() ? tr("No unit") : m_unit,
                  m_unit.isEmpty() ? tr("Scan a serial number") : tr("No verdict yet"));
    }
}

void UnitBar::setWarning(const std::function<QString()> &text)
{
    showMessage(text, false);
}

void UnitBar::setWaiting(bool isWaiting)
{
    m_isWaiting = isWaiting;
    if (isWaiting)
        m_input->setFocus(Qt::OtherFocusReason);
}

void UnitBar::showField(const QString &state, const QString &headline, const QString &detail)
{
    const int room = FieldWidth - 4 * theme::Grid;
    for (QWidget *part : {m_field, static_cast<QWidget *>(m_headline), static_cast<QWidget *>(m_detail)})
        setState(part, state);
    m_headline->ensurePolished();
    m_headline->setText(m_headline->fontMetrics().elidedText(headline, Qt::ElideRight, room));
    m_headline->setToolTip(headline);
    m_detail->setText(detail);
}

void UnitBar::showMessage(const std::function<QString()> &text, bool isError)
{
    m_messageText = text;
    setTexts();
    setState(m_message, isError ? QStringLiteral("error") : QStringLiteral("warning"));
}

void UnitBar::submit()
{
    const QString unit = m_input->text().trimmed();
    if (!m_pattern.problem(unit).isEmpty()) {
        showMessage([this, unit] { return m_pattern.problem(unit); }, true);
        m_input->selectAll();
        return;
    }
    Q_EMIT unitEntered(unit);
    Q_EMIT finished();
}

// The keys that end the input. Enter must not reach the LCD as well.
bool UnitBar::handleFieldKey(int key)
{
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        submit();
        return true;
    }
    if (key == Qt::Key_Escape && !m_isWaiting) {
        m_input->clear();
        Q_EMIT finished();
        return true;
    }
    return m_isWaiting && (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_Escape);
}

bool UnitBar::isForStrip(const QWidget *widget) const
{
    const bool isOther = qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QMenuBar *>(widget);
    return widget && widget->window() == window() && !isOther;
}

// Is called before the filter of the LCD's input, which was installed earlier. A scanner types while the LCD has the
// focus, too, and the LCD has no use for characters.
bool UnitBar::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto *key = static_cast<QKeyEvent *>(event);
    if (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))
        return false;
    if (watched == m_input)
        return handleFieldKey(key->key());
    if (!event->spontaneous() || !isForStrip(qobject_cast<QWidget *>(watched)))
        return false;
    const QString text = key->text();
    const bool isCharacter = !text.isEmpty() && text.at(0).isPrint();
    if (!isCharacter && !m_isWaiting)
        return false;
    m_input->setFocus(Qt::OtherFocusReason);
    QCoreApplication::sendEvent(m_input, event);
    return true;
}

}
