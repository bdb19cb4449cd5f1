#include "reports/junitreport.h"

#include "reports/xmltext.h"

#include <QtCore/QXmlStreamWriter>

#include <algorithm>

namespace panelhost {

namespace {

QString seconds(qint64 milliseconds)
{
    return QString::number(static_cast<double>(milliseconds) / 1000, 'f', 3);
}

// An unfinished scenario is reported as an error, so that it isn't taken for passed.
const char *elementOf(const ScenarioResult &result)
{
    if (result.state != ScenarioResult::State::Over)
        return "error";
    return result.passed ? nullptr : "failure";
}

QString countOf(const ScenarioResults &results, const char *element)
{
    return QString::number(std::count_if(results.begin(), results.end(), [element](const ScenarioResult &result) {
        return qstrcmp(elementOf(result), element) == 0;
    }));
}

void writeCase(QXmlStreamWriter &xml, const ScenarioResult &result)
{
    xml.writeStartElement(QStringLiteral("testcase"));
    xml.writeAttribute(QStringLiteral("classname"), QStringLiteral("panelhost.scenario"));
    xml.writeAttribute(QStringLiteral("name"), xmlText(result.file));
    xml.writeAttribute(QStringLiteral("time"), seconds(result.wallTime));
    if (const auto element = elementOf(result)) {
        const auto text = xmlText(result.passed ? result.verdict() : result.failureText());
        xml.writeStartElement(QLatin1String(element));
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
    xml.writeAttribute(QStringLiteral("failures"), countOf(results, "failure"));
    xml.writeAttribute(QStringLiteral("errors"), countOf(results, "error"));
    xml.writeAttribute(QStringLiteral("time"), seconds(time));
    for (const auto &result : results)
        writeCase(xml, result);
    xml.writeEndElement();
    xml.writeEndDocument();
    return report;
}

}
