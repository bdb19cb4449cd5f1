#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace panelhost {

/// Saves in a file what LEDs and backlights showed before the first write, so that it can be restored even after a
/// crash. Only devices that are in the file are written. Any thread, one at a time.
class SavedOutputs
{
public:
    /// The file is "outputs.json" in @p stateDirectory. After lock(), no other process can use it while the object
    /// exists.
    explicit SavedOutputs(const QString &stateDirectory);
    ~SavedOutputs();
    SavedOutputs(const SavedOutputs &) = delete;
    SavedOutputs &operator=(const SavedOutputs &) = delete;

    QString path() const;
    /// Returns whether there are saved values.
    bool exists() const;
    /// Creates the directory and locks the file. Returns false and sets @p error to a sentence if another panelhost
    /// uses the board or the directory can't be written.
    bool lock(QString *error);
    /// Saves the values of @p leds and @p backlights. The file is replaced as a whole. Returns false and sets @p error
    /// to a sentence if a value can't be read or the file can't be written.
    bool save(const QStringList &leds, const QStringList &backlights, QString *error);
    /// Writes the saved values back and removes the file. Devices that are gone are skipped. Returns one sentence
    /// for each device that failed, or about the file; if there is any, the file is kept. Returns nothing if there is
    /// no file.
    QStringList restore();
    /// Returns how many devices restore() has written.
    int restoredCount() const { return m_restored; }

private:
    const QString m_directory;
    int m_lock = -1;
    int m_restored = 0;
};

/// Returns the trigger of an LED in @p triggers, the content of its attribute: the one in brackets.
QString activeTrigger(const QString &triggers);

/// Returns the directory for what must survive the process: @p given if it isn't empty, otherwise $STATE_DIRECTORY,
/// otherwise a directory of the user.
QString stateDirectory(const QString &given);

}
