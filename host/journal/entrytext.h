#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>

namespace panelhost {

/// Returns the data of a journal entry in one readable line, such as "level=debug, count=3".
QString dataText(const QJsonObject &data);

}
