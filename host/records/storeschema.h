#pragma once

#include <QtCore/QStringList>

namespace panelhost {

/// Tells a store from other SQLite files: "PHRC".
constexpr int StoreApplicationId = 0x50485243;

/// The statements that make an empty store.
QStringList storeSchema();

}
