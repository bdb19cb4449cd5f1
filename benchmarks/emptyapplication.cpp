#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

// An application that shows nothing and ends at once.
int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QTimer::singleShot(0, &QApplication::quit);
    return QApplication::exec();
}
