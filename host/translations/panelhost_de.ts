<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>panelhost::Control</name>
    <message>
        <source>Faults that are on:</source>
        <translation>Eingeschaltete Fehler:</translation>
    </message>
</context>
<context>
    <name>panelhost::FaultMenu</name>
    <message>
        <source>key</source>
        <translation>Taste</translation>
    </message>
    <message>
        <source>step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>service</source>
        <translation>Dienst</translation>
    </message>
    <message>
        <source>Fa&amp;ults</source>
        <translation>F&amp;ehler</translation>
    </message>
</context>
<context>
    <name>panelhost::FaultView</name>
    <message>
        <source>Clear all</source>
        <translation>Alle ausschalten</translation>
    </message>
    <message>
        <source>Switches all faults off</source>
        <translation>Schaltet alle Fehler aus</translation>
    </message>
    <message>
        <source>Faults</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Fault</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Applies to</source>
        <translation>Betrifft</translation>
    </message>
</context>
<context>
    <name>panelhost::Faults</name>
    <message>
        <source>keys of the panel</source>
        <translation>Tasten der Frontplatte</translation>
    </message>
    <message>
        <source>T-Bar calibration</source>
        <translation>T-Bar-Kalibrierung</translation>
    </message>
    <message>
        <source>reports and changes of the net and USB ports</source>
        <translation>Meldungen und Änderungen der Netz- und USB-Anschlüsse</translation>
    </message>
    <message>
        <source>log export</source>
        <translation>Log-Export</translation>
    </message>
    <message>
        <source>A key gives no event</source>
        <translation>Eine Taste löst kein Ereignis aus</translation>
    </message>
    <message>
        <source>A key gives three events for each press</source>
        <translation>Eine Taste löst bei jedem Druck drei Ereignisse aus</translation>
    </message>
    <message>
        <source>Keys also give an event when they are released</source>
        <translation>Tasten lösen auch beim Loslassen ein Ereignis aus</translation>
    </message>
    <message>
        <source>The LED of a key keeps what it shows</source>
        <translation>Die LED einer Taste ändert sich nicht mehr</translation>
    </message>
    <message>
        <source>LEDs of the keys</source>
        <translation>LEDs der Tasten</translation>
    </message>
    <message>
        <source>The T-Bar calibration fails at a step, 1 to 7</source>
        <translation>Die T-Bar-Kalibrierung scheitert an einem Schritt, 1 bis 7</translation>
    </message>
    <message>
        <source>The T-Bar calibration never answers</source>
        <translation>Die T-Bar-Kalibrierung antwortet nie</translation>
    </message>
    <message>
        <source>A service can&apos;t be found</source>
        <translation>Ein Dienst wird nicht gefunden</translation>
    </message>
    <message>
        <source>services that the component asks for from then on</source>
        <translation>Dienste, die die Komponente von da an sucht</translation>
    </message>
    <message>
        <source>Link reports hold a value of another type</source>
        <translation>Link-Meldungen enthalten einen Wert eines anderen Typs</translation>
    </message>
    <message>
        <source>Link reports hold a null pointer</source>
        <translation>Link-Meldungen enthalten einen Nullzeiger</translation>
    </message>
    <message>
        <source>Link reports hold no value at all</source>
        <translation>Link-Meldungen enthalten gar keinen Wert</translation>
    </message>
    <message>
        <source>Link reports hold no record</source>
        <translation>Link-Meldungen enthalten keinen Datensatz</translation>
    </message>
    <message>
        <source>Link reports hold ports with negative and huge numbers as well</source>
        <translation>Link-Meldungen enthalten auch Anschlüsse mit negativen und riesigen Nummern</translation>
    </message>
    <message>
        <source>Each link report comes twice</source>
        <translation>Jede Link-Meldung kommt zweimal</translation>
    </message>
    <message>
        <source>There is no USB stick, or it was unplugged</source>
        <translation>Es gibt keinen USB-Stick, oder er wurde abgezogen</translation>
    </message>
    <message>
        <source>Half of the data fit onto the USB stick</source>
        <translation>Nur die Hälfte der Daten passt auf den USB-Stick</translation>
    </message>
    <message>
        <source>The USB stick is write-protected</source>
        <translation>Der USB-Stick ist schreibgeschützt</translation>
    </message>
    <message>
        <source>A factory reset fails</source>
        <translation>Ein Zurücksetzen auf Werkseinstellungen scheitert</translation>
    </message>
    <message>
        <source>factory reset</source>
        <translation>Werkseinstellungen</translation>
    </message>
    <message>
        <source>A key event arrives while the key listener is being replaced</source>
        <translation>Ein Tastenereignis kommt an, während der Empfänger ersetzt wird</translation>
    </message>
    <message>
        <source>registration of a key listener</source>
        <translation>Anmeldung eines Empfängers für Tasten</translation>
    </message>
