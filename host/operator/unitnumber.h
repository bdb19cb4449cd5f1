#pragma once

class QString;

namespace panelhost {

/// Returns why @p number can't be the serial number of a unit, in one sentence; empty if it can.
QString unitNumberProblem(const QString &number);

}
