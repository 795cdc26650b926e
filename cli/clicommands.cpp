#include "clicommands.h"

#include "programversion.h"

#include "data/datafiles.h"
#include "profile/defaultlibrary.h"
#include "profile/deviceimage.h"
#include "profile/profilecomparison.h"
#include "profile/profilefile.h"
#include "profile/profilejson.h"
#include "render/mapplotter.h"
#include "render/plotfile.h"
#include "render/summarysheet.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QIODevice>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>
#include <QLocale>
#include <QPainter>
#include <QRegularExpression>
#include <QTranslator>

int CliCommands::run(const QStringList &arguments)
{
    if (arguments.isEmpty())
        return usage(QStringLiteral("no verb given"));
    const QString verb = arguments.first();
    const QStringList rest = arguments.mid(1);

    if (verb == QLatin1String("--help") || verb == QLatin1String("-h") || verb == QLatin1String("help")) {
        printHelp();
        return kOk;
    }
    if (verb == QLatin1String("--version") && rest.isEmpty()) {
        m_out << "sparkwright-cli " << kProgramVersionText << "\n";
        return kOk;
    }
    if (verb == QLatin1String("dump") && rest.size() == 1)
        return dump(rest.at(0));
    if (verb == QLatin1String("pack") && rest.size() == 2)
        return build(rest.at(0), rest.at(1),
            [](const QJsonObject &source) { return profileFromJson(source).map(profileFileBytes); });
    if (verb == QLatin1String("build-library") && rest.size() == 2)
        return build(rest.at(0), rest.at(1),
            [](const QJsonObject &source) { return libraryFromJson(source).map(defaultLibraryBytes); });
    if (verb == QLatin1String("build-hints") && rest.size() == 2)
        return build(rest.at(0), rest.at(1),
            [](const QJsonObject &source) { return hintCatalogFromJson(source).map(hintCatalogBytes); });
    if (verb == QLatin1String("print"))
        return print(rest);
    if (verb == QLatin1String("graph"))
        return graph(rest);
    if (verb == QLatin1String("ports") && rest.isEmpty())
        return ports();
    if (verb == QLatin1String("ping") || verb == QLatin1String("import") || verb == QLatin1String("program"))
        return deviceExchange(verb, rest);
    if (verb == QLatin1String("virtual-cdi"))
        return virtualCdi(rest);
    if (verb == QLatin1String("diff"))
        return diff(rest);

    const QStringList verbs {QStringLiteral("dump"), QStringLiteral("pack"), QStringLiteral("build-library"),
        QStringLiteral("build-hints"), QStringLiteral("ports")};
    if (verbs.contains(verb))
        return usage(QStringLiteral("wrong number of arguments for '%1'").arg(verb));
    return usage(QStringLiteral("unknown verb '%1'").arg(verb));
}

void CliCommands::printHelp()
{
    m_out << "Usage: sparkwright-cli VERB ARGUMENTS\n"
             "\n"
             "Verbs:\n"
             "  dump FILE                          print a .cdi, .cds or .cdh file as JSON\n"
             "  pack PROFILE.json OUT.cdi          write a profile as a .cdi file, as the program saves it\n"
             "  build-library SOURCE.json OUT.cds  build the factory library from its JSON source\n"
             "  build-hints SOURCE.json OUT.cdh    build the hints file from its JSON source\n"
             "  print FILE.cdi OUT.pdf [--language en|de]\n"
             "                                     the profile sheet, as the program prints it; needs\n"
             "                                     default.cds (and lang_de.qm) from the data folder\n"
             "  graph FILE.cdi OUT.png [--size WxH] [--language en|de]\n"
             "                                     the map as the editor's graph draws it (733x430)\n"
             "  ports                              list the serial ports; 'bridge' marks the one a CDI\n"
             "                                     is looked for on, 'virtual' a virtual CDI\n"
             "  ping [--port P] [--verbose] [--language en|de]\n"
             "                                     test the connection to the CDI\n"
             "  import OUT.cdi [--port P] [--verbose] [--language en|de]\n"
             "                                     read the CDI's profile; needs default.cds from the\n"
             "                                     data folder\n"
             "  program IN.cdi [--port P] [--no-reimport] [--no-verify] [--verbose] [--language en|de]\n"
             "                                     write a profile into the CDI and read it back to\n"
             "                                     compare (not with --no-reimport or --no-verify);\n"
             "                                     --verbose prints the frames sent and received on\n"
             "                                     the error stream\n"
             "  diff A.cdi B.cdi [--language en|de]\n"
             "                                     what writing B into a CDI holding A changes; exit\n"
             "                                     0 when nothing, 1 when something, 2 on an error\n"
             "  virtual-cdi [--firmware TEXT] [--serial N] [--profile FILE.cdi] [--fault KIND]\n"
          << virtualCdiHelp()
          << "  --help                             show this text\n"
             "  --version                          print the version\n"
             "\n"
             "Exit codes: 0 done, 1 a file could not be read or written or the exchange with the\n"
             "CDI failed, 2 wrong usage, or no CDI could be reached (no port, port cannot be opened,\n"
             "profile not fit to be sent).\n";
    m_out.flush();
}

