// The command-line tool's drawing verbs: "graph" writes the editor's picture of a map as PNG,
// "print" the printed sheet as PDF; both refuse bad usage and never destroy an old output file.
#include "profile/profilefile.h"

#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

class TestCliDrawing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void graphDrawsTheMap_data();
    void graphDrawsTheMap();
    void printWritesAnA4Pdf_data();
    void printWritesAnA4Pdf();
    void refusals_data();
    void refusals();
    void failedPrintKeepsTheOldFile();

private:
    int run(const QStringList &arguments, const QString &workingDirectory, QByteArray *err = nullptr);
    QString path(const QString &name) const { return m_dir.filePath(name); }

    QString m_cli;
    QString m_buildDir;
    QTemporaryDir m_dir;
    QTemporaryDir m_runtimeDir;
};

void TestCliDrawing::initTestCase()
{
    m_cli = qEnvironmentVariable("SPARKWRIGHT_CLI");
    m_buildDir = qEnvironmentVariable("SPARKWRIGHT_BUILD_DIR");
    if (m_cli.isEmpty() || m_buildDir.isEmpty())
        QSKIP("SPARKWRIGHT_CLI and SPARKWRIGHT_BUILD_DIR name the tool and its data files");
    QVERIFY(m_dir.isValid());

    Profile profile;
    profile.setName(QStringLiteral("Road 250"));
    IgnitionMap map;
    for (int i = 0; i < kMapPointCount; ++i)
        map.setPoint(i, 1000 * (i + 1), 10 + 2 * i);
    profile.setMap(map);
    profile.setSensorCoefficients({40.0, -0.0003, 0.0});
    QCOMPARE(saveProfileFile(profile, path(QStringLiteral("road.cdi"))), FileWriteError::None);
    QFile broken(path(QStringLiteral("broken.cdi")));
    QVERIFY(broken.open(QIODevice::WriteOnly));
    broken.write("cdi\0\1", 5);
}

int TestCliDrawing::run(const QStringList &arguments, const QString &workingDirectory, QByteArray *err)
{
    QProcess process;
    process.setWorkingDirectory(workingDirectory);
    // A runtime folder of its own keeps Qt's note about a missing one off the error stream.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_runtimeDir.path());
    process.setProcessEnvironment(environment);
    process.start(m_cli, arguments);
    if (!process.waitForFinished(60000))
        return -1;
    if (err)
        *err = process.readAllStandardError();
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

void TestCliDrawing::graphDrawsTheMap_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QSize>("size");
    QTest::newRow("default size") << QStringList() << QSize(733, 430);
    QTest::newRow("given size") << QStringList {"--size", "400x300"} << QSize(400, 300);
    QTest::newRow("German") << QStringList {"--language", "de"} << QSize(733, 430);
}

void TestCliDrawing::graphDrawsTheMap()
{
    QFETCH(QStringList, options);
    QFETCH(QSize, size);
    const QString out = path(QStringLiteral("graph.png"));
    QFile::remove(out);
    QCOMPARE(run(QStringList {"graph", path("road.cdi"), out} + options, m_buildDir), 0);
    const QImage image(out);
    QCOMPARE(image.size(), size);
    int curve = 0;
    int selected = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            curve += colour == QColor(25, 125, 200);
            selected += colour == QColor(125, 200, 255);
        }
    }
    QVERIFY2(curve > 200, "the curve is drawn in the editable colour");
    QCOMPARE(selected, 0);
    QCOMPARE(image.pixelColor(0, 0), QColor(100, 100, 100));
    QCOMPARE(image.pixelColor(8, 100), QColor(215, 215, 215)); // the left axis strip
}

void TestCliDrawing::printWritesAnA4Pdf_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("English") << QStringList();
    QTest::newRow("German") << QStringList {"--language", "de"};
}

