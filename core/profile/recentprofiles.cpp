#include "profile/recentprofiles.h"

#include <QFileInfo>
#include <QSettings>

#include <memory>

namespace {

const char kGroup[] = "recentProfiles";

std::unique_ptr<QSettings> openSettings(const QString &file)
{
    // The program's own settings, beside the last folder used.
    if (file.isEmpty())
        return std::make_unique<QSettings>();
    return std::make_unique<QSettings>(file, QSettings::IniFormat);
}

} // namespace

CRecentProfiles::CRecentProfiles(const QString &settingsFile)
    : m_settingsFile(settingsFile)
{ }

QList<RecentProfile> CRecentProfiles::entries() const
{
    const std::unique_ptr<QSettings> settings = openSettings(m_settingsFile);
    QList<RecentProfile> list;
    const int size = settings->beginReadArray(QLatin1String(kGroup));
    for (int i = 0; i < size && list.size() < kLimit; ++i) {
        settings->setArrayIndex(i);
        RecentProfile entry {settings->value(QStringLiteral("path")).toString(),
            settings->value(QStringLiteral("name")).toString(),
            settings->value(QStringLiteral("when")).toDateTime()};
        if (!entry.path.isEmpty() && QFileInfo(entry.path).isFile())
            list.append(entry);
    }
    settings->endArray();
    if (list.size() != size)
        store(list);
    return list;
}

void CRecentProfiles::add(const QString &path, const QString &name, const QDateTime &when)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    QList<RecentProfile> list = entries();
    for (int i = list.size() - 1; i >= 0; --i) {
        if (list.at(i).path == absolute)
            list.removeAt(i);
    }
    list.prepend({absolute, name, when});
    while (list.size() > kLimit)
        list.removeLast();
    store(list);
}

void CRecentProfiles::store(const QList<RecentProfile> &entries) const
{
    const std::unique_ptr<QSettings> settings = openSettings(m_settingsFile);
    settings->remove(QLatin1String(kGroup));
    settings->beginWriteArray(QLatin1String(kGroup), entries.size());
    for (int i = 0; i < entries.size(); ++i) {
        settings->setArrayIndex(i);
        settings->setValue(QStringLiteral("path"), entries.at(i).path);
        settings->setValue(QStringLiteral("name"), entries.at(i).name);
        settings->setValue(QStringLiteral("when"), entries.at(i).when);
    }
    settings->endArray();
}
