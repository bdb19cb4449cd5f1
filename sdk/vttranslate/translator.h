#pragma once

#include <QtCore/QString>

#include <memory>
#include <shared_mutex>

class QTranslator;

namespace veltor::trans {

/// One catalogue at a time, made by Qt Linguist: the key is the source text and the section its disambiguation,
/// which a released catalogue holds only for keys that stand in several sections. Any thread may translate while
/// another loads.
class Translator
{
public:
    Translator();
    ~Translator();
    Q_DISABLE_COPY(Translator)

    /// Replaces the catalogue by the one in @p file; false, and no change, if that can't be read.
    bool load(const QString &file);
    /// @p key itself when there is no catalogue, or none of its texts is for @p key.
    QString translate(const QString &context, const QString &section, const QString &key) const;

private:
    // Not Qt's lock: the thread sanitizer sees through this one.
    mutable std::shared_mutex m_mutex;
    std::unique_ptr<QTranslator> m_catalogue;
};

}