</context>
<context>
    <name>panelhost::FileMenu</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>Save &amp;journal…</source>
        <translation>&amp;Journal speichern…</translation>
    </message>
    <message>
        <source>Save &amp;report of this session…</source>
        <translation>&amp;Bericht dieser Sitzung speichern…</translation>
    </message>
    <message>
        <source>Save &amp;picture of the window…</source>
        <translation>Bild des &amp;Fensters speichern…</translation>
    </message>
    <message>
        <source>Save picture of the &amp;LCD…</source>
        <translation>Bild des &amp;LCD speichern…</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>B&amp;eenden</translation>
    </message>
    <message>
        <source>Stop &amp;recording</source>
        <translation>&amp;Aufnahme beenden</translation>
    </message>
    <message>
        <source>Start &amp;recording…</source>
        <translation>&amp;Aufnahme starten…</translation>
    </message>
    <message>
        <source>The file</source>
        <translation>Die Datei</translation>
    </message>
    <message>
        <source>Saved: %1</source>
        <translation>Gespeichert: %1</translation>
    </message>
    <message>
        <source>&amp;New session</source>
        <translation>&amp;Neue Sitzung</translation>
    </message>
    <message>
        <source>&amp;Open and play a scenario…</source>
        <translation>Szenario &amp;öffnen und abspielen…</translation>
    </message>
    <message>
        <source>Open a recording in the &amp;timeline…</source>
        <translation>Aufnahme in der &amp;Zeitleiste öffnen…</translation>
    </message>
    <message>
        <source>Re&amp;cent files</source>
        <translation>Zu&amp;letzt geöffnet</translation>
    </message>
    <message>
        <source>&amp;Clear</source>
        <translation>&amp;Leeren</translation>
    </message>
</context>
<context>
    <name>panelhost::HelpMenu</name>
    <message>
        <source>Manual</source>
        <translation>Handbuch</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>About panelhost</source>
        <translation>Über panelhost</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Manual</source>
        <translation>&amp;Handbuch (englisch)</translation>
    </message>
    <message>
        <source>&amp;Keyboard shortcuts</source>
        <translation>&amp;Tastenkürzel</translation>
    </message>
    <message>
        <source>&amp;About panelhost</source>
        <translation>&amp;Über panelhost</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Effect</source>
        <translation>Wirkung</translation>
    </message>
    <message>
        <source>Arrow keys, Return, Escape</source>
        <translation>Pfeiltasten, Eingabe, Escape</translation>
    </message>
    <message>
        <source>Move in the page that the LCD shows</source>
        <translation>Auf der Seite bewegen, die das LCD zeigt</translation>
    </message>
    <message>
        <source>Tab, Shift+Tab</source>
        <translation>Tab, Umschalt+Tab</translation>
    </message>
    <message>
        <source>Next or previous control</source>
        <translation>Nächstes oder voriges Bedienelement</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Leertaste</translation>
    </message>
    <message>
        <source>Press the control that has the focus; plug or unplug a port</source>
        <translation>Das Bedienelement mit dem Fokus drücken; einen Anschluss stecken oder ziehen</translation>
    </message>
    <message>
        <source>Shift+Space</source>
        <translation>Umschalt+Leertaste</translation>
    </message>
    <message>
        <source>Hold a key until the next press; block or unblock a USB port</source>
        <translation>Eine Taste bis zum nächsten Druck halten; einen USB-Anschluss sperren oder freigeben</translation>
    </message>
    <message>
        <source>Component: %1</source>
        <translation>Komponente: %1</translation>
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
        <translation>◀ Ereignis</translation>
    </message>
    <message>
        <source>◀ Screen</source>
        <translation>◀ Anzeige</translation>
    </message>
    <message>
        <source>◀ Line</source>
        <translation>◀ Zeile</translation>
    </message>
    <message>
        <source>Line ▶</source>
        <translation>Zeile ▶</translation>
    </message>
    <message>
        <source>Screen ▶</source>
        <translation>Anzeige ▶</translation>
    </message>
    <message>
        <source>Event ▶</source>
        <translation>Ereignis ▶</translation>
    </message>
    <message>
        <source>Failed: %1</source>
        <translation>Fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>First difference</source>
        <translation>Erster Unterschied</translation>
    </message>
    <message>
        <source>The two sessions have the same journal.</source>
        <translation>Die beiden Sitzungen haben dasselbe Journal.</translation>
    </message>
    <message>
        <source>The sessions differ from line %1 of the journal on.</source>
        <translation>Die Sitzungen unterscheiden sich ab Zeile %1 des Journals.</translation>
    </message>
    <message>
        <source>Take over here</source>
        <translation>Hier übernehmen</translation>
    </message>
    <message>
        <source>Take over and record…</source>
        <translation>Übernehmen und aufnehmen…</translation>
    </message>
    <message>
        <source>%1 of %2   line %3 of %4</source>
        <translation>%1 von %2   Zeile %3 von %4</translation>
    </message>
    <message>
        <source>Record the session</source>
        <translation>Sitzung aufnehmen</translation>
    </message>
