#pragma once

#include "history/sessionhistory.h"

#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

#include <memory>

namespace panelhost {

class FrontPanel;
class LcdPicture;

/// Shows the front panel as it was at a moment of a session, as large as the widget. Takes no input.
class HistoryPane : public QWidget
{
    Q_OBJECT

public:
    /// @p history must outlive the pane.
    HistoryPane(const SessionHistory &history, QWidget *parent);
    ~HistoryPane() override;

    /// Shows the state after @p line of the journal.
    void showLine(qint64 line);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    const SessionHistory &m_history;
    std::unique_ptr<LcdPicture> m_lcd;   ///< must outlive the panel
    std::unique_ptr<FrontPanel> m_panel; ///< never shown itself, only painted
};

}
