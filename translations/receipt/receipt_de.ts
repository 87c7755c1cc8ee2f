<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>LintFinding</name>
    <message>
        <source>the picture &quot;%1&quot; can&apos;t be read: %2</source>
        <translation>das Bild &quot;%1&quot; kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>it is damaged, too large, or of a format that isn&apos;t printed</source>
        <translation>es ist beschädigt, zu groß oder in einem Format, das nicht gedruckt wird</translation>
    </message>
    <message>
        <source>the folder &quot;%2&quot; has no picture &quot;%1&quot; that can be read</source>
        <translation>der Ordner &quot;%2&quot; hat kein lesbares Bild &quot;%1&quot;</translation>
    </message>
    <message>
        <source>there is no picture &quot;%1&quot; in the folder &quot;%2&quot;</source>
        <translation>im Ordner &quot;%2&quot; gibt es kein Bild &quot;%1&quot;</translation>
    </message>
    <message>
        <source>%1 with %2 paper</source>
        <translation>%1 mit Papier %2</translation>
    </message>
    <message>
        <source>the file &quot;%1&quot; can&apos;t be read: %2</source>
        <translation>die Datei &quot;%1&quot; kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>a symbol or the root element is wrong</source>
        <translation>ein Sonderzeichen oder das Wurzelelement ist falsch</translation>
    </message>
    <message>
        <source>the file &quot;%1&quot; is damaged: %2; see &quot;receipt symbols&quot;</source>
        <translation>die Datei &quot;%1&quot; ist beschädigt: %2; siehe &quot;receipt symbols&quot;</translation>
    </message>
    <message>
        <source>there is no file &quot;%1&quot;</source>
        <translation>die Datei &quot;%1&quot; gibt es nicht</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no regular file</source>
        <translation>&quot;%1&quot; ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>the last comma cuts the expression: &quot;%1&quot; is calculated, and &quot;%2&quot; is its format</source>
        <translation>das letzte Komma zerschneidet den Ausdruck: &quot;%1&quot; wird berechnet, und &quot;%2&quot; ist das Format dafür</translation>
    </message>
    <message>
        <source>the expression &quot;%1&quot; ends too early</source>
        <translation>der Ausdruck &quot;%1&quot; endet zu früh</translation>
    </message>
    <message>
        <source>the expression &quot;%1&quot; can&apos;t be read from &quot;%2&quot; on</source>
        <translation>der Ausdruck &quot;%1&quot; ist ab &quot;%2&quot; nicht zu lesen</translation>
    </message>
    <message>
        <source>; with its values it is &quot;%1&quot;</source>
        <translation>; mit seinen Werten ist er &quot;%1&quot;</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; counts only on a line of its own</source>
        <translation>&quot;&lt;%1&gt;&quot; zählt nur in einer eigenen Zeile</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; counts as an attribute; did you mean &quot;&lt;%2&gt;&quot;?</source>
        <translation>&quot;&lt;%1&gt;&quot; gilt als Attribut; ist &quot;&lt;%2&gt;&quot; gemeint?</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; has no name</source>
        <translation>&quot;&lt;%1&gt;&quot; hat keinen Namen</translation>
    </message>
    <message>
        <source>there is no function &quot;%1&quot;: %2</source>
        <translation>eine Funktion &quot;%1&quot; gibt es nicht: %2</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; is read as an attribute%2: %3</source>
        <translation>&quot;&lt;%1&gt;&quot; wird als Attribut gelesen%2: %3</translation>
    </message>
    <message>
        <source>, which the document lacks</source>
        <translation>, das dem Dokument fehlt</translation>
    </message>
    <message>
        <source>the format begins behind the last comma, and &quot;%1&quot; is no attribute: instead of a comma in the format write &quot;%2&quot;</source>
        <translation>das Format beginnt hinter dem letzten Komma, und &quot;%1&quot; ist kein Attribut: statt eines Kommas im Format schreiben Sie &quot;%2&quot;</translation>
    </message>
    <message>
        <source>the expression &quot;%1&quot; divides by zero</source>
        <translation>der Ausdruck &quot;%1&quot; teilt durch null</translation>
    </message>
    <message>
        <source>the document has no attribute &quot;%1&quot;</source>
        <translation>das Dokument hat kein Attribut &quot;%1&quot;</translation>
    </message>
    <message>
        <source>: with it the group goes</source>
        <translation>: mit ihm entfällt die Gruppe</translation>
    </message>
    <message>
        <source>; did you mean &quot;%1&quot;?</source>
        <translation>; ist &quot;%1&quot; gemeint?</translation>
    </message>
    <message>
        <source>; the value of &quot;%1&quot; is put into it</source>
        <translation>; der Wert von &quot;%1&quot; wird darin eingesetzt</translation>
    </message>
    <message>
        <source>, with its values &quot;%1&quot;,</source>
        <translation>, mit seinen Werten &quot;%1&quot;,</translation>
    </message>
    <message>
        <source>the expression &quot;%1&quot;%2 divides by zero or has no finite value for another reason: it prints &quot;%3&quot;</source>
        <translation>der Ausdruck &quot;%1&quot;%2 teilt durch null oder hat aus einem anderen Grund keinen endlichen Wert: er druckt &quot;%3&quot;</translation>
    </message>
    <message>
        <source>; did you mean &quot;%1&quot;, in Latin letters?</source>
        <translation>; ist &quot;%1&quot; in lateinischen Buchstaben gemeint?</translation>
    </message>
    <message>
        <source>the font stays</source>
        <translation>die Schrift bleibt</translation>
    </message>
    <message>
        <source>the line is solid</source>
        <translation>die Linie ist durchgezogen</translation>
    </message>
    <message>
        <source>it counts as left</source>
        <translation>es zählt als left</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes %2, and not &quot;%3&quot;: %4</source>
        <translation>&quot;%1&quot; nimmt %2 und nicht &quot;%3&quot;: %4</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a number from 0 to 255, and not &quot;%2&quot;: it counts as %3</source>
        <translation>&quot;%1&quot; ist eine Zahl von 0 bis 255 und nicht &quot;%2&quot;: es zählt als %3</translation>
    </message>
    <message>
        <source>BBCode has no key &quot;%1&quot;%2</source>
        <translation>BBCode hat keinen Schlüssel &quot;%1&quot;%2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is of no use outside of [%2]</source>
        <translation>&quot;%1&quot; nützt außerhalb von [%2] nichts</translation>
    </message>
    <message>
        <source>] or [</source>
        <translation>] oder [</translation>
    </message>
    <message>
        <source>&quot;[/%1]&quot; closes what isn&apos;t open</source>
        <translation>&quot;[/%1]&quot; schließt, was nicht offen ist</translation>
    </message>
    <message>
        <source>&quot;[%1]&quot; is never closed: </source>
        <translation>&quot;[%1]&quot; wird nie geschlossen: </translation>
    </message>
    <message>
        <source>no line is drawn; write [hr /]</source>
        <translation>es wird keine Linie gezeichnet; schreiben Sie [hr /]</translation>
    </message>
    <message>
        <source>no picture is printed; write [/img] behind it</source>
        <translation>es wird kein Bild gedruckt; schreiben Sie [/img] dahinter</translation>
    </message>
    <message>
        <source>no code is printed</source>
        <translation>es wird kein Code gedruckt</translation>
    </message>
    <message>
        <source>it holds to the text&apos;s end, and beyond for some</source>
        <translation>es gilt bis zum Ende des Textes, und bei manchen darüber hinaus</translation>
    </message>
    <message>
        <source>barcode</source>
        <translation>Strichcode</translation>
    </message>
    <message>
        <source>QR code</source>
        <translation>QR-Code</translation>
    </message>
    <message>
        <source>the %1 has no data: none is printed</source>
        <translation>der %1 hat keine Daten: es wird keiner gedruckt</translation>
    </message>
    <message>
        <source>the %1 of &quot;%2&quot; can&apos;t be printed: %3</source>
        <translation>der %1 aus &quot;%2&quot; kann nicht gedruckt werden: %3</translation>
    </message>
    <message>
        <source>acts as a tag of BBCode; &quot;--clean brackets&quot; makes &quot;(&quot; and &quot;)&quot; of its brackets</source>
        <translation>wirkt als Tag von BBCode; &quot;--clean brackets&quot; macht aus seinen Klammern &quot;(&quot; und &quot;)&quot;</translation>
    </message>
    <message>
        <source>acts as in a template; &quot;--clean tags&quot; makes a blank of the &quot;&lt;&quot;</source>
        <translation>wirkt wie in einer Vorlage; &quot;--clean tags&quot; macht aus dem &quot;&lt;&quot; ein Leerzeichen</translation>
    </message>
    <message>
        <source>%1 is given as &quot;%2&quot;: &quot;%3&quot; </source>
        <translation>%1 ist angegeben als &quot;%2&quot;: &quot;%3&quot; </translation>
    </message>
    <message>
        <source>; templates have nothing of the kind</source>
        <translation>; Vorlagen haben nichts dergleichen</translation>
    </message>
    <message>
        <source>; templates have &quot;%1&quot;</source>
        <translation>; Vorlagen haben &quot;%1&quot;</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a tag of BBCode, and a template prints &quot;%2&quot;%3</source>
        <translation>&quot;%1&quot; ist ein Tag von BBCode, und eine Vorlage druckt &quot;%2&quot;%3</translation>
    </message>
    <message>
        <source>BBCode has no tag &quot;%1&quot;%2</source>
        <translation>BBCode hat kein Tag &quot;%1&quot;%2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; opens, as it has a key</source>
        <translation>&quot;%1&quot; öffnet, da es einen Schlüssel hat</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no tag, and prints as it stands: a tag is [name] or [name key=value], without quotation marks</source>
        <translation>&quot;%1&quot; ist kein Tag und druckt, wie es dasteht: ein Tag ist [name] oder [name key=value], ohne Anführungszeichen</translation>
    </message>
    <message>
        <source>&quot;[/%1]&quot; closes in front of &quot;[/%2]&quot;, which opened inside of it</source>
        <translation>&quot;[/%1]&quot; schließt vor &quot;[/%2]&quot;, das darin geöffnet wurde</translation>
    </message>
    <message>
        <source>&quot;[img]&quot; names no picture: write [img name=logo][/img]</source>
        <translation>&quot;[img]&quot; nennt kein Bild: schreiben Sie [img name=logo][/img]</translation>
    </message>
    <message numerus="yes">
        <source>the name &quot;%1&quot; fits %n files, and the first of them is taken: %2</source>
        <translation>
            <numerusform>der Name &quot;%1&quot; passt auf %n Datei, und die erste davon wird genommen: %2</numerusform>
            <numerusform>der Name &quot;%1&quot; passt auf %n Dateien, und die erste davon wird genommen: %2</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; text isn&apos;t larger than other text on %2: both have characters of %3 x %4 dots</source>
        <translation>Text in &quot;%1&quot; ist nicht größer als anderer auf %2: beide haben Zeichen von %3 x %4 Punkten</translation>
    </message>
    <message>
        <source>&quot;zerofill&quot; takes whole numbers alone, and prints &quot;%1&quot; for &quot;%2&quot;</source>
        <translation>&quot;zerofill&quot; nimmt nur ganze Zahlen und druckt &quot;%1&quot; für &quot;%2&quot;</translation>
    </message>
    <message>
        <source>the symbol %1 has no drawing</source>
        <translation>das Sonderzeichen %1 hat keine Zeichnung</translation>
    </message>
    <message>
        <source>the symbol %1 is blank: font %2 of %3 takes no drawings</source>
        <translation>das Sonderzeichen %1 bleibt leer: Schrift %2 von %3 nimmt keine Zeichnungen an</translation>
    </message>
    <message>
        <source>the symbol %1 has no drawing that fits the %2 x %3 dots of a character of %4</source>
        <translation>das Sonderzeichen %1 hat keine Zeichnung, die in die %2 x %3 Punkte eines Zeichens von %4 passt</translation>
    </message>
    <message>
        <source>%1 is not in the printer&apos;s character set, %2</source>
        <translation>%1 gibt es im Zeichensatz des Druckers, %2, nicht</translation>
    </message>
    <message>
        <source>%1 are not in the printer&apos;s character set, %2</source>
        <translation>%1 gibt es im Zeichensatz des Druckers, %2, nicht</translation>
    </message>
    <message>
        <source>the copy prints without a mark: </source>
        <translation>die Kopie wird ohne Kennzeichnung gedruckt: </translation>
    </message>
    <message>
        <source>a copy will print without a mark: </source>
        <translation>eine Kopie wird ohne Kennzeichnung gedruckt werden: </translation>
    </message>
    <message>
        <source>there is no &quot;&lt;DOCNO&gt;&quot;</source>
        <translation>es gibt kein &quot;&lt;DOCNO&gt;&quot;</translation>
    </message>
    <message>
        <source>a file of special symbols is named on line %1 already; the lowest line counts</source>
        <translation>eine Datei mit Sonderzeichen nennt schon Zeile %1; die unterste Zeile zählt</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has no character behind it on the line and is lost: the next line stays in font %2</source>
        <translation>hinter &quot;%1&quot; steht in der Zeile kein Zeichen, und es geht verloren: die nächste Zeile bleibt in Schrift %2</translation>
    </message>
    <message>
        <source>there is no font of &quot;%1&quot;: it counts as &quot;&lt;F%2&gt;&quot;</source>
        <translation>zu &quot;%1&quot; gibt es keine Schrift: es zählt als &quot;&lt;F%2&gt;&quot;</translation>
    </message>
    <message>
        <source>the font is switched here and never back: all lines below are printed in font %1</source>
        <translation>die Schrift wird hier umgeschaltet und nie zurück: alle Zeilen darunter werden in Schrift %1 gedruckt</translation>
    </message>
    <message>
        <source>the line has no text and isn&apos;t printed: &quot;%1&quot; is lost</source>
        <translation>die Zeile hat keinen Text und wird nicht gedruckt: &quot;%1&quot; geht verloren</translation>
    </message>
    <message>
        <source>the group is left open at the line&apos;s end: &quot;[&quot; has no &quot;]&quot; on the line</source>
        <translation>die Gruppe bleibt am Ende der Zeile offen: &quot;[&quot; hat keine &quot;]&quot; in der Zeile</translation>
    </message>
    <message>
        <source>&quot;]&quot; has no &quot;[&quot; in front of it on the line</source>
        <translation>&quot;]&quot; hat keine &quot;[&quot; davor in der Zeile</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands inside the tag &quot;%2&quot;</source>
        <translation>&quot;%1&quot; steht innerhalb des Tags &quot;%2&quot;</translation>
    </message>
    <message numerus="yes">
        <source>&quot;%1&quot; isn&apos;t filled when the group in front of it goes: from the group&apos;s end to the tag there have to be %n characters</source>
        <translation>
            <numerusform>&quot;%1&quot; wird nicht gefüllt, wenn die Gruppe davor entfällt: vom Ende der Gruppe bis zum Tag muss %n Zeichen stehen</numerusform>
            <numerusform>&quot;%1&quot; wird nicht gefüllt, wenn die Gruppe davor entfällt: vom Ende der Gruppe bis zum Tag müssen %n Zeichen stehen</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands inside other text, which goes to the first and to the last entry only</source>
        <translation>&quot;%1&quot; steht innerhalb von anderem Text, der nur zum ersten und zum letzten Eintrag kommt</translation>
    </message>
    <message>
        <source>the line is cut %1 too far to the right for &quot;%2&quot;: letters in front of it or in it are more in upper case</source>
        <translation>die Zeile wird für &quot;%2&quot; %1 zu weit rechts geschnitten: Buchstaben davor oder darin sind großgeschrieben mehr</translation>
    </message>
    <message>
        <source>a character</source>
        <translation>ein Zeichen</translation>
    </message>
    <message numerus="yes">
        <source>%n characters</source>
        <translation>
            <numerusform>%n Zeichen</numerusform>
            <numerusform>%n Zeichen</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; prints nothing unless the client cuts the template here (--fiscal)</source>
        <translation>&quot;&lt;%1&gt;&quot; druckt nichts, wenn das Programm die Vorlage hier nicht schneidet (--fiscal)</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; is no markup in the data of a QR code: it goes into the code</source>
        <translation>&quot;&lt;%1&gt;&quot; ist in den Daten eines QR-Codes keine Auszeichnung: es kommt in den Code</translation>
    </message>
    <message>
        <source>&quot;%1&quot; of a group goes into the QR code</source>
        <translation>&quot;%1&quot; einer Gruppe kommt in den QR-Code</translation>
    </message>
    <message>
        <source>the tag isn&apos;t filled with this document, as the group in front of it goes</source>
        <translation>das Tag wird mit diesem Dokument nicht gefüllt, da die Gruppe davor entfällt</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; prints as it stands on a line with &quot;&lt;S&gt;&quot;</source>
        <translation>&quot;&lt;%1&gt;&quot; druckt in einer Zeile mit &quot;&lt;S&gt;&quot;, wie es dasteht</translation>
    </message>
    <message>
        <source>%1 &lt;S&gt; on the line: each takes all the room that the text leaves, and the line gets wider than the paper</source>
        <translation>%1 &lt;S&gt; in der Zeile: jedes nimmt den ganzen Platz, den der Text lässt, und die Zeile wird breiter als das Papier</translation>
    </message>
    <message>
        <source>two</source>
        <translation>zwei</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; prints as it stands on a line with &quot;&lt;C&gt;&quot;</source>
        <translation>&quot;&lt;%1&gt;&quot; druckt in einer Zeile mit &quot;&lt;C&gt;&quot;, wie es dasteht</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; prints as it stands: the line has a smaller spacing</source>
        <translation>&quot;&lt;%1&gt;&quot; druckt, wie es dasteht: die Zeile hat einen kleineren Abstand</translation>
    </message>
    <message>
        <source>the format is switched on here and never off</source>
        <translation>das Format wird hier ein- und nie ausgeschaltet</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; prints as it stands: a tag of the same pair stands directly in front</source>
        <translation>&quot;&lt;%1&gt;&quot; druckt, wie es dasteht: unmittelbar davor steht ein Tag desselben Paars</translation>
    </message>
    <message>
        <source>&quot;&lt;X:&gt;&quot; prints as it stands: there is no &quot;&lt;:X&gt;&quot; behind it</source>
        <translation>&quot;&lt;X:&gt;&quot; druckt, wie es dasteht: dahinter gibt es kein &quot;&lt;:X&gt;&quot;</translation>
    </message>
    <message>
        <source>&quot;&lt;:X&gt;&quot; prints as it stands: there is no &quot;&lt;X:&gt;&quot; in front of it</source>
        <translation>&quot;&lt;:X&gt;&quot; druckt, wie es dasteht: davor gibt es kein &quot;&lt;X:&gt;&quot;</translation>
    </message>
    <message>
        <source>&quot;&lt;QR&gt;&quot; and its data print as they stand in text and HTML</source>
        <translation>&quot;&lt;QR&gt;&quot; und seine Daten drucken in Text und HTML, wie sie dastehen</translation>
    </message>
    <message>
        <source>, such as &quot;&lt; %1 &gt;&quot;</source>
        <translation>, etwa &quot;&lt; %1 &gt;&quot;</translation>
    </message>
    <message>
        <source>, such as &quot;&lt;%1,&gt;&quot; with an empty format</source>
        <translation>, etwa &quot;&lt;%1,&gt;&quot; mit leerem Format</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; is read as the code of a character: an attribute or expression has at least four characters</source>
        <translation>&quot;&lt;%1&gt;&quot; wird als Code eines Zeichens gelesen: ein Attribut oder Ausdruck hat mindestens vier Zeichen</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; prints as it stands: an image lies between &quot;&lt;I&gt;&quot; and &quot;&lt;/I&gt;&quot; on one line</source>
        <translation>&quot;&lt;%1&gt;&quot; druckt, wie es dasteht: ein Bild liegt zwischen &quot;&lt;I&gt;&quot; und &quot;&lt;/I&gt;&quot; in einer Zeile</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; prints as it stands; did you mean &quot;&lt;%2&gt;&quot;?</source>
        <translation>&quot;&lt;%1&gt;&quot; druckt, wie es dasteht; ist &quot;&lt;%2&gt;&quot; gemeint?</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; prints as it stands: there is no such tag</source>
        <translation>&quot;&lt;%1&gt;&quot; druckt, wie es dasteht: ein solches Tag gibt es nicht</translation>
    </message>
    <message>
        <source>&quot;&lt;&quot; has no &quot;&gt;&quot; behind it on the line</source>
        <translation>&quot;&lt;&quot; hat kein &quot;&gt;&quot; dahinter in der Zeile</translation>
    </message>
    <message>
        <source>&quot;&lt;&quot; has no &quot;&gt;&quot; before the next &quot;&lt;&quot;: &quot;%1&quot; is read as one tag</source>
        <translation>&quot;&lt;&quot; hat kein &quot;&gt;&quot; vor dem nächsten &quot;&lt;&quot;: &quot;%1&quot; wird als ein Tag gelesen</translation>
    </message>
    <message>
        <source>the document has no &quot;entries&quot;: a blank line is printed</source>
        <translation>das Dokument hat keine &quot;entries&quot;: eine leere Zeile wird gedruckt</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; prints as it stands: an attribute or expression has at least four characters%2</source>
        <translation>&quot;&lt;%1&gt;&quot; druckt, wie es dasteht: ein Attribut oder Ausdruck hat mindestens vier Zeichen%2</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; prints as it stands, as there is no such tag: %2</source>
        <translation>&quot;&lt;%1&gt;&quot; druckt, wie es dasteht, da es ein solches Tag nicht gibt: %2</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; is no number: the character of code 0 is printed</source>
        <translation>&quot;&lt;%1&gt;&quot; ist keine Zahl: das Zeichen mit dem Code 0 wird gedruckt</translation>
    </message>
    <message>
        <source>&quot;%1&quot; acts as in a template; &quot;--clean tags&quot; makes a blank of the &quot;&lt;&quot;</source>
        <translation>&quot;%1&quot; wirkt wie in einer Vorlage; &quot;--clean tags&quot; macht aus dem &quot;&lt;&quot; ein Leerzeichen</translation>
    </message>
    <message>
        <source>a tab is a column; &quot;--clean controls&quot; makes a blank of it</source>
        <translation>ein Tabulator ist eine Spalte; &quot;--clean controls&quot; macht daraus ein Leerzeichen</translation>
    </message>
    <message>
        <source>&quot;[&quot; and &quot;]&quot; make a group; &quot;--clean brackets&quot; makes &quot;(&quot; and &quot;)&quot; of them</source>
        <translation>&quot;[&quot; und &quot;]&quot; ergeben eine Gruppe; &quot;--clean brackets&quot; macht &quot;(&quot; und &quot;)&quot; daraus</translation>
    </message>
    <message>
        <source>&quot;%1&quot; and prints &quot;%2&quot;: </source>
        <translation>&quot;%1&quot; und druckt &quot;%2&quot;: </translation>
    </message>
    <message>
        <source>%1 is given as </source>
        <translation>%1 ist angegeben als </translation>
    </message>
    <message>
        <source>a tab stands between two entries, and not &quot;%1&quot;</source>
        <translation>zwischen zwei Einträgen steht ein Tabulator und nicht &quot;%1&quot;</translation>
    </message>
    <message>
        <source>&quot;--clean equals&quot; makes blanks of those behind the first</source>
        <translation>&quot;--clean equals&quot; macht Leerzeichen aus denen hinter dem ersten</translation>
    </message>
    <message>
        <source>the entry </source>
        <translation>der Eintrag </translation>
    </message>
    <message numerus="yes">
        <source>&quot;%1&quot; has %n columns: each &quot;=&quot; begins one; %2</source>
        <translation>
            <numerusform>&quot;%1&quot; hat %n Spalte: jedes &quot;=&quot; beginnt eine; %2</numerusform>
            <numerusform>&quot;%1&quot; hat %n Spalten: jedes &quot;=&quot; beginnt eine; %2</numerusform>
        </translation>
    </message>
    <message>
        <source>is given as &quot;%1&quot; and prints &quot;%2&quot;: </source>
        <translation>ist angegeben als &quot;%1&quot; und druckt &quot;%2&quot;: </translation>
    </message>
    <message>
        <source> of %1</source>
        <translation> bei Platz für %1</translation>
    </message>
    <message>
        <source>, and %1 has %2</source>
        <translation>, und %1 hat %2</translation>
    </message>
    <message>
        <source> in its font %1</source>
        <translation> in seiner Schrift %1</translation>
    </message>
    <message numerus="yes">
        <source>takes %n characters</source>
        <translation>
            <numerusform>braucht %n Zeichen</numerusform>
            <numerusform>braucht %n Zeichen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>takes at least %n characters</source>
        <translation>
            <numerusform>braucht mindestens %n Zeichen</numerusform>
            <numerusform>braucht mindestens %n Zeichen</numerusform>
        </translation>
    </message>
    <message>
        <source>the paper ends inside &quot;%1&quot;: &quot;%2&quot; stands on one row and &quot;%3&quot; on the next; the line &quot;%4&quot; %5</source>
        <translation>das Papier endet innerhalb von &quot;%1&quot;: &quot;%2&quot; steht auf einer Zeile und &quot;%3&quot; auf der nächsten; die Zeile &quot;%4&quot; %5</translation>
    </message>
    <message>
        <source>the line &quot;%1&quot; %2</source>
        <translation>die Zeile &quot;%1&quot; %2</translation>
    </message>
    <message>
        <source>%1 is given as &quot;%2&quot;</source>
        <translation>%1 ist angegeben als &quot;%2&quot;</translation>
    </message>
    <message>
        <source>%1 is %2</source>
        <translation>%1 ist %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is %2</source>
        <translation>&quot;%1&quot; ist %2</translation>
    </message>
    <message>
        <source> and prints &quot;%1&quot;: </source>
        <translation> und druckt &quot;%1&quot;: </translation>
    </message>
    <message>
        <source>in a format with decimals a number between -1 and 0 loses its sign; &quot;&lt;%1,0.E&gt;&quot; keeps it</source>
        <translation>in einem Format mit Dezimalstellen verliert eine Zahl zwischen -1 und 0 ihr Vorzeichen; &quot;&lt;%1,0.E&gt;&quot; behält es</translation>
    </message>
    <message>
        <source>an &quot;E&quot; in the format gives six digits</source>
        <translation>ein &quot;E&quot; im Format gibt sechs Ziffern</translation>
    </message>
    <message>
        <source>with decimals in the format the part in front of the point has 32 bits; &quot;&lt;%1,0&gt;&quot; prints it without decimals</source>
        <translation>mit Dezimalstellen im Format hat der Teil vor dem Punkt 32 Bit; &quot;&lt;%1,0&gt;&quot; druckt die Zahl ohne Dezimalstellen</translation>
    </message>
    <message>
        <source>without a format there are two decimals; &quot;&lt;%1,0.%2&gt;&quot; prints all of them</source>
        <translation>ohne Format gibt es zwei Dezimalstellen; &quot;&lt;%1,0.%2&gt;&quot; druckt alle</translation>
    </message>
    <message>
        <source>the text reads as a number; &quot;%1%2&quot; stays as it stands</source>
        <translation>der Text liest sich als Zahl; &quot;%1%2&quot; bleibt, wie es dasteht</translation>
    </message>
    <message>
        <source>the text reads as a number, which has no zeros in front; &quot;&lt;%1,%2&gt;&quot; prints all digits</source>
        <translation>der Text liest sich als Zahl, und die hat keine Nullen am Anfang; &quot;&lt;%1,%2&gt;&quot; druckt alle Ziffern</translation>
    </message>
    <message>
        <source>the comma is read as a decimal point; a format, such as &quot;&lt;%1,0.%2&gt;&quot;, says that a number is meant</source>
        <translation>das Komma wird als Dezimalpunkt gelesen; ein Format wie &quot;&lt;%1,0.%2&gt;&quot; sagt, dass eine Zahl gemeint ist</translation>
    </message>
    <message>
        <source>%1 is a code by its name, and the format &quot;%2&quot; takes zeros off its front; one of as many zeros as it has digits, such as &quot;&lt;%1,000000&gt;&quot;, prints all of them</source>
        <translation>%1 ist dem Namen nach ein Code, und das Format &quot;%2&quot; nimmt ihm die Nullen am Anfang; eines mit so vielen Nullen, wie er Ziffern hat, etwa &quot;&lt;%1,000000&gt;&quot;, druckt alle</translation>
    </message>
    <message>
        <source>in &quot;%1&quot; the &quot;m&quot; behind the hours is the month, and minutes are &quot;n&quot;</source>
        <translation>in &quot;%1&quot; ist das &quot;m&quot; hinter den Stunden der Monat, und Minuten sind &quot;n&quot;</translation>
    </message>
    <message>
        <source>, and &quot;am&quot; or &quot;pm&quot; is &quot;ap&quot;</source>
        <translation>, und &quot;am&quot; oder &quot;pm&quot; ist &quot;ap&quot;</translation>
    </message>
    <message>
        <source>; other words stand outside of the tag</source>
        <translation>; andere Wörter stehen außerhalb des Tags</translation>
    </message>
    <message>
        <source>in &quot;%1&quot; the letters of &quot;%2&quot; mean something else: days are &quot;dd&quot;, months &quot;mm&quot;, years &quot;yy&quot; or &quot;yyyy&quot;, hours &quot;hh&quot;, minutes &quot;nn&quot;, seconds &quot;ss&quot;%3</source>
        <translation>in &quot;%1&quot; bedeuten die Buchstaben von &quot;%2&quot; etwas anderes: Tage sind &quot;dd&quot;, Monate &quot;mm&quot;, Jahre &quot;yy&quot; oder &quot;yyyy&quot;, Stunden &quot;hh&quot;, Minuten &quot;nn&quot;, Sekunden &quot;ss&quot;%3</translation>
    </message>
    <message>
        <source>, and the &quot;m&quot; behind the hours is the month</source>
        <translation>, und das &quot;m&quot; hinter den Stunden ist der Monat</translation>
    </message>
    <message>
        <source>the format &quot;%1&quot; has no part of a date or time</source>
        <translation>das Format &quot;%1&quot; hat keinen Teil eines Datums oder einer Uhrzeit</translation>
    </message>
    <message>
        <source>the format &quot;%1&quot; asks for a time, and the value is a date alone</source>
        <translation>das Format &quot;%1&quot; verlangt eine Uhrzeit, und der Wert ist ein bloßes Datum</translation>
    </message>
    <message>
        <source>the format &quot;%1&quot; asks for a date, and the value is a time alone</source>
        <translation>das Format &quot;%1&quot; verlangt ein Datum, und der Wert ist eine bloße Uhrzeit</translation>
    </message>
    <message>
        <source>the format &quot;%1&quot; is for dates and times, and the value is a number</source>
        <translation>das Format &quot;%1&quot; ist für Datum und Uhrzeit, und der Wert ist eine Zahl</translation>
    </message>
    <message>
        <source>of the format &quot;%1&quot; only &quot;0&quot;, &quot;#&quot; and the point are for numbers: what else is to be printed stands outside of the tag</source>
        <translation>vom Format &quot;%1&quot; sind nur &quot;0&quot;, &quot;#&quot; und der Punkt für Zahlen: was sonst gedruckt werden soll, steht außerhalb des Tags</translation>
    </message>
    <message>
        <source>the format &quot;%1&quot; is for real numbers, and the value is a whole one</source>
        <translation>das Format &quot;%1&quot; ist für Zahlen mit Dezimalstellen, und der Wert ist eine ganze Zahl</translation>
    </message>
    <message>
        <source>the format &quot;%1&quot; has more than nine decimals</source>
        <translation>das Format &quot;%1&quot; hat mehr als neun Dezimalstellen</translation>
    </message>
    <message>
        <source>the format &quot;%1&quot; is for dates and times, and the value is a text</source>
        <translation>das Format &quot;%1&quot; ist für Datum und Uhrzeit, und der Wert ist ein Text</translation>
    </message>
    <message>
        <source>the format &quot;%1&quot; has no effect, as the value is a text</source>
        <translation>das Format &quot;%1&quot; hat keine Wirkung, da der Wert ein Text ist</translation>
    </message>
    <message>
        <source>the format &quot;%1&quot; has no effect, as the value is true or false</source>
        <translation>das Format &quot;%1&quot; hat keine Wirkung, da der Wert wahr oder falsch ist</translation>
    </message>
    <message>
        <source>; hand it over as the text &quot;%1.%2&quot;</source>
        <translation>; übergeben Sie ihn als Text &quot;%1.%2&quot;</translation>
    </message>
    <message>
        <source>: it prints &quot;%1&quot;</source>
        <translation>: es druckt &quot;%1&quot;</translation>
    </message>
    <message>
        <source>a template has no barcode; &quot;&lt;QR&gt;&quot; with the data behind it is a QR code, and a BBCode text has [barcode]</source>
        <translation>eine Vorlage hat keinen Strichcode; &quot;&lt;QR&gt;&quot; mit den Daten dahinter ist ein QR-Code, und ein Text in BBCode hat [barcode]</translation>
    </message>
    <message>
        <source>a QR code is &quot;&lt;QR&gt;&quot; with the data behind it</source>
        <translation>ein QR-Code ist &quot;&lt;QR&gt;&quot; mit den Daten dahinter</translation>
    </message>
    <message>
        <source>the printer&apos;s driver cuts the paper behind the receipt, and no tag does</source>
        <translation>der Treiber des Druckers schneidet das Papier hinter dem Bon, und kein Tag tut es</translation>
    </message>
    <message>
        <source>an empty line of the template feeds the paper by a line</source>
        <translation>eine leere Zeile der Vorlage schiebt das Papier um eine Zeile vor</translation>
    </message>
    <message>
        <source>a template has no pictures; &quot;&lt;SPECSYMBOLS=&quot; names drawings of single characters, and a BBCode text has [img]</source>
        <translation>eine Vorlage hat keine Bilder; &quot;&lt;SPECSYMBOLS=&quot; nennt Zeichnungen einzelner Zeichen, und ein Text in BBCode hat [img]</translation>
    </message>
    <message>
        <source>a rule is a line of &quot;-&quot;, or &quot;&lt;U&gt; &lt;S&gt; &quot; across the paper, whatever its width</source>
        <translation>eine Linie ist eine Zeile aus &quot;-&quot;, oder &quot;&lt;U&gt; &lt;S&gt; &quot; quer über das Papier, wie breit es auch ist</translation>
    </message>
    <message>
        <source>a line without &quot;&lt;C&gt;&quot;, &quot;&lt;R&gt;&quot; and &quot;&lt;S&gt;&quot; stands at the left edge</source>
        <translation>eine Zeile ohne &quot;&lt;C&gt;&quot;, &quot;&lt;R&gt;&quot; und &quot;&lt;S&gt;&quot; steht am linken Rand</translation>
    </message>
    <message>
        <source>a line of the template is a line of the receipt</source>
        <translation>eine Zeile der Vorlage ist eine Zeile des Bons</translation>
    </message>
    <message>
        <source>&quot;&lt;S&gt;&quot; moves what stands behind it to the right edge</source>
        <translation>&quot;&lt;S&gt;&quot; rückt, was dahinter steht, an den rechten Rand</translation>
    </message>
    <message>
        <source>&quot;&lt;C&gt;&quot; centres the line</source>
        <translation>&quot;&lt;C&gt;&quot; zentriert die Zeile</translation>
    </message>
    <message>
        <source>&quot;&lt;R&gt;&quot; puts the line to the right edge</source>
        <translation>&quot;&lt;R&gt;&quot; rückt die Zeile an den rechten Rand</translation>
    </message>
    <message>
        <source>&quot;&lt;B&gt;&quot; makes the line bold, &quot;&lt;B:&gt;&quot; and &quot;&lt;:B&gt;&quot; a part of it</source>
        <translation>&quot;&lt;B&gt;&quot; macht die Zeile fett, &quot;&lt;B:&gt;&quot; und &quot;&lt;:B&gt;&quot; einen Teil von ihr</translation>
    </message>
    <message>
        <source>&quot;&lt;N&gt;&quot; makes the line italic, &quot;&lt;N:&gt;&quot; and &quot;&lt;:N&gt;&quot; a part of it</source>
        <translation>&quot;&lt;N&gt;&quot; macht die Zeile kursiv, &quot;&lt;N:&gt;&quot; und &quot;&lt;:N&gt;&quot; einen Teil von ihr</translation>
    </message>
    <message>
        <source>&quot;&lt;U&gt;&quot; underlines the line, &quot;&lt;U:&gt;&quot; and &quot;&lt;:U&gt;&quot; a part of it</source>
        <translation>&quot;&lt;U&gt;&quot; unterstreicht die Zeile, &quot;&lt;U:&gt;&quot; und &quot;&lt;:U&gt;&quot; einen Teil von ihr</translation>
    </message>
    <message>
        <source>&quot;&lt;Z&gt;&quot; marks the line, &quot;&lt;Z:&gt;&quot; and &quot;&lt;:Z&gt;&quot; a part of it</source>
        <translation>&quot;&lt;Z&gt;&quot; hebt die Zeile hervor, &quot;&lt;Z:&gt;&quot; und &quot;&lt;:Z&gt;&quot; einen Teil von ihr</translation>
    </message>
    <message>
        <source>&quot;&lt;H2&gt;&quot; makes the line twice as high, &quot;&lt;W2&gt;&quot; twice as wide</source>
        <translation>&quot;&lt;H2&gt;&quot; macht die Zeile doppelt so hoch, &quot;&lt;W2&gt;&quot; doppelt so breit</translation>
    </message>
    <message>
        <source>&quot;&lt;F2&gt;&quot; is the printer&apos;s second font, and there are four</source>
        <translation>&quot;&lt;F2&gt;&quot; ist die zweite Schrift des Druckers, und es gibt vier</translation>
    </message>
    <message>
        <source>a template only prints; &quot;receipt drawer&quot; opens the cash drawer</source>
        <translation>eine Vorlage druckt nur; &quot;receipt drawer&quot; öffnet die Kassenschublade</translation>
    </message>
    <message>
        <source>what isn&apos;t always there stands in a group, &quot;[&quot; to &quot;]&quot;, that goes when a value in it is empty or zero</source>
        <translation>was nicht immer da ist, steht in einer Gruppe, von &quot;[&quot; bis &quot;]&quot;, die entfällt, wenn ein Wert darin leer oder null ist</translation>
    </message>
    <message>
        <source>&quot;&lt;ENTRIES&gt;&quot; is the list that the program makes, and there is no other</source>
        <translation>&quot;&lt;ENTRIES&gt;&quot; ist die Liste, die das Programm macht, und eine andere gibt es nicht</translation>
    </message>
    <message>
        <source>a format rounds, and floor(x*100+0.500001)/100 does in front of further calculation</source>
        <translation>ein Format rundet, und floor(x*100+0.500001)/100 tut es vor weiterer Rechnung</translation>
    </message>
    <message>
        <source>the greater of two is (a+b+abs(a-b))/2</source>
        <translation>die größere von zweien ist (a+b+abs(a-b))/2</translation>
    </message>
    <message>
        <source>the smaller of two is (a+b-abs(a-b))/2</source>
        <translation>die kleinere von zweien ist (a+b-abs(a-b))/2</translation>
    </message>
    <message>
        <source>floor(x) is the whole number below x, and ceil(x) that above</source>
        <translation>floor(x) ist die ganze Zahl unter x und ceil(x) die darüber</translation>
    </message>
    <message>
        <source>it is called ceil</source>
        <translation>sie heißt ceil</translation>
    </message>
    <message>
        <source>it is called pow, or a^b</source>
        <translation>sie heißt pow, oder a^b</translation>
    </message>
    <message>
        <source>the square is x^2, and the root sqrt(x)</source>
        <translation>das Quadrat ist x^2 und die Wurzel sqrt(x)</translation>
    </message>
    <message>
        <source>the remainder is a%b</source>
        <translation>der Rest ist a%b</translation>
    </message>
    <message>
        <source>the sum is a+b+c</source>
        <translation>die Summe ist a+b+c</translation>
    </message>
    <message>
        <source>the mean of two is (a+b)/2</source>
        <translation>das Mittel von zweien ist (a+b)/2</translation>
    </message>
    <message>
        <source>there are no conditions in expressions; a group, &quot;[&quot; to &quot;]&quot;, goes when a value in it is zero</source>
        <translation>in Ausdrücken gibt es keine Bedingungen; eine Gruppe, von &quot;[&quot; bis &quot;]&quot;, entfällt, wenn ein Wert darin null ist</translation>
    </message>
    <message>
        <source>the format stands behind a comma at the end of the tag</source>
        <translation>das Format steht hinter einem Komma am Ende des Tags</translation>
    </message>
    <message>
        <source>the program hands date and time over as an attribute</source>
        <translation>das Programm übergibt Datum und Uhrzeit als Attribut</translation>
    </message>
    <message>
        <source>the fiscal marker is &quot;&lt;%1%2&gt;&quot;</source>
        <translation>die Fiskalmarke ist &quot;&lt;%1%2&gt;&quot;</translation>
    </message>
    <message>
        <source>; &quot;&lt;%1,0%2&gt;&quot; prints none</source>
        <translation>; &quot;&lt;%1,0%2&gt;&quot; druckt keines</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has two signs, as %2 brings one of its own%3</source>
        <translation>&quot;%1&quot; hat zwei Vorzeichen, da %2 ein eigenes mitbringt%3</translation>
    </message>
    <message>
        <source>the values put into &quot;&lt;%1&gt;&quot; name others on and on: filling it would hang</source>
        <translation>die Werte, die in &quot;&lt;%1&gt;&quot; eingesetzt werden, nennen immer weitere: das Füllen würde hängen</translation>
    </message>
    <message>
        <source>the value put in here leads to tags without end, such as &quot;&lt;%1&gt;&quot;: filling it would hang</source>
        <translation>der Wert, der hier eingesetzt wird, führt zu Tags ohne Ende, etwa &quot;&lt;%1&gt;&quot;: das Füllen würde hängen</translation>
    </message>
    <message>
        <source>%1 is printed, and the amounts above add up to %2: where each is rounded by itself, so are the parts of the sum, as in </source>
        <translation>%1 ist gedruckt, und die Beträge darüber ergeben %2: wo jeder für sich gerundet wird, werden es auch die Teile der Summe, etwa mit </translation>
    </message>
    <message>
        <source>%1 is printed, and the entries above add up to %2</source>
        <translation>%1 ist gedruckt, und die Einträge darüber ergeben %2</translation>
    </message>
    <message>
        <source> without &quot;%1&quot;</source>
        <translation> ohne &quot;%1&quot;</translation>
    </message>
    <message>
        <source>%1 is printed, and the parts of the sum are printed as %2 together: each is rounded by itself, and so is the sum; round the parts in it too, as in %3</source>
        <translation>%1 ist gedruckt, und die Teile der Summe sind zusammen als %2 gedruckt: jeder wird für sich gerundet, und ebenso die Summe; runden Sie auch die Teile in ihr, etwa mit %3</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes %2 characters, and the field has %3: what stands behind it is moved</source>
        <translation>&quot;%1&quot; braucht %2 Zeichen, und das Feld hat %3: was dahinter steht, wird verschoben</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is markup of templates: with it the text counts as a template, and its tags of BBCode print without their brackets</source>
        <translation>&quot;%1&quot; ist Auszeichnung von Vorlagen: mit ihr gilt der Text als Vorlage, und seine Tags von BBCode drucken ohne ihre Klammern</translation>
    </message>
    <message>
        <source>the copy prints without a mark: BBCode has none, so a value has to say that it is a copy, such as &lt;COPY_MARK&gt;</source>
        <translation>die Kopie wird ohne Kennzeichnung gedruckt: BBCode hat keine, also muss ein Wert sagen, dass es eine Kopie ist, etwa &lt;COPY_MARK&gt;</translation>
    </message>
    <message>
        <source>&quot;&lt;DOCNO&gt;&quot; doesn&apos;t count with a format or in an expression</source>
        <translation>&quot;&lt;DOCNO&gt;&quot; zählt mit einem Format und in einem Ausdruck nicht</translation>
    </message>
    <message>
        <source>&quot;]&quot; of the group goes into the QR code that the value begins</source>
        <translation>&quot;]&quot; der Gruppe kommt in den QR-Code, den der Wert beginnt</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; goes into the QR code as it stands: an attribute or expression has at least four characters%2</source>
        <translation>&quot;&lt;%1&gt;&quot; kommt in den QR-Code, wie es dasteht: ein Attribut oder Ausdruck hat mindestens vier Zeichen%2</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; ends at its first &quot;&gt;&quot;, and &quot;%2&quot; prints as it stands: nothing is compared; a group goes when a value in it is empty or zero</source>
        <translation>&quot;&lt;%1&gt;&quot; endet am ersten &quot;&gt;&quot;, und &quot;%2&quot; druckt, wie es dasteht: verglichen wird nichts; eine Gruppe entfällt, wenn ein Wert darin leer oder null ist</translation>
    </message>