</context>
<context>
    <name>panelhost::JournalView</name>
    <message>
        <source>Journal</source>
        <translation>Journal</translation>
    </message>
    <message>
        <source>Filter (Ctrl+F)</source>
        <translation>Filter (Strg+F)</translation>
    </message>
    <message>
        <source>Lines of the journal</source>
        <translation>Zeilen des Journals</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Data of the journal line</source>
        <translation>Daten der Journalzeile</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Copies the selected lines (Ctrl+C)</source>
        <translation>Kopiert die ausgewählten Zeilen (Strg+C)</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Hides all lines up to now; the journal keeps them</source>
        <translation>Blendet alle bisherigen Zeilen aus; das Journal behält sie</translation>
    </message>
    <message>
        <source>Export…</source>
        <translation>Exportieren…</translation>
    </message>
    <message>
        <source>Writes the lines that are shown to a file</source>
        <translation>Schreibt die gezeigten Zeilen in eine Datei</translation>
    </message>
    <message>
        <source>Export the journal</source>
        <translation>Journal exportieren</translation>
    </message>
    <message>
        <source>Saved: %1</source>
        <translation>Gespeichert: %1</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Nummer</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Thread</source>
        <translation>Thread</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>The oldest %1 lines were discarded; use --journal FILE to keep all lines.</source>
        <translation>Die ältesten %1 Zeilen wurden verworfen; --journal DATEI behält alle Zeilen.</translation>
    </message>
    <message>
        <source>The oldest %1 lines are only in %2.</source>
        <translation>Die ältesten %1 Zeilen stehen nur in %2.</translation>
    </message>
</context>
<context>
    <name>panelhost::KeyButton</name>
    <message>
        <source>%1 (key %2)</source>
        <translation>%1 (Taste %2)</translation>
    </message>
    <message>
        <source>Click or Space: press. Long press: hold. Right button or Shift+Space: hold until the next click.</source>
        <translation>Klick oder Leertaste: drücken. Langer Druck: halten. Rechte Maustaste oder Umschalt+Leertaste: bis zum nächsten Klick halten.</translation>
    </message>
    <message>
        <source>red</source>
        <translation>rot</translation>
    </message>
    <message>
        <source>blue</source>
        <translation>blau</translation>
    </message>
    <message>
        <source>green</source>
        <translation>grün</translation>
    </message>
    <message>
        <source>white</source>
        <translation>weiß</translation>
    </message>
    <message>
        <source>dark</source>
        <translation>dunkel</translation>
    </message>
    <message>
        <source>blinking</source>
        <translation>blinkt</translation>
    </message>
    <message>
        <source>lit</source>
        <translation>leuchtet</translation>
    </message>
    <message>
        <source>amber</source>
        <translation>gelb</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>held</source>
        <translation>gehalten</translation>
    </message>
    <message>
        <source>fault</source>
        <translation>Fehler</translation>
    </message>
</context>
<context>
    <name>panelhost::Knob</name>
    <message>
        <source>Knob</source>
        <translation>Drehknopf</translation>
    </message>
    <message>
        <source>Wheel or click on a side: turn. Click in the middle or Space: Enter.</source>
        <translation>Mausrad oder Klick auf eine Seite: drehen. Klick in die Mitte oder Leertaste: Eingabe.</translation>
    </message>
