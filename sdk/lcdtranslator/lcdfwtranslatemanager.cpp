#include "lcd/translate/lcdfwtranslatemanager.h"

#include "translator.h"

class LCDFWTranslateManager::Impl
{
public:
    veltor::trans::Translator translator;
    QString language;
};

LCDFWTranslateManager::LCDFWTranslateManager() : d(new Impl)
{
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
    return {};
}

QString LCDFWTranslateManager::language() const
{
    return d->language;
}

bool LCDFWTranslateManager::setLanguage(const QString &)
{
    return false;
}
