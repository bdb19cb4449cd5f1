#pragma once

#include <QtWidgets/QLabel>

namespace panelhost {

/// A label with one line of plain text that never widens its window: a text that is too long is elided. text() returns
/// the whole text.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(const QString &name, QWidget *parent = nullptr);

    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QString shownText() const;
};

}
