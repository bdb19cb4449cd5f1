#pragma once

class QString;

namespace panelhost {

/// Returns why @p text can't name a unit, a station or an operator, as the rest of a sentence; empty if it can.
QString identityProblem(const QString &text);

/// Returns why @p number can't be the serial number of a unit, in one sentence; empty if it can.
QString unitNumberProblem(const QString &number);

}
