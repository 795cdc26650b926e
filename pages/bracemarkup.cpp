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

QString withoutMarkup(const QString &richText)
{
    QString plain;
    plain.reserve(richText.size());
    bool inTag = false;
    for (const QChar c : richText) {
        if (c == QLatin1Char('<'))
            inTag = true;
        else if (c == QLatin1Char('>') && inTag)
            inTag = false;
        else if (!inTag)
            plain.append(c);
    }
    plain.replace(QLatin1String("&lt;"), QLatin1String("<"));
    plain.replace(QLatin1String("&gt;"), QLatin1String(">"));
    plain.replace(QLatin1String("&quot;"), QLatin1String("\""));
    plain.replace(QLatin1String("&amp;"), QLatin1String("&"));
    return plain;
}
