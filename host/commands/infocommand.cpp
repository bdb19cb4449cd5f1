#include "commands/commands.h"
#include "diagnostics/reporterror.h"
#include "output/standardoutput.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTextStream>
#include <QtWidgets/QWidget>

namespace panelhost {

namespace {

QString oneLine(const char *value)
{
    return value ? QString::fromUtf8(value)
                       .replace(QLatin1Char('\r'), QStringLiteral("\\r"))
                       .replace(QLatin1Char('\n'), QStringLiteral("\\n"))
                 : QStringLiteral("(null)");
}

void printField(QTextStream &out, const char *name, const QString &value)
{
    out << "  " << QString::fromLatin1(name).leftJustified(18) << value << '\n';
}

void printRecords(QTextStream &out, const ComponentLibrary &library)
{
    out << "pluginfo\n";
    printField(out, "interfaceVersion", oneLine(library.pluginInfo()->interfaceVersion));
    printField(out, "pluginName", oneLine(library.pluginInfo()->pluginName));
    printField(out, "pluginVersion", oneLine(library.pluginInfo()->pluginVersion));
    printField(out, "pluginMeta", oneLine(library.pluginInfo()->pluginMeta));
    out << "component\n";
    printField(out, "componentName", oneLine(library.componentInfo()->componentName));
    printField(out, "componentMeta", oneLine(library.componentInfo()->componentMeta));
}

void printSteps(QTextStream &out, const QList<LoadStep> &steps)
{
    out << "loading\n";
    for (const LoadStep &step : steps)
        out << "  " << ComponentLibrary::stateName(step.state).leftJustified(18) << step.found << '\n';
}

void printLibrary(QTextStream &out, const ComponentLibrary &library)
{
    printSteps(out, library.steps());
    printRecords(out, library);
}

}

int runInfo(const CommandLine &line)
{
    QElapsedTimer elapsed;
    elapsed.start();
    QString error;
    QList<LoadStep> reached;
    QString text;
    QTextStream out(&text);
    const std::unique_ptr<Session> session = Session::open(line.session, &error, &reached);
    if (!session) {
        printSteps(out, reached);
        print(reached.isEmpty() ? QString() : text);
        return reportError(error);
    }
    session->lcd()->show();
    session->clock().settle();
    session->lcd()->grab();
    const double loaded = static_cast<double>(elapsed.nsecsElapsed()) / 1e6;

    printLibrary(out, session->library());
    if (session->pagesLibrary())
        printLibrary(out, *session->pagesLibrary());
    out << "services\n";
    for (const QString &name : session->serviceNames())
        out << "  " << name << '\n';
    out << "load time\n";
    printField(out, "menu on screen", QStringLiteral("%1 ms").arg(loaded, 0, 'f', 1));
    print(text);
    return 0;
}

}
