#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

// The calls that the aging test makes, in the words of AgeBench.

QStringList screensAt(int level);
/// The start of each step: its lines, with what the red one says of failures, and what it asks of the services.
QStringList brightnessStarts(const QString &suffix, const QString &failures = QStringLiteral(" "));
QStringList badPixelStarts(const QString &failures = QStringLiteral(" "));
QStringList buttonLightStarts(const QString &suffix, const QString &failures = QStringLiteral(" "));
QStringList netStarts(const QString &failures = QStringLiteral(" "));
QStringList usbStarts(const QString &failures = QStringLiteral(" "));
