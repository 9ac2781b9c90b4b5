<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AboutDialog</name>
    <message>
        <source>window, drawing, printing, files</source>
        <translation>Fenster, Zeichnen, Drucken, Dateien</translation>
    </message>
    <message>
        <source>forms of positions</source>
        <translation>Schreibweisen von Positionen</translation>
    </message>
    <message>
        <source>C++ standard library</source>
        <translation>Standardbibliothek von C++</translation>
    </message>
    <message>
        <source>&lt;h2&gt;Frequency Store&lt;/h2&gt;&lt;p&gt;Version %1&lt;/p&gt;&lt;p&gt;Lists of frequencies for radio monitoring.&lt;/p&gt;</source>
        <translation>&lt;h2&gt;Frequenzspeicher&lt;/h2&gt;&lt;p&gt;Version %1&lt;/p&gt;&lt;p&gt;Frequenzlisten für die Funküberwachung.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothek</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Licence</source>
        <translation>Lizenz</translation>
    </message>
    <message>
        <source>For</source>
        <translation>Für</translation>
    </message>
    <message>
        <source>About Frequency Store</source>
        <translation>Über Frequenzspeicher</translation>
    </message>
    <message>
        <source>&amp;Program</source>
        <translation>&amp;Programm</translation>
    </message>
    <message>
        <source>&amp;Licence</source>
        <translation>&amp;Lizenz</translation>
    </message>
    <message>
        <source>Li&amp;braries</source>
        <translation>&amp;Bibliotheken</translation>
    </message>
</context>
<context>
    <name>Account</name>
    <message>
        <source>settings of the receiver</source>
        <translation>Einstellungen des Empfängers</translation>
    </message>
    <message>
        <source>ranges, each of whose frequencies is written</source>
        <translation>Bereiche, deren Frequenzen einzeln geschrieben werden</translation>
    </message>
    <message>
        <source>days in words, taken as daily</source>
        <translation>Tage in Worten, als täglich gelesen</translation>
    </message>
    <message>
        <source>levels</source>
        <translation>Pegel</translation>
    </message>
    <message>
        <source>BFO frequencies</source>
        <translation>BFO-Frequenzen</translation>
    </message>
    <message>
        <source>priorities</source>
        <translation>Prioritäten</translation>
    </message>
    <message>
        <source>threat classes</source>
        <translation>Bedrohungsklassen</translation>
    </message>
    <message>
        <source>profiles</source>
        <translation>Profile</translation>
    </message>
    <message>
        <source>times on air</source>
        <translation>Sendezeiten</translation>
    </message>
    <message>
        <source>results</source>
        <translation>Ergebnisse</translation>
    </message>
    <message>
        <source>classifications, levels and times</source>
        <translation>Klassifikationen, Pegel und Zeiten</translation>
    </message>
    <message>
        <source>entries without a frequency of 1 Hz to 1 THz</source>
        <translation>Einträge ohne Frequenz von 1 Hz bis 1 THz</translation>
    </message>
    <message>
        <source>colours of tags</source>
        <translation>Farben von Schlagwörtern</translation>
    </message>
    <message>
        <source>&quot;;&quot; in names</source>
        <translation>„;“ in Namen</translation>
    </message>
    <message>
        <source>&quot;;&quot; in tags</source>
        <translation>„;“ in Schlagwörtern</translation>
    </message>
    <message>
        <source>entries without a location</source>
        <translation>Einträge ohne Ort</translation>
    </message>
    <message>
        <source>modes that are none here</source>
        <translation>Betriebsarten, die das Format nicht kennt</translation>
    </message>
    <message>
        <source>bandwidths</source>
        <translation>Bandbreiten</translation>
    </message>
    <message>
        <source>bandwidths that are none</source>
        <translation>ungültige Bandbreiten</translation>
    </message>
    <message>
        <source>unknown modes</source>
        <translation>unbekannte Betriebsarten</translation>
    </message>
    <message>
        <source>bandwidths from the mode</source>
        <translation>Bandbreiten aus der Betriebsart</translation>
    </message>
    <message>
        <source>fractions of a Hz</source>
        <translation>Bruchteile eines Hz</translation>
    </message>
    <message>
        <source>modes</source>
        <translation>Betriebsarten</translation>
    </message>
    <message>
        <source>colours</source>
        <translation>Farben</translation>
    </message>
    <message>
        <source>names that are there twice</source>
        <translation>doppelte Namen</translation>
    </message>
    <message>
        <source>entries without a bandwidth</source>
        <translation>Einträge ohne Bandbreite</translation>
    </message>
    <message>
        <source>last line without an end</source>
        <translation>letzte Zeile ohne Zeilenende</translation>
    </message>
    <message>
        <source>titles</source>
        <translation>Überschriften der Tabelle</translation>
    </message>
</context>
<context>
    <name>BandPlan</name>
    <message>
        <source>Region 1 (Europe, Africa)</source>
        <translation>Region 1 (Europa, Afrika)</translation>
    </message>
    <message>
        <source>Region 2 (Americas)</source>
        <translation>Region 2 (Amerika)</translation>
    </message>
    <message>
        <source>Region 3 (Asia, Pacific)</source>
        <translation>Region 3 (Asien, Pazifik)</translation>
    </message>
</context>
<context>
    <name>BandPlanChoice</name>
    <message>
        <source>&amp;Band plan</source>
        <translation>&amp;Bandplan</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keiner</translation>
    </message>
    <message>
        <source>Show no band plan</source>
        <translation>Keinen Bandplan zeigen</translation>
    </message>
    <message>
        <source>Show behind the bar what the bands are used for in this region</source>
        <translation>Hinter der Leiste zeigen, wofür die Bänder in dieser Region benutzt werden</translation>
    </message>
</context>
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
    <message>
        <source>NOI bands</source>
        <translation>NOI-Bänder</translation>
    </message>
</context>
<context>
    <name>BarColors</name>
    <message>
        <source>urgent</source>
        <translation>dringend</translation>
    </message>
    <message>
        <source>low</source>
        <translation>niedrig</translation>
    </message>
    <message>
        <source>priority %1</source>
        <translation>Priorität %1</translation>
    </message>
    <message>
        <source>the most urgent</source>
        <translation>die dringendste</translation>
    </message>
    <message>
        <source>no priority</source>
        <translation>ohne Priorität</translation>
    </message>
    <message>
        <source>other types, and detections</source>
        <translation>andere Typen, und Detektionen</translation>
    </message>
    <message>
        <source>bands of interest</source>
        <translation>NOI-Bänder</translation>
    </message>
    <message>
        <source>band plan: %1</source>
        <translation>Bandplan: %1</translation>
    </message>
</context>
<context>
    <name>BoundWidget</name>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
</context>
<context>
    <name>BrokerAddress</name>
    <message>
        <source>is no address such as mqtts://user@broker/site</source>
        <translation>ist keine Adresse wie mqtts://user@broker/site</translation>
    </message>
    <message>
        <source>has a password, which belongs into a file or the environment</source>
        <translation>enthält ein Passwort; das gehört in eine Datei oder in die Umgebung</translation>
    </message>
    <message>
        <source>does not name a site, as in mqtts://broker/site</source>
        <translation>nennt keinen Standort wie in mqtts://broker/site</translation>
    </message>
    <message>
        <source>is another machine, to which only mqtts:// connects</source>
        <translation>ist ein anderer Rechner, mit dem nur mqtts:// verbindet</translation>
    </message>
    <message>
        <source>may be read by others; its mode must be 600</source>
        <translation>ist für andere lesbar; die Rechte müssen 600 sein</translation>
    </message>
    <message>
        <source>holds no password in its first line</source>
        <translation>enthält in der ersten Zeile kein Passwort</translation>
    </message>
</context>
<context>
    <name>CellDelegate</name>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
</context>
<context>
    <name>ChannelPlan</name>
    <message>
        <source>There are no channels in the list.</source>
        <translation>In der Liste sind keine Kanäle.</translation>
    </message>
</context>
<context>
    <name>ColumnTips</name>
    <message>
        <source>Automatic frequency control: the receiver follows the signal</source>
        <translation>Automatische Frequenzregelung: der Empfänger folgt dem Signal</translation>
    </message>
    <message>
        <source>Attenuation before the receiver&apos;s input, in dB</source>
        <translation>Dämpfung vor dem Eingang des Empfängers, in dB</translation>
    </message>
    <message>
        <source>Beat frequency oscillator: the pitch at which CW is heard, in Hz</source>
        <translation>Schwebungsoszillator: die Tonhöhe, in der CW zu hören ist, in Hz</translation>
    </message>
    <message>
        <source>Width of the signal or of the receiver&apos;s filter</source>
        <translation>Breite des Signals oder des Filters im Empfänger</translation>
    </message>
    <message>
        <source>Bandwidth that the classifier measured</source>
        <translation>Bandbreite, die der Klassifikator gemessen hat</translation>
    </message>
    <message>
        <source>How sure the classifier is, in per cent</source>
        <translation>Wie sicher der Klassifikator ist, in Prozent</translation>
    </message>
    <message>
        <source>Centre frequency that the classifier measured</source>
        <translation>Mittenfrequenz, die der Klassifikator gemessen hat</translation>
    </message>
    <message>
        <source>Modulation that the classifier recognised</source>
        <translation>Modulation, die der Klassifikator erkannt hat</translation>
    </message>
    <message>
        <source>Transmission system that the classifier recognised</source>
        <translation>Übertragungsverfahren, das der Klassifikator erkannt hat</translation>
    </message>
    <message>
        <source>How the receiver makes the signal audible: AM, FM, USB, ...</source>
        <translation>Wie der Empfänger das Signal hörbar macht: AM, FM, USB, ...</translation>
    </message>
    <message>
        <source>When the signal was first seen</source>
        <translation>Wann das Signal zuerst da war</translation>
    </message>
    <message>
        <source>Number or name of the emission</source>
        <translation>Nummer oder Name der Aussendung</translation>
    </message>
    <message>
        <source>Level at the receiver&apos;s input, in dBµV</source>
        <translation>Pegel am Eingang des Empfängers, in dBµV</translation>
    </message>
    <message>
        <source>Whether the classifier is locked to the signal</source>
        <translation>Ob der Klassifikator auf das Signal eingerastet ist</translation>
    </message>
    <message>
        <source>Whether the attenuation is set by hand instead of by the receiver</source>
        <translation>Ob die Dämpfung von Hand eingestellt ist, nicht vom Empfänger</translation>
    </message>
    <message>
        <source>Which intermediate frequency (IF) the receiver puts out</source>
        <translation>Welche Zwischenfrequenz (ZF) der Empfänger ausgibt</translation>
    </message>
    <message>
        <source>How important the target is; its mark has the colour of it</source>
        <translation>Wie wichtig das Ziel ist; danach richtet sich die Farbe seiner Marke</translation>
    </message>
    <message>
        <source>Distance of the two tones of frequency shift keying, in Hz</source>
        <translation>Abstand der zwei Töne bei Frequenzumtastung, in Hz</translation>
    </message>
    <message>
        <source>What kind of signal is expected</source>
        <translation>Welche Art von Signal erwartet wird</translation>
    </message>
    <message>
        <source>When the classifier locked to the signal</source>
        <translation>Wann der Klassifikator auf das Signal eingerastet ist</translation>
    </message>
    <message>
        <source>How much of a threat the target is held to be</source>
        <translation>Für wie bedrohlich das Ziel gehalten wird</translation>
    </message>
    <message>
        <source>Squelch: a level below it is not heard, in dBµV</source>
        <translation>Rauschsperre: ein Pegel darunter ist nicht zu hören, in dBµV</translation>
    </message>
    <message>
        <source>The transmission system that is expected, such as a modem&apos;s</source>
        <translation>Das erwartete Übertragungsverfahren, etwa das eines Modems</translation>
    </message>
    <message>
        <source>When the signal was last seen</source>
        <translation>Wann das Signal zuletzt da war</translation>
    </message>
    <message>
        <source>Whether the squelch is on</source>
        <translation>Ob die Rauschsperre an ist</translation>
    </message>
</context>
<context>
    <name>ConnectDialog</name>
    <message>
        <source>&amp;Test</source>
        <translation>&amp;Testen</translation>
    </message>
    <message>
        <source>Connect Receiver</source>
        <translation>Empfänger verbinden</translation>
    </message>
    <message>
        <source>&amp;Connect</source>
        <translation>&amp;Verbinden</translation>
    </message>
    <message>
        <source>A receiver with a name is kept; choose it here the next time</source>
        <translation>Ein Empfänger mit Namen wird behalten; er kann das nächste Mal hier gewählt werden</translation>
    </message>
    <message>
        <source>Forget the receiver of this name</source>
        <translation>Den Empfänger dieses Namens vergessen</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>&amp;Name:</translation>
    </message>
    <message>
        <source>maker, model or number</source>
        <translation>Hersteller, Modell oder Nummer</translation>
    </message>
    <message>
        <source>&amp;Search:</source>
        <translation>&amp;Suche:</translation>
    </message>
    <message>
        <source>Models</source>
        <translation>Modelle</translation>
    </message>
    <message>
        <source>Simulated receiver</source>
        <translation>Simulierter Empfänger</translation>
    </message>
    <message>
        <source>%1 (model %2)</source>
        <translation>%1 (Modell %2)</translation>
    </message>
    <message>
        <source>&amp;Model:</source>
        <translation>&amp;Modell:</translation>
    </message>
    <message>
        <source>&amp;Port:</source>
        <translation>&amp;Anschluss:</translation>
    </message>
    <message>
        <source>that of the model</source>
        <translation>die des Modells</translation>
    </message>
    <message>
        <source>%1 baud</source>
        <translation>%1 Baud</translation>
    </message>
    <message>
        <source>Spee&amp;d:</source>
        <translation>&amp;Geschwindigkeit:</translation>
    </message>
    <message>
        <source>How long one answer of the radio may take</source>
        <translation>Wie lange eine Antwort des Funkgeräts dauern darf</translation>
    </message>
    <message>
        <source>T&amp;ime-out:</source>
        <translation>&amp;Wartezeit:</translation>
    </message>
    <message>
        <source>Connect for a moment and show what the radio answers; nothing is set</source>
        <translation>Kurz verbinden und zeigen, was das Funkgerät antwortet; eingestellt wird nichts</translation>
    </message>
    <message>
        <source>Connecting...</source>
        <translation>Verbindet...</translation>
    </message>
    <message>
        <source>No answer: %1</source>
        <translation>Keine Antwort: %1</translation>
    </message>
    <message>
        <source>Refused: %1</source>
        <translation>Abgelehnt: %1</translation>
    </message>
    <message>
        <source>%1 dBµV</source>
        <translation>%1 dBµV</translation>
    </message>
    <message>
        <source>It answers: %1</source>
        <translation>Es antwortet: %1</translation>
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
    <name>DetailsPanel</name>
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
        <source>Comment</source>
        <translation>Kommentar</translation>
    </message>
    <message>
        <source>Priority</source>
        <translation>Priorität</translation>
    </message>
    <message>
        <source>Threat class</source>
        <translation>Bedrohungsklasse</translation>
    </message>
    <message>
        <source>Signal class</source>
        <translation>Signalklasse</translation>
    </message>
    <message>
        <source>System</source>
        <translation>System</translation>
    </message>
    <message>
        <source>Profile</source>
        <translation>Profil</translation>
    </message>
    <message>
        <source>Profile ID</source>
        <translation>Profil-ID</translation>
    </message>
    <message>
        <source>Threshold (dBµV)</source>
        <translation>Schwelle (dBµV)</translation>
    </message>
    <message>
        <source>BFO (Hz)</source>
        <translation>BFO (Hz)</translation>
    </message>
    <message>
        <source>Output IF path</source>
        <translation>ZF-Ausgang</translation>
    </message>
    <message>
        <source>Shift (Hz)</source>
        <translation>Shift (Hz)</translation>
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
        <source>Attenuation (dB)</source>
        <translation>Dämpfung (dB)</translation>
    </message>
    <message>
        <source>Antenna</source>
        <translation>Antenne</translation>
    </message>
    <message>
        <source>Lock state</source>
        <translation>Lock-Status</translation>
    </message>
    <message>
        <source>Signal time</source>
        <translation>Signalzeit</translation>
    </message>
    <message>
        <source>Confidence (%)</source>
        <translation>Konfidenz (%)</translation>
    </message>
    <message>
        <source>Range</source>
        <translation>Bereich</translation>
    </message>
    <message>
        <source>Range number</source>
        <translation>Nummer des Bereichs</translation>
    </message>
    <message>
        <source>Further frequencies (Hz)</source>
        <translation>Weitere Frequenzen (Hz)</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>No entry is selected</source>
        <translation>Kein Eintrag ist ausgewählt</translation>
    </message>
    <message numerus="yes">
        <source>One of %n selected</source>
        <translation>
            <numerusform>Einer von %n ausgewählten</numerusform>
            <numerusform>Einer von %n ausgewählten</numerusform>
        </translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
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
    <name>DiskWatch</name>
    <message>
        <source>%1 is gone from the disk; %2 is in no file now</source>
        <translation>%1 ist von der Platte verschwunden; %2 steht jetzt in keiner Datei</translation>
    </message>
    <message>
        <source>was changed by another program</source>
        <translation>wurde von einem anderen Programm geändert</translation>
    </message>
    <message>
        <source>File Changed</source>
        <translation>Datei geändert</translation>
    </message>
    <message>
        <source>Another program has changed %1.</source>
        <translation>Ein anderes Programm hat %1 geändert.</translation>
    </message>
    <message numerus="yes">
        <source>The file holds %n entries now.</source>
        <translation>
            <numerusform>Die Datei hat jetzt %n Eintrag.</numerusform>
            <numerusform>Die Datei hat jetzt %n Einträge.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The list holds %n entries.</source>
        <translation>
            <numerusform>Die Liste hat %n Eintrag.</numerusform>
            <numerusform>Die Liste hat %n Einträge.</numerusform>
        </translation>
    </message>
    <message>
        <source>The list has changes that are in no file; Reload loses them.</source>
        <translation>Die Liste hat Änderungen, die in keiner Datei stehen; beim Neuladen gehen sie verloren.</translation>
    </message>
    <message>
        <source>&amp;Reload</source>
        <translation>&amp;Neu laden</translation>
    </message>
    <message>
        <source>Read the file in place of the list</source>
        <translation>Die Datei anstelle der Liste lesen</translation>
    </message>
    <message>
        <source>&amp;Keep Mine</source>
        <translation>Meine &amp;behalten</translation>
    </message>
    <message>
        <source>The list stays, and replaces the file when it is saved</source>
        <translation>Die Liste bleibt und ersetzt die Datei, wenn sie gespeichert wird</translation>
    </message>
    <message>
        <source>Another program has changed %1 since it was read.</source>
        <translation>Ein anderes Programm hat %1 geändert, seit die Datei gelesen wurde.</translation>
    </message>
    <message>
        <source>Replace what it wrote by the list? It is kept as a version of the file.</source>
        <translation>Das Geschriebene durch die Liste ersetzen? Es bleibt als Version der Datei erhalten.</translation>
    </message>
    <message>
        <source>&amp;Replace It</source>
        <translation>&amp;Ersetzen</translation>
    </message>
    <message>
        <source>Save &amp;Beside It</source>
        <translation>&amp;Daneben speichern</translation>
    </message>
    <message>
        <source>&amp;Merge...</source>
        <translation>&amp;Zusammenführen...</translation>
    </message>
    <message>
        <source>See what the file&apos;s entries would do to the list, and choose for each</source>
        <translation>Sehen, was die Einträge der Datei mit der Liste täten, und bei jedem wählen</translation>
    </message>
