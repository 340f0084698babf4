<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>COrmClickModel</name>
    <message>
        <source>Image</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Emission</source>
        <translation>Emission</translation>
    </message>
    <message>
        <source>Excitation</source>
        <translation>Anregung</translation>
    </message>
    <message>
        <source>Exposure</source>
        <translation>Belichtung</translation>
    </message>
</context>
<context>
    <name>COrmDemoStudy</name>
    <message>
        <source>There is no demo study, and the program ormphantom that makes one is not in %1. Open a study of your own, or install Ormelle again.</source>
        <translation>Es gibt keine Demo-Studie, und das Programm ormphantom, das eine erzeugt, liegt nicht in %1. Öffnen Sie eine eigene Studie oder installieren Sie Ormelle erneut.</translation>
    </message>
    <message>
        <source>The demo study cannot be written to %1 (%2). Make room or give yourself the right to write there, or open a study of your own.</source>
        <translation>Die Demo-Studie kann nicht nach %1 geschrieben werden (%2). Schaffen Sie Platz, geben Sie sich dort Schreibrechte oder öffnen Sie eine eigene Studie.</translation>
    </message>
    <message>
        <source>The demo study could not be made in %1: %2

Make room or give yourself the right to write there, or open a study of your own.</source>
        <translation>Die Demo-Studie konnte in %1 nicht erzeugt werden: %2

Schaffen Sie Platz, geben Sie sich dort Schreibrechte oder öffnen Sie eine eigene Studie.</translation>
    </message>
</context>
<context>
    <name>COrmErrorHandler</name>
    <message>
        <source>The file cannot be written.</source>
        <translation>Die Datei kann nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>The file cannot be read.</source>
        <translation>Die Datei kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The operation failed (status %1).</source>
        <translation>Der Vorgang ist fehlgeschlagen (Status %1).</translation>
    </message>
</context>
<context>
    <name>COrmImageOverlayWindow</name>
    <message>
        <source>&amp;Opacity:</source>
        <translation>&amp;Deckkraft:</translation>
    </message>
    <message>
        <source>&amp;Image:</source>
        <translation>&amp;Bild:</translation>
    </message>
    <message>
        <source>Image Overlay</source>
        <translation>Bildüberlagerung</translation>
    </message>
    <message>
        <source>Select a sequence in the list of the main window.</source>
        <translation>Wählen Sie in der Liste des Hauptfensters eine Sequenz aus.</translation>
    </message>
    <message>
        <source>Image %1 has no picture.</source>
        <translation>Zu Bild %1 gibt es keine Bilddatei.</translation>
    </message>
</context>
<context>
    <name>COrmLogPanel</name>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>Clear Log</source>
        <translation>Protokoll leeren</translation>
    </message>
    <message>
        <source>Entries shown</source>
        <translation>Angezeigte Einträge</translation>
    </message>
    <message>
        <source>Which entries are shown</source>
        <translation>Welche Einträge angezeigt werden</translation>
    </message>
    <message>
        <source>All entries</source>
        <translation>Alle Einträge</translation>
    </message>
    <message>
        <source>Notes and errors</source>
        <translation>Hinweise und Fehler</translation>
    </message>
    <message>
        <source>Errors only</source>
        <translation>Nur Fehler</translation>
    </message>
    <message>
        <source>Filter of the log</source>
        <translation>Filter des Protokolls</translation>
    </message>
    <message>
        <source>Show only lines that contain...</source>
        <translation>Nur Zeilen zeigen, die dies enthalten...</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Copy the marked text, or all lines that are shown</source>
        <translation>Den markierten Text oder alle angezeigten Zeilen kopieren</translation>
    </message>
    <message>
        <source>Latest</source>
        <translation>Neueste</translation>
    </message>
    <message>
        <source>Jump to the latest line</source>
        <translation>Zur neuesten Zeile springen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Take all lines out of this panel</source>
        <translation>Alle Zeilen aus diesem Feld entfernen</translation>
    </message>
    <message>
        <source>1 line</source>
        <translation>1 Zeile</translation>
    </message>
    <message numerus="yes">
        <source>%n lines</source>
        <translation>
            <numerusform>%n Zeile</numerusform>
            <numerusform>%n Zeilen</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Error: </source>
        <translation>Fehler: </translation>
    </message>
    <message>
        <source>Note: </source>
        <translation>Hinweis: </translation>
    </message>
