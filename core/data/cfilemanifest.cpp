#include "data/cfilemanifest.h"

#include "data/cdataholder.h"
#include "data/datafiles.h"

#include <QStringList>

CFileManifest::CFileManifest(const CDataHolder &data)
{
    // The names are the updater's: it compares exactly these entries with those of a release.
    m_entries = {
        {QStringLiteral("Sparkwright.exe"), kProgramVersion},
        {QLatin1String(kLibraryFileName), data.library()->libraryValue()},
        {QStringLiteral("lang_de.qm"), kProgramVersion},
        {QStringLiteral("Qt5PrintSupport.dll"), 1},
        {QLatin1String(kHintsFileName), data.hints()->catalogValue()},
    };
}

QByteArray CFileManifest::text() const
{
    QStringList parts;
    for (const Entry &entry : m_entries)
        parts.append(entry.fileName + QLatin1Char(';') + QString::number(entry.version));
    return parts.join(QLatin1Char('#')).toUtf8();
}

std::optional<CFileManifest::Entry> CFileManifest::parseEntry(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char(';'));
    if (parts.size() != 2)
        return std::nullopt;
    bool isNumber = false;
    const int version = parts.at(1).toInt(&isNumber, 10);
    if (!isNumber || version < 1)
        return std::nullopt;
    return Entry {parts.at(0), version};
}
