#pragma once

#include "profile/fileerror.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QTextStream>

#include <functional>

class QJsonObject;

// The verbs of sparkwright-cli. Exit codes: 0 done, 1 an input or output file failed (one line
// on the error stream names the file and what failed), 2 wrong usage.
class CliCommands
{
public:
    CliCommands(QTextStream &out, QTextStream &err)
        : m_out(out)
        , m_err(err)
    { }

    int run(const QStringList &arguments);
    // The drawing verbs need fonts, hence a QGuiApplication rather than a QCoreApplication.
    static bool needsGui(const QStringList &arguments);

    static constexpr int kOk = 0;
    static constexpr int kFileError = 1;
    static constexpr int kUsageError = 2;

private:
    // Turns a JSON source into the bytes of the file it describes.
    using FromJson = std::function<tl::expected<QByteArray, FileError>(const QJsonObject &)>;

    int dump(const QString &path);
    // pack, build-library and build-hints: the source converted and written to the target.
    int build(const QString &source, const QString &target, const FromJson &convert);
    int print(const QStringList &arguments);
    int graph(const QStringList &arguments);

    // The device verbs (clidevicecommands.cpp).
    int ports();
    int deviceExchange(const QString &verb, const QStringList &arguments);
    // The virtual CDI on a pseudo-terminal (clivirtualcdi_posix.cpp); on Windows only a usage
    // message (clivirtualcdi_win.cpp). Its line in the help differs accordingly.
    int virtualCdi(const QStringList &arguments);
    static const char *virtualCdiHelp();
    int diff(const QStringList &arguments);
    // Splits arguments into positional ones, options with a value and bare switches; false
    // (after a usage message) on anything not allowed for the verb.
    bool parseOptions(const QString &verb, const QStringList &arguments, const QStringList &valued,
        const QStringList &switches, QStringList &positional, QMap<QString, QString> &options);

    // Splits "FILE OUT [--option value]..." into the positional arguments and the options
    // allowed for the verb; false (after a usage message) on anything else.
    bool parseDrawingArguments(const QString &verb, const QStringList &arguments, const QStringList &allowed,
        QStringList &positional, QMap<QString, QString> &options);
    // Installs the translation for --language; false (after the message) when it cannot be used.
    bool installLanguage(
        const QString &verb, const QString &language, class QTranslator &translator, int &status);
    bool readProfile(const QString &path, class Profile &profile);

    int usage(const QString &problem);
    int fileError(const QString &path, const QString &what);
    int fileError(const QString &path, const FileError &error);
    int writeOutput(const QString &path, const QByteArray &bytes);
    void printHelp();

    QTextStream &m_out;
    QTextStream &m_err;
};
