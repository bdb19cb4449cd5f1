#include "fuzzfile.h"
#include "fuzztarget.h"
#include "window/windowsettings.h"

#include <QtCore/QDir>
#include <QtWidgets/QApplication>

#include <cmath>

// Settings of the window that are damaged are ignored: what is read is a value that the window knows. A file with
// values that QSettings can't read safely is kept under another name.

using namespace panelhost;

namespace {

void check(WindowSettings &settings)
{
    const QStringList languages = {QStringLiteral("en"), QStringLiteral("zh_CN")};
    const QString language = settings.language(languages);
    if (!language.isEmpty() && !languages.contains(language))
        qFatal("a language that isn't there: %s", qPrintable(language));
    const auto speed = settings.speed();
    if (speed && !(std::isfinite(*speed) && *speed >= 0))
        qFatal("a speed of %f", *speed);
    settings.addRecentFile(QStringLiteral("/a.yaml"));
    const QStringList files = settings.recentFiles();
    if (files.value(0) != QLatin1String("/a.yaml") || files.size() > WindowSettings::MaxRecentFiles)
        qFatal("the file that was opened last isn't the first one");
}

}

int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QApplication application(*argc, *argv);
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    FuzzFile file("panelhost/panelhost.ini"); // a new directory each time, because QSettings keeps what it has read
    if (!QDir(file.directory()).mkdir(QStringLiteral("panelhost")))
        qFatal("no directory for the settings");
    file.write(bytes, size);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, file.directory());
    const QByteArray content = file.content();
    WindowSettings settings;
    check(settings);
    QFile kept(file.path() + QStringLiteral(".damaged"));
    if (content.contains("@Variant(") && !(kept.open(QIODevice::ReadOnly) && kept.readAll() == content))
        qFatal("a file that isn't read is lost");
    return 0;
}
