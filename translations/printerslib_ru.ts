<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru" sourcelanguage="en">
<context>
    <name>PrintDeviceFinder</name>
    <message>
        <source>There are no available ports</source>
        <translation>Нет доступных портов</translation>
    </message>
    <message>
        <source>There are no available configs</source>
        <translation>Нет доступных настроек принтеров</translation>
    </message>
    <message>
        <source>There no devices finded</source>
        <translation>Принтеры не найдены</translation>
    </message>
    <message>
        <source>There no devices found</source>
        <translation>Принтеры не найдены</translation>
    </message>
</context>
<context>
    <name>PrintJob</name>
    <message>
        <source>REPEAT</source>
        <translation>ПОВТОР</translation>
    </message>
</context>
<context>
    <name>PrinterDocumentFormatter</name>
    <message>
        <source>&lt;C&gt;CHECK_COPY</source>
        <translation>&lt;C&gt;КОПИЯ</translation>
    </message>
</context>
</TS>