void TestCliDrawing::printWritesAnA4Pdf()
{
    QFETCH(QStringList, options);
    const QString out = path(QStringLiteral("sheet.pdf"));
    QFile::remove(out);
    QCOMPARE(run(QStringList {"print", path("road.cdi"), out} + options, m_buildDir), 0);
    QFile file(out);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray pdf = file.readAll();
    QVERIFY(pdf.startsWith("%PDF-"));
    QVERIFY(pdf.contains("/MediaBox [0 0 842"));
    QVERIFY(pdf.trimmed().endsWith("%%EOF"));
}

void TestCliDrawing::refusals_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("inBuildDir"); // else a folder without default.cds and lang_de.qm
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("message");
    const QString in = QStringLiteral("IN");
    QTest::newRow("graph without output")
        << QStringList {"graph", in} << true << 2 << "wrong number of arguments";
    QTest::newRow("print with a third file")
        << QStringList {"print", in, "a.pdf", "b.pdf"} << true << 2 << "wrong number of arguments";
    QTest::newRow("unknown option") << QStringList {"graph", in, "g.png", "--colour", "red"} << true << 2
                                    << "unknown option '--colour'";
    QTest::newRow("size for print") << QStringList {"print", in, "s.pdf", "--size", "10x10"} << true << 2
                                    << "unknown option '--size'";
    QTest::newRow("option without value")
        << QStringList {"graph", in, "g.png", "--size"} << true << 2 << "needs a value";
    QTest::newRow("size without height")
        << QStringList {"graph", in, "g.png", "--size", "400"} << true << 2 << "--size expects";
    QTest::newRow("size zero") << QStringList {"graph", in, "g.png", "--size", "0x300"} << true << 2
                               << "--size expects";
    QTest::newRow("size too large") << QStringList {"graph", in, "g.png", "--size", "5000x300"} << true << 2
                                    << "--size expects";
    QTest::newRow("unknown language")
        << QStringList {"graph", in, "g.png", "--language", "fr"} << true << 2 << "unknown language 'fr'";
    QTest::newRow("no translation file")
        << QStringList {"graph", in, "g.png", "--language", "de"} << false << 1 << "lang_de.qm";
    QTest::newRow("no library for the header")
        << QStringList {"print", in, "s.pdf"} << false << 1 << "default.cds";
    QTest::newRow("missing profile") << QStringList {"graph", "missing.cdi", "g.png"} << true << 1
                                     << "missing.cdi: cannot open";
    QTest::newRow("broken profile") << QStringList {"print", "BROKEN", "s.pdf"} << true << 1
                                    << "not a readable profile file";
}

void TestCliDrawing::refusals()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, inBuildDir);
    QFETCH(int, exitCode);
    QFETCH(QString, message);
    for (QString &argument : arguments) {
        if (argument == QLatin1String("IN"))
            argument = path(QStringLiteral("road.cdi"));
        else if (argument == QLatin1String("BROKEN"))
            argument = path(QStringLiteral("broken.cdi"));
        else if (argument.endsWith(QLatin1String(".png")) || argument.endsWith(QLatin1String(".pdf")))
            argument = path(argument);
    }
    QByteArray err;
    QCOMPARE(run(arguments, inBuildDir ? m_buildDir : m_dir.path(), &err), exitCode);
    QVERIFY2(QString::fromUtf8(err).contains(message), err.constData());
    QCOMPARE(err.count('\n'), 1);
    QVERIFY(!QFile::exists(path(QStringLiteral("g.png"))));
    QVERIFY(!QFile::exists(path(QStringLiteral("s.pdf"))));
}

void TestCliDrawing::failedPrintKeepsTheOldFile()
{
    const QString out = path(QStringLiteral("old.pdf"));
    QFile old(out);
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.write("the sheet printed last week");
    old.close();
    QCOMPARE(run({"print", path("broken.cdi"), out}, m_buildDir), 1);
    QCOMPARE(run({"print", path("road.cdi"), out}, m_dir.path()), 1); // no default.cds there
    QVERIFY(old.open(QIODevice::ReadOnly));
    QCOMPARE(old.readAll(), QByteArray("the sheet printed last week"));
}

QTEST_GUILESS_MAIN(TestCliDrawing)
#include "tst_clidrawing.moc"