</context>
<context>
    <name>COrmMainWindow</name>
    <message>
        <source>Close Window</source>
        <translation>Fenster schließen</translation>
    </message>
    <message>
        <source>Reading sequences again...</source>
        <translation>Sequenzen werden neu eingelesen...</translation>
    </message>
    <message>
        <source>Open &amp;Demo Study</source>
        <translation>&amp;Demo-Studie öffnen</translation>
    </message>
    <message>
        <source>Open a study of a made-up mouse at five time points</source>
        <translation>Eine Studie einer erfundenen Maus mit fünf Zeitpunkten öffnen</translation>
    </message>
    <message>
        <source>Co&amp;mpare Sequence</source>
        <translation>Sequenz &amp;vergleichen</translation>
    </message>
    <message>
        <source>Open the Longitudinal Study tool with the selected sequence, to compare its saved results</source>
        <translation>Das Werkzeug Longitudinal Study mit der ausgewählten Sequenz öffnen, um deren gespeicherte Ergebnisse zu vergleichen</translation>
    </message>
    <message>
        <source>&amp;Find Sequence</source>
        <translation>Sequenz &amp;finden</translation>
    </message>
    <message>
        <source>Type words to show only the sequences that have them</source>
        <translation>Wörter eingeben, um nur Sequenzen zu zeigen, in denen sie vorkommen</translation>
    </message>
    <message>
        <source>&amp;Next Window</source>
        <translation>&amp;Nächstes Fenster</translation>
    </message>
    <message>
        <source>Go from this window to the next one</source>
        <translation>Von diesem Fenster zum nächsten gehen</translation>
    </message>
    <message>
        <source>Open Study</source>
        <translation>Studie öffnen</translation>
    </message>
    <message>
        <source>Open every sequence below this folder</source>
        <translation>Alle Sequenzen unterhalb dieses Ordners öffnen</translation>
    </message>
    <message>
        <source>&amp;Clear List</source>
        <translation>&amp;Liste leeren</translation>
    </message>
    <message>
        <source>Forget the recent studies; no folder is changed</source>
        <translation>Die zuletzt geöffneten Studien vergessen; kein Ordner wird verändert</translation>
    </message>
    <message>
        <source>Looking for sequences...</source>
        <translation>Sequenzen werden gesucht...</translation>
    </message>
    <message>
        <source>They appear here as they are found.</source>
        <translation>Sie erscheinen hier, sobald sie gefunden sind.</translation>
    </message>
    <message>
        <source>No further sequence was opened.</source>
        <translation>Keine weitere Sequenz wurde geöffnet.</translation>
    </message>
    <message>
        <source>The search was stopped.</source>
        <translation>Die Suche wurde angehalten.</translation>
    </message>
    <message>
        <source>No sequence was opened.</source>
        <translation>Keine Sequenz wurde geöffnet.</translation>
    </message>
    <message>
        <source>A sequence is a folder that holds a file SequenceInfo.txt. Open such a folder, or any folder above it.</source>
        <translation>Eine Sequenz ist ein Ordner, der eine Datei SequenceInfo.txt enthält. Öffnen Sie einen solchen Ordner oder einen, der darüber liegt.</translation>
    </message>
    <message>
        <source>%1 of %2 sequences are written.</source>
        <translation>%1 von %2 Sequenzen sind geschrieben.</translation>
    </message>
    <message>
        <source>Making the demo study...</source>
        <translation>Die Demo-Studie wird erzeugt...</translation>
    </message>
    <message>
        <source>Making the demo study: %1</source>
        <translation>Erzeugung der Demo-Studie: %1</translation>
    </message>
    <message>
        <source>The demo study was not made.</source>
        <translation>Die Demo-Studie wurde nicht erzeugt.</translation>
    </message>
    <message>
        <source>The tool %1 is not there: View &gt; Log says why.</source>
        <translation>Das Werkzeug %1 fehlt; warum, steht unter Ansicht &gt; Protokoll.</translation>
    </message>
    <message>
        <source>The tool %1 is not there, so results cannot be compared. The log says why. Install Ormelle again, or ask whoever installed it.</source>
        <translation>Das Werkzeug %1 fehlt, daher können keine Ergebnisse verglichen werden. Der Grund steht im Protokoll. Installieren Sie Ormelle erneut oder fragen Sie, wer es installiert hat.</translation>
    </message>
    <message>
        <source>%1 does not list the sequence %2. It compares luminescent sequences, and fluorescent ones with trans-illumination, that have a structured-light or CT surface. Choose such a sequence.</source>
        <translation>%1 führt die Sequenz %2 nicht auf. Es vergleicht Lumineszenzsequenzen und Fluoreszenzsequenzen mit Transillumination, die eine Oberfläche aus strukturiertem Licht oder CT haben. Wählen Sie eine solche Sequenz.</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Stop looking for sequences; what was opened stays open</source>
        <translation>Die Suche nach Sequenzen anhalten; was geöffnet ist, bleibt geöffnet</translation>
    </message>
    <message numerus="yes">
        <source>%n tools were not loaded: View &gt; Log says why.</source>
        <translation>
            <numerusform>%n Werkzeug wurde nicht geladen; warum, steht unter Ansicht &gt; Protokoll.</numerusform>
            <numerusform>%n Werkzeuge wurden nicht geladen; warum, steht unter Ansicht &gt; Protokoll.</numerusform>
        </translation>
    </message>
    <message>
        <source>There is no tool named %1.</source>
        <translation>Es gibt kein Werkzeug namens %1.</translation>
    </message>
    <message>
        <source>Closed %1.</source>
        <translation>%1 wurde geschlossen.</translation>
    </message>
    <message numerus="yes">
        <source>Closed %n sequences.</source>
        <translation>
            <numerusform>%n Sequenz wurde geschlossen.</numerusform>
            <numerusform>%n Sequenzen wurden geschlossen.</numerusform>
        </translation>
    </message>
    <message>
        <source>Read %1 again.</source>
        <translation>%1 wurde neu eingelesen.</translation>
    </message>
    <message>
        <source>About %1</source>
        <translation>Über %1</translation>
    </message>
    <message>
        <source>A tool is still working.</source>
        <translation>Ein Werkzeug arbeitet noch.</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Log</source>
        <translation>&amp;Protokoll</translation>
    </message>
    <message>
        <source>Show or hide what the host and its tools have reported</source>
        <translation>Meldungen von Programm und Werkzeugen ein- oder ausblenden</translation>
    </message>
    <message>
        <source>Tool &amp;Bar</source>
        <translation>&amp;Werkzeugleiste</translation>
    </message>
    <message>
        <source>Show or hide the buttons under the menus</source>
        <translation>Die Schaltflächen unter den Menüs ein- oder ausblenden</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Open Study...</source>
        <translation>&amp;Studie öffnen...</translation>
    </message>
    <message>
        <source>Open every sequence below a folder</source>
        <translation>Alle Sequenzen unterhalb eines Ordners öffnen</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>Open a folder that was opened before</source>
        <translation>Einen Ordner öffnen, der schon einmal geöffnet war</translation>
    </message>
    <message>
        <source>Re&amp;fresh</source>
        <translation>&amp;Aktualisieren</translation>
    </message>
    <message>
        <source>Read the selected sequences again, or all if none is selected</source>
        <translation>Die ausgewählten Sequenzen neu einlesen oder alle, wenn keine ausgewählt ist</translation>
    </message>
    <message>
        <source>&amp;Close Sequence</source>
        <translation>Sequenz s&amp;chließen</translation>
    </message>
    <message>
        <source>Close the selected sequences; no file is changed</source>
        <translation>Die ausgewählten Sequenzen schließen; keine Datei wird verändert</translation>
    </message>
    <message>
        <source>Close &amp;All Sequences</source>
        <translation>A&amp;lle Sequenzen schließen</translation>
    </message>
    <message>
        <source>Close all sequences; no file is changed</source>
        <translation>Alle Sequenzen schließen; keine Datei wird verändert</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Close all windows and end the program</source>
        <translation>Alle Fenster schließen und das Programm beenden</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copy what the active window shows or has selected</source>
        <translation>Kopieren, was das aktive Fenster zeigt oder was darin ausgewählt ist</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
    <message>
        <source>Select all sequences of the list</source>
        <translation>Alle Sequenzen der Liste auswählen</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>&amp;Werkzeuge</translation>
    </message>
    <message>
        <source>Show the photograph of the selected sequence with its luminescent image</source>
        <translation>Das Foto der ausgewählten Sequenz mit ihrem Lumineszenzbild zeigen</translation>
    </message>
    <message>
        <source>Reset Longitudinal Study</source>
        <translation>Longitudinal Study zurücksetzen</translation>
    </message>
    <message>
        <source>Take all results out of the Longitudinal Study tool and hide its window</source>
        <translation>Alle Ergebnisse aus dem Werkzeug Longitudinal Study entfernen und sein Fenster ausblenden</translation>
    </message>
    <message>
        <source>Open the tool %1</source>
        <translation>Das Werkzeug %1 öffnen</translation>
    </message>
    <message>
        <source>&amp;Window</source>
        <translation>&amp;Fenster</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>Ü&amp;ber</translation>
    </message>
    <message>
        <source>Version and loaded tools</source>
        <translation>Version und geladene Werkzeuge</translation>
    </message>
    <message>
        <source>Bring this window to the front</source>
        <translation>Dieses Fenster nach vorn holen</translation>
    </message>
    <message>
        <source>Stopped; 1 sequence was not read again.</source>
        <translation>Angehalten; 1 Sequenz wurde nicht neu eingelesen.</translation>
    </message>
    <message numerus="yes">
        <source>Stopped; %n sequences were not read again.</source>
        <translation>
            <numerusform>Angehalten; %n Sequenz wurde nicht neu eingelesen.</numerusform>
            <numerusform>Angehalten; %n Sequenzen wurden nicht neu eingelesen.</numerusform>
        </translation>
    </message>
    <message>
        <source>1 sequence</source>
        <translation>1 Sequenz</translation>
    </message>
    <message numerus="yes">
        <source>%n sequences</source>
        <translation>
            <numerusform>%n Sequenz</numerusform>
            <numerusform>%n Sequenzen</numerusform>
        </translation>
    </message>
    <message>
        <source>1 folder</source>
        <translation>1 Ordner</translation>
    </message>
    <message numerus="yes">
        <source>%n folders</source>
        <translation>
            <numerusform>%n Ordner</numerusform>
            <numerusform>%n Ordner</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, %2 so far, in %3</source>
        <translation>Bisher %1, %2; jetzt in %3</translation>
    </message>
    <message>
        <source>Looking for sequences: %1, %2 so far, in %3</source>
        <translation>Suche nach Sequenzen: bisher %1, %2; jetzt in %3</translation>
    </message>
    <message>
        <source>Looking for sequences: %1, %2 so far</source>
        <translation>Suche nach Sequenzen: bisher %1, %2</translation>
    </message>
    <message numerus="yes">
        <source>Opened %n sequences.</source>
        <translation>
            <numerusform>%n Sequenz wurde geöffnet.</numerusform>
            <numerusform>%n Sequenzen wurden geöffnet.</numerusform>
        </translation>
    </message>
    <message>
        <source>Opened 1 sequence.</source>
        <translation>1 Sequenz wurde geöffnet.</translation>
    </message>
    <message>
        <source>View &gt; Log names 1 problem.</source>
        <translation>Ansicht &gt; Protokoll nennt 1 Problem.</translation>
    </message>
    <message numerus="yes">
        <source>View &gt; Log names %n problems.</source>
        <translation>
            <numerusform>Ansicht &gt; Protokoll nennt %n Problem.</numerusform>
            <numerusform>Ansicht &gt; Protokoll nennt %n Probleme.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The log names %n more.</source>
        <translation>
            <numerusform>Das Protokoll nennt %n weiteres.</numerusform>
            <numerusform>Das Protokoll nennt %n weitere.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>COrmNoticeBar</name>
    <message>
        <source>Notice</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>Show Lo&amp;g</source>
        <translation>Protokoll zei&amp;gen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Close the notice</source>
        <translation>Den Hinweis schließen</translation>
    </message>
