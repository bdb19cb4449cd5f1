#pragma once

#include <QtCore/QString>

class QWidget;

namespace panelhost {

/// Opens a dialog over @p window with @p sentence, and @p lines that can be selected and copied, such as the errors of
/// a file. Returns at once.
void showProblem(QWidget *window, const QString &title, const QString &sentence, const QString &lines);

}
