<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AppearancePanel</name>
    <message>
        <source>Appearance</source>
        <translation>Erscheinung</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Hell</translation>
    </message>
    <message>
        <source>Sche&amp;me</source>
        <translation>Sche&amp;ma</translation>
    </message>
    <message>
        <source>As the desktop</source>
        <translation>Wie der Desktop</translation>
    </message>
</context>
<context>
    <name>AudioSource</name>
    <message>
        <source>the recording holds no samples; choose another one</source>
        <translation>die Aufnahme enthält keine Abtastwerte; eine andere wählen</translation>
    </message>
    <message>
        <source>it was cut off: its header speaks of %1 bytes, %2 are there</source>
        <translation>sie ist abgeschnitten: ihr Kopf spricht von %1 Bytes, %2 sind da</translation>
    </message>
    <message>
        <source>it was cut off or is damaged: its end cannot be read</source>
        <translation>sie ist abgeschnitten oder beschädigt: ihr Ende ist nicht lesbar</translation>
    </message>
    <message>
        <source>damaged, or of an unknown format</source>
        <translation>beschädigt oder von unbekanntem Format</translation>
    </message>
    <message>
        <source>the file was replaced or removed while it played; open it again</source>
        <translation>die Datei wurde während der Wiedergabe ersetzt oder entfernt; sie neu öffnen</translation>
    </message>
    <message>
        <source>nothing can be read after sample %1 of %2: the file was changed while it played or is damaged; open it again</source>
        <translation>nach Abtastwert %1 von %2 ist nichts zu lesen: die Datei wurde während der Wiedergabe geändert oder ist beschädigt; sie neu öffnen</translation>
    </message>
    <message>
        <source>cannot be read (%1)</source>
        <translation>nicht lesbar (%1)</translation>
    </message>
    <message>
        <source>its header says that the sample rate is %1 Hz, not above 0; mend the header</source>
        <translation>ihre Abtastrate ist nach ihrem Kopf %1 Hz, nicht über 0; ihn berichtigen</translation>
    </message>
    <message>
        <source>not a recording that can be read (%1); choose a SigMF, WAV, FLAC, AIFF, CSV or other signal file</source>
        <translation>keine lesbare Aufnahme (%1); eine SigMF-, WAV-, FLAC-, AIFF-, CSV- oder andere Signaldatei wählen</translation>
    </message>
</context>
<context>
    <name>BuiltInPanel</name>
    <message>
        <source>Built-in signal</source>
        <translation>Eingebautes Signal</translation>
    </message>
    <message>
        <source>Noise</source>
        <translation>Rauschen</translation>
    </message>
    <message>
        <source>RMS of the noise against the signal&apos;s level</source>
        <translation>Effektivwert des Rauschens im Verhältnis zum Signalpegel</translation>
    </message>
    <message>
        <source>Jitter</source>
        <translation>Jitter</translation>
    </message>
    <message>
        <source>RMS of the edges&apos; displacement, in unit intervals</source>
        <translation>Effektivwert der Verschiebung der Flanken, in Symboldauern</translation>
    </message>
    <message>
        <source>Bandwidth</source>
        <translation>Bandbreite</translation>
    </message>
    <message>
        <source>Where the signal is 3 dB down, as a part of the symbol rate</source>
        <translation>Wo das Signal um 3 dB gedämpft ist, als Teil der Symbolrate</translation>
    </message>
    <message>
        <source>&amp;Levels</source>
        <translation>&amp;Pegel</translation>
    </message>
    <message>
        <source> symbols</source>
        <translation> Symbole</translation>
    </message>
    <message>
        <source>F&amp;rame</source>
        <translation>&amp;Rahmen</translation>
    </message>
</context>
<context>
    <name>CsvLayout</name>
    <message>
        <source>this is text in UTF-16; save it in UTF-8</source>
        <translation>das ist Text in UTF-16; ihn in UTF-8 speichern</translation>
    </message>
    <message>
        <source>no row of numbers is found; choose a text file with a row for each sample, its cells separated by tabs, semicolons, commas or spaces</source>
        <translation>keine Zeile mit Zahlen gefunden; eine Textdatei wählen, die für jeden Abtastwert eine Zeile hat, deren Zellen durch Tabulator, Semikolon, Komma oder Leerzeichen getrennt sind</translation>
    </message>
    <message>
        <source>there is no column &quot;%1&quot;; give a number from 1 to %2 or a name</source>
        <translation>es gibt keine Spalte „%1“; eine Nummer von 1 bis %2 oder einen Namen angeben</translation>
    </message>
    <message>
        <source>Columns: %1</source>
        <translation>Spalten: %1</translation>
    </message>
    <message>
        <source>its first %1 columns are read</source>
        <translation>ihre ersten %1 Spalten werden gelesen</translation>
    </message>
    <message>
        <source>it says that the sample rate is %1 Hz, not from %2 to %3</source>
        <translation>nach ihr ist die Abtastrate %1 Hz, nicht %2 bis %3</translation>
    </message>
</context>
<context>
    <name>CsvSource</name>
    <message>
        <source>cannot be read (%1)</source>
        <translation>nicht lesbar (%1)</translation>
    </message>
    <message>
        <source>the row after sample %1 is longer than %2 bytes, what follows is left out</source>
        <translation>die Zeile nach Abtastwert %1 ist länger als %2 Bytes, was danach kommt, entfällt</translation>
    </message>
    <message>
        <source>opening was given up</source>
        <translation>das Öffnen wurde abgebrochen</translation>
    </message>
    <message>
        <source>the file was cut while it played: its samples end after %1 of %2; open it again</source>
        <translation>die Datei wurde während der Wiedergabe gekürzt: ihre Abtastwerte enden nach %1 von %2; sie neu öffnen</translation>
    </message>
</context>
<context>
    <name>CsvTimes</name>
    <message>
        <source>the times in column %1 run backwards, first in row %2: the rows are out of order, or of several recordings; they are shown one after the other</source>
        <translation>die Zeiten in Spalte %1 laufen rückwärts, zuerst in Zeile %2: die Zeilen sind nicht geordnet oder gehören zu mehreren Aufnahmen; sie folgen aufeinander wie in der Datei</translation>
    </message>
    <message>
        <source>the times in column %1 are not evenly spaced, first in row %2: rows are missing, or the sample rate varies; they are shown as if it did not</source>
        <translation>die Zeiten in Spalte %1 haben ungleiche Abstände, zuerst in Zeile %2: Zeilen fehlen, oder die Abtastrate schwankt; gezeigt wird, als wäre sie gleich</translation>
    </message>
</context>
<context>
    <name>Densities</name>
    <message>
        <source>density of all symbols</source>
        <translation>Dichte aller Symbole</translation>
    </message>
    <message>
        <source>density</source>
        <translation>Dichte</translation>
    </message>
    <message>
        <source>mask: %1</source>
        <translation>Maske: %1</translation>
    </message>
    <message>
        <source>the mask</source>
        <translation>der Maske</translation>
    </message>
</context>
<context>
    <name>DensityCheck</name>
    <message>
        <source>There are fewer symbols than the %1 of its limit.</source>
        <translation>Es sind weniger Symbole als die %1 ihrer Grenze.</translation>
    </message>
</context>
<context>
    <name>DensityMenu</name>
    <message>
        <source>De&amp;nsity</source>
        <translation>D&amp;ichte</translation>
    </message>
    <message>
        <source>&amp;Density or diagram</source>
        <translation>&amp;Dichte oder Diagramm</translation>
    </message>
    <message>
        <source>&amp;Cursors</source>
        <translation>&amp;Cursor</translation>
    </message>
    <message>
        <source>&amp;Start counting anew</source>
        <translation>&amp;Neu zu zählen beginnen</translation>
    </message>
    <message>
        <source>&amp;Next that passed there</source>
        <translation>N&amp;ächstes von dort</translation>
    </message>
    <message>
        <source>&amp;Previous that passed there</source>
        <translation>&amp;Voriges von dort</translation>
    </message>
</context>
<context>
    <name>DensityPane</name>
    <message>
        <source>Density of the &amp;eye</source>
        <translation>Dichte des &amp;Auges</translation>
    </message>
    <message>
        <source>Density of &amp;IQ</source>
        <translation>Dichte von &amp;IQ</translation>
    </message>
    <message>
        <source>Density: counts how often all symbols passed where (D)</source>
        <translation>Dichte: zählt, wie oft alle Symbole wo vorbeikamen (D)</translation>
    </message>
</context>
<context>
    <name>DensityPanel</name>
    <message>
        <source>Bathtub: error rate over the instant</source>
        <translation>Badewanne: Fehlerrate nach Zeitpunkt</translation>
    </message>
    <message>
        <source>Levels at the instant of decision</source>
        <translation>Pegel zum Entscheidungszeitpunkt</translation>
    </message>
    <message>
        <source>Crossings between the levels</source>
        <translation>Übergänge zwischen den Pegeln</translation>
    </message>
    <message>
        <source>Figures of the eye</source>
        <translation>Werte des Auges</translation>
    </message>
    <message>
        <source>Figures of the constellation</source>
        <translation>Werte der Konstellation</translation>
    </message>
    <message>
        <source>Mask</source>
        <translation>Maske</translation>
    </message>
    <message>
        <source>By which each polygon grows to all sides, in symbols and in the distance from the lowest level to the highest</source>
        <translation>Um den jedes Vieleck nach allen Seiten wächst, in Symbolen und im Abstand vom niedrigsten zum höchsten Pegel</translation>
    </message>
    <message>
        <source>Margin</source>
        <translation>Spielraum</translation>
    </message>
    <message>
        <source>What passed there</source>
        <translation>Was dort vorbeikam</translation>
    </message>
    <message>
        <source>Drawn by hand</source>
        <translation>Von Hand gezeichnet</translation>
    </message>
    <message>
        <source>None: choose one in the menu Density, Mask</source>
        <translation>Keine: Wählen Sie eine im Menü Dichte, Maske</translation>
    </message>
    <message>
        <source>Click in a density to see what passed there</source>
        <translation>Klicken Sie in eine Dichte, um zu sehen, was dort vorbeikam</translation>
    </message>
    <message>
        <source>symbol %1 at %2 s</source>
        <translation>Symbol %1 bei %2 s</translation>
    </message>
    <message>
        <source>level</source>
        <translation>Pegel</translation>
    </message>
    <message>
        <source>µs from the middle of the traces</source>
        <translation>µs ab der Mitte der Spuren</translation>
    </message>
    <message>
        <source>symbols from the middle of the traces</source>
        <translation>Symbole ab der Mitte der Spuren</translation>
    </message>
    <message>
        <source>no symbols yet</source>
        <translation>noch keine Symbole</translation>
    </message>
    <message>
        <source>Switch the density of the eye on (D)</source>
        <translation>Schalten Sie die Dichte des Auges ein (D)</translation>
    </message>
    <message>
        <source>Switch the density of the constellation on (D)</source>
        <translation>Schalten Sie die Dichte der Konstellation ein (D)</translation>
    </message>
</context>
<context>
    <name>DensityReadings</name>
    <message>
        <source>Error rate</source>
        <translation>Fehlerrate</translation>
    </message>
    <message>
        <source>½ erfc(Q / √2): the part of the symbols that is taken for the other level at the best instant and level</source>
        <translation>½ erfc(Q / √2): der Teil der Symbole, der beim besten Zeitpunkt und Pegel für den anderen Pegel gehalten wird</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>Between the levels beyond which 1 of 10¹² symbols of either level lies, as their noise is Gaussian</source>
        <translation>Zwischen den Pegeln, jenseits derer 1 von 10¹² Symbolen jedes Pegels liegt, wenn das Rauschen gaußförmig ist</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>A symbol period less the total jitter (UI)</source>
        <translation>Eine Symboldauer ohne den Gesamtjitter (UI)</translation>
    </message>
    <message>
        <source>TJ</source>
        <translation>TJ</translation>
    </message>
    <message>
        <source>Total jitter: between the times before and after which 1 of 10¹² crossings lies, by the parts below (UI)</source>
        <translation>Gesamtjitter: zwischen den Zeiten, vor und nach denen 1 von 10¹² Übergängen liegt, nach den Teilen darunter (UI)</translation>
    </message>
    <message>
        <source>RJ</source>
        <translation>RJ</translation>
    </message>
    <message>
        <source>Random jitter: standard deviation of its Gaussian (UI)</source>
        <translation>Zufälliger Jitter: Standardabweichung seiner Gaußverteilung (UI)</translation>
    </message>
    <message>
        <source>DJ</source>
        <translation>DJ</translation>
    </message>
    <message>
        <source>Deterministic jitter, from one end to the other: two instants (dual Dirac) or a sine, whichever is likelier (UI)</source>
        <translation>Deterministischer Jitter, von einem Ende zum anderen: zwei Zeitpunkte (Dual-Dirac) oder ein Sinus, je nachdem, was wahrscheinlicher ist (UI)</translation>
    </message>
    <message>
        <source>Q</source>
        <translation>Q</translation>
    </message>
    <message>
        <source>EVM RMS</source>
        <translation>EVM RMS</translation>
    </message>
    <message>
        <source>MER</source>
        <translation>MER</translation>
    </message>
    <message>
        <source>of the newest %1 of %2 symbols</source>
        <translation>der neuesten %1 von %2 Symbolen</translation>
    </message>
    <message>
        <source>of %1 symbols</source>
        <translation>von %1 Symbolen</translation>
    </message>
    <message>
        <source>; left out: %1</source>
        <translation>; ausgelassen: %1</translation>
    </message>
    <message>
        <source>at 1e-12, %1</source>
        <translation>bei 1e-12, %1</translation>
    </message>
    <message>
        <source>Level %1</source>
        <translation>Pegel %1</translation>
    </message>
    <message>
        <source>σ of level %1</source>
        <translation>σ von Pegel %1</translation>
    </message>
    <message>
        <source>Inner height</source>
        <translation>Innere Höhe</translation>
    </message>
    <message>
        <source>Jitter RMS</source>
        <translation>Jitter RMS</translation>
    </message>
    <message>
        <source>Jitter p-p</source>
        <translation>Jitter S-S</translation>
    </message>
    <message>
        <source>EVM at %1, %2</source>
        <translation>EVM bei %1, %2</translation>
    </message>
