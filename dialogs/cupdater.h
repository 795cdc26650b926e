#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QString>

// Starts our separate updater program, which lives beside the program and needs administrator
// rights to replace the program's files. It is handed the file manifest, so that it knows which
// files are there in which version.
class CUpdater
{
    Q_DECLARE_TR_FUNCTIONS(CUpdater)

public:
    // The updater's file name on this system.
    static const char kUpdaterName[];

    // The program directory, a separator unless it already ends in one, and the updater's name.
    static QString updaterPath(const QString &programDirectory);

    // Starts the updater elevated: on Windows through the shell's "runas" verb, elsewhere through
    // pkexec. Empty on success, otherwise why it failed.
    static QString launch(const QString &programDirectory, const QByteArray &manifest);
};
