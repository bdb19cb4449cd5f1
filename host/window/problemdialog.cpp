#include "window/problemdialog.h"

#include "panel/theme.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QDialog>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>

namespace panelhost {

void showProblem(QWidget *window, const QString &title, const QString &sentence, const QString &lines)
{
    auto *dialog = new QDialog(window);
    dialog->setObjectName(QStringLiteral("problem"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(title);
    auto *headline = new QLabel(sentence);
    headline->setTextFormat(Qt::PlainText);
    headline->setWordWrap(true);
    // Also words that are as long as a path.
    headline->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto *text = new QPlainTextEdit(lines);
    text->setObjectName(QStringLiteral("problem-lines"));
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    auto *column = new QVBoxLayout(dialog);
    column->addWidget(headline);
    column->addWidget(text);
    column->addWidget(buttons);
    theme::applyTo(dialog);
    dialog->resize(QSize(90 * theme::Grid, 36 * theme::Grid).boundedTo(window->size()));
    dialog->open();
}

}
