#include "keytranslation.h"

#include "veltor/trans/translate.h"

#include <QtCore/QMutex>

namespace {

QMutex languageMutex;
QString testLanguage;
QString testEnding;
QStringList *lookedUpKeys = nullptr;
std::function<void()> lookUpHook;

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

void recordLookedUpKeys(QStringList *keys)
{
    const QMutexLocker locker(&languageMutex);
    lookedUpKeys = keys;
}

void setLookUpHook(const std::function<void()> &hook)
{
    const QMutexLocker locker(&languageMutex);
    lookUpHook = hook;
}

namespace veltor::trans {

QString translate(Translator *, const QString &context, const QString &section, const QString &key)
{
    QMutexLocker locker(&languageMutex);
    if (const auto hook = lookUpHook) {
        locker.unlock(); // the hook may wait for another look-up
        hook();
        locker.relock();
    }
    if (lookedUpKeys)
        *lookedUpKeys << key;
    const bool here = context == QLatin1String("LCD::HomeWidgets") && section == QLatin1String("Global");
    return QStringLiteral("[%1%2%3]%4").arg(here ? QString() : context + section, testLanguage, key, testEnding);
}

}
