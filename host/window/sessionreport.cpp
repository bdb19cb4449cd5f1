#include "window/sessionreport.h"

#include "playing/pagespans.h"
#include "session/session.h"

#include <QtCore/QBuffer>
#include <QtCore/QJsonDocument>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

namespace panelhost {

namespace {

StepResult stepOf(const Journal::Entry &action)
{
    StepResult step;
    step.at = action.at;
    step.text = action.name;
    if (!action.data.isEmpty())
        step.text += QLatin1Char(' ') + QString::fromUtf8(QJsonDocument(action.data).toJson(QJsonDocument::Compact));
    return step;
}

StepResult pictureOf(QWidget &lcd, Milliseconds now)
{
    StepResult step;
    step.at = now;
    step.text = QStringLiteral("the LCD when the report was saved");
    step.screenshot = QStringLiteral("lcd");
    QBuffer buffer(&step.png);
    buffer.open(QIODevice::WriteOnly);
    lcd.grab().save(&buffer, "PNG");
    return step;
}

}

ScenarioResult sessionResult(Session &session)
{
    ScenarioResult result;
    result.title = QStringLiteral("Session in the window");
    result.duration = session.clock().now();
    PageSpans pages;
    const auto entries = session.journal().entries();
    for (const Journal::Entry &entry : entries) {
        result.journal.append(entry);
        pages.add(entry);
        if (entry.kind == Journal::Kind::Action)
            result.steps.append(stepOf(entry));
    }
    result.pages = pages.spans(result.duration);
    result.stepsPlayed = result.steps.size();
    result.steps.append(pictureOf(*session.lcd(), result.duration));
    return result;
}

}
