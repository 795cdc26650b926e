// Every text the user can see has its German translation. The sources and forms are scanned
// afresh on every run, into a copy of the translation file, so that a text added without its
// translation fails here and not in front of a German user.
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>

class TestTranslations : public QObject
{
    Q_OBJECT

private slots:
    void everyTextIsTranslated();
};

// An untranslated text shows English to a German user; a translation that drops or misspells a
// placeholder shows the raw placeholder or loses a value.
void TestTranslations::everyTextIsTranslated()
{
    const QDir tree(qEnvironmentVariable("SPARKWRIGHT_SOURCE_DIR"));
    QTemporaryDir scratch;
    const QString ts = scratch.filePath(QStringLiteral("lang_de.ts"));
    QVERIFY(scratch.isValid() && QFile::copy(tree.filePath(QStringLiteral("i18n/lang_de.ts")), ts));
    QVERIFY(QFile::setPermissions(ts, QFile::ReadOwner | QFile::WriteOwner));
    // The folders whose texts the program shows.
    const QStringList arguments {"-no-obsolete", "-locations", "none", "-I", tree.path(),
        tree.filePath("core"), tree.filePath("gui"), tree.filePath("app"), "-ts", ts};
    QProcess lupdate;
    lupdate.setProcessChannelMode(QProcess::MergedChannels);
    lupdate.start(QStringLiteral(SPARKWRIGHT_LUPDATE), arguments);
    QVERIFY2(lupdate.waitForFinished(-1) && lupdate.exitCode() == 0, lupdate.readAll().constData());

    // Placeholders that the program fills in: "%1" and the named ones like "%max".
    const auto placeholders = [](const QString &text) {
        QSet<QString> found;
        for (auto matches = QRegularExpression("%(\\d+|[A-Za-z]+)").globalMatch(text); matches.hasNext();)
            found.insert(matches.next().captured(0));
        return found;
    };
    QFile file(ts);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    QString context, source;
    int messages = 0;
    QStringList problems;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("source")) {
            source = xml.readElementText();
            ++messages;
        } else if (xml.name() == QLatin1String("translation")) {
            const QString where = QStringLiteral("%1: \"%2\"").arg(context, source);
            const bool unfinished
                = xml.attributes().value(QLatin1String("type")) == QLatin1String("unfinished");
            const QString text = xml.readElementText(QXmlStreamReader::IncludeChildElements);
            if (unfinished || text.trimmed().isEmpty())
                problems.append(where + QStringLiteral(" is not translated"));
            else if (placeholders(text) != placeholders(source))
                problems.append(where + QStringLiteral(" -> \"%1\" changes the placeholders").arg(text));
        }
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    QVERIFY2(messages > 0, "the scan found no texts at all");
    // One line each: a failure message alone would be cut short.
    for (const QString &line : qAsConst(problems))
        qWarning().noquote() << line;
    QVERIFY2(problems.isEmpty(),
        qPrintable(QStringLiteral("%1 problem(s) above; update i18n/lang_de.ts with lupdate and translate")
                       .arg(problems.size())));
}

QTEST_GUILESS_MAIN(TestTranslations)
#include "tst_translations.moc"
