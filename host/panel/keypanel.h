#pragma once

#include "device/device.h"
#include "time/virtualclock.h"

#include <QtCore/QVector>
#include <QtWidgets/QWidget>

namespace panelhost {

struct OperatorAction;
struct KeyGroup;
class KeyButton;

/// All keys of the panel, group beside group in as many rows as its width asks for.
class KeyPanel : public QWidget
{
    Q_OBJECT

public:
    KeyPanel(const QList<KeyState> &keys, QWidget *parent);

    void setState(const QList<KeyState> &keys, Milliseconds now);
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void actionTriggered(const panelhost::OperatorAction &action);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    struct Group
    {
        QString title;
        QVector<KeyButton *> buttons;
        QRect rect;
    };

    void addGroup(const KeyGroup &keys);
    QVector<QRect> arrange(int width) const;
    void placeButtons(const Group &group) const;

    QVector<Group> m_groups;
};

}