</context>
<context>
    <name>COrmPalettePixmapView</name>
    <message>
        <source>Color table</source>
        <translation>Farbtabelle</translation>
    </message>
    <message>
        <source>%1, reversed</source>
        <translation>%1, umgekehrt</translation>
    </message>
</context>
<context>
    <name>COrmPluginManager</name>
    <message>
        <source>%1 was not loaded: %2</source>
        <translation>%1 wurde nicht geladen: %2</translation>
    </message>
    <message numerus="yes">
        <source>the folder holds %n libraries, and no more than %1 are looked at.</source>
        <translation>
            <numerusform>Der Ordner enthält %n Bibliothek; höchstens %1 werden beachtet.</numerusform>
            <numerusform>Der Ordner enthält %n Bibliotheken; höchstens %1 werden beachtet.</numerusform>
        </translation>
    </message>
    <message>
        <source>the same tool is loaded from %1 already.</source>
        <translation>Dasselbe Werkzeug ist schon aus %1 geladen.</translation>
    </message>
    <message>
        <source>Loading %1</source>
        <translation>Das Laden von %1</translation>
    </message>
    <message>
        <source>it cannot be loaded (%1).</source>
        <translation>Das Laden ist nicht möglich (%1).</translation>
    </message>
    <message>
        <source>it does not offer what this host asks of a tool.</source>
        <translation>Es fehlt, was dieses Programm von einem Werkzeug verlangt.</translation>
    </message>
    <message>
        <source>there is a tool named %1 already.</source>
        <translation>Ein Werkzeug namens %1 gibt es schon.</translation>
    </message>
    <message>
        <source>There is no tool.</source>
        <translation>Es gibt kein Werkzeug.</translation>
    </message>
