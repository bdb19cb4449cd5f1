#include "window/windowlanguage.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QLibraryInfo>
#include <QtCore/QLocale>
#include <QtCore/QPointer>
#include <QtCore/QTranslator>

// The macro for resources of a static library must be used outside of any namespace.
static void initTranslations()
{
    Q_INIT_RESOURCE(translations);
}

namespace panelhost {

namespace {

const char *const English = "en"; ///< the language of the texts in the code

QString chosenCode;

// Replaces the translator in @p place.
void install(QPointer<QTranslator> &place, const QString &file, const QString &directory)
{
    delete place.data();
    auto *translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(file, directory)) {
        QCoreApplication::installTranslator(translator);
        place = translator;
    } else {
        delete translator;
    }
}

}

QStringList windowLanguages()
{
    return {QStringLiteral("de"), QString::fromLatin1(English), QStringLiteral("ja"), QStringLiteral("zh_CN")};
}

// All of Chinese is shown in the only Chinese that there is.
QString windowLanguageOf(const QString &locale)
{
    const QString name = QLocale(locale).name();
    const QStringList codes = windowLanguages();
    for (const QString &code : codes) {
        if (name == code || name.section(QLatin1Char('_'), 0, 0) == code.section(QLatin1Char('_'), 0, 0))
            return code;
    }
    return QString::fromLatin1(English);
}

QString systemWindowLanguage()
{
    const QStringList preferred = QLocale::system().uiLanguages();
    return windowLanguageOf(preferred.isEmpty()
                                ? QLocale::system().name()
                                : QString(preferred.first()).replace(QLatin1Char('-'), QLatin1Char('_')));
}

QString windowLanguage()
{
    return chosenCode;
}

void setWindowLanguage(const QString &chosen)
{
    static QPointer<QTranslator> ownTexts;
    static QPointer<QTranslator> textsOfQt;
    const QString code = chosen.isEmpty() ? systemWindowLanguage() : chosen;
    if (!windowLanguages().contains(code))
        return;
    chosenCode = chosen;
    initTranslations();
    install(textsOfQt, QStringLiteral("qtbase_") + code, QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    install(ownTexts, QStringLiteral("panelhost_") + code, QStringLiteral(":/translations"));
}

}
