#pragma once

#include "recordinghost.h"
#include "xmlfile.h"

#include <QtCore/QDebug>
#include <QtXml/QDomDocument>

/// What becomes of @p data with QDomDocument alone: the document as text, the warning about what is wrong with it, or
/// nothing if its root is not an <LCD>.
inline QString plainOutcome(const QByteArray &data)
{
    QDomDocument document;
    QString error;
    int line = 0;
    int column = 0;
    if (!document.setContent(data, true, &error, &line, &column)) {
        QString warning;
        QDebug(&warning) << "[Test] Failed to parse XML:" << QStringLiteral("path") << "Error:" << error << "at line"
                         << line << "column" << column;
        return warning.trimmed();
    }
    return document.documentElement().tagName() == QLatin1String("LCD") ? document.toString() : QString();
}

/// The same with the component.
inline QString componentOutcome(const QByteArray &data)
{
    const LogCapture log;
    const QDomDocument document = LCD::FactoryModeImpl::XmlFile("[Test]").document(data, QStringLiteral("path"));
    if (!document.isNull())
        return document.toString();
    const QString warning = log.warnings().value(0);
    return warning.contains(QStringLiteral("Root element is not")) ? QString() : warning;
}