</context>
<context>
    <name>ExportDialog</name>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>pixels</source>
        <translation>Pixel</translation>
    </message>
    <message>
        <source>Of PNG: pixels to one of the screen</source>
        <translation>Bei PNG: Pixel je Pixel des Bildschirms</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Width</source>
        <translation>&amp;Breite</translation>
    </message>
    <message>
        <source>&amp;Height</source>
        <translation>&amp;Höhe</translation>
    </message>
    <message>
        <source>&amp;Scale</source>
        <translation>&amp;Maßstab</translation>
    </message>
    <message>
        <source>Source and &amp;figures below it</source>
        <translation>Quelle und &amp;Werte darunter</translation>
    </message>
    <message>
        <source>PNG: pixels</source>
        <translation>PNG: Pixel</translation>
    </message>
    <message>
        <source>SVG: vectors</source>
        <translation>SVG: Vektoren</translation>
    </message>
    <message>
        <source>PDF: vectors</source>
        <translation>PDF: Vektoren</translation>
    </message>
    <message>
        <source>CSV: data as a table</source>
        <translation>CSV: Daten als Tabelle</translation>
    </message>
    <message>
        <source>Which signal, how it was received, and what it measures</source>
        <translation>Welches Signal, wie empfangen, und was es misst</translation>
    </message>
    <message>
        <source>F&amp;ormat</source>
        <translation>&amp;Format</translation>
    </message>
    <message>
        <source>%1: the name has another ending than %2; leave it out</source>
        <translation>%1: der Name hat eine andere Endung als %2; sie weglassen</translation>
    </message>
    <message>
        <source>NPY: counts of a density</source>
        <translation>NPY: Zahlen einer Dichte</translation>
    </message>
</context>
<context>
    <name>ExportFooter</name>
    <message>
        <source>sample rate %1</source>
        <translation>Abtastrate %1</translation>
    </message>
    <message>
        <source>symbol rate %1</source>
        <translation>Symbolrate %1</translation>
    </message>
    <message>
        <source>channel %1</source>
        <translation>Kanal %1</translation>
    </message>
    <message>
        <source>shifted by %1</source>
        <translation>verschoben um %1</translation>
    </message>
    <message>
        <source>channel of %1</source>
        <translation>Kanalbreite %1</translation>
    </message>
    <message>
        <source>FM</source>
        <translation>FM</translation>
    </message>
    <message>
        <source>AM</source>
        <translation>AM</translation>
    </message>
    <message>
        <source>filter %1</source>
        <translation>Filter %1</translation>
    </message>
</context>
<context>
    <name>EyePanel</name>
    <message>
        <source>Eye</source>
        <translation>Auge</translation>
    </message>
    <message>
        <source>Sym&amp;bols</source>
        <translation>Symb&amp;ole</translation>
    </message>
    <message>
        <source>no low-pass</source>
        <translation>kein Tiefpass</translation>
    </message>
    <message>
        <source>Where a low-pass before the eye is 3 dB down, as a part of the symbol rate</source>
        <translation>Wo ein Tiefpass vor dem Auge um 3 dB dämpft, als Teil der Symbolrate</translation>
    </message>
    <message>
        <source>Band&amp;width</source>
        <translation>&amp;Bandbreite</translation>
    </message>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
    <message>
        <source> bits</source>
        <translation> Bits</translation>
    </message>
    <message>
        <source>Follows each start bit of an asynchronous serial line, with so many bits after it</source>
        <translation>Folgt jedem Startbit einer asynchronen seriellen Leitung, mit so vielen Bits danach</translation>
    </message>
    <message>
        <source>Characters</source>
        <translation>Zeichen</translation>
    </message>
    <message>
        <source>Clock</source>
        <translation>Takt</translation>
    </message>
    <message>
        <source>known</source>
        <translation>bekannt</translation>
    </message>
    <message>
        <source>recovered</source>
        <translation>wiedergewonnen</translation>
    </message>
    <message>
        <source>none</source>
        <comment>clock of the symbols</comment>
        <translation>keiner</translation>
    </message>
</context>
<context>
    <name>FileMenu</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Open recording...</source>
        <translation>Aufnahme ö&amp;ffnen …</translation>
    </message>
    <message>
        <source>&amp;Built-in signal</source>
        <translation>Eingebautes &amp;Signal</translation>
    </message>
    <message>
        <source>&amp;Modulated signal</source>
        <translation>&amp;Moduliertes Signal</translation>
    </message>
    <message>
        <source>&amp;Information...</source>
        <translation>&amp;Informationen …</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Recordings</source>
        <translation>Aufnahmen</translation>
    </message>
    <message>
        <source>All files</source>
        <translation>Alle Dateien</translation>
    </message>
    <message>
        <source>Open recording</source>
        <translation>Aufnahme öffnen</translation>
    </message>
    <message>
        <source>Open &amp;recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>&amp;Clear</source>
        <translation>&amp;Leeren</translation>
    </message>
    <message>
        <source>Open &amp;stream...</source>
        <translation>&amp;Datenstrom öffnen...</translation>
    </message>
    <message>
        <source>&amp;Export...</source>
        <translation>&amp;Exportieren...</translation>
    </message>
</context>
<context>
    <name>GatePanel</name>
    <message>
        <source>Gate</source>
        <translation>Messbereich</translation>
    </message>
    <message>
        <source>What is shown</source>
        <translation>Was gezeigt wird</translation>
    </message>
    <message>
        <source>From a time to another</source>
        <translation>Von einer Zeit bis zu einer anderen</translation>
    </message>
    <message>
        <source>What eye, constellation and figures are of</source>
        <translation>Woraus Auge, Konstellation und Messwerte sind</translation>
    </message>
    <message>
        <source>Be&amp;gin</source>
        <translation>A&amp;nfang</translation>
    </message>
    <message>
        <source>&amp;End</source>
        <translation>&amp;Ende</translation>
    </message>
</context>
<context>
    <name>HelpMenu</name>
    <message>
        <source>Renderer: %1</source>
        <translation>Zeichnet: %1</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Keys and mouse</source>
        <translation>&amp;Tasten und Maus</translation>
    </message>
    <message>
        <source>Keys and mouse</source>
        <translation>Tasten und Maus</translation>
    </message>
    <message>
        <source>What the &amp;figures mean</source>
        <translation>Was die &amp;Werte bedeuten</translation>
    </message>
    <message>
        <source>What the figures mean</source>
        <translation>Was die Werte bedeuten</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>Ü&amp;ber</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source> or </source>
        <translation> oder </translation>
    </message>
    <message>
        <source>Click</source>
        <translation>Klick</translation>
    </message>
    <message>
        <source>Measures a point of the time diagram</source>
        <translation>Misst einen Punkt im Zeitdiagramm</translation>
    </message>
    <message>
        <source>Drag</source>
        <translation>Ziehen</translation>
    </message>
    <message>
        <source>Measures a distance in the time diagram</source>
        <translation>Misst einen Abstand im Zeitdiagramm</translation>
    </message>
    <message>
        <source>Esc</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>Clears what was measured; closes a message</source>
        <translation>Löscht die Messung; schließt eine Meldung</translation>
    </message>
    <message>
        <source>Wheel over an axis</source>
        <translation>Rad über einer Achse</translation>
    </message>
    <message>
        <source>Zooms about the pointer</source>
        <translation>Vergrößert um den Zeiger</translation>
    </message>
    <message>
        <source>Drag on an axis</source>
        <translation>Ziehen auf einer Achse</translation>
    </message>
    <message>
        <source>Moves what is shown</source>
        <translation>Verschiebt den Ausschnitt</translation>
    </message>
    <message>
        <source>Double click on an axis</source>
        <translation>Doppelklick auf eine Achse</translation>
    </message>
    <message>
        <source>Shows all again</source>
        <translation>Zeigt wieder alles</translation>
    </message>
    <message>
        <source>Right click</source>
        <translation>Rechtsklick</translation>
    </message>
    <message>
        <source>Menu of the view: axes, grid, colours, auto scaling, export</source>
        <translation>Menü der Ansicht: Achsen, Gitter, Farben, automatische Skalierung, Export</translation>
    </message>
    <message>
        <source>Tab</source>
        <translation>Tabulator</translation>
    </message>
    <message>
        <source>Goes to the next control or view</source>
        <translation>Geht zum nächsten Bedienelement oder zur nächsten Ansicht</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>Eingabe</translation>
    </message>
    <message>
        <source>Presses the button or ticks the box that has the focus; takes a number that was typed</source>
        <translation>Drückt die Schaltfläche oder setzt das Häkchen mit dem Fokus; übernimmt eine getippte Zahl</translation>
    </message>
    <message>
        <source>Alt and a letter</source>
        <translation>Alt und ein Buchstabe</translation>
    </message>
    <message>
        <source>Goes to what has this letter underlined</source>
        <translation>Geht dorthin, wo dieser Buchstabe unterstrichen ist</translation>
    </message>
    <message>
        <source>Arrows, Home, End</source>
        <translation>Pfeile, Pos1, Ende</translation>
    </message>
    <message>
        <source>Move a slider or a choice that has the focus</source>
        <translation>Bewegen den Regler oder die Auswahl mit dem Fokus</translation>
    </message>
    <message>
        <source>In the views</source>
        <translation>In den Ansichten</translation>
    </message>
    <message>
        <source>Beside the views</source>
        <translation>Neben den Ansichten</translation>
    </message>
    <message>
        <source>Shows sampled signals over time, as eye diagrams and as constellations, and measures them.</source>
        <translation>Zeigt abgetastete Signale über der Zeit, als Augendiagramm und als Konstellation und misst sie.</translation>
    </message>
    <message>
        <source>Copyright the Orvane authors. Licensed under the Apache License 2.0.</source>
        <translation>Copyright the Orvane authors. Lizenziert unter der Apache-Lizenz 2.0.</translation>
    </message>
    <message>
        <source>Orvane workbench %1</source>
        <translation>Orvane-Arbeitsplatz %1</translation>
    </message>
    <message>
        <source>What it stands on</source>
        <translation>Worauf es beruht</translation>
    </message>
    <message>
        <source>Shows what passed there: lit, and marked over time</source>
        <translation>Zeigt, was dort vorbeikam: hervorgehoben, und über der Zeit markiert</translation>
    </message>
    <message>
        <source>Wheel</source>
        <translation>Rad</translation>
    </message>
    <message>
        <source>Zooms about the pointer; with Shift the time axis alone, with Ctrl the level axis</source>
        <translation>Vergrößert um den Zeiger; mit Umschalt nur die Zeitachse, mit Strg die Pegelachse</translation>
    </message>
    <message>
        <source>Moves what is shown; with Shift or the right button zooms to the rectangle; moves a cursor</source>
        <translation>Verschiebt den Ausschnitt; mit Umschalt oder der rechten Taste vergrößert es das Rechteck; verschiebt einen Cursor</translation>
    </message>
    <message>
        <source>Double click</source>
        <translation>Doppelklick</translation>
    </message>
    <message>
        <source>Ctrl+Z, Ctrl+Y</source>
        <translation>Strg+Z, Strg+Y</translation>
    </message>
    <message>
        <source>Undoes and redoes a zoom</source>
        <translation>Macht eine Vergrößerung rückgängig und wieder</translation>
    </message>
    <message>
        <source>Tab, arrows</source>
        <translation>Tab, Pfeile</translation>
    </message>
    <message>
        <source>Choose and move a cursor, while they are shown</source>
        <translation>Wählen und verschieben einen Cursor, solange sie zu sehen sind</translation>
    </message>
    <message>
        <source>L, S</source>
        <translation>L, S</translation>
    </message>
    <message>
        <source>Colours by logarithm or evenly; the next colour scale</source>
        <translation>Farben logarithmisch oder gleichmäßig; die nächste Farbskala</translation>
    </message>
    <message>
        <source>In the densities</source>
        <translation>In den Dichten</translation>
    </message>
    <message>
        <source>Below the density of the eye</source>
        <translation>Unter der Dichte des Auges</translation>
    </message>
</context>
<context>
    <name>Hints</name>
    <message>
        <source>give the right --format</source>
        <translation>das richtige --format angeben</translation>
    </message>
    <message>
        <source>give --format where it is raw samples</source>
        <translation>bei rohen Abtastwerten --format angeben</translation>
    </message>
    <message>
        <source>read the samples alone by --format</source>
        <translation>die Abtastwerte mit --format allein lesen</translation>
    </message>
    <message>
        <source>give it by --sample-rate</source>
        <translation>mit --sample-rate angeben</translation>
    </message>
    <message>
        <source>give the right one by --sample-rate</source>
        <translation>die richtige mit --sample-rate angeben</translation>
    </message>
    <message>
        <source>give --format and --sample-rate</source>
        <translation>--format und --sample-rate angeben</translation>
    </message>
    <message>
        <source>leave out --format</source>
        <translation>--format weglassen</translation>
    </message>
    <message>
        <source>leave out --columns</source>
        <translation>--columns weglassen</translation>
    </message>
    <message>
        <source>%1, or %2</source>
        <translation>%1 oder %2</translation>
    </message>
    <message>
        <source>%1; %2</source>
        <translation>%1; %2</translation>
    </message>
    <message>
        <source>give it as a number, and where the frequency carries the symbols --demod fm</source>
        <translation>geben Sie sie als Zahl an, und wo die Frequenz die Symbole trägt, --demod fm</translation>
    </message>
