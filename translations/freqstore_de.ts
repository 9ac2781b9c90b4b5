<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>BandSteps</name>
    <message>
        <source>Previous NOI band</source>
        <translation>Voriges NOI-Band</translation>
    </message>
    <message>
        <source>Next NOI band</source>
        <translation>Nächstes NOI-Band</translation>
    </message>
    <message>
        <source>Within NOI band %1 to %2</source>
        <translation>Im NOI-Band %1 bis %2</translation>
    </message>
    <message>
        <source>Outside the NOI bands</source>
        <translation>Außerhalb der NOI-Bänder</translation>
    </message>
</context>
<context>
    <name>BandsPanel</name>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Copy all bands as &quot;lower,upper;&quot; in hertz</source>
        <translation>Alle Bänder als „untere,obere;“ in Hertz kopieren</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message numerus="yes">
        <source>%Ln bands</source>
        <translation>
            <numerusform>%Ln Band</numerusform>
            <numerusform>%Ln Bänder</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln bands of %1 frequencies</source>
        <translation>
            <numerusform>%Ln Band aus %1 Frequenzen</numerusform>
            <numerusform>%Ln Bänder aus %1 Frequenzen</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>DetConvListHandler</name>
    <message>
        <source>Search MC with Classifier</source>
        <translation>Search MC mit Klassifikator</translation>
    </message>
</context>
<context>
    <name>DirectoryLock</name>
    <message>
        <source>%1 (process %2)</source>
        <translation>%1 (Prozess %2)</translation>
    </message>
    <message>
        <source>%1 (process %2 on %3)</source>
        <translation>%1 (Prozess %2 auf %3)</translation>
    </message>
</context>
<context>
    <name>Ending</name>
    <message>
        <source>keeps the memory channels, which were in no job</source>
        <translation>enthält die Speicherkanäle, die in keinem Auftrag waren</translation>
    </message>
    <message>
        <source>keeps the unsaved changes of the job </source>
        <translation>enthält die ungesicherten Änderungen des Auftrags </translation>
    </message>
</context>
<context>
    <name>FailureNote</name>
    <message>
        <source>Dismiss</source>
        <translation>Ausblenden</translation>
    </message>
</context>
<context>
    <name>FileOpener</name>
    <message>
        <source>the target list</source>
        <translation>die Zielliste</translation>
    </message>
    <message>
        <source>the list of memory channels</source>
        <translation>die Liste der Speicherkanäle</translation>
    </message>
    <message>
        <source>the list of frequencies of interest</source>
        <translation>die Liste der Frequenzen von Interesse</translation>
    </message>
    <message>
        <source>a job</source>
        <translation>Auftrag</translation>
    </message>
    <message>
        <source>a list of frequencies of interest</source>
        <translation>Liste von Frequenzen von Interesse</translation>
    </message>
    <message>
        <source>a list of results</source>
        <translation>Ergebnisliste</translation>
    </message>
    <message>
        <source>a file of power sweeps</source>
        <translation>Datei mit Sweeps</translation>
    </message>
    <message>
        <source>a target list</source>
        <translation>Zielliste</translation>
    </message>
    <message>
        <source>is of no known kind of file</source>
        <translation>hat kein bekanntes Dateiformat</translation>
    </message>
    <message>
        <source>holds no entries</source>
        <translation>enthält keine Einträge</translation>
    </message>
    <message numerus="yes">
        <source>%n lines, not one has a frequency</source>
        <translation>
            <numerusform>%n Zeile, ohne Frequenz</numerusform>
            <numerusform>%n Zeilen, keine hat eine Frequenz</numerusform>
        </translation>
    </message>
    <message>
        <source>Read it all the same?</source>
        <translation>Trotzdem lesen?</translation>
    </message>
    <message numerus="yes">
        <source>Read it all the same, in place of the %n entries that are there?</source>
        <translation>
            <numerusform>Trotzdem lesen, anstelle von %n vorhandenen Eintrag?</numerusform>
            <numerusform>Trotzdem lesen, anstelle der %n vorhandenen Einträge?</numerusform>
        </translation>
    </message>
    <message>
        <source>Read It</source>
        <translation>Lesen</translation>
    </message>
    <message>
        <source>is %1, which %2 does not read</source>
        <translation>ist vom Typ „%1“; %2 liest das nicht</translation>
    </message>
    <message>
        <source>Open it as %1?</source>
        <translation>Als %1 öffnen?</translation>
    </message>
    <message>
        <source>Open It</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Open File</source>
        <translation>Datei öffnen</translation>
    </message>
    <message>
        <source>%1; %2 stays as it is</source>
        <translation>%1; %2 bleibt unverändert</translation>
    </message>
    <message numerus="yes">
        <source>%n entries</source>
        <translation>
            <numerusform>%n Eintrag</numerusform>
            <numerusform>%n Einträge</numerusform>
        </translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 was added: %2</source>
        <translation>%1 wurde hinzugefügt: %2</translation>
    </message>
    <message>
        <source>%1 was not read: %2 is empty</source>
        <translation>%1 wurde nicht gelesen: %2 ist leer</translation>
    </message>
    <message>
        <source>%1 was not read: %2 still shows %3</source>
        <translation>%1 wurde nicht gelesen: %2 zeigt weiterhin %3</translation>
    </message>
    <message>
        <source>%1 was not read: %2 still shows %3, %4</source>
        <translation>%1 wurde nicht gelesen: %2 zeigt weiterhin %3, %4</translation>
    </message>
