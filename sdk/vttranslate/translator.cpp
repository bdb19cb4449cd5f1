#include "translator.h"

#include <QtCore/QTranslator>

#include <algorithm>
#include <mutex>

namespace veltor::trans {

namespace {

// Most callers pass the same literal each time.
bool isSame(const QString &a, const QString &b)
{
    return a.isSharedWith(b) || a == b;
}

}

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

// The caller holds the mutex.
const QString *Translator::knownText(const QString &context, const QString &section, const QString &key) const
{
    const auto texts = m_texts.constFind(key);
    if (texts == m_texts.constEnd())
        return nullptr;
    const auto known = std::find_if(texts->begin(), texts->end(), [&context, &section](const Text &text) {
        return isSame(text.section, section) && isSame(text.context, context);
    });
    return known == texts->end() ? nullptr : &known->text;
}

QString Translator::translate(const QString &context, const QString &section, const QString &key) const
{
    {
        const std::shared_lock lock(m_mutex);
        if (const QString *known = knownText(context, section, key))
            return *known;
    }
    const std::unique_lock lock(m_mutex);
    if (!m_catalog)
        return key;
    QString text = m_catalog->translate(context.toUtf8(), key.toUtf8(), section.toUtf8());
    if (text.isNull())
        return key;
    m_texts[key].append({context, section, text});
    return text;
}

}