</context>
<context>
    <name>COrmPreferencesDialog</name>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Every change counts at once.</source>
        <translation>Jede Änderung gilt sofort.</translation>
    </message>
    <message>
        <source>Colour bar that a tool starts with</source>
        <translation>Farbbalken, mit dem ein Werkzeug beginnt</translation>
    </message>
    <message>
        <source>Colours of source volumes when the window of a tool is opened or emptied</source>
        <translation>Farben der Quellvolumen, wenn das Fenster eines Werkzeugs geöffnet oder geleert wird</translation>
    </message>
    <message>
        <source>Colours of the table</source>
        <translation>Farben der Tabelle</translation>
    </message>
    <message>
        <source>&amp;Reversed</source>
        <translation>&amp;Umgekehrt</translation>
    </message>
    <message>
        <source>From the colour of the highest value to that of the lowest</source>
        <translation>Von der Farbe des höchsten Werts zu der des niedrigsten</translation>
    </message>
    <message>
        <source>Colour &amp;table:</source>
        <translation>Farb&amp;tabelle:</translation>
    </message>
    <message>
        <source>3D views</source>
        <translation>3D-Ansichten</translation>
    </message>
    <message>
        <source>&amp;Background:</source>
        <translation>&amp;Hintergrund:</translation>
    </message>
    <message>
        <source>Colour behind the results</source>
        <translation>Farbe hinter den Ergebnissen</translation>
    </message>
    <message>
        <source>Te&amp;xt:</source>
        <translation>Te&amp;xt:</translation>
    </message>
    <message>
        <source>Colour of the text at the colour bars</source>
        <translation>Farbe des Texts an den Farbbalken</translation>
    </message>
    <message>
        <source>&amp;Surface:</source>
        <translation>&amp;Oberfläche:</translation>
    </message>
    <message>
        <source>Colour of surfaces that show no photon density</source>
        <translation>Farbe von Oberflächen, die keine Photonendichte zeigen</translation>
    </message>
    <message>
        <source> points</source>
        <translation> Punkt</translation>
    </message>
    <message>
        <source>Size of the text at the colour bars</source>
        <translation>Größe des Texts an den Farbbalken</translation>
    </message>
    <message>
        <source>&amp;Font size:</source>
        <translation>&amp;Schriftgröße:</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>The format that is offered first when a picture is saved; the one that was used last takes its place</source>
        <translation>Das Format, das beim Speichern eines Bildes zuerst angeboten wird; an seine Stelle tritt das zuletzt benutzte</translation>
    </message>
    <message>
        <source>No preference</source>
        <translation>Keine Vorgabe</translation>
    </message>
    <message>
        <source>PNG (.png)</source>
        <translation>PNG (.png)</translation>
    </message>
    <message>
        <source>TIFF (.tif)</source>
        <translation>TIFF (.tif)</translation>
    </message>
    <message>
        <source>JPEG (.jpg)</source>
        <translation>JPEG (.jpg)</translation>
    </message>
    <message>
        <source>Bitmap (.bmp)</source>
        <translation>Bitmap (.bmp)</translation>
    </message>
    <message>
        <source>Encapsulated PostScript (.eps)</source>
        <translation>Encapsulated PostScript (.eps)</translation>
    </message>
    <message>
        <source>&amp;Image format:</source>
        <translation>&amp;Bildformat:</translation>
    </message>
    <message>
        <source>The current folder</source>
        <translation>Der aktuelle Ordner</translation>
    </message>
    <message>
        <source>The folder in which the search for studies begins</source>
        <translation>Der Ordner, in dem die Suche nach Studien beginnt</translation>
    </message>
    <message>
        <source>Choose a folder</source>
        <translation>Einen Ordner wählen</translation>
    </message>
    <message>
        <source>Browse f&amp;older:</source>
        <translation>Suchor&amp;dner:</translation>
    </message>
    <message>
        <source>Browse Folder</source>
        <translation>Suchordner</translation>
    </message>
    <message>
        <source>Text is hard to read on this background.</source>
        <translation>Text ist auf diesem Hintergrund schwer zu lesen.</translation>
    </message>
    <message>
        <source>There is no such folder; the search begins where it did before.</source>
        <translation>Diesen Ordner gibt es nicht; die Suche beginnt, wo sie bisher begann.</translation>
    </message>
    <message>
        <source>Program</source>
        <translation>Programm</translation>
    </message>
    <message>
        <source>The language of menus and messages from the next start on; tools have languages of their own</source>
        <translation>Die Sprache von Menüs und Meldungen ab dem nächsten Start; Werkzeuge haben ihre eigene Sprache</translation>
    </message>
    <message>
        <source>The system&apos;s</source>
        <translation>Die des Systems</translation>
    </message>
    <message>
        <source>&amp;Language:</source>
        <translation>S&amp;prache:</translation>
    </message>
    <message>
        <source>The language changes when Ormelle is started again.</source>
        <translation>Die Sprache wechselt, wenn Ormelle neu gestartet wird.</translation>
    </message>
</context>
<context>
    <name>COrmPreviewLoader</name>
    <message>
        <source>There is too little memory for a preview.</source>
        <translation>Der Arbeitsspeicher reicht nicht für eine Vorschau.</translation>
    </message>
</context>
<context>
    <name>COrmRecentList</name>
    <message>
        <source>Recent studies</source>
        <translation>Zuletzt geöffnete Studien</translation>
    </message>
    <message>
        <source>Folders that were opened before. A click opens one again.</source>
        <translation>Ordner, die schon einmal geöffnet waren. Ein Klick öffnet einen davon wieder.</translation>
    </message>
</context>
<context>
    <name>COrmSequenceCollection</name>
    <message>
        <source>%1 names no sequence.</source>
        <translation>%1 nennt keine Sequenz.</translation>
    </message>
    <message>
        <source>Sequence %1 has no click that can be read.</source>
        <translation>Die Sequenz %1 hat keine lesbare Aufnahme.</translation>
    </message>
    <message>
        <source>Sequence %1 is open from %2 already: the one in %3 was left out.</source>
        <translation>Die Sequenz %1 ist schon aus %2 geöffnet: Die in %3 wurde ausgelassen.</translation>
    </message>
    <message>
        <source>Sequence %1 is not open.</source>
        <translation>Die Sequenz %1 ist nicht geöffnet.</translation>
    </message>
    <message>
        <source>%1 names another sequence now: %2.</source>
        <translation>%1 nennt jetzt eine andere Sequenz: %2.</translation>
    </message>
