#include "pagetable.h"

#include "controltests.h"
#include "keywalktest.h"
#include "linktests.h"
#include "pagetest.h"
#include "servicetests.h"
#include "tbartest.h"
#include "touchtest.h"
#include "visualtests.h"

#include <algorithm>

namespace LCD::RepairPages {

namespace {

constexpr char keyboard[] = "lcdKeyboardEvent";
constexpr char factoryMode[] = "lcdFactoryModeWidget";
constexpr char calibration[] = "lcdTBarCalibration";
constexpr char netPorts[] = "lcdMemoryCacheNetworkPort";
constexpr char usbPorts[] = "lcdMemoryCacheNodeUSB";
constexpr char logExport[] = "lcdLogExport";
constexpr char factoryReset[] = "lcdFactoryReset";

// The container keys of the second menu level.
#define REPAIR(tail) "container.factorytest.repairmode." tail

}

const std::vector<PageInfo> &pageTable()
{
    // clang-format off
    static const std::vector<PageInfo> table = {
    //   container keys                  title               icon              steps                                                      services                 mode  test
        {{REPAIR("screenlight")},        "FCScreenLight",    "ScreenLight",    {"FCScreenBrightnessStep"},                                {keyboard},              15,   makeScreenLightTest},
        {{REPAIR("screenbadpixel"),
          REPAIR("screenbadpixels")},    "FCScreenBadPixel", "ScreenBadPixel", {"FCObserveScreenShowStep1", "FCObserveScreenShowStep2"},  {keyboard},              14,   makeScreenBadPixelTest},
        {{REPAIR("buttonlight")},        "FCBtnLight",       "ButtonLight",    {"FCBtnBrightnessStep"},                                   {keyboard},              15,   makeButtonLightTest},
        {{REPAIR("buttonfunction")},     "ButtonFunction",   "ButtonFunction", {"FCClickGreenFlashingBtn"},                               {keyboard, factoryMode}, 10,   makeKeyWalkTest},
        {{REPAIR("knob")},               "RepairKnob",       "Knob",           {"RepairKnobStep"},                                        {},                      3,    makeKnobTest},
        {{REPAIR("joystick")},           "RepairJoystick",   "Joystick",       {"RepairJoystickStep"},                                    {},                      3,    makeJoystickTest},
        {{REPAIR("tbar")},               "RepairTBar",       "fc_tbar_slider", {"RepairTBarStart"},                                       {keyboard, calibration}, 12,   makeTBarTest},
        {{REPAIR("net")},                "FCNet",            "NetTest",        {"RepairNetStep"},                                         {netPorts},              13,   makeNetTest},
        {{REPAIR("touchscreen")},        "RepairTouch",      "TouchScreen",    {"RepairTouchStep"},                                       {},                      3,    makeTouchTest},
        {{REPAIR("usb")},                "FCUSB",            "UsbTest",        {"RepairUSBStep"},                                         {usbPorts},              9,    makeUsbTest},
        {{"container.logexport"},        "RepairExportTitle","LogExport",      {"RepairExportStep"},                                      {logExport},             3,    makeLogExport},
        {{"container.resetfactory"},     "RepairResetTitle", "FactoryReset",   {"RepairResetStep"},                                       {factoryReset},          3,    makeFactoryReset},
    };
    // clang-format on
    return table;
}

const PageInfo *findPage(const QString &containerKey)
{
    const auto &table = pageTable();
    const auto found = std::find_if(table.begin(), table.end(), [&containerKey](const PageInfo &info) {
        return std::any_of(info.containerKeys.begin(), info.containerKeys.end(),
                           [&containerKey](const char *key) { return containerKey == QLatin1String(key); });
    });
    return found == table.end() ? nullptr : &*found;
}

}
