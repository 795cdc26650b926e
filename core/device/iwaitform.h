#pragma once

#include <QString>

// Where a transaction reports what it is doing and how it ended: the progress page in the
// program, a recorder in the command-line tool and the tests.
class IWaitForm
{
public:
    virtual ~IWaitForm() = default;
    virtual void showActivity(const QString &title, const QString &text) = 0;
    virtual void showStatus(const QString &text) = 0;
    virtual void showResult(const QString &title, const QString &text, bool success) = 0;
};
