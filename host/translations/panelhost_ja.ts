<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP" sourcelanguage="en">
<context>
    <name>panelhost::Control</name>
    <message>
        <source>Faults that are on:</source>
        <translation>有効な故障:</translation>
    </message>
</context>
<context>
    <name>panelhost::FaultMenu</name>
    <message>
        <source>key</source>
        <translation>キー</translation>
    </message>
    <message>
        <source>step</source>
        <translation>ステップ</translation>
    </message>
    <message>
        <source>service</source>
        <translation>サービス</translation>
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
        <translation>すべて解除</translation>
    </message>
    <message>
        <source>Switches all faults off</source>
        <translation>すべての故障を無効にします</translation>
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
        <translation>対象</translation>
    </message>
</context>
<context>
    <name>panelhost::Faults</name>
    <message>
        <source>keys of the panel</source>
        <translation>パネルのキー</translation>
    </message>
    <message>
        <source>T-Bar calibration</source>
        <translation>Tバーの校正</translation>
    </message>
    <message>
        <source>reports and changes of the net and USB ports</source>
        <translation>ネットポートと USB ポートの通知と変化</translation>
    </message>
    <message>
        <source>log export</source>
        <translation>ログの書き出し</translation>
    </message>
    <message>
        <source>A key gives no event</source>
        <translation>キーがイベントを出さない</translation>
    </message>
    <message>
        <source>A key gives three events for each press</source>
        <translation>キーが押すたびにイベントを 3 回出す</translation>
    </message>
    <message>
        <source>Keys also give an event when they are released</source>
        <translation>キーが離したときにもイベントを出す</translation>
    </message>
    <message>
        <source>The LED of a key keeps what it shows</source>
        <translation>キーの LED の表示が変わらない</translation>
    </message>
    <message>
        <source>LEDs of the keys</source>
        <translation>キーの LED</translation>
    </message>
    <message>
        <source>The T-Bar calibration fails at a step, 1 to 7</source>
        <translation>Tバーの校正が 1~7 のいずれかのステップで失敗する</translation>
    </message>
    <message>
        <source>The T-Bar calibration never answers</source>
        <translation>Tバーの校正が応答しない</translation>
    </message>
    <message>
        <source>A service can&apos;t be found</source>
        <translation>サービスが見つからない</translation>
    </message>
    <message>
        <source>services that the component asks for from then on</source>
        <translation>その後にコンポーネントが要求するサービス</translation>
    </message>
    <message>
        <source>Link reports hold a value of another type</source>
        <translation>リンク通知の値の型が違う</translation>
    </message>
    <message>
        <source>Link reports hold a null pointer</source>
        <translation>リンク通知がヌルポインターを含む</translation>
    </message>
    <message>
        <source>Link reports hold no value at all</source>
        <translation>リンク通知が値を含まない</translation>
    </message>
    <message>
        <source>Link reports hold no record</source>
        <translation>リンク通知がレコードを含まない</translation>
    </message>
    <message>
        <source>Link reports hold ports with negative and huge numbers as well</source>
        <translation>リンク通知が負や巨大な番号のポートも含む</translation>
    </message>
    <message>
        <source>Each link report comes twice</source>
        <translation>リンク通知が 2 回ずつ届く</translation>
    </message>
    <message>
        <source>There is no USB stick, or it was unplugged</source>
        <translation>USB メモリーがない、または抜かれた</translation>
    </message>
    <message>
        <source>Half of the data fit onto the USB stick</source>
        <translation>データの半分しか USB メモリーに入らない</translation>
    </message>
    <message>
        <source>The USB stick is write-protected</source>
        <translation>USB メモリーが書き込み禁止</translation>
    </message>
    <message>
        <source>A factory reset fails</source>
        <translation>出荷時設定へのリセットが失敗する</translation>
    </message>
    <message>
        <source>factory reset</source>
        <translation>出荷時設定へのリセット</translation>
    </message>
    <message>
        <source>A key event arrives while the key listener is being replaced</source>
        <translation>キーの受信側の交換中にキーイベントが届く</translation>
    </message>
    <message>
        <source>registration of a key listener</source>
        <translation>キーの受信側の登録</translation>
    </message>