</context>
<context>
    <name>panelhost::LcdInput</name>
    <message>
        <source>LCD touch screen</source>
        <translation>LCD-Touchscreen</translation>
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
        <translation>Hoch</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Runter</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Links</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Rechts</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>Eingabe</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Moves in the page that the LCD shows. The arrow keys, Return and Escape do the same.</source>
        <translation>Bewegt sich auf der Seite, die das LCD zeigt. Pfeiltasten, Eingabe und Escape tun dasselbe.</translation>
    </message>
</context>
<context>
    <name>panelhost::Operator</name>
    <message>
        <source>There is no navigation key &quot;%1&quot;; available: %2.</source>
        <translation>Es gibt keine Navigationstaste „%1“; vorhanden: %2.</translation>
    </message>
    <message>
        <source>The panel has no key &quot;%1&quot;.</source>
        <translation>Die Frontplatte hat keine Taste „%1“.</translation>
    </message>
    <message>
        <source>left</source>
        <translation>links</translation>
    </message>
    <message>
        <source>right</source>
        <translation>rechts</translation>
    </message>
    <message>
        <source>There is no soft button &quot;%1&quot;; available: left, right.</source>
        <translation>Es gibt keine Softtaste „%1“; vorhanden: left, right.</translation>
    </message>
    <message>
        <source>The page shows no %1 button.</source>
        <translation>Die Seite zeigt %1 keine Schaltfläche.</translation>
    </message>
    <message>
        <source>The %1 button is covered.</source>
        <translation>Die Schaltfläche %1 ist verdeckt.</translation>
    </message>
    <message>
        <source>A finger is on the LCD already.</source>
        <translation>Ein Finger ist bereits auf dem LCD.</translation>
    </message>
    <message>
        <source>No finger is on the LCD.</source>
        <translation>Auf dem LCD ist kein Finger.</translation>
    </message>
    <message>
        <source>The point %1, %2 is outside the LCD of %3 x %4.</source>
        <translation>Der Punkt %1, %2 liegt außerhalb des LCD mit %3 x %4.</translation>
    </message>
    <message>
        <source>The T-Bar&apos;s position is a number from 0 to 1.</source>
        <translation>Die Stellung der T-Bar ist eine Zahl von 0 bis 1.</translation>
    </message>
    <message>
        <source>The device has no port &quot;%1&quot;.</source>
        <translation>Das Gerät hat keinen Anschluss „%1“.</translation>
    </message>
    <message>
        <source>The port &quot;%1&quot; can&apos;t be blocked; USB ports can.</source>
        <translation>Der Anschluss „%1“ kann nicht gesperrt werden; nur USB-Anschlüsse.</translation>
    </message>
    <message>
        <source>A board has no part &quot;%1&quot;; there are %2.</source>
        <translation>Ein Board hat keinen Teil „%1“; es gibt %2.</translation>
    </message>
    <message>
        <source>There is no catalog for the language &quot;%1&quot;; available: %2.</source>
        <translation>Für die Sprache „%1“ gibt es keinen Katalog; vorhanden: %2.</translation>
    </message>
