#include "completemachinephasetable.h"

#include "completemachinephaseinfo.h"

namespace LCD::FactoryModeImpl {

namespace {

constexpr int KeepMode = CompleteMachinePhaseInfo::KeepPanelMode;
constexpr auto None = PhaseButtons::None;
constexpr auto Next = PhaseButtons::Next;
constexpr auto Start = PhaseButtons::Start;
constexpr auto Fail = PhaseButtons::Fail;
constexpr auto Verdict = PhaseButtons::Verdict;

// The title of the T-Bar phase isn't translated. Its icon depends on the T-Bar and is set in completemachinetbar.cpp,
// as are its step lines. The DC adapter phase has no screen.
// clang-format off
constexpr std::array<PhaseRow, 11> Rows = {{
//   phase                    title key            icon              status icon  step keys                                                              buttons  mode      line in the log
    {PhaseScreenBrightness,   "FCScreenLight",     "ScreenLight",    "",          {"FCScreenBrightnessStep"},                                            None,    15,       "Screen brightness done"},
    {PhaseScreenBadPixel,     "FCScreenBadPixel",  "ScreenBadPixel", "",          {"FCObserveScreenShowStep1", "FCObserveScreenShowStep2"},              Next,    14,       "Screen bad pixel pass"},
    {PhaseButtonLight,        "FCBtnLight",        "ButtonLight",    "",          {"FCBtnBrightnessStep"},                                               None,    KeepMode, "Button light done"},
    {PhaseButtonFunction,     "ButtonFunction",    "ButtonFunction", "",          {"FCClickGreenFlashingBtn"},                                           Fail,    10,       "Button function pass"},
    {PhaseTBar,               "T-Bar",             "",               "",          {},                                                                    Start,   12,       "T-bar pass"},
    {PhaseNetPort,            "FCNet",             "NetTest",        "NetNormal", {"FCNetConnectPort1Port2"},                                            Start,   13,       "Net port pass"},
    {PhaseUsbPort,            "USBA",              "UsbTest",        "UsbNoPass", {"FCUSB30TestStep"},                                                   Verdict, 9,        "USB port pass"},
    {PhaseTypecCommunication, "TypecCommuication", "TypecTest",      "",          {"FCTypecCommStep1", "FCTypecCommStep2", "FCPleaseJudgePass"},         Verdict, 9,        "Type-C USB communication pass"},
    {PhaseDcAdapter,          "",                  "",               "",          {},                                                                    None,    KeepMode, "DC port adapter pass"},
    {PhaseTypecPower,         "TypecPower",        "TypecTest",      "",          {"FCTypecPowerStep1", "FCTypecPowerStep2", "FCPleaseJudgePass"},       Verdict, 9,        "Type-C power port pass"},
    {PhaseNet1Poe,            "NET1POE",           "NetTest",        "",          {"FCNetPort1PowerStep1", "FCNetPort1PowerStep2", "FCPleaseJudgePass"}, Verdict, 9,        "Net port 1 POE power pass"},
}};
// clang-format on

}

const PhaseRow &phaseRow(int phase)
{
    return Rows[static_cast<std::size_t>(phase)];
}

}
