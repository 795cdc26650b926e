#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <QUrl>

// How the program is brought up to date. On Windows our separate updater program, which lives
// beside the program and needs administrator rights to replace its files, is started with the
// file manifest, so that it knows which files are there in which version. Elsewhere the system's
// package manager updates the program with everything else, and nothing is started with
// administrator rights: the program can at most open its page in a software centre.
class CUpdater
{
    Q_DECLARE_TR_FUNCTIONS(CUpdater)

public:
    // The updater's file name on Windows.
    static const char kUpdaterName[];

    // The program directory, a separator unless it already ends in one, and the updater's name.
    static QString updaterPath(const QString &programDirectory);

#ifdef Q_OS_WIN
    // Starts the updater elevated through the shell's "runas" verb. Empty on success, otherwise
    // in words why it failed.
    static QString launch(const QString &programDirectory, const QByteArray &manifest);
#endif

    // Outside Windows: what the user is told instead of an update.
    static QString packageManagerNotice();
    // The program's page in a software centre.
    static QUrl softwareCentrePage();
    // True when one of the desktop's installed applications opens such pages. The folders are
    // the desktop's data folders (XDG_DATA_DIRS and the user's own), each with its
    // "applications" folder.
    static bool hasSoftwareCentre(const QStringList &dataFolders);
    static QStringList desktopDataFolders();
};
