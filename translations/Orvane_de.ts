<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>GLEyeDiagram</name>
    <message>
        <source>Properties...</source>
        <translation>Eigenschaften …</translation>
    </message>
    <message>
        <source>Auto Scaling</source>
        <translation>Automatisch skalieren</translation>
    </message>
</context>
<context>
    <name>GLIQDiagram</name>
    <message>
        <source>Properties...</source>
        <translation>Eigenschaften …</translation>
    </message>
    <message>
        <source>Auto Scaling</source>
        <translation>Automatisch skalieren</translation>
    </message>
</context>
<context>
    <name>GLOrvanePropertyPage</name>
    <message>
        <source>XAxis Min: </source>
        <translation>X-Achse Min.: </translation>
    </message>
    <message>
        <source>XAxis Max: </source>
        <translation>X-Achse Max.: </translation>
    </message>
    <message>
        <source>YAxis Min: </source>
        <translation>Y-Achse Min.: </translation>
    </message>
    <message>
        <source>YAxis Max: </source>
        <translation>Y-Achse Max.: </translation>
    </message>
    <message>
        <source>Show Grid: </source>
        <translation>Gitter anzeigen: </translation>
    </message>
    <message>
        <source>Buffer Size: </source>
        <translation>Puffergröße: </translation>
    </message>
    <message>
        <source>Aging: </source>
        <translation>Alterung: </translation>
    </message>
    <message>
        <source>s</source>
        <translation>s</translation>
    </message>
</context>
<context>
    <name>GLTimeDiagram</name>
    <message>
        <source>Properties...</source>
        <translation>Eigenschaften …</translation>
    </message>
    <message>
        <source>Auto Scaling</source>
        <translation>Automatisch skalieren</translation>
    </message>
</context>
<context>
    <name>VCGLEyeDiagram</name>
    <message>
        <source>Eye Diagram</source>
        <translation>Augendiagramm</translation>
    </message>
</context>
<context>
    <name>VCGLIQDiagram</name>
    <message>
        <source>IQ Diagram</source>
        <translation>IQ-Diagramm</translation>
    </message>
</context>
<context>
    <name>VCGLTimeDiagram</name>
    <message>
        <source>Time Diagram</source>
        <translation>Zeitdiagramm</translation>
    </message>
</context>
</TS>
