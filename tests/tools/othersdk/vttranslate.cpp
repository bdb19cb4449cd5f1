#include "veltor/trans/translate.h"

QString veltor::trans::translate(Translator *, const QString &context, const QString &section, const QString &key)
{
    return context + QLatin1Char('/') + section + QLatin1Char('/') + key;
}
