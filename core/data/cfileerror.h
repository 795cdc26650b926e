#pragma once

#include <QCoreApplication>
#include <QString>

// Describes a data file that could not be loaded at start-up: the message for the user and the
// rich text that the error window shows, naming the file as it was opened.
class CFileError
{
    Q_DECLARE_TR_FUNCTIONS(CFileError)

public:
    CFileError(const QString &message, const QString &fileName);

    QString message() const { return m_message; }
    QString displayText() const { return m_displayText; }

private:
    QString m_message;
    QString m_displayText;
};