</context>
<context>
    <name>InfoDialog</name>
    <message>
        <source>Information</source>
        <translation>Informationen</translation>
    </message>
</context>
<context>
    <name>IqPanel</name>
    <message>
        <source>I and Q</source>
        <translation>I und Q</translation>
    </message>
    <message>
        <source>&amp;Trajectory</source>
        <translation>&amp;Trajektorie</translation>
    </message>
    <message>
        <source>Shows the way between the symbols, too (T)</source>
        <translation>Zeigt auch den Weg zwischen den Symbolen (T)</translation>
    </message>
</context>
<context>
    <name>LevelPanel</name>
    <message>
        <source>Level</source>
        <translation>Pegel</translation>
    </message>
    <message>
        <source>&amp;Auto scale</source>
        <translation>A&amp;utomatisch</translation>
    </message>
    <message>
        <source>Shows -1 to 1, the full scale of recordings (F)</source>
        <translation>Zeigt -1 bis 1, die Vollaussteuerung von Aufnahmen (F)</translation>
    </message>
    <message>
        <source>F&amp;ull scale</source>
        <translation>&amp;Voll</translation>
    </message>
    <message>
        <source>Fits the axes to what is shown, and lets them follow it (A)</source>
        <translation>Passt die Achsen an das an, was gezeigt wird, und lässt sie ihm folgen (A)</translation>
    </message>
</context>
<context>
    <name>LiveAddress</name>
    <message>
        <source>standard input</source>
        <translation>Standardeingabe</translation>
    </message>
</context>
<context>
    <name>LiveSource</name>
    <message>
        <source>no samples for %1 s: waiting</source>
        <translation>seit %1 s keine Abtastwerte: es wird gewartet</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>&amp;Time diagram</source>
        <translation>&amp;Zeitdiagramm</translation>
    </message>
    <message>
        <source>Tool bar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>%1 - Orvane workbench</source>
        <translation>%1 - Orvane-Messplatz</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>&amp;Eye diagram</source>
        <translation>&amp;Augendiagramm</translation>
    </message>
    <message>
        <source>&amp;IQ diagram</source>
        <translation>&amp;IQ-Diagramm</translation>
    </message>
    <message>
        <source>E&amp;xport...</source>
        <translation>E&amp;xportieren...</translation>
    </message>
    <message>
        <source>the stream has ended</source>
        <translation>der Strom ist zu Ende</translation>
    </message>
</context>
<context>
    <name>MaskChoice</name>
    <message>
        <source>cannot be read (%1)</source>
        <translation>kann nicht gelesen werden (%1)</translation>
    </message>
    <message>
        <source>is too large for a mask</source>
        <translation>ist zu groß für eine Maske</translation>
    </message>
    <message>
        <source>is no mask: %1</source>
        <translation>ist keine Maske: %1</translation>
    </message>
    <message>
        <source>pass</source>
        <translation>bestanden</translation>
    </message>
    <message>
        <source>FAIL</source>
        <translation>NICHT BESTANDEN</translation>
    </message>
    <message>
        <source>running</source>
        <translation>läuft</translation>
    </message>
    <message>
        <source>%1, %2 hits in %3 symbols</source>
        <translation>%1, %2 Treffer in %3 Symbolen</translation>
    </message>
</context>
<context>
    <name>MaskMenu</name>
    <message>
        <source>&amp;Mask</source>
        <translation>&amp;Maske</translation>
    </message>
    <message>
        <source>&amp;None</source>
        <translation>&amp;Keine</translation>
    </message>
    <message>
        <source>&amp;Load...</source>
        <translation>&amp;Laden …</translation>
    </message>
    <message>
        <source>&amp;Save...</source>
        <translation>&amp;Sichern …</translation>
    </message>
    <message>
        <source>&amp;Draw a polygon</source>
        <translation>Vieleck &amp;zeichnen</translation>
    </message>
    <message>
        <source>Click its corners, the last one twice; Backspace takes one back, Esc ends without one</source>
        <translation>Klicken Sie seine Ecken an, die letzte doppelt; die Rücktaste nimmt eine zurück, Esc endet ohne</translation>
    </message>
    <message>
        <source>Show the &amp;hits</source>
        <translation>&amp;Treffer zeigen</translation>
    </message>
    <message>
        <source>Drawn by hand</source>
        <translation>Von Hand gezeichnet</translation>
    </message>
    <message>
        <source>Load a mask</source>
        <translation>Eine Maske laden</translation>
    </message>
    <message>
        <source>Save the mask</source>
        <translation>Die Maske sichern</translation>
    </message>
</context>
<context>
    <name>MeasureCommand</name>
    <message>
        <source>characters cannot be found without the symbol rate; give it with --symbol-rate</source>
        <translation>ohne die Symbolrate lassen sich keine Zeichen finden; mit --symbol-rate angeben</translation>
    </message>
    <message>
        <source>a live signal has no end to be measured to; record it first</source>
        <translation>ein laufendes Signal hat kein Ende, bis zu dem gemessen werden könnte; zeichnen Sie es zuerst auf</translation>
    </message>
    <message>
        <source>there is no channel %1; the recording has %2</source>
        <translation>es gibt keinen Kanal %1; die Aufnahme hat %2</translation>
    </message>
    <message>
        <source>it has ended before %1 s; start earlier</source>
        <translation>sie ist vor %1 s zu Ende; beginnen Sie früher</translation>
    </message>
    <message>
        <source>there are no samples to be measured; give another range</source>
        <translation>es gibt keine Abtastwerte zu messen; geben Sie einen anderen Bereich an</translation>
    </message>
    <message>
        <source>there is not enough memory to measure it; give --start and --seconds</source>
        <translation>für die Messung fehlt Speicher; --start und --seconds angeben</translation>
    </message>
</context>
<context>
    <name>Measurement</name>
    <message>
        <source>the symbol rate is not known</source>
        <translation>die Symbolrate ist nicht bekannt</translation>
    </message>
    <message>
        <source>the symbol rate was estimated: there is none to compare with</source>
        <translation>die Symbolrate wurde geschätzt: es gibt keine, mit der sie zu vergleichen wäre</translation>
    </message>
    <message>
        <source>the symbol rate was not estimated</source>
        <translation>die Symbolrate wurde nicht geschätzt</translation>
    </message>
    <message>
        <source>there are no samples</source>
        <translation>es gibt keine Abtastwerte</translation>
    </message>
    <message>
        <source>the signal is not periodic, or not for three periods</source>
        <translation>das Signal ist nicht periodisch, oder nicht drei Perioden lang</translation>
    </message>
    <message>
        <source>the symbols&apos; clock is not looked for</source>
        <translation>der Symboltakt wird nicht gesucht</translation>
    </message>
    <message>
        <source>there are no symbols</source>
        <translation>es gibt keine Symbole</translation>
    </message>
    <message>
        <source>the receiver is not locked</source>
        <translation>der Empfänger ist nicht eingerastet</translation>
    </message>
    <message>
        <source>a sample of each symbol makes no eye</source>
        <translation>ein Abtastwert je Symbol ergibt kein Auge</translation>
    </message>
    <message>
        <source>there are fewer than %1 traces</source>
        <translation>es gibt weniger als %1 Spuren</translation>
    </message>
    <message>
        <source>levels cannot be told apart</source>
        <translation>die Pegel lassen sich nicht trennen</translation>
    </message>
    <message>
        <source>too few transitions cross this eye</source>
        <translation>zu wenige Übergänge queren dieses Auge</translation>
    </message>
    <message>
        <source>too few transitions cross the eye</source>
        <translation>zu wenige Übergänge queren das Auge</translation>
    </message>
    <message>
        <source>the signal was not demodulated as FM</source>
        <translation>das Signal wurde nicht als FM demoduliert</translation>
    </message>
    <message>
        <source>the symbols are not those of a constellation</source>
        <translation>die Symbole sind nicht die einer Konstellation</translation>
    </message>
    <message>
        <source>the modulation is not known</source>
        <translation>die Modulation ist nicht bekannt</translation>
    </message>
    <message>
        <source>there are too few symbols</source>
        <translation>es gibt zu wenige Symbole</translation>
    </message>
    <message>
        <source>the modulation has one axis only</source>
        <translation>die Modulation hat nur eine Achse</translation>
    </message>
    <message>
        <source>the receiver recovers no carrier</source>
        <translation>der Empfänger gewinnt keinen Träger zurück</translation>
    </message>
    <message>
        <source>the carrier may also be %1 Hz beside it: the spectrum fits both</source>
        <translation>der Träger kann auch %1 Hz daneben liegen: das Spektrum passt zu beiden</translation>
    </message>
    <message>
        <source>the squelch is closed</source>
        <translation>die Rauschsperre ist zu</translation>
    </message>
    <message>
        <source>the receiver is not locked on %1 symbols</source>
        <translation>bei %1 Symbolen ist der Empfänger nicht eingerastet</translation>
    </message>
    <message>
        <source>%1 symbols are at the ends of bursts</source>
        <translation>%1 Symbole liegen an den Enden von Bursts</translation>
    </message>
    <message>
        <source>nothing was left out</source>
        <translation>nichts wurde ausgelassen</translation>
    </message>
    <message>
        <source>the eye is measured by %1 of %2 traces, in stretches spread evenly</source>
        <translation>das Auge ist an %1 von %2 Spuren gemessen, in gleichmäßig verteilten Abschnitten</translation>
    </message>
</context>
<context>
    <name>ModulationPanel</name>
    <message>
        <source>Modulated signal</source>
        <translation>Moduliertes Signal</translation>
    </message>
    <message>
        <source>SNR</source>
        <translation>SNR</translation>
    </message>
    <message>
        <source>Energy of a symbol against the density of the noise</source>
        <translation>Energie eines Symbols gegen die Dichte des Rauschens</translation>
    </message>
    <message>
        <source>Phase noise</source>
        <translation>Phasenrauschen</translation>
    </message>
    <message>
        <source>Carrier offset</source>
        <translation>Trägerversatz</translation>
    </message>
    <message>
        <source>What is left of it after the receiver</source>
        <translation>Was der Empfänger davon übrig lässt</translation>
    </message>
    <message>
        <source>RMS by which the carrier&apos;s phase walks in a symbol. With the noise, what the recovery of the carrier leaves of it makes an MER of %1 dB where decisions are right; over a few thousand symbols it may be 1 dB less</source>
        <translation>Effektivwert, um den die Phase des Trägers in einem Symbol wandert. Was die Rückgewinnung des Trägers davon lässt, ergibt mit dem Rauschen eine MER von %1 dB, wo Entscheidungen richtig sind; über einige tausend Symbole kann sie 1 dB kleiner sein</translation>
    </message>
</context>
<context>
    <name>ModulationSource</name>
    <message>
        <source>Built-in %1 signal</source>
        <translation>Eingebautes %1-Signal</translation>
    </message>
</context>
<context>
    <name>NoticeBar</name>
    <message>
        <source>Close this message</source>
        <translation>Meldung schließen</translation>
    </message>
    <message>
        <source>Close this message (Esc)</source>
        <translation>Diese Meldung schließen (Esc)</translation>
    </message>
</context>
<context>
    <name>NrzSource</name>
    <message>
        <source>Built-in NRZ signal</source>
        <translation>Eingebautes NRZ-Signal</translation>
    </message>
</context>
<context>
    <name>Opening</name>
    <message>
        <source>Opening %1</source>
        <translation>%1 wird geöffnet</translation>
    </message>
