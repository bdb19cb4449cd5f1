#include "veltor/trans/translate.h"

#include "translator.h"

namespace veltor::trans {

QString translate(Translator *translator, const QString &context, const QString &section, const QString &key)
{
    return translator ? translator->translate(context, section, key) : key;
}

}
