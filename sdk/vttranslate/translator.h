#pragma once

#include <QtCore/QReadWriteLock>
#include <QtCore/QString>
#include <QtCore/QTranslator>

#include <memory>

namespace veltor::trans {

/// One catalogue at a time, made by Qt Linguist: the key is the source text and the section its disambiguation.
/// Any thread may translate while another loads.
class Translator
{
public:
    /// Replaces the catalogue by the one in @p file; false, and no change, if that can't be read.
    bool load(const QString &file);
    QString translate(const QString &context, const QString &section, const QString &key) const;

private:
    mutable QReadWriteLock m_lock;
    std::unique_ptr<QTranslator> m_catalogue;
};

}
