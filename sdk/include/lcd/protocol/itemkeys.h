#pragma once

#include <QtCore/QString>

namespace LCD::ProtocolImpl::constants {

inline const QString ItemKey_HM_ADVANCED = QStringLiteral("hm.advanced");
inline const QString ItemKey_HM_COMM = QStringLiteral("hm.comm");
inline const QString ItemKey_HM_PRESET = QStringLiteral("hm.preset");
inline const QString ItemKey_EM_USBPLAYER = QStringLiteral("em.usbplayer");
inline const QString ItemKey_NM_ADVANCED_WORKMODE = QStringLiteral("nm.advanced.workmode");
inline const QString ItemKey_NM_ADVANCED_DEVICEWORKMODE = QStringLiteral("nm.advanced.workmode.deviceworkmode");
inline const QString ItemKey_NM_ADVANCED_DEVICEWORKMODEITEM = QStringLiteral("nm.advanced.workmode.deviceworkmodeitem");
// The name contains NM and the value hm. Both are correct: the device's data use them.
inline const QString ItemKey_NM_LANGUAGE = QStringLiteral("hm.language");

}
