#include "factorykeychecklistconfigparser.h"
#include "factorymenuconfigparser.h"
#include "fuzztarget.h"
#include "xmloutcome.h"

// The component reads a document exactly as QDomDocument does, except for documents that violate a limit.

using namespace LCD::FactoryModeImpl;

int LLVMFuzzerInitialize(int *, char ***)
{
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        if (type == QtFatalMsg)
            fprintf(stderr, "%s\n", qPrintable(text));
    });
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const QByteArray data(reinterpret_cast<const char *>(bytes), static_cast<int>(size));
    const QString outcome = componentOutcome(data);
    if (outcome.contains(QStringLiteral("the document needs more than")))
        return 0;
    if (outcome != plainOutcome(data))
        qFatal("QDomDocument reads something else");
    QList<FactoryMenuLevel1Item> items;
    QList<QPair<int, QString>> keys;
    const bool menu = FactoryMenuConfigParser().parseDocument(data, QString(), items);
    const bool list = FactoryKeyCheckListConfigParser().parseDocument(data, QString(), keys);
    if ((menu || list) && outcome.contains(QStringLiteral("Failed to parse")))
        qFatal("a parser accepts what QDomDocument refuses");
    return 0;
}
