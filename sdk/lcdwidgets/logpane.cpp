#include "logpane.h"

#include "frametheme.h"

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

// Breaks lines between words, and within a word that is too wide.
FactoryTestRightFrame::Impl::LineLayout FactoryTestRightFrame::Impl::layoutOf(const Line &line,
                                                                              const QFontMetrics &metrics, int width)
{
    int flags = WrappingFlags;
    QRect bounds = metrics.boundingRect(QRect(0, 0, width, 0), flags, line.text);
    if (bounds.width() > width) {
        flags |= Qt::TextWrapAnywhere;
        bounds = metrics.boundingRect(QRect(0, 0, width, 0), flags, line.text);
    }
    return {line.text, line.level, flags, std::max(metrics.height(), bounds.height())};
}

FactoryTestRightFrame::Impl::Line FactoryTestRightFrame::Impl::lineBefore(int &end) const
{
    Line line = lines.at(--end);
    int count = 1;
    for (; end > 0 && lines.at(end - 1).text == line.text; --end)
        ++count;
    if (count > 1)
        line.text += QStringLiteral(" \u00d7%1").arg(count);
    return line;
}

QVector<FactoryTestRightFrame::Impl::LineLayout> FactoryTestRightFrame::Impl::shownLines(const QFontMetrics &metrics,
                                                                                         const QSize &area) const
{
    QVector<LineLayout> shown;
    int room = area.height();
    for (int end = lines.size(); end > 0;) {
        const LineLayout layout = layoutOf(lineBefore(end), metrics, area.width());
        if (layout.height > room)
            break;
        room -= layout.height + gapOf(metrics);
        shown << layout;
    }
    return shown;
}

void FactoryTestRightFrame::Impl::paint(QPainter &painter, const QRect &area) const
{
    const QFontMetrics metrics = painter.fontMetrics();
    const QVector<LineLayout> shown = shownLines(metrics, area.size());
    int top = area.top();
    for (int fromNewest = shown.size() - 1; fromNewest >= 0; --fromNewest) {
        const LineLayout &line = shown.at(fromNewest);
        // The newest line stands out; earlier ones have the dimmer color of their level.
        painter.setPen(fromNewest == 0 && line.level == LogInfo ? QColor(Theme::Text) : colorOf(line.level));
        painter.drawText(QRect(area.left(), top, area.width(), line.height), line.flags, line.text);
        top += line.height + gapOf(metrics);
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

// The frame sets the size each time that it arranges its parts.
void FactoryTestRightFrame::setLogFontSize(int pixelSize)
{
    if (pixelSize == d->fontSize)
        return;
    d->fontSize = pixelSize;
    update();
}

void FactoryTestRightFrame::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(Theme::LogBackground));
    const bool strip = width() > height() * 3;
    painter.fillRect(strip ? QRect(0, 0, width(), 1) : QRect(0, 0, 1, height()), QColor(Theme::Line));
    painter.setFont(d->sizes.sized(font(), d->fontSize));
    const int margin = d->fontSize * 2 / 3;
    const int vertical = strip ? std::max(0, (height() - painter.fontMetrics().height()) / 2) : margin;
    d->paint(painter, rect().adjusted(margin * 2, vertical, -margin, -vertical));
}

}