</context>
<context>
    <name>EmptyList</name>
    <message>
        <source>The list is empty.</source>
        <translation>Die Liste ist leer.</translation>
    </message>
</context>
<context>
    <name>EntryListView</name>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
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
    <name>FileDrop</name>
    <message>
        <source>is no file of this machine</source>
        <translation>ist keine Datei dieses Rechners</translation>
    </message>
    <message>
        <source>is a folder; drop the files in it</source>
        <translation>ist ein Ordner; bitte die Dateien darin ablegen</translation>
    </message>
</context>
<context>
    <name>FileOpener</name>
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
    <message>
        <source>Local TargetList</source>
        <translation>Lokale Zielliste</translation>
    </message>
    <message>
        <source>Memory Channels</source>
        <translation>Speicherkanäle</translation>
    </message>
    <message>
        <source>NOI Frequencies</source>
        <translation>NOI-Frequenzen</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>All Known Files (%1);;All Files (*)</source>
        <translation>Alle bekannten Dateien (%1);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>a table of another program</source>
        <translation>eine Tabelle eines anderen Programms</translation>
    </message>
</context>
<context>
    <name>FilterField</name>
    <message>
        <source>Words in any column:  bbc am   &quot;new york&quot;
Frequencies:  5505 kHz   118-137 MHz   &gt;7 MHz
One column:  demod:am   priority:&lt;=3   comment:&quot;new york&quot;
Without, or either:  not am   -am   am or fm</source>
        <translation>Wörter in jeder Spalte:  bbc am   &quot;new york&quot;
Frequenzen:  5505 kHz   118-137 MHz   &gt;7 MHz
Eine Spalte:  demod:am   prior:&lt;=3   komm:&quot;new york&quot;
Ohne, oder eines von:  not am   -am   am or fm</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Searches kept under names</source>
        <translation>Gemerkte Suchen</translation>
    </message>
    <message>
        <source>%1. Searched as text.</source>
        <translation>%1. Wird als Text gesucht.</translation>
    </message>
    <message>
        <source>Keep this search…</source>
        <translation>Diese Suche merken…</translation>
    </message>
    <message>
        <source>Keep a search</source>
        <translation>Suche merken</translation>
    </message>
    <message>
        <source>Name of this search:</source>
        <translation>Name dieser Suche:</translation>
    </message>
    <message>
        <source>Forget</source>
        <translation>Vergessen</translation>
    </message>
</context>
<context>
    <name>ForeignDialog</name>
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
        <source>Comment</source>
        <translation>Kommentar</translation>
    </message>
    <message>
        <source>Line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>First entries</source>
        <translation>Erste Einträge</translation>
    </message>
    <message>
        <source>&amp;Keep extra fields in the comment</source>
        <translation>&amp;Weitere Felder im Kommentar behalten</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Importieren</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>As &amp;Entries</source>
        <translation>Als &amp;Einträge</translation>
    </message>
    <message>
        <source>First rows of the table</source>
        <translation>Erste Zeilen der Tabelle</translation>
    </message>
    <message>
        <source>In the &amp;Table</source>
        <translation>In der &amp;Tabelle</translation>
    </message>
    <message>
        <source>Refused lines and remarks</source>
        <translation>Abgewiesene Zeilen und Hinweise</translation>
    </message>
    <message>
        <source>What our lists have no place for stands behind the comment, in braces</source>
        <translation>Was in unseren Listen keinen Platz hat, steht hinter dem Kommentar in geschweiften Klammern</translation>
    </message>
    <message>
        <source>O&amp;nly what is on air at (UTC)</source>
        <translation>&amp;Nur was auf Sendung ist um (UTC)</translation>
    </message>
    <message>
        <source>Time on air, UTC</source>
        <translation>Sendezeit, UTC</translation>
    </message>
    <message>
        <source>Into &amp;list:</source>
        <translation>In &amp;Liste:</translation>
    </message>
    <message numerus="yes">
        <source>%Ln entries.</source>
        <translation>
            <numerusform>%Ln Eintrag.</numerusform>
            <numerusform>%Ln Einträge.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln entries, the first %1 of which stand above.</source>
        <translation>
            <numerusform>%Ln Eintrag, davon stehen die ersten %1 oben.</numerusform>
            <numerusform>%Ln Einträge, die ersten %1 stehen oben.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln lines refused.</source>
        <translation>
            <numerusform>%Ln Zeile abgewiesen.</numerusform>
            <numerusform>%Ln Zeilen abgewiesen.</numerusform>
        </translation>
    </message>
    <message>
        <source>Without a place in our lists, or changed: %1.</source>
        <translation>Ohne Platz in unseren Listen oder geändert: %1.</translation>
    </message>
    <message>
        <source>There is no entry in it.</source>
        <translation>Es ist kein Eintrag darin.</translation>
    </message>
    <message>
        <source>There is no list that takes entries.</source>
        <translation>Keine Liste nimmt Einträge an.</translation>
    </message>
    <message numerus="yes">
        <source>&amp;Add to the %Ln entries that are there</source>
        <translation>
            <numerusform>Zu %Ln &amp;vorhandenen Eintrag hinzufügen</numerusform>
            <numerusform>Zu den %Ln &amp;vorhandenen Einträgen hinzufügen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>&amp;Replace the %Ln entries that are there</source>
        <translation>
            <numerusform>%Ln vorhandenen Eintrag e&amp;rsetzen</numerusform>
            <numerusform>Die %Ln vorhandenen Einträge e&amp;rsetzen</numerusform>
        </translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>Compare and Add...</source>
        <translation>Vergleichen und hinzufügen...</translation>
    </message>
</context>
<context>
    <name>ForeignExport</name>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>%1 cannot hold all of the list.</source>
        <translation>%1 kann nicht alles aus der Liste aufnehmen.</translation>
    </message>
    <message>
        <source>Write %1</source>
        <translation>%1 schreiben</translation>
    </message>
    <message>
        <source>Export %1 for Other Programs</source>
        <translation>%1 für andere Programme exportieren</translation>
    </message>
    <message>
        <source>%1 (%2): %3</source>
        <translation>%1 (%2): %3</translation>
    </message>
    <message numerus="yes">
        <source>%n entries written</source>
        <translation>
            <numerusform>%n Eintrag geschrieben</numerusform>
            <numerusform>%n Einträge geschrieben</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n entries cannot be written.</source>
        <translation>
            <numerusform>%n Eintrag kann nicht geschrieben werden.</numerusform>
            <numerusform>%n Einträge können nicht geschrieben werden.</numerusform>
        </translation>
    </message>
    <message>
        <source>Lost or changed: %1.</source>
        <translation>Verloren oder geändert: %1.</translation>
    </message>
</context>
<context>
    <name>ForeignImport</name>
    <message>
        <source>Import</source>
        <translation>Importieren</translation>
    </message>
    <message numerus="yes">
        <source>%n entries</source>
        <translation>
            <numerusform>%n Eintrag</numerusform>
            <numerusform>%n Einträge</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n lines refused</source>
        <translation>
            <numerusform>%n Zeile abgewiesen</numerusform>
            <numerusform>%n Zeilen abgewiesen</numerusform>
        </translation>
    </message>
    <message>
        <source>without a place in our lists, or changed: %1</source>
        <translation>ohne Platz in unseren Listen oder geändert: %1</translation>
    </message>
    <message>
        <source>There is no list that takes entries.</source>
        <translation>Keine Liste nimmt Einträge an.</translation>
    </message>
    <message>
        <source>is a table of another program, and %1</source>
        <translation>ist eine Tabelle eines anderen Programms, und %1</translation>
    </message>
    <message>
        <source>Pasted text</source>
        <translation>Eingefügter Text</translation>
    </message>
    <message>
        <source>a table</source>
        <translation>eine Tabelle</translation>
    </message>
    <message>
        <source>No file is used while a scan surveillance runs.</source>
        <translation>Während einer Suchlauf-Überwachung wird keine Datei verwendet.</translation>
    </message>
    <message>
        <source>The targets are those of a site, whose server alone reads files in their place. Add the entries instead.</source>
        <translation>Die Ziele sind die eines Standorts; nur dessen Server liest Dateien an ihrer Stelle. Stattdessen die Einträge hinzufügen.</translation>
    </message>
</context>
<context>
    <name>Format</name>
    <message>
        <source>EiBi schedule</source>
        <translation>EiBi-Sendeplan</translation>
    </message>
    <message>
        <source>fldigi frequencies</source>
        <translation>fldigi-Frequenzen</translation>
    </message>
    <message>
        <source>Gqrx bookmarks</source>
        <translation>Gqrx-Lesezeichen</translation>
    </message>
    <message>
        <source>Gqrx band plan</source>
        <translation>Gqrx-Bandplan</translation>
    </message>
    <message>
        <source>KiwiSDR labels, CSV</source>
        <translation>KiwiSDR-Marken, CSV</translation>
    </message>
    <message>
        <source>KiwiSDR labels, JSON</source>
        <translation>KiwiSDR-Marken, JSON</translation>
    </message>
    <message>
        <source>JSON lines</source>
        <translation>JSON-Zeilen</translation>
    </message>
    <message>
        <source>SDRangel frequency scanner</source>
        <translation>SDRangel-Frequenzscanner</translation>
    </message>
    <message>
        <source>SDRangel annotations</source>
        <translation>SDRangel-Anmerkungen</translation>
    </message>
    <message>
        <source>SDR++ frequency manager</source>
        <translation>SDR++-Frequenzverwaltung</translation>
    </message>
    <message>
        <source>SDR# frequencies</source>
        <translation>SDR#-Frequenzen</translation>
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
    <message>
        <source>Shown: %1</source>
        <translation>Angezeigt: %1</translation>
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
    <message>
        <source>+%1 more</source>
        <translation>+%1 weitere</translation>
    </message>
    <message>
        <source>Frequency bar</source>
        <translation>Frequenzleiste</translation>
    </message>
    <message>
        <source>%1 to %2, tuned to %3. Lines: %4</source>
        <translation>%1 bis %2, abgestimmt auf %3. Zeilen: %4</translation>
    </message>
    <message>
        <source>%1 (%2), %3 to %4</source>
        <translation>%1 (%2), %3 bis %4</translation>
    </message>
    <message>
        <source>Show &amp;everything</source>
        <translation>&amp;Alles zeigen</translation>
    </message>
    <message>
        <source>&amp;Zoom to selection</source>
        <translation>&amp;Zoom auf Auswahl</translation>
    </message>
    <message>
        <source>Move %1 &amp;up</source>
        <translation>%1 nach &amp;oben</translation>
    </message>
    <message>
        <source>Move %1 &amp;down</source>
        <translation>%1 nach &amp;unten</translation>
    </message>
    <message>
        <source>Band plan</source>
        <translation>Bandplan</translation>
    </message>
    <message>
        <source>Nothing in this range</source>
        <translation>Nichts in diesem Bereich</translation>
    </message>
    <message>
        <source>Entries in this range: %1, from %2 to %3</source>
        <translation>Einträge in diesem Bereich: %1, von %2 bis %3</translation>
    </message>
    <message>
        <source>&amp;Only rows shown</source>
        <translation>&amp;Nur angezeigte Zeilen</translation>
    </message>
</context>
<context>
    <name>FrequencyField</name>
    <message>
        <source>Frequency in %1</source>
        <translation>Frequenz in %1</translation>
    </message>
    <message>
        <source>A number without a unit is in %1; Hz, kHz, MHz and GHz may follow it</source>
        <translation>Eine Zahl ohne Einheit ist in %1; Hz, kHz, MHz und GHz können folgen</translation>
    </message>
</context>
<context>
    <name>FrequencyNodeListView</name>
    <message>
        <source>&quot;%1&quot; is not a frequency</source>
        <translation>„%1“ ist keine Frequenz</translation>
    </message>
    <message>
        <source>Pasted text</source>
        <translation>Eingefügter Text</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Verdoppeln</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Fill</source>
        <translation>Füllen</translation>
    </message>
    <message>
        <source>Paste Text</source>
        <translation>Text einfügen</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
</context>
<context>
    <name>FrequencyNodeMediatorCtrl</name>
    <message>
        <source>Showing the list</source>
        <translation>Die Liste wird angezeigt</translation>
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
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Priority</source>
        <translation>Priorität</translation>
    </message>
    <message>
        <source>(1 is the highest, 11 is none)</source>
        <translation>(1 ist die höchste, 11 ist keine)</translation>
    </message>
    <message>
        <source>Threat class</source>
        <translation>Bedrohungsklasse</translation>
    </message>
    <message>
        <source>Signal class</source>
        <translation>Signalklasse</translation>
    </message>
    <message>
        <source>Transmission system</source>
        <translation>Übertragungssystem</translation>
    </message>
    <message>
        <source>Profile</source>
        <translation>Profil</translation>
    </message>
    <message>
        <source>Profile ID</source>
        <translation>Profil-ID</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
</context>
<context>
    <name>HamlibReceiver</name>
    <message>
        <source>%1; tries again after %2 s</source>
        <translation>%1; neuer Versuch nach %2 s</translation>
    </message>
    <message>
        <source>nothing was heard for %1 s</source>
        <translation>seit %1 s war nichts zu hören</translation>
    </message>
</context>
<context>
    <name>HelpWindow</name>
    <message>
        <source>Guide</source>
        <translation>Handbuch</translation>
    </message>
    <message>
        <source>Find in this topic</source>
        <translation>In diesem Thema suchen</translation>
    </message>
    <message>
        <source>Find the one before</source>
        <translation>Vorige Stelle suchen</translation>
    </message>
    <message>
        <source>Find the next one</source>
        <translation>Nächste Stelle suchen</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>Inhalt</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>from the top again</source>
        <translation>wieder von oben</translation>
    </message>
    <message>
        <source>not in this topic</source>
        <translation>nicht in diesem Thema</translation>
    </message>
</context>
<context>
    <name>HistoryPanel</name>
    <message>
        <source>Before the first step</source>
        <translation>Vor dem ersten Schritt</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>Click a step to go back, or on again, to what the lists were behind it</source>
        <translation>Ein Klick auf einen Schritt führt zurück, oder wieder vor, zum Stand der Listen dahinter</translation>
    </message>
</context>
<context>
    <name>Job</name>
    <message>
        <source>Open Job</source>
        <translation>Auftrag öffnen</translation>
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
    <message>
        <source>Show section...</source>
        <translation>Abschnitt zeigen...</translation>
    </message>
    <message>
        <source>Show the memory-scan section that the channels make</source>
        <translation>Memory-Scan-Abschnitt zeigen, den die Kanäle ergeben</translation>
    </message>
    <message>
        <source>Save the job</source>
        <translation>Auftrag speichern</translation>
    </message>
    <message>
        <source>Memory-Scan Section of the Job</source>
        <translation>Memory-Scan-Abschnitt des Auftrags</translation>
    </message>
    <message>
        <source>The channels are in no job yet</source>
        <translation>Die Kanäle sind noch in keinem Auftrag</translation>
    </message>
    <message>
        <source>is up to date</source>
        <translation>ist aktuell</translation>
    </message>
    <message>
        <source>has unsaved changes</source>
        <translation>hat ungesicherte Änderungen</translation>
    </message>
    <message>
        <source>was changed by another program</source>
        <translation>wurde von einem anderen Programm geändert</translation>
    </message>
    <message>
        <source>is gone</source>
        <translation>ist verschwunden</translation>
    </message>
</context>
<context>
    <name>KeySettings</name>
    <message>
        <source>the search for hits</source>
        <translation>der Suche nach Treffern</translation>
    </message>
</context>
<context>
    <name>KeysTable</name>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Ne&amp;w key:</source>
        <translation>Neue &amp;Taste:</translation>
    </message>
    <message>
        <source>Se&amp;t</source>
        <translation>&amp;Setzen</translation>
    </message>
    <message>
        <source>Give the command this key</source>
        <translation>Dem Befehl diese Taste geben</translation>
    </message>
    <message>
        <source>&amp;None</source>
        <translation>&amp;Keine</translation>
    </message>
    <message>
        <source>Take the keys of the command away</source>
        <translation>Dem Befehl seine Tasten nehmen</translation>
    </message>
    <message>
        <source>&amp;Default</source>
        <translation>&amp;Übliche</translation>
    </message>
    <message>
        <source>Give the command its usual keys again</source>
        <translation>Dem Befehl wieder seine üblichen Tasten geben</translation>
    </message>
    <message>
        <source>&amp;Reset All</source>
        <translation>Alle &amp;zurücksetzen</translation>
    </message>
    <message>
        <source>Give all commands their usual keys again</source>
        <translation>Allen Befehlen wieder ihre üblichen Tasten geben</translation>
    </message>
    <message>
        <source>%1 belongs to %2; take it from there first.</source>
        <translation>%1 gehört zu %2; zuerst dort wegnehmen.</translation>
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
    <message>
        <source>Level</source>
        <translation>Pegel</translation>
    </message>
    <message>
        <source>%1, threshold %2 dBµV</source>
        <translation>%1, Schwelle %2 dBµV</translation>
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
    <name>ListClaim</name>
    <message>
        <source>the broker does not let this user serve the list</source>
        <translation>der Broker lässt diesen Benutzer die Liste nicht freigeben</translation>
    </message>
    <message>
        <source>%1 serves this list already</source>
        <translation>%1 gibt diese Liste schon frei</translation>
    </message>
    <message>
        <source>the broker does not let this user read what a server needs</source>
        <translation>der Broker lässt diesen Benutzer nicht lesen, was ein Server braucht</translation>
    </message>
    <message>
        <source>the broker passes nothing of this site on to this user</source>
        <translation>der Broker gibt diesem Benutzer nichts von diesem Standort weiter</translation>
    </message>
