#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QRandomGenerator>
#include <QtCore/QString>

/// How long a proof runs. The environment variable LCD_PROOF_LENGTH chooses one of three lengths: "quick", the default,
/// takes a few seconds; "short" runs in CI; "long" takes hours.
template <class Count>
Count proofLength(Count quick, Count shortLength, Count longLength)
{
    const QByteArray length = qgetenv("LCD_PROOF_LENGTH");
    if (length.isEmpty() || length == "quick")
        return quick;
    if (length == "short")
        return shortLength;
    if (length == "long")
        return longLength;
    qFatal("LCD_PROOF_LENGTH is \"%s\", expected quick, short or long", length.constData());
    return quick;
}

/// Returns LCD_PROOF_SEED, or a new random number if it isn't set. Print it, so that a failure can be repeated.
inline quint32 proofSeed()
{
    bool isNumber = false;
    const uint seed = qEnvironmentVariable("LCD_PROOF_SEED").toUInt(&isNumber);
    if (!isNumber && qEnvironmentVariableIsSet("LCD_PROOF_SEED"))
        qFatal("LCD_PROOF_SEED is not a number");
    return isNumber ? seed : QRandomGenerator::system()->generate();
}
