<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>SettingsDialog</name>
    <message>
        <source>&apos;Settings of &apos; + name</source>
        <translation>&apos;Einstellungen von &apos; + name</translation>
    </message>
    <message>
        <source>Station</source>
        <translation>Station</translation>
    </message>
    <message>
        <source>&amp;Name</source>
        <translation>&amp;Name</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>&amp;Sprache</translation>
    </message>
    <message>
        <source>Units</source>
        <translation>Einheiten</translation>
    </message>
    <message>
        <source>&amp;Metric</source>
        <translation>&amp;Metrisch</translation>
    </message>
    <message>
        <source>&amp;Imperial</source>
        <translation>&amp;Imperial</translation>
    </message>
    <message>
        <source>Readings</source>
        <translation>Messungen</translation>
    </message>
    <message>
        <source>{:L} since the start</source>
        <translation>{:L} seit dem Start</translation>
    </message>
    <message>
        <source>&apos;Readings come in &apos; + @Widget:units[metric] + &apos;.&apos;</source>
        <translation>&apos;Gemessen wird in &apos; + @Widget:units[metric] + &apos;.&apos;</translation>
    </message>
    <message>
        <source>metres per second and degrees Celsius</source>
        <translation>Metern je Sekunde und Grad Celsius</translation>
    </message>
    <message>
        <source>knots and degrees Fahrenheit</source>
        <translation>Knoten und Grad Fahrenheit</translation>
    </message>
    <message>
        <source>Sensors</source>
        <translation>Sensoren</translation>
    </message>
    <message>
        <source>Channel 1</source>
        <translation>Kanal 1</translation>
    </message>
    <message>
        <source>This sensor is read.</source>
        <translation>Dieser Sensor wird gelesen.</translation>
    </message>
    <message>
        <source>This sensor is left out.</source>
        <translation>Dieser Sensor wird ausgelassen.</translation>
    </message>
    <message>
        <source>in use</source>
        <translation>in Betrieb</translation>
    </message>
    <message>
        <source>Channel 2</source>
        <translation>Kanal 2</translation>
    </message>
    <message>
        <source>Channel 3</source>
        <translation>Kanal 3</translation>
    </message>
    <message>
        <source>Channel 4</source>
        <translation>Kanal 4</translation>
    </message>
    <message>
        <source>&amp;Read every</source>
        <translation>&amp;Lesen alle</translation>
    </message>
    <message>
        <source> min</source>
        <translation> min</translation>
    </message>
    <message>
        <source>sensors[0] + &apos; is shown first, &apos; + (60 / interval) + &apos; readings an hour.&apos;</source>
        <translation>sensors[0] + &apos; steht vorn, &apos; + (60 / interval) + &apos; Messungen in der Stunde.&apos;</translation>
    </message>
    <message>
        <source>Alarms</source>
        <translation>Alarme</translation>
    </message>
    <message>
        <source>Sound an alarm</source>
        <translation>Alarm geben</translation>
    </message>
    <message>
        <source>&amp;Wind above</source>
        <translation>&amp;Wind über</translation>
    </message>
    <message>
        <source> m/s</source>
        <translation> m/s</translation>
    </message>
    <message>
        <source> kn</source>
        <translation> kn</translation>
    </message>
    <message>
        <source>&amp;Frost below</source>
        <translation>&amp;Frost unter</translation>
    </message>
    <message>
        <source> °C</source>
        <translation> °C</translation>
    </message>
    <message>
        <source> °F</source>
        <translation> °F</translation>
    </message>
    <message>
        <source>&amp;Volume</source>
        <translation>&amp;Lautstärke</translation>
    </message>
    <message>
        <source>The alarm is on, but cannot be heard.</source>
        <translation>Der Alarm ist eingeschaltet, aber nicht zu hören.</translation>
    </message>
    <message>
        <source>Upload</source>
        <translation>Übertragung</translation>
    </message>
    <message>
        <source>Send readings to a server</source>
        <translation>Messungen an einen Server senden</translation>
    </message>
    <message>
        <source>&amp;Host</source>
        <translation>&amp;Rechner</translation>
    </message>
    <message>
        <source>&amp;Port</source>
        <translation>&amp;Port</translation>
    </message>
    <message>
        <source>P&amp;ath</source>
        <translation>Pf&amp;ad</translation>
    </message>
    <message>
        <source>&apos;Goes to https://&apos; + @Station\Upload:server .&apos;host&apos; + &apos;:&apos; + @Station\Upload:server .&apos;port&apos; + @Station\Upload:server .&apos;path&apos;</source>
        <translation>&apos;Geht an https://&apos; + @Station\Upload:server .&apos;host&apos; + &apos;:&apos; + @Station\Upload:server .&apos;port&apos; + @Station\Upload:server .&apos;path&apos;</translation>
    </message>
    <message>
        <source>name + &apos;, every &apos; + @TopWidget\intervalBox:value + &apos; minutes&apos;</source>
        <translation>name + &apos;, alle &apos; + @TopWidget\intervalBox:value + &apos; Minuten&apos;</translation>
    </message>
    <message>
        <source>&amp;Restore page</source>
        <translation>Seite &amp;zurücksetzen</translation>
    </message>
    <message>
        <source>&amp;OK</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <translation>&amp;Anwenden</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>A&amp;bbrechen</translation>
    </message>
</context>
</TS>
