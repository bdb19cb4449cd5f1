<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>LCD::HomeWidgets</name>
    <message>
        <source>FCAging</source>
        <comment>Global</comment>
        <extracomment>The name of the running step follows with nothing between: end with the separator that the language needs.</extracomment>
        <translation>老化测试：</translation>
    </message>
    <message>
        <source>FCScreenLight</source>
        <comment>Global</comment>
        <extracomment>Page title and name of a step; a level such as &quot; 30%&quot; may follow.</extracomment>
        <translation>屏幕亮度</translation>
    </message>
    <message>
        <source>FCScreenBadPixel</source>
        <comment>Global</comment>
        <translation>屏幕坏点</translation>
    </message>
    <message>
        <source>FCBtnLight</source>
        <comment>Global</comment>
        <extracomment>Page title and name of a step; a level such as &quot; 30%&quot; may follow.</extracomment>
        <translation>按键灯</translation>
    </message>
    <message>
        <source>FCNet</source>
        <comment>Global</comment>
        <translation>网口</translation>
    </message>
    <message>
        <source>FCUSB</source>
        <comment>Global</comment>
        <translation>USB 接口</translation>
    </message>
    <message>
        <source>FCAgeNetNoPass</source>
        <comment>Global</comment>
        <extracomment>May be joined to FCAgeUSBNoPass with an ideographic comma.</extracomment>
        <translation>网口未通过</translation>
    </message>
    <message>
        <source>FCAgeUSBNoPass</source>
        <comment>Global</comment>
        <translation>USB 接口未通过</translation>
    </message>
    <message>
        <source>FCAgeMode</source>
        <comment>Global</comment>
        <translation>老化测试</translation>
    </message>
    <message>
        <source>FCAgeModeTestPreparation</source>
        <comment>Global</comment>
        <translation>请将网口两两对接，并在每个 USB 接口插入设备。</translation>
    </message>
    <message>
        <source>FCAgeModeStartTips</source>
        <comment>Global</comment>
        <translation>按“开始测试”启动，测试循环进行，直至手动停止。</translation>
    </message>
    <message>
        <source>FCAgeModeStartTest</source>
        <comment>Global</comment>
        <translation>开始测试</translation>
    </message>
    <message>
        <source>FCAgeModeStopTest</source>
        <comment>Global</comment>
        <translation>停止测试</translation>
    </message>
    <message>
        <source>FCAgeModeRecount</source>
        <comment>Global</comment>
        <translation>重新统计</translation>
    </message>
    <message>
        <source>MachineMode</source>
        <comment>Global</comment>
        <translation>整机测试</translation>
    </message>
    <message>
        <source>TestStep</source>
        <comment>Global</comment>
        <translation>测试步骤</translation>
    </message>
    <message>
        <source>FCTestComplete</source>
        <comment>Global</comment>
        <extracomment>Page title, heading and caption of a button.</extracomment>
        <translation>测试完成</translation>
    </message>
    <message>
        <source>FCTestPass</source>
        <comment>Global</comment>
        <translation>测试通过</translation>
    </message>
    <message>
        <source>FCReTest</source>
        <comment>Global</comment>
        <translation>重新测试</translation>
    </message>
    <message>
        <source>FCPass</source>
        <comment>Global</comment>
        <translation>通过</translation>
    </message>
    <message>
        <source>FCNoPass</source>
        <comment>Global</comment>
        <extracomment>Caption of a button, and the verdict of a failed run.</extracomment>
        <translation>不通过</translation>
    </message>
    <message>
        <source>FCPleaseJudgePass</source>
        <comment>Global</comment>
        <extracomment>Last line of an instruction; it has no number.</extracomment>
        <translation>请判断测试是否通过。</translation>
    </message>
    <message>
        <source>FCNextStep</source>
        <comment>Global</comment>
        <translation>下一步</translation>
    </message>
    <message>
        <source>FCScreenBrightnessStep</source>
        <comment>Global</comment>
        <translation>请观察所有屏幕的亮度是否从 10% 到 100% 逐级变化。</translation>
    </message>
    <message>
        <source>FCBtnBrightnessStep</source>
        <comment>Global</comment>
        <translation>请观察所有按键灯的亮度是否从 10% 到 100% 逐级变化。</translation>
    </message>
    <message>
        <source>FCObserveScreenShowStep1</source>
        <comment>Global</comment>
        <translation>请观察所有屏幕是否有暗点或亮点。</translation>
    </message>
    <message>
        <source>FCObserveScreenShowStep2</source>
        <comment>Global</comment>
        <translation>按“下一步”切换到下一幅画面。</translation>
    </message>
    <message>
        <source>ButtonFunction</source>
        <comment>Global</comment>
        <translation>按键功能</translation>
    </message>
    <message>
        <source>FCClickGreenFlashingBtn</source>
        <comment>Global</comment>
        <translation>请按下闪烁绿灯的按键。</translation>
    </message>
    <message>
        <source>Push T-Bar to Top</source>
        <comment>Global</comment>
        <extracomment>Follows &quot;1.&quot;, &quot;3.&quot; and &quot;5.&quot; with nothing between: begin with the blank that the language needs.</extracomment>
        <translation> 将 T-Bar 推到最上端</translation>
    </message>
    <message>
        <source>Push T-Bar to Bottom</source>
        <comment>Global</comment>
        <extracomment>Follows &quot;2.&quot;, &quot;4.&quot; and &quot;6.&quot; with nothing between: begin with the blank that the language needs.</extracomment>
        <translation> 将 T-Bar 推到最下端</translation>
    </message>
    <message>
        <source>FCNetConnectPort1Port2</source>
        <comment>Global</comment>
        <translation>请用网线连接网口 1 和网口 2。</translation>
    </message>
    <message>
        <source>USBA</source>
        <comment>Global</comment>
        <translation>USB-A 接口</translation>
    </message>
    <message>
        <source>FCUSB30TestStep</source>
        <comment>Global</comment>
        <translation>请在每个 USB-A 接口插入 USB 3.0 设备。</translation>
    </message>
    <message>
        <source>TypecCommuication</source>
        <comment>Global</comment>
        <translation>Type-C 通信</translation>
    </message>
    <message>
        <source>FCTypecCommStep1</source>
        <comment>Global</comment>
        <translation>请将电脑连接到 Type-C 接口。</translation>
    </message>
    <message>
        <source>FCTypecCommStep2</source>
        <comment>Global</comment>
        <translation>请确认电脑能识别本设备。</translation>
    </message>
    <message>
        <source>TypecPower</source>
        <comment>Global</comment>
        <translation>Type-C 供电</translation>
    </message>
    <message>
        <source>FCTypecPowerStep1</source>
        <comment>Global</comment>
        <translation>请将电压表连接到 Type-C 供电接口。</translation>
    </message>
    <message>
        <source>FCTypecPowerStep2</source>
        <comment>Global</comment>
        <translation>请确认电压显示稳定。</translation>
    </message>
    <message>
        <source>NET1POE</source>
        <comment>Global</comment>
        <translation>网口 1 PoE 供电</translation>
    </message>
    <message>
        <source>FCNetPort1PowerStep1</source>
        <comment>Global</comment>
        <translation>请将 PoE 测试仪连接到网口 1。</translation>
    </message>
    <message>
        <source>FCNetPort1PowerStep2</source>
        <comment>Global</comment>
        <translation>请确认测试仪显示供电正常。</translation>
    </message>
    <message>
        <source>RepairServiceMissing</source>
        <comment>Global</comment>
        <translation>设备不提供此测试所需的功能。</translation>
    </message>
    <message>
        <source>RepairSkipKey</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>跳过按键</translation>
    </message>
    <message>
        <source>RepairKeyUnderTest</source>
        <comment>Global</comment>
        <extracomment>%1 is the name of a key.</extracomment>
        <translation>当前按键：%1</translation>
    </message>
    <message>
        <source>RepairKeysFailed</source>
        <comment>Global</comment>
        <extracomment>%1 is a list of names of keys.</extracomment>
        <translation>未通过的按键：%1</translation>
    </message>
    <message>
        <source>RepairNetStep</source>
        <comment>Global</comment>
        <translation>用网线将所有网口两两相连。</translation>
    </message>
    <message>
        <source>RepairUSBStep</source>
        <comment>Global</comment>
        <translation>在每个 USB 接口插入一个 USB 设备。</translation>
    </message>
    <message>
        <source>RepairNetPort</source>
        <comment>Global</comment>
        <extracomment>%1 is a number.</extracomment>
        <translation>网口 %1</translation>
    </message>
    <message>
        <source>RepairUSBPort</source>
        <comment>Global</comment>
        <extracomment>%1 is a number.</extracomment>
        <translation>USB 接口 %1</translation>
    </message>
    <message>
        <source>RepairLinked</source>
        <comment>Global</comment>
        <extracomment>Follows the name of a port and a colon.</extracomment>
        <translation>已连接</translation>
    </message>
    <message>
        <source>RepairNotLinked</source>
        <comment>Global</comment>
        <extracomment>Follows the name of a port and a colon.</extracomment>
        <translation>未连接</translation>
    </message>
    <message>
        <source>RepairMorePorts</source>
        <comment>Global</comment>
        <extracomment>%1 is a number of ports that the page has no room for.</extracomment>
        <translation>另有 %1 个接口</translation>
    </message>
    <message>
        <source>RepairNoPort</source>
        <comment>Global</comment>
        <translation>设备未报告任何接口。</translation>
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
        <translation>开始校准，然后按每行提示推动 T-Bar。</translation>
    </message>
    <message>
        <source>RepairTBarMeasuring</source>
        <comment>Global</comment>
        <extracomment>In the place of the heading while a calibration step runs.</extracomment>
        <translation>校准中：请勿移动 T-Bar</translation>
    </message>
    <message>
        <source>RepairTBarNotTop</source>
        <comment>Global</comment>
        <translation>该步骤失败。进入下一步前 T-Bar 必须位于最上端。</translation>
    </message>
    <message>
        <source>RepairTBarNotBottom</source>
        <comment>Global</comment>
        <translation>该步骤失败。进入下一步前 T-Bar 必须位于最下端。</translation>
    </message>
    <message>
        <source>RepairTBarNoAnswer</source>
        <comment>Global</comment>
        <translation>校准未完成该步骤。请检查 T-Bar 的连接。</translation>
    </message>
    <message>
        <source>RepairKnob</source>
        <comment>Global</comment>
        <translation>旋钮</translation>
    </message>
    <message>
        <source>RepairKnobStep</source>
        <comment>Global</comment>
        <translation>向两个方向转动旋钮，然后按下旋钮。</translation>
    </message>
    <message>
        <source>RepairKnobLeft</source>
        <comment>Global</comment>
        <extracomment>A count such as &quot; (1/3)&quot; follows.</extracomment>
        <translation>向左转动</translation>
    </message>
    <message>
        <source>RepairKnobRight</source>
        <comment>Global</comment>
        <extracomment>A count such as &quot; (1/3)&quot; follows.</extracomment>
        <translation>向右转动</translation>
    </message>
    <message>
        <source>RepairKnobPress</source>
        <comment>Global</comment>
        <translation>按下旋钮</translation>
    </message>
    <message>
        <source>RepairJoystick</source>
        <comment>Global</comment>
        <translation>摇杆</translation>
    </message>
    <message>
        <source>RepairJoystickStep</source>
        <comment>Global</comment>
        <translation>向各个方向推动摇杆，然后按下摇杆。</translation>
    </message>
    <message>
        <source>RepairJoystickUp</source>
        <comment>Global</comment>
        <translation>上</translation>
    </message>
    <message>
        <source>RepairJoystickDown</source>
        <comment>Global</comment>
        <translation>下</translation>
    </message>
    <message>
        <source>RepairJoystickLeft</source>
        <comment>Global</comment>
        <translation>左</translation>
    </message>
    <message>
        <source>RepairJoystickRight</source>
        <comment>Global</comment>
        <translation>右</translation>
    </message>
    <message>
        <source>RepairJoystickPress</source>
        <comment>Global</comment>
        <translation>按下</translation>
    </message>
    <message>
        <source>RepairTouch</source>
        <comment>Global</comment>
        <translation>触摸屏</translation>
    </message>
    <message>
        <source>RepairTouchStep</source>
        <comment>Global</comment>
        <extracomment>A count such as &quot; (12/40)&quot; follows.</extracomment>
        <translation>触摸每个格子，或用手指划过。</translation>
    </message>
    <message>
        <source>RepairTouchKeys</source>
        <comment>Global</comment>
        <extracomment>Fail is the caption of the left button.</extracomment>
        <translation>按键：左键和确认键为“不通过”，返回键离开。</translation>
    </message>
    <message>
        <source>RepairTouchCells</source>
        <comment>Global</comment>
        <extracomment>A count such as &quot; (12/40)&quot; follows.</extracomment>
        <translation>已触摸的格子</translation>
    </message>
    <message>
        <source>RepairExport</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>导出</translation>
    </message>
    <message>
        <source>RepairExportAgain</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>重新导出</translation>
    </message>
    <message>
        <source>RepairCancel</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>取消</translation>
    </message>
    <message>
        <source>RepairExportTitle</source>
        <comment>Global</comment>
        <translation>日志导出</translation>
    </message>
    <message>
        <source>RepairExportStep</source>
        <comment>Global</comment>
        <translation>请插入 U 盘，日志和测试结果将写入其中。</translation>
    </message>
    <message>
        <source>RepairExportWriting</source>
        <comment>Global</comment>
        <extracomment>%1 is a number from 0 to 100.</extracomment>
        <translation>正在写入：%1%</translation>
    </message>
    <message>
        <source>RepairExportDone</source>
        <comment>Global</comment>
        <translation>导出完成，可以拔出 U 盘。</translation>
    </message>
    <message>
        <source>RepairExportFailed</source>
        <comment>Global</comment>
        <translation>导出失败，未写入任何文件。</translation>
    </message>
    <message>
        <source>RepairExportNoStick</source>
        <comment>Global</comment>
        <translation>没有 U 盘。</translation>
    </message>
    <message>
        <source>RepairExportFull</source>
        <comment>Global</comment>
        <translation>U 盘已满。</translation>
    </message>
    <message>
        <source>RepairExportReadOnly</source>
        <comment>Global</comment>
        <translation>U 盘有写保护。</translation>
    </message>
    <message>
        <source>RepairExportBroken</source>
        <comment>Global</comment>
        <translation>无法写入 U 盘，U 盘可能已拔出或损坏。</translation>
    </message>
    <message>
        <source>RepairReset</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>恢复</translation>
    </message>
    <message>
        <source>RepairResetAgain</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>重试</translation>
    </message>
    <message>
        <source>RepairResetTitle</source>
        <comment>Global</comment>
        <translation>恢复出厂设置</translation>
    </message>
    <message>
        <source>RepairResetStep</source>
        <comment>Global</comment>
        <translation>所有设置将恢复为出厂状态，此操作无法撤销。</translation>
    </message>
    <message>
        <source>RepairResetConfirm</source>
        <comment>Global</comment>
        <translation>确定要恢复出厂设置吗？</translation>
    </message>
    <message>
        <source>RepairResetRunning</source>
        <comment>Global</comment>
        <translation>正在恢复出厂设置</translation>
    </message>
    <message>
        <source>RepairResetDone</source>
        <comment>Global</comment>
        <translation>已恢复出厂设置。</translation>
    </message>
    <message>
        <source>RepairResetFailed</source>
        <comment>Global</comment>
        <translation>恢复出厂设置失败。</translation>
    </message>
    <message>
        <source>RepairResetError</source>
        <comment>Global</comment>
        <translation>设备报告了错误，错误信息已写入日志。</translation>
    </message>
    <message>
        <source>HostReady</source>
        <comment>Global</comment>
        <translation>就绪</translation>
    </message>
    <message>
        <source>HostPressEnter</source>
        <comment>Global</comment>
        <translation>按确认键进入工厂模式。</translation>
    </message>
    <message>
        <source>HostFactoryMode</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>工厂模式</translation>
    </message>
    <message>
        <source>HostBack</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>返回</translation>
    </message>
    <message>
        <source>HostContainer</source>
        <comment>Global</comment>
        <extracomment>%1 is the name of a page.</extracomment>
        <translation>设备在此打开自己的页面“%1”。</translation>
    </message>
</context>
</TS>