</context>
<context>
    <name>FreqStoreListViewButtonBar</name>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Add an entry</source>
        <translation>Eintrag hinzufügen</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Edit the selected entries</source>
        <translation>Ausgewählte Einträge bearbeiten</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Copy the selected entries</source>
        <translation>Ausgewählte Einträge kopieren</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Add the copied entries to this list</source>
        <translation>Kopierte Einträge in diese Liste einfügen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Delete the selected entries</source>
        <translation>Ausgewählte Einträge löschen</translation>
    </message>
    <message>
        <source>Open…</source>
        <translation>Öffnen…</translation>
    </message>
    <message>
        <source>Replace the list by the content of a file</source>
        <translation>Liste durch den Inhalt einer Datei ersetzen</translation>
    </message>
    <message>
        <source>Save…</source>
        <translation>Speichern…</translation>
    </message>
    <message>
        <source>Save the list to a file</source>
        <translation>Liste in einer Datei speichern</translation>
    </message>
    <message>
        <source>Import…</source>
        <translation>Importieren…</translation>
    </message>
    <message>
        <source>Replace the list by the content of a CSV file</source>
        <translation>Liste durch den Inhalt einer CSV-Datei ersetzen</translation>
    </message>
    <message>
        <source>Export…</source>
        <translation>Exportieren…</translation>
    </message>
    <message>
        <source>Write the list to a CSV file</source>
        <translation>Liste in eine CSV-Datei schreiben</translation>
    </message>
    <message>
        <source>Save to job</source>
        <translation>In Auftrag speichern</translation>
    </message>
    <message>
        <source>Write the channels into the job</source>
        <translation>Kanäle in den Auftrag schreiben</translation>
    </message>
    <message>
        <source>To database</source>
        <translation>An Datenbank</translation>
    </message>
    <message>
        <source>Send the results to the database</source>
        <translation>Ergebnisse an die Datenbank senden</translation>
    </message>
    <message>
        <source>Send to</source>
        <translation>Senden an</translation>
    </message>
    <message>
        <source>Add the selected entries to another list</source>
        <translation>Ausgewählte Einträge in eine andere Liste übernehmen</translation>
    </message>
    <message>
        <source>Immediately</source>
        <translation>Sofort</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>Angehalten</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Let the rows stand still; what comes meanwhile waits</source>
        <translation>Zeilen anhalten; was inzwischen kommt, wartet</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>, %1 shown</source>
        <translation>, %1 angezeigt</translation>
    </message>
    <message>
        <source>, %1 selected</source>
        <translation>, %1 ausgewählt</translation>
    </message>
    <message>
        <source>, paused, %1 waiting</source>
        <translation>, angehalten, %1 warten</translation>
    </message>
    <message numerus="yes">
        <source>%Ln entries</source>
        <translation>
            <numerusform>%Ln Eintrag</numerusform>
            <numerusform>%Ln Einträge</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FrequencyBar</name>
    <message>
        <source>Band of interest: %1 to %2</source>
        <translation>NOI-Band: %1 bis %2</translation>
    </message>
    <message>
        <source>and %1 more here</source>
        <translation>und %1 weitere hier</translation>
    </message>
</context>
<context>
    <name>GuardedApplication</name>
    <message>
        <source>The last action</source>
        <translation>Die letzte Aktion</translation>
    </message>
</context>
<context>
    <name>GuiCentral</name>
    <message>
        <source>Decimal degrees</source>
        <translation>Dezimalgrad</translation>
    </message>
    <message>
        <source>Degrees, minutes</source>
        <translation>Grad, Minuten</translation>
    </message>
    <message>
        <source>Degrees, minutes, seconds</source>
        <translation>Grad, Minuten, Sekunden</translation>
    </message>
    <message>
        <source>UTM</source>
        <translation>UTM</translation>
    </message>
    <message>
        <source>MGRS</source>
        <translation>MGRS</translation>
    </message>
