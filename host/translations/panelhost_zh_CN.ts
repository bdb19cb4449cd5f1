<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>panelhost::Control</name>
    <message>
        <source>Faults that are on:</source>
        <translation>已启用的故障:</translation>
    </message>
</context>
<context>
    <name>panelhost::FaultMenu</name>
    <message>
        <source>key</source>
        <translation>按键</translation>
    </message>
    <message>
        <source>step</source>
        <translation>步骤</translation>
    </message>
    <message>
        <source>service</source>
        <translation>服务</translation>
    </message>
    <message>
        <source>Fa&amp;ults</source>
        <translation>故障(&amp;U)</translation>
    </message>
</context>
<context>
    <name>panelhost::FaultView</name>
    <message>
        <source>Clear all</source>
        <translation>全部清除</translation>
    </message>
    <message>
        <source>Switches all faults off</source>
        <translation>关闭所有故障</translation>
    </message>
    <message>
        <source>Faults</source>
        <translation>故障</translation>
    </message>
    <message>
        <source>Fault</source>
        <translation>故障</translation>
    </message>
    <message>
        <source>Applies to</source>
        <translation>适用于</translation>
    </message>
</context>
<context>
    <name>panelhost::Faults</name>
    <message>
        <source>keys of the panel</source>
        <translation>面板按键</translation>
    </message>
    <message>
        <source>T-Bar calibration</source>
        <translation>T 杆校准</translation>
    </message>
    <message>
        <source>reports and changes of the net and USB ports</source>
        <translation>网口和 USB 口的报告和变化</translation>
    </message>
    <message>
        <source>log export</source>
        <translation>日志导出</translation>
    </message>
    <message>
        <source>A key gives no event</source>
        <translation>某个按键不产生事件</translation>
    </message>
    <message>
        <source>A key gives three events for each press</source>
        <translation>某个按键每按一次产生三个事件</translation>
    </message>
    <message>
        <source>Keys also give an event when they are released</source>
        <translation>按键松开时也产生事件</translation>
    </message>
    <message>
        <source>The LED of a key keeps what it shows</source>
        <translation>某个按键的 LED 保持不变</translation>
    </message>
    <message>
        <source>LEDs of the keys</source>
        <translation>按键的 LED</translation>
    </message>
    <message>
        <source>The T-Bar calibration fails at a step, 1 to 7</source>
        <translation>T 杆校准在某一步(1 到 7)失败</translation>
    </message>
    <message>
        <source>The T-Bar calibration never answers</source>
        <translation>T 杆校准一直不应答</translation>
    </message>
    <message>
        <source>A service can&apos;t be found</source>
        <translation>找不到某个服务</translation>
    </message>
    <message>
        <source>services that the component asks for from then on</source>
        <translation>此后组件请求的服务</translation>
    </message>
    <message>
        <source>Link reports hold a value of another type</source>
        <translation>链路报告中的值类型不对</translation>
    </message>
    <message>
        <source>Link reports hold a null pointer</source>
        <translation>链路报告中是空指针</translation>
    </message>
    <message>
        <source>Link reports hold no value at all</source>
        <translation>链路报告中没有值</translation>
    </message>
    <message>
        <source>Link reports hold no record</source>
        <translation>链路报告中没有记录</translation>
    </message>
    <message>
        <source>Link reports hold ports with negative and huge numbers as well</source>
        <translation>链路报告中还有编号为负或极大的端口</translation>
    </message>
    <message>
        <source>Each link report comes twice</source>
        <translation>每个链路报告都来两次</translation>
    </message>
    <message>
        <source>There is no USB stick, or it was unplugged</source>
        <translation>没有 U 盘，或已被拔出</translation>
    </message>
    <message>
        <source>Half of the data fit onto the USB stick</source>
        <translation>U 盘只能放下一半数据</translation>
    </message>
    <message>
        <source>The USB stick is write-protected</source>
        <translation>U 盘被写保护</translation>
    </message>
    <message>
        <source>A factory reset fails</source>
        <translation>恢复出厂设置失败</translation>
    </message>
    <message>
        <source>factory reset</source>
        <translation>恢复出厂设置</translation>
    </message>
    <message>
        <source>A key event arrives while the key listener is being replaced</source>
        <translation>更换按键监听器时到来按键事件</translation>
    </message>
    <message>
        <source>registration of a key listener</source>
        <translation>按键监听器的注册</translation>
    </message>
