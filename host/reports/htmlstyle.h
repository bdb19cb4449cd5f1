#pragma once

class QString;

namespace panelhost {

/// The style sheet of the report.
QString htmlStyle();

}