</context>
<context>
    <name>HalvoViewEditor</name>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Further frequencies</source>
        <translation>Weitere Frequenzen</translation>
    </message>
    <message>
        <source>One per line. With any, the channel is a range: the scan goes through all of them.</source>
        <translation>Eine je Zeile. Damit ist der Kanal ein Bereich: Der Suchlauf geht alle durch.</translation>
    </message>
    <message>
        <source>Bandwidth</source>
        <translation>Bandbreite</translation>
    </message>
    <message>
        <source>Comment</source>
        <translation>Kommentar</translation>
    </message>
    <message>
        <source>Demodulation</source>
        <translation>Demodulation</translation>
    </message>
    <message>
        <source>Threshold</source>
        <translation>Schwelle</translation>
    </message>
    <message>
        <source>BFO frequency</source>
        <translation>BFO-Frequenz</translation>
    </message>
    <message>
        <source>Output IF path</source>
        <translation>ZF-Ausgang</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Shift</translation>
    </message>
    <message>
        <source>Squelch</source>
        <translation>Rauschsperre</translation>
    </message>
    <message>
        <source>opens at the threshold</source>
        <translation>öffnet ab der Schwelle</translation>
    </message>
    <message>
        <source>Manual attenuation</source>
        <translation>Manuelle Dämpfung</translation>
    </message>
    <message>
        <source>else the receiver chooses it</source>
        <translation>sonst wählt sie der Empfänger</translation>
    </message>
    <message>
        <source>Attenuation</source>
        <translation>Dämpfung</translation>
    </message>
    <message>
        <source>AFC</source>
        <translation>AFC</translation>
    </message>
    <message>
        <source>Antenna</source>
        <translation>Antenne</translation>
    </message>
    <message>
        <source>%1 entries are edited. What is ticked is written to all of them.</source>
        <translation>%1 Einträge werden bearbeitet. Was angekreuzt ist, wird in alle geschrieben.</translation>
    </message>
    <message>
        <source>Write this field to all selected entries</source>
        <translation>Dieses Feld in alle ausgewählten Einträge schreiben</translation>
    </message>
    <message>
        <source>differs; this is the first entry&apos;s</source>
        <translation>verschieden; dies ist der Wert des ersten Eintrags</translation>
    </message>
    <message>
        <source>What is edited here was removed from the list meanwhile: nothing can be written.</source>
        <translation>Was hier bearbeitet wird, wurde inzwischen aus der Liste entfernt: Es kann nichts geschrieben werden.</translation>
    </message>
</context>
<context>
    <name>JobPanel</name>
    <message>
        <source>Jobs (*.pij)</source>
        <translation>Aufträge (*.pij)</translation>
    </message>
    <message>
        <source>... and %1 more lines</source>
        <translation>... und %1 weitere Zeilen</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Save As...</source>
        <translation>Speichern unter...</translation>
    </message>
    <message>
        <source>Open...</source>
        <translation>Öffnen...</translation>
    </message>
    <message>
        <source>The memory channels are in no job yet</source>
        <translation>Die Speicherkanäle sind noch in keinem Auftrag</translation>
    </message>
    <message>
        <source>The file is up to date</source>
        <translation>Die Datei ist aktuell</translation>
    </message>
    <message>
        <source>The file is older than the job: it has unsaved changes</source>
        <translation>Die Datei ist älter als der Auftrag: Er hat ungesicherte Änderungen</translation>
    </message>
    <message>
        <source>The file was changed by another program</source>
        <translation>Die Datei wurde von einem anderen Programm geändert</translation>
    </message>
    <message>
        <source>The file is gone</source>
        <translation>Die Datei ist verschwunden</translation>
    </message>
    <message>
        <source>No job is open</source>
        <translation>Kein Auftrag ist geöffnet</translation>
    </message>
    <message>
        <source>Open Job</source>
        <translation>Auftrag öffnen</translation>
    </message>
    <message>
        <source>Save Job</source>
        <translation>Auftrag speichern</translation>
    </message>
    <message>
        <source>Another program changed the file. Replace what it wrote?</source>
        <translation>Ein anderes Programm hat die Datei geändert. Soll sie ersetzt werden?</translation>
    </message>
    <message>
        <source>Save Job As</source>
        <translation>Auftrag speichern unter</translation>
    </message>
    <message>
        <source>The memory channels are in no job. Save them in one?</source>
        <translation>Die Speicherkanäle sind in keinem Auftrag. Sollen sie in einem gespeichert werden?</translation>
    </message>
    <message>
        <source>The job %1 has unsaved changes. Save them?</source>
        <translation>Der Auftrag %1 hat ungesicherte Änderungen. Sollen sie gespeichert werden?</translation>
    </message>
    <message>
        <source>Unsaved Job</source>
        <translation>Ungesicherter Auftrag</translation>
    </message>
</context>
<context>
    <name>LevelMeter</name>
    <message>
        <source>Level, with the threshold as a line</source>
        <translation>Pegel, mit der Schwelle als Strich</translation>
    </message>
    <message>
        <source>%1 dBµV</source>
        <translation>%1 dBµV</translation>
    </message>
