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

#include <algorithm>

namespace {

// The folders whose texts the program shows.
const char *const kScannedFolders[]
    = {"app", "frame", "i18n", "dialogs", "profile", "summary", "editor", "pages", "device", "forms"};

struct Message
{
    QString context;
    QString source;
    QStringList translations; // one per plural form
    QString type;
};

QList<Message> readMessages(const QString &path, QString *error)
{
    QList<Message> messages;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return messages;
    }
    QXmlStreamReader xml(&file);
    QString context;
    Message message;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            if (xml.name() == QLatin1String("context")) {
                context.clear();
            } else if (xml.name() == QLatin1String("name")) {
                context = xml.readElementText();
            } else if (xml.name() == QLatin1String("message")) {
                message = Message {context, QString(), QStringList(), QString()};
            } else if (xml.name() == QLatin1String("source")) {
                message.source = xml.readElementText();
            } else if (xml.name() == QLatin1String("translation")) {
                message.type = xml.attributes().value(QLatin1String("type")).toString();
                // A plural translation holds its forms as children, a plain one its text.
                QString text;
                while (!xml.atEnd() && !(xml.isEndElement() && xml.name() == QLatin1String("translation"))) {
                    xml.readNext();
                    if (xml.isCharacters())
                        text += xml.text();
                    else if (xml.isStartElement() && xml.name() == QLatin1String("numerusform"))
                        message.translations.append(xml.readElementText());
                }
                if (message.translations.isEmpty())
                    message.translations.append(text);
            }
        } else if (xml.isEndElement() && xml.name() == QLatin1String("message")) {
            messages.append(message);
        }
    }
    if (xml.hasError())
        *error = xml.errorString();
    return messages;
}

// Placeholders that the program fills in: "%1" and the named ones like "%max".
QSet<QString> placeholders(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("%(\\d+|[A-Za-z]+)"));
    QSet<QString> found;
    auto matches = pattern.globalMatch(text);
    while (matches.hasNext())
        found.insert(matches.next().captured(0));
    return found;
}

} // namespace

class TestTranslations : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyTextIsTranslated();
    void translationsKeepPlaceholders();

private:
    QTemporaryDir m_scratch;
    QList<Message> m_messages;
};

void TestTranslations::initTestCase()
{
    const QDir source(qEnvironmentVariable("SPARKWRIGHT_SOURCE_DIR"));
    QVERIFY2(source.exists(QStringLiteral("i18n/lang_de.ts")), "no translation file in the source tree");
    QVERIFY(m_scratch.isValid());
    const QString scratch = m_scratch.filePath(QStringLiteral("lang_de.ts"));
    QVERIFY(QFile::copy(source.filePath(QStringLiteral("i18n/lang_de.ts")), scratch));
    QVERIFY(QFile::setPermissions(scratch, QFile::ReadOwner | QFile::WriteOwner));

    QStringList arguments {QStringLiteral("-no-obsolete"), QStringLiteral("-locations"),
        QStringLiteral("none"), QStringLiteral("-I"), source.path()};
    for (const char *folder : kScannedFolders) {
        if (source.exists(QLatin1String(folder)))
            arguments.append(source.filePath(QLatin1String(folder)));
    }
    arguments << QStringLiteral("-ts") << scratch;

    QProcess lupdate;
    lupdate.setProcessChannelMode(QProcess::MergedChannels);
    lupdate.start(QStringLiteral(SPARKWRIGHT_LUPDATE), arguments);
    QVERIFY2(lupdate.waitForFinished(-1), qPrintable(lupdate.errorString()));
    QVERIFY2(lupdate.exitStatus() == QProcess::NormalExit && lupdate.exitCode() == 0,
        lupdate.readAll().constData());

    QString error;
    m_messages = readMessages(scratch, &error);
    QVERIFY2(error.isEmpty(), qPrintable(error));
    QVERIFY2(!m_messages.isEmpty(), "the scan found no texts at all");
}

void TestTranslations::everyTextIsTranslated()
{
    QStringList missing;
    for (const Message &message : qAsConst(m_messages)) {
        const bool empty = std::any_of(message.translations.begin(), message.translations.end(),
            [](const QString &text) { return text.trimmed().isEmpty(); });
        if (message.type == QLatin1String("unfinished") || empty)
            missing.append(QStringLiteral("%1: \"%2\"").arg(message.context, message.source));
    }
    // One line each: a failure message alone would be cut short.
    for (const QString &line : qAsConst(missing))
        qWarning().noquote() << line;
    QVERIFY2(missing.isEmpty(),
        qPrintable(QStringLiteral("%1 text(s) above lack a finished German translation; "
                                  "update i18n/lang_de.ts with lupdate and translate them")
                       .arg(missing.size())));
}

// A translation that drops or misspells a placeholder shows the raw placeholder or loses a value.
void TestTranslations::translationsKeepPlaceholders()
{
    QStringList broken;
    for (const Message &message : qAsConst(m_messages)) {
        if (message.type == QLatin1String("unfinished"))
            continue;
        const QSet<QString> expected = placeholders(message.source);
        for (const QString &translation : message.translations) {
            if (placeholders(translation) != expected)
                broken.append(
                    QStringLiteral("%1: \"%2\" -> \"%3\"").arg(message.context, message.source, translation));
        }
    }
    for (const QString &line : qAsConst(broken))
        qWarning().noquote() << line;
    QVERIFY2(broken.isEmpty(),
        qPrintable(QStringLiteral("%1 translation(s) above change the placeholders").arg(broken.size())));
}

QTEST_GUILESS_MAIN(TestTranslations)
#include "tst_translations.moc"
