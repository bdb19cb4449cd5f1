#include "translator.h"

#include <QtCore/QTranslator>

#include <mutex>

namespace veltor::trans {

Translator::Translator() = default;
Translator::~Translator() = default;

bool Translator::load(const QString &file)
{
    auto catalog = std::make_unique<QTranslator>();
    if (!catalog->load(file))
        return false;
    const std::unique_lock lock(m_mutex);
    m_catalog.swap(catalog);
    return true;
}

QString Translator::translate(const QString &context, const QString &section, const QString &key) const
{
    const QByteArray contextName = context.toUtf8();
    const QByteArray source = key.toUtf8();
    const QByteArray disambiguation = section.toUtf8();
    const std::shared_lock lock(m_mutex);
    if (!m_catalog)
        return key;
    const QString text = m_catalog->translate(contextName.constData(), source.constData(), disambiguation.constData());
    return text.isNull() ? key : text;
}

}
