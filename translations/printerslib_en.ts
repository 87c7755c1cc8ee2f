<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>PrintDeviceFinder</name>
    <message>
        <source>There are no available ports</source>
        <translation>There are no available ports</translation>
    </message>
    <message>
        <source>There are no available configs</source>
        <translation>There are no available configurations</translation>
    </message>
    <message>
        <source>There no devices finded</source>
        <translation>No devices were found</translation>
    </message>
    <message>
        <source>There no devices found</source>
        <translation>No devices were found</translation>
    </message>
</context>
<context>
    <name>PrintJob</name>
    <message>
        <source>REPEAT</source>
        <translation>REPEAT</translation>
    </message>
</context>
<context>
    <name>PrinterDocumentFormatter</name>
    <message>
        <source>&lt;C&gt;CHECK_COPY</source>
        <translation>&lt;C&gt;COPY</translation>
    </message>
</context>
</TS>
