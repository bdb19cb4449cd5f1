#include "lcd/translate/lcdfwtranslatemanager.h"

LCDFWTranslateManager *LCDFWTranslateManager::instance()
{
    static LCDFWTranslateManager manager;
    return &manager;
}

veltor::trans::Translator *LCDFWTranslateManager::translator() const
{
    return nullptr;
}
