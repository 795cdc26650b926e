#pragma once

#include "programversion.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>

class CDataHolder;

// The program's files with their version numbers, in a fixed order. The version query prints
// it and the updater receives it, to decide which files it has to replace.
class CFileManifest
{
public:
    struct Entry
    {
        QString fileName;
        int version = 0;

        bool operator==(const Entry &other) const
        {
            return fileName == other.fileName && version == other.version;
        }
    };

    // The translation carries the program's version number too.
    static constexpr int kProgramVersion = kProgramVersionNumber;

    // Both data files must be loaded.
    explicit CFileManifest(const CDataHolder &data);

    const QVector<Entry> &entries() const { return m_entries; }
    // "name;version" per entry, joined by "#", UTF-8.
    QByteArray text() const;

    // One "name;version" entry; nothing unless it has exactly two parts and a version of at least 1.
    static std::optional<Entry> parseEntry(const QString &text);

private:
    QVector<Entry> m_entries;
};