</context>
<context>
    <name>Options</name>
    <message>
        <source>Shows this help.</source>
        <translation>Zeigt diese Hilfe.</translation>
    </message>
    <message>
        <source>Shows the version.</source>
        <translation>Zeigt die Version.</translation>
    </message>
    <message>
        <source>Says more: what draws the views, and why; with --version, too.</source>
        <translation>Sagt mehr: was die Ansichten zeichnet, und warum; auch mit --version.</translation>
    </message>
    <message>
        <source>Shows &lt;S&gt; seconds of signal.</source>
        <translation>Zeigt &lt;S&gt; Sekunden Signal.</translation>
    </message>
    <message>
        <source>Plays &lt;S&gt; seconds for a snapshot (2).</source>
        <translation>Spielt &lt;S&gt; Sekunden für ein Bild (2).</translation>
    </message>
    <message>
        <source>Size of the window in pixels (1280x800).</source>
        <translation>Größe des Fensters in Pixeln (1280x800).</translation>
    </message>
    <message>
        <source>Language of the texts, such as de.</source>
        <translation>Sprache der Texte, etwa de.</translation>
    </message>
    <message>
        <source>Keeps settings in &lt;FILE&gt;.</source>
        <translation>Bewahrt die Einstellungen in &lt;FILE&gt; auf.</translation>
    </message>
    <message>
        <source>give a number from %1 to %2</source>
        <translation>eine Zahl von %1 bis %2 angeben</translation>
    </message>
    <message>
        <source>give a whole number from %1 to %2</source>
        <translation>eine ganze Zahl von %1 bis %2 angeben</translation>
    </message>
    <message>
        <source>--%1: &quot;%2&quot; cannot be used; %3</source>
        <translation>--%1: „%2“ ist nicht brauchbar; %3</translation>
    </message>
    <message>
        <source>give a code such as de or de_AT</source>
        <translation>ein Kürzel wie de oder de_AT angeben</translation>
    </message>
    <message>
        <source>give width and height, such as 1280x800</source>
        <translation>Breite und Höhe angeben, etwa 1280x800</translation>
    </message>
    <message>
        <source>give %1x%2 to %3x%3</source>
        <translation>%1x%2 bis %3x%3 angeben</translation>
    </message>
    <message>
        <source>give a name</source>
        <translation>einen Namen angeben</translation>
    </message>
    <message>
        <source>command line: %1 Try --help.</source>
        <translation>Befehlszeile: %1 Hilfe gibt --help.</translation>
    </message>
    <message>
        <source>%1: only one file can be shown; name one</source>
        <translation>%1: nur eine Datei kann gezeigt werden; eine nennen</translation>
    </message>
    <message>
        <source>command line: the name of the file is empty; name a recording</source>
        <translation>Befehlszeile: der Name der Datei ist leer; eine Aufnahme nennen</translation>
    </message>
    <message>
        <source>--%1: only recordings have it; name one</source>
        <translation>--%1: das gibt es nur bei Aufnahmen; eine nennen</translation>
    </message>
    <message>
        <source>Sample rate in hertz, whatever the recording says.</source>
        <translation>Abtastrate in Hertz, was immer die Aufnahme sagt.</translation>
    </message>
    <message>
        <source>Prints what is known of the recording and ends.</source>
        <translation>Gibt aus, was über die Aufnahme bekannt ist, und endet.</translation>
    </message>
    <message>
        <source>give c or r; f, s or u; 8, 16, 32 or 64, such as cf32 or cu8</source>
        <translation>c oder r, f, s oder u und 8, 16, 32 oder 64 angeben, etwa cf32 oder cu8</translation>
    </message>
    <message>
        <source>Takes the file for separated values and plays its columns &lt;LIST&gt;, numbers from 1 or names between commas; else all columns of numbers but the time.</source>
        <translation>Nimmt die Datei als getrennte Werte (CSV) und spielt ihre Spalten &lt;LIST&gt;, Nummern ab 1 oder Namen zwischen Kommas; sonst alle Spalten mit Zahlen außer der Zeit.</translation>
    </message>
    <message>
        <source>give 1 to %1 numbers or names between commas</source>
        <translation>1 bis %1 Nummern oder Namen zwischen Kommas angeben</translation>
    </message>
    <message>
        <source>Shows &lt;N&gt; symbols in the eye, 1 to 16 (2).</source>
        <translation>Zeigt &lt;N&gt; Symbole im Auge, 1 bis 16 (2).</translation>
    </message>
    <message>
        <source>give 2 or 4</source>
        <translation>2 oder 4 angeben</translation>
    </message>
    <message>
        <source>--%1: only the built-in signal has it; leave out the recording</source>
        <translation>--%1: hat nur das eingebaute Signal; die Aufnahme weglassen</translation>
    </message>
    <message>
        <source>Takes the recording for an asynchronous serial line, such as a UART&apos;s: the eye follows each start bit, with &lt;N&gt; bits after it, 5 to 9, at --symbol-rate.</source>
        <translation>Nimmt die Aufnahme für eine asynchrone serielle Leitung, wie die eines UART: Das Auge folgt jedem Startbit, mit &lt;N&gt; Bits danach, 5 bis 9, bei --symbol-rate.</translation>
    </message>
    <message>
        <source>Low-pass before the eye, 3 dB down at &lt;X&gt; symbol rates, 0.2 to 2 (none).</source>
        <translation>Tiefpass vor dem Auge, der bei &lt;X&gt; Symbolraten um 3 dB dämpft, 0.2 bis 2 (keiner).</translation>
    </message>
    <message>
        <source>Plays without a window, writes time.png, eye.png, iq.png and workbench.png into &lt;DIR&gt; and ends.</source>
        <translation>Spielt ohne Fenster ab, schreibt time.png, eye.png, iq.png und workbench.png nach &lt;DIR&gt; und endet.</translation>
    </message>
    <message>
        <source>Signal-to-noise ratio of a symbol of it, 0 to 60 dB (28).</source>
        <translation>Sein Signal-Rausch-Abstand je Symbol, 0 bis 60 dB (28).</translation>
    </message>
    <message>
        <source>give one of %1</source>
        <translation>eines von %1 angeben</translation>
    </message>
    <message>
        <source>--%1: a signal of --demo does not have it; leave out one of them</source>
        <translation>--%1: ein Signal von --demo hat das nicht; eines von beiden weglassen</translation>
    </message>
    <message>
        <source>Receiver: adds &lt;HZ&gt; to every frequency of the recording.</source>
        <translation>Empfänger: addiert &lt;HZ&gt; zu jeder Frequenz der Aufnahme.</translation>
    </message>
    <message>
        <source>Receiver: lets a channel of &lt;HZ&gt; about 0 through.</source>
        <translation>Empfänger: lässt einen Kanal von &lt;HZ&gt; um 0 durch.</translation>
    </message>
    <message>
        <source>Receiver: demodulates fm or am instead of I and Q.</source>
        <translation>Empfänger: demoduliert fm oder am statt I und Q.</translation>
    </message>
    <message>
        <source>Receiver: root raised cosine matched filter of roll-off &lt;X&gt;; 0 for none (0.35 with --modulation, else none).</source>
        <translation>Empfänger: angepasstes Filter, Wurzel-Kosinus mit Roll-off &lt;X&gt;; 0 für keines (0.35 mit --modulation, sonst keines).</translation>
    </message>
    <message>
        <source>Receiver: leaves the gain as it is.</source>
        <translation>Empfänger: lässt die Verstärkung, wie sie ist.</translation>
    </message>
    <message>
        <source>Receiver: leaves the symbols where they are.</source>
        <translation>Empfänger: lässt die Symbole, wo sie sind.</translation>
    </message>
    <message>
        <source>Shows the way between symbols, too, in the IQ diagram.</source>
        <translation>Zeigt im IQ-Diagramm auch den Weg zwischen den Symbolen.</translation>
    </message>
    <message>
        <source>give fm or am</source>
        <translation>geben Sie fm oder am an</translation>
    </message>
    <message>
        <source>leave it or --%1 out</source>
        <translation>lassen Sie dies oder --%1 weg</translation>
    </message>
    <message>
        <source>leave it or --demod out</source>
        <translation>lassen Sie dies oder --demod weg</translation>
    </message>
    <message>
        <source>settings: forgotten, as --reset says (%1)</source>
        <translation>Einstellungen: vergessen, wie --reset es sagt (%1)</translation>
    </message>
    <message>
        <source>settings: %1 cannot be removed (%2); remove it by hand</source>
        <translation>Einstellungen: %1 kann nicht entfernt werden (%2); entfernen Sie sie von Hand</translation>
    </message>
    <message>
        <source>Colour scheme: dark, light or, as without it, as the desktop.</source>
        <translation>Farbschema: dark (dunkel), light (hell) oder, wie ohne Angabe, desktop (das des Desktops).</translation>
    </message>
    <message>
        <source>Forgets the settings, and starts as at the first time.</source>
        <translation>Vergisst die Einstellungen und startet wie beim ersten Mal.</translation>
    </message>
    <message>
        <source>give desktop, dark or light</source>
        <translation>desktop, dark oder light angeben</translation>
    </message>
    <message>
        <source>Recording to play: SigMF, WAV, FLAC, AIFF and others, CSV, raw samples. Or a live signal: - for standard input, zmq://HOST:PORT, a ZeroMQ publisher, or soapy://driver=NAME,freq=HZ,rate=HZ,gain=DB, a radio.</source>
        <translation>Aufnahme, die gespielt wird: SigMF, WAV, FLAC, AIFF und andere, CSV, rohe Abtastwerte. Oder ein laufendes Signal: - für die Standardeingabe, zmq://HOST:PORT, ein ZeroMQ-Sender, oder soapy://driver=NAME,freq=HZ,rate=HZ,gain=DB, ein Funkgerät.</translation>
    </message>
    <message>
        <source>Takes the file, standard input or messages for raw samples of &lt;NAME&gt;: cf32, cs16, cu8, cs8, rf32, rs16 and so on, _be for big endian; else endings such as .cu8 say it, and messages are cf32.</source>
        <translation>Nimmt die Datei, die Standardeingabe oder Nachrichten als rohe Abtastwerte von &lt;NAME&gt;: cf32, cs16, cu8, cs8, rf32, rs16 und so weiter, _be für Big Endian; sonst sagen es Endungen wie .cu8, und Nachrichten sind cf32.</translation>
    </message>
    <message>
        <source>Symbol rate in hertz: the time axis counts symbols, and the eye opens on them; auto estimates that of a recording.</source>
        <translation>Symbolrate in Hertz: Die Zeitachse zählt Symbole, und das Auge öffnet sich über ihnen; auto schätzt die einer Aufnahme.</translation>
    </message>
    <message>
        <source>Pixels of a snapshot to each of the window, 0.5 to 8 (1).</source>
        <translation>Pixel einer Momentaufnahme je Pixel des Fensters, 0.5 bis 8 (1).</translation>
    </message>
    <message>
        <source>give --snapshot, too</source>
        <translation>geben Sie auch --snapshot an</translation>
    </message>
    <message>
        <source>Plays channel &lt;N&gt; of the recording, counted from 1, or the difference of two, such as 1-2; of a complex one 1 is I, 2 is Q.</source>
        <translation>Spielt Kanal &lt;N&gt; der Aufnahme, gezählt ab 1, oder die Differenz zweier, etwa 1-2; bei einer komplexen ist 1 I und 2 Q.</translation>
    </message>
    <message>
        <source>give a number from 1 to %1, or two such as 1-2</source>
        <translation>eine Zahl von 1 bis %1 angeben, oder zwei wie 1-2</translation>
    </message>
    <message>
        <source>Receiver: shows nothing while the channel is below &lt;DB&gt; dB of full scale.</source>
        <translation>Empfänger: zeigt nichts, solange der Kanal unter &lt;DB&gt; dB der Vollaussteuerung liegt.</translation>
    </message>
    <message>
        <source>--%1 needs the symbol rate; give --symbol-rate, too</source>
        <translation>--%1 braucht die Symbolrate; auch --symbol-rate angeben</translation>
    </message>
    <message>
        <source>it has ended before %1 s; start earlier</source>
        <translation>sie ist vor %1 s zu Ende; beginnen Sie früher</translation>
    </message>
    <message>
        <source>Prints what the recordings measure and ends: json, a line for each; all of a recording unless --start and --seconds say otherwise.</source>
        <translation>Gibt aus, was die Aufnahmen messen, und endet: json, eine Zeile für jede; die ganze Aufnahme, außer --start und --seconds sagen es anders.</translation>
    </message>
    <message>
        <source>Starts &lt;S&gt; seconds after the beginning of the recording.</source>
        <translation>Beginnt &lt;S&gt; Sekunden nach dem Anfang der Aufnahme.</translation>
    </message>
    <message>
        <source>Receiver: measuring filter &lt;NAME&gt;: rrc, rc, gaussian, boxcar or half-sine; --roll-off is the roll-off of rrc and rc, and the BT of gaussian.</source>
        <translation>Empfänger: Messfilter &lt;NAME&gt;: rrc, rc, gaussian, boxcar oder half-sine; --roll-off ist der Roll-off von rrc und rc und das BT von gaussian.</translation>
    </message>
    <message>
        <source>Receiver: takes off what is at 0 Hz.</source>
        <translation>Empfänger: entfernt, was bei 0 Hz liegt.</translation>
    </message>
    <message>
        <source>Receiver: recovers symbols and carrier of &lt;NAME&gt;: %1, at --symbol-rate.</source>
        <translation>Empfänger: gewinnt Symbole und Träger von &lt;NAME&gt; zurück: %1, bei --symbol-rate.</translation>
    </message>
    <message>
        <source>give json</source>
        <translation>geben Sie json an</translation>
    </message>
    <message>
        <source>memory: there is not enough of it; close other programs</source>
        <translation>Speicher: er reicht nicht; andere Programme schließen</translation>
    </message>
    <message>
        <source>standard output: cannot be written; look where it leads to, and whether there is room</source>
        <translation>Standardausgabe: nicht zu schreiben; nachsehen, wohin sie führt und ob dort Platz ist</translation>
    </message>
    <message>
        <source>--snr: only a built-in signal with a modulation has it; give one by --demo</source>
        <translation>--snr: das hat nur ein eingebautes Signal mit einer Modulation; eines mit --demo angeben</translation>
    </message>
    <message>
        <source>Plays the built-in signal &lt;NAME&gt;: BPSK, QPSK, 8PSK, 16QAM or 64QAM, as a receiver has it, or NRZ, of two or four levels (QPSK).</source>
        <translation>Spielt das eingebaute Signal &lt;NAME&gt; ab: BPSK, QPSK, 8PSK, 16QAM oder 64QAM, wie ein Empfänger es hat, oder NRZ, mit zwei oder vier Pegeln (QPSK).</translation>
    </message>
    <message>
        <source>Levels of the built-in NRZ signal: 2 or 4 (2).</source>
        <translation>Pegel des eingebauten NRZ-Signals: 2 oder 4 (2).</translation>
    </message>
    <message>
        <source>Noise of the built-in NRZ signal, RMS in dB of its level, -60 to 6 (-26).</source>
        <translation>Rauschen des eingebauten NRZ-Signals, Effektivwert in dB zu seinem Pegel, -60 bis 6 (-26).</translation>
    </message>
    <message>
        <source>Jitter of the built-in NRZ signal, RMS in unit intervals, 0 to 0.3 (0).</source>
        <translation>Jitter des eingebauten NRZ-Signals, Effektivwert in Symboldauern, 0 bis 0.3 (0).</translation>
    </message>
    <message>
        <source>Plays &lt;X&gt; seconds of signal in a second, 1e-9 to 10; max: as fast as it goes.</source>
        <translation>Spielt &lt;X&gt; Sekunden Signal in einer Sekunde, 1e-9 bis 10; max: so schnell es geht.</translation>
    </message>
    <message>
        <source>Shows a signal over time, as an eye and as a constellation: a recording, or a built-in signal when no file is given.</source>
        <translation>Zeigt ein Signal über der Zeit, als Auge und als Konstellation: eine Aufnahme oder, ohne Datei, ein eingebautes Signal.</translation>
    </message>
    <message>
        <source>mask: %1</source>
        <translation>Maske: %1</translation>
    </message>
    <message>
        <source>give some of png,svg,pdf,csv,npy</source>
        <translation>geben Sie einige von png,svg,pdf,csv,npy an</translation>
    </message>
    <message>
        <source>Tests the eye, as a density, against the mask in &lt;FILE&gt;; with --measure or --snapshot ends with 3 where it does not pass.</source>
        <translation>Prüft das Auge, als Dichte, gegen die Maske in &lt;FILE&gt;; endet mit --measure oder --snapshot mit 3, wo es nicht besteht.</translation>
    </message>
    <message>
        <source>Shows how often all symbols passed where, instead of the diagrams of eye and constellation; with --measure prints the figures of that eye, too.</source>
        <translation>Zeigt, wie oft alle Symbole wo vorbeikamen, statt der Diagramme von Auge und Konstellation; gibt mit --measure auch die Werte dieses Auges aus.</translation>
    </message>
    <message>
        <source>Files of a snapshot: any of png,svg,pdf,csv,npy; pictures and data of each view (png), npy of densities. The data of a view that has none are left out.</source>
        <translation>Dateien einer Momentaufnahme: beliebige von png,svg,pdf,csv,npy; Bilder und Daten jeder Ansicht (png), npy von Dichten. Die Daten einer Ansicht, die keine hat, fehlen.</translation>
    </message>