</context>
<context>
    <name>Limits</name>
    <message>
        <source>from %1</source>
        <translation>ab %1</translation>
    </message>
    <message>
        <source>up to %1</source>
        <translation>bis %1</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>%1 is outside %2 to %3</source>
        <translation>%1 liegt außerhalb von %2 bis %3</translation>
    </message>
    <message>
        <source>%1 is below %2</source>
        <translation>%1 liegt unter %2</translation>
    </message>
    <message>
        <source>%1 is above %2</source>
        <translation>%1 liegt über %2</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>is gone; the frequencies of interest start empty</source>
        <translation>ist verschwunden; die Frequenzen von Interesse beginnen leer</translation>
    </message>
    <message>
        <source>&amp;Search</source>
        <translation>&amp;Suche</translation>
    </message>
    <message>
        <source>data directory cannot be made</source>
        <translation>Datenverzeichnis kann nicht angelegt werden</translation>
    </message>
    <message>
        <source>Job</source>
        <translation>Auftrag</translation>
    </message>
    <message>
        <source>&amp;Open Job...</source>
        <translation>Auftrag ö&amp;ffnen...</translation>
    </message>
    <message>
        <source>&amp;Save Job</source>
        <translation>Auftrag &amp;speichern</translation>
    </message>
    <message>
        <source>Save Job &amp;As...</source>
        <translation>Auftrag speichern &amp;unter...</translation>
    </message>
    <message>
        <source>is also used by %1: a file that it changes is not overwritten, but written beside</source>
        <translation>wird auch von %1 benutzt: Eine dort geänderte Datei wird nicht überschrieben, sondern daneben neu geschrieben</translation>
    </message>
    <message>
        <source>Shared data directory</source>
        <translation>Gemeinsames Datenverzeichnis</translation>
    </message>
    <message>
        <source>No job is open.</source>
        <translation>Kein Auftrag ist geöffnet.</translation>
    </message>
    <message>
        <source>Not saved: </source>
        <translation>Nicht gespeichert: </translation>
    </message>
    <message>
        <source>Open S&amp;weep...</source>
        <translation>S&amp;weep öffnen...</translation>
    </message>
    <message>
        <source>Detections</source>
        <translation>Detektionen</translation>
    </message>
    <message>
        <source>is no plug-in: </source>
        <translation>ist kein Plug-in: </translation>
    </message>
    <message>
        <source>no sample lists were found in this folder or above it</source>
        <translation>in diesem Ordner und darüber wurden keine Beispiellisten gefunden</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>Receiver</source>
        <translation>Empfänger</translation>
    </message>
    <message>
        <source>NOI bands</source>
        <translation>NOI-Bänder</translation>
    </message>
    <message>
        <source>Tuned to %1</source>
        <translation>Abgestimmt auf %1</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Show all &amp;frequencies</source>
        <translation>Alle &amp;Frequenzen zeigen</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>&amp;Über</translation>
    </message>
    <message>
        <source>Frequency Store</source>
        <translation>Frequenzspeicher</translation>
    </message>
    <message>
        <source>&lt;b&gt;Frequency Store&lt;/b&gt;&lt;p&gt;Lists of frequencies for radio monitoring.&lt;/p&gt;&lt;p&gt;Wheel over the bar: zoom. Drag: move. Click: tune. Double click: show all.&lt;/p&gt;</source>
        <translation>&lt;b&gt;Frequenzspeicher&lt;/b&gt;&lt;p&gt;Frequenzlisten für die Funküberwachung.&lt;/p&gt;&lt;p&gt;Mausrad über der Leiste: zoomen. Ziehen: verschieben. Klick: abstimmen. Doppelklick: alles zeigen.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&amp;Positions</source>
        <translation>&amp;Positionen</translation>
    </message>
</context>
<context>
    <name>MemoryDialogs</name>
    <message>
        <source>Select file to read Memory Channels from</source>
        <translation>Datei mit Speicherkanälen öffnen</translation>
    </message>
    <message>
        <source>Memory Channels (*.xml *.sfl *.pij)</source>
        <translation>Speicherkanäle (*.xml *.sfl *.pij)</translation>
    </message>
    <message>
        <source>Memory Channels Changed</source>
        <translation>Speicherkanäle geändert</translation>
    </message>
    <message>
        <source>Memory Channels have been Saved in Frequency Store without saving.
 Do you want to save your settings?</source>
        <translation>Die Speicherkanäle wurden im Frequenzspeicher geändert, aber nicht gespeichert.
 Sollen sie gespeichert werden?</translation>
    </message>
</context>
<context>
    <name>MemoryNeed</name>
    <message>
        <source>%1 entries need %2 of memory, and %3 are available</source>
        <translation>%1 Einträge brauchen %2 Arbeitsspeicher, und %3 sind verfügbar</translation>
    </message>
    <message>
        <source>there is not enough memory; it was given up half-way</source>
        <translation>der Arbeitsspeicher reicht nicht; es wurde mittendrin aufgegeben</translation>
    </message>
</context>
<context>
    <name>MemorySystemHandler</name>
    <message>
        <source>Memory Channels</source>
        <translation>Speicherkanäle</translation>
    </message>
    <message>
        <source>no file is used while a scan surveillance runs</source>
        <translation>während eines überwachten Suchlaufs wird keine Datei benutzt</translation>
    </message>
    <message>
        <source>is of no known kind of file</source>
        <translation>hat kein bekanntes Dateiformat</translation>
    </message>
    <message>
        <source>there is no receiver to take a job</source>
        <translation>kein Empfänger nimmt einen Auftrag an</translation>
    </message>
    <message>
        <source>is no job: it has no SUBJOB</source>
        <translation>ist kein Auftrag: SUBJOB fehlt</translation>
    </message>
    <message>
        <source>not written: the job has no memory-scan section for the channels</source>
        <translation>nicht geschrieben: Der Auftrag hat keinen Abschnitt für Speicherkanäle</translation>
    </message>
    <message>
        <source>not written: there is no job</source>
        <translation>nicht geschrieben: Es gibt keinen Auftrag</translation>
    </message>
    <message>
        <source>memory channels are written as .xml or into a job</source>
        <translation>Speicherkanäle werden als .xml oder in einen Auftrag geschrieben</translation>
    </message>
