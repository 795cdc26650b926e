#include "data/cfileerror.h"

namespace {

QString composeDisplayText(const QString &message, const QString &fileName)
{
    return message + QLatin1String("<br><br>") + CFileError::tr("Source file")
        + QLatin1String(": <font color='gray'>") + fileName.toHtmlEscaped() + QLatin1String("</font>");
}

} // namespace

CFileError::CFileError(const QString &message, const QString &fileName)
    : m_message(message)
    , m_displayText(composeDisplayText(message, fileName))
{ }
