#include "fuzzfile.h"
#include "fuzztarget.h"
#include "scenario/scenarioloader.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QRegularExpression>

// A scenario is either loaded or refused with messages that name a place in the file.

using namespace panelhost;

int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static const QCoreApplication application(*argc, *argv);
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    static FuzzFile file("scenario.yaml");
    file.write(bytes, size);
    QStringList errors;
    const bool loaded = loadScenario(file.path(), {}, &errors).has_value();
    if (loaded != errors.isEmpty())
        qFatal("loaded with errors, or refused without");
    static const QRegularExpression place(QStringLiteral("^[^\n]*scenario\\.yaml:\\d+:\\d+: error: ."));
    for (const QString &error : qAsConst(errors)) {
        if (!place.match(error).hasMatch())
            qFatal("a message without a place: %s", qPrintable(error));
    }
    return 0;
}
