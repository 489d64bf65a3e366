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
<context>
    <name>density::Figure</name>
    <message>
        <source>Too few symbols to tell.</source>
        <translation>Zu wenige Symbole für eine Aussage.</translation>
    </message>
    <message>
        <source>No two levels can be told apart.</source>
        <translation>Es lassen sich keine zwei Pegel unterscheiden.</translation>
    </message>
    <message>
        <source>The levels overlap.</source>
        <translation>Die Pegel überlappen sich.</translation>
    </message>
    <message>
        <source>The spread of a level is not Gaussian, so it cannot be extrapolated.</source>
        <translation>Die Streuung eines Pegels ist nicht gaußförmig und lässt sich daher nicht extrapolieren.</translation>
    </message>
    <message>
        <source>Random jitter with two instants or a sine does not explain the crossings.</source>
        <translation>Zufälliger Jitter mit zwei Zeitpunkten oder einem Sinus erklärt die Durchgänge nicht.</translation>
    </message>
    <message>
        <source>Traces are shorter than two symbols.</source>
        <translation>Die Spuren sind kürzer als zwei Symbole.</translation>
    </message>
    <message>
        <source>The points of the constellation are not known.</source>
        <translation>Die Punkte der Konstellation sind nicht bekannt.</translation>
    </message>
</context>
<context>
    <name>density::Mask</name>
    <message>
        <source>&quot;%1&quot; is not a number.</source>
        <translation>&quot;%1&quot; ist keine Zahl.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a whole number.</source>
        <translation>&quot;%1&quot; ist keine ganze Zahl.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither &quot;%2&quot; nor &quot;%3&quot;.</source>
        <translation>&quot;%1&quot; ist weder &quot;%2&quot; noch &quot;%3&quot;.</translation>
    </message>
    <message>
        <source>A point of a polygon is not a pair of numbers.</source>
        <translation>Ein Punkt eines Polygons ist kein Paar von Zahlen.</translation>
    </message>
    <message>
        <source>No JSON object, at byte %1: %2.</source>
        <translation>Kein JSON-Objekt, bei Byte %1: %2.</translation>
    </message>
    <message>
        <source>&quot;schema&quot; is not &quot;%1&quot;.</source>
        <translation>&quot;schema&quot; ist nicht &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>&quot;polygons&quot; has to hold 1 to %1 polygons of 3 to %2 points with numbers up to a million, and &quot;limit&quot; at least one symbol.</source>
        <translation>&quot;polygons&quot; muss 1 bis %1 Polygone mit 3 bis %2 Punkten und Zahlen bis zu einer Million enthalten, und &quot;limit&quot; mindestens ein Symbol.</translation>
    </message>
</context>
<context>
    <name>density::PlotFrame</name>
    <message>
        <source>Count</source>
        <translation>Anzahl</translation>
    </message>
</context>
<context>
    <name>density::PlotTexts</name>
    <message>
        <source>count %1</source>
        <translation>Anzahl %1</translation>
    </message>
    <message>
        <source>No symbols yet</source>
        <translation>Noch keine Symbole</translation>
    </message>
    <message>
        <source>%1 symbols</source>
        <translation>%1 Symbole</translation>
    </message>
    <message>
        <source>%1 of %2 symbols</source>
        <translation>%1 von %2 Symbolen</translation>
    </message>
    <message>
        <source>, left out: %1 torn symbols, %2 bad samples</source>
        <translation>, ausgelassen: %1 zerrissene Symbole, %2 unbrauchbare Abtastwerte</translation>
    </message>
    <message>
        <source>testing</source>
        <translation>läuft</translation>
    </message>
    <message>
        <source>passed</source>
        <translation>bestanden</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>nicht bestanden</translation>
    </message>
    <message>
        <source>, EVM %1 %, MER %2 dB</source>
        <translation>, EVM %1 %, MER %2 dB</translation>
    </message>
    <message>
        <source>, paused</source>
        <translation>, angehalten</translation>
    </message>
    <message>
        <source>, mask %1: hit by %2 of %3 symbols</source>
        <translation>, Maske %1: von %2 der %3 Symbole getroffen</translation>
    </message>
    <message>
        <source>Click corners; double click closes, Backspace undoes, Esc ends</source>
        <translation>Ecken klicken; Doppelklick schließt, Rücktaste nimmt zurück, Esc endet</translation>
    </message>
</context>
</TS>
