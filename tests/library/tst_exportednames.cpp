// The library's dynamic symbols, by class, against the list of what clients may call.
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QStandardPaths>
#include <QtTest>

namespace {

/// Lines of a file without comments and blanks.
QSet<QString> listedNames()
{
    QSet<QString> names;
    QFile file(EXPORTED_NAMES);
    if (!file.open(QIODevice::ReadOnly))
        return names;
    const QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
    for (const QString &line : lines) {
        const QString name = line.section('#', 0, 0).trimmed();
        if (!name.isEmpty())
            names.insert(name);
    }
    return names;
}

/// "QMap<int, A::B>::x(C::D)" without what stands in angle and round brackets: "QMap::x".
QString withoutArguments(const QString &symbol)
{
    QString result;
    int depth = 0;
    for (const QChar character : symbol) {
        if (character == '(' && depth == 0)
            break;
        depth += character == '<' ? 1 : 0;
        if (depth == 0)
            result.append(character);
        depth -= character == '>' ? 1 : 0;
    }
    return result;
}

/// The qualified name that a demangled symbol is about, without the result in front of it and the
/// arguments behind it: "void A::f<int>(B const&)" is about "A::f".
QString qualifiedName(QString symbol)
{
    static const QRegularExpression prefix(
        "^(vtable|VTT|typeinfo|typeinfo name|guard variable|construction vtable|"
        "(non-)?virtual thunk|covariant return thunk) (for|to) ");
    symbol.remove(prefix);
    symbol.remove("[abi:cxx11]");
    // The name of an operator must hold neither brackets nor blanks from here on.
    symbol.replace("operator<<", "operator_shift_left").replace("operator<", "operator_less");
    symbol.replace("operator>>", "operator_shift_right").replace("operator>", "operator_greater");
    symbol.replace("operator()", "operator_call").replace("operator ", "operator_");
    return withoutArguments(symbol).section(' ', -1);
}

/// The class that a demangled symbol belongs to, or the name of a free function or object.
QString ownerOf(const QString &symbol)
{
    const QString name = qualifiedName(symbol);
    const QStringList parts = name.split("::");
    if (parts.size() == 1)
        return name;
    // A namespace's member keeps the namespace's name.
    int namespaces = 0;
    while (namespaces < parts.size() - 1 && parts.at(namespaces) == parts.at(namespaces).toLower())
        ++namespaces;
    return parts.mid(0, namespaces + 1).join("::");
}

/// Inline things of other libraries that the compiler repeats here, weak or unique, and the marks
/// of linker and sanitizers. What they take and give says nothing about whose they are.
bool isForeign(const QString &symbol, const QString &kind)
{
    static const QRegularExpression inlined(
        "^(std::|__gnu_cxx::|Q[A-Z]|Qt[A-Z]\\w*::|qt_|qRegister|hearth::|corvid::)");
    static const QRegularExpression marks(
        "^(_edata|_end|__bss_start|_init|_fini|__asan|__odr_asan|__ubsan|__tsan|__sanitizer)");
    const bool repeated = kind == "W" || kind == "V" || kind == "u";
    return (repeated && inlined.match(qualifiedName(symbol)).hasMatch()) ||
           marks.match(symbol).hasMatch();
}

QStringList sorted(const QSet<QString> &names)
{
    QStringList list(names.begin(), names.end());
    list.sort();
    return list;
}

}  // namespace

class TestExportedNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ownersAreToldFromSymbols_data()
    {
        QTest::addColumn<QString>("symbol");
        QTest::addColumn<QString>("owner");
        QTest::newRow("member") << "DocumentBlock::setMap(QMap<QString, QVariant> const&)"
                                << "DocumentBlock";
        QTest::newRow("operator") << "FontInfo::operator==(FontInfo const&) const"
                                  << "FontInfo";
        QTest::newRow("conversion") << "TxtPrinterError::operator bool() const"
                                    << "TxtPrinterError";
        QTest::newRow("static member") << "PrinterSettings::_settingsMutex"
                                       << "PrinterSettings";
        QTest::newRow("result that has a tag")
            << "bbcpp::getRawString[abi:cxx11](bbcpp::BBNode const&)"
            << "bbcpp::getRawString";
        QTest::newRow("table of virtual operations") << "vtable for BbCodeParser"
                                                     << "BbCodeParser";
        QTest::newRow("thunk") << "non-virtual thunk to TextPrinterSettings::toList() const"
                               << "TextPrinterSettings";
        QTest::newRow("in a namespace") << "bbcpp::BBNode::addChild(std::shared_ptr<bbcpp::BBNode>)"
                                        << "bbcpp::BBNode";
        QTest::newRow("function in a namespace") << "bbcpp::printDocument(bbcpp::BBDocument const&)"
                                                 << "bbcpp::printDocument";
        QTest::newRow("in a namespace of a namespace") << "a::b::Foo::f(int)::id"
                                                       << "a::b::Foo";
        QTest::newRow("C function") << "te_interp"
                                    << "te_interp";
        QTest::newRow("free operator") << "operator<<(QDebug, PrintDeviceInfo const&)"
                                       << "operator_shift_left";
    }

    void ownersAreToldFromSymbols()
    {
        QFETCH(QString, symbol);
        QTEST(ownerOf(symbol), "owner");
    }

    void foreignSymbolsAreToldByTheirName_data()
    {
        QTest::addColumn<QString>("symbol");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<bool>("foreign");
        QTest::newRow("member of a template") << "QList<QVariant>::detach_helper(int)"
                                              << "W" << true;
        QTest::newRow("result and template arguments")
            << "void std::vector<int, std::allocator<int> >::f<Foo const&>(Foo const&)"
            << "W" << true;
        QTest::newRow("type information") << "typeinfo name for std::_Mutex_base<(A)2>"
                                          << "V" << true;
        QTest::newRow("guard of a static") << "guard variable for QtPrivate::f<Foo>(int)::id"
                                           << "u" << true;
        QTest::newRow("registration of our type")
            << "int qRegisterNormalizedMetaType<Foo>(QByteArray const&, Foo*)"
            << "W" << true;
        QTest::newRow("not repeated") << "QList<Foo>::append(Foo const&)"
                                      << "T" << false;
        QTest::newRow("mark of the linker") << "_edata"
                                            << "D" << true;
        QTest::newRow("our function that takes theirs") << "hiddenHelper(int, QString const&)"
                                                        << "W" << false;
        QTest::newRow("our function that takes theirs first") << "hiddenHelper(QString const&)"
                                                              << "W" << false;
        QTest::newRow("our template that takes and gives theirs")
            << "QList<QString> ours::f<std::string>(int, std::string const&)"
            << "W" << false;
        QTest::newRow("our thunk") << "non-virtual thunk to Foo::f(int, QString const&)"
                                   << "W" << false;
        QTest::newRow("our function's static")
            << "guard variable for Foo::f(int, QString const&)::id"
            << "u" << false;
        QTest::newRow("our operator") << "operator<<(int, QDebug)"
                                      << "W" << false;
        QTest::newRow("call of our object") << "Foo::operator()(int, QString const&) const"
                                            << "W" << false;
    }

    void foreignSymbolsAreToldByTheirName()
    {
        QFETCH(QString, symbol);
        QFETCH(QString, kind);
        QTEST(isForeign(symbol, kind), "foreign");
    }

    void libraryExportsWhatTheListHoldsAndNothingElse()
    {
        const QString program = QStandardPaths::findExecutable("nm");
        if (program.isEmpty())
            QSKIP("nm of the binutils is not installed");
        QProcess nm;
        nm.start(program, {"-D", "--defined-only", "-C", PRINTERSLIB_LIBRARY});
        QVERIFY(nm.waitForFinished(60000));
        QCOMPARE(nm.exitCode(), 0);

        QSet<QString> exported;
        const QStringList lines = QString::fromUtf8(nm.readAllStandardOutput()).split('\n');
        for (const QString &line : lines) {
            const QString kind = line.mid(17, 1);
            const QString symbol = line.mid(19);
            if (!symbol.isEmpty() && kind != "A" && !isForeign(symbol, kind))
                exported.insert(ownerOf(symbol));
        }
        const QSet<QString> listed = listedNames();
        QVERIFY(!listed.isEmpty());
        const QStringList extra = sorted(exported - listed);
        const QStringList missing = sorted(listed - exported);
        QVERIFY2(extra.isEmpty(), qPrintable("exported, but not listed: " + extra.join(", ")));
        QVERIFY2(missing.isEmpty(), qPrintable("listed, but not exported: " + missing.join(", ")));
    }
};

QTEST_APPLESS_MAIN(TestExportedNames)
#include "tst_exportednames.moc"
