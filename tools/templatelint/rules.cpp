#include <QCoreApplication>
#include <algorithm>

#include "checks.h"
#include "templatelint.h"

namespace templatelint {

namespace {

constexpr char noDocument[] = "";
constexpr char noArguments[] = "";

// A rule costs a row here, its check in checks.h, and rows in the tests.
constexpr Rule table[] = {
    {"unknown-attribute", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "an attribute that the document lacks"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "An attribute that the document lacks prints nothing and takes the group around it along; "
         "in an expression it makes the whole expression print nothing, or the value of a shorter "
         "name is put in for a part of it. Names are case-sensitive. In a group it may well be "
         "missing with some sales, and is told as a note; \"<ENTRIES>\" without entries is a "
         "warning. Needs --data; the document should have every attribute that a sale can have."),
     "<C><SHPO>", "<C><SHOP>", R"({"attributes": {"SHOP": "Harbour Kiosk"}})", noArguments,
     checkUnknownAttributes, nullptr, true},
    {"bad-expression", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "an expression that can't be evaluated"),
     QT_TRANSLATE_NOOP("LintRule",
                       "An expression with a mistake prints nothing. The column is the place where "
                       "its reading stopped. Without --data only mistakes are reported that no "
                       "value can mend. An empty value in a group is none: the group goes."),
     "Total<S><QTY*(PRICE+TAX,0.00>", "Total<S><QTY*(PRICE+TAX),0.00>",
     R"({"attributes": {"QTY": 2, "PRICE": 1.85, "TAX": 0.15}})", noArguments, checkExpressions,
     nullptr, true},
    {"cut-expression", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "an expression that its own last comma cuts"),
     QT_TRANSLATE_NOOP("LintRule",
                       "What stands behind the last comma of a tag is the format, also if that "
                       "comma belongs to a function or was meant as a decimal comma. An expression "
                       "with a comma needs a format behind it, and a decimal point is a point."),
     "Ways to choose: <ncr(5,2)>", "Ways to choose: <ncr(5,2),0>", noDocument, noArguments,
     checkCutExpressions, nullptr, true},
    {"division-by-zero", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "an expression that divides by zero"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "A division by zero prints as 0, such as \"0.00\", as if that were the amount; so does "
         "what else has no finite value, such as ln(0). In a group it is fine, as the group goes. "
         "Without --data only a divisor that is written as 0 is found, and is a warning; with it "
         "what this document makes of the expression."),
     "Each <SUM1/COUNT,0.00>", "[Each <SUM1/COUNT,0.00>]",
     R"({"attributes": {"SUM1": "5.00", "COUNT": 0}})", noArguments, checkDivisions, nullptr, true},
    {"lost-sign", Severity::Error, QT_TRANSLATE_NOOP("LintRule", "a minus that isn't printed"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "In a format with decimals, and without a format, a number between -1 and 0 loses its "
         "sign: a shortage of 0.05 prints as a surplus. The format \"0.E\" keeps it; it prints up "
         "to six digits, and no zeros at the end, so 5.00 is 5. For an amount A there is "
         "[<X:><abs(A)-A><:X>-]<:><:><abs(A),0.00>, with a minus that stands in a group. Needs "
         "--data."),
     "Difference<S><COUNTED-EXPECTED>", "Difference<S><COUNTED-EXPECTED,0.E>",
     R"({"attributes": {"COUNTED": "885.40", "EXPECTED": "885.45"}})", noArguments, checkLostSigns,
     nullptr, true},
    {"double-sign", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "a sign in front of a value with a sign"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "A minus or plus that the template prints in front of a value belongs to values without a "
         "sign. One that is less than zero brings its own, and \"--1.50\" is printed. abs() takes "
         "it away; where it may be either, no sign stands in front of the tag. Needs --data."),
     "Discount<S>-<DISCOUNT,0.00>", "Discount<S>-<abs(DISCOUNT),0.00>",
     R"({"attributes": {"DISCOUNT": "-1.50"}})", noArguments, checkDoubleSigns, checkBbDoubleSigns},
    {"text-as-number", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "a text that is read as a number and prints otherwise"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "A text that reads as a number is printed as one: \"007\" loses its zeros, \"+49\" its "
         "sign, \"12,50\" its comma, \"1e5\" and \"12E4\" become long numbers, and \"Nan\" and "
         "\"inf\", a name or not, print 0.00 and take their group along. Zeros in front are "
         "brought back by a format with as many zeros, a comma is meant where there is a format. "
         "For all else the program makes it a text that isn't a number: \"12E4<:>\" prints 12E4, "
         "as the tag prints nothing. Without --data only a name that ends like one of a code, "
         "such as AUTH, INN or CARD_CODE, is told with a format that takes zeros off, as a "
         "warning."),
     "Authorisation <AUTH>", "Authorisation <AUTH,000000>", R"({"attributes": {"AUTH": "007723"}})",
     noArguments, checkTextsAsNumbers, nullptr, true},
    {"changed-figure", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "a number that prints as another one"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "Without a format a number with decimals prints two of them: a litre at 1.749 is 1.75. In "
         "a format with decimals, and without a format, the part in front of the point has 32 "
         "bits, and is 0 from 2147483648 on; a format without decimals has 64. \"0.E\" gives six "
         "digits, and larger numbers an exponent. In BBCode a field with zerofill takes whole "
         "numbers alone, and prints zeros for all else. Needs --data, but not for that."),
     "Super 95<S><PRICE>", "Super 95<S><PRICE,0.000>", R"({"attributes": {"PRICE": "1.749"}})",
     noArguments, checkChangedFigures, checkBbNumbers, true},
    {"wrong-sum", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "a printed total that isn't the sum of what is printed"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "Each printed amount is rounded by itself, and a total of an expression once, at its end: "
         "83.65 and -0.96 can have a total of 82.70. Round the parts inside of the sum as they are "
         "printed, as in floor(A*100+0.500001)/100. Amounts are those with two or three decimals "
         "at "
         "the ends of lines; a total is called one, or adds up others. Only what is nearly the sum "
         "is told, or, as a warning, a total behind entries alone that isn't theirs. What may have "
         "been rounded to coins is a warning or nothing, and next to a figure that can't be read "
         "nothing is told. Needs --data."),
     "Fuel<S><LITRES*PRICE>\nDiscount<S>-<LITRES*OFF>\nTotal<S><LITRES*PRICE-LITRES*OFF>",
     "Fuel<S><LITRES*PRICE>\nDiscount<S>-<LITRES*OFF>\nTotal<S><floor(LITRES*PRICE*100+0.500001)/"
     "100-floor(LITRES*OFF*100+0.500001)/100>",
     R"({"attributes": {"LITRES": "47.83", "PRICE": "1.749", "OFF": "0.02"}})", noArguments,
     checkSums},
    {"markup-in-value", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "a value or an entry that acts as markup"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "Values and entries are read for tags and groups once they are filled in: \"Cola [0.5 "
         "l]\" loses its brackets, \"Gift <X> card\" makes its line blank, \"Sale <B>!\" a line "
         "bold, a tab and each further \"=\" of an entry a column. In a text in BBCode \"[b]\" is "
         "a "
         "tag, too. Nothing is said of markup that a program writes on purpose: tags in front of a "
         "text, formats such as \"<B:>\" and \"[b]x[/b]\", symbols such as \"<#1>\", and tags of "
         "values that there are. What others write is cleaned by the program, or with --clean "
         "where "
         "\"receipt\" prints. Needs --data."),
     "Order <DISH>", "Order <DRINK>",
     R"({"attributes": {"DISH": "Soup [hot]", "DRINK": "Tea, hot"}})", noArguments,
     checkMarkupInValues, checkBbMarkupInValues},
    {"value-format", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "a format that isn't for its kind of value"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "A format is read by the kind of the value, and one that isn't for it prints another "
         "figure, or has no effect. A whole number has no decimals, and \"0.00\" means four digits "
         "there: hand amounts over as text, such as \"10.00\", or calculate, as in <PAID*1>. In "
         "the format of a number only \"0\", \"#\" and the point count, with nine decimals at "
         "most; a unit or a sign stands outside of the tag. A text has no format, also none that "
         "cuts it; a date is handed over as {\"datetime\": \"2026-03-14T18:05:30\"}. Without "
         "--data only what is wrong for all values is reported, as a warning; so is a format "
         "without effect."),
     "Paid <PAID,0.00>", "Paid <PAID*1,0.00>", R"({"attributes": {"PAID": 10}})", noArguments,
     checkValueFormats, nullptr, true},
    {"date-letters", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "letters in the format of a date that mean something else"),
     QT_TRANSLATE_NOOP("LintRule",
                       "In the format of a date or time \"d\" is the day, \"m\" and \"M\" the "
                       "month, \"y\" the year, \"h\" the hour, \"n\" the minute, \"s\" the second, "
                       "\"ap\" is am or pm, and capitals but \"M\", \"H\", \"A\" and \"AP\" print "
                       "as they stand. Behind the hours, too, \"m\" is the month. Letters of other "
                       "words are read in the same way, so words stand outside of the tag. Without "
                       "--data it is a warning, and only for a format that must be one of dates."),
     "<SALE_DT,DD.MM.YYYY>", "<SALE_DT,dd.mm.yyyy>",
     R"({"attributes": {"SALE_DT": {"datetime": "2026-05-09T14:30:00"}}})", noArguments,
     checkDateLetters, nullptr, true},
    {"comma-in-format", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "a comma in the format of a date"),
     QT_TRANSLATE_NOOP("LintRule",
                       "What stands behind the last comma of a tag is the format, and all in front "
                       "of it the name, so a date whose format has a comma in it prints nothing. "
                       "Write two tags with the comma between them."),
     "<SALE_DT,dd.mm.yyyy, hh:nn>", "<SALE_DT,dd.mm.yyyy>, <SALE_DT,hh:nn>", noDocument,
     noArguments, checkCommasInFormats, nullptr, true},
    {"guessed-name", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "a tag or function that there isn't"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "Other languages have tags such as <BARCODE>, <CUT> and <HR>, and functions such as "
         "round( and max(. Here such a tag is an attribute, which prints nothing unless the "
         "document has it, or prints as it stands; an expression with such a function prints "
         "nothing. The message says what there is instead. A tag without --data is a warning."),
     "<round(QTY*PRICE),0.00>", "<floor(QTY*PRICE+0.500001),0.00>", noDocument, noArguments,
     checkGuessedNames, nullptr, true},
    {"short-tag", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "a tag too short to be an attribute"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "A tag with fewer than four characters between its brackets is never filled and prints as "
         "it stands. A longer name helps, a format, or blanks in an expression. It is an error if "
         "--data has the value, else a warning."),
     "Card <PAN>", "Card <PAN,>", R"({"attributes": {"PAN": "**** 0471"}})", noArguments,
     checkShortTags, nullptr, true},
    {"markup-spelling", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "misspelt or wrongly-cased markup"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "Tags are written in capitals and without blanks. What isn't spelt exactly so prints as "
         "it stands, or, from four characters on, counts as an attribute and prints nothing."),
     "<b>Total", "<B>Total", noDocument, noArguments, checkMarkupSpelling},
    {"unterminated-tag", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "a \"<\" without its \">\""),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "Without a \">\" behind it on the line, a tag prints as it stands. If another tag "
         "follows, both are read as one, which prints nothing or as it stands. A \"<\" in front of "
         "a blank is taken for text, as long as no tag follows."),
     "Total<S><SUM", "Total<S><TOTAL>", noDocument, noArguments, checkUnterminatedTags},
    {"unmatched-bracket", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "a bracket without its partner on the line"),
     QT_TRANSLATE_NOOP("LintRule",
                       "A group lies between \"[\" and \"]\" on one line. A bracket without its "
                       "partner, one that stands inside a tag and a pair the wrong way round make "
                       "no group: the text stays when the value is empty, and the brackets are not "
                       "printed. Write <#91> and <93> to print brackets."),
     "[Discount <DISCOUNT>", "[Discount <DISCOUNT>]", noDocument, noArguments, checkBrackets},
    {"hidden-tag", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "a tag that isn't filled when the group in front of it goes"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "When an empty or zero value removes its group, the search for tags goes on as many "
         "characters behind the group as stood between its \"[\" and the value. A tag that begins "
         "there is passed over and prints as it stands. Begin the group with the value, put text "
         "between the two, or put the tag on another line."),
     "[Discount <DISCOUNT>]<TOTAL>", "[Discount <DISCOUNT>]\nTotal <TOTAL>", noDocument,
     noArguments, checkHiddenTags},
    {"align-with-tab", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "<C> or <R> on a line with <S>"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "A line has one alignment, and <S> wins: <C> and <R> on such a line print as they stand."),
     "<C>Total<S><TOTAL>", "Total<S><TOTAL>", noDocument, noArguments, checkAlignmentWithTab},
    {"repeated-tab", Severity::Warning, QT_TRANSLATE_NOOP("LintRule", "several <S> on a line"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "What stands behind <S> goes to the right edge. With two of them each takes all the room "
         "that the text leaves, so that the line gets wider than the paper and wraps; in HTML what "
         "stands between them is lost. Write columns with blanks, or two lines."),
     "Cash<S>112<S><PAID>", "Cash 112<S><PAID>", noDocument, noArguments, checkRepeatedTabs},
    {"second-alignment", Severity::Warning, QT_TRANSLATE_NOOP("LintRule", "<R> on a line with <C>"),
     QT_TRANSLATE_NOOP(
         "LintRule", "A line has one alignment, and <C> wins over <R>, which prints as it stands."),
     "<C><R>Thank you!", "<C>Thank you!", noDocument, noArguments, checkSecondAlignment},
    {"repeated-line-spacing", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "a second line spacing on a line"),
     QT_TRANSLATE_NOOP("LintRule",
                       "A line has one spacing: the smallest number on it, from <LS0> to <LS7>. "
                       "Tags with other numbers print as they stand."),
     "<LS2>Total<LS5>", "<LS2>Total", noDocument, noArguments, checkLineSpacing},
    {"open-format", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "a format that is switched on and never off"),
     QT_TRANSLATE_NOOP("LintRule",
                       "\"<B:>\" and its like hold over line ends until their closing tag; without "
                       "one all the rest of the receipt is printed so. Only a whole-line tag of "
                       "the same kind ends it as well."),
     "<B:>Total <TOTAL>", "<B:>Total<:B> <TOTAL>", noDocument, noArguments, checkOpenFormats},
    {"open-font", Severity::Note,
     QT_TRANSLATE_NOOP("LintRule", "a font that is switched on and never back"),
     QT_TRANSLATE_NOOP("LintRule",
                       "A font holds over line ends until the next \"<F1>\" or its like; without "
                       "one all the rest of the receipt is printed in it. Nothing is said of a "
                       "font that stands in front of all text, or on the last line."),
     "Total <TOTAL>\n<F2>Keep this receipt\nThank you!",
     "Total <TOTAL>\n<F2>Keep this receipt\n<F1>Thank you!", noDocument, noArguments,
     checkOpenFonts},
    {"lost-font-switch", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "a font that is switched at the end of a line"),
     QT_TRANSLATE_NOOP("LintRule",
                       "The next line begins in the font of this line's last character, and a font "
                       "tag behind that character changes none. Put the tag in front of the next "
                       "line, or a blank behind it."),
     "<F4>Total <TOTAL><F1>\nThank you!", "<F4>Total <TOTAL>\n<F1>Thank you!", noDocument,
     noArguments, checkLostFontSwitches},
    {"unknown-font", Severity::Warning, QT_TRANSLATE_NOOP("LintRule", "a font that doesn't exist"),
     QT_TRANSLATE_NOOP("LintRule",
                       "There are four fonts, from \"<F1>\" to \"<F4>\"; a greater number counts "
                       "round them, so \"<F5>\" is font 2 and \"<F8>\" font 1."),
     "<F5>Thank you!", "<F2>Thank you!", noDocument, noArguments, checkUnknownFonts},
    {"lost-markup", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "markup on a line without text"),
     QT_TRANSLATE_NOOP("LintRule",
                       "A line of nothing but tags isn't printed, and what its tags say of the "
                       "line goes with it: the alignment, the line spacing, a font, a format of "
                       "the whole line. Put them in front of the text that they are for. A tag "
                       "with a colon, such as \"<B:>\", counts on a line of its own."),
     "<LS3>\nTotal <TOTAL>", "<LS3>Total <TOTAL>", noDocument, noArguments, checkLostMarkup},
    {"tag-behind-pair", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "a format tag directly behind one of its own pair"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "After an opening or closing tag the place right behind it isn't looked at again for a "
         "tag of the same pair: it prints as it stands, and so do later ones of its kind until one "
         "of the pair counts again. Only a closing tag right behind its opening tag counts. "
         "Whole-line tags open in front of the line and close behind it."),
     "<B:>bold<:B><B:>and more<:B>", "<B:>bold and more<:B>", noDocument, noArguments,
     checkTagsBehindTheirPair},
    {"open-removal", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "\"<X:>\" without \"<:X>\", or the other way round"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "What stands between \"<X:>\" and the next \"<:X>\" is removed. If one of the two is "
         "missing, nothing is removed, and the tag prints as it stands. The tags don't nest."),
     "<X:>for tests only", "<X:>for tests only<:X>", noDocument, noArguments, checkRemovals},
    {"entries-in-text", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "\"<ENTRIES>\" inside other text"),
     QT_TRANSLATE_NOOP("LintRule",
                       "The entries become lines of their own: what stands in front of "
                       "\"<ENTRIES>\" goes to the first of them only, what stands behind it to the "
                       "last only, and a group around it falls apart."),
     "<B>Paid: <ENTRIES>", "<B>Paid:\n<ENTRIES>", noDocument, noArguments, checkEntries},
    {"shifted-cut", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "a line that is cut beside \"<ENTRIES>\" or a fiscal marker"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "These keywords are looked for in the upper-cased line, where a letter can become two or "
         "three: a sharp s is \"SS\" there, a ligature its letters. The line itself is cut at the "
         "place that was found, so behind such a letter it is cut too far to the right: a part of "
         "the keyword prints, and what follows it loses its beginning. Put the keyword on a line "
         "of its own, in plain letters."),
     "<ﬁscal_body>Thank you!", "<fiscal_body>Thank you!", noDocument, "--fiscal", checkShiftedCuts},
    {"no-copy-mark", Severity::Warning, QT_TRANSLATE_NOOP("LintRule", "a copy that doesn't say so"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "The line that marks a copy goes behind the first line with \"<DOCNO>\", in capitals or "
         "not; a tag with a format doesn't count. Without it a copy looks like the original. A "
         "number with a format has the mark if \"<X:><DOCNO><:X>\" stands beside it, which prints "
         "nothing. A template without the number is told with --data only, of a document that is a "
         "copy; so is BBCode, which has no mark: there a value has to say it."),
     "Receipt <DOCNO,000000>", "Receipt <DOCNO,000000><X:><DOCNO><:X>", noDocument, noArguments,
     checkCopyMark, checkBbCopyMark},
    {"repeated-symbol-file", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "a second \"<SPECSYMBOLS=\" line"),
     QT_TRANSLATE_NOOP("LintRule",
                       "One file of special symbols is loaded: that of the lowest line. The others "
                       "are passed over."),
     "<SPECSYMBOLS=shop>\n<SPECSYMBOLS=shop>\nTotal", "<SPECSYMBOLS=shop>\nTotal", noDocument,
     noArguments, checkRepeatedSymbolFiles},
    {"missing-symbol-file", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "a file of special symbols that doesn't exist"),
     QT_TRANSLATE_NOOP("LintRule",
                       "The library passes over a missing file in silence, and the symbols print "
                       "as blanks. The file is looked up in the folder of --symbols, or else in "
                       "that of the template; \".ssi\" is added to its name."),
     "<SPECSYMBOLS=shpo>\nTotal", "<SPECSYMBOLS=shop>\nTotal", noDocument, noArguments,
     checkMissingSymbolFile},
    {"damaged-symbol-file", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "a file of special symbols that can't be read"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "The library reads such a file up to its first mistake, and the symbols behind that print "
         "as blanks. \"receipt symbols FILE\" shows what is wrong in a file."),
     "<SPECSYMBOLS=damaged>\nTotal", "<SPECSYMBOLS=shop>\nTotal", noDocument, noArguments,
     checkDamagedSymbolFile},
    {"fiscal-marker", Severity::Note,
     QT_TRANSLATE_NOOP("LintRule", "a fiscal marker in a template that isn't split"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "A client cuts the template at its fiscal markers before anything else. In a template "
         "that is printed as a whole they are attributes that no document has, and print nothing. "
         "With --fiscal the template is split, and each piece is checked by itself."),
     "<FISCAL_BODY>\nThank you!", "Thank you!", noDocument, noArguments, checkFiscalMarkers},
    {"markup-in-qr", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "markup in the data of a QR code"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "What stands behind \"<QR>\" on the line is the code's data to the last character: tags "
         "of the markup and the brackets of a group are no markup there, and whoever scans the "
         "code gets them. The code is centred anyway, and a group around it begins in front of "
         "\"<QR>\" and can't end behind it."),
     "<QR><B>https://example.org", "<QR>https://example.org", noDocument, noArguments,
     checkQrMarkup},
    {"qr-in-text", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "\"<QR>\" in a receipt that is rendered as text or HTML"),
     QT_TRANSLATE_NOOP("LintRule",
                       "Only documents for printers have QR codes. In text and HTML the tag and "
                       "its data print as they stand. Needs --as text or --as html."),
     "<QR>https://example.org", "https://example.org", noDocument, "--as text", checkQrInText},
    {"wide-line", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "a line that is wider than the paper"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "No line is cut: the printer wraps it, and columns fall apart. Double width counts twice. "
         "The widths are told in characters of the font in which the line begins. Needs --width or "
         "--model. Without --data the lines "
         "are measured as if all values were empty. The finding stands at the beginning of the "
         "template's line that the printed line comes from."),
     "<W2><SHOP><S>Table <TABLE>", "<W2><SHOP>\n<R>Table <TABLE>",
     R"({"attributes": {"SHOP": "Harbour Kiosk", "TABLE": 7}})", "--width 28", checkLineWidth,
     checkBbLineWidth},
    {"broken-word", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "a line that breaks inside a word or a number"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "A printer wraps a line that is wider than the paper behind its last character that fits, "
         "and not at a word's end: \"1000 IU\" becomes \"100\" and \"0 IU\". Shorten the text, "
         "write it on two lines, choose a smaller font, or hand a long name over in parts. A "
         "number that breaks with the values of --data is an error, all else a warning. Needs "
         "--width or --model; said in place of wide-line."),
     "<NAME> 1000 IU", "<NAME>\n1000 IU", R"({"attributes": {"NAME": "Vitamin D3"}})", "--width 14",
     checkBrokenWords, checkBbBrokenWords},
    {"undrawn-symbol", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "a special symbol without a drawing"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "The characters 1 to 7 are special symbols, drawn by the file that \"<SPECSYMBOLS=\" "
         "names. Without a drawing a blank is printed; with --model also without one that fits the "
         "model's characters, and in a font that takes no drawings."),
     "Total <#1>", "<SPECSYMBOLS=shop>\nTotal <#1>", noDocument, noArguments, checkSymbolDrawings},
    {"unprintable-character", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "a character that the printer doesn't have"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "A printer has the characters of one code page. \"receipt print\" draws all others, as "
         "\"receipt preview\" shows; other drivers print something else for them. Needs --model or "
         "--code-page. The catalogue names no code pages: cp866 is taken unless "
         "--code-page says otherwise. What stands in a value is reported where its tag stands."),
     "Total 5 €", "Total 5 EUR", noDocument, "--model CUSTOM_VKP_80", checkCharacters,
     checkBbCharacters},
    {"unencodable-code", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "a code whose data can't be encoded"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "A code without data isn't printed, nor is one whose data its kind can't hold: the "
         "barcode of BBCode, a Code 128, takes ASCII characters, and a QR code up to 2953 bytes, "
         "less on a narrow paper. With --model also what doesn't fit the model's paper, or what it "
         "can't print. A code whose data values make needs --data."),
     "[barcode]Straße[/barcode]", "[barcode]Strasse[/barcode]", noDocument, noArguments, checkCodes,
     checkBbCodes},
    {"bbcode-in-template", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "a tag of BBCode in a template"),
     QT_TRANSLATE_NOOP("LintRule",
                       "In a template square brackets are those of groups: \"[/b]\" prints "
                       "\"/b\". A text is taken for BBCode if it has tags of BBCode and none of "
                       "the markup of templates, such as \"<C>\"; values are no markup."),
     "<C>[u]Total[/u]", "<C><U:>Total<:U>", noDocument, noArguments, checkBbTagsInTemplate},
    {"bbcode-name", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "BBCode: a tag, key or value that there isn't"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "The tags are b, i, u, size, left, center, right, hr, img, field, column, barcode and "
         "qrcode, in small letters or capitals; the keys are size, hr, width, align, zerofill and "
         "name. All others are passed over, and a value that there isn't counts as another one. A "
         "key is of no use outside of the tag that it belongs to."),
     "[center][bold]Total[/center]", "[center]Total[/center]", noDocument, noArguments, nullptr,
     checkBbNames},
    {"bbcode-as-text", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "BBCode: a tag that prints as it stands"),
     QT_TRANSLATE_NOOP("LintRule",
                       "What can't be read as a tag is text. A tag is \"[name]\", "
                       "\"[name=value]\" or \"[name key=value]\", with one blank or two between "
                       "its parts and none in front of the name. Values are letters, digits and a "
                       "few signs, without quotation marks."),
     "[center][size=\"large]Total[/center]", "[center][size=large]Total[/size][/center]",
     noDocument, noArguments, nullptr, checkBbMalformed},
    {"bbcode-open", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "BBCode: a tag that is never closed, or never opened"),
     QT_TRANSLATE_NOOP("LintRule",
                       "A line, a picture and a code are printed when their tag is closed, and "
                       "else not at all. A format or font that stays open goes on to the text's "
                       "end, and into the next text of the same reader. Of tags in one another "
                       "each closes the nearest of its name."),
     "[center]Thank you[/center]\n[hr]", "[center]Thank you[/center]\n[hr /]", noDocument,
     noArguments, nullptr, checkBbLonely},
    {"bbcode-crossed", Severity::Warning, QT_TRANSLATE_NOOP("LintRule", "BBCode: tags that cross"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "Tags are switches, and nesting isn't checked: formats that cross print as they are "
         "meant, but other readers of BBCode have it otherwise, so it is a note. What is aligned, "
         "padded or drawn ends where its tag closes: there it is a warning."),
     "[center][column width=9]Total[/center][/column]",
     "[center][column width=9]Total[/column][/center]", noDocument, noArguments, nullptr,
     checkBbCrossed},
    {"missing-picture", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "BBCode: a picture that doesn't exist or can't be read"),
     QT_TRANSLATE_NOOP("LintRule",
                       "A picture that is missing leaves an empty line. It is looked up in the "
                       "folder of --images, or else in that of the text; its name may be the "
                       "beginning of the file's, and letters count in small."),
     "[img name=absent][/img]", "[img name=logo][/img]", noDocument, noArguments, nullptr,
     checkBbPictures},
    {"ambiguous-picture", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "BBCode: a name that fits several pictures"),
     QT_TRANSLATE_NOOP("LintRule",
                       "Of all files whose names begin so the first in the alphabet is taken: for "
                       "\"logo\" that is \"logo-old.png\", also if there is \"logo.png\". Write "
                       "the name with its ending."),
     "[img name=twin][/img]", "[img name=twin.png][/img]", noDocument, noArguments, nullptr,
     checkBbAmbiguousPictures},
    {"small-large-text", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "BBCode: large text that isn't larger on this model"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "The sizes small, normal, middle and large are the four fonts of a model, and many have "
         "fewer: \"receipt models ID\" shows their characters. BBCode has no double height; a "
         "template has it, as \"<H2>\" and \"<W2>\". Needs --model."),
     "[size=large]Total[/size]", "[b]Total[/b]", noDocument, "--model TSP-TUP", nullptr,
     checkBbLargeText},
    {"wide-field", Severity::Warning,
     QT_TRANSLATE_NOOP("LintRule", "BBCode: a field that is too narrow for its text"),
     QT_TRANSLATE_NOOP(
         "LintRule",
         "A field is padded to its width, and no text is cut: a longer one moves what "
         "stands behind it on the line, and the columns fall apart. Give the field "
         "the width of the longest text, or have the program shorten it."),
     "[field width=9]Cappuccino[/field]2.80", "[field width=11]Cappuccino[/field]2.80", noDocument,
     noArguments, nullptr, checkBbFields},
    {"endless-value", Severity::Error,
     QT_TRANSLATE_NOOP("LintRule", "a value whose tags never come to an end"),
     QT_TRANSLATE_NOOP("LintRule",
                       "A value that holds a tag is filled in its turn. One that leads back to its "
                       "own tag, or that doubles on and on, never ends, and the program that "
                       "prints it hangs. The commands that fill templates refuse it. Such a "
                       "template isn't checked any further with this document. Needs --data."),
     "Dear <GUEST>", "Dear <NAME>", R"({"attributes": {"GUEST": "<GUEST>", "NAME": "Maya"}})",
     noArguments, checkEndlessValues},
};

}  // namespace

const QVector<Rule> &rules()
{
    static const QVector<Rule> list(std::begin(table), std::end(table));
    return list;
}

const Rule *findRule(const QString &name)
{
    const QVector<Rule> &list = rules();
    const auto rule = std::find_if(list.cbegin(), list.cend(), [&name](const Rule &row) {
        return name == QLatin1String(row.name);
    });
    return rule == list.cend() ? nullptr : &*rule;
}

QString nameOf(Severity severity)
{
    switch (severity) {
        case Severity::Error:
            return QStringLiteral("error");
        case Severity::Warning:
            return QStringLiteral("warning");
        case Severity::Note:
            return QStringLiteral("note");
    }
    return QString();
}

}  // namespace templatelint
