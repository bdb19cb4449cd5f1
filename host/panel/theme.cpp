#include "panel/theme.h"

#include <QtCore/QFile>
#include <QtGui/QPainter>
#include <QtGui/QPalette>
#include <QtWidgets/QToolTip>
#include <QtWidgets/QWidget>

// The macro for resources of a static library must be used outside of any namespace.
static void initPanelResources()
{
    Q_INIT_RESOURCE(panel);
}

namespace panelhost::theme {

QFont font(int pixels, bool bold)
{
    QFont result(QStringLiteral("DejaVu Sans"));
    result.setPixelSize(pixels);
    result.setBold(bold);
    return result;
}

QColor mix(QRgb a, QRgb b, double share)
{
    const auto blend = [share](int from, int to) { return qBound(0, qRound(from + (to - from) * share), 255); };
    return QColor(blend(qRed(a), qRed(b)), blend(qGreen(a), qGreen(b)), blend(qBlue(a), qBlue(b)));
}

QColor textColorOn(const QColor &ground)
{
    return qGray(ground.rgb()) > 128 ? QColor(DarkTextColor) : QColor(TextColor);
}

void drawRecess(QPainter &painter, const QRectF &rect, QRgb ground)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(RecessEdge), 1));
    painter.setBrush(QColor(ground));
    painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), Radius, Radius);
}

void drawCap(QPainter &painter, const QRectF &rect, const QColor &ground, bool isDown)
{
    const QRectF cap = rect.adjusted(1.5, 1.5, -1.5, -1.5);
    QLinearGradient shade(cap.topLeft(), cap.bottomLeft());
    shade.setColorAt(0, isDown ? ground.darker(130) : ground.lighter(115));
    shade.setColorAt(1, isDown ? ground.darker(110) : ground.darker(115));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(isDown ? QColor(Accent) : ground.lighter(140), 1));
    painter.setBrush(shade);
    painter.drawRoundedRect(cap, Radius, Radius);
}

void drawCaption(QPainter &painter, const QRectF &rect, int flags, const QString &text)
{
    painter.setFont(font(11));
    painter.setPen(QColor(DimTextColor));
    painter.drawText(rect, flags, text);
}

static QPalette palette()
{
    QPalette result;
    for (const auto role : {QPalette::Window, QPalette::Button, QPalette::AlternateBase, QPalette::ToolTipBase})
        result.setColor(role, QColor(Panel));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        result.setColor(role, QColor(TextColor));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        result.setColor(QPalette::Disabled, role, QColor(DimTextColor));
    result.setColor(QPalette::Base, QColor(Recess));
    result.setColor(QPalette::PlaceholderText, QColor(DimTextColor));
    result.setColor(QPalette::Highlight, QColor(Accent));
    result.setColor(QPalette::HighlightedText, QColor(DarkTextColor));
    return result;
}

static QString styleSheet()
{
    initPanelResources();
    QFile file(QStringLiteral(":/panel/theme.qss"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QString sheet = QString::fromUtf8(file.readAll());
    const QPair<QLatin1String, QRgb> colors[] = {
        {QLatin1String("@window"), WindowBackground},
        {QLatin1String("@panel"), Panel},
        {QLatin1String("@edge"), PanelEdge},
        {QLatin1String("@recess"), Recess},
        {QLatin1String("@darktext"), DarkTextColor},
        {QLatin1String("@dimtext"), DimTextColor},
        {QLatin1String("@text"), TextColor},
        {QLatin1String("@accent"), Accent},
        {QLatin1String("@cap"), Cap},
        {QLatin1String("@amber"), Amber},
        {QLatin1String("@red"), Red},
        {QLatin1String("@green"), Green},
    };
    for (const auto &color : colors)
        sheet.replace(color.first, QColor(color.second).name());
    return sheet;
}

void applyToToolTips()
{
    QToolTip::setPalette(palette());
    QToolTip::setFont(font(12));
}

void applyTo(QWidget *widget)
{
    widget->setPalette(palette());
    widget->setFont(font(12));
    widget->setStyleSheet(styleSheet());
}

}