</context>
<context>
    <name>PaneStates</name>
    <message>
        <source>waiting for samples</source>
        <translation>wartet auf Abtastwerte</translation>
    </message>
    <message>
        <source>waiting for the clock of the symbols</source>
        <translation>wartet auf den Takt der Symbole</translation>
    </message>
    <message>
        <source>decision instants</source>
        <translation>Entscheidungszeitpunkte</translation>
    </message>
    <message>
        <source>trajectory</source>
        <translation>Trajektorie</translation>
    </message>
    <message>
        <source>before FM demodulation: trajectory</source>
        <translation>vor der FM-Demodulation: Trajektorie</translation>
    </message>
    <message>
        <source>before AM demodulation: trajectory</source>
        <translation>vor der AM-Demodulation: Trajektorie</translation>
    </message>
    <message>
        <source>the stream ended before the first sample</source>
        <translation>der Strom endete vor dem ersten Abtastwert</translation>
    </message>
    <message>
        <source>squelch closed</source>
        <translation>Rauschsperre zu</translation>
    </message>
    <message>
        <source>not locked</source>
        <translation>nicht eingerastet</translation>
    </message>
    <message>
        <source>waiting for the receiver: %1</source>
        <translation>wartet auf den Empfänger: %1</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>no symbols: %1</source>
        <translation>keine Symbole: %1</translation>
    </message>
    <message>
        <source>the clock of the symbols was not found</source>
        <translation>der Symboltakt wurde nicht gefunden</translation>
    </message>
    <message>
        <source>gate: %1</source>
        <translation>Messbereich: %1</translation>
    </message>
    <message>
        <source>paused before the first sample: play it with Space</source>
        <translation>angehalten vor dem ersten Abtastwert: mit der Leertaste abspielen</translation>
    </message>
    <message>
        <source>stands still for %1 s</source>
        <translation>steht seit %1 s</translation>
    </message>
    <message>
        <source>stands still for %1 min</source>
        <translation>steht seit %1 min</translation>
    </message>
    <message>
        <source>An eye needs some samples of each symbol: give another symbol rate under Parameters</source>
        <translation>Ein Auge braucht einige Abtastwerte je Symbol: unter Parameter eine andere Symbolrate angeben</translation>
    </message>
    <message>
        <source>An eye needs the symbol rate: give it under Parameters, or let it be estimated there</source>
        <translation>Ein Auge braucht die Symbolrate: unter Parameter angeben oder dort schätzen lassen</translation>
    </message>
    <message>
        <source>A constellation needs I and Q, but this signal has one value a sample. Where it is on a carrier, the receiver (F8) makes I and Q of it</source>
        <translation>Eine Konstellation braucht I und Q, dieses Signal hat aber nur einen Wert je Abtastung. Liegt es auf einem Träger, macht der Empfänger (F8) daraus I und Q</translation>
    </message>
    <message>
        <source>frequency in %1</source>
        <translation>Frequenz in %1</translation>
    </message>
    <message>
        <source>time in symbols</source>
        <translation>Zeit in Symbolen</translation>
    </message>
    <message>
        <source>time in %1</source>
        <translation>Zeit in %1</translation>
    </message>
    <message>
        <source>0 to 1: one symbol</source>
        <translation>0 bis 1: ein Symbol</translation>
    </message>
    <message>
        <source>0 to 1: %1 symbols</source>
        <translation>0 bis 1: %1 Symbole</translation>
    </message>
    <message>
        <source>one symbol</source>
        <translation>ein Symbol</translation>
    </message>
    <message>
        <source>%1 symbols</source>
        <translation>%1 Symbole</translation>
    </message>
    <message>
        <source>symbols</source>
        <translation>Symbole</translation>
    </message>
    <message>
        <source>The density of an eye needs more than one sample of each symbol</source>
        <translation>Die Dichte eines Auges braucht mehr als einen Abtastwert je Symbol</translation>
    </message>
    <message>
        <source>The density of a constellation counts symbols: choose a modulation for the receiver (F8) and give the symbol rate</source>
        <translation>Die Dichte einer Konstellation zählt Symbole: Wählen Sie eine Modulation für den Empfänger (F8), und geben Sie die Symbolrate an</translation>
    </message>
</context>
<context>
    <name>ParameterDock</name>
    <message>
        <source>Parameters</source>
        <translation>Parameter</translation>
    </message>
    <message>
        <source>Receiver</source>
        <translation>Empfänger</translation>
    </message>
    <message>
        <source>Density</source>
        <translation>Dichte</translation>
    </message>
</context>
<context>
    <name>PlaybackControls</name>
    <message>
        <source>&amp;Playback</source>
        <translation>&amp;Wiedergabe</translation>
    </message>
    <message>
        <source>&amp;Play</source>
        <translation>&amp;Abspielen</translation>
    </message>
    <message>
        <source>From the &amp;start</source>
        <translation>Von &amp;vorn</translation>
    </message>
    <message>
        <source>&amp;Repeat</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>%1x</source>
        <translation>%1x</translation>
    </message>
    <message>
        <source>Seconds of signal played in a second</source>
        <translation>Sekunden Signal, die in einer Sekunde gespielt werden</translation>
    </message>
    <message>
        <source>Speed</source>
        <translation>Geschwindigkeit</translation>
    </message>
    <message>
        <source>&amp;Pause</source>
        <translation>&amp;Anhalten</translation>
    </message>
    <message>
        <source>&amp;Back</source>
        <translation>&amp;Zurück</translation>
    </message>
    <message>
        <source>F&amp;orward</source>
        <translation>V&amp;orwärts</translation>
    </message>
    <message>
        <source>To the &amp;end</source>
        <translation>Zum &amp;Ende</translation>
    </message>
    <message>
        <source>Fastest</source>
        <translation>Schnellstmöglich</translation>
    </message>
    <message>
        <source>&amp;Faster</source>
        <translation>S&amp;chneller</translation>
    </message>
    <message>
        <source>S&amp;lower</source>
        <translation>&amp;Langsamer</translation>
    </message>
    <message>
        <source>&amp;Gate from here</source>
        <translation>&amp;Messbereich ab hier</translation>
    </message>
    <message>
        <source>Gate to &amp;here</source>
        <translation>Messbereich &amp;bis hier</translation>
    </message>
    <message>
        <source>Gate of &amp;all</source>
        <translation>Messbereich: alle&amp;s</translation>
    </message>
    <message>
        <source>Gate of &amp;what is shown</source>
        <translation>Messbereich wie an&amp;gezeigt</translation>
    </message>
</context>
<context>
    <name>Player</name>
    <message>
        <source>there is no channel %1; the recording has %2</source>
        <translation>es gibt keinen Kanal %1; die Aufnahme hat %2</translation>
    </message>
    <message>
        <source>an eye takes %1 to %2 samples of a symbol; give another symbol rate</source>
        <translation>ein Auge braucht %1 bis %2 Abtastwerte je Symbol; eine andere Symbolrate angeben</translation>
    </message>
</context>
<context>
    <name>Progress</name>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
</context>
<context>
    <name>QuantityEditor</name>
    <message>
        <source>&quot;%1&quot; cannot be used; give %2 to %3</source>
        <translation>„%1“ kann nicht verwendet werden; %2 bis %3 angeben</translation>
    </message>
</context>
<context>
    <name>RawDialog</name>
    <message>
        <source>Raw samples</source>
        <translation>Rohe Abtastwerte</translation>
    </message>
    <message>
        <source>c: I and Q; u, s, f: without sign, with one, floating point; bits; _be where the high byte comes first</source>
        <translation>c: I und Q; u, s, f: ohne Vorzeichen, mit, Gleitkomma; Bits; _be, wo das hohe Byte zuerst kommt</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>&amp;Format</source>
        <translation>&amp;Format</translation>
    </message>
    <message>
        <source>&amp;Sample rate</source>
        <translation>A&amp;btastrate</translation>
    </message>
    <message>
        <source>&amp;Channels</source>
        <translation>&amp;Kanäle</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>Länge</translation>
    </message>
    <message>
        <source>Choose the format of the samples, such as cu8 or cf32.</source>
        <translation>Das Format der Abtastwerte wählen, etwa cu8 oder cf32.</translation>
    </message>
    <message>
        <source>Give the sample rate, such as 250 kHz or 2e6.</source>
        <translation>Die Abtastrate angeben, etwa 250 kHz oder 2e6.</translation>
    </message>
    <message>
        <source>Look again: %1.</source>
        <translation>Bitte nachsehen: %1.</translation>
    </message>
</context>
<context>
    <name>RawGuess</name>
    <message>
        <source>its bytes look like %1 rather than %2</source>
        <translation>seine Bytes sehen eher nach %1 aus als nach %2</translation>
    </message>
    <message>
        <source>its bytes look like integers of 24 bits, which cannot be read; convert them to 32</source>
        <translation>seine Bytes sehen nach ganzen Zahlen von 24 Bit aus, die nicht gelesen werden können; wandeln Sie sie in solche von 32 um</translation>
    </message>
</context>
<context>
    <name>RawSource</name>
    <message>
        <source>cannot be read (%1)</source>
        <translation>nicht lesbar (%1)</translation>
    </message>
    <message>
        <source>Format: %1</source>
        <translation>Format: %1</translation>
    </message>
    <message>
        <source>it ends within a sample (bytes left out: %1): it was cut off, or it is not %2</source>
        <translation>sie endet mitten in einem Abtastwert (entfallende Bytes: %1): sie ist abgeschnitten oder nicht von der Art %2</translation>
    </message>
    <message>
        <source>the file was cut while it played: its samples end after %1 of %2; open it again</source>
        <translation>die Datei wurde während der Wiedergabe gekürzt: ihre Abtastwerte enden nach %1 von %2; sie neu öffnen</translation>
    </message>
    <message>
        <source>the recording holds no whole sample of the format %1; choose another one</source>
        <translation>die Aufnahme enthält keinen ganzen Abtastwert der Art %1; eine andere wählen</translation>
    </message>
