#include "device/cwaitrecord.h"

void CWaitRecord::showActivity(const QString &title, const QString &text)
{
    activityTitle = title;
    activityText = text;
}

void CWaitRecord::showStatus(const QString &text)
{
    statuses << text;
}

void CWaitRecord::showResult(const QString &title, const QString &text, bool succeeded)
{
    resultTitle = title;
    resultText = text;
    success = succeeded;
    hasResult = true;
}
