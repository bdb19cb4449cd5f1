#pragma once

#include <QtCore/QMetaType>
#include <QtCore/QString>
#include <QtCore/QVariantMap>

#include <optional>

namespace panelhost {

/// Something that an operator or the hardware does to the device, as data. The controls of the window and the steps of
/// a scenario perform operator actions, and a recording consists of them.
struct OperatorAction
{
    enum class Kind {
        Navigate,  ///< knob or joystick: "key" is one of navigationKeys()
        Press,     ///< a key of the panel goes down and up: "key" is its hal key, or its name
        Hold,      ///< a key of the panel goes down
        Release,   ///< and up again
        Soft,      ///< a soft button of the page by touch: "side" is left or right
        Touch,     ///< a touch on the LCD: "x", "y" in LCD pixels
        TouchDown, ///< a finger is put on the LCD: "x", "y"
        TouchMove, ///< and moves: "x", "y"
        TouchUp,   ///< and is lifted where it is
        TBar,      ///< "position" from 0 (bottom) to 1 (top)
        Plug,      ///< "port" such as net1 or usb2, and "speed" in Mbit/s if a USB device has told it
        Unplug,
        Block, ///< a USB port is blocked: "port"
        Unblock,
        Calibration,      ///< a step of the T-Bar's calibration has ended: "command", "ok" (bool), "message"
        Part,             ///< a part of the board has disappeared or is back: "name", "present" (bool)
        Fault,            ///< "name", "on" (bool), and what the fault needs, such as "key"
        Language,         ///< "code"
        Unit,             ///< the next unit is tested: "unit" is its serial number
        EnterFactoryMode, ///< the host shows the menu
        ExitFactoryMode,
    };

    Kind kind = Kind::Navigate;
    QVariantMap arguments;

    bool operator==(const OperatorAction &other) const { return kind == other.kind && arguments == other.arguments; }
};

/// Returns the name of @p kind in journals, such as "navigate" or "enter-factory-mode".
QString actionName(OperatorAction::Kind kind);
std::optional<OperatorAction::Kind> actionKind(const QString &name);

/// Returns the action Navigate with @p key.
OperatorAction navigationAction(const QString &key);

}

Q_DECLARE_METATYPE(panelhost::OperatorAction)
