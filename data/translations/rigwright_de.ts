<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>rigwright</name>
    <message>
        <source>About</source>
        <extracomment>data/core/layout/rws_about.xml</extracomment>
        <translation>Info</translation>
    </message>
    <message>
        <source>Icons: Breeze, by the KDE community, under the GNU Lesser General Public License 3.</source>
        <extracomment>data/core/layout/rws_about.xml</extracomment>
        <translation>Symbole: Breeze, von der KDE-Gemeinschaft, unter der GNU Lesser General Public License 3.</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <extracomment>data/core/layout/rws_about.xml; data/core/layout/rws_help.xml; data/core/layout/rws_hotkeys.xml</extracomment>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>Countdown</source>
        <extracomment>data/core/layout/rws_countdown.xml</extracomment>
        <translation>Countdown</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <extracomment>data/core/layout/rws_countdown.xml; data/core/layout/rws_inputconfig.xml; data/core/layout/rws_message.xml</extracomment>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>Devices</source>
        <extracomment>data/core/layout/rws_devices.xml; data/core/layout/rws_main.xml</extracomment>
        <translation>Geräte</translation>
    </message>
    <message>
        <source>Calibration</source>
        <extracomment>data/core/layout/rws_devices.xml; data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>Kalibrierung</translation>
    </message>
    <message>
        <source>Fit car to...</source>
        <extracomment>data/core/layout/rws_fitcar.xml</extracomment>
        <translation>Auto anpassen an ...</translation>
    </message>
    <message>
        <source>&amp;Body</source>
        <extracomment>data/core/layout/rws_fitcar.xml</extracomment>
        <translation>&amp;Karosserie</translation>
    </message>
    <message>
        <source>Wheel front &amp;left</source>
        <extracomment>data/core/layout/rws_fitcar.xml</extracomment>
        <translation>Rad vorn &amp;links</translation>
    </message>
    <message>
        <source>Wheel front &amp;right</source>
        <extracomment>data/core/layout/rws_fitcar.xml</extracomment>
        <translation>Rad vorn &amp;rechts</translation>
    </message>
    <message>
        <source>Wheel b&amp;ack left</source>
        <extracomment>data/core/layout/rws_fitcar.xml</extracomment>
        <translation>Rad &amp;hinten links</translation>
    </message>
    <message>
        <source>Wheel bac&amp;k right</source>
        <extracomment>data/core/layout/rws_fitcar.xml</extracomment>
        <translation>Rad hi&amp;nten rechts</translation>
    </message>
    <message>
        <source>Left and right are as the driver sees them.</source>
        <extracomment>data/core/layout/rws_fitcar.xml</extracomment>
        <translation>Links und rechts, wie der Fahrer es sieht.</translation>
    </message>
    <message>
        <source>&amp;Fit</source>
        <extracomment>data/core/layout/rws_fitcar.xml</extracomment>
        <translation>&amp;Anpassen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <extracomment>data/core/layout/rws_fitcar.xml; data/core/layout/rws_follow.xml; data/core/layout/rws_import.xml</extracomment>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Follow a rig's line</source>
        <extracomment>data/core/layout/rws_follow.xml; src/app/studio/StudioTakes.cpp</extracomment>
        <translation>Der Linie eines Rigs folgen</translation>
    </message>
    <message>
        <source>A copy of the rig drives along the path that the rig has recorded, by its own autonomous mode.</source>
        <extracomment>data/core/layout/rws_follow.xml</extracomment>
        <translation>Eine Kopie des Rigs fährt in ihrem autonomen Modus den Weg, den das Rig aufgenommen hat.</translation>
    </message>
    <message>
        <source>&amp;Line of</source>
        <extracomment>data/core/layout/rws_follow.xml</extracomment>
        <translation>&amp;Linie von</translation>
    </message>
    <message>
        <source>&amp;Profile that drives</source>
        <extracomment>data/core/layout/rws_follow.xml</extracomment>
        <translation>&amp;Profil, das fährt</translation>
    </message>
    <message>
        <source>&amp;Name of the copy</source>
        <extracomment>data/core/layout/rws_follow.xml</extracomment>
        <translation>&amp;Name der Kopie</translation>
    </message>
    <message>
        <source>A free one</source>
        <extracomment>data/core/layout/rws_follow.xml</extracomment>
        <translation>Ein freier</translation>
    </message>
    <message>
        <source>&amp;The rig itself drives, no copy</source>
        <extracomment>data/core/layout/rws_follow.xml</extracomment>
        <translation>Das Rig &amp;selbst fährt, keine Kopie</translation>
    </message>
    <message>
        <source>&amp;Go on until the line ends</source>
        <extracomment>data/core/layout/rws_follow.xml</extracomment>
        <translation>&amp;Weiter bis zum Ende der Linie</translation>
    </message>
    <message>
        <source>A rig that is late goes on behind the line's time, for up to three times as long; the playback range grows</source>
        <extracomment>data/core/layout/rws_follow.xml</extracomment>
        <translation>Ein Rig, das zu spät ist, fährt über die Zeit der Linie hinaus weiter, bis zum Dreifachen; der Abspielbereich wächst</translation>
    </message>
    <message>
        <source>As la&amp;zily as the profile follows</source>
        <extracomment>data/core/layout/rws_follow.xml</extracomment>
        <translation>So &amp;träge, wie das Profil folgt</translation>
    </message>
    <message>
        <source>With the profile's own strength and responses of the mode, not with those that lag least</source>
        <extracomment>data/core/layout/rws_follow.xml</extracomment>
        <translation>Mit der Stärke und den Reaktionen, die das Profil für den Modus hat, nicht mit denen, die am wenigsten nachhängen</translation>
    </message>
    <message>
        <source>&amp;Follow</source>
        <extracomment>data/core/layout/rws_follow.xml; data/core/layout/rws_log.xml</extracomment>
        <translation>&amp;Folgen</translation>
    </message>
    <message>
        <source>Help</source>
        <extracomment>data/core/layout/rws_help.xml</extracomment>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Pages</source>
        <extracomment>data/core/layout/rws_help.xml</extracomment>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>Page</source>
        <extracomment>data/core/layout/rws_help.xml</extracomment>
        <translation>Seite</translation>
    </message>
    <message>
        <source>Hot keys</source>
        <extracomment>data/core/layout/rws_hotkeys.xml</extracomment>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>In a take these keys act wherever the focus is, and those of other times too unless a text is typed.</source>
        <extracomment>data/core/layout/rws_hotkeys.xml</extracomment>
        <translation>In einem Take wirken diese Tasten, wo immer der Fokus ist, und die für sonst ebenso, solange kein Text getippt wird.</translation>
    </message>
    <message>
        <source>Import a model</source>
        <extracomment>data/core/layout/rws_import.xml; src/app/studio/StudioModels.cpp</extracomment>
        <translation>Modell importieren</translation>
    </message>
    <message>
        <source>A &amp;unit is</source>
        <extracomment>data/core/layout/rws_import.xml</extracomment>
        <translation>Eine &amp;Einheit ist</translation>
    </message>
    <message>
        <source>1 metre</source>
        <extracomment>data/core/layout/rws_import.xml</extracomment>
        <translation>1 Meter</translation>
    </message>
    <message>
        <source>1 centimetre</source>
        <extracomment>data/core/layout/rws_import.xml</extracomment>
        <translation>1 Zentimeter</translation>
    </message>
    <message>
        <source>1 millimetre</source>
        <extracomment>data/core/layout/rws_import.xml</extracomment>
        <translation>1 Millimeter</translation>
    </message>
    <message>
        <source>1 inch</source>
        <extracomment>data/core/layout/rws_import.xml</extracomment>
        <translation>1 Zoll</translation>
    </message>
    <message>
        <source>1 foot</source>
        <extracomment>data/core/layout/rws_import.xml</extracomment>
        <translation>1 Fuß</translation>
    </message>
    <message>
        <source>another length</source>
        <extracomment>data/core/layout/rws_import.xml</extracomment>
        <translation>eine andere Länge</translation>
    </message>
    <message>
        <source>Metres in a unit</source>
        <extracomment>data/core/layout/rws_import.xml</extracomment>
        <translation>Meter in einer Einheit</translation>
    </message>
    <message>
        <source>U&amp;p is</source>
        <extracomment>data/core/layout/rws_import.xml</extracomment>
        <translation>&amp;Oben ist</translation>
    </message>
    <message>
        <source>In the scene</source>
        <extracomment>data/core/layout/rws_import.xml</extracomment>
        <translation>In der Szene</translation>
    </message>
    <message>
        <source>&amp;Import</source>
        <extracomment>data/core/layout/rws_import.xml</extracomment>
        <translation>&amp;Importieren</translation>
    </message>
    <message>
        <source>Inputs</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>Eingaben</translation>
    </message>
    <message>
        <source>De&amp;vices...</source>
        <extracomment>data/core/layout/rws_inputconfig.xml; data/core/layout/rws_main.xml</extracomment>
        <translation>Geräte &amp;zeigen ...</translation>
    </message>
    <message>
        <source>All devices that are there, each with every control</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>Alle Geräte, die da sind, jedes mit allen Bedienelementen</translation>
    </message>
    <message>
        <source>&amp;Record all inputs</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>Alle Ein&amp;gaben aufnehmen</translation>
    </message>
    <message>
        <source>Takes record what is checked; the other inputs play what was recorded of them</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>Takes nehmen auf, was angekreuzt ist; die anderen Eingaben spielen, was von ihnen aufgenommen ist</translation>
    </message>
    <message>
        <source>Press no&amp;w!</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>&amp;Jetzt bewegen!</translation>
    </message>
    <message>
        <source>Waits until you move a control, and maps the input to it</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>Wartet, bis Sie ein Bedienelement bewegen, und ordnet ihm die Eingabe zu</translation>
    </message>
    <message>
        <source>&amp;Two controls...</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>Z&amp;wei Bedienelemente ...</translation>
    </message>
    <message>
        <source>Asks for two controls: one that counts positive, and one that counts negative</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>Fragt nach zwei Bedienelementen: einem, das positiv zählt, und einem, das negativ zählt</translation>
    </message>
    <message>
        <source>Unm&amp;ap</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>&amp;Trennen</translation>
    </message>
    <message>
        <source>Response curve</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>Antwortkurve</translation>
    </message>
    <message>
        <source>What the input gives for each place of the control. Drag the squares, or choose one by Page Up and Page Down and move it by the arrow keys.</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>Was die Eingabe für jede Stellung des Bedienelements liefert. Ziehen Sie die Quadrate, oder wählen Sie eines mit Bild auf und Bild ab und bewegen Sie es mit den Pfeiltasten.</translation>
    </message>
    <message>
        <source>Dead &amp;zone</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>T&amp;otzone</translation>
    </message>
    <message>
        <source>How far the control may move before anything happens</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>Wie weit sich das Bedienelement bewegen darf, bevor etwas geschieht</translation>
    </message>
    <message>
        <source>&amp;Exponent</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>&amp;Exponent</translation>
    </message>
    <message>
        <source>1 is a straight line; more makes the middle finer</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>1 ist eine gerade Linie; mehr macht die Mitte feiner</translation>
    </message>
    <message>
        <source>M&amp;ultiplier</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>&amp;Faktor</translation>
    </message>
    <message>
        <source>What the input gives at the control's end</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>Was die Eingabe am Ende des Bedienelements liefert</translation>
    </message>
    <message>
        <source>&amp;Offset</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>&amp;Versatz</translation>
    </message>
    <message>
        <source>Is added last; what the input gives when nothing is moved</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>Wird zuletzt addiert; was die Eingabe liefert, wenn nichts bewegt wird</translation>
    </message>
    <message>
        <source>&amp;Inverted</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>&amp;Umgekehrt</translation>
    </message>
    <message>
        <source>Turns the sign of the multiplier</source>
        <extracomment>data/core/layout/rws_inputconfig.xml</extracomment>
        <translation>Kehrt das Vorzeichen des Faktors um</translation>
    </message>
    <message>
        <source>Licence</source>
        <extracomment>data/core/layout/rws_licence.xml</extracomment>
        <translation>Lizenz</translation>
    </message>
    <message>
        <source>Licensee</source>
        <extracomment>data/core/layout/rws_licence.xml</extracomment>
        <translation>Lizenznehmer</translation>
    </message>
    <message>
        <source>Number</source>
        <extracomment>data/core/layout/rws_licence.xml</extracomment>
        <translation>Nummer</translation>
    </message>
    <message>
        <source>Valid until</source>
        <extracomment>data/core/layout/rws_licence.xml</extracomment>
        <translation>Gültig bis</translation>
    </message>
    <message>
        <source>Features</source>
        <extracomment>data/core/layout/rws_licence.xml</extracomment>
        <translation>Merkmale</translation>
    </message>
    <message>
        <source>Its file</source>
        <extracomment>data/core/layout/rws_licence.xml</extracomment>
        <translation>Ihre Datei</translation>
    </message>
    <message>
        <source>File of the licence</source>
        <extracomment>data/core/layout/rws_licence.xml</extracomment>
        <translation>Datei der Lizenz</translation>
    </message>
    <message>
        <source>&amp;Read it again</source>
        <extracomment>data/core/layout/rws_licence.xml</extracomment>
        <translation>&amp;Neu lesen</translation>
    </message>
    <message>
        <source>For when another file has been put there</source>
        <extracomment>data/core/layout/rws_licence.xml</extracomment>
        <translation>Falls eine andere Datei dorthin gelegt wurde</translation>
    </message>
    <message>
        <source>&amp;Open its folder</source>
        <extracomment>data/core/layout/rws_licence.xml</extracomment>
        <translation>&amp;Ordner öffnen</translation>
    </message>
    <message>
        <source>Log</source>
        <extracomment>data/core/layout/rws_log.xml</extracomment>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>&amp;Level</source>
        <extracomment>data/core/layout/rws_log.xml</extracomment>
        <translation>&amp;Stufe</translation>
    </message>
    <message>
        <source>All</source>
        <extracomment>data/core/layout/rws_log.xml</extracomment>
        <translation>Alles</translation>
    </message>
    <message>
        <source>Notes and worse</source>
        <extracomment>data/core/layout/rws_log.xml</extracomment>
        <translation>Hinweise und Schlimmeres</translation>
    </message>
    <message>
        <source>Warnings and errors</source>
        <extracomment>data/core/layout/rws_log.xml</extracomment>
        <translation>Warnungen und Fehler</translation>
    </message>
    <message>
        <source>Errors</source>
        <extracomment>data/core/layout/rws_log.xml</extracomment>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Search</source>
        <extracomment>data/core/layout/rws_log.xml; data/core/layout/rws_toolconfig.xml</extracomment>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Keeps the latest line in sight</source>
        <extracomment>data/core/layout/rws_log.xml</extracomment>
        <translation>Hält die neueste Zeile im Blick</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <extracomment>data/core/layout/rws_log.xml</extracomment>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copies the selected lines, or all that are shown</source>
        <extracomment>data/core/layout/rws_log.xml</extracomment>
        <translation>Kopiert die gewählten Zeilen oder alle gezeigten</translation>
    </message>
    <message>
        <source>Lines of the log</source>
        <extracomment>data/core/layout/rws_log.xml</extracomment>
        <translation>Zeilen des Protokolls</translation>
    </message>
    <message>
        <source>Orvel Rigwright</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Orvel Rigwright</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Neu</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Ö&amp;ffnen ...</translation>
    </message>
    <message>
        <source>Open &amp;recent</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Save &amp;as...</source>
        <extracomment>data/core/layout/rws_main.xml; data/core/layout/rows/profiles.xml</extracomment>
        <translation>Speichern &amp;unter ...</translation>
    </message>
    <message>
        <source>&amp;Import a model...</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Modell &amp;importieren ...</translation>
    </message>
    <message>
        <source>Open a &amp;pre-rigged model...</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Vorgeriggtes Modell öffnen ...</translation>
    </message>
    <message>
        <source>&amp;Make a pre-rigged model...</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Vorgeriggtes Modell &amp;erstellen ...</translation>
    </message>
    <message>
        <source>&amp;Export for delivery...</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zur &amp;Auslieferung exportieren ...</translation>
    </message>
    <message>
        <source>E&amp;xport animation...</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Animation e&amp;xportieren ...</translation>
    </message>
    <message>
        <source>Expor&amp;t poses...</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Posen exportieren ...</translation>
    </message>
    <message>
        <source>Export a pi&amp;cture...</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Bild exportieren ...</translation>
    </message>
    <message>
        <source>Export a pre&amp;view...</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Vo&amp;rschau exportieren...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Been&amp;den</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <extracomment>data/core/layout/rws_main.xml; src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>Rück&amp;gängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <extracomment>data/core/layout/rws_main.xml; src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>&amp;Preferences...</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Einstellungen ...</translation>
    </message>
    <message>
        <source>&amp;Rig</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Rig</translation>
    </message>
    <message>
        <source>&amp;Parameters</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Parameter</translation>
    </message>
    <message>
        <source>&amp;Inputs...</source>
        <extracomment>data/core/layout/rws_main.xml; data/core/layout/rws_toolconfig.xml</extracomment>
        <translation>E&amp;ingaben ...</translation>
    </message>
    <message>
        <source>Re&amp;cord all its inputs</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Alle seine Eingaben au&amp;fnehmen</translation>
    </message>
    <message>
        <source>P&amp;lay all its inputs in takes</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Alle seine Eingaben in Ta&amp;kes abspielen</translation>
    </message>
    <message>
        <source>Re&amp;name</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Umbenennen</translation>
    </message>
    <message>
        <source>&amp;Duplicate</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Duplizieren</translation>
    </message>
    <message>
        <source>D&amp;elete</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>&amp;Group</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Gruppieren</translation>
    </message>
    <message>
        <source>&amp;Ungroup</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Gruppierung &amp;aufheben</translation>
    </message>
    <message>
        <source>Select &amp;all</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>All&amp;e auswählen</translation>
    </message>
    <message>
        <source>Use the node as gr&amp;ound</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Knoten als &amp;Boden verwenden</translation>
    </message>
    <message>
        <source>&amp;Fit car to...</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Auto anpa&amp;ssen an ...</translation>
    </message>
    <message>
        <source>Select what the rig dri&amp;ves</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Vom Rig Bewegtes auswählen</translation>
    </message>
    <message>
        <source>Look again for &amp;templates</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Vorlagen &amp;neu suchen</translation>
    </message>
    <message>
        <source>&amp;Take</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Take</translation>
    </message>
    <message>
        <source>&amp;Record</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Aufnehmen</translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <extracomment>data/core/layout/rws_main.xml; data/core/layout/rws_resimulate.xml</extracomment>
        <translation>&amp;Stopp</translation>
    </message>
    <message>
        <source>Retr&amp;y</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Nochma&amp;l</translation>
    </message>
    <message>
        <source>Record &amp;between the marks</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Zwischen den Marken aufnehmen</translation>
    </message>
    <message>
        <source>Mark the be&amp;gin</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Beginn markieren</translation>
    </message>
    <message>
        <source>Mark the &amp;end</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Ende markieren</translation>
    </message>
    <message>
        <source>Resimu&amp;late</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Neu simulieren</translation>
    </message>
    <message>
        <source>&amp;Follow a rig's line...</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Der L&amp;inie eines Rigs folgen...</translation>
    </message>
    <message>
        <source>&amp;Why does nothing move?</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Warum bewegt sich nichts?</translation>
    </message>
    <message>
        <source>Ti&amp;me</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Bildf&amp;olge</translation>
    </message>
    <message>
        <source>&amp;Play</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Abspielen</translation>
    </message>
    <message>
        <source>Play &amp;backwards</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Rückwärts abspielen</translation>
    </message>
    <message>
        <source>A frame ba&amp;ck</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Ein Bild &amp;zurück</translation>
    </message>
    <message>
        <source>A frame &amp;on</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Ein Bild &amp;vor</translation>
    </message>
    <message>
        <source>To the key be&amp;fore</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zum vorigen &amp;Key</translation>
    </message>
    <message>
        <source>To the &amp;next key</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zum &amp;nächsten Key</translation>
    </message>
    <message>
        <source>To the &amp;range's begin</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zum An&amp;fang des Bereichs</translation>
    </message>
    <message>
        <source>To the range's &amp;end</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zum &amp;Ende des Bereichs</translation>
    </message>
    <message>
        <source>&amp;Loop</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Sch&amp;leife</translation>
    </message>
    <message>
        <source>S&amp;how every frame, however long it takes</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Jedes Bild zeigen, so lange es auch dauert</translation>
    </message>
    <message>
        <source>C&amp;urves of inputs</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>K&amp;urven der Eingaben</translation>
    </message>
    <message>
        <source>&amp;Sound...</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Ton...</translation>
    </message>
    <message>
        <source>Picture behin&amp;d the camera...</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Bild hinter der Ka&amp;mera...</translation>
    </message>
    <message>
        <source>&amp;Window</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Fenster</translation>
    </message>
    <message>
        <source>&amp;Devices</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>G&amp;eräte</translation>
    </message>
    <message>
        <source>&amp;Log</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Protokoll</translation>
    </message>
    <message>
        <source>&amp;Hot keys</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Tastenkürzel</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Examples</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Beispiele</translation>
    </message>
    <message>
        <source>&amp;Licence...</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Lizenz ...</translation>
    </message>
    <message>
        <source>Look for &amp;updates...</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Nach &amp;Updates suchen ...</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Info</translation>
    </message>
    <message>
        <source>&amp;Open its page</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>&amp;Webseite öffnen</translation>
    </message>
    <message>
        <source>Close</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Close the notice</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Hinweis schließen</translation>
    </message>
    <message>
        <source>Search the tools</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Werkzeuge suchen</translation>
    </message>
    <message>
        <source>Tools</source>
        <extracomment>data/core/layout/rws_main.xml; src/core/windows/MainWindowTools.cpp</extracomment>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>Search the rigs</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Rigs suchen</translation>
    </message>
    <message>
        <source>Rigs</source>
        <extracomment>data/core/layout/rws_main.xml; src/app/studio/windows/MakeModelWindow.cpp</extracomment>
        <translation>Rigs</translation>
    </message>
    <message>
        <source>Picture of the scene</source>
        <extracomment>data/core/layout/rws_main.xml; src/app/studio/StagePane.cpp</extracomment>
        <translation>Bild der Szene</translation>
    </message>
    <message>
        <source>Ta&amp;kes</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Ta&amp;kes</translation>
    </message>
    <message>
        <source>In a window of its own</source>
        <extracomment>data/core/layout/rws_main.xml; src/core/windows/MainWindowDock.cpp</extracomment>
        <translation>In ein eigenes Fenster</translation>
    </message>
    <message>
        <source>Steps that can be undone</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Schritte, die rückgängig gemacht werden können</translation>
    </message>
    <message>
        <source>Double-click a step, or press Enter, to go back or forth to it</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Ein Doppelklick auf einen Schritt oder die Eingabetaste führt zu ihm zurück oder vor</translation>
    </message>
    <message>
        <source>Kept takes</source>
        <extracomment>data/core/layout/rws_main.xml; src/app/studio/windows/TakesPage.cpp</extracomment>
        <translation>Behaltene Takes</translation>
    </message>
    <message>
        <source>Name</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Name</translation>
    </message>
    <message>
        <source>Name of the take</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Name des Takes</translation>
    </message>
    <message>
        <source>Stars</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Sterne</translation>
    </message>
    <message>
        <source>Note</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Notiz</translation>
    </message>
    <message>
        <source>Use</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Verwenden</translation>
    </message>
    <message>
        <source>Puts its inputs, parameters and start back and simulates it: one step of undo</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Stellt seine Eingaben, Parameter und seinen Anfang wieder her und simuliert ihn: ein Schritt zum Rückgängigmachen</translation>
    </message>
    <message>
        <source>Delete</source>
        <extracomment>data/core/layout/rws_main.xml; src/core/windows/MainWindowRigEdits.cpp</extracomment>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Export...</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Exportieren ...</translation>
    </message>
    <message>
        <source>Import...</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Importieren ...</translation>
    </message>
    <message>
        <source>Search the scene</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Szene durchsuchen</translation>
    </message>
    <message>
        <source>Scene</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Szene</translation>
    </message>
    <message>
        <source>Use as &amp;ground</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Als &amp;Boden verwenden</translation>
    </message>
    <message>
        <source>Put under the &amp;world</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Unter die &amp;Welt hängen</translation>
    </message>
    <message>
        <source>Pose</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Pose</translation>
    </message>
    <message>
        <source>In</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Im Raum</translation>
    </message>
    <message>
        <source>Space of the pose</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Raum der Pose</translation>
    </message>
    <message>
        <source>its parent</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>seines Elternknotens</translation>
    </message>
    <message>
        <source>the world</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>der Welt</translation>
    </message>
    <message>
        <source>Position</source>
        <extracomment>data/core/layout/rws_main.xml; 1DPositioner input</extracomment>
        <translation>Position</translation>
    </message>
    <message>
        <source>Position X</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Position X</translation>
    </message>
    <message>
        <source>Position Y</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Position Y</translation>
    </message>
    <message>
        <source>Position Z</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Position Z</translation>
    </message>
    <message>
        <source>Rotation</source>
        <extracomment>data/core/layout/rws_main.xml; 1DRotator input; Firepower</extracomment>
        <translation>Drehung</translation>
    </message>
    <message>
        <source>Rotation X</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Drehung X</translation>
    </message>
    <message>
        <source>Rotation Y</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Drehung Y</translation>
    </message>
    <message>
        <source>Rotation Z</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Drehung Z</translation>
    </message>
    <message>
        <source>Scale</source>
        <extracomment>data/core/layout/rws_main.xml; 1DScaler input</extracomment>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Scale X</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Größe X</translation>
    </message>
    <message>
        <source>Scale Y</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Größe Y</translation>
    </message>
    <message>
        <source>Scale Z</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Größe Z</translation>
    </message>
    <message>
        <source>Time line</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zeitleiste</translation>
    </message>
    <message>
        <source>Curves of inputs</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Kurven der Eingaben</translation>
    </message>
    <message>
        <source>Inputs whose curves are shown</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Eingaben, deren Kurven gezeigt werden</translation>
    </message>
    <message>
        <source>Points</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Punkte</translation>
    </message>
    <message>
        <source>Points are moved: a click or a box selects them, with Shift more of them; Delete removes them</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Punkte werden verschoben: Ein Klick oder ein Rahmen wählt sie aus, mit Umschalt weitere; Entf entfernt sie</translation>
    </message>
    <message>
        <source>Draw</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zeichnen</translation>
    </message>
    <message>
        <source>Draws over the curve next to the pointer, frame by frame</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zeichnet Bild für Bild über die Kurve neben dem Zeiger</translation>
    </message>
    <message>
        <source>Smooth</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Glätten</translation>
    </message>
    <message>
        <source>Smooths the curve next to the pointer where the brush goes along</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Glättet die Kurve neben dem Zeiger, wo der Pinsel entlanggeht</translation>
    </message>
    <message>
        <source>Brush</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Pinsel</translation>
    </message>
    <message>
        <source>To both sides of the pointer</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zu beiden Seiten des Zeigers</translation>
    </message>
    <message>
        <source>To the range's begin</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zum Anfang des Bereichs</translation>
    </message>
    <message>
        <source>To the range's begin (Alt+Home)</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zum Anfang des Bereichs (Alt+Pos1)</translation>
    </message>
    <message>
        <source>To the key before</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zum vorigen Key</translation>
    </message>
    <message>
        <source>To the key before of what is selected (Alt+Shift+Left)</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zum vorigen Key der Auswahl (Alt+Umschalt+Links)</translation>
    </message>
    <message>
        <source>A frame back</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Ein Bild zurück</translation>
    </message>
    <message>
        <source>A frame back (Alt+Left)</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Ein Bild zurück (Alt+Links)</translation>
    </message>
    <message>
        <source>Play backwards</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Rückwärts abspielen</translation>
    </message>
    <message>
        <source>Plays the range backwards, or stops (Shift+F8)</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Spielt den Bereich rückwärts oder hält an (Umschalt+F8)</translation>
    </message>
    <message>
        <source>Play</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Abspielen</translation>
    </message>
    <message>
        <source>Plays the range in real time, or stops (F8)</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Spielt den Bereich in Echtzeit oder hält an (F8)</translation>
    </message>
    <message>
        <source>A frame on</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Ein Bild vor</translation>
    </message>
    <message>
        <source>A frame on (Alt+Right)</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Ein Bild vor (Alt+Rechts)</translation>
    </message>
    <message>
        <source>To the next key</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zum nächsten Key</translation>
    </message>
    <message>
        <source>To the next key of what is selected (Alt+Shift+Right)</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zum nächsten Key der Auswahl (Alt+Umschalt+Rechts)</translation>
    </message>
    <message>
        <source>To the range's end</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zum Ende des Bereichs</translation>
    </message>
    <message>
        <source>To the range's end (Alt+End)</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zum Ende des Bereichs (Alt+Ende)</translation>
    </message>
    <message>
        <source>Loop</source>
        <extracomment>data/core/layout/rws_main.xml; Spline Speed-Controller</extracomment>
        <translation>Schleife</translation>
    </message>
    <message>
        <source>Playback begins anew at the end of the range</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Am Ende des Bereichs beginnt die Wiedergabe von vorn</translation>
    </message>
    <message>
        <source>Frame</source>
        <extracomment>data/core/layout/rws_main.xml; data/core/layout/rws_media.xml</extracomment>
        <translation>Bild</translation>
    </message>
    <message>
        <source>The frame that is shown</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Das Bild, das gezeigt wird</translation>
    </message>
    <message>
        <source>Re&amp;cord</source>
        <extracomment>data/core/layout/rws_main.xml; data/core/layout/rws_punch.xml; src/core/windows/MainWindowTake.cpp</extracomment>
        <translation>&amp;Aufnehmen</translation>
    </message>
    <message>
        <source>Time</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>From</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Von</translation>
    </message>
    <message>
        <source>Start of the range</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Anfang des Bereichs</translation>
    </message>
    <message>
        <source>to</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>bis</translation>
    </message>
    <message>
        <source>End of the range</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Ende des Bereichs</translation>
    </message>
    <message>
        <source>Frame rate</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Bildrate</translation>
    </message>
    <message>
        <source>Slow-motio&amp;n factor</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zeitl&amp;upenfaktor</translation>
    </message>
    <message>
        <source>Slow-motion factor</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zeitlupenfaktor</translation>
    </message>
    <message>
        <source>How much slower a take runs: each step halves the speed</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Wie viel langsamer ein Take läuft: Jede Stufe halbiert das Tempo</translation>
    </message>
    <message>
        <source>Auto-e&amp;xpand timeline</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Zeitleiste automatisch &amp;verlängern</translation>
    </message>
    <message>
        <source>A take that reaches the end of the range goes on, and the range grows</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Ein Take, der das Ende des Bereichs erreicht, läuft weiter, und der Bereich wächst</translation>
    </message>
    <message>
        <source>Resimulate from first frame</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Vom ersten Bild an neu simulieren</translation>
    </message>
    <message>
        <source>Else a resimulation begins at the present time</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Sonst beginnt eine neue Simulation bei der aktuellen Zeit</translation>
    </message>
    <message>
        <source>Low poly on record</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Bei der Aufnahme vereinfacht</translation>
    </message>
    <message>
        <source>Hides the models that hang on rigs while a take runs</source>
        <extracomment>data/core/layout/rws_main.xml</extracomment>
        <translation>Blendet während eines Takes die Modelle aus, die an Rigs hängen</translation>
    </message>
    <message>
        <source>Make a pre-rigged model</source>
        <extracomment>data/core/layout/rws_makemodel.xml; src/app/studio/StudioModels.cpp</extracomment>
        <translation>Vorgeriggtes Modell erstellen</translation>
    </message>
    <message>
        <source>A pre-rigged model holds rigs and nodes, with all that stands below them, to be added to other scenes.</source>
        <extracomment>data/core/layout/rws_makemodel.xml</extracomment>
        <translation>Ein vorgeriggtes Modell enthält Rigs und Knoten mit allem, was unter ihnen steht, um anderen Szenen hinzugefügt zu werden.</translation>
    </message>
    <message>
        <source>Made &amp;of</source>
        <extracomment>data/core/layout/rws_makemodel.xml</extracomment>
        <translation>&amp;Besteht aus</translation>
    </message>
    <message>
        <source>Made of</source>
        <extracomment>data/core/layout/rws_makemodel.xml</extracomment>
        <translation>Besteht aus</translation>
    </message>
    <message>
        <source>&amp;Title</source>
        <extracomment>data/core/layout/rws_makemodel.xml</extracomment>
        <translation>&amp;Titel</translation>
    </message>
    <message>
        <source>Title</source>
        <extracomment>data/core/layout/rws_makemodel.xml</extracomment>
        <translation>Titel</translation>
    </message>
    <message>
        <source>What people call it</source>
        <extracomment>data/core/layout/rws_makemodel.xml</extracomment>
        <translation>Wie man es nennt</translation>
    </message>
    <message>
        <source>Te&amp;xt</source>
        <extracomment>data/core/layout/rws_makemodel.xml</extracomment>
        <translation>Te&amp;xt</translation>
    </message>
    <message>
        <source>Text</source>
        <extracomment>data/core/layout/rws_makemodel.xml</extracomment>
        <translation>Text</translation>
    </message>
    <message>
        <source>What it is and how to drive it</source>
        <extracomment>data/core/layout/rws_makemodel.xml</extracomment>
        <translation>Was es ist und wie man es fährt</translation>
    </message>
    <message>
        <source>Picture</source>
        <extracomment>data/core/layout/rws_makemodel.xml; data/core/layout/rws_models.xml; src/app/studio/windows/MakeModelWindow.cpp</extracomment>
        <translation>Bild</translation>
    </message>
    <message>
        <source>&amp;Picture...</source>
        <extracomment>data/core/layout/rws_makemodel.xml</extracomment>
        <translation>B&amp;ild ...</translation>
    </message>
    <message>
        <source>&amp;Without</source>
        <extracomment>data/core/layout/rws_makemodel.xml</extracomment>
        <translation>&amp;Ohne</translation>
    </message>
    <message>
        <source>&amp;Make...</source>
        <extracomment>data/core/layout/rws_makemodel.xml</extracomment>
        <translation>&amp;Erstellen ...</translation>
    </message>
    <message>
        <source>Sound</source>
        <extracomment>data/core/layout/rws_media.xml; src/app/studio/StudioTime.cpp; src/app/studio/timeline/Timeline.cpp</extracomment>
        <translation>Ton</translation>
    </message>
    <message>
        <source>File</source>
        <extracomment>data/core/layout/rws_media.xml</extracomment>
        <translation>Datei</translation>
    </message>
    <message>
        <source>C&amp;hoose...</source>
        <extracomment>data/core/layout/rws_media.xml</extracomment>
        <translation>&amp;Wählen...</translation>
    </message>
    <message>
        <source>&amp;None</source>
        <extracomment>data/core/layout/rws_media.xml; src/app/studio/StagePane.cpp</extracomment>
        <translation>&amp;Keine</translation>
    </message>
    <message>
        <source>Begins at frame</source>
        <extracomment>data/core/layout/rws_media.xml; src/app/studio/windows/MediaWindow.cpp</extracomment>
        <translation>Beginnt bei Bild</translation>
    </message>
    <message>
        <source>&amp;Opacity</source>
        <extracomment>data/core/layout/rws_media.xml</extracomment>
        <translation>&amp;Deckkraft</translation>
    </message>
    <message>
        <source>Opacity</source>
        <extracomment>data/core/layout/rws_media.xml</extracomment>
        <translation>Deckkraft</translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <extracomment>data/core/layout/rws_media.xml</extracomment>
        <translation>&amp;Anwenden</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <extracomment>data/core/layout/rws_message.xml</extracomment>
        <translation>&amp;Ja</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <extracomment>data/core/layout/rws_message.xml</extracomment>
        <translation>&amp;Nein</translation>
    </message>
    <message>
        <source>&amp;OK</source>
        <extracomment>data/core/layout/rws_message.xml</extracomment>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>Pre-rigged models</source>
        <extracomment>data/core/layout/rws_models.xml; src/app/studio/StudioModels.cpp</extracomment>
        <translation>Vorgeriggte Modelle</translation>
    </message>
    <message>
        <source>Models</source>
        <extracomment>data/core/layout/rws_models.xml</extracomment>
        <translation>Modelle</translation>
    </message>
    <message>
        <source>From a &amp;file...</source>
        <extracomment>data/core/layout/rws_models.xml</extracomment>
        <translation>Aus einer &amp;Datei ...</translation>
    </message>
    <message>
        <source>Description</source>
        <extracomment>data/core/layout/rws_models.xml; data/core/layout/rws_popout_product.xml</extracomment>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>&amp;Ground of its rigs</source>
        <extracomment>data/core/layout/rws_models.xml</extracomment>
        <translation>&amp;Boden seiner Rigs</translation>
    </message>
    <message>
        <source>&amp;Add to the scene</source>
        <extracomment>data/core/layout/rws_models.xml</extracomment>
        <translation>Der Szene &amp;hinzufügen</translation>
    </message>
    <message>
        <source>Create</source>
        <extracomment>data/core/layout/rws_popout_product.xml</extracomment>
        <translation>Erzeugen</translation>
    </message>
    <message>
        <source>Makes a rig of this kind in the scene</source>
        <extracomment>data/core/layout/rws_popout_product.xml</extracomment>
        <translation>Erzeugt ein Rig dieser Art in der Szene</translation>
    </message>
    <message>
        <source>Preferences</source>
        <extracomment>data/core/layout/rws_preferences.xml</extracomment>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Data root</source>
        <extracomment>data/core/layout/rws_preferences.xml</extracomment>
        <translation>Datenordner</translation>
    </message>
    <message>
        <source>Folder of profiles, preferences and logs. --data-root or RIGWRIGHT_DATA_ROOT names another.</source>
        <extracomment>data/core/layout/rws_preferences.xml</extracomment>
        <translation>Ordner für Profile, Einstellungen und Protokolle. --data-root oder RIGWRIGHT_DATA_ROOT nennt einen anderen.</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <extracomment>data/core/layout/rws_preferences.xml</extracomment>
        <translation>Ö&amp;ffnen</translation>
    </message>
    <message>
        <source>Export a preview</source>
        <extracomment>data/core/layout/rws_preview.xml; src/app/studio/StudioExports.cpp</extracomment>
        <translation>Vorschau exportieren</translation>
    </message>
    <message>
        <source>See&amp;n by</source>
        <extracomment>data/core/layout/rws_preview.xml</extracomment>
        <translation>Gesehen &amp;von</translation>
    </message>
    <message>
        <source>&amp;Size</source>
        <extracomment>data/core/layout/rws_preview.xml</extracomment>
        <translation>&amp;Größe</translation>
    </message>
    <message>
        <source>Width</source>
        <extracomment>data/core/layout/rws_preview.xml</extracomment>
        <translation>Breite</translation>
    </message>
    <message>
        <source>by</source>
        <extracomment>data/core/layout/rws_preview.xml</extracomment>
        <translation>mal</translation>
    </message>
    <message>
        <source>Height</source>
        <extracomment>data/core/layout/rws_preview.xml</extracomment>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>With &amp;grid, cameras and curves</source>
        <extracomment>data/core/layout/rws_preview.xml</extracomment>
        <translation>Mit &amp;Raster, Kameras und Kurven</translation>
    </message>
    <message>
        <source>With the view's &amp;overlay</source>
        <extracomment>data/core/layout/rws_preview.xml</extracomment>
        <translation>Mit den E&amp;inblendungen der Ansicht</translation>
    </message>
    <message>
        <source>&amp;Export...</source>
        <extracomment>data/core/layout/rws_preview.xml; data/core/layout/rows/profiles.xml</extracomment>
        <translation>&amp;Exportieren ...</translation>
    </message>
    <message>
        <source>Record between the marks</source>
        <extracomment>data/core/layout/rws_punch.xml</extracomment>
        <translation>Zwischen den Marken aufnehmen</translation>
    </message>
    <message>
        <source>&amp;Lead</source>
        <extracomment>data/core/layout/rws_punch.xml</extracomment>
        <translation>&amp;Vorlauf</translation>
    </message>
    <message>
        <source>So long ahead of the first mark time begins to run over what is there</source>
        <extracomment>data/core/layout/rws_punch.xml</extracomment>
        <translation>So lange vor der ersten Marke beginnt die Zeit über dem zu laufen, was da ist</translation>
    </message>
    <message>
        <source>&amp;Blend</source>
        <extracomment>data/core/layout/rws_punch.xml</extracomment>
        <translation>Ü&amp;berblenden</translation>
    </message>
    <message>
        <source>So long at both ends inputs go from the old values to the new ones and back</source>
        <extracomment>data/core/layout/rws_punch.xml</extracomment>
        <translation>So lange gehen die Eingaben an beiden Enden von den alten Werten zu den neuen und zurück</translation>
    </message>
    <message>
        <source>Go &amp;on with the old inputs behind it</source>
        <extracomment>data/core/layout/rws_punch.xml</extracomment>
        <translation>Dahinter mit den alten &amp;Eingaben weiter</translation>
    </message>
    <message>
        <source>Else what lies behind is dropped</source>
        <extracomment>data/core/layout/rws_punch.xml</extracomment>
        <translation>Sonst fällt weg, was dahinter liegt</translation>
    </message>
    <message>
        <source>Resimulation</source>
        <extracomment>data/core/layout/rws_resimulate.xml</extracomment>
        <translation>Neue Simulation</translation>
    </message>
    <message>
        <source>Show &amp;frames while it runs</source>
        <extracomment>data/core/layout/rws_resimulate.xml</extracomment>
        <translation>&amp;Bilder währenddessen zeigen</translation>
    </message>
    <message>
        <source>Showing frames makes the run slower.</source>
        <extracomment>data/core/layout/rws_resimulate.xml</extracomment>
        <translation>Bilder zu zeigen macht den Lauf langsamer.</translation>
    </message>
    <message>
        <source>Ends the run; what was simulated is kept</source>
        <extracomment>data/core/layout/rws_resimulate.xml</extracomment>
        <translation>Beendet den Lauf; was simuliert wurde, bleibt</translation>
    </message>
    <message>
        <source>Tool configuration</source>
        <extracomment>data/core/layout/rws_toolconfig.xml</extracomment>
        <translation>Parameter des Rigs</translation>
    </message>
    <message>
        <source>Which controls turn this rig's inputs, and how it answers them</source>
        <extracomment>data/core/layout/rws_toolconfig.xml</extracomment>
        <translation>Welche Bedienelemente auf die Eingaben des Rigs wirken, und wie es darauf antwortet</translation>
    </message>
    <message>
        <source>Shows the parameters whose name or description holds this text</source>
        <extracomment>data/core/layout/rws_toolconfig.xml</extracomment>
        <translation>Zeigt die Parameter, deren Name oder Beschreibung diesen Text enthält</translation>
    </message>
    <message>
        <source>Why does nothing move?</source>
        <extracomment>data/core/layout/rws_why.xml</extracomment>
        <translation>Warum bewegt sich nichts?</translation>
    </message>
    <message>
        <source>Reasons</source>
        <extracomment>data/core/layout/rws_why.xml</extracomment>
        <translation>Gründe</translation>
    </message>
    <message>
        <source>&amp;Show the rig</source>
        <extracomment>data/core/layout/rws_why.xml</extracomment>
        <translation>Rig &amp;zeigen</translation>
    </message>
    <message>
        <source>Control to be calibrated</source>
        <extracomment>data/core/layout/rows/calibration.xml</extracomment>
        <translation>Bedienelement, das kalibriert wird</translation>
    </message>
    <message>
        <source>Pedal or tri&amp;gger...</source>
        <extracomment>data/core/layout/rows/calibration.xml</extracomment>
        <translation>&amp;Pedal oder Abzug ...</translation>
    </message>
    <message>
        <source>Measures where it rests and where it is full, so that it gives 0 to 1</source>
        <extracomment>data/core/layout/rows/calibration.xml</extracomment>
        <translation>Misst, wo es ruht und wo es voll ist, sodass es 0 bis 1 liefert</translation>
    </message>
    <message>
        <source>A&amp;xis...</source>
        <extracomment>data/core/layout/rows/calibration.xml</extracomment>
        <translation>Ac&amp;hse ...</translation>
    </message>
    <message>
        <source>Measures the centre and both ends, so that it gives -1 to 1</source>
        <extracomment>data/core/layout/rows/calibration.xml</extracomment>
        <translation>Misst die Mitte und beide Enden, sodass es -1 bis 1 liefert</translation>
    </message>
    <message>
        <source>&amp;Forget</source>
        <extracomment>data/core/layout/rows/calibration.xml</extracomment>
        <translation>Verge&amp;ssen</translation>
    </message>
    <message>
        <source>Takes the control's values as the device gives them</source>
        <extracomment>data/core/layout/rows/calibration.xml</extracomment>
        <translation>Nimmt die Werte des Bedienelements, wie das Gerät sie liefert</translation>
    </message>
    <message>
        <source>&amp;Next</source>
        <extracomment>data/core/layout/rows/calibration.xml</extracomment>
        <translation>&amp;Weiter</translation>
    </message>
    <message>
        <source>Cance&amp;l</source>
        <extracomment>data/core/layout/rows/calibration.xml</extracomment>
        <translation>Abb&amp;rechen</translation>
    </message>
    <message>
        <source>Buttons</source>
        <extracomment>data/core/layout/rows/device.xml</extracomment>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Shows its calibration below</source>
        <extracomment>data/core/layout/rows/device_control.xml</extracomment>
        <translation>Zeigt unten seine Kalibrierung</translation>
    </message>
    <message>
        <source>Value</source>
        <extracomment>data/core/layout/rows/device_control.xml</extracomment>
        <translation>Wert</translation>
    </message>
    <message>
        <source>&amp;Reset this group</source>
        <extracomment>data/core/layout/rows/group.xml</extracomment>
        <translation>Diese Gruppe &amp;zurücksetzen</translation>
    </message>
    <message>
        <source>Record</source>
        <extracomment>data/core/layout/rows/input.xml; src/core/take/RecordManager.cpp</extracomment>
        <translation>Aufnahme</translation>
    </message>
    <message>
        <source>Takes record this input. Without the check they play what was recorded of it.</source>
        <extracomment>data/core/layout/rows/input.xml</extracomment>
        <translation>Takes nehmen diese Eingabe auf. Ohne das Kreuz spielen sie, was von ihr aufgenommen ist.</translation>
    </message>
    <message>
        <source>Control and value</source>
        <extracomment>data/core/layout/rows/input.xml</extracomment>
        <translation>Bedienelement und Wert</translation>
    </message>
    <message>
        <source>Above what the control gives, below and as a number what the input makes of it</source>
        <extracomment>data/core/layout/rows/input.xml</extracomment>
        <translation>Oben, was das Bedienelement liefert, unten und als Zahl, was die Eingabe daraus macht</translation>
    </message>
    <message>
        <source>Pr&amp;ofile</source>
        <extracomment>data/core/layout/rows/profiles.xml</extracomment>
        <translation>Pr&amp;ofil</translation>
    </message>
    <message>
        <source>Sets of values kept under a name</source>
        <extracomment>data/core/layout/rows/profiles.xml</extracomment>
        <translation>Werte, die unter einem Namen aufgehoben sind</translation>
    </message>
    <message>
        <source>S&amp;ave</source>
        <extracomment>data/core/layout/rows/profiles.xml</extracomment>
        <translation>Spei&amp;chern</translation>
    </message>
    <message>
        <source>Saves the values under the name of this profile</source>
        <extracomment>data/core/layout/rows/profiles.xml</extracomment>
        <translation>Speichert die Werte unter dem Namen dieses Profils</translation>
    </message>
    <message>
        <source>&amp;More</source>
        <extracomment>data/core/layout/rows/profiles.xml</extracomment>
        <translation>&amp;Mehr</translation>
    </message>
    <message>
        <source>All that can be done with profiles</source>
        <extracomment>data/core/layout/rows/profiles.xml</extracomment>
        <translation>Alles, was sich mit Profilen tun lässt</translation>
    </message>
    <message>
        <source>&amp;Rename...</source>
        <extracomment>data/core/layout/rows/profiles.xml</extracomment>
        <translation>Um&amp;benennen ...</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <extracomment>data/core/layout/rows/profiles.xml</extracomment>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>&amp;Import...</source>
        <extracomment>data/core/layout/rows/profiles.xml</extracomment>
        <translation>&amp;Importieren ...</translation>
    </message>
    <message>
        <source>&amp;Factory settings</source>
        <extracomment>data/core/layout/rows/profiles.xml</extracomment>
        <translation>&amp;Werkseinstellungen</translation>
    </message>
    <message>
        <source>Use for &amp;new rigs</source>
        <extracomment>data/core/layout/rows/profiles.xml</extracomment>
        <translation>Für &amp;neue Rigs verwenden</translation>
    </message>
    <message>
        <source>Reset all &amp;values</source>
        <extracomment>data/core/layout/rows/profiles.xml</extracomment>
        <translation>Alle Werte &amp;zurücksetzen</translation>
    </message>
    <message>
        <source>Ride</source>
        <extracomment>src/app/makemodels/Examples.cpp</extracomment>
        <translation>Fahrt</translation>
    </message>
    <message>
        <source>Walls</source>
        <extracomment>src/app/makemodels/Examples.cpp</extracomment>
        <translation>Wände</translation>
    </message>
    <message>
        <source>the rig could not be simulated</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>das Rig konnte nicht simuliert werden</translation>
    </message>
    <message>
        <source>there is no such rig</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>ein solches Rig gibt es nicht</translation>
    </message>
    <message>
        <source>a %1 follows no target by itself</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>ein %1 folgt keinem Ziel von selbst</translation>
    </message>
    <message>
        <source>kinds that do: %1</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>Arten, die es tun: %1</translation>
    </message>
    <message>
        <source>there is no profile "%1"</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>es gibt kein Profil „%1“</translation>
    </message>
    <message>
        <source>the name %1 can't be had: %2</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>der Name %1 geht nicht: %2</translation>
    </message>
    <message>
        <source>a rig named %1 is in the scene</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>ein Rig namens %1 ist in der Szene</translation>
    </message>
    <message>
        <source>choose another name</source>
        <extracomment>src/app/session/LineFollowing.cpp; src/app/studio/StudioExports.cpp</extracomment>
        <translation>wählen Sie einen anderen Namen</translation>
    </message>
    <message>
        <source>drive it first: record a take of it</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>fahren Sie es zuerst: nehmen Sie einen Take davon auf</translation>
    </message>
    <message>
        <source>it has no recorded path</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>es hat keinen aufgenommenen Weg</translation>
    </message>
    <message>
        <source>its path has no place at %1 s</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>sein Weg hat bei %1 s keinen Ort</translation>
    </message>
    <message>
        <source>its recorded path of %1 s is too short to follow</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>sein aufgenommener Weg von %1 s ist zu kurz, um ihm zu folgen</translation>
    </message>
    <message>
        <source>it takes %1 s</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>nötig sind %1 s</translation>
    </message>
    <message>
        <source>it stands still all along its recorded path</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>es steht auf seinem ganzen aufgenommenen Weg still</translation>
    </message>
    <message>
        <source>it could not be copied: %1</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>es konnte nicht kopiert werden: %1</translation>
    </message>
    <message>
        <source>the copy could not be named: %1</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>die Kopie konnte nicht benannt werden: %1</translation>
    </message>
    <message>
        <source>profile %1: %2</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>Profil %1: %2</translation>
    </message>
    <message>
        <source>parameter %1: %2</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>Parameter %1: %2</translation>
    </message>
    <message>
        <source>its %1 is gone</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>%1 von ihm ist nicht mehr da</translation>
    </message>
    <message>
        <source>undo what deleted it</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>machen Sie rückgängig, was es gelöscht hat</translation>
    </message>
    <message>
        <source>%1 could not be taken from its parent</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>%1 konnte nicht von seinem übergeordneten Knoten gelöst werden</translation>
    </message>
    <message>
        <source>its path gives the target no place</source>
        <extracomment>src/app/session/LineFollowing.cpp</extracomment>
        <translation>sein Weg ergibt keinen Ort für das Ziel</translation>
    </message>
    <message>
        <source>Change range and rate</source>
        <extracomment>src/app/session/SceneRange.cpp</extracomment>
        <translation>Bereich und Bildrate ändern</translation>
    </message>
    <message>
        <source>after about %1 s of it the scene would pass the 4 GB that a .glb can hold</source>
        <extracomment>src/app/session/TakeSize.cpp</extracomment>
        <translation>nach etwa %1 s davon wäre die Szene größer als die 4 GB, die eine .glb fasst</translation>
    </message>
    <message>
        <source>Verify</source>
        <extracomment>src/app/session/Verification.cpp</extracomment>
        <translation>Prüfen</translation>
    </message>
    <message>
        <source>Edit Inputs</source>
        <extracomment>src/app/session/anyhost/InputDrag.cpp</extracomment>
        <translation>Eingaben bearbeiten</translation>
    </message>
    <message>
        <source>Resimulating</source>
        <extracomment>src/app/session/anyhost/RunRigs.cpp; src/core/take/RecordManager.cpp</extracomment>
        <translation>Neue Simulation</translation>
    </message>
    <message>
        <source>The take</source>
        <extracomment>src/app/session/document/SceneDocument.cpp</extracomment>
        <translation>Der Take</translation>
    </message>
    <message>
        <source>stop before that, save as .gltf, perform fewer rigs at once, or lower the frame rate</source>
        <extracomment>src/app/session/document/SceneDocument.cpp</extracomment>
        <translation>vorher anhalten, als .gltf speichern, weniger Rigs auf einmal aufnehmen oder die Bildrate senken</translation>
    </message>
    <message>
        <source>Change frame rate</source>
        <extracomment>src/app/session/document/SceneDocument.cpp</extracomment>
        <translation>Bildrate ändern</translation>
    </message>
    <message>
        <source>Restore take</source>
        <extracomment>src/app/session/document/TakeJournal.cpp</extracomment>
        <translation>Take wiederherstellen</translation>
    </message>
    <message>
        <source>Use Take</source>
        <extracomment>src/app/session/takes/KeptTakesUse.cpp</extracomment>
        <translation>Take verwenden</translation>
    </message>
    <message>
        <source>The node is gone.</source>
        <extracomment>src/app/studio/HeadlessBrowser.cpp</extracomment>
        <translation>Den Knoten gibt es nicht mehr.</translation>
    </message>
    <message>
        <source>%1 can't be placed in the world: a node above it has a scale of 0.</source>
        <extracomment>src/app/studio/HeadlessBrowser.cpp</extracomment>
        <translation>%1 kann nicht in der Welt platziert werden: Ein Knoten darüber hat die Größe 0.</translation>
    </message>
    <message>
        <source>That is no place in the scene.</source>
        <extracomment>src/app/studio/HeadlessBrowser.cpp; src/app/studio/NodeManipulation.cpp</extracomment>
        <translation>Das ist kein Ort in der Szene.</translation>
    </message>
    <message>
        <source>%1 can't hang below itself.</source>
        <extracomment>src/app/studio/HeadlessBrowser.cpp</extracomment>
        <translation>%1 kann nicht unter sich selbst hängen.</translation>
    </message>
    <message>
        <source>%1 can't hang there and keep its place: a scale of 0 stands above it.</source>
        <extracomment>src/app/studio/HeadlessBrowser.cpp</extracomment>
        <translation>%1 kann dort nicht hängen und seinen Ort behalten: Darüber steht eine Größe von 0.</translation>
    </message>
    <message>
        <source>This rig meets no ground.</source>
        <extracomment>src/app/studio/HeadlessBrowser.cpp</extracomment>
        <translation>Dieses Rig berührt keinen Boden.</translation>
    </message>
    <message>
        <source>The rig's node that tells its ground is gone; undo its deletion.</source>
        <extracomment>src/app/studio/HeadlessBrowser.cpp</extracomment>
        <translation>Der Knoten des Rigs, der seinen Boden angibt, fehlt; machen Sie sein Löschen rückgängig.</translation>
    </message>
    <message>
        <source>There is no mesh in what is selected.</source>
        <extracomment>src/app/studio/HeadlessBrowser.cpp</extracomment>
        <translation>In der Auswahl ist kein Netz.</translation>
    </message>
    <message>
        <source>Select a rig first.</source>
        <extracomment>src/app/studio/HeadlessBrowser.cpp; src/core/windows/MainWindowRigs.cpp; src/core/windows/MainWindowScene.cpp</extracomment>
        <translation>Wählen Sie zuerst ein Rig.</translation>
    </message>
    <message>
        <source>The rig or a part of the car is gone.</source>
        <extracomment>src/app/studio/HeadlessBrowser.cpp</extracomment>
        <translation>Das Rig oder ein Teil des Autos fehlt.</translation>
    </message>
    <message>
        <source>Move nodes</source>
        <extracomment>src/app/studio/HeadlessBrowser.cpp</extracomment>
        <translation>Knoten umhängen</translation>
    </message>
    <message>
        <source>Use as ground</source>
        <extracomment>src/app/studio/HeadlessBrowser.cpp</extracomment>
        <translation>Als Boden verwenden</translation>
    </message>
    <message>
        <source>%1 can't be placed: a node above it has a scale of 0.</source>
        <extracomment>src/app/studio/NodeManipulation.cpp</extracomment>
        <translation>%1 lässt sich nicht platzieren: Ein Knoten darüber hat die Skalierung 0.</translation>
    </message>
    <message>
        <source>%1 can't be placed: %2</source>
        <extracomment>src/app/studio/NodeManipulation.cpp</extracomment>
        <translation>%1 lässt sich nicht platzieren: %2</translation>
    </message>
    <message>
        <source>%1 has keys: its pose became a key at %2 s, the others stay.</source>
        <extracomment>src/app/studio/NodeManipulation.cpp</extracomment>
        <translation>%1 hat Keys: Die Pose wurde ein Key bei %2 s, die anderen bleiben.</translation>
    </message>
    <message>
        <source>The rig of %1 decides where it stands, and has moved it on.</source>
        <extracomment>src/app/studio/NodeManipulation.cpp</extracomment>
        <translation>Das Rig von %1 bestimmt, wo der Knoten steht, und hat ihn weiterbewegt.</translation>
    </message>
    <message>
        <source>Select a node in the scene first.</source>
        <extracomment>src/app/studio/NodeManipulation.cpp; src/core/windows/MainWindowPose.cpp; src/core/windows/MainWindowScene.cpp</extracomment>
        <translation>Wählen Sie zuerst einen Knoten in der Szene.</translation>
    </message>
    <message>
        <source>Nothing lies under %1.</source>
        <extracomment>src/app/studio/NodeManipulation.cpp</extracomment>
        <translation>Unter %1 liegt nichts.</translation>
    </message>
    <message>
        <source>there is no OpenGL for it</source>
        <extracomment>src/app/studio/PreviewFolder.cpp</extracomment>
        <translation>dafür gibt es kein OpenGL</translation>
    </message>
    <message>
        <source>pictures can't be larger than %1 pixels here</source>
        <extracomment>src/app/studio/PreviewFolder.cpp</extracomment>
        <translation>Bilder können hier nicht größer als %1 Pixel sein</translation>
    </message>
    <message>
        <source>there are files already</source>
        <extracomment>src/app/studio/PreviewFolder.cpp</extracomment>
        <translation>dort liegen schon Dateien</translation>
    </message>
    <message>
        <source>choose another folder</source>
        <extracomment>src/app/studio/PreviewFolder.cpp</extracomment>
        <translation>wählen Sie einen anderen Ordner</translation>
    </message>
    <message>
        <source>a preview that was interrupted is in the way</source>
        <extracomment>src/app/studio/PreviewFolder.cpp</extracomment>
        <translation>eine unterbrochene Vorschau ist im Weg</translation>
    </message>
    <message>
        <source>remove it</source>
        <extracomment>src/app/studio/PreviewFolder.cpp</extracomment>
        <translation>entfernen Sie sie</translation>
    </message>
    <message>
        <source>the folder can't be made: %1</source>
        <extracomment>src/app/studio/PreviewFolder.cpp</extracomment>
        <translation>der Ordner kann nicht angelegt werden: %1</translation>
    </message>
    <message>
        <source>choose one where you may write</source>
        <extracomment>src/app/studio/PreviewFolder.cpp</extracomment>
        <translation>wählen Sie einen, in dem Sie schreiben dürfen</translation>
    </message>
    <message>
        <source>there is nothing to write</source>
        <extracomment>src/app/studio/PreviewFolder.cpp</extracomment>
        <translation>es gibt nichts zu schreiben</translation>
    </message>
    <message>
        <source>give a size and a range of frames</source>
        <extracomment>src/app/studio/PreviewFolder.cpp</extracomment>
        <translation>geben Sie eine Größe und einen Bereich von Bildern an</translation>
    </message>
    <message>
        <source>a picture could not be written</source>
        <extracomment>src/app/studio/PreviewFolder.cpp</extracomment>
        <translation>ein Bild konnte nicht geschrieben werden</translation>
    </message>
    <message>
        <source>see that the disk has room</source>
        <extracomment>src/app/studio/PreviewFolder.cpp; src/app/studio/StudioHelp.cpp</extracomment>
        <translation>sorgen Sie dafür, dass der Datenträger Platz hat</translation>
    </message>
    <message>
        <source>Own axes</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>Eigene Achsen</translation>
    </message>
    <message>
        <source>Axes of the parent</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>Achsen des Elternknotens</translation>
    </message>
    <message>
        <source>Axes of the chosen node</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>Achsen des gewählten Knotens</translation>
    </message>
    <message>
        <source>Axes of the world</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>Achsen der Welt</translation>
    </message>
    <message>
        <source>&amp;Place nodes</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>Knoten &amp;platzieren</translation>
    </message>
    <message>
        <source>&amp;Move</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>Ver&amp;schieben</translation>
    </message>
    <message>
        <source>&amp;Turn</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>&amp;Drehen</translation>
    </message>
    <message>
        <source>&amp;Scale</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>S&amp;kalieren</translation>
    </message>
    <message>
        <source>&amp;No handles</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>Kei&amp;ne Griffe</translation>
    </message>
    <message>
        <source>Along the &amp;world's axes</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>Entlang der Achsen der &amp;Welt</translation>
    </message>
    <message>
        <source>Along its &amp;own axes</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>Entlang der &amp;eigenen Achsen</translation>
    </message>
    <message>
        <source>Along the &amp;parent's axes</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>Entlang der Achsen des El&amp;ternknotens</translation>
    </message>
    <message>
        <source>Along the a&amp;xes of %1</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>Entlang der A&amp;chsen von %1</translation>
    </message>
    <message>
        <source>Along the &amp;chosen node's axes from here on</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>Ab &amp;jetzt entlang der Achsen des gewählten Knotens</translation>
    </message>
    <message>
        <source>Around the node chosen &amp;last</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>Um den &amp;zuletzt gewählten Knoten</translation>
    </message>
    <message>
        <source>&amp;Each around itself</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>Jeden um sich se&amp;lbst</translation>
    </message>
    <message>
        <source>Snap to &amp;grid and steps</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>Am R&amp;aster und in Schritten einrasten</translation>
    </message>
    <message>
        <source>Snap to no&amp;des</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>An Knoten ein&amp;rasten</translation>
    </message>
    <message>
        <source>Snap to s&amp;urfaces</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>An &amp;Oberflächen einrasten</translation>
    </message>
    <message>
        <source>Drop to g&amp;round</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>Auf den &amp;Boden absetzen</translation>
    </message>
    <message>
        <source>End</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>Ende</translation>
    </message>
    <message>
        <source>A scale of 0 can't be had.</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>Eine Skalierung von 0 ist nicht möglich.</translation>
    </message>
    <message>
        <source>%1. X, Y, Z: one axis, with Shift two; digits; Enter; Escape</source>
        <extracomment>src/app/studio/StageManipulator.cpp</extracomment>
        <translation>%1. X, Y, Z: eine Achse, mit Umschalt zwei; Ziffern; Eingabe; Escape</translation>
    </message>
    <message>
        <source>The scene can't be shown here: %1. Everything else works as ever; a driver with OpenGL 3.3 brings the picture back.</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>Die Szene lässt sich hier nicht zeigen: %1. Alles andere geht wie immer; ein Treiber mit OpenGL 3.3 bringt das Bild zurück.</translation>
    </message>
    <message>
        <source>Through %1</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>Durch %1</translation>
    </message>
    <message>
        <source>Grid: %1</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>Raster: %1</translation>
    </message>
    <message>
        <source>Along with %1</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>Mit %1</translation>
    </message>
    <message>
        <source>Show &amp;all</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>&amp;Alles zeigen</translation>
    </message>
    <message>
        <source>Show the &amp;selection</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>Aus&amp;wahl zeigen</translation>
    </message>
    <message>
        <source>&amp;Grid</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>&amp;Raster</translation>
    </message>
    <message>
        <source>&amp;Overlay</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>&amp;Einblendungen</translation>
    </message>
    <message>
        <source>Takes &amp;between their frames</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>Aufnahmen &amp;zwischen ihren Bildern</translation>
    </message>
    <message>
        <source>&amp;Mouse as in</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>&amp;Maus wie in</translation>
    </message>
    <message>
        <source>Look &amp;through</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>Sehen &amp;durch</translation>
    </message>
    <message>
        <source>Camera in the &amp;corner</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>&amp;Kamera in der Ecke</translation>
    </message>
    <message>
        <source>Travel a&amp;long with</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>M&amp;itreisen mit</translation>
    </message>
    <message>
        <source>The &amp;place of %1</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>Dem &amp;Ort von %1</translation>
    </message>
    <message>
        <source>Place and &amp;heading of %1</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>Ort und &amp;Richtung von %1</translation>
    </message>
    <message>
        <source>Pa&amp;nes</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>A&amp;nsichten</translation>
    </message>
    <message>
        <source>&amp;One</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>&amp;Eine</translation>
    </message>
    <message>
        <source>Two &amp;side by side</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>Zwei &amp;nebeneinander</translation>
    </message>
    <message>
        <source>Two one &amp;above the other</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>Zwei ü&amp;bereinander</translation>
    </message>
    <message>
        <source>S&amp;hading</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>&amp;Schattierung</translation>
    </message>
    <message>
        <source>&amp;Plain</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>Ein&amp;fach</translation>
    </message>
    <message>
        <source>With the &amp;edges of triangles</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>Mit &amp;Kanten der Dreiecke</translation>
    </message>
    <message>
        <source>&amp;Rigs shine through</source>
        <extracomment>src/app/studio/StagePane.cpp</extracomment>
        <translation>&amp;Rigs scheinen durch</translation>
    </message>
    <message>
        <source>Scenes (*.glb *.gltf)</source>
        <extracomment>src/app/studio/Studio.cpp; src/app/studio/StudioExports.cpp</extracomment>
        <translation>Szenen (*.glb *.gltf)</translation>
    </message>
    <message>
        <source>%1 was not saved when the program ended. It was kept on %2.</source>
        <extracomment>src/app/studio/Studio.cpp</extracomment>
        <translation>%1 war nicht gespeichert, als das Programm endete. Aufgehoben wurde es am %2.</translation>
    </message>
    <message>
        <source>A take of %1 s had been recorded on it.</source>
        <extracomment>src/app/studio/Studio.cpp</extracomment>
        <translation>Ein Take von %1 s war darauf aufgenommen.</translation>
    </message>
    <message>
        <source>A take of %1 s was running.</source>
        <extracomment>src/app/studio/Studio.cpp</extracomment>
        <translation>Ein Take von %1 s lief gerade.</translation>
    </message>
    <message>
        <source>The file itself was written later: %1</source>
        <extracomment>src/app/studio/Studio.cpp</extracomment>
        <translation>Die Datei selbst wurde später geschrieben: %1</translation>
    </message>
    <message>
        <source>Yes opens what there is of it, No removes it for good, Cancel asks again at the next start.</source>
        <extracomment>src/app/studio/Studio.cpp</extracomment>
        <translation>Ja öffnet, was davon da ist, Nein entfernt es endgültig, Abbrechen fragt beim nächsten Start wieder.</translation>
    </message>
    <message>
        <source>That</source>
        <extracomment>src/app/studio/Studio.cpp; src/app/studio/StudioHelp.cpp; src/app/studio/StudioTakes.cpp</extracomment>
        <translation>Das</translation>
    </message>
    <message>
        <source>%1 is not there.</source>
        <extracomment>src/app/studio/Studio.cpp</extracomment>
        <translation>%1 ist nicht da.</translation>
    </message>
    <message>
        <source>A take or resimulation runs. Stop it first.</source>
        <extracomment>src/app/studio/Studio.cpp</extracomment>
        <translation>Ein Take oder eine neue Simulation läuft. Beenden Sie das zuerst.</translation>
    </message>
    <message>
        <source>%1 has to wait: a take or resimulation runs. Stop it first.</source>
        <extracomment>src/app/studio/Studio.cpp</extracomment>
        <translation>%1 muss warten: Ein Take oder eine neue Simulation läuft. Beenden Sie das zuerst.</translation>
    </message>
    <message>
        <source>New scene</source>
        <extracomment>src/app/studio/Studio.cpp</extracomment>
        <translation>Neue Szene</translation>
    </message>
    <message>
        <source>Open</source>
        <extracomment>src/app/studio/Studio.cpp</extracomment>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Save</source>
        <extracomment>src/app/studio/Studio.cpp</extracomment>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Save as</source>
        <extracomment>src/app/studio/Studio.cpp</extracomment>
        <translation>Speichern unter</translation>
    </message>
    <message>
        <source>Unsaved changes</source>
        <extracomment>src/app/studio/Studio.cpp</extracomment>
        <translation>Ungespeicherte Änderungen</translation>
    </message>
    <message>
        <source>Save the changes of %1?</source>
        <extracomment>src/app/studio/Studio.cpp</extracomment>
        <translation>Änderungen an %1 speichern?</translation>
    </message>
    <message>
        <source>Recovery</source>
        <extracomment>src/app/studio/Studio.cpp</extracomment>
        <translation>Wiederherstellung</translation>
    </message>
    <message>
        <source>Export for delivery</source>
        <extracomment>src/app/studio/StudioExports.cpp</extracomment>
        <translation>Zur Auslieferung exportieren</translation>
    </message>
    <message>
        <source>this is the open scene's own file, which would lose its rigs</source>
        <extracomment>src/app/studio/StudioExports.cpp</extracomment>
        <translation>das ist die Datei der offenen Szene, die ihre Rigs verlöre</translation>
    </message>
    <message>
        <source>Writing %1...</source>
        <extracomment>src/app/studio/StudioExports.cpp</extracomment>
        <translation>%1 wird geschrieben ...</translation>
    </message>
    <message>
        <source>%1 was written.</source>
        <extracomment>src/app/studio/StudioExports.cpp; src/app/studio/StudioModels.cpp; src/app/studio/StudioTakes.cpp</extracomment>
        <translation>%1 wurde geschrieben.</translation>
    </message>
    <message>
        <source>Export poses</source>
        <extracomment>src/app/studio/StudioExports.cpp</extracomment>
        <translation>Posen exportieren</translation>
    </message>
    <message>
        <source>Tables (*.csv)</source>
        <extracomment>src/app/studio/StudioExports.cpp</extracomment>
        <translation>Tabellen (*.csv)</translation>
    </message>
    <message>
        <source>Export animation</source>
        <extracomment>src/app/studio/StudioExports.cpp</extracomment>
        <translation>Animation exportieren</translation>
    </message>
    <message>
        <source>Maya scenes (*.ma);;Animation for Maya's clipboard (*.anim);;USD stages (*.usda)</source>
        <extracomment>src/app/studio/StudioExports.cpp</extracomment>
        <translation>Maya-Szenen (*.ma);;Animation für Mayas Zwischenablage (*.anim);;USD-Szenen (*.usda)</translation>
    </message>
    <message>
        <source>Export picture</source>
        <extracomment>src/app/studio/StudioExports.cpp</extracomment>
        <translation>Bild exportieren</translation>
    </message>
    <message>
        <source>Pictures (*.png *.svg)</source>
        <extracomment>src/app/studio/StudioExports.cpp</extracomment>
        <translation>Bilder (*.png *.svg)</translation>
    </message>
    <message>
        <source>there is no rig to draw</source>
        <extracomment>src/app/studio/StudioExports.cpp</extracomment>
        <translation>es gibt kein Rig, das gezeichnet werden kann</translation>
    </message>
    <message>
        <source>the picture could not be made</source>
        <extracomment>src/app/studio/StudioExports.cpp</extracomment>
        <translation>das Bild konnte nicht erzeugt werden</translation>
    </message>
    <message>
        <source>Frames %1 to %2, a PNG file each, in a new folder</source>
        <extracomment>src/app/studio/StudioExports.cpp</extracomment>
        <translation>Bilder %1 bis %2, je eine PNG-Datei, in einem neuen Ordner</translation>
    </message>
    <message>
        <source>Folders (*)</source>
        <extracomment>src/app/studio/StudioExports.cpp</extracomment>
        <translation>Ordner (*)</translation>
    </message>
    <message>
        <source>The preview was cancelled; nothing of it was kept.</source>
        <extracomment>src/app/studio/StudioExports.cpp</extracomment>
        <translation>Die Vorschau wurde abgebrochen; nichts davon wurde behalten.</translation>
    </message>
    <message>
        <source>Examples</source>
        <extracomment>src/app/studio/StudioHelp.cpp</extracomment>
        <translation>Beispiele</translation>
    </message>
    <message>
        <source>the example can't be unpacked there</source>
        <extracomment>src/app/studio/StudioHelp.cpp</extracomment>
        <translation>das Beispiel kann dort nicht entpackt werden</translation>
    </message>
    <message>
        <source>Saved, with rigs that can't be performed: %1. %2</source>
        <extracomment>src/app/studio/StudioHelp.cpp</extracomment>
        <translation>Gespeichert, mit Rigs, die nicht ausgeführt werden können: %1. %2</translation>
    </message>
    <message>
        <source>Newer versions</source>
        <extracomment>src/app/studio/StudioHelp.cpp</extracomment>
        <translation>Neuere Versionen</translation>
    </message>
    <message>
        <source>May the program ask a server for newer versions once a week? It sends its version and the kind of this computer, and nothing else. The preferences change the answer at any time.</source>
        <extracomment>src/app/studio/StudioHelp.cpp</extracomment>
        <translation>Darf das Programm einmal in der Woche einen Server nach neueren Versionen fragen? Es sendet seine Version und die Art dieses Rechners, sonst nichts. In den Einstellungen lässt sich die Antwort jederzeit ändern.</translation>
    </message>
    <message>
        <source>The check for newer versions is switched off. Switch it on, and look now?</source>
        <extracomment>src/app/studio/StudioHelp.cpp</extracomment>
        <translation>Die Suche nach neueren Versionen ist ausgeschaltet. Einschalten und jetzt nachsehen?</translation>
    </message>
    <message>
        <source>Looking for a newer version...</source>
        <extracomment>src/app/studio/StudioHelp.cpp</extracomment>
        <translation>Eine neuere Version wird gesucht ...</translation>
    </message>
    <message>
        <source>%1 was not opened: there is one scene at a time. Import a model from the File menu brings it into the open scene.</source>
        <extracomment>src/app/studio/StudioModels.cpp</extracomment>
        <translation>%1 wurde nicht geöffnet: Es gibt nur eine Szene zur Zeit. Modell importieren im Menü Datei bringt es in die offene Szene.</translation>
    </message>
    <message>
        <source>Models (%1)</source>
        <extracomment>src/app/studio/StudioModels.cpp</extracomment>
        <translation>Modelle (%1)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <extracomment>src/app/studio/StudioModels.cpp</extracomment>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Reading %1...</source>
        <extracomment>src/app/studio/StudioModels.cpp</extracomment>
        <translation>%1 wird gelesen ...</translation>
    </message>
    <message>
        <source>%1 is in the scene.</source>
        <extracomment>src/app/studio/StudioModels.cpp</extracomment>
        <translation>%1 ist in der Szene.</translation>
    </message>
    <message>
        <source>%1 is in the scene: %2.</source>
        <extracomment>src/app/studio/StudioModels.cpp</extracomment>
        <translation>%1 ist in der Szene: %2.</translation>
    </message>
    <message>
        <source>One more stands in the log.</source>
        <extracomment>src/app/studio/StudioModels.cpp</extracomment>
        <translation>Eine weitere Meldung steht im Protokoll.</translation>
    </message>
    <message>
        <source>%1 more stand in the log.</source>
        <extracomment>src/app/studio/StudioModels.cpp</extracomment>
        <translation>%1 weitere Meldungen stehen im Protokoll.</translation>
    </message>
    <message>
        <source>Takes (*.takes)</source>
        <extracomment>src/app/studio/StudioTakes.cpp</extracomment>
        <translation>Takes (*.takes)</translation>
    </message>
    <message>
        <source>Use take %1</source>
        <extracomment>src/app/studio/StudioTakes.cpp</extracomment>
        <translation>Take %1 verwenden</translation>
    </message>
    <message>
        <source>Simulating take %1...</source>
        <extracomment>src/app/studio/StudioTakes.cpp</extracomment>
        <translation>Take %1 wird simuliert ...</translation>
    </message>
    <message>
        <source>Take %1 was simulated, but its poses are not those of back then: the ground, another node or the program has changed.</source>
        <extracomment>src/app/studio/StudioTakes.cpp</extracomment>
        <translation>Take %1 wurde simuliert, aber seine Posen sind nicht die von damals: Der Boden, ein anderer Knoten oder das Programm hat sich geändert.</translation>
    </message>
    <message>
        <source>Delete take %1</source>
        <extracomment>src/app/studio/StudioTakes.cpp</extracomment>
        <translation>Take %1 löschen</translation>
    </message>
    <message>
        <source>Delete take %1 for good? Undo does not bring it back.</source>
        <extracomment>src/app/studio/StudioTakes.cpp</extracomment>
        <translation>Take %1 endgültig löschen? Rückgängig bringt ihn nicht zurück.</translation>
    </message>
    <message>
        <source>Export take %1</source>
        <extracomment>src/app/studio/StudioTakes.cpp</extracomment>
        <translation>Take %1 exportieren</translation>
    </message>
    <message>
        <source>Import takes</source>
        <extracomment>src/app/studio/StudioTakes.cpp</extracomment>
        <translation>Takes importieren</translation>
    </message>
    <message>
        <source>One take was imported.</source>
        <extracomment>src/app/studio/StudioTakes.cpp</extracomment>
        <translation>Ein Take wurde importiert.</translation>
    </message>
    <message>
        <source>%1 takes were imported.</source>
        <extracomment>src/app/studio/StudioTakes.cpp</extracomment>
        <translation>%1 Takes wurden importiert.</translation>
    </message>
    <message>
        <source>Mark a part of the time line first: by Shift+F7 and F7 at its begin and end, or by dragging with Ctrl held.</source>
        <extracomment>src/app/studio/StudioTakes.cpp</extracomment>
        <translation>Markieren Sie zuerst einen Teil der Zeitleiste: mit Umschalt+F7 und F7 an Beginn und Ende oder durch Ziehen mit gehaltener Strg-Taste.</translation>
    </message>
    <message>
        <source>Mark a part of the time line first.</source>
        <extracomment>src/app/studio/StudioTakes.cpp</extracomment>
        <translation>Markieren Sie zuerst einen Teil der Zeitleiste.</translation>
    </message>
    <message>
        <source>%1 follows the line of %2 m, from %3 to %4 s.</source>
        <extracomment>src/app/studio/StudioTakes.cpp</extracomment>
        <translation>%1 folgt der Linie von %2 m, von %3 bis %4 s.</translation>
    </message>
    <message>
        <source>Off the line: %1 m on average, %2 m at most, at %3 s; in 95 of 100 frames within %4 m.</source>
        <extracomment>src/app/studio/StudioTakes.cpp</extracomment>
        <translation>Neben der Linie: im Mittel %1 m, höchstens %2 m, bei %3 s; in 95 von 100 Frames unter %4 m.</translation>
    </message>
    <message>
        <source>At the end: %1 s early.</source>
        <extracomment>src/app/studio/StudioTakes.cpp</extracomment>
        <translation>Am Ende: %1 s zu früh.</translation>
    </message>
    <message>
        <source>At the end: %1 s late.</source>
        <extracomment>src/app/studio/StudioTakes.cpp</extracomment>
        <translation>Am Ende: %1 s zu spät.</translation>
    </message>
    <message>
        <source>Its speed differs by %1 m/s at most, at %2 s.</source>
        <extracomment>src/app/studio/StudioTakes.cpp</extracomment>
        <translation>Seine Geschwindigkeit weicht um höchstens %1 m/s ab, bei %2 s.</translation>
    </message>
    <message>
        <source>At %1 s it has left the line for good: it is farther off than %2 m.</source>
        <extracomment>src/app/studio/StudioTakes.cpp</extracomment>
        <translation>Bei %1 s hat es die Linie endgültig verlassen: Es ist weiter weg als %2 m.</translation>
    </message>
    <message>
        <source>No rig here follows a line by itself: add a 4WheelerExt and drive it.</source>
        <extracomment>src/app/studio/StudioTakes.cpp</extracomment>
        <translation>Kein Rig hier folgt von selbst einer Linie: Fügen Sie einen 4WheelerExt hinzu und fahren Sie ihn.</translation>
    </message>
    <message>
        <source>Following the line of %1...</source>
        <extracomment>src/app/studio/StudioTakes.cpp</extracomment>
        <translation>Folgt der Linie von %1...</translation>
    </message>
    <message>
        <source>The sound can't be played: %1</source>
        <extracomment>src/app/studio/StudioTime.cpp</extracomment>
        <translation>Der Ton kann nicht abgespielt werden: %1</translation>
    </message>
    <message>
        <source>The sound %1 is not heard: %2. Choose another, or put it back there.</source>
        <extracomment>src/app/studio/StudioTime.cpp</extracomment>
        <translation>Der Ton %1 ist nicht zu hören: %2. Wählen Sie einen anderen oder legen Sie ihn wieder dorthin.</translation>
    </message>
    <message>
        <source>Picture behind the camera</source>
        <extracomment>src/app/studio/StudioTime.cpp; src/app/studio/windows/MediaWindow.cpp</extracomment>
        <translation>Bild hinter der Kamera</translation>
    </message>
    <message>
        <source>No camera is selected or looked through</source>
        <extracomment>src/app/studio/StudioTime.cpp</extracomment>
        <translation>Es ist keine Kamera ausgewählt, und durch keine wird geblickt</translation>
    </message>
    <message>
        <source>select a camera in the scene first</source>
        <extracomment>src/app/studio/StudioTime.cpp</extracomment>
        <translation>wählen Sie zuerst in der Szene eine Kamera aus</translation>
    </message>
    <message>
        <source>Nothing has been recorded of the selected rig.</source>
        <extracomment>src/app/studio/timeline/CurvePaint.cpp; src/app/studio/timeline/CurveStrip.cpp</extracomment>
        <translation>Vom ausgewählten Rig ist nichts aufgenommen.</translation>
    </message>
    <message>
        <source>%1: %2 in frame %3</source>
        <extracomment>src/app/studio/timeline/CurveStrip.cpp</extracomment>
        <translation>%1: %2 in Bild %3</translation>
    </message>
    <message>
        <source>%1 (records %2 of %3)</source>
        <extracomment>src/app/studio/timeline/Timeline.cpp</extracomment>
        <translation>%1 (nimmt %2 von %3 auf)</translation>
    </message>
    <message>
        <source>Frame %1, %2 s, %3</source>
        <extracomment>src/app/studio/timeline/Timeline.cpp</extracomment>
        <translation>Bild %1, %2 s, %3</translation>
    </message>
    <message>
        <source>Recorded: %1</source>
        <extracomment>src/app/studio/timeline/Timeline.cpp</extracomment>
        <translation>Aufgenommen: %1</translation>
    </message>
    <message>
        <source>What is selected has no keys. Select nodes that have.</source>
        <extracomment>src/app/studio/timeline/Timeline.cpp</extracomment>
        <translation>Die Auswahl hat keine Keys. Wählen Sie Knoten aus, die welche haben.</translation>
    </message>
    <message>
        <source>There is no later key of what is selected.</source>
        <extracomment>src/app/studio/timeline/Timeline.cpp</extracomment>
        <translation>Die Auswahl hat keinen späteren Key.</translation>
    </message>
    <message>
        <source>There is no earlier key of what is selected.</source>
        <extracomment>src/app/studio/timeline/Timeline.cpp</extracomment>
        <translation>Die Auswahl hat keinen früheren Key.</translation>
    </message>
    <message>
        <source>Playback range</source>
        <extracomment>src/app/studio/timeline/Timeline.cpp; src/core/windows/MainWindowTake.cpp</extracomment>
        <translation>Abspielbereich</translation>
    </message>
    <message>
        <source>&amp;Paths of nodes</source>
        <extracomment>src/app/studio/view/overlay/Overlay.cpp</extracomment>
        <translation>&amp;Wege von Knoten</translation>
    </message>
    <message>
        <source>&amp;Ghost of the take before</source>
        <extracomment>src/app/studio/view/overlay/Overlay.cpp</extracomment>
        <translation>&amp;Geist des Takes davor</translation>
    </message>
    <message>
        <source>Wheel &amp;contacts, load and slip</source>
        <extracomment>src/app/studio/view/overlay/Overlay.cpp</extracomment>
        <translation>&amp;Aufstandspunkte, Last und Schlupf</translation>
    </message>
    <message>
        <source>&amp;Rays at the ground</source>
        <extracomment>src/app/studio/view/overlay/Overlay.cpp</extracomment>
        <translation>&amp;Strahlen zum Boden</translation>
    </message>
    <message>
        <source>&amp;Speeds of belts and carriages</source>
        <extracomment>src/app/studio/view/overlay/Overlay.cpp</extracomment>
        <translation>&amp;Tempo von Ketten und Wagen</translation>
    </message>
    <message>
        <source>S&amp;hots</source>
        <extracomment>src/app/studio/view/overlay/Overlay.cpp</extracomment>
        <translation>Sch&amp;üsse</translation>
    </message>
    <message>
        <source>&amp;Targets</source>
        <extracomment>src/app/studio/view/overlay/Overlay.cpp</extracomment>
        <translation>&amp;Ziele</translation>
    </message>
    <message>
        <source>Trac&amp;ks of rails and their waypoints</source>
        <extracomment>src/app/studio/view/overlay/Overlay.cpp</extracomment>
        <translation>Schienen und ihre Wegpun&amp;kte</translation>
    </message>
    <message>
        <source>&amp;Inputs in a take</source>
        <extracomment>src/app/studio/view/overlay/Overlay.cpp</extracomment>
        <translation>&amp;Eingänge im Take</translation>
    </message>
    <message>
        <source>&amp;Names</source>
        <extracomment>src/app/studio/view/overlay/Overlay.cpp</extracomment>
        <translation>&amp;Namen</translation>
    </message>
    <message>
        <source>Pictures a second and &amp;latency</source>
        <extracomment>src/app/studio/view/overlay/Overlay.cpp</extracomment>
        <translation>&amp;Bilder je Sekunde und Latenz</translation>
    </message>
    <message>
        <source>%1 pictures/s, %2 ms each</source>
        <extracomment>src/app/studio/view/overlay/OverlayView.cpp</extracomment>
        <translation>%1 Bilder/s, je %2 ms</translation>
    </message>
    <message>
        <source>Latency: median %1 ms, 95 % within %2 ms</source>
        <extracomment>src/app/studio/view/overlay/OverlayView.cpp</extracomment>
        <translation>Latenz: Median %1 ms, 95 % innerhalb von %2 ms</translation>
    </message>
    <message>
        <source>No inputs recorded</source>
        <extracomment>src/app/studio/windows/CurvesPage.cpp</extracomment>
        <translation>Keine Eingaben aufgenommen</translation>
    </message>
    <message>
        <source>As the rig stands</source>
        <extracomment>src/app/studio/windows/FollowWindow.cpp</extracomment>
        <translation>So wie das Rig ist</translation>
    </message>
    <message>
        <source>No copy is made.</source>
        <extracomment>src/app/studio/windows/FollowWindow.cpp</extracomment>
        <translation>Es wird keine Kopie gemacht.</translation>
    </message>
    <message>
        <source>%1; nodes: %2, meshes: %3, triangles: %4</source>
        <extracomment>src/app/studio/windows/ImportWindow.cpp</extracomment>
        <translation>%1; Knoten: %2, Netze: %3, Dreiecke: %4</translation>
    </message>
    <message>
        <source>Both are what the file tells.</source>
        <extracomment>src/app/studio/windows/ImportWindow.cpp</extracomment>
        <translation>Beides sagt die Datei.</translation>
    </message>
    <message>
        <source>The unit is what the file tells, up is a guess.</source>
        <extracomment>src/app/studio/windows/ImportWindow.cpp</extracomment>
        <translation>Die Einheit sagt die Datei, oben ist geraten.</translation>
    </message>
    <message>
        <source>Up is what the file tells, the unit is a guess.</source>
        <extracomment>src/app/studio/windows/ImportWindow.cpp</extracomment>
        <translation>Oben sagt die Datei, die Einheit ist geraten.</translation>
    </message>
    <message>
        <source>Both are guesses: the file tells neither. Look at the size.</source>
        <extracomment>src/app/studio/windows/ImportWindow.cpp</extracomment>
        <translation>Beides ist geraten: Die Datei sagt keines. Sehen Sie sich die Größe an.</translation>
    </message>
    <message>
        <source>There is no mesh in it, and so no size to see.</source>
        <extracomment>src/app/studio/windows/ImportWindow.cpp</extracomment>
        <translation>Es enthält kein Netz, deshalb ist keine Größe zu sehen.</translation>
    </message>
    <message>
        <source>%1 m wide, %2 m high, %3 m deep</source>
        <extracomment>src/app/studio/windows/ImportWindow.cpp</extracomment>
        <translation>%1 m breit, %2 m hoch, %3 m tief</translation>
    </message>
    <message>
        <source>Nodes</source>
        <extracomment>src/app/studio/windows/MakeModelWindow.cpp</extracomment>
        <translation>Knoten</translation>
    </message>
    <message>
        <source>There is no picture.</source>
        <extracomment>src/app/studio/windows/MakeModelWindow.cpp</extracomment>
        <translation>Es gibt kein Bild.</translation>
    </message>
    <message>
        <source>Pictures (*.png *.jpg *.jpeg)</source>
        <extracomment>src/app/studio/windows/MakeModelWindow.cpp</extracomment>
        <translation>Bilder (*.png *.jpg *.jpeg)</translation>
    </message>
    <message>
        <source>%1 is no PNG and no JPEG.</source>
        <extracomment>src/app/studio/windows/MakeModelWindow.cpp</extracomment>
        <translation>%1 ist kein PNG und kein JPEG.</translation>
    </message>
    <message>
        <source>Give it a title.</source>
        <extracomment>src/app/studio/windows/MakeModelWindow.cpp</extracomment>
        <translation>Geben Sie ihm einen Titel.</translation>
    </message>
    <message>
        <source>Tick a rig or a node.</source>
        <extracomment>src/app/studio/windows/MakeModelWindow.cpp</extracomment>
        <translation>Setzen Sie das Häkchen eines Rigs oder eines Knotens.</translation>
    </message>
    <message>
        <source>WAV, FLAC, Ogg or MP3. It is heard when the scene is played and in takes that are not slowed.</source>
        <extracomment>src/app/studio/windows/MediaWindow.cpp</extracomment>
        <translation>WAV, FLAC, Ogg oder MP3. Zu hören, wenn die Szene abgespielt wird, und in Takes, die nicht verlangsamt sind.</translation>
    </message>
    <message>
        <source>A picture, or any one of a numbered sequence, which then shows a picture a frame. It is seen when one looks through the camera.</source>
        <extracomment>src/app/studio/windows/MediaWindow.cpp</extracomment>
        <translation>Ein Bild oder irgendeines einer nummerierten Folge, die dann je Bild der Szene eines zeigt. Zu sehen, wenn man durch die Kamera blickt.</translation>
    </message>
    <message>
        <source>The chosen one shows at frame</source>
        <extracomment>src/app/studio/windows/MediaWindow.cpp</extracomment>
        <translation>Das gewählte steht bei Bild</translation>
    </message>
    <message>
        <source>None</source>
        <extracomment>src/app/studio/windows/MediaWindow.cpp</extracomment>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Choose a file that can be read, or none.</source>
        <extracomment>src/app/studio/windows/MediaWindow.cpp</extracomment>
        <translation>Wählen Sie eine Datei, die gelesen werden kann, oder keine.</translation>
    </message>
    <message>
        <source>There is none.</source>
        <extracomment>src/app/studio/windows/MediaWindow.cpp</extracomment>
        <translation>Es gibt keine.</translation>
    </message>
    <message>
        <source>Sounds (*.wav *.flac *.ogg *.oga *.opus *.mp3 *.aif *.aiff)</source>
        <extracomment>src/app/studio/windows/MediaWindow.cpp</extracomment>
        <translation>Töne (*.wav *.flac *.ogg *.oga *.opus *.mp3 *.aif *.aiff)</translation>
    </message>
    <message>
        <source>Pictures (*.png *.jpg *.jpeg *.bmp)</source>
        <extracomment>src/app/studio/windows/MediaWindow.cpp</extracomment>
        <translation>Bilder (*.png *.jpg *.jpeg *.bmp)</translation>
    </message>
    <message>
        <source>Rigs: %1. One node, %3 x %4 x %5 m.</source>
        <extracomment>src/app/studio/windows/ModelsWindow.cpp</extracomment>
        <translation>Rigs: %1. Ein Knoten, %3 x %4 x %5 m.</translation>
    </message>
    <message>
        <source>Rigs: %1. %2 nodes, %3 x %4 x %5 m.</source>
        <extracomment>src/app/studio/windows/ModelsWindow.cpp</extracomment>
        <translation>Rigs: %1. %2 Knoten, %3 x %4 x %5 m.</translation>
    </message>
    <message>
        <source>none</source>
        <extracomment>src/app/studio/windows/ModelsWindow.cpp</extracomment>
        <translation>keine</translation>
    </message>
    <message>
        <source>A take comes along.</source>
        <extracomment>src/app/studio/windows/ModelsWindow.cpp</extracomment>
        <translation>Ein Take kommt mit.</translation>
    </message>
    <message>
        <source>Pre-rigged models (*.prm)</source>
        <extracomment>src/app/studio/windows/ModelsWindow.cpp</extracomment>
        <translation>Vorgeriggte Modelle (*.prm)</translation>
    </message>
    <message>
        <source>Choose a model first.</source>
        <extracomment>src/app/studio/windows/ModelsWindow.cpp</extracomment>
        <translation>Wählen Sie zuerst ein Modell.</translation>
    </message>
    <message>
        <source>A pre-rigged model</source>
        <extracomment>src/app/studio/windows/ModelsWindow.cpp</extracomment>
        <translation>Ein vorgeriggtes Modell</translation>
    </message>
    <message>
        <source>No picture</source>
        <extracomment>src/app/studio/windows/PictureView.cpp</extracomment>
        <translation>Kein Bild</translation>
    </message>
    <message>
        <source>The view's own eye</source>
        <extracomment>src/app/studio/windows/PreviewWindow.cpp</extracomment>
        <translation>Das Auge der Ansicht</translation>
    </message>
    <message>
        <source>From %1 to %2 s inputs are recorded. What is ahead stays as it is.</source>
        <extracomment>src/app/studio/windows/PunchWindow.cpp</extracomment>
        <translation>Von %1 bis %2 s werden Eingaben aufgenommen. Was davor liegt, bleibt, wie es ist.</translation>
    </message>
    <message>
        <source>Its path is drawn when it is used: by itself it comes to other poses now.</source>
        <extracomment>src/app/studio/windows/TakePainter.cpp</extracomment>
        <translation>Sein Weg wird gezeichnet, wenn er verwendet wird: Von selbst ergibt er jetzt andere Posen.</translation>
    </message>
    <message>
        <source>Its path is being drawn.</source>
        <extracomment>src/app/studio/windows/TakePainter.cpp</extracomment>
        <translation>Sein Weg wird gerade gezeichnet.</translation>
    </message>
    <message>
        <source>Its path is drawn when the scene is saved, or when it is used.</source>
        <extracomment>src/app/studio/windows/TakePainter.cpp</extracomment>
        <translation>Sein Weg wird gezeichnet, wenn die Szene gespeichert ist oder er verwendet wird.</translation>
    </message>
    <message>
        <source>in the scene</source>
        <extracomment>src/app/studio/windows/TakesPage.cpp</extracomment>
        <translation>in der Szene</translation>
    </message>
    <message>
        <source>retried</source>
        <extracomment>src/app/studio/windows/TakesPage.cpp</extracomment>
        <translation>wiederholt</translation>
    </message>
    <message>
        <source>undone</source>
        <extracomment>src/app/studio/windows/TakesPage.cpp</extracomment>
        <translation>rückgängig gemacht</translation>
    </message>
    <message>
        <source>%1 s from %2 s</source>
        <extracomment>src/app/studio/windows/TakesPage.cpp</extracomment>
        <translation>%1 s ab %2 s</translation>
    </message>
    <message>
        <source>no stars</source>
        <extracomment>src/app/studio/windows/TakesPage.cpp</extracomment>
        <translation>keine Sterne</translation>
    </message>
    <message>
        <source>Choose a take first.</source>
        <extracomment>src/app/studio/windows/TakesPage.cpp</extracomment>
        <translation>Wählen Sie zuerst einen Take.</translation>
    </message>
    <message>
        <source>A double click, or Enter, puts a take back into the scene.</source>
        <extracomment>src/app/studio/windows/TakesPage.cpp</extracomment>
        <translation>Ein Doppelklick oder die Eingabetaste bringt einen Take zurück in die Szene.</translation>
    </message>
    <message>
        <source>New takes are not kept: the preferences say so.</source>
        <extracomment>src/app/studio/windows/TakesPage.cpp</extracomment>
        <translation>Neue Takes werden nicht behalten: So sagen es die Einstellungen.</translation>
    </message>
    <message>
        <source>Load profile</source>
        <extracomment>src/core/CoreEdits.cpp</extracomment>
        <translation>Profil laden</translation>
    </message>
    <message>
        <source>Load input profile</source>
        <extracomment>src/core/CoreEdits.cpp</extracomment>
        <translation>Eingabeprofil laden</translation>
    </message>
    <message>
        <source>Saved with rigs that can't be performed: %1</source>
        <extracomment>src/core/CoreImplementation.cpp</extracomment>
        <translation>Gespeichert mit Rigs, die nicht ausgeführt werden können: %1</translation>
    </message>
    <message>
        <source>A resimulation runs. Stop it first.</source>
        <extracomment>src/core/CoreImplementation.cpp</extracomment>
        <translation>Eine neue Simulation läuft. Beenden Sie sie zuerst.</translation>
    </message>
    <message>
        <source>A take runs. Stop it first.</source>
        <extracomment>src/core/CoreImplementation.cpp; src/core/windows/CalibrationPanel.cpp</extracomment>
        <translation>Ein Take läuft. Beenden Sie ihn zuerst.</translation>
    </message>
    <message>
        <source>There is no rig. Add one from the list of tools.</source>
        <extracomment>src/core/CoreImplementation.cpp</extracomment>
        <translation>Es gibt kein Rig. Fügen Sie eines aus der Liste der Werkzeuge hinzu.</translation>
    </message>
    <message>
        <source>No rig is checked. Check one in its row.</source>
        <extracomment>src/core/CoreImplementation.cpp</extracomment>
        <translation>Kein Rig hat ein Häkchen. Setzen Sie eines in seiner Zeile.</translation>
    </message>
    <message>
        <source>Stops the take</source>
        <extracomment>src/core/HotKeys.cpp</extracomment>
        <translation>Beendet den Take</translation>
    </message>
    <message>
        <source>Makes the take slower</source>
        <extracomment>src/core/HotKeys.cpp</extracomment>
        <translation>Macht den Take langsamer</translation>
    </message>
    <message>
        <source>Makes the take faster</source>
        <extracomment>src/core/HotKeys.cpp</extracomment>
        <translation>Macht den Take schneller</translation>
    </message>
    <message>
        <source>Ctrl+Alt+Space</source>
        <extracomment>src/core/HotKeys.cpp</extracomment>
        <translation>Strg+Alt+Leertaste</translation>
    </message>
    <message>
        <source>Starts a take</source>
        <extracomment>src/core/HotKeys.cpp</extracomment>
        <translation>Beginnt einen Take</translation>
    </message>
    <message>
        <source>Space</source>
        <extracomment>src/core/HotKeys.cpp</extracomment>
        <translation>Leertaste</translation>
    </message>
    <message>
        <source>Escape</source>
        <extracomment>src/core/HotKeys.cpp</extracomment>
        <translation>Esc</translation>
    </message>
    <message>
        <source>Ctrl+Z</source>
        <extracomment>src/core/HotKeys.cpp</extracomment>
        <translation>Strg+Z</translation>
    </message>
    <message>
        <source>Throws the take away and starts another</source>
        <extracomment>src/core/HotKeys.cpp</extracomment>
        <translation>Verwirft den Take und beginnt einen neuen</translation>
    </message>
    <message>
        <source>%1 is mapped to %2, which is a hot key.</source>
        <extracomment>src/core/config/InputConflicts.cpp</extracomment>
        <translation>%1 ist %2 zugeordnet, und das ist ein Tastenkürzel.</translation>
    </message>
    <message>
        <source>The specified profile is considered read-only and cannot be overwritten.</source>
        <extracomment>src/core/config/XMLFileManager.cpp</extracomment>
        <translation>Das angegebene Profil ist schreibgeschützt und kann nicht überschrieben werden.</translation>
    </message>
    <message>
        <source>Cannot rename example profiles.</source>
        <extracomment>src/core/config/XMLFileManager.cpp</extracomment>
        <translation>Beispielprofile können nicht umbenannt werden.</translation>
    </message>
    <message>
        <source>- name already exists.</source>
        <extracomment>src/core/config/XMLFileManager.cpp</extracomment>
        <translation>- der Name ist schon vergeben.</translation>
    </message>
    <message>
        <source>This will overwrite the profile</source>
        <extracomment>src/core/config/XMLFileManager.cpp</extracomment>
        <translation>Das Profil wird überschrieben</translation>
    </message>
    <message>
        <source>The profile could not be saved</source>
        <extracomment>src/core/config/XMLFileManager.cpp</extracomment>
        <translation>Das Profil konnte nicht gespeichert werden</translation>
    </message>
    <message>
        <source>The specified profile could not be renamed, please try with another name.</source>
        <extracomment>src/core/config/XMLFileManager.cpp</extracomment>
        <translation>Das angegebene Profil konnte nicht umbenannt werden. Bitte einen anderen Namen versuchen.</translation>
    </message>
    <message>
        <source>The profile already exists and cannot be overwritten.</source>
        <extracomment>src/core/config/XMLFileManager.cpp</extracomment>
        <translation>Das Profil gibt es schon, und es kann nicht überschrieben werden.</translation>
    </message>
    <message>
        <source>The profile could not be imported.</source>
        <extracomment>src/core/config/XMLFileManager.cpp</extracomment>
        <translation>Das Profil konnte nicht importiert werden.</translation>
    </message>
    <message>
        <source>Do you really want to delete the profile:</source>
        <extracomment>src/core/config/XMLFileManager.cpp</extracomment>
        <translation>Soll dieses Profil wirklich gelöscht werden:</translation>
    </message>
    <message>
        <source>Please select or specify a profile</source>
        <extracomment>src/core/config/XMLFileManager.h</extracomment>
        <translation>Bitte ein Profil auswählen oder angeben</translation>
    </message>
    <message>
        <source>Delete node</source>
        <extracomment>src/core/instances/Instance.cpp</extracomment>
        <translation>Knoten löschen</translation>
    </message>
    <message>
        <source>Check</source>
        <extracomment>src/core/instances/InstanceRows.cpp</extracomment>
        <translation>Häkchen setzen</translation>
    </message>
    <message>
        <source>Change order</source>
        <extracomment>src/core/instances/InstanceRows.cpp</extracomment>
        <translation>Reihenfolge ändern</translation>
    </message>
    <message>
        <source>the line "%1" has no colon</source>
        <extracomment>src/core/licensing/Licence.cpp</extracomment>
        <translation>die Zeile „%1“ hat keinen Doppelpunkt</translation>
    </message>
    <message>
        <source>it holds the line "%1" twice</source>
        <extracomment>src/core/licensing/Licence.cpp</extracomment>
        <translation>sie enthält die Zeile „%1“ zweimal</translation>
    </message>
    <message>
        <source>it has no line "%1"</source>
        <extracomment>src/core/licensing/Licence.cpp</extracomment>
        <translation>ihr fehlt die Zeile „%1“</translation>
    </message>
    <message>
        <source>"%1" is no day such as 2027-12-31</source>
        <extracomment>src/core/licensing/Licence.cpp</extracomment>
        <translation>„%1“ ist kein Tag wie 2027-12-31</translation>
    </message>
    <message>
        <source>its signature is cut or garbled</source>
        <extracomment>src/core/licensing/Licence.cpp</extracomment>
        <translation>ihre Unterschrift ist abgeschnitten oder verstümmelt</translation>
    </message>
    <message>
        <source>it is far too long</source>
        <extracomment>src/core/licensing/Licensing.cpp</extracomment>
        <translation>sie ist viel zu lang</translation>
    </message>
    <message>
        <source>it is no file</source>
        <extracomment>src/core/licensing/Licensing.cpp</extracomment>
        <translation>dort liegt keine Datei</translation>
    </message>
    <message>
        <source>This program needs no licence: everything is allowed.</source>
        <extracomment>src/core/licensing/Licensing.cpp</extracomment>
        <translation>Dieses Programm braucht keine Lizenz: alles ist erlaubt.</translation>
    </message>
    <message>
        <source>%1: the licence %2 of %3 is valid until %4 and covers: %5.</source>
        <extracomment>src/core/licensing/Licensing.cpp</extracomment>
        <translation>%1: Die Lizenz %2 von %3 gilt bis %4 und umfasst: %5.</translation>
    </message>
    <message>
        <source>%1: there is no licence. Put the licence file that you were sent there.</source>
        <extracomment>src/core/licensing/Licensing.cpp</extracomment>
        <translation>%1: Dort liegt keine Lizenz. Bitte die zugesandte Lizenzdatei dort ablegen.</translation>
    </message>
    <message>
        <source>The licence can't be read: %1. See to it that you may read the file.</source>
        <extracomment>src/core/licensing/Licensing.cpp</extracomment>
        <translation>Die Lizenz ist nicht lesbar: %1. Bitte für Leserechte an der Datei sorgen.</translation>
    </message>
    <message>
        <source>%1: the licence is damaged: %2. Put the file that you were sent there again.</source>
        <extracomment>src/core/licensing/Licensing.cpp</extracomment>
        <translation>%1: Die Lizenz ist beschädigt: %2. Bitte die zugesandte Datei noch einmal dort ablegen.</translation>
    </message>
    <message>
        <source>%1: the licence was not made for this program. Ask for a licence for this version.</source>
        <extracomment>src/core/licensing/Licensing.cpp</extracomment>
        <translation>%1: Die Lizenz wurde nicht für dieses Programm ausgestellt. Bitte eine Lizenz für diese Version anfordern.</translation>
    </message>
    <message>
        <source>%1: the licence was changed after it was made: its signature does not fit its text. Put the file that you were sent there again.</source>
        <extracomment>src/core/licensing/Licensing.cpp</extracomment>
        <translation>%1: Die Lizenz wurde nachträglich verändert: Ihre Unterschrift passt nicht zum Text. Bitte die zugesandte Datei noch einmal dort ablegen.</translation>
    </message>
    <message>
        <source>%1: the licence %2 of %3 ended on %4. Put a new licence there.</source>
        <extracomment>src/core/licensing/Licensing.cpp</extracomment>
        <translation>%1: Die Lizenz %2 von %3 ist am %4 abgelaufen. Bitte eine neue Lizenz dort ablegen.</translation>
    </message>
    <message>
        <source>%1: the computer's clock says %2, but the licence was used on %3 already (%4). Set the clock right. If it is right, delete %4.</source>
        <extracomment>src/core/licensing/Licensing.cpp</extracomment>
        <translation>%1: Die Uhr des Rechners zeigt den %2, die Lizenz wurde aber schon am %3 benutzt (%4). Bitte die Uhr stellen. Geht sie richtig, bitte %4 löschen.</translation>
    </message>
    <message>
        <source>%1: the licence %2 of %3 covers %4, and not "%5". Put a licence there that covers it.</source>
        <extracomment>src/core/licensing/Licensing.cpp</extracomment>
        <translation>%1: Die Lizenz %2 von %3 umfasst %4, nicht aber „%5“. Bitte eine Lizenz dort ablegen, die es umfasst.</translation>
    </message>
    <message>
        <source>seconds before a take begins</source>
        <extracomment>src/core/services/Preferences.cpp</extracomment>
        <translation>Sekunden, bevor ein Take beginnt</translation>
    </message>
    <message>
        <source>a resimulation in a window shows frames as it runs</source>
        <extracomment>src/core/services/Preferences.cpp</extracomment>
        <translation>eine neue Simulation in einem Fenster zeigt Bilder, während sie läuft</translation>
    </message>
    <message>
        <source>minutes between autosaves; 0: no autosave, no journal of takes</source>
        <extracomment>src/core/services/Preferences.cpp</extracomment>
        <translation>Minuten zwischen automatischen Sicherungen; 0: keine Sicherung, kein Mitschreiben von Takes</translation>
    </message>
    <message>
        <source>every take is kept with its scene, outside undo</source>
        <extracomment>src/core/services/Preferences.cpp</extracomment>
        <translation>jeder Take bleibt bei seiner Szene, außerhalb des Rückgängigmachens</translation>
    </message>
    <message>
        <source>takes that are kept with a scene, beside starred ones; 0: all</source>
        <extracomment>src/core/services/Preferences.cpp</extracomment>
        <translation>Takes, die mit einer Szene aufgehoben werden, außer denen mit Sternen; 0: alle</translation>
    </message>
    <message>
        <source>of the windows</source>
        <extracomment>src/core/services/Preferences.cpp</extracomment>
        <translation>der Fenster</translation>
    </message>
    <message>
        <source>colours of the windows</source>
        <extracomment>src/core/services/Preferences.cpp</extracomment>
        <translation>Farben der Fenster</translation>
    </message>
    <message>
        <source>of lengths in the windows</source>
        <extracomment>src/core/services/Preferences.cpp</extracomment>
        <translation>von Längen in den Fenstern</translation>
    </message>
    <message>
        <source>UDP port at which OSC messages move controls; 0: none</source>
        <extracomment>src/core/services/Preferences.cpp</extracomment>
        <translation>UDP-Port, an dem OSC-Nachrichten Regler bewegen; 0: keiner</translation>
    </message>
    <message>
        <source>OSC messages of other machines move controls too; else of this one alone</source>
        <extracomment>src/core/services/Preferences.cpp</extracomment>
        <translation>OSC-Nachrichten anderer Rechner bewegen auch Regler, sonst nur die dieses Rechners</translation>
    </message>
    <message>
        <source>MIDI controllers and notes move controls</source>
        <extracomment>src/core/services/Preferences.cpp</extracomment>
        <translation>MIDI-Regler und -Noten sind Eingaben</translation>
    </message>
    <message>
        <source>what a pen's position is relative to: the window below it, or the tablet</source>
        <extracomment>src/core/services/Preferences.cpp</extracomment>
        <translation>worauf sich die Lage eines Stifts bezieht: das Fenster unter ihm oder das Tablett</translation>
    </message>
    <message>
        <source>how strongly a wheel with forces is drawn by a car's front wheels (%); 0: not</source>
        <extracomment>src/core/services/Preferences.cpp</extracomment>
        <translation>wie stark die Vorderräder eines Autos an einem Lenkrad mit Kräften ziehen (%); 0: gar nicht</translation>
    </message>
    <message>
        <source>how strongly the ground shakes a wheel or pad that drives a car (%); 0: not</source>
        <extracomment>src/core/services/Preferences.cpp</extracomment>
        <translation>wie stark der Boden ein Lenkrad oder Gamepad rüttelt, das ein Auto fährt (%); 0: gar nicht</translation>
    </message>
    <message>
        <source>how strongly a gun shakes the device that fires it (%); 0: not</source>
        <extracomment>src/core/services/Preferences.cpp</extracomment>
        <translation>wie stark ein Geschütz das Gerät rüttelt, mit dem gefeuert wird (%); 0: gar nicht</translation>
    </message>
    <message>
        <source>asks a server once a week for a newer version</source>
        <extracomment>src/core/services/Preferences.cpp</extracomment>
        <translation>fragt einen Server einmal in der Woche nach einer neueren Version</translation>
    </message>
    <message>
        <source>The playback range from %1 s to %2 s is empty.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Der Abspielbereich von %1 s bis %2 s ist leer.</translation>
    </message>
    <message>
        <source>Set an end behind its start.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Setzen Sie ein Ende hinter seinem Anfang.</translation>
    </message>
    <message>
        <source>The time %1 s is at the end of the playback range, or behind it.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Die Zeit %1 s liegt am Ende des Abspielbereichs oder dahinter.</translation>
    </message>
    <message>
        <source>Go back to where the take is to begin; else the range grows.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Gehen Sie dahin zurück, wo der Take beginnen soll; sonst wächst der Bereich.</translation>
    </message>
    <message>
        <source>Go back to where the take is to begin, or let the range grow.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Gehen Sie dahin zurück, wo der Take beginnen soll, oder lassen Sie den Bereich wachsen.</translation>
    </message>
    <message>
        <source>There is no rig in the scene.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>In der Szene ist kein Rig.</translation>
    </message>
    <message>
        <source>Add one from the list of tools.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Fügen Sie eines aus der Liste der Werkzeuge hinzu.</translation>
    </message>
    <message>
        <source>A resimulation runs, so no take can begin.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Eine neue Simulation läuft, deshalb kann kein Take beginnen.</translation>
    </message>
    <message>
        <source>A take runs already.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Ein Take läuft schon.</translation>
    </message>
    <message>
        <source>Stop it first.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Beenden Sie sie zuerst.</translation>
    </message>
    <message>
        <source>Takes run %1 times slower than real time.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Takes laufen %1-mal langsamer als in Echtzeit.</translation>
    </message>
    <message>
        <source>Lower the slow factor.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Verringern Sie den Zeitlupenfaktor.</translation>
    </message>
    <message>
        <source>%1 needs a licence that is not there.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>%1 braucht eine Lizenz, die fehlt.</translation>
    </message>
    <message>
        <source>See the licence in the preferences.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Sehen Sie in den Einstellungen nach der Lizenz.</translation>
    </message>
    <message>
        <source>%1 is not checked, so it takes no part in takes.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>%1 hat kein Häkchen und nimmt deshalb an Takes nicht teil.</translation>
    </message>
    <message>
        <source>Check its row.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Setzen Sie das Häkchen in seiner Zeile.</translation>
    </message>
    <message>
        <source>%1 stands in the group %2, which is not checked.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>%1 steht in der Gruppe %2, die kein Häkchen hat.</translation>
    </message>
    <message>
        <source>Check the group.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Setzen Sie das Häkchen der Gruppe.</translation>
    </message>
    <message>
        <source>No input of %1 is mapped to a control.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Keine Eingabe von %1 ist einem Bedienelement zugeordnet.</translation>
    </message>
    <message>
        <source>Map one in the input configuration, or load an input profile.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Ordnen Sie in der Eingabekonfiguration eine zu, oder laden Sie ein Eingabeprofil.</translation>
    </message>
    <message>
        <source>%1 of %2 is mapped to %3, which is not there.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>%1 von %2 ist %3 zugeordnet, und das fehlt.</translation>
    </message>
    <message>
        <source>Plug the device in, or map the input to another control.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Schließen Sie das Gerät an, oder ordnen Sie die Eingabe einem anderen Bedienelement zu.</translation>
    </message>
    <message>
        <source>%1 of %2 gives nothing, whatever its control does.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>%1 von %2 liefert nichts, was auch immer sein Bedienelement tut.</translation>
    </message>
    <message>
        <source>Set a dead zone below 1 and a multiplier that is not 0.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Stellen Sie eine Totzone unter 1 und einen Faktor ein, der nicht 0 ist.</translation>
    </message>
    <message>
        <source>The control of %1 of %2 stands at %3, within the dead zone of %4.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Das Bedienelement von %1 von %2 steht auf %3, innerhalb der Totzone von %4.</translation>
    </message>
    <message>
        <source>Move it further, make the dead zone smaller, or calibrate the control.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Bewegen Sie es weiter, verkleinern Sie die Totzone, oder kalibrieren Sie das Bedienelement.</translation>
    </message>
    <message>
        <source>%1 meets no mesh. %2: %3.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>%1 berührt kein Netz. %2: %3.</translation>
    </message>
    <message>
        <source>Choose the ground's meshes.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Wählen Sie die Netze des Bodens.</translation>
    </message>
    <message>
        <source>Put the ground's meshes below %1.</source>
        <extracomment>src/core/take/Diagnosis.cpp</extracomment>
        <translation>Hängen Sie die Netze des Bodens unter %1.</translation>
    </message>
    <message>
        <source>Left out, with its keys as they are: %1. %2</source>
        <extracomment>src/core/take/RecordManager.cpp</extracomment>
        <translation>Ausgelassen, Keys unverändert: %1. %2</translation>
    </message>
    <message>
        <source>None of the rigs can be performed</source>
        <extracomment>src/core/take/RecordManager.cpp</extracomment>
        <translation>Keines der Rigs kann ausgeführt werden</translation>
    </message>
    <message>
        <source>99 hrs and 59 minutes</source>
        <extracomment>src/core/take/ResimulateWindow.cpp</extracomment>
        <translation>99 Stunden und 59 Minuten</translation>
    </message>
    <message>
        <source>%1 minutes and %2 seconds</source>
        <extracomment>src/core/take/ResimulateWindow.cpp</extracomment>
        <translation>%1 Minuten und %2 Sekunden</translation>
    </message>
    <message>
        <source>Resimulating frame %1 to %2...</source>
        <extracomment>src/core/take/ResimulateWindow.cpp</extracomment>
        <translation>Bilder %1 bis %2 werden neu simuliert ...</translation>
    </message>
    <message>
        <source>Current frame: %1</source>
        <extracomment>src/core/take/ResimulateWindow.cpp</extracomment>
        <translation>Aktuelles Bild: %1</translation>
    </message>
    <message>
        <source>%1 out of %2 frames.</source>
        <extracomment>src/core/take/ResimulateWindow.cpp</extracomment>
        <translation>%1 von %2 Bildern.</translation>
    </message>
    <message>
        <source>The take begins in %1 s.</source>
        <extracomment>src/core/take/RunStatus.cpp</extracomment>
        <translation>Der Take beginnt in %1 s.</translation>
    </message>
    <message>
        <source>Recording frame %1 (%2 s).</source>
        <extracomment>src/core/take/RunStatus.cpp</extracomment>
        <translation>Bild %1 wird aufgenommen (%2 s).</translation>
    </message>
    <message>
        <source>Recording frame %1 (%2 s), one frame behind.</source>
        <extracomment>src/core/take/RunStatus.cpp</extracomment>
        <translation>Bild %1 wird aufgenommen (%2 s), ein Bild im Rückstand.</translation>
    </message>
    <message>
        <source>Recording frame %1 (%2 s), %3 frames behind.</source>
        <extracomment>src/core/take/RunStatus.cpp</extracomment>
        <translation>Bild %1 wird aufgenommen (%2 s), %3 Bilder im Rückstand.</translation>
    </message>
    <message>
        <source>Resimulating frame %1 (%2 %).</source>
        <extracomment>src/core/take/RunStatus.cpp</extracomment>
        <translation>Bild %1 wird neu simuliert (%2 %).</translation>
    </message>
    <message>
        <source>Ready.</source>
        <extracomment>src/core/take/RunStatus.cpp</extracomment>
        <translation>Bereit.</translation>
    </message>
    <message>
        <source>Profiles of %1 can't be written: the licence does not cover "%2"</source>
        <extracomment>src/core/tools/Plugin.cpp</extracomment>
        <translation>Profile von %1 können nicht geschrieben werden: Die Lizenz umfasst „%2“ nicht</translation>
    </message>
    <message>
        <source>the server's answer names no version</source>
        <extracomment>src/core/update/UpdateAnswer.cpp</extracomment>
        <translation>die Antwort des Servers nennt keine Version</translation>
    </message>
    <message>
        <source>This program can't check for updates.</source>
        <extracomment>src/core/update/UpdateManager.cpp</extracomment>
        <translation>Dieses Programm kann nicht nach Updates suchen.</translation>
    </message>
    <message>
        <source>The check for updates is switched off. Switch it on in the preferences.</source>
        <extracomment>src/core/update/UpdateManager.cpp</extracomment>
        <translation>Die Suche nach Updates ist ausgeschaltet. Sie lässt sich in den Einstellungen einschalten.</translation>
    </message>
    <message>
        <source>its address is not an https one</source>
        <extracomment>src/core/update/UpdateReciever.cpp</extracomment>
        <translation>seine Adresse ist keine https-Adresse</translation>
    </message>
    <message>
        <source>%1 can't be found</source>
        <extracomment>src/core/update/UpdateReciever.cpp</extracomment>
        <translation>%1 ist nicht zu finden</translation>
    </message>
    <message>
        <source>the server does not answer as it should</source>
        <extracomment>src/core/update/UpdateReciever.cpp</extracomment>
        <translation>der Server antwortet nicht, wie er sollte</translation>
    </message>
    <message>
        <source>%1 can't be asked: %2</source>
        <extracomment>src/core/update/UpdateReciever.cpp</extracomment>
        <translation>%1 ist nicht erreichbar: %2</translation>
    </message>
    <message>
        <source>the server takes too long to answer</source>
        <extracomment>src/core/update/UpdateReciever.cpp</extracomment>
        <translation>der Server braucht zu lange für eine Antwort</translation>
    </message>
    <message>
        <source>Version %1</source>
        <extracomment>src/core/windows/AboutWindow.cpp</extracomment>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Not calibrated</source>
        <extracomment>src/core/windows/CalibrationPanel.cpp</extracomment>
        <translation>Nicht kalibriert</translation>
    </message>
    <message>
        <source>Rests at %1, full at %2</source>
        <extracomment>src/core/windows/CalibrationPanel.cpp</extracomment>
        <translation>Ruht bei %1, voll bei %2</translation>
    </message>
    <message>
        <source>Centre at %1, ends at %2 and %3</source>
        <extracomment>src/core/windows/CalibrationPanel.cpp</extracomment>
        <translation>Mitte bei %1, Enden bei %2 und %3</translation>
    </message>
    <message>
        <source>Then press Next.</source>
        <extracomment>src/core/windows/CalibrationPanel.cpp</extracomment>
        <translation>Drücken Sie dann Weiter.</translation>
    </message>
    <message>
        <source>%1 is not there. Plug it in.</source>
        <extracomment>src/core/windows/CalibrationPanel.cpp; src/unidevice/CalibrationMeasure.cpp</extracomment>
        <translation>%1 ist nicht da. Schließen Sie es an.</translation>
    </message>
    <message>
        <source>Choose a control first.</source>
        <extracomment>src/core/windows/CalibrationPanel.cpp</extracomment>
        <translation>Wählen Sie zuerst ein Bedienelement.</translation>
    </message>
    <message>
        <source>Only an axis or a slider can be calibrated.</source>
        <extracomment>src/core/windows/CalibrationPanel.cpp</extracomment>
        <translation>Nur eine Achse oder ein Schieber kann kalibriert werden.</translation>
    </message>
    <message>
        <source>This may be any device. Map the input to a control of one first.</source>
        <extracomment>src/core/windows/CalibrationPanel.cpp</extracomment>
        <translation>Das kann jedes Gerät sein. Ordnen Sie die Eingabe zuerst dem Bedienelement eines Geräts zu.</translation>
    </message>
    <message>
        <source>It is not calibrated.</source>
        <extracomment>src/core/windows/CalibrationPanel.cpp</extracomment>
        <translation>Es ist nicht kalibriert.</translation>
    </message>
    <message>
        <source>Any device</source>
        <extracomment>src/core/windows/ControlWords.cpp</extracomment>
        <translation>Irgendein Gerät</translation>
    </message>
    <message>
        <source>%1 (not there)</source>
        <extracomment>src/core/windows/ControlWords.cpp</extracomment>
        <translation>%1 (nicht da)</translation>
    </message>
    <message>
        <source>Not mapped</source>
        <extracomment>src/core/windows/ControlWords.cpp</extracomment>
        <translation>Nicht zugeordnet</translation>
    </message>
    <message>
        <source>No device is there. Plug in a pad or a wheel.</source>
        <extracomment>src/core/windows/DevicesWindow.cpp; src/core/windows/MainWindowDevices.cpp</extracomment>
        <translation>Kein Gerät ist da. Schließen Sie ein Gamepad oder ein Lenkrad an.</translation>
    </message>
    <message>
        <source>Move a control to see it. The grey band is where it was in the last second. Choose an axis to calibrate it.</source>
        <extracomment>src/core/windows/DevicesWindow.cpp</extracomment>
        <translation>Bewegen Sie ein Bedienelement, um es zu sehen. Das graue Band zeigt, wo es in der letzten Sekunde war. Wählen Sie eine Achse, um sie zu kalibrieren.</translation>
    </message>
    <message>
        <source>calibrated</source>
        <extracomment>src/core/windows/DevicesWindow.cpp</extracomment>
        <translation>kalibriert</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <extracomment>src/core/windows/DevicesWindow.cpp</extracomment>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>%1 is not there, or lacks the control. Mapped to it: %2.</source>
        <extracomment>src/core/windows/DevicesWindow.cpp</extracomment>
        <translation>%1 ist nicht da, oder ihm fehlt das Bedienelement. Ihm zugeordnet: %2.</translation>
    </message>
    <message>
        <source>No control is chosen</source>
        <extracomment>src/core/windows/DevicesWindow.cpp</extracomment>
        <translation>Kein Bedienelement ist gewählt</translation>
    </message>
    <message>
        <source>%1 takes the size and place of your car and carries it from then on. Which nodes are its body and its wheels?</source>
        <extracomment>src/core/windows/FitCarWindow.cpp</extracomment>
        <translation>%1 übernimmt Größe und Ort Ihres Autos und trägt es von da an. Welche Knoten sind seine Karosserie und seine Räder?</translation>
    </message>
    <message>
        <source>A node can't be two parts of the car.</source>
        <extracomment>src/core/windows/FitCarWindow.cpp</extracomment>
        <translation>Ein Knoten kann nicht zwei Teile des Autos sein.</translation>
    </message>
    <message>
        <source>Choose a node for each part.</source>
        <extracomment>src/core/windows/FitCarWindow.cpp</extracomment>
        <translation>Wählen Sie für jeden Teil einen Knoten.</translation>
    </message>
    <message>
        <source>Key</source>
        <extracomment>src/core/windows/HotKeysWindow.cpp</extracomment>
        <translation>Taste</translation>
    </message>
    <message>
        <source>What it does</source>
        <extracomment>src/core/windows/HotKeysWindow.cpp</extracomment>
        <translation>Was sie tut</translation>
    </message>
    <message>
        <source>When</source>
        <extracomment>src/core/windows/HotKeysWindow.cpp</extracomment>
        <translation>Wann</translation>
    </message>
    <message>
        <source>in a take</source>
        <extracomment>src/core/windows/HotKeysWindow.cpp</extracomment>
        <translation>in einem Take</translation>
    </message>
    <message>
        <source>at any other time</source>
        <extracomment>src/core/windows/HotKeysWindow.cpp</extracomment>
        <translation>zu jeder anderen Zeit</translation>
    </message>
    <message>
        <source>This rig has no inputs.</source>
        <extracomment>src/core/windows/InputConfigWindow.cpp</extracomment>
        <translation>Dieses Rig hat keine Eingaben.</translation>
    </message>
    <message>
        <source>Inputs of %1</source>
        <extracomment>src/core/windows/InputConfigWindow.cpp</extracomment>
        <translation>Eingaben von %1</translation>
    </message>
    <message>
        <source>A resimulation runs, which feeds the inputs. Stop it first.</source>
        <extracomment>src/core/windows/InputConfigWindow.cpp</extracomment>
        <translation>Eine neue Simulation läuft und speist die Eingaben. Beenden Sie sie zuerst.</translation>
    </message>
    <message>
        <source>A control is looked for. Cancel that first.</source>
        <extracomment>src/core/windows/InputConfigWindow.cpp</extracomment>
        <translation>Ein Bedienelement wird gesucht. Brechen Sie das zuerst ab.</translation>
    </message>
    <message>
        <source>This input takes a single button.</source>
        <extracomment>src/core/windows/InputConfigWindow.cpp</extracomment>
        <translation>Diese Eingabe nimmt eine einzelne Taste.</translation>
    </message>
    <message>
        <source>It is not mapped.</source>
        <extracomment>src/core/windows/InputConfigWindow.cpp</extracomment>
        <translation>Sie ist nicht zugeordnet.</translation>
    </message>
    <message>
        <source>Found %1.</source>
        <extracomment>src/core/windows/InputConfigWindow.cpp; src/unidevice/ControlFinder.cpp</extracomment>
        <translation>%1 gefunden.</translation>
    </message>
    <message>
        <source>%1: %2 Escape cancels.</source>
        <extracomment>src/core/windows/InputConfigWindow.cpp</extracomment>
        <translation>%1: %2 Esc bricht ab.</translation>
    </message>
    <message>
        <source>Nothing has changed.</source>
        <extracomment>src/core/windows/InputConfigWindow.cpp; src/unidevice/ControlFinder.cpp</extracomment>
        <translation>Nichts hat sich geändert.</translation>
    </message>
    <message>
        <source>%1 feeds %2 as well.</source>
        <extracomment>src/core/windows/InputRows.cpp</extracomment>
        <translation>%1 speist auch %2.</translation>
    </message>
    <message>
        <source>%1 feeds %2 of %3 as well.</source>
        <extracomment>src/core/windows/InputRows.cpp</extracomment>
        <translation>%1 speist auch %2 von %3.</translation>
    </message>
    <message>
        <source>Record %1</source>
        <extracomment>src/core/windows/InputRows.cpp</extracomment>
        <translation>%1 aufnehmen</translation>
    </message>
    <message>
        <source>It covers all tools.</source>
        <extracomment>src/core/windows/LicenceWindow.cpp</extracomment>
        <translation>Sie gilt für alle Werkzeuge.</translation>
    </message>
    <message>
        <source>Rigs of these tools open, show, export and save, and can't be made or performed: %1.</source>
        <extracomment>src/core/windows/LicenceWindow.cpp</extracomment>
        <translation>Rigs dieser Werkzeuge lassen sich öffnen, zeigen, exportieren und speichern, aber nicht erzeugen oder ausführen: %1.</translation>
    </message>
    <message>
        <source>%1 of %2 lines</source>
        <extracomment>src/core/windows/LogWindow.cpp</extracomment>
        <translation>%1 von %2 Zeilen</translation>
    </message>
    <message>
        <source>%1 So is one more input.</source>
        <extracomment>src/core/windows/MainWindowDevices.cpp</extracomment>
        <translation>%1 Ebenso eine weitere Eingabe.</translation>
    </message>
    <message>
        <source>%1 So are %2 more inputs.</source>
        <extracomment>src/core/windows/MainWindowDevices.cpp</extracomment>
        <translation>%1 Ebenso %2 weitere Eingaben.</translation>
    </message>
    <message>
        <source>What to do first</source>
        <extracomment>src/core/windows/MainWindowDock.cpp</extracomment>
        <translation>Was zuerst zu tun ist</translation>
    </message>
    <message>
        <source>Select a rig to see its parameters.</source>
        <extracomment>src/core/windows/MainWindowDock.cpp</extracomment>
        <translation>Wählen Sie ein Rig, um seine Parameter zu sehen.</translation>
    </message>
    <message>
        <source>The parameters stand in a window of their own.</source>
        <extracomment>src/core/windows/MainWindowDock.cpp</extracomment>
        <translation>Die Parameter stehen in einem eigenen Fenster.</translation>
    </message>
    <message>
        <source>Back into this window</source>
        <extracomment>src/core/windows/MainWindowDock.cpp</extracomment>
        <translation>Zurück in dieses Fenster</translation>
    </message>
    <message>
        <source>The check for newer versions failed: %1</source>
        <extracomment>src/core/windows/MainWindowNotice.cpp</extracomment>
        <translation>Die Suche nach neueren Versionen ist fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>This is the newest version: %1.</source>
        <extracomment>src/core/windows/MainWindowNotice.cpp</extracomment>
        <translation>Das ist die neueste Version: %1.</translation>
    </message>
    <message>
        <source>Version %1 is there; this is %2.</source>
        <extracomment>src/core/windows/MainWindowNotice.cpp</extracomment>
        <translation>Version %1 ist da; dies ist %2.</translation>
    </message>
    <message>
        <source>Rigs can be dropped on groups and between rows.</source>
        <extracomment>src/core/windows/MainWindowRigEdits.cpp</extracomment>
        <translation>Rigs lassen sich auf Gruppen und zwischen Zeilen ablegen.</translation>
    </message>
    <message>
        <source>Group</source>
        <extracomment>src/core/windows/MainWindowRigEdits.cpp</extracomment>
        <translation>Gruppe</translation>
    </message>
    <message>
        <source>Move rigs</source>
        <extracomment>src/core/windows/MainWindowRigEdits.cpp</extracomment>
        <translation>Rigs verschieben</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <extracomment>src/core/windows/MainWindowRigEdits.cpp</extracomment>
        <translation>Duplizieren</translation>
    </message>
    <message>
        <source>Ungroup</source>
        <extracomment>src/core/windows/MainWindowRigEdits.cpp</extracomment>
        <translation>Gruppierung aufheben</translation>
    </message>
    <message>
        <source>No rig yet. Double-click a tool at the left, or choose one and press Enter.</source>
        <extracomment>src/core/windows/MainWindowRigs.cpp</extracomment>
        <translation>Noch kein Rig. Doppelklicken Sie links auf ein Werkzeug, oder wählen Sie eines und drücken Sie die Eingabetaste.</translation>
    </message>
    <message>
        <source>Rig</source>
        <extracomment>src/core/windows/MainWindowRigs.cpp</extracomment>
        <translation>Rig</translation>
    </message>
    <message>
        <source>Kind</source>
        <extracomment>src/core/windows/MainWindowRigs.cpp</extracomment>
        <translation>Art</translation>
    </message>
    <message>
        <source>State</source>
        <extracomment>src/core/windows/MainWindowRigs.cpp</extracomment>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>off</source>
        <extracomment>src/core/windows/MainWindowRigs.cpp</extracomment>
        <translation>aus</translation>
    </message>
    <message>
        <source>resimulating</source>
        <extracomment>src/core/windows/MainWindowRigs.cpp</extracomment>
        <translation>simuliert</translation>
    </message>
    <message>
        <source>recording</source>
        <extracomment>src/core/windows/MainWindowRigs.cpp</extracomment>
        <translation>nimmt auf</translation>
    </message>
    <message>
        <source>recorded</source>
        <extracomment>src/core/windows/MainWindowRigs.cpp</extracomment>
        <translation>aufgenommen</translation>
    </message>
    <message>
        <source>ready</source>
        <extracomment>src/core/windows/MainWindowRigs.cpp</extracomment>
        <translation>bereit</translation>
    </message>
    <message>
        <source>Select a rig or a group first.</source>
        <extracomment>src/core/windows/MainWindowRigs.cpp</extracomment>
        <translation>Wählen Sie zuerst ein Rig oder eine Gruppe.</translation>
    </message>
    <message>
        <source>Select a group first.</source>
        <extracomment>src/core/windows/MainWindowRigs.cpp</extracomment>
        <translation>Wählen Sie zuerst eine Gruppe.</translation>
    </message>
    <message>
        <source>There is no rig yet.</source>
        <extracomment>src/core/windows/MainWindowRigs.cpp</extracomment>
        <translation>Es gibt noch kein Rig.</translation>
    </message>
    <message>
        <source>mesh</source>
        <extracomment>src/core/windows/MainWindowScene.cpp</extracomment>
        <translation>Netz</translation>
    </message>
    <message>
        <source>curve</source>
        <extracomment>src/core/windows/MainWindowScene.cpp</extracomment>
        <translation>Kurve</translation>
    </message>
    <message>
        <source>camera</source>
        <extracomment>src/core/windows/MainWindowScene.cpp</extracomment>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>group</source>
        <extracomment>src/core/windows/MainWindowScene.cpp</extracomment>
        <translation>Gruppe</translation>
    </message>
    <message>
        <source>Node</source>
        <extracomment>src/core/windows/MainWindowScene.cpp</extracomment>
        <translation>Knoten</translation>
    </message>
    <message>
        <source>Type</source>
        <extracomment>src/core/windows/MainWindowScene.cpp</extracomment>
        <translation>Typ</translation>
    </message>
    <message>
        <source>Keys</source>
        <extracomment>src/core/windows/MainWindowScene.cpp</extracomment>
        <translation>Keys</translation>
    </message>
    <message>
        <source>The scene is empty. Import a model, or drop a file here.</source>
        <extracomment>src/core/windows/MainWindowScene.cpp</extracomment>
        <translation>Die Szene ist leer. Importieren Sie ein Modell, oder ziehen Sie eine Datei hierher.</translation>
    </message>
    <message>
        <source>keys</source>
        <extracomment>src/core/windows/MainWindowScene.cpp</extracomment>
        <translation>Keys</translation>
    </message>
    <message>
        <source>Set the frame rate in the host.</source>
        <extracomment>src/core/windows/MainWindowTake.cpp</extracomment>
        <translation>Stellen Sie die Bildrate im Wirtsprogramm ein.</translation>
    </message>
    <message>
        <source>%1 of %2 inputs are recorded, the others played.</source>
        <extracomment>src/core/windows/MainWindowTake.cpp</extracomment>
        <translation>%1 von %2 Eingaben werden aufgenommen, die anderen abgespielt.</translation>
    </message>
    <message>
        <source>%1 of %2 inputs will be recorded, the others played.</source>
        <extracomment>src/core/windows/MainWindowTake.cpp</extracomment>
        <translation>%1 von %2 Eingaben werden aufgenommen werden, die anderen abgespielt.</translation>
    </message>
    <message>
        <source>real time</source>
        <extracomment>src/core/windows/MainWindowTake.cpp</extracomment>
        <translation>Echtzeit</translation>
    </message>
    <message>
        <source>%1 x slower</source>
        <extracomment>src/core/windows/MainWindowTake.cpp</extracomment>
        <translation>%1 x langsamer</translation>
    </message>
    <message>
        <source>No take or resimulation runs.</source>
        <extracomment>src/core/windows/MainWindowTake.cpp</extracomment>
        <translation>Kein Take und keine neue Simulation läuft.</translation>
    </message>
    <message>
        <source>Re&amp;cord %1 of %2</source>
        <extracomment>src/core/windows/MainWindowTake.cpp</extracomment>
        <translation>%1 von %2 &amp;aufnehmen</translation>
    </message>
    <message>
        <source>The last step is no take.</source>
        <extracomment>src/core/windows/MainWindowTake.cpp</extracomment>
        <translation>Der letzte Schritt ist kein Take.</translation>
    </message>
    <message>
        <source>There are no tools.</source>
        <extracomment>src/core/windows/MainWindowTools.cpp</extracomment>
        <translation>Es gibt keine Werkzeuge.</translation>
    </message>
    <message>
        <source>No tool has this in its name or description.</source>
        <extracomment>src/core/windows/MainWindowTools.cpp</extracomment>
        <translation>Kein Werkzeug hat dies in Name oder Beschreibung.</translation>
    </message>
    <message>
        <source>This tool needs a licence with the feature "%1".</source>
        <extracomment>src/core/windows/MainWindowTools.cpp</extracomment>
        <translation>Dieses Werkzeug braucht eine Lizenz mit dem Merkmal „%1“.</translation>
    </message>
    <message>
        <source>Point at a tool, or choose one with the arrow keys, to see what it does.</source>
        <extracomment>src/core/windows/MainWindowTools.cpp</extracomment>
        <translation>Zeigen Sie auf ein Werkzeug, oder wählen Sie eines mit den Pfeiltasten, um zu sehen, was es tut.</translation>
    </message>
    <message>
        <source>By %1</source>
        <extracomment>src/core/windows/MainWindowTools.cpp</extracomment>
        <translation>Von %1</translation>
    </message>
    <message>
        <source>Choose a tool first.</source>
        <extracomment>src/core/windows/MainWindowTools.cpp</extracomment>
        <translation>Wählen Sie zuerst ein Werkzeug.</translation>
    </message>
    <message>
        <source>%1 could not be created; the log tells why.</source>
        <extracomment>src/core/windows/MainWindowTools.cpp</extracomment>
        <translation>%1 konnte nicht erzeugt werden; das Protokoll sagt, warum.</translation>
    </message>
    <message>
        <source>Add %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>%1 hinzufügen</translation>
    </message>
    <message>
        <source>Change response of %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>Antwort von %1 ändern</translation>
    </message>
    <message>
        <source>Change %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>%1 ändern</translation>
    </message>
    <message>
        <source>Check %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>Häkchen für %1</translation>
    </message>
    <message>
        <source>Clone %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>%1 duplizieren</translation>
    </message>
    <message>
        <source>Create group %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>Gruppe %1 erzeugen</translation>
    </message>
    <message>
        <source>Create %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>%1 erzeugen</translation>
    </message>
    <message>
        <source>Delete group %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>Gruppe %1 löschen</translation>
    </message>
    <message>
        <source>Delete %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>%1 löschen</translation>
    </message>
    <message>
        <source>Drop %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>%1 absetzen</translation>
    </message>
    <message>
        <source>Fit %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>%1 anpassen</translation>
    </message>
    <message>
        <source>Import %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>%1 importieren</translation>
    </message>
    <message>
        <source>Map %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>%1 zuordnen</translation>
    </message>
    <message>
        <source>Move %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>%1 verschieben</translation>
    </message>
    <message>
        <source>Place %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>%1 platzieren</translation>
    </message>
    <message>
        <source>Rename %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>%1 umbenennen</translation>
    </message>
    <message>
        <source>Reset %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp; src/core/windows/ParameterRows.cpp</extracomment>
        <translation>%1 zurücksetzen</translation>
    </message>
    <message>
        <source>Scale %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>%1 skalieren</translation>
    </message>
    <message>
        <source>Select %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>%1 auswählen</translation>
    </message>
    <message>
        <source>SetParent %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>%1 umhängen</translation>
    </message>
    <message>
        <source>Turn %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>%1 drehen</translation>
    </message>
    <message>
        <source>Uncheck %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>Kein Häkchen für %1</translation>
    </message>
    <message>
        <source>As it was opened</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>Wie geöffnet</translation>
    </message>
    <message>
        <source>&amp;Undo %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>Rück&amp;gängig: %1</translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>&amp;Wiederholen: %1</translation>
    </message>
    <message>
        <source>There is nothing to undo.</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>Es gibt nichts rückgängig zu machen.</translation>
    </message>
    <message>
        <source>There is nothing to redo.</source>
        <extracomment>src/core/windows/MainWindowUndo.cpp</extracomment>
        <translation>Es gibt nichts zu wiederholen.</translation>
    </message>
    <message>
        <source>Back to %1</source>
        <extracomment>src/core/windows/ParameterRows.cpp</extracomment>
        <translation>Zurück auf %1</translation>
    </message>
    <message>
        <source>Seconds before a take</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Sekunden vor einem Take</translation>
    </message>
    <message>
        <source>Minutes between autosaves (0: none)</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Minuten zwischen Sicherungen (0: keine)</translation>
    </message>
    <message>
        <source>Show frames while a resimulation runs</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Bilder während einer neuen Simulation zeigen</translation>
    </message>
    <message>
        <source>Keep every take with its scene</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Jeden Take bei seiner Szene behalten</translation>
    </message>
    <message>
        <source>Takes kept with a scene (0: all)</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Takes je Szene (0: alle)</translation>
    </message>
    <message>
        <source>Lengths in</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Längen in</translation>
    </message>
    <message>
        <source>Metres</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Metern</translation>
    </message>
    <message>
        <source>Centimetres</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Zentimetern</translation>
    </message>
    <message>
        <source>Millimetres</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Millimetern</translation>
    </message>
    <message>
        <source>Feet</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Fuß</translation>
    </message>
    <message>
        <source>Inches</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Zoll</translation>
    </message>
    <message>
        <source>Port for OSC messages (0: none)</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Port für OSC-Nachrichten (0: keiner)</translation>
    </message>
    <message>
        <source>Take OSC messages of other machines</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>OSC-Nachrichten anderer Rechner annehmen</translation>
    </message>
    <message>
        <source>Take MIDI controllers and notes</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>MIDI-Regler und -Noten annehmen</translation>
    </message>
    <message>
        <source>A pen's position is that in</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Die Lage eines Stifts gilt für</translation>
    </message>
    <message>
        <source>The window</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Das Fenster</translation>
    </message>
    <message>
        <source>The tablet</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Das Tablett</translation>
    </message>
    <message>
        <source>Force of a car's steering (%)</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Kraft der Lenkung eines Autos (%)</translation>
    </message>
    <message>
        <source>Force of the ground on a wheel (%)</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Kraft des Bodens auf ein Lenkrad (%)</translation>
    </message>
    <message>
        <source>Force of a gun's kick (%)</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Kraft des Rückstoßes eines Geschützes (%)</translation>
    </message>
    <message>
        <source>Language</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Sprache</translation>
    </message>
    <message>
        <source>The system's</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Wie das System</translation>
    </message>
    <message>
        <source>Theme</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Farben</translation>
    </message>
    <message>
        <source>Light</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Hell</translation>
    </message>
    <message>
        <source>Dark</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>Ask a server for newer versions once a week</source>
        <extracomment>src/core/windows/PreferencesWindow.cpp</extracomment>
        <translation>Einen Server wöchentlich nach neueren Versionen fragen</translation>
    </message>
    <message>
        <source>%1 (changed)</source>
        <extracomment>src/core/windows/ProfileRow.cpp</extracomment>
        <translation>%1 (geändert)</translation>
    </message>
    <message>
        <source>This profile can't be saved over. Save it under another name.</source>
        <extracomment>src/core/windows/ProfileRow.cpp</extracomment>
        <translation>Dieses Profil kann nicht überschrieben werden. Speichern Sie es unter einem anderen Namen.</translation>
    </message>
    <message>
        <source>Choose a profile first, or save under another name.</source>
        <extracomment>src/core/windows/ProfileRow.cpp</extracomment>
        <translation>Wählen Sie zuerst ein Profil, oder speichern Sie unter einem anderen Namen.</translation>
    </message>
    <message>
        <source>Choose a profile first.</source>
        <extracomment>src/core/windows/ProfileRow.cpp</extracomment>
        <translation>Wählen Sie zuerst ein Profil.</translation>
    </message>
    <message>
        <source>This profile comes with the program.</source>
        <extracomment>src/core/windows/ProfileRow.cpp</extracomment>
        <translation>Dieses Profil kommt mit dem Programm.</translation>
    </message>
    <message>
        <source>Profiles</source>
        <extracomment>src/core/windows/ProfileRow.cpp</extracomment>
        <translation>Profile</translation>
    </message>
    <message>
        <source>Save profile</source>
        <extracomment>src/core/windows/ProfileRow.cpp</extracomment>
        <translation>Profil speichern</translation>
    </message>
    <message>
        <source>Name:</source>
        <extracomment>src/core/windows/ProfileRow.cpp</extracomment>
        <translation>Name:</translation>
    </message>
    <message>
        <source>Rename profile</source>
        <extracomment>src/core/windows/ProfileRow.cpp</extracomment>
        <translation>Profil umbenennen</translation>
    </message>
    <message>
        <source>Profiles (%1)</source>
        <extracomment>src/core/windows/ProfileRow.cpp</extracomment>
        <translation>Profile (%1)</translation>
    </message>
    <message>
        <source>Import profiles</source>
        <extracomment>src/core/windows/ProfileRow.cpp</extracomment>
        <translation>Profile importieren</translation>
    </message>
    <message>
        <source>Export profile</source>
        <extracomment>src/core/windows/ProfileRow.cpp</extracomment>
        <translation>Profil exportieren</translation>
    </message>
    <message>
        <source>control</source>
        <extracomment>src/core/windows/ResponseEditor.cpp</extracomment>
        <translation>Bedienelement</translation>
    </message>
    <message>
        <source>input</source>
        <extracomment>src/core/windows/ResponseEditor.cpp</extracomment>
        <translation>Eingabe</translation>
    </message>
    <message>
        <source>Dead zone</source>
        <extracomment>src/core/windows/ResponseEditor.cpp</extracomment>
        <translation>Totzone</translation>
    </message>
    <message>
        <source>Exponent</source>
        <extracomment>src/core/windows/ResponseEditor.cpp</extracomment>
        <translation>Exponent</translation>
    </message>
    <message>
        <source>Multiplier</source>
        <extracomment>src/core/windows/ResponseEditor.cpp; 4WheelerExt</extracomment>
        <translation>Faktor</translation>
    </message>
    <message>
        <source>Offset</source>
        <extracomment>src/core/windows/ResponseEditor.cpp</extracomment>
        <translation>Versatz</translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <extracomment>src/core/windows/ToolConfigPanel.cpp</extracomment>
        <translation>%1 und %2 weitere</translation>
    </message>
    <message>
        <source>Reset</source>
        <extracomment>src/core/windows/ToolConfigPanel.cpp</extracomment>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Nothing keeps the rigs from moving. Record a take.</source>
        <extracomment>src/core/windows/WhyWindow.cpp</extracomment>
        <translation>Nichts hindert die Rigs daran, sich zu bewegen. Nehmen Sie einen Take auf.</translation>
    </message>
    <message>
        <source>Something keeps a rig from moving:</source>
        <extracomment>src/core/windows/WhyWindow.cpp</extracomment>
        <translation>Etwas hindert ein Rig daran, sich zu bewegen:</translation>
    </message>
    <message>
        <source>The rigs can move. Worth knowing:</source>
        <extracomment>src/core/windows/WhyWindow.cpp</extracomment>
        <translation>Die Rigs können sich bewegen. Gut zu wissen:</translation>
    </message>
    <message>
        <source>This is of the whole take and of no rig.</source>
        <extracomment>src/core/windows/WhyWindow.cpp</extracomment>
        <translation>Das betrifft den ganzen Take und kein einzelnes Rig.</translation>
    </message>
    <message>
        <source>This is no number. Esc brings the old one back.</source>
        <extracomment>src/gui/component/qt/SpinField.cpp</extracomment>
        <translation>Das ist keine Zahl. Esc bringt die alte zurück.</translation>
    </message>
    <message>
        <source>UNSUPPORTED SURFACE TYPE</source>
        <extracomment>src/plugins/release/4wheelerextended/CGravityDirectionNode.cpp</extracomment>
        <translation>OBERFLÄCHE NICHT UNTERSTÜTZT</translation>
    </message>
    <message>
        <source>Error</source>
        <extracomment>src/plugins/release/4wheelerextended/CGravityDirectionNode.cpp</extracomment>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Physics World not created</source>
        <extracomment>src/plugins/release/4wheelerextended/CGravityDirectionNode.cpp</extracomment>
        <translation>Die Physikwelt wurde nicht erzeugt</translation>
    </message>
    <message>
        <source>Ground</source>
        <extracomment>src/plugins/release/4wheelerextended/CGravityDirectionNode.cpp; src/plugins/release/crawlertracks/crawlertracks_CrawlerTracks.cpp</extracomment>
        <translation>Boden</translation>
    </message>
    <message>
        <source>none: the plane y = 0 carries the car, up to 1000 m from the origin</source>
        <extracomment>src/plugins/release/4wheelerextended/CGravityDirectionNode.cpp</extracomment>
        <translation>keiner: die Ebene y = 0 trägt das Auto, bis 1000 m vom Ursprung</translation>
    </message>
    <message>
        <source>none: the plane y = 0 carries the car</source>
        <extracomment>src/plugins/release/4wheelerextended/CGravityDirectionNode.cpp</extracomment>
        <translation>keiner: die Ebene y = 0 trägt das Auto</translation>
    </message>
    <message>
        <source>Create new track</source>
        <extracomment>src/plugins/release/crawlertracks/CrawlerActions.cpp</extracomment>
        <translation>Neue Kette erzeugen</translation>
    </message>
    <message>
        <source>Track already created. Do you want to remove current track and create a new one?</source>
        <extracomment>src/plugins/release/crawlertracks/CrawlerActions.cpp</extracomment>
        <translation>Die Kette gibt es schon. Soll sie entfernt und neu erzeugt werden?</translation>
    </message>
    <message>
        <source>none: the belt hangs on its wheels</source>
        <extracomment>src/plugins/release/crawlertracks/crawlertracks_CrawlerTracks.cpp</extracomment>
        <translation>keiner: die Kette hängt an ihren Rädern</translation>
    </message>
    <message>
        <source>Target</source>
        <extracomment>src/plugins/release/firepower/CCollisionNode.cpp</extracomment>
        <translation>Ziel</translation>
    </message>
    <message>
        <source>none: projectiles meet nothing</source>
        <extracomment>src/plugins/release/firepower/CCollisionNode.cpp</extracomment>
        <translation>keines: Geschosse treffen auf nichts</translation>
    </message>
    <message>
        <source>Overwrite?</source>
        <extracomment>src/plugins/release/splinespeedcontroller/RailActions.cpp</extracomment>
        <translation>Überschreiben?</translation>
    </message>
    <message>
        <source>One of the values is not a finite number.</source>
        <extracomment>src/unidevice/Calibration.cpp</extracomment>
        <translation>Einer der Werte ist keine endliche Zahl.</translation>
    </message>
    <message>
        <source>Rest (%1) and full (%2) are too near to each other: they must lie %3 apart.</source>
        <extracomment>src/unidevice/Calibration.cpp</extracomment>
        <translation>Ruhe (%1) und voll (%2) liegen zu dicht beieinander: Sie müssen %3 auseinanderliegen.</translation>
    </message>
    <message>
        <source>The centre (%1) and the low end (%2) are too near to each other: they must lie %3 apart.</source>
        <extracomment>src/unidevice/Calibration.cpp</extracomment>
        <translation>Die Mitte (%1) und das untere Ende (%2) liegen zu dicht beieinander: Sie müssen %3 auseinanderliegen.</translation>
    </message>
    <message>
        <source>The centre (%1) does not lie between the ends (%2 and %3).</source>
        <extracomment>src/unidevice/Calibration.cpp</extracomment>
        <translation>Die Mitte (%1) liegt nicht zwischen den Enden (%2 und %3).</translation>
    </message>
    <message>
        <source>%1 has told nothing yet. Move it once and let it go.</source>
        <extracomment>src/unidevice/CalibrationMeasure.cpp</extracomment>
        <translation>%1 hat noch nichts gemeldet. Bewegen Sie es einmal, und lassen Sie es los.</translation>
    </message>
    <message>
        <source>It moved by %1 while it was to rest. Let it go and wait a moment.</source>
        <extracomment>src/unidevice/CalibrationMeasure.cpp</extracomment>
        <translation>Es hat sich um %1 bewegt, während es ruhen sollte. Lassen Sie es los, und warten Sie einen Moment.</translation>
    </message>
    <message>
        <source>Let go of the pedal or trigger.</source>
        <extracomment>src/unidevice/CalibrationMeasure.cpp</extracomment>
        <translation>Lassen Sie das Pedal oder den Abzug los.</translation>
    </message>
    <message>
        <source>Let go of it, so that it stands in its centre.</source>
        <extracomment>src/unidevice/CalibrationMeasure.cpp</extracomment>
        <translation>Lassen Sie es los, sodass es in seiner Mitte steht.</translation>
    </message>
    <message>
        <source>Press it all the way down.</source>
        <extracomment>src/unidevice/CalibrationMeasure.cpp</extracomment>
        <translation>Drücken Sie es ganz durch.</translation>
    </message>
    <message>
        <source>Move it all the way to the end that counts as 1.</source>
        <extracomment>src/unidevice/CalibrationMeasure.cpp</extracomment>
        <translation>Bewegen Sie es ganz bis zu dem Ende, das als 1 gilt.</translation>
    </message>
    <message>
        <source>Move it all the way to the other end.</source>
        <extracomment>src/unidevice/CalibrationMeasure.cpp</extracomment>
        <translation>Bewegen Sie es ganz bis zum anderen Ende.</translation>
    </message>
    <message>
        <source>It rests at %1 and is full at %2.</source>
        <extracomment>src/unidevice/CalibrationMeasure.cpp</extracomment>
        <translation>Es ruht bei %1 und ist bei %2 voll.</translation>
    </message>
    <message>
        <source>Nothing has moved. Is the device plugged in?</source>
        <extracomment>src/unidevice/ControlFinder.cpp</extracomment>
        <translation>Nichts hat sich bewegt. Ist das Gerät angeschlossen?</translation>
    </message>
    <message>
        <source>%1 has moved, which another input has already.</source>
        <extracomment>src/unidevice/ControlFinder.cpp</extracomment>
        <translation>%1 hat sich bewegt, doch das gehört schon einer anderen Eingabe.</translation>
    </message>
    <message>
        <source>%1 has moved, but this input takes no control of its kind.</source>
        <extracomment>src/unidevice/ControlFinder.cpp</extracomment>
        <translation>%1 hat sich bewegt, doch diese Eingabe nimmt kein Bedienelement dieser Art.</translation>
    </message>
    <message>
        <source>Found %1 and %2.</source>
        <extracomment>src/unidevice/ControlFinder.cpp</extracomment>
        <translation>%1 und %2 gefunden.</translation>
    </message>
    <message>
        <source>Orvel MotionFilterCam</source>
        <extracomment>MotionFilterCam</extracomment>
        <translation>Orvel MotionFilterCam</translation>
    </message>
    <message>
        <source>Orvel MotionFilterCam consists of two cameras. The AttachedCam is attached to an animated object/camera and the FollowCam will follow the AttachedCam in a smooth or bouncy fashion by filtering out any sudden or turbulent movements. It is used for both smooth motion as well as bouncy action.</source>
        <extracomment>MotionFilterCam</extracomment>
        <translation>Orvel MotionFilterCam besteht aus zwei Kameras. Die AttachedCam hängt an einem animierten Objekt oder einer Kamera; die FollowCam folgt ihr sanft oder federnd, indem sie plötzliche und unruhige Bewegungen ausfiltert. Sie eignet sich für ruhige Fahrten wie für wippende Action.</translation>
    </message>
    <message>
        <source>Camera</source>
        <extracomment>category</extracomment>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Motion Filter Parameters</source>
        <extracomment>MotionFilterCam</extracomment>
        <translation>Parameter des Bewegungsfilters</translation>
    </message>
    <message>
        <source>How the FollowCam follows the AttachedCam</source>
        <extracomment>MotionFilterCam: Motion Filter Parameters; SteadyCam: Camera Parameters</extracomment>
        <translation>Wie die FollowCam der AttachedCam folgt</translation>
    </message>
    <message>
        <source>Fixate Translations</source>
        <extracomment>MotionFilterCam</extracomment>
        <translation>Verschiebung fest koppeln</translation>
    </message>
    <message>
        <source>Fixates the camera's translations, ie no filtering</source>
        <extracomment>MotionFilterCam: Fixate Translations</extracomment>
        <translation>Koppelt die Verschiebung fest, also ohne Filter</translation>
    </message>
    <message>
        <source>Translation Response Factor</source>
        <extracomment>MotionFilterCam; SteadyCam</extracomment>
        <translation>Ansprechen der Verschiebung</translation>
    </message>
    <message>
        <source>This factor determines how fast the camera should react to changes in position</source>
        <extracomment>MotionFilterCam: Translation Response Factor; SteadyCam: Translation Response Factor</extracomment>
        <translation>Wie schnell die Kamera auf Änderungen der Position reagiert</translation>
    </message>
    <message>
        <source>Translation Smoothing Factor</source>
        <extracomment>MotionFilterCam</extracomment>
        <translation>Glättung der Verschiebung</translation>
    </message>
    <message>
        <source>This factor determines how much the camera will smooth out rebounces at a stop</source>
        <extracomment>MotionFilterCam: Translation Smoothing Factor; MotionFilterCam: Rotation Smoothing Factor</extracomment>
        <translation>Wie sehr die Kamera das Nachfedern beim Anhalten glättet</translation>
    </message>
    <message>
        <source>Translation Max Velocity</source>
        <extracomment>MotionFilterCam</extracomment>
        <translation>Höchsttempo der Verschiebung</translation>
    </message>
    <message>
        <source>This factor determines the maximum translation velocity of the camera</source>
        <extracomment>MotionFilterCam: Translation Max Velocity</extracomment>
        <translation>Höchste Geschwindigkeit der Kamera</translation>
    </message>
    <message>
        <source>Fixate Rotations</source>
        <extracomment>MotionFilterCam</extracomment>
        <translation>Drehung fest koppeln</translation>
    </message>
    <message>
        <source>Fixates the camera's rotations, ie no filtering</source>
        <extracomment>MotionFilterCam: Fixate Rotations</extracomment>
        <translation>Koppelt die Drehung fest, also ohne Filter</translation>
    </message>
    <message>
        <source>Rotation Response Factor</source>
        <extracomment>MotionFilterCam; SteadyCam; 1DRotator</extracomment>
        <translation>Ansprechen der Drehung</translation>
    </message>
    <message>
        <source>This factor determines how fast the camera should react to changes in rotation</source>
        <extracomment>MotionFilterCam: Rotation Response Factor; SteadyCam: Rotation Response Factor</extracomment>
        <translation>Wie schnell die Kamera auf Änderungen der Drehung reagiert</translation>
    </message>
    <message>
        <source>Rotation Smoothing Factor</source>
        <extracomment>MotionFilterCam</extracomment>
        <translation>Glättung der Drehung</translation>
    </message>
    <message>
        <source>Rotation Max Velocity</source>
        <extracomment>MotionFilterCam</extracomment>
        <translation>Höchsttempo der Drehung</translation>
    </message>
    <message>
        <source>This factor determines the maximum rotation velocity of the camera</source>
        <extracomment>MotionFilterCam: Rotation Max Velocity</extracomment>
        <translation>Höchste Drehgeschwindigkeit der Kamera</translation>
    </message>
    <message>
        <source>Re-Initialize</source>
        <extracomment>MotionFilterCam; SteadyCam; HandheldCam</extracomment>
        <translation>Neu einrichten</translation>
    </message>
    <message>
        <source>The next take starts without the velocity of the last</source>
        <extracomment>MotionFilterCam: Re-Initialize</extracomment>
        <translation>Der nächste Take beginnt ohne die Geschwindigkeit des letzten</translation>
    </message>
    <message>
        <source>Cuts</source>
        <extracomment>MotionFilterCam; SteadyCam</extracomment>
        <translation>Schnitte</translation>
    </message>
    <message>
        <source>What happens when the AttachedCam jumps</source>
        <extracomment>MotionFilterCam: Cuts; SteadyCam: Cuts</extracomment>
        <translation>Was geschieht, wenn die AttachedCam springt</translation>
    </message>
    <message>
        <source>Jump Threshold</source>
        <extracomment>MotionFilterCam; SteadyCam</extracomment>
        <translation>Sprungschwelle</translation>
    </message>
    <message>
        <source>Where the AttachedCam moves farther than this within a frame (m), the FollowCam is carried along and does not fly after it. 0 follows every move</source>
        <extracomment>MotionFilterCam: Jump Threshold; SteadyCam: Jump Threshold</extracomment>
        <translation>Bewegt sich die AttachedCam in einem Bild weiter als dies (m), wird die FollowCam mitgenommen und fliegt ihr nicht nach. 0 folgt jeder Bewegung</translation>
    </message>
    <message>
        <source>Spinner: Translation Response Factor</source>
        <extracomment>MotionFilterCam input; SteadyCam input</extracomment>
        <translation>Regler: Ansprechen der Verschiebung</translation>
    </message>
    <message>
        <source>Spinner: Translation Smoothing Factor</source>
        <extracomment>MotionFilterCam input</extracomment>
        <translation>Regler: Glättung der Verschiebung</translation>
    </message>
    <message>
        <source>Spinner: Translation Max Velocity</source>
        <extracomment>MotionFilterCam input</extracomment>
        <translation>Regler: Höchsttempo der Verschiebung</translation>
    </message>
    <message>
        <source>Spinner: Rotation Response Factor</source>
        <extracomment>MotionFilterCam input; SteadyCam input</extracomment>
        <translation>Regler: Ansprechen der Drehung</translation>
    </message>
    <message>
        <source>Spinner: Rotation Smoothing Factor</source>
        <extracomment>MotionFilterCam input</extracomment>
        <translation>Regler: Glättung der Drehung</translation>
    </message>
    <message>
        <source>Spinner: Rotation Max Velocity</source>
        <extracomment>MotionFilterCam input</extracomment>
        <translation>Regler: Höchsttempo der Drehung</translation>
    </message>
    <message>
        <source>Orvel SoftMotionCam</source>
        <extracomment>SteadyCam</extracomment>
        <translation>Orvel SoftMotionCam</translation>
    </message>
    <message>
        <source>Orvel SoftMotionCam consists of two cameras. The AttachedCam is attached to an animated object/camera and the FollowCam will follow the AttachedCam in a smooth fashion by filtering out any sudden or turbulent movements. Therefore it can be used as a smooth follow camera or smooth out spline controlled cameras.</source>
        <extracomment>SteadyCam</extracomment>
        <translation>Orvel SoftMotionCam besteht aus zwei Kameras. Die AttachedCam hängt an einem animierten Objekt oder einer Kamera; die FollowCam folgt ihr sanft, indem sie plötzliche und unruhige Bewegungen ausfiltert. So dient sie als ruhige Verfolgerkamera oder glättet Kamerafahrten auf Kurven.</translation>
    </message>
    <message>
        <source>General Modes</source>
        <extracomment>SteadyCam; DirectInputLink; 1DPositioner</extracomment>
        <translation>Allgemeine Modi</translation>
    </message>
    <message>
        <source>What is shown</source>
        <extracomment>SteadyCam: General Modes; DirectInputLink: General Modes; 1DPositioner: General Modes</extracomment>
        <translation>Was gezeigt wird</translation>
    </message>
    <message>
        <source>Hide AttachedCam</source>
        <extracomment>SteadyCam</extracomment>
        <translation>AttachedCam ausblenden</translation>
    </message>
    <message>
        <source>Hides the AttachedCam.</source>
        <extracomment>SteadyCam: Hide AttachedCam</extracomment>
        <translation>Blendet die AttachedCam aus.</translation>
    </message>
    <message>
        <source>Hide FollowCam</source>
        <extracomment>SteadyCam</extracomment>
        <translation>FollowCam ausblenden</translation>
    </message>
    <message>
        <source>Hides the FollowCam.</source>
        <extracomment>SteadyCam: Hide FollowCam; 4WheelerExt: Hide Follow Camera</extracomment>
        <translation>Blendet die FollowCam aus.</translation>
    </message>
    <message>
        <source>Camera Parameters</source>
        <extracomment>SteadyCam</extracomment>
        <translation>Kameraparameter</translation>
    </message>
    <message>
        <source>The next take starts to follow from the AttachedCam itself</source>
        <extracomment>SteadyCam: Re-Initialize</extracomment>
        <translation>Der nächste Take beginnt bei der AttachedCam selbst</translation>
    </message>
    <message>
        <source>Orvel DirectInputLink</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Orvel DirectInputLink</translation>
    </message>
    <message>
        <source>Orvel DirectInputLink is a link between an input device to a movement in the scene. Its main use is either as a camera tool or a tool for controlling and animating objects in the scene in real time. Six inputs move and turn an actuator within a cage; moving, turning or scaling the cage carries the whole movement along.</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Orvel DirectInputLink verbindet ein Eingabegerät mit einer Bewegung in der Szene: als Kamerawerkzeug oder um Objekte in Echtzeit zu steuern und zu animieren. Sechs Eingaben bewegen und drehen einen Aktuator in einem Käfig; wird der Käfig bewegt, gedreht oder skaliert, geht die ganze Bewegung mit.</translation>
    </message>
    <message>
        <source>Accessory</source>
        <extracomment>category</extracomment>
        <translation>Zubehör</translation>
    </message>
    <message>
        <source>Hide Helpers</source>
        <extracomment>DirectInputLink; 1DPositioner; 1DRotator</extracomment>
        <translation>Hilfsobjekte ausblenden</translation>
    </message>
    <message>
        <source>Hides the cage and the actuator.</source>
        <extracomment>DirectInputLink: Hide Helpers; 1DPositioner: Hide Helpers; 1DRotator: Hide Helpers</extracomment>
        <translation>Blendet Käfig und Aktuator aus.</translation>
    </message>
    <message>
        <source>Hide Helpers During Recording</source>
        <extracomment>DirectInputLink; 1DPositioner; 1DRotator</extracomment>
        <translation>Hilfsobjekte bei der Aufnahme ausblenden</translation>
    </message>
    <message>
        <source>Hides the cage and the actuator while a take runs.</source>
        <extracomment>DirectInputLink: Hide Helpers During Recording; 1DPositioner: Hide Helpers During Recording; 1DRotator: Hide Helpers During Recording</extracomment>
        <translation>Blendet Käfig und Aktuator während eines Takes aus.</translation>
    </message>
    <message>
        <source>Hide Camera</source>
        <extracomment>DirectInputLink; Firepower</extracomment>
        <translation>Kamera ausblenden</translation>
    </message>
    <message>
        <source>Hides the camera on the actuator.</source>
        <extracomment>DirectInputLink: Hide Camera</extracomment>
        <translation>Blendet die Kamera am Aktuator aus.</translation>
    </message>
    <message>
        <source>Input Property Parameters</source>
        <extracomment>DirectInputLink; 1DPositioner; 1DRotator</extracomment>
        <translation>Parameter der Eingaben</translation>
    </message>
    <message>
        <source>How each input is turned into movement</source>
        <extracomment>DirectInputLink: Input Property Parameters; 1DPositioner: Input Property Parameters; 1DRotator: Input Property Parameters</extracomment>
        <translation>Wie aus jeder Eingabe eine Bewegung wird</translation>
    </message>
    <message>
        <source>Forw/Backw Transl Response Factor</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Verschiebung vor/zurück: Ansprechen</translation>
    </message>
    <message>
        <source>How quickly the to respond to input value changes.</source>
        <extracomment>DirectInputLink: Forw/Backw Transl Response Factor; DirectInputLink: Right/Left Transl Response Factor; DirectInputLink: Up/Down Transl Response Factor</extracomment>
        <translation>Wie schnell auf Änderungen der Eingabe reagiert wird.</translation>
    </message>
    <message>
        <source>Forw/Backw Transl Maximum</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Verschiebung vor/zurück: Höchstwert</translation>
    </message>
    <message>
        <source>The maximum/minimum value of the input.</source>
        <extracomment>DirectInputLink: Forw/Backw Transl Maximum; DirectInputLink: Right/Left Transl Maximum; DirectInputLink: Up/Down Transl Maximum</extracomment>
        <translation>Höchster und niedrigster Wert der Eingabe.</translation>
    </message>
    <message>
        <source>Forw/Backw Transl Change Limit</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Verschiebung vor/zurück: Grenze der Änderung</translation>
    </message>
    <message>
        <source>This parameter limits the rate of change (the velocity) of the input.</source>
        <extracomment>DirectInputLink: Forw/Backw Transl Change Limit; DirectInputLink: Right/Left Transl Change Limit; DirectInputLink: Up/Down Transl Change Limit</extracomment>
        <translation>Begrenzt, wie schnell sich die Eingabe ändern kann.</translation>
    </message>
    <message>
        <source>Forw/Backw Transl Keep Trinary State</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Verschiebung vor/zurück: Dreistufig halten</translation>
    </message>
    <message>
        <source>If checked the input value is held until activated again by which it returns to zero. If an analog input is used the trigger value is 0.5 (or -0.5).</source>
        <extracomment>DirectInputLink: Forw/Backw Transl Keep Trinary State; DirectInputLink: Right/Left Transl Keep Trinary State; DirectInputLink: Up/Down Transl Keep Trinary State</extracomment>
        <translation>Hält den Wert der Eingabe, bis sie wieder betätigt wird; dann geht er auf null zurück. Bei stufenlosen Eingaben liegt die Schwelle bei 0,5 (oder -0,5).</translation>
    </message>
    <message>
        <source>Forw/Backw Transl Integrate</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Verschiebung vor/zurück: Aufsummieren</translation>
    </message>
    <message>
        <source>If checked the input value is integrated (the value is increased/decreased until the input value is zero again).</source>
        <extracomment>DirectInputLink: Forw/Backw Transl Integrate; DirectInputLink: Right/Left Transl Integrate; DirectInputLink: Up/Down Transl Integrate</extracomment>
        <translation>Summiert den Wert der Eingabe auf: Er wächst oder sinkt, bis die Eingabe wieder null ist.</translation>
    </message>
    <message>
        <source>Right/Left Transl Response Factor</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Verschiebung rechts/links: Ansprechen</translation>
    </message>
    <message>
        <source>Right/Left Transl Maximum</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Verschiebung rechts/links: Höchstwert</translation>
    </message>
    <message>
        <source>Right/Left Transl Change Limit</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Verschiebung rechts/links: Grenze der Änderung</translation>
    </message>
    <message>
        <source>Right/Left Transl Keep Trinary State</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Verschiebung rechts/links: Dreistufig halten</translation>
    </message>
    <message>
        <source>Right/Left Transl Integrate</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Verschiebung rechts/links: Aufsummieren</translation>
    </message>
    <message>
        <source>Up/Down Transl Response Factor</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Verschiebung auf/ab: Ansprechen</translation>
    </message>
    <message>
        <source>Up/Down Transl Maximum</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Verschiebung auf/ab: Höchstwert</translation>
    </message>
    <message>
        <source>Up/Down Transl Change Limit</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Verschiebung auf/ab: Grenze der Änderung</translation>
    </message>
    <message>
        <source>Up/Down Transl Keep Trinary State</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Verschiebung auf/ab: Dreistufig halten</translation>
    </message>
    <message>
        <source>Up/Down Transl Integrate</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Verschiebung auf/ab: Aufsummieren</translation>
    </message>
    <message>
        <source>Yaw (Right/Left) Response Factor</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Gieren (Rechts/Links): Ansprechen</translation>
    </message>
    <message>
        <source>Yaw (Right/Left) Maximum</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Gieren (Rechts/Links): Höchstwert</translation>
    </message>
    <message>
        <source>Yaw (Right/Left) Change Limit</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Gieren (Rechts/Links): Grenze der Änderung</translation>
    </message>
    <message>
        <source>Yaw (Right/Left) Keep Trinary State</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Gieren (Rechts/Links): Dreistufig halten</translation>
    </message>
    <message>
        <source>Yaw (Right/Left) Integrate</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Gieren (Rechts/Links): Aufsummieren</translation>
    </message>
    <message>
        <source>Pitch (Up/Down) Response Factor</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Nicken (Auf/Ab): Ansprechen</translation>
    </message>
    <message>
        <source>Pitch (Up/Down) Maximum</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Nicken (Auf/Ab): Höchstwert</translation>
    </message>
    <message>
        <source>Pitch (Up/Down) Change Limit</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Nicken (Auf/Ab): Grenze der Änderung</translation>
    </message>
    <message>
        <source>Pitch (Up/Down) Keep Trinary State</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Nicken (Auf/Ab): Dreistufig halten</translation>
    </message>
    <message>
        <source>Pitch (Up/Down) Integrate</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Nicken (Auf/Ab): Aufsummieren</translation>
    </message>
    <message>
        <source>Roll (Right/Left) Response Factor</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Rollen (Rechts/Links): Ansprechen</translation>
    </message>
    <message>
        <source>Roll (Right/Left) Maximum</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Rollen (Rechts/Links): Höchstwert</translation>
    </message>
    <message>
        <source>Roll (Right/Left) Change Limit</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Rollen (Rechts/Links): Grenze der Änderung</translation>
    </message>
    <message>
        <source>Roll (Right/Left) Keep Trinary State</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Rollen (Rechts/Links): Dreistufig halten</translation>
    </message>
    <message>
        <source>Roll (Right/Left) Integrate</source>
        <extracomment>DirectInputLink</extracomment>
        <translation>Rollen (Rechts/Links): Aufsummieren</translation>
    </message>
    <message>
        <source>Forw/Backw Transl</source>
        <extracomment>DirectInputLink input</extracomment>
        <translation>Verschiebung vor/zurück</translation>
    </message>
    <message>
        <source>Right/Left Transl</source>
        <extracomment>DirectInputLink input</extracomment>
        <translation>Verschiebung rechts/links</translation>
    </message>
    <message>
        <source>Up/Down Transl</source>
        <extracomment>DirectInputLink input</extracomment>
        <translation>Verschiebung auf/ab</translation>
    </message>
    <message>
        <source>Yaw (Right/Left)</source>
        <extracomment>DirectInputLink input</extracomment>
        <translation>Gieren (Rechts/Links)</translation>
    </message>
    <message>
        <source>Pitch (Up/Down)</source>
        <extracomment>DirectInputLink input</extracomment>
        <translation>Nicken (Auf/Ab)</translation>
    </message>
    <message>
        <source>Roll (Right/Left)</source>
        <extracomment>DirectInputLink input</extracomment>
        <translation>Rollen (Rechts/Links)</translation>
    </message>
    <message>
        <source>Orvel 1D positioner</source>
        <extracomment>1DPositioner</extracomment>
        <translation>Orvel 1D positioner</translation>
    </message>
    <message>
        <source>Orvel 1D positioner links one input to a movement along one axis. Use it for sliders, lifts, doors and everything else that runs on a straight line.</source>
        <extracomment>1DPositioner</extracomment>
        <translation>Orvel 1D positioner verbindet eine Eingabe mit einer Bewegung entlang einer Achse: für Schieber, Aufzüge, Türen und alles, was geradeaus läuft.</translation>
    </message>
    <message>
        <source>Movement</source>
        <extracomment>1DPositioner; 1DRotator; 1DScaler</extracomment>
        <translation>Bewegung</translation>
    </message>
    <message>
        <source>What the input does</source>
        <extracomment>1DPositioner: Movement; 1DRotator: Movement; 1DScaler: Movement</extracomment>
        <translation>Was die Eingabe tut</translation>
    </message>
    <message>
        <source>Axis</source>
        <extracomment>1DPositioner; 1DRotator; 1DScaler</extracomment>
        <translation>Achse</translation>
    </message>
    <message>
        <source>The axis of the cage that the input acts on.</source>
        <extracomment>1DPositioner: Axis; 1DRotator: Axis; 1DScaler: Axis</extracomment>
        <translation>Die Achse des Käfigs, auf die die Eingabe wirkt.</translation>
    </message>
    <message>
        <source>Position Response Factor</source>
        <extracomment>1DPositioner</extracomment>
        <translation>Position: Ansprechen</translation>
    </message>
    <message>
        <source>Position Maximum</source>
        <extracomment>1DPositioner</extracomment>
        <translation>Position: Höchstwert</translation>
    </message>
    <message>
        <source>Position Change Limit</source>
        <extracomment>1DPositioner</extracomment>
        <translation>Position: Grenze der Änderung</translation>
    </message>
    <message>
        <source>Position Keep Trinary State</source>
        <extracomment>1DPositioner</extracomment>
        <translation>Position: Dreistufig halten</translation>
    </message>
    <message>
        <source>Position Integrate</source>
        <extracomment>1DPositioner</extracomment>
        <translation>Position: Aufsummieren</translation>
    </message>
    <message>
        <source>Orvel 1D rotator</source>
        <extracomment>1DRotator</extracomment>
        <translation>Orvel 1D rotator</translation>
    </message>
    <message>
        <source>Orvel 1D rotator links one input to a turn about one axis. Use it for turrets, flaps, propellers, hinges and everything else that turns on a pin.</source>
        <extracomment>1DRotator</extracomment>
        <translation>Orvel 1D rotator verbindet eine Eingabe mit einer Drehung um eine Achse: für Geschütztürme, Klappen, Propeller, Scharniere und alles, was sich um einen Zapfen dreht.</translation>
    </message>
    <message>
        <source>Rotation Maximum</source>
        <extracomment>1DRotator</extracomment>
        <translation>Drehung: Höchstwert</translation>
    </message>
    <message>
        <source>Rotation Change Limit</source>
        <extracomment>1DRotator</extracomment>
        <translation>Drehung: Grenze der Änderung</translation>
    </message>
    <message>
        <source>Rotation Keep Trinary State</source>
        <extracomment>1DRotator</extracomment>
        <translation>Drehung: Dreistufig halten</translation>
    </message>
    <message>
        <source>Rotation Integrate</source>
        <extracomment>1DRotator</extracomment>
        <translation>Drehung: Aufsummieren</translation>
    </message>
    <message>
        <source>Orvel 1D scaler</source>
        <extracomment>1DScaler</extracomment>
        <translation>Orvel 1D scaler</translation>
    </message>
    <message>
        <source>Orvel 1D scaler links one input to the size of a dummy node. Use it for balloons, flames, light cones and everything else that grows and shrinks.</source>
        <extracomment>1DScaler</extracomment>
        <translation>Orvel 1D scaler verbindet eine Eingabe mit der Größe eines Hilfsknotens: für Ballons, Flammen, Lichtkegel und alles, was wächst und schrumpft.</translation>
    </message>
    <message>
        <source>All axes</source>
        <extracomment>1DScaler: Axis</extracomment>
        <translation>Alle Achsen</translation>
    </message>
    <message>
        <source>Scale Response Factor</source>
        <extracomment>1DScaler</extracomment>
        <translation>Größe: Ansprechen</translation>
    </message>
    <message>
        <source>Scale Maximum</source>
        <extracomment>1DScaler</extracomment>
        <translation>Größe: Höchstwert</translation>
    </message>
    <message>
        <source>Scale Change Limit</source>
        <extracomment>1DScaler</extracomment>
        <translation>Größe: Grenze der Änderung</translation>
    </message>
    <message>
        <source>Scale Keep Trinary State</source>
        <extracomment>1DScaler</extracomment>
        <translation>Größe: Dreistufig halten</translation>
    </message>
    <message>
        <source>Scale Integrate</source>
        <extracomment>1DScaler</extracomment>
        <translation>Größe: Aufsummieren</translation>
    </message>
    <message>
        <source>Orvel 4-Wheeler Extended</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Orvel 4-Wheeler Extended</translation>
    </message>
    <message>
        <source>Orvel 4-Wheeler Extended is a car that is driven live. It follows any ground, leans, squats, skids, burns its tires, leaves the ground and lands. Move and scale the body and the wheels to fit a model, parent the gravity direction mesh to the ground, and drive with a wheel, a pad or the keyboard. In autonomous mode it follows a target by itself.</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Orvel 4-Wheeler Extended ist ein Auto, das live gefahren wird. Es folgt jedem Boden, neigt sich, geht in die Knie, schleudert, lässt die Reifen durchdrehen, hebt ab und landet. Karosserie und Räder durch Verschieben und Skalieren an ein Modell anpassen, das Schwerkraft-Mesh unter den Boden hängen und mit Lenkrad, Gamepad oder Tastatur fahren. Im autonomen Modus folgt es selbst einem Ziel.</translation>
    </message>
    <message>
        <source>Vehicle</source>
        <extracomment>category</extracomment>
        <translation>Fahrzeug</translation>
    </message>
    <message>
        <source>Gauges (read only)</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Anzeigen (nur lesen)</translation>
    </message>
    <message>
        <source>What the car is doing</source>
        <extracomment>4WheelerExt: Gauges (read only)</extracomment>
        <translation>Was das Auto gerade tut</translation>
    </message>
    <message>
        <source>Initital Velocity (% of max)</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Anfangsgeschwindigkeit (% der höchsten)</translation>
    </message>
    <message>
        <source>Speed at which a first take starts.</source>
        <extracomment>4WheelerExt: Initital Velocity (% of max)</extracomment>
        <translation>Geschwindigkeit, mit der ein erster Take beginnt.</translation>
    </message>
    <message>
        <source>Turns scene units a second into the unit of the gauges: 3.6 is km/h.</source>
        <extracomment>4WheelerExt: Multiplier</extracomment>
        <translation>Rechnet Szeneneinheiten je Sekunde in die Einheit der Anzeigen um: 3,6 ergibt km/h.</translation>
    </message>
    <message>
        <source>World Space Maximum Velocity Gauge</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Anzeige: Höchstgeschwindigkeit in der Welt</translation>
    </message>
    <message>
        <source>Speed at full gas.</source>
        <extracomment>4WheelerExt: World Space Maximum Velocity Gauge</extracomment>
        <translation>Geschwindigkeit bei Vollgas.</translation>
    </message>
    <message>
        <source>Current Velocity</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Momentane Geschwindigkeit</translation>
    </message>
    <message>
        <source>Speed in the latest frame.</source>
        <extracomment>4WheelerExt: Current Velocity</extracomment>
        <translation>Geschwindigkeit im letzten Bild.</translation>
    </message>
    <message>
        <source>Current Velocity (% of max)</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Momentane Geschwindigkeit (% der höchsten)</translation>
    </message>
    <message>
        <source>Speed in the latest frame, of the one at full gas.</source>
        <extracomment>4WheelerExt: Current Velocity (% of max)</extracomment>
        <translation>Geschwindigkeit im letzten Bild, gemessen an der bei Vollgas.</translation>
    </message>
    <message>
        <source>World Space Acceleration Gauge (seconds from 0 to 100)</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Anzeige: Beschleunigung in der Welt (Sekunden von 0 auf 100)</translation>
    </message>
    <message>
        <source>At the largest acceleration that the car allows.</source>
        <extracomment>4WheelerExt: World Space Acceleration Gauge (seconds from 0 to 100); 4WheelerExt: World Space Acceleration Gauge (seconds from 0 to 60)</extracomment>
        <translation>Bei der größten Beschleunigung, die das Auto zulässt.</translation>
    </message>
    <message>
        <source>World Space Acceleration Gauge (seconds from 0 to 60)</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Anzeige: Beschleunigung in der Welt (Sekunden von 0 auf 60)</translation>
    </message>
    <message>
        <source>What is shown and recorded</source>
        <extracomment>4WheelerExt: General Modes</extracomment>
        <translation>Was gezeigt und aufgenommen wird</translation>
    </message>
    <message>
        <source>Re-Initialize Car Attributes</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Fahrzeugmaße neu einlesen</translation>
    </message>
    <message>
        <source>The next take starts anew: the sizes are read again from the scene and what earlier takes have left is forgotten.</source>
        <extracomment>4WheelerExt: Re-Initialize Car Attributes</extracomment>
        <translation>Der nächste Take beginnt von vorn: Die Maße werden neu aus der Szene gelesen, und was frühere Takes hinterlassen haben, ist vergessen.</translation>
    </message>
    <message>
        <source>Hides all nodes but the body, the wheels and the cameras.</source>
        <extracomment>4WheelerExt: Hide Helpers</extracomment>
        <translation>Blendet alle Knoten außer Karosserie, Rädern und Kameras aus.</translation>
    </message>
    <message>
        <source>Hides the helpers while a take runs.</source>
        <extracomment>4WheelerExt: Hide Helpers During Recording; CrawlerTracks: Hide Helpers During Recording; Firepower: Hide Helpers During Recording</extracomment>
        <translation>Blendet die Hilfsobjekte während eines Takes aus.</translation>
    </message>
    <message>
        <source>Hide Follow Camera</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Verfolgerkamera ausblenden</translation>
    </message>
    <message>
        <source>Hide Driver Camera</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Fahrerkamera ausblenden</translation>
    </message>
    <message>
        <source>Hides the DriverCam.</source>
        <extracomment>4WheelerExt: Hide Driver Camera</extracomment>
        <translation>Blendet die DriverCam aus.</translation>
    </message>
    <message>
        <source>Hide TopView Camera</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Draufsichtkamera ausblenden</translation>
    </message>
    <message>
        <source>Hides the TopViewCam.</source>
        <extracomment>4WheelerExt: Hide TopView Camera</extracomment>
        <translation>Blendet die TopViewCam aus.</translation>
    </message>
    <message>
        <source>Enable Seamless Transitions</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Nahtlose Übergänge</translation>
    </message>
    <message>
        <source>A take that starts within an earlier one goes on from there without a break.</source>
        <extracomment>4WheelerExt: Enable Seamless Transitions</extracomment>
        <translation>Ein Take, der in einem früheren beginnt, setzt dort ohne Bruch fort.</translation>
    </message>
    <message>
        <source>Keyframe only essential objects</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Keyframes nur für wesentliche Objekte</translation>
    </message>
    <message>
        <source>Neither the cameras nor the center and suspension helpers get keys.</source>
        <extracomment>4WheelerExt: Keyframe only essential objects</extracomment>
        <translation>Weder die Kameras noch die Hilfsobjekte für Mitte und Federung erhalten Keys.</translation>
    </message>
    <message>
        <source>Autonomous Mode Properties</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Autonomer Modus</translation>
    </message>
    <message>
        <source>How the car follows its target by itself</source>
        <extracomment>4WheelerExt: Autonomous Mode Properties</extracomment>
        <translation>Wie das Auto seinem Ziel selbst folgt</translation>
    </message>
    <message>
        <source>Autonomous Mode</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Autonom fahren</translation>
    </message>
    <message>
        <source>The car drives to the TargetMesh; the inputs add to that.</source>
        <extracomment>4WheelerExt: Autonomous Mode</extracomment>
        <translation>Das Auto fährt zum TargetMesh; die Eingaben kommen hinzu.</translation>
    </message>
    <message>
        <source>Autonomous mode follow strength</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Stärke der Verfolgung</translation>
    </message>
    <message>
        <source>Speed per distance to the target.</source>
        <extracomment>4WheelerExt: Autonomous mode follow strength</extracomment>
        <translation>Geschwindigkeit je Abstand zum Ziel.</translation>
    </message>
    <message>
        <source>Follow Strength Response Factor</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Ansprechen der Verfolgung</translation>
    </message>
    <message>
        <source>How quickly the speed follows the target.</source>
        <extracomment>4WheelerExt: Follow Strength Response Factor</extracomment>
        <translation>Wie schnell die Geschwindigkeit dem Ziel folgt.</translation>
    </message>
    <message>
        <source>Auto-Steering Response Factor</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Ansprechen der Selbstlenkung</translation>
    </message>
    <message>
        <source>How quickly the steering follows the target.</source>
        <extracomment>4WheelerExt: Auto-Steering Response Factor</extracomment>
        <translation>Wie schnell die Lenkung dem Ziel folgt.</translation>
    </message>
    <message>
        <source>Reverse Max Vel Mult</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Faktor des Rückwärtstempos</translation>
    </message>
    <message>
        <source>Speed backwards, as a part of that forwards.</source>
        <extracomment>4WheelerExt: Reverse Max Vel Mult</extracomment>
        <translation>Geschwindigkeit rückwärts, als Anteil der vorwärts.</translation>
    </message>
    <message>
        <source>Ignore Sphere Radius (length relative)</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Radius der Ruhekugel (in Fahrzeuglängen)</translation>
    </message>
    <message>
        <source>Distance to the target within which the car brakes and stops.</source>
        <extracomment>4WheelerExt: Ignore Sphere Radius (length relative)</extracomment>
        <translation>Abstand zum Ziel, in dem das Auto bremst und hält.</translation>
    </message>
    <message>
        <source>Steering Properties</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Lenkung</translation>
    </message>
    <message>
        <source>How the car turns</source>
        <extracomment>4WheelerExt: Steering Properties</extracomment>
        <translation>Wie das Auto lenkt</translation>
    </message>
    <message>
        <source>Maximum Steering Change Velocity</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Höchsttempo der Lenkbewegung</translation>
    </message>
    <message>
        <source>Fastest change of the steering input a second.</source>
        <extracomment>4WheelerExt: Maximum Steering Change Velocity</extracomment>
        <translation>Schnellste Änderung der Lenkung je Sekunde.</translation>
    </message>
    <message>
        <source>Speed Dependent Turn Radius Reduction Factor</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Minderung des Lenkeinschlags bei Tempo</translation>
    </message>
    <message>
        <source>How much less a fast car steers than a slow one.</source>
        <extracomment>4WheelerExt: Speed Dependent Turn Radius Reduction Factor</extracomment>
        <translation>Wie viel weniger ein schnelles Auto lenkt als ein langsames.</translation>
    </message>
    <message>
        <source>Steering Noise</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Unruhe der Lenkung</translation>
    </message>
    <message>
        <source>Random steering that grows with the speed.</source>
        <extracomment>4WheelerExt: Steering Noise</extracomment>
        <translation>Zufälliges Lenken, das mit der Geschwindigkeit wächst.</translation>
    </message>
    <message>
        <source>Steering Wheel Rot Mult</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Drehfaktor des Lenkrads</translation>
    </message>
    <message>
        <source>How far the driver's steering wheel turns.</source>
        <extracomment>4WheelerExt: Steering Wheel Rot Mult</extracomment>
        <translation>Wie weit sich das Lenkrad des Fahrers dreht.</translation>
    </message>
    <message>
        <source>Turn Base (Back Wheel Relative)</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Drehpunkt (bezogen auf die Hinterräder)</translation>
    </message>
    <message>
        <source>Where the point that the car turns about lies: 0 at the back wheels, 2 about at the front ones.</source>
        <extracomment>4WheelerExt: Turn Base (Back Wheel Relative)</extracomment>
        <translation>Wo der Punkt liegt, um den sich das Auto dreht: 0 an den Hinterrädern, 2 etwa an den Vorderrädern.</translation>
    </message>
    <message>
        <source>Suspension Properties</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Federung</translation>
    </message>
    <message>
        <source>How the body moves on its springs</source>
        <extracomment>4WheelerExt: Suspension Properties</extracomment>
        <translation>Wie sich die Karosserie auf den Federn bewegt</translation>
    </message>
    <message>
        <source>Front Stiffness</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Federhärte vorn</translation>
    </message>
    <message>
        <source>Spring rate of the front axle.</source>
        <extracomment>4WheelerExt: Front Stiffness</extracomment>
        <translation>Federrate der Vorderachse.</translation>
    </message>
    <message>
        <source>Back Stiffness</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Federhärte hinten</translation>
    </message>
    <message>
        <source>Spring rate of the back axle.</source>
        <extracomment>4WheelerExt: Back Stiffness</extracomment>
        <translation>Federrate der Hinterachse.</translation>
    </message>
    <message>
        <source>Front Damping</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Dämpfung vorn</translation>
    </message>
    <message>
        <source>Damping of the front axle.</source>
        <extracomment>4WheelerExt: Front Damping</extracomment>
        <translation>Dämpfung der Vorderachse.</translation>
    </message>
    <message>
        <source>Back Damping</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Dämpfung hinten</translation>
    </message>
    <message>
        <source>Damping of the back axle.</source>
        <extracomment>4WheelerExt: Back Damping</extracomment>
        <translation>Dämpfung der Hinterachse.</translation>
    </message>
    <message>
        <source>Tire Pressure</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Reifendruck</translation>
    </message>
    <message>
        <source>How sharply a tire follows an edge of the ground. 0 follows at once.</source>
        <extracomment>4WheelerExt: Tire Pressure</extracomment>
        <translation>Wie scharf ein Reifen einer Bodenkante folgt. 0 folgt sofort.</translation>
    </message>
    <message>
        <source>Maximum Forward Tilt Angle</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Größter Nickwinkel</translation>
    </message>
    <message>
        <source>Farthest pitch of the body (radians).</source>
        <extracomment>4WheelerExt: Maximum Forward Tilt Angle</extracomment>
        <translation>Größtes Nicken der Karosserie (Radiant).</translation>
    </message>
    <message>
        <source>Maximum Side Tilt Angle</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Größter Wankwinkel</translation>
    </message>
    <message>
        <source>Farthest roll of the body (radians).</source>
        <extracomment>4WheelerExt: Maximum Side Tilt Angle</extracomment>
        <translation>Größtes Wanken der Karosserie (Radiant).</translation>
    </message>
    <message>
        <source>Booster Stiffness Multiplier</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Faktor der Federhärte beim Boost</translation>
    </message>
    <message>
        <source>How much the booster stiffens the springs.</source>
        <extracomment>4WheelerExt: Booster Stiffness Multiplier</extracomment>
        <translation>Wie sehr der Boost die Federn versteift.</translation>
    </message>
    <message>
        <source>Mass Multiplier</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Massenfaktor</translation>
    </message>
    <message>
        <source>A heavier body moves more slowly on its springs.</source>
        <extracomment>4WheelerExt: Mass Multiplier</extracomment>
        <translation>Eine schwerere Karosserie bewegt sich langsamer auf den Federn.</translation>
    </message>
    <message>
        <source>General Properties</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Brakes, tires and gravity</source>
        <extracomment>4WheelerExt: General Properties</extracomment>
        <translation>Bremsen, Reifen und Schwerkraft</translation>
    </message>
    <message>
        <source>Fixate Wheel Center Nodes</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Radmittelknoten festhalten</translation>
    </message>
    <message>
        <source>The wheel centers stay at rest in the body.</source>
        <extracomment>4WheelerExt: Fixate Wheel Center Nodes</extracomment>
        <translation>Die Radmitten ruhen in der Karosserie.</translation>
    </message>
    <message>
        <source>Move WheelCenterMesh to ground hit point</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>WheelCenterMesh auf Bodenkontakt setzen</translation>
    </message>
    <message>
        <source>The wheel centers stand where the tires touch the ground.</source>
        <extracomment>4WheelerExt: Move WheelCenterMesh to ground hit point</extracomment>
        <translation>Die Radmitten stehen, wo die Reifen den Boden berühren.</translation>
    </message>
    <message>
        <source>Align WheelCenterMesh to ground incline</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>WheelCenterMesh mit dem Boden neigen</translation>
    </message>
    <message>
        <source>The wheel centers stand upright on the ground.</source>
        <extracomment>4WheelerExt: Align WheelCenterMesh to ground incline</extracomment>
        <translation>Die Radmitten stehen senkrecht auf dem Boden.</translation>
    </message>
    <message>
        <source>Use Reverse as ABS Brake</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Rückwärtsgang als ABS-Bremse</translation>
    </message>
    <message>
        <source>The pedal against the motion brakes until a full stop. Without it slopes change the speed.</source>
        <extracomment>4WheelerExt: Use Reverse as ABS Brake</extracomment>
        <translation>Das Pedal gegen die Fahrt bremst bis zum Stillstand. Ohne dies ändern Steigungen die Geschwindigkeit.</translation>
    </message>
    <message>
        <source>Skidding Offset Value</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Grundwert des Schleuderns</translation>
    </message>
    <message>
        <source>Skidding without any input.</source>
        <extracomment>4WheelerExt: Skidding Offset Value</extracomment>
        <translation>Schleudern ohne jede Eingabe.</translation>
    </message>
    <message>
        <source>Skidding Release Value (Lateral Vel Rel)</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Schwelle des Schleuderns (bezogen auf das Quertempo)</translation>
    </message>
    <message>
        <source>Sideways acceleration from which the tires let go.</source>
        <extracomment>4WheelerExt: Skidding Release Value (Lateral Vel Rel)</extracomment>
        <translation>Querbeschleunigung, ab der die Reifen loslassen.</translation>
    </message>
    <message>
        <source>Skidding Release Response Factor</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Ansprechen beim Ende des Schleuderns</translation>
    </message>
    <message>
        <source>How quickly the tires take hold again.</source>
        <extracomment>4WheelerExt: Skidding Release Response Factor</extracomment>
        <translation>Wie schnell die Reifen wieder greifen.</translation>
    </message>
    <message>
        <source>Gravel Shake Offset Value</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Grundwert der Schotterstöße</translation>
    </message>
    <message>
        <source>Gravel without any input.</source>
        <extracomment>4WheelerExt: Gravel Shake Offset Value</extracomment>
        <translation>Schotter ohne jede Eingabe.</translation>
    </message>
    <message>
        <source>Gravel Roughness</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Rauheit des Schotters</translation>
    </message>
    <message>
        <source>How abruptly gravel shakes.</source>
        <extracomment>4WheelerExt: Gravel Roughness</extracomment>
        <translation>Wie hart Schotter rüttelt.</translation>
    </message>
    <message>
        <source>External Force Offset Value</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Grundwert der äußeren Kraft</translation>
    </message>
    <message>
        <source>External force without any input.</source>
        <extracomment>4WheelerExt: External Force Offset Value</extracomment>
        <translation>Äußere Kraft ohne jede Eingabe.</translation>
    </message>
    <message>
        <source>Skid Brake Stop Factor</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Bremswirkung der Handbremse</translation>
    </message>
    <message>
        <source>How quickly locked wheels take the car's motion.</source>
        <extracomment>4WheelerExt: Skid Brake Stop Factor</extracomment>
        <translation>Wie schnell blockierte Räder dem Auto die Fahrt nehmen.</translation>
    </message>
    <message>
        <source>Skid Brake Rot Brake Mult</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Drehbremsfaktor der Handbremse</translation>
    </message>
    <message>
        <source>How quickly a sliding car stops turning.</source>
        <extracomment>4WheelerExt: Skid Brake Rot Brake Mult</extracomment>
        <translation>Wie schnell ein rutschendes Auto aufhört, sich zu drehen.</translation>
    </message>
    <message>
        <source>Burnout Shake</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Rütteln beim Burnout</translation>
    </message>
    <message>
        <source>How much a burnout shakes the body.</source>
        <extracomment>4WheelerExt: Burnout Shake</extracomment>
        <translation>Wie sehr ein Burnout die Karosserie rüttelt.</translation>
    </message>
    <message>
        <source>Burnout Tilting Force</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Kippkraft beim Burnout</translation>
    </message>
    <message>
        <source>How much a burnout tilts the body.</source>
        <extracomment>4WheelerExt: Burnout Tilting Force</extracomment>
        <translation>Wie sehr ein Burnout die Karosserie neigt.</translation>
    </message>
    <message>
        <source>Burnout Fadeout Factor</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Ausklingen des Burnouts</translation>
    </message>
    <message>
        <source>What is left of a burnout after each 3 ms.</source>
        <extracomment>4WheelerExt: Burnout Fadeout Factor</extracomment>
        <translation>Was nach je 3 ms von einem Burnout bleibt.</translation>
    </message>
    <message>
        <source>Random Seed Adder</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Zuschlag zum Zufallswert</translation>
    </message>
    <message>
        <source>Another number gives another noise.</source>
        <extracomment>4WheelerExt: Random Seed Adder</extracomment>
        <translation>Eine andere Zahl gibt eine andere Unruhe.</translation>
    </message>
    <message>
        <source>World Avoidance Sphere (scale relative)</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Abstandskugel zur Welt (in Fahrzeuggrößen)</translation>
    </message>
    <message>
        <source>Distance from the world's origin at which the car turns back. 0 is none.</source>
        <extracomment>4WheelerExt: World Avoidance Sphere (scale relative)</extracomment>
        <translation>Abstand vom Weltursprung, bei dem das Auto umkehrt. 0: nie.</translation>
    </message>
    <message>
        <source>Wheel Radius Multiplier</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Faktor des Radradius</translation>
    </message>
    <message>
        <source>Size of the wheels that the ground feels.</source>
        <extracomment>4WheelerExt: Wheel Radius Multiplier</extracomment>
        <translation>Größe der Räder, wie der Boden sie spürt.</translation>
    </message>
    <message>
        <source>Gravity</source>
        <extracomment>4WheelerExt; CrawlerTracks; Pendulum</extracomment>
        <translation>Schwerkraft</translation>
    </message>
    <message>
        <source>How much the car leans on slopes.</source>
        <extracomment>4WheelerExt: Gravity</extracomment>
        <translation>Wie sehr sich das Auto an Hängen neigt.</translation>
    </message>
    <message>
        <source>Wheel Ground Release Properties</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Abheben der Räder</translation>
    </message>
    <message>
        <source>How wheels leave the ground</source>
        <extracomment>4WheelerExt: Wheel Ground Release Properties</extracomment>
        <translation>Wie Räder vom Boden abheben</translation>
    </message>
    <message>
        <source>Enable Wheel Ground Release</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Räder dürfen abheben</translation>
    </message>
    <message>
        <source>Wheels hang at the end of their suspension where the ground falls away.</source>
        <extracomment>4WheelerExt: Enable Wheel Ground Release</extracomment>
        <translation>Räder hängen am Ende ihrer Federung, wo der Boden abfällt.</translation>
    </message>
    <message>
        <source>Suspension Length (Radius Relative)</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Federweg (in Radradien)</translation>
    </message>
    <message>
        <source>Longest drop of a wheel.</source>
        <extracomment>4WheelerExt: Suspension Length (Radius Relative)</extracomment>
        <translation>Weitestes Ausfedern eines Rades.</translation>
    </message>
    <message>
        <source>Maximum Wheel Extension Velocity (Radius Rel)</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Höchsttempo des Ausfederns (in Radradien)</translation>
    </message>
    <message>
        <source>Fastest drop of a wheel a second. 0 is no limit.</source>
        <extracomment>4WheelerExt: Maximum Wheel Extension Velocity (Radius Rel)</extracomment>
        <translation>Schnellstes Ausfedern eines Rades je Sekunde. 0: ohne Grenze.</translation>
    </message>
    <message>
        <source>Ray Cast Properties</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Bodenabtastung</translation>
    </message>
    <message>
        <source>How the wheels find the ground</source>
        <extracomment>4WheelerExt: Ray Cast Properties</extracomment>
        <translation>Wie die Räder den Boden finden</translation>
    </message>
    <message>
        <source>Ray Multiplier</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Strahlenfaktor</translation>
    </message>
    <message>
        <source>1 casts one ray a wheel; n casts n - 1 more forward and backward.</source>
        <extracomment>4WheelerExt: Ray Multiplier</extracomment>
        <translation>1 schickt einen Strahl je Rad, n schickt n - 1 weitere nach vorn und hinten.</translation>
    </message>
    <message>
        <source>Cast Rays at Wheel Edges</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Strahlen an den Radkanten</translation>
    </message>
    <message>
        <source>Casts the additional rays at both sides of the wheel too. With a multiplier of 1 this does nothing.</source>
        <extracomment>4WheelerExt: Cast Rays at Wheel Edges</extracomment>
        <translation>Schickt die weiteren Strahlen auch an beiden Seiten des Rades. Bei einem Faktor von 1 ohne Wirkung.</translation>
    </message>
    <message>
        <source>Degrees Per Ray</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Grad je Strahl</translation>
    </message>
    <message>
        <source>Step between the additional rays.</source>
        <extracomment>4WheelerExt: Degrees Per Ray</extracomment>
        <translation>Schritt zwischen den weiteren Strahlen.</translation>
    </message>
    <message>
        <source>Use Fast Ray Cast</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Schnelle Abtastung</translation>
    </message>
    <message>
        <source>Casts rays within the rig. Only non-animated surfaces may be used, and it requires much more memory.</source>
        <extracomment>4WheelerExt: Use Fast Ray Cast</extracomment>
        <translation>Schickt die Strahlen im Rig selbst. Nur für unbewegte Oberflächen, und es braucht viel mehr Speicher.</translation>
    </message>
    <message>
        <source>Store Ground Mesh Data</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Bodennetz mitspeichern</translation>
    </message>
    <message>
        <source>The rig keeps a copy of the ground mesh and needs the ground no longer.</source>
        <extracomment>4WheelerExt: Store Ground Mesh Data</extracomment>
        <translation>Das Rig behält eine Kopie des Bodennetzes und braucht den Boden nicht mehr.</translation>
    </message>
    <message>
        <source>Acceleration (scale relative)</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Beschleunigung (in Fahrzeuggrößen)</translation>
    </message>
    <message>
        <source>Fastest change of the speed a second.</source>
        <extracomment>4WheelerExt: Acceleration (scale relative)</extracomment>
        <translation>Schnellste Änderung der Geschwindigkeit je Sekunde.</translation>
    </message>
    <message>
        <source>Gas Pedal (Forw/Backw) Response Factor</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Gaspedal (Vor/Zurück): Ansprechen</translation>
    </message>
    <message>
        <source>How strong and fast the engine is. 0.0 gives an instant velocity.</source>
        <extracomment>4WheelerExt: Gas Pedal (Forw/Backw) Response Factor; 4WheelerExt: Gas Pedal (Forw/Backw) Maximum; 4WheelerExt input</extracomment>
        <translation>Wie stark und schnell der Motor ist. 0,0 gibt die Geschwindigkeit sofort.</translation>
    </message>
    <message>
        <source>Gas Pedal (Forw/Backw) Maximum</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Gaspedal (Vor/Zurück): Höchstwert</translation>
    </message>
    <message>
        <source>Steering Wheel (Right/Left) Response Factor</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Lenkrad (Rechts/Links): Ansprechen</translation>
    </message>
    <message>
        <source>How much and how smoothly the wheels turn</source>
        <extracomment>4WheelerExt: Steering Wheel (Right/Left) Response Factor; 4WheelerExt: Steering Wheel (Right/Left) Maximum; 4WheelerExt input</extracomment>
        <translation>Wie weit und wie sanft die Räder einschlagen</translation>
    </message>
    <message>
        <source>Steering Wheel (Right/Left) Maximum</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Lenkrad (Rechts/Links): Höchstwert</translation>
    </message>
    <message>
        <source>Booster Response Factor</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Boost: Ansprechen</translation>
    </message>
    <message>
        <source>How much and how fast the velocity will multiply</source>
        <extracomment>4WheelerExt: Booster Response Factor; 4WheelerExt: Booster Maximum; 4WheelerExt input</extracomment>
        <translation>Wie sehr und wie schnell die Geschwindigkeit vervielfacht wird</translation>
    </message>
    <message>
        <source>Booster Maximum</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Boost: Höchstwert</translation>
    </message>
    <message>
        <source>ABS Brake Response Factor</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>ABS-Bremse: Ansprechen</translation>
    </message>
    <message>
        <source>Brakes as strong as possible until a full stop</source>
        <extracomment>4WheelerExt: ABS Brake Response Factor; 4WheelerExt: ABS Brake Maximum; 4WheelerExt input</extracomment>
        <translation>Bremst so stark wie möglich bis zum Stillstand</translation>
    </message>
    <message>
        <source>ABS Brake Maximum</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>ABS-Bremse: Höchstwert</translation>
    </message>
    <message>
        <source>Skidding Response Factor</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Schleudern: Ansprechen</translation>
    </message>
    <message>
        <source>How much skidding and how fast it applies</source>
        <extracomment>4WheelerExt: Skidding Response Factor; 4WheelerExt: Skidding Maximum; 4WheelerExt input</extracomment>
        <translation>Wie viel Schleudern und wie schnell es einsetzt</translation>
    </message>
    <message>
        <source>Skidding Maximum</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Schleudern: Höchstwert</translation>
    </message>
    <message>
        <source>Skid Brake Response Factor</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Handbremse: Ansprechen</translation>
    </message>
    <message>
        <source>Locks the wheels</source>
        <extracomment>4WheelerExt: Skid Brake Response Factor; 4WheelerExt: Skid Brake Maximum; 4WheelerExt input</extracomment>
        <translation>Blockiert die Räder</translation>
    </message>
    <message>
        <source>Skid Brake Maximum</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Handbremse: Höchstwert</translation>
    </message>
    <message>
        <source>Gravel Shake Amplitude Response Factor</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Schotterstöße: Ansprechen</translation>
    </message>
    <message>
        <source>Gravel Shake Amplitude</source>
        <extracomment>4WheelerExt: Gravel Shake Amplitude Response Factor; 4WheelerExt: Gravel Shake Amplitude Maximum; 4WheelerExt input</extracomment>
        <translation>Schotterstöße</translation>
    </message>
    <message>
        <source>Gravel Shake Amplitude Maximum</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Schotterstöße: Höchstwert</translation>
    </message>
    <message>
        <source>Burnout Response Factor</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Burnout: Ansprechen</translation>
    </message>
    <message>
        <source>Creates a burnout where the back wheel(s) spin</source>
        <extracomment>4WheelerExt: Burnout Response Factor; 4WheelerExt: Burnout Maximum; 4WheelerExt input</extracomment>
        <translation>Lässt die Hinterräder durchdrehen</translation>
    </message>
    <message>
        <source>Burnout Maximum</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Burnout: Höchstwert</translation>
    </message>
    <message>
        <source>External Force Response Factor</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Äußere Kraft: Ansprechen</translation>
    </message>
    <message>
        <source>This input will apply a force in the direction of the 'ExternalForceMesh' direction</source>
        <extracomment>4WheelerExt: External Force Response Factor; 4WheelerExt: External Force Maximum; 4WheelerExt input</extracomment>
        <translation>Diese Eingabe übt eine Kraft in Richtung des 'ExternalForceMesh' aus</translation>
    </message>
    <message>
        <source>External Force Maximum</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Äußere Kraft: Höchstwert</translation>
    </message>
    <message>
        <source>Jump Properties</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Sprünge</translation>
    </message>
    <message>
        <source>How the car falls</source>
        <extracomment>4WheelerExt: Jump Properties</extracomment>
        <translation>Wie das Auto fällt</translation>
    </message>
    <message>
        <source>Jump Gravity</source>
        <extracomment>4WheelerExt</extracomment>
        <translation>Schwerkraft im Sprung</translation>
    </message>
    <message>
        <source>How fast the car falls. 1 is the earth's for a car of the size that it is created in, 0 never comes down.</source>
        <extracomment>4WheelerExt: Jump Gravity</extracomment>
        <translation>Wie schnell das Auto fällt. 1 ist wie auf der Erde für ein Auto in seiner Ausgangsgröße, 0 kommt nie herunter.</translation>
    </message>
    <message>
        <source>Gas Pedal (Forw/Backw)</source>
        <extracomment>4WheelerExt input</extracomment>
        <translation>Gaspedal (Vor/Zurück)</translation>
    </message>
    <message>
        <source>Steering Wheel (Right/Left)</source>
        <extracomment>4WheelerExt input</extracomment>
        <translation>Lenkrad (Rechts/Links)</translation>
    </message>
    <message>
        <source>Booster</source>
        <extracomment>4WheelerExt input</extracomment>
        <translation>Boost</translation>
    </message>
    <message>
        <source>ABS Brake</source>
        <extracomment>4WheelerExt input</extracomment>
        <translation>ABS-Bremse</translation>
    </message>
    <message>
        <source>Skidding</source>
        <extracomment>4WheelerExt input</extracomment>
        <translation>Schleudern</translation>
    </message>
    <message>
        <source>Skid Brake</source>
        <extracomment>4WheelerExt input</extracomment>
        <translation>Handbremse</translation>
    </message>
    <message>
        <source>Burnout</source>
        <extracomment>4WheelerExt input</extracomment>
        <translation>Burnout</translation>
    </message>
    <message>
        <source>External Force</source>
        <extracomment>4WheelerExt input</extracomment>
        <translation>Äußere Kraft</translation>
    </message>
    <message>
        <source>Orvel Spline Speed-Controller</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Orvel Spline Speed-Controller</translation>
    </message>
    <message>
        <source>Orvel Spline Speed-Controller is a simulator which enables you to control the speed of an object on a spline with high precision.Link/parent the CarriageNode to a spline, create and place out waypoints along the spline with specified speeds and press Record.</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Orvel Spline Speed-Controller steuert die Geschwindigkeit eines Objekts auf einer Kurve mit hoher Genauigkeit. Den CarriageNode unter eine Kurve hängen, Wegpunkte mit Geschwindigkeiten entlang der Kurve anlegen und aufnehmen.</translation>
    </message>
    <message>
        <source>What drives, and what is shown</source>
        <extracomment>Spline Speed-Controller: General Modes</extracomment>
        <translation>Was antreibt und was gezeigt wird</translation>
    </message>
    <message>
        <source>Input Mode Only</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Nur Eingabe</translation>
    </message>
    <message>
        <source>The inputs alone drive the carriage.</source>
        <extracomment>Spline Speed-Controller: Input Mode Only</extracomment>
        <translation>Nur die Eingaben treiben den Wagen an.</translation>
    </message>
    <message>
        <source>Hides all but the carriage while a take runs.</source>
        <extracomment>Spline Speed-Controller: Hide Helpers During Recording</extracomment>
        <translation>Blendet während eines Takes alles außer dem Wagen aus.</translation>
    </message>
    <message>
        <source>Waypoints</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Wegpunkte</translation>
    </message>
    <message>
        <source>The waypoints of the path</source>
        <extracomment>Spline Speed-Controller: Waypoints</extracomment>
        <translation>Die Wegpunkte der Bahn</translation>
    </message>
    <message>
        <source>Current Waypoint</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Aktueller Wegpunkt</translation>
    </message>
    <message>
        <source>The waypoint that is edited</source>
        <extracomment>Spline Speed-Controller: Current Waypoint</extracomment>
        <translation>Der Wegpunkt, der bearbeitet wird</translation>
    </message>
    <message>
        <source>(none)</source>
        <extracomment>Spline Speed-Controller: Current Waypoint</extracomment>
        <translation>(keiner)</translation>
    </message>
    <message>
        <source>Waypoint Creation Position (in Percent)</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Ort neuer Wegpunkte (in Prozent)</translation>
    </message>
    <message>
        <source>Where on the path a new waypoint goes</source>
        <extracomment>Spline Speed-Controller: Waypoint Creation Position (in Percent)</extracomment>
        <translation>Wo auf der Bahn ein neuer Wegpunkt entsteht</translation>
    </message>
    <message>
        <source>Create New Waypoint</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Neuer Wegpunkt</translation>
    </message>
    <message>
        <source>Adds a waypoint</source>
        <extracomment>Spline Speed-Controller: Create New Waypoint</extracomment>
        <translation>Fügt einen Wegpunkt hinzu</translation>
    </message>
    <message>
        <source>Remove Current Waypoint</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Aktuellen Wegpunkt entfernen</translation>
    </message>
    <message>
        <source>Removes the selected waypoint</source>
        <extracomment>Spline Speed-Controller: Remove Current Waypoint</extracomment>
        <translation>Entfernt den gewählten Wegpunkt</translation>
    </message>
    <message>
        <source>Make all waypoints equal to Waypoint01</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Alle Wegpunkte wie Waypoint01</translation>
    </message>
    <message>
        <source>Gives all waypoints the first one's parameters</source>
        <extracomment>Spline Speed-Controller: Make all waypoints equal to Waypoint01</extracomment>
        <translation>Gibt allen Wegpunkten die Parameter des ersten</translation>
    </message>
    <message>
        <source>Use Simplified Parameters</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Vereinfachte Parameter</translation>
    </message>
    <message>
        <source>Every waypoint uses the first one's parameters</source>
        <extracomment>Spline Speed-Controller: Use Simplified Parameters</extracomment>
        <translation>Jeder Wegpunkt verwendet die Parameter des ersten</translation>
    </message>
    <message>
        <source>Orvel Curve CV Tensions</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Spannungen der Orvel-Kurve</translation>
    </message>
    <message>
        <source>The Orvel curve at the selected waypoint</source>
        <extracomment>Spline Speed-Controller: Orvel Curve CV Tensions</extracomment>
        <translation>Die Orvel-Kurve am gewählten Wegpunkt</translation>
    </message>
    <message>
        <source>Tension In</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Spannung davor</translation>
    </message>
    <message>
        <source>How far the curve runs on straight before the waypoint</source>
        <extracomment>Spline Speed-Controller: Tension In</extracomment>
        <translation>Wie weit die Kurve vor dem Wegpunkt gerade läuft</translation>
    </message>
    <message>
        <source>Tension Out</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Spannung danach</translation>
    </message>
    <message>
        <source>How far the curve runs on straight behind the waypoint</source>
        <extracomment>Spline Speed-Controller: Tension Out</extracomment>
        <translation>Wie weit die Kurve hinter dem Wegpunkt gerade läuft</translation>
    </message>
    <message>
        <source>Selected Waypoint</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Gewählter Wegpunkt</translation>
    </message>
    <message>
        <source>How the carriage passes the selected waypoint</source>
        <extracomment>Spline Speed-Controller: Selected Waypoint</extracomment>
        <translation>Wie der Wagen den gewählten Wegpunkt passiert</translation>
    </message>
    <message>
        <source>Position on Spline (in Percent)</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Ort auf der Kurve (in Prozent)</translation>
    </message>
    <message>
        <source>Where the waypoint lies on the path</source>
        <extracomment>Spline Speed-Controller: Position on Spline (in Percent)</extracomment>
        <translation>Wo der Wegpunkt auf der Bahn liegt</translation>
    </message>
    <message>
        <source>Speed</source>
        <extracomment>Spline Speed-Controller; Spline Speed-Controller input; HandheldCam</extracomment>
        <translation>Geschwindigkeit</translation>
    </message>
    <message>
        <source>Speed from this waypoint on, in the selected unit</source>
        <extracomment>Spline Speed-Controller: Speed</extracomment>
        <translation>Geschwindigkeit ab diesem Wegpunkt, in der gewählten Einheit</translation>
    </message>
    <message>
        <source>Time Delay (frames)</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Wartezeit (Bilder)</translation>
    </message>
    <message>
        <source>Frames that the carriage stands still here</source>
        <extracomment>Spline Speed-Controller: Time Delay (frames)</extracomment>
        <translation>Bilder, die der Wagen hier stillsteht</translation>
    </message>
    <message>
        <source>Time Delay (seconds)</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Wartezeit (Sekunden)</translation>
    </message>
    <message>
        <source>The same in seconds</source>
        <extracomment>Spline Speed-Controller: Time Delay (seconds)</extracomment>
        <translation>Dasselbe in Sekunden</translation>
    </message>
    <message>
        <source>Stop Mode</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>The carriage stops here and waits for the input Start</source>
        <extracomment>Spline Speed-Controller: Stop Mode</extracomment>
        <translation>Der Wagen hält hier und wartet auf die Eingabe Start</translation>
    </message>
    <message>
        <source>Look at Target</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Auf das Ziel blicken</translation>
    </message>
    <message>
        <source>From this waypoint on the carriage looks at the waypoint's target</source>
        <extracomment>Spline Speed-Controller: Look at Target</extracomment>
        <translation>Ab diesem Wegpunkt blickt der Wagen auf dessen Ziel</translation>
    </message>
    <message>
        <source>Look at Target When Braking</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Beim Bremsen auf das Ziel blicken</translation>
    </message>
    <message>
        <source>Once it brakes, the carriage looks at the target of the waypoint behind the one ahead</source>
        <extracomment>Spline Speed-Controller: Look at Target When Braking</extracomment>
        <translation>Sobald er bremst, blickt der Wagen auf das Ziel des übernächsten Wegpunkts</translation>
    </message>
    <message>
        <source>Gyro Mode only</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Nur Kreiselmodus</translation>
    </message>
    <message>
        <source>The carriage keeps its orientation</source>
        <extracomment>Spline Speed-Controller: Gyro Mode only</extracomment>
        <translation>Der Wagen behält seine Ausrichtung</translation>
    </message>
    <message>
        <source>Yaw Mode only</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Nur Gieren</translation>
    </message>
    <message>
        <source>The carriage turns about the vertical only</source>
        <extracomment>Spline Speed-Controller: Yaw Mode only</extracomment>
        <translation>Der Wagen dreht sich nur um die Senkrechte</translation>
    </message>
    <message>
        <source>Acceleration Response Factor</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Ansprechen der Beschleunigung</translation>
    </message>
    <message>
        <source>How soon the carriage takes up a new speed; smaller is softer</source>
        <extracomment>Spline Speed-Controller: Acceleration Response Factor</extracomment>
        <translation>Wie bald der Wagen eine neue Geschwindigkeit annimmt; kleiner ist sanfter</translation>
    </message>
    <message>
        <source>Maximum Acceleration</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Höchste Beschleunigung</translation>
    </message>
    <message>
        <source>Limits the change of the speed, 0 is no limit. How much it lets through goes by the response factor and the frame rate</source>
        <extracomment>Spline Speed-Controller: Maximum Acceleration</extracomment>
        <translation>Begrenzt die Änderung der Geschwindigkeit, 0: ohne Grenze. Wie viel sie durchlässt, hängt vom Ansprechen und von der Bildrate ab</translation>
    </message>
    <message>
        <source>How soon the carriage takes up a new orientation</source>
        <extracomment>Spline Speed-Controller: Rotation Response Factor</extracomment>
        <translation>Wie bald der Wagen eine neue Ausrichtung annimmt</translation>
    </message>
    <message>
        <source>Rotation Max Rate Of Change</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Höchste Änderung der Drehung</translation>
    </message>
    <message>
        <source>Fastest turn in radians per second, 0 is no limit</source>
        <extracomment>Spline Speed-Controller: Rotation Max Rate Of Change</extracomment>
        <translation>Schnellste Drehung in Radiant je Sekunde, 0: ohne Grenze</translation>
    </message>
    <message>
        <source>Brake Softner</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Weiches Bremsen</translation>
    </message>
    <message>
        <source>Shape of the braking towards a stop here; smaller brakes later and harder</source>
        <extracomment>Spline Speed-Controller: Brake Softner</extracomment>
        <translation>Form des Bremsens vor einem Halt hier; kleiner bremst später und härter</translation>
    </message>
    <message>
        <source>Brake Percent</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Bremsweg (Prozent)</translation>
    </message>
    <message>
        <source>Share of the way to here over which the carriage brakes for a stop</source>
        <extracomment>Spline Speed-Controller: Brake Percent</extracomment>
        <translation>Anteil des Weges bis hier, auf dem der Wagen für einen Halt bremst</translation>
    </message>
    <message>
        <source>Carriage Properties</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Wagen</translation>
    </message>
    <message>
        <source>How the carriage runs</source>
        <extracomment>Spline Speed-Controller: Carriage Properties</extracomment>
        <translation>Wie der Wagen läuft</translation>
    </message>
    <message>
        <source>Gravity Strength</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Stärke der Schwerkraft</translation>
    </message>
    <message>
        <source>Makes the carriage faster downhill, 0 is off</source>
        <extracomment>Spline Speed-Controller: Gravity Strength</extracomment>
        <translation>Macht den Wagen bergab schneller, 0: aus</translation>
    </message>
    <message>
        <source>Banking Factor</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Kurvenneigung</translation>
    </message>
    <message>
        <source>Makes the carriage lean into the curve, 0 is off</source>
        <extracomment>Spline Speed-Controller: Banking Factor</extracomment>
        <translation>Neigt den Wagen in die Kurve, 0: aus</translation>
    </message>
    <message>
        <source>The carriage goes on at the other end of the path</source>
        <extracomment>Spline Speed-Controller: Loop</extracomment>
        <translation>Der Wagen fährt am anderen Ende der Bahn weiter</translation>
    </message>
    <message>
        <source>Initialize Carriage</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Wagen einrichten</translation>
    </message>
    <message>
        <source>Puts the carriage at the beginning of the path and forgets its past</source>
        <extracomment>Spline Speed-Controller: Initialize Carriage</extracomment>
        <translation>Stellt den Wagen an den Anfang der Bahn und vergisst das Bisherige</translation>
    </message>
    <message>
        <source>Snap Carriage to closest point on Curve</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Wagen auf den nächsten Kurvenpunkt setzen</translation>
    </message>
    <message>
        <source>Puts the carriage on the path, where it is closest</source>
        <extracomment>Spline Speed-Controller: Snap Carriage to closest point on Curve</extracomment>
        <translation>Stellt den Wagen dort auf die Bahn, wo sie am nächsten ist</translation>
    </message>
    <message>
        <source>Orvel Curve Generation</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Orvel-Kurve</translation>
    </message>
    <message>
        <source>A path of the rig's own, through the waypoints</source>
        <extracomment>Spline Speed-Controller: Orvel Curve Generation</extracomment>
        <translation>Eine eigene Bahn des Rigs durch die Wegpunkte</translation>
    </message>
    <message>
        <source>Use Orvel Curve Generation</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Orvel-Kurve verwenden</translation>
    </message>
    <message>
        <source>The carriage runs on the Orvel curve, also when it is parented to a spline</source>
        <extracomment>Spline Speed-Controller: Use Orvel Curve Generation</extracomment>
        <translation>Der Wagen läuft auf der Orvel-Kurve, auch wenn er unter einer Kurve hängt</translation>
    </message>
    <message>
        <source>Closed Curve</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Geschlossene Kurve</translation>
    </message>
    <message>
        <source>The last waypoint joins the first</source>
        <extracomment>Spline Speed-Controller: Closed Curve</extracomment>
        <translation>Der letzte Wegpunkt schließt an den ersten an</translation>
    </message>
    <message>
        <source>End Curve Straight</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Kurve gerade enden lassen</translation>
    </message>
    <message>
        <source>The curve leaves its ends straight</source>
        <extracomment>Spline Speed-Controller: End Curve Straight</extracomment>
        <translation>Die Kurve läuft an ihren Enden gerade aus</translation>
    </message>
    <message>
        <source>Snap Waypoints to Spline/Redraw Orvel Curve</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Wegpunkte auf die Kurve setzen/Orvel-Kurve neu zeichnen</translation>
    </message>
    <message>
        <source>Finds where on the spline the waypoints lie, or draws the Orvel curve anew</source>
        <extracomment>Spline Speed-Controller: Snap Waypoints to Spline/Redraw Orvel Curve</extracomment>
        <translation>Findet, wo die Wegpunkte auf der Kurve liegen, oder zeichnet die Orvel-Kurve neu</translation>
    </message>
    <message>
        <source>Create Curve</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Kurve erzeugen</translation>
    </message>
    <message>
        <source>Lays the Orvel curve through the waypoints</source>
        <extracomment>Spline Speed-Controller: Create Curve</extracomment>
        <translation>Legt die Orvel-Kurve durch die Wegpunkte</translation>
    </message>
    <message>
        <source>Remove Curve</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Kurve entfernen</translation>
    </message>
    <message>
        <source>Removes the Orvel curve</source>
        <extracomment>Spline Speed-Controller: Remove Curve</extracomment>
        <translation>Entfernt die Orvel-Kurve</translation>
    </message>
    <message>
        <source>Input Properties</source>
        <extracomment>Spline Speed-Controller; CrawlerTracks</extracomment>
        <translation>Eingaben</translation>
    </message>
    <message>
        <source>What the inputs do</source>
        <extracomment>Spline Speed-Controller: Input Properties</extracomment>
        <translation>Was die Eingaben tun</translation>
    </message>
    <message>
        <source>Forward/Backward Maximum Speed</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Höchsttempo vor/zurück</translation>
    </message>
    <message>
        <source>Speed that the input Speed adds at full throw, in the selected unit</source>
        <extracomment>Spline Speed-Controller: Forward/Backward Maximum Speed</extracomment>
        <translation>Geschwindigkeit, die die Eingabe Geschwindigkeit bei vollem Ausschlag hinzufügt, in der gewählten Einheit</translation>
    </message>
    <message>
        <source>Speed Units</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Geschwindigkeitseinheiten</translation>
    </message>
    <message>
        <source>The speeds used in the simulation will be in the selected units. Regardless of scale of the Carriage or Reference Frame.</source>
        <extracomment>Spline Speed-Controller: Speed Units; Spline Speed-Controller: Selected Speed Units</extracomment>
        <translation>Die Geschwindigkeiten der Simulation gelten in der gewählten Einheit, wie auch immer der Wagen oder das Bezugssystem skaliert ist.</translation>
    </message>
    <message>
        <source>Selected Speed Units</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Gewählte Einheit</translation>
    </message>
    <message>
        <source>km/h</source>
        <extracomment>Spline Speed-Controller: Selected Speed Units</extracomment>
        <translation>km/h</translation>
    </message>
    <message>
        <source>mph</source>
        <extracomment>Spline Speed-Controller: Selected Speed Units</extracomment>
        <translation>mph</translation>
    </message>
    <message>
        <source>cm/s</source>
        <extracomment>Spline Speed-Controller: Selected Speed Units</extracomment>
        <translation>cm/s</translation>
    </message>
    <message>
        <source>inch/s</source>
        <extracomment>Spline Speed-Controller: Selected Speed Units</extracomment>
        <translation>Zoll/s</translation>
    </message>
    <message>
        <source>Speed Multiplier</source>
        <extracomment>Spline Speed-Controller</extracomment>
        <translation>Tempofaktor</translation>
    </message>
    <message>
        <source>Multiplies all speeds</source>
        <extracomment>Spline Speed-Controller: Speed Multiplier</extracomment>
        <translation>Vervielfacht alle Geschwindigkeiten</translation>
    </message>
    <message>
        <source>Spinner: Gravity Strength</source>
        <extracomment>Spline Speed-Controller input</extracomment>
        <translation>Regler: Stärke der Schwerkraft</translation>
    </message>
    <message>
        <source>Spinner: Banking Factor</source>
        <extracomment>Spline Speed-Controller input</extracomment>
        <translation>Regler: Kurvenneigung</translation>
    </message>
    <message>
        <source>Spinner: Forward/Backward Maximum Speed</source>
        <extracomment>Spline Speed-Controller input</extracomment>
        <translation>Regler: Höchsttempo vor/zurück</translation>
    </message>
    <message>
        <source>Spinner: Speed Multiplier</source>
        <extracomment>Spline Speed-Controller input</extracomment>
        <translation>Regler: Tempofaktor</translation>
    </message>
    <message>
        <source>Start</source>
        <extracomment>Spline Speed-Controller input; Pendulum</extracomment>
        <translation>Start</translation>
    </message>
    <message>
        <source>Look At Target</source>
        <extracomment>Spline Speed-Controller input</extracomment>
        <translation>Auf das Ziel blicken</translation>
    </message>
    <message>
        <source>Forced Stop</source>
        <extracomment>Spline Speed-Controller input</extracomment>
        <translation>Zwangshalt</translation>
    </message>
    <message>
        <source>Orvel CrawlerTracks</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Orvel CrawlerTracks</translation>
    </message>
    <message>
        <source>Orvel CrawlerTracks is a dynamic simulator for quick rigging of any kind of crawler/CrawlerTracks tracks interacting with bogies and ground.</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Orvel CrawlerTracks simuliert Ketten und Raupen jeder Art, die mit Laufrollen und Boden zusammenwirken, und ist schnell eingerichtet.</translation>
    </message>
    <message>
        <source>Hides TemplateStep, GravityDirection and the text.</source>
        <extracomment>CrawlerTracks: Hide Helpers</extracomment>
        <translation>Blendet TemplateStep, GravityDirection und den Text aus.</translation>
    </message>
    <message>
        <source>Hide Track Text</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Kettenbeschriftung ausblenden</translation>
    </message>
    <message>
        <source>Hides the text that tells where forward is.</source>
        <extracomment>CrawlerTracks: Hide Track Text</extracomment>
        <translation>Blendet den Text aus, der zeigt, wo vorn ist.</translation>
    </message>
    <message>
        <source>Track Properties</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Kette</translation>
    </message>
    <message>
        <source>How the track moves; these take effect at once</source>
        <extracomment>CrawlerTracks: Track Properties</extracomment>
        <translation>Wie sich die Kette bewegt; dies wirkt sofort</translation>
    </message>
    <message>
        <source>Strength of the gravity</source>
        <extracomment>CrawlerTracks: Gravity</extracomment>
        <translation>Stärke der Schwerkraft</translation>
    </message>
    <message>
        <source>Bending Stiffness</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Biegesteifigkeit</translation>
    </message>
    <message>
        <source>How much the track resists being bent</source>
        <extracomment>CrawlerTracks: Bending Stiffness</extracomment>
        <translation>Wie sehr sich die Kette gegen Biegen wehrt</translation>
    </message>
    <message>
        <source>Bending Damping</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Biegedämpfung</translation>
    </message>
    <message>
        <source>How soon a bend comes to rest</source>
        <extracomment>CrawlerTracks: Bending Damping</extracomment>
        <translation>Wie bald eine Biegung zur Ruhe kommt</translation>
    </message>
    <message>
        <source>Displacement Stiffness</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Längssteifigkeit</translation>
    </message>
    <message>
        <source>How firmly the steps hold together</source>
        <extracomment>CrawlerTracks: Displacement Stiffness</extracomment>
        <translation>Wie fest die Glieder zusammenhalten</translation>
    </message>
    <message>
        <source>Displacement Damping</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Längsdämpfung</translation>
    </message>
    <message>
        <source>How soon a gap between two steps comes to rest</source>
        <extracomment>CrawlerTracks: Displacement Damping</extracomment>
        <translation>Wie bald eine Lücke zwischen zwei Gliedern zur Ruhe kommt</translation>
    </message>
    <message>
        <source>Twist Stiffness</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Verdrehsteifigkeit</translation>
    </message>
    <message>
        <source>How much the track resists being twisted</source>
        <extracomment>CrawlerTracks: Twist Stiffness</extracomment>
        <translation>Wie sehr sich die Kette gegen Verdrehen wehrt</translation>
    </message>
    <message>
        <source>Twist Damping</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Verdrehdämpfung</translation>
    </message>
    <message>
        <source>How soon a twist comes to rest</source>
        <extracomment>CrawlerTracks: Twist Damping</extracomment>
        <translation>Wie bald eine Verdrehung zur Ruhe kommt</translation>
    </message>
    <message>
        <source>Friction</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Reibung</translation>
    </message>
    <message>
        <source>Friction of the steps on wheels and ground</source>
        <extracomment>CrawlerTracks: Friction</extracomment>
        <translation>Reibung der Glieder an Rädern und Boden</translation>
    </message>
    <message>
        <source>Accuracy</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Genauigkeit</translation>
    </message>
    <message>
        <source>Iterations of the physics' solver. Can slow down simulation considerably</source>
        <extracomment>CrawlerTracks: Accuracy</extracomment>
        <translation>Durchläufe des Physiklösers. Kann die Simulation deutlich verlangsamen</translation>
    </message>
    <message>
        <source>Flaccidity Reduction</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Straffung</translation>
    </message>
    <message>
        <source>Steps of the physics in each sub-frame: more make the track firmer and the simulation slower</source>
        <extracomment>CrawlerTracks: Flaccidity Reduction</extracomment>
        <translation>Schritte der Physik je Zwischenbild: mehr machen die Kette straffer und die Simulation langsamer</translation>
    </message>
    <message>
        <source>SubFrames</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Zwischenbilder</translation>
    </message>
    <message>
        <source>Extra steps within a frame</source>
        <extracomment>CrawlerTracks: SubFrames</extracomment>
        <translation>Zusätzliche Schritte innerhalb eines Bildes</translation>
    </message>
    <message>
        <source>Set keyframes on SubFrames</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Keyframes auf Zwischenbildern</translation>
    </message>
    <message>
        <source>Keys the track at every extra step too</source>
        <extracomment>CrawlerTracks: Set keyframes on SubFrames</extracomment>
        <translation>Setzt auch bei jedem zusätzlichen Schritt Keys</translation>
    </message>
    <message>
        <source>Track Creation Properties</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Aufbau der Kette</translation>
    </message>
    <message>
        <source>To be set before the track is made</source>
        <extracomment>CrawlerTracks: Track Creation Properties</extracomment>
        <translation>Einzustellen, bevor die Kette erzeugt wird</translation>
    </message>
    <message>
        <source>Static Wheel</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Festes Rad</translation>
    </message>
    <message>
        <source>The next wheel does not turn with the driveWheel</source>
        <extracomment>CrawlerTracks: Static Wheel</extracomment>
        <translation>Das nächste Rad dreht sich nicht mit dem driveWheel</translation>
    </message>
    <message>
        <source>Inner Wheel</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Inneres Rad</translation>
    </message>
    <message>
        <source>The track runs round the next wheel; off: along its outside</source>
        <extracomment>CrawlerTracks: Inner Wheel</extracomment>
        <translation>Die Kette läuft um das nächste Rad herum; aus: an seiner Außenseite entlang</translation>
    </message>
    <message>
        <source>Track Wheel</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Kettenrad</translation>
    </message>
    <message>
        <source>The track is laid round the next wheel</source>
        <extracomment>CrawlerTracks: Track Wheel</extracomment>
        <translation>Die Kette wird um das nächste Rad gelegt</translation>
    </message>
    <message>
        <source>Add Wheel</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Rad hinzufügen</translation>
    </message>
    <message>
        <source>Adds a wheel behind the last one</source>
        <extracomment>CrawlerTracks: Add Wheel</extracomment>
        <translation>Fügt hinter dem letzten Rad eines hinzu</translation>
    </message>
    <message>
        <source>Remove Wheel</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Rad entfernen</translation>
    </message>
    <message>
        <source>Removes the last wheel</source>
        <extracomment>CrawlerTracks: Remove Wheel</extracomment>
        <translation>Entfernt das letzte Rad</translation>
    </message>
    <message>
        <source>Add Support Wheel</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Stützrad hinzufügen</translation>
    </message>
    <message>
        <source>Adds a wheel that carries the track without leading it</source>
        <extracomment>CrawlerTracks: Add Support Wheel</extracomment>
        <translation>Fügt ein Rad hinzu, das die Kette trägt, ohne sie zu führen</translation>
    </message>
    <message>
        <source>Remove Support Wheel</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Stützrad entfernen</translation>
    </message>
    <message>
        <source>Removes the last support wheel</source>
        <extracomment>CrawlerTracks: Remove Support Wheel</extracomment>
        <translation>Entfernt das letzte Stützrad</translation>
    </message>
    <message>
        <source>Number of Steps</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Zahl der Glieder</translation>
    </message>
    <message>
        <source>Steps of the track</source>
        <extracomment>CrawlerTracks: Number of Steps</extracomment>
        <translation>Glieder der Kette</translation>
    </message>
    <message>
        <source>Gap Between Steps</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Lücke zwischen Gliedern</translation>
    </message>
    <message>
        <source>Gap that the steps are counted with, in Frame units</source>
        <extracomment>CrawlerTracks: Gap Between Steps</extracomment>
        <translation>Lücke, mit der die Glieder gezählt werden, in Einheiten des Frame</translation>
    </message>
    <message>
        <source>Calculate Number of Steps</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Zahl der Glieder berechnen</translation>
    </message>
    <message>
        <source>Finds how many steps go round the wheels with the gap as it is</source>
        <extracomment>CrawlerTracks: Calculate Number of Steps</extracomment>
        <translation>Ermittelt, wie viele Glieder bei dieser Lücke um die Räder passen</translation>
    </message>
    <message>
        <source>Calculate Gap</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Lücke berechnen</translation>
    </message>
    <message>
        <source>Finds the gap for the steps as many as they are</source>
        <extracomment>CrawlerTracks: Calculate Gap</extracomment>
        <translation>Ermittelt die Lücke zu dieser Zahl von Gliedern</translation>
    </message>
    <message>
        <source>Create Track</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Kette erzeugen</translation>
    </message>
    <message>
        <source>Lays the track round the wheels</source>
        <extracomment>CrawlerTracks: Create Track</extracomment>
        <translation>Legt die Kette um die Räder</translation>
    </message>
    <message>
        <source>Remove Track</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Kette entfernen</translation>
    </message>
    <message>
        <source>Removes the track</source>
        <extracomment>CrawlerTracks: Remove Track</extracomment>
        <translation>Entfernt die Kette</translation>
    </message>
    <message>
        <source>Add Step</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Glied hinzufügen</translation>
    </message>
    <message>
        <source>Lays the track anew with one step more</source>
        <extracomment>CrawlerTracks: Add Step</extracomment>
        <translation>Legt die Kette mit einem Glied mehr neu</translation>
    </message>
    <message>
        <source>Remove Step</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Glied entfernen</translation>
    </message>
    <message>
        <source>Lays the track anew with one step less</source>
        <extracomment>CrawlerTracks: Remove Step</extracomment>
        <translation>Legt die Kette mit einem Glied weniger neu</translation>
    </message>
    <message>
        <source>Select All Steps in Track</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Alle Glieder der Kette auswählen</translation>
    </message>
    <message>
        <source>Selects the nodes of all steps</source>
        <extracomment>CrawlerTracks: Select All Steps in Track</extracomment>
        <translation>Wählt die Knoten aller Glieder aus</translation>
    </message>
    <message>
        <source>Maximum (Input Driven) Rotation Speed</source>
        <extracomment>CrawlerTracks</extracomment>
        <translation>Höchste Drehzahl (durch Eingabe)</translation>
    </message>
    <message>
        <source>Speed of the driveWheel at full input (radians per second)</source>
        <extracomment>CrawlerTracks: Maximum (Input Driven) Rotation Speed</extracomment>
        <translation>Drehzahl des driveWheel bei voller Eingabe (Radiant je Sekunde)</translation>
    </message>
    <message>
        <source>Spinner: Gravity</source>
        <extracomment>CrawlerTracks input; Pendulum input</extracomment>
        <translation>Regler: Schwerkraft</translation>
    </message>
    <message>
        <source>Spinner: Bending Stiffness</source>
        <extracomment>CrawlerTracks input</extracomment>
        <translation>Regler: Biegesteifigkeit</translation>
    </message>
    <message>
        <source>Spinner: Bending Damping</source>
        <extracomment>CrawlerTracks input</extracomment>
        <translation>Regler: Biegedämpfung</translation>
    </message>
    <message>
        <source>Spinner: Displacement Stiffness</source>
        <extracomment>CrawlerTracks input</extracomment>
        <translation>Regler: Längssteifigkeit</translation>
    </message>
    <message>
        <source>Spinner: Displacement Damping</source>
        <extracomment>CrawlerTracks input</extracomment>
        <translation>Regler: Längsdämpfung</translation>
    </message>
    <message>
        <source>Spinner: Twist Stiffness</source>
        <extracomment>CrawlerTracks input</extracomment>
        <translation>Regler: Verdrehsteifigkeit</translation>
    </message>
    <message>
        <source>Spinner: Twist Damping</source>
        <extracomment>CrawlerTracks input</extracomment>
        <translation>Regler: Verdrehdämpfung</translation>
    </message>
    <message>
        <source>Spinner: Friction</source>
        <extracomment>CrawlerTracks input</extracomment>
        <translation>Regler: Reibung</translation>
    </message>
    <message>
        <source>Spinner: Maximum (Input Driven) Rotation Speed</source>
        <extracomment>CrawlerTracks input</extracomment>
        <translation>Regler: Höchste Drehzahl (durch Eingabe)</translation>
    </message>
    <message>
        <source>Forward/Backward</source>
        <extracomment>CrawlerTracks input</extracomment>
        <translation>Vor/Zurück</translation>
    </message>
    <message>
        <source>Turns the driveWheel</source>
        <extracomment>CrawlerTracks input</extracomment>
        <translation>Dreht das driveWheel</translation>
    </message>
    <message>
        <source>Orvel Firepower</source>
        <extracomment>Firepower</extracomment>
        <translation>Orvel Firepower</translation>
    </message>
    <message>
        <source>Orvel Firepower fires projectiles from a barrel and keys their flight: cannons, miniguns, handguns, lasers. Place the fire trigger, parent the collision node to what the projectiles shall hit, connect the input Fire and press Record.</source>
        <extracomment>Firepower</extracomment>
        <translation>Orvel Firepower verschießt Geschosse aus einem Rohr und keyt ihren Flug: Kanonen, Miniguns, Faustfeuerwaffen, Laser. Den Abzug platzieren, den Kollisionsknoten unter das hängen, was getroffen werden soll, die Eingabe Feuer verbinden und aufnehmen.</translation>
    </message>
    <message>
        <source>Weapon</source>
        <extracomment>category</extracomment>
        <translation>Waffe</translation>
    </message>
    <message>
        <source>Hides the templateBullet and the collision node.</source>
        <extracomment>Firepower: Hide Helpers</extracomment>
        <translation>Blendet templateBullet und Kollisionsknoten aus.</translation>
    </message>
    <message>
        <source>Hides the crosshairCam.</source>
        <extracomment>Firepower: Hide Camera</extracomment>
        <translation>Blendet die crosshairCam aus.</translation>
    </message>
    <message>
        <source>Hide Camera During Recording</source>
        <extracomment>Firepower</extracomment>
        <translation>Kamera bei der Aufnahme ausblenden</translation>
    </message>
    <message>
        <source>Hides the crosshairCam while a take runs.</source>
        <extracomment>Firepower: Hide Camera During Recording</extracomment>
        <translation>Blendet die crosshairCam während eines Takes aus.</translation>
    </message>
    <message>
        <source>Firing</source>
        <extracomment>Firepower</extracomment>
        <translation>Abfeuern</translation>
    </message>
    <message>
        <source>How the gun fires</source>
        <extracomment>Firepower: Firing</extracomment>
        <translation>Wie die Waffe feuert</translation>
    </message>
    <message>
        <source>Muzzle Velocity (m/s)</source>
        <extracomment>Firepower</extracomment>
        <translation>Mündungsgeschwindigkeit (m/s)</translation>
    </message>
    <message>
        <source>Set the muzzle velocity of the bullets.</source>
        <extracomment>Firepower: Muzzle Velocity (m/s)</extracomment>
        <translation>Mündungsgeschwindigkeit der Geschosse.</translation>
    </message>
    <message>
        <source>Rate of fire (rounds/s)</source>
        <extracomment>Firepower</extracomment>
        <translation>Schussfolge (Schuss/s)</translation>
    </message>
    <message>
        <source>Set the rate of fire (bullets/second)</source>
        <extracomment>Firepower: Rate of fire (rounds/s)</extracomment>
        <translation>Schussfolge (Geschosse/Sekunde)</translation>
    </message>
    <message>
        <source>Bullets/discharge</source>
        <extracomment>Firepower</extracomment>
        <translation>Geschosse je Schuss</translation>
    </message>
    <message>
        <source>Set how many bullets to fire at each discharge</source>
        <extracomment>Firepower: Bullets/discharge</extracomment>
        <translation>Wie viele Geschosse je Schuss abgefeuert werden</translation>
    </message>
    <message>
        <source>Spread Angle (degrees)</source>
        <extracomment>Firepower</extracomment>
        <translation>Streuwinkel (Grad)</translation>
    </message>
    <message>
        <source>Set the spread angle of the bullets (Degrees).</source>
        <extracomment>Firepower: Spread Angle (degrees)</extracomment>
        <translation>Streuwinkel der Geschosse (Grad).</translation>
    </message>
    <message>
        <source>Fire Nth Time</source>
        <extracomment>Firepower</extracomment>
        <translation>Jedes n-te Mal feuern</translation>
    </message>
    <message>
        <source>Presses from one that fires to the next. 0 and 1: each fires.</source>
        <extracomment>Firepower: Fire Nth Time</extracomment>
        <translation>Betätigungen von einer, die feuert, bis zur nächsten. 0 und 1: jede feuert.</translation>
    </message>
    <message>
        <source>Fire First Bullet On Nth Time</source>
        <extracomment>Firepower</extracomment>
        <translation>Erstes Geschoss beim n-ten Mal</translation>
    </message>
    <message>
        <source>The press that fires first.</source>
        <extracomment>Firepower: Fire First Bullet On Nth Time</extracomment>
        <translation>Die Betätigung, die zuerst feuert.</translation>
    </message>
    <message>
        <source>Random Seed</source>
        <extracomment>Firepower</extracomment>
        <translation>Zufallswert</translation>
    </message>
    <message>
        <source>Another number gives another spread, spin and rhythm.</source>
        <extracomment>Firepower: Random Seed</extracomment>
        <translation>Eine andere Zahl gibt andere Streuung, anderen Drall und Takt.</translation>
    </message>
    <message>
        <source>Delay</source>
        <extracomment>Firepower</extracomment>
        <translation>Verzögerung</translation>
    </message>
    <message>
        <source>Set the delay of the discharge</source>
        <extracomment>Firepower: Delay</extracomment>
        <translation>Verzögerung des Schusses</translation>
    </message>
    <message>
        <source>Time Delay</source>
        <extracomment>Firepower</extracomment>
        <translation>Wartezeit</translation>
    </message>
    <message>
        <source>The number of frames the delay of discharge will be.</source>
        <extracomment>Firepower: Time Delay</extracomment>
        <translation>Verzögerung des Schusses in Bildern.</translation>
    </message>
    <message>
        <source>Bullets</source>
        <extracomment>Firepower</extracomment>
        <translation>Geschosse</translation>
    </message>
    <message>
        <source>How the bullets fly</source>
        <extracomment>Firepower: Bullets</extracomment>
        <translation>Wie die Geschosse fliegen</translation>
    </message>
    <message>
        <source>Lifetime (seconds)</source>
        <extracomment>Firepower</extracomment>
        <translation>Lebensdauer (Sekunden)</translation>
    </message>
    <message>
        <source>Set lifetime of the bullets, will only stop when dead</source>
        <extracomment>Firepower: Lifetime (seconds)</extracomment>
        <translation>Lebensdauer der Geschosse; sie halten erst an ihrem Ende</translation>
    </message>
    <message>
        <source>Set gravity affecting the bullets in flight</source>
        <extracomment>Firepower</extracomment>
        <translation>Schwerkraft wirkt auf fliegende Geschosse</translation>
    </message>
    <message>
        <source>Along world Y, downwards (m/s2).</source>
        <extracomment>Firepower: Set gravity affecting the bullets in flight</extracomment>
        <translation>Entlang der Y-Achse der Welt, abwärts (m/s2).</translation>
    </message>
    <message>
        <source>Air Resistance Force</source>
        <extracomment>Firepower</extracomment>
        <translation>Luftwiderstand</translation>
    </message>
    <message>
        <source>A value for the air resistance affecting the bullets in flight.</source>
        <extracomment>Firepower: Air Resistance Force</extracomment>
        <translation>Luftwiderstand, der auf fliegende Geschosse wirkt.</translation>
    </message>
    <message>
        <source>Pitch Bullet</source>
        <extracomment>Firepower</extracomment>
        <translation>Geschoss nach der Flugbahn neigen</translation>
    </message>
    <message>
        <source>Pitches the bullet in velocity direction</source>
        <extracomment>Firepower: Pitch Bullet</extracomment>
        <translation>Neigt das Geschoss in Flugrichtung</translation>
    </message>
    <message>
        <source>Select all bullets</source>
        <extracomment>Firepower</extracomment>
        <translation>Alle Geschosse auswählen</translation>
    </message>
    <message>
        <source>Selects all bullets in the scene.</source>
        <extracomment>Firepower: Select all bullets</extracomment>
        <translation>Wählt alle Geschosse der Szene aus.</translation>
    </message>
    <message>
        <source>How the bullets spin</source>
        <extracomment>Firepower: Rotation</extracomment>
        <translation>Wie sich die Geschosse drehen</translation>
    </message>
    <message>
        <source>Rotate Bullet</source>
        <extracomment>Firepower</extracomment>
        <translation>Geschoss drehen</translation>
    </message>
    <message>
        <source>The bullets spin.</source>
        <extracomment>Firepower: Rotate Bullet</extracomment>
        <translation>Die Geschosse drehen sich.</translation>
    </message>
    <message>
        <source>Rotation (revolutions/s)</source>
        <extracomment>Firepower</extracomment>
        <translation>Drehung (Umdrehungen/s)</translation>
    </message>
    <message>
        <source>Set the rotation.</source>
        <extracomment>Firepower: Rotation (revolutions/s)</extracomment>
        <translation>Die Drehung.</translation>
    </message>
    <message>
        <source>Randomize Rotation Speed</source>
        <extracomment>Firepower</extracomment>
        <translation>Drehzahl zufällig</translation>
    </message>
    <message>
        <source>Set the Maximum Randomized Rotation Speed</source>
        <extracomment>Firepower: Randomize Rotation Speed</extracomment>
        <translation>Größte zufällige Drehzahl</translation>
    </message>
    <message>
        <source>Randomize Rotation Axis</source>
        <extracomment>Firepower</extracomment>
        <translation>Drehachse zufällig</translation>
    </message>
    <message>
        <source>Set the Maximum Axis Deviation Angle</source>
        <extracomment>Firepower: Randomize Rotation Axis</extracomment>
        <translation>Größte zufällige Abweichung der Achse</translation>
    </message>
    <message>
        <source>Collision</source>
        <extracomment>Firepower</extracomment>
        <translation>Kollision</translation>
    </message>
    <message>
        <source>What happens when a bullet hits a collision object</source>
        <extracomment>Firepower: Collision</extracomment>
        <translation>Was geschieht, wenn ein Geschoss ein Kollisionsobjekt trifft</translation>
    </message>
    <message>
        <source>elasticity (%)</source>
        <extracomment>Firepower</extracomment>
        <translation>Elastizität (%)</translation>
    </message>
    <message>
        <source>Set how much the bullet bounce of the collision object</source>
        <extracomment>Firepower: elasticity (%)</extracomment>
        <translation>Wie sehr das Geschoss vom Kollisionsobjekt abprallt</translation>
    </message>
    <message>
        <source>collision correction value</source>
        <extracomment>Firepower</extracomment>
        <translation>Korrekturwert der Kollision</translation>
    </message>
    <message>
        <source>Moves the bullet in collision normal-direction as much as the correction value (to prevent the bullet from moving through the collision object).</source>
        <extracomment>Firepower: collision correction value</extracomment>
        <translation>Rückt das Geschoss um den Korrekturwert in Richtung der Kollisionsnormale (damit es nicht durch das Kollisionsobjekt dringt).</translation>
    </message>
    <message>
        <source>Recoil</source>
        <extracomment>Firepower</extracomment>
        <translation>Rückstoß</translation>
    </message>
    <message>
        <source>Set properties for recoil effect on the barrel</source>
        <extracomment>Firepower: Recoil</extracomment>
        <translation>Rückstoß des Rohrs</translation>
    </message>
    <message>
        <source>Backward (frames)</source>
        <extracomment>Firepower</extracomment>
        <translation>Zurück (Bilder)</translation>
    </message>
    <message>
        <source>Set how many frames it takes for the barrel to reach the back-position</source>
        <extracomment>Firepower: Backward (frames)</extracomment>
        <translation>Wie viele Bilder das Rohr bis zur hinteren Stellung braucht</translation>
    </message>
    <message>
        <source>Forward (frames)</source>
        <extracomment>Firepower</extracomment>
        <translation>Vor (Bilder)</translation>
    </message>
    <message>
        <source>Set how many frames it takes for the barrel to reach the starting position from the back-position</source>
        <extracomment>Firepower: Forward (frames)</extracomment>
        <translation>Wie viele Bilder das Rohr von der hinteren in die Ausgangsstellung braucht</translation>
    </message>
    <message>
        <source>Response Factor</source>
        <extracomment>Firepower</extracomment>
        <translation>Ansprechen</translation>
    </message>
    <message>
        <source>A value for smooth recoil</source>
        <extracomment>Firepower: Response Factor</extracomment>
        <translation>Sanftheit des Rückstoßes</translation>
    </message>
    <message>
        <source>Depth (%)</source>
        <extracomment>Firepower</extracomment>
        <translation>Tiefe (%)</translation>
    </message>
    <message>
        <source>Set how deep the barrel should go into the gun</source>
        <extracomment>Firepower: Depth (%)</extracomment>
        <translation>Wie tief das Rohr in die Waffe zurückgeht</translation>
    </message>
    <message>
        <source>Barrel Length (m)</source>
        <extracomment>Firepower</extracomment>
        <translation>Rohrlänge (m)</translation>
    </message>
    <message>
        <source>Of which the depth is a part, in the barrel's own scale.</source>
        <extracomment>Firepower: Barrel Length (m)</extracomment>
        <translation>Davon ist die Tiefe ein Anteil, im Maßstab des Rohrs.</translation>
    </message>
    <message>
        <source>Fire</source>
        <extracomment>Firepower input</extracomment>
        <translation>Feuer</translation>
    </message>
    <message>
        <source>Orvel HandheldCam</source>
        <extracomment>HandheldCam</extracomment>
        <translation>Orvel HandheldCam</translation>
    </message>
    <message>
        <source>A camera in somebody's hands: it sways around its Mount, which stands or moves where the camera should be, and steps if the operator walks. The same settings always give the same shake; another seed gives another operator. Amount and speed can be ridden live.</source>
        <extracomment>HandheldCam</extracomment>
        <translation>Eine Kamera in jemandes Händen: Sie schwankt um ihre Halterung (Mount), die steht oder sich bewegt, wo die Kamera sein soll, und wippt mit, wenn jemand mit ihr geht. Gleiche Einstellungen wackeln immer gleich; ein anderer Zufallswert ist eine andere Hand. Stärke und Tempo lassen sich live führen.</translation>
    </message>
    <message>
        <source>Hides what is there for the animator alone.</source>
        <extracomment>HandheldCam: Hide Helpers; Pendulum: Hide Helpers; Turntable: Hide Helpers</extracomment>
        <translation>Blendet aus, was nur für die Animation da ist.</translation>
    </message>
    <message>
        <source>Shake Parameters</source>
        <extracomment>HandheldCam</extracomment>
        <translation>Parameter des Wackelns</translation>
    </message>
    <message>
        <source>How the hands move</source>
        <extracomment>HandheldCam: Shake Parameters</extracomment>
        <translation>Wie sich die Hände bewegen</translation>
    </message>
    <message>
        <source>Amount</source>
        <extracomment>HandheldCam</extracomment>
        <translation>Stärke</translation>
    </message>
    <message>
        <source>Size of all of it; 0 is a tripod</source>
        <extracomment>HandheldCam: Amount</extracomment>
        <translation>Wie stark das Ganze ist; 0 ist ein Stativ</translation>
    </message>
    <message>
        <source>1 is calm, 3 is in a hurry</source>
        <extracomment>HandheldCam: Speed</extracomment>
        <translation>1 ist ruhig, 3 ist in Eile</translation>
    </message>
    <message>
        <source>Sway</source>
        <extracomment>HandheldCam</extracomment>
        <translation>Schwanken</translation>
    </message>
    <message>
        <source>How far the camera wanders (m)</source>
        <extracomment>HandheldCam: Sway</extracomment>
        <translation>Wie weit die Kamera wandert (m)</translation>
    </message>
    <message>
        <source>Sway Turn</source>
        <extracomment>HandheldCam</extracomment>
        <translation>Schwankende Drehung</translation>
    </message>
    <message>
        <source>How far it turns (degrees)</source>
        <extracomment>HandheldCam: Sway Turn</extracomment>
        <translation>Wie weit sie sich dreht (Grad)</translation>
    </message>
    <message>
        <source>Roll</source>
        <extracomment>HandheldCam</extracomment>
        <translation>Rollen</translation>
    </message>
    <message>
        <source>Share of the turning that tilts the picture</source>
        <extracomment>HandheldCam: Roll</extracomment>
        <translation>Anteil der Drehung, der das Bild kippt</translation>
    </message>
    <message>
        <source>Seed</source>
        <extracomment>HandheldCam</extracomment>
        <translation>Zufallswert</translation>
    </message>
    <message>
        <source>Each is another operator</source>
        <extracomment>HandheldCam: Seed</extracomment>
        <translation>Jeder ist eine andere Hand</translation>
    </message>
    <message>
        <source>Footsteps</source>
        <extracomment>HandheldCam</extracomment>
        <translation>Schritte</translation>
    </message>
    <message>
        <source>An operator who walks</source>
        <extracomment>HandheldCam: Footsteps</extracomment>
        <translation>Jemand geht mit der Kamera</translation>
    </message>
    <message>
        <source>Step Height</source>
        <extracomment>HandheldCam</extracomment>
        <translation>Schritthöhe</translation>
    </message>
    <message>
        <source>Drop at each step (m); 0 stands still</source>
        <extracomment>HandheldCam: Step Height</extracomment>
        <translation>Absinken bei jedem Schritt (m); 0 steht still</translation>
    </message>
    <message>
        <source>Steps Per Second</source>
        <extracomment>HandheldCam</extracomment>
        <translation>Schritte je Sekunde</translation>
    </message>
    <message>
        <source>2 is a walk, 3 a run</source>
        <extracomment>HandheldCam: Steps Per Second</extracomment>
        <translation>2 ist Gehen, 3 ist Laufen</translation>
    </message>
    <message>
        <source>The next take begins anew, and not from where the rig stood</source>
        <extracomment>HandheldCam: Re-Initialize; Pendulum: Re-Initialize; Turntable: Re-Initialize</extracomment>
        <translation>Der nächste Take beginnt von vorn und nicht dort, wo das Rig stand</translation>
    </message>
    <message>
        <source>Spinner: Amount</source>
        <extracomment>HandheldCam input</extracomment>
        <translation>Regler: Stärke</translation>
    </message>
    <message>
        <source>Spinner: Speed</source>
        <extracomment>HandheldCam input</extracomment>
        <translation>Regler: Geschwindigkeit</translation>
    </message>
    <message>
        <source>Spinner: Step Height</source>
        <extracomment>HandheldCam input</extracomment>
        <translation>Regler: Schritthöhe</translation>
    </message>
    <message>
        <source>Spinner: Steps Per Second</source>
        <extracomment>HandheldCam input</extracomment>
        <translation>Regler: Schritte je Sekunde</translation>
    </message>
    <message>
        <source>Shake (More/Less)</source>
        <extracomment>HandheldCam input</extracomment>
        <translation>Wackeln (Mehr/Weniger)</translation>
    </message>
    <message>
        <source>Orvel Pendulum</source>
        <extracomment>Pendulum</extracomment>
        <translation>Orvel Pendulum</translation>
    </message>
    <message>
        <source>A pendulum that hangs from whatever the Pivot is parented to: a lamp under a crane, a charm in a car, a bell. It swings by gravity and by the movement of its pivot, in any direction and over the top, loses its swing in the air and can be pushed by hand. Parent what is to swing to the Bob.</source>
        <extracomment>Pendulum</extracomment>
        <translation>Ein Pendel, das an dem hängt, worunter der Pivot eingehängt ist: eine Lampe am Kran, ein Anhänger im Auto, eine Glocke. Es schwingt durch Schwerkraft und durch die Bewegung seines Drehpunkts, in jede Richtung und über Kopf, verliert an der Luft seinen Schwung und lässt sich von Hand anstoßen. Was schwingen soll, unter den Bob hängen.</translation>
    </message>
    <message>
        <source>Pendulum Parameters</source>
        <extracomment>Pendulum</extracomment>
        <translation>Parameter des Pendels</translation>
    </message>
    <message>
        <source>What swings, and in what</source>
        <extracomment>Pendulum: Pendulum Parameters</extracomment>
        <translation>Was schwingt, und worin</translation>
    </message>
    <message>
        <source>Length</source>
        <extracomment>Pendulum</extracomment>
        <translation>Länge</translation>
    </message>
    <message>
        <source>From the pivot to the bob (m)</source>
        <extracomment>Pendulum: Length</extracomment>
        <translation>Vom Drehpunkt zum Pendelkörper (m)</translation>
    </message>
    <message>
        <source>Pull downwards (m/s/s); 9.81 on earth</source>
        <extracomment>Pendulum: Gravity</extracomment>
        <translation>Zug nach unten (m/s²); 9,81 auf der Erde</translation>
    </message>
    <message>
        <source>Air Drag</source>
        <extracomment>Pendulum</extracomment>
        <translation>Luftwiderstand</translation>
    </message>
    <message>
        <source>Part of the speed that the air takes per second; 0 swings for ever</source>
        <extracomment>Pendulum: Air Drag</extracomment>
        <translation>Anteil der Geschwindigkeit, den die Luft je Sekunde nimmt; 0 schwingt ewig</translation>
    </message>
    <message>
        <source>Push Strength</source>
        <extracomment>Pendulum</extracomment>
        <translation>Stärke des Anstoßes</translation>
    </message>
    <message>
        <source>Acceleration by a full push input (m/s/s)</source>
        <extracomment>Pendulum: Push Strength</extracomment>
        <translation>Beschleunigung bei vollem Anstoß (m/s²)</translation>
    </message>
    <message>
        <source>How a take begins that goes on from no earlier one</source>
        <extracomment>Pendulum: Start</extracomment>
        <translation>Wie ein Take beginnt, der keinen früheren fortsetzt</translation>
    </message>
    <message>
        <source>Start Angle</source>
        <extracomment>Pendulum</extracomment>
        <translation>Anfangswinkel</translation>
    </message>
    <message>
        <source>From hanging straight down (degrees)</source>
        <extracomment>Pendulum: Start Angle</extracomment>
        <translation>Gegenüber senkrechtem Hängen (Grad)</translation>
    </message>
    <message>
        <source>Start Heading</source>
        <extracomment>Pendulum</extracomment>
        <translation>Anfangsrichtung</translation>
    </message>
    <message>
        <source>Direction of the start angle, from forward to the right (degrees)</source>
        <extracomment>Pendulum: Start Heading</extracomment>
        <translation>Richtung des Anfangswinkels, von vorn nach rechts (Grad)</translation>
    </message>
    <message>
        <source>Move Along At Start</source>
        <extracomment>Pendulum</extracomment>
        <translation>Beim Start mitbewegen</translation>
    </message>
    <message>
        <source>The bob begins with the speed of its pivot, else at rest</source>
        <extracomment>Pendulum: Move Along At Start</extracomment>
        <translation>Der Pendelkörper beginnt mit der Geschwindigkeit seines Drehpunkts, sonst in Ruhe</translation>
    </message>
    <message>
        <source>Spinner: Length</source>
        <extracomment>Pendulum input</extracomment>
        <translation>Regler: Länge</translation>
    </message>
    <message>
        <source>Push (Right/Left)</source>
        <extracomment>Pendulum input</extracomment>
        <translation>Anstoß (Rechts/Links)</translation>
    </message>
    <message>
        <source>Push (Forw/Backw)</source>
        <extracomment>Pendulum input</extracomment>
        <translation>Anstoß (Vor/Zurück)</translation>
    </message>
    <message>
        <source>Orvel Turntable</source>
        <extracomment>Turntable</extracomment>
        <translation>Orvel Turntable</translation>
    </message>
    <message>
        <source>A plate that turns for a product shot: it starts softly, holds its speed, and stops softly after a number of turns, or never. An input rides the speed live. Put the Base where the table stands and parent what is to turn to the Plate.</source>
        <extracomment>Turntable</extracomment>
        <translation>Ein Teller, der sich für eine Produktaufnahme dreht: Er läuft sanft an, hält sein Tempo und hält nach einer Zahl von Umdrehungen sanft an, oder nie. Eine Eingabe führt das Tempo live. Die Base dorthin stellen, wo der Tisch steht, und unter die Plate hängen, was sich drehen soll.</translation>
    </message>
    <message>
        <source>Turntable Parameters</source>
        <extracomment>Turntable</extracomment>
        <translation>Parameter des Drehtellers</translation>
    </message>
    <message>
        <source>How the plate turns</source>
        <extracomment>Turntable: Turntable Parameters</extracomment>
        <translation>Wie sich der Teller dreht</translation>
    </message>
    <message>
        <source>Running</source>
        <extracomment>Turntable</extracomment>
        <translation>Läuft</translation>
    </message>
    <message>
        <source>The table is switched on</source>
        <extracomment>Turntable: Running</extracomment>
        <translation>Der Drehteller ist eingeschaltet</translation>
    </message>
    <message>
        <source>Clockwise</source>
        <extracomment>Turntable</extracomment>
        <translation>Im Uhrzeigersinn</translation>
    </message>
    <message>
        <source>Seen from above</source>
        <extracomment>Turntable: Clockwise</extracomment>
        <translation>Von oben gesehen</translation>
    </message>
    <message>
        <source>Seconds Per Turn</source>
        <extracomment>Turntable</extracomment>
        <translation>Sekunden je Umdrehung</translation>
    </message>
    <message>
        <source>At full speed (s)</source>
        <extracomment>Turntable: Seconds Per Turn</extracomment>
        <translation>Bei vollem Tempo (s)</translation>
    </message>
    <message>
        <source>Soft Start</source>
        <extracomment>Turntable</extracomment>
        <translation>Sanfter Anlauf</translation>
    </message>
    <message>
        <source>Time to full speed, and from there to a stop (s)</source>
        <extracomment>Turntable: Soft Start</extracomment>
        <translation>Zeit bis zum vollen Tempo und von dort bis zum Halt (s)</translation>
    </message>
    <message>
        <source>Turns</source>
        <extracomment>Turntable</extracomment>
        <translation>Umdrehungen</translation>
    </message>
    <message>
        <source>It stops after these; 0 turns for ever</source>
        <extracomment>Turntable: Turns</extracomment>
        <translation>Danach hält er an; 0 dreht ewig</translation>
    </message>
    <message>
        <source>Speed (Faster/Slower)</source>
        <extracomment>Turntable input</extracomment>
        <translation>Tempo (Schneller/Langsamer)</translation>
    </message>
    <message>
        <source>&amp;Speeds of belts</source>
        <translation type="vanished">&amp;Tempo von Ketten</translation>
    </message>
    <message>
        <source>T&amp;ime</source>
        <translation type="vanished">&amp;Zeit</translation>
    </message>
    <message>
        <source>In a take these keys act wherever the focus is.</source>
        <translation type="vanished">In einem Take wirken diese Tasten, wo auch immer der Fokus ist.</translation>
    </message>
    <message>
        <source>&amp;Edges of triangles</source>
        <translation type="vanished">&amp;Kanten der Dreiecke</translation>
    </message>
    <message>
        <source>Autosave</source>
        <translation type="vanished">Automatische Sicherung</translation>
    </message>
    <message>
        <source>%1 was not saved when the program ended.</source>
        <translation type="vanished">%1 war nicht gespeichert, als das Programm endete.</translation>
    </message>
    <message>
        <source>Open what there is of it? No removes it for good.</source>
        <translation type="vanished">Öffnen, was davon da ist? Nein entfernt es endgültig.</translation>
    </message>
    <message>
        <source>Profiles (*.ocp *.xml)</source>
        <translation type="vanished">Profile (*.ocp *.xml)</translation>
    </message>
    <message>
        <source>Profiles (*.ocp)</source>
        <translation type="vanished">Profile (*.ocp)</translation>
    </message>
    <message>
        <source>fps</source>
        <translation type="vanished">B/s</translation>
    </message>
    <message>
        <source>Export p&amp;oses...</source>
        <translation type="vanished">&amp;Posen exportieren ...</translation>
    </message>
    <message>
        <source>&amp;Show frames while it runs</source>
        <translation type="vanished">&amp;Bilder währenddessen zeigen</translation>
    </message>
    <message>
        <source>The centre (%1) and the high end (%2) are too near to each other: they must lie %3 apart.</source>
        <translation type="vanished">Die Mitte (%1) und das obere Ende (%2) liegen zu dicht beieinander: Sie müssen %3 auseinanderliegen.</translation>
    </message>
    <message>
        <source>&amp;Profile</source>
        <translation type="vanished">Pro&amp;fil</translation>
    </message>
    <message>
        <source>%1 up, %2 down</source>
        <translation type="vanished">%1 auf, %2 ab</translation>
    </message>
    <message>
        <source>Move what is to feed %1. Escape cancels.</source>
        <translation type="vanished">Bewegen Sie, was %1 speisen soll. Esc bricht ab.</translation>
    </message>
    <message>
        <source>&amp;Made of</source>
        <translation type="vanished">&amp;Besteht aus</translation>
    </message>
    <message>
        <source>Bring in %1</source>
        <translation type="vanished">%1 hereinholen</translation>
    </message>
    <message>
        <source>Inputs and what they are mapped to</source>
        <translation type="vanished">Eingaben und was ihnen zugeordnet ist</translation>
    </message>
    <message>
        <source>&amp;Press now!</source>
        <translation type="vanished">&amp;Jetzt bewegen!</translation>
    </message>
    <message>
        <source>&amp;Unmap</source>
        <translation type="vanished">&amp;Trennen</translation>
    </message>
    <message>
        <source>&amp;Multiplier</source>
        <translation type="vanished">&amp;Faktor</translation>
    </message>
    <message>
        <source>Move the control that is to feed %1; Escape cancels.</source>
        <translation type="vanished">Bewegen Sie das Bedienelement, das %1 speisen soll; Esc bricht ab.</translation>
    </message>
    <message>
        <source>there is no such file</source>
        <translation type="vanished">eine solche Datei gibt es nicht</translation>
    </message>
    <message>
        <source>it holds no sound</source>
        <translation type="vanished">sie enthält keinen Ton</translation>
    </message>
    <message>
        <source>it is too long</source>
        <translation type="vanished">er ist zu lang</translation>
    </message>
    <message>
        <source>it is no picture that can be read</source>
        <translation type="vanished">es ist kein Bild, das gelesen werden kann</translation>
    </message>
    <message>
        <source>Picture behind #</source>
        <translation type="vanished">Bild hinter #</translation>
    </message>
    <message>
        <source>&amp;Panes</source>
        <translation type="vanished">A&amp;nsichten</translation>
    </message>
</context>
</TS>