</context>
<context>
    <name>ListClient</name>
    <message>
        <source>the broker lets this user only read the list</source>
        <translation>der Broker lässt diesen Benutzer die Liste nur lesen</translation>
    </message>
    <message>
        <source>waits for the server&apos;s leave to edit</source>
        <translation>wartet auf die Erlaubnis des Servers zu ändern</translation>
    </message>
    <message>
        <source>the entry has been removed</source>
        <translation>der Eintrag wurde entfernt</translation>
    </message>
    <message>
        <source>is no answer</source>
        <translation>ist keine Antwort</translation>
    </message>
    <message>
        <source>the entry has been changed meanwhile</source>
        <translation>der Eintrag wurde inzwischen geändert</translation>
    </message>
    <message>
        <source>no answer: this user may not ask the server, or it has gone</source>
        <translation>keine Antwort: dieser Benutzer darf den Server nicht fragen, oder der ist fort</translation>
    </message>
    <message>
        <source>Showing the shared list</source>
        <translation>Die geteilte Liste wird angezeigt</translation>
    </message>
</context>
<context>
    <name>ListCopy</name>
    <message>
        <source>Loading the shared list</source>
        <translation>Die geteilte Liste wird geladen</translation>
    </message>
</context>
<context>
    <name>ListImport</name>
    <message>
        <source>%1 holds no entries</source>
        <translation>%1 enthält keine Einträge</translation>
    </message>
    <message>
        <source>%1 into %2</source>
        <translation>%1 in %2</translation>
    </message>
    <message>
        <source>was not imported: the list has changed meanwhile</source>
        <translation>wurde nicht importiert: Die Liste hat sich inzwischen geändert</translation>
    </message>
    <message>
        <source>%1: %2 added, %3 changed, %4 left</source>
        <translation>%1: %2 hinzugefügt, %3 geändert, %4 gelassen</translation>
    </message>
    <message>
        <source>Import into List</source>
        <translation>In Liste importieren</translation>
    </message>
    <message>
        <source>No two entries within %1</source>
        <translation>Keine zwei Einträge innerhalb von %1</translation>
    </message>
    <message numerus="yes">
        <source>%n duplicates within %1 selected; the first of each stays unselected</source>
        <translation>
            <numerusform>%n Doppelter innerhalb von %1 gewählt; der jeweils erste bleibt stehen</numerusform>
            <numerusform>%n Doppelte innerhalb von %1 gewählt; der jeweils erste bleibt stehen</numerusform>
        </translation>
    </message>
    <message>
        <source>Looking for duplicates</source>
        <translation>Doppelte suchen</translation>
    </message>
</context>
<context>
    <name>ListJournal</name>
    <message>
        <source>is used by another program</source>
        <translation>wird von einem anderen Programm benutzt</translation>
    </message>
    <message>
        <source>cannot be locked</source>
        <translation>kann nicht gesperrt werden</translation>
    </message>
    <message>
        <source>is too long</source>
        <translation>ist zu lang</translation>
    </message>
</context>
<context>
    <name>ListMerge</name>
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
        <source>Priority</source>
        <translation>Priorität</translation>
    </message>
    <message>
        <source>Threat class</source>
        <translation>Bedrohungsklasse</translation>
    </message>
    <message>
        <source>Signal class</source>
        <translation>Signalklasse</translation>
    </message>
    <message>
        <source>Transmission system</source>
        <translation>Übertragungssystem</translation>
    </message>
    <message>
        <source>Profile ID</source>
        <translation>Profil-ID</translation>
    </message>
    <message>
        <source>Profile</source>
        <translation>Profil</translation>
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
        <source>Nothing is imported into this list: its entries are what was found.</source>
        <translation>In diese Liste wird nichts importiert: Ihre Einträge sind, was gefunden wurde.</translation>
    </message>
    <message>
        <source>The last file could not be read: open another one.</source>
        <translation>Die letzte Datei konnte nicht gelesen werden: Bitte eine andere öffnen.</translation>
    </message>
    <message>
        <source>has no frequency</source>
        <translation>hat keine Frequenz</translation>
    </message>
    <message>
        <source>%1 is no frequency</source>
        <translation>%1 ist keine Frequenz</translation>
    </message>
    <message>
        <source>the receiver reaches %1 to %2</source>
        <translation>der Empfänger reicht von %1 bis %2</translation>
    </message>
    <message>
        <source>%1 is no bandwidth</source>
        <translation>%1 ist keine Bandbreite</translation>
    </message>
    <message>
        <source>Import into List</source>
        <translation>In Liste importieren</translation>
    </message>
    <message>
        <source>Matching entries</source>
        <translation>Einträge vergleichen</translation>
    </message>
</context>
<context>
    <name>ListReader</name>
    <message>
        <source>is no message of a list</source>
        <translation>ist keine Nachricht einer Liste</translation>
    </message>
    <message>
        <source>%1; what is shown is old</source>
        <translation>%1; was zu sehen ist, ist veraltet</translation>
    </message>
    <message>
        <source>not connected</source>
        <translation>nicht verbunden</translation>
    </message>
    <message>
        <source>not connected: %1</source>
        <translation>nicht verbunden: %1</translation>
    </message>
    <message>
        <source>waits for a server</source>
        <translation>wartet auf einen Server</translation>
    </message>
    <message>
        <source>loads, %1 %</source>
        <translation>lädt, %1 %</translation>
    </message>
    <message>
        <source>loads</source>
        <translation>lädt</translation>
    </message>
    <message>
        <source>up to date</source>
        <translation>auf dem neuesten Stand</translation>
    </message>
    <message>
        <source>the server has gone</source>
        <translation>der Server ist nicht mehr da</translation>
    </message>
    <message>
        <source>the server is of another version, which this program does not understand</source>
        <translation>der Server hat eine andere Version, die dieses Programm nicht versteht</translation>
    </message>
    <message>
        <source>all is here; waits for the server to say that it is, too</source>
        <translation>alles ist da; wartet, bis der Server sagt, dass auch er da ist</translation>
    </message>
    <message>
        <source>the broker does not let this user read the list</source>
        <translation>der Broker lässt diesen Benutzer die Liste nicht lesen</translation>
    </message>
    <message>
        <source>waits for a server; the broker passes nothing of this site on to this user</source>
        <translation>wartet auf einen Server; der Broker gibt diesem Benutzer nichts von diesem Standort weiter</translation>
    </message>
    <message>
        <source>waits for a server: nobody has served the list, or this user may not read it</source>
        <translation>wartet auf einen Server: niemand hat die Liste freigegeben, oder dieser Benutzer darf sie nicht lesen</translation>
    </message>
</context>
<context>
    <name>ListServer</name>
    <message>
        <source>is no request</source>
        <translation>ist keine Anfrage</translation>
    </message>
    <message>
        <source>the entry has been removed</source>
        <translation>der Eintrag wurde entfernt</translation>
    </message>
    <message>
        <source>the entry has been changed meanwhile</source>
        <translation>der Eintrag wurde inzwischen geändert</translation>
    </message>
    <message>
        <source>the contents are none of this list</source>
        <translation>der Inhalt ist keiner dieser Liste</translation>
    </message>
    <message>
        <source>this server loads no files for clients</source>
        <translation>dieser Server lädt keine Dateien für andere</translation>
    </message>
    <message>
        <source>a file is asked for by its bare name in the server&apos;s list directory</source>
        <translation>eine Datei wird mit ihrem bloßen Namen im Listenordner des Servers verlangt</translation>
    </message>
    <message>
        <source>the server&apos;s list directory has no file &quot;%1&quot;</source>
        <translation>im Listenordner des Servers ist keine Datei „%1“</translation>
    </message>
    <message>
        <source>Sharing the list</source>
        <translation>Die Liste wird geteilt</translation>
    </message>
</context>
<context>
    <name>LocalBus</name>
    <message>
        <source>the broker has gone</source>
        <translation>der Broker ist nicht mehr da</translation>
    </message>
    <message>
        <source>the connection broke</source>
        <translation>die Verbindung ist abgebrochen</translation>
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
        <source>Tuned to %1</source>
        <translation>Abgestimmt auf %1</translation>
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
        <source>&amp;Positions</source>
        <translation>&amp;Positionen</translation>
    </message>
    <message>
        <source>Open &amp;Job...</source>
        <translation>&amp;Auftrag öffnen...</translation>
    </message>
    <message>
        <source>Open a job in place of the present one</source>
        <translation>Einen Auftrag anstelle des jetzigen öffnen</translation>
    </message>
    <message>
        <source>Save Jo&amp;b</source>
        <translation>Auftrag spei&amp;chern</translation>
    </message>
    <message>
        <source>Save the job with the present channels</source>
        <translation>Auftrag mit den jetzigen Kanälen speichern</translation>
    </message>
    <message>
        <source>Save Job As...</source>
        <translation>Auftrag speichern unter...</translation>
    </message>
    <message>
        <source>Save the job under another name</source>
        <translation>Auftrag unter anderem Namen speichern</translation>
    </message>
    <message>
        <source>Show Memory-Scan Section...</source>
        <translation>Memory-Scan-Abschnitt zeigen...</translation>
    </message>
    <message>
        <source>Show what the channels are in the job</source>
        <translation>Zeigen, wie die Kanäle im Auftrag stehen</translation>
    </message>
    <message>
        <source>Open File</source>
        <translation>Datei öffnen</translation>
    </message>
    <message>
        <source>Saved in %1</source>
        <translation>In %1 gespeichert</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suche</translation>
    </message>
    <message>
        <source>Classifier</source>
        <translation>Klassifikator</translation>
    </message>
    <message>
        <source>Add the signals in power sweeps to the detections</source>
        <translation>Signale aus Sweeps zu den Detektionen hinzufügen</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>Zuletzt &amp;geöffnet</translation>
    </message>
    <message>
        <source>Lists</source>
        <translation>Listen</translation>
    </message>
    <message>
        <source>Frequency bar</source>
        <translation>Frequenzleiste</translation>
    </message>
    <message>
        <source>The filter of the list hides this detection.</source>
        <translation>Der Filter der Liste verbirgt diese Detektion.</translation>
    </message>
    <message>
        <source>Commands of %1</source>
        <translation>Befehle von %1</translation>
    </message>
    <message>
        <source>Filter of %1</source>
        <translation>Filter von %1</translation>
    </message>
    <message>
        <source>Rows of the list; a double click opens or tunes to one, Ctrl+T tunes</source>
        <translation>Zeilen der Liste; Doppelklick öffnet oder stimmt ab, Strg+T stimmt ab</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>E&amp;ntry</source>
        <translation>E&amp;intrag</translation>
    </message>
    <message>
        <source>Fit the bar to the entries of all lists</source>
        <translation>Leiste an die Einträge aller Listen anpassen</translation>
    </message>
    <message>
        <source>&amp;Zoom to selection</source>
        <translation>&amp;Zoom auf Auswahl</translation>
    </message>
    <message>
        <source>Fit the bar to the selected rows</source>
        <translation>Leiste an die ausgewählten Zeilen anpassen</translation>
    </message>
    <message>
        <source>&amp;Next list</source>
        <translation>&amp;Nächste Liste</translation>
    </message>
    <message>
        <source>Show the next list</source>
        <translation>Die nächste Liste zeigen</translation>
    </message>
    <message>
        <source>P&amp;revious list</source>
        <translation>&amp;Vorige Liste</translation>
    </message>
    <message>
        <source>Show the list before</source>
        <translation>Die vorige Liste zeigen</translation>
    </message>
    <message>
        <source>&amp;Receiver</source>
        <translation>&amp;Empfänger</translation>
    </message>
    <message>
        <source>&amp;Go to frequency</source>
        <translation>Zur Frequenz &amp;gehen</translation>
    </message>
    <message>
        <source>Type the frequency to tune to</source>
        <translation>Frequenz zum Abstimmen eingeben</translation>
    </message>
    <message>
        <source>Step &amp;up</source>
        <translation>Schritt &amp;aufwärts</translation>
    </message>
    <message>
        <source>Tune one step up</source>
        <translation>Einen Schritt höher abstimmen</translation>
    </message>
    <message>
        <source>Step &amp;down</source>
        <translation>Schritt a&amp;bwärts</translation>
    </message>
    <message>
        <source>Tune one step down</source>
        <translation>Einen Schritt tiefer abstimmen</translation>
    </message>
    <message>
        <source>&amp;Keys</source>
        <translation>&amp;Tasten</translation>
    </message>
    <message>
        <source>What the keys do</source>
        <translation>Was die Tasten tun</translation>
    </message>
    <message>
        <source>About this program</source>
        <translation>Über dieses Programm</translation>
    </message>
    <message>
        <source> or </source>
        <translation> oder </translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>%1 was printed</source>
        <translation>%1 wurde gedruckt</translation>
    </message>
    <message>
        <source>%1 could not be printed</source>
        <translation>%1 konnte nicht gedruckt werden</translation>
    </message>
    <message>
        <source>Save List as PDF</source>
        <translation>Liste als PDF speichern</translation>
    </message>
    <message>
        <source>PDF Documents (*.pdf)</source>
        <translation>PDF-Dokumente (*.pdf)</translation>
    </message>
    <message>
        <source>%1 was written to %2</source>
        <translation>%1 wurde in %2 geschrieben</translation>
    </message>
    <message>
        <source>is no folder; the usual data folder is taken</source>
        <translation>ist kein Ordner; der übliche Datenordner gilt</translation>
    </message>
    <message>
        <source>&amp;Guide</source>
        <translation>&amp;Handbuch</translation>
    </message>
    <message>
        <source>How to do what, beginning with what has the focus</source>
        <translation>Wie was geht, angefangen bei dem, was den Fokus hat</translation>
    </message>
    <message>
        <source>&amp;Welcome</source>
        <translation>&amp;Willkommen</translation>
    </message>
    <message>
        <source>Ways to begin</source>
        <translation>Wege zum Anfang</translation>
    </message>
    <message>
        <source>P&amp;references...</source>
        <translation>Ei&amp;nstellungen...</translation>
    </message>
    <message>
        <source>Units, colours, language, keys and the like</source>
        <translation>Einheiten, Farben, Sprache, Tasten und dergleichen</translation>
    </message>
    <message>
        <source>Show or hide the panel &quot;%1&quot;</source>
        <translation>„%1“ zeigen oder verbergen</translation>
    </message>
    <message>
        <source>Write positions in lists like this</source>
        <translation>Positionen in Listen so schreiben</translation>
    </message>
    <message>
        <source>&amp;Job</source>
        <translation>&amp;Auftrag</translation>
    </message>
    <message numerus="yes">
        <source>%Ln detection(s)</source>
        <translation>
            <numerusform>%Ln Detektion</numerusform>
            <numerusform>%Ln Detektionen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln result(s)</source>
        <translation>
            <numerusform>%Ln Ergebnis</numerusform>
            <numerusform>%Ln Ergebnisse</numerusform>
        </translation>
    </message>
    <message>
        <source>&amp;Details</source>
        <translation>&amp;Einzelheiten</translation>
    </message>
    <message>
        <source>Re&amp;ceiver</source>
        <translation>E&amp;mpfänger</translation>
    </message>
    <message>
        <source>NOI b&amp;ands</source>
        <translation>N&amp;OI-Bänder</translation>
    </message>
    <message>
        <source>&amp;Messages</source>
        <translation>Mel&amp;dungen</translation>
    </message>
    <message>
        <source>Type what is looked for into the filter</source>
        <translation>Gesuchtes in den Filter eingeben</translation>
    </message>
    <message>
        <source>No list has a row with &quot;%1&quot;</source>
        <translation>Keine Liste hat eine Zeile mit &quot;%1&quot;</translation>
    </message>
    <message>
        <source>is also used by %1: the frequencies of interest and the settings there are left alone, and a file that it changes is not overwritten unasked</source>
        <translation>wird auch von %1 benutzt: Frequenzen von Interesse und Einstellungen dort bleiben unberührt, und eine dort geänderte Datei wird nicht ungefragt überschrieben</translation>
    </message>
    <message>
        <source>&amp;History</source>
        <translation>Verla&amp;uf</translation>
    </message>
    <message>
        <source>Save %1 As</source>
        <translation>%1 speichern unter</translation>
    </message>
    <message>
        <source>XML Lists</source>
        <translation>XML-Listen</translation>
    </message>
    <message>
        <source>The targets are not saved, and those of the site take their place.</source>
        <translation>Die Ziele sind nicht gesichert, und die des Standorts treten an ihre Stelle.</translation>
    </message>
    <message>
        <source>Share</source>
        <translation>Teilen</translation>
    </message>
    <message>
        <source>The targets are those of a site: %1.</source>
        <translation>Die Ziele sind die eines Standorts: %1.</translation>
    </message>
    <message>
        <source>is not read: the targets are those of a site, whose server alone reads files</source>
        <translation>wird nicht gelesen: die Ziele sind die eines Standorts, und Dateien liest allein dessen Server</translation>
    </message>
    <message>
        <source>Unsaved Work</source>
        <translation>Nicht gespeicherte Arbeit</translation>
    </message>
    <message>
        <source>%1 has unsaved changes. Save them?</source>
        <translation>%1 hat ungesicherte Änderungen. Sollen sie gespeichert werden?</translation>
    </message>
    <message>
        <source>Undo brings them back, but only until the program ends.</source>
        <translation>Rückgängig holt sie zurück, aber nur bis zum Ende des Programms.</translation>
    </message>
    <message>
        <source>%1 is there already. Replace it?</source>
        <translation>%1 ist schon da. Ersetzen?</translation>
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
    <message>
        <source>No memory channels yet. Add what the receiver is tuned to, open a list or a job, or paste entries of another list.</source>
        <translation>Noch keine Speicherkanäle. Die Einstellung des Empfängers hinzufügen, eine Liste oder einen Auftrag öffnen oder Einträge einer anderen Liste einfügen.</translation>
    </message>
