#include "profile/suggestedfilename.h"

#include <QRegularExpression>

namespace {

// Well below the 255 bytes a Linux file name may have, even for three-byte characters and the
// extension that is added afterwards.
constexpr int kMaxLength = 80;

bool isRefused(QChar c)
{
    static const QString refused = QStringLiteral("<>:\"/\\|?*");
    return c.unicode() < 0x20 || c.unicode() == 0x7F || refused.contains(c);
}

QString trimmed(const QString &text)
{
    int first = 0;
    int last = text.size() - 1;
    const auto isEdge = [](QChar c) { return c.isSpace() || c == QLatin1Char('.'); };
    while (first <= last && isEdge(text.at(first)))
        ++first;
    while (last >= first && isEdge(text.at(last)))
        --last;
    return text.mid(first, last - first + 1);
}

// "CON", "com1.backup" and the like name devices on Windows, whatever follows the first dot.
bool isReservedOnWindows(const QString &name)
{
    static const QRegularExpression reserved(
        QStringLiteral("^(CON|PRN|AUX|NUL|COM[1-9]|LPT[1-9])$"), QRegularExpression::CaseInsensitiveOption);
    return reserved.match(name.section(QLatin1Char('.'), 0, 0).trimmed()).hasMatch();
}

} // namespace

QString suggestedFileName(const QString &profileName, const QString &fallback)
{
    QString name = profileName;
    for (QChar &c : name) {
        if (isRefused(c))
            c = QLatin1Char('_');
    }
    name = trimmed(name);
    if (name.size() > kMaxLength) {
        int length = kMaxLength;
        // Never split a character that takes two UTF-16 units.
        if (name.at(length - 1).isHighSurrogate())
            --length;
        name = trimmed(name.left(length));
    }
    if (name.isEmpty())
        return fallback;
    if (isReservedOnWindows(name)) {
        const int dot = name.indexOf(QLatin1Char('.'));
        name.insert(dot < 0 ? name.size() : dot, QLatin1Char('_'));
    }
    return name;
}