</context>
<context>
    <name>LintRule</name>
    <message>
        <source>error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>note</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>, with --data %1</source>
        <translation>, mit --data %1</translation>
    </message>
    <message>
        <source>, with %1</source>
        <translation>, mit %1</translation>
    </message>
    <message>
        <source>Wrong%1:</source>
        <translation>Falsch%1:</translation>
    </message>
    <message>
        <source>Right:</source>
        <translation>Richtig:</translation>
    </message>
    <message>
        <source>an attribute that the document lacks</source>
        <translation>ein Attribut, das dem Dokument fehlt</translation>
    </message>
    <message>
        <source>an expression that can&apos;t be evaluated</source>
        <translation>ein Ausdruck, der nicht berechnet werden kann</translation>
    </message>
    <message>
        <source>An expression with a mistake prints nothing. The column is the place where its reading stopped. Without --data only mistakes are reported that no value can mend. An empty value in a group is none: the group goes.</source>
        <translation>Ein Ausdruck mit einem Fehler druckt nichts. Die Spalte ist die Stelle, an der das Lesen aufhörte. Ohne --data werden nur Fehler gemeldet, die kein Wert beheben kann. Ein leerer Wert in einer Gruppe ist keiner: die Gruppe entfällt.</translation>
    </message>
    <message>
        <source>an expression that its own last comma cuts</source>
        <translation>ein Ausdruck, den sein eigenes letztes Komma zerschneidet</translation>
    </message>
    <message>
        <source>What stands behind the last comma of a tag is the format, also if that comma belongs to a function or was meant as a decimal comma. An expression with a comma needs a format behind it, and a decimal point is a point.</source>
        <translation>Was hinter dem letzten Komma eines Tags steht, ist das Format, auch wenn das Komma zu einer Funktion gehört oder als Dezimalkomma gemeint war. Ein Ausdruck mit Komma braucht ein Format dahinter, und Dezimalstellen trennt ein Punkt.</translation>
    </message>
    <message>
        <source>an expression that divides by zero</source>
        <translation>ein Ausdruck, der durch null teilt</translation>
    </message>
    <message>
        <source>a format that isn&apos;t for its kind of value</source>
        <translation>ein Format, das nicht zur Art des Werts passt</translation>
    </message>
    <message>
        <source>a tag too short to be an attribute</source>
        <translation>ein Tag, das für ein Attribut zu kurz ist</translation>
    </message>
    <message>
        <source>misspelt or wrongly-cased markup</source>
        <translation>falsch oder klein geschriebene Auszeichnung</translation>
    </message>
    <message>
        <source>Tags are written in capitals and without blanks. What isn&apos;t spelt exactly so prints as it stands, or, from four characters on, counts as an attribute and prints nothing.</source>
        <translation>Tags stehen in Großbuchstaben und ohne Leerzeichen. Was nicht genau so geschrieben ist, druckt, wie es dasteht, oder zählt ab vier Zeichen als Attribut und druckt nichts.</translation>
    </message>
    <message>
        <source>a &quot;&lt;&quot; without its &quot;&gt;&quot;</source>
        <translation>ein &quot;&lt;&quot; ohne sein &quot;&gt;&quot;</translation>
    </message>
    <message>
        <source>Without a &quot;&gt;&quot; behind it on the line, a tag prints as it stands. If another tag follows, both are read as one, which prints nothing or as it stands. A &quot;&lt;&quot; in front of a blank is taken for text, as long as no tag follows.</source>
        <translation>Ohne ein &quot;&gt;&quot; dahinter in der Zeile druckt ein Tag, wie es dasteht. Folgt ein weiteres Tag, werden beide als eines gelesen, das nichts druckt oder wie es dasteht. Ein &quot;&lt;&quot; vor einem Leerzeichen gilt als Text, solange kein Tag folgt.</translation>
    </message>
    <message>
        <source>a bracket without its partner on the line</source>
        <translation>eine Klammer ohne ihr Gegenstück in der Zeile</translation>
    </message>
    <message>
        <source>A group lies between &quot;[&quot; and &quot;]&quot; on one line. A bracket without its partner, one that stands inside a tag and a pair the wrong way round make no group: the text stays when the value is empty, and the brackets are not printed. Write &lt;#91&gt; and &lt;93&gt; to print brackets.</source>
        <translation>Eine Gruppe liegt zwischen &quot;[&quot; und &quot;]&quot; in einer Zeile. Eine Klammer ohne Gegenstück, eine innerhalb eines Tags und ein Paar in falscher Reihenfolge ergeben keine Gruppe: der Text bleibt, wenn der Wert leer ist, und die Klammern werden nicht gedruckt. Klammern druckt man mit &lt;#91&gt; und &lt;93&gt;.</translation>
    </message>
    <message>
        <source>a tag that isn&apos;t filled when the group in front of it goes</source>
        <translation>ein Tag, das nicht gefüllt wird, wenn die Gruppe davor entfällt</translation>
    </message>
    <message>
        <source>When an empty or zero value removes its group, the search for tags goes on as many characters behind the group as stood between its &quot;[&quot; and the value. A tag that begins there is passed over and prints as it stands. Begin the group with the value, put text between the two, or put the tag on another line.</source>
        <translation>Wenn ein leerer Wert oder eine Null die Gruppe entfernt, geht die Suche nach Tags so viele Zeichen hinter der Gruppe weiter, wie zwischen ihrer &quot;[&quot; und dem Wert standen. Ein Tag, das dort beginnt, wird übergangen und druckt, wie es dasteht. Die Gruppe sollte mit dem Wert beginnen, oder zwischen beiden sollte Text stehen, oder das Tag in einer anderen Zeile.</translation>
    </message>
    <message>
        <source>&lt;C&gt; or &lt;R&gt; on a line with &lt;S&gt;</source>
        <translation>&lt;C&gt; oder &lt;R&gt; in einer Zeile mit &lt;S&gt;</translation>
    </message>
    <message>
        <source>A line has one alignment, and &lt;S&gt; wins: &lt;C&gt; and &lt;R&gt; on such a line print as they stand.</source>
        <translation>Eine Zeile hat eine Ausrichtung, und &lt;S&gt; gewinnt: &lt;C&gt; und &lt;R&gt; in einer solchen Zeile drucken, wie sie dastehen.</translation>
    </message>
    <message>
        <source>&lt;R&gt; on a line with &lt;C&gt;</source>
        <translation>&lt;R&gt; in einer Zeile mit &lt;C&gt;</translation>
    </message>
    <message>
        <source>A line has one alignment, and &lt;C&gt; wins over &lt;R&gt;, which prints as it stands.</source>
        <translation>Eine Zeile hat eine Ausrichtung, und &lt;C&gt; gewinnt gegen &lt;R&gt;, das druckt, wie es dasteht.</translation>
    </message>
    <message>
        <source>a second line spacing on a line</source>
        <translation>ein zweiter Zeilenabstand in einer Zeile</translation>
    </message>
    <message>
        <source>A line has one spacing: the smallest number on it, from &lt;LS0&gt; to &lt;LS7&gt;. Tags with other numbers print as they stand.</source>
        <translation>Eine Zeile hat einen Abstand: die kleinste Zahl darin, von &lt;LS0&gt; bis &lt;LS7&gt;. Tags mit anderen Zahlen drucken, wie sie dastehen.</translation>
    </message>
    <message>
        <source>a format that is switched on and never off</source>
        <translation>ein Format, das ein- und nie ausgeschaltet wird</translation>
    </message>
    <message>
        <source>&quot;&lt;B:&gt;&quot; and its like hold over line ends until their closing tag; without one all the rest of the receipt is printed so. Only a whole-line tag of the same kind ends it as well.</source>
        <translation>&quot;&lt;B:&gt;&quot; und seinesgleichen gelten über Zeilenenden hinweg bis zu ihrem schließenden Tag; ohne eines wird der ganze Rest des Bons so gedruckt. Nur ein Tag derselben Art für die ganze Zeile beendet es ebenfalls.</translation>
    </message>
    <message>
        <source>a format tag directly behind one of its own pair</source>
        <translation>ein Formattag unmittelbar hinter einem seines eigenen Paars</translation>
    </message>
    <message>
        <source>After an opening or closing tag the place right behind it isn&apos;t looked at again for a tag of the same pair: it prints as it stands, and so do later ones of its kind until one of the pair counts again. Only a closing tag right behind its opening tag counts. Whole-line tags open in front of the line and close behind it.</source>
        <translation>Hinter einem öffnenden oder schließenden Tag wird die Stelle gleich dahinter nicht noch einmal nach einem Tag desselben Paars durchsucht: es druckt, wie es dasteht, und ebenso spätere seiner Art, bis wieder eines des Paars zählt. Nur ein schließendes Tag gleich hinter seinem öffnenden zählt. Tags für die ganze Zeile öffnen vor der Zeile und schließen dahinter.</translation>
    </message>
    <message>
        <source>&quot;&lt;X:&gt;&quot; without &quot;&lt;:X&gt;&quot;, or the other way round</source>
        <translation>&quot;&lt;X:&gt;&quot; ohne &quot;&lt;:X&gt;&quot;, oder umgekehrt</translation>
    </message>
    <message>
        <source>What stands between &quot;&lt;X:&gt;&quot; and the next &quot;&lt;:X&gt;&quot; is removed. If one of the two is missing, nothing is removed, and the tag prints as it stands. The tags don&apos;t nest.</source>
        <translation>Was zwischen &quot;&lt;X:&gt;&quot; und dem nächsten &quot;&lt;:X&gt;&quot; steht, wird entfernt. Fehlt eines der beiden, wird nichts entfernt, und das Tag druckt, wie es dasteht. Die Tags lassen sich nicht schachteln.</translation>
    </message>
    <message>
        <source>&quot;&lt;ENTRIES&gt;&quot; inside other text</source>
        <translation>&quot;&lt;ENTRIES&gt;&quot; innerhalb von anderem Text</translation>
    </message>
    <message>
        <source>The entries become lines of their own: what stands in front of &quot;&lt;ENTRIES&gt;&quot; goes to the first of them only, what stands behind it to the last only, and a group around it falls apart.</source>
        <translation>Aus den Einträgen werden eigene Zeilen: was vor &quot;&lt;ENTRIES&gt;&quot; steht, kommt nur zur ersten, was dahinter steht, nur zur letzten, und eine Gruppe darum fällt auseinander.</translation>
    </message>
    <message>
        <source>a line that is cut beside &quot;&lt;ENTRIES&gt;&quot; or a fiscal marker</source>
        <translation>eine Zeile, die neben &quot;&lt;ENTRIES&gt;&quot; oder einer Fiskalmarke zerschnitten wird</translation>
    </message>
    <message>
        <source>These keywords are looked for in the upper-cased line, where a letter can become two or three: a sharp s is &quot;SS&quot; there, a ligature its letters. The line itself is cut at the place that was found, so behind such a letter it is cut too far to the right: a part of the keyword prints, and what follows it loses its beginning. Put the keyword on a line of its own, in plain letters.</source>
        <translation>Diese Wörter werden in der großgeschriebenen Zeile gesucht, in der aus einem Buchstaben zwei oder drei werden können: ein ß ist dort &quot;SS&quot;, eine Ligatur ihre Buchstaben. Die Zeile selbst wird an der gefundenen Stelle geschnitten, hinter einem solchen Buchstaben also zu weit rechts: ein Teil des Worts druckt, und was folgt, verliert seinen Anfang. Das Wort gehört in eine eigene Zeile, in einfachen Buchstaben.</translation>
    </message>
    <message>
        <source>a copy that doesn&apos;t say so</source>
        <translation>eine Kopie, die es nicht sagt</translation>
    </message>
    <message>
        <source>a second &quot;&lt;SPECSYMBOLS=&quot; line</source>
        <translation>eine zweite Zeile mit &quot;&lt;SPECSYMBOLS=&quot;</translation>
    </message>
    <message>
        <source>One file of special symbols is loaded: that of the lowest line. The others are passed over.</source>
        <translation>Eine Datei mit Sonderzeichen wird geladen: die der untersten Zeile. Die anderen werden übergangen.</translation>
    </message>
    <message>
        <source>a file of special symbols that doesn&apos;t exist</source>
        <translation>eine Datei mit Sonderzeichen, die es nicht gibt</translation>
    </message>
    <message>
        <source>The library passes over a missing file in silence, and the symbols print as blanks. The file is looked up in the folder of --symbols, or else in that of the template; &quot;.ssi&quot; is added to its name.</source>
        <translation>Die Bibliothek übergeht eine fehlende Datei stillschweigend, und die Sonderzeichen drucken als Leerzeichen. Die Datei wird im Ordner von --symbols gesucht, sonst in dem der Vorlage; an ihren Namen wird &quot;.ssi&quot; angehängt.</translation>
    </message>
    <message>
        <source>a file of special symbols that can&apos;t be read</source>
        <translation>eine Datei mit Sonderzeichen, die nicht gelesen werden kann</translation>
    </message>
    <message>
        <source>The library reads such a file up to its first mistake, and the symbols behind that print as blanks. &quot;receipt symbols FILE&quot; shows what is wrong in a file.</source>
        <translation>Die Bibliothek liest eine solche Datei bis zu ihrem ersten Fehler, und die Zeichen dahinter drucken als Leerzeichen. &quot;receipt symbols DATEI&quot; zeigt, was an einer Datei falsch ist.</translation>
    </message>
    <message>
        <source>a fiscal marker in a template that isn&apos;t split</source>
        <translation>eine Fiskalmarke in einer Vorlage, die nicht geteilt wird</translation>
    </message>
    <message>
        <source>A client cuts the template at its fiscal markers before anything else. In a template that is printed as a whole they are attributes that no document has, and print nothing. With --fiscal the template is split, and each piece is checked by itself.</source>
        <translation>Ein Programm schneidet die Vorlage vor allem anderen an ihren Fiskalmarken. In einer Vorlage, die als Ganzes gedruckt wird, sind sie Attribute, die kein Dokument hat, und drucken nichts. Mit --fiscal wird die Vorlage geteilt und jedes Stück für sich geprüft.</translation>
    </message>
    <message>
        <source>markup in the data of a QR code</source>
        <translation>Auszeichnung in den Daten eines QR-Codes</translation>
    </message>
    <message>
        <source>What stands behind &quot;&lt;QR&gt;&quot; on the line is the code&apos;s data to the last character: tags of the markup and the brackets of a group are no markup there, and whoever scans the code gets them. The code is centred anyway, and a group around it begins in front of &quot;&lt;QR&gt;&quot; and can&apos;t end behind it.</source>
        <translation>Was hinter &quot;&lt;QR&gt;&quot; in der Zeile steht, sind bis zum letzten Zeichen die Daten des Codes: Tags und die Klammern einer Gruppe sind dort keine Auszeichnung, und wer den Code liest, bekommt sie. Der Code steht ohnehin in der Mitte, und eine Gruppe darum beginnt vor &quot;&lt;QR&gt;&quot; und kann dahinter nicht enden.</translation>
    </message>
    <message>
        <source>&quot;&lt;QR&gt;&quot; in a receipt that is rendered as text or HTML</source>
        <translation>&quot;&lt;QR&gt;&quot; in einem Bon, der als Text oder HTML ausgegeben wird</translation>
    </message>
    <message>
        <source>Only documents for printers have QR codes. In text and HTML the tag and its data print as they stand. Needs --as text or --as html.</source>
        <translation>Nur Dokumente für Drucker haben QR-Codes. In Text und HTML drucken das Tag und seine Daten, wie sie dastehen. Braucht --as text oder --as html.</translation>
    </message>
    <message>
        <source>a special symbol without a drawing</source>
        <translation>ein Sonderzeichen ohne Zeichnung</translation>
    </message>
    <message>
        <source>The characters 1 to 7 are special symbols, drawn by the file that &quot;&lt;SPECSYMBOLS=&quot; names. Without a drawing a blank is printed; with --model also without one that fits the model&apos;s characters, and in a font that takes no drawings.</source>
        <translation>Die Zeichen 1 bis 7 sind Sonderzeichen, gezeichnet von der Datei, die &quot;&lt;SPECSYMBOLS=&quot; nennt. Ohne Zeichnung wird ein Leerzeichen gedruckt; mit --model auch ohne eine, die in die Zeichen des Modells passt, und in einer Schrift, die keine Zeichnungen annimmt.</translation>
    </message>
    <message>
        <source>a character that the printer doesn&apos;t have</source>
        <translation>ein Zeichen, das der Drucker nicht hat</translation>
    </message>
    <message>
        <source>a value whose tags never come to an end</source>
        <translation>ein Wert, dessen Tags nie zu Ende gehen</translation>
    </message>
    <message>
        <source>A value that holds a tag is filled in its turn. One that leads back to its own tag, or that doubles on and on, never ends, and the program that prints it hangs. The commands that fill templates refuse it. Such a template isn&apos;t checked any further with this document. Needs --data.</source>
        <translation>Ein Wert, der ein Tag enthält, wird seinerseits gefüllt. Einer, der zu seinem eigenen Tag zurückführt oder sich immer weiter verdoppelt, hört nie auf, und das Programm, das ihn druckt, hängt. Die Befehle, die Vorlagen füllen, lehnen ihn ab. Eine solche Vorlage wird mit diesem Dokument nicht weiter geprüft. Braucht --data.</translation>
    </message>
    <message>
        <source>a font that is switched on and never back</source>
        <translation>eine Schrift, auf die umgeschaltet wird und nie zurück</translation>
    </message>
    <message>
        <source>A font holds over line ends until the next &quot;&lt;F1&gt;&quot; or its like; without one all the rest of the receipt is printed in it. Nothing is said of a font that stands in front of all text, or on the last line.</source>
        <translation>Eine Schrift gilt über Zeilenenden hinweg bis zum nächsten &quot;&lt;F1&gt;&quot; oder seinesgleichen; ohne ein solches wird der ganze Rest des Belegs in ihr gedruckt. Über eine Schrift, die vor allem Text oder auf der letzten Zeile steht, wird nichts gesagt.</translation>
    </message>
    <message>
        <source>a font that is switched at the end of a line</source>
        <translation>eine Schrift, auf die am Ende einer Zeile umgeschaltet wird</translation>
    </message>
    <message>
        <source>The next line begins in the font of this line&apos;s last character, and a font tag behind that character changes none. Put the tag in front of the next line, or a blank behind it.</source>
        <translation>Die nächste Zeile beginnt in der Schrift des letzten Zeichens dieser Zeile, und ein Schrifttag hinter diesem Zeichen ändert keine. Setzen Sie das Tag vor die nächste Zeile oder ein Leerzeichen dahinter.</translation>
    </message>
    <message>
        <source>a font that doesn&apos;t exist</source>
        <translation>eine Schrift, die es nicht gibt</translation>
    </message>
    <message>
        <source>There are four fonts, from &quot;&lt;F1&gt;&quot; to &quot;&lt;F4&gt;&quot;; a greater number counts round them, so &quot;&lt;F5&gt;&quot; is font 2 and &quot;&lt;F8&gt;&quot; font 1.</source>
        <translation>Es gibt vier Schriften, von &quot;&lt;F1&gt;&quot; bis &quot;&lt;F4&gt;&quot;; eine größere Nummer zählt im Kreis, und so ist &quot;&lt;F5&gt;&quot; Schrift 2 und &quot;&lt;F8&gt;&quot; Schrift 1.</translation>
    </message>
    <message>
        <source>markup on a line without text</source>
        <translation>Auszeichnung auf einer Zeile ohne Text</translation>
    </message>
    <message>
        <source>A line of nothing but tags isn&apos;t printed, and what its tags say of the line goes with it: the alignment, the line spacing, a font, a format of the whole line. Put them in front of the text that they are for. A tag with a colon, such as &quot;&lt;B:&gt;&quot;, counts on a line of its own.</source>
        <translation>Eine Zeile aus nichts als Tags wird nicht gedruckt, und was ihre Tags über die Zeile sagen, geht mit ihr: die Ausrichtung, der Zeilenabstand, eine Schrift, ein Format der ganzen Zeile. Setzen Sie sie vor den Text, dem sie gelten. Ein Tag mit Doppelpunkt wie &quot;&lt;B:&gt;&quot; zählt auch auf einer eigenen Zeile.</translation>
    </message>
    <message>
        <source>A format is read by the kind of the value, and one that isn&apos;t for it prints another figure, or has no effect. A whole number has no decimals, and &quot;0.00&quot; means four digits there: hand amounts over as text, such as &quot;10.00&quot;, or calculate, as in &lt;PAID*1&gt;. In the format of a number only &quot;0&quot;, &quot;#&quot; and the point count, with nine decimals at most; a unit or a sign stands outside of the tag. A text has no format, also none that cuts it; a date is handed over as {&quot;datetime&quot;: &quot;2026-03-14T18:05:30&quot;}. Without --data only what is wrong for all values is reported, as a warning; so is a format without effect.</source>
        <translation>Ein Format wird nach der Art des Werts gelesen, und eines, das nicht für sie ist, druckt eine andere Zahl oder hat keine Wirkung. Eine ganze Zahl hat keine Nachkommastellen, und &quot;0.00&quot; bedeutet dort vier Ziffern: Übergeben Sie Beträge als Text, etwa &quot;10.00&quot;, oder rechnen Sie wie in &lt;PAID*1&gt;. Im Format einer Zahl zählen nur &quot;0&quot;, &quot;#&quot; und der Punkt, mit höchstens neun Nachkommastellen; Einheit oder Vorzeichen stehen außerhalb des Tags. Ein Text hat kein Format, auch keines, das ihn kürzt; ein Datum wird als {&quot;datetime&quot;: &quot;2026-03-14T18:05:30&quot;} übergeben. Ohne --data wird nur gemeldet, was für alle Werte falsch ist, als Warnung; ebenso ein Format ohne Wirkung.</translation>
    </message>
    <message>
        <source>letters in the format of a date that mean something else</source>
        <translation>Buchstaben im Format eines Datums, die etwas anderes bedeuten</translation>
    </message>
    <message>
        <source>In the format of a date or time &quot;d&quot; is the day, &quot;m&quot; and &quot;M&quot; the month, &quot;y&quot; the year, &quot;h&quot; the hour, &quot;n&quot; the minute, &quot;s&quot; the second, &quot;ap&quot; is am or pm, and capitals but &quot;M&quot;, &quot;H&quot;, &quot;A&quot; and &quot;AP&quot; print as they stand. Behind the hours, too, &quot;m&quot; is the month. Letters of other words are read in the same way, so words stand outside of the tag. Without --data it is a warning, and only for a format that must be one of dates.</source>
        <translation>Im Format von Datum oder Uhrzeit ist &quot;d&quot; der Tag, &quot;m&quot; und &quot;M&quot; der Monat, &quot;y&quot; das Jahr, &quot;h&quot; die Stunde, &quot;n&quot; die Minute, &quot;s&quot; die Sekunde, &quot;ap&quot; ist am oder pm, und Großbuchstaben außer &quot;M&quot;, &quot;H&quot;, &quot;A&quot; und &quot;AP&quot; werden gedruckt, wie sie dastehen. Auch hinter den Stunden ist &quot;m&quot; der Monat. Die Buchstaben anderer Wörter werden ebenso gelesen; Wörter stehen deshalb außerhalb des Tags. Ohne --data ist es eine Warnung, und nur bei einem Format, das eines für Daten sein muss.</translation>
    </message>
    <message>
        <source>a comma in the format of a date</source>
        <translation>ein Komma im Format eines Datums</translation>
    </message>
    <message>
        <source>What stands behind the last comma of a tag is the format, and all in front of it the name, so a date whose format has a comma in it prints nothing. Write two tags with the comma between them.</source>
        <translation>Was hinter dem letzten Komma eines Tags steht, ist das Format, und alles davor der Name; ein Datum mit einem Komma im Format druckt daher nichts. Schreiben Sie zwei Tags mit dem Komma dazwischen.</translation>
    </message>
    <message>
        <source>A division by zero prints as 0, such as &quot;0.00&quot;, as if that were the amount; so does what else has no finite value, such as ln(0). In a group it is fine, as the group goes. Without --data only a divisor that is written as 0 is found, and is a warning; with it what this document makes of the expression.</source>
        <translation>Eine Division durch null druckt 0, etwa &quot;0.00&quot;, als wäre das der Betrag; ebenso alles andere ohne endlichen Wert, wie ln(0). In einer Gruppe ist es in Ordnung, da die Gruppe entfällt. Ohne --data wird nur ein als 0 geschriebener Teiler gefunden, als Warnung; damit auch, was dieses Dokument aus dem Ausdruck macht.</translation>
    </message>
    <message>
        <source>a minus that isn&apos;t printed</source>
        <translation>ein Minus, das nicht gedruckt wird</translation>
    </message>
    <message>
        <source>a text that is read as a number and prints otherwise</source>
        <translation>ein Text, der als Zahl gelesen wird und anders druckt</translation>
    </message>
    <message>
        <source>a number that prints as another one</source>
        <translation>eine Zahl, die als eine andere druckt</translation>
    </message>
    <message>
        <source>a tag or function that there isn&apos;t</source>
        <translation>ein Tag oder eine Funktion, die es nicht gibt</translation>
    </message>
    <message>
        <source>Other languages have tags such as &lt;BARCODE&gt;, &lt;CUT&gt; and &lt;HR&gt;, and functions such as round( and max(. Here such a tag is an attribute, which prints nothing unless the document has it, or prints as it stands; an expression with such a function prints nothing. The message says what there is instead. A tag without --data is a warning.</source>
        <translation>Andere Sprachen haben Tags wie &lt;BARCODE&gt;, &lt;CUT&gt; und &lt;HR&gt; und Funktionen wie round( und max(. Hier ist ein solches Tag ein Attribut, das nichts druckt, wenn das Dokument es nicht hat, oder es wird gedruckt, wie es dasteht; ein Ausdruck mit einer solchen Funktion druckt nichts. Die Meldung sagt, was es statt dessen gibt. Ein Tag ohne --data ist eine Warnung.</translation>
    </message>
    <message>
        <source>several &lt;S&gt; on a line</source>
        <translation>mehrere &lt;S&gt; auf einer Zeile</translation>
    </message>
    <message>
        <source>What stands behind &lt;S&gt; goes to the right edge. With two of them each takes all the room that the text leaves, so that the line gets wider than the paper and wraps; in HTML what stands between them is lost. Write columns with blanks, or two lines.</source>
        <translation>Was hinter &lt;S&gt; steht, rückt an den rechten Rand. Bei zweien nimmt jedes den ganzen Platz, den der Text lässt; die Zeile wird breiter als das Papier und bricht um, und in HTML geht verloren, was zwischen ihnen steht. Schreiben Sie Spalten mit Leerzeichen oder zwei Zeilen.</translation>
    </message>
    <message>
        <source>a line that is wider than the paper</source>
        <translation>eine Zeile, die breiter ist als das Papier</translation>
    </message>
    <message>
        <source>a line that breaks inside a word or a number</source>
        <translation>eine Zeile, die mitten in einem Wort oder einer Zahl umbricht</translation>
    </message>
    <message>
        <source>A printer wraps a line that is wider than the paper behind its last character that fits, and not at a word&apos;s end: &quot;1000 IU&quot; becomes &quot;100&quot; and &quot;0 IU&quot;. Shorten the text, write it on two lines, choose a smaller font, or hand a long name over in parts. A number that breaks with the values of --data is an error, all else a warning. Needs --width or --model; said in place of wide-line.</source>
        <translation>Ein Drucker bricht eine Zeile, die breiter als das Papier ist, hinter dem letzten Zeichen um, das noch passt, und nicht am Ende eines Wortes: Aus &quot;1000 IU&quot; wird &quot;100&quot; und &quot;0 IU&quot;. Kürzen Sie den Text, schreiben Sie ihn auf zwei Zeilen, wählen Sie eine kleinere Schrift, oder übergeben Sie einen langen Namen in Teilen. Eine Zahl, die mit den Werten von --data umbricht, ist ein Fehler, alles andere eine Warnung. Braucht --width oder --model; wird an Stelle von wide-line gemeldet.</translation>
    </message>
    <message>
        <source>No line is cut: the printer wraps it, and columns fall apart. Double width counts twice. The widths are told in characters of the font in which the line begins. Needs --width or --model. Without --data the lines are measured as if all values were empty. The finding stands at the beginning of the template&apos;s line that the printed line comes from.</source>
        <translation>Keine Zeile wird abgeschnitten: Der Drucker bricht sie um, und Spalten fallen auseinander. Doppelte Breite zählt zweifach. Breiten werden in Zeichen der Schrift angegeben, in der die Zeile beginnt. Braucht --width oder --model. Ohne --data werden die Zeilen gemessen, als wären alle Werte leer. Der Befund steht am Anfang der Zeile der Vorlage, aus der die gedruckte Zeile kommt.</translation>
    </message>
    <message>
        <source>a printed total that isn&apos;t the sum of what is printed</source>
        <translation>eine gedruckte Summe, die nicht die des Gedruckten ist</translation>
    </message>
    <message>
        <source>a value or an entry that acts as markup</source>
        <translation>ein Wert oder Eintrag, der als Auszeichnung wirkt</translation>
    </message>
    <message>
        <source>Values and entries are read for tags and groups once they are filled in: &quot;Cola [0.5 l]&quot; loses its brackets, &quot;Gift &lt;X&gt; card&quot; makes its line blank, &quot;Sale &lt;B&gt;!&quot; a line bold, a tab and each further &quot;=&quot; of an entry a column. In a text in BBCode &quot;[b]&quot; is a tag, too. Nothing is said of markup that a program writes on purpose: tags in front of a text, formats such as &quot;&lt;B:&gt;&quot; and &quot;[b]x[/b]&quot;, symbols such as &quot;&lt;#1&gt;&quot;, and tags of values that there are. What others write is cleaned by the program, or with --clean where &quot;receipt&quot; prints. Needs --data.</source>
        <translation>Werte und Einträge werden, wenn sie eingesetzt sind, nach Tags und Gruppen durchsucht: &quot;Cola [0.5 l]&quot; verliert seine Klammern, &quot;Gift &lt;X&gt; card&quot; macht aus seiner Zeile eine leere, &quot;Sale &lt;B&gt;!&quot; eine fette, und ein Tabulator und jedes weitere &quot;=&quot; eines Eintrags ergeben eine Spalte. In einem Text in BBCode ist auch &quot;[b]&quot; ein Tag. Nichts gesagt wird zu Auszeichnung, die ein Programm mit Absicht schreibt: Tags vor einem Text, Formate wie &quot;&lt;B:&gt;&quot; und &quot;[b]x[/b]&quot;, Sonderzeichen wie &quot;&lt;#1&gt;&quot; und Tags von Werten, die es gibt. Was andere schreiben, bereinigt das Programm, oder --clean, wo &quot;receipt&quot; druckt. Braucht --data.</translation>
    </message>
    <message>
        <source>Each printed amount is rounded by itself, and a total of an expression once, at its end: 83.65 and -0.96 can have a total of 82.70. Round the parts inside of the sum as they are printed, as in floor(A*100+0.500001)/100. Amounts are those with two or three decimals at the ends of lines; a total is called one, or adds up others. Only what is nearly the sum is told, or, as a warning, a total behind entries alone that isn&apos;t theirs. What may have been rounded to coins is a warning or nothing, and next to a figure that can&apos;t be read nothing is told. Needs --data.</source>
        <translation>Jeder gedruckte Betrag wird für sich gerundet, die Summe eines Ausdrucks einmal, am Ende: zu 83.65 und -0.96 kann eine Summe von 82.70 gedruckt sein. Die Teile der Summe sind in ihr so zu runden, wie sie gedruckt werden, etwa mit floor(A*100+0.500001)/100. Beträge sind die mit zwei oder drei Dezimalstellen am Ende von Zeilen; eine Summe heißt so, oder sie zählt andere zusammen. Gemeldet wird nur, was beinahe die Summe ist, oder, als Warnung, eine Summe hinter lauter Einträgen, die nicht deren Summe ist. Was auf Münzen gerundet sein kann, ist eine Warnung oder nichts, und neben einer Zahl, die sich nicht lesen lässt, wird nichts gemeldet. Braucht --data.</translation>
    </message>
    <message>
        <source>a code whose data can&apos;t be encoded</source>
        <translation>ein Code, dessen Daten sich nicht kodieren lassen</translation>
    </message>
    <message>
        <source>A code without data isn&apos;t printed, nor is one whose data its kind can&apos;t hold: the barcode of BBCode, a Code 128, takes ASCII characters, and a QR code up to 2953 bytes, less on a narrow paper. With --model also what doesn&apos;t fit the model&apos;s paper, or what it can&apos;t print. A code whose data values make needs --data.</source>
        <translation>Ein Code ohne Daten wird nicht gedruckt, ebenso wenig einer, dessen Art die Daten nicht fasst: Der Strichcode von BBCode, ein Code 128, nimmt ASCII-Zeichen, und ein QR-Code bis zu 2953 Byte, auf schmalem Papier weniger. Mit --model auch, was nicht auf das Papier des Modells passt oder was es nicht drucken kann. Ein Code, dessen Daten aus Werten entstehen, braucht --data.</translation>
    </message>
    <message>
        <source>a tag of BBCode in a template</source>
        <translation>ein Tag von BBCode in einer Vorlage</translation>
    </message>
    <message>
        <source>In a template square brackets are those of groups: &quot;[/b]&quot; prints &quot;/b&quot;. A text is taken for BBCode if it has tags of BBCode and none of the markup of templates, such as &quot;&lt;C&gt;&quot;; values are no markup.</source>
        <translation>In einer Vorlage sind eckige Klammern die von Gruppen: &quot;[/b]&quot; druckt &quot;/b&quot;. Ein Text gilt als BBCode, wenn er Tags von BBCode hat und keine Auszeichnung von Vorlagen wie &quot;&lt;C&gt;&quot;; Werte sind keine Auszeichnung.</translation>
    </message>
    <message>
        <source>BBCode: a tag, key or value that there isn&apos;t</source>
        <translation>BBCode: ein Tag, ein Schlüssel oder ein Wert, den es nicht gibt</translation>
    </message>
    <message>
        <source>The tags are b, i, u, size, left, center, right, hr, img, field, column, barcode and qrcode, in small letters or capitals; the keys are size, hr, width, align, zerofill and name. All others are passed over, and a value that there isn&apos;t counts as another one. A key is of no use outside of the tag that it belongs to.</source>
        <translation>Die Tags sind b, i, u, size, left, center, right, hr, img, field, column, barcode und qrcode, klein oder groß geschrieben; die Schlüssel sind size, hr, width, align, zerofill und name. Alle anderen werden übergangen, und ein Wert, den es nicht gibt, zählt als ein anderer. Außerhalb des Tags, zu dem er gehört, nützt ein Schlüssel nichts.</translation>
    </message>
    <message>
        <source>BBCode: a tag that prints as it stands</source>
        <translation>BBCode: ein Tag, das gedruckt wird, wie es dasteht</translation>
    </message>
    <message>
        <source>What can&apos;t be read as a tag is text. A tag is &quot;[name]&quot;, &quot;[name=value]&quot; or &quot;[name key=value]&quot;, with one blank or two between its parts and none in front of the name. Values are letters, digits and a few signs, without quotation marks.</source>
        <translation>Was sich nicht als Tag lesen lässt, ist Text. Ein Tag ist &quot;[name]&quot;, &quot;[name=value]&quot; oder &quot;[name key=value]&quot;, mit einem oder zwei Leerzeichen zwischen den Teilen und keinem vor dem Namen. Werte sind Buchstaben, Ziffern und einige Zeichen, ohne Anführungszeichen.</translation>
    </message>
    <message>
        <source>BBCode: a tag that is never closed, or never opened</source>
        <translation>BBCode: ein Tag, das nie geschlossen oder nie geöffnet wird</translation>
    </message>
    <message>
        <source>A line, a picture and a code are printed when their tag is closed, and else not at all. A format or font that stays open goes on to the text&apos;s end, and into the next text of the same reader. Of tags in one another each closes the nearest of its name.</source>
        <translation>Eine Linie, ein Bild und ein Code werden gedruckt, wenn ihr Tag geschlossen wird, und sonst gar nicht. Ein Format oder eine Schrift, die offen bleibt, gilt bis zum Ende des Textes und im nächsten Text desselben Lesers weiter. Von Tags ineinander schließt jedes das nächste seines Namens.</translation>
    </message>
    <message>
        <source>BBCode: tags that cross</source>
        <translation>BBCode: Tags, die sich überkreuzen</translation>
    </message>
    <message>
        <source>Tags are switches, and nesting isn&apos;t checked: formats that cross print as they are meant, but other readers of BBCode have it otherwise, so it is a note. What is aligned, padded or drawn ends where its tag closes: there it is a warning.</source>
        <translation>Tags sind Schalter, und Verschachtelung wird nicht geprüft: Formate, die sich überkreuzen, werden gedruckt wie gemeint, aber andere Leser von BBCode halten es anders, deshalb ist es ein Hinweis. Was ausgerichtet, aufgefüllt oder gezeichnet wird, endet, wo sein Tag schließt: Dort ist es eine Warnung.</translation>
    </message>
    <message>
        <source>BBCode: a picture that doesn&apos;t exist or can&apos;t be read</source>
        <translation>BBCode: ein Bild, das es nicht gibt oder das nicht gelesen werden kann</translation>
    </message>
    <message>
        <source>A picture that is missing leaves an empty line. It is looked up in the folder of --images, or else in that of the text; its name may be the beginning of the file&apos;s, and letters count in small.</source>
        <translation>Ein Bild, das fehlt, hinterlässt eine leere Zeile. Es wird im Ordner von --images gesucht, sonst in dem des Textes; sein Name darf der Anfang des Dateinamens sein, und Buchstaben zählen als kleine.</translation>
    </message>
    <message>
        <source>BBCode: a name that fits several pictures</source>
        <translation>BBCode: ein Name, der auf mehrere Bilder passt</translation>
    </message>
    <message>
        <source>Of all files whose names begin so the first in the alphabet is taken: for &quot;logo&quot; that is &quot;logo-old.png&quot;, also if there is &quot;logo.png&quot;. Write the name with its ending.</source>
        <translation>Von allen Dateien, deren Namen so beginnen, wird die erste im Alphabet genommen: für &quot;logo&quot; ist das &quot;logo-old.png&quot;, auch wenn es &quot;logo.png&quot; gibt. Schreiben Sie den Namen mit seiner Endung.</translation>
    </message>
    <message>
        <source>BBCode: large text that isn&apos;t larger on this model</source>
        <translation>BBCode: großer Text, der auf diesem Modell nicht größer ist</translation>
    </message>
    <message>
        <source>The sizes small, normal, middle and large are the four fonts of a model, and many have fewer: &quot;receipt models ID&quot; shows their characters. BBCode has no double height; a template has it, as &quot;&lt;H2&gt;&quot; and &quot;&lt;W2&gt;&quot;. Needs --model.</source>
        <translation>Die Größen small, normal, middle und large sind die vier Schriften eines Modells, und viele haben weniger: &quot;receipt models ID&quot; zeigt ihre Zeichen. BBCode kennt keine doppelte Höhe; eine Vorlage hat sie, als &quot;&lt;H2&gt;&quot; und &quot;&lt;W2&gt;&quot;. Braucht --model.</translation>
    </message>
    <message>
        <source>A text that reads as a number is printed as one: &quot;007&quot; loses its zeros, &quot;+49&quot; its sign, &quot;12,50&quot; its comma, &quot;1e5&quot; and &quot;12E4&quot; become long numbers, and &quot;Nan&quot; and &quot;inf&quot;, a name or not, print 0.00 and take their group along. Zeros in front are brought back by a format with as many zeros, a comma is meant where there is a format. For all else the program makes it a text that isn&apos;t a number: &quot;12E4&lt;:&gt;&quot; prints 12E4, as the tag prints nothing. Without --data only a name that ends like one of a code, such as AUTH, INN or CARD_CODE, is told with a format that takes zeros off, as a warning.</source>
        <translation>Ein Text, der sich als Zahl liest, wird als solche gedruckt: &quot;007&quot; verliert seine Nullen, &quot;+49&quot; das Vorzeichen, &quot;12,50&quot; das Komma, &quot;1e5&quot; und &quot;12E4&quot; werden lange Zahlen, und &quot;Nan&quot; und &quot;inf&quot;, ob Name oder nicht, drucken 0.00 und nehmen ihre Gruppe mit. Nullen am Anfang bringt ein Format mit ebenso vielen Nullen zurück, ein Komma ist gemeint, wo ein Format steht. Sonst macht das Programm daraus einen Text, der keine Zahl ist: &quot;12E4&lt;:&gt;&quot; druckt 12E4, denn das Tag druckt nichts. Ohne --data wird nur ein Name, der wie der eines Codes endet, etwa AUTH, INN oder CARD_CODE, bei einem Format gemeldet, das Nullen wegnimmt, und zwar als Warnung.</translation>
    </message>
    <message>
        <source>figures and sums aren&apos;t checked without data: --data DATA.json</source>
        <translation>ohne Daten werden Zahlen und Summen nicht geprüft: --data DATEN.json</translation>
    </message>
    <message>
        <source>An attribute that the document lacks prints nothing and takes the group around it along; in an expression it makes the whole expression print nothing, or the value of a shorter name is put in for a part of it. Names are case-sensitive. In a group it may well be missing with some sales, and is told as a note; &quot;&lt;ENTRIES&gt;&quot; without entries is a warning. Needs --data; the document should have every attribute that a sale can have.</source>
        <translation>Ein Attribut, das dem Dokument fehlt, druckt nichts und nimmt die Gruppe um sich mit; in einem Ausdruck druckt dann der ganze Ausdruck nichts, oder für einen Teil des Namens wird der Wert eines kürzeren eingesetzt. Groß- und Kleinschreibung zählt. In einer Gruppe kann es bei manchen Verkäufen durchaus fehlen und ist nur ein Hinweis; &quot;&lt;ENTRIES&gt;&quot; ohne Einträge ist eine Warnung. Braucht --data; das Dokument sollte jedes Attribut haben, das ein Verkauf haben kann.</translation>
    </message>
    <message>
        <source>In a format with decimals, and without a format, a number between -1 and 0 loses its sign: a shortage of 0.05 prints as a surplus. The format &quot;0.E&quot; keeps it; it prints up to six digits, and no zeros at the end, so 5.00 is 5. For an amount A there is [&lt;X:&gt;&lt;abs(A)-A&gt;&lt;:X&gt;-]&lt;:&gt;&lt;:&gt;&lt;abs(A),0.00&gt;, with a minus that stands in a group. Needs --data.</source>
        <translation>In einem Format mit Dezimalstellen und ohne Format verliert eine Zahl zwischen -1 und 0 ihr Vorzeichen: ein Fehlbetrag von 0.05 druckt als Überschuss. Das Format &quot;0.E&quot; behält es; es druckt bis zu sechs Ziffern und keine Nullen am Ende, aus 5.00 wird 5. Für einen Betrag A gibt es [&lt;X:&gt;&lt;abs(A)-A&gt;&lt;:X&gt;-]&lt;:&gt;&lt;:&gt;&lt;abs(A),0.00&gt;, mit einem Minus in einer Gruppe. Braucht --data.</translation>
    </message>
    <message>
        <source>a sign in front of a value with a sign</source>
        <translation>ein Vorzeichen vor einem Wert mit Vorzeichen</translation>
    </message>
    <message>
        <source>A minus or plus that the template prints in front of a value belongs to values without a sign. One that is less than zero brings its own, and &quot;--1.50&quot; is printed. abs() takes it away; where it may be either, no sign stands in front of the tag. Needs --data.</source>
        <translation>Ein Minus oder Plus, das die Vorlage vor einen Wert druckt, gehört zu Werten ohne Vorzeichen. Einer unter null bringt sein eigenes mit, und es druckt &quot;--1.50&quot;. abs() nimmt es weg; wo es beides geben kann, steht kein Vorzeichen vor dem Tag. Braucht --data.</translation>
    </message>
    <message>
        <source>Without a format a number with decimals prints two of them: a litre at 1.749 is 1.75. In a format with decimals, and without a format, the part in front of the point has 32 bits, and is 0 from 2147483648 on; a format without decimals has 64. &quot;0.E&quot; gives six digits, and larger numbers an exponent. In BBCode a field with zerofill takes whole numbers alone, and prints zeros for all else. Needs --data, but not for that.</source>
        <translation>Ohne Format druckt eine Zahl mit Dezimalstellen deren zwei: ein Liter zu 1.749 ist 1.75. In einem Format mit Dezimalstellen und ohne Format hat der Teil vor dem Punkt 32 Bit und ist ab 2147483648 eine 0; ein Format ohne Dezimalstellen hat 64. &quot;0.E&quot; gibt sechs Ziffern, und größeren Zahlen einen Exponenten. In BBCode nimmt ein Feld mit zerofill nur ganze Zahlen und druckt für alles andere Nullen. Braucht --data, dafür aber nicht.</translation>
    </message>
    <message>
        <source>A tag with fewer than four characters between its brackets is never filled and prints as it stands. A longer name helps, a format, or blanks in an expression. It is an error if --data has the value, else a warning.</source>
        <translation>Ein Tag mit weniger als vier Zeichen zwischen den Klammern wird nie gefüllt und druckt, wie es dasteht. Es hilft ein längerer Name, ein Format, oder Leerzeichen in einem Ausdruck. Hat --data den Wert, ist es ein Fehler, sonst eine Warnung.</translation>
    </message>
    <message>
        <source>The line that marks a copy goes behind the first line with &quot;&lt;DOCNO&gt;&quot;, in capitals or not; a tag with a format doesn&apos;t count. Without it a copy looks like the original. A number with a format has the mark if &quot;&lt;X:&gt;&lt;DOCNO&gt;&lt;:X&gt;&quot; stands beside it, which prints nothing. A template without the number is told with --data only, of a document that is a copy; so is BBCode, which has no mark: there a value has to say it.</source>
        <translation>Die Zeile, die eine Kopie kennzeichnet, kommt hinter die erste Zeile mit &quot;&lt;DOCNO&gt;&quot;, groß oder klein geschrieben; ein Tag mit Format zählt nicht. Ohne sie sieht eine Kopie aus wie das Original. Eine Nummer mit Format hat die Kennzeichnung, wenn &quot;&lt;X:&gt;&lt;DOCNO&gt;&lt;:X&gt;&quot; daneben steht, was nichts druckt. Eine Vorlage ohne die Nummer wird nur mit --data gemeldet, bei einem Dokument, das eine Kopie ist; ebenso BBCode, das keine Kennzeichnung hat: dort muss ein Wert es sagen.</translation>
    </message>
    <message>
        <source>A printer has the characters of one code page. &quot;receipt print&quot; draws all others, as &quot;receipt preview&quot; shows; other drivers print something else for them. Needs --model or --code-page. The catalogue names no code pages: cp866 is taken unless --code-page says otherwise. What stands in a value is reported where its tag stands.</source>
        <translation>Ein Drucker hat die Zeichen einer Codepage. Alle anderen zeichnet &quot;receipt print&quot;, wie &quot;receipt preview&quot; zeigt; andere Treiber drucken etwas anderes dafür. Braucht --model oder --code-page. Der Katalog nennt keine Codepages: es gilt cp866, wenn --code-page nichts anderes sagt. Was in einem Wert steht, wird dort gemeldet, wo sein Tag steht.</translation>
    </message>
    <message>
        <source>BBCode: a field that is too narrow for its text</source>
        <translation>BBCode: ein Feld, das für seinen Text zu schmal ist</translation>
    </message>
    <message>
        <source>A field is padded to its width, and no text is cut: a longer one moves what stands behind it on the line, and the columns fall apart. Give the field the width of the longest text, or have the program shorten it.</source>
        <translation>Ein Feld wird auf seine Breite aufgefüllt, und kein Text wird abgeschnitten: ein längerer verschiebt, was hinter ihm in der Zeile steht, und die Spalten geraten durcheinander. Geben Sie dem Feld die Breite des längsten Textes, oder lassen Sie ihn vom Programm kürzen.</translation>
    </message>
</context>
</TS>
