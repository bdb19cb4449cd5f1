#pragma once

#include <QtCore/QSettings>

#include <optional>

namespace panelhost {

class PanelWindow;

/// What the window remembers from one session to the next: its geometry, the docks, the speed, the language and the
/// files that were opened last. Values that are damaged are ignored.
class WindowSettings
{
public:
    /// Uses the user's configuration directory, which XDG_CONFIG_HOME can name.
    WindowSettings();

    /// Returns the language that was used last, if it is one of @p languages.
    QString language(const QStringList &languages) const;
    /// Returns the language that the window had last; empty if none is remembered, or that of the computer.
    QString windowLanguage() const;
    /// Returns the theme that was chosen last, as for setThemeChoice().
    QString theme() const;
    /// Returns the speed that was used last, as for PanelWindow::setSpeed().
    std::optional<double> speed() const;
    /// Restores geometry and docks.
    void restore(PanelWindow &window) const;
    /// Saves what @p window looks like, and @p language unless it is empty.
    void save(const PanelWindow &window, const QString &language);

    static constexpr int MaxRecentFiles = 8;
    /// Returns the files that were opened last, the last one first.
    QStringList recentFiles() const;
    void addRecentFile(const QString &path);
    void clearRecentFiles();

private:
    QSettings m_settings;
};

}
