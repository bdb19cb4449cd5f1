#include "time/timetext.h"

namespace panelhost {

QString timeText(Milliseconds at)
{
    const QLatin1Char zero('0');
    const QString seconds = QStringLiteral("%1.%2").arg(at / 1000 % 60, 2, 10, zero).arg(at % 1000, 3, 10, zero);
    const Milliseconds minutes = at / 60000;
    if (minutes < 60)
        return QStringLiteral("%1:%2").arg(QString::number(minutes), seconds);
    return QStringLiteral("%1:%2:%3").arg(minutes / 60).arg(minutes % 60, 2, 10, zero).arg(seconds);
}

}