</context>
<context>
    <name>MemorySystemListView</name>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Bandwidth</source>
        <translation>Bandbreite</translation>
    </message>
    <message>
        <source>Comment</source>
        <translation>Kommentar</translation>
    </message>
    <message>
        <source>Demodulation</source>
        <translation>Demodulation</translation>
    </message>
    <message>
        <source>Use Threshold</source>
        <translation>Schwelle benutzen</translation>
    </message>
    <message>
        <source>Threshold</source>
        <translation>Schwelle</translation>
    </message>
    <message>
        <source>Man. Attenuation</source>
        <translation>Man. Dämpfung</translation>
    </message>
    <message>
        <source>Attenuation</source>
        <translation>Dämpfung</translation>
    </message>
    <message>
        <source>AFC</source>
        <translation>AFC</translation>
    </message>
    <message>
        <source>BFOFrequency</source>
        <translation>BFO-Frequenz</translation>
    </message>
    <message>
        <source>OutputIFPath</source>
        <translation>ZF-Ausgang</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Shift</translation>
    </message>
    <message>
        <source>Frequency Store - Memory channels</source>
        <translation>Frequenzspeicher - Speicherkanäle</translation>
    </message>
    <message>
        <source>Add a channel with the receiver&apos;s present settings</source>
        <translation>Kanal mit den aktuellen Einstellungen des Empfängers hinzufügen</translation>
    </message>
    <message>
        <source>Add the channels of a file</source>
        <translation>Kanäle einer Datei hinzufügen</translation>
    </message>
    <message>
        <source>The receiver is in scan surveillance: no file is opened or written.</source>
        <translation>Der Empfänger ist im überwachten Suchlauf: Dateien werden nicht geöffnet und nicht geschrieben.</translation>
    </message>
    <message>
        <source>The last file could not be read: open another one.</source>
        <translation>Die letzte Datei konnte nicht gelesen werden: Öffnen Sie eine andere.</translation>
    </message>
    <message>
        <source>Frequency Store - Memory Items - %1</source>
        <translation>Frequenzspeicher - Speicherkanäle - %1</translation>
    </message>
    <message>
        <source>Memory Items Editor</source>
        <translation>Speicherkanäle bearbeiten</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>To Job successful</source>
        <translation>In Auftrag geschrieben</translation>
    </message>
    <message>
        <source>To Job not successful</source>
        <translation>Nicht in Auftrag geschrieben</translation>
    </message>
    <message>
        <source>Copied row</source>
        <translation>Kopierte Zeile</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a frequency</source>
        <translation>„%1“ ist keine Frequenz</translation>
    </message>
</context>
<context>
    <name>NOIFrequencyHandler</name>
    <message>
        <source>NOI Frequencies</source>
        <translation>NOI-Frequenzen</translation>
    </message>
</context>
<context>
    <name>NoiDialogs</name>
    <message>
        <source>Select file to read NOI Frequencies from</source>
        <translation>Datei mit NOI-Frequenzen öffnen</translation>
    </message>
    <message>
        <source>Select file to import NOI Frequencies from</source>
        <translation>Datei mit NOI-Frequenzen importieren</translation>
    </message>
    <message>
        <source>Select Filename for saving</source>
        <translation>Dateiname zum Speichern</translation>
    </message>
    <message>
        <source>NOI Files (*.xml)</source>
        <translation>NOI-Dateien (*.xml)</translation>
    </message>
    <message>
        <source>NOI Files</source>
        <translation>NOI-Dateien</translation>
    </message>
</context>
<context>
    <name>NoiKeeper</name>
    <message>
        <source>The frequencies of interest could not be saved in %1.</source>
        <translation>Die Frequenzen von Interesse konnten nicht in %1 gespeichert werden.</translation>
    </message>
    <message>
        <source>The frequencies of interest have no file since a file dialog was cancelled.</source>
        <translation>Die Frequenzen von Interesse haben keine Datei, seit ein Dateidialog abgebrochen wurde.</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>Save Elsewhere...</source>
        <translation>Anderswo speichern...</translation>
    </message>
    <message>
        <source>Leave Without Saving</source>
        <translation>Beenden ohne Speichern</translation>
    </message>
    <message>
        <source>Stay</source>
        <translation>Bleiben</translation>
    </message>
    <message>
        <source>Save As...</source>
        <translation>Speichern unter...</translation>
    </message>
    <message>
        <source>Empty the File</source>
        <translation>Datei leeren</translation>
    </message>
    <message>
        <source>Keep the File</source>
        <translation>Datei behalten</translation>
    </message>
    <message>
        <source>Frequencies of Interest</source>
        <translation>Frequenzen von Interesse</translation>
    </message>
    <message>
        <source>A file that is kept is read again at the next start.</source>
        <translation>Eine behaltene Datei wird beim nächsten Start wieder gelesen.</translation>
    </message>
    <message>
        <source>keeps the frequencies of interest, which had no file any more</source>
        <translation>enthält die Frequenzen von Interesse, die keine Datei mehr hatten</translation>
    </message>
    <message numerus="yes">
        <source>The list of frequencies of interest is empty; its file %1 still holds %n entries.</source>
        <translation>
            <numerusform>Die Liste der Frequenzen von Interesse ist leer; ihre Datei %1 enthält noch %n Eintrag.</numerusform>
            <numerusform>Die Liste der Frequenzen von Interesse ist leer; ihre Datei %1 enthält noch %n Einträge.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Range of %1 frequencies:</source>
        <translation>Bereich aus %1 Frequenzen:</translation>
    </message>
