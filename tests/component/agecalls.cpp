#include "agecalls.h"

#include "agetestfixture.h"

namespace {

QStringList subscriptions(const QString &service, const QString &subscriber)
{
    return {QStringLiteral("%1.registerReportCallback(%2, 2)").arg(service, subscriber),
            QStringLiteral("%1.registerChangedCallback(%2, 2)").arg(service, subscriber)};
}

}

QStringList screensAt(int level)
{
    QStringList calls;
    for (int screen = 0; screen < 3; ++screen)
        calls << QStringLiteral("keyboard.setScreenBrightness(%1, %2)").arg(screen).arg(level);
    return calls;
}

QStringList brightnessStarts(const QString &suffix, const QString &failures)
{
    return lines(QStringLiteral("[FCScreenLight]") + suffix, failures)
        << QStringLiteral("factoryBiz.setFactoryTestType(0)") << screensAt(10);
}

QStringList badPixelStarts(const QString &failures)
{
    return lines(QStringLiteral("[FCScreenBadPixel]"), failures)
        << QStringLiteral("factoryBiz.setFactoryTestType(1)") << QStringLiteral("keyboard.setLcdTestPattern(1, 1)");
}

QStringList buttonLightStarts(const QString &suffix, const QString &failures)
{
    return lines(QStringLiteral("[FCBtnLight]") + suffix, failures)
        << QStringLiteral("factoryBiz.setFactoryTestType(2)") << QStringLiteral("keyboard.setAllButtonBrightness(10)");
}

QStringList netStarts(const QString &failures)
{
    return lines(QStringLiteral("[FCNet]"), failures)
        << QStringLiteral("factoryBiz.setFactoryTestType(10)")
        << subscriptions(QStringLiteral("networkPort"), QStringLiteral("NetPortTestBiz"));
}

QStringList usbStarts(const QString &failures)
{
    return lines(QStringLiteral("[FCUSB]"), failures)
        << QStringLiteral("factoryBiz.setFactoryTestType(9)")
        << subscriptions(QStringLiteral("usb"), QStringLiteral("UsbPortTestBiz"));
}
