#include "agetestbiz_p.h"
#include "levelsuffix.h"
#include "translation.h"

// The text lines of the aging test.

namespace LCD::FactoryModeImpl {

// A normal update always ends with a red line, which is blank if there is no failure. A recount writes no red line.
void AgeTestBiz::Impl::updateUIText(bool recount)
{
    writeText(QString(), QColor(Qt::white));
    writeText(getTextByStep(), QColor(Qt::white));
    if (recount)
        clearFailures();
    else
        writeText(failureText(), QColor(Qt::red));
}

void AgeTestBiz::Impl::writeText(const QString &text, const QColor &color) const
{
    currentListener(ageTextInfoCallback)(text, color);
}

QString AgeTestBiz::Impl::getTextByStep() const
{
    QString text = translated(QStringLiteral("FCAging"));
    std::map<int, QString> titles;
    for (const Step &step : Steps)
        titles[step.code] = translated(QLatin1String(step.titleKey));
    const int code = testSteps[static_cast<std::size_t>(currentStepIndex)];
    text += titles[code];
    if (code == ScreenBrightnessStep)
        text += brightnessPercentSuffix(screenBrightnessBiz.state());
    else if (code == ButtonLightStep)
        text += brightnessPercentSuffix(buttonLightBiz.state());
    return text;
}

QString AgeTestBiz::Impl::failureText() const
{
    const QChar separator(0x3001); // the ideographic comma, in every language
    std::unique_lock locker(m_failedStepsMutex);
    const std::set<int> failed = failedSteps;
    locker.unlock();

    QString text = QStringLiteral(" ");
    if (failed.count(NetPortStep) > 0)
        text += translated(QStringLiteral("FCAgeNetNoPass")) + separator;
    if (failed.count(UsbPortStep) > 0)
        text += translated(QStringLiteral("FCAgeUSBNoPass")) + separator;
    if (text.endsWith(separator))
        text.chop(1);
    return text;
}

}
