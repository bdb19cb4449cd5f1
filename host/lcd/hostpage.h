#pragma once

#include <QtWidgets/QWidget>

class QLabel;
class QPushButton;

namespace panelhost {

/// A page of the host with a title, a text and one button, in the language of the LCD.
class HostPage : public QWidget
{
    Q_OBJECT

public:
    /// @p control is the key of the button's caption in the catalog.
    HostPage(const char *control, QWidget *parent);

    /// Shows all texts in the current language.
    virtual void translate();

Q_SIGNALS:
    void controlUsed();

protected:
    /// Returns the text of @p key in the current language.
    static QString text(const char *key);
    void setTexts(const QString &title, const QString &text);

private:
    const char *m_control;
    QPushButton *m_button;
    QLabel *m_title;
    QLabel *m_text;
};

}
