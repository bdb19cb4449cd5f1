#pragma once

#include "component/componentlibrary.h"
#include "device/device.h"
#include "device/faults.h"
#include "journal/journal.h"
#include "operator/operator.h"
#include "time/virtualclock.h"

#include <QtCore/QSize>
#include <QtCore/QString>

#include <memory>

class QWidget;

namespace panelhost {

/// A device with the component loaded on it, for the window, `play` and `record`. There can be only one session at a
/// time in a process. GUI thread.
class Session
{
public:
    /// A fault that is on before the component is created.
    struct InitialFault
    {
        QString name;
        QVariantMap arguments;
    };

    struct Options
    {
        QString component; ///< path of the library; empty: the one beside the program
        QString pages;     ///< path of the repair mode's library, or noPages; empty: the one beside the program, if any
        QString share;     ///< directory with the XML files; empty: the component's default
        QString language = QStringLiteral("en");
        QSize lcdSize{800, 480};
        TBarType tbarType = TBarType::Slider;
        double tbarTolerance = TBarState::DefaultTolerance; ///< tolerance of the end positions, 0 to 0.5
        int netPorts = 4;
        int usbPorts = 4;
        QList<InitialFault> faults;
        /// A new subscriber to the changes of a link service gets the current value shortly after, as if it had just
        /// changed. Without this an aging test waits at its port steps until a port changes.
        bool changedOnSubscribe = true;
        Journal::Sink journalSink;       ///< gets all entries of the journal, including those of loading
        int journalKept = Journal::Kept; ///< number of journal entries that are kept
    };

    /// As Options::pages: the containers show pages of the host.
    static inline const QString noPages = QStringLiteral("none");

    /// Loads the component and enters factory mode, at instant 0 of a clock that stands still. The LCD isn't shown
    /// yet: show it, or put it into a window. nullptr, with one clear sentence in @p error, when the component can't
    /// be loaded or an option is wrong; then @p reached, if given, has the steps of loading that library which were
    /// done.
    static std::unique_ptr<Session> open(const Options &options, QString *error, QList<LoadStep> *reached = nullptr);
    virtual ~Session() = default;

    virtual const Options &options() const = 0;
    /// Returns the directory with the XML files, also if it is the default.
    virtual QString shareDirectory() const = 0;
    virtual const ComponentLibrary &library() const = 0;
    /// The library of the repair mode's pages, nullptr when there is none.
    virtual const ComponentLibrary *pagesLibrary() const = 0;
    /// Names under which the component finds something.
    virtual QStringList serviceNames() const = 0;

    virtual VirtualClock &clock() = 0;
    virtual Device &device() = 0;
    virtual Journal &journal() = 0;
    virtual Operator &panelOperator() = 0;
    virtual Faults &faults() = 0;
    /// Returns the LCD, a widget with the size of the device's screen that contains the component. Owned by the
    /// session.
    virtual QWidget *lcd() = 0;

    virtual QStringList languages() const = 0;
    virtual QString language() const = 0;
    virtual bool setLanguage(const QString &code) = 0;
    virtual void enterFactoryMode() = 0;
    virtual void exitFactoryMode() = 0;
};

}
