<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>BandsPanel</name>
    <message numerus="yes">
        <source>%Ln bands</source>
        <translation>
            <numerusform>%Ln band</numerusform>
            <numerusform>%Ln bands</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln bands of %1 frequencies</source>
        <translation>
            <numerusform>%Ln band of %1 frequencies</numerusform>
            <numerusform>%Ln bands of %1 frequencies</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>DetailsPanel</name>
    <message numerus="yes">
        <source>One of %n selected</source>
        <translation>
            <numerusform>One of %n selected</numerusform>
            <numerusform>One of %n selected</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>DiskWatch</name>
    <message numerus="yes">
        <source>The file holds %n entries now.</source>
        <translation>
            <numerusform>The file holds %n entry now.</numerusform>
            <numerusform>The file holds %n entries now.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The list holds %n entries.</source>
        <translation>
            <numerusform>The list holds %n entry.</numerusform>
            <numerusform>The list holds %n entries.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FileOpener</name>
    <message numerus="yes">
        <source>%n lines, not one has a frequency</source>
        <translation>
            <numerusform>%n line, without a frequency</numerusform>
            <numerusform>%n lines, not one has a frequency</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Read it all the same, in place of the %n entries that are there?</source>
        <translation>
            <numerusform>Read it all the same, in place of the %n entry that is there?</numerusform>
            <numerusform>Read it all the same, in place of the %n entries that are there?</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n entries</source>
        <translation>
            <numerusform>%n entry</numerusform>
            <numerusform>%n entries</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ForeignDialog</name>
    <message numerus="yes">
        <source>%Ln entries.</source>
        <translation>
            <numerusform>%Ln entry.</numerusform>
            <numerusform>%Ln entries.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln entries, the first %1 of which stand above.</source>
        <translation>
            <numerusform>%Ln entry, the first %1 of which stands above.</numerusform>
            <numerusform>%Ln entries, the first %1 of which stand above.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln lines refused.</source>
        <translation>
            <numerusform>%Ln line refused.</numerusform>
            <numerusform>%Ln lines refused.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>&amp;Add to the %Ln entries that are there</source>
        <translation>
            <numerusform>&amp;Add to the %Ln entry that is there</numerusform>
            <numerusform>&amp;Add to the %Ln entries that are there</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>&amp;Replace the %Ln entries that are there</source>
        <translation>
            <numerusform>&amp;Replace the %Ln entry that is there</numerusform>
            <numerusform>&amp;Replace the %Ln entries that are there</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ForeignExport</name>
    <message numerus="yes">
        <source>%n entries written</source>
        <translation>
            <numerusform>%n entry written</numerusform>
            <numerusform>%n entries written</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n entries cannot be written.</source>
        <translation>
            <numerusform>%n entry cannot be written.</numerusform>
            <numerusform>%n entries cannot be written.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ForeignImport</name>
    <message numerus="yes">
        <source>%n entries</source>
        <translation>
            <numerusform>%n entry</numerusform>
            <numerusform>%n entries</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n lines refused</source>
        <translation>
            <numerusform>%n line refused</numerusform>
            <numerusform>%n lines refused</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FreqStoreListViewButtonBar</name>
    <message numerus="yes">
        <source>%Ln entries</source>
        <translation>
            <numerusform>%Ln entry</numerusform>
            <numerusform>%Ln entries</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ListImport</name>
    <message numerus="yes">
        <source>%n duplicates within %1 selected; the first of each stays unselected</source>
        <translation>
            <numerusform>%n duplicate within %1 selected; the first of each stays unselected</numerusform>
            <numerusform>%n duplicates within %1 selected; the first of each stays unselected</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message numerus="yes">
        <source>%Ln detection(s)</source>
        <translation>
            <numerusform>%Ln detection</numerusform>
            <numerusform>%Ln detections</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln result(s)</source>
        <translation>
            <numerusform>%Ln result</numerusform>
            <numerusform>%Ln results</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>NoiKeeper</name>
    <message numerus="yes">
        <source>The list of frequencies of interest is empty; its file %1 still holds %n entries.</source>
        <translation>
            <numerusform>The list of frequencies of interest is empty; its file %1 still holds %n entry.</numerusform>
            <numerusform>The list of frequencies of interest is empty; its file %1 still holds %n entries.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln entries</source>
        <translation>
            <numerusform>%Ln entry</numerusform>
            <numerusform>%Ln entries</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RecoveryDialog</name>
    <message numerus="yes">
        <source>Give up what was not saved in %n lists?</source>
        <translation>
            <numerusform>Give up what was not saved in %n list?</numerusform>
            <numerusform>Give up what was not saved in %n lists?</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RecoveryOffer</name>
    <message numerus="yes">
        <source>%1: %n entries, written %2 UTC</source>
        <translation>
            <numerusform>%1: %n entry, written %2 UTC</numerusform>
            <numerusform>%1: %n entries, written %2 UTC</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1: %n entries restored</source>
        <translation>
            <numerusform>%1: %n entry restored</numerusform>
            <numerusform>%1: %n entries restored</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ScanPanel</name>
    <message numerus="yes">
        <source>%Ln step(s)</source>
        <translation>
            <numerusform>%Ln step</numerusform>
            <numerusform>%Ln steps</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln pass(es)</source>
        <translation>
            <numerusform>%Ln pass</numerusform>
            <numerusform>%Ln passes</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln signal(s)</source>
        <translation>
            <numerusform>%Ln signal</numerusform>
            <numerusform>%Ln signals</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln out of reach</source>
        <translation>
            <numerusform>%Ln out of reach</numerusform>
            <numerusform>%Ln out of reach</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln locked out</source>
        <translation>
            <numerusform>%Ln locked out</numerusform>
            <numerusform>%Ln locked out</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Scanning</name>
    <message numerus="yes">
        <source>%Ln signal(s)</source>
        <translation>
            <numerusform>%Ln signal</numerusform>
            <numerusform>%Ln signals</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SetColumnDialog</name>
    <message numerus="yes">
        <source>, %Ln rows cannot take it</source>
        <translation>
            <numerusform>, %Ln row cannot take it</numerusform>
            <numerusform>, %Ln rows cannot take it</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln rows set</source>
        <translation>
            <numerusform>%Ln row set</numerusform>
            <numerusform>%Ln rows set</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ShareRefusal</name>
    <message numerus="yes">
        <source>%1: %n change(s) not accepted: %2. The list shows what the site has.</source>
        <translation>
            <numerusform>%1: %n change was not accepted: %2. The list shows what the site has.</numerusform>
            <numerusform>%1: %n changes were not accepted: %2. The list shows what the site has.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Sharing</name>
    <message numerus="yes">
        <source>client, %Ln seat(s)</source>
        <translation>
            <numerusform>client, %Ln seat</numerusform>
            <numerusform>client, %Ln seats</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>server, %Ln seat(s)</source>
        <translation>
            <numerusform>server, %Ln seat</numerusform>
            <numerusform>server, %Ln seats</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>UndoHistory</name>
    <message numerus="yes">
        <source>%1 %n entries</source>
        <translation>
            <numerusform>%1 %n entry</numerusform>
            <numerusform>%1 %n entries</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>VersionsDialog</name>
    <message numerus="yes">
        <source>%n added</source>
        <translation>
            <numerusform>%n added</numerusform>
            <numerusform>%n added</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n removed</source>
        <translation>
            <numerusform>%n removed</numerusform>
            <numerusform>%n removed</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n changed</source>
        <translation>
            <numerusform>%n changed</numerusform>
            <numerusform>%n changed</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>WindowActions</name>
    <message numerus="yes">
        <source>%Ln entries added</source>
        <translation>
            <numerusform>%Ln entry added</numerusform>
            <numerusform>%Ln entries added</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>WindowStatus</name>
    <message numerus="yes">
        <source>%n problem(s)</source>
        <translation>
            <numerusform>%n problem</numerusform>
            <numerusform>%n problems</numerusform>
        </translation>
    </message>
</context>
</TS>
