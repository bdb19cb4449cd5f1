// Writes pictures of the typical pages: frameshots <directory> [<width> <height>]

#include "lcd/translate/lcdfwtranslatemanager.h"
#include "typicalpages.h"

#include <QtCore/QDir>
#include <QtCore/QTextStream>
#include <QtWidgets/QApplication>

namespace {

bool shoot(const TypicalPage &page, const QSize &size, const QString &file)
{
    LCD::Widget::FactoryTestFrame frame(nullptr);
    frame.resize(size);
    page.show(frame);
    frame.show();
    QCoreApplication::sendPostedEvents();
    return frame.grab().save(file);
}

int fail(const QString &message)
{
    QTextStream(stderr) << "frameshots: " << message << '\n';
    return 1;
}

}

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2 && arguments.size() != 4)
        return fail(QStringLiteral("expected <directory> [<width> <height>]"));
    const QSize size = arguments.size() == 4 ? QSize(arguments[2].toInt(), arguments[3].toInt()) : QSize(800, 480);
    if (size.isEmpty())
        return fail(QStringLiteral("expected a width and a height in pixels"));
    const QDir directory(arguments[1]);
    if (!directory.mkpath(QStringLiteral(".")))
        return fail(QStringLiteral("can't make the directory %1").arg(directory.path()));

    LCDFWTranslateManager *languages = LCDFWTranslateManager::instance();
    for (const QString &language : languages->languages()) {
        languages->setLanguage(language);
        for (const TypicalPage &page : typicalPages()) {
            const QString file =
                directory.filePath(QStringLiteral("%1-%2.png").arg(QString::fromLatin1(page.name), language));
            if (!shoot(page, size, file))
                return fail(QStringLiteral("can't write %1").arg(file));
        }
    }
    return 0;
}