</context>
<context>
    <name>MergeDialog</name>
    <message>
        <source>Import into List</source>
        <translation>In Liste importieren</translation>
    </message>
    <message>
        <source>0 Hz</source>
        <translation>0 Hz</translation>
    </message>
    <message>
        <source>How far apart the frequencies of one entry may be</source>
        <translation>Wie weit die Frequenzen eines Eintrags auseinander liegen dürfen</translation>
    </message>
    <message>
        <source>&amp;Tolerance:</source>
        <translation>&amp;Toleranz:</translation>
    </message>
    <message>
        <source>Show all entries of the file</source>
        <translation>Alle Einträge der Datei zeigen</translation>
    </message>
    <message>
        <source>Show only these entries of the file</source>
        <translation>Nur diese Einträge der Datei zeigen</translation>
    </message>
    <message>
        <source>Entries of the file</source>
        <translation>Einträge der Datei</translation>
    </message>
    <message>
        <source>In the table, the key %1</source>
        <translation>In der Tabelle die Taste %1</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>Selected entries:</source>
        <translation>Ausgewählte:</translation>
    </message>
    <message>
        <source>All entries shown:</source>
        <translation>Alle gezeigten:</translation>
    </message>
    <message>
        <source>Add %1, Change %2, Leave %3</source>
        <translation>%1 hinzufügen, %2 ändern, %3 lassen</translation>
    </message>
</context>
<context>
    <name>MergeModel</name>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Demod.</source>
        <translation>Demod.</translation>
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
        <source>Besides</source>
        <translation>Außerdem</translation>
    </message>
    <message>
        <source>What is done</source>
        <translation>Was geschieht</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Different</source>
        <translation>Anders</translation>
    </message>
    <message>
        <source>Differs from %1</source>
        <translation>Anders als %1</translation>
    </message>
    <message>
        <source>Equal</source>
        <translation>Gleich</translation>
    </message>
    <message>
        <source>Equal to %1</source>
        <translation>Gleich %1</translation>
    </message>
    <message>
        <source>Refused</source>
        <translation>Abgelehnt</translation>
    </message>
    <message>
        <source>Keep mine</source>
        <translation>Eigenes behalten</translation>
    </message>
    <message>
        <source>Take theirs</source>
        <translation>Fremdes übernehmen</translation>
    </message>
    <message>
        <source>Keep both</source>
        <translation>Beide behalten</translation>
    </message>
    <message>
        <source>Join comments</source>
        <translation>Kommentare verbinden</translation>
    </message>
    <message>
        <source>Left out</source>
        <translation>Ausgelassen</translation>
    </message>
    <message>
        <source>Added</source>
        <translation>Hinzugefügt</translation>
    </message>
    <message>
        <source>Mine: %1
Theirs: %2</source>
        <translation>Eigenes: %1
Fremdes: %2</translation>
    </message>
    <message>
        <source>What becomes of the entry, and which row of the list it belongs to</source>
        <translation>Was aus dem Eintrag wird, und zu welcher Zeile der Liste er gehört</translation>
    </message>
</context>
<context>
    <name>MqttBus</name>
    <message>
        <source>the broker refuses the user or the password</source>
        <translation>der Broker weist Benutzer oder Passwort ab</translation>
    </message>
    <message>
        <source>%1: the certificates cannot be read</source>
        <translation>%1: die Zertifikate sind nicht lesbar</translation>
    </message>
    <message>
        <source>is larger than the broker takes at once</source>
        <translation>ist größer, als der Broker auf einmal nimmt</translation>
    </message>
    <message>
        <source>the broker does not answer</source>
        <translation>der Broker antwortet nicht</translation>
    </message>
    <message>
        <source>no encrypted connection: %1</source>
        <translation>keine verschlüsselte Verbindung: %1</translation>
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
    <message numerus="yes">
        <source>%Ln entries</source>
        <translation>
            <numerusform>%Ln Eintrag</numerusform>
            <numerusform>%Ln Einträge</numerusform>
        </translation>
    </message>
    <message>
        <source>Frequencies of interest are kept without a question: %1.</source>
        <translation>Frequenzen von Interesse werden ohne Frage bewahrt: %1.</translation>
    </message>
    <message>
        <source>Frequencies of interest are kept without a question: %1 in %2.</source>
        <translation>Frequenzen von Interesse werden ohne Frage bewahrt: %1 in %2.</translation>
    </message>
</context>
<context>
    <name>NothingFound</name>
    <message>
        <source>Nothing matches</source>
        <translation>Nichts gefunden</translation>
    </message>
    <message>
        <source>Clear filter</source>
        <translation>Filter leeren</translation>
    </message>
</context>
<context>
    <name>Preferences</name>
    <message>
        <source>that of the field</source>
        <translation>die des Feldes</translation>
    </message>
    <message>
        <source>kHz, MHz from 30 MHz on</source>
        <translation>kHz, ab 30 MHz in MHz</translation>
    </message>
    <message>
        <source>no</source>
        <translation>nein</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>ja</translation>
    </message>
    <message>
        <source>as the desktop</source>
        <translation>wie die Arbeitsfläche</translation>
    </message>
    <message>
        <source>light</source>
        <translation>hell</translation>
    </message>
    <message>
        <source>dark</source>
        <translation>dunkel</translation>
    </message>
    <message>
        <source>%1 pt</source>
        <translation>%1 pt</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keiner</translation>
    </message>
    <message>
        <source>Unit of bare numbers, &amp;HF:</source>
        <translation>Einheit bloßer Zahlen, &amp;HF:</translation>
    </message>
    <message>
        <source>What a frequency counts that is typed without a unit, with an HF receiver</source>
        <translation>Was eine ohne Einheit eingegebene Frequenz zählt, mit einem HF-Empfänger</translation>
    </message>
    <message>
        <source>Unit of bare numbers, &amp;VHF/UHF:</source>
        <translation>Einheit bloßer Zahlen, &amp;VHF/UHF:</translation>
    </message>
    <message>
        <source>What a frequency counts that is typed without a unit, with a VHF/UHF receiver</source>
        <translation>Was eine ohne Einheit eingegebene Frequenz zählt, mit einem VHF/UHF-Empfänger</translation>
    </message>
    <message>
        <source>Frequencies in &amp;lists:</source>
        <translation>Frequenzen in &amp;Listen:</translation>
    </message>
    <message>
        <source>How lists show frequencies; files and copies stay as they are</source>
        <translation>Wie Listen Frequenzen zeigen; Dateien und Kopien bleiben, wie sie sind</translation>
    </message>
    <message>
        <source>&amp;Group thousands in lists:</source>
        <translation>&amp;Tausender in Listen gruppieren:</translation>
    </message>
    <message>
        <source>7 055.000 kHz instead of 7055.000 kHz</source>
        <translation>7 055.000 kHz statt 7055.000 kHz</translation>
    </message>
    <message>
        <source>&amp;Colours:</source>
        <translation>Far&amp;ben:</translation>
    </message>
    <message>
        <source>Light, dark, or as the desktop has them</source>
        <translation>Hell, dunkel oder wie die Arbeitsfläche</translation>
    </message>
    <message>
        <source>&amp;Size of texts:</source>
        <translation>Schrift&amp;größe:</translation>
    </message>
    <message>
        <source>How large the texts of window and lists are</source>
        <translation>Wie groß die Texte von Fenster und Listen sind</translation>
    </message>
    <message>
        <source>&amp;Language:</source>
        <translation>&amp;Sprache:</translation>
    </message>
    <message>
        <source>The language of the window</source>
        <translation>Die Sprache des Fensters</translation>
    </message>
    <message>
        <source>&amp;Band plan:</source>
        <translation>Band&amp;plan:</translation>
    </message>
    <message>
        <source>The region whose band plan the frequency bar shows</source>
        <translation>Die Region, deren Bandplan die Frequenzleiste zeigt</translation>
    </message>
    <message>
        <source>CSV safe for &amp;spreadsheets:</source>
        <translation>CSV für &amp;Tabellenkalkulationen:</translation>
    </message>
    <message>
        <source>An apostrophe before texts that a spreadsheet would run as a formula</source>
        <translation>Ein Apostroph vor Texten, die eine Tabellenkalkulation als Formel ausführen würde</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 MB</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>Saved &amp;versions of a file:</source>
        <translation>Gespeicherte &amp;Versionen einer Datei:</translation>
    </message>
    <message>
        <source>How many contents of each list file are kept when it is saved</source>
        <translation>Wie viele Stände jeder Listendatei beim Speichern aufgehoben werden</translation>
    </message>
    <message>
        <source>&amp;Room for versions:</source>
        <translation>&amp;Platz für Versionen:</translation>
    </message>
    <message>
        <source>How large the versions of all files may be together</source>
        <translation>Wie groß die Versionen aller Dateien zusammen sein dürfen</translation>
    </message>
    <message>
        <source>Keep &amp;unsaved work after:</source>
        <translation>Nicht &amp;Gespeichertes aufheben nach:</translation>
    </message>
    <message>
        <source>How long a change may be in no file: a crash loses no more</source>
        <translation>Wie lange eine Änderung in keiner Datei stehen darf: mehr geht bei einem Absturz nicht verloren</translation>
    </message>
</context>
<context>
    <name>PreferencesDialog</name>
    <message>
        <source>&amp;Frequencies</source>
        <translation>&amp;Frequenzen</translation>
    </message>
    <message>
        <source>&amp;Appearance</source>
        <translation>&amp;Aussehen</translation>
    </message>
    <message>
        <source>F&amp;iles</source>
        <translation>&amp;Dateien</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>&amp;Keys</source>
        <translation>Tast&amp;en</translation>
    </message>
    <message>
        <source>Takes effect at the next start.</source>
        <translation>Gilt vom nächsten Start an.</translation>
    </message>
    <message>
        <source>What is sent is there already when an entry lies so near</source>
        <translation>Was gesendet wird, ist schon da, wenn ein Eintrag so nahe liegt</translation>
    </message>
    <message>
        <source>&amp;Tolerance of Send to:</source>
        <translation>T&amp;oleranz beim Senden:</translation>
    </message>
    <message>
        <source>the usual one</source>
        <translation>der übliche</translation>
    </message>
    <message>
        <source>Where the lists keep files of their own; empty for the usual folder</source>
        <translation>Wo die Listen eigene Dateien führen; leer für den üblichen Ordner</translation>
    </message>
    <message>
        <source>Ch&amp;oose...</source>
        <translation>&amp;Wählen...</translation>
    </message>
    <message>
        <source>&amp;Data folder:</source>
        <translation>Daten&amp;ordner:</translation>
    </message>
    <message>
        <source>Data Folder</source>
        <translation>Datenordner</translation>
    </message>
    <message>
        <source>It is %1 now. Another one takes effect at the next start; files are not moved there.</source>
        <translation>Jetzt ist es %1. Ein anderer gilt vom nächsten Start an; Dateien ziehen nicht mit um.</translation>
    </message>
    <message>
        <source>There is no such folder.</source>
        <translation>Es gibt keinen solchen Ordner.</translation>
    </message>
</context>
<context>
    <name>ProfileRow</name>
    <message>
        <source>&amp;Remove</source>
        <translation>Ent&amp;fernen</translation>
    </message>
    <message>
        <source>name it to keep it</source>
        <translation>zum Behalten benennen</translation>
    </message>
</context>
<context>
    <name>ProgressCard</name>
    <message>
        <source>about %1 s left</source>
        <translation>noch etwa %1 s</translation>
    </message>
    <message>
        <source>about %1 min left</source>
        <translation>noch etwa %1 min</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Leave the lists as they were (Esc)</source>
        <translation>Die Listen lassen, wie sie waren (Esc)</translation>
    </message>
    <message>
        <source>Everything is put back as it was...</source>
        <translation>Alles wird zurückgestellt ...</translation>
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
    <name>Query</name>
    <message>
        <source>not %1</source>
        <translation>nicht %1</translation>
    </message>
    <message>
        <source> and </source>
        <translation> und </translation>
    </message>
    <message>
        <source>, or </source>
        <translation>, oder </translation>
    </message>
    <message>
        <source>at most %1</source>
        <translation>höchstens %1</translation>
    </message>
    <message>
        <source>at least %1</source>
        <translation>mindestens %1</translation>
    </message>
    <message>
        <source>below %1</source>
        <translation>unter %1</translation>
    </message>
    <message>
        <source>above %1</source>
        <translation>über %1</translation>
    </message>
</context>
<context>
    <name>QueryParser</name>
    <message>
        <source>Nothing follows &quot;or&quot;</source>
        <translation>Nach „or“ folgt nichts</translation>
    </message>
    <message>
        <source>Nothing stands before &quot;or&quot;</source>
        <translation>Vor „or“ steht nichts</translation>
    </message>
    <message>
        <source>Nothing follows &quot;not&quot;</source>
        <translation>Nach „not“ folgt nichts</translation>
    </message>
    <message>
        <source>frequency %1</source>
        <translation>Frequenz %1</translation>
    </message>
    <message>
        <source>No column is called &quot;%1&quot;</source>
        <translation>Keine Spalte heißt „%1“</translation>
    </message>
    <message>
        <source>Nothing follows &quot;%1:&quot;</source>
        <translation>Nach „%1:“ folgt nichts</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1 with %2</source>
        <translation>%1 mit %2</translation>
    </message>
    <message>
        <source>The quotation is not closed</source>
        <translation>Das Anführungszeichen wird nicht geschlossen</translation>
    </message>
    <message>
        <source>The quotation is empty</source>
        <translation>Das Zitat ist leer</translation>
    </message>
    <message>
        <source>After &quot;%1&quot; comes a frequency with its unit</source>
        <translation>Nach „%1“ folgt eine Frequenz mit Einheit</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no number or range</source>
        <translation>„%1“ ist keine Zahl und kein Bereich</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>%1 ± %2</source>
        <translation>%1 ± %2</translation>
    </message>
</context>
<context>
    <name>Quor</name>
    <message>
        <source>Type a frequency</source>
        <translation>Frequenz eingeben</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a frequency</source>
        <translation>„%1“ ist keine Frequenz</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: digits are grouped in threes, and one point or comma is the decimal mark</source>
        <translation>„%1“: Ziffern stehen in Dreiergruppen, und ein Punkt oder Komma ist das Dezimalzeichen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is too large</source>
        <translation>„%1“ ist zu groß</translation>
    </message>
</context>
<context>
    <name>Radio</name>
    <message>
        <source>its settings are wrong</source>
        <translation>seine Einstellungen sind falsch</translation>
    </message>
    <message>
        <source>it does not take this</source>
        <translation>es nimmt das nicht an</translation>
    </message>
    <message>
        <source>it does not answer in time</source>
        <translation>es antwortet nicht rechtzeitig</translation>
    </message>
    <message>
        <source>the connection is broken</source>
        <translation>die Verbindung ist unterbrochen</translation>
    </message>
    <message>
        <source>its answer makes no sense</source>
        <translation>seine Antwort ergibt keinen Sinn</translation>
    </message>
    <message>
        <source>it rejects this</source>
        <translation>es lehnt das ab</translation>
    </message>
    <message>
        <source>it has no such function</source>
        <translation>es hat keine solche Funktion</translation>
    </message>
    <message>
        <source>there is no model %1</source>
        <translation>es gibt kein Modell %1</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Antenna</source>
        <translation>Antenne</translation>
    </message>
    <message>
        <source>%1 is in none of its ranges</source>
        <translation>%1 liegt in keinem seiner Bereiche</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Demodulation</source>
        <translation>Demodulation</translation>
    </message>
    <message>
        <source>Attenuation</source>
        <translation>Dämpfung</translation>
    </message>
    <message>
        <source>RIT</source>
        <translation>RIT</translation>
    </message>
    <message>
        <source>BFO</source>
        <translation>BFO</translation>
    </message>
    <message>
        <source>Squelch knob</source>
        <translation>Squelch-Regler</translation>
    </message>
    <message>
        <source>AFC</source>
        <translation>AFC</translation>
    </message>
    <message>
        <source>%1 is not there</source>
        <translation>%1 ist nicht da</translation>
    </message>
    <message>
        <source>%1 may not be used; whoever uses it must be in its group, often &quot;dialout&quot;</source>
        <translation>%1 darf nicht benutzt werden; wer es benutzt, muss in seiner Gruppe sein, oft &quot;dialout&quot;</translation>
    </message>
    <message>
        <source>%1 is no device</source>
        <translation>%1 ist kein Gerät</translation>
    </message>
    <message>
        <source>it gives its squelch in dB, not in percent of a knob</source>
        <translation>es nennt seinen Squelch in dB, nicht in Prozent eines Reglers</translation>
    </message>
    <message>
        <source>the radio stays at %1</source>
        <translation>das Gerät bleibt bei %1</translation>
    </message>
</context>
<context>
    <name>RadioProfile</name>
    <message>
        <source>%1 at %2</source>
        <translation>%1 an %2</translation>
    </message>
    <message>
        <source>there is no model %1</source>
        <translation>es gibt kein Modell %1</translation>
    </message>
    <message>
        <source>%1 needs a device</source>
        <translation>%1 braucht ein Gerät</translation>
    </message>
    <message>
        <source>%1 needs host:port</source>
        <translation>%1 braucht Rechner:Port</translation>
    </message>
    <message>
        <source>the name of the port is too long</source>
        <translation>der Name des Anschlusses ist zu lang</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not host:port</source>
        <translation>&quot;%1&quot; ist nicht Rechner:Port</translation>
    </message>
    <message>
        <source>the time-out must be from 1 to %1 ms</source>
        <translation>die Wartezeit muss 1 bis %1 ms sein</translation>
    </message>
    <message>
        <source>the speed must not be negative</source>
        <translation>die Geschwindigkeit darf nicht negativ sein</translation>
    </message>
