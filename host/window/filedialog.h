#pragma once

#include <QtCore/QString>

class QFileDialog;
class QWidget;

namespace panelhost {

/// Returns a new file dialog of Qt's own over @p window, in the window's theme. It deletes itself when it is closed.
QFileDialog *makeFileDialog(QWidget *window, const QString &title, const QString &objectName);

}
