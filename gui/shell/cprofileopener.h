#pragma once

#include "profile/profile.h"

#include <QCoreApplication>
#include <QString>

#include <optional>

class QWidget;

// Bringing a saved profile into the program, wherever the user asks for one: the open dialog,
// the message when the file cannot be read, and the file's place among the recent profiles.
class CProfileOpener
{
    Q_DECLARE_TR_FUNCTIONS(CProfileOpener)

public:
    // The file dialogs' filter for profile files.
    static QString filter();
    // The open dialog, then the file; nothing when the user cancelled or the file could not be
    // read, which the user has then been told.
    static std::optional<Profile> open(QWidget *parent);
    // A file the user picked elsewhere, such as from the recent profiles.
    static std::optional<Profile> load(QWidget *parent, const QString &path);
};