</context>
<context>
    <name>COrmSequenceList</name>
    <message>
        <source>Filter by sequence, subject, date or kind</source>
        <translation>Nach Sequenz, Subjekt, Datum oder Art filtern</translation>
    </message>
    <message>
        <source>Filter of the sequences</source>
        <translation>Filter der Sequenzen</translation>
    </message>
    <message>
        <source>Shows the sequences in which every word occurs, for instance &quot;mouse 2026-08 fluorescent&quot;. Escape shows all.</source>
        <translation>Zeigt die Sequenzen, in denen jedes Wort vorkommt, zum Beispiel „Maus 2026-08 Fluoreszenz“. Esc zeigt alle.</translation>
    </message>
    <message numerus="yes">
        <source>%n sequences</source>
        <translation>
            <numerusform>%n Sequenz</numerusform>
            <numerusform>%n Sequenzen</numerusform>
        </translation>
    </message>
    <message>
        <source>Open sequences</source>
        <translation>Geöffnete Sequenzen</translation>
    </message>
    <message>
        <source>&amp;Show All</source>
        <translation>Alle z&amp;eigen</translation>
    </message>
    <message>
        <source>Empty the filter</source>
        <translation>Den Filter leeren</translation>
    </message>
    <message>
        <source>1 sequence</source>
        <translation>1 Sequenz</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>%1 of %2 sequences are shown</source>
        <translation>%1 von %2 Sequenzen werden gezeigt</translation>
    </message>
    <message>
        <source>No sequence has every word of &quot;%1&quot;.</source>
        <translation>In keiner Sequenz kommt jedes Wort von „%1“ vor.</translation>
    </message>
</context>
<context>
    <name>COrmSequenceModel</name>
    <message>
        <source>Sequence</source>
        <translation>Sequenz</translation>
    </message>
    <message>
        <source>Subject</source>
        <translation>Subjekt</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Saved results</source>
        <translation>Ergebnisse</translation>
    </message>
    <message>
        <source>luminescent</source>
        <translation>Lumineszenz</translation>
    </message>
    <message>
        <source>fluorescent</source>
        <translation>Fluoreszenz</translation>
    </message>
    <message>
        <source>trans-illumination</source>
        <translation>Transillumination</translation>
    </message>
    <message>
        <source>overview result</source>
        <translation>Übersichtsergebnis</translation>
    </message>
    <message>
        <source>structured-light surface</source>
        <translation>Oberfläche aus strukturiertem Licht</translation>
    </message>
    <message>
        <source>CT surface</source>
        <translation>CT-Oberfläche</translation>
    </message>
    <message>
        <source>images only</source>
        <translation>nur Bilder</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
</context>
<context>
    <name>COrmSequenceOpener</name>
    <message>
        <source>The search for sequences could not begin: close other programs and try again.</source>
        <translation>Die Suche nach Sequenzen konnte nicht beginnen: Schließen Sie andere Programme und versuchen Sie es noch einmal.</translation>
    </message>
    <message>
        <source>The search for sequences ended early: %1.</source>
        <translation>Die Suche nach Sequenzen endete vorzeitig: %1.</translation>
    </message>
</context>
<context>
    <name>COrmSequencePreview</name>
    <message>
        <source>Select a sequence to see what it holds.</source>
        <translation>Wählen Sie eine Sequenz aus, um zu sehen, was sie enthält.</translation>
    </message>
    <message>
        <source>Photograph</source>
        <translation>Foto</translation>
    </message>
    <message>
        <source>Saved results of the sequence</source>
        <translation>Gespeicherte Ergebnisse der Sequenz</translation>
    </message>
    <message>
        <source>Images of the sequence</source>
        <translation>Bilder der Sequenz</translation>
    </message>
    <message>
        <source>&amp;Compare</source>
        <translation>&amp;Vergleichen</translation>
    </message>
    <message>
        <source>&amp;Compare in %1</source>
        <translation>In %1 &amp;vergleichen</translation>
    </message>
    <message>
        <source>Open the tool with this sequence selected (%1)</source>
        <translation>Das Werkzeug mit dieser Sequenz öffnen (%1)</translation>
    </message>
    <message>
        <source>No saved results to compare yet.</source>
        <translation>Noch keine gespeicherten Ergebnisse zum Vergleichen.</translation>
    </message>
    <message>
        <source>Images (%1)</source>
        <translation>Bilder (%1)</translation>
    </message>
    <message>
        <source>Saved results (%1)</source>
        <translation>Gespeicherte Ergebnisse (%1)</translation>
    </message>
</context>
<context>
    <name>COrmShortcutsDialog</name>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>Filter of the shortcuts</source>
        <translation>Filter der Tastenkürzel</translation>
    </message>
    <message>
        <source>Show only commands and keys that contain...</source>
        <translation>Nur Befehle und Tasten zeigen, die dies enthalten...</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>C&amp;opy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copy the selected lines, or all that are shown</source>
        <translation>Die ausgewählten Zeilen oder alle angezeigten kopieren</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Window</source>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>All windows</source>
        <translation>Alle Fenster</translation>
    </message>
</context>
<context>
    <name>COrmSystemMenus</name>
    <message>
        <source>&amp;Preferences...</source>
        <translation>&amp;Einstellungen...</translation>
    </message>
    <message>
        <source>&amp;Theme</source>
        <translation>&amp;Farbschema</translation>
    </message>
    <message>
        <source>Choose the colours of all windows</source>
        <translation>Die Farben aller Fenster wählen</translation>
    </message>
    <message>
        <source>&amp;System</source>
        <translation>&amp;System</translation>
    </message>
    <message>
        <source>The colours of the desktop</source>
        <translation>Die Farben der Arbeitsumgebung</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>&amp;Hell</translation>
    </message>
    <message>
        <source>Dark text on light windows</source>
        <translation>Dunkler Text auf hellen Fenstern</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>&amp;Dunkel</translation>
    </message>
    <message>
        <source>Light text on dark windows</source>
        <translation>Heller Text auf dunklen Fenstern</translation>
    </message>
    <message>
        <source>&amp;Keyboard Shortcuts...</source>
        <translation>&amp;Tastenkürzel...</translation>
    </message>
    <message>
        <source>List the keys that do something</source>
        <translation>Die Tasten auflisten, die etwas bewirken</translation>
    </message>
    <message>
        <source>Choose colours, text size, image format, language and the folder where studies are looked for</source>
        <translation>Farben, Textgröße, Bildformat, Sprache und den Ordner wählen, in dem Studien gesucht werden</translation>
    </message>
</context>
<context>
    <name>COrmTool</name>
    <message>
        <source>Setting the tool up</source>
        <translation>Das Einrichten des Werkzeugs</translation>
    </message>
    <message>
        <source>The tool has no name.</source>
        <translation>Das Werkzeug hat keinen Namen.</translation>
    </message>
    <message>
        <source>%1 could not open its window.</source>
        <translation>%1 konnte sein Fenster nicht öffnen.</translation>
    </message>
