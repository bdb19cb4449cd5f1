#include "window/filedialog.h"

#include "panel/theme.h"

#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QCompleter>
#include <QtWidgets/QFileDialog>

namespace panelhost {

QFileDialog *makeFileDialog(QWidget *window, const QString &title, const QString &objectName)
{
    auto *dialog = new QFileDialog(window, title);
    dialog->setObjectName(objectName);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    theme::applyTo(dialog);
    // The list of suggestions is a window of its own.
    const auto completers = dialog->findChildren<QCompleter *>();
    for (QCompleter *completer : completers)
        theme::applyTo(completer->popup());
    dialog->resize(dialog->sizeHint().boundedTo(window->window()->size()));
    return dialog;
}

}
