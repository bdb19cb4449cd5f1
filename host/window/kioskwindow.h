#pragma once

#include <QtWidgets/QWidget>

namespace panelhost {

class LcdInput;
class Session;
struct OperatorAction;

/// The LCD alone, on the whole screen, for the panel's own display. Touches and keys become operator actions, as in the
/// window. The LCD is in the middle; the rest of the screen is black. GUI thread.
class KioskWindow : public QWidget
{
    Q_OBJECT

public:
    /// @p session must outlive the window.
    explicit KioskWindow(Session &session);
    ~KioskWindow() override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    Session &m_session;
    LcdInput *m_input;
};

}