</context>
<context>
    <name>COrmWelcomePanel</name>
    <message>
        <source>&amp;Open Study...</source>
        <translation>&amp;Studie öffnen...</translation>
    </message>
    <message>
        <source>Choose a folder: every sequence below it is opened.</source>
        <translation>Wählen Sie einen Ordner: Alle Sequenzen darunter werden geöffnet.</translation>
    </message>
    <message>
        <source>Try the &amp;Demo Study</source>
        <translation>Demo-Studie aus&amp;probieren</translation>
    </message>
    <message>
        <source>A made-up mouse at five time points, ready to compare.</source>
        <translation>Eine erfundene Maus mit fünf Zeitpunkten, bereit zum Vergleichen.</translation>
    </message>
    <message>
        <source>or drop folders here</source>
        <translation>oder Ordner hier ablegen</translation>
    </message>
    <message>
        <source>&amp;Recent studies</source>
        <translation>&amp;Zuletzt geöffnete Studien</translation>
    </message>
    <message>
        <source>Clear &amp;List</source>
        <translation>&amp;Liste leeren</translation>
    </message>
    <message>
        <source>Forget the recent studies; no folder is changed</source>
        <translation>Die zuletzt geöffneten Studien vergessen; kein Ordner wird verändert</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>Abbre&amp;chen</translation>
    </message>
    <message>
        <source>Welcome to Ormelle</source>
        <translation>Willkommen bei Ormelle</translation>
    </message>
    <message>
        <source>Open the folder of a study to see its sequences and to compare their saved results over time.</source>
        <translation>Öffnen Sie den Ordner einer Studie, um ihre Sequenzen zu sehen und deren gespeicherte Ergebnisse im Zeitverlauf zu vergleichen.</translation>
    </message>
</context>
<context>
    <name>COrmXYPlot</name>
    <message>
        <source>Plot</source>
        <translation>Diagramm</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Linie</translation>
    </message>
    <message>
        <source>Line and Points</source>
        <translation>Linie und Punkte</translation>
    </message>
    <message>
        <source>Points</source>
        <translation>Punkte</translation>
    </message>
    <message>
        <source>Bars</source>
        <translation>Balken</translation>
    </message>
    <message>
        <source>Logarithmic Axis</source>
        <translation>Logarithmische Achse</translation>
    </message>
    <message>
        <source>Show Everything</source>
        <translation>Alles zeigen</translation>
    </message>
    <message>
        <source>Copy Picture</source>
        <translation>Bild kopieren</translation>
    </message>
    <message>
        <source>Copy Numbers</source>
        <translation>Zahlen kopieren</translation>
    </message>
    <message>
        <source>Save Numbers...</source>
        <translation>Zahlen speichern...</translation>
    </message>
    <message>
        <source>Save Numbers</source>
        <translation>Zahlen speichern</translation>
    </message>
    <message>
        <source>Comma-separated values (*.csv)</source>
        <translation>Durch Kommas getrennte Werte (*.csv)</translation>
    </message>
</context>
<context>
    <name>CPlotPointer</name>
    <message>
        <source>Show Everything</source>
        <translation>Alles zeigen</translation>
    </message>
    <message>
        <source>Ends the magnification (double click)</source>
        <translation>Beendet die Vergrößerung (Doppelklick)</translation>
    </message>
</context>
<context>
    <name>CPlotSheet</name>
    <message>
        <source>1 value is missing.</source>
        <translation>1 Wert fehlt.</translation>
    </message>
    <message numerus="yes">
        <source>%n values are missing.</source>
        <translation>
            <numerusform>%n Wert fehlt.</numerusform>
            <numerusform>%n Werte fehlen.</numerusform>
        </translation>
    </message>
    <message>
        <source>1 value has no place on the logarithmic axis.</source>
        <translation>1 Wert hat auf der logarithmischen Achse keinen Platz.</translation>
    </message>
    <message numerus="yes">
        <source>%n values have no place on the logarithmic axis.</source>
        <translation>
            <numerusform>%n Wert hat auf der logarithmischen Achse keinen Platz.</numerusform>
            <numerusform>%n Werte haben auf der logarithmischen Achse keinen Platz.</numerusform>
        </translation>
    </message>
    <message>
        <source>There is no value above 0: turn the logarithmic axis off to see these values.</source>
        <translation>Kein Wert liegt über 0: Schalten Sie die logarithmische Achse aus, um diese Werte zu sehen.</translation>
    </message>
    <message>
        <source>Nothing to plot</source>
        <translation>Nichts darzustellen</translation>
    </message>
</context>
<context>
    <name>CProgressDisplay</name>
    <message>
        <source>Abort</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>%v of %m</source>
        <translation>%v von %m</translation>
    </message>
</context>
<context>
    <name>CSOLAView</name>
    <message>
        <source>the display &quot;%1&quot; shows none in windows</source>
        <translation>die Anzeige „%1“ bietet in Fenstern keines</translation>
    </message>
    <message>
        <source>the display gives none</source>
        <translation>die Anzeige bietet keines</translation>
    </message>
    <message>
        <source>the display gives OpenGL ES instead</source>
        <translation>die Anzeige bietet stattdessen OpenGL ES</translation>
    </message>
    <message>
        <source>the display does not let it draw</source>
        <translation>die Anzeige lässt es nicht zeichnen</translation>
    </message>
    <message>
        <source>the display gives only version %1.%2</source>
        <translation>die Anzeige bietet nur Version %1.%2</translation>
    </message>
    <message>
        <source>the display gives only a core profile</source>
        <translation>die Anzeige bietet nur ein Core-Profil</translation>
    </message>
    <message>
        <source>The 3D view needs OpenGL 2.1 with its fixed functions, but %1.
Everything else works.</source>
        <translation>Die 3D-Ansicht braucht OpenGL 2.1 mit seinen festen Funktionen, aber %1.
Alles andere funktioniert.</translation>
    </message>
