#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QString>
#include <QStringList>

// Starts our separate updater program, which lives beside the program and needs administrator
// rights to replace the program's files. It is handed the file manifest, so that it knows which
// files are there in which version.
class CUpdater
{
    Q_DECLARE_TR_FUNCTIONS(CUpdater)

public:
    // The updater's file name on this system.
    static const char kUpdaterName[];
    // Outside Windows: the command that runs a program, given after it, as administrator and
    // returns once the program runs on its own, with pkexec's exit codes for a refusal.
    static const QStringList kElevation;

    // The program directory, a separator unless it already ends in one, and the updater's name.
    static QString updaterPath(const QString &programDirectory);

    // Starts the updater elevated: on Windows through the shell's "runas" verb, elsewhere through
    // the elevation command. Empty on success, otherwise in words why it failed.
    static QString launch(const QString &programDirectory, const QByteArray &manifest,
        const QStringList &elevation = kElevation);
};
