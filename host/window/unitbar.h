#pragma once

#include "records/run.h"
#include "window/unitpattern.h"

#include <QtWidgets/QWidget>

#include <functional>
#include <optional>

class QLabel;
class QLineEdit;

namespace panelhost {

/// A strip that asks for the serial number of the unit to test next, and shows the last verdict of the current one in a
/// large field. A barcode scanner is a keyboard that ends with Enter: characters that are typed anywhere in the window
/// go to the strip. The window decides what happens with a serial number. GUI thread.
class UnitBar : public QWidget
{
    Q_OBJECT

public:
    UnitBar(const UnitPattern &pattern, QWidget *parent);

    QString unit() const { return m_unit; }
    /// Shows that @p unit is tested now, without a verdict.
    void setUnit(const QString &unit);
    /// Shows the outcome of @p run, unless the run is about another unit or ended without a verdict.
    void setVerdict(const Run &run);
    /// Shows the result of @p text until the next unit is entered, such as that the unit has already passed. @p text
    /// is called again when the language of the window has changed.
    void setWarning(const std::function<QString()> &text);
    /// While it waits, the keyboard belongs to the strip alone.
    void setWaiting(bool isWaiting);
    bool isWaiting() const { return m_isWaiting; }

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// Emitted when an allowed serial number was entered.
    void unitEntered(const QString &unit);
    /// Emitted when the keyboard is no longer needed here.
    void finished();

private:
    void setTexts();
    void submit();
    void showField(const QString &state, const QString &headline, const QString &detail);
    void showMessage(const std::function<QString()> &text, bool isError);
    bool isForStrip(const QWidget *widget) const;
    bool handleFieldKey(int key);

    UnitPattern m_pattern;
    QWidget *m_field;
    QLabel *m_headline;
    QLabel *m_detail;
    QLineEdit *m_input;
    QLabel *m_message;
    std::function<QString()> m_messageText;
    std::optional<Run> m_verdict; ///< the last one of the unit
    QString m_unit;
    bool m_isWaiting = false;
};

}
