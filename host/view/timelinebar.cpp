#include "view/timelinebar.h"

#include "panel/theme.h"
#include "panel/windowtheme.h"
#include "playing/scenarioresult.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QToolTip>

#include <array>

namespace panelhost {

using theme::Grid;

namespace {

constexpr int PhaseHeight = 3 * Grid;
constexpr int MarkerHeight = 2 * Grid;
constexpr int MaxTexts = 12;
constexpr int NowWidth = 2;
constexpr int DifferenceWidth = 6; ///< is seen on both sides of the line at the current time

QRgb colorOf(Marker::Kind kind)
{
    switch (kind) {
    case Marker::Kind::Fault:
        return theme::colors().amber;
    case Marker::Kind::Failure:
        return theme::colors().red;
    case Marker::Kind::Action:
        return theme::colors().accent;
    case Marker::Kind::Phase:
        break;
    }
    return theme::colors().dimText;
}

}

TimelineBar::TimelineBar(const SessionHistory &history, Milliseconds duration, QWidget *parent)
    : QWidget(parent), m_history(history), m_duration(qMax<Milliseconds>(duration, 1))
{
    setObjectName(QStringLiteral("timeline"));
    setAccessibleName(tr("Timeline of %1").arg(history.title()));
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void TimelineBar::setNow(Milliseconds now)
{
    m_now = now;
    setAccessibleDescription(timeText(now));
    update();
}

void TimelineBar::setDifference(Milliseconds at)
{
    m_difference = at;
    update();
}

QSize TimelineBar::sizeHint() const
{
    return {80 * Grid, PhaseHeight + MarkerHeight + Grid};
}

QSize TimelineBar::minimumSizeHint() const
{
    return {20 * Grid, sizeHint().height()};
}

int TimelineBar::position(Milliseconds at) const
{
    return static_cast<int>(at * (width() - 1) / m_duration);
}

Milliseconds TimelineBar::timeAt(int x) const
{
    return qBound<Milliseconds>(0, x, width() - 1) * m_duration / qMax(1, width() - 1);
}

void TimelineBar::paintPhases(QPainter &painter) const
{
    const auto &markers = m_history.markers();
    QRect last;
    const auto paint = [&](int right, const QString &text) {
        last.setRight(right - 1);
        if (last.width() < 2)
            return;
        painter.fillRect(last.adjusted(0, 0, -1, 0), QColor(theme::colors().cap));
        if (last.width() > 5 * Grid)
            painter.drawText(last.adjusted(Grid / 2, 0, -Grid / 2, 0), Qt::AlignVCenter,
                             painter.fontMetrics().elidedText(text, Qt::ElideRight, last.width() - Grid));
    };
    QString text;
    painter.setPen(QColor(theme::colors().text));
    painter.setFont(theme::font(11));
    for (const Marker &marker : markers) {
        if (marker.kind != Marker::Kind::Phase)
            continue;
        if (!text.isEmpty())
            paint(position(marker.at), text);
        last = QRect(position(marker.at), 0, 0, PhaseHeight);
        text = marker.text;
    }
    if (!text.isEmpty())
        paint(position(m_history.duration()) + 1, text);
}

// Where many markers are close together, the most important one is seen.
void TimelineBar::paintMarkers(QPainter &painter) const
{
    constexpr std::array Order = {Marker::Kind::Action, Marker::Kind::Fault, Marker::Kind::Failure};
    for (const Marker::Kind kind : Order) {
        int last = -1;
        for (const Marker &marker : m_history.markers()) {
            const int x = position(marker.at);
            if (marker.kind != kind || x == last)
                continue;
            last = x;
            const int width = kind == Marker::Kind::Action ? 1 : 3;
            const int inset = kind == Marker::Kind::Action ? Grid / 2 : 0;
            painter.fillRect(x - width / 2, PhaseHeight + Grid / 2 + inset, width, MarkerHeight - 2 * inset,
                             QColor(colorOf(kind)));
        }
    }
}

void TimelineBar::paintLine(QPainter &painter, Milliseconds at, int width, QRgb color) const
{
    painter.fillRect(position(at) - width / 2, 0, width, height(), QColor(color));
}

void TimelineBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(theme::colors().recess));
    paintPhases(painter);
    paintMarkers(painter);
    if (m_difference >= 0)
        paintLine(painter, m_difference, DifferenceWidth, theme::colors().red);
    paintLine(painter, m_now, NowWidth, theme::colors().text);
}

void TimelineBar::mousePressEvent(QMouseEvent *event)
{
    Q_EMIT timeSelected(timeAt(event->pos().x()));
}

void TimelineBar::mouseMoveEvent(QMouseEvent *event)
{
    Q_EMIT timeSelected(timeAt(event->pos().x()));
}

QString TimelineBar::textAt(int x) const
{
    QStringList texts{timeText(timeAt(x))};
    for (const Marker &marker : m_history.markers()) {
        if (qAbs(position(marker.at) - x) <= 2 && texts.size() <= MaxTexts)
            texts << m_history.markerText(marker);
    }
    return texts.join(QLatin1Char('\n'));
}

bool TimelineBar::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    QToolTip::showText(help->globalPos(), textAt(help->pos().x()), this);
    return true;
}

}
