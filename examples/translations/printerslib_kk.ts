<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="kk" sourcelanguage="en">
<context>
    <name>PrintJob</name>
    <message>
        <source>REPEAT</source>
        <translation>ҚАЙТАЛАУ</translation>
    </message>
</context>
<context>
    <name>PrinterDocumentFormatter</name>
    <message>
        <source>&lt;C&gt;CHECK_COPY</source>
        <translation>&lt;C&gt;КӨШІРМЕ</translation>
    </message>
</context>
</TS>
