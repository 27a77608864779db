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
    <name>CMwPickerForTable</name>
    <message>
        <source>&lt;select&gt;</source>
        <translation>&lt;auswählen&gt;</translation>
    </message>
</context>
<context>
    <name>CMwQRangeSlider</name>
    <message>
        <source>minimum</source>
        <translation>Minimum</translation>
    </message>
    <message>
        <source>maximum</source>
        <translation>Maximum</translation>
    </message>
</context>
</TS>