</context>
<context>
    <name>Readers</name>
    <message>
        <source>%1 further problems</source>
        <translation>%1 weitere Probleme</translation>
    </message>
    <message>
        <source>%1the frequency %2 is %3</source>
        <translation>%1die Frequenz %2 liegt %3</translation>
    </message>
    <message>
        <source>below 0 Hz</source>
        <translation>unter 0 Hz</translation>
    </message>
    <message>
        <source>above 1 THz</source>
        <translation>über 1 THz</translation>
    </message>
    <message>
        <source> (and %1 more like it, to line %2)</source>
        <translation> (und %1 weitere dieser Art, bis Zeile %2)</translation>
    </message>
    <message>
        <source> (and %1 more like it)</source>
        <translation> (und %1 weitere dieser Art)</translation>
    </message>
    <message>
        <source>is no text file: it holds zero bytes</source>
        <translation>ist keine Textdatei: sie enthält Null-Bytes</translation>
    </message>
    <message>
        <source>is no text file: it is full of control characters</source>
        <translation>ist keine Textdatei: sie ist voller Steuerzeichen</translation>
    </message>
    <message>
        <source>is not UTF-8 from here on; all is read as Windows-1252</source>
        <translation>ist von hier an kein UTF-8; alles wird als Windows-1252 gelesen</translation>
    </message>
    <message>
        <source>elements are nested too deeply</source>
        <translation>Elemente sind zu tief geschachtelt</translation>
    </message>
    <message>
        <source>entity declarations are refused</source>
        <translation>Entity-Deklarationen werden abgelehnt</translation>
    </message>
    <message>
        <source>is no list that can be read and holds no profiles (root &quot;%1&quot;)</source>
        <translation>ist keine lesbare Liste und enthält keine Profile (Wurzel &quot;%1&quot;)</translation>
    </message>
    <message>
        <source>is of no known kind of file</source>
        <translation>ist von keiner bekannten Dateiart</translation>
    </message>
    <message>
        <source>frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>bandwidth</source>
        <translation>Bandbreite</translation>
    </message>
    <message>
        <source>priority</source>
        <translation>Priorität</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no %2; 0 is taken</source>
        <translation>&quot;%1&quot; ist als %2 nicht lesbar; 0 wird genommen</translation>
    </message>
    <message>
        <source>no such file</source>
        <translation>keine solche Datei</translation>
    </message>
    <message>
        <source>is no regular file</source>
        <translation>ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>is too large</source>
        <translation>ist zu groß</translation>
    </message>
    <message>
        <source>cannot be read on: </source>
        <translation>kann nicht weiter gelesen werden: </translation>
    </message>
    <message>
        <source>text is not well encoded from here on</source>
        <translation>der Text ist von hier an nicht richtig kodiert</translation>
    </message>
    <message>
        <source>file ends within a character</source>
        <translation>die Datei endet in einem Zeichen</translation>
    </message>
    <message>
        <source>control characters are left out</source>
        <translation>Steuerzeichen werden ausgelassen</translation>
    </message>
    <message>
        <source>line is too long; its end is ignored</source>
        <translation>die Zeile ist zu lang; ihr Ende wird nicht beachtet</translation>
    </message>
    <message>
        <source>the last line has no line end; the file may be cut</source>
        <translation>die letzte Zeile hat kein Zeilenende; die Datei ist vielleicht abgeschnitten</translation>
    </message>
    <message>
        <source>is no list and holds no profiles (root &quot;%1&quot;%2)</source>
        <translation>ist keine Liste und enthält keine Profile (Wurzel &quot;%1&quot;%2)</translation>
    </message>
    <message>
        <source>is no MEMORYSCAN</source>
        <translation>ist kein MEMORYSCAN</translation>
    </message>
    <message>
        <source>is not well encoded UTF-8 text</source>
        <translation>ist kein richtig kodierter UTF-8-Text</translation>
    </message>
    <message>
        <source>a job cannot hold more than %1 channels</source>
        <translation>ein Auftrag fasst nicht mehr als %1 Kanäle</translation>
    </message>
    <message>
        <source>Range &quot;%1&quot; is no number; 0 is taken</source>
        <translation>Range &quot;%1&quot; ist keine Zahl; 0 wird genommen</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is no number; 0 is taken</source>
        <translation>%1 &quot;%2&quot; ist keine Zahl; 0 wird genommen</translation>
    </message>
    <message>
        <source>channel &quot;%1&quot; lacks %2</source>
        <translation>dem Kanal &quot;%1&quot; fehlt %2</translation>
    </message>
    <message>
        <source>this section differs from that of line %1, which uses the same numbers; channels join the ranges there</source>
        <translation>dieser Abschnitt ist anders als der von Zeile %1 mit denselben Nummern; die Kanäle kommen zu den Bereichen dort</translation>
    </message>
    <message>
        <source>%1 %2 is outside %3 to %4</source>
        <translation>%1 %2 liegt nicht zwischen %3 und %4</translation>
    </message>
    <message>
        <source>%1, the first is number %2</source>
        <translation>%1, der erste ist Nummer %2</translation>
    </message>
    <message>
        <source>entries without a frequency above 0 have the values of a new entry: %1</source>
        <translation>Einträge ohne Frequenz über 0 haben die Werte eines neuen Eintrags: %1</translation>
    </message>
    <message>
        <source>bands that begin below 0 Hz: %1</source>
        <translation>Einträge, deren Band unter 0 Hz beginnt: %1</translation>
    </message>
    <message>
        <source>could not be read whole and is kept; the list is saved as </source>
        <translation>war nicht ganz lesbar und bleibt; die Liste wird gespeichert als </translation>
    </message>
    <message>
        <source>is not written: the list is empty</source>
        <translation>wird nicht geschrieben: die Liste ist leer</translation>
    </message>
    <message>
        <source>type letter</source>
        <translation>Typ-Buchstabe</translation>
    </message>
    <message>
        <source>lock state</source>
        <translation>Lock-Status</translation>
    </message>
    <message>
        <source>lock time</source>
        <translation>Lock-Zeit</translation>
    </message>
    <message>
        <source>confidence</source>
        <translation>Konfidenz</translation>
    </message>
    <message>
        <source>has no %1</source>
        <translation>ohne %1</translation>
    </message>
    <message>
        <source>Reading %1</source>
        <translation>%1 wird gelesen</translation>
    </message>
    <message>
        <source>Saving %1</source>
        <translation>%1 wird gespeichert</translation>
    </message>
    <message>
        <source>has no headings</source>
        <translation>hat keine Überschriften</translation>
    </message>
    <message>
        <source>has no column &quot;Frequency&quot;</source>
        <translation>hat keine Spalte „Frequency“</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no time on air</source>
        <translation>„%1“ ist keine Sendezeit</translation>
    </message>
    <message>
        <source>does not begin with a frequency in whole Hz, a mode, a carrier and a modem</source>
        <translation>beginnt nicht mit einer Frequenz in ganzen Hz, einer Betriebsart, einem Träger und einem Modem</translation>
    </message>
    <message>
        <source>files of %1 are only written</source>
        <translation>%1: solche Dateien werden nur geschrieben</translation>
    </message>
    <message>
        <source>is no band</source>
        <translation>ist kein Band</translation>
    </message>
    <message>
        <source>is larger than 16 MiB</source>
        <translation>ist größer als 16 MiB</translation>
    </message>
    <message>
        <source>has more than %1 members</source>
        <translation>hat mehr als %1 Felder</translation>
    </message>
    <message>
        <source>is there twice</source>
        <translation>ist doppelt da</translation>
    </message>
    <message>
        <source>entry %1 %2</source>
        <translation>Eintrag %1 %2</translation>
    </message>
    <message>
        <source>entry %1: &quot;%2&quot; %3</source>
        <translation>Eintrag %1: „%2“ %3</translation>
    </message>
    <message>
        <source>is no text</source>
        <translation>ist kein Text</translation>
    </message>
    <message>
        <source>is neither true nor false</source>
        <translation>ist weder true noch false</translation>
    </message>
    <message>
        <source>is no number</source>
        <translation>ist keine Zahl</translation>
    </message>
    <message>
        <source>is no array of numbers</source>
        <translation>ist keine Liste von Zahlen</translation>
    </message>
    <message>
        <source>is no whole number</source>
        <translation>ist keine ganze Zahl</translation>
    </message>
    <message>
        <source>is out of range</source>
        <translation>liegt außerhalb des Bereichs</translation>
    </message>
    <message>
        <source>is neither text nor number</source>
        <translation>ist weder Text noch Zahl</translation>
    </message>
    <message>
        <source>is no JSON array of entries</source>
        <translation>ist keine JSON-Liste von Einträgen</translation>
    </message>
    <message>
        <source>an entry is no JSON object</source>
        <translation>ein Eintrag ist kein JSON-Objekt</translation>
    </message>
    <message>
        <source>is missing</source>
        <translation>fehlt</translation>
    </message>
    <message>
        <source>there is no JSON text</source>
        <translation>es ist kein JSON-Text da</translation>
    </message>
    <message>
        <source>the JSON text is cut</source>
        <translation>der JSON-Text ist abgeschnitten</translation>
    </message>
    <message>
        <source>is no JSON: %1</source>
        <translation>ist kein JSON: %1</translation>
    </message>
    <message>
        <source>is nested deeper than %1</source>
        <translation>ist tiefer als %1 verschachtelt</translation>
    </message>
    <message>
        <source>one piece of text is larger than 16 MiB</source>
        <translation>ein Stück Text ist größer als 16 MiB</translation>
    </message>
    <message>
        <source>something stands behind the JSON text</source>
        <translation>hinter dem JSON-Text steht noch etwas</translation>
    </message>
    <message>
        <source>its second field is no mode</source>
        <translation>das zweite Feld ist keine Betriebsart</translation>
    </message>
    <message>
        <source>is no time</source>
        <translation>ist keine Zeit</translation>
    </message>
    <message>
        <source>has no frequency</source>
        <translation>hat keine Frequenz</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no frequency</source>
        <translation>„%1“ ist keine Frequenz</translation>
    </message>
    <message>
        <source>has %1 fields instead of %2 or %3</source>
        <translation>hat %1 Felder statt %2 oder %3</translation>
    </message>
    <message>
        <source>has %1 fields instead of %2</source>
        <translation>hat %1 Felder statt %2</translation>
    </message>
    <message>
        <source>is cut: the file ends within it</source>
        <translation>ist abgeschnitten: die Datei endet mitten darin</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has no frequency</source>
        <translation>„%1“ hat keine Frequenz</translation>
    </message>
    <message>
        <source>holds no rows</source>
        <translation>enthält keine Zeilen</translation>
    </message>
    <message>
        <source>no column is known to hold the frequency</source>
        <translation>keine Spalte ist als die der Frequenz bekannt</translation>
    </message>
    <message>
        <source>nothing tells the unit of column &quot;%1&quot;</source>
        <translation>nichts nennt die Einheit der Spalte „%1“</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has no unit</source>
        <translation>„%1“ hat keine Einheit</translation>
    </message>
    <message>
        <source>the frequencies are no hertz: all are below 30000, some have decimals, and the member &quot;%1&quot; is of another program</source>
        <translation>die Frequenzen sind keine Hertz: alle liegen unter 30000, manche haben Nachkommastellen, und „%1“ kommt von einem anderen Programm</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no edge of a pass band</source>
        <translation>„%1“ ist keine Grenze eines Durchlassbereichs</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither 0 nor 1</source>
        <translation>„%1“ ist weder 0 noch 1</translation>
    </message>
    <message>
        <source>is no annotation</source>
        <translation>ist keine Anmerkung</translation>
    </message>
    <message>
        <source>&quot;%1&quot; %2 is above 1 THz</source>
        <translation>„%1“ %2 liegt über 1 THz</translation>
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
    <message>
        <source>%1 does not let this be set</source>
        <translation>%1 lässt das nicht einstellen</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 %2 is not one of %3</source>
        <translation>%1 %2 ist keiner der Werte %3</translation>
    </message>
    <message>
        <source>%1: connecting</source>
        <translation>%1: verbindet</translation>
    </message>
    <message>
        <source>%1: connected</source>
        <translation>%1: verbunden</translation>
    </message>
    <message>
        <source>%1: no answer</source>
        <translation>%1: keine Antwort</translation>
    </message>
    <message>
        <source>%1: refused</source>
        <translation>%1: abgelehnt</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>RIT</source>
        <translation>RIT</translation>
    </message>
    <message>
        <source>Squelch knob</source>
        <translation>Squelch-Regler</translation>
    </message>
</context>
<context>
    <name>ReceiverChoice</name>
    <message>
        <source>no receiver is called &quot;%1&quot;; known are simulated, hamlib:MODEL@PORT and the profiles</source>
        <translation>kein Empfänger heißt &quot;%1&quot;; bekannt sind simulated, hamlib:MODELL@ANSCHLUSS und die benannten</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no number of a model</source>
        <translation>&quot;%1&quot; ist keine Nummer eines Modells</translation>
    </message>
</context>
<context>
    <name>ReceiverConnection</name>
    <message>
        <source>&amp;Connect...</source>
        <translation>&amp;Verbinden...</translation>
    </message>
    <message>
        <source>Choose the receiver that the lists tune</source>
        <translation>Den Empfänger wählen, den die Listen abstimmen</translation>
    </message>
    <message>
        <source>&amp;Share on a port</source>
        <translation>An einem Port &amp;freigeben</translation>
    </message>
    <message>
        <source>Let programs of this machine follow and tune the receiver, on port %1 as rigctld would</source>
        <translation>Programme dieses Rechners folgen dem Empfänger und stimmen ihn ab, an Port %1 wie bei rigctld</translation>
    </message>
    <message>
        <source>The receiver is not shared any more</source>
        <translation>Der Empfänger ist nicht mehr freigegeben</translation>
    </message>
    <message>
        <source>Share on a port</source>
        <translation>An einem Port freigeben</translation>
    </message>
    <message>
        <source>The receiver is shared on 127.0.0.1, port %1</source>
        <translation>Der Empfänger ist an 127.0.0.1, Port %1 freigegeben</translation>
    </message>
</context>
<context>
    <name>ReceiverPanel</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>%1, %2 to %3</source>
        <translation>%1, %2 bis %3</translation>
    </message>
</context>
<context>
    <name>ReceiverPort</name>
    <message>
        <source>the radio stays at %1</source>
        <translation>das Gerät bleibt bei %1</translation>
    </message>
</context>
<context>
    <name>RecordClient</name>
    <message>
        <source>%1 is no list of records</source>
        <translation>%1 ist keine Liste von Datensätzen</translation>
    </message>
    <message>
        <source>Showing the shared list</source>
        <translation>Die geteilte Liste wird angezeigt</translation>
    </message>
</context>
<context>
    <name>RecordServer</name>
    <message>
        <source>%1 is no list of records</source>
        <translation>%1 ist keine Liste von Datensätzen</translation>
    </message>
    <message>
        <source>Sharing the list</source>
        <translation>Die Liste wird geteilt</translation>
    </message>
</context>
<context>
    <name>RecoveryDialog</name>
    <message>
        <source>Unsaved Work</source>
        <translation>Nicht gespeicherte Arbeit</translation>
    </message>
    <message>
        <source>The program has ended without saving these lists. Restore puts the checked ones in place of the lists that are shown; their files stay as they are until you save.</source>
        <translation>Das Programm endete, ohne diese Listen zu speichern. Wiederherstellen setzt die angekreuzten an die Stelle der gezeigten Listen; deren Dateien bleiben, wie sie sind, bis Sie speichern.</translation>
    </message>
    <message>
        <source>List</source>
        <translation>Liste</translation>
    </message>
    <message>
        <source>Entries</source>
        <translation>Einträge</translation>
    </message>
    <message>
        <source>Written (UTC)</source>
        <translation>Aufgehoben (UTC)</translation>
    </message>
    <message>
        <source>Saved file</source>
        <translation>Gespeicherte Datei</translation>
    </message>
    <message>
        <source>Entries in it</source>
        <translation>Einträge darin</translation>
    </message>
    <message>
        <source>Saved (UTC)</source>
        <translation>Gespeichert (UTC)</translation>
    </message>
    <message>
        <source>What is neither restored nor discarded is offered again at the next start.</source>
        <translation>Was weder wiederhergestellt noch verworfen wird, wird beim nächsten Start wieder angeboten.</translation>
    </message>
    <message>
        <source>%1, damaged</source>
        <translation>%1, beschädigt</translation>
    </message>
    <message>
        <source>What is whole of the list can be restored</source>
        <translation>Was von der Liste heil ist, kann wiederhergestellt werden</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>is gone</source>
        <translation>fehlt</translation>
    </message>
    <message>
        <source>%1, later</source>
        <translation>%1, später</translation>
    </message>
    <message>
        <source>&amp;Restore</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
    <message>
        <source>Put the checked lists in place of those that are shown</source>
        <translation>Die angekreuzten Listen an die Stelle der gezeigten setzen</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <translation>Speichern &amp;unter...</translation>
    </message>
    <message>
        <source>Write the current row&apos;s list into a file of its own</source>
        <translation>Die Liste der aktuellen Zeile in eine eigene Datei schreiben</translation>
    </message>
    <message>
        <source>&amp;Discard...</source>
        <translation>&amp;Verwerfen...</translation>
    </message>
    <message>
        <source>Give up the checked lists for good</source>
        <translation>Die angekreuzten Listen endgültig aufgeben</translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <translation>&amp;Später</translation>
    </message>
    <message>
        <source>Ask again at the next start</source>
        <translation>Beim nächsten Start wieder fragen</translation>
    </message>
    <message numerus="yes">
        <source>Give up what was not saved in %n lists?</source>
        <translation>
            <numerusform>Das nicht Gespeicherte von %n Liste aufgeben?</numerusform>
            <numerusform>Das nicht Gespeicherte von %n Listen aufgeben?</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RecoveryOffer</name>
    <message>
        <source>holds nothing that could be restored</source>
        <translation>enthält nichts, was wiederhergestellt werden könnte</translation>
    </message>
    <message numerus="yes">
        <source>%1: %n entries, written %2 UTC</source>
        <translation>
            <numerusform>%1: %n Eintrag, aufgehoben %2 UTC</numerusform>
            <numerusform>%1: %n Einträge, aufgehoben %2 UTC</numerusform>
        </translation>
    </message>
    <message>
        <source>Save Unsaved List As</source>
        <translation>Nicht gespeicherte Liste speichern unter</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>holds unsaved work of %1, which is not there</source>
        <translation>enthält Ungespeichertes von %1, das nicht da ist</translation>
    </message>
    <message numerus="yes">
        <source>%1: %n entries restored</source>
        <translation>
            <numerusform>%1: %n Eintrag wiederhergestellt</numerusform>
            <numerusform>%1: %n Einträge wiederhergestellt</numerusform>
        </translation>
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
    <name>RigServer</name>
    <message>
        <source>port %1: %2</source>
        <translation>Port %1: %2</translation>
    </message>
