#pragma once

namespace panelhost {

/// Prepares the process: platform, message handler and virtual clock. Call it before the application object is made.
/// Without @p needsDisplay the offscreen platform is used unless another one is asked for.
void prepareProcess(bool needsDisplay);

/// Prepares a process that has no widgets and no virtual clock. Call it before the application object is made.
void prepareConsoleProcess();

/// Sets the name and the version of the application. Call it after the application object is made.
void nameApplication();

/// Returns whether the desktop prefers dark colors. Call it after prepareApplication().
bool isSystemDark();

/// Sets the style, the palette and the name of the application. Call it after the application object is made.
void prepareApplication();

}
