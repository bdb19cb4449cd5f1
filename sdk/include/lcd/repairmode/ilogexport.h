#pragma once

#include <functional>
#include <string>

namespace LCD::RepairMode {

/// How far an export is, or how it has ended.
struct LogExportReport
{
    /// Whether the export runs or how it has ended.
    enum State : int {
        Writing = 0,  ///< `percent` of the data are written
        Done = 1,     ///< `detail` has the names of the files
        NoStick = 2,  ///< no USB stick is plugged in, or it was unplugged
        Full = 3,     ///< there is no space left on the USB stick
        ReadOnly = 4, ///< the USB stick is write-protected
        Failed = 5,   ///< `detail` has the reason, for the log
    };

    State state = Writing; ///< the last report has any other state
    int percent = 0;       ///< of the data that are written
    std::string detail;    ///< UTF-8, isn't translated
};

/// The service "lcdLogExport": writes the device's journal and its test results to a USB stick. A file has its final
/// name only when it is complete and on the stick. The order of the operations is part of the interface. Call them on
/// the GUI thread; they return at once.
class ILogExport
{
public:
    /// A function that gets the reports of one export.
    using Listener = std::function<void(const LogExportReport &)>;

    /// Starts an export and cancels an earlier one that hasn't ended. @p listener is called on any thread: any number
    /// of times with the state Writing, then once with another state.
    virtual void startExport(const Listener &listener) = 0;
    /// Cancels the export, if one is running, and removes what it has written. Its listener may be called once more.
    virtual void cancelExport() = 0;

protected:
    ~ILogExport() = default;
};

}