</context>
<context>
    <name>Safekeeping</name>
    <message>
        <source>&amp;Versions...</source>
        <translation>&amp;Versionen...</translation>
    </message>
    <message>
        <source>Show what was saved in the list&apos;s file before, and restore it</source>
        <translation>Zeigen, was früher in der Datei der Liste gespeichert wurde, und es wiederherstellen</translation>
    </message>
    <message>
        <source>The list is in no file yet.</source>
        <translation>Die Liste steht noch in keiner Datei.</translation>
    </message>
    <message>
        <source>No version of %1 has been kept yet: that begins when it is saved</source>
        <translation>Von %1 gibt es noch keine Version: Sie entstehen beim Speichern</translation>
    </message>
    <message>
        <source>is not what was kept</source>
        <translation>ist nicht mehr, was aufgehoben wurde</translation>
    </message>
    <message>
        <source>%1 is as it was saved on %2 UTC</source>
        <translation>%1 ist wie gespeichert am %2 UTC</translation>
    </message>
    <message>
        <source>holds unsaved work: </source>
        <translation>enthält nicht gespeicherte Arbeit: </translation>
    </message>
    <message>
        <source>Restore Version</source>
        <translation>Version wiederherstellen</translation>
    </message>
</context>
<context>
    <name>Scan</name>
    <message>
        <source>Not scanning</source>
        <translation>Kein Suchlauf</translation>
    </message>
    <message>
        <source>Scanning</source>
        <translation>Sucht</translation>
    </message>
    <message>
        <source>Signal</source>
        <translation>Signal</translation>
    </message>
    <message>
        <source>Held</source>
        <translation>Angehalten</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>Wartet</translation>
    </message>
    <message>
        <source>The range ends below its beginning.</source>
        <translation>Der Bereich endet unter seinem Anfang.</translation>
    </message>
    <message>
        <source>There is no such list here.</source>
        <translation>Eine solche Liste gibt es hier nicht.</translation>
    </message>
    <message>
        <source>Memory channels</source>
        <translation>Speicherkanäle</translation>
    </message>
    <message>
        <source>NOI bands</source>
        <translation>NOI-Bänder</translation>
    </message>
    <message>
        <source>Range</source>
        <translation>Bereich</translation>
    </message>
    <message>
        <source>Level over threshold</source>
        <translation>Pegel über der Schwelle</translation>
    </message>
    <message>
        <source>Squelch open</source>
        <translation>Rauschsperre offen</translation>
    </message>
    <message>
        <source>When the signal is gone</source>
        <translation>Wenn das Signal weg ist</translation>
    </message>
    <message>
        <source>After a time</source>
        <translation>Nach einer Zeit</translation>
    </message>
    <message>
        <source>By hand</source>
        <translation>Von Hand</translation>
    </message>
    <message>
        <source>Scanned</source>
        <translation>Durchsucht</translation>
    </message>
    <message>
        <source>From</source>
        <translation>Von</translation>
    </message>
    <message>
        <source>To</source>
        <translation>Bis</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>Settle</source>
        <translation>Einschwingen</translation>
    </message>
    <message>
        <source>Dwell</source>
        <translation>Verweilen</translation>
    </message>
    <message>
        <source>Stop at</source>
        <translation>Halt bei</translation>
    </message>
    <message>
        <source>Threshold</source>
        <translation>Schwelle</translation>
    </message>
    <message>
        <source>Go on</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Go on after</source>
        <translation>Weiter nach</translation>
    </message>
    <message>
        <source>Look there every</source>
        <translation>Dort nachsehen alle</translation>
    </message>
    <message>
        <source>Priority (0: none)</source>
        <translation>Vorrang (0: keiner)</translation>
    </message>
    <message>
        <source>The step is too small.</source>
        <translation>Die Schrittweite ist zu klein.</translation>
    </message>
</context>
<context>
    <name>ScanActions</name>
    <message>
        <source>&amp;Scan</source>
        <translation>Su&amp;chlauf</translation>
    </message>
    <message>
        <source>Start or stop scanning what the panel of the scan says</source>
        <translation>Startet oder beendet den Suchlauf, wie sein Feld ihn beschreibt</translation>
    </message>
    <message>
        <source>&amp;Hold</source>
        <translation>An&amp;halten</translation>
    </message>
    <message>
        <source>Stay at this channel until it is pressed again</source>
        <translation>Bleibt bei diesem Kanal, bis es nochmals gedrückt wird</translation>
    </message>
    <message>
        <source>S&amp;kip</source>
        <translation>Ü&amp;berspringen</translation>
    </message>
    <message>
        <source>Go on to the next channel now</source>
        <translation>Geht jetzt zum nächsten Kanal</translation>
    </message>
    <message>
        <source>&amp;Lock out</source>
        <translation>&amp;Sperren</translation>
    </message>
    <message>
        <source>Go on, and leave this frequency out from now on</source>
        <translation>Geht weiter und lässt diese Frequenz künftig aus</translation>
    </message>
    <message>
        <source>Make &amp;priority channel</source>
        <translation>Zum &amp;Vorrangkanal machen</translation>
    </message>
    <message>
        <source>Look at the frequency that the receiver is tuned to again and again</source>
        <translation>Schaut immer wieder nach der Frequenz, auf die der Empfänger abgestimmt ist</translation>
    </message>
    <message>
        <source>&amp;Forget locked out</source>
        <translation>Gesperrte &amp;freigeben</translation>
    </message>
    <message>
        <source>Scan again what was locked out</source>
        <translation>Durchsucht wieder, was gesperrt war</translation>
    </message>
    <message>
        <source>Nothing is locked out.</source>
        <translation>Nichts ist gesperrt.</translation>
    </message>
    <message>
        <source>No scan runs.</source>
        <translation>Kein Suchlauf ist im Gang.</translation>
    </message>
</context>
<context>
    <name>ScanDetections</name>
    <message>
        <source>scan</source>
        <translation>Suchlauf</translation>
    </message>
    <message>
        <source>channel %1</source>
        <translation>Kanal %1</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
</context>
<context>
    <name>ScanPanel</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>priority</source>
        <translation>Vorrang</translation>
    </message>
    <message>
        <source>channel %1</source>
        <translation>Kanal %1</translation>
    </message>
    <message numerus="yes">
        <source>%Ln step(s)</source>
        <translation>
            <numerusform>%Ln Schritt</numerusform>
            <numerusform>%Ln Schritte</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln pass(es)</source>
        <translation>
            <numerusform>%Ln Durchgang</numerusform>
            <numerusform>%Ln Durchgänge</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln signal(s)</source>
        <translation>
            <numerusform>%Ln Signal</numerusform>
            <numerusform>%Ln Signale</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln out of reach</source>
        <translation>
            <numerusform>%Ln außer Reichweite</numerusform>
            <numerusform>%Ln außer Reichweite</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln locked out</source>
        <translation>
            <numerusform>%Ln gesperrt</numerusform>
            <numerusform>%Ln gesperrt</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Scanner</name>
    <message>
        <source>Tuned by hand to %1</source>
        <translation>Von Hand auf %1 abgestimmt</translation>
    </message>
    <message>
        <source>The receiver tells no level</source>
        <translation>Der Empfänger meldet keinen Pegel</translation>
    </message>
    <message>
        <source>Everything is locked out.</source>
        <translation>Alles ist gesperrt.</translation>
    </message>
    <message>
        <source>Nothing can be reached: %1</source>
        <translation>Nichts ist zu erreichen: %1</translation>
    </message>
    <message>
        <source>%1 is left out: %2</source>
        <translation>%1 wird ausgelassen: %2</translation>
    </message>
</context>
<context>
    <name>Scanning</name>
    <message>
        <source>Scan</source>
        <translation>Suchlauf</translation>
    </message>
    <message>
        <source>S&amp;can</source>
        <translation>Su&amp;chlauf</translation>
    </message>
    <message numerus="yes">
        <source>%Ln signal(s)</source>
        <translation>
            <numerusform>%Ln Signal</numerusform>
            <numerusform>%Ln Signale</numerusform>
        </translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>There is no list of memory channels.</source>
        <translation>Es gibt keine Liste der Speicherkanäle.</translation>
    </message>
    <message>
        <source>The scan has begun</source>
        <translation>Der Suchlauf hat begonnen</translation>
    </message>
    <message>
        <source>The scan has ended</source>
        <translation>Der Suchlauf ist zu Ende</translation>
    </message>
    <message>
        <source>There are no NOI bands.</source>
        <translation>Es gibt keine NOI-Bänder.</translation>
    </message>
    <message>
        <source>The memory channels are being scanned: no job is opened or saved.</source>
        <translation>Die Speicherkanäle werden durchsucht: Kein Auftrag wird geöffnet oder gespeichert.</translation>
    </message>
    <message>
        <source>&amp;Scan</source>
        <translation>&amp;Suchlauf</translation>
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
    <message>
        <source>Export Search MC Results As</source>
        <translation>Search-MC-Detektionen exportieren als</translation>
    </message>
    <message>
        <source>Save Search MC Results As</source>
        <translation>Search-MC-Detektionen speichern unter</translation>
    </message>
    <message>
        <source>No detections yet. They come while a search runs; files of power sweeps can be opened, too.</source>
        <translation>Noch keine Detektionen. Sie kommen, während eine Suche läuft; auch Dateien mit Sweeps lassen sich öffnen.</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Classifier</source>
        <translation>Klassifikator</translation>
    </message>
    <message>
        <source>Direction</source>
        <translation>Peilung</translation>
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
    <message>
        <source>No results yet. They come while the classifier runs; files of results can be opened, too.</source>
        <translation>Noch keine Ergebnisse. Sie kommen, während der Klassifikator läuft; auch Dateien mit Ergebnissen lassen sich öffnen.</translation>
    </message>
</context>
<context>
    <name>SearchMCExtendedVectorListView</name>
    <message>
        <source>classification results</source>
        <translation>Klassifikationsergebnisse</translation>
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
        <source>No frequencies of interest (NOI) yet. Add one, open a list, or send detections here.</source>
        <translation>Noch keine NOI-Frequenzen (Frequenzen von Interesse). Eine hinzufügen, eine Liste öffnen oder Detektionen hierher senden.</translation>
    </message>
</context>
<context>
    <name>SearchMCVectorListView</name>
    <message>
        <source>Detection Results</source>
        <translation>Detektionen</translation>
    </message>
</context>
<context>
    <name>Seat</name>
    <message>
        <source>is no presence of a seat</source>
        <translation>ist keine Anwesenheit eines Platzes</translation>
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
    <message>
        <source>Send</source>
        <translation>Senden</translation>
    </message>
</context>
<context>
    <name>SetColumnDialog</name>
    <message>
        <source>Set Column</source>
        <translation>Spalte setzen</translation>
    </message>
    <message>
        <source>Column</source>
        <translation>Spalte</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message numerus="yes">
        <source>, %Ln rows cannot take it</source>
        <translation>
            <numerusform>, %Ln Zeile kann ihn nicht annehmen</numerusform>
            <numerusform>, %Ln Zeilen können ihn nicht annehmen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln rows set</source>
        <translation>
            <numerusform>%Ln Zeile gesetzt</numerusform>
            <numerusform>%Ln Zeilen gesetzt</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ShareCommands</name>
    <message>
        <source>&amp;Connect...</source>
        <translation>&amp;Verbinden...</translation>
    </message>
    <message>
        <source>Share lists with other seats through a broker</source>
        <translation>Listen mit anderen Plätzen über einen Broker teilen</translation>
    </message>
    <message>
        <source>&amp;Disconnect</source>
        <translation>&amp;Trennen</translation>
    </message>
    <message>
        <source>Share no list any more; what is shown stays</source>
        <translation>Keine Liste mehr teilen; was zu sehen ist, bleibt</translation>
    </message>
    <message>
        <source>Keyring</source>
        <translation>Schlüsselbund</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>&amp;Open at the Server...</source>
        <translation>Beim Server ö&amp;ffnen...</translation>
    </message>
    <message>
        <source>Open at the Server</source>
        <translation>Beim Server öffnen</translation>
    </message>
    <message>
        <source>Name of the file in the server&apos;s folder:</source>
        <translation>Name der Datei im Ordner des Servers:</translation>
    </message>
    <message>
        <source>Ask the server to show a file of its own folder in place of the targets</source>
        <translation>Den Server bitten, eine Datei seines Ordners anstelle der Ziele zu zeigen</translation>
    </message>
    <message>
        <source>This seat shows no targets of a site.</source>
        <translation>Dieser Platz zeigt keine Ziele eines Standorts.</translation>
    </message>
    <message>
        <source>Sh&amp;are</source>
        <translation>&amp;Teilen</translation>
    </message>
    <message>
        <source>Sit&amp;e</source>
        <translation>S&amp;tandort</translation>
    </message>
    <message>
        <source>the password is not kept: %1; a password file does without a keyring</source>
        <translation>das Passwort wird nicht aufgehoben: %1; eine Passwortdatei kommt ohne Schlüsselbund aus</translation>
    </message>
    <message>
        <source>no password: %1; a password file does without a keyring</source>
        <translation>kein Passwort: %1; eine Passwortdatei kommt ohne Schlüsselbund aus</translation>
    </message>
    <message>
        <source>Password for %1 (%2):</source>
        <translation>Passwort für %1 (%2):</translation>
    </message>
    <message>
        <source>%1: waits for the keyring</source>
        <translation>%1: wartet auf den Schlüsselbund</translation>
    </message>
    <message>
        <source>The desktop&apos;s keyring is asked for the password; it may have to be unlocked.</source>
        <translation>Der Schlüsselbund des Desktops wird nach dem Passwort gefragt; vielleicht ist er zu entsperren.</translation>
    </message>
</context>
<context>
    <name>ShareDialog</name>
    <message>
        <source>host, or host:port</source>
        <translation>Rechner oder Rechner:Port</translation>
    </message>
    <message>
        <source>&amp;Encrypted (TLS)</source>
        <translation>V&amp;erschlüsselt (TLS)</translation>
    </message>
    <message>
        <source>lists of one site belong together</source>
        <translation>Listen eines Standorts gehören zusammen</translation>
    </message>
    <message>
        <source>those of the system</source>
        <translation>die des Systems</translation>
    </message>
    <message>
        <source>from the keyring, if it is there</source>
        <translation>aus dem Schlüsselbund, wenn es dort ist</translation>
    </message>
    <message>
        <source>&amp;Keep it in the desktop&apos;s keyring</source>
        <translation>Im Schlüsselbund des Des&amp;ktops aufheben</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>C&amp;lient: show and edit the site&apos;s targets</source>
        <translation>Tei&amp;lnehmer: die Ziele des Standorts sehen und bearbeiten</translation>
    </message>
    <message>
        <source>Ser&amp;ver: let others work on lists of this window</source>
        <translation>Ser&amp;ver: andere an Listen dieses Fensters arbeiten lassen</translation>
    </message>
    <message>
        <source>Co&amp;nnect when the program starts</source>
        <translation>Beim Start des &amp;Programms verbinden</translation>
    </message>
    <message>
        <source>&amp;Test</source>
        <translation>&amp;Testen</translation>
    </message>
    <message>
        <source>Share Lists</source>
        <translation>Listen teilen</translation>
    </message>
    <message>
        <source>&amp;Connect</source>
        <translation>Ver&amp;binden</translation>
    </message>
    <message>
        <source>A connection with a name is kept, without its password; choose it here the next time</source>
        <translation>Eine Verbindung mit Namen bleibt, ohne ihr Passwort; das nächste Mal hier wählen</translation>
    </message>
    <message>
        <source>Forget the connection of this name</source>
        <translation>Die Verbindung dieses Namens vergessen</translation>
    </message>
    <message>
        <source>Na&amp;me:</source>
        <translation>Na&amp;me:</translation>
    </message>
    <message>
        <source>A broker of another machine is reached in no other way</source>
        <translation>Ein Broker auf einem anderen Rechner ist anders nicht zu erreichen</translation>
    </message>
    <message>
        <source>&amp;Broker:</source>
        <translation>Br&amp;oker:</translation>
    </message>
    <message>
        <source>&amp;Site:</source>
        <translation>&amp;Standort:</translation>
    </message>
    <message>
        <source>&amp;Authorities:</source>
        <translation>&amp;Aussteller:</translation>
    </message>
    <message>
        <source>Certificates of authorities (CA)</source>
        <translation>Zertifikate der Aussteller (CA)</translation>
    </message>
    <message>
        <source>Certificates by which the broker&apos;s is checked</source>
        <translation>Zertifikate, mit denen das des Brokers geprüft wird</translation>
    </message>
    <message>
        <source>Without a keyring it is asked for each time</source>
        <translation>Ohne Schlüsselbund wird jedes Mal danach gefragt</translation>
    </message>
    <message>
        <source>&amp;User:</source>
        <translation>Ben&amp;utzer:</translation>
    </message>
    <message>
        <source>&amp;Password:</source>
        <translation>Pass&amp;wort:</translation>
    </message>
    <message>
        <source>Pass&amp;word file:</source>
        <translation>Pa&amp;sswortdatei:</translation>
    </message>
    <message>
        <source>File with the password</source>
        <translation>Datei mit dem Passwort</translation>
    </message>
    <message>
        <source>Its first line is the password; nobody else may read it (mode 600)</source>
        <translation>Ihre erste Zeile ist das Passwort; niemand sonst darf sie lesen (Modus 600)</translation>
    </message>
    <message>
        <source>Certi&amp;ficate:</source>
        <translation>&amp;Zertifikat:</translation>
    </message>
    <message>
        <source>Certificate of this seat</source>
        <translation>Zertifikat dieses Platzes</translation>
    </message>
    <message>
        <source>Ke&amp;y:</source>
        <translation>S&amp;chlüssel:</translation>
    </message>
    <message>
        <source>Key of the certificate</source>
        <translation>Schlüssel des Zertifikats</translation>
    </message>
    <message>
        <source>This seat is:</source>
        <translation>Dieser Platz ist:</translation>
    </message>
    <message>
        <source>It serves:</source>
        <translation>Er stellt bereit:</translation>
    </message>
    <message>
        <source>Connect for a moment and show what the broker answers; nothing is shared</source>
        <translation>Kurz verbinden und zeigen, was der Broker antwortet; nichts wird geteilt</translation>
    </message>
    <message>
        <source>Name the broker&apos;s machine.</source>
        <translation>Den Rechner des Brokers nennen.</translation>
    </message>
    <message>
        <source>Name the site.</source>
        <translation>Den Standort nennen.</translation>
    </message>
    <message>
        <source>F&amp;orget</source>
        <translation>Ve&amp;rgessen</translation>
    </message>
    <message>
        <source>Remove the password of this user at this broker from the desktop&apos;s keyring</source>
        <translation>Das Passwort dieses Benutzers bei diesem Broker aus dem Schlüsselbund des Desktops entfernen</translation>
    </message>
    <message>
        <source>The keyring is asked; it may have to be unlocked.</source>
        <translation>Der Schlüsselbund wird gefragt; vielleicht ist er zu entsperren.</translation>
    </message>
    <message>
        <source>No password: %1. Type it, or name a password file.</source>
        <translation>Kein Passwort: %1. Es eingeben oder eine Passwortdatei nennen.</translation>
    </message>
    <message>
        <source>The keyring has no password of this user any more.</source>
        <translation>Der Schlüsselbund hat kein Passwort dieses Benutzers mehr.</translation>
    </message>
    <message>
        <source>The password was not removed: %1.</source>
        <translation>Das Passwort wurde nicht entfernt: %1.</translation>
    </message>
    <message>
        <source>The password stays in the keyring: %1 needs it, too.</source>
        <translation>Das Passwort bleibt im Schlüsselbund: auch %1 braucht es.</translation>
    </message>
    <message>
        <source>The password stays in the keyring: the connection at the program&apos;s start needs it.</source>
        <translation>Das Passwort bleibt im Schlüsselbund: die Verbindung beim Programmstart braucht es.</translation>
    </message>
    <message>
        <source>Keyring</source>
        <translation>Schlüsselbund</translation>
    </message>
