#include "services/tbarcalibrationservice.h"

#include "device/device.h"

namespace panelhost {

using LCD::ProtocolImpl::s_BarCalibration;

namespace {

QJsonObject describe(const s_BarCalibration &record)
{
    return {{QStringLiteral("target"), record.target},
            {QStringLiteral("command"), record.command},
            {QStringLiteral("value"), record.value}};
}

}

TBarCalibrationService::TBarCalibrationService(Device &device, Journal &journal) : m_device(device), m_journal(journal)
{
    device.setCalibrationListener([this](int command, int percent) { onProgress(command, percent); });
}

void TBarCalibrationService::setBarCalibration(const s_BarCalibration &command,
                                               const std::function<void(bool, const std::string &)> &result)
{
    m_journal.add(Journal::Kind::Call, QStringLiteral("lcdTBarCalibration.setBarCalibration"), describe(command));
    const auto answer = [this, code = command.command, result](bool ok, const std::string &message) {
        m_journal.add(Journal::Kind::Event, QStringLiteral("lcdTBarCalibration.result"),
                      {{QStringLiteral("command"), code},
                       {QStringLiteral("ok"), ok},
                       {QStringLiteral("message"), QString::fromStdString(message)}});
        if (result)
            result(ok, message);
    };
    m_device.calibrate(command.command, answer);
}

void TBarCalibrationService::registerBarCalibrationCallback(
    const std::string &subscriber, const std::function<void(const s_BarCalibration &)> &callback)
{
    m_journal.add(Journal::Kind::Call, QStringLiteral("lcdTBarCalibration.registerBarCalibrationCallback"),
                  {{QStringLiteral("subscriber"), QString::fromStdString(subscriber)},
                   {QStringLiteral("callback"), callback ? QStringLiteral("set") : QStringLiteral("empty")}});
    const std::lock_guard lock(m_mutex);
    m_subscribers[subscriber] = callback;
}

void TBarCalibrationService::onProgress(int command, int percent)
{
    s_BarCalibration report;
    report.command = command;
    report.value = percent;
    std::unique_lock lock(m_mutex);
    const auto subscribers = m_subscribers;
    lock.unlock();
    for (const auto &[subscriber, callback] : subscribers) {
        if (!callback)
            continue;
        QJsonObject data = describe(report);
        data.insert(QStringLiteral("subscriber"), QString::fromStdString(subscriber));
        m_journal.add(Journal::Kind::Event, QStringLiteral("lcdTBarCalibration.report"), data);
        callback(report);
    }
}

}
