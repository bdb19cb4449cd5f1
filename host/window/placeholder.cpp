#include "window/placeholder.h"

#include <QtCore/QVariant>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStyle>

namespace panelhost {

constexpr const char *EmptyProperty = "isEmpty"; ///< the style sheet has a rule for it

// Qt applies the rule only when the style is set again.
static void setEmpty(QLineEdit &edit, bool isEmpty)
{
    if (edit.property(EmptyProperty) == isEmpty)
        return;
    edit.setProperty(EmptyProperty, isEmpty);
    edit.style()->unpolish(&edit);
    edit.style()->polish(&edit);
}

void dimPlaceholder(QLineEdit &edit)
{
    setEmpty(edit, edit.text().isEmpty());
    QObject::connect(&edit, &QLineEdit::textChanged, &edit,
                     [&edit](const QString &text) { setEmpty(edit, text.isEmpty()); });
}

}
