#include "logpane.h"

#include "textfit.h"
#include "theme.h"

#include <QtGui/QPainter>

namespace LCD::Widget {

namespace {

constexpr int MostLines = 500;
constexpr int WrappingFlags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap;

QColor colorOf(FactoryTestRightFrame::FactoryTestLogLevel level)
{
    switch (level) {
    case FactoryTestRightFrame::LogWarning:
        return QColor(Theme::Warning);
    case FactoryTestRightFrame::LogError:
        return QColor(Theme::Error);
    case FactoryTestRightFrame::LogDebug:
        return QColor(Theme::DisabledText);
    case FactoryTestRightFrame::LogInfo:
        break;
    }
    return QColor(Theme::QuietText);
}

// Breaks lines between words, and within a word that is too wide.
int textFlags(const QFontMetrics &metrics, int width, const QString &text)
{
    const QRect bounds = metrics.boundingRect(QRect(0, 0, width, 0), WrappingFlags, text);
    return bounds.width() <= width ? WrappingFlags : WrappingFlags | Qt::TextWrapAnywhere;
}

int lineHeight(const QFontMetrics &metrics, int width, const QString &text)
{
    const int flags = textFlags(metrics, width, text);
    return std::max(metrics.height(), metrics.boundingRect(QRect(0, 0, width, 0), flags, text).height());
}

int gapOf(const QFontMetrics &metrics)
{
    return metrics.height() / 4;
}

}

void FactoryTestRightFrame::Impl::append(const Line &line)
{
    lines << line;
    if (lines.size() > MostLines)
        lines.removeFirst();
}

QStringList FactoryTestRightFrame::Impl::texts() const
{
    QStringList texts;
    texts.reserve(lines.size());
    for (const Line &line : lines)
        texts << line.text;
    return texts;
}

int FactoryTestRightFrame::Impl::firstShown(const QFontMetrics &metrics, const QRect &area) const
{
    int room = area.height();
    int first = lines.size();
    while (first > 0) {
        const int height = lineHeight(metrics, area.width(), lines[first - 1].text);
        if (height > room)
            break;
        room -= height + gapOf(metrics);
        --first;
    }
    return first;
}

void FactoryTestRightFrame::Impl::paint(QPainter &painter, const QRect &area) const
{
    const QFontMetrics metrics = painter.fontMetrics();
    int top = area.top();
    for (int i = firstShown(metrics, area); i < lines.size(); ++i) {
        const int height = lineHeight(metrics, area.width(), lines[i].text);
        // The newest line stands out; earlier ones have the dimmer color of their level.
        const bool newest = i == lines.size() - 1;
        painter.setPen(newest && lines[i].level == LogInfo ? QColor(Theme::Text) : colorOf(lines[i].level));
        const QRect place(area.left(), top, area.width(), height);
        painter.drawText(place, textFlags(metrics, area.width(), lines[i].text), lines[i].text);
        top += height + gapOf(metrics);
    }
}

FactoryTestRightFrame::FactoryTestRightFrame(QWidget *parent) : QWidget(parent), d(new Impl)
{
    setObjectName(QStringLiteral("FactoryLogPane"));
    setAccessibleName(QStringLiteral("Log"));
}

FactoryTestRightFrame::~FactoryTestRightFrame()
{
    delete d;
}

void FactoryTestRightFrame::append(const QString &text, FactoryTestLogType, FactoryTestLogLevel level)
{
    d->append({text, level});
    setAccessibleDescription(text);
    update();
}

QStringList FactoryTestRightFrame::lines() const
{
    return d->texts();
}

void FactoryTestRightFrame::setLogFontSize(int pixelSize)
{
    d->fontSize = pixelSize;
    update();
}

void FactoryTestRightFrame::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(Theme::LogBackground));
    const bool strip = width() > height() * 3;
    painter.fillRect(strip ? QRect(0, 0, width(), 1) : QRect(0, 0, 1, height()), QColor(Theme::Line));
    painter.setFont(sized(font(), d->fontSize));
    const int margin = d->fontSize * 2 / 3;
    const int vertical = strip ? std::max(0, (height() - painter.fontMetrics().height()) / 2) : margin;
    d->paint(painter, rect().adjusted(margin * 2, vertical, -margin, -vertical));
}

}