</context>
<context>
    <name>panelhost::PanelWindow</name>
    <message>
        <source>The board has lost: %1</source>
        <translation>Dem Board fehlen: %1</translation>
    </message>
    <message>
        <source>A scenario is being played. Stop it first.</source>
        <translation>Ein Szenario wird abgespielt. Stoppen Sie es zuerst.</translation>
    </message>
    <message>
        <source>Enter the serial number of the unit first.</source>
        <translation>Geben Sie zuerst die Seriennummer des Geräts ein.</translation>
    </message>
    <message>
        <source>%1 has already passed the complete machine test: %2 UTC</source>
        <translation>%1 hat den kompletten Gerätetest bereits bestanden: %2 UTC</translation>
    </message>
    <message>
        <source>&amp;Device</source>
        <translation>&amp;Gerät</translation>
    </message>
    <message>
        <source>&amp;Enter factory mode</source>
        <translation>Fabrikmodus &amp;starten</translation>
    </message>
    <message>
        <source>E&amp;xit factory mode</source>
        <translation>Fabrikmodus &amp;verlassen</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>&amp;Sprache</translation>
    </message>
    <message>
        <source>LCD</source>
        <translation>LCD</translation>
    </message>
    <message>
        <source>&amp;Window</source>
        <translation>&amp;Fenster</translation>
    </message>
    <message>
        <source>As on this &amp;computer</source>
        <translation>Wie auf diesem &amp;Computer</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Find in the journal</source>
        <translation>Im Journal &amp;suchen</translation>
    </message>
    <message>
        <source>&amp;Arrange docks automatically</source>
        <translation>&amp;Docks automatisch anordnen</translation>
    </message>
    <message>
        <source>Recording ended: %1</source>
        <translation>Aufnahme beendet: %1</translation>
    </message>
    <message>
        <source>Journal ended: %1</source>
        <translation>Journal beendet: %1</translation>
    </message>
    <message>
        <source>The scenario can&apos;t be played.</source>
        <translation>Das Szenario kann nicht abgespielt werden.</translation>
    </message>
    <message>
        <source>The timeline can&apos;t be opened: panelhost can&apos;t be started.</source>
        <translation>Die Zeitleiste kann nicht geöffnet werden: panelhost kann nicht gestartet werden.</translation>
    </message>
    <message>
        <source>&amp;Theme</source>
        <translation>&amp;Farbschema</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>&amp;Dunkel</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>&amp;Hell</translation>
    </message>
</context>
<context>
    <name>panelhost::PlayBar</name>
    <message>
        <source>expected %1, found %2</source>
        <translation>erwartet %1, gefunden %2</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Ends the scenario here; the session stays as it is</source>
        <translation>Beendet das Szenario hier; die Sitzung bleibt, wie sie ist</translation>
    </message>
    <message>
        <source>Details…</source>
        <translation>Details…</translation>
    </message>
    <message>
        <source>Shows what was expected and found, and the last lines of the journal</source>
        <translation>Zeigt, was erwartet und gefunden wurde, und die letzten Zeilen des Journals</translation>
    </message>
    <message>
        <source>Timeline…</source>
        <translation>Zeitleiste…</translation>
    </message>
    <message>
        <source>Shows any moment of this scenario in another window</source>
        <translation>Zeigt jeden Moment dieses Szenarios in einem anderen Fenster</translation>
    </message>
    <message>
        <source>Play again</source>
        <translation>Noch einmal</translation>
    </message>
    <message>
        <source>Plays the scenario from its beginning in a new session</source>
        <translation>Spielt das Szenario von Anfang an in einer neuen Sitzung ab</translation>
    </message>
    <message>
        <source>Playing</source>
        <translation>Läuft</translation>
    </message>
    <message>
        <source>%1  –  step %2 of %3: %4</source>
        <translation>%1  –  Schritt %2 von %3: %4</translation>
    </message>
    <message>
        <source>%1  –  %2 of %3 steps, %4</source>
        <translation>%1  –  %2 von %3 Schritten, %4</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>Gestoppt</translation>
    </message>
    <message>
        <source>PASSED</source>
        <translation>BESTANDEN</translation>
    </message>
    <message>
        <source>FAILED</source>
        <translation>FEHLER</translation>
    </message>
</context>
<context>
    <name>panelhost::PortWidget</name>
    <message>
        <source>Click or Space: plug or unplug. Click on the switch or Shift+Space: block or unblock.</source>
        <translation>Klick oder Leertaste: stecken oder ziehen. Klick auf den Schalter oder Umschalt+Leertaste: sperren oder freigeben.</translation>
    </message>
    <message>
        <source>Click or Space: plug or unplug.</source>
        <translation>Klick oder Leertaste: stecken oder ziehen.</translation>
    </message>
    <message>
        <source>plugged</source>
        <translation>gesteckt</translation>
    </message>
    <message>
        <source>unplugged</source>
        <translation>gezogen</translation>
    </message>
    <message>
        <source>blocked</source>
        <translation>gesperrt</translation>
    </message>
    <message>
        <source>fault</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>block</source>
        <translation>sperren</translation>
    </message>
    <message>
        <source>Unplug</source>
        <translation>Ziehen</translation>
    </message>
    <message>
        <source>Plug</source>
        <translation>Stecken</translation>
    </message>
    <message>
        <source>Unblock</source>
        <translation>Freigeben</translation>
    </message>
    <message>
        <source>Block</source>
        <translation>Sperren</translation>
    </message>
