// The layout of the frame.

#include "fitlabel.h"
#include "frameimpl.h"
#include "frametheme.h"
#include "iconlabel.h"
#include "softbutton.h"
#include "titlebar.h"

#include <QtCore/QCoreApplication>

#include <algorithm>

namespace LCD::Widget {

void FactoryTestFrame::Impl::scheduleArrange()
{
    // Qt keeps only one such event per widget, so a page with several changes is laid out once.
    QCoreApplication::postEvent(m_frame, new QEvent(QEvent::LayoutRequest));
}

void FactoryTestFrame::Impl::arrange()
{
    const Metrics metrics(m_frame->size());
    const QRect body = arrangeBars(metrics);
    arrangeContent(metrics, arrangeLog(metrics, body));
}

QRect FactoryTestFrame::Impl::arrangeBars(const Metrics &metrics)
{
    const QRect all = m_frame->rect();
    m_titleBar->setGeometry(0, 0, all.width(), metrics.titleBar);

    const int top = all.height() - metrics.buttonBar;
    const int width = (all.width() - 2 * metrics.padding - metrics.gap) / 2;
    const QRect button(metrics.padding, top + metrics.gap, width, metrics.buttonBar - 2 * metrics.gap);
    m_left->setGeometry(button);
    m_right->setGeometry(button.translated(width + metrics.gap, 0));
    return QRect(0, metrics.titleBar, all.width(), std::max(0, top - metrics.titleBar));
}

QRect FactoryTestFrame::Impl::arrangeLog(const Metrics &metrics, const QRect &body)
{
    const bool used = !m_log->lines().isEmpty();
    m_log->setVisible(used);
    m_log->setLogFontSize(std::max(metrics.smallestFont, metrics.length(17)));
    if (!used)
        return body;
    if (metrics.logColumn > 0) {
        m_log->setGeometry(body.adjusted(body.width() - metrics.logColumn, 0, 0, 0));
        return body.adjusted(0, 0, -metrics.logColumn, 0);
    }
    m_log->setGeometry(body.adjusted(0, body.height() - metrics.logStrip, 0, 0));
    return body.adjusted(0, 0, 0, -metrics.logStrip);
}

void FactoryTestFrame::Impl::arrangeContent(const Metrics &metrics, QRect content)
{
    content.adjust(metrics.padding, metrics.gap * 5 / 4, -metrics.padding, -metrics.gap / 2);
    const int font = metrics.contentFont(m_contentFontSize);
    // A heading that repeats the title says nothing.
    const bool headed = m_headingVisible && !m_heading->text().isEmpty() && m_heading->text() != m_titleBar->title();
    m_heading->setVisible(headed);
    if (headed) {
        const int headingFont = font * 5 / 4;
        const int height = headingFont * 3 / 2;
        m_heading->setGeometry(content.left(), content.top(), content.width(), height);
        m_heading->setWantedFont(headingFont);
        content.adjust(0, height + metrics.gap / 2, 0, 0);
    }
    m_steps->setFontRange(metrics.smallestFont, font);
    m_steps->setVerdictHeight(m_frame->height() / 5);
    m_steps->setGeometry(arrangeStatusIcon(metrics, content));
    m_steps->updateChanges();
}

QRect FactoryTestFrame::Impl::arrangeStatusIcon(const Metrics &metrics, const QRect &content)
{
    if (m_statusIcon->isHidden())
        return content;
    const bool alone = m_steps->steps().isEmpty();
    const int side = std::min(content.width(), content.height() * (alone ? 85 : 60) / 100);
    const int room = alone ? content.height() : side;
    QRect icon(0, 0, side, side);
    icon.moveCenter(QPoint(content.center().x(), content.bottom() - room / 2));
    m_statusIcon->setGeometry(icon);
    return content.adjusted(0, 0, 0, -(room + metrics.gap / 2));
}

}