</context>
<context>
    <name>panelhost::FileMenu</name>
    <message>
        <source>&amp;File</source>
        <translation>ファイル(&amp;F)</translation>
    </message>
    <message>
        <source>Save &amp;journal…</source>
        <translation>ジャーナルを保存(&amp;J)…</translation>
    </message>
    <message>
        <source>Save &amp;report of this session…</source>
        <translation>このセッションのレポートを保存(&amp;R)…</translation>
    </message>
    <message>
        <source>Save &amp;picture of the window…</source>
        <translation>ウィンドウの画像を保存(&amp;P)…</translation>
    </message>
    <message>
        <source>Save picture of the &amp;LCD…</source>
        <translation>LCD の画像を保存(&amp;L)…</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>終了(&amp;Q)</translation>
    </message>
    <message>
        <source>Stop &amp;recording</source>
        <translation>記録を停止(&amp;R)</translation>
    </message>
    <message>
        <source>Start &amp;recording…</source>
        <translation>記録を開始(&amp;R)…</translation>
    </message>
    <message>
        <source>The file</source>
        <translation>ファイル</translation>
    </message>
    <message>
        <source>Saved: %1</source>
        <translation>保存しました: %1</translation>
    </message>
    <message>
        <source>&amp;New session</source>
        <translation>新しいセッション(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Open and play a scenario…</source>
        <translation>シナリオを開いて再生(&amp;O)…</translation>
    </message>
    <message>
        <source>Open a recording in the &amp;timeline…</source>
        <translation>記録をタイムラインで開く(&amp;T)…</translation>
    </message>
    <message>
        <source>Re&amp;cent files</source>
        <translation>最近使ったファイル(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Clear</source>
        <translation>消去(&amp;C)</translation>
    </message>
</context>
<context>
    <name>panelhost::HelpMenu</name>
    <message>
        <source>Manual</source>
        <translation>マニュアル</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>キーボードショートカット</translation>
    </message>
    <message>
        <source>About panelhost</source>
        <translation>panelhost について</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>ヘルプ(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;Manual</source>
        <translation>マニュアル(英語)(&amp;M)</translation>
    </message>
    <message>
        <source>&amp;Keyboard shortcuts</source>
        <translation>キーボードショートカット(&amp;K)</translation>
    </message>
    <message>
        <source>&amp;About panelhost</source>
        <translation>panelhost について(&amp;A)</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>キー</translation>
    </message>
    <message>
        <source>Effect</source>
        <translation>動作</translation>
    </message>
    <message>
        <source>Arrow keys, Return, Escape</source>
        <translation>矢印キー、Return、Escape</translation>
    </message>
    <message>
        <source>Move in the page that the LCD shows</source>
        <translation>LCD に表示中のページ内を移動</translation>
    </message>
    <message>
        <source>Tab, Shift+Tab</source>
        <translation>Tab、Shift+Tab</translation>
    </message>
    <message>
        <source>Next or previous control</source>
        <translation>次または前の操作部</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>スペース</translation>
    </message>
    <message>
        <source>Press the control that has the focus; plug or unplug a port</source>
        <translation>フォーカスのある操作部を押す。ポートを抜き差しする</translation>
    </message>
    <message>
        <source>Shift+Space</source>
        <translation>Shift+スペース</translation>
    </message>
    <message>
        <source>Hold a key until the next press; block or unblock a USB port</source>
        <translation>次に押すまでキーを押したままにする。USB ポートをブロックまたは解除する</translation>
    </message>
    <message>
        <source>Component: %1</source>
        <translation>コンポーネント: %1</translation>
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
        <translation>◀ イベント</translation>
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
        <translation>イベント ▶</translation>
    </message>
    <message>
        <source>Failed: %1</source>
        <translation>失敗: %1</translation>
    </message>
    <message>
        <source>First difference</source>
        <translation>最初の違い</translation>
    </message>
    <message>
        <source>The two sessions have the same journal.</source>
        <translation>2 つのセッションのジャーナルは同じです。</translation>
    </message>
    <message>
        <source>The sessions differ from line %1 of the journal on.</source>
        <translation>セッションはジャーナルの %1 行目から違います。</translation>
    </message>
    <message>
        <source>Take over here</source>
        <translation>ここから引き継ぐ</translation>
    </message>
    <message>
        <source>Take over and record…</source>
        <translation>引き継いで記録…</translation>
    </message>
    <message>
        <source>%1 of %2   line %3 of %4</source>
        <translation>%1 / %2   %3 / %4 行</translation>
    </message>
    <message>
        <source>Record the session</source>
        <translation>セッションを記録</translation>
    </message>
</context>
<context>
    <name>panelhost::JournalView</name>
    <message>
        <source>Journal</source>
        <translation>ジャーナル</translation>
    </message>
    <message>
        <source>Filter (Ctrl+F)</source>
        <translation>フィルター (Ctrl+F)</translation>
    </message>
    <message>
        <source>Lines of the journal</source>
        <translation>ジャーナルの行</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名前</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>値</translation>
    </message>
    <message>
        <source>Data of the journal line</source>
        <translation>ジャーナル行のデータ</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>コピー</translation>
    </message>
    <message>
        <source>Copies the selected lines (Ctrl+C)</source>
        <translation>選択した行をコピーします (Ctrl+C)</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>消去</translation>
    </message>
    <message>
        <source>Hides all lines up to now; the journal keeps them</source>
        <translation>これまでの行を隠します。ジャーナルには残ります</translation>
    </message>
    <message>
        <source>Export…</source>
        <translation>書き出し…</translation>
    </message>
    <message>
        <source>Writes the lines that are shown to a file</source>
        <translation>表示中の行をファイルに書き出します</translation>
    </message>
    <message>
        <source>Export the journal</source>
        <translation>ジャーナルの書き出し</translation>
    </message>
    <message>
        <source>Saved: %1</source>
        <translation>保存しました: %1</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>番号</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>時刻</translation>
    </message>
    <message>
        <source>Thread</source>
        <translation>スレッド</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>種類</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>The oldest %1 lines were discarded; use --journal FILE to keep all lines.</source>
        <translation>古い %1 行は破棄されました。すべて残すには --journal FILE を使います。</translation>
    </message>
    <message>
        <source>The oldest %1 lines are only in %2.</source>
        <translation>古い %1 行は %2 にだけあります。</translation>
    </message>
</context>
<context>
    <name>panelhost::KeyButton</name>
    <message>
        <source>%1 (key %2)</source>
        <translation>%1 (キー %2)</translation>
    </message>
    <message>
        <source>Click or Space: press. Long press: hold. Right button or Shift+Space: hold until the next click.</source>
        <translation>クリックまたはスペース: 押す。長押し: 押し続ける。右ボタンまたは Shift+スペース: 次のクリックまで押したままにする。</translation>
    </message>
    <message>
        <source>red</source>
        <translation>赤</translation>
    </message>
    <message>
        <source>blue</source>
        <translation>青</translation>
    </message>
    <message>
        <source>green</source>
        <translation>緑</translation>
    </message>
    <message>
        <source>white</source>
        <translation>白</translation>
    </message>
    <message>
        <source>dark</source>
        <translation>消灯</translation>
    </message>
    <message>
        <source>blinking</source>
        <translation>点滅</translation>
    </message>
    <message>
        <source>lit</source>
        <translation>点灯</translation>
    </message>
    <message>
        <source>amber</source>
        <translation>橙</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>held</source>
        <translation>押したまま</translation>
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
        <translation>つまみ</translation>
    </message>
    <message>
        <source>Wheel or click on a side: turn. Click in the middle or Space: Enter.</source>
        <translation>ホイールまたは左右のクリック: 回す。中央のクリックまたはスペース: 決定。</translation>
    </message>
</context>
<context>
    <name>panelhost::LcdInput</name>
    <message>
        <source>LCD touch screen</source>
        <translation>LCD タッチスクリーン</translation>
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
        <translation>決定</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>戻る</translation>
    </message>
    <message>
        <source>Moves in the page that the LCD shows. The arrow keys, Return and Escape do the same.</source>
        <translation>LCD に表示中のページ内を移動します。矢印キー、Return、Escape でも同じです。</translation>
    </message>
</context>
<context>
    <name>panelhost::Operator</name>
    <message>
        <source>There is no navigation key &quot;%1&quot;; available: %2.</source>
        <translation>ナビゲーションキー &quot;%1&quot; はありません。使えるもの: %2。</translation>
    </message>
    <message>
        <source>The panel has no key &quot;%1&quot;.</source>
        <translation>パネルにキー &quot;%1&quot; はありません。</translation>
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
        <translation>ソフトボタン &quot;%1&quot; はありません。使えるもの: left, right。</translation>
    </message>
    <message>
        <source>The page shows no %1 button.</source>
        <translation>ページの%1側にボタンがありません。</translation>
    </message>
    <message>
        <source>The %1 button is covered.</source>
        <translation>%1側のボタンは隠れています。</translation>
    </message>
    <message>
        <source>A finger is on the LCD already.</source>
        <translation>すでに指が LCD に触れています。</translation>
    </message>
    <message>
        <source>No finger is on the LCD.</source>
        <translation>LCD に指が触れていません。</translation>
    </message>
    <message>
        <source>The point %1, %2 is outside the LCD of %3 x %4.</source>
        <translation>点 %1, %2 は %3 x %4 の LCD の外です。</translation>
    </message>
    <message>
        <source>The T-Bar&apos;s position is a number from 0 to 1.</source>
        <translation>Tバーの位置は 0 から 1 の数です。</translation>
    </message>
    <message>
        <source>The device has no port &quot;%1&quot;.</source>
        <translation>デバイスにポート &quot;%1&quot; はありません。</translation>
    </message>
    <message>
        <source>The port &quot;%1&quot; can&apos;t be blocked; USB ports can.</source>
        <translation>ポート &quot;%1&quot; はブロックできません。できるのは USB ポートです。</translation>
    </message>
    <message>
        <source>A board has no part &quot;%1&quot;; there are %2.</source>
        <translation>ボードに部品 &quot;%1&quot; はありません。あるもの: %2。</translation>
    </message>
    <message>
        <source>There is no catalog for the language &quot;%1&quot;; available: %2.</source>
        <translation>言語 &quot;%1&quot; のカタログはありません。使えるもの: %2。</translation>
    </message>
</context>
<context>
    <name>panelhost::PanelWindow</name>
    <message>
        <source>The board has lost: %1</source>
        <translation>ボードから失われたもの: %1</translation>
    </message>
    <message>
        <source>A scenario is being played. Stop it first.</source>
        <translation>シナリオを再生中です。先に停止してください。</translation>
    </message>
    <message>
        <source>Enter the serial number of the unit first.</source>
        <translation>先に製品のシリアル番号を入力してください。</translation>
    </message>
    <message>
        <source>%1 has already passed the complete machine test: %2 UTC</source>
        <translation>%1 は総合テストに合格済みです: %2 UTC</translation>
    </message>
    <message>
        <source>&amp;Device</source>
        <translation>デバイス(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Enter factory mode</source>
        <translation>工場モードに入る(&amp;E)</translation>
    </message>
    <message>
        <source>E&amp;xit factory mode</source>
        <translation>工場モードを出る(&amp;X)</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>言語(&amp;L)</translation>
    </message>
    <message>
        <source>LCD</source>
        <translation>LCD</translation>
    </message>
    <message>
        <source>&amp;Window</source>
        <translation>ウィンドウ(&amp;W)</translation>
    </message>
    <message>
        <source>As on this &amp;computer</source>
        <translation>このコンピューターに合わせる(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>表示(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Find in the journal</source>
        <translation>ジャーナル内を検索(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Arrange docks automatically</source>
        <translation>ドックを自動配置(&amp;A)</translation>
    </message>
    <message>
        <source>Recording ended: %1</source>
        <translation>記録が終了しました: %1</translation>
    </message>
    <message>
        <source>Journal ended: %1</source>
        <translation>ジャーナルが終了しました: %1</translation>
    </message>
    <message>
        <source>The scenario can&apos;t be played.</source>
        <translation>シナリオを再生できません。</translation>
    </message>
    <message>
        <source>The timeline can&apos;t be opened: panelhost can&apos;t be started.</source>
        <translation>タイムラインを開けません: panelhost を起動できません。</translation>
    </message>
    <message>
        <source>&amp;Theme</source>
        <translation>テーマ(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>ダーク(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>ライト(&amp;L)</translation>
    </message>
</context>
<context>
    <name>panelhost::PlayBar</name>
    <message>
        <source>expected %1, found %2</source>
        <translation>期待 %1、実際 %2</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Ends the scenario here; the session stays as it is</source>
        <translation>シナリオをここで終えます。セッションはそのまま残ります</translation>
    </message>
    <message>
        <source>Details…</source>
        <translation>詳細…</translation>
    </message>
    <message>
        <source>Shows what was expected and found, and the last lines of the journal</source>
        <translation>期待値と実際の値、ジャーナルの最後の行を表示します</translation>
    </message>
    <message>
        <source>Timeline…</source>
        <translation>タイムライン…</translation>
    </message>
    <message>
        <source>Shows any moment of this scenario in another window</source>
        <translation>このシナリオの任意の時点を別のウィンドウで表示します</translation>
    </message>
    <message>
        <source>Play again</source>
        <translation>もう一度再生</translation>
    </message>
    <message>
        <source>Plays the scenario from its beginning in a new session</source>
        <translation>新しいセッションでシナリオを最初から再生します</translation>
    </message>
    <message>
        <source>Playing</source>
        <translation>再生中</translation>
    </message>
    <message>
        <source>%1  –  step %2 of %3: %4</source>
        <translation>%1  –  ステップ %2 / %3: %4</translation>
    </message>
    <message>
        <source>%1  –  %2 of %3 steps, %4</source>
        <translation>%1  –  ステップ %2 / %3、%4</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>PASSED</source>
        <translation>合格</translation>
    </message>
    <message>
        <source>FAILED</source>
        <translation>不合格</translation>
    </message>
</context>
<context>
    <name>panelhost::PortWidget</name>
    <message>
        <source>Click or Space: plug or unplug. Click on the switch or Shift+Space: block or unblock.</source>
        <translation>クリックまたはスペース: 抜き差し。スイッチのクリックまたは Shift+スペース: ブロックまたは解除。</translation>
    </message>
    <message>
        <source>Click or Space: plug or unplug.</source>
        <translation>クリックまたはスペース: 抜き差し。</translation>
    </message>
    <message>
        <source>plugged</source>
        <translation>接続</translation>
    </message>
    <message>
        <source>unplugged</source>
        <translation>未接続</translation>
    </message>
    <message>
        <source>blocked</source>
        <translation>ブロック中</translation>
    </message>
    <message>
        <source>fault</source>
        <translation>故障</translation>
    </message>
    <message>
        <source>block</source>
        <translation>ブロック</translation>
    </message>
    <message>
        <source>Unplug</source>
        <translation>抜く</translation>
    </message>
    <message>
        <source>Plug</source>
        <translation>差す</translation>
    </message>
    <message>
        <source>Unblock</source>
        <translation>ブロック解除</translation>
    </message>
    <message>
        <source>Block</source>
        <translation>ブロック</translation>
    </message>
</context>
<context>
    <name>panelhost::ScenarioOpener</name>
    <message>
        <source>Open a scenario</source>
        <translation>シナリオを開く</translation>
    </message>
    <message>
        <source>Open a recording in the timeline</source>
        <translation>記録をタイムラインで開く</translation>
    </message>
    <message>
        <source>Scenarios (*.yaml *.yml)</source>
        <translation>シナリオ (*.yaml *.yml)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>すべてのファイル (*)</translation>
    </message>
    <message>
        <source>Scenario with errors</source>
        <translation>エラーのあるシナリオ</translation>
    </message>
    <message>
        <source>%1 can&apos;t be played. Nothing has changed.</source>
        <translation>%1 は再生できません。何も変わっていません。</translation>
    </message>
</context>
<context>
    <name>panelhost::ScreenView</name>
    <message>
        <source>Screen %1, brightness %2 %</source>
        <translation>画面 %1、明るさ %2 %</translation>
    </message>
    <message>
        <source>SCREEN %1</source>
        <translation>画面 %1</translation>
    </message>
</context>
<context>
    <name>panelhost::SpeedBar</name>
    <message>
        <source>Time on the device since it started</source>
        <translation>起動してからのデバイスの時刻</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>一時停止</translation>
    </message>
    <message>
        <source>Real time</source>
        <translation>実時間</translation>
    </message>
    <message>
        <source>10×</source>
        <translation>10×</translation>
    </message>
    <message>
        <source>Full speed</source>
        <translation>最高速</translation>
    </message>
    <message>
        <source>The clock of the device stands still (Ctrl+P)</source>
        <translation>デバイスの時計が止まります (Ctrl+P)</translation>
    </message>
    <message>
        <source>The clock of the device follows real time (Ctrl+1)</source>
        <translation>デバイスの時計が実時間で進みます (Ctrl+1)</translation>
    </message>
    <message>
        <source>The clock of the device runs ten times as fast (Ctrl+2)</source>
        <translation>デバイスの時計が 10 倍の速さで進みます (Ctrl+2)</translation>
    </message>
    <message>
        <source>The clock of the device jumps from one event to the next (Ctrl+3)</source>
        <translation>デバイスの時計が次のイベントへ飛びます (Ctrl+3)</translation>
    </message>
</context>
<context>
    <name>panelhost::TBarWidget</name>
    <message>
        <source>T-Bar</source>
        <translation>Tバー</translation>
    </message>
    <message>
        <source>Drag, wheel or arrow keys: move. Home: bottom. End: top.</source>
        <translation>ドラッグ、ホイール、矢印キー: 動かす。Home: 下端。End: 上端。</translation>
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
        <translation>開始</translation>
    </message>
    <message>
        <source>top</source>
        <translation>上端</translation>
    </message>
    <message>
        <source>bottom</source>
        <translation>下端</translation>
    </message>
    <message>
        <source>end</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>ready</source>
        <translation>準備完了</translation>
    </message>
    <message>
        <source>at the top</source>
        <translation>上端です</translation>
    </message>
    <message>
        <source>move to the top</source>
        <translation>上端へ動かす</translation>
    </message>
    <message>
        <source>at the bottom</source>
        <translation>下端です</translation>
    </message>
    <message>
        <source>move to the bottom</source>
        <translation>下端へ動かす</translation>
    </message>
    <message>
        <source>T-BAR FADER</source>
        <translation>Tバー フェーダー</translation>
    </message>
    <message>
        <source>T-BAR SLIDER</source>
        <translation>Tバー スライダー</translation>
    </message>
</context>
<context>
    <name>panelhost::TimeMenu</name>
    <message>
        <source>&amp;Time</source>
        <translation>時間(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Pause</source>
        <translation>一時停止(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Real time</source>
        <translation>実時間(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;10 times as fast</source>
        <translation>10 倍速(&amp;1)</translation>
    </message>
    <message>
        <source>&amp;Full speed</source>
        <translation>最高速(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Step to the next event</source>
        <translation>次のイベントまで進む(&amp;S)</translation>
    </message>
</context>
<context>
    <name>panelhost::TimelineBar</name>
    <message>
        <source>Timeline of %1</source>
        <translation>%1 のタイムライン</translation>
    </message>
</context>
<context>
    <name>panelhost::TodayView</name>
    <message>
        <source>machine</source>
        <translation>総合</translation>
    </message>
    <message>
        <source>aging</source>
        <translation>エージング</translation>
    </message>
    <message>
        <source>repair</source>
        <translation>修理</translation>
    </message>
    <message>
        <source>passed</source>
        <translation>合格</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>不合格</translation>
    </message>
    <message>
        <source>aborted</source>
        <translation>中断</translation>
    </message>
    <message>
        <source>%1  (%2 of 1 unit)</source>
        <translation>%1  (1 台中 %2 台)</translation>
    </message>
    <message>
        <source>%1  (%2 of %3 units)</source>
        <translation>%1  (%3 台中 %2 台)</translation>
    </message>
    <message>
        <source>%1  (%2 of %3 failed)</source>
        <translation>%1  (不合格 %3 件中 %2 件)</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>今日</translation>
    </message>
    <message>
        <source>First-pass yield</source>
        <translation>一発合格率</translation>
    </message>
    <message>
        <source>Final yield</source>
        <translation>最終合格率</translation>
    </message>
    <message>
        <source>Machine tests</source>
        <translation>総合テスト</translation>
    </message>
    <message>
        <source>Fails most often</source>
        <translation>最も多い不合格</translation>
    </message>
    <message>
        <source>%1  (%2 passed, %3 failed, %4 aborted)</source>
        <translation>%1  (合格 %2、不合格 %3、中断 %4)</translation>
    </message>
</context>
<context>
    <name>panelhost::UnitBar</name>
    <message>
        <source>Complete machine test</source>
        <translation>総合テスト</translation>
    </message>
    <message>
        <source>Aging test</source>
        <translation>エージングテスト</translation>
    </message>
    <message>
        <source>Repair page</source>
        <translation>修理ページ</translation>
    </message>
    <message>
        <source>Repair page: %1</source>
        <translation>修理ページ: %1</translation>
    </message>
    <message>
        <source>No unit</source>
        <translation>製品なし</translation>
    </message>
    <message>
        <source>Scan a serial number</source>
        <translation>シリアル番号をスキャン</translation>
    </message>
    <message>
        <source>No verdict yet</source>
        <translation>判定はまだです</translation>
    </message>
    <message>
        <source>Serial number of the unit</source>
        <translation>製品のシリアル番号</translation>
    </message>
    <message>
        <source>Serial number of the next unit</source>
        <translation>次の製品のシリアル番号</translation>
    </message>
    <message>
        <source>PASSED</source>
        <translation>合格</translation>
    </message>
    <message>
        <source>FAILED</source>
        <translation>不合格</translation>
    </message>
    <message>
        <source>&quot;%1&quot; isn&apos;t a serial number that matches %2.</source>
        <translation>&quot;%1&quot; は %2 に合うシリアル番号ではありません。</translation>
    </message>
</context>
<context>
    <name>panelhost::UnitNumber</name>
    <message>
        <source>has %1 characters; at most %2 are allowed</source>
        <translation>%1 文字です (最大 %2 文字)</translation>
    </message>
    <message>
        <source>contains control characters</source>
        <translation>制御文字を含みます</translation>
    </message>
    <message>
        <source>A serial number can&apos;t be empty.</source>
        <translation>シリアル番号は空にできません。</translation>
    </message>
    <message>
        <source>The serial number %1.</source>
        <translation>シリアル番号: %1。</translation>
    </message>
</context>
<context>
    <name>panelhost::WindowStatus</name>
    <message>
        <source>Saved runs that the server doesn&apos;t have yet</source>
        <translation>サーバーにまだない保存済みの記録</translation>
    </message>
    <message>
        <source>● REC %1</source>
        <translation>● REC %1</translation>
    </message>
    <message>
        <source>1 run to send</source>
        <translation>未送信 1 件</translation>
    </message>
    <message>
        <source>%1 runs to send</source>
        <translation>未送信 %1 件</translation>
    </message>
</context>
</TS>