</context>
<context>
    <name>panelhost::ScenarioOpener</name>
    <message>
        <source>Open a scenario</source>
        <translation>Szenario öffnen</translation>
    </message>
    <message>
        <source>Open a recording in the timeline</source>
        <translation>Aufnahme in der Zeitleiste öffnen</translation>
    </message>
    <message>
        <source>Scenarios (*.yaml *.yml)</source>
        <translation>Szenarien (*.yaml *.yml)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Scenario with errors</source>
        <translation>Szenario mit Fehlern</translation>
    </message>
    <message>
        <source>%1 can&apos;t be played. Nothing has changed.</source>
        <translation>%1 kann nicht abgespielt werden. Nichts hat sich geändert.</translation>
    </message>
</context>
<context>
    <name>panelhost::ScreenView</name>
    <message>
        <source>Screen %1, brightness %2 %</source>
        <translation>Bildschirm %1, Helligkeit %2 %</translation>
    </message>
    <message>
        <source>SCREEN %1</source>
        <translation>SCHIRM %1</translation>
    </message>
</context>
<context>
    <name>panelhost::SpeedBar</name>
    <message>
        <source>Time on the device since it started</source>
        <translation>Zeit auf dem Gerät seit seinem Start</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Real time</source>
        <translation>Echtzeit</translation>
    </message>
    <message>
        <source>10×</source>
        <translation>10×</translation>
    </message>
    <message>
        <source>Full speed</source>
        <translation>Volles Tempo</translation>
    </message>
    <message>
        <source>The clock of the device stands still (Ctrl+P)</source>
        <translation>Die Uhr des Geräts steht still (Strg+P)</translation>
    </message>
    <message>
        <source>The clock of the device follows real time (Ctrl+1)</source>
        <translation>Die Uhr des Geräts folgt der Echtzeit (Strg+1)</translation>
    </message>
    <message>
        <source>The clock of the device runs ten times as fast (Ctrl+2)</source>
        <translation>Die Uhr des Geräts läuft zehnmal so schnell (Strg+2)</translation>
    </message>
    <message>
        <source>The clock of the device jumps from one event to the next (Ctrl+3)</source>
        <translation>Die Uhr des Geräts springt von einem Ereignis zum nächsten (Strg+3)</translation>
    </message>
</context>
<context>
    <name>panelhost::TBarWidget</name>
    <message>
        <source>T-Bar</source>
        <translation>T-Bar</translation>
    </message>
    <message>
        <source>Drag, wheel or arrow keys: move. Home: bottom. End: top.</source>
        <translation>Ziehen, Mausrad oder Pfeiltasten: bewegen. Pos1: unten. Ende: oben.</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>fault</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>begin</source>
        <translation>Beginn</translation>
    </message>
    <message>
        <source>top</source>
        <translation>oben</translation>
    </message>
    <message>
        <source>bottom</source>
        <translation>unten</translation>
    </message>
    <message>
        <source>end</source>
        <translation>Ende</translation>
    </message>
    <message>
        <source>ready</source>
        <translation>bereit</translation>
    </message>
    <message>
        <source>at the top</source>
        <translation>oben</translation>
    </message>
    <message>
        <source>move to the top</source>
        <translation>nach oben schieben</translation>
    </message>
    <message>
        <source>at the bottom</source>
        <translation>unten</translation>
    </message>
    <message>
        <source>move to the bottom</source>
        <translation>nach unten schieben</translation>
    </message>
    <message>
        <source>T-BAR FADER</source>
        <translation>T-BAR-FADER</translation>
    </message>
    <message>
        <source>T-BAR SLIDER</source>
        <translation>T-BAR-REGLER</translation>
    </message>
</context>
<context>
    <name>panelhost::TimeMenu</name>
    <message>
        <source>&amp;Time</source>
        <translation>&amp;Zeit</translation>
    </message>
    <message>
        <source>&amp;Pause</source>
        <translation>&amp;Pause</translation>
    </message>
    <message>
        <source>&amp;Real time</source>
        <translation>&amp;Echtzeit</translation>
    </message>
    <message>
        <source>&amp;10 times as fast</source>
        <translation>&amp;10-mal so schnell</translation>
    </message>
    <message>
        <source>&amp;Full speed</source>
        <translation>&amp;Volles Tempo</translation>
    </message>
    <message>
        <source>&amp;Step to the next event</source>
        <translation>&amp;Schritt zum nächsten Ereignis</translation>
    </message>