</context>
<context>
    <name>ShareEditing</name>
    <message>
        <source>Being edited by</source>
        <translation>Bearbeitet gerade</translation>
    </message>
</context>
<context>
    <name>ShareKind</name>
    <message>
        <source>Targets</source>
        <translation>Ziele</translation>
    </message>
    <message>
        <source>NOI Frequencies</source>
        <translation>NOI-Frequenzen</translation>
    </message>
    <message>
        <source>Memory Channels HF</source>
        <translation>Speicherkanäle HF</translation>
    </message>
    <message>
        <source>Memory Channels V/UHF</source>
        <translation>Speicherkanäle V/UHF</translation>
    </message>
    <message>
        <source>Detections</source>
        <translation>Detektionen</translation>
    </message>
    <message>
        <source>Search MC with Classifier HF</source>
        <translation>Search MC mit Klassifikator HF</translation>
    </message>
    <message>
        <source>Search MC with Classifier V/UHF</source>
        <translation>Search MC mit Klassifikator V/UHF</translation>
    </message>
</context>
<context>
    <name>SharePassword</name>
    <message>
        <source>there is none in the keyring</source>
        <translation>im Schlüsselbund ist keines</translation>
    </message>
    <message>
        <source>the keyring is locked</source>
        <translation>der Schlüsselbund ist gesperrt</translation>
    </message>
</context>
<context>
    <name>ShareProbe</name>
    <message>
        <source>Connecting...</source>
        <translation>Verbindet...</translation>
    </message>
    <message>
        <source>Not connected: %1</source>
        <translation>Nicht verbunden: %1</translation>
    </message>
    <message>
        <source>The broker lets %1 in.</source>
        <translation>Der Broker lässt %1 ein.</translation>
    </message>
    <message>
        <source>No list is served there.</source>
        <translation>Dort wird keine Liste bereitgestellt.</translation>
    </message>
    <message>
        <source>Served: %1.</source>
        <translation>Bereitgestellt: %1.</translation>
    </message>
    <message>
        <source>There: %1.</source>
        <translation>Da: %1.</translation>
    </message>
    <message>
        <source>%1 by %2 (%3)</source>
        <translation>%1 von %2 (%3)</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Not served: %1.</source>
        <translation>Nicht bereitgestellt: %1.</translation>
    </message>
    <message>
        <source>But it passes nothing of this site on to this user: see its access list.</source>
        <translation>Aber er gibt von diesem Standort nichts an diesen Benutzer weiter: siehe seine Zugriffsliste.</translation>
    </message>
</context>
<context>
    <name>ShareRefusal</name>
    <message>
        <source>&amp;Try Again with Mine</source>
        <translation>Nochmals mit &amp;meinem Stand</translation>
    </message>
    <message>
        <source>Not Accepted</source>
        <translation>Nicht angenommen</translation>
    </message>
    <message>
        <source>What differs</source>
        <translation>Was sich unterscheidet</translation>
    </message>
    <message>
        <source>Entry</source>
        <translation>Eintrag</translation>
    </message>
    <message>
        <source>Mine</source>
        <translation>Mein Stand</translation>
    </message>
    <message>
        <source>Theirs</source>
        <translation>Ihr Stand</translation>
    </message>
    <message>
        <source>&amp;Keep Theirs</source>
        <translation>Ihren &amp;behalten</translation>
    </message>
    <message>
        <source>removed</source>
        <translation>entfernt</translation>
    </message>
    <message>
        <source>there</source>
        <translation>da</translation>
    </message>
    <message>
        <source>Change the entries to what they were to be, whatever they are now</source>
        <translation>Die Einträge so ändern, wie sie sein sollten, was immer sie jetzt sind</translation>
    </message>
    <message numerus="yes">
        <source>%1: %n change(s) not accepted: %2. The list shows what the site has.</source>
        <translation>
            <numerusform>%1: %n Änderung nicht angenommen: %2. Die Liste zeigt den Stand des Standorts.</numerusform>
            <numerusform>%1: %n Änderungen nicht angenommen: %2. Die Liste zeigt den Stand des Standorts.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ShareSiteList</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>its records are of another kind</source>
        <translation>ihre Datensätze sind von anderer Art</translation>
    </message>
</context>
<context>
    <name>ShareSitePanel</name>
    <message>
        <source>Seats of the site</source>
        <translation>Plätze des Standorts</translation>
    </message>
    <message>
        <source>Seat</source>
        <translation>Platz</translation>
    </message>
    <message>
        <source>User</source>
        <translation>Benutzer</translation>
    </message>
    <message>
        <source>Edits</source>
        <translation>Bearbeitet</translation>
    </message>
    <message>
        <source>Lists of the site</source>
        <translation>Listen des Standorts</translation>
    </message>
    <message>
        <source>List</source>
        <translation>Liste</translation>
    </message>
    <message>
        <source>Entries</source>
        <translation>Einträge</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>%1 (this seat)</source>
        <translation>%1 (dieser Platz)</translation>
    </message>
    <message>
        <source>No list is shared: see Share &gt; Connect...</source>
        <translation>Keine Liste wird geteilt: siehe Teilen &gt; Verbinden...</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>Server</translation>
    </message>
</context>
<context>
    <name>ShareSiteView</name>
    <message>
        <source>The seat that serves this list has no entries in it.</source>
        <translation>Der Platz, der diese Liste bereitstellt, hat keine Einträge darin.</translation>
    </message>
    <message>
        <source>The entries come when the seat that serves this list is there.</source>
        <translation>Die Einträge kommen, wenn der Platz da ist, der diese Liste bereitstellt.</translation>
    </message>
    <message>
        <source>Write a copy of the list into a file of this machine</source>
        <translation>Eine Kopie der Liste in eine Datei dieses Rechners schreiben</translation>
    </message>
    <message>
        <source>The list is one of another seat: %1.</source>
        <translation>Die Liste ist die eines anderen Platzes: %1.</translation>
    </message>
    <message>
        <source>A copy was written to %1</source>
        <translation>Eine Kopie steht in %1</translation>
    </message>
    <message>
        <source>Save a Copy of the List</source>
        <translation>Kopie der Liste sichern</translation>
    </message>
    <message>
        <source>XML Lists</source>
        <translation>XML-Listen</translation>
    </message>
    <message>
        <source>Export List</source>
        <translation>Liste exportieren</translation>
    </message>
    <message>
        <source>CSV Lists</source>
        <translation>CSV-Listen</translation>
    </message>
</context>
<context>
    <name>Sharing</name>
    <message>
        <source>the list comes</source>
        <translation>die Liste kommt</translation>
    </message>
    <message>
        <source>%1 of %2 entries</source>
        <translation>%1 von %2 Einträgen</translation>
    </message>
    <message>
        <source>the list cannot be served</source>
        <translation>die Liste kann nicht bereitgestellt werden</translation>
    </message>
    <message>
        <source>waits for a server</source>
        <translation>wartet auf einen Server</translation>
    </message>
    <message>
        <source>the server has gone</source>
        <translation>der Server ist weg</translation>
    </message>
    <message>
        <source>the list comes anew</source>
        <translation>die Liste kommt neu</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>connecting</source>
        <translation>verbindet</translation>
    </message>
    <message numerus="yes">
        <source>client, %Ln seat(s)</source>
        <translation>
            <numerusform>Teilnehmer, %Ln Platz</numerusform>
            <numerusform>Teilnehmer, %Ln Plätze</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>server, %Ln seat(s)</source>
        <translation>
            <numerusform>Server, %Ln Platz</numerusform>
            <numerusform>Server, %Ln Plätze</numerusform>
        </translation>
    </message>
    <message>
        <source>old since %1</source>
        <translation>alt seit %1</translation>
    </message>
    <message>
        <source>refused</source>
        <translation>abgelehnt</translation>
    </message>
    <message>
        <source>No list is shared.</source>
        <translation>Keine Liste wird geteilt.</translation>
    </message>
    <message>
        <source>%1 (this seat)</source>
        <translation>%1 (dieser Platz)</translation>
    </message>
    <message>
        <source>There: %1</source>
        <translation>Da: %1</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Nochmals versuchen</translation>
    </message>
    <message>
        <source>The list is one of another seat: %1.</source>
        <translation>Die Liste ist die eines anderen Platzes: %1.</translation>
    </message>
</context>
<context>
    <name>SimulatedClassifier</name>
    <message>
        <source>Simulated &amp;classifier</source>
        <translation>Simulierter &amp;Klassifikator</translation>
    </message>
    <message>
        <source>Start or stop a classifier without a radio</source>
        <translation>Einen Klassifikator ohne Funkgerät starten oder anhalten</translation>
    </message>
</context>
<context>
    <name>SimulatedReceiver</name>
    <message>
        <source>Simulated %1 receiver</source>
        <translation>Simulierter %1-Empfänger</translation>
    </message>
</context>
<context>
    <name>SimulatedSearch</name>
    <message>
        <source>&amp;Simulated search</source>
        <translation>&amp;Simulierte Suche</translation>
    </message>
    <message>
        <source>&amp;Newest first</source>
        <translation>&amp;Neueste zuerst</translation>
    </message>
    <message>
        <source>simulated search</source>
        <translation>simulierte Suche</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Quelle</translation>
    </message>
    <message>
        <source>C&amp;lear detections</source>
        <translation>Detektionen &amp;löschen</translation>
    </message>
    <message>
        <source>Keep the latest detections on top</source>
        <translation>Die neuesten Detektionen oben halten</translation>
    </message>
    <message>
        <source>Empty both lists of detections</source>
        <translation>Beide Listen der Detektionen leeren</translation>
    </message>
    <message>
        <source>Start or stop a search without a radio</source>
        <translation>Eine Suche ohne Funkgerät starten oder anhalten</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
</context>
<context>
    <name>SiteLists</name>
    <message>
        <source>served</source>
        <translation>bereit</translation>
    </message>
    <message>
        <source>begins</source>
        <translation>beginnt</translation>
    </message>
    <message>
        <source>waits</source>
        <translation>wartet</translation>
    </message>
    <message>
        <source>server gone</source>
        <translation>Server weg</translation>
    </message>
    <message>
        <source>other version</source>
        <translation>andere Version</translation>
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
    <message>
        <source>All of %1</source>
        <translation>Alle von %1</translation>
    </message>
    <message>
        <source>Row %1 of %2</source>
        <translation>Zeile %1 von %2</translation>
    </message>
    <message>
        <source>Sort</source>
        <translation>Sortieren</translation>
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
        <source>holds no power sweeps</source>
        <translation>enthält keine Sweeps</translation>
    </message>
    <message>
        <source>%1: %2 detections in %3 sweeps</source>
        <translation>%1: %2 Detektionen in %3 Sweeps</translation>
    </message>
</context>
<context>
    <name>TablePanel</name>
    <message>
        <source>Comma</source>
        <translation>Komma</translation>
    </message>
    <message>
        <source>Semicolon</source>
        <translation>Strichpunkt</translation>
    </message>
    <message>
        <source>Tab</source>
        <translation>Tabulator</translation>
    </message>
    <message>
        <source>Vertical bar</source>
        <translation>Senkrechter Strich</translation>
    </message>
    <message>
        <source>First row has &amp;headings</source>
        <translation>Erste Zeile hat &amp;Überschriften</translation>
    </message>
    <message>
        <source>Point (121.5)</source>
        <translation>Punkt (121.5)</translation>
    </message>
    <message>
        <source>Comma (121,5)</source>
        <translation>Komma (121,5)</translation>
    </message>
    <message>
        <source>&amp;Separator:</source>
        <translation>&amp;Trennzeichen:</translation>
    </message>
    <message>
        <source>&amp;Decimal mark:</source>
        <translation>&amp;Dezimalzeichen:</translation>
    </message>
    <message>
        <source>&amp;Text:</source>
        <translation>&amp;Kodierung:</translation>
    </message>
    <message>
        <source>&amp;Frequency:</source>
        <translation>&amp;Frequenz:</translation>
    </message>
    <message>
        <source>&amp;Bandwidth:</source>
        <translation>&amp;Bandbreite:</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>N&amp;ame:</translation>
    </message>
    <message>
        <source>N&amp;otes:</source>
        <translation>N&amp;otizen:</translation>
    </message>
    <message>
        <source>De&amp;modulation:</source>
        <translation>De&amp;modulation:</translation>
    </message>
    <message>
        <source>Unit of the frequencies</source>
        <translation>Einheit der Frequenzen</translation>
    </message>
    <message>
        <source>Unit of the bandwidths</source>
        <translation>Einheit der Bandbreiten</translation>
    </message>
    <message>
        <source>As a table with these headings was read the last time.</source>
        <translation>So wie zuletzt eine Tabelle mit diesen Überschriften gelesen wurde.</translation>
    </message>
    <message>
        <source>%1 (found)</source>
        <translation>%1 (erkannt)</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Column %1</source>
        <translation>Spalte %1</translation>
    </message>
    <message>
        <source>Unit?</source>
        <translation>Einheit?</translation>
    </message>
    <message>
        <source>Unit? %1 is likely</source>
        <translation>Einheit? Wohl %1</translation>
    </message>
    <message>
        <source>In each cell</source>
        <translation>In jeder Zelle</translation>
    </message>
    <message>
        <source>Choose the column of the frequencies.</source>
        <translation>Wählen Sie die Spalte der Frequenzen.</translation>
    </message>
    <message>
        <source>Choose the unit of the frequencies.</source>
        <translation>Wählen Sie die Einheit der Frequenzen.</translation>
    </message>
    <message>
        <source>Choose the unit of the bandwidths.</source>
        <translation>Wählen Sie die Einheit der Bandbreiten.</translation>
    </message>
    <message>
        <source>Point, commas in thousands (7,055.5)</source>
        <translation>Punkt, Kommas bei Tausendern (7,055.5)</translation>
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
    <name>TargetListHandler</name>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
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
    <name>TimePicture</name>
    <message>
        <source>Time picture</source>
        <translation>Zeitbild</translation>
    </message>
    <message>
        <source>Detections over frequency and time, newest on top</source>
        <translation>Detektionen über Frequenz und Zeit, neueste oben</translation>
    </message>
    <message>
        <source>%1 dB</source>
        <translation>%1 dB</translation>
    </message>
    <message>
        <source>Save Picture As</source>
        <translation>Bild speichern unter</translation>
    </message>
    <message>
        <source>Pictures (*.png)</source>
        <translation>Bilder (*.png)</translation>
    </message>
    <message>
        <source>Detections &amp;shown</source>
        <translation>An&amp;gezeigte Detektionen</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>Of %1</source>
        <translation>Von %1</translation>
    </message>
    <message>
        <source>&amp;Follow the newest</source>
        <translation>&amp;Neuesten folgen</translation>
    </message>
    <message>
        <source>Show &amp;everything</source>
        <translation>&amp;Alles zeigen</translation>
    </message>
    <message>
        <source>&amp;Take the sweeps away</source>
        <translation>Sweeps &amp;entfernen</translation>
    </message>
    <message>
        <source>&amp;Save as PNG...</source>
        <translation>Als PNG &amp;speichern...</translation>
    </message>
    <message>
        <source>Detection %1</source>
        <translation>Detektion %1</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>now</source>
        <translation>jetzt</translation>
    </message>
    <message>
        <source>From: %1</source>
        <translation>Quelle: %1</translation>
    </message>
    <message>
        <source>&amp;Time picture</source>
        <translation>Ze&amp;itbild</translation>
    </message>
