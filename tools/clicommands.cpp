#include "tools/clicommands.h"

#include "profile/defaultlibrary.h"
#include "profile/hintcatalog.h"
#include "profile/profilefile.h"
#include "profile/profilejson.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>

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
    if (verb == QLatin1String("dump") && rest.size() == 1)
        return dump(rest.at(0));
    if (verb == QLatin1String("pack") && rest.size() == 2)
        return pack(rest.at(0), rest.at(1));
    if (verb == QLatin1String("build-library") && rest.size() == 2)
        return buildLibrary(rest.at(0), rest.at(1));
    if (verb == QLatin1String("build-hints") && rest.size() == 2)
        return buildHints(rest.at(0), rest.at(1));

    const QStringList verbs {QStringLiteral("dump"), QStringLiteral("pack"), QStringLiteral("build-library"),
                             QStringLiteral("build-hints")};
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
             "  --help                             show this text\n"
             "\n"
             "Exit codes: 0 done, 1 a file could not be read or written, 2 wrong usage.\n";
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

int CliCommands::dump(const QString &path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix != QLatin1String("cdi") && suffix != QLatin1String("cds") && suffix != QLatin1String("cdh"))
        return usage(QStringLiteral("cannot tell the kind of '%1': expected .cdi, .cds or .cdh").arg(path));

    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fileError(path, QStringLiteral("cannot open: ") + file.errorString());

    QJsonObject object;
    if (suffix == QLatin1String("cdi")) {
        const std::optional<Profile> profile = readProfileFile(file);
        if (!profile)
            return fileError(path, QStringLiteral("not a readable profile file (broken or truncated)"));
        object = profileToJson(*profile);
    } else if (suffix == QLatin1String("cds")) {
        const std::unique_ptr<DefaultLibrary> library = loadDefaultLibrary(file, true);
        if (!library)
            return fileError(path, QStringLiteral("not a readable profile library (broken or truncated)"));
        object = libraryToJson(*library);
    } else {
        const std::unique_ptr<HintCatalog> catalog = loadHintCatalog(file);
        if (!catalog)
            return fileError(path, QStringLiteral("not a readable hints file (broken or truncated)"));
        object = hintCatalogToJson(*catalog);
    }
    m_out << QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Indented));
    m_out.flush();
    return kOk;
}

bool CliCommands::readJsonObject(const QString &path, QJsonObject &object)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        fileError(path, QStringLiteral("cannot open: ") + file.errorString());
        return false;
    }
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        fileError(path, QStringLiteral("malformed JSON at offset %1: %2").arg(parseError.offset).arg(parseError.errorString()));
        return false;
    }
    if (!document.isObject()) {
        fileError(path, QStringLiteral("expected a JSON object"));
        return false;
    }
    object = document.object();
    return true;
}

int CliCommands::writeOutput(const QString &path, const QByteArray &bytes)
{
    switch (writeFileSafely(path, bytes)) {
    case FileWriteError::None:
        return kOk;
    case FileWriteError::CannotOverwrite:
        return fileError(path, QStringLiteral("could not overwrite file"));
    case FileWriteError::CannotWrite:
        return fileError(path, QStringLiteral("could not write to file"));
    case FileWriteError::MissingAfterWrite:
        return fileError(path, QStringLiteral("file missing after being written"));
    }
    return kFileError;
}

int CliCommands::pack(const QString &source, const QString &target)
{
    QJsonObject object;
    if (!readJsonObject(source, object))
        return kFileError;
    QString error;
    const std::optional<Profile> profile = profileFromJson(object, error);
    if (!profile)
        return fileError(source, error);
    return writeOutput(target, profileFileBytes(*profile));
}

int CliCommands::buildLibrary(const QString &source, const QString &target)
{
    QJsonObject object;
    if (!readJsonObject(source, object))
        return kFileError;
    QString error;
    const std::unique_ptr<DefaultLibrary> library = libraryFromJson(object, error);
    if (!library)
        return fileError(source, error);
    return writeOutput(target, defaultLibraryBytes(*library));
}

int CliCommands::buildHints(const QString &source, const QString &target)
{
    QJsonObject object;
    if (!readJsonObject(source, object))
        return kFileError;
    QString error;
    const std::unique_ptr<HintCatalog> catalog = hintCatalogFromJson(object, error);
    if (!catalog)
        return fileError(source, error);
    return writeOutput(target, hintCatalogBytes(*catalog));
}
