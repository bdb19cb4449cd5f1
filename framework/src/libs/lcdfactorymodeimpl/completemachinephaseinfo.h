#pragma once

#include <cstdint>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QColor>

namespace LCD::FactoryModeImpl {

/// One screen of the complete machine test, as a value. An empty text or icon leaves what the page shows; an empty
/// title leaves everything but the no-pass button.
///
/// Threads: a value; each thread uses a copy of its own.
struct CompleteMachinePhaseInfo
{
    /// Stands in `panelMode` for: don't tell the keyboard service.
    static constexpr std::int32_t KeepPanelMode = 16;

    QString title;
    QString titleIcon;
    QString stepTitle;
    QStringList steps;
    /// By line; a line without an entry is white.
    QList<QColor> stepColors;
    QString leftBtnText;
    QString rightBtnText;
    bool leftBtnVisible = false;
    bool rightBtnVisible = true;
    QString statusIcon;
    bool statusIconVisible = false;
    /// 0 puts the focus on the right button, any other value on the left.
    int focusLeftBtn = 0;
    bool keyEventsEnabled = true;
    bool noPassBtnClickable = true;
    bool stepTitleVisible = true;
    /// Leaves the step lines and their marks on the page, and `steps` unread.
    bool keepSteps = false;
    std::int32_t panelMode = -1;
};

}
