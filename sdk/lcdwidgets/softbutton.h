#pragma once

#include <QtWidgets/QPushButton>

namespace LCD::Widget {

/// One of the two buttons at the foot of a page. Whether it shows the focus is the frame's word and not Qt's, so that
/// it is right in a window that isn't active too.
class SoftButton : public QPushButton
{
    Q_OBJECT

public:
    SoftButton(const QString &objectName, const QString &nameWithoutCaption, QWidget *parent);

    void setCaption(const QString &caption);
    void setFocusShown(bool shown);
    /// Whether it can be seen on its page and reacts.
    bool isUsable() const { return !isHidden() && isEnabled(); }

    /// Where the caption stands, and in which font.
    QRect captionArea() const;
    QFont captionFont() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    struct Look;
    Look look() const;

    QString m_nameWithoutCaption;
    QString m_caption;
    bool m_focusShown = false;
};

}
