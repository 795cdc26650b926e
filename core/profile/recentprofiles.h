#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

// The profile files the user opened or saved lately, newest first, kept in the user's settings
// between runs. Files that have gone since are left out and forgotten.
struct RecentProfile
{
    QString path;
    QString name;
    QDateTime when;
};

class CRecentProfiles
{
public:
    static constexpr int kLimit = 8;

    // The settings file; empty for the user's own.
    explicit CRecentProfiles(const QString &settingsFile = QString());

    QList<RecentProfile> entries() const;
    // Puts the file first, replacing an older entry for it, and drops the oldest beyond the limit.
    void add(const QString &path, const QString &name, const QDateTime &when = QDateTime::currentDateTime());

private:
    void store(const QList<RecentProfile> &entries) const;

    QString m_settingsFile;
};
