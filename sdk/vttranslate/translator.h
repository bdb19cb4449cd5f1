#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QVector>

#include <memory>
#include <shared_mutex>

class QTranslator;

namespace veltor::trans {

/// Translates with one catalog in the format of Qt Linguist. The key is the source text, and the section is its
/// disambiguation, which a released catalog contains only for keys that occur in several sections. Thread-safe.
class Translator
{
public:
    Translator();
    ~Translator();
    Q_DISABLE_COPY(Translator)

    /// Replaces the catalog by the one in @p file. Returns false and changes nothing if the file can't be read.
    bool load(const QString &file);
    /// Returns the text of @p key, or @p key itself if there is no catalog or the catalog doesn't contain it.
    QString translate(const QString &context, const QString &section, const QString &key) const;

private:
    struct Text
    {
        QString context;
        QString section;
        QString text;
    };
    const QString *knownText(const QString &context, const QString &section, const QString &key) const;

    // A std lock, because the thread sanitizer doesn't see Qt's locks.
    mutable std::shared_mutex m_mutex;
    std::unique_ptr<QTranslator> m_catalog;
    mutable QHash<QString, QVector<Text>> m_texts; ///< by key: the texts of the catalog that were looked up
};

}
