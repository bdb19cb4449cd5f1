#pragma once

#include "device/device.h"
#include "operator/operatoraction.h"
#include "panel/control.h"

#include <QtCore/QMetaType>
#include <QtCore/QStringList>

#include <memory>

/// A device as the panel's tests draw it: @p keys keys named K1, K2 …, four net and four USB ports, all at rest.
panelhost::DeviceState sampleDevice(int keys = 4);
panelhost::KeyState sampleKey(int halKey, const QString &name);

/// An action as one line, such as "Press key=3".
QString lineOf(const panelhost::OperatorAction &action);

/// The actions that a widget with the signal actionTriggered() told of, as lines.
class ActionLog : public QObject
{
    Q_OBJECT

public:
    template <class Source>
    explicit ActionLog(Source &source)
    {
        connect(&source, &Source::actionTriggered, this,
                [this](const panelhost::OperatorAction &action) { lines << lineOf(action); });
    }

    QStringList lines;
};

// As the data of a test.
Q_DECLARE_METATYPE(panelhost::TBarEnd)
Q_DECLARE_METATYPE(std::shared_ptr<panelhost::Control>)
