#include "records/runlines.h"

#include "records/journalreader.h"

#include <QtCore/QBuffer>
#include <QtCore/QJsonDocument>

namespace panelhost {

QByteArray runLines(const QByteArray &journal)
{
    QByteArray lines;
    RunExtractor extractor(
        [&lines](const Run &run) { lines += QJsonDocument(run.toJson()).toJson(QJsonDocument::Compact) + '\n'; });
    QBuffer buffer;
    buffer.setData(journal);
    buffer.open(QIODevice::ReadOnly);
    QString error;
    readJournal(buffer, {}, extractor, &error);
    extractor.endSession();
    return lines;
}

}