</context>
<context>
    <name>Readings</name>
    <message>
        <source>Mean</source>
        <translation>Mittelwert</translation>
    </message>
    <message>
        <source>Minimum</source>
        <translation>Minimum</translation>
    </message>
    <message>
        <source>Maximum</source>
        <translation>Maximum</translation>
    </message>
    <message>
        <source>Peak to peak</source>
        <translation>Spitze-Spitze</translation>
    </message>
    <message>
        <source>RMS</source>
        <translation>Effektivwert</translation>
    </message>
    <message>
        <source>RMS (AC)</source>
        <translation>Effektiv (AC)</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>Opening</source>
        <translation>Öffnung</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>Crossing</source>
        <translation>Kreuzung</translation>
    </message>
    <message>
        <source>Jitter RMS</source>
        <translation>Jitter eff.</translation>
    </message>
    <message>
        <source>Jitter p-p</source>
        <translation>Jitter s-s</translation>
    </message>
    <message>
        <source>Q</source>
        <translation>Q</translation>
    </message>
    <message>
        <source>EVM RMS</source>
        <translation>EVM eff.</translation>
    </message>
    <message>
        <source>EVM peak</source>
        <translation>EVM max.</translation>
    </message>
    <message>
        <source>MER</source>
        <translation>MER</translation>
    </message>
    <message>
        <source>Carrier</source>
        <translation>Träger</translation>
    </message>
    <message>
        <source>Offset</source>
        <translation>Versatz</translation>
    </message>
    <message>
        <source>Imbalance</source>
        <translation>Ungleichheit</translation>
    </message>
    <message>
        <source>Quadrature</source>
        <translation>Quadratur</translation>
    </message>
    <message>
        <source>Symbol rate</source>
        <translation>Symbolrate</translation>
    </message>
    <message>
        <source>One</source>
        <comment>level</comment>
        <translation>Eins</translation>
    </message>
    <message>
        <source>Zero</source>
        <comment>level</comment>
        <translation>Null</translation>
    </message>
    <message>
        <source>σ one</source>
        <comment>noise of the level</comment>
        <translation>σ Eins</translation>
    </message>
    <message>
        <source>σ zero</source>
        <comment>noise of the level</comment>
        <translation>σ Null</translation>
    </message>
    <message>
        <source>Inner</source>
        <comment>height of the eye</comment>
        <translation>Innen</translation>
    </message>
    <message>
        <source>Instant</source>
        <comment>of the crossing</comment>
        <translation>Zeitpunkt</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>; left out: %1 symbols</source>
        <translation>; ausgelassen: %1 Symbole</translation>
    </message>
    <message>
        <source>Left out: %1</source>
        <translation>Ausgelassen: %1</translation>
    </message>
    <message>
        <source>of %1 traces, %2</source>
        <translation>aus %1 Spuren, %2</translation>
    </message>
    <message>
        <source>of %1 symbols, %2</source>
        <translation>aus %1 Symbolen, %2</translation>
    </message>
    <message>
        <source>Deviation</source>
        <translation>Hub</translation>
    </message>
    <message>
        <source>Index</source>
        <translation>Index</translation>
    </message>
    <message>
        <source>Centre</source>
        <translation>Mitte</translation>
    </message>
    <message>
        <source>Below the time diagram</source>
        <translation>Unter dem Zeitdiagramm</translation>
    </message>
    <message>
        <source>Sum of the samples / their number</source>
        <translation>Summe der Abtastwerte / ihre Anzahl</translation>
    </message>
    <message>
        <source>Lowest sample</source>
        <translation>Niedrigster Abtastwert</translation>
    </message>
    <message>
        <source>Highest sample</source>
        <translation>Höchster Abtastwert</translation>
    </message>
    <message>
        <source>Maximum - minimum</source>
        <translation>Maximum - Minimum</translation>
    </message>
    <message>
        <source>√(mean of the squared samples)</source>
        <translation>√(Mittel der Quadrate der Abtastwerte)</translation>
    </message>
    <message>
        <source>√(mean of the squared distances from the mean)</source>
        <translation>√(Mittel der Quadrate der Abstände vom Mittelwert)</translation>
    </message>
    <message>
        <source>Whole periods / their duration, of a periodic signal: between rising crossings of the middle of its two levels</source>
        <translation>Ganze Perioden / ihre Dauer, bei einem periodischen Signal: zwischen steigenden Durchgängen durch die Mitte seiner beiden Pegel</translation>
    </message>
    <message>
        <source>Below the eye diagram, for each eye</source>
        <translation>Unter dem Augendiagramm, für jedes Auge</translation>
    </message>
    <message>
        <source>(m₁ - m₀) - 3 (σ₁ + σ₀), of the levels at the instants of decision: their means m and standard deviations σ</source>
        <translation>(m₁ - m₀) - 3 (σ₁ + σ₀), von den Pegeln zu den Entscheidungszeitpunkten: ihre Mittelwerte m und Standardabweichungen σ</translation>
    </message>
    <message>
        <source>Height / (m₁ - m₀); 0 % where the eye is closed</source>
        <translation>Höhe / (m₁ - m₀); 0 %, wo das Auge geschlossen ist</translation>
    </message>
    <message>
        <source>From the crossings on the left to those on the right, less 3 standard deviations of each, in symbol periods (UI)</source>
        <translation>Von den Kreuzungen links bis zu denen rechts, abzüglich je 3 Standardabweichungen, in Symbolperioden (UI)</translation>
    </message>
    <message>
        <source>(Level at which mean rising and mean falling traces cross - m₀) / (m₁ - m₀); 50 % where ones and zeros last equally long</source>
        <translation>(Pegel, auf dem sich mittlere steigende und mittlere fallende Spuren kreuzen - m₀) / (m₁ - m₀); 50 %, wo Einsen und Nullen gleich lange dauern</translation>
    </message>
    <message>
        <source>Standard deviation of the times at which single traces cross that level, in symbol periods (UI)</source>
        <translation>Standardabweichung der Zeiten, zu denen einzelne Spuren diesen Pegel kreuzen, in Symbolperioden (UI)</translation>
    </message>
    <message>
        <source>Latest less earliest of these times, in symbol periods (UI); grows with the length of the gate</source>
        <translation>Späteste minus früheste dieser Zeiten, in Symbolperioden (UI); wächst mit der Länge des Messbereichs</translation>
    </message>
    <message>
        <source>(m₁ - m₀) / (σ₁ + σ₀)</source>
        <translation>(m₁ - m₀) / (σ₁ + σ₀)</translation>
    </message>
    <message>
        <source>Lowest sample of the ones - highest of the zeros, at the instants of decision</source>
        <translation>Niedrigster Abtastwert der Einsen - höchster der Nullen, zu den Entscheidungszeitpunkten</translation>
    </message>
    <message>
        <source>m₁, mean of the ones at the instants of decision</source>
        <translation>m₁, Mittelwert der Einsen zu den Entscheidungszeitpunkten</translation>
    </message>
    <message>
        <source>m₀, mean of the zeros at the instants of decision</source>
        <translation>m₀, Mittelwert der Nullen zu den Entscheidungszeitpunkten</translation>
    </message>
    <message>
        <source>When traces cross, from the instant of decision on, in symbol periods (UI); -0.5 where that is in the middle of the eye</source>
        <translation>Wann sich Spuren kreuzen, vom Entscheidungszeitpunkt an, in Symbolperioden (UI); -0.5, wo dieser in der Mitte des Auges liegt</translation>
    </message>
    <message>
        <source>σ₁, standard deviation of the ones</source>
        <translation>σ₁, Standardabweichung der Einsen</translation>
    </message>
    <message>
        <source>σ₀, standard deviation of the zeros</source>
        <translation>σ₀, Standardabweichung der Nullen</translation>
    </message>
    <message>
        <source>Below the IQ diagram</source>
        <translation>Unter dem IQ-Diagramm</translation>
    </message>
    <message>
        <source>RMS of the distances from the ideal points / RMS of the ideal points, at the instants of decision, once turn and scale fit best</source>
        <translation>Effektivwert der Abstände von den idealen Punkten / Effektivwert der idealen Punkte, zu den Entscheidungszeitpunkten, bei bester Drehung und Skalierung</translation>
    </message>
    <message>
        <source>Largest distance from an ideal point / RMS of the ideal points; grows with the number of symbols</source>
        <translation>Größter Abstand von einem idealen Punkt / Effektivwert der idealen Punkte; wächst mit der Zahl der Symbole</translation>
    </message>
    <message>
        <source>-20 log₁₀(EVM RMS)</source>
        <translation>-20 log₁₀(EVM eff.)</translation>
    </message>
    <message>
        <source>Carrier frequency above the middle of the channel ± its standard deviation</source>
        <translation>Trägerfrequenz über der Mitte des Kanals ± ihre Standardabweichung</translation>
    </message>
    <message>
        <source>10 log₁₀(power that all points have in common / power of the points)</source>
        <translation>10 log₁₀(Leistung, die alle Punkte gemeinsam haben / Leistung der Punkte)</translation>
    </message>
    <message>
        <source>20 log₁₀(gain of I / gain of Q)</source>
        <translation>20 log₁₀(Verstärkung von I / Verstärkung von Q)</translation>
    </message>
    <message>
        <source>By how much the axes of I and Q miss a right angle</source>
        <translation>Um wie viel die Achsen von I und Q vom rechten Winkel abweichen</translation>
    </message>
    <message>
        <source>By how much symbols come faster than at the nominal rate, in parts per million ± their standard deviation</source>
        <translation>Um wie viel die Symbole schneller kommen als nominell, in Millionsteln ± ihre Standardabweichung</translation>
    </message>
    <message>
        <source>Of FM: frequency of the outer levels from their middle, at the instants of decision</source>
        <translation>Bei FM: Frequenz der äußeren Pegel ab ihrer Mitte, zu den Entscheidungszeitpunkten</translation>
    </message>
    <message>
        <source>Of FM: distance of neighbouring levels / symbol rate</source>
        <translation>Bei FM: Abstand benachbarter Pegel / Symbolrate</translation>
    </message>
    <message>
        <source>Of FM: middle of the levels above the middle of the channel</source>
        <translation>Bei FM: Mitte der Pegel über der Mitte des Kanals</translation>
    </message>
</context>
<context>
    <name>ReceiverPanel</name>
    <message>
        <source>&amp;Receiver on</source>
        <translation>&amp;Empfänger an</translation>
    </message>
    <message>
        <source>Added to every frequency</source>
        <translation>Wird zu jeder Frequenz addiert</translation>
    </message>
    <message>
        <source>Frequenc&amp;y shift</source>
        <translation>Frequenz&amp;verschiebung</translation>
    </message>
    <message>
        <source>no filter</source>
        <translation>kein Filter</translation>
    </message>
    <message>
        <source>Width of the channel about 0 Hz</source>
        <translation>Breite des Kanals um 0 Hz</translation>
    </message>
    <message>
        <source>Channel &amp;width</source>
        <translation>Kanal&amp;breite</translation>
    </message>
    <message>
        <source>I and Q</source>
        <translation>I und Q</translation>
    </message>
    <message>
        <source>FM</source>
        <translation>FM</translation>
    </message>
    <message>
        <source>AM</source>
        <translation>AM</translation>
    </message>
    <message>
        <source>&amp;Demodulation</source>
        <translation>De&amp;modulation</translation>
    </message>
    <message>
        <source>&amp;Gain control</source>
        <translation>Verstärk&amp;ungsregelung</translation>
    </message>
    <message>
        <source>Level before</source>
        <translation>Pegel davor</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keines</translation>
    </message>
    <message>
        <source>&amp;Matched filter</source>
        <translation>An&amp;gepasstes Filter</translation>
    </message>
    <message>
        <source>Symbol &amp;timing</source>
        <translation>&amp;Symboltakt</translation>
    </message>
    <message>
        <source>Symbol rate error</source>
        <translation>Symbolratenfehler</translation>
    </message>
    <message>
        <source>Timing error</source>
        <translation>Taktfehler</translation>
    </message>
    <message>
        <source>&amp;Carrier of</source>
        <translation>&amp;Träger von</translation>
    </message>
    <message>
        <source>Modulation of the carrier that is recovered</source>
        <translation>Modulation des Trägers, der zurückgewonnen wird</translation>
    </message>
    <message>
        <source>Carrier offset</source>
        <translation>Trägerversatz</translation>
    </message>
    <message>
        <source>Phase error</source>
        <translation>Phasenfehler</translation>
    </message>
    <message>
        <source>searching</source>
        <translation>sucht</translation>
    </message>
    <message>
        <source>The built-in signals need no receiver: open a recording or a stream.</source>
        <translation>Die eingebauten Signale brauchen keinen Empfänger: Öffnen Sie eine Aufnahme oder einen Datenstrom.</translation>
    </message>
    <message>
        <source>Symbols can be recovered once the symbol rate is given.</source>
        <translation>Symbole können zurückgewonnen werden, sobald die Symbolrate angegeben ist.</translation>
    </message>
    <message>
        <source>locked</source>
        <translation>eingerastet</translation>
    </message>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
    <message>
        <source>Symbols only</source>
        <translation>Nur Symbole</translation>
    </message>
    <message>
        <source>Shows nothing where no symbols are found, however loud it is</source>
        <translation>Zeigt nichts, wo keine Symbole gefunden werden, wie laut es auch ist</translation>
    </message>
    <message>
        <source>Level of the channel, of full scale, below which nothing is shown</source>
        <translation>Pegel des Kanals, von der Vollaussteuerung, unter dem nichts gezeigt wird</translation>
    </message>
    <message>
        <source>Squelch</source>
        <translation>Rauschsperre</translation>
    </message>
    <message>
        <source>S&amp;quelch</source>
        <translation>Rauschs&amp;perre</translation>
    </message>
    <message>
        <source>open</source>
        <translation>offen</translation>
    </message>
    <message>
        <source>closed</source>
        <translation>zu</translation>
    </message>
    <message>
        <source>root raised cosine</source>
        <translation>Wurzel-Kosinus</translation>
    </message>
    <message>
        <source>raised cosine</source>
        <translation>Kosinus</translation>
    </message>
    <message>
        <source>Gaussian</source>
        <translation>Gauß</translation>
    </message>
    <message>
        <source>boxcar</source>
        <translation>Rechteck</translation>
    </message>
    <message>
        <source>half sine</source>
        <translation>Halbsinus</translation>
    </message>
    <message>
        <source>Matched to the pulses that were sent, or such that opens an eye</source>
        <translation>Den gesendeten Impulsen angepasst, oder so, dass sich ein Auge öffnet</translation>
    </message>
    <message>
        <source>usual</source>
        <translation>üblich</translation>
    </message>
    <message>
        <source>Roll-off of the filter; of a Gaussian one its bandwidth in symbol rates</source>
        <translation>Roll-off des Filters; bei Gauß die Bandbreite in Symbolraten</translation>
    </message>
    <message>
        <source>Rem&amp;ove what is at 0 Hz</source>
        <translation>Ohne Anteil bei &amp;0 Hz</translation>
    </message>
    <message>
        <source>Ro&amp;ll-off</source>
        <translation>Ro&amp;ll-off</translation>
    </message>
