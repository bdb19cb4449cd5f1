#pragma once

#include <QtCore/QString>

namespace panelhost {

/// Returns the program of the report's page. It shows only the steps and the lines of the journal that contain the text
/// of the search field, and unfolds what a link leads to.
QString reportScript();

}
