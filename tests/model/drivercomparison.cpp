#include "drivercomparison.h"

QList<QPair<int, QString>> keyList(quint32 number)
{
    const auto key = [](int halKey, const char *name) { return qMakePair(halKey, QString::fromLatin1(name)); };
    switch (number % 5) {
    case 0:
        return {key(10, "ONE"), key(27, "TWO"), key(33, "CUT")};
    case 1:
        return {key(33, "CUT"), key(10, "ONE"), key(27, "TWO")};
    case 2:
        return {key(27, "ONLY")};
    case 3:
        return {key(10, "ONE"), key(11, "TWO"), key(10, "ONE")};
    default:
        return {key(5, "CUT"), key(33, "OLD"), key(6, "CUT"), key(7, "LAST")};
    }
}

namespace {

/// The four events of the two port services, for a component with @p host and for @p model.
template <class Model>
void deliverReport(RecordingHost &host, Model &model, bool usb, bool changed, quint32 value)
{
    const ModelPayload payload = usb ? usbPayload(value) : netPayload(value);
    const LinkSubscriptions &service = usb ? static_cast<const LinkSubscriptions &>(host.usb)
                                           : static_cast<const LinkSubscriptions &>(host.networkPort);
    (changed ? service.changed : service.report).fire(usb ? asUsbReport(payload) : asNetReport(payload));
    (usb ? model.usb : model.net).deliver(payload, changed);
}

/// Each of the lowest bits is 1 with a probability of 7/8.
quint32 mostBits(quint32 random)
{
    return random | random >> 8 | random >> 16;
}

int timeOf(quint32 value)
{
    static const int times[] = {0, 1, 700, 1999, 2000, 2001, 3000, 8000, 20000, 40000};
    return times[value % std::size(times)];
}

}

void AgePair::advance(quint32 value)
{
    VirtualTime::advance(timeOf(value));
    m_model->advance(timeOf(value));
}

const std::vector<Operation<AgePair>> &AgePair::operations()
{
    static const std::vector<Operation<AgePair>> table = {
        {"start", 3, [](AgePair &p, quint32) { p.m_fixture.biz->start(), p.m_model->start(); }},
        {"stop", 2, [](AgePair &p, quint32) { p.m_fixture.biz->stop(), p.m_model->stop(); }},
        {"recount", 4, [](AgePair &p, quint32) { p.m_fixture.biz->recount(), p.m_model->recount(); }},
        {"advance", 50, [](AgePair &p, quint32 value) { p.advance(value); }},
        {"net report", 3, [](AgePair &p, quint32 v) { deliverReport(p.m_fixture.host, *p.m_model, false, false, v); }},
        {"net changed", 10, [](AgePair &p, quint32 v) { deliverReport(p.m_fixture.host, *p.m_model, false, true, v); }},
        {"usb report", 3, [](AgePair &p, quint32 v) { deliverReport(p.m_fixture.host, *p.m_model, true, false, v); }},
        {"usb changed", 10, [](AgePair &p, quint32 v) { deliverReport(p.m_fixture.host, *p.m_model, true, true, v); }},
        {"language", 3, [](AgePair &p, quint32 value) { p.m_device.setLanguage(value); }},
        {"menu", 2, [](AgePair &p, quint32 value) { p.m_device.setMenu(value); }},
        {"net answers", 2, [](AgePair &p, quint32 value) { p.m_device.setNetAnswer(value); }},
        {"usb answers", 2, [](AgePair &p, quint32 value) { p.m_device.setUsbAnswer(value); }},
        {"renew", 1, [](AgePair &p, quint32 value) { p.renew(mostBits(value)); }},
        {"services", 0, [](AgePair &p, quint32 value) { p.renew(value); }},
    };
    return table;
}

void MachinePair::answerCommand(bool ok)
{
    const auto &results = m_fixture.host.tbarCalibration.results;
    if (!results.empty())
        results.back()(ok, {});
    m_model->tbar.answer(ok);
}

void MachinePair::renew(quint32 services)
{
    m_model->destroy();
    m_device.setServices(services);
    m_fixture.make();
    m_model.emplace(m_device.model);
}

/// Does what an operator does to pass the phase, or begins a run.
void MachinePair::passPhase()
{
    if (m_model->result != 0 || m_model->phase < 0)
        return start();
    switch (m_model->phase) {
    case 0:
    case 2:
        advance(20000);
        return right();
    case 1:
        return right(13);
    case 3:
        for (int presses = 0; presses < 5 && m_model->keys.current.first >= 0; ++presses)
            press(m_model->keys.current.first);
        return right();
    case 4:
        return right(8);
    case 5:
        return right(2);
    default:
        return right();
    }
}

const std::vector<Operation<MachinePair>> &MachinePair::operations()
{
    static const int keys[] = {5, 6, 7, 10, 11, 27, 33, 99};
    static const std::vector<Operation<MachinePair>> table = {
        {"start", 1, [](MachinePair &p, quint32) { p.start(); }},
        {"left", 2, [](MachinePair &p, quint32) { p.left(); }},
        {"right", 30, [](MachinePair &p, quint32) { p.right(); }},
        {"pass phase", 30, [](MachinePair &p, quint32) { p.passPhase(); }},
        {"advance", 20, [](MachinePair &p, quint32 value) { p.advance(timeOf(value)); }},
        {"press", 12, [](MachinePair &p, quint32 value) { p.press(keys[value % std::size(keys)]); }},
        {"net report", 6,
         [](MachinePair &p, quint32 v) { deliverReport(p.m_fixture.host, *p.m_model, false, false, v); }},
        {"net changed", 6,
         [](MachinePair &p, quint32 v) { deliverReport(p.m_fixture.host, *p.m_model, false, true, v); }},
        {"usb report", 6,
         [](MachinePair &p, quint32 v) { deliverReport(p.m_fixture.host, *p.m_model, true, false, v); }},
        {"usb changed", 6,
         [](MachinePair &p, quint32 v) { deliverReport(p.m_fixture.host, *p.m_model, true, true, v); }},
        {"answer command", 4, [](MachinePair &p, quint32 value) { p.answerCommand(value % 2 == 0); }},
        {"calibration report", 1,
         [](MachinePair &p, quint32) {
             p.m_fixture.host.tbarCalibration.listener.fire(LCD::ProtocolImpl::s_BarCalibration());
             p.advance(0);
         }},
        {"T-Bar type", 2, [](MachinePair &p, quint32 value) { p.m_device.setTBarType(value); }},
        {"keys", 1, [](MachinePair &p, quint32 value) { p.m_device.setKeys(value); }},
        {"language", 2, [](MachinePair &p, quint32 value) { p.m_device.setLanguage(value); }},
        {"menu", 2, [](MachinePair &p, quint32 value) { p.m_device.setMenu(value); }},
        {"net answers", 2, [](MachinePair &p, quint32 value) { p.m_device.setNetAnswer(value); }},
        {"usb answers", 2, [](MachinePair &p, quint32 value) { p.m_device.setUsbAnswer(value); }},
        {"renew", 1, [](MachinePair &p, quint32 value) { p.renew(mostBits(value)); }},
        {"services", 0, [](MachinePair &p, quint32 value) { p.renew(value); }},
    };
    return table;
}
