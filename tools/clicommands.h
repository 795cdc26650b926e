#pragma once

#include <QString>
#include <QStringList>
#include <QTextStream>

// The verbs of sparkwright-cli. Exit codes: 0 done, 1 an input or output file failed (one line
// on the error stream names the file and what failed), 2 wrong usage.
class CliCommands
{
public:
    CliCommands(QTextStream &out, QTextStream &err) : m_out(out), m_err(err) { }

    int run(const QStringList &arguments);

    static constexpr int kOk = 0;
    static constexpr int kFileError = 1;
    static constexpr int kUsageError = 2;

private:
    int dump(const QString &path);
    int pack(const QString &source, const QString &target);
    int buildLibrary(const QString &source, const QString &target);
    int buildHints(const QString &source, const QString &target);

    int usage(const QString &problem);
    int fileError(const QString &path, const QString &what);
    bool readJsonObject(const QString &path, class QJsonObject &object);
    int writeOutput(const QString &path, const QByteArray &bytes);
    void printHelp();

    QTextStream &m_out;
    QTextStream &m_err;
};
