#include "agebench.h"

#include "virtualtime.h"

AgeBench::AgeBench()
{
    make();
}

void AgeBench::make()
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

void AgeBench::runBrightness()
{
    VirtualTime::advance(20000);
}

void AgeBench::runBadPixel()
{
    VirtualTime::advance(36000);
}

void AgeBench::runButtonLight()
{
    VirtualTime::advance(20000);
}

void AgeBench::runToNetStep()
{
    runBrightness();
    runBadPixel();
    runButtonLight();
}

void AgeBench::netChanged(const std::vector<std::pair<int, bool>> &ports)
{
    host.networkPort.changed.fire(RecordingNetworkPort::payload(ports));
}

void AgeBench::usbChanged(const std::vector<RecordingUsb::Node> &nodes)
{
    host.usb.changed.fire(RecordingUsb::payload(nodes));
}

QStringList lines(const QString &step, const QString &failures)
{
    return {QStringLiteral("clear"), QStringLiteral("white [FCAging]") + step, QStringLiteral("red ") + failures};
}
