#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantMap>

#include <optional>

namespace panelhost {

/// Selects entries of the journal since the last mark by their name and arguments.
struct JournalQuery
{
    QString name; ///< empty: any
    QVariantMap arguments;
    std::optional<int> times; ///< absent: at least once
};

}
