#include "steplist.h"

#include "frametheme.h"
#include "iconstore.h"
#include "lcd/widget/icons.h"

#include <QtCore/QEvent>
#include <QtGui/QPaintEvent>
#include <QtGui/QPainter>

#include <algorithm>
#include <utility>

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
        && a.verdict == b.verdict && a.verdictHeight == b.verdictHeight && a.font == b.font;
}

// A verdict without a mark says by its color whether the test has passed.
void paintVerdict(QPainter &painter, const VerdictBanner &banner, const TestStep &step)
{
    const bool passed = step.mark == IconNone ? step.color.green() > step.color.red() : step.mark == IconPass;
    paintBanner(painter, banner, step.text.trimmed(), step.color, passed);
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
    if (m_offset > 0)
        update();
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

void StepList::updateChanges()
{
    const auto looksSame = [](const TestStep &a, const TestStep &b) { return a.text == b.text && a.color == b.color; };
    if (std::equal(m_steps.cbegin(), m_steps.cend(), m_updatedSteps.cbegin(), m_updatedSteps.cend(), looksSame))
        updateMarks();
    else
        update();
    m_updatedSteps = m_steps;
}

// Without updates, nobody sees the list, and finding the place of a mark could load fonts for nothing.
void StepList::updateMarks()
{
    if (!updatesEnabled())
        return;
    for (int index = 0; index < m_steps.size(); ++index) {
        if (m_steps.at(index).mark == m_updatedSteps.at(index).mark)
            continue;
        if (index == verdict())
            return update();
        update(fitted().layout.marks.at(index).translated(0, -m_offset));
    }
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

void StepList::setVerdictHeight(int height)
{
    if (height == m_verdictHeight)
        return;
    m_verdictHeight = height;
    refit();
}

int StepList::verdict() const
{
    const auto isColored = [this](int index) {
        return m_steps.at(index).color != QColor(Qt::white) && !m_steps.at(index).text.trimmed().isEmpty();
    };
    if (!m_steps.isEmpty() && isColored(0))
        return 0;
    return m_steps.size() == 2 && isColored(1) ? 1 : -1;
}

StepFitting StepList::fitting() const
{
    StepFitting fitting{{}, font(), size(), m_smallestFont, m_wantedFont, verdict(), m_verdictHeight};
    for (const TestStep &step : m_steps)
        fitting.texts << step.text;
    return fitting;
}

// A page sets its lines again with each mark and each color, which doesn't move them.
const FittedSteps &StepList::fitted() const
{
    const StepFitting wanted = fitting();
    if (!m_fitted || !(m_fitted->fitting == wanted))
        m_fitted = fit(wanted);
    return *m_fitted;
}

// A verdict is as high as the other lines allow.
FittedSteps StepList::fit(const StepFitting &fitting) const
{
    if (fitting.verdict < 0)
        return fit(fitting, {});
    const FittedSteps high = fit(fitting, bannerOf(fitting.verdict, std::min(2 * m_verdictHeight, height())));
    const bool allFit = high.layout.height <= height() && high.font.pixelSize() == m_wantedFont;
    return allFit ? high : fit(fitting, bannerOf(fitting.verdict, std::min(m_verdictHeight, height() / 2)));
}

VerdictBanner StepList::bannerOf(int line, int bannerHeight) const
{
    const QRect area(0, 0, std::max(0, width() - 2 * ScrollBarWidth), bannerHeight);
    return layoutBanner(m_boldSizes, m_steps.at(line).text.trimmed(), font(), area);
}

FittedSteps StepList::fit(const StepFitting &fitting, const std::optional<VerdictBanner> &banner) const
{
    int lastSize = 0;
    StepLayout last;
    const auto layoutOf = [&](int pixelSize) -> const StepLayout & {
        if (std::exchange(lastSize, pixelSize) != pixelSize)
            last = layoutFor(m_sizes.sized(font(), pixelSize), banner);
        return last;
    };
    const int size = largestFitting(m_smallestFont, m_wantedFont, [&](int pixelSize) {
        const StepLayout &layout = layoutOf(pixelSize);
        return layout.fitsWidth && layout.height <= height();
    });
    return {fitting, m_sizes.sized(font(), size), layoutOf(size)};
}

StepLayout StepList::layoutFor(const QFont &font, const std::optional<VerdictBanner> &banner) const
{
    const int lineHeight = QFontMetrics(font).height();
    const StepLayout loose = layoutFor(font, lineHeight / 3, banner);
    return loose.height <= height() ? loose : layoutFor(font, lineHeight / 10, banner);
}

StepLayout StepList::layoutFor(const QFont &font, int gap, const std::optional<VerdictBanner> &banner) const
{
    const QFontMetrics metrics(font);
    StepLayout layout;
    layout.banner = banner;
    const int bannerLine = banner ? verdict() : -1;
    int top = 0;
    for (int index = 0; index < m_steps.size(); ++index) {
        if (index == bannerLine) {
            for (QRect *part : {&layout.banner->area, &layout.banner->mark, &layout.banner->text})
                part->translate(0, top);
            layout.marks << layout.banner->mark;
            layout.texts << layout.banner->text;
            layout.height = top + layout.banner->area.height();
        } else {
            layout.height = top + addLine(layout, metrics, m_steps.at(index).text.trimmed(), top);
        }
        top = layout.height + gap;
    }
    return layout;
}

// Adds a line at the position top and returns its height.
int StepList::addLine(StepLayout &layout, const QFontMetrics &metrics, const QString &text, int top) const
{
    const int mark = metrics.ascent() * 9 / 10;
    const int textLeft = mark + mark * 2 / 3;
    const int textWidth = std::max(0, width() - textLeft - 2 * ScrollBarWidth);
    const QRect bounds = metrics.boundingRect(QRect(0, 0, textWidth, 0), TextFlags, text);
    // The fallback font for Chinese characters may be higher than the requested font.
    const int lineHeight =
        std::max(metrics.height(), metrics.boundingRect(QRect(), Qt::AlignLeft | Qt::TextSingleLine, text).height());
    const int height = std::max(bounds.height(), lineHeight);
    layout.fitsWidth = layout.fitsWidth && bounds.width() <= textWidth;
    layout.marks << QRect(0, top + (lineHeight - mark) / 2, mark, mark);
    layout.texts << QRect(textLeft, top, textWidth, height);
    return height;
}

void StepList::paintEvent(QPaintEvent *event)
{
    const QRect area = event->rect().translated(0, m_offset);
    const FittedSteps &now = fitted();
    const StepLayout &layout = now.layout;
    QPainter painter(this);
    painter.setFont(now.font);
    painter.translate(0, -m_offset);
    for (int index = 0; index < m_steps.size(); ++index) {
        if (index == now.fitting.verdict)
            paintVerdict(painter, *layout.banner, m_steps.at(index));
        else
            paintLine(painter, layout, index, area);
    }
    painter.translate(0, m_offset);
    paintMore(painter, layout.height);
}

// Paints what lies in the area.
void StepList::paintLine(QPainter &painter, const StepLayout &layout, int index, const QRect &area) const
{
    const TestStep &step = m_steps.at(index);
    if (step.mark != IconNone || !step.text.trimmed().isEmpty())
        paintMark(painter, layout.marks.at(index), step.mark);
    if (!area.intersects(layout.texts.at(index)))
        return;
    painter.setPen(step.color);
    painter.drawText(layout.texts.at(index), TextFlags, step.text.trimmed());
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
    limitOffset();
}

void StepList::refit()
{
    limitOffset();
    update();
}

void StepList::limitOffset()
{
    if (m_offset > 0)
        m_offset = std::min(m_offset, std::max(0, fitted().layout.height - height()));
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
