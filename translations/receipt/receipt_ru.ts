<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru" sourcelanguage="en">
<context>
    <name>LintFinding</name>
    <message>
        <source>the picture &quot;%1&quot; can&apos;t be read: %2</source>
        <translation>картинку &quot;%1&quot; нельзя прочитать: %2</translation>
    </message>
    <message>
        <source>it is damaged, too large, or of a format that isn&apos;t printed</source>
        <translation>она повреждена, слишком велика или в формате, который не печатается</translation>
    </message>
    <message>
        <source>the folder &quot;%2&quot; has no picture &quot;%1&quot; that can be read</source>
        <translation>в папке &quot;%2&quot; нет картинки &quot;%1&quot;, которую можно прочитать</translation>
    </message>
    <message>
        <source>there is no picture &quot;%1&quot; in the folder &quot;%2&quot;</source>
        <translation>в папке &quot;%2&quot; нет картинки &quot;%1&quot;</translation>
    </message>
    <message>
        <source>%1 with %2 paper</source>
        <translation>%1 с бумагой %2</translation>
    </message>
    <message>
        <source>the file &quot;%1&quot; can&apos;t be read: %2</source>
        <translation>файл &quot;%1&quot; нельзя прочитать: %2</translation>
    </message>
    <message>
        <source>a symbol or the root element is wrong</source>
        <translation>неверен символ или корневой элемент</translation>
    </message>
    <message>
        <source>the file &quot;%1&quot; is damaged: %2; see &quot;receipt symbols&quot;</source>
        <translation>файл &quot;%1&quot; повреждён: %2; см. &quot;receipt symbols&quot;</translation>
    </message>
    <message>
        <source>there is no file &quot;%1&quot;</source>
        <translation>файла &quot;%1&quot; нет</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no regular file</source>
        <translation>&quot;%1&quot; — не обычный файл</translation>
    </message>
    <message>
        <source>the last comma cuts the expression: &quot;%1&quot; is calculated, and &quot;%2&quot; is its format</source>
        <translation>последняя запятая разрезает выражение: вычисляется &quot;%1&quot;, а &quot;%2&quot; — формат</translation>
    </message>
    <message>
        <source>the expression &quot;%1&quot; ends too early</source>
        <translation>выражение &quot;%1&quot; кончается слишком рано</translation>
    </message>
    <message>
        <source>the expression &quot;%1&quot; can&apos;t be read from &quot;%2&quot; on</source>
        <translation>выражение &quot;%1&quot; нельзя прочитать, начиная с &quot;%2&quot;</translation>
    </message>
    <message>
        <source>; with its values it is &quot;%1&quot;</source>
        <translation>; с его значениями это &quot;%1&quot;</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; counts only on a line of its own</source>
        <translation>&quot;&lt;%1&gt;&quot; действует только на отдельной строке</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; counts as an attribute; did you mean &quot;&lt;%2&gt;&quot;?</source>
        <translation>&quot;&lt;%1&gt;&quot; считается атрибутом; может быть, &quot;&lt;%2&gt;&quot;?</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; has no name</source>
        <translation>у &quot;&lt;%1&gt;&quot; нет имени</translation>
    </message>
    <message>
        <source>there is no function &quot;%1&quot;: %2</source>
        <translation>функции &quot;%1&quot; нет: %2</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; is read as an attribute%2: %3</source>
        <translation>&quot;&lt;%1&gt;&quot; читается как атрибут%2: %3</translation>
    </message>
    <message>
        <source>, which the document lacks</source>
        <translation>, которого нет в документе</translation>
    </message>
    <message>
        <source>the format begins behind the last comma, and &quot;%1&quot; is no attribute: instead of a comma in the format write &quot;%2&quot;</source>
        <translation>формат начинается за последней запятой, а &quot;%1&quot; — не атрибут: вместо запятой в формате пишите &quot;%2&quot;</translation>
    </message>
    <message>
        <source>the expression &quot;%1&quot; divides by zero</source>
        <translation>выражение &quot;%1&quot; делит на ноль</translation>
    </message>
    <message>
        <source>the document has no attribute &quot;%1&quot;</source>
        <translation>в документе нет атрибута &quot;%1&quot;</translation>
    </message>
    <message>
        <source>: with it the group goes</source>
        <translation>: с ним исчезает группа</translation>
    </message>
    <message>
        <source>; did you mean &quot;%1&quot;?</source>
        <translation>; может быть, &quot;%1&quot;?</translation>
    </message>
    <message>
        <source>; the value of &quot;%1&quot; is put into it</source>
        <translation>; в него подставляется значение &quot;%1&quot;</translation>
    </message>
    <message>
        <source>, with its values &quot;%1&quot;,</source>
        <translation>, с его значениями &quot;%1&quot;,</translation>
    </message>
    <message>
        <source>the expression &quot;%1&quot;%2 divides by zero or has no finite value for another reason: it prints &quot;%3&quot;</source>
        <translation>выражение &quot;%1&quot;%2 делит на ноль или по другой причине не имеет конечного значения: печатается &quot;%3&quot;</translation>
    </message>
    <message>
        <source>; did you mean &quot;%1&quot;, in Latin letters?</source>
        <translation>; может быть, &quot;%1&quot; латинскими буквами?</translation>
    </message>
    <message>
        <source>the font stays</source>
        <translation>шрифт остаётся прежним</translation>
    </message>
    <message>
        <source>the line is solid</source>
        <translation>линия сплошная</translation>
    </message>
    <message>
        <source>it counts as left</source>
        <translation>это считается как left</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes %2, and not &quot;%3&quot;: %4</source>
        <translation>&quot;%1&quot; принимает %2, а не &quot;%3&quot;: %4</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a number from 0 to 255, and not &quot;%2&quot;: it counts as %3</source>
        <translation>&quot;%1&quot; — число от 0 до 255, а не &quot;%2&quot;: это считается как %3</translation>
    </message>
    <message>
        <source>BBCode has no key &quot;%1&quot;%2</source>
        <translation>в BBCode нет ключа &quot;%1&quot;%2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is of no use outside of [%2]</source>
        <translation>&quot;%1&quot; вне [%2] бесполезен</translation>
    </message>
    <message>
        <source>] or [</source>
        <translation>] или [</translation>
    </message>
    <message>
        <source>&quot;[/%1]&quot; closes what isn&apos;t open</source>
        <translation>&quot;[/%1]&quot; закрывает то, что не открыто</translation>
    </message>
    <message>
        <source>&quot;[%1]&quot; is never closed: </source>
        <translation>&quot;[%1]&quot; не закрыт: </translation>
    </message>
    <message>
        <source>no line is drawn; write [hr /]</source>
        <translation>линия не рисуется; пишите [hr /]</translation>
    </message>
    <message>
        <source>no picture is printed; write [/img] behind it</source>
        <translation>картинка не печатается; поставьте за ним [/img]</translation>
    </message>
    <message>
        <source>no code is printed</source>
        <translation>код не печатается</translation>
    </message>
    <message>
        <source>it holds to the text&apos;s end, and beyond for some</source>
        <translation>он действует до конца текста, а у некоторых и дальше</translation>
    </message>
    <message>
        <source>barcode</source>
        <translation>штрихкод</translation>
    </message>
    <message>
        <source>QR code</source>
        <translation>QR-код</translation>
    </message>
    <message>
        <source>the %1 has no data: none is printed</source>
        <translation>%1 не содержит данных и не печатается</translation>
    </message>
    <message>
        <source>the %1 of &quot;%2&quot; can&apos;t be printed: %3</source>
        <translation>%1 из &quot;%2&quot; нельзя напечатать: %3</translation>
    </message>
    <message>
        <source>acts as a tag of BBCode; &quot;--clean brackets&quot; makes &quot;(&quot; and &quot;)&quot; of its brackets</source>
        <translation>действует как тег BBCode; &quot;--clean brackets&quot; делает из его скобок &quot;(&quot; и &quot;)&quot;</translation>
    </message>
    <message>
        <source>acts as in a template; &quot;--clean tags&quot; makes a blank of the &quot;&lt;&quot;</source>
        <translation>действует как в шаблоне; &quot;--clean tags&quot; делает из &quot;&lt;&quot; пробел</translation>
    </message>
    <message>
        <source>%1 is given as &quot;%2&quot;: &quot;%3&quot; </source>
        <translation>для %1 задано &quot;%2&quot;: &quot;%3&quot; </translation>
    </message>
    <message>
        <source>; templates have nothing of the kind</source>
        <translation>; в шаблонах ничего подобного нет</translation>
    </message>
    <message>
        <source>; templates have &quot;%1&quot;</source>
        <translation>; в шаблонах есть &quot;%1&quot;</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a tag of BBCode, and a template prints &quot;%2&quot;%3</source>
        <translation>&quot;%1&quot; — тег BBCode, а шаблон печатает &quot;%2&quot;%3</translation>
    </message>
    <message>
        <source>BBCode has no tag &quot;%1&quot;%2</source>
        <translation>в BBCode нет тега &quot;%1&quot;%2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; opens, as it has a key</source>
        <translation>&quot;%1&quot; открывает, потому что в нём есть ключ</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no tag, and prints as it stands: a tag is [name] or [name key=value], without quotation marks</source>
        <translation>&quot;%1&quot; — не тег и печатается как есть: тег — это [name] или [name key=value], без кавычек</translation>
    </message>
    <message>
        <source>&quot;[/%1]&quot; closes in front of &quot;[/%2]&quot;, which opened inside of it</source>
        <translation>&quot;[/%1]&quot; закрывается перед &quot;[/%2]&quot;, который открыт внутри него</translation>
    </message>
    <message>
        <source>&quot;[img]&quot; names no picture: write [img name=logo][/img]</source>
        <translation>&quot;[img]&quot; не называет картинку: пишите [img name=logo][/img]</translation>
    </message>
    <message numerus="yes">
        <source>the name &quot;%1&quot; fits %n files, and the first of them is taken: %2</source>
        <translation>
            <numerusform>имени &quot;%1&quot; подходит %n файл, и берётся первый из них: %2</numerusform>
            <numerusform>имени &quot;%1&quot; подходят %n файла, и берётся первый из них: %2</numerusform>
            <numerusform>имени &quot;%1&quot; подходят %n файлов, и берётся первый из них: %2</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; text isn&apos;t larger than other text on %2: both have characters of %3 x %4 dots</source>
        <translation>текст размера &quot;%1&quot; не крупнее другого на %2: у обоих знаки %3 x %4 точек</translation>
    </message>
    <message>
        <source>&quot;zerofill&quot; takes whole numbers alone, and prints &quot;%1&quot; for &quot;%2&quot;</source>
        <translation>&quot;zerofill&quot; принимает только целые числа и печатает &quot;%1&quot; вместо &quot;%2&quot;</translation>
    </message>
    <message>
        <source>the symbol %1 has no drawing</source>
        <translation>у символа %1 нет рисунка</translation>
    </message>
    <message>
        <source>the symbol %1 is blank: font %2 of %3 takes no drawings</source>
        <translation>вместо символа %1 пробел: шрифт %2 у %3 не принимает рисунков</translation>
    </message>
    <message>
        <source>the symbol %1 has no drawing that fits the %2 x %3 dots of a character of %4</source>
        <translation>у символа %1 нет рисунка, который помещается в %2 x %3 точек знака у %4</translation>
    </message>
    <message>
        <source>%1 is not in the printer&apos;s character set, %2</source>
        <translation>%1 нет в наборе знаков принтера, %2</translation>
    </message>
    <message>
        <source>%1 are not in the printer&apos;s character set, %2</source>
        <translation>%1 нет в наборе знаков принтера, %2</translation>
    </message>
    <message>
        <source>the copy prints without a mark: </source>
        <translation>копия печатается без пометки: </translation>
    </message>
    <message>
        <source>a copy will print without a mark: </source>
        <translation>копия напечатается без пометки: </translation>
    </message>
    <message>
        <source>there is no &quot;&lt;DOCNO&gt;&quot;</source>
        <translation>нет &quot;&lt;DOCNO&gt;&quot;</translation>
    </message>
    <message>
        <source>a file of special symbols is named on line %1 already; the lowest line counts</source>
        <translation>файл особых символов уже назван в строке %1; считается самая нижняя строка</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has no character behind it on the line and is lost: the next line stays in font %2</source>
        <translation>за &quot;%1&quot; в строке нет знаков, и он пропадает: следующая строка остаётся в шрифте %2</translation>
    </message>
    <message>
        <source>there is no font of &quot;%1&quot;: it counts as &quot;&lt;F%2&gt;&quot;</source>
        <translation>шрифта для &quot;%1&quot; нет: это считается как &quot;&lt;F%2&gt;&quot;</translation>
    </message>
    <message>
        <source>the font is switched here and never back: all lines below are printed in font %1</source>
        <translation>шрифт здесь переключается и не возвращается: все строки ниже печатаются шрифтом %1</translation>
    </message>
    <message>
        <source>the line has no text and isn&apos;t printed: &quot;%1&quot; is lost</source>
        <translation>в строке нет текста, и она не печатается: &quot;%1&quot; пропадает</translation>
    </message>
    <message>
        <source>the group is left open at the line&apos;s end: &quot;[&quot; has no &quot;]&quot; on the line</source>
        <translation>группа осталась открытой в конце строки: у &quot;[&quot; нет &quot;]&quot; в строке</translation>
    </message>
    <message>
        <source>&quot;]&quot; has no &quot;[&quot; in front of it on the line</source>
        <translation>перед &quot;]&quot; в строке нет &quot;[&quot;</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands inside the tag &quot;%2&quot;</source>
        <translation>&quot;%1&quot; стоит внутри тега &quot;%2&quot;</translation>
    </message>
    <message numerus="yes">
        <source>&quot;%1&quot; isn&apos;t filled when the group in front of it goes: from the group&apos;s end to the tag there have to be %n characters</source>
        <translation>
            <numerusform>&quot;%1&quot; не заполняется, когда группа перед ним исчезает: от конца группы до тега должен быть %n знак</numerusform>
            <numerusform>&quot;%1&quot; не заполняется, когда группа перед ним исчезает: от конца группы до тега должно быть %n знака</numerusform>
            <numerusform>&quot;%1&quot; не заполняется, когда группа перед ним исчезает: от конца группы до тега должно быть %n знаков</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands inside other text, which goes to the first and to the last entry only</source>
        <translation>&quot;%1&quot; стоит внутри другого текста, который попадает только в первую и в последнюю запись</translation>
    </message>
    <message>
        <source>the line is cut %1 too far to the right for &quot;%2&quot;: letters in front of it or in it are more in upper case</source>
        <translation>для &quot;%2&quot; строка режется на %1 правее, чем надо: букв перед ним или в нём в верхнем регистре больше</translation>
    </message>
    <message>
        <source>a character</source>
        <translation>один знак</translation>
    </message>
    <message numerus="yes">
        <source>%n characters</source>
        <translation>
            <numerusform>%n знак</numerusform>
            <numerusform>%n знака</numerusform>
            <numerusform>%n знаков</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; prints nothing unless the client cuts the template here (--fiscal)</source>
        <translation>&quot;&lt;%1&gt;&quot; ничего не печатает, если программа не режет здесь шаблон (--fiscal)</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; is no markup in the data of a QR code: it goes into the code</source>
        <translation>&quot;&lt;%1&gt;&quot; в данных QR-кода — не разметка: он попадает в код</translation>
    </message>
    <message>
        <source>&quot;%1&quot; of a group goes into the QR code</source>
        <translation>&quot;%1&quot; группы попадает в QR-код</translation>
    </message>
    <message>
        <source>the tag isn&apos;t filled with this document, as the group in front of it goes</source>
        <translation>с этим документом тег не заполняется, потому что группа перед ним исчезает</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; prints as it stands on a line with &quot;&lt;S&gt;&quot;</source>
        <translation>&quot;&lt;%1&gt;&quot; в строке с &quot;&lt;S&gt;&quot; печатается как есть</translation>
    </message>
    <message>
        <source>%1 &lt;S&gt; on the line: each takes all the room that the text leaves, and the line gets wider than the paper</source>
        <translation>%1 &lt;S&gt; в строке: каждый занимает всё место, которое оставляет текст, и строка становится шире бумаги</translation>
    </message>
    <message>
        <source>two</source>
        <translation>два</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; prints as it stands on a line with &quot;&lt;C&gt;&quot;</source>
        <translation>&quot;&lt;%1&gt;&quot; в строке с &quot;&lt;C&gt;&quot; печатается как есть</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; prints as it stands: the line has a smaller spacing</source>
        <translation>&quot;&lt;%1&gt;&quot; печатается как есть: у строки есть меньший интервал</translation>
    </message>
    <message>
        <source>the format is switched on here and never off</source>
        <translation>формат здесь включается и не выключается</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; prints as it stands: a tag of the same pair stands directly in front</source>
        <translation>&quot;&lt;%1&gt;&quot; печатается как есть: прямо перед ним стоит тег той же пары</translation>
    </message>
    <message>
        <source>&quot;&lt;X:&gt;&quot; prints as it stands: there is no &quot;&lt;:X&gt;&quot; behind it</source>
        <translation>&quot;&lt;X:&gt;&quot; печатается как есть: за ним нет &quot;&lt;:X&gt;&quot;</translation>
    </message>
    <message>
        <source>&quot;&lt;:X&gt;&quot; prints as it stands: there is no &quot;&lt;X:&gt;&quot; in front of it</source>
        <translation>&quot;&lt;:X&gt;&quot; печатается как есть: перед ним нет &quot;&lt;X:&gt;&quot;</translation>
    </message>
    <message>
        <source>&quot;&lt;QR&gt;&quot; and its data print as they stand in text and HTML</source>
        <translation>&quot;&lt;QR&gt;&quot; и его данные в тексте и HTML печатаются как есть</translation>
    </message>
    <message>
        <source>, such as &quot;&lt; %1 &gt;&quot;</source>
        <translation>, например &quot;&lt; %1 &gt;&quot;</translation>
    </message>
    <message>
        <source>, such as &quot;&lt;%1,&gt;&quot; with an empty format</source>
        <translation>, например &quot;&lt;%1,&gt;&quot; с пустым форматом</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; is read as the code of a character: an attribute or expression has at least four characters</source>
        <translation>&quot;&lt;%1&gt;&quot; читается как код знака: в атрибуте или выражении не меньше четырёх знаков</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; prints as it stands: an image lies between &quot;&lt;I&gt;&quot; and &quot;&lt;/I&gt;&quot; on one line</source>
        <translation>&quot;&lt;%1&gt;&quot; печатается как есть: изображение лежит между &quot;&lt;I&gt;&quot; и &quot;&lt;/I&gt;&quot; в одной строке</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; prints as it stands; did you mean &quot;&lt;%2&gt;&quot;?</source>
        <translation>&quot;&lt;%1&gt;&quot; печатается как есть; может быть, &quot;&lt;%2&gt;&quot;?</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; prints as it stands: there is no such tag</source>
        <translation>&quot;&lt;%1&gt;&quot; печатается как есть: такого тега нет</translation>
    </message>
    <message>
        <source>&quot;&lt;&quot; has no &quot;&gt;&quot; behind it on the line</source>
        <translation>за &quot;&lt;&quot; в строке нет &quot;&gt;&quot;</translation>
    </message>
    <message>
        <source>&quot;&lt;&quot; has no &quot;&gt;&quot; before the next &quot;&lt;&quot;: &quot;%1&quot; is read as one tag</source>
        <translation>за &quot;&lt;&quot; нет &quot;&gt;&quot; до следующего &quot;&lt;&quot;: &quot;%1&quot; читается как один тег</translation>
    </message>
    <message>
        <source>the document has no &quot;entries&quot;: a blank line is printed</source>
        <translation>в документе нет &quot;entries&quot;: печатается пустая строка</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; prints as it stands: an attribute or expression has at least four characters%2</source>
        <translation>&quot;&lt;%1&gt;&quot; печатается как есть: в атрибуте или выражении не меньше четырёх знаков%2</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; prints as it stands, as there is no such tag: %2</source>
        <translation>&quot;&lt;%1&gt;&quot; печатается как есть, потому что такого тега нет: %2</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; is no number: the character of code 0 is printed</source>
        <translation>&quot;&lt;%1&gt;&quot; — не число: печатается знак с кодом 0</translation>
    </message>
    <message>
        <source>&quot;%1&quot; acts as in a template; &quot;--clean tags&quot; makes a blank of the &quot;&lt;&quot;</source>
        <translation>&quot;%1&quot; действует как в шаблоне; &quot;--clean tags&quot; делает из &quot;&lt;&quot; пробел</translation>
    </message>
    <message>
        <source>a tab is a column; &quot;--clean controls&quot; makes a blank of it</source>
        <translation>табуляция — это столбец; &quot;--clean controls&quot; делает из неё пробел</translation>
    </message>
    <message>
        <source>&quot;[&quot; and &quot;]&quot; make a group; &quot;--clean brackets&quot; makes &quot;(&quot; and &quot;)&quot; of them</source>
        <translation>&quot;[&quot; и &quot;]&quot; образуют группу; &quot;--clean brackets&quot; делает из них &quot;(&quot; и &quot;)&quot;</translation>
    </message>
    <message>
        <source>&quot;%1&quot; and prints &quot;%2&quot;: </source>
        <translation>&quot;%1&quot;, а печатается &quot;%2&quot;: </translation>
    </message>
    <message>
        <source>%1 is given as </source>
        <translation>для %1 задано </translation>
    </message>
    <message>
        <source>a tab stands between two entries, and not &quot;%1&quot;</source>
        <translation>между двумя записями стоит табуляция, а не &quot;%1&quot;</translation>
    </message>
    <message>
        <source>&quot;--clean equals&quot; makes blanks of those behind the first</source>
        <translation>&quot;--clean equals&quot; делает пробелы из тех, что за первым</translation>
    </message>
    <message>
        <source>the entry </source>
        <translation>запись </translation>
    </message>
    <message numerus="yes">
        <source>&quot;%1&quot; has %n columns: each &quot;=&quot; begins one; %2</source>
        <translation>
            <numerusform>&quot;%1&quot; содержит %n столбец: каждый &quot;=&quot; начинает новый; %2</numerusform>
            <numerusform>&quot;%1&quot; содержит %n столбца: каждый &quot;=&quot; начинает новый; %2</numerusform>
            <numerusform>&quot;%1&quot; содержит %n столбцов: каждый &quot;=&quot; начинает новый; %2</numerusform>
        </translation>
    </message>
    <message>
        <source>is given as &quot;%1&quot; and prints &quot;%2&quot;: </source>
        <translation>задана как &quot;%1&quot;, а печатается &quot;%2&quot;: </translation>
    </message>
    <message>
        <source> of %1</source>
        <translation> из %1</translation>
    </message>
    <message>
        <source>, and %1 has %2</source>
        <translation>, а у %1 их %2</translation>
    </message>
    <message>
        <source> in its font %1</source>
        <translation> в шрифте %1</translation>
    </message>
    <message numerus="yes">
        <source>takes %n characters</source>
        <translation>
            <numerusform>занимает %n знак</numerusform>
            <numerusform>занимает %n знака</numerusform>
            <numerusform>занимает %n знаков</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>takes at least %n characters</source>
        <translation>
            <numerusform>занимает не менее %n знака</numerusform>
            <numerusform>занимает не менее %n знаков</numerusform>
            <numerusform>занимает не менее %n знаков</numerusform>
        </translation>
    </message>
    <message>
        <source>the paper ends inside &quot;%1&quot;: &quot;%2&quot; stands on one row and &quot;%3&quot; on the next; the line &quot;%4&quot; %5</source>
        <translation>бумага кончается внутри &quot;%1&quot;: &quot;%2&quot; стоит на одной строке, а &quot;%3&quot; — на следующей; строка &quot;%4&quot; %5</translation>
    </message>
    <message>
        <source>the line &quot;%1&quot; %2</source>
        <translation>строка &quot;%1&quot; %2</translation>
    </message>
    <message>
        <source>%1 is given as &quot;%2&quot;</source>
        <translation>для %1 задано &quot;%2&quot;</translation>
    </message>
    <message>
        <source>%1 is %2</source>
        <translation>%1 равно %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is %2</source>
        <translation>&quot;%1&quot; равно %2</translation>
    </message>
    <message>
        <source> and prints &quot;%1&quot;: </source>
        <translation>, а печатается &quot;%1&quot;: </translation>
    </message>
    <message>
        <source>in a format with decimals a number between -1 and 0 loses its sign; &quot;&lt;%1,0.E&gt;&quot; keeps it</source>
        <translation>в формате с дробной частью число между -1 и 0 теряет знак; &quot;&lt;%1,0.E&gt;&quot; его сохраняет</translation>
    </message>
    <message>
        <source>an &quot;E&quot; in the format gives six digits</source>
        <translation>&quot;E&quot; в формате даёт шесть цифр</translation>
    </message>
    <message>
        <source>with decimals in the format the part in front of the point has 32 bits; &quot;&lt;%1,0&gt;&quot; prints it without decimals</source>
        <translation>с дробной частью в формате у части перед точкой 32 бита; &quot;&lt;%1,0&gt;&quot; печатает число без дробной части</translation>
    </message>
    <message>
        <source>without a format there are two decimals; &quot;&lt;%1,0.%2&gt;&quot; prints all of them</source>
        <translation>без формата печатаются два знака после точки; &quot;&lt;%1,0.%2&gt;&quot; печатает все</translation>
    </message>
    <message>
        <source>the text reads as a number; &quot;%1%2&quot; stays as it stands</source>
        <translation>текст читается как число; &quot;%1%2&quot; остаётся как есть</translation>
    </message>
    <message>
        <source>the text reads as a number, which has no zeros in front; &quot;&lt;%1,%2&gt;&quot; prints all digits</source>
        <translation>текст читается как число, а у числа нет нулей впереди; &quot;&lt;%1,%2&gt;&quot; печатает все цифры</translation>
    </message>
    <message>
        <source>the comma is read as a decimal point; a format, such as &quot;&lt;%1,0.%2&gt;&quot;, says that a number is meant</source>
        <translation>запятая читается как десятичная точка; формат, например &quot;&lt;%1,0.%2&gt;&quot;, говорит, что задумано число</translation>
    </message>
    <message>
        <source>%1 is a code by its name, and the format &quot;%2&quot; takes zeros off its front; one of as many zeros as it has digits, such as &quot;&lt;%1,000000&gt;&quot;, prints all of them</source>
        <translation>%1, судя по имени, — код, а формат &quot;%2&quot; убирает у него нули впереди; формат с числом нулей, равным числу его цифр, например &quot;&lt;%1,000000&gt;&quot;, печатает их все</translation>
    </message>
    <message>
        <source>in &quot;%1&quot; the &quot;m&quot; behind the hours is the month, and minutes are &quot;n&quot;</source>
        <translation>в &quot;%1&quot; &quot;m&quot; за часами — это месяц, а минуты — &quot;n&quot;</translation>
    </message>
    <message>
        <source>, and &quot;am&quot; or &quot;pm&quot; is &quot;ap&quot;</source>
        <translation>, а &quot;am&quot; или &quot;pm&quot; — это &quot;ap&quot;</translation>
    </message>
    <message>
        <source>; other words stand outside of the tag</source>
        <translation>; другие слова стоят вне тега</translation>
    </message>
    <message>
        <source>in &quot;%1&quot; the letters of &quot;%2&quot; mean something else: days are &quot;dd&quot;, months &quot;mm&quot;, years &quot;yy&quot; or &quot;yyyy&quot;, hours &quot;hh&quot;, minutes &quot;nn&quot;, seconds &quot;ss&quot;%3</source>
        <translation>в &quot;%1&quot; буквы &quot;%2&quot; значат другое: дни — &quot;dd&quot;, месяцы — &quot;mm&quot;, годы — &quot;yy&quot; или &quot;yyyy&quot;, часы — &quot;hh&quot;, минуты — &quot;nn&quot;, секунды — &quot;ss&quot;%3</translation>
    </message>
    <message>
        <source>, and the &quot;m&quot; behind the hours is the month</source>
        <translation>, а &quot;m&quot; за часами — это месяц</translation>
    </message>
    <message>
        <source>the format &quot;%1&quot; has no part of a date or time</source>
        <translation>в формате &quot;%1&quot; нет частей даты или времени</translation>
    </message>
    <message>
        <source>the format &quot;%1&quot; asks for a time, and the value is a date alone</source>
        <translation>формат &quot;%1&quot; требует времени, а значение — только дата</translation>
    </message>
    <message>
        <source>the format &quot;%1&quot; asks for a date, and the value is a time alone</source>
        <translation>формат &quot;%1&quot; требует даты, а значение — только время</translation>
    </message>
    <message>
        <source>the format &quot;%1&quot; is for dates and times, and the value is a number</source>
        <translation>формат &quot;%1&quot; — для дат и времени, а значение — число</translation>
    </message>
    <message>
        <source>of the format &quot;%1&quot; only &quot;0&quot;, &quot;#&quot; and the point are for numbers: what else is to be printed stands outside of the tag</source>
        <translation>в формате &quot;%1&quot; для чисел служат только &quot;0&quot;, &quot;#&quot; и точка: всё прочее, что надо напечатать, стоит вне тега</translation>
    </message>
    <message>
        <source>the format &quot;%1&quot; is for real numbers, and the value is a whole one</source>
        <translation>формат &quot;%1&quot; — для дробных чисел, а значение — целое</translation>
    </message>
    <message>
        <source>the format &quot;%1&quot; has more than nine decimals</source>
        <translation>в формате &quot;%1&quot; больше девяти знаков после точки</translation>
    </message>
    <message>
        <source>the format &quot;%1&quot; is for dates and times, and the value is a text</source>
        <translation>формат &quot;%1&quot; — для дат и времени, а значение — текст</translation>
    </message>
    <message>
        <source>the format &quot;%1&quot; has no effect, as the value is a text</source>
        <translation>формат &quot;%1&quot; не действует, потому что значение — текст</translation>
    </message>
    <message>
        <source>the format &quot;%1&quot; has no effect, as the value is true or false</source>
        <translation>формат &quot;%1&quot; не действует, потому что значение — true или false</translation>
    </message>
    <message>
        <source>; hand it over as the text &quot;%1.%2&quot;</source>
        <translation>; передавайте его текстом &quot;%1.%2&quot;</translation>
    </message>
    <message>
        <source>: it prints &quot;%1&quot;</source>
        <translation>: печатается &quot;%1&quot;</translation>
    </message>
    <message>
        <source>a template has no barcode; &quot;&lt;QR&gt;&quot; with the data behind it is a QR code, and a BBCode text has [barcode]</source>
        <translation>в шаблоне штрихкода нет; &quot;&lt;QR&gt;&quot; с данными за ним — QR-код, а в тексте BBCode есть [barcode]</translation>
    </message>
    <message>
        <source>a QR code is &quot;&lt;QR&gt;&quot; with the data behind it</source>
        <translation>QR-код — это &quot;&lt;QR&gt;&quot; с данными за ним</translation>
    </message>
    <message>
        <source>the printer&apos;s driver cuts the paper behind the receipt, and no tag does</source>
        <translation>бумагу за чеком режет драйвер принтера, а не тег</translation>
    </message>
    <message>
        <source>an empty line of the template feeds the paper by a line</source>
        <translation>пустая строка шаблона продвигает бумагу на строку</translation>
    </message>
    <message>
        <source>a template has no pictures; &quot;&lt;SPECSYMBOLS=&quot; names drawings of single characters, and a BBCode text has [img]</source>
        <translation>в шаблоне нет картинок; &quot;&lt;SPECSYMBOLS=&quot; называет рисунки отдельных знаков, а в тексте BBCode есть [img]</translation>
    </message>
    <message>
        <source>a rule is a line of &quot;-&quot;, or &quot;&lt;U&gt; &lt;S&gt; &quot; across the paper, whatever its width</source>
        <translation>линейка — это строка из &quot;-&quot; или &quot;&lt;U&gt; &lt;S&gt; &quot; поперёк бумаги любой ширины</translation>
    </message>
    <message>
        <source>a line without &quot;&lt;C&gt;&quot;, &quot;&lt;R&gt;&quot; and &quot;&lt;S&gt;&quot; stands at the left edge</source>
        <translation>строка без &quot;&lt;C&gt;&quot;, &quot;&lt;R&gt;&quot; и &quot;&lt;S&gt;&quot; стоит у левого края</translation>
    </message>
    <message>
        <source>a line of the template is a line of the receipt</source>
        <translation>строка шаблона — это строка чека</translation>
    </message>
    <message>
        <source>&quot;&lt;S&gt;&quot; moves what stands behind it to the right edge</source>
        <translation>&quot;&lt;S&gt;&quot; сдвигает то, что стоит за ним, к правому краю</translation>
    </message>
    <message>
        <source>&quot;&lt;C&gt;&quot; centres the line</source>
        <translation>&quot;&lt;C&gt;&quot; ставит строку посередине</translation>
    </message>
    <message>
        <source>&quot;&lt;R&gt;&quot; puts the line to the right edge</source>
        <translation>&quot;&lt;R&gt;&quot; ставит строку к правому краю</translation>
    </message>
    <message>
        <source>&quot;&lt;B&gt;&quot; makes the line bold, &quot;&lt;B:&gt;&quot; and &quot;&lt;:B&gt;&quot; a part of it</source>
        <translation>&quot;&lt;B&gt;&quot; делает строку жирной, &quot;&lt;B:&gt;&quot; и &quot;&lt;:B&gt;&quot; — её часть</translation>
    </message>
    <message>
        <source>&quot;&lt;N&gt;&quot; makes the line italic, &quot;&lt;N:&gt;&quot; and &quot;&lt;:N&gt;&quot; a part of it</source>
        <translation>&quot;&lt;N&gt;&quot; делает строку курсивной, &quot;&lt;N:&gt;&quot; и &quot;&lt;:N&gt;&quot; — её часть</translation>
    </message>
    <message>
        <source>&quot;&lt;U&gt;&quot; underlines the line, &quot;&lt;U:&gt;&quot; and &quot;&lt;:U&gt;&quot; a part of it</source>
        <translation>&quot;&lt;U&gt;&quot; подчёркивает строку, &quot;&lt;U:&gt;&quot; и &quot;&lt;:U&gt;&quot; — её часть</translation>
    </message>
    <message>
        <source>&quot;&lt;Z&gt;&quot; marks the line, &quot;&lt;Z:&gt;&quot; and &quot;&lt;:Z&gt;&quot; a part of it</source>
        <translation>&quot;&lt;Z&gt;&quot; выделяет строку, &quot;&lt;Z:&gt;&quot; и &quot;&lt;:Z&gt;&quot; — её часть</translation>
    </message>
    <message>
        <source>&quot;&lt;H2&gt;&quot; makes the line twice as high, &quot;&lt;W2&gt;&quot; twice as wide</source>
        <translation>&quot;&lt;H2&gt;&quot; делает строку вдвое выше, &quot;&lt;W2&gt;&quot; — вдвое шире</translation>
    </message>
    <message>
        <source>&quot;&lt;F2&gt;&quot; is the printer&apos;s second font, and there are four</source>
        <translation>&quot;&lt;F2&gt;&quot; — второй шрифт принтера, а всего их четыре</translation>
    </message>
    <message>
        <source>a template only prints; &quot;receipt drawer&quot; opens the cash drawer</source>
        <translation>шаблон только печатает; денежный ящик открывает &quot;receipt drawer&quot;</translation>
    </message>
    <message>
        <source>what isn&apos;t always there stands in a group, &quot;[&quot; to &quot;]&quot;, that goes when a value in it is empty or zero</source>
        <translation>то, что бывает не всегда, стоит в группе, от &quot;[&quot; до &quot;]&quot;, которая исчезает, если значение в ней пусто или равно нулю</translation>
    </message>
    <message>
        <source>&quot;&lt;ENTRIES&gt;&quot; is the list that the program makes, and there is no other</source>
        <translation>&quot;&lt;ENTRIES&gt;&quot; — список, который составляет программа, а другого нет</translation>
    </message>
    <message>
        <source>a format rounds, and floor(x*100+0.500001)/100 does in front of further calculation</source>
        <translation>округляет формат, а до дальнейших вычислений — floor(x*100+0.500001)/100</translation>
    </message>
    <message>
        <source>the greater of two is (a+b+abs(a-b))/2</source>
        <translation>большее из двух — (a+b+abs(a-b))/2</translation>
    </message>
    <message>
        <source>the smaller of two is (a+b-abs(a-b))/2</source>
        <translation>меньшее из двух — (a+b-abs(a-b))/2</translation>
    </message>
    <message>
        <source>floor(x) is the whole number below x, and ceil(x) that above</source>
        <translation>floor(x) — целое число ниже x, а ceil(x) — выше</translation>
    </message>
    <message>
        <source>it is called ceil</source>
        <translation>она называется ceil</translation>
    </message>
    <message>
        <source>it is called pow, or a^b</source>
        <translation>она называется pow, или a^b</translation>
    </message>
    <message>
        <source>the square is x^2, and the root sqrt(x)</source>
        <translation>квадрат — x^2, а корень — sqrt(x)</translation>
    </message>
    <message>
        <source>the remainder is a%b</source>
        <translation>остаток — a%b</translation>
    </message>
    <message>
        <source>the sum is a+b+c</source>
        <translation>сумма — a+b+c</translation>
    </message>
    <message>
        <source>the mean of two is (a+b)/2</source>
        <translation>среднее двух — (a+b)/2</translation>
    </message>
    <message>
        <source>there are no conditions in expressions; a group, &quot;[&quot; to &quot;]&quot;, goes when a value in it is zero</source>
        <translation>условий в выражениях нет; группа, от &quot;[&quot; до &quot;]&quot;, исчезает, если значение в ней равно нулю</translation>
    </message>
    <message>
        <source>the format stands behind a comma at the end of the tag</source>
        <translation>формат стоит за запятой в конце тега</translation>
    </message>
    <message>
        <source>the program hands date and time over as an attribute</source>
        <translation>программа передаёт дату и время атрибутом</translation>
    </message>
    <message>
        <source>the fiscal marker is &quot;&lt;%1%2&gt;&quot;</source>
        <translation>фискальная метка — &quot;&lt;%1%2&gt;&quot;</translation>
    </message>
    <message>
        <source>; &quot;&lt;%1,0%2&gt;&quot; prints none</source>
        <translation>; &quot;&lt;%1,0%2&gt;&quot; не печатает ни одного</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has two signs, as %2 brings one of its own%3</source>
        <translation>в &quot;%1&quot; два знака числа, потому что у %2 есть свой%3</translation>
    </message>
    <message>
        <source>the values put into &quot;&lt;%1&gt;&quot; name others on and on: filling it would hang</source>
        <translation>значения, подставленные в &quot;&lt;%1&gt;&quot;, всё время называют другие: заполнение зависло бы</translation>
    </message>
    <message>
        <source>the value put in here leads to tags without end, such as &quot;&lt;%1&gt;&quot;: filling it would hang</source>
        <translation>подставленное здесь значение ведёт к бесконечным тегам, таким как &quot;&lt;%1&gt;&quot;: заполнение зависло бы</translation>
    </message>
    <message>
        <source>%1 is printed, and the amounts above add up to %2: where each is rounded by itself, so are the parts of the sum, as in </source>
        <translation>напечатано %1, а суммы выше дают %2: если каждая округляется сама по себе, так же округляйте и части итога, например </translation>
    </message>
    <message>
        <source>%1 is printed, and the entries above add up to %2</source>
        <translation>напечатано %1, а записи выше дают %2</translation>
    </message>
    <message>
        <source> without &quot;%1&quot;</source>
        <translation> без &quot;%1&quot;</translation>
    </message>
    <message>
        <source>%1 is printed, and the parts of the sum are printed as %2 together: each is rounded by itself, and so is the sum; round the parts in it too, as in %3</source>
        <translation>напечатано %1, а части суммы вместе напечатаны как %2: каждая округляется сама по себе, и сумма тоже; округляйте и части в ней, например %3</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes %2 characters, and the field has %3: what stands behind it is moved</source>
        <translation>&quot;%1&quot; занимает знаков: %2, а в поле их %3: то, что стоит за ним, сдвигается</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is markup of templates: with it the text counts as a template, and its tags of BBCode print without their brackets</source>
        <translation>&quot;%1&quot; — разметка шаблонов: с ней текст считается шаблоном, и его теги BBCode печатаются без скобок</translation>
    </message>
    <message>
        <source>the copy prints without a mark: BBCode has none, so a value has to say that it is a copy, such as &lt;COPY_MARK&gt;</source>
        <translation>копия печатается без пометки: в BBCode её нет, поэтому о копии должно говорить значение, например &lt;COPY_MARK&gt;</translation>
    </message>
    <message>
        <source>&quot;&lt;DOCNO&gt;&quot; doesn&apos;t count with a format or in an expression</source>
        <translation>&quot;&lt;DOCNO&gt;&quot; с форматом или в выражении не считается</translation>
    </message>
    <message>
        <source>&quot;]&quot; of the group goes into the QR code that the value begins</source>
        <translation>&quot;]&quot; группы попадает в QR-код, который начинается в значении</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; goes into the QR code as it stands: an attribute or expression has at least four characters%2</source>
        <translation>&quot;&lt;%1&gt;&quot; попадает в QR-код как есть: в атрибуте или выражении не меньше четырёх знаков%2</translation>
    </message>
    <message>
        <source>&quot;&lt;%1&gt;&quot; ends at its first &quot;&gt;&quot;, and &quot;%2&quot; prints as it stands: nothing is compared; a group goes when a value in it is empty or zero</source>
        <translation>&quot;&lt;%1&gt;&quot; кончается на первом &quot;&gt;&quot;, а &quot;%2&quot; печатается как есть: ничего не сравнивается; группа исчезает, если значение в ней пусто или равно нулю</translation>
    </message>
