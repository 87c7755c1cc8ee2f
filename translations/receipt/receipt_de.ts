<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
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
