#pragma once

#include "device/device.h"
#include "device/faults.h"
#include "journal/journal.h"
#include "operator/sendinput.h"
#include "time/virtualclock.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

class QWidget;

namespace panelhost {

/// What operator actions are performed on: a device with an LCD, a host and a journal. GUI thread.
class OperatorTarget
{
public:
    virtual ~OperatorTarget() = default;

    virtual VirtualClock &clock() = 0;
    virtual Device &device() = 0;
    virtual Journal &journal() = 0;
    virtual Faults &faults() = 0;
    /// Returns the LCD, a widget with the size of the device's screen that contains the component. Owned by the
    /// target.
    virtual QWidget *lcd() = 0;

    /// Returns the codes of the languages that have texts, such as "en".
    virtual QStringList languages() const = 0;
    /// Returns false, and changes nothing, if there are no texts in this language.
    virtual bool setLanguage(const QString &code) = 0;
    virtual void enterFactoryMode() = 0;
    virtual void exitFactoryMode() = 0;

    /// Returns the operator's finger on the LCD.
    Finger &finger() { return m_finger; }

private:
    Finger m_finger;
};

}
