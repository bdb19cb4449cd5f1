<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>LCD::HomeWidgets</name>
    <message>
        <source>FCAging</source>
        <comment>Global</comment>
        <extracomment>The name of the running step follows with nothing between: end with the separator that the language needs.</extracomment>
        <translation>Aging: </translation>
    </message>
    <message>
        <source>FCScreenLight</source>
        <comment>Global</comment>
        <extracomment>Page title and name of a step; a level such as &quot; 30%&quot; may follow.</extracomment>
        <translation>Screen brightness</translation>
    </message>
    <message>
        <source>FCScreenBadPixel</source>
        <comment>Global</comment>
        <translation>Screen pixels</translation>
    </message>
    <message>
        <source>FCBtnLight</source>
        <comment>Global</comment>
        <extracomment>Page title and name of a step; a level such as &quot; 30%&quot; may follow.</extracomment>
        <translation>Key lights</translation>
    </message>
    <message>
        <source>FCNet</source>
        <comment>Global</comment>
        <translation>Net ports</translation>
    </message>
    <message>
        <source>FCUSB</source>
        <comment>Global</comment>
        <translation>USB ports</translation>
    </message>
    <message>
        <source>FCAgeNetNoPass</source>
        <comment>Global</comment>
        <extracomment>May be joined to FCAgeUSBNoPass with an ideographic comma.</extracomment>
        <translation>Net ports failed</translation>
    </message>
    <message>
        <source>FCAgeUSBNoPass</source>
        <comment>Global</comment>
        <translation>USB ports failed</translation>
    </message>
    <message>
        <source>FCAgeMode</source>
        <comment>Global</comment>
        <translation>Aging test</translation>
    </message>
    <message>
        <source>FCAgeModeTestPreparation</source>
        <comment>Global</comment>
        <translation>Connect all net ports in pairs and plug a device into every USB port.</translation>
    </message>
    <message>
        <source>FCAgeModeStartTips</source>
        <comment>Global</comment>
        <translation>Press “Start test” to begin. The test repeats until you stop it.</translation>
    </message>
    <message>
        <source>FCAgeModeStartTest</source>
        <comment>Global</comment>
        <translation>Start test</translation>
    </message>
    <message>
        <source>FCAgeModeStopTest</source>
        <comment>Global</comment>
        <translation>Stop test</translation>
    </message>
    <message>
        <source>FCAgeModeRecount</source>
        <comment>Global</comment>
        <translation>Recount</translation>
    </message>
    <message>
        <source>MachineMode</source>
        <comment>Global</comment>
        <translation>Machine test</translation>
    </message>
    <message>
        <source>TestStep</source>
        <comment>Global</comment>
        <translation>Test steps</translation>
    </message>
    <message>
        <source>FCTestComplete</source>
        <comment>Global</comment>
        <extracomment>Page title, heading and caption of a button.</extracomment>
        <translation>Test complete</translation>
    </message>
    <message>
        <source>FCTestPass</source>
        <comment>Global</comment>
        <translation>Test passed</translation>
    </message>
    <message>
        <source>FCReTest</source>
        <comment>Global</comment>
        <translation>Test again</translation>
    </message>
    <message>
        <source>FCPass</source>
        <comment>Global</comment>
        <translation>Pass</translation>
    </message>
    <message>
        <source>FCNoPass</source>
        <comment>Global</comment>
        <extracomment>Caption of a button, and the verdict of a failed run.</extracomment>
        <translation>Fail</translation>
    </message>
    <message>
        <source>FCPleaseJudgePass</source>
        <comment>Global</comment>
        <extracomment>Last line of an instruction; it has no number.</extracomment>
        <translation>Judge whether the test has passed.</translation>
    </message>
    <message>
        <source>FCNextStep</source>
        <comment>Global</comment>
        <translation>Next step</translation>
    </message>
    <message>
        <source>FCScreenBrightnessStep</source>
        <comment>Global</comment>
        <translation>Check that all screens step through their brightness levels, from 10% to 100%.</translation>
    </message>
    <message>
        <source>FCBtnBrightnessStep</source>
        <comment>Global</comment>
        <translation>Check that the lights of all keys step through their brightness levels, from 10% to 100%.</translation>
    </message>
    <message>
        <source>FCObserveScreenShowStep1</source>
        <comment>Global</comment>
        <translation>Look for dead or bright pixels on all screens.</translation>
    </message>
    <message>
        <source>FCObserveScreenShowStep2</source>
        <comment>Global</comment>
        <translation>Press “Next step” for the next picture.</translation>
    </message>
    <message>
        <source>ButtonFunction</source>
        <comment>Global</comment>
        <translation>Key function</translation>
    </message>
    <message>
        <source>FCClickGreenFlashingBtn</source>
        <comment>Global</comment>
        <translation>Press the key that flashes green.</translation>
    </message>
    <message>
        <source>Push T-Bar to Top</source>
        <comment>Global</comment>
        <extracomment>Follows &quot;1.&quot;, &quot;3.&quot; and &quot;5.&quot; with nothing between: begin with the blank that the language needs.</extracomment>
        <translation> Push the T-Bar to the top</translation>
    </message>
    <message>
        <source>Push T-Bar to Bottom</source>
        <comment>Global</comment>
        <extracomment>Follows &quot;2.&quot;, &quot;4.&quot; and &quot;6.&quot; with nothing between: begin with the blank that the language needs.</extracomment>
        <translation> Push the T-Bar to the bottom</translation>
    </message>
    <message>
        <source>FCNetConnectPort1Port2</source>
        <comment>Global</comment>
        <translation>Connect net port 1 to net port 2 with a network cable.</translation>
    </message>
    <message>
        <source>USBA</source>
        <comment>Global</comment>
        <translation>USB-A ports</translation>
    </message>
    <message>
        <source>FCUSB30TestStep</source>
        <comment>Global</comment>
        <translation>Plug a USB 3.0 device into every USB-A port.</translation>
    </message>
    <message>
        <source>TypecCommuication</source>
        <comment>Global</comment>
        <translation>Type-C data</translation>
    </message>
    <message>
        <source>FCTypecCommStep1</source>
        <comment>Global</comment>
        <translation>Connect a computer to the Type-C port.</translation>
    </message>
    <message>
        <source>FCTypecCommStep2</source>
        <comment>Global</comment>
        <translation>Check that the computer finds the device.</translation>
    </message>
    <message>
        <source>TypecPower</source>
        <comment>Global</comment>
        <translation>Type-C power</translation>
    </message>
    <message>
        <source>FCTypecPowerStep1</source>
        <comment>Global</comment>
        <translation>Connect a power meter to the Type-C power port.</translation>
    </message>
    <message>
        <source>FCTypecPowerStep2</source>
        <comment>Global</comment>
        <translation>Check that the meter shows a steady voltage.</translation>
    </message>
    <message>
        <source>NET1POE</source>
        <comment>Global</comment>
        <translation>Net port 1 PoE</translation>
    </message>
    <message>
        <source>FCNetPort1PowerStep1</source>
        <comment>Global</comment>
        <translation>Connect a PoE tester to net port 1.</translation>
    </message>
    <message>
        <source>FCNetPort1PowerStep2</source>
        <comment>Global</comment>
        <translation>Check that the tester shows power.</translation>
    </message>
    <message>
        <source>RepairServiceMissing</source>
        <comment>Global</comment>
        <translation>The device doesn't offer what this test needs.</translation>
    </message>
    <message>
        <source>RepairSkipKey</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>Skip key</translation>
    </message>
    <message>
        <source>RepairKeyUnderTest</source>
        <comment>Global</comment>
        <extracomment>%1 is the name of a key.</extracomment>
        <translation>Key under test: %1</translation>
    </message>
    <message>
        <source>RepairKeysFailed</source>
        <comment>Global</comment>
        <extracomment>%1 is a list of names of keys.</extracomment>
        <translation>Failed keys: %1</translation>
    </message>
    <message>
        <source>RepairNetStep</source>
        <comment>Global</comment>
        <translation>Connect all net ports in pairs with network cables.</translation>
    </message>
    <message>
        <source>RepairUSBStep</source>
        <comment>Global</comment>
        <translation>Plug a USB device into each USB port.</translation>
    </message>
    <message>
        <source>RepairNetPort</source>
        <comment>Global</comment>
        <extracomment>%1 is a number.</extracomment>
        <translation>Net port %1</translation>
    </message>
    <message>
        <source>RepairUSBPort</source>
        <comment>Global</comment>
        <extracomment>%1 is a number.</extracomment>
        <translation>USB port %1</translation>
    </message>
    <message>
        <source>RepairLinked</source>
        <comment>Global</comment>
        <extracomment>Follows the name of a port and a colon.</extracomment>
        <translation>linked</translation>
    </message>
    <message>
        <source>RepairNotLinked</source>
        <comment>Global</comment>
        <extracomment>Follows the name of a port and a colon.</extracomment>
        <translation>not linked</translation>
    </message>
    <message>
        <source>RepairMorePorts</source>
        <comment>Global</comment>
        <extracomment>%1 is a number of ports that the page has no room for.</extracomment>
        <translation>%1 more ports</translation>
    </message>
    <message>
        <source>RepairNoPort</source>
        <comment>Global</comment>
        <translation>No port has been reported.</translation>
    </message>
    <message>
        <source>RepairTBar</source>
        <comment>Global</comment>
        <extracomment>Page title.</extracomment>
        <translation>T-Bar</translation>
    </message>
    <message>
        <source>RepairTBarStart</source>
        <comment>Global</comment>
        <translation>Start the calibration, then push the T-Bar as each line says.</translation>
    </message>
    <message>
        <source>RepairTBarMeasuring</source>
        <comment>Global</comment>
        <extracomment>In the place of the heading while a calibration step runs.</extracomment>
        <translation>Calibrating: don't move the T-Bar</translation>
    </message>
    <message>
        <source>RepairTBarNotTop</source>
        <comment>Global</comment>
        <translation>The step failed. The T-Bar must be at the very top before the next step.</translation>
    </message>
    <message>
        <source>RepairTBarNotBottom</source>
        <comment>Global</comment>
        <translation>The step failed. The T-Bar must be at the very bottom before the next step.</translation>
    </message>
    <message>
        <source>RepairTBarNoAnswer</source>
        <comment>Global</comment>
        <translation>The calibration didn't finish the step. Check how the T-Bar is connected.</translation>
    </message>
    <message>
        <source>RepairKnob</source>
        <comment>Global</comment>
        <translation>Knob</translation>
    </message>
    <message>
        <source>RepairKnobStep</source>
        <comment>Global</comment>
        <translation>Turn the knob in both directions and press it.</translation>
    </message>
    <message>
        <source>RepairKnobLeft</source>
        <comment>Global</comment>
        <extracomment>A count such as &quot; (1/3)&quot; follows.</extracomment>
        <translation>Turn to the left</translation>
    </message>
    <message>
        <source>RepairKnobRight</source>
        <comment>Global</comment>
        <extracomment>A count such as &quot; (1/3)&quot; follows.</extracomment>
        <translation>Turn to the right</translation>
    </message>
    <message>
        <source>RepairKnobPress</source>
        <comment>Global</comment>
        <translation>Press the knob</translation>
    </message>
    <message>
        <source>RepairJoystick</source>
        <comment>Global</comment>
        <translation>Joystick</translation>
    </message>
    <message>
        <source>RepairJoystickStep</source>
        <comment>Global</comment>
        <translation>Push the joystick in all directions and press it.</translation>
    </message>
    <message>
        <source>RepairJoystickUp</source>
        <comment>Global</comment>
        <translation>Up</translation>
    </message>
    <message>
        <source>RepairJoystickDown</source>
        <comment>Global</comment>
        <translation>Down</translation>
    </message>
    <message>
        <source>RepairJoystickLeft</source>
        <comment>Global</comment>
        <translation>Left</translation>
    </message>
    <message>
        <source>RepairJoystickRight</source>
        <comment>Global</comment>
        <translation>Right</translation>
    </message>
    <message>
        <source>RepairJoystickPress</source>
        <comment>Global</comment>
        <translation>Press</translation>
    </message>
    <message>
        <source>RepairTouch</source>
        <comment>Global</comment>
        <translation>Touch screen</translation>
    </message>
    <message>
        <source>RepairTouchStep</source>
        <comment>Global</comment>
        <extracomment>A count such as &quot; (12/40)&quot; follows.</extracomment>
        <translation>Touch every field, or drag a finger over it.</translation>
    </message>
    <message>
        <source>RepairTouchKeys</source>
        <comment>Global</comment>
        <extracomment>Fail is the caption of the left button.</extracomment>
        <translation>Keys: Left and Enter for "Fail", Back to leave.</translation>
    </message>
    <message>
        <source>RepairTouchCells</source>
        <comment>Global</comment>
        <extracomment>A count such as &quot; (12/40)&quot; follows.</extracomment>
        <translation>Touched fields</translation>
    </message>
    <message>
        <source>RepairExport</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>Export</translation>
    </message>
    <message>
        <source>RepairExportAgain</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>Export again</translation>
    </message>
    <message>
        <source>RepairCancel</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>RepairExportTitle</source>
        <comment>Global</comment>
        <translation>Log export</translation>
    </message>
    <message>
        <source>RepairExportStep</source>
        <comment>Global</comment>
        <translation>Plug in a USB stick. The journal and the test results are written to it.</translation>
    </message>
    <message>
        <source>RepairExportWriting</source>
        <comment>Global</comment>
        <extracomment>%1 is a number from 0 to 100.</extracomment>
        <translation>Writing: %1 %</translation>
    </message>
    <message>
        <source>RepairExportDone</source>
        <comment>Global</comment>
        <translation>The export is complete. The USB stick can be unplugged.</translation>
    </message>
    <message>
        <source>RepairExportFailed</source>
        <comment>Global</comment>
        <translation>The export failed. Nothing was written.</translation>
    </message>
    <message>
        <source>RepairExportNoStick</source>
        <comment>Global</comment>
        <translation>There is no USB stick.</translation>
    </message>
    <message>
        <source>RepairExportFull</source>
        <comment>Global</comment>
        <translation>The USB stick is full.</translation>
    </message>
    <message>
        <source>RepairExportReadOnly</source>
        <comment>Global</comment>
        <translation>The USB stick is write-protected.</translation>
    </message>
    <message>
        <source>RepairExportBroken</source>
        <comment>Global</comment>
        <translation>The USB stick can't be written to. It may be unplugged or damaged.</translation>
    </message>
    <message>
        <source>RepairReset</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>Reset</translation>
    </message>
    <message>
        <source>RepairResetAgain</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>Try again</translation>
    </message>
    <message>
        <source>RepairResetTitle</source>
        <comment>Global</comment>
        <translation>Factory reset</translation>
    </message>
    <message>
        <source>RepairResetStep</source>
        <comment>Global</comment>
        <translation>All settings return to how they left the factory. This can't be undone.</translation>
    </message>
    <message>
        <source>RepairResetConfirm</source>
        <comment>Global</comment>
        <translation>Do you really want to reset the device?</translation>
    </message>
    <message>
        <source>RepairResetRunning</source>
        <comment>Global</comment>
        <translation>The device is being reset</translation>
    </message>
    <message>
        <source>RepairResetDone</source>
        <comment>Global</comment>
        <translation>The device was reset.</translation>
    </message>
    <message>
        <source>RepairResetFailed</source>
        <comment>Global</comment>
        <translation>The factory reset failed.</translation>
    </message>
    <message>
        <source>RepairResetError</source>
        <comment>Global</comment>
        <translation>The device has reported an error. The log contains the message.</translation>
    </message>
    <message>
        <source>HostReady</source>
        <comment>Global</comment>
        <translation>Ready</translation>
    </message>
    <message>
        <source>HostPressEnter</source>
        <comment>Global</comment>
        <translation>Press Enter to go to factory mode.</translation>
    </message>
    <message>
        <source>HostFactoryMode</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>Factory mode</translation>
    </message>
    <message>
        <source>HostBack</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>Back</translation>
    </message>
    <message>
        <source>HostContainer</source>
        <comment>Global</comment>
        <extracomment>%1 is the name of a page.</extracomment>
        <translation>The device opens its own page “%1” here.</translation>
    </message>
</context>
</TS>
