<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en_US">
<context>
    <name>CountText</name>
    <message numerus="yes">
        <source>%lld files</source>
        <translation>
            <numerusform>%lld file</numerusform>
            <numerusform>%lld files</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%lld pages</source>
        <translation>
            <numerusform>%lld page</numerusform>
            <numerusform>%lld pages</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%lld stamped copies</source>
        <translation>
            <numerusform>%lld stamped copy</numerusform>
            <numerusform>%lld stamped copies</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%lld copies</source>
        <translation>
            <numerusform>%lld copy</numerusform>
            <numerusform>%lld copies</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%lld findings</source>
        <translation>
            <numerusform>%lld finding</numerusform>
            <numerusform>%lld findings</numerusform>
        </translation>
    </message>
</context>
</TS>
