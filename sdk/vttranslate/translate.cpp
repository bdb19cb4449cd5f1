#include "translator.h"

#include "veltor/trans/translate.h"

namespace veltor::trans {

bool Translator::load(const QString &file)
{
    auto catalogue = std::make_unique<QTranslator>();
    if (!catalogue->load(file))
        return false;
    const QWriteLocker locker(&m_lock);
    m_catalogue = std::move(catalogue);
    return true;
}

QString Translator::translate(const QString &context, const QString &section, const QString &key) const
{
    const QReadLocker locker(&m_lock);
    if (!m_catalogue)
        return key;
    const QString text =
        m_catalogue->translate(context.toUtf8().constData(), key.toUtf8().constData(), section.toUtf8().constData());
    return text.isNull() ? key : text;
}

QString translate(Translator *translator, const QString &context, const QString &section, const QString &key)
{
    return translator ? translator->translate(context, section, key) : key;
}

}
