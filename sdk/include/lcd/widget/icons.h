#pragma once

#include "lcd/widget/factorytestframe.h"

#include <QtCore/QMap>
#include <QtCore/QString>

namespace LCD::Widget {

inline const QString Pass_Icon_File = QStringLiteral("icon_pass.png");
inline const QString NoPass_Icon_File = QStringLiteral("icon_nopass.png");
inline const QString Icon_Genlock_Normal = QStringLiteral("GenlockNormal");
inline const QString Icon_Genlock_Pass = QStringLiteral("GenlockPass");
inline const QString Icon_Genlock_NoPass = QStringLiteral("GenlockNoPass");
inline const QString Icon_LTC_Normal = QStringLiteral("LTCNormal");
inline const QString Icon_LTC_Pass = QStringLiteral("LTCPass");
inline const QString Icon_LTC_NoPass = QStringLiteral("LTCNoPass");
inline const QString Icon_TypeC_Link = QStringLiteral("TypecLink");
inline const QString Icon_TypeC_LinkF = QStringLiteral("TypecLinkF");
inline const QString Icon_TypeC_LinkR = QStringLiteral("TypecLinkR");
inline const QString Icon_TypeC_UnLink = QStringLiteral("TypecUnLink");
inline const QString Icon_Net_Normal = QStringLiteral("NetNormal");
inline const QString Icon_Net_Pass = QStringLiteral("NetPass");
inline const QString Icon_Net_NoPass = QStringLiteral("NetNoPass");
inline const QString Icon_Usb_Normal = QStringLiteral("UsbNormal");
inline const QString Icon_Usb_Pass = QStringLiteral("UsbPass");
inline const QString Icon_Usb_NoPass = QStringLiteral("UsbNoPass");

inline const QMap<IconType, QString> g_IconMap = {
    {IconPass, Pass_Icon_File},
    {IconNotPass, NoPass_Icon_File},
    {IconNone, QString()},
};

}
