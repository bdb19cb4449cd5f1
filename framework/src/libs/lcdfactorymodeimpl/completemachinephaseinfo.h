#pragma once

#include <cstdint>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QColor>

namespace LCD::FactoryModeImpl {

/// One screen of the complete machine test, as a value. If a text or icon is empty, the page keeps what it shows. If
/// the title is empty, the page changes only whether the no-pass (left) button is clickable.
///
/// Threads: reentrant; each thread uses its own copy.
struct CompleteMachinePhaseInfo
{
    /// The value of `panelMode` that leaves the device's panel mode unchanged.
    static constexpr std::int32_t KeepPanelMode = 16;

    QString title;
    QString titleIcon;
    QString stepTitle;
    QStringList steps;
    /// The color of each line. Lines without an entry are white.
    QList<QColor> stepColors;
    QString leftBtnText;
    QString rightBtnText;
    bool leftBtnVisible = false;
    bool rightBtnVisible = true;
    QString statusIcon;
    bool statusIconVisible = false;
    /// The button that gets the focus: 0 for the right one, any other value for the left one. Not a value of the
    /// frame's FocusType, in which 0 is the left button.
    int focusLeftBtn = 0;
    bool keyEventsEnabled = true;
    bool noPassBtnClickable = true;
    bool stepTitleVisible = true;
    /// If true, the page keeps its step lines and marks, and `steps` is ignored.
    bool keepSteps = false;
    /// The panel mode that the page sets on the device. Only KeepPanelMode is not set; the initial value -1 is.
    std::int32_t panelMode = -1;
};

}
