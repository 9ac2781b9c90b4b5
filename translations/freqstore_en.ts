<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
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
</TS>
