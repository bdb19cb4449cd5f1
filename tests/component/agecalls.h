#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

// The calls that the aging test makes, as AgeTestFixture records them.

QStringList screensAt(int level);
/// The calls at the start of each step: its text lines, with the failures in the red line, and the calls to services.
QStringList brightnessStarts(const QString &suffix, const QString &failures = QStringLiteral(" "));
QStringList badPixelStarts(const QString &failures = QStringLiteral(" "));
QStringList buttonLightStarts(const QString &suffix, const QString &failures = QStringLiteral(" "));
QStringList netStarts(const QString &failures = QStringLiteral(" "));
QStringList usbStarts(const QString &failures = QStringLiteral(" "));
