#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace veltor::trans {
class Translator;
}

/// The language of the process. It is English ("en") until setLanguage() is called. instance() and translator() are
/// thread-safe, and so is translating with translator() while the language changes. Call all other functions on the GUI
/// thread.
class LCDFWTranslateManager
{
public:
    /// Returns the only instance, which is never null and which nobody deletes.
    static LCDFWTranslateManager *instance();

    /// Returns the translator of the current language. It is never null, and the object stays the same when the
    /// language changes. The manager owns it.
    veltor::trans::Translator *translator() const;

    /// Returns the codes of all languages that have a catalog, such as "en" and "zh_CN", in alphabetical order.
    QStringList languages() const;
    /// Returns the code of the current language.
    QString language() const;
    /// Changes the language. Returns false and changes nothing if there is no catalog for @p code.
    bool setLanguage(const QString &code);

private:
    LCDFWTranslateManager();
    ~LCDFWTranslateManager();
    Q_DISABLE_COPY(LCDFWTranslateManager)

    class Impl;
    Impl *d;
};
