#include "panel/translated.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QRegularExpression>
#include <QtWidgets/QWidget>

namespace panelhost {

namespace {

/// Belongs to the widget whose texts it sets.
class Retranslator : public QObject
{
public:
    Retranslator(QWidget *widget, const std::function<void()> &setTexts) : QObject(widget), m_setTexts(setTexts)
    {
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::LanguageChange)
            m_setTexts();
        return false;
    }

private:
    std::function<void()> m_setTexts;
};

}

void keepTranslated(QWidget *widget, const std::function<void()> &setTexts)
{
    new Retranslator(widget, setTexts);
    setTexts();
}

// Asian languages have the letter in parentheses.
QString plainActionText(const QString &text)
{
    static const QRegularExpression decoration(QStringLiteral("\\(&.\\)|&|\u2026$"));
    return QString(text).remove(decoration);
}

QString translatedFault(const QString &text)
{
    return QCoreApplication::translate("panelhost::Faults", text.toUtf8().constData());
}

}
