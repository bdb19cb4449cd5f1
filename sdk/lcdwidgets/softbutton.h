#pragma once

#include "textfit.h"

#include <QtWidgets/QPushButton>

namespace LCD::Widget {

/// One of the two buttons at the bottom of a page. The frame decides whether it shows the focus, not Qt. So the focus
/// is also visible in an inactive window.
class SoftButton : public QPushButton
{
    Q_OBJECT

public:
    SoftButton(const QString &objectName, const QString &nameWithoutCaption, QWidget *parent);

    void setCaption(const QString &caption);
    void setFocusShown(bool shown);
    /// Sets whether the button does what can't be undone. Such a button is never filled, so that another button stands
    /// out.
    void setDangerous(bool dangerous);
    /// Returns true if the button is visible on its page and enabled.
    bool isUsable() const { return !isHidden() && isEnabled(); }

    /// The area and the font of the caption.
    QRect captionArea() const;
    QFont captionFont() const;

    /// The frame sets the size. Qt asks for one when the button is first shown, and its own would load a font.
    QSize sizeHint() const override { return size(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    struct Look;
    Look look() const;
    Look dangerousLook() const;

    QString m_nameWithoutCaption;
    QString m_caption;
    bool m_focusShown = false;
    bool m_dangerous = false;
    mutable FontSizes m_sizes;
};

}