</context>
<context>
    <name>Receiver</name>
    <message>
        <source>there is no antenna %1</source>
        <translation>es gibt keine Antenne %1</translation>
    </message>
    <message>
        <source>there is no %1 &quot;%2&quot;</source>
        <translation>unbekannt: %1 „%2“</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is no number</source>
        <translation>%1 „%2“ ist keine Zahl</translation>
    </message>
    <message>
        <source>%1 %2 is outside %3 to %4</source>
        <translation>%1 %2 liegt außerhalb von %3 bis %4</translation>
    </message>
    <message>
        <source>%1 receiver: %2</source>
        <translation>%1-Empfänger: %2</translation>
    </message>
    <message>
        <source>The entry has no frequency</source>
        <translation>Der Eintrag hat keine Frequenz</translation>
    </message>
    <message>
        <source>Tuned to %1, but %2</source>
        <translation>Abgestimmt auf %1, aber %2</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Bandwidth</source>
        <translation>Bandbreite</translation>
    </message>
    <message>
        <source>Demodulation</source>
        <translation>Demodulation</translation>
    </message>
    <message>
        <source>Threshold</source>
        <translation>Schwelle</translation>
    </message>
    <message>
        <source>BFO</source>
        <translation>BFO</translation>
    </message>
    <message>
        <source>Output IF path</source>
        <translation>ZF-Ausgang</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Shift</translation>
    </message>
    <message>
        <source>Squelch</source>
        <translation>Rauschsperre</translation>
    </message>
    <message>
        <source>AFC</source>
        <translation>AFC</translation>
    </message>
    <message>
        <source>Manual attenuation</source>
        <translation>Manuelle Dämpfung</translation>
    </message>
    <message>
        <source>Attenuation</source>
        <translation>Dämpfung</translation>
    </message>
    <message>
        <source>Antenna</source>
        <translation>Antenne</translation>
    </message>
</context>
<context>
    <name>ReceiverPanel</name>
    <message>
        <source>%1 receiver, %2 to %3</source>
        <translation>%1-Empfänger, %2 bis %3</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>ResultDialogs</name>
    <message>
        <source>Search MC Data Results</source>
        <translation>Search-MC-Ergebnisse</translation>
    </message>
    <message>
        <source>Save Search MC Data Results As</source>
        <translation>Search-MC-Ergebnisse speichern unter</translation>
    </message>
    <message>
        <source>Export Search MC Data Results As</source>
        <translation>Search-MC-Ergebnisse exportieren als</translation>
    </message>
    <message>
        <source>Memory Items List: Could not open %1 for writing, do you want to save to a different file?</source>
        <translation>Ergebnisliste: %1 kann nicht zum Schreiben geöffnet werden. In einer anderen Datei speichern?</translation>
    </message>
</context>
<context>
    <name>SearchMC</name>
    <message>
        <source>Searching...</source>
        <translation>Suche läuft...</translation>
    </message>
    <message>
        <source>Invalid DF result</source>
        <translation>Ungültige Peilung</translation>
    </message>
    <message>
        <source>Locate timeout</source>
        <translation>Zeit für Ortung abgelaufen</translation>
    </message>
    <message>
        <source>Class. Frequency</source>
        <translation>Klass. Frequenz</translation>
    </message>
    <message>
        <source>Class. Bandwidth</source>
        <translation>Klass. Bandbreite</translation>
    </message>
    <message>
        <source>Class. Confidence</source>
        <translation>Klass. Konfidenz</translation>
    </message>
    <message>
        <source>Class. Modulation</source>
        <translation>Klass. Modulation</translation>
    </message>
    <message>
        <source>Class. Trans.</source>
        <translation>Klass. Verfahren</translation>
    </message>
    <message>
        <source>Class. Baudrate</source>
        <translation>Klass. Baudrate</translation>
    </message>
    <message>
        <source>Class. Shift</source>
        <translation>Klass. Shift</translation>
    </message>
    <message>
        <source>Class. Block Length</source>
        <translation>Klass. Blocklänge</translation>
    </message>
    <message>
        <source>Class. Primary Mod.</source>
        <translation>Klass. Primärmod.</translation>
    </message>
    <message>
        <source>Class. Cycle Time</source>
        <translation>Klass. Zykluszeit</translation>
    </message>
    <message>
        <source>Class. Tone Count</source>
        <translation>Klass. Tonanzahl</translation>
    </message>
    <message>
        <source>Class. Channels</source>
        <translation>Klass. Kanäle</translation>
    </message>
    <message>
        <source>Class. Decoder</source>
        <translation>Klass. Decoder</translation>
    </message>
    <message>
        <source>Azimuth</source>
        <translation>Azimut</translation>
    </message>
    <message>
        <source>DF Quality</source>
        <translation>Peilgüte</translation>
    </message>
    <message>
        <source>Location</source>
        <translation>Standort</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>ID</source>
        <translation>ID</translation>
    </message>
    <message>
        <source>Bandwidth</source>
        <translation>Bandbreite</translation>
    </message>
    <message>
        <source>Level</source>
        <translation>Pegel</translation>
    </message>
    <message>
        <source>From</source>
        <translation>Von</translation>
    </message>
    <message>
        <source>Until</source>
        <translation>Bis</translation>
    </message>
    <message>
        <source>Frequency Store - Detection Conventional</source>
        <translation>Frequenzspeicher - Konventionelle Detektion</translation>
    </message>
    <message>
        <source>Detection %1, level %2, %3</source>
        <translation>Detektion %1, Pegel %2, %3</translation>
    </message>
