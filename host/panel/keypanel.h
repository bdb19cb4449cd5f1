#pragma once

#include "device/device.h"
#include "panel/scaledwidget.h"
#include "time/virtualclock.h"

#include <QtCore/QVector>

namespace panelhost {

struct OperatorAction;
struct KeyGroup;
class KeyButton;

/// The keys of the panel, arranged in groups. The number of rows depends on the width.
class KeyPanel : public ScaledWidget
{
    Q_OBJECT

public:
    KeyPanel(const QList<KeyState> &keys, QWidget *parent);

    void setState(const QList<KeyState> &keys, Milliseconds now);
    QSize naturalSize() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    /// Like heightForWidth(), at scale 1.
    int naturalHeight(int width) const;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// Emitted when the operator uses a key.
    void actionTriggered(const panelhost::OperatorAction &action);

protected:
    void scaleChanged() override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    struct Group
    {
        QString title;
        QVector<KeyButton *> buttons;
        QRect rect; ///< in unscaled coordinates
    };

    void addGroup(const KeyGroup &keys);
    QVector<QRect> arrange(int width) const;
    void placeGroups();
    void placeButtons(const Group &group) const;

    QVector<Group> m_groups;
};

}
