#include "render/bracemarkup.h"

#include <QGuiApplication>
#include <QPalette>

QString highlightColour()
{
    // Only a program with windows has a palette; the command-line tool strips the markup anyway.
    const bool dark = qobject_cast<QGuiApplication *>(QCoreApplication::instance())
        && QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
    return QLatin1String(dark ? "#8CC4DD" : "#3E6C82");
}

QString withBraceMarkup(const QString &text)
{
    QString marked = text;
    marked.replace(QLatin1Char('{'), QLatin1String("<font color=") + highlightColour() + QLatin1Char('>'));
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
