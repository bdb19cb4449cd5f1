#pragma once

#include "device/device.h"
#include "journal/journal.h"
#include "operator/operator.h"
#include "time/timeline.h"

#include <QtCore/QSize>
#include <QtCore/QString>

#include <memory>

class QWidget;

namespace panelhost {

class Faults;

/// One device with the component loaded on it: what the window, `play` and `record` share. GUI thread.
class Session
{
public:
    struct Options
    {
        QString component; ///< path of the library; empty: the one beside the program
        QString share;     ///< directory with the XML files; empty: the component's default
        QString language = QStringLiteral("en");
        QSize lcdSize{800, 480};
        TBarType tbarType = TBarType::Slider;
        int netPorts = 4;
        int usbPorts = 4;
    };

    /// nullptr, with one clear sentence in @p error, when the component can't be loaded.
    static std::unique_ptr<Session> open(const Options &options, QString *error);
    virtual ~Session() = default;

    virtual Timeline &timeline() = 0;
    virtual Device &device() = 0;
    virtual Journal &journal() = 0;
    virtual Operator &op() = 0;
    virtual Faults &faults() = 0;
    /// The LCD: a widget of the device's size with the component in it. Owned by the session.
    virtual QWidget *lcd() = 0;
};

}