</context>
<context>
    <name>OrmAbout</name>
    <message>
        <source>%1 %2, build %3</source>
        <translation>%1 %2, Stand %3</translation>
    </message>
    <message>
        <source>Preclinical optical imaging: sequences, saved results and tools to compare them.</source>
        <translation>Präklinische optische Bildgebung: Sequenzen, gespeicherte Ergebnisse und Werkzeuge, um sie zu vergleichen.</translation>
    </message>
    <message>
        <source>No tools are loaded.</source>
        <translation>Es sind keine Werkzeuge geladen.</translation>
    </message>
    <message>
        <source>Tools:</source>
        <translation>Werkzeuge:</translation>
    </message>
    <message>
        <source>Not loaded:</source>
        <translation>Nicht geladen:</translation>
    </message>
    <message numerus="yes">
        <source>and %n more, see the log.</source>
        <translation>
            <numerusform>und %n weiteres, siehe Protokoll.</numerusform>
            <numerusform>und %n weitere, siehe Protokoll.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>OrmAccessibleNames</name>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>More</source>
        <translation>Mehr</translation>
    </message>
    <message>
        <source>3D view</source>
        <translation>3D-Ansicht</translation>
    </message>
</context>
<context>
    <name>OrmBeneath</name>
    <message>
        <source>leads outside the study folder</source>
        <translation>führt aus dem Ordner der Studie hinaus</translation>
    </message>
    <message>
        <source>names no file</source>
        <translation>nennt keine Datei</translation>
    </message>
    <message>
        <source>holds a NUL character</source>
        <translation>enthält ein NUL-Zeichen</translation>
    </message>
    <message>
        <source>names a folder</source>
        <translation>nennt einen Ordner</translation>
    </message>
</context>
<context>
    <name>OrmFileReader</name>
    <message>
        <source>not a regular file</source>
        <translation>keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>leads outside the study folder</source>
        <translation>führt aus dem Ordner der Studie hinaus</translation>
    </message>
    <message>
        <source>too large: %1 bytes, of at most %2</source>
        <translation>zu groß: %1 Bytes statt höchstens %2</translation>
    </message>
    <message>
        <source>changed while reading</source>
        <translation>hat sich beim Lesen geändert</translation>
    </message>
    <message>
        <source>read error: %1</source>
        <translation>Lesefehler: %1</translation>
    </message>
    <message>
        <source>not enough memory (needs %1 MB)</source>
        <translation>zu wenig Arbeitsspeicher (%1 MB nötig)</translation>
    </message>
    <message>
        <source>no file name</source>
        <translation>kein Dateiname</translation>
    </message>
    <message>
        <source>%1 in %2</source>
        <translation>%1 in %2</translation>
    </message>
</context>
<context>
    <name>OrmFileWriter</name>
    <message>
        <source>not a regular file</source>
        <translation>keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>Der Datenträger ist voll</translation>
    </message>
</context>
<context>
    <name>OrmGuard</name>
    <message>
        <source>it gave no reason</source>
        <translation>ohne Angabe eines Grundes</translation>
    </message>
    <message>
        <source>%1 failed: %2.</source>
        <extracomment>%1 is a tool or something that the host does with one, such as &quot;Loading libtool.so&quot;</extracomment>
        <translation>%1 ist fehlgeschlagen: %2.</translation>
    </message>
</context>
<context>
    <name>OrmImageEncoders</name>
    <message>
        <source>there is not enough memory; close other windows</source>
        <translation>Der Arbeitsspeicher reicht nicht; schließen Sie andere Fenster</translation>
    </message>
    <message>
        <source>the picture cannot be put into a TIFF file</source>
        <translation>Das Bild passt nicht in eine TIFF-Datei</translation>
    </message>
</context>
<context>
    <name>OrmImageFile</name>
    <message>
        <source>the folder &quot;%1&quot; does not exist; choose another one</source>
        <translation>Den Ordner „%1“ gibt es nicht; wählen Sie einen anderen</translation>
    </message>
    <message>
        <source>there is a folder of this name; choose another name</source>
        <translation>Ein Ordner heißt schon so; wählen Sie einen anderen Namen</translation>
    </message>
    <message>
        <source>what has this name is not an ordinary file; choose another name</source>
        <translation>Was so heißt, ist keine gewöhnliche Datei; wählen Sie einen anderen Namen</translation>
    </message>
    <message>
        <source>the file of this name is write-protected; choose another name</source>
        <translation>Die Datei dieses Namens ist schreibgeschützt; wählen Sie einen anderen Namen</translation>
    </message>
    <message>
        <source>%1; make room or choose another folder</source>
        <translation>%1; schaffen Sie Platz oder wählen Sie einen anderen Ordner</translation>
    </message>
    <message>
        <source>%1; choose another name or folder</source>
        <translation>%1; wählen Sie einen anderen Namen oder Ordner</translation>
    </message>
    <message>
        <source>The picture was not saved as &quot;%1&quot;: %2.</source>
        <translation>Das Bild wurde nicht als „%1“ gespeichert: %2.</translation>
    </message>
    <message>
        <source>there is no picture, because the view is empty or OpenGL is missing</source>
        <translation>Es gibt kein Bild, weil die Ansicht leer ist oder OpenGL fehlt</translation>
    </message>
    <message>
        <source>only bmp, jpg, png, eps and tif can be written; end the name in one of them</source>
        <translation>Nur bmp, jpg, png, eps und tif können geschrieben werden; beenden Sie den Namen mit einer dieser Endungen</translation>
    </message>
    <message>
        <source>%1 holds at most %2 pixels a side, and this picture has %3; choose another format</source>
        <translation>%1 fasst höchstens %2 Pixel je Seite, und dieses Bild hat %3; wählen Sie ein anderes Format</translation>
    </message>
    <message>
        <source>there is not enough memory; close other windows</source>
        <translation>Der Arbeitsspeicher reicht nicht; schließen Sie andere Fenster</translation>
    </message>
    <message>
        <source>The picture was not saved: there is not enough memory; close other windows.</source>
        <translation>Das Bild wurde nicht gespeichert: Der Arbeitsspeicher reicht nicht; schließen Sie andere Fenster.</translation>
    </message>
</context>
<context>
    <name>OrmOverlay</name>
    <message>
        <source>%1 is too large: %2 x %3 pixels.</source>
        <translation>%1 ist zu groß: %2 x %3 Pixel.</translation>
    </message>
    <message>
        <source>%1 cannot be shown: %2.</source>
        <translation>%1 kann nicht angezeigt werden: %2.</translation>
    </message>