int CliCommands::usage(const QString &problem)
{
    m_err << "sparkwright-cli: " << problem << " (see sparkwright-cli --help)\n";
    m_err.flush();
    return kUsageError;
}

int CliCommands::fileError(const QString &path, const QString &what)
{
    m_err << "sparkwright-cli: " << path << ": " << what << "\n";
    m_err.flush();
    return kFileError;
}

int CliCommands::fileError(const QString &path, const FileError &error)
{
    return fileError(path, fileErrorText(error));
}

int CliCommands::dump(const QString &path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    tl::expected<QJsonObject, FileError> object;
    if (suffix == QLatin1String("cdi"))
        object = readProfileFile(path).map(profileToJson);
    else if (suffix == QLatin1String("cds"))
        object = readFileWith(path, [](QIODevice &in) { return loadDefaultLibrary(in); }).map(libraryToJson);
    else if (suffix == QLatin1String("cdh"))
        object = readFileWith(path, loadHintCatalog).map(hintCatalogToJson);
    else
        return usage(QStringLiteral("cannot tell the kind of '%1': expected .cdi, .cds or .cdh").arg(path));
    if (!object)
        return fileError(path, object.error());
    m_out << QString::fromUtf8(QJsonDocument(*object).toJson(QJsonDocument::Indented));
    m_out.flush();
    return kOk;
}

int CliCommands::writeOutput(const QString &path, const QByteArray &bytes)
{
    const tl::expected<void, FileError> written = writeFileSafely(path, bytes);
    return written ? kOk : fileError(path, written.error());
}

namespace {

tl::expected<QJsonObject, FileError> readJsonObject(QIODevice &in)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(in.readAll(), &parseError);
    if (parseError.error != QJsonParseError::NoError)
        return damagedFile(QStringLiteral("malformed JSON at offset %1: %2")
                               .arg(parseError.offset)
                               .arg(parseError.errorString()));
    if (!document.isObject())
        return damagedFile(QStringLiteral("expected a JSON object"));
    return document.object();
}

} // namespace

int CliCommands::build(const QString &source, const QString &target, const FromJson &convert)
{
    const tl::expected<QByteArray, FileError> bytes = readFileWith(source, readJsonObject).and_then(convert);
    return bytes ? writeOutput(target, *bytes) : fileError(source, bytes.error());
}

bool CliCommands::needsGui(const QStringList &arguments)
{
    return !arguments.isEmpty()
        && (arguments.first() == QLatin1String("print") || arguments.first() == QLatin1String("graph"));
}

bool CliCommands::parseDrawingArguments(const QString &verb, const QStringList &arguments,
    const QStringList &allowed, QStringList &positional, QMap<QString, QString> &options)
{
    for (int i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments.at(i);
        if (!argument.startsWith(QLatin1String("--"))) {
            positional << argument;
            continue;
        }
        if (!allowed.contains(argument)) {
            usage(QStringLiteral("unknown option '%1' for '%2'").arg(argument, verb));
            return false;
        }
        if (i + 1 >= arguments.size()) {
            usage(QStringLiteral("option '%1' needs a value").arg(argument));
            return false;
        }
        options.insert(argument, arguments.at(++i));
    }
    if (positional.size() != 2) {
        usage(QStringLiteral("wrong number of arguments for '%1'").arg(verb));
        return false;
    }
    return true;
}

bool CliCommands::installLanguage(
    const QString &verb, const QString &language, QTranslator &translator, int &status)
{
    const QString code = language.isEmpty() ? QStringLiteral("en") : language;
    if (code != QLatin1String("en") && code != QLatin1String("de")) {
        status
            = usage(QStringLiteral("unknown language '%1' for '%2': expected en or de").arg(language, verb));
        return false;
    }
    if (code == QLatin1String("de")) {
        // The program's own rule: "lang_" + code, found where the program finds it.
        const QString name = QStringLiteral("lang_") + code;
        if (!translator.load(locateDataFile(name + QStringLiteral(".qm")))) {
            status = fileError(name + QStringLiteral(".qm"), QStringLiteral("cannot load the translation"));
            return false;
        }
        QCoreApplication::installTranslator(&translator);
    }
    // Numbers follow the sheet's language, not the system's: "43,0°" on a German sheet, "43.0°"
    // on an English one, whatever the system's locale.
    QLocale::setDefault(QLocale(code));
    return true;
}

