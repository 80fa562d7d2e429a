<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>Translated</name>
    <message>
        <location filename="translated.ui" line="6"/>
        <source>Pump</source>
        <translation>Pumpe +</translation>
    </message>
    <message>
        <location filename="translated.ui" line="9"/>
        <source>&apos;Settings of &apos; + @Engine:name + &apos;!&apos;</source>
        <translation>@Engine:nmae + &quot;, Einstellungen für 😀&quot;</translation>
    </message>
    <message>
        <location filename="translated.ui" line="15"/>
        <source>first + &apos; &apos; + last</source>
        <translation>last + &apos;, &apos; + first</translation>
    </message>
    <message>
        <location filename="translated.ui" line="18"/>
        <source>&apos;&lt;b&gt;&apos; + engine .&apos;unit&apos; + &apos;&lt;/b&gt; &apos; + @TopWidget:windowTitle</source>
        <translation>@TopWidget:windowTitle + &apos; &lt;i&gt;&apos; +
engine .&apos;einheit&apos; + &apos;&lt;/i&gt;&apos;</translation>
    </message>
    <message>
        <location filename="translated.ui" line="21"/>
        <source>(count * 1 + total) + &apos; items&apos;</source>
        <comment>as a sum</comment>
        <translation>&apos;Teile: &apos; + count * 1 + total</translation>
    </message>
    <message>
        <location filename="translated.ui" line="24"/>
        <source>&apos;Limit: &apos; + 2.5 * count</source>
        <translation>&apos;Grenze: &apos; + 2,5 * count</translation>
    </message>
    <message>
        <location filename="translated.ui" line="27"/>
        <source>state = &apos;ready&apos; AND count &gt; 5</source>
        <translation>state = &apos;bereit&apos; AND count &gt; 5</translation>
    </message>
    <message>
        <location filename="translated.ui" line="30"/>
        <source>&apos;color: &apos; + colour</source>
        <translation>&apos;Farbe: &apos; + colour</translation>
    </message>
    <message numerus="yes">
        <location filename="translated.ui" line="40"/>
        <source>&apos;%n hours: &apos; + hours</source>
        <translation>
            <numerusform>&apos;%n Stunde: &apos; + hours</numerusform>
            <numerusform>&apos;%n Stunden: &apos;</numerusform>
        </translation>
    </message>
    <message>
        <location filename="translated.ui" line="46"/>
        <source>&apos;Suppressed &apos; + count</source>
        <translation>&apos;Weg: &apos; + anzahl</translation>
    </message>
    <message>
        <location filename="translated.ui" line="48"/>
        <source>&apos;Removed &apos; + count</source>
        <translation>&apos;Entfernt &apos; + anzahl</translation>
    </message>
    <message>
        <location filename="translated.cpp" line="3"/>
        <source>From the code</source>
        <translation>Aus dem Code</translation>
    </message>
</context>
</TS>