</context>
<context>
    <name>OrmPluginCheck</name>
    <message>
        <source>it belongs to another user.</source>
        <translation>Eigentümer ist ein anderer Benutzer.</translation>
    </message>
    <message>
        <source>others than its owner may write to it.</source>
        <translation>Auch andere als der Eigentümer dürfen hineinschreiben.</translation>
    </message>
    <message>
        <source>it is a link.</source>
        <translation>Es ist eine Verknüpfung.</translation>
    </message>
    <message>
        <source>it is not a folder.</source>
        <translation>Es ist kein Ordner.</translation>
    </message>
    <message>
        <source>it is not a regular file.</source>
        <translation>Es ist keine gewöhnliche Datei.</translation>
    </message>
    <message>
        <source>it is empty.</source>
        <translation>Die Datei ist leer.</translation>
    </message>
    <message>
        <source>it holds no tool (%1).</source>
        <translation>Es enthält kein Werkzeug (%1).</translation>
    </message>
    <message>
        <source>no description found</source>
        <translation>keine Beschreibung gefunden</translation>
    </message>
    <message>
        <source>it was built with Qt %1, and this host runs on Qt %2.</source>
        <translation>Es wurde mit Qt %1 gebaut, dieses Programm läuft mit Qt %2.</translation>
    </message>
    <message>
        <source>it was made for another host (it calls itself &quot;%1&quot;).</source>
        <translation>Es ist für ein anderes Programm gemacht (es nennt sich „%1“).</translation>
    </message>
</context>
<context>
    <name>OrmPreviewReader</name>
    <message>
        <source>The list of saved results cannot be read: %1</source>
        <translation>Die Liste der gespeicherten Ergebnisse kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>This sequence has no photograph.</source>
        <translation>Diese Sequenz hat kein Foto.</translation>
    </message>
    <message>
        <source>The photograph of %1 is not in its folder.</source>
        <translation>Das Foto von %1 liegt nicht in seinem Ordner.</translation>
    </message>
    <message>
        <source>Photograph of %1</source>
        <translation>Foto von %1</translation>
    </message>
</context>
<context>
    <name>OrmSequenceFacts</name>
    <message>
        <source>Click %1 of %2 was left out: it does not lie in the folder of its sequence.</source>
        <translation>Aufnahme %1 von %2 wurde ausgelassen: Sie liegt nicht im Ordner ihrer Sequenz.</translation>
    </message>
    <message>
        <source>Click %1 of %2 was left out: %3</source>
        <translation>Aufnahme %1 von %2 wurde ausgelassen: %3</translation>
    </message>
    <message>
        <source>%1 names no sequence.</source>
        <translation>%1 nennt keine Sequenz.</translation>
    </message>
    <message>
        <source>Reading %1 was cancelled.</source>
        <translation>Das Lesen von %1 wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Click %1 of %2 is listed twice and counts once.</source>
        <translation>Aufnahme %1 von %2 ist doppelt aufgeführt und zählt einmal.</translation>
    </message>
    <message>
        <source>Sequence %1 in %2 has no click that can be read.</source>
        <translation>Die Sequenz %1 in %2 hat keine lesbare Aufnahme.</translation>
    </message>
</context>
<context>
    <name>OrmSequenceScanner</name>
    <message>
        <source>A folder without a name does not exist.</source>
        <translation>Einen Ordner ohne Namen gibt es nicht.</translation>
    </message>
    <message>
        <source>%1 does not exist.</source>
        <translation>%1 gibt es nicht.</translation>
    </message>
    <message>
        <source>There is no sequence under %1.</source>
        <translation>Unter %1 liegt keine Sequenz.</translation>
    </message>
    <message>
        <source>%1 is neither a folder nor a sequence file (Sequence*.txt).</source>
        <translation>%1 ist weder ein Ordner noch eine Sequenzdatei (Sequence*.txt).</translation>
    </message>
    <message numerus="yes">
        <source>The search ended after %n folders: open a folder further down.</source>
        <translation>
            <numerusform>Die Suche endete nach %n Ordner: Öffnen Sie einen tiefer liegenden Ordner.</numerusform>
            <numerusform>Die Suche endete nach %n Ordnern: Öffnen Sie einen tiefer liegenden Ordner.</numerusform>
        </translation>
    </message>
    <message>
        <source>The folders in %1 are nested too deep and were left out.</source>
        <translation>Die Ordner in %1 sind zu tief verschachtelt und wurden ausgelassen.</translation>
    </message>
    <message>
        <source>%1 cannot be looked into: %2.</source>
        <translation>%1 kann nicht durchsucht werden: %2.</translation>
    </message>
    <message>
        <source>%1 could not be read to its end: %2.</source>
        <translation>%1 konnte nicht bis zum Ende gelesen werden: %2.</translation>
    </message>
    <message>
        <source>%1 in %2 has a name that cannot be shown and was left out.</source>
        <translation>%1 in %2 hat einen Namen, der nicht angezeigt werden kann, und wurde ausgelassen.</translation>
    </message>
    <message>
        <source>%1 in %2 is not a regular file and was left out.</source>
        <translation>%1 in %2 ist keine gewöhnliche Datei und wurde ausgelassen.</translation>
    </message>
    <message numerus="yes">
        <source>The search ended after %n sequences: open a folder further down.</source>
        <translation>
            <numerusform>Die Suche endete nach %n Sequenz: Öffnen Sie einen tiefer liegenden Ordner.</numerusform>
            <numerusform>Die Suche endete nach %n Sequenzen: Öffnen Sie einen tiefer liegenden Ordner.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n more problems are not listed.</source>
        <translation>
            <numerusform>%n weiteres Problem ist nicht aufgeführt.</numerusform>
            <numerusform>%n weitere Probleme sind nicht aufgeführt.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>OrmSettingsText</name>
    <message>
        <source>not enough memory</source>
        <translation>zu wenig Arbeitsspeicher</translation>
    </message>
    <message>
        <source>too large: %1 bytes, of at most %2</source>
        <translation>zu groß: %1 Bytes statt höchstens %2</translation>
    </message>
    <message>
        <source>encoding not supported, it must be UTF-8</source>
        <translation>die Zeichenkodierung wird nicht unterstützt, sie muss UTF-8 sein</translation>
    </message>
    <message>
        <source>line %1 is longer than %2 bytes</source>
        <translation>Zeile %1 ist länger als %2 Bytes</translation>
    </message>
    <message>
        <source>NUL byte in line %1</source>
        <translation>NUL-Byte in Zeile %1</translation>
    </message>
    <message>
        <source>more than %1 entries</source>
        <translation>mehr als %1 Einträge</translation>
    </message>
</context>
<context>
    <name>QSpanSlider</name>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
</context>
</TS>
