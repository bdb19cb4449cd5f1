#include "history/historyrecorder.h"

#include "history/devicestatedata.h"
#include "history/lcdpicturedata.h"
#include "operator/operatoraction.h"
#include "operator/operatortarget.h"
#include "playing/pagespans.h"
#include "playing/player.h"
#include "records/runextractor.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QJsonDocument>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

#include <algorithm>

namespace panelhost {

namespace {

// On these pages, equal contents as readScreen() returns them look equal. Others have more to show: a scroll position,
// or the cells of a grid.
bool isLookKnown(const QVariantMap &screen)
{
    const QString page = screen.value(QStringLiteral("page")).toString();
    return page == QLatin1String("aging") || page == QLatin1String("machine");
}

QByteArray hashOf(const QVariantMap &screen)
{
    const QByteArray text = QJsonDocument(QJsonObject::fromVariantMap(screen)).toJson(QJsonDocument::Compact);
    return QCryptographicHash::hash(text, QCryptographicHash::Sha1);
}

// The LCD isn't painted while the scenario is played.
QImage paint(QWidget &lcd)
{
    lcd.setUpdatesEnabled(true);
    const QImage picture = lcd.grab().toImage();
    lcd.setUpdatesEnabled(false);
    return picture;
}

}

HistoryRecorder::HistoryRecorder(const Scenario &scenario) : m_scenario(scenario)
{
    m_scenario.device.turnListener = [this](OperatorTarget &target) { endTurn(target); };
    // A session that is only looked at writes nothing to a USB stick of the user's.
    if (m_scenario.device.usbStick != Session::noUsbStick)
        m_scenario.device.usbStick = Session::temporaryUsbStick;
}

std::unique_ptr<SessionHistory> HistoryRecorder::record(const std::function<bool()> &isInterrupted, QString *error)
{
    m_history = std::make_unique<SessionHistory>();
    m_history->m_title = m_scenario.title.isEmpty() ? m_scenario.file : m_scenario.title;
    RunExtractor runs([this](const Run &run) { addRun(run); });
    runs.beginSession({});
    Player::Options options;
    options.isInterrupted = isInterrupted;
    options.journal = [this, &runs](const Journal::Entry &entry) {
        addEntry(entry);
        runs.add(entry);
    };
    Player player(m_scenario, options, [this](const StepResult &step, qint64) { addStep(step); });
    const ScenarioResult result = player.play();
    runs.endSession();
    if (m_history->m_moments.isEmpty()) {
        *error = result.error;
        return nullptr;
    }
    finish(result);
    return std::move(m_history);
}

void HistoryRecorder::addEntry(const Journal::Entry &entry)
{
    const std::lock_guard lock(m_mutex);
    m_history->m_lines.append(entry.toJsonLine());
    m_history->m_times.append(entry.at);
    m_history->m_kinds.append(static_cast<char>(entry.kind));
    addMarker(entry);
}

void HistoryRecorder::addMarker(const Journal::Entry &entry)
{
    if (entry.kind == Journal::Kind::Action) {
        const bool isFault = entry.name == actionName(OperatorAction::Kind::Fault);
        m_history->m_markers.append(
            {entry.at, entry.sequence, isFault ? Marker::Kind::Fault : Marker::Kind::Action, {}});
        return;
    }
    if (entry.kind != Journal::Kind::Screen)
        return;
    m_screenHasChanged = true;
    for (auto value = entry.data.begin(); value != entry.data.end(); ++value)
        m_screen.insert(value.key(), value.value().toVariant());
    const QString page = pageTitle(m_screen);
    if (page != m_page)
        m_history->m_markers.append({entry.at, entry.sequence, Marker::Kind::Phase, page});
    m_page = page;
}

// All threads wait here except for this one, so that what the lock guards can be read without it.
void HistoryRecorder::endTurn(OperatorTarget &target)
{
    auto &moments = m_history->m_moments;
    const qint64 lastLine = m_history->lineCount();
    if (!moments.isEmpty() && moments.constLast().lastLine == lastLine)
        return;
    moments.append({lastLine, m_history->m_devices.add(toData(target.device().state())), pictureOf(target)});
}

int HistoryRecorder::pictureOf(OperatorTarget &target)
{
    const auto &moments = m_history->m_moments;
    const bool isKnown = isLookKnown(m_screen);
    if (isKnown && !m_screenHasChanged && !moments.isEmpty())
        return moments.constLast().picture;
    m_screenHasChanged = false;
    const QByteArray hash = isKnown ? hashOf(m_screen) : QByteArray();
    const auto known = m_pictures.constFind(hash);
    if (isKnown && known != m_pictures.constEnd())
        return *known;
    const int picture = m_history->m_pictures.add(toData(paint(*target.lcd())));
    if (isKnown)
        m_pictures.insert(hash, picture);
    return picture;
}

void HistoryRecorder::addStep(const StepResult &step)
{
    if (!step.passed)
        addFailure(step.at, QStringLiteral("%1:%2: %3").arg(step.file).arg(step.where.line).arg(step.text));
}

void HistoryRecorder::addRun(const Run &run)
{
    for (const RunPhase &phase : run.phases) {
        if (phase.outcome == RunOutcome::Failed)
            addFailure(phase.begin + phase.duration, QStringLiteral("failed: %1").arg(phase.name));
    }
    for (const AgingFailure &failure : run.failures)
        addFailure(failure.at, QStringLiteral("failed: %1").arg(failure.ports.join(QStringLiteral(", "))));
}

void HistoryRecorder::addFailure(Milliseconds at, const QString &text)
{
    m_failures.append({at, 0, Marker::Kind::Failure, text});
}

void HistoryRecorder::finish(const ScenarioResult &result)
{
    m_history->m_duration = result.duration;
    if (const StepResult *failed = result.failedStep())
        m_history->m_error = QStringLiteral("%1:%2: %3").arg(failed->file).arg(failed->where.line).arg(failed->text);
    for (const ContentFile *file : {&m_history->m_lines, &m_history->m_devices, &m_history->m_pictures}) {
        if (!file->error().isEmpty())
            m_history->m_error = file->error();
    }
    for (Marker &failure : m_failures)
        failure.line = m_history->lineAt(failure.at);
    auto &markers = m_history->m_markers;
    markers += m_failures;
    std::stable_sort(markers.begin(), markers.end(), [](const Marker &a, const Marker &b) { return a.line < b.line; });
}

}
