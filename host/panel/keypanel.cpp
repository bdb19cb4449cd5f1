#include "panel/keypanel.h"

#include "panel/keybutton.h"
#include "panel/keygroups.h"
#include "panel/theme.h"

#include <QtCore/QHash>
#include <QtGui/QPainter>

#include <cmath>

namespace panelhost {

using theme::Grid;

constexpr int CapWidth = 6 * Grid + Grid / 2;
constexpr int CapHeight = 5 * Grid;
constexpr int KeyGap = Grid / 2;
constexpr int Pitch = CapWidth + KeyGap;
constexpr int RowPitch = CapHeight + Grid;
constexpr int TitleHeight = 2 * Grid;

static int columnsIn(int width)
{
    return qMax(1, (width + KeyGap) / Pitch);
}

static QSize groupSize(int keys, int width)
{
    const int columns = qMin(keys, columnsIn(width));
    const int rows = (keys + columns - 1) / columns;
    return {columns * Pitch - KeyGap, TitleHeight + rows * RowPitch - Grid};
}

KeyPanel::KeyPanel(const QList<KeyState> &keys, QWidget *parent) : ScaledWidget(parent)
{
    setObjectName(QStringLiteral("keys"));
    const auto groups = groupKeys(keys);
    for (const KeyGroup &group : groups)
        addGroup(group);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void KeyPanel::addGroup(const KeyGroup &keys)
{
    Group group{keys.title, {}, {}};
    for (const KeyState &key : keys.keys) {
        auto *button = new KeyButton(key, this);
        connect(button, &KeyButton::actionTriggered, this, &KeyPanel::actionTriggered);
        group.buttons.append(button);
    }
    m_groups.append(group);
}

void KeyPanel::setState(const QList<KeyState> &keys, Milliseconds now)
{
    QHash<int, KeyState> byKey;
    for (const KeyState &key : keys)
        byKey.insert(key.halKey, key);
    for (const Group &group : qAsConst(m_groups))
        for (KeyButton *button : group.buttons)
            button->setState(byKey.value(button->halKey()), now);
}

QVector<QRect> KeyPanel::arrange(int width) const
{
    QVector<QRect> rects;
    QPoint next(0, 0);
    int shelf = 0;
    for (const Group &group : m_groups) {
        const QSize size = groupSize(group.buttons.size(), width);
        if (next.x() > 0 && next.x() + size.width() > width) {
            next = QPoint(0, next.y() + shelf + Grid);
            shelf = 0;
        }
        rects.append({next, size});
        shelf = qMax(shelf, size.height());
        next.rx() += size.width() + KeyGap + Pitch; // all groups are aligned to the same columns
    }
    return rects;
}

int KeyPanel::heightForWidth(int width) const
{
    return static_cast<int>(std::ceil(naturalHeight(qRound(width / scale())) * scale()));
}

int KeyPanel::naturalHeight(int width) const
{
    int height = 0;
    for (const QRect &rect : arrange(width))
        height = qMax(height, rect.bottom() + 1);
    return height;
}

QSize KeyPanel::naturalSize() const
{
    const int width = 22 * Pitch - KeyGap;
    return {width, naturalHeight(width)};
}

QSize KeyPanel::minimumSizeHint() const
{
    return {Pitch, TitleHeight + CapHeight};
}

void KeyPanel::placeButtons(const Group &group) const
{
    const int columns = columnsIn(group.rect.width());
    for (int i = 0; i < group.buttons.size(); ++i) {
        const QPoint place(i % columns * Pitch, TitleHeight + i / columns * RowPitch);
        group.buttons[i]->setScale(scale());
        group.buttons[i]->setGeometry(scaled({group.rect.topLeft() + place, QSize(CapWidth, CapHeight)}));
    }
}

void KeyPanel::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeGroups();
}

void KeyPanel::scaleChanged()
{
    placeGroups();
    updateGeometry();
}

void KeyPanel::placeGroups()
{
    const QVector<QRect> rects = arrange(area().width());
    for (int i = 0; i < m_groups.size(); ++i) {
        m_groups[i].rect = rects[i];
        placeButtons(m_groups[i]);
    }
}

void KeyPanel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.scale(scale(), scale());
    for (const Group &group : qAsConst(m_groups)) {
        const QRect title(group.rect.topLeft(), QSize(group.rect.width(), TitleHeight - 2));
        theme::drawCaption(painter, title, Qt::AlignLeft | Qt::AlignVCenter, group.title);
    }
}

}