bool CliCommands::readProfile(const QString &path, Profile &profile)
{
    const tl::expected<Profile, FileError> read = readProfileFile(path);
    if (!read) {
        fileError(path, read.error());
        return false;
    }
    profile = *read;
    return true;
}

// Now, or for sheets that must come out the same on every run and system (as reproducible builds
// ask) the time SOURCE_DATE_EPOCH gives in seconds, as UTC.
static QDateTime printingTime()
{
    bool numeric = false;
    const qint64 epoch = qEnvironmentVariable("SOURCE_DATE_EPOCH").toLongLong(&numeric);
    if (!numeric || epoch < 0)
        return QDateTime::currentDateTime();
    const QDateTime utc = QDateTime::fromSecsSinceEpoch(epoch, Qt::UTC);
    return QDateTime(utc.date(), utc.time());
}

int CliCommands::print(const QStringList &arguments)
{
    QStringList positional;
    QMap<QString, QString> options;
    if (!parseDrawingArguments(
            QStringLiteral("print"), arguments, {QStringLiteral("--language")}, positional, options))
        return kUsageError;
    QTranslator translator;
    int status = kOk;
    if (!installLanguage(
            QStringLiteral("print"), options.value(QStringLiteral("--language")), translator, status))
        return status;

    Profile profile;
    if (!readProfile(positional.at(0), profile))
        return kFileError;

    // The header names the factory library the program runs with.
    const tl::expected<DefaultLibrary, FileError> library = loadInstalledLibrary();
    if (!library)
        return fileError(QLatin1String(kLibraryFileName), library.error());

    const QByteArray pdf
        = summarySheetPdf(profile, summarySheetHeaderLine(library->libraryValue(), printingTime()));
    if (pdf.isEmpty())
        return fileError(positional.at(1), QStringLiteral("could not produce the PDF document"));
    return writeOutput(positional.at(1), pdf);
}

int CliCommands::graph(const QStringList &arguments)
{
    QStringList positional;
    QMap<QString, QString> options;
    if (!parseDrawingArguments(QStringLiteral("graph"), arguments,
            {QStringLiteral("--size"), QStringLiteral("--language")}, positional, options))
        return kUsageError;

    int width = 733;
    int height = 430;
    if (options.contains(QStringLiteral("--size"))) {
        static const QRegularExpression sizePattern(QStringLiteral("^(\\d{1,5})x(\\d{1,5})$"));
        const QRegularExpressionMatch match = sizePattern.match(options.value(QStringLiteral("--size")));
        constexpr int kLargest = 4096;
        if (match.hasMatch()) {
            width = match.captured(1).toInt();
            height = match.captured(2).toInt();
        }
        if (!match.hasMatch() || width < 1 || height < 1 || width > kLargest || height > kLargest)
            return usage(QStringLiteral("--size expects WIDTHxHEIGHT, each 1 to %1").arg(kLargest));
    }
    QTranslator translator;
    int status = kOk;
    if (!installLanguage(
            QStringLiteral("graph"), options.value(QStringLiteral("--language")), translator, status))
        return status;

    Profile profile;
    if (!readProfile(positional.at(0), profile))
        return kFileError;

    // As the editor shows it: editable colours, no point selected, axes fitted to the map.
    const QByteArray png = plotFileBytes(
        PlotFormat::Png, QSize(width, height), [&profile](MapPlotter &plotter, QPainter &painter) {
            plotter.paintSingle(painter, profile, -1, true, true);
        });
    if (png.isEmpty())
        return fileError(positional.at(1), QStringLiteral("could not encode the image"));
    return writeOutput(positional.at(1), png);
}

// Two profiles as a CDI gets them, so names and notes, which it never holds, do not count. Exit
// codes as diff(1)'s: 0 the same, 1 different, 2 trouble.
int CliCommands::diff(const QStringList &arguments)
{
    QStringList positional;
    QMap<QString, QString> options;
    if (!parseOptions(
            QStringLiteral("diff"), arguments, {QStringLiteral("--language")}, {}, positional, options))
        return kUsageError;
    if (positional.size() != 2)
        return usage(QStringLiteral("wrong number of arguments for 'diff'"));
    QTranslator translator;
    int status = kOk;
    if (!installLanguage(
            QStringLiteral("diff"), options.value(QStringLiteral("--language")), translator, status))
        return kUsageError;
    Profile before;
    Profile after;
    if (!readProfile(positional.at(0), before) || !readProfile(positional.at(1), after))
        return kUsageError;
    // Motorbike types by their templates' names where the library is at hand, else by number.
    const tl::expected<DefaultLibrary, FileError> library = loadInstalledLibrary();
    const std::vector<ImageDifference> differences = profileDifferences(before, after);
    for (const ImageDifference &difference : differences)
        m_out << differenceText(difference, library ? &*library : nullptr) << "\n";
    m_out.flush();
    return differences.empty() ? kOk : kFileError;
}