</context>
<context>
    <name>TuningStrip</name>
    <message>
        <source>Tuned frequency</source>
        <translation>Abgestimmte Frequenz</translation>
    </message>
    <message>
        <source>The receiver&apos;s frequency; may name its unit, as in 7.055 MHz</source>
        <translation>Frequenz des Empfängers; auch mit Einheit, etwa 7.055 MHz</translation>
    </message>
    <message>
        <source>Step down</source>
        <translation>Schritt abwärts</translation>
    </message>
    <message>
        <source>Step up</source>
        <translation>Schritt aufwärts</translation>
    </message>
    <message>
        <source>Demodulation</source>
        <translation>Demodulation</translation>
    </message>
    <message>
        <source>Bandwidth</source>
        <translation>Bandbreite</translation>
    </message>
    <message>
        <source>Bandwidth of the demodulator</source>
        <translation>Bandbreite des Demodulators</translation>
    </message>
    <message>
        <source>Level at the input of the demodulator</source>
        <translation>Pegel am Eingang des Demodulators</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Stop all that runs</source>
        <translation>Alles anhalten, was läuft</translation>
    </message>
    <message>
        <source>Tune by one step</source>
        <translation>Um einen Schritt abstimmen</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>How far one step tunes</source>
        <translation>Um wieviel ein Schritt abstimmt</translation>
    </message>
    <message>
        <source>%1 dBµV</source>
        <translation>%1 dBµV</translation>
    </message>
    <message>
        <source>%1 running, %2</source>
        <translation>%1 läuft, %2</translation>
    </message>
</context>
<context>
    <name>UndoHistory</name>
    <message>
        <source>the list or entries of it have gone meanwhile</source>
        <translation>die Liste oder Einträge von ihr gibt es nicht mehr</translation>
    </message>
    <message>
        <source>there is not enough memory</source>
        <translation>der Speicher reicht nicht</translation>
    </message>
    <message>
        <source>%1 cannot be undone: %2</source>
        <translation>%1 lässt sich nicht rückgängig machen: %2</translation>
    </message>
    <message>
        <source>%1 cannot be done again: %2</source>
        <translation>%1 lässt sich nicht wiederholen: %2</translation>
    </message>
    <message>
        <source>cannot be undone: not enough memory</source>
        <translation>lässt sich nicht rückgängig machen: der Speicher reicht nicht</translation>
    </message>
    <message numerus="yes">
        <source>%1 %n entries</source>
        <translation>
            <numerusform>%1: %n Eintrag</numerusform>
            <numerusform>%1: %n Einträge</numerusform>
        </translation>
    </message>
    <message>
        <source>a step of undo stays in memory: </source>
        <translation>ein Schritt des Verlaufs bleibt im Speicher: </translation>
    </message>
    <message>
        <source>what a step of undo keeps is cut off</source>
        <translation>was ein Schritt des Verlaufs behält, ist abgeschnitten</translation>
    </message>
</context>
<context>
    <name>UnsavedDialog</name>
    <message>
        <source>Unsaved Lists</source>
        <translation>Ungespeicherte Listen</translation>
    </message>
    <message>
        <source>These lists have changes that are in no file. Save them?</source>
        <translation>Diese Listen haben Änderungen, die in keiner Datei stehen. Speichern?</translation>
    </message>
    <message>
        <source>List</source>
        <translation>Liste</translation>
    </message>
    <message>
        <source>Entries</source>
        <translation>Einträge</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>never saved</source>
        <translation>nie gespeichert</translation>
    </message>
    <message>
        <source>&amp;Save All</source>
        <translation>Alle &amp;speichern</translation>
    </message>
    <message>
        <source>&amp;Save Checked</source>
        <translation>Gewählte &amp;speichern</translation>
    </message>
    <message>
        <source>What is not checked is lost</source>
        <translation>Was nicht gewählt ist, geht verloren</translation>
    </message>
    <message>
        <source>No list is checked.</source>
        <translation>Keine Liste ist gewählt.</translation>
    </message>
</context>
<context>
    <name>VCFrequencyList</name>
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
    <name>VectorListViewBase</name>
    <message>
        <source>Sort</source>
        <translation>Sortieren</translation>
    </message>
</context>
<context>
    <name>VersionsDialog</name>
    <message>
        <source>Versions of %1</source>
        <translation>Versionen: %1</translation>
    </message>
    <message>
        <source>Saved versions of %1</source>
        <translation>Gespeicherte Versionen von %1</translation>
    </message>
    <message>
        <source>The list takes the content of the version. Its file stays as it is until the list is saved.</source>
        <translation>Die Liste bekommt den Inhalt der Version. Ihre Datei bleibt, wie sie ist, bis die Liste gespeichert wird.</translation>
    </message>
    <message>
        <source>&amp;Restore</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
    <message>
        <source>Versions</source>
        <translation>Versionen</translation>
    </message>
    <message>
        <source>Saved (UTC)</source>
        <translation>Gespeichert (UTC)</translation>
    </message>
    <message>
        <source>Entries</source>
        <translation>Einträge</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Changed since then</source>
        <translation>Seitdem geändert</translation>
    </message>
    <message>
        <source>What was done to the list between the version and now</source>
        <translation>Was zwischen der Version und jetzt mit der Liste geschah</translation>
    </message>
    <message>
        <source>cannot be read</source>
        <translation>nicht lesbar</translation>
    </message>
    <message>
        <source>cannot be compared</source>
        <translation>nicht vergleichbar</translation>
    </message>
    <message numerus="yes">
        <source>%n added</source>
        <translation>
            <numerusform>%n neu</numerusform>
            <numerusform>%n neu</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n removed</source>
        <translation>
            <numerusform>%n entfernt</numerusform>
            <numerusform>%n entfernt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n changed</source>
        <translation>
            <numerusform>%n geändert</numerusform>
            <numerusform>%n geändert</numerusform>
        </translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>nichts</translation>
    </message>
</context>
<context>
    <name>WelcomePage</name>
    <message>
        <source>Open the &amp;samples</source>
        <translation>&amp;Beispiele öffnen</translation>
    </message>
    <message>
        <source>Public frequencies in every list, and a search that finds signals</source>
        <translation>Öffentliche Frequenzen in jeder Liste, und eine Suche, die Signale findet</translation>
    </message>
    <message>
        <source>Try the simulated &amp;receiver</source>
        <translation>Den simulierten &amp;Empfänger ausprobieren</translation>
    </message>
    <message>
        <source>Type a frequency to tune to, and see signals come and go</source>
        <translation>Eine Frequenz eingeben und sehen, wie Signale kommen und gehen</translation>
    </message>
    <message>
        <source>Open a &amp;file...</source>
        <translation>Eine &amp;Datei öffnen...</translation>
    </message>
    <message>
        <source>A list, a job or power sweeps; files can be dropped on the window, too</source>
        <translation>Eine Liste, einen Auftrag oder Sweeps; Dateien lassen sich auch auf das Fenster ziehen</translation>
    </message>
    <message>
        <source>Read the &amp;guide</source>
        <translation>Das &amp;Handbuch lesen</translation>
    </message>
    <message>
        <source>How to do what, with pictures</source>
        <translation>Wie was geht, mit Bildern</translation>
    </message>
    <message>
        <source>&amp;Do not show this again</source>
        <translation>&amp;Nicht mehr zeigen</translation>
    </message>
    <message>
        <source>&lt;h2&gt;Lists of frequencies for radio monitoring&lt;/h2&gt;</source>
        <translation>&lt;h2&gt;Frequenzlisten für die Funküberwachung&lt;/h2&gt;</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
</context>
<context>
    <name>WindowActions</name>
    <message>
        <source>&amp;Open...</source>
        <translation>&amp;Öffnen...</translation>
    </message>
    <message>
        <source>Open any file; it goes to whom it belongs</source>
        <translation>Eine Datei öffnen; sie geht dorthin, wohin sie gehört</translation>
    </message>
    <message>
        <source>Open &amp;into This List...</source>
        <translation>&amp;In diese Liste öffnen...</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Save the list into its file</source>
        <translation>Liste in ihrer Datei speichern</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <translation>Speichern &amp;unter...</translation>
    </message>
    <message>
        <source>Save the list under another name</source>
        <translation>Liste unter anderem Namen speichern</translation>
    </message>
    <message>
        <source>&amp;Import CSV...</source>
        <translation>CSV i&amp;mportieren...</translation>
    </message>
    <message>
        <source>&amp;Export CSV...</source>
        <translation>CSV &amp;exportieren...</translation>
    </message>
    <message>
        <source>&amp;Print List...</source>
        <translation>Liste &amp;drucken...</translation>
    </message>
    <message>
        <source>Print the rows that are shown</source>
        <translation>Angezeigte Zeilen drucken</translation>
    </message>
    <message>
        <source>Save List as P&amp;DF...</source>
        <translation>Liste als &amp;PDF speichern...</translation>
    </message>
    <message>
        <source>Write the rows that are shown as a PDF document</source>
        <translation>Angezeigte Zeilen als PDF-Dokument schreiben</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>End the program</source>
        <translation>Programm beenden</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>A&amp;usschneiden</translation>
    </message>
    <message>
        <source>Copy the selected entries and delete them</source>
        <translation>Ausgewählte Einträge kopieren und löschen</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Einfügen</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
    <message>
        <source>Select all rows that are shown</source>
        <translation>Alle angezeigten Zeilen auswählen</translation>
    </message>
    <message>
        <source>&amp;Find</source>
        <translation>&amp;Suchen</translation>
    </message>
    <message>
        <source>Narrow the rows to those that contain a text</source>
        <translation>Nur Zeilen zeigen, die einen Text enthalten</translation>
    </message>
    <message>
        <source>&amp;Tune</source>
        <translation>&amp;Abstimmen</translation>
    </message>
    <message>
        <source>Tune the receiver to the selected entry, with all its settings</source>
        <translation>Empfänger auf den ausgewählten Eintrag abstimmen, mit allen Einstellungen</translation>
    </message>
    <message>
        <source>Pre&amp;vious Entry</source>
        <translation>&amp;Voriger Eintrag</translation>
    </message>
    <message>
        <source>Go to the row above and tune to it</source>
        <translation>Zur Zeile darüber gehen und darauf abstimmen</translation>
    </message>
    <message>
        <source>Ne&amp;xt Entry</source>
        <translation>Nä&amp;chster Eintrag</translation>
    </message>
    <message>
        <source>Go to the row below and tune to it</source>
        <translation>Zur Zeile darunter gehen und darauf abstimmen</translation>
    </message>
    <message>
        <source>&amp;New...</source>
        <translation>&amp;Neu...</translation>
    </message>
    <message>
        <source>&amp;Edit...</source>
        <translation>&amp;Bearbeiten...</translation>
    </message>
    <message>
        <source>&amp;Duplicate</source>
        <translation>&amp;Duplizieren</translation>
    </message>
    <message>
        <source>Add a copy of each selected entry</source>
        <translation>Von jedem ausgewählten Eintrag eine Kopie hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Send to</source>
        <translation>&amp;Senden an</translation>
    </message>
    <message>
        <source>%1 does not have this.</source>
        <translation>%1 bietet das nicht.</translation>
    </message>
    <message>
        <source>No entry is selected.</source>
        <translation>Kein Eintrag ist ausgewählt.</translation>
    </message>
    <message>
        <source>No list is shown.</source>
        <translation>Es wird keine Liste gezeigt.</translation>
    </message>
    <message>
        <source>%1 has no file of its own: use Save As.</source>
        <translation>%1 hat keine eigene Datei: Benutzen Sie „Speichern unter“.</translation>
    </message>
    <message>
        <source>%1 takes no copies of its entries.</source>
        <translation>%1 nimmt keine Kopien ihrer Einträge an.</translation>
    </message>
    <message>
        <source>%1 shows no rows.</source>
        <translation>%1 zeigt keine Zeilen.</translation>
    </message>
    <message>
        <source>%1: %2...</source>
        <translation>%1: %2...</translation>
    </message>
    <message>
        <source>Copy as Te&amp;xt</source>
        <translation>Als Te&amp;xt kopieren</translation>
    </message>
    <message>
        <source>Copy the selected rows as text for a spreadsheet</source>
        <translation>Die markierten Zeilen als Text für eine Tabellenkalkulation kopieren</translation>
    </message>
    <message>
        <source>Paste T&amp;ext</source>
        <translation>&amp;Text einfügen</translation>
    </message>
    <message>
        <source>Add an entry for each row that a spreadsheet has copied</source>
        <translation>Für jede Zeile, die eine Tabellenkalkulation kopiert hat, einen Eintrag anlegen</translation>
    </message>
    <message>
        <source>Edit &amp;Cell</source>
        <translation>&amp;Zelle bearbeiten</translation>
    </message>
    <message>
        <source>Edit the cell clicked last; Tab goes on to the next one</source>
        <translation>Die zuletzt angeklickte Zelle bearbeiten; Tab geht zur nächsten</translation>
    </message>
    <message>
        <source>&amp;Fill Down</source>
        <translation>Nach unten aus&amp;füllen</translation>
    </message>
    <message>
        <source>Give the first selected row&apos;s value, in the column clicked last, to the others</source>
        <translation>Den Wert der ersten markierten Zeile in der zuletzt angeklickten Spalte den anderen geben</translation>
    </message>
    <message>
        <source>Set C&amp;olumn...</source>
        <translation>Spalte s&amp;etzen...</translation>
    </message>
    <message>
        <source>Give all selected rows one value</source>
        <translation>Allen markierten Zeilen einen Wert geben</translation>
    </message>
    <message>
        <source>%1 takes no entries.</source>
        <translation>%1 nimmt keine Einträge.</translation>
    </message>
    <message>
        <source>The rows of %1 cannot be edited.</source>
        <translation>Die Zeilen von %1 können nicht bearbeitet werden.</translation>
    </message>
    <message numerus="yes">
        <source>%Ln entries added</source>
        <translation>
            <numerusform>%Ln Eintrag hinzugefügt</numerusform>
            <numerusform>%Ln Einträge hinzugefügt</numerusform>
        </translation>
    </message>
    <message>
        <source>Find &amp;Next</source>
        <translation>Weitersu&amp;chen</translation>
    </message>
    <message>
        <source>Go to the next row with what was looked for, through all lists</source>
        <translation>Zur nächsten Zeile mit dem Gesuchten, durch alle Listen</translation>
    </message>
    <message>
        <source>Find Pre&amp;vious</source>
        <translation>Rückwärts suc&amp;hen</translation>
    </message>
    <message>
        <source>Go to the row before with what was looked for, through all lists</source>
        <translation>Zur Zeile davor mit dem Gesuchten, durch alle Listen</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>Take back the last change of a list</source>
        <translation>Die letzte Änderung einer Liste zurücknehmen</translation>
    </message>
    <message>
        <source>Red&amp;o</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>Do again what was taken back</source>
        <translation>Das Zurückgenommene wieder machen</translation>
    </message>
    <message>
        <source>Nothing has been changed yet.</source>
        <translation>Noch wurde nichts geändert.</translation>
    </message>
    <message>
        <source>Nothing has been taken back.</source>
        <translation>Nichts wurde zurückgenommen.</translation>
    </message>
    <message>
        <source>&amp;Undo %1</source>
        <translation>&amp;Rückgängig: %1</translation>
    </message>
    <message>
        <source>Red&amp;o %1</source>
        <translation>&amp;Wiederholen: %1</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Ausschneiden</translation>
    </message>
    <message>
        <source>I&amp;mport into List...</source>
        <translation>In &amp;Liste importieren...</translation>
    </message>
    <message>
        <source>Show what the entries of a file would add to the list and change in it, and choose</source>
        <translation>Zeigen, was die Einträge einer Datei der Liste hinzufügen und an ihr ändern würden, und auswählen</translation>
    </message>
    <message>
        <source>Find Dup&amp;licates</source>
        <translation>&amp;Doppelte suchen</translation>
    </message>
    <message>
        <source>Select entries of the same frequency, within the tolerance of the preferences, and demodulation as an earlier one; the first one of each stays, also when the others are deleted</source>
        <translation>Einträge auswählen, die innerhalb der Toleranz der Einstellungen Frequenz und Demodulation eines früheren haben; der jeweils erste bleibt, auch wenn die anderen gelöscht werden</translation>
    </message>
    <message>
        <source>%1 is a list of what was heard, one entry each time.</source>
        <translation>%1 ist eine Liste dessen, was gehört wurde: jedes Mal ein Eintrag.</translation>
    </message>
    <message>
        <source>E&amp;xport for Other Programs...</source>
        <translation>Für andere Programme e&amp;xportieren...</translation>
    </message>
    <message>
        <source>Write the list as a file of another program, after a look at what would be lost</source>
        <translation>Die Liste als Datei eines anderen Programms schreiben, nach einem Blick auf das, was verloren ginge</translation>
    </message>
    <message>
        <source>%1 has no entries.</source>
        <translation>%1 hat keine Einträge.</translation>
    </message>
</context>
<context>
    <name>WindowStatus</name>
    <message>
        <source>Tuned frequency</source>
        <translation>Abgestimmte Frequenz</translation>
    </message>
    <message>
        <source>Show or hide the messages</source>
        <translation>Meldungen zeigen oder verbergen</translation>
    </message>
    <message>
        <source>No problems</source>
        <translation>Keine Probleme</translation>
    </message>
    <message numerus="yes">
        <source>%n problem(s)</source>
        <translation>
            <numerusform>%n Problem</numerusform>
            <numerusform>%n Probleme</numerusform>
        </translation>
    </message>
    <message>
        <source>Nothing is shared</source>
        <translation>Nichts wird geteilt</translation>
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
    <message>
        <source>No targets yet. Open a list or drop its file on the window, or paste entries of another list.</source>
        <translation>Noch keine Ziele. Eine Liste öffnen oder ihre Datei auf das Fenster ziehen, oder Einträge einer anderen Liste einfügen.</translation>
    </message>
    <message>
        <source>Target</source>
        <translation>Ziel</translation>
    </message>
</context>
</TS>
