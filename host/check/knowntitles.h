#pragma once

class QString;

namespace panelhost {

/// True if the factory menu has a title for an item whose key ends in @p tail, in whatever case.
bool isKnownTitle(const QString &tail);

}
