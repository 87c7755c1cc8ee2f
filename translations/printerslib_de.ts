<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>PrintDeviceFinder</name>
    <message>
        <source>There are no available ports</source>
        <translation>Es gibt keine verfügbaren Anschlüsse</translation>
    </message>
    <message>
        <source>There are no available configs</source>
        <translation>Es gibt keine verfügbaren Druckereinstellungen</translation>
    </message>
    <message>
        <source>There no devices finded</source>
        <translation>Es wurde kein Drucker gefunden</translation>
    </message>
    <message>
        <source>There no devices found</source>
        <translation>Es wurde kein Drucker gefunden</translation>
    </message>
</context>
<context>
    <name>PrintJob</name>
    <message>
        <source>REPEAT</source>
        <translation>WIEDERHOLUNG</translation>
    </message>
</context>
<context>
    <name>PrinterDocumentFormatter</name>
    <message>
        <source>&lt;C&gt;CHECK_COPY</source>
        <translation>&lt;C&gt;KOPIE</translation>
    </message>
</context>
</TS>
