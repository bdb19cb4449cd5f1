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
    m_texts.clear();
    return true;
}

QString Translator::translate(const QString &context, const QString &section, const QString &key) const
{
    const Message message{context, section, key};
    {
        const std::shared_lock lock(m_mutex);
        const auto known = m_texts.constFind(message);
        if (known != m_texts.constEnd())
            return *known;
    }
    const std::unique_lock lock(m_mutex);
    if (!m_catalog)
        return key;
    const QString text = m_catalog->translate(context.toUtf8(), key.toUtf8(), section.toUtf8());
    if (text.isNull())
        return key;
    m_texts.insert(message, text);
    return text;
}

}