</context>
<context>
    <name>SearchMCDataHandler</name>
    <message>
        <source>Data Results</source>
        <translation>Ergebnisse</translation>
    </message>
</context>
<context>
    <name>SearchMCDataListView</name>
    <message>
        <source>Lock State</source>
        <translation>Lock-Status</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Bandwidth</source>
        <translation>Bandbreite</translation>
    </message>
    <message>
        <source>Signal Time</source>
        <translation>Signalzeit</translation>
    </message>
    <message>
        <source>Confidence</source>
        <translation>Konfidenz</translation>
    </message>
    <message>
        <source>Frequency Store - Search MC Data Results </source>
        <translation>Frequenzspeicher - Search-MC-Ergebnisse </translation>
    </message>
    <message>
        <source>Frequency Store - Search MC Data Results, File: </source>
        <translation>Frequenzspeicher - Search-MC-Ergebnisse, Datei: </translation>
    </message>
</context>
<context>
    <name>SearchMCExtendedVectorListView</name>
    <message>
        <source>Save Search MC Results As</source>
        <translation>Search-MC-Detektionen speichern unter</translation>
    </message>
    <message>
        <source>classification results (*.xml)</source>
        <translation>Klassifikationsergebnisse (*.xml)</translation>
    </message>
    <message>
        <source>Export Search MC Results As</source>
        <translation>Search-MC-Detektionen exportieren als</translation>
    </message>
    <message>
        <source>classification results (*.csv)</source>
        <translation>Klassifikationsergebnisse (*.csv)</translation>
    </message>
</context>
<context>
    <name>SearchMCNOIListView</name>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Bandwidth</source>
        <translation>Bandbreite</translation>
    </message>
    <message>
        <source>Comment</source>
        <translation>Kommentar</translation>
    </message>
    <message>
        <source>Frequency Store - NOI Frequencies</source>
        <translation>Frequenzspeicher - NOI-Frequenzen</translation>
    </message>
    <message>
        <source>The last file could not be read: open another one.</source>
        <translation>Die letzte Datei konnte nicht gelesen werden: Öffnen Sie eine andere.</translation>
    </message>
    <message>
        <source>Frequency of interest</source>
        <translation>Frequenz von Interesse</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
</context>
<context>
    <name>SearchMCVectorListView</name>
    <message>
        <source>Save Search MC Results As</source>
        <translation>Search-MC-Detektionen speichern unter</translation>
    </message>
    <message>
        <source>Detection Results (*.xml)</source>
        <translation>Detektionen (*.xml)</translation>
    </message>
    <message>
        <source>Export Search MC Results As</source>
        <translation>Search-MC-Detektionen exportieren als</translation>
    </message>
    <message>
        <source>Detection Results (*.csv)</source>
        <translation>Detektionen (*.csv)</translation>
    </message>
</context>
<context>
    <name>SendTo</name>
    <message>
        <source>Tolerance</source>
        <translation>Toleranz</translation>
    </message>
    <message>
        <source>An entry is there already when one lies within (Hz)</source>
        <translation>Ein Eintrag ist schon da, wenn einer so nahe liegt (Hz)</translation>
    </message>
    <message>
        <source>%1 sent to %2</source>
        <translation>%1 an %2 gesendet</translation>
    </message>
    <message>
        <source>, %1 there already</source>
        <translation>, %1 schon vorhanden</translation>
    </message>
    <message>
        <source>, %1 without a frequency</source>
        <translation>, %1 ohne Frequenz</translation>
    </message>
    <message>
        <source>Tolerance: %1...</source>
        <translation>Toleranz: %1...</translation>
    </message>
</context>
<context>
    <name>SimulatedClassifier</name>
    <message>
        <source>Simulated &amp;classifier</source>
        <translation>Simulierter &amp;Klassifikator</translation>
    </message>