</context>
<context>
    <name>panelhost::TimelineBar</name>
    <message>
        <source>Timeline of %1</source>
        <translation>Zeitleiste von %1</translation>
    </message>
</context>
<context>
    <name>panelhost::TodayView</name>
    <message>
        <source>machine</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>aging</source>
        <translation>Alterung</translation>
    </message>
    <message>
        <source>repair</source>
        <translation>Reparatur</translation>
    </message>
    <message>
        <source>passed</source>
        <translation>bestanden</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>durchgefallen</translation>
    </message>
    <message>
        <source>aborted</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>%1  (%2 of 1 unit)</source>
        <translation>%1  (%2 von 1 Gerät)</translation>
    </message>
    <message>
        <source>%1  (%2 of %3 units)</source>
        <translation>%1  (%2 von %3 Geräten)</translation>
    </message>
    <message>
        <source>%1  (%2 of %3 failed)</source>
        <translation>%1  (%2 von %3 durchgefallen)</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message>
        <source>First-pass yield</source>
        <translation>Erstausbeute</translation>
    </message>
    <message>
        <source>Final yield</source>
        <translation>Endausbeute</translation>
    </message>
    <message>
        <source>Machine tests</source>
        <translation>Gerätetests</translation>
    </message>
    <message>
        <source>Fails most often</source>
        <translation>Häufigster Fehler</translation>
    </message>
    <message>
        <source>%1  (%2 passed, %3 failed, %4 aborted)</source>
        <translation>%1  (%2 bestanden, %3 durchgefallen, %4 abgebrochen)</translation>
    </message>
</context>
<context>
    <name>panelhost::UnitBar</name>
    <message>
        <source>Complete machine test</source>
        <translation>Kompletter Gerätetest</translation>
    </message>
    <message>
        <source>Aging test</source>
        <translation>Alterungstest</translation>
    </message>
    <message>
        <source>Repair page</source>
        <translation>Reparaturseite</translation>
    </message>
    <message>
        <source>Repair page: %1</source>
        <translation>Reparaturseite: %1</translation>
    </message>
    <message>
        <source>No unit</source>
        <translation>Kein Gerät</translation>
    </message>
    <message>
        <source>Scan a serial number</source>
        <translation>Seriennummer scannen</translation>
    </message>
    <message>
        <source>No verdict yet</source>
        <translation>Noch kein Ergebnis</translation>
    </message>
    <message>
        <source>Serial number of the unit</source>
        <translation>Seriennummer des Geräts</translation>
    </message>
    <message>
        <source>Serial number of the next unit</source>
        <translation>Seriennummer des nächsten Geräts</translation>
    </message>
    <message>
        <source>PASSED</source>
        <translation>BESTANDEN</translation>
    </message>
    <message>
        <source>FAILED</source>
        <translation>FEHLER</translation>
    </message>
    <message>
        <source>&quot;%1&quot; isn&apos;t a serial number that matches %2.</source>
        <translation>„%1“ ist keine Seriennummer, die zu %2 passt.</translation>
    </message>
</context>
<context>
    <name>panelhost::UnitNumber</name>
    <message>
        <source>has %1 characters; at most %2 are allowed</source>
        <translation>hat %1 Zeichen; höchstens %2 sind erlaubt</translation>
    </message>
    <message>
        <source>contains control characters</source>
        <translation>enthält Steuerzeichen</translation>
    </message>
    <message>
        <source>A serial number can&apos;t be empty.</source>
        <translation>Eine Seriennummer darf nicht leer sein.</translation>
    </message>
    <message>
        <source>The serial number %1.</source>
        <translation>Die Seriennummer %1.</translation>
    </message>
</context>
<context>
    <name>panelhost::WindowStatus</name>
    <message>
        <source>Saved runs that the server doesn&apos;t have yet</source>
        <translation>Gespeicherte Läufe, die der Server noch nicht hat</translation>
    </message>
    <message>
        <source>● REC %1</source>
        <translation>● REC %1</translation>
    </message>
    <message>
        <source>1 run to send</source>
        <translation>1 Lauf zu senden</translation>
    </message>
    <message>
        <source>%1 runs to send</source>
        <translation>%1 Läufe zu senden</translation>
    </message>
</context>
</TS>
