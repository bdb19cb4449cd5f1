#pragma once

#include "component/componentlibrary.h"
#include "device/board/boardconfiguration.h"
#include "device/device.h"
#include "device/faults.h"
#include "device/simulated/simulateddevice.h"
#include "journal/journal.h"
#include "operator/operator.h"
#include "operator/operatortarget.h"
#include "time/virtualclock.h"

#include <QtCore/QSize>
#include <QtCore/QString>

#include <memory>
#include <optional>

class QWidget;

namespace panelhost {

/// A device with the component loaded on it, for the window, `play` and `record`. There can be only one session at a
/// time in a process. GUI thread.
class Session : public OperatorTarget
{
public:
    /// A fault that is on before the component is created.
    struct InitialFault
    {
        QString name;
        QVariantMap arguments;
    };

    /// Value of Options::usbStick for no USB stick.
    static inline const QString noUsbStick = QStringLiteral("none");
    /// Value of Options::usbStick for an empty USB stick that is discarded when the session ends.
    static inline const QString temporaryUsbStick = QStringLiteral("temporary");

    struct Options
    {
        QString component; ///< path of the library; empty: the one next to the program
        QString pages; ///< path of the repair mode's library, or noPages; empty: the one next to the program, if any
        QString share; ///< directory with the XML files; empty: the component's default
        QString language = QStringLiteral("en");
        QSize lcdSize{800, 480};
        TBarType tbarType = TBarType::Slider;
        double tbarTolerance = TBarState::DefaultTolerance; ///< tolerance of the end positions, 0 to 0.5
        int netPorts = 4;
        int usbPorts = 4;
        int linkDelay = SimulatedDevice::DefaultLinkDelay; ///< virtual milliseconds from the plug to the changed link
        bool hasCalibrationResults = false;                ///< steps of the T-Bar's calibration end by operator actions
        QString usbStick = noUsbStick; ///< directory where the USB stick is mounted, temporaryUsbStick or noUsbStick
        QByteArray sessionLine;        ///< the first line of an exported journal; empty: none
        /// Derives the test runs of a journal for the log export; see LogExportOptions.
        std::function<QByteArray(const QByteArray &journal)> deriveRuns;
        QList<InitialFault> faults;
        std::optional<BoardConfiguration> board; ///< the board that is the device; empty: the device is simulated
        /// A new subscriber to the changes of a link service gets the current value shortly after, as if it had just
        /// changed. Without this an aging test waits at its port steps until a port changes.
        bool changedOnSubscribe = true;
        bool startsInFactoryMode = true; ///< otherwise the session begins with the host's home page
        Journal::Sink journalSink;       ///< gets all entries of the journal, including those of loading
        /// Called on the GUI thread after each turn: what happened at once is in the journal, with the changes of the
        /// LCD.
        std::function<void(OperatorTarget &)> turnListener;
        int journalLineLimit = Journal::DefaultLineLimit; ///< number of journal entries that are kept
    };

    /// Value of Options::pages for no library: the containers are shown by pages of the host.
    static inline const QString noPages = QStringLiteral("none");

    /// Loads the component and enters factory mode at virtual time 0, unless the options say otherwise. The clock is
    /// stopped. The LCD isn't visible: show it or add it to a window. Returns nullptr and sets @p error to a sentence
    /// if a library can't be loaded or an option is wrong. If a library can't be loaded, @p reached (unless it is
    /// nullptr) is set to the loading steps that this library has completed.
    static std::unique_ptr<Session> open(const Options &options, QString *error, QList<LoadStep> *reached = nullptr);

    virtual const Options &options() const = 0;
    /// Returns the directory with the XML files, whether it was given or is the default.
    virtual QString shareDirectory() const = 0;
    virtual const ComponentLibrary &library() const = 0;
    /// Returns the library of the repair mode's pages; nullptr if there is none.
    virtual const ComponentLibrary *pagesLibrary() const = 0;
    /// Returns the names under which the component finds a service.
    virtual QStringList serviceNames() const = 0;

    virtual Operator &panelOperator() = 0;

    virtual QString language() const = 0;
    virtual bool isInFactoryMode() const = 0;
};

/// Returns the directory with the XML files for @p options: the given one or the default.
QString shareDirectoryOf(const Session::Options &options);
/// Returns the files that every session with @p options reads: the component and the files in its share directory.
QStringList inputFiles(const Session::Options &options);

}