</context>
<context>
    <name>SimulatedSearch</name>
    <message>
        <source>&amp;Simulated search</source>
        <translation>&amp;Simulierte Suche</translation>
    </message>
</context>
<context>
    <name>SortListView</name>
    <message>
        <source>Unsorted</source>
        <translation>Unsortiert</translation>
    </message>
    <message>
        <source>Reset columns</source>
        <translation>Spalten zurücksetzen</translation>
    </message>
</context>
<context>
    <name>SweepDialog</name>
    <message>
        <source>Open Sweep</source>
        <translation>Sweep öffnen</translation>
    </message>
    <message>
        <source>&amp;Threshold above the noise floor:</source>
        <translation>&amp;Schwelle über dem Rauschen:</translation>
    </message>
    <message>
        <source>&amp;Minimum width:</source>
        <translation>&amp;Mindestbreite:</translation>
    </message>
    <message>
        <source>&amp;Hold time:</source>
        <translation>&amp;Haltezeit:</translation>
    </message>
    <message>
        <source>A signal that was away no longer than this is the same detection.</source>
        <translation>Ein Signal, das nicht länger als diese Zeit weg war, ist dieselbe Detektion.</translation>
    </message>
    <message>
        <source>Time &amp;zone of the sweeps:</source>
        <translation>&amp;Zeitzone der Sweeps:</translation>
    </message>
    <message>
        <source>No time zone is called &quot;%1&quot;.</source>
        <translation>Keine Zeitzone heißt „%1“.</translation>
    </message>
</context>
<context>
    <name>SweepImport</name>
    <message>
        <source>Open Sweep</source>
        <translation>Sweep öffnen</translation>
    </message>
    <message>
        <source>Power sweeps (*.csv);;All files (*)</source>
        <translation>Sweeps (*.csv);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>another file of sweeps is being read</source>
        <translation>eine andere Datei mit Sweeps wird gerade gelesen</translation>
    </message>
    <message>
        <source>holds no power sweeps</source>
        <translation>enthält keine Sweeps</translation>
    </message>
    <message>
        <source>%1: %2 detections in %3 sweeps</source>
        <translation>%1: %2 Detektionen in %3 Sweeps</translation>
    </message>
    <message>
        <source>Looking for signals...</source>
        <translation>Signale werden gesucht...</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>TargetDialogs</name>
    <message>
        <source>Select Filename for saving</source>
        <translation>Dateiname zum Speichern</translation>
    </message>
    <message>
        <source>Select file to read target list from</source>
        <translation>Zielliste öffnen</translation>
    </message>
    <message>
        <source>Target List Files (*.xml *.sfl *.ltl)</source>
        <translation>Ziellisten (*.xml *.sfl *.ltl)</translation>
    </message>
    <message>
        <source>Select file to import target list from</source>
        <translation>Zielliste importieren</translation>
    </message>
    <message>
        <source>Target List Files (*.csv)</source>
        <translation>Ziellisten (*.csv)</translation>
    </message>
    <message>
        <source>Local Target List (*.xml)</source>
        <translation>Lokale Zielliste (*.xml)</translation>
    </message>
    <message>
        <source>Export Local Target List (*.csv)</source>
        <translation>Exportierte lokale Zielliste (*.csv)</translation>
    </message>
</context>
<context>
    <name>TargetListParser</name>
    <message>
        <source>Local TargetList</source>
        <translation>Lokale Zielliste</translation>
    </message>
</context>
<context>
    <name>VCFrequencyList</name>
    <message>
        <source>&quot;%1&quot; is not a frequency</source>
        <translation>„%1“ ist keine Frequenz</translation>
    </message>
    <message>
        <source>Line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
</context>
<context>
    <name>VCLineEdit</name>
    <message>
        <source>&quot;%1&quot; is not a whole number</source>
        <translation>„%1“ ist keine ganze Zahl</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number</source>
        <translation>„%1“ ist keine Zahl</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a frequency</source>
        <translation>„%1“ ist keine Frequenz</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a bandwidth</source>
        <translation>„%1“ ist keine Bandbreite</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be taken here</source>
        <translation>„%1“ ist hier nicht möglich</translation>
    </message>
</context>
<context>
    <name>WkfListView</name>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Bandwidth</source>
        <translation>Bandbreite</translation>
    </message>
    <message>
        <source>Demodulation</source>
        <translation>Demodulation</translation>
    </message>
    <message>
        <source>Priority</source>
        <translation>Priorität</translation>
    </message>
    <message>
        <source>Threatclass</source>
        <translation>Bedrohungsklasse</translation>
    </message>
    <message>
        <source>Signal Class</source>
        <translation>Signalklasse</translation>
    </message>
    <message>
        <source>Transmission System</source>
        <translation>Übertragungsverfahren</translation>
    </message>
    <message>
        <source>Frequency Store - Local Target List</source>
        <translation>Frequenzspeicher - Lokale Zielliste</translation>
    </message>
    <message>
        <source>Frequency Store - Local Target List - %1</source>
        <translation>Frequenzspeicher - Lokale Zielliste - %1</translation>
    </message>
</context>
</TS>