</context>
<context>
    <name>LintRule</name>
    <message>
        <source>error</source>
        <translation>ошибка</translation>
    </message>
    <message>
        <source>warning</source>
        <translation>предупреждение</translation>
    </message>
    <message>
        <source>note</source>
        <translation>примечание</translation>
    </message>
    <message>
        <source>, with --data %1</source>
        <translation>, с --data %1</translation>
    </message>
    <message>
        <source>, with %1</source>
        <translation>, с %1</translation>
    </message>
    <message>
        <source>Wrong%1:</source>
        <translation>Неверно%1:</translation>
    </message>
    <message>
        <source>Right:</source>
        <translation>Верно:</translation>
    </message>
    <message>
        <source>an attribute that the document lacks</source>
        <translation>атрибут, которого нет в документе</translation>
    </message>
    <message>
        <source>an expression that can&apos;t be evaluated</source>
        <translation>выражение, которое нельзя вычислить</translation>
    </message>
    <message>
        <source>An expression with a mistake prints nothing. The column is the place where its reading stopped. Without --data only mistakes are reported that no value can mend. An empty value in a group is none: the group goes.</source>
        <translation>Выражение с ошибкой ничего не печатает. Столбец — место, где чтение остановилось. Без --data сообщается только об ошибках, которых не исправит никакое значение. Пустое значение в группе не ошибка: группа исчезает.</translation>
    </message>
    <message>
        <source>an expression that its own last comma cuts</source>
        <translation>выражение, разрезанное своей последней запятой</translation>
    </message>
    <message>
        <source>What stands behind the last comma of a tag is the format, also if that comma belongs to a function or was meant as a decimal comma. An expression with a comma needs a format behind it, and a decimal point is a point.</source>
        <translation>То, что стоит за последней запятой тега, — формат, даже если запятая принадлежит функции или задумана как десятичная. Выражению с запятой нужен формат за ней, а дробная часть отделяется точкой.</translation>
    </message>
    <message>
        <source>an expression that divides by zero</source>
        <translation>выражение, которое делит на ноль</translation>
    </message>
    <message>
        <source>a format that isn&apos;t for its kind of value</source>
        <translation>формат не для этого вида значения</translation>
    </message>
    <message>
        <source>a tag too short to be an attribute</source>
        <translation>тег, слишком короткий для атрибута</translation>
    </message>
    <message>
        <source>misspelt or wrongly-cased markup</source>
        <translation>разметка с ошибкой или не теми буквами</translation>
    </message>
    <message>
        <source>Tags are written in capitals and without blanks. What isn&apos;t spelt exactly so prints as it stands, or, from four characters on, counts as an attribute and prints nothing.</source>
        <translation>Теги пишутся заглавными буквами и без пробелов. Написанное иначе печатается как есть или, от четырёх знаков, считается атрибутом и не печатает ничего.</translation>
    </message>
    <message>
        <source>a &quot;&lt;&quot; without its &quot;&gt;&quot;</source>
        <translation>&quot;&lt;&quot; без своей &quot;&gt;&quot;</translation>
    </message>
    <message>
        <source>Without a &quot;&gt;&quot; behind it on the line, a tag prints as it stands. If another tag follows, both are read as one, which prints nothing or as it stands. A &quot;&lt;&quot; in front of a blank is taken for text, as long as no tag follows.</source>
        <translation>Без &quot;&gt;&quot; за ним в строке тег печатается как есть. Если дальше стоит другой тег, оба читаются как один, который не печатает ничего или печатается как есть. &quot;&lt;&quot; перед пробелом считается текстом, пока дальше нет тега.</translation>
    </message>
    <message>
        <source>a bracket without its partner on the line</source>
        <translation>скобка без пары в строке</translation>
    </message>
    <message>
        <source>A group lies between &quot;[&quot; and &quot;]&quot; on one line. A bracket without its partner, one that stands inside a tag and a pair the wrong way round make no group: the text stays when the value is empty, and the brackets are not printed. Write &lt;#91&gt; and &lt;93&gt; to print brackets.</source>
        <translation>Группа лежит между &quot;[&quot; и &quot;]&quot; в одной строке. Скобка без пары, скобка внутри тега и пара в обратном порядке группы не образуют: при пустом значении текст остаётся, а скобки не печатаются. Для печати скобок пишите &lt;#91&gt; и &lt;93&gt;.</translation>
    </message>
    <message>
        <source>a tag that isn&apos;t filled when the group in front of it goes</source>
        <translation>тег, который не заполняется, когда группа перед ним исчезает</translation>
    </message>
    <message>
        <source>When an empty or zero value removes its group, the search for tags goes on as many characters behind the group as stood between its &quot;[&quot; and the value. A tag that begins there is passed over and prints as it stands. Begin the group with the value, put text between the two, or put the tag on another line.</source>
        <translation>Когда пустое значение или ноль убирает группу, поиск тегов продолжается за ней через столько знаков, сколько стояло между её &quot;[&quot; и значением. Тег, который начинается раньше, пропускается и печатается как есть. Начните группу со значения, поставьте между ними текст или перенесите тег на другую строку.</translation>
    </message>
    <message>
        <source>&lt;C&gt; or &lt;R&gt; on a line with &lt;S&gt;</source>
        <translation>&lt;C&gt; или &lt;R&gt; в строке с &lt;S&gt;</translation>
    </message>
    <message>
        <source>A line has one alignment, and &lt;S&gt; wins: &lt;C&gt; and &lt;R&gt; on such a line print as they stand.</source>
        <translation>У строки одно выравнивание, и &lt;S&gt; главнее: &lt;C&gt; и &lt;R&gt; в такой строке печатаются как есть.</translation>
    </message>
    <message>
        <source>&lt;R&gt; on a line with &lt;C&gt;</source>
        <translation>&lt;R&gt; в строке с &lt;C&gt;</translation>
    </message>
    <message>
        <source>A line has one alignment, and &lt;C&gt; wins over &lt;R&gt;, which prints as it stands.</source>
        <translation>У строки одно выравнивание, и &lt;C&gt; главнее &lt;R&gt;, который печатается как есть.</translation>
    </message>
    <message>
        <source>a second line spacing on a line</source>
        <translation>второй межстрочный интервал в строке</translation>
    </message>
    <message>
        <source>A line has one spacing: the smallest number on it, from &lt;LS0&gt; to &lt;LS7&gt;. Tags with other numbers print as they stand.</source>
        <translation>У строки один интервал: наименьшее число в ней, от &lt;LS0&gt; до &lt;LS7&gt;. Теги с другими числами печатаются как есть.</translation>
    </message>
    <message>
        <source>a format that is switched on and never off</source>
        <translation>формат, который включён и не выключен</translation>
    </message>
    <message>
        <source>&quot;&lt;B:&gt;&quot; and its like hold over line ends until their closing tag; without one all the rest of the receipt is printed so. Only a whole-line tag of the same kind ends it as well.</source>
        <translation>&quot;&lt;B:&gt;&quot; и подобные действуют через концы строк до закрывающего тега; без него так печатается весь остаток чека. Кроме него их заканчивает только тег того же вида для всей строки.</translation>
    </message>
    <message>
        <source>a format tag directly behind one of its own pair</source>
        <translation>тег формата сразу за тегом своей же пары</translation>
    </message>
    <message>
        <source>After an opening or closing tag the place right behind it isn&apos;t looked at again for a tag of the same pair: it prints as it stands, and so do later ones of its kind until one of the pair counts again. Only a closing tag right behind its opening tag counts. Whole-line tags open in front of the line and close behind it.</source>
        <translation>За открывающим или закрывающим тегом место сразу за ним не просматривается ещё раз на тег той же пары: он печатается как есть, и следующие его вида тоже, пока снова не сработает один из пары. Засчитывается только закрывающий тег сразу за своим открывающим. Теги для всей строки открываются перед строкой и закрываются за ней.</translation>
    </message>
    <message>
        <source>&quot;&lt;X:&gt;&quot; without &quot;&lt;:X&gt;&quot;, or the other way round</source>
        <translation>&quot;&lt;X:&gt;&quot; без &quot;&lt;:X&gt;&quot; или наоборот</translation>
    </message>
    <message>
        <source>What stands between &quot;&lt;X:&gt;&quot; and the next &quot;&lt;:X&gt;&quot; is removed. If one of the two is missing, nothing is removed, and the tag prints as it stands. The tags don&apos;t nest.</source>
        <translation>То, что стоит между &quot;&lt;X:&gt;&quot; и ближайшим &quot;&lt;:X&gt;&quot;, удаляется. Если одного из них нет, ничего не удаляется, и тег печатается как есть. Вкладывать эти теги друг в друга нельзя.</translation>
    </message>
    <message>
        <source>&quot;&lt;ENTRIES&gt;&quot; inside other text</source>
        <translation>&quot;&lt;ENTRIES&gt;&quot; внутри другого текста</translation>
    </message>
    <message>
        <source>The entries become lines of their own: what stands in front of &quot;&lt;ENTRIES&gt;&quot; goes to the first of them only, what stands behind it to the last only, and a group around it falls apart.</source>
        <translation>Записи становятся отдельными строками: то, что стоит перед &quot;&lt;ENTRIES&gt;&quot;, попадает только в первую, стоящее за ним — только в последнюю, а группа вокруг распадается.</translation>
    </message>
    <message>
        <source>a line that is cut beside &quot;&lt;ENTRIES&gt;&quot; or a fiscal marker</source>
        <translation>строка, разрезанная не там, рядом с &quot;&lt;ENTRIES&gt;&quot; или фискальной меткой</translation>
    </message>
    <message>
        <source>These keywords are looked for in the upper-cased line, where a letter can become two or three: a sharp s is &quot;SS&quot; there, a ligature its letters. The line itself is cut at the place that was found, so behind such a letter it is cut too far to the right: a part of the keyword prints, and what follows it loses its beginning. Put the keyword on a line of its own, in plain letters.</source>
        <translation>Эти слова ищутся в строке, переведённой в заглавные буквы, где из одной буквы могут выйти две или три: ß становится &quot;SS&quot;, лигатура — своими буквами. Сама строка режется на найденном месте, поэтому за такой буквой — правее, чем надо: часть слова печатается, а следующее за ним теряет начало. Пишите такое слово на отдельной строке простыми буквами.</translation>
    </message>
    <message>
        <source>a copy that doesn&apos;t say so</source>
        <translation>копия, на которой это не написано</translation>
    </message>
    <message>
        <source>a second &quot;&lt;SPECSYMBOLS=&quot; line</source>
        <translation>вторая строка &quot;&lt;SPECSYMBOLS=&quot;</translation>
    </message>
    <message>
        <source>One file of special symbols is loaded: that of the lowest line. The others are passed over.</source>
        <translation>Загружается один файл особых символов — тот, что назван ниже всех. Остальные пропускаются.</translation>
    </message>
    <message>
        <source>a file of special symbols that doesn&apos;t exist</source>
        <translation>файл особых символов, которого нет</translation>
    </message>
    <message>
        <source>The library passes over a missing file in silence, and the symbols print as blanks. The file is looked up in the folder of --symbols, or else in that of the template; &quot;.ssi&quot; is added to its name.</source>
        <translation>Библиотека молча пропускает отсутствующий файл, и символы печатаются пробелами. Файл ищется в папке --symbols, а без неё — в папке шаблона; к имени добавляется &quot;.ssi&quot;.</translation>
    </message>
    <message>
        <source>a file of special symbols that can&apos;t be read</source>
        <translation>файл особых символов, который нельзя прочесть</translation>
    </message>
    <message>
        <source>The library reads such a file up to its first mistake, and the symbols behind that print as blanks. &quot;receipt symbols FILE&quot; shows what is wrong in a file.</source>
        <translation>Библиотека читает такой файл до первой ошибки, и символы за ней печатаются пробелами. &quot;receipt symbols ФАЙЛ&quot; показывает, что в файле не так.</translation>
    </message>
    <message>
        <source>a fiscal marker in a template that isn&apos;t split</source>
        <translation>фискальная метка в шаблоне, который не режется</translation>
    </message>
    <message>
        <source>A client cuts the template at its fiscal markers before anything else. In a template that is printed as a whole they are attributes that no document has, and print nothing. With --fiscal the template is split, and each piece is checked by itself.</source>
        <translation>Программа первым делом режет шаблон по фискальным меткам. В шаблоне, который печатается целиком, они — атрибуты, которых нет ни в одном документе, и не печатают ничего. С --fiscal шаблон режется, и каждая часть проверяется сама по себе.</translation>
    </message>
    <message>
        <source>markup in the data of a QR code</source>
        <translation>разметка в данных QR-кода</translation>
    </message>
    <message>
        <source>What stands behind &quot;&lt;QR&gt;&quot; on the line is the code&apos;s data to the last character: tags of the markup and the brackets of a group are no markup there, and whoever scans the code gets them. The code is centred anyway, and a group around it begins in front of &quot;&lt;QR&gt;&quot; and can&apos;t end behind it.</source>
        <translation>Всё, что стоит за &quot;&lt;QR&gt;&quot; в строке, до последнего знака — данные кода: теги и скобки группы там не разметка, и их получит тот, кто считает код. Код и так стоит посередине, а группа вокруг начинается перед &quot;&lt;QR&gt;&quot; и не может закончиться за ним.</translation>
    </message>
    <message>
        <source>&quot;&lt;QR&gt;&quot; in a receipt that is rendered as text or HTML</source>
        <translation>&quot;&lt;QR&gt;&quot; в чеке, который выводится текстом или HTML</translation>
    </message>
    <message>
        <source>Only documents for printers have QR codes. In text and HTML the tag and its data print as they stand. Needs --as text or --as html.</source>
        <translation>QR-коды есть только в документах для принтера. В тексте и HTML тег и его данные печатаются как есть. Нужен --as text или --as html.</translation>
    </message>
    <message>
        <source>a special symbol without a drawing</source>
        <translation>особый символ без рисунка</translation>
    </message>
    <message>
        <source>The characters 1 to 7 are special symbols, drawn by the file that &quot;&lt;SPECSYMBOLS=&quot; names. Without a drawing a blank is printed; with --model also without one that fits the model&apos;s characters, and in a font that takes no drawings.</source>
        <translation>Знаки 1–7 — особые символы, их рисунки даёт файл, который называет &quot;&lt;SPECSYMBOLS=&quot;. Без рисунка печатается пробел; с --model — и без такого, который помещается в знак этой модели, и в шрифте, который не принимает рисунков.</translation>
    </message>
    <message>
        <source>a character that the printer doesn&apos;t have</source>
        <translation>знак, которого нет у принтера</translation>
    </message>
    <message>
        <source>a value whose tags never come to an end</source>
        <translation>значение, теги которого не кончаются</translation>
    </message>
    <message>
        <source>A value that holds a tag is filled in its turn. One that leads back to its own tag, or that doubles on and on, never ends, and the program that prints it hangs. The commands that fill templates refuse it. Such a template isn&apos;t checked any further with this document. Needs --data.</source>
        <translation>Значение, в котором есть тег, заполняется в свою очередь. Если оно ведёт обратно к своему тегу или всё время удваивается, конца ему нет, и печатающая программа зависает. Команды, которые заполняют шаблоны, от него отказываются. Дальше такой шаблон с этим документом не проверяется. Нужен --data.</translation>
    </message>
    <message>
        <source>a font that is switched on and never back</source>
        <translation>шрифт, который включён и не возвращён</translation>
    </message>
    <message>
        <source>A font holds over line ends until the next &quot;&lt;F1&gt;&quot; or its like; without one all the rest of the receipt is printed in it. Nothing is said of a font that stands in front of all text, or on the last line.</source>
        <translation>Шрифт действует и за концом строки, до следующего &quot;&lt;F1&gt;&quot; или ему подобного; без него весь остаток чека печатается этим шрифтом. О шрифте, который стоит перед всем текстом или в последней строке, ничего не говорится.</translation>
    </message>
    <message>
        <source>a font that is switched at the end of a line</source>
        <translation>шрифт, который переключают в конце строки</translation>
    </message>
    <message>
        <source>The next line begins in the font of this line&apos;s last character, and a font tag behind that character changes none. Put the tag in front of the next line, or a blank behind it.</source>
        <translation>Следующая строка начинается шрифтом последнего знака этой строки, и тег шрифта за этим знаком ничего не меняет. Поставьте тег перед следующей строкой или пробел за ним.</translation>
    </message>
    <message>
        <source>a font that doesn&apos;t exist</source>
        <translation>шрифт, которого нет</translation>
    </message>
    <message>
        <source>There are four fonts, from &quot;&lt;F1&gt;&quot; to &quot;&lt;F4&gt;&quot;; a greater number counts round them, so &quot;&lt;F5&gt;&quot; is font 2 and &quot;&lt;F8&gt;&quot; font 1.</source>
        <translation>Шрифтов четыре, от &quot;&lt;F1&gt;&quot; до &quot;&lt;F4&gt;&quot;; больший номер считается по кругу, так что &quot;&lt;F5&gt;&quot; — это шрифт 2, а &quot;&lt;F8&gt;&quot; — шрифт 1.</translation>
    </message>
    <message>
        <source>markup on a line without text</source>
        <translation>разметка в строке без текста</translation>
    </message>
    <message>
        <source>A line of nothing but tags isn&apos;t printed, and what its tags say of the line goes with it: the alignment, the line spacing, a font, a format of the whole line. Put them in front of the text that they are for. A tag with a colon, such as &quot;&lt;B:&gt;&quot;, counts on a line of its own.</source>
        <translation>Строка из одних тегов не печатается, и с ней пропадает то, что её теги говорят о строке: выравнивание, межстрочный интервал, шрифт, формат всей строки. Поставьте их перед текстом, к которому они относятся. Тег с двоеточием, такой как &quot;&lt;B:&gt;&quot;, действует и в отдельной строке.</translation>
    </message>
    <message>
        <source>A format is read by the kind of the value, and one that isn&apos;t for it prints another figure, or has no effect. A whole number has no decimals, and &quot;0.00&quot; means four digits there: hand amounts over as text, such as &quot;10.00&quot;, or calculate, as in &lt;PAID*1&gt;. In the format of a number only &quot;0&quot;, &quot;#&quot; and the point count, with nine decimals at most; a unit or a sign stands outside of the tag. A text has no format, also none that cuts it; a date is handed over as {&quot;datetime&quot;: &quot;2026-03-14T18:05:30&quot;}. Without --data only what is wrong for all values is reported, as a warning; so is a format without effect.</source>
        <translation>Формат читается по виду значения, и неподходящий печатает другое число или не действует. У целого числа нет знаков после запятой, и &quot;0.00&quot; означает там четыре цифры: передавайте суммы текстом, например &quot;10.00&quot;, или вычисляйте, как в &lt;PAID*1&gt;. В формате числа значат только &quot;0&quot;, &quot;#&quot; и точка, знаков после неё не больше девяти; единица или знак стоят вне тега. У текста формата нет, в том числе такого, который его обрезает; дата передаётся как {&quot;datetime&quot;: &quot;2026-03-14T18:05:30&quot;}. Без --data сообщается только о том, что неверно для любых значений, как предупреждение; так же и о формате, который не действует.</translation>
    </message>
    <message>
        <source>letters in the format of a date that mean something else</source>
        <translation>буквы в формате даты, которые значат другое</translation>
    </message>
    <message>
        <source>In the format of a date or time &quot;d&quot; is the day, &quot;m&quot; and &quot;M&quot; the month, &quot;y&quot; the year, &quot;h&quot; the hour, &quot;n&quot; the minute, &quot;s&quot; the second, &quot;ap&quot; is am or pm, and capitals but &quot;M&quot;, &quot;H&quot;, &quot;A&quot; and &quot;AP&quot; print as they stand. Behind the hours, too, &quot;m&quot; is the month. Letters of other words are read in the same way, so words stand outside of the tag. Without --data it is a warning, and only for a format that must be one of dates.</source>
        <translation>В формате даты или времени &quot;d&quot; — день, &quot;m&quot; и &quot;M&quot; — месяц, &quot;y&quot; — год, &quot;h&quot; — час, &quot;n&quot; — минута, &quot;s&quot; — секунда, &quot;ap&quot; — am или pm, а заглавные буквы, кроме &quot;M&quot;, &quot;H&quot;, &quot;A&quot; и &quot;AP&quot;, печатаются как есть. И за часами &quot;m&quot; — это месяц. Буквы других слов читаются так же, поэтому слова стоят вне тега. Без --data это предупреждение, и только для формата, который может быть лишь форматом даты.</translation>
    </message>
    <message>
        <source>a comma in the format of a date</source>
        <translation>запятая в формате даты</translation>
    </message>
    <message>
        <source>What stands behind the last comma of a tag is the format, and all in front of it the name, so a date whose format has a comma in it prints nothing. Write two tags with the comma between them.</source>
        <translation>То, что стоит за последней запятой тега, — формат, а всё перед ней — имя, поэтому дата с запятой в формате ничего не печатает. Напишите два тега с запятой между ними.</translation>
    </message>
    <message>
        <source>A division by zero prints as 0, such as &quot;0.00&quot;, as if that were the amount; so does what else has no finite value, such as ln(0). In a group it is fine, as the group goes. Without --data only a divisor that is written as 0 is found, and is a warning; with it what this document makes of the expression.</source>
        <translation>Деление на ноль печатает 0, например &quot;0.00&quot;, как будто это сумма; так же и всё прочее без конечного значения, например ln(0). В группе это допустимо: группа исчезает. Без --data находится только делитель, записанный как 0, и это предупреждение, с ним — и то, что выходит из выражения с этим документом.</translation>
    </message>
    <message>
        <source>a minus that isn&apos;t printed</source>
        <translation>минус, который не печатается</translation>
    </message>
    <message>
        <source>a text that is read as a number and prints otherwise</source>
        <translation>текст, который читается как число и печатается иначе</translation>
    </message>
    <message>
        <source>a number that prints as another one</source>
        <translation>число, которое печатается как другое</translation>
    </message>
    <message>
        <source>a tag or function that there isn&apos;t</source>
        <translation>тег или функция, которых нет</translation>
    </message>
    <message>
        <source>Other languages have tags such as &lt;BARCODE&gt;, &lt;CUT&gt; and &lt;HR&gt;, and functions such as round( and max(. Here such a tag is an attribute, which prints nothing unless the document has it, or prints as it stands; an expression with such a function prints nothing. The message says what there is instead. A tag without --data is a warning.</source>
        <translation>В других языках есть теги, такие как &lt;BARCODE&gt;, &lt;CUT&gt; и &lt;HR&gt;, и функции, такие как round( и max(. Здесь такой тег — атрибут, который ничего не печатает, если его нет в документе, или печатается как есть; выражение с такой функцией не печатает ничего. Сообщение говорит, что есть вместо них. Тег без --data — предупреждение.</translation>
    </message>
    <message>
        <source>several &lt;S&gt; on a line</source>
        <translation>несколько &lt;S&gt; в строке</translation>
    </message>
    <message>
        <source>What stands behind &lt;S&gt; goes to the right edge. With two of them each takes all the room that the text leaves, so that the line gets wider than the paper and wraps; in HTML what stands between them is lost. Write columns with blanks, or two lines.</source>
        <translation>То, что стоит за &lt;S&gt;, уходит к правому краю. Если их два, каждый занимает всё место, которое оставляет текст, строка становится шире бумаги и переносится, а в HTML пропадает то, что стоит между ними. Пишите столбцы пробелами или двумя строками.</translation>
    </message>
    <message>
        <source>a line that is wider than the paper</source>
        <translation>строка шире бумаги</translation>
    </message>
    <message>
        <source>a line that breaks inside a word or a number</source>
        <translation>строка, которая переносится посреди слова или числа</translation>
    </message>
    <message>
        <source>A printer wraps a line that is wider than the paper behind its last character that fits, and not at a word&apos;s end: &quot;1000 IU&quot; becomes &quot;100&quot; and &quot;0 IU&quot;. Shorten the text, write it on two lines, choose a smaller font, or hand a long name over in parts. A number that breaks with the values of --data is an error, all else a warning. Needs --width or --model; said in place of wide-line.</source>
        <translation>Принтер переносит строку, которая шире бумаги, за последним знаком, который ещё помещается, а не в конце слова: из &quot;1000 IU&quot; получается &quot;100&quot; и &quot;0 IU&quot;. Сократите текст, разбейте его на две строки, выберите шрифт поменьше или передавайте длинное название по частям. Число, которое разрывается со значениями из --data, — ошибка, всё остальное — предупреждение. Нужны --width или --model; сообщается вместо wide-line.</translation>
    </message>
    <message>
        <source>No line is cut: the printer wraps it, and columns fall apart. Double width counts twice. The widths are told in characters of the font in which the line begins. Needs --width or --model. Without --data the lines are measured as if all values were empty. The finding stands at the beginning of the template&apos;s line that the printed line comes from.</source>
        <translation>Ни одна строка не обрезается: принтер переносит её, и столбцы рассыпаются. Двойная ширина считается дважды. Ширина указана в знаках шрифта, которым начинается строка. Нужны --width или --model. Без --data строки измеряются так, будто все значения пусты. Замечание стоит в начале той строки шаблона, из которой получилась напечатанная строка.</translation>
    </message>
    <message>
        <source>a printed total that isn&apos;t the sum of what is printed</source>
        <translation>напечатанный итог, который не равен сумме напечатанного</translation>
    </message>
    <message>
        <source>a value or an entry that acts as markup</source>
        <translation>значение или запись, которые действуют как разметка</translation>
    </message>
    <message>
        <source>Values and entries are read for tags and groups once they are filled in: &quot;Cola [0.5 l]&quot; loses its brackets, &quot;Gift &lt;X&gt; card&quot; makes its line blank, &quot;Sale &lt;B&gt;!&quot; a line bold, a tab and each further &quot;=&quot; of an entry a column. In a text in BBCode &quot;[b]&quot; is a tag, too. Nothing is said of markup that a program writes on purpose: tags in front of a text, formats such as &quot;&lt;B:&gt;&quot; and &quot;[b]x[/b]&quot;, symbols such as &quot;&lt;#1&gt;&quot;, and tags of values that there are. What others write is cleaned by the program, or with --clean where &quot;receipt&quot; prints. Needs --data.</source>
        <translation>Подставленные значения и записи просматриваются на теги и группы: &quot;Cola [0.5 l]&quot; теряет скобки, &quot;Gift &lt;X&gt; card&quot; делает свою строку пустой, &quot;Sale &lt;B&gt;!&quot; — жирной, а табуляция и каждый следующий &quot;=&quot; записи становятся столбцом. В тексте BBCode тег — и &quot;[b]&quot;. Ничего не говорится о разметке, которую программа пишет намеренно: теги перед текстом, форматы вроде &quot;&lt;B:&gt;&quot; и &quot;[b]x[/b]&quot;, символы вроде &quot;&lt;#1&gt;&quot; и теги значений, которые есть. Написанное другими чистит программа или, где печатает &quot;receipt&quot;, ключ --clean. Нужен --data.</translation>
    </message>
    <message>
        <source>Each printed amount is rounded by itself, and a total of an expression once, at its end: 83.65 and -0.96 can have a total of 82.70. Round the parts inside of the sum as they are printed, as in floor(A*100+0.500001)/100. Amounts are those with two or three decimals at the ends of lines; a total is called one, or adds up others. Only what is nearly the sum is told, or, as a warning, a total behind entries alone that isn&apos;t theirs. What may have been rounded to coins is a warning or nothing, and next to a figure that can&apos;t be read nothing is told. Needs --data.</source>
        <translation>Каждая напечатанная сумма округляется сама по себе, а итог выражения — один раз, в конце: у 83.65 и -0.96 может получиться итог 82.70. Части суммы внутри неё округляйте так же, как они напечатаны, например floor(A*100+0.500001)/100. Суммами считаются числа с двумя или тремя знаками после точки в конце строк; итог так назван или складывает другие. Сообщается только о том, что почти равно сумме, или, как предупреждение, об итоге за одними записями, который не их сумма. О том, что могло быть округлено до монет, предупреждается или не сообщается, а рядом с числом, которое нельзя прочесть, не сообщается ничего. Нужен --data.</translation>
    </message>
    <message>
        <source>a code whose data can&apos;t be encoded</source>
        <translation>код, данные которого нельзя закодировать</translation>
    </message>
    <message>
        <source>A code without data isn&apos;t printed, nor is one whose data its kind can&apos;t hold: the barcode of BBCode, a Code 128, takes ASCII characters, and a QR code up to 2953 bytes, less on a narrow paper. With --model also what doesn&apos;t fit the model&apos;s paper, or what it can&apos;t print. A code whose data values make needs --data.</source>
        <translation>Код без данных не печатается, как и код, вид которого не вмещает данные: штрихкод BBCode, Code 128, принимает знаки ASCII, а QR-код — до 2953 байт, на узкой бумаге меньше. С --model также то, что не помещается на бумаге модели или чего она не печатает. Для кода, данные которого составляют значения, нужен --data.</translation>
    </message>
    <message>
        <source>a tag of BBCode in a template</source>
        <translation>тег BBCode в шаблоне</translation>
    </message>
    <message>
        <source>In a template square brackets are those of groups: &quot;[/b]&quot; prints &quot;/b&quot;. A text is taken for BBCode if it has tags of BBCode and none of the markup of templates, such as &quot;&lt;C&gt;&quot;; values are no markup.</source>
        <translation>В шаблоне квадратные скобки — это скобки групп: &quot;[/b]&quot; печатает &quot;/b&quot;. Текст считается BBCode, если в нём есть теги BBCode и нет разметки шаблонов, такой как &quot;&lt;C&gt;&quot;; значения разметкой не являются.</translation>
    </message>
    <message>
        <source>BBCode: a tag, key or value that there isn&apos;t</source>
        <translation>BBCode: тег, ключ или значение, которых нет</translation>
    </message>
    <message>
        <source>The tags are b, i, u, size, left, center, right, hr, img, field, column, barcode and qrcode, in small letters or capitals; the keys are size, hr, width, align, zerofill and name. All others are passed over, and a value that there isn&apos;t counts as another one. A key is of no use outside of the tag that it belongs to.</source>
        <translation>Теги — b, i, u, size, left, center, right, hr, img, field, column, barcode и qrcode, строчными или заглавными; ключи — size, hr, width, align, zerofill и name. Все остальные пропускаются, а значение, которого нет, считается другим. Вне тега, к которому ключ относится, от него нет пользы.</translation>
    </message>
    <message>
        <source>BBCode: a tag that prints as it stands</source>
        <translation>BBCode: тег, который печатается как есть</translation>
    </message>
    <message>
        <source>What can&apos;t be read as a tag is text. A tag is &quot;[name]&quot;, &quot;[name=value]&quot; or &quot;[name key=value]&quot;, with one blank or two between its parts and none in front of the name. Values are letters, digits and a few signs, without quotation marks.</source>
        <translation>То, что не читается как тег, — это текст. Тег — это &quot;[name]&quot;, &quot;[name=value]&quot; или &quot;[name key=value]&quot;, с одним или двумя пробелами между частями и без пробела перед именем. Значения — это буквы, цифры и некоторые знаки, без кавычек.</translation>
    </message>
    <message>
        <source>BBCode: a tag that is never closed, or never opened</source>
        <translation>BBCode: тег, который не закрыт или не открыт</translation>
    </message>
    <message>
        <source>A line, a picture and a code are printed when their tag is closed, and else not at all. A format or font that stays open goes on to the text&apos;s end, and into the next text of the same reader. Of tags in one another each closes the nearest of its name.</source>
        <translation>Линия, картинка и код печатаются, когда их тег закрывается, а иначе не печатаются вовсе. Формат или шрифт, который остался открытым, действует до конца текста и дальше, в следующем тексте того же читателя. Из вложенных тегов каждый закрывает ближайший тег со своим именем.</translation>
    </message>
    <message>
        <source>BBCode: tags that cross</source>
        <translation>BBCode: теги, которые пересекаются</translation>
    </message>
    <message>
        <source>Tags are switches, and nesting isn&apos;t checked: formats that cross print as they are meant, but other readers of BBCode have it otherwise, so it is a note. What is aligned, padded or drawn ends where its tag closes: there it is a warning.</source>
        <translation>Теги — это переключатели, и вложенность не проверяется: пересекающиеся форматы печатаются как задумано, но другие читатели BBCode понимают их иначе, поэтому это примечание. То, что выравнивается, дополняется или рисуется, кончается там, где закрывается его тег: там это предупреждение.</translation>
    </message>
    <message>
        <source>BBCode: a picture that doesn&apos;t exist or can&apos;t be read</source>
        <translation>BBCode: картинка, которой нет или которую нельзя прочитать</translation>
    </message>
    <message>
        <source>A picture that is missing leaves an empty line. It is looked up in the folder of --images, or else in that of the text; its name may be the beginning of the file&apos;s, and letters count in small.</source>
        <translation>Вместо отсутствующей картинки остаётся пустая строка. Она ищется в папке --images, а без неё — в папке текста; её имя может быть началом имени файла, а буквы считаются строчными.</translation>
    </message>
    <message>
        <source>BBCode: a name that fits several pictures</source>
        <translation>BBCode: имя, которое подходит нескольким картинкам</translation>
    </message>
    <message>
        <source>Of all files whose names begin so the first in the alphabet is taken: for &quot;logo&quot; that is &quot;logo-old.png&quot;, also if there is &quot;logo.png&quot;. Write the name with its ending.</source>
        <translation>Из всех файлов, имена которых так начинаются, берётся первый по алфавиту: для &quot;logo&quot; это &quot;logo-old.png&quot;, даже если есть &quot;logo.png&quot;. Пишите имя с расширением.</translation>
    </message>
    <message>
        <source>BBCode: large text that isn&apos;t larger on this model</source>
        <translation>BBCode: крупный текст, который на этой модели не крупнее</translation>
    </message>
    <message>
        <source>The sizes small, normal, middle and large are the four fonts of a model, and many have fewer: &quot;receipt models ID&quot; shows their characters. BBCode has no double height; a template has it, as &quot;&lt;H2&gt;&quot; and &quot;&lt;W2&gt;&quot;. Needs --model.</source>
        <translation>Размеры small, normal, middle и large — это четыре шрифта модели, и у многих их меньше: &quot;receipt models ID&quot; показывает их знаки. В BBCode нет двойной высоты; в шаблоне она есть: &quot;&lt;H2&gt;&quot; и &quot;&lt;W2&gt;&quot;. Нужен --model.</translation>
    </message>
    <message>
        <source>A text that reads as a number is printed as one: &quot;007&quot; loses its zeros, &quot;+49&quot; its sign, &quot;12,50&quot; its comma, &quot;1e5&quot; and &quot;12E4&quot; become long numbers, and &quot;Nan&quot; and &quot;inf&quot;, a name or not, print 0.00 and take their group along. Zeros in front are brought back by a format with as many zeros, a comma is meant where there is a format. For all else the program makes it a text that isn&apos;t a number: &quot;12E4&lt;:&gt;&quot; prints 12E4, as the tag prints nothing. Without --data only a name that ends like one of a code, such as AUTH, INN or CARD_CODE, is told with a format that takes zeros off, as a warning.</source>
        <translation>Текст, который читается как число, так и печатается: &quot;007&quot; теряет нули, &quot;+49&quot; — знак, &quot;12,50&quot; — запятую, &quot;1e5&quot; и &quot;12E4&quot; становятся длинными числами, а &quot;Nan&quot; и &quot;inf&quot;, имя это или нет, печатают 0.00 и уносят с собой группу. Нули впереди возвращает формат с таким же числом нулей, а запятая задумана там, где есть формат. В остальном программа делает из него текст, который не число: &quot;12E4&lt;:&gt;&quot; печатает 12E4, потому что тег не печатает ничего. Без --data сообщается только об имени с таким окончанием, как у кодов, например AUTH, INN или CARD_CODE, при формате, который убирает нули, и это предупреждение.</translation>
    </message>
    <message>
        <source>figures and sums aren&apos;t checked without data: --data DATA.json</source>
        <translation>без данных числа и суммы не проверяются: --data ДАННЫЕ.json</translation>
    </message>
    <message>
        <source>An attribute that the document lacks prints nothing and takes the group around it along; in an expression it makes the whole expression print nothing, or the value of a shorter name is put in for a part of it. Names are case-sensitive. In a group it may well be missing with some sales, and is told as a note; &quot;&lt;ENTRIES&gt;&quot; without entries is a warning. Needs --data; the document should have every attribute that a sale can have.</source>
        <translation>Атрибут, которого нет в документе, ничего не печатает и уносит с собой группу вокруг; в выражении из-за него ничего не печатает всё выражение, или вместо части имени подставляется значение более короткого. Заглавные и строчные буквы различаются. В группе его при некоторых продажах может и не быть, и это только примечание; &quot;&lt;ENTRIES&gt;&quot; без записей — предупреждение. Нужен --data; в документе должны быть все атрибуты, какие бывают в продаже.</translation>
    </message>
    <message>
        <source>In a format with decimals, and without a format, a number between -1 and 0 loses its sign: a shortage of 0.05 prints as a surplus. The format &quot;0.E&quot; keeps it; it prints up to six digits, and no zeros at the end, so 5.00 is 5. For an amount A there is [&lt;X:&gt;&lt;abs(A)-A&gt;&lt;:X&gt;-]&lt;:&gt;&lt;:&gt;&lt;abs(A),0.00&gt;, with a minus that stands in a group. Needs --data.</source>
        <translation>В формате с дробной частью и без формата число между -1 и 0 теряет знак: недостача 0.05 печатается как излишек. Формат &quot;0.E&quot; его сохраняет; он печатает до шести цифр и без нулей в конце, так что 5.00 — это 5. Для суммы A есть [&lt;X:&gt;&lt;abs(A)-A&gt;&lt;:X&gt;-]&lt;:&gt;&lt;:&gt;&lt;abs(A),0.00&gt;, где минус стоит в группе. Нужен --data.</translation>
    </message>
    <message>
        <source>a sign in front of a value with a sign</source>
        <translation>знак перед значением со знаком</translation>
    </message>
    <message>
        <source>A minus or plus that the template prints in front of a value belongs to values without a sign. One that is less than zero brings its own, and &quot;--1.50&quot; is printed. abs() takes it away; where it may be either, no sign stands in front of the tag. Needs --data.</source>
        <translation>Минус или плюс, который шаблон печатает перед значением, — для значений без знака. Значение меньше нуля приносит свой знак, и печатается &quot;--1.50&quot;. abs() его убирает; где бывает и то и другое, перед тегом знака нет. Нужен --data.</translation>
    </message>
    <message>
        <source>Without a format a number with decimals prints two of them: a litre at 1.749 is 1.75. In a format with decimals, and without a format, the part in front of the point has 32 bits, and is 0 from 2147483648 on; a format without decimals has 64. &quot;0.E&quot; gives six digits, and larger numbers an exponent. In BBCode a field with zerofill takes whole numbers alone, and prints zeros for all else. Needs --data, but not for that.</source>
        <translation>Без формата у дробного числа печатаются два знака после точки: литр по 1.749 становится 1.75. В формате с дробной частью и без формата у части перед точкой 32 бита, и с 2147483648 она равна 0; у формата без дробной части 64. &quot;0.E&quot; даёт шесть цифр, а большим числам — показатель степени. В BBCode поле с zerofill принимает только целые числа, а для всего прочего печатает нули. Нужен --data, но не для этого.</translation>
    </message>
    <message>
        <source>A tag with fewer than four characters between its brackets is never filled and prints as it stands. A longer name helps, a format, or blanks in an expression. It is an error if --data has the value, else a warning.</source>
        <translation>Тег, в скобках которого меньше четырёх знаков, никогда не заполняется и печатается как есть. Поможет более длинное имя, формат или пробелы в выражении. Если значение есть в --data, это ошибка, иначе предупреждение.</translation>
    </message>
    <message>
        <source>The line that marks a copy goes behind the first line with &quot;&lt;DOCNO&gt;&quot;, in capitals or not; a tag with a format doesn&apos;t count. Without it a copy looks like the original. A number with a format has the mark if &quot;&lt;X:&gt;&lt;DOCNO&gt;&lt;:X&gt;&quot; stands beside it, which prints nothing. A template without the number is told with --data only, of a document that is a copy; so is BBCode, which has no mark: there a value has to say it.</source>
        <translation>Строка, которая помечает копию, идёт за первой строкой с &quot;&lt;DOCNO&gt;&quot;, заглавными или нет; тег с форматом не считается. Без неё копия выглядит как оригинал. У номера с форматом пометка есть, если рядом стоит &quot;&lt;X:&gt;&lt;DOCNO&gt;&lt;:X&gt;&quot;, который ничего не печатает. О шаблоне без номера сообщается только с --data, если документ — копия; так же и о BBCode, где пометки нет: там о копии должно говорить значение.</translation>
    </message>
    <message>
        <source>A printer has the characters of one code page. &quot;receipt print&quot; draws all others, as &quot;receipt preview&quot; shows; other drivers print something else for them. Needs --model or --code-page. The catalogue names no code pages: cp866 is taken unless --code-page says otherwise. What stands in a value is reported where its tag stands.</source>
        <translation>У принтера есть знаки одной кодовой страницы. Все другие &quot;receipt print&quot; рисует, как показывает &quot;receipt preview&quot;; другие драйверы печатают вместо них что-то иное. Нужен --model или --code-page. В каталоге кодовых страниц нет: берётся cp866, если --code-page не говорит иначе. О том, что стоит в значении, сообщается на месте его тега.</translation>
    </message>
    <message>
        <source>BBCode: a field that is too narrow for its text</source>
        <translation>BBCode: поле, слишком узкое для своего текста</translation>
    </message>
    <message>
        <source>A field is padded to its width, and no text is cut: a longer one moves what stands behind it on the line, and the columns fall apart. Give the field the width of the longest text, or have the program shorten it.</source>
        <translation>Поле дополняется до своей ширины, а текст не обрезается: более длинный сдвигает то, что стоит за ним в строке, и столбцы разъезжаются. Дайте полю ширину самого длинного текста, или пусть программа его сократит.</translation>
    </message>
</context>
</TS>
