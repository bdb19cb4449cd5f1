#pragma once

#include "lcd/keyboardproxy/types.h"

#include <map>
#include <string>

namespace LCD::KeyboardProxy {

inline const std::string CodeUp = "↑";
inline const std::string CodeDown = "↓";
inline const std::string longScreenHeadImage = "./../share/themes/default/images/headtransparentbkg.png";
inline const std::string backupAndGlobalImage = "./../share/themes/default/images/backupandglobal.png";
inline const std::string layerStateImage = "./../share/themes/default/images/layerStateImage.png";
inline const std::string globalImage = "./../share/themes/default/images/global.png";
inline const std::string backupImage = "./../share/themes/default/images/backup.png";

inline const std::map<eAreaModuleType, std::string> longScreenPNG = {
    {AreaScreen, "./../share/themes/default/images/screen_bg.png"},
    {AreaLayer, "./../share/themes/default/images/layer_bg.png"},
    {AreaInput, "./../share/themes/default/images/input_bg.png"},
    {AreaPreset, "./../share/themes/default/images/preset_bg.png"},
    {AreaCompanion, "./../share/themes/default/images/companion_bg.png"},
};

}
