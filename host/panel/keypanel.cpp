#include "panel/keypanel.h"

#include "panel/keybutton.h"
#include "panel/keygroups.h"
#include "panel/theme.h"

#include <QtCore/QHash>
#include <QtGui/QPainter>

namespace panelhost {

using theme::Grid;

constexpr int CapWidth = 6 * Grid;
constexpr int CapHeight = 5 * Grid;
constexpr int Pitch = CapWidth + Grid;
constexpr int RowPitch = CapHeight + Grid;
constexpr int TitleHeight = 2 * Grid;
constexpr int GroupGap = 3 * Grid;

static int columnsIn(int width)
{
    return qMax(1, (width + Grid) / Pitch);
}

static QSize groupSize(int keys, int width)
{
    const int columns = qMin(keys, columnsIn(width));
    const int rows = (keys + columns - 1) / columns;
    return {columns * Pitch - Grid, TitleHeight + rows * RowPitch - Grid};
}

KeyPanel::KeyPanel(const QList<KeyState> &keys, QWidget *parent) : QWidget(parent)
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
        next.rx() += size.width() + GroupGap;
    }
    return rects;
}

int KeyPanel::heightForWidth(int width) const
{
    int height = 0;
    for (const QRect &rect : arrange(width))
        height = qMax(height, rect.bottom() + 1);
    return height;
}

QSize KeyPanel::sizeHint() const
{
    const int width = 22 * Pitch - Grid;
    return {width, heightForWidth(width)};
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
        group.buttons[i]->setGeometry({group.rect.topLeft() + place, QSize(CapWidth, CapHeight)});
    }
}

void KeyPanel::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const QVector<QRect> rects = arrange(width());
    for (int i = 0; i < m_groups.size(); ++i) {
        m_groups[i].rect = rects[i];
        placeButtons(m_groups[i]);
    }
}

void KeyPanel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    for (const Group &group : qAsConst(m_groups)) {
        const QRect title(group.rect.topLeft(), QSize(group.rect.width(), TitleHeight - 2));
        theme::drawCaption(painter, title, Qt::AlignLeft | Qt::AlignVCenter, group.title);
    }
}

}
