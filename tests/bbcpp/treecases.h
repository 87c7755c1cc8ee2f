#pragma once

#include <string>
#include <string_view>

/// A text and what printDocument writes of it behind the line "#document".
struct TreeCase
{
    const char *name;
    std::string_view text;
    std::string tree;
};

using namespace std::string_view_literals;

const TreeCase treeCases[] = {
    {"empty text", ""sv, ""},
    {"one run", "abc"sv, "|-- @\"abc\"\n"},
    {"bracket outside a tag", "a]b"sv, "|-- @\"a]b\"\n"},
    {"closing bracket alone", "]"sv, "|-- @\"]\"\n"},
    {"bytes outside ASCII", "Чай «A»"sv, "|-- @\"Чай «A»\"\n"},
    {"line ends stay", "a\nb\r\nc"sv,
     "|-- @\"a\n"
     "b\r\n"
     "c\"\n"},
    {"lone bracket", "["sv, "|-- @\"[\"\n"},
    {"name to the end", "[abc"sv, "|-- @\"[abc\"\n"},
    {"name to the end behind text", "x[abc"sv, "|-- @\"x[abc\"\n"},
    {"digits to the end", "[123"sv, "|-- @\"[123\"\n"},
    {"underscore to the end", "[_"sv, "|-- @\"[_\"\n"},
    {"two brackets", "[["sv, "|-- @\"[[\"\n"},
    {"three brackets", "[[["sv, "|-- @\"[[[\"\n"},
    {"bracket before a tag", "[[b]"sv,
     "|-- @\"[\"\n"
     "|-- [b]\n"},
    {"bracket in a tag", "[b[i]"sv,
     "|-- @\"[b\"\n"
     "|-- [i]\n"},
    {"bracket then bracket", "[]"sv, "|-- @\"[]\"\n"},
    {"empty tag then text", "[]x"sv, "|-- @\"[]x\"\n"},
    {"blank name", "[ x]"sv, "|-- @\"[ x]\"\n"},
    {"blank only", "[ ]"sv, "|-- @\"[ ]\"\n"},
    {"slash without a name", "[/ x]"sv, "|-- @\"[ x]\"\n"},
    {"slash at the end", "[/"sv, "|-- @\"[\"\n"},
    {"slash and bracket", "[/]"sv, "|-- @\"[]\"\n"},
    {"slash without a name, no bracket", "[/ x"sv, "|-- @\"[ x\"\n"},
    {"closing name to the end", "[/abc"sv, "|-- @\"[abc\"\n"},
    {"closing name to the end behind text", "x[/abc"sv, "|-- @\"x[abc\"\n"},
    {"two slashes", "[//b]"sv, "|-- @\"[/b]\"\n"},
    {"text on both sides of a lost slash", "a[/ b"sv, "|-- @\"a[ b\"\n"},
    {"other byte behind the name", "[b!]"sv, "|-- @\"[b!]\"\n"},
    {"other byte behind a closing name", "[/b!]"sv, "|-- @\"[/b!]\"\n"},
    {"other byte at the end", "[b!"sv, "|-- @\"[b!\"\n"},
    {"slash behind the name", "[b/]"sv, "|-- @\"[b/]\"\n"},
    {"hyphen behind the name", "[b-c]"sv, "|-- @\"[b-c]\"\n"},
    {"quote behind the name", "[b\"]"sv, "|-- @\"[b\"]\"\n"},
    {"line end behind the name", "[b\n]"sv,
     "|-- @\"[b\n"
     "]\"\n"},
    {"tab behind the name", "[b\tc=d]"sv, "|-- @\"[b\tc=d]\"\n"},
    {"non-ASCII behind the name", "[bж]"sv, "|-- @\"[bж]\"\n"},
    {"non-ASCII name", "[ж]"sv, "|-- @\"[ж]\"\n"},
    {"bracket behind the name", "[a[b]"sv,
     "|-- @\"[a\"\n"
     "|-- [b]\n"},
    {"simple tag", "[b]"sv, "|-- [b]\n"},
    {"closing tag on nothing", "[/b]"sv, "|-- [/b]\n"},
    {"two closing tags on nothing", "[/b][/i]"sv,
     "|-- [/b]\n"
     "|-- [/i]\n"},
    {"text around a closing tag", "x[/b]y"sv,
     "|-- @\"x\"\n"
     "|-- [/b]\n"
     "|-- @\"y\"\n"},
    {"pair of tags", "[b]x[/b]"sv,
     "|-- [b]\n"
     "|   |-- @\"x\"\n"
     "|   |-- [/b]\n"},
    {"tag left open", "[b]x"sv,
     "|-- [b]\n"
     "|   |-- @\"x\"\n"},
    {"closing tag of another name", "[b][/i]"sv,
     "|-- [b]\n"
     "|   |-- [/i]\n"},
    {"empty pair of tags", "[b][/b]"sv,
     "|-- [b]\n"
     "|   |-- [/b]\n"},
    {"nested tags", "[b][i]x[/i][/b]"sv,
     "|-- [b]\n"
     "|   |-- [i]\n"
     "|   |   |-- @\"x\"\n"
     "|   |   |-- [/i]\n"
     "|   |-- [/b]\n"},
    {"crossed tags", "[b][i]x[/b][/i]"sv,
     "|-- [b]\n"
     "|   |-- [i]\n"
     "|   |   |-- @\"x\"\n"
     "|   |   |-- [/b]\n"
     "|   |-- [/i]\n"},
    {"text behind a pair", "[b]a[/b]c"sv,
     "|-- [b]\n"
     "|   |-- @\"a\"\n"
     "|   |-- [/b]\n"
     "|-- @\"c\"\n"},
    {"text before a pair", "a[b]c[/b]"sv,
     "|-- @\"a\"\n"
     "|-- [b]\n"
     "|   |-- @\"c\"\n"
     "|   |-- [/b]\n"},
    {"one closing too many", "[b]x[/b][/b]y"sv,
     "|-- [b]\n"
     "|   |-- @\"x\"\n"
     "|   |-- [/b]\n"
     "|-- [/b]\n"
     "|-- @\"y\"\n"},
    {"upper case", "[B]x[/B]"sv,
     "|-- [B]\n"
     "|   |-- @\"x\"\n"
     "|   |-- [/B]\n"},
    {"digits in a name", "[h1]x[/h1]"sv,
     "|-- [h1]\n"
     "|   |-- @\"x\"\n"
     "|   |-- [/h1]\n"},
    {"digits only", "[12]"sv, "|-- [12]\n"},
    {"underscores in a name", "[_a_b]"sv, "|-- [_a_b]\n"},
    {"two siblings", "[a][/a][b][/b]"sv,
     "|-- [a]\n"
     "|   |-- [/a]\n"
     "|-- [b]\n"
     "|   |-- [/b]\n"},
    {"text between siblings", "[a][/a]x[b][/b]"sv,
     "|-- [a]\n"
     "|   |-- [/a]\n"
     "|-- @\"x\"\n"
     "|-- [b]\n"
     "|   |-- [/b]\n"},
    {"text behind an inner pair", "[a][b]x[/b]y[/a]z"sv,
     "|-- [a]\n"
     "|   |-- [b]\n"
     "|   |   |-- @\"x\"\n"
     "|   |   |-- [/b]\n"
     "|   |-- @\"y\"\n"
     "|   |-- [/a]\n"
     "|-- @\"z\"\n"},
    {"bracket text between tags", "[a] ] [/a]"sv,
     "|-- [a]\n"
     "|   |-- @\" ] \"\n"
     "|   |-- [/a]\n"},
    {"value tag", "[size=large]"sv,
     "|-- [size]\n"
     "|   |-- [size]\n"
     "|   |   |-- { {size=large} }\n"},
    {"value tag with text", "[size=large]x[/size]"sv,
     "|-- [size]\n"
     "|   |-- [size]\n"
     "|   |   |-- { {size=large} }\n"
     "|   |   |-- @\"x\"\n"
     "|   |   |-- [/size]\n"},
    {"value tag closed twice", "[size=large]x[/size][/size]"sv,
     "|-- [size]\n"
     "|   |-- [size]\n"
     "|   |   |-- { {size=large} }\n"
     "|   |   |-- @\"x\"\n"
     "|   |   |-- [/size]\n"
     "|   |-- [/size]\n"},
    {"value tag closed twice, then text", "[a=b]x[/a]y[/a]z"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b} }\n"
     "|   |   |-- @\"x\"\n"
     "|   |   |-- [/a]\n"
     "|   |-- @\"y\"\n"
     "|   |-- [/a]\n"
     "|-- @\"z\"\n"},
    {"two pairs", "[column width=10 align=right]"sv,
     "|-- [column]\n"
     "|   |-- [column]\n"
     "|   |   |-- { {align=right}, {width=10} }\n"},
    {"two pairs and text", "[column width=10 align=right]x[/column]"sv,
     "|-- [column]\n"
     "|   |-- [column]\n"
     "|   |   |-- { {align=right}, {width=10} }\n"
     "|   |   |-- @\"x\"\n"
     "|   |   |-- [/column]\n"},
    {"three pairs, named", "[a=b c=d e=f]"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b}, {c=d}, {e=f} }\n"},
    {"three pairs, spaced", "[t a=b c=d e=f]"sv,
     "|-- [t]\n"
     "|   |-- [t]\n"
     "|   |   |-- { {a=b}, {c=d}, {e=f} }\n"},
    {"two spaces between pairs", "[a=b  c=d]"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b}, {c=d} }\n"},
    {"two spaces between spaced pairs", "[t a=b  c=d]"sv,
     "|-- [t]\n"
     "|   |-- [t]\n"
     "|   |   |-- { {a=b}, {c=d} }\n"},
    {"three spaces between pairs", "[a=b   c=d]"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b}, {c=d} }\n"},
    {"four spaces between pairs", "[a=b    c=d]"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b}, {c=d} }\n"},
    {"two spaces before the first pair", "[t  a=b]"sv,
     "|-- [t]\n"
     "|   |-- [t]\n"
     "|   |   |-- { {a=b} }\n"},
    {"three spaces before the first pair", "[t   a=b]"sv,
     "|-- [t]\n"
     "|   |-- [t]\n"
     "|   |   |-- { {a=b} }\n"},
    {"space before the bracket", "[a=b ]"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b} }\n"},
    {"space before the bracket of a spaced tag", "[t a=b ]"sv,
     "|-- [t]\n"
     "|   |-- [t]\n"
     "|   |   |-- { {a=b} }\n"},
    {"two spaces before the bracket", "[a=b  ]"sv, "|-- @\"[a=b  ]\"\n"},
    {"two spaces before the bracket of a spaced tag", "[t a=b  ]"sv, "|-- @\"[t a=b  ]\"\n"},
    {"three spaces before the bracket", "[t a=b   ]"sv, "|-- @\"[t a=b   ]\"\n"},
    {"space behind the equals sign", "[a= b]"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b} }\n"},
    {"many kinds of space behind the equals sign", "[a= \t\n b]"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b} }\n"},
    {"space before the equals sign", "[a =b]"sv, "|-- @\"[a =b]\"\n"},
    {"space before the equals sign of a pair", "[t a =b]"sv, "|-- @\"[t a =b]\"\n"},
    {"tab between pairs", "[a=b\tc=d]"sv, "|-- @\"[a=b\tc=d]\"\n"},
    {"line end between pairs", "[a=b\nc=d]"sv,
     "|-- @\"[a=b\n"
     "c=d]\"\n"},
    {"space and line end between pairs", "[a=b \nc=d]"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b}, {c=d} }\n"},
    {"space and tab between pairs", "[t a=b \tc=d]"sv,
     "|-- [t]\n"
     "|   |-- [t]\n"
     "|   |   |-- { {a=b}, {c=d} }\n"},
    {"line end before the first pair", "[t \n a=b]"sv,
     "|-- [t]\n"
     "|   |-- [t]\n"
     "|   |   |-- { {a=b} }\n"},
    {"form feed and vertical tab", "[t \f\v a=b]"sv,
     "|-- [t]\n"
     "|   |-- [t]\n"
     "|   |   |-- { {a=b} }\n"},
    {"key twice", "[a=b a=c]"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b} }\n"},
    {"key twice in a spaced tag", "[t a=b a=c]"sv,
     "|-- [t]\n"
     "|   |-- [t]\n"
     "|   |   |-- { {a=b} }\n"},
    {"key in two cases", "[a=b A=c]"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {A=c}, {a=b} }\n"},
    {"keys are sorted", "[z=1 b=2 a=3]"sv,
     "|-- [z]\n"
     "|   |-- [z]\n"
     "|   |   |-- { {a=3}, {b=2}, {z=1} }\n"},
    {"name is a key too", "[t t=1]"sv,
     "|-- [t]\n"
     "|   |-- [t]\n"
     "|   |   |-- { {t=1} }\n"},
    {"names of pairs with digits", "[t 1=2 _=3]"sv,
     "|-- [t]\n"
     "|   |-- [t]\n"
     "|   |   |-- { {1=2}, {_=3} }\n"},
    {"all value symbols", "[a=#$&()*+,-./:?]"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=#$&()*+,-./:?} }\n"},
    {"value ends on a slash", "[a=b/]"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b/} }\n"},
    {"value is a slash", "[a=/]"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=/} }\n"},
    {"value holds a closing tag's slash", "[hr=dashed/]"sv,
     "|-- [hr]\n"
     "|   |-- [hr]\n"
     "|   |   |-- { {hr=dashed/} }\n"},
    {"value begins with a slash", "[a=/b]"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=/b} }\n"},
    {"decimal value", "[w=-1.5]"sv,
     "|-- [w]\n"
     "|   |-- [w]\n"
     "|   |   |-- { {w=-1.5} }\n"},
    {"path value", "[img name=a/b.png]"sv,
     "|-- [img]\n"
     "|   |-- [img]\n"
     "|   |   |-- { {name=a/b.png} }\n"},
    {"quoted value", "[a=\"b\"]"sv, "|-- @\"[a=\"b\"]\"\n"},
    {"quote in a value", "[a=b\"c]d"sv, "|-- @\"[a=b\"c]d\"\n"},
    {"apostrophe in a value", "[a=b'c]"sv, "|-- @\"[a=b'c]\"\n"},
    {"percent in a value", "[a=5%]"sv, "|-- @\"[a=5%]\"\n"},
    {"semicolon in a value", "[a=b;c]"sv, "|-- @\"[a=b;c]\"\n"},
    {"less-than in a value", "[a=<b]"sv, "|-- @\"[a=<b]\"\n"},
    {"equals sign in a value", "[a=b=c]"sv, "|-- @\"[a=b=c]\"\n"},
    {"two equals signs", "[a==b]"sv, "|-- @\"[a==b]\"\n"},
    {"greater-than in a value", "[a=b>]"sv, "|-- @\"[a=b>]\"\n"},
    {"exclamation mark in a value", "[a=b!]"sv, "|-- @\"[a=b!]\"\n"},
    {"at sign in a value", "[a=b@c]"sv, "|-- @\"[a=b@c]\"\n"},
    {"bracket in a value", "[a=b[c]"sv,
     "|-- @\"[a=b\"\n"
     "|-- [c]\n"},
    {"non-ASCII value", "[a=ж]"sv, "|-- @\"[a=ж]\"\n"},
    {"non-ASCII in a value", "[a=bж]"sv, "|-- @\"[a=bж]\"\n"},
    {"brace in a value", "[a={b}]"sv, "|-- @\"[a={b}]\"\n"},
    {"backslash in a value", "[a=b\\c]"sv, "|-- @\"[a=b\\c]\"\n"},
    {"vertical bar in a value", "[a=b|c]"sv, "|-- @\"[a=b|c]\"\n"},
    {"caret, grave accent and tilde", "[a=^][a=`][a=~]"sv, "|-- @\"[a=^][a=`][a=~]\"\n"},
    {"empty value", "[a=]"sv, "|-- @\"[a=]\"\n"},
    {"empty value before a space", "[a= ]"sv, "|-- @\"[a= ]\"\n"},
    {"empty value, cut", "[a="sv, "|-- @\"[a=\"\n"},
    {"empty value of a pair", "[t a=]"sv, "|-- @\"[t a=]\"\n"},
    {"empty value of the second pair", "[t a=b c=]"sv, "|-- @\"[t a=b c=]\"\n"},
    {"empty value takes the next key", "[t a= c=d]"sv, "|-- @\"[t a= c=d]\"\n"},
    {"second key empty", "[a=b =c]"sv, "|-- @\"[a=b =c]\"\n"},
    {"second key without a value", "[a=b c]"sv, "|-- @\"[a=b c]\"\n"},
    {"second pair malformed", "[a=b c=\"d\"]"sv, "|-- @\"[a=b c=\"d\"]\"\n"},
    {"third pair malformed", "[t a=b c=d e=!]"sv, "|-- @\"[t a=b c=d e=!]\"\n"},
    {"second pair cut in its key", "[a=b c"sv, "|-- @\"[a=b c\"\n"},
    {"second pair cut at its sign", "[a=b c="sv, "|-- @\"[a=b c=\"\n"},
    {"second pair cut in its value", "[a=b c=d"sv, "|-- @\"[a=b c=d\"\n"},
    {"spaced pair cut in its key", "[t a"sv, "|-- @\"[t a\"\n"},
    {"spaced pair cut in its value", "[t a=b"sv, "|-- @\"[t a=b\"\n"},
    {"key is no name", "[t -=b]"sv, "|-- @\"[t -=b]\"\n"},
    {"first pair malformed, tag behind", "[t a=!][b]"sv,
     "|-- @\"[t a=!]\"\n"
     "|-- [b]\n"},
    {"bracket as a second key", "[a=b [c]"sv,
     "|-- @\"[a=b \"\n"
     "|-- [c]\n"},
    {"bracket as a spaced key", "[t [c]"sv,
     "|-- @\"[t \"\n"
     "|-- [c]\n"},
    {"tag behind a value that never ends", "[a=b[/a]"sv,
     "|-- @\"[a=b\"\n"
     "|-- [/a]\n"},
    {"named pair cut behind one space", "[a=b "sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b} }\n"},
    {"named pair cut behind two spaces", "[a=b  "sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b} }\n"},
    {"named pair cut behind three spaces", "[a=b   "sv, "|-- @\"[a=b   \"\n"},
    {"spaced pair cut behind one space", "[t a=b "sv,
     "|-- [t]\n"
     "|   |-- [t]\n"
     "|   |   |-- { {a=b} }\n"},
    {"spaced pair cut behind two spaces", "[t a=b  "sv,
     "|-- [t]\n"
     "|   |-- [t]\n"
     "|   |   |-- { {a=b} }\n"},
    {"spaced pair cut behind three spaces", "[t a=b   "sv, "|-- @\"[t a=b   \"\n"},
    {"two pairs cut behind one space", "[a=b c=d "sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b}, {c=d} }\n"},
    {"two pairs cut behind two spaces", "[a=b c=d  "sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b}, {c=d} }\n"},
    {"spaced tag cut behind its space", "[t "sv, "|-- @\"[t \"\n"},
    {"spaced tag cut behind two spaces", "[t  "sv, "|-- @\"[t  \"\n"},
    {"text before a cut-off tag", "x[a=b "sv,
     "|-- @\"x\"\n"
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b} }\n"},
    {"open tag before a cut-off tag", "[b][a=b "sv,
     "|-- [b]\n"
     "|   |-- [a]\n"
     "|   |   |-- [a]\n"
     "|   |   |   |-- { {a=b} }\n"},
    {"self-closing tag", "[hr /]"sv,
     "|-- [hr]\n"
     "|   |-- [/hr]\n"},
    {"self-closing tag, three spaces", "[hr   /]"sv,
     "|-- [hr]\n"
     "|   |-- [/hr]\n"},
    {"self-closing tag, line end", "[hr \n/]"sv,
     "|-- [hr]\n"
     "|   |-- [/hr]\n"},
    {"self-closing tag and text", "a[hr /]b"sv,
     "|-- @\"a\"\n"
     "|-- [hr]\n"
     "|   |-- [/hr]\n"
     "|-- @\"b\"\n"},
    {"self-closing tag in a tag", "[b][hr /]x[/b]"sv,
     "|-- [b]\n"
     "|   |-- [hr]\n"
     "|   |   |-- [/hr]\n"
     "|   |-- @\"x\"\n"
     "|   |-- [/b]\n"},
    {"slash without its bracket", "[hr /x]"sv, "|-- @\"[hr /x]\"\n"},
    {"slash at the end of a spaced tag", "[hr /"sv, "|-- @\"[hr /\"\n"},
    {"space between slash and bracket", "[hr / ]"sv, "|-- @\"[hr / ]\"\n"},
    {"two slashes before the bracket", "[hr //]"sv, "|-- @\"[hr //]\"\n"},
    {"self-closing tag of a closing name", "[/hr /]"sv,
     "|-- [hr]\n"
     "|   |-- [/hr]\n"},
    {"value tag closes itself", "[hr=dashed /]"sv,
     "|-- [hr]\n"
     "|   |-- [hr]\n"
     "|   |   |-- { {hr=dashed} }\n"
     "|   |   |-- [/hr]\n"},
    {"value tag closes itself, then text", "[hr=dashed /]x"sv,
     "|-- [hr]\n"
     "|   |-- [hr]\n"
     "|   |   |-- { {hr=dashed} }\n"
     "|   |   |-- [/hr]\n"
     "|   |-- @\"x\"\n"},
    {"value tag closes itself in a tag", "[b][hr=dashed /]x"sv,
     "|-- [b]\n"
     "|   |-- [hr]\n"
     "|   |   |-- [hr]\n"
     "|   |   |   |-- { {hr=dashed} }\n"
     "|   |   |   |-- [/hr]\n"
     "|   |   |-- @\"x\"\n"},
    {"value tag, slash without its bracket", "[hr=dashed /x]"sv,
     "|-- [hr]\n"
     "|   |-- [hr]\n"
     "|   |   |-- { {hr=dashed} }\n"
     "|   |   |-- @\" /x]\"\n"},
    {"value tag, slash at the end", "[hr=dashed /"sv,
     "|-- [hr]\n"
     "|   |-- [hr]\n"
     "|   |   |-- { {hr=dashed} }\n"
     "|   |   |-- @\" /\"\n"},
    {"value tag, space behind the slash", "[hr=dashed / ]"sv,
     "|-- [hr]\n"
     "|   |-- [hr]\n"
     "|   |   |-- { {hr=dashed} }\n"
     "|   |   |-- @\" / ]\"\n"},
    {"value tag, two slashes", "[hr=dashed //]"sv,
     "|-- [hr]\n"
     "|   |-- [hr]\n"
     "|   |   |-- { {hr=dashed} }\n"
     "|   |   |-- @\" //]\"\n"},
    {"value tag, two spaces before the slash", "[hr=dashed  /]"sv, "|-- @\"[hr=dashed  /]\"\n"},
    {"value tag, three spaces before the slash", "[hr=dashed   /]"sv, "|-- @\"[hr=dashed   /]\"\n"},
    {"two pairs close themselves", "[a=b c=d /]"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b}, {c=d} }\n"
     "|   |   |-- [/a]\n"},
    {"two pairs, slash without its bracket", "[a=b c=d /e]"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b}, {c=d} }\n"
     "|   |   |-- @\" /e]\"\n"},
    {"key twice, closes itself", "[a=b a=c /]"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b} }\n"
     "|   |   |-- [/a]\n"},
    {"slash then a pair", "[a=b /c=d]"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b} }\n"
     "|   |   |-- @\" /c=d]\"\n"},
    {"key before the slash drops the pairs", "[t c/]"sv,
     "|-- [t]\n"
     "|   |-- [/t]\n"},
    {"key before the slash, cut", "[t c/"sv, "|-- @\"[t c/\"\n"},
    {"pairs before two spaces and the slash are dropped", "[t a=b  /]"sv,
     "|-- [t]\n"
     "|   |-- [/t]\n"},
    {"pairs before one space and the slash don't close", "[t a=b /]"sv,
     "|-- [t]\n"
     "|   |-- [t]\n"
     "|   |   |-- { {a=b} }\n"
     "|   |   |-- @\"/]\"\n"},
    {"pairs before one space and a slash, text", "[t a=b /]x"sv,
     "|-- [t]\n"
     "|   |-- [t]\n"
     "|   |   |-- { {a=b} }\n"
     "|   |   |-- @\"/]x\"\n"},
    {"pair then key and slash", "[t a=b c/]"sv,
     "|-- [t]\n"
     "|   |-- [/t]\n"},
    {"pair then key and slash, named", "[a=b c/]"sv, "|-- @\"[a=b c/]\"\n"},
    {"pairs, three spaces, slash", "[t a=b   /]"sv,
     "|-- [t]\n"
     "|   |-- [/t]\n"},
    {"spaced pair, slash at the end", "[t a=b /"sv,
     "|-- [t]\n"
     "|   |-- [t]\n"
     "|   |   |-- { {a=b} }\n"
     "|   |   |-- @\"/\"\n"},
    {"spaced pair, two spaces, slash without its bracket", "[t a=b  /x]"sv,
     "|-- @\"[t a=b  /x]\"\n"},
    {"spaced blank tag", "[t ]"sv, "|-- @\"[t ]\"\n"},
    {"spaced tag with a word", "[t word]"sv, "|-- @\"[t word]\"\n"},
    {"spaced tag with words", "[t two words]"sv, "|-- @\"[t two words]\"\n"},
    {"spaced closing tag", "[/t ]"sv, "|-- @\"[/t ]\"\n"},
    {"spaced closing tag with a pair", "[/t a=b]"sv,
     "|-- [t]\n"
     "|   |-- [t]\n"
     "|   |   |-- { {a=b} }\n"},
    {"closing tag with a value", "[/b=x]"sv,
     "|-- [b]\n"
     "|   |-- [b]\n"
     "|   |   |-- { {b=x} }\n"},
    {"closing tag with a value, in a tag", "[b]y[/b=x]z"sv,
     "|-- [b]\n"
     "|   |-- @\"y\"\n"
     "|   |-- [b]\n"
     "|   |   |-- [b]\n"
     "|   |   |   |-- { {b=x} }\n"
     "|   |   |   |-- @\"z\"\n"},
    {"closing tag with a value closes itself", "[/b=x /]"sv,
     "|-- [b]\n"
     "|   |-- [b]\n"
     "|   |   |-- { {b=x} }\n"
     "|   |   |-- [/b]\n"},
    {"closing tag with a bad value", "[/b=!]"sv, "|-- @\"[/b=!]\"\n"},
    {"closing tag with a word", "[/t word]"sv, "|-- @\"[/t word]\"\n"},
    {"value element, then sibling text", "[a=b]x"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b} }\n"
     "|   |   |-- @\"x\"\n"},
    {"value element, then a tag", "[a=b][c]x"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b} }\n"
     "|   |   |-- [c]\n"
     "|   |   |   |-- @\"x\"\n"},
    {"value tags in a row", "[a=b][c=d]x"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b} }\n"
     "|   |   |-- [c]\n"
     "|   |   |   |-- [c]\n"
     "|   |   |   |   |-- { {c=d} }\n"
     "|   |   |   |   |-- @\"x\"\n"},
    {"value tag behind text", "x[a=b]y"sv,
     "|-- @\"x\"\n"
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b} }\n"
     "|   |   |-- @\"y\"\n"},
    {"value tag closed, then another", "[a=b][/a][c=d][/c]"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b} }\n"
     "|   |   |-- [/a]\n"
     "|   |-- [c]\n"
     "|   |   |-- [c]\n"
     "|   |   |   |-- { {c=d} }\n"
     "|   |   |   |-- [/c]\n"},
    {"text in the middle of two closings", "[a=b]x[/a]y"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b} }\n"
     "|   |   |-- @\"x\"\n"
     "|   |   |-- [/a]\n"
     "|   |-- @\"y\"\n"},
    {"text merges over a bad tag", "a[b!]c[d"sv, "|-- @\"a[b!]c[d\"\n"},
    {"bad tags in a row", "[a=!][b=!]"sv, "|-- @\"[a=!][b=!]\"\n"},
    {"receipt line", "[center][b]TOTAL[/b][/center] 12,50"sv,
     "|-- [center]\n"
     "|   |-- [b]\n"
     "|   |   |-- @\"TOTAL\"\n"
     "|   |   |-- [/b]\n"
     "|   |-- [/center]\n"
     "|-- @\" 12,50\"\n"},
    {"NUL byte", "a\0b[c\0d]"sv, std::string("|-- @\"a\0b[c\0d]\"\n"sv)},
    {"[a=b c=d /] cut to 0 bytes", ""sv, ""},
    {"[a=b c=d /] cut to 1 bytes", "["sv, "|-- @\"[\"\n"},
    {"[a=b c=d /] cut to 2 bytes", "[a"sv, "|-- @\"[a\"\n"},
    {"[a=b c=d /] cut to 3 bytes", "[a="sv, "|-- @\"[a=\"\n"},
    {"[a=b c=d /] cut to 4 bytes", "[a=b"sv, "|-- @\"[a=b\"\n"},
    {"[a=b c=d /] cut to 5 bytes", "[a=b "sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b} }\n"},
    {"[a=b c=d /] cut to 6 bytes", "[a=b c"sv, "|-- @\"[a=b c\"\n"},
    {"[a=b c=d /] cut to 7 bytes", "[a=b c="sv, "|-- @\"[a=b c=\"\n"},
    {"[a=b c=d /] cut to 8 bytes", "[a=b c=d"sv, "|-- @\"[a=b c=d\"\n"},
    {"[a=b c=d /] cut to 9 bytes", "[a=b c=d "sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b}, {c=d} }\n"},
    {"[a=b c=d /] cut to 10 bytes", "[a=b c=d /"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b}, {c=d} }\n"
     "|   |   |-- @\" /\"\n"},
    {"[a=b c=d /] cut to 11 bytes", "[a=b c=d /]"sv,
     "|-- [a]\n"
     "|   |-- [a]\n"
     "|   |   |-- { {a=b}, {c=d} }\n"
     "|   |   |-- [/a]\n"},
    {"[/b=x] cut to 0 bytes", ""sv, ""},
    {"[/b=x] cut to 1 bytes", "["sv, "|-- @\"[\"\n"},
    {"[/b=x] cut to 2 bytes", "[/"sv, "|-- @\"[\"\n"},
    {"[/b=x] cut to 3 bytes", "[/b"sv, "|-- @\"[b\"\n"},
    {"[/b=x] cut to 4 bytes", "[/b="sv, "|-- @\"[/b=\"\n"},
    {"[/b=x] cut to 5 bytes", "[/b=x"sv, "|-- @\"[/b=x\"\n"},
    {"[/b=x] cut to 6 bytes", "[/b=x]"sv,
     "|-- [b]\n"
     "|   |-- [b]\n"
     "|   |   |-- { {b=x} }\n"},
    {"[hr=dashed /] cut to 0 bytes", ""sv, ""},
    {"[hr=dashed /] cut to 1 bytes", "["sv, "|-- @\"[\"\n"},
    {"[hr=dashed /] cut to 2 bytes", "[h"sv, "|-- @\"[h\"\n"},
    {"[hr=dashed /] cut to 3 bytes", "[hr"sv, "|-- @\"[hr\"\n"},
    {"[hr=dashed /] cut to 4 bytes", "[hr="sv, "|-- @\"[hr=\"\n"},
    {"[hr=dashed /] cut to 5 bytes", "[hr=d"sv, "|-- @\"[hr=d\"\n"},
    {"[hr=dashed /] cut to 6 bytes", "[hr=da"sv, "|-- @\"[hr=da\"\n"},
    {"[hr=dashed /] cut to 7 bytes", "[hr=das"sv, "|-- @\"[hr=das\"\n"},
    {"[hr=dashed /] cut to 8 bytes", "[hr=dash"sv, "|-- @\"[hr=dash\"\n"},
    {"[hr=dashed /] cut to 9 bytes", "[hr=dashe"sv, "|-- @\"[hr=dashe\"\n"},
    {"[hr=dashed /] cut to 10 bytes", "[hr=dashed"sv, "|-- @\"[hr=dashed\"\n"},
    {"[hr=dashed /] cut to 11 bytes", "[hr=dashed "sv,
     "|-- [hr]\n"
     "|   |-- [hr]\n"
     "|   |   |-- { {hr=dashed} }\n"},
    {"[hr=dashed /] cut to 12 bytes", "[hr=dashed /"sv,
     "|-- [hr]\n"
     "|   |-- [hr]\n"
     "|   |   |-- { {hr=dashed} }\n"
     "|   |   |-- @\" /\"\n"},
    {"[hr=dashed /] cut to 13 bytes", "[hr=dashed /]"sv,
     "|-- [hr]\n"
     "|   |-- [hr]\n"
     "|   |   |-- { {hr=dashed} }\n"
     "|   |   |-- [/hr]\n"},
};
