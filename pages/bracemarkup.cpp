#include "pages/bracemarkup.h"

const char kHighlightColour[] = "#4B7D96";

QString withBraceMarkup(const QString &text)
{
    QString marked = text;
    marked.replace(
        QLatin1Char('{'), QLatin1String("<font color=") + QLatin1String(kHighlightColour) + QLatin1Char('>'));
    marked.replace(QLatin1Char('}'), QLatin1String("</font>"));
    return marked;
}
