<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>CMwFilterWidget</name>
    <message>
        <source>AND</source>
        <translation>UND</translation>
    </message>
    <message>
        <source>OR</source>
        <translation>ODER</translation>
    </message>
    <message>
        <source>Is Greater or Equal</source>
        <translation>Ist größer oder gleich</translation>
    </message>
    <message>
        <source>Is Smaller or Equal</source>
        <translation>Ist kleiner oder gleich</translation>
    </message>
    <message>
        <source>Is Greater</source>
        <translation>Ist größer</translation>
    </message>
    <message>
        <source>Is Smaller</source>
        <translation>Ist kleiner</translation>
    </message>
    <message>
        <source>Is Equal</source>
        <translation>Ist gleich</translation>
    </message>
    <message>
        <source>Is Not Equal</source>
        <translation>Ist ungleich</translation>
    </message>
    <message>
        <source>Is Empty</source>
        <translation>Ist leer</translation>
    </message>
    <message>
        <source>Is Not Empty</source>
        <translation>Ist nicht leer</translation>
    </message>
    <message>
        <source>AND/OR</source>
        <translation>UND/ODER</translation>
    </message>
    <message>
        <source>Column</source>
        <translation>Spalte</translation>
    </message>
    <message>
        <source>Comparison</source>
        <translation>Vergleich</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
</context>
<context>
    <name>CMwGridTableModel</name>
    <message>
        <source>(empty)</source>
        <translation>(leer)</translation>
    </message>
    <message>
        <source>%1: %2 (%3)</source>
        <translatorcomment>Group row of the ready model: %1 the grouped column&apos;s caption, %2 the value, %3 the number of rows.</translatorcomment>
        <translation>%1: %2 (%3)</translation>
    </message>
</context>
<context>
    <name>CMwHierarchicalGridView</name>
    <message>
        <source>Count</source>
        <translatorcomment>Row label of the statistics table, whose label column is at most 50 pixels wide: keep it short.</translatorcomment>
        <translation>Anzahl</translation>
    </message>
    <message>
        <source>Distinct</source>
        <translatorcomment>Row label of the statistics table, whose label column is at most 50 pixels wide: keep it short.</translatorcomment>
        <translation>Versch.</translation>
    </message>
    <message>
        <source>Min</source>
        <translatorcomment>Row label of the statistics table, whose label column is at most 50 pixels wide: keep it short.</translatorcomment>
        <translation>Min.</translation>
    </message>
    <message>
        <source>Max</source>
        <translatorcomment>Row label of the statistics table, whose label column is at most 50 pixels wide: keep it short.</translatorcomment>
        <translation>Max.</translation>
    </message>
    <message>
        <source>Mean</source>
        <translatorcomment>Row label of the statistics table, whose label column is at most 50 pixels wide: keep it short.</translatorcomment>
        <translation>Mittel</translation>
    </message>
    <message>
        <source>StDev</source>
        <translatorcomment>Row label of the statistics table, whose label column is at most 50 pixels wide: keep it short.</translatorcomment>
        <translation>StAbw</translation>
    </message>
</context>
<context>
    <name>CMwHierarchicalHeaderView</name>
    <message>
        <source>Hide Column</source>
        <translation>Spalte ausblenden</translation>
    </message>
    <message>
        <source>Show All Columns</source>
        <translation>Alle Spalten einblenden</translation>
    </message>
    <message>
        <source>Group By</source>
        <translation>Nach dieser Spalte gruppieren</translation>
    </message>
    <message>
        <source>Ungroup</source>
        <translation>Gruppierung aufheben</translation>
    </message>
</context>
<context>
    <name>CMwPickerForTable</name>
    <message>
        <source>&lt;select&gt;</source>
        <translation>&lt;auswählen&gt;</translation>
    </message>
</context>
<context>
    <name>CMwQRangeSlider</name>
    <message>
        <source>maximum</source>
        <translation>Maximum</translation>
    </message>
    <message>
        <source>minimum</source>
        <translation>Minimum</translation>
    </message>
</context>
<context>
    <name>cmwhierarchicalgridview.cpp</name>
    <message>
        <source>Show Statistics</source>
        <translation>Statistik anzeigen</translation>
    </message>
    <message>
        <source>Use Filter</source>
        <translation>Filter anwenden</translation>
    </message>
    <message>
        <source>Define Filter</source>
        <translation>Filter definieren</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Nach oben</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Nach unten</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Fit Columns to Contents</source>
        <translation>Spalten an Inhalt anpassen</translation>
    </message>
</context>
</TS>
