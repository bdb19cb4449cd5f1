#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace veltor::trans {
class Translator;
}

/// The process-wide choice of language, English ("en") until another is chosen. On the GUI thread, but for instance()
/// and translator(), which any thread may call; translating through translator() is safe while the language changes.
class LCDFWTranslateManager
{
public:
    static LCDFWTranslateManager *instance();

    /// Never null; the same object for the life of the process, whatever the language.
    veltor::trans::Translator *translator() const;

    /// Language codes that have a catalogue, such as "en" and "zh_CN", in alphabetical order.
    QStringList languages() const;
    QString language() const;
    /// False, and no change, when there is no catalogue for @p code.
    bool setLanguage(const QString &code);

private:
    LCDFWTranslateManager();
    ~LCDFWTranslateManager();
    Q_DISABLE_COPY(LCDFWTranslateManager)

    class Impl;
    Impl *d;
};
