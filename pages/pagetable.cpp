#include "pagetable.h"

#include "keywalktest.h"
#include "linktests.h"
#include "pagetest.h"
#include "tbartest.h"
#include "visualtests.h"

#include <algorithm>

namespace LCD::RepairPages {

namespace {

constexpr char keyboard[] = "lcdKeyboardEvent";
constexpr char factoryMode[] = "lcdFactoryModeWidget";
constexpr char calibration[] = "lcdTBarCalibration";
constexpr char netPorts[] = "lcdMemoryCacheNetworkPort";
constexpr char usbPorts[] = "lcdMemoryCacheNodeUSB";

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
        {{REPAIR("tbar")},               "RepairTBar",       "fc_tbar_slider", {"RepairTBarStart"},                                       {keyboard, calibration}, 12,   makeTBarTest},
        {{REPAIR("net")},                "FCNet",            "NetTest",        {"RepairNetStep"},                                         {netPorts},              13,   makeNetTest},
        {{REPAIR("usb")},                "FCUSB",            "UsbTest",        {"RepairUSBStep"},                                         {usbPorts},              9,    makeUsbTest},
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