</context>
<context>
    <name>ReceiverSettings</name>
    <message>
        <source>a shift of %1 Hz is more than the sample rate; give a smaller one</source>
        <translation>eine Verschiebung um %1 Hz ist mehr als die Abtastrate; geben Sie eine kleinere an</translation>
    </message>
    <message>
        <source>a channel of %1 Hz cannot be had; give a bandwidth of %2 to less than %3 Hz</source>
        <translation>ein Kanal von %1 Hz ist nicht möglich; geben Sie eine Bandbreite von %2 bis unter %3 Hz an</translation>
    </message>
    <message>
        <source>a roll-off of %1 cannot be had; give %2 to %3</source>
        <translation>ein Roll-off von %1 ist nicht möglich; geben Sie %2 bis %3 an</translation>
    </message>
    <message>
        <source>a receiver takes %1 to %2 samples of a symbol, which a symbol rate of %3 Bd does not give; give another one</source>
        <translation>ein Empfänger braucht %1 bis %2 Abtastwerte je Symbol, die eine Symbolrate von %3 Bd nicht gibt; geben Sie eine andere an</translation>
    </message>
    <message>
        <source>a squelch of %1 dB cannot be had; give %2 to %3</source>
        <translation>eine Rauschsperre von %1 dB gibt es nicht; %2 bis %3 angeben</translation>
    </message>
</context>
<context>
    <name>Recording</name>
    <message>
        <source>there is no such file; check the name</source>
        <translation>es gibt keine solche Datei; den Namen prüfen</translation>
    </message>
    <message>
        <source>this is a folder; name a recording that is in it</source>
        <translation>dies ist ein Ordner; eine Aufnahme darin nennen</translation>
    </message>
    <message>
        <source>this is not a regular file; name a recording</source>
        <translation>dies ist keine gewöhnliche Datei; eine Aufnahme nennen</translation>
    </message>
    <message>
        <source>no permission to read it; change the file&apos;s permissions</source>
        <translation>keine Leseerlaubnis; die Rechte der Datei ändern</translation>
    </message>
    <message>
        <source>the file is empty; name one that holds samples</source>
        <translation>die Datei ist leer; eine mit Abtastwerten nennen</translation>
    </message>
    <message>
        <source>Name: %1</source>
        <translation>Name: %1</translation>
    </message>
    <message>
        <source>Sample rate: %1 Hz</source>
        <translation>Abtastrate: %1 Hz</translation>
    </message>
    <message>
        <source>Channels: %1, complex</source>
        <translation>Kanäle: %1, komplex</translation>
    </message>
    <message>
        <source>Channels: %1</source>
        <translation>Kanäle: %1</translation>
    </message>
    <message>
        <source>Samples: %1, %2 s</source>
        <translation>Abtastwerte: %1, %2 s</translation>
    </message>
    <message>
        <source>this kind of address is not known; give zmq://HOST:PORT, soapy://driver=NAME,freq=HZ,rate=HZ, or the name of a recording</source>
        <translation>diese Art von Adresse ist nicht bekannt; zmq://HOST:PORT, soapy://driver=NAME,freq=HZ,rate=HZ oder den Namen einer Aufnahme angeben</translation>
    </message>
    <message>
        <source>this is a pointer of a large-file store, not the samples; fetch the samples first</source>
        <translation>das ist ein Verweis in einen Speicher für große Dateien, nicht die Abtastwerte; sie zuerst holen</translation>
    </message>
    <message>
        <source>the sample rate is not known, %1 Hz is assumed</source>
        <translation>die Abtastrate ist nicht bekannt, %1 Hz sind angenommen</translation>
    </message>
</context>
<context>
    <name>RecordingOpener</name>
    <message>
        <source>the sample rate is not given, %1 Hz is taken from the name</source>
        <translation>die Abtastrate ist nicht angegeben, %1 Hz ist aus dem Namen übernommen</translation>
    </message>
    <message>
        <source>a live signal has no columns</source>
        <translation>ein laufendes Signal hat keine Spalten</translation>
    </message>
    <message>
        <source>the device says itself what its samples are</source>
        <translation>das Gerät sagt selbst, was seine Abtastwerte sind</translation>
    </message>
    <message>
        <source>messages do not say their sample rate</source>
        <translation>Nachrichten nennen ihre Abtastrate nicht</translation>
    </message>
    <message>
        <source>raw samples do not say what they are</source>
        <translation>rohe Abtastwerte sagen nicht, was sie sind</translation>
    </message>
    <message>
        <source>this is a terminal; pipe samples into it</source>
        <translation>das ist ein Terminal; Abtastwerte durch eine Pipe hineinleiten</translation>
    </message>
    <message>
        <source>its samples cannot be read; choose another one</source>
        <translation>ihre Abtastwerte sind nicht lesbar; eine andere wählen</translation>
    </message>
    <message>
        <source>it holds no numbers, only what is missing, NaN or infinite; choose another one</source>
        <translation>sie enthält keine Zahlen, nur was fehlt, NaN oder unendlich ist; eine andere wählen</translation>
    </message>
    <message>
        <source>%1 of its first %2 numbers are missing, NaN or infinite; they are bridged or left out</source>
        <translation>%1 ihrer ersten %2 Zahlen fehlen, sind NaN oder unendlich; sie werden überbrückt oder entfallen</translation>
    </message>
</context>
<context>
    <name>SeekBar</name>
    <message>
        <source>Position</source>
        <translation>Position</translation>
    </message>
    <message>
        <source>Position in the signal</source>
        <translation>Position im Signal</translation>
    </message>
    <message>
        <source>Position / length</source>
        <translation>Position / Länge</translation>
    </message>
</context>
<context>
    <name>Sigmf</name>
    <message>
        <source>a collection lists recordings; open one of them</source>
        <translation>eine Sammlung zählt Aufnahmen auf; eine davon öffnen</translation>
    </message>
    <message>
        <source>its metadata %1: %2</source>
        <translation>ihre Metadaten %1: %2</translation>
    </message>
    <message>
        <source>cannot be read (%1)</source>
        <translation>nicht lesbar (%1)</translation>
    </message>
    <message>
        <source>these are metadata only, meant to be without samples</source>
        <translation>dies sind nur Metadaten, mit Absicht ohne Abtastwerte</translation>
    </message>
    <message>
        <source>its samples %1: %2</source>
        <translation>ihre Abtastwerte %1: %2</translation>
    </message>
    <message>
        <source>the archive holds no samples %1 beside the metadata</source>
        <translation>das Archiv enthält neben den Metadaten keine Abtastwerte %1</translation>
    </message>
    <message>
        <source>the archive was cut off, the samples that are left are shown</source>
        <translation>das Archiv ist abgeschnitten, gezeigt werden die verbliebenen Abtastwerte</translation>
    </message>
    <message>
        <source>the archive holds %1 recordings, %2 is shown; unpack it to open the others</source>
        <translation>das Archiv enthält %1 Aufnahmen, gezeigt wird %2; für die anderen das Archiv auspacken</translation>
    </message>
    <message>
        <source>it was cut off: the metadata speak of %1 samples, %2 are there</source>
        <translation>sie ist abgeschnitten: die Metadaten sprechen von %1 Abtastwerten, %2 sind da</translation>
    </message>
    <message>
        <source>Checksum: not compared, which takes too long above %1 bytes</source>
        <translation>Prüfsumme: nicht verglichen, was über %1 Bytes zu lange dauert</translation>
    </message>
    <message>
        <source>opening was given up</source>
        <translation>das Öffnen wurde abgebrochen</translation>
    </message>
    <message>
        <source>its samples are not those that its metadata were written for (core:sha512 differs): they were changed or damaged</source>
        <translation>ihre Abtastwerte sind nicht die, zu denen ihre Metadaten gehören (core:sha512 weicht ab): sie wurden geändert oder beschädigt</translation>
    </message>
    <message>
        <source>Checksum: right</source>
        <translation>Prüfsumme: richtig</translation>
    </message>
    <message>
        <source>Checksum: wrong</source>
        <translation>Prüfsumme: falsch</translation>
    </message>
    <message>
        <source>its checksum cannot be compared: its samples cannot be read (%1)</source>
        <translation>ihre Prüfsumme ist nicht zu vergleichen: ihre Abtastwerte sind nicht lesbar (%1)</translation>
    </message>
</context>
<context>
    <name>SigmfArchive</name>
    <message>
        <source>cannot be read (%1)</source>
        <translation>nicht lesbar (%1)</translation>
    </message>
    <message>
        <source>not an archive that can be read (%1); a SigMF archive is a tar archive without compression</source>
        <translation>kein lesbares Archiv (%1); ein SigMF-Archiv ist ein unkomprimiertes tar-Archiv</translation>
    </message>
    <message>
        <source>the archive holds no SigMF recording; choose another one</source>
        <translation>das Archiv enthält keine SigMF-Aufnahme; ein anderes wählen</translation>
    </message>
</context>
<context>
    <name>SigmfGaps</name>
    <message>
        <source>samples are missing between its captures (%1, the first before sample %2; places: %3), what is on either side is shown joined</source>
        <translation>zwischen ihren Aufzeichnungen fehlen Abtastwerte (%1, die ersten vor Abtastwert %2; Stellen: %3), was davor und danach liegt, schließt aneinander an</translation>
    </message>
    <message>
        <source>about %1</source>
        <translation>etwa %1</translation>
    </message>
</context>
<context>
    <name>SigmfMetadata</name>
    <message>
        <source>the metadata lack the list &quot;%1&quot;</source>
        <translation>den Metadaten fehlt die Liste „%1“</translation>
    </message>
    <message>
        <source>core:num_channels is %1, not a whole number from 1 to %2; mend the metadata</source>
        <translation>core:num_channels ist %1, keine ganze Zahl von 1 bis %2; die Metadaten berichtigen</translation>
    </message>
    <message>
        <source>core:dataset is &quot;%1&quot;, not the name of a file beside the metadata; mend them</source>
        <translation>core:dataset ist „%1“, nicht der Name einer Datei neben den Metadaten; diese berichtigen</translation>
    </message>
    <message>
        <source>the metadata lack core:version</source>
        <translation>den Metadaten fehlt core:version</translation>
    </message>
    <message>
        <source>the extension &quot;%1&quot; is not known, though the recording needs it</source>
        <translation>die Erweiterung „%1“ ist nicht bekannt, obwohl die Aufnahme sie braucht</translation>
    </message>
    <message>
        <source>Capture: %1</source>
        <translation>Aufzeichnung: %1</translation>
    </message>
    <message>
        <source>Annotation: %1</source>
        <translation>Anmerkung: %1</translation>
    </message>
    <message>
        <source>Further captures and annotations: %1</source>
        <translation>Weitere Aufzeichnungen und Anmerkungen: %1</translation>
    </message>
    <message>
        <source>the metadata are longer than %1 bytes</source>
        <translation>die Metadaten sind länger als %1 Bytes</translation>
    </message>
    <message>
        <source>the metadata are not JSON (%1 at byte %2); mend them</source>
        <translation>die Metadaten sind kein JSON (%1 bei Byte %2); berichtigen</translation>
    </message>
    <message>
        <source>the metadata lack the object &quot;global&quot;; mend them</source>
        <translation>den Metadaten fehlt das Objekt „global“; berichtigen</translation>
    </message>
    <message>
        <source>the metadata lack core:datatype; mend them</source>
        <translation>den Metadaten fehlt core:datatype; berichtigen</translation>
    </message>
    <message>
        <source>core:datatype is &quot;%1&quot;, which is unknown; mend the metadata</source>
        <translation>core:datatype ist „%1“, das ist unbekannt; die Metadaten berichtigen</translation>
    </message>
    <message>
        <source>core:sample_rate is %1, not a number from %2 to %3</source>
        <translation>core:sample_rate ist %1, keine Zahl von %2 bis %3</translation>
    </message>
</context>
<context>
    <name>SignalPanel</name>
    <message>
        <source>Signal</source>
        <translation>Signal</translation>
    </message>
    <message>
        <source>Sample rate</source>
        <translation>Abtastrate</translation>
    </message>
    <message>
        <source>S&amp;ymbol rate</source>
        <translation>S&amp;ymbolrate</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>Länge</translation>
    </message>
    <message>
        <source>Est&amp;imate</source>
        <translation>Schät&amp;zen</translation>
    </message>
    <message>
        <source>Looks for the symbol rate in the samples about the present time</source>
        <translation>Sucht die Symbolrate in den Abtastwerten um die jetzige Zeit</translation>
    </message>
    <message>
        <source>Channel</source>
        <translation>Kanal</translation>
    </message>
    <message>
        <source>Channel that is subtracted</source>
        <translation>Kanal, der abgezogen wird</translation>
    </message>
    <message>
        <source>&amp;Channel</source>
        <translation>&amp;Kanal</translation>
    </message>
    <message>
        <source>none found</source>
        <translation>keine gefunden</translation>
    </message>
    <message>
        <source>unsure, %1</source>
        <translation>unsicher, %1</translation>
    </message>
    <message>
        <source>sure</source>
        <translation>sicher</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>endless</source>
        <translation>endlos</translation>
    </message>
    <message>
        <source>live</source>
        <translation>live</translation>
    </message>
    <message>
        <source>of %1</source>
        <translation>von %1</translation>
    </message>
    <message>
        <source>alone</source>
        <translation>allein</translation>
    </message>
