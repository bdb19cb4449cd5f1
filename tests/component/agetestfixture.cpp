#include "agetestfixture.h"

#include "virtualtime.h"

AgeTestFixture::AgeTestFixture()
{
    make();
}

void AgeTestFixture::make()
{
    biz.emplace();
    biz->registerSetAgeTextInfoCallBack([this](const QString &text, const QColor &color) {
        const QString name = color == QColor(Qt::white) ? QStringLiteral("white ")
            : color == QColor(Qt::red)                  ? QStringLiteral("red ")
                                                        : color.name();
        host.calls.add(text.isEmpty() && color == QColor(Qt::white) ? QStringLiteral("clear") : name + text);
    });
    biz->registerOnButtonLightFinishedCallback([this] { host.calls.add(QStringLiteral("finished")); });
}

void AgeTestFixture::runBrightness()
{
    VirtualTime::advance(20000);
}

void AgeTestFixture::runBadPixel()
{
    VirtualTime::advance(36000);
}

void AgeTestFixture::runButtonLight()
{
    VirtualTime::advance(20000);
}

void AgeTestFixture::runToNetStep()
{
    runBrightness();
    runBadPixel();
    runButtonLight();
}

void AgeTestFixture::netChanged(const std::vector<std::pair<int, bool>> &ports)
{
    host.networkPort.changed.fire(RecordingNetworkPort::payload(ports));
}

void AgeTestFixture::usbChanged(const std::vector<RecordingUsb::Node> &nodes)
{
    host.usb.changed.fire(RecordingUsb::payload(nodes));
}

QStringList lines(const QString &step, const QString &failures)
{
    return {QStringLiteral("clear"), QStringLiteral("white [FCAging]") + step, QStringLiteral("red ") + failures};
}
