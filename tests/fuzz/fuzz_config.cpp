#include "check/checker.h"
#include "device/keylist.h"
#include "fuzzfile.h"
#include "fuzztarget.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QSet>

// The two configuration files are checked, and the key list is read. The first byte chooses the file that has the rest
// of the input; the other one is the shipped one. Each finding names a file and a line, and each key is there once.

using namespace panelhost;

namespace {

void copyShipped(const char *name, const QString &directory)
{
    const QString file = QString::fromLatin1(name);
    if (!QFile::copy(QStringLiteral(LCD_SOURCE_DIR "/share/") + file, directory + QLatin1Char('/') + file))
        qFatal("%s can't be copied", name);
}

void checkFindings(const FuzzFile &file)
{
    const Diagnostics findings = checkDirectory(file.directory());
    for (const Diagnostic &finding : findings) {
        if (!finding.file.startsWith(file.directory()) || finding.location.line < 1 || finding.text.isEmpty())
            qFatal("a finding without a place: %s", qPrintable(finding.toLine()));
    }
}

void checkKeys(const FuzzFile &file)
{
    QSet<int> halKeys;
    const QList<KeyState> keys = readKeyList(file.directory());
    for (const KeyState &key : keys)
        halKeys.insert(key.halKey);
    if (halKeys.size() != keys.size())
        qFatal("a key is there twice");
}

}

int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static const QCoreApplication application(*argc, *argv);
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    static const char menuName[] = "factorymenu.xml";
    static const char keysName[] = "factorykeychecklist.xml";
    static FuzzFile menu(menuName);
    static FuzzFile keys(keysName);
    static const bool prepared = [] {
        copyShipped(keysName, menu.directory());
        copyShipped(menuName, keys.directory());
        return true;
    }();
    if (!prepared || size == 0)
        return 0;
    FuzzFile &file = bytes[0] % 2 == 0 ? menu : keys;
    file.write(bytes + 1, size - 1);
    checkFindings(file);
    checkKeys(file);
    return 0;
}
