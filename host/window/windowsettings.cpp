#include "window/windowsettings.h"

#include "window/panelwindow.h"
#include "window/speedbar.h"
#include "window/themechoice.h"
#include "window/windowlanguage.h"

#include <QtCore/QFile>

#include <algorithm>

namespace panelhost {

constexpr int StateVersion = 1; ///< of the docks' names and areas

namespace {

const QString Name = QStringLiteral("panelhost");

/// Renames the file with the settings if it has values in Qt's binary format: the window doesn't write such values, and
/// a damaged one can crash the process while QSettings reads it. Returns the format of the file.
QSettings::Format formatOfSafeFile()
{
    const QString path = QSettings(QSettings::IniFormat, QSettings::UserScope, Name, Name).fileName();
    QFile file(path);
    if (file.open(QIODevice::ReadOnly) && file.readAll().contains("@Variant(")) {
        const QString kept = path + QStringLiteral(".damaged");
        QFile::remove(kept);
        file.rename(kept);
    }
    return QSettings::IniFormat;
}

}

WindowSettings::WindowSettings() : m_settings(formatOfSafeFile(), QSettings::UserScope, Name, Name)
{
}

QString WindowSettings::language(const QStringList &languages) const
{
    const QString code = m_settings.value(QStringLiteral("language")).toString();
    return languages.contains(code) ? code : QString();
}

QString WindowSettings::windowLanguage() const
{
    const QString code = m_settings.value(QStringLiteral("window/language")).toString();
    return windowLanguages().contains(code) ? code : QString();
}

QString WindowSettings::theme() const
{
    return m_settings.value(QStringLiteral("window/theme")).toString();
}

std::optional<double> WindowSettings::speed() const
{
    bool isNumber = false;
    const double factor = m_settings.value(QStringLiteral("speed")).toDouble(&isNumber);
    const auto speeds = SpeedBar::speeds();
    if (!isNumber || std::find(speeds.begin(), speeds.end(), factor) == speeds.end())
        return std::nullopt;
    return factor;
}

void WindowSettings::restore(PanelWindow &window) const
{
    if (!window.restoreGeometry(m_settings.value(QStringLiteral("window/geometry")).toByteArray()))
        return;
    const bool hasDocks =
        window.restoreDocks(m_settings.value(QStringLiteral("window/docks")).toByteArray(), StateVersion);
    window.setArrangesDocks(!hasDocks || m_settings.value(QStringLiteral("window/arranges-docks"), true).toBool());
}

void WindowSettings::save(const PanelWindow &window, const QString &language)
{
    m_settings.setValue(QStringLiteral("window/geometry"), window.saveGeometry());
    m_settings.setValue(QStringLiteral("window/docks"), window.saveState(StateVersion));
    m_settings.setValue(QStringLiteral("window/arranges-docks"), window.arrangesDocks());
    m_settings.setValue(QStringLiteral("window/language"), panelhost::windowLanguage());
    m_settings.setValue(QStringLiteral("window/theme"), themeChoice());
    m_settings.setValue(QStringLiteral("speed"), window.chosenSpeed());
    if (!language.isEmpty())
        m_settings.setValue(QStringLiteral("language"), language);
}

QStringList WindowSettings::recentFiles() const
{
    return m_settings.value(QStringLiteral("recent-files")).toStringList().mid(0, MaxRecentFiles);
}

void WindowSettings::addRecentFile(const QString &path)
{
    QStringList files = recentFiles();
    files.removeAll(path);
    files.prepend(path);
    m_settings.setValue(QStringLiteral("recent-files"), QStringList(files.mid(0, MaxRecentFiles)));
}

void WindowSettings::clearRecentFiles()
{
    m_settings.remove(QStringLiteral("recent-files"));
}

}
