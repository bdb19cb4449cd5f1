#include "steplist.h"

#include "frametheme.h"
#include "iconstore.h"
#include "lcd/widget/icons.h"
#include "textfit.h"

#include <QtCore/QEvent>
#include <QtGui/QPainter>

#include <algorithm>

namespace LCD::Widget {

namespace {

constexpr int ScrollBarWidth = 3;
constexpr int TextFlags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap;

QString markIcon(IconType mark)
{
    const QString file = g_IconMap.value(mark);
    return file.isEmpty() ? QStringLiteral("icon_none") : file;
}

QString accessibleMark(IconType mark)
{
    if (mark == IconPass)
        return QStringLiteral(" (passed)");
    return mark == IconNotPass ? QStringLiteral(" (not passed)") : QString();
}

bool operator==(const StepFitting &a, const StepFitting &b)
{
    return a.texts == b.texts && a.size == b.size && a.smallestFont == b.smallestFont && a.wantedFont == b.wantedFont
        && a.font == b.font;
}

QString accessibleText(const QVector<TestStep> &steps)
{
    QStringList lines;
    for (const TestStep &step : steps)
        lines << step.text + accessibleMark(step.mark);
    return lines.join(QLatin1Char('\n'));
}

}

StepList::StepList(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("FactoryStepList"));
    setAccessibleName(QStringLiteral("Test steps"));
}

void StepList::setSteps(const QVector<TestStep> &steps)
{
    m_steps = steps;
    m_offset = 0;
    stepsChanged();
}

void StepList::append(const TestStep &step)
{
    m_steps << step;
    stepsChanged();
}

void StepList::setMark(int index, IconType mark)
{
    if (index < 0 || index >= m_steps.size())
        return;
    m_steps[index].mark = mark;
    stepsChanged();
}

void StepList::setFontRange(int smallest, int wanted)
{
    if (smallest == m_smallestFont && wanted == m_wantedFont)
        return;
    m_smallestFont = smallest;
    m_wantedFont = wanted;
    refit();
}

bool StepList::scroll(int lines)
{
    const int hidden = std::max(0, fitted().layout.height - height());
    m_offset = std::clamp(m_offset + lines * QFontMetrics(fitted().font).lineSpacing(), 0, hidden);
    update();
    return hidden > 0;
}

// A single colored line is a verdict. It is large so that it can be read from a distance.
int StepList::wantedFont() const
{
    const bool verdict = m_steps.size() == 1 && m_steps.first().color != QColor(Qt::white);
    return verdict ? m_wantedFont * 3 / 2 : m_wantedFont;
}

StepFitting StepList::fitting() const
{
    StepFitting fitting{{}, font(), size(), m_smallestFont, wantedFont()};
    for (const TestStep &step : m_steps)
        fitting.texts << step.text;
    return fitting;
}

// A page sets its lines again with each mark and each color, which doesn't move them.
const FittedSteps &StepList::fitted() const
{
    const StepFitting wanted = fitting();
    if (!m_fitted || !(m_fitted->fitting == wanted)) {
        const int size = largestFitting(m_smallestFont, wantedFont(), [this](int pixelSize) {
            const StepLayout layout = layoutFor(sized(font(), pixelSize));
            return layout.fitsWidth && layout.height <= height();
        });
        const QFont fittedFont = sized(font(), size);
        m_fitted = FittedSteps{wanted, fittedFont, layoutFor(fittedFont)};
    }
    return *m_fitted;
}

StepLayout StepList::layoutFor(const QFont &font) const
{
    const int lineHeight = QFontMetrics(font).height();
    const StepLayout loose = layoutFor(font, lineHeight / 3);
    return loose.height <= height() ? loose : layoutFor(font, lineHeight / 10);
}

StepLayout StepList::layoutFor(const QFont &font, int gap) const
{
    const QFontMetrics metrics(font);
    const int mark = metrics.ascent() * 9 / 10;
    const int textLeft = mark + mark * 2 / 3;
    const int textWidth = std::max(0, width() - textLeft - 2 * ScrollBarWidth);
    StepLayout layout;
    int top = 0;
    for (const TestStep &step : m_steps) {
        const QString text = step.text.trimmed();
        const QRect bounds = metrics.boundingRect(QRect(0, 0, textWidth, 0), TextFlags, text);
        // The fallback font for Chinese characters may be higher than the requested font.
        const int lineHeight = std::max(
            metrics.height(), metrics.boundingRect(QRect(), Qt::AlignLeft | Qt::TextSingleLine, text).height());
        const int height = std::max(bounds.height(), lineHeight);
        layout.fitsWidth = layout.fitsWidth && bounds.width() <= textWidth;
        layout.marks << QRect(0, top + (lineHeight - mark) / 2, mark, mark);
        layout.texts << QRect(textLeft, top, textWidth, height);
        layout.height = top + height;
        top = layout.height + gap;
    }
    return layout;
}

void StepList::paintEvent(QPaintEvent *)
{
    const FittedSteps &now = fitted();
    const StepLayout &layout = now.layout;
    QPainter painter(this);
    painter.setFont(now.font);
    painter.translate(0, -m_offset);
    for (int i = 0; i < m_steps.size(); ++i) {
        const TestStep &step = m_steps[i];
        if (step.mark != IconNone || !step.text.trimmed().isEmpty())
            paintMark(painter, layout.marks[i], step.mark);
        painter.setPen(step.color);
        painter.drawText(layout.texts[i], TextFlags, step.text.trimmed());
    }
    painter.translate(0, m_offset);
    paintMore(painter, layout.height);
}

void StepList::resizeEvent(QResizeEvent *)
{
    refit();
}

void StepList::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        refit();
}

void StepList::stepsChanged()
{
    setAccessibleDescription(accessibleText(m_steps));
    refit();
}

void StepList::refit()
{
    if (m_offset > 0)
        m_offset = std::min(m_offset, std::max(0, fitted().layout.height - height()));
    update();
}

void StepList::paintMark(QPainter &painter, const QRect &place, IconType mark) const
{
    painter.drawPixmap(place.topLeft(), IconStore::icon(markIcon(mark), place.width(), devicePixelRatioF()));
}

void StepList::paintMore(QPainter &painter, int contentHeight) const
{
    if (contentHeight <= height())
        return;
    const int barHeight = std::max(8, height() * height() / contentHeight);
    const int barTop = (height() - barHeight) * m_offset / (contentHeight - height());
    painter.fillRect(width() - ScrollBarWidth, barTop, ScrollBarWidth, barHeight, QColor(Theme::QuietText));
}

}