</context>
<context>
    <name>Snapshot</name>
    <message>
        <source>%1: cannot create the folder; choose another place</source>
        <translation>%1: der Ordner kann nicht angelegt werden; einen anderen Ort wählen</translation>
    </message>
    <message>
        <source>OpenGL: no context can be created; check the graphics driver</source>
        <translation>OpenGL: kein Kontext möglich; den Grafiktreiber prüfen</translation>
    </message>
    <message>
        <source>%1: cannot be written (%2); choose another folder</source>
        <translation>%1: kann nicht geschrieben werden (%2); einen anderen Ordner wählen</translation>
    </message>
    <message>
        <source>no samples came, so there is nothing to show; check who sends them</source>
        <translation>es kamen keine Abtastwerte, also gibt es nichts zu zeigen; prüfen Sie, wer sie sendet</translation>
    </message>
    <message>
        <source>%1; play more seconds, or another channel</source>
        <translation>%1; spielen Sie mehr Sekunden ab oder einen anderen Kanal</translation>
    </message>
    <message>
        <source>%1: left out, there are no data to write</source>
        <translation>%1: ausgelassen, es gibt keine Daten zu schreiben</translation>
    </message>
</context>
<context>
    <name>SoapySource</name>
    <message>
        <source>%1=%2 cannot be used; give a number from %3 to %4</source>
        <translation>%1=%2 ist nicht verwendbar; eine Zahl von %3 bis %4 angeben</translation>
    </message>
    <message>
        <source>no device was found: plug one in, or install its SoapySDR module</source>
        <translation>kein Gerät wurde gefunden: eines anschließen oder sein SoapySDR-Modul installieren</translation>
    </message>
    <message>
        <source>the devices found are: %1</source>
        <translation>gefundene Geräte: %1</translation>
    </message>
    <message>
        <source>no device is named, such as soapy://driver=rtlsdr; %1</source>
        <translation>kein Gerät ist genannt, etwa soapy://driver=rtlsdr; %1</translation>
    </message>
    <message>
        <source>its sample rate is not known; add rate=HZ to the address</source>
        <translation>die Abtastrate ist nicht bekannt; rate=HZ an die Adresse anfügen</translation>
    </message>
    <message>
        <source>the device has no channel %1 to receive on; choose another</source>
        <translation>das Gerät hat keinen Empfangskanal %1; einen anderen wählen</translation>
    </message>
    <message>
        <source>the device cannot be opened (%1); %2</source>
        <translation>das Gerät kann nicht geöffnet werden (%1); %2</translation>
    </message>
    <message>
        <source>there is no such device; %1</source>
        <translation>dieses Gerät gibt es nicht; %1</translation>
    </message>
    <message>
        <source>the device cannot be used like this (%1); change the address</source>
        <translation>das Gerät kann so nicht benutzt werden (%1); die Adresse ändern</translation>
    </message>
    <message>
        <source>the device has failed (%1); check it and open it again</source>
        <translation>das Gerät ist ausgefallen (%1); es prüfen und neu öffnen</translation>
    </message>
    <message>
        <source>the sample rate that is given is not the rate of the address; leave out one of them</source>
        <translation>die angegebene Abtastrate ist nicht die der Adresse; eine von beiden weglassen</translation>
    </message>
</context>
<context>
    <name>StatusFields</name>
    <message>
        <source>Sample rate</source>
        <translation>Abtastrate</translation>
    </message>
    <message>
        <source>%1 fps</source>
        <translation>%1 Bilder/s</translation>
    </message>
    <message>
        <source>%1 % left out</source>
        <translation>%1 % ausgelassen</translation>
    </message>
    <message>
        <source>Pictures of the first view in a second</source>
        <translation>Bilder der ersten Ansicht je Sekunde</translation>
    </message>
    <message>
        <source>Sample rate of what is shown; the source has %1</source>
        <translation>Abtastrate dessen, was gezeigt wird; die Quelle hat %1</translation>
    </message>
    <message>
        <source>Part of the signal that came too fast or was lost, in %1 gaps</source>
        <translation>Teil des Signals, der zu schnell kam oder verloren ging, in %1 Lücken</translation>
    </message>
</context>
<context>
    <name>StreamDialog</name>
    <message>
        <source>Open stream</source>
        <translation>Datenstrom öffnen</translation>
    </message>
    <message>
        <source>&amp;Address</source>
        <translation>&amp;Adresse</translation>
    </message>
    <message>
        <source>&amp;Format</source>
        <translation>&amp;Format</translation>
    </message>
    <message>
        <source>&amp;Sample rate, Hz</source>
        <translation>Abtast&amp;rate, Hz</translation>
    </message>
    <message>
        <source>Give zmq://HOST:PORT for a ZeroMQ publisher, soapy://driver=NAME,... for a radio, or - for standard input.</source>
        <translation>zmq://HOST:PORT für einen ZeroMQ-Sender, soapy://driver=NAME,... für ein Funkgerät oder - für die Standardeingabe angeben.</translation>
    </message>
    <message>
        <source>Give the sample rate in hertz, such as 2e6.</source>
        <translation>Die Abtastrate in Hertz angeben, etwa 2e6.</translation>
    </message>
</context>
<context>
    <name>StreamSource</name>
    <message>
        <source>it cannot be read (%1)</source>
        <translation>kann nicht gelesen werden (%1)</translation>
    </message>
    <message>
        <source>it ended within a sample (bytes left out: %1): it was cut off, or it is not %2</source>
        <translation>endete mitten in einem Abtastwert (ausgelassene Bytes: %1): abgeschnitten, oder nicht %2</translation>
    </message>
    <message>
        <source>it ended before a sample came; start the program that writes them</source>
        <translation>endete, bevor ein Abtastwert kam; das Programm starten, das sie schreibt</translation>
    </message>
    <message>
        <source>it has ended</source>
        <translation>ist zu Ende</translation>
    </message>
</context>
<context>
    <name>SymbolRateEstimate</name>
    <message>
        <source>symbol rate: %1 Bd (sure)</source>
        <translation>Symbolrate: %1 Bd (sicher)</translation>
    </message>
    <message>
        <source>symbol rate: %1 Bd (unsure, %2 of 1); look whether the eye opens there, at half or at twice of it</source>
        <translation>Symbolrate: %1 Bd (unsicher, %2 von 1); prüfen Sie, ob das Auge sich dort öffnet, bei der Hälfte oder beim Doppelten</translation>
    </message>
    <message>
        <source>symbol rate: %1 Bd (unsure, %2 of 1), or %3 Bd: half bits of a Manchester code have twice the rate of the bits</source>
        <translation>Symbolrate: %1 Bd (unsicher, %2 von 1) oder %3 Bd: halbe Bits eines Manchester-Codes haben die doppelte Rate der Bits</translation>
    </message>
    <message>
        <source>symbol rate: %1 Bd (unsure, %2 of 1), or %3 Bd: pulses that return to rest fill half of their bits, and half bits have twice the rate</source>
        <translation>Symbolrate: %1 Bd (unsicher, %2 von 1) oder %3 Bd: Pulse mit Rückkehr zur Ruhe füllen die Hälfte ihrer Bits, und halbe Bits haben die doppelte Rate</translation>
    </message>
    <message>
        <source>symbol rate: none found</source>
        <translation>Symbolrate: keine gefunden</translation>
    </message>
</context>
<context>
    <name>TimePanel</name>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>&amp;Span</source>
        <translation>&amp;Spanne</translation>
    </message>
    <message>
        <source>symbols</source>
        <translation>Symbole</translation>
    </message>
    <message>
        <source>seconds</source>
        <translation>Sekunden</translation>
    </message>
    <message>
        <source>What the time axis counts, and the times of the eye</source>
        <translation>Was die Zeitachse zählt, und worin die Zeiten des Auges sind</translation>
    </message>
    <message>
        <source>A&amp;xis counts</source>
        <translation>A&amp;chse zählt</translation>
    </message>
    <message>
        <source>Axis unit T</source>
        <translation>Einheit T</translation>
    </message>
    <message>
        <source>Trace</source>
        <translation>Kurve</translation>
    </message>
    <message>
        <source>1 symbol = %1</source>
        <translation>1 Symbol = %1</translation>
    </message>
    <message>
        <source>%1 samples</source>
        <translation>%1 Abtastwerte</translation>
    </message>
</context>
<context>
    <name>Trouble</name>
    <message>
        <source>there is not enough memory for it; close other programs and open it again</source>
        <translation>der Speicher reicht dafür nicht; andere Programme schließen und sie neu öffnen</translation>
    </message>
    <message>
        <source>it cannot be read after sample %1 (%2); open it again, or copy it elsewhere first</source>
        <translation>sie ist nach Abtastwert %1 nicht lesbar (%2); sie neu öffnen oder zuvor anderswohin kopieren</translation>
    </message>
</context>
<context>
    <name>ViewExport</name>
    <message>
        <source>there are no data to export yet; play the signal first</source>
        <translation>es gibt noch keine Daten zum Exportieren; spielen Sie zuerst das Signal ab</translation>
    </message>
    <message>
        <source>a picture of %1 x %2 pixels cannot be made; give up to %3, or fewer where there is not enough memory</source>
        <translation>ein Bild von %1 x %2 Pixeln ist nicht möglich; geben Sie bis zu %3 an oder, wo der Speicher nicht reicht, weniger</translation>
    </message>
    <message>
        <source>%1: cannot be written (%2); choose another place</source>
        <translation>%1: kann nicht geschrieben werden (%2); wählen Sie einen anderen Ort</translation>
    </message>
    <message>
        <source>the figures take more than half of the picture; make it larger or leave them out</source>
        <translation>die Werte nehmen mehr als die Hälfte des Bildes ein; es vergrößern oder sie weglassen</translation>
    </message>
    <message>
        <source>there is not enough memory for its data; show a shorter time</source>
        <translation>für ihre Daten fehlt Speicher; zeigen Sie eine kürzere Zeit</translation>
    </message>
    <message>
        <source>%1: exists already; give the whole name to replace it</source>
        <translation>%1: gibt es schon; zum Ersetzen den ganzen Namen angeben</translation>
    </message>
</context>
<context>
    <name>ViewMenu</name>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Auto scale</source>
        <translation>A&amp;utomatisch</translation>
    </message>
    <message>
        <source>&amp;Full scale</source>
        <translation>&amp;Vollaussteuerung</translation>
    </message>
    <message>
        <source>%1 setup</source>
        <translation>%1 einrichten</translation>
    </message>
    <message>
        <source>&amp;Parameters</source>
        <translation>&amp;Parameter</translation>
    </message>
    <message>
        <source>F&amp;ull screen</source>
        <translation>Voll&amp;bild</translation>
    </message>
    <message>
        <source>T&amp;rajectory of I and Q</source>
        <translation>&amp;Trajektorie von I und Q</translation>
    </message>
    <message>
        <source>Shows the way between the symbols, too</source>
        <translation>Zeigt auch den Weg zwischen den Symbolen</translation>
    </message>
    <message>
        <source>Re&amp;ceiver</source>
        <translation>&amp;Empfänger</translation>
    </message>
</context>
<context>
    <name>ViewPanes</name>
    <message>
        <source>&amp;Measurements</source>
        <translation>&amp;Messwerte</translation>
    </message>
</context>
<context>
    <name>WayBack</name>
    <message>
        <source>nothing passed at %1</source>
        <translation>bei %1 kam nichts vorbei</translation>
    </message>
    <message>
        <source>%1 passed at %2</source>
        <translation>%1 kamen bei %2 vorbei</translation>
    </message>
    <message>
        <source>%1 of %2 at %3: symbol %4</source>
        <translation>%1 von %2 bei %3: Symbol %4</translation>
    </message>
    <message>
        <source>%1, whose samples are not kept any more</source>
        <translation>%1, dessen Abtastwerte nicht mehr da sind</translation>
    </message>
</context>
<context>
    <name>ZmqSource</name>
    <message>
        <source>this is not the address of a publisher; give one such as zmq://127.0.0.1:5555</source>
        <translation>das ist nicht die Adresse eines Senders; eine wie zmq://127.0.0.1:5555 angeben</translation>
    </message>
    <message>
        <source>the host %1 is not known; check the name</source>
        <translation>der Rechner %1 ist nicht bekannt; den Namen prüfen</translation>
    </message>
    <message>
        <source>cannot be connected to (%1); check the address</source>
        <translation>keine Verbindung möglich (%1); die Adresse prüfen</translation>
    </message>
    <message>
        <source>who answers is not a ZeroMQ publisher: trying again</source>
        <translation>wer antwortet, ist kein ZeroMQ-Sender: neuer Versuch</translation>
    </message>
    <message>
        <source>the publisher is gone: reconnecting</source>
        <translation>der Sender ist verschwunden: Verbindung wird neu gesucht</translation>
    </message>
    <message>
        <source>the publisher does not answer: trying again</source>
        <translation>der Sender antwortet nicht: neuer Versuch</translation>
    </message>
    <message>
        <source>messages are not whole samples of %1 (%2 left out, the last of %3 bytes); check the format, and that no tags are sent</source>
        <translation>Nachrichten sind keine ganzen Abtastwerte von %1 (%2 ausgelassen, die letzte mit %3 Bytes); das Format prüfen, und dass keine Marken gesendet werden</translation>
    </message>
    <message>
        <source>the publisher sends a message of more than %1 bytes: connecting again</source>
        <translation>der Sender schickt eine Nachricht von mehr als %1 Bytes: neue Verbindung</translation>
    </message>
</context>
<context>
    <name>refusedInput::Watch</name>
    <message>
        <source>only %1 to %2 can be given</source>
        <translation>nur %1 bis %2 möglich</translation>
    </message>
</context>
</TS>
