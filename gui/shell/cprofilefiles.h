#pragma once

#include "profile/profile.h"

#include <QCoreApplication>
#include <QString>

#include <optional>

class QWidget;

// The program's files as the user meets them, wherever the user asks for one: the open dialog,
// the message when a file cannot be read or written, and the file's place among the recent
// profiles.
class CProfileFiles
{
    Q_DECLARE_TR_FUNCTIONS(CProfileFiles)

public:
    // The file dialogs' filter for profile files.
    static QString filter();
    // The open dialog; empty when the user cancelled.
    static QString chooseToOpen(QWidget *parent);
    // The open dialog, then the file; nothing when the user cancelled or the file could not be
    // read, which the user has then been told.
    static std::optional<Profile> open(QWidget *parent);
    // A file the user picked, from the open dialog or the recent profiles.
    static std::optional<Profile> load(QWidget *parent, const QString &path);
    // Writes the bytes in the file's place, completely or not at all; a failure is told under
    // the title and heading, and the file that was there stays as it was.
    static bool write(QWidget *parent, const QString &path, const QString &title, const QString &failureHeading,
        const QByteArray &bytes);
};