</context>
<context>
    <name>panelhost::FileMenu</name>
    <message>
        <source>&amp;File</source>
        <translation>文件(&amp;F)</translation>
    </message>
    <message>
        <source>Save &amp;journal…</source>
        <translation>保存日志(&amp;J)…</translation>
    </message>
    <message>
        <source>Save &amp;report of this session…</source>
        <translation>保存本次会话的报告(&amp;R)…</translation>
    </message>
    <message>
        <source>Save &amp;picture of the window…</source>
        <translation>保存窗口图片(&amp;P)…</translation>
    </message>
    <message>
        <source>Save picture of the &amp;LCD…</source>
        <translation>保存 LCD 图片(&amp;L)…</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>退出(&amp;Q)</translation>
    </message>
    <message>
        <source>Stop &amp;recording</source>
        <translation>停止录制(&amp;R)</translation>
    </message>
    <message>
        <source>Start &amp;recording…</source>
        <translation>开始录制(&amp;R)…</translation>
    </message>
    <message>
        <source>The file</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Saved: %1</source>
        <translation>已保存：%1</translation>
    </message>
    <message>
        <source>&amp;New session</source>
        <translation>新建会话(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Open and play a scenario…</source>
        <translation>打开并播放场景(&amp;O)…</translation>
    </message>
    <message>
        <source>Open a recording in the &amp;timeline…</source>
        <translation>在时间线中打开录制(&amp;T)…</translation>
    </message>
    <message>
        <source>Re&amp;cent files</source>
        <translation>最近的文件(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Clear</source>
        <translation>清空(&amp;C)</translation>
    </message>
</context>
<context>
    <name>panelhost::HelpMenu</name>
    <message>
        <source>Manual</source>
        <translation>手册</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>键盘快捷键</translation>
    </message>
    <message>
        <source>About panelhost</source>
        <translation>关于 panelhost</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>帮助(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;Manual</source>
        <translation>手册(英文)(&amp;M)</translation>
    </message>
    <message>
        <source>&amp;Keyboard shortcuts</source>
        <translation>键盘快捷键(&amp;K)</translation>
    </message>
    <message>
        <source>&amp;About panelhost</source>
        <translation>关于 panelhost(&amp;A)</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>按键</translation>
    </message>
    <message>
        <source>Effect</source>
        <translation>作用</translation>
    </message>
    <message>
        <source>Arrow keys, Return, Escape</source>
        <translation>方向键、回车、Esc</translation>
    </message>
    <message>
        <source>Move in the page that the LCD shows</source>
        <translation>在 LCD 显示的页面中移动</translation>
    </message>
    <message>
        <source>Tab, Shift+Tab</source>
        <translation>Tab、Shift+Tab</translation>
    </message>
    <message>
        <source>Next or previous control</source>
        <translation>下一个或上一个控件</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>空格</translation>
    </message>
    <message>
        <source>Press the control that has the focus; plug or unplug a port</source>
        <translation>按下有焦点的控件；插入或拔出端口</translation>
    </message>
    <message>
        <source>Shift+Space</source>
        <translation>Shift+空格</translation>
    </message>
    <message>
        <source>Hold a key until the next press; block or unblock a USB port</source>
        <translation>按住按键直到下次按下；锁定或解锁 USB 口</translation>
    </message>
    <message>
        <source>Component: %1</source>
        <translation>组件：%1</translation>
    </message>
    <message>
        <source>Qt: %1</source>
        <translation>Qt: %1</translation>
    </message>
</context>
<context>
    <name>panelhost::HistoryWindow</name>
    <message>
        <source>◀ Event</source>
        <translation>◀ 事件</translation>
    </message>
    <message>
        <source>◀ Screen</source>
        <translation>◀ 画面</translation>
    </message>
    <message>
        <source>◀ Line</source>
        <translation>◀ 行</translation>
    </message>
    <message>
        <source>Line ▶</source>
        <translation>行 ▶</translation>
    </message>
    <message>
        <source>Screen ▶</source>
        <translation>画面 ▶</translation>
    </message>
    <message>
        <source>Event ▶</source>
        <translation>事件 ▶</translation>
    </message>
    <message>
        <source>Failed: %1</source>
        <translation>失败：%1</translation>
    </message>
    <message>
        <source>First difference</source>
        <translation>第一处差异</translation>
    </message>
    <message>
        <source>The two sessions have the same journal.</source>
        <translation>两个会话的日志相同。</translation>
    </message>
    <message>
        <source>The sessions differ from line %1 of the journal on.</source>
        <translation>两个会话从日志第 %1 行开始不同。</translation>
    </message>
    <message>
        <source>Take over here</source>
        <translation>从此处接管</translation>
    </message>
    <message>
        <source>Take over and record…</source>
        <translation>接管并录制…</translation>
    </message>
    <message>
        <source>%1 of %2   line %3 of %4</source>
        <translation>%1 / %2   第 %3 / %4 行</translation>
    </message>
    <message>
        <source>Record the session</source>
        <translation>录制会话</translation>
    </message>
</context>
<context>
    <name>panelhost::JournalView</name>
    <message>
        <source>Journal</source>
        <translation>日志</translation>
    </message>
    <message>
        <source>Filter (Ctrl+F)</source>
        <translation>筛选 (Ctrl+F)</translation>
    </message>
    <message>
        <source>Lines of the journal</source>
        <translation>日志的行</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>值</translation>
    </message>
    <message>
        <source>Data of the journal line</source>
        <translation>日志行的数据</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>复制</translation>
    </message>
    <message>
        <source>Copies the selected lines (Ctrl+C)</source>
        <translation>复制所选的行 (Ctrl+C)</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>清空</translation>
    </message>
    <message>
        <source>Hides all lines up to now; the journal keeps them</source>
        <translation>隐藏到目前为止的所有行；日志仍保留它们</translation>
    </message>
    <message>
        <source>Export…</source>
        <translation>导出…</translation>
    </message>
    <message>
        <source>Writes the lines that are shown to a file</source>
        <translation>将显示的行写入文件</translation>
    </message>
    <message>
        <source>Export the journal</source>
        <translation>导出日志</translation>
    </message>
    <message>
        <source>Saved: %1</source>
        <translation>已保存：%1</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>编号</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Thread</source>
        <translation>线程</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>类型</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>The oldest %1 lines were discarded; use --journal FILE to keep all lines.</source>
        <translation>最早的 %1 行已丢弃；使用 --journal FILE 可保留所有行。</translation>
    </message>
    <message>
        <source>The oldest %1 lines are only in %2.</source>
        <translation>最早的 %1 行只在 %2 中。</translation>
    </message>
</context>
<context>
    <name>panelhost::KeyButton</name>
    <message>
        <source>%1 (key %2)</source>
        <translation>%1 (按键 %2)</translation>
    </message>
    <message>
        <source>Click or Space: press. Long press: hold. Right button or Shift+Space: hold until the next click.</source>
        <translation>单击或空格：按下。长按：按住。右键或 Shift+空格：按住直到下次单击。</translation>
    </message>
    <message>
        <source>red</source>
        <translation>红色</translation>
    </message>
    <message>
        <source>blue</source>
        <translation>蓝色</translation>
    </message>
    <message>
        <source>green</source>
        <translation>绿色</translation>
    </message>
    <message>
        <source>white</source>
        <translation>白色</translation>
    </message>
    <message>
        <source>dark</source>
        <translation>熄灭</translation>
    </message>
    <message>
        <source>blinking</source>
        <translation>闪烁</translation>
    </message>
    <message>
        <source>lit</source>
        <translation>点亮</translation>
    </message>
    <message>
        <source>amber</source>
        <translation>琥珀色</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>held</source>
        <translation>按住</translation>
    </message>
    <message>
        <source>fault</source>
        <translation>故障</translation>
    </message>
</context>
<context>
    <name>panelhost::Knob</name>
    <message>
        <source>Knob</source>
        <translation>旋钮</translation>
    </message>
    <message>
        <source>Wheel or click on a side: turn. Click in the middle or Space: Enter.</source>
        <translation>滚轮或单击一侧：旋转。单击中间或空格：确定。</translation>
    </message>
</context>
<context>
    <name>panelhost::LcdInput</name>
    <message>
        <source>LCD touch screen</source>
        <translation>LCD 触摸屏</translation>
    </message>
</context>
<context>
    <name>panelhost::LcdView</name>
    <message>
        <source>LCD</source>
        <translation>LCD</translation>
    </message>
</context>
<context>
    <name>panelhost::NavigationButton</name>
    <message>
        <source>Up</source>
        <translation>上</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>下</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>左</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>右</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>返回</translation>
    </message>
    <message>
        <source>Moves in the page that the LCD shows. The arrow keys, Return and Escape do the same.</source>
        <translation>在 LCD 显示的页面中移动。方向键、回车和 Esc 作用相同。</translation>
    </message>
</context>
<context>
    <name>panelhost::Operator</name>
    <message>
        <source>There is no navigation key &quot;%1&quot;; available: %2.</source>
        <translation>没有导航键 &quot;%1&quot;;可用：%2。</translation>
    </message>
    <message>
        <source>The panel has no key &quot;%1&quot;.</source>
        <translation>面板没有按键 &quot;%1&quot;。</translation>
    </message>
    <message>
        <source>left</source>
        <translation>左</translation>
    </message>
    <message>
        <source>right</source>
        <translation>右</translation>
    </message>
    <message>
        <source>There is no soft button &quot;%1&quot;; available: left, right.</source>
        <translation>没有软按钮 &quot;%1&quot;;可用: left, right。</translation>
    </message>
    <message>
        <source>The page shows no %1 button.</source>
        <translation>页面没有显示%1侧按钮。</translation>
    </message>
    <message>
        <source>The %1 button is covered.</source>
        <translation>%1侧按钮被遮住。</translation>
    </message>
    <message>
        <source>A finger is on the LCD already.</source>
        <translation>已有手指在 LCD 上。</translation>
    </message>
    <message>
        <source>No finger is on the LCD.</source>
        <translation>LCD 上没有手指。</translation>
    </message>
    <message>
        <source>The point %1, %2 is outside the LCD of %3 x %4.</source>
        <translation>点 %1, %2 在 %3 x %4 的 LCD 之外。</translation>
    </message>
    <message>
        <source>The T-Bar&apos;s position is a number from 0 to 1.</source>
        <translation>T 杆的位置是 0 到 1 的数。</translation>
    </message>
    <message>
        <source>The device has no port &quot;%1&quot;.</source>
        <translation>设备没有端口 &quot;%1&quot;。</translation>
    </message>
    <message>
        <source>The port &quot;%1&quot; can&apos;t be blocked; USB ports can.</source>
        <translation>端口 &quot;%1&quot; 不能锁定;USB 口可以。</translation>
    </message>
    <message>
        <source>A board has no part &quot;%1&quot;; there are %2.</source>
        <translation>主板没有部件 &quot;%1&quot;;有 %2。</translation>
    </message>
    <message>
        <source>There is no catalog for the language &quot;%1&quot;; available: %2.</source>
        <translation>没有语言 &quot;%1&quot; 的目录；可用：%2。</translation>
    </message>
</context>
<context>
    <name>panelhost::PanelWindow</name>
    <message>
        <source>The board has lost: %1</source>
        <translation>主板丢失了：%1</translation>
    </message>
    <message>
        <source>A scenario is being played. Stop it first.</source>
        <translation>正在播放场景。请先停止。</translation>
    </message>
    <message>
        <source>Enter the serial number of the unit first.</source>
        <translation>请先输入设备的序列号。</translation>
    </message>
    <message>
        <source>%1 has already passed the complete machine test: %2 UTC</source>
        <translation>%1 已通过整机测试：%2 UTC</translation>
    </message>
    <message>
        <source>&amp;Device</source>
        <translation>设备(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Enter factory mode</source>
        <translation>进入工厂模式(&amp;E)</translation>
    </message>
    <message>
        <source>E&amp;xit factory mode</source>
        <translation>退出工厂模式(&amp;X)</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>语言(&amp;L)</translation>
    </message>
    <message>
        <source>LCD</source>
        <translation>LCD</translation>
    </message>
    <message>
        <source>&amp;Window</source>
        <translation>窗口(&amp;W)</translation>
    </message>
    <message>
        <source>As on this &amp;computer</source>
        <translation>跟随本机(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>视图(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Find in the journal</source>
        <translation>在日志中查找(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Arrange docks automatically</source>
        <translation>自动排列停靠窗(&amp;A)</translation>
    </message>
    <message>
        <source>Recording ended: %1</source>
        <translation>录制已结束：%1</translation>
    </message>
    <message>
        <source>Journal ended: %1</source>
        <translation>日志已结束：%1</translation>
    </message>
    <message>
        <source>The scenario can&apos;t be played.</source>
        <translation>无法播放该场景。</translation>
    </message>
    <message>
        <source>The timeline can&apos;t be opened: panelhost can&apos;t be started.</source>
        <translation>无法打开时间线：无法启动 panelhost。</translation>
    </message>
    <message>
        <source>&amp;Theme</source>
        <translation>主题(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>深色(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>浅色(&amp;L)</translation>
    </message>
</context>
<context>
    <name>panelhost::PlayBar</name>
    <message>
        <source>expected %1, found %2</source>
        <translation>期望 %1，实际 %2</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Ends the scenario here; the session stays as it is</source>
        <translation>在此结束场景；会话保持原样</translation>
    </message>
    <message>
        <source>Details…</source>
        <translation>详情…</translation>
    </message>
    <message>
        <source>Shows what was expected and found, and the last lines of the journal</source>
        <translation>显示期望值和实际值，以及日志的最后几行</translation>
    </message>
    <message>
        <source>Timeline…</source>
        <translation>时间线…</translation>
    </message>
    <message>
        <source>Shows any moment of this scenario in another window</source>
        <translation>在另一个窗口中显示该场景的任意时刻</translation>
    </message>
    <message>
        <source>Play again</source>
        <translation>再次播放</translation>
    </message>
    <message>
        <source>Plays the scenario from its beginning in a new session</source>
        <translation>在新会话中从头播放该场景</translation>
    </message>
    <message>
        <source>Playing</source>
        <translation>播放中</translation>
    </message>
    <message>
        <source>%1  –  step %2 of %3: %4</source>
        <translation>%1  –  第 %2 / %3 步：%4</translation>
    </message>
    <message>
        <source>%1  –  %2 of %3 steps, %4</source>
        <translation>%1  –  第 %2 / %3 步，%4</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>已停止</translation>
    </message>
    <message>
        <source>PASSED</source>
        <translation>通过</translation>
    </message>
    <message>
        <source>FAILED</source>
        <translation>失败</translation>
    </message>
</context>
<context>
    <name>panelhost::PortWidget</name>
    <message>
        <source>Click or Space: plug or unplug. Click on the switch or Shift+Space: block or unblock.</source>
        <translation>单击或空格：插入或拔出。单击开关或 Shift+空格：锁定或解锁。</translation>
    </message>
    <message>
        <source>Click or Space: plug or unplug.</source>
        <translation>单击或空格：插入或拔出。</translation>
    </message>
    <message>
        <source>plugged</source>
        <translation>已插入</translation>
    </message>
    <message>
        <source>unplugged</source>
        <translation>未插入</translation>
    </message>
    <message>
        <source>blocked</source>
        <translation>已锁定</translation>
    </message>
    <message>
        <source>fault</source>
        <translation>故障</translation>
    </message>
    <message>
        <source>block</source>
        <translation>锁定</translation>
    </message>
    <message>
        <source>Unplug</source>
        <translation>拔出</translation>
    </message>
    <message>
        <source>Plug</source>
        <translation>插入</translation>
    </message>
    <message>
        <source>Unblock</source>
        <translation>解锁</translation>
    </message>
    <message>
        <source>Block</source>
        <translation>锁定</translation>
    </message>
</context>
<context>
    <name>panelhost::ScenarioOpener</name>
    <message>
        <source>Open a scenario</source>
        <translation>打开场景</translation>
    </message>
    <message>
        <source>Open a recording in the timeline</source>
        <translation>在时间线中打开录制</translation>
    </message>
    <message>
        <source>Scenarios (*.yaml *.yml)</source>
        <translation>场景 (*.yaml *.yml)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>所有文件 (*)</translation>
    </message>
    <message>
        <source>Scenario with errors</source>
        <translation>有错误的场景</translation>
    </message>
    <message>
        <source>%1 can&apos;t be played. Nothing has changed.</source>
        <translation>无法播放 %1。没有任何改变。</translation>
    </message>
</context>
<context>
    <name>panelhost::ScreenView</name>
    <message>
        <source>Screen %1, brightness %2 %</source>
        <translation>屏幕 %1，亮度 %2 %</translation>
    </message>
    <message>
        <source>SCREEN %1</source>
        <translation>屏幕 %1</translation>
    </message>
</context>
<context>
    <name>panelhost::SpeedBar</name>
    <message>
        <source>Time on the device since it started</source>
        <translation>设备启动以来的时间</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>暂停</translation>
    </message>
    <message>
        <source>Real time</source>
        <translation>实时</translation>
    </message>
    <message>
        <source>10×</source>
        <translation>10×</translation>
    </message>
    <message>
        <source>Full speed</source>
        <translation>全速</translation>
    </message>
    <message>
        <source>The clock of the device stands still (Ctrl+P)</source>
        <translation>设备时钟停止 (Ctrl+P)</translation>
    </message>
    <message>
        <source>The clock of the device follows real time (Ctrl+1)</source>
        <translation>设备时钟按实时运行 (Ctrl+1)</translation>
    </message>
    <message>
        <source>The clock of the device runs ten times as fast (Ctrl+2)</source>
        <translation>设备时钟以十倍速运行 (Ctrl+2)</translation>
    </message>
    <message>
        <source>The clock of the device jumps from one event to the next (Ctrl+3)</source>
        <translation>设备时钟从一个事件跳到下一个 (Ctrl+3)</translation>
    </message>
</context>
<context>
    <name>panelhost::TBarWidget</name>
    <message>
        <source>T-Bar</source>
        <translation>T 杆</translation>
    </message>
    <message>
        <source>Drag, wheel or arrow keys: move. Home: bottom. End: top.</source>
        <translation>拖动、滚轮或方向键：移动。Home: 底部。End: 顶部。</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>fault</source>
        <translation>故障</translation>
    </message>
    <message>
        <source>begin</source>
        <translation>开始</translation>
    </message>
    <message>
        <source>top</source>
        <translation>顶部</translation>
    </message>
    <message>
        <source>bottom</source>
        <translation>底部</translation>
    </message>
    <message>
        <source>end</source>
        <translation>结束</translation>
    </message>
    <message>
        <source>ready</source>
        <translation>就绪</translation>
    </message>
    <message>
        <source>at the top</source>
        <translation>在顶部</translation>
    </message>
    <message>
        <source>move to the top</source>
        <translation>移到顶部</translation>
    </message>
    <message>
        <source>at the bottom</source>
        <translation>在底部</translation>
    </message>
    <message>
        <source>move to the bottom</source>
        <translation>移到底部</translation>
    </message>
    <message>
        <source>T-BAR FADER</source>
        <translation>T 杆推杆</translation>
    </message>
    <message>
        <source>T-BAR SLIDER</source>
        <translation>T 杆滑块</translation>
    </message>
</context>
<context>
    <name>panelhost::TimeMenu</name>
    <message>
        <source>&amp;Time</source>
        <translation>时间(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Pause</source>
        <translation>暂停(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Real time</source>
        <translation>实时(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;10 times as fast</source>
        <translation>十倍速(&amp;1)</translation>
    </message>
    <message>
        <source>&amp;Full speed</source>
        <translation>全速(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Step to the next event</source>
        <translation>步进到下一个事件(&amp;S)</translation>
    </message>
</context>
<context>
    <name>panelhost::TimelineBar</name>
    <message>
        <source>Timeline of %1</source>
        <translation>%1 的时间线</translation>
    </message>
</context>
<context>
    <name>panelhost::TodayView</name>
    <message>
        <source>machine</source>
        <translation>整机</translation>
    </message>
    <message>
        <source>aging</source>
        <translation>老化</translation>
    </message>
    <message>
        <source>repair</source>
        <translation>维修</translation>
    </message>
    <message>
        <source>passed</source>
        <translation>通过</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>失败</translation>
    </message>
    <message>
        <source>aborted</source>
        <translation>中止</translation>
    </message>
    <message>
        <source>%1  (%2 of 1 unit)</source>
        <translation>%1  (%2 / 1 台)</translation>
    </message>
    <message>
        <source>%1  (%2 of %3 units)</source>
        <translation>%1  (%2 / %3 台)</translation>
    </message>
    <message>
        <source>%1  (%2 of %3 failed)</source>
        <translation>%1  (%3 次失败中的 %2 次)</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>今天</translation>
    </message>
    <message>
        <source>First-pass yield</source>
        <translation>首次通过率</translation>
    </message>
    <message>
        <source>Final yield</source>
        <translation>最终通过率</translation>
    </message>
    <message>
        <source>Machine tests</source>
        <translation>整机测试</translation>
    </message>
    <message>
        <source>Fails most often</source>
        <translation>最常失败</translation>
    </message>
    <message>
        <source>%1  (%2 passed, %3 failed, %4 aborted)</source>
        <translation>%1  (通过 %2，失败 %3，中止 %4)</translation>
    </message>
</context>
<context>
    <name>panelhost::UnitBar</name>
    <message>
        <source>Complete machine test</source>
        <translation>整机测试</translation>
    </message>
    <message>
        <source>Aging test</source>
        <translation>老化测试</translation>
    </message>
    <message>
        <source>Repair page</source>
        <translation>维修页面</translation>
    </message>
    <message>
        <source>Repair page: %1</source>
        <translation>维修页面：%1</translation>
    </message>
    <message>
        <source>No unit</source>
        <translation>无设备</translation>
    </message>
    <message>
        <source>Scan a serial number</source>
        <translation>扫描序列号</translation>
    </message>
    <message>
        <source>No verdict yet</source>
        <translation>尚无结论</translation>
    </message>
    <message>
        <source>Serial number of the unit</source>
        <translation>设备的序列号</translation>
    </message>
    <message>
        <source>Serial number of the next unit</source>
        <translation>下一台设备的序列号</translation>
    </message>
    <message>
        <source>PASSED</source>
        <translation>通过</translation>
    </message>
    <message>
        <source>FAILED</source>
        <translation>失败</translation>
    </message>
    <message>
        <source>&quot;%1&quot; isn&apos;t a serial number that matches %2.</source>
        <translation>&quot;%1&quot; 不是匹配 %2 的序列号。</translation>
    </message>
</context>
<context>
    <name>panelhost::UnitNumber</name>
    <message>
        <source>has %1 characters; at most %2 are allowed</source>
        <translation>有 %1 个字符；最多允许 %2 个</translation>
    </message>
    <message>
        <source>contains control characters</source>
        <translation>含有控制字符</translation>
    </message>
    <message>
        <source>A serial number can&apos;t be empty.</source>
        <translation>序列号不能为空。</translation>
    </message>
    <message>
        <source>The serial number %1.</source>
        <translation>序列号%1。</translation>
    </message>
</context>
<context>
    <name>panelhost::WindowStatus</name>
    <message>
        <source>Saved runs that the server doesn&apos;t have yet</source>
        <translation>服务器尚未收到的已保存记录</translation>
    </message>
    <message>
        <source>● REC %1</source>
        <translation>● REC %1</translation>
    </message>
    <message>
        <source>1 run to send</source>
        <translation>1 条待发送</translation>
    </message>
    <message>
        <source>%1 runs to send</source>
        <translation>%1 条待发送</translation>
    </message>
</context>
</TS>
