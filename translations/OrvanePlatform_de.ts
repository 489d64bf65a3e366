<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>CaptionWidget</name>
    <message>
        <source>Resume (Space)</source>
        <translation>Fortsetzen (Leertaste)</translation>
    </message>
    <message>
        <source>Pause (Space)</source>
        <translation>Anhalten (Leertaste)</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
</context>
<context>
    <name>ColorPage</name>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Hell</translation>
    </message>
    <message>
        <source>&amp;Scheme:</source>
        <translation>&amp;Farbschema:</translation>
    </message>
    <message>
        <source>&amp;Reset All</source>
        <translation>Alle &amp;zurücksetzen</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Reset %1</source>
        <translation>%1 zurücksetzen</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>ColorSet</name>
    <message>
        <source>Time diagram</source>
        <translation>Zeitdiagramm</translation>
    </message>
    <message>
        <source>Eye diagram</source>
        <translation>Augendiagramm</translation>
    </message>
    <message>
        <source>IQ diagram</source>
        <translation>IQ-Diagramm</translation>
    </message>
    <message>
        <source>Labels and grid</source>
        <translation>Beschriftung und Gitter</translation>
    </message>
    <message>
        <source>Captions and axes</source>
        <translation>Titelleisten und Achsen</translation>
    </message>
    <message>
        <source>Traces</source>
        <translation>Kurven</translation>
    </message>
    <message>
        <source>Background, first colour</source>
        <translation>Hintergrund, erste Farbe</translation>
    </message>
    <message>
        <source>Background, second colour</source>
        <translation>Hintergrund, zweite Farbe</translation>
    </message>
    <message>
        <source>Start markers</source>
        <translation>Anfangsmarken</translation>
    </message>
    <message>
        <source>Points</source>
        <translation>Punkte</translation>
    </message>
    <message>
        <source>Label text</source>
        <translation>Beschriftung</translation>
    </message>
    <message>
        <source>Ground behind label text</source>
        <translation>Grund der Beschriftung</translation>
    </message>
    <message>
        <source>Grid lines</source>
        <translation>Gitterlinien</translation>
    </message>
    <message>
        <source>Colours</source>
        <translation>Farben</translation>
    </message>
</context>
<context>
    <name>GLFrameWidget</name>
    <message>
        <source>This view needs OpenGL 2.1, which this display does not have. Install a graphics driver that has it; the software driver of Mesa will do.</source>
        <translation>Diese Ansicht braucht OpenGL 2.1, das es auf diesem Bildschirm nicht gibt. Installieren Sie einen Grafiktreiber, der es hat; der Softwaretreiber von Mesa genügt.</translation>
    </message>
</context>
<context>
    <name>PropertyPagesFrame</name>
    <message>
        <source>Properties</source>
        <translation>Eigenschaften</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <translation>&amp;Übernehmen</translation>
    </message>
</context>
<context>
    <name>XAxisWidget</name>
    <message>
        <source>Reset Zoom</source>
        <translation>Zoom zurücksetzen</translation>
    </message>
</context>
<context>
    <name>YAxisHandler</name>
    <message>
        <source>Reset Zoom</source>
        <translation>Zoom zurücksetzen</translation>
    </message>
</context>
</TS>
