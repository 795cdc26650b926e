#pragma once

#include "device/iwaitform.h"

#include <QStringList>

// Keeps what a transaction reported, for the command-line tool and the tests.
class CWaitRecord : public IWaitForm
{
public:
    void showActivity(const QString &title, const QString &text) override;
    void showStatus(const QString &text) override;
    void showResult(const QString &title, const QString &text, bool success) override;

    QString activityTitle;
    QString activityText;
    QStringList statuses;
    QString resultTitle;
    QString resultText;
    bool hasResult = false;
    bool success = false;
};
