#include "lcd/translate/lcdfwtranslatemanager.h"

#include "translator.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace {

const QString CatalogDirectory = QStringLiteral(":/lcdtranslator");
const QString DefaultLanguage = QStringLiteral("en");

}

class LCDFWTranslateManager::Impl
{
public:
    veltor::trans::Translator translator;
    QString language;
};

LCDFWTranslateManager::LCDFWTranslateManager() : d(new Impl)
{
    setLanguage(DefaultLanguage);
}

LCDFWTranslateManager::~LCDFWTranslateManager()
{
    delete d;
}

LCDFWTranslateManager *LCDFWTranslateManager::instance()
{
    static LCDFWTranslateManager manager;
    return &manager;
}

veltor::trans::Translator *LCDFWTranslateManager::translator() const
{
    return &d->translator;
}

QStringList LCDFWTranslateManager::languages() const
{
    QStringList codes;
    const QFileInfoList catalogs =
        QDir(CatalogDirectory).entryInfoList({QStringLiteral("*.qm")}, QDir::Files, QDir::Name);
    for (const QFileInfo &catalog : catalogs)
        codes << catalog.completeBaseName();
    return codes;
}

QString LCDFWTranslateManager::language() const
{
    return d->language;
}

bool LCDFWTranslateManager::setLanguage(const QString &code)
{
    if (!languages().contains(code))
        return false;
    if (!d->translator.load(QStringLiteral("%1/%2.qm").arg(CatalogDirectory, code)))
        return false;
    d->language = code;
    return true;
}
