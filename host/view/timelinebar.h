#pragma once

#include "history/sessionhistory.h"

#include <QtWidgets/QWidget>

namespace panelhost {

/// The time of a session from left to right, with its phases and markers. A click or drag selects a time.
class TimelineBar : public QWidget
{
    Q_OBJECT

public:
    /// Both the bar and another one below it can stand for the time up to @p duration. @p history must outlive the bar.
    TimelineBar(const SessionHistory &history, Milliseconds duration, QWidget *parent);

    void setNow(Milliseconds now);
    /// Marks the time at which two sessions begin to differ.
    void setDifference(Milliseconds at);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void timeSelected(panelhost::Milliseconds at);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    bool event(QEvent *event) override;

private:
    int position(Milliseconds at) const;
    Milliseconds timeAt(int x) const;
    void paintPhases(QPainter &painter) const;
    void paintMarkers(QPainter &painter) const;
    void paintLine(QPainter &painter, Milliseconds at, int width, QRgb color) const;
    QString textAt(int x) const;

    const SessionHistory &m_history;
    const Milliseconds m_duration;
    Milliseconds m_now = 0;
    Milliseconds m_difference = -1; ///< -1: there is none
};

}
