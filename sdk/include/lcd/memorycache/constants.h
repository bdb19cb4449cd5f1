#pragma once

#include <string>

namespace LCD::MemoryCache::constants {

inline const std::string LCDIniFilePath = "../share/Lcd.ini";
inline const std::string KEY_OVERRIDE_LANGUAGE = "General/OverrideLanguage";

}
