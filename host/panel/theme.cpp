#include "panel/theme.h"

#include "panel/windowtheme.h"

#include <QtCore/QFile>
#include <QtCore/QtMath>
#include <QtGui/QPainter>
#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
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

QFont captionFont(double scale, int pixels, bool bold)
{
    // Pixels of the screen. Bold captions are capital letters; others can be Chinese or Japanese.
    const double minimum = bold ? 6 : 9;
    const int largest = bold ? 13 : 15; // what the rows of the panel have room for
    return font(qMax(pixels, qMin(qCeil(minimum / scale), largest)), bold);
}

void drawCaption(QPainter &painter, const QRectF &rect, int flags, const QString &text, QRgb color)
{
    painter.setFont(captionFont(painter.worldTransform().m11(), 11));
    painter.setPen(QColor(color));
    const QString elided = painter.fontMetrics().elidedText(text, Qt::ElideRight, qCeil(rect.width()));
    painter.drawText(rect, flags | Qt::TextDontClip, elided);
}

namespace {

constexpr const char *ThemedProperty = "usesWindowTheme";

constexpr Colors DarkColors{WindowBackground, Panel,         PanelEdge, Recess, Cap,  TextColor, DimTextColor,
                            Accent,           DarkTextColor, Red,       Green,  Blue, Amber};
constexpr Colors LightColors{0xffe4e8ec, 0xfff4f6f8, 0xffb9c2cb, 0xffffffff, 0xffdfe5ea, 0xff1a1f24, 0xff55606b,
                             0xff1668b5, 0xffffffff, 0xffc62828, 0xff1b7a3d, 0xff1d5fd0, 0xff8a5000};

Scheme currentScheme = Scheme::Dark;

QPalette palette()
{
    const Colors &all = colors();
    QPalette result;
    for (const auto role : {QPalette::Window, QPalette::Button, QPalette::AlternateBase, QPalette::ToolTipBase})
        result.setColor(role, QColor(all.panel));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        result.setColor(role, QColor(all.text));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        result.setColor(QPalette::Disabled, role, QColor(all.dimText));
    result.setColor(QPalette::Base, QColor(all.recess));
    result.setColor(QPalette::PlaceholderText, QColor(all.dimText));
    result.setColor(QPalette::Highlight, QColor(all.accent));
    result.setColor(QPalette::HighlightedText, QColor(all.onAccent));
    result.setColor(QPalette::Link, QColor(all.accent));
    return result;
}

// Longer names come first: "@window" doesn't contain another name, but "@dimtext" does.
QString styleSheet()
{
    initPanelResources();
    QFile file(QStringLiteral(":/panel/theme.qss"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QString sheet = QString::fromUtf8(file.readAll());
    const Colors &all = colors();
    const QPair<QLatin1String, QRgb> names[] = {
        {QLatin1String("@window"), all.window},     {QLatin1String("@panel"), all.panel},
        {QLatin1String("@edge"), all.edge},         {QLatin1String("@recess"), all.recess},
        {QLatin1String("@onaccent"), all.onAccent}, {QLatin1String("@dimtext"), all.dimText},
        {QLatin1String("@text"), all.text},         {QLatin1String("@accent"), all.accent},
        {QLatin1String("@cap"), all.cap},           {QLatin1String("@amber"), all.amber},
        {QLatin1String("@red"), all.red},           {QLatin1String("@green"), all.green},
    };
    for (const auto &color : names)
        sheet.replace(color.first, QColor(color.second).name());
    const bool isDark = currentScheme == Scheme::Dark;
    return sheet.replace(QLatin1String("@check"),
                         isDark ? QLatin1String("check-dark.svg") : QLatin1String("check-light.svg"));
}

}

const Colors &colors()
{
    return currentScheme == Scheme::Dark ? DarkColors : LightColors;
}

Scheme scheme()
{
    return currentScheme;
}

void setScheme(Scheme scheme)
{
    if (scheme == currentScheme)
        return;
    currentScheme = scheme;
    applyToToolTips();
    const auto widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets) {
        if (widget->property(ThemedProperty).toBool())
            applyTo(widget);
        widget->update();
    }
}

void applyToToolTips()
{
    QToolTip::setPalette(palette());
    QToolTip::setFont(font(12));
}

void applyTo(QWidget *widget)
{
    widget->setProperty(ThemedProperty, true);
    widget->setPalette(palette());
    widget->setFont(font(12));
    widget->setStyleSheet(styleSheet());
}

}
