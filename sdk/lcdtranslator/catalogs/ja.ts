<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP">
<context>
    <name>LCD::HomeWidgets</name>
    <message>
        <source>FCAging</source>
        <comment>Global</comment>
        <extracomment>The name of the running step follows with nothing between: end with the separator that the language needs.</extracomment>
        <translation>エージング：</translation>
    </message>
    <message>
        <source>FCScreenLight</source>
        <comment>Global</comment>
        <extracomment>Page title and name of a step; a level such as &quot; 30%&quot; may follow.</extracomment>
        <translation>画面の明るさ</translation>
    </message>
    <message>
        <source>FCScreenBadPixel</source>
        <comment>Global</comment>
        <translation>画面のドット抜け</translation>
    </message>
    <message>
        <source>FCBtnLight</source>
        <comment>Global</comment>
        <extracomment>Page title and name of a step; a level such as &quot; 30%&quot; may follow.</extracomment>
        <translation>キー照明</translation>
    </message>
    <message>
        <source>FCNet</source>
        <comment>Global</comment>
        <translation>ネットワークポート</translation>
    </message>
    <message>
        <source>FCUSB</source>
        <comment>Global</comment>
        <translation>USB ポート</translation>
    </message>
    <message>
        <source>FCAgeNetNoPass</source>
        <comment>Global</comment>
        <extracomment>May be joined to FCAgeUSBNoPass with an ideographic comma.</extracomment>
        <translation>ネットワークポート不合格</translation>
    </message>
    <message>
        <source>FCAgeUSBNoPass</source>
        <comment>Global</comment>
        <translation>USB ポート不合格</translation>
    </message>
    <message>
        <source>FCAgeMode</source>
        <comment>Global</comment>
        <translation>エージングテスト</translation>
    </message>
    <message>
        <source>FCAgeModeTestPreparation</source>
        <comment>Global</comment>
        <translation>すべてのネットワークポートを 2 つずつ接続し、各 USB ポートに機器を差し込んでください。</translation>
    </message>
    <message>
        <source>FCAgeModeStartTips</source>
        <comment>Global</comment>
        <translation>「テスト開始」で始まり、停止するまで繰り返します。</translation>
    </message>
    <message>
        <source>FCAgeModeStartTest</source>
        <comment>Global</comment>
        <translation>テスト開始</translation>
    </message>
    <message>
        <source>FCAgeModeStopTest</source>
        <comment>Global</comment>
        <translation>テスト停止</translation>
    </message>
    <message>
        <source>FCAgeModeRecount</source>
        <comment>Global</comment>
        <translation>再集計</translation>
    </message>
    <message>
        <source>MachineMode</source>
        <comment>Global</comment>
        <translation>総合テスト</translation>
    </message>
    <message>
        <source>TestStep</source>
        <comment>Global</comment>
        <translation>テスト手順</translation>
    </message>
    <message>
        <source>FCTestComplete</source>
        <comment>Global</comment>
        <extracomment>Page title, heading and caption of a button.</extracomment>
        <translation>テスト完了</translation>
    </message>
    <message>
        <source>FCTestPass</source>
        <comment>Global</comment>
        <translation>テスト合格</translation>
    </message>
    <message>
        <source>FCReTest</source>
        <comment>Global</comment>
        <translation>再テスト</translation>
    </message>
    <message>
        <source>FCPass</source>
        <comment>Global</comment>
        <translation>合格</translation>
    </message>
    <message>
        <source>FCNoPass</source>
        <comment>Global</comment>
        <extracomment>Caption of a button, and the verdict of a failed run.</extracomment>
        <translation>不合格</translation>
    </message>
    <message>
        <source>FCPleaseJudgePass</source>
        <comment>Global</comment>
        <extracomment>Last line of an instruction; it has no number.</extracomment>
        <translation>合否を判定してください。</translation>
    </message>
    <message>
        <source>FCNextStep</source>
        <comment>Global</comment>
        <translation>次へ</translation>
    </message>
    <message>
        <source>FCScreenBrightnessStep</source>
        <comment>Global</comment>
        <translation>すべての画面の明るさが 10% から 100% まで段階的に変わることを確認してください。</translation>
    </message>
    <message>
        <source>FCBtnBrightnessStep</source>
        <comment>Global</comment>
        <translation>すべてのキー照明の明るさが 10% から 100% まで段階的に変わることを確認してください。</translation>
    </message>
    <message>
        <source>FCObserveScreenShowStep1</source>
        <comment>Global</comment>
        <translation>すべての画面に黒点や輝点がないことを確認してください。</translation>
    </message>
    <message>
        <source>FCObserveScreenShowStep2</source>
        <comment>Global</comment>
        <translation>「次へ」で次の画像に進みます。</translation>
    </message>
    <message>
        <source>ButtonFunction</source>
        <comment>Global</comment>
        <translation>キー機能</translation>
    </message>
    <message>
        <source>FCClickGreenFlashingBtn</source>
        <comment>Global</comment>
        <translation>緑色に点滅しているキーを押してください。</translation>
    </message>
    <message>
        <source>Push T-Bar to Top</source>
        <comment>Global</comment>
        <extracomment>Follows &quot;1.&quot;, &quot;3.&quot; and &quot;5.&quot; with nothing between: begin with the blank that the language needs.</extracomment>
        <translation> T-Bar を上端まで動かす</translation>
    </message>
    <message>
        <source>Push T-Bar to Bottom</source>
        <comment>Global</comment>
        <extracomment>Follows &quot;2.&quot;, &quot;4.&quot; and &quot;6.&quot; with nothing between: begin with the blank that the language needs.</extracomment>
        <translation> T-Bar を下端まで動かす</translation>
    </message>
    <message>
        <source>FCNetConnectPort1Port2</source>
        <comment>Global</comment>
        <translation>ネットワークポート 1 と 2 を LAN ケーブルで接続してください。</translation>
    </message>
    <message>
        <source>USBA</source>
        <comment>Global</comment>
        <translation>USB-A ポート</translation>
    </message>
    <message>
        <source>FCUSB30TestStep</source>
        <comment>Global</comment>
        <translation>すべての USB-A ポートに USB 3.0 機器を差し込んでください。</translation>
    </message>
    <message>
        <source>TypecCommuication</source>
        <comment>Global</comment>
        <translation>Type-C 通信</translation>
    </message>
    <message>
        <source>FCTypecCommStep1</source>
        <comment>Global</comment>
        <translation>Type-C ポートにパソコンを接続してください。</translation>
    </message>
    <message>
        <source>FCTypecCommStep2</source>
        <comment>Global</comment>
        <translation>パソコンが本機を認識することを確認してください。</translation>
    </message>
    <message>
        <source>TypecPower</source>
        <comment>Global</comment>
        <translation>Type-C 給電</translation>
    </message>
    <message>
        <source>FCTypecPowerStep1</source>
        <comment>Global</comment>
        <translation>Type-C 給電ポートに電圧計を接続してください。</translation>
    </message>
    <message>
        <source>FCTypecPowerStep2</source>
        <comment>Global</comment>
        <translation>電圧が安定していることを確認してください。</translation>
    </message>
    <message>
        <source>NET1POE</source>
        <comment>Global</comment>
        <translation>ポート 1 PoE 給電</translation>
    </message>
    <message>
        <source>FCNetPort1PowerStep1</source>
        <comment>Global</comment>
        <translation>ネットワークポート 1 に PoE テスターを接続してください。</translation>
    </message>
    <message>
        <source>FCNetPort1PowerStep2</source>
        <comment>Global</comment>
        <translation>テスターに給電が表示されることを確認してください。</translation>
    </message>
    <message>
        <source>RepairServiceMissing</source>
        <comment>Global</comment>
        <translation>このテストに必要な機能がデバイスにありません。</translation>
    </message>
    <message>
        <source>RepairSkipKey</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>キーをスキップ</translation>
    </message>
    <message>
        <source>RepairKeyUnderTest</source>
        <comment>Global</comment>
        <extracomment>%1 is the name of a key.</extracomment>
        <translation>テスト中のキー：%1</translation>
    </message>
    <message>
        <source>RepairKeysFailed</source>
        <comment>Global</comment>
        <extracomment>%1 is a list of names of keys.</extracomment>
        <translation>不合格のキー：%1</translation>
    </message>
    <message>
        <source>RepairNetStep</source>
        <comment>Global</comment>
        <translation>すべてのネットポートを LAN ケーブルで 2 つずつ接続してください。</translation>
    </message>
    <message>
        <source>RepairUSBStep</source>
        <comment>Global</comment>
        <translation>すべての USB ポートに USB 機器を接続してください。</translation>
    </message>
    <message>
        <source>RepairNetPort</source>
        <comment>Global</comment>
        <extracomment>%1 is a number.</extracomment>
        <translation>ネットポート %1</translation>
    </message>
    <message>
        <source>RepairUSBPort</source>
        <comment>Global</comment>
        <extracomment>%1 is a number.</extracomment>
        <translation>USB ポート %1</translation>
    </message>
    <message>
        <source>RepairLinked</source>
        <comment>Global</comment>
        <extracomment>Follows the name of a port and a colon.</extracomment>
        <translation>接続</translation>
    </message>
    <message>
        <source>RepairNotLinked</source>
        <comment>Global</comment>
        <extracomment>Follows the name of a port and a colon.</extracomment>
        <translation>未接続</translation>
    </message>
    <message>
        <source>RepairMorePorts</source>
        <comment>Global</comment>
        <extracomment>%1 is a number of ports that the page has no room for.</extracomment>
        <translation>ほか %1 ポート</translation>
    </message>
    <message>
        <source>RepairNoPort</source>
        <comment>Global</comment>
        <translation>ポートが 1 つも報告されていません。</translation>
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
        <translation>校正を開始し、各行の指示どおりに T-Bar を動かしてください。</translation>
    </message>
    <message>
        <source>RepairTBarMeasuring</source>
        <comment>Global</comment>
        <extracomment>In the place of the heading while a calibration step runs.</extracomment>
        <translation>校正中：T-Bar を動かさないでください</translation>
    </message>
    <message>
        <source>RepairTBarNotTop</source>
        <comment>Global</comment>
        <translation>この手順は失敗しました。次へ進む前に T-Bar をいちばん上にしてください。</translation>
    </message>
    <message>
        <source>RepairTBarNotBottom</source>
        <comment>Global</comment>
        <translation>この手順は失敗しました。次へ進む前に T-Bar をいちばん下にしてください。</translation>
    </message>
    <message>
        <source>RepairTBarNoAnswer</source>
        <comment>Global</comment>
        <translation>校正がこの手順を完了しませんでした。T-Bar の接続を確認してください。</translation>
    </message>
    <message>
        <source>RepairKnob</source>
        <comment>Global</comment>
        <translation>ノブ</translation>
    </message>
    <message>
        <source>RepairKnobStep</source>
        <comment>Global</comment>
        <translation>ノブを両方向に回し、押してください。</translation>
    </message>
    <message>
        <source>RepairKnobLeft</source>
        <comment>Global</comment>
        <extracomment>A count such as &quot; (1/3)&quot; follows.</extracomment>
        <translation>左に回す</translation>
    </message>
    <message>
        <source>RepairKnobRight</source>
        <comment>Global</comment>
        <extracomment>A count such as &quot; (1/3)&quot; follows.</extracomment>
        <translation>右に回す</translation>
    </message>
    <message>
        <source>RepairKnobPress</source>
        <comment>Global</comment>
        <translation>ノブを押す</translation>
    </message>
    <message>
        <source>RepairJoystick</source>
        <comment>Global</comment>
        <translation>ジョイスティック</translation>
    </message>
    <message>
        <source>RepairJoystickStep</source>
        <comment>Global</comment>
        <translation>ジョイスティックを全方向に倒し、押してください。</translation>
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
        <translation>押す</translation>
    </message>
    <message>
        <source>RepairTouch</source>
        <comment>Global</comment>
        <translation>タッチパネル</translation>
    </message>
    <message>
        <source>RepairTouchStep</source>
        <comment>Global</comment>
        <extracomment>A count such as &quot; (12/40)&quot; follows.</extracomment>
        <translation>すべてのマスをタッチするか、指でなぞってください。</translation>
    </message>
    <message>
        <source>RepairTouchKeys</source>
        <comment>Global</comment>
        <extracomment>Fail is the caption of the left button.</extracomment>
        <translation>キー：左と決定で「不合格」、戻るで終了。</translation>
    </message>
    <message>
        <source>RepairTouchCells</source>
        <comment>Global</comment>
        <extracomment>A count such as &quot; (12/40)&quot; follows.</extracomment>
        <translation>タッチ済みのマス</translation>
    </message>
    <message>
        <source>RepairExport</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>書き出す</translation>
    </message>
    <message>
        <source>RepairExportAgain</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>もう一度</translation>
    </message>
    <message>
        <source>RepairCancel</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>RepairExportTitle</source>
        <comment>Global</comment>
        <translation>ログの書き出し</translation>
    </message>
    <message>
        <source>RepairExportStep</source>
        <comment>Global</comment>
        <translation>USB メモリを接続してください。ログとテスト結果が書き込まれます。</translation>
    </message>
    <message>
        <source>RepairExportWriting</source>
        <comment>Global</comment>
        <extracomment>%1 is a number from 0 to 100.</extracomment>
        <translation>書き込み中：%1%</translation>
    </message>
    <message>
        <source>RepairExportDone</source>
        <comment>Global</comment>
        <translation>書き出しが完了しました。USB メモリを取り外せます。</translation>
    </message>
    <message>
        <source>RepairExportFailed</source>
        <comment>Global</comment>
        <translation>書き出しに失敗しました。何も書き込まれていません。</translation>
    </message>
    <message>
        <source>RepairExportNoStick</source>
        <comment>Global</comment>
        <translation>USB メモリがありません。</translation>
    </message>
    <message>
        <source>RepairExportFull</source>
        <comment>Global</comment>
        <translation>USB メモリに空きがありません。</translation>
    </message>
    <message>
        <source>RepairExportReadOnly</source>
        <comment>Global</comment>
        <translation>USB メモリは書き込み禁止です。</translation>
    </message>
    <message>
        <source>RepairExportBroken</source>
        <comment>Global</comment>
        <translation>USB メモリに書き込めません。取り外されたか、壊れている可能性があります。</translation>
    </message>
    <message>
        <source>RepairReset</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>初期化する</translation>
    </message>
    <message>
        <source>RepairResetAgain</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>もう一度</translation>
    </message>
    <message>
        <source>RepairResetTitle</source>
        <comment>Global</comment>
        <translation>出荷時設定に戻す</translation>
    </message>
    <message>
        <source>RepairResetStep</source>
        <comment>Global</comment>
        <translation>すべての設定が出荷時の状態に戻ります。元に戻すことはできません。</translation>
    </message>
    <message>
        <source>RepairResetConfirm</source>
        <comment>Global</comment>
        <translation>本当に初期化しますか？</translation>
    </message>
    <message>
        <source>RepairResetRunning</source>
        <comment>Global</comment>
        <translation>初期化しています</translation>
    </message>
    <message>
        <source>RepairResetDone</source>
        <comment>Global</comment>
        <translation>初期化しました。</translation>
    </message>
    <message>
        <source>RepairResetFailed</source>
        <comment>Global</comment>
        <translation>初期化に失敗しました。</translation>
    </message>
    <message>
        <source>RepairResetError</source>
        <comment>Global</comment>
        <translation>デバイスがエラーを報告しました。内容はログに記録されています。</translation>
    </message>
    <message>
        <source>HostReady</source>
        <comment>Global</comment>
        <translation>準備完了</translation>
    </message>
    <message>
        <source>HostPressEnter</source>
        <comment>Global</comment>
        <translation>決定を押すとファクトリーモードに入ります。</translation>
    </message>
    <message>
        <source>HostFactoryMode</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>ファクトリーモード</translation>
    </message>
    <message>
        <source>HostBack</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>戻る</translation>
    </message>
    <message>
        <source>HostContainer</source>
        <comment>Global</comment>
        <extracomment>%1 is the name of a page.</extracomment>
        <translation>ここで機器の画面「%1」が開きます。</translation>
    </message>
</context>
</TS>
