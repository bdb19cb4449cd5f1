#include "scenario/junitreport.h"

#include "scenario/xmltext.h"

#include <QtCore/QXmlStreamWriter>

#include <algorithm>

namespace panelhost {

namespace {

QString seconds(qint64 milliseconds)
{
    return QString::number(static_cast<double>(milliseconds) / 1000, 'f', 3);
}

int failuresIn(const ScenarioResults &results)
{
    return static_cast<int>(
        std::count_if(results.begin(), results.end(), [](const ScenarioResult &result) { return !result.passed; }));
}

void writeCase(QXmlStreamWriter &xml, const ScenarioResult &result)
{
    xml.writeStartElement(QStringLiteral("testcase"));
    xml.writeAttribute(QStringLiteral("classname"), QStringLiteral("panelhost.scenario"));
    xml.writeAttribute(QStringLiteral("name"), xmlText(result.file));
    xml.writeAttribute(QStringLiteral("time"), seconds(result.wallTime));
    if (!result.passed) {
        const auto text = xmlText(result.failureText());
        xml.writeStartElement(QStringLiteral("failure"));
        xml.writeAttribute(QStringLiteral("message"), text.section(QLatin1Char('\n'), 0, 0));
        xml.writeCharacters(text);
        xml.writeEndElement();
    }
    xml.writeEndElement();
}

}

QByteArray junitReport(const ScenarioResults &results)
{
    QByteArray report;
    QXmlStreamWriter xml(&report);
    qint64 time = 0;
    for (const auto &result : results)
        time += result.wallTime;
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("testsuites"));
    xml.writeStartElement(QStringLiteral("testsuite"));
    xml.writeAttribute(QStringLiteral("name"), QStringLiteral("panelhost scenarios"));
    xml.writeAttribute(QStringLiteral("tests"), QString::number(results.size()));
    xml.writeAttribute(QStringLiteral("failures"), QString::number(failuresIn(results)));
    xml.writeAttribute(QStringLiteral("errors"), QStringLiteral("0"));
    xml.writeAttribute(QStringLiteral("time"), seconds(time));
    for (const auto &result : results)
        writeCase(xml, result);
    xml.writeEndElement();
    xml.writeEndDocument();
    return report;
}

}
