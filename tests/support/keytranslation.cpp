#include "keytranslation.h"

#include "veltor/trans/translate.h"

#include <QtCore/QMutex>

#include <utility>

namespace {

QMutex languageMutex;
QString testLanguage;
QString testEnding;
QStringList lookedUpKeys;

}

void setTestLanguage(const QString &language)
{
    const QMutexLocker locker(&languageMutex);
    testLanguage = language.isEmpty() ? QString() : language + QLatin1Char(':');
}

void setTestEnding(const QString &ending)
{
    const QMutexLocker locker(&languageMutex);
    testEnding = ending;
}

QStringList takeLookedUpKeys()
{
    const QMutexLocker locker(&languageMutex);
    return std::exchange(lookedUpKeys, {});
}

namespace veltor::trans {

QString translate(Translator *, const QString &context, const QString &section, const QString &key)
{
    const QMutexLocker locker(&languageMutex);
    lookedUpKeys << key;
    const bool here = context == QLatin1String("LCD::HomeWidgets") && section == QLatin1String("Global");
    return QStringLiteral("[%1%2%3]%4").arg(here ? QString() : context + section, testLanguage, key, testEnding);
}

}
