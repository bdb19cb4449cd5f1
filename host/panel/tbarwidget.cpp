#include "panel/tbarwidget.h"

#include "panel/theme.h"
#include "panel/translated.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

#include <cmath>

namespace panelhost {

using theme::Grid;

constexpr double Step = 0.05; ///< of the wheel and the arrow keys

TBarWidget::TBarWidget(QWidget *parent) : Control(QStringLiteral("tbar"), parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    keepTranslated(this, [this] {
        setDescription(tr("T-Bar"));
        setHelp(tr("Drag, wheel or arrow keys: move. Home: bottom. End: top."));
        showStateHelp();
    });
}

QSize TBarWidget::naturalSize() const
{
    return {16 * Grid, 28 * Grid};
}

void TBarWidget::setState(const TBarState &bar)
{
    if (bar == m_bar)
        return;
    m_bar = bar;
    showStateHelp();
    announceState();
    update();
}

QString TBarWidget::stateText() const
{
    QStringList parts{tr("%1 %").arg(qRound(m_bar.position * 100))};
    if (!m_bar.failure.isEmpty())
        parts << m_bar.failure;
    if (!faults().isEmpty())
        parts << tr("fault");
    return parts.join(QStringLiteral(", "));
}

bool TBarWidget::handleKey(int key)
{
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Right:
        moveTo(m_bar.position + Step);
        return true;
    case Qt::Key_Down:
    case Qt::Key_Left:
        moveTo(m_bar.position - Step);
        return true;
    case Qt::Key_Home:
        moveTo(0);
        return true;
    case Qt::Key_End:
        moveTo(1);
        return true;
    }
    return false;
}

QRect TBarWidget::track() const
{
    const int side = area().width() / 2 - Grid / 2;
    return area().adjusted(side, 4 * Grid, -side, -10 * Grid);
}

int TBarWidget::yOf(double position) const
{
    return track().bottom() - qRound(position * (track().height() - 1));
}

void TBarWidget::drawScale(QPainter &painter) const
{
    theme::drawRecess(painter, track().adjusted(0, -Grid, 0, Grid), theme::Black);
    painter.setPen(QColor(theme::DimTextColor));
    painter.setRenderHint(QPainter::Antialiasing, false);
    const int middle = area().width() / 2;
    for (int tick = 0; tick <= 10; ++tick) {
        const int y = yOf(tick / 10.0);
        const int length = tick % 5 == 0 ? 2 * Grid : Grid;
        painter.drawLine(middle - 3 * Grid - length, y, middle - 3 * Grid, y);
        painter.drawLine(middle + 3 * Grid, y, middle + 3 * Grid + length, y);
    }
}

// Draws the part of the track where the bar must be for the next calibration step.
void TBarWidget::drawTarget(QPainter &painter) const
{
    if (!m_bar.target)
        return;
    const bool isTop = *m_bar.target == TBarEnd::Top;
    const int top = yOf(isTop ? 1 : m_bar.tolerance) - Grid;
    const int bottom = yOf(isTop ? 1 - m_bar.tolerance : 0) + Grid;
    const QRect stretch(track().left() - 2 * Grid, top, track().width() + 4 * Grid, bottom - top);
    painter.fillRect(stretch, QColor(m_bar.isAt(*m_bar.target) ? theme::Green : theme::Amber));
}

void TBarWidget::drawSlider(QPainter &painter, const QPoint &center) const
{
    const QRect cap(center.x() - 2 * Grid, center.y() - 2 * Grid, 4 * Grid, 4 * Grid);
    theme::drawCap(painter, cap, QColor(theme::CapEdge), false);
    painter.fillRect(QRect(cap.left() + 4, center.y() - 1, cap.width() - 8, 2), QColor(theme::Accent));
}

