<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>LCD::HomeWidgets</name>
    <message>
        <source>FCAging</source>
        <comment>Global</comment>
        <extracomment>The name of the running step follows with nothing between: end with the separator that the language needs.</extracomment>
        <translation>Dauertest: </translation>
    </message>
    <message>
        <source>FCScreenLight</source>
        <comment>Global</comment>
        <extracomment>Page title and name of a step; a level such as &quot; 30%&quot; may follow.</extracomment>
        <translation>Bildschirmhelligkeit</translation>
    </message>
    <message>
        <source>FCScreenBadPixel</source>
        <comment>Global</comment>
        <translation>Bildschirmpixel</translation>
    </message>
    <message>
        <source>FCBtnLight</source>
        <comment>Global</comment>
        <extracomment>Page title and name of a step; a level such as &quot; 30%&quot; may follow.</extracomment>
        <translation>Tastenbeleuchtung</translation>
    </message>
    <message>
        <source>FCNet</source>
        <comment>Global</comment>
        <translation>Netzwerkanschlüsse</translation>
    </message>
    <message>
        <source>FCUSB</source>
        <comment>Global</comment>
        <translation>USB-Anschlüsse</translation>
    </message>
    <message>
        <source>FCAgeNetNoPass</source>
        <comment>Global</comment>
        <extracomment>May be joined to FCAgeUSBNoPass with an ideographic comma.</extracomment>
        <translation>Netzwerkanschlüsse fehlerhaft</translation>
    </message>
    <message>
        <source>FCAgeUSBNoPass</source>
        <comment>Global</comment>
        <translation>USB-Anschlüsse fehlerhaft</translation>
    </message>
    <message>
        <source>FCAgeMode</source>
        <comment>Global</comment>
        <translation>Dauertest</translation>
    </message>
    <message>
        <source>FCAgeModeTestPreparation</source>
        <comment>Global</comment>
        <translation>Alle Netzwerkanschlüsse paarweise verbinden und an jeden USB-Anschluss ein Gerät stecken.</translation>
    </message>
    <message>
        <source>FCAgeModeStartTips</source>
        <comment>Global</comment>
        <translation>Mit „Test starten“ beginnen. Der Test läuft, bis er angehalten wird.</translation>
    </message>
    <message>
        <source>FCAgeModeStartTest</source>
        <comment>Global</comment>
        <translation>Test starten</translation>
    </message>
    <message>
        <source>FCAgeModeStopTest</source>
        <comment>Global</comment>
        <translation>Test anhalten</translation>
    </message>
    <message>
        <source>FCAgeModeRecount</source>
        <comment>Global</comment>
        <translation>Neu zählen</translation>
    </message>
    <message>
        <source>MachineMode</source>
        <comment>Global</comment>
        <translation>Gerätetest</translation>
    </message>
    <message>
        <source>TestStep</source>
        <comment>Global</comment>
        <translation>Prüfschritte</translation>
    </message>
    <message>
        <source>FCTestComplete</source>
        <comment>Global</comment>
        <extracomment>Page title, heading and caption of a button.</extracomment>
        <translation>Test beendet</translation>
    </message>
    <message>
        <source>FCTestPass</source>
        <comment>Global</comment>
        <translation>Test bestanden</translation>
    </message>
    <message>
        <source>FCReTest</source>
        <comment>Global</comment>
        <translation>Erneut testen</translation>
    </message>
    <message>
        <source>FCPass</source>
        <comment>Global</comment>
        <translation>Bestanden</translation>
    </message>
    <message>
        <source>FCNoPass</source>
        <comment>Global</comment>
        <extracomment>Caption of a button, and the verdict of a failed run.</extracomment>
        <translation>Nicht bestanden</translation>
    </message>
    <message>
        <source>FCPleaseJudgePass</source>
        <comment>Global</comment>
        <extracomment>Last line of an instruction; it has no number.</extracomment>
        <translation>Bitte beurteilen, ob der Test bestanden ist.</translation>
    </message>
    <message>
        <source>FCNextStep</source>
        <comment>Global</comment>
        <translation>Nächster Schritt</translation>
    </message>
    <message>
        <source>FCScreenBrightnessStep</source>
        <comment>Global</comment>
        <translation>Prüfen, ob alle Bildschirme die Helligkeitsstufen von 10 % bis 100 % durchlaufen.</translation>
    </message>
    <message>
        <source>FCBtnBrightnessStep</source>
        <comment>Global</comment>
        <translation>Prüfen, ob alle Tasten die Helligkeitsstufen von 10 % bis 100 % durchlaufen.</translation>
    </message>
    <message>
        <source>FCObserveScreenShowStep1</source>
        <comment>Global</comment>
        <translation>Alle Bildschirme auf dunkle oder leuchtende Pixel prüfen.</translation>
    </message>
    <message>
        <source>FCObserveScreenShowStep2</source>
        <comment>Global</comment>
        <translation>Mit „Nächster Schritt“ zum nächsten Bild wechseln.</translation>
    </message>
    <message>
        <source>ButtonFunction</source>
        <comment>Global</comment>
        <translation>Tastenfunktion</translation>
    </message>
    <message>
        <source>FCClickGreenFlashingBtn</source>
        <comment>Global</comment>
        <translation>Die grün blinkende Taste drücken.</translation>
    </message>
    <message>
        <source>Push T-Bar to Top</source>
        <comment>Global</comment>
        <extracomment>Follows &quot;1.&quot;, &quot;3.&quot; and &quot;5.&quot; with nothing between: begin with the blank that the language needs.</extracomment>
        <translation> T-Bar ganz nach oben schieben</translation>
    </message>
    <message>
        <source>Push T-Bar to Bottom</source>
        <comment>Global</comment>
        <extracomment>Follows &quot;2.&quot;, &quot;4.&quot; and &quot;6.&quot; with nothing between: begin with the blank that the language needs.</extracomment>
        <translation> T-Bar ganz nach unten schieben</translation>
    </message>
    <message>
        <source>FCNetConnectPort1Port2</source>
        <comment>Global</comment>
        <translation>Netzwerkanschluss 1 und 2 mit einem Netzwerkkabel verbinden.</translation>
    </message>
    <message>
        <source>USBA</source>
        <comment>Global</comment>
        <translation>USB-A-Anschlüsse</translation>
    </message>
    <message>
        <source>FCUSB30TestStep</source>
        <comment>Global</comment>
        <translation>An jeden USB-A-Anschluss ein USB-3.0-Gerät stecken.</translation>
    </message>
    <message>
        <source>TypecCommuication</source>
        <comment>Global</comment>
        <translation>Type-C-Daten</translation>
    </message>
    <message>
        <source>FCTypecCommStep1</source>
        <comment>Global</comment>
        <translation>Einen Computer an den Type-C-Anschluss anschließen.</translation>
    </message>
    <message>
        <source>FCTypecCommStep2</source>
        <comment>Global</comment>
        <translation>Prüfen, ob der Computer das Gerät erkennt.</translation>
    </message>
    <message>
        <source>TypecPower</source>
        <comment>Global</comment>
        <translation>Type-C-Versorgung</translation>
    </message>
    <message>
        <source>FCTypecPowerStep1</source>
        <comment>Global</comment>
        <translation>Ein Spannungsmessgerät an den Type-C-Stromanschluss anschließen.</translation>
    </message>
    <message>
        <source>FCTypecPowerStep2</source>
        <comment>Global</comment>
        <translation>Prüfen, ob die Spannung stabil ist.</translation>
    </message>
    <message>
        <source>NET1POE</source>
        <comment>Global</comment>
        <translation>PoE an Anschluss 1</translation>
    </message>
    <message>
        <source>FCNetPort1PowerStep1</source>
        <comment>Global</comment>
        <translation>Einen PoE-Tester an Netzwerkanschluss 1 anschließen.</translation>
    </message>
    <message>
        <source>FCNetPort1PowerStep2</source>
        <comment>Global</comment>
        <translation>Prüfen, ob der Tester Spannung anzeigt.</translation>
    </message>
    <message>
        <source>RepairServiceMissing</source>
        <comment>Global</comment>
        <translation>Das Gerät bietet nicht, was dieser Test braucht.</translation>
    </message>
    <message>
        <source>RepairSkipKey</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>Taste auslassen</translation>
    </message>
    <message>
        <source>RepairKeyUnderTest</source>
        <comment>Global</comment>
        <extracomment>%1 is the name of a key.</extracomment>
        <translation>Geprüfte Taste: %1</translation>
    </message>
    <message>
        <source>RepairKeysFailed</source>
        <comment>Global</comment>
        <extracomment>%1 is a list of names of keys.</extracomment>
        <translation>Fehlerhafte Tasten: %1</translation>
    </message>
    <message>
        <source>RepairNetStep</source>
        <comment>Global</comment>
        <translation>Alle Netzwerkanschlüsse paarweise mit Netzwerkkabeln verbinden.</translation>
    </message>
    <message>
        <source>RepairUSBStep</source>
        <comment>Global</comment>
        <translation>An jeden USB-Anschluss ein USB-Gerät stecken.</translation>
    </message>
    <message>
        <source>RepairNetPort</source>
        <comment>Global</comment>
        <extracomment>%1 is a number.</extracomment>
        <translation>Netzwerkanschluss %1</translation>
    </message>
    <message>
        <source>RepairUSBPort</source>
        <comment>Global</comment>
        <extracomment>%1 is a number.</extracomment>
        <translation>USB-Anschluss %1</translation>
    </message>
    <message>
        <source>RepairLinked</source>
        <comment>Global</comment>
        <extracomment>Follows the name of a port and a colon.</extracomment>
        <translation>verbunden</translation>
    </message>
    <message>
        <source>RepairNotLinked</source>
        <comment>Global</comment>
        <extracomment>Follows the name of a port and a colon.</extracomment>
        <translation>nicht verbunden</translation>
    </message>
    <message>
        <source>RepairMorePorts</source>
        <comment>Global</comment>
        <extracomment>%1 is a number of ports that the page has no room for.</extracomment>
        <translation>%1 weitere Anschlüsse</translation>
    </message>
    <message>
        <source>RepairNoPort</source>
        <comment>Global</comment>
        <translation>Es wurde kein Anschluss gemeldet.</translation>
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
        <translation>Kalibrierung starten, dann den T-Bar wie in jeder Zeile angegeben schieben.</translation>
    </message>
    <message>
        <source>RepairTBarMeasuring</source>
        <comment>Global</comment>
        <extracomment>In the place of the heading while a calibration step runs.</extracomment>
        <translation>Kalibrierung läuft: T-Bar nicht bewegen</translation>
    </message>
    <message>
        <source>RepairTBarNotTop</source>
        <comment>Global</comment>
        <translation>Der Schritt ist fehlgeschlagen. Der T-Bar muss ganz oben stehen, bevor es weitergeht.</translation>
    </message>
    <message>
        <source>RepairTBarNotBottom</source>
        <comment>Global</comment>
        <translation>Der Schritt ist fehlgeschlagen. Der T-Bar muss ganz unten stehen, bevor es weitergeht.</translation>
    </message>
    <message>
        <source>RepairTBarNoAnswer</source>
        <comment>Global</comment>
        <translation>Die Kalibrierung hat den Schritt nicht beendet. Anschluss des T-Bars prüfen.</translation>
    </message>
    <message>
        <source>RepairKnob</source>
        <comment>Global</comment>
        <translation>Drehknopf</translation>
    </message>
    <message>
        <source>RepairKnobStep</source>
        <comment>Global</comment>
        <translation>Den Drehknopf in beide Richtungen drehen und drücken.</translation>
    </message>
    <message>
        <source>RepairKnobLeft</source>
        <comment>Global</comment>
        <extracomment>A count such as &quot; (1/3)&quot; follows.</extracomment>
        <translation>Nach links drehen</translation>
    </message>
    <message>
        <source>RepairKnobRight</source>
        <comment>Global</comment>
        <extracomment>A count such as &quot; (1/3)&quot; follows.</extracomment>
        <translation>Nach rechts drehen</translation>
    </message>
    <message>
        <source>RepairKnobPress</source>
        <comment>Global</comment>
        <translation>Den Knopf drücken</translation>
    </message>
    <message>
        <source>RepairJoystick</source>
        <comment>Global</comment>
        <translation>Joystick</translation>
    </message>
    <message>
        <source>RepairJoystickStep</source>
        <comment>Global</comment>
        <translation>Den Joystick in alle Richtungen bewegen und drücken.</translation>
    </message>
    <message>
        <source>RepairJoystickUp</source>
        <comment>Global</comment>
        <translation>Nach oben</translation>
    </message>
    <message>
        <source>RepairJoystickDown</source>
        <comment>Global</comment>
        <translation>Nach unten</translation>
    </message>
    <message>
        <source>RepairJoystickLeft</source>
        <comment>Global</comment>
        <translation>Nach links</translation>
    </message>
    <message>
        <source>RepairJoystickRight</source>
        <comment>Global</comment>
        <translation>Nach rechts</translation>
    </message>
    <message>
        <source>RepairJoystickPress</source>
        <comment>Global</comment>
        <translation>Drücken</translation>
    </message>
    <message>
        <source>RepairTouch</source>
        <comment>Global</comment>
        <translation>Touchscreen</translation>
    </message>
    <message>
        <source>RepairTouchStep</source>
        <comment>Global</comment>
        <extracomment>A count such as &quot; (12/40)&quot; follows.</extracomment>
        <translation>Jedes Feld berühren oder mit dem Finger darüberstreichen.</translation>
    </message>
    <message>
        <source>RepairTouchKeys</source>
        <comment>Global</comment>
        <extracomment>Fail is the caption of the left button.</extracomment>
        <translation>Tasten: Links und Enter für „Nicht bestanden“, Zurück zum Verlassen.</translation>
    </message>
    <message>
        <source>RepairTouchCells</source>
        <comment>Global</comment>
        <extracomment>A count such as &quot; (12/40)&quot; follows.</extracomment>
        <translation>Berührte Felder</translation>
    </message>
    <message>
        <source>RepairExport</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>RepairExportAgain</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>Noch einmal</translation>
    </message>
    <message>
        <source>RepairCancel</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>RepairExportTitle</source>
        <comment>Global</comment>
        <translation>Protokoll exportieren</translation>
    </message>
    <message>
        <source>RepairExportStep</source>
        <comment>Global</comment>
        <translation>USB-Stick einstecken. Journal und Testergebnisse werden darauf geschrieben.</translation>
    </message>
    <message>
        <source>RepairExportWriting</source>
        <comment>Global</comment>
        <extracomment>%1 is a number from 0 to 100.</extracomment>
        <translation>Wird geschrieben: %1 %</translation>
    </message>
    <message>
        <source>RepairExportDone</source>
        <comment>Global</comment>
        <translation>Der Export ist abgeschlossen. Der USB-Stick kann abgezogen werden.</translation>
    </message>
    <message>
        <source>RepairExportFailed</source>
        <comment>Global</comment>
        <translation>Der Export ist fehlgeschlagen. Es wurde nichts geschrieben.</translation>
    </message>
    <message>
        <source>RepairExportNoStick</source>
        <comment>Global</comment>
        <translation>Es steckt kein USB-Stick.</translation>
    </message>
    <message>
        <source>RepairExportFull</source>
        <comment>Global</comment>
        <translation>Der USB-Stick ist voll.</translation>
    </message>
    <message>
        <source>RepairExportReadOnly</source>
        <comment>Global</comment>
        <translation>Der USB-Stick ist schreibgeschützt.</translation>
    </message>
    <message>
        <source>RepairExportBroken</source>
        <comment>Global</comment>
        <translation>Auf den USB-Stick kann nicht geschrieben werden. Er ist vielleicht abgezogen oder defekt.</translation>
    </message>
    <message>
        <source>RepairReset</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>RepairResetAgain</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>Noch einmal versuchen</translation>
    </message>
    <message>
        <source>RepairResetTitle</source>
        <comment>Global</comment>
        <translation>Werkseinstellungen</translation>
    </message>
    <message>
        <source>RepairResetStep</source>
        <comment>Global</comment>
        <translation>Alle Einstellungen werden auf die Werkseinstellungen zurückgesetzt. Das kann nicht rückgängig gemacht werden.</translation>
    </message>
    <message>
        <source>RepairResetConfirm</source>
        <comment>Global</comment>
        <translation>Das Gerät wirklich zurücksetzen?</translation>
    </message>
    <message>
        <source>RepairResetRunning</source>
        <comment>Global</comment>
        <translation>Das Gerät wird zurückgesetzt</translation>
    </message>
    <message>
        <source>RepairResetDone</source>
        <comment>Global</comment>
        <translation>Das Gerät wurde zurückgesetzt.</translation>
    </message>
    <message>
        <source>RepairResetFailed</source>
        <comment>Global</comment>
        <translation>Das Zurücksetzen ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>RepairResetError</source>
        <comment>Global</comment>
        <translation>Das Gerät hat einen Fehler gemeldet. Die Meldung steht im Protokoll.</translation>
    </message>
    <message>
        <source>HostReady</source>
        <comment>Global</comment>
        <translation>Bereit</translation>
    </message>
    <message>
        <source>HostPressEnter</source>
        <comment>Global</comment>
        <translation>Mit Enter in den Werksmodus wechseln.</translation>
    </message>
    <message>
        <source>HostFactoryMode</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>Werksmodus</translation>
    </message>
    <message>
        <source>HostBack</source>
        <comment>Global</comment>
        <extracomment>Caption of a button.</extracomment>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>HostContainer</source>
        <comment>Global</comment>
        <extracomment>%1 is the name of a page.</extracomment>
        <translation>Das Gerät öffnet hier seine eigene Seite „%1“.</translation>
    </message>
</context>
</TS>
