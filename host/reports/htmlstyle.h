#pragma once

class QString;

namespace panelhost {

/// Returns the style sheet of the report.
QString htmlStyle();

}