void TBarWidget::drawFader(QPainter &painter, const QPoint &center) const
{
    const QRect arm(center.x() - Grid / 2, center.y(), Grid, 2 * Grid);
    const QRect lever(center.x() - 6 * Grid, center.y() - Grid, 12 * Grid, 2 * Grid);
    theme::drawCap(painter, arm, QColor(theme::Metal), false);
    theme::drawCap(painter, lever, QColor(theme::CapEdge), false);
    painter.fillRect(QRect(lever.left() + 8, center.y() - 1, lever.width() - 16, 2), QColor(theme::Accent));
}

// The names of the calibration steps.
[[maybe_unused]] static const char *const Steps[] = {
    QT_TRANSLATE_NOOP("panelhost::TBarWidget", "begin"), QT_TRANSLATE_NOOP("panelhost::TBarWidget", "top"),
    QT_TRANSLATE_NOOP("panelhost::TBarWidget", "bottom"), QT_TRANSLATE_NOOP("panelhost::TBarWidget", "end")};

static QString hintOf(const TBarState &bar)
{
    if (!bar.step.isEmpty())
        return TBarWidget::tr(bar.step.toUtf8().constData());
    if (!bar.target)
        return TBarWidget::tr("ready");
    if (*bar.target == TBarEnd::Top)
        return bar.isAt(TBarEnd::Top) ? TBarWidget::tr("at the top") : TBarWidget::tr("move to the top");
    return bar.isAt(TBarEnd::Bottom) ? TBarWidget::tr("at the bottom") : TBarWidget::tr("move to the bottom");
}

// The text below the bar as a whole: a small panel elides it.
void TBarWidget::showStateHelp()
{
    QStringList lines{m_bar.failure, hintOf(m_bar)};
    lines.removeAll(QString());
    setStateHelp(lines.join(QLatin1Char('\n')));
}

// From top to bottom: the position, what to do next, and what has failed.
void TBarWidget::drawFoot(QPainter &painter) const
{
    const QRect line(0, area().height() - 7 * Grid, area().width(), 2 * Grid);
    theme::drawCaption(painter, line, Qt::AlignCenter, QStringLiteral("%1 %").arg(qRound(m_bar.position * 100)));
    const bool isReady = m_bar.step.isEmpty() && !m_bar.target;
    const bool isInPlace = m_bar.step.isEmpty() && m_bar.target && m_bar.isAt(*m_bar.target);
    const QRgb hintColor = isReady ? theme::DimTextColor : isInPlace ? theme::Green : theme::Amber;
    theme::drawCaption(painter, line.translated(0, 2 * Grid), Qt::AlignCenter, hintOf(m_bar), hintColor);
    const QString failure = m_bar.failure.section(QLatin1Char(':'), 0, 0);
    theme::drawCaption(painter, line.translated(0, 4 * Grid), Qt::AlignCenter, failure, theme::Red);
}

void TBarWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.scale(scale(), scale());
    const bool isFader = m_bar.type == TBarType::Fader;
    const QString kind = isFader ? tr("T-BAR FADER") : tr("T-BAR SLIDER");
    theme::drawCaption(painter, QRect(0, 0, area().width(), 2 * Grid), Qt::AlignCenter, kind);
    drawScale(painter);
    drawTarget(painter);
    const QPoint center(area().width() / 2, yOf(m_bar.position));
    isFader ? drawFader(painter, center) : drawSlider(painter, center);
    drawFoot(painter);
}

void TBarWidget::moveTo(double position)
{
    const double rounded = std::round(qBound(0.0, position, 1.0) * 100) / 100;
    if (rounded != m_bar.position)
        Q_EMIT actionTriggered({OperatorAction::Kind::TBar, {{QStringLiteral("position"), rounded}}});
}

void TBarWidget::mousePressEvent(QMouseEvent *event)
{
    mouseMoveEvent(event);
}

void TBarWidget::mouseMoveEvent(QMouseEvent *event)
{
    const bool isDrag = (event->buttons() & Qt::LeftButton) != 0;
    if (isDrag && track().height() > 1)
        moveTo((track().bottom() - unscaled(event->localPos()).y()) / (track().height() - 1));
}

void TBarWidget::wheelEvent(QWheelEvent *event)
{
    moveTo(m_bar.position + event->angleDelta().y() / 120 * Step);
}

}
