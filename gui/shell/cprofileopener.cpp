#include "shell/cprofileopener.h"

#include "profile/profilefile.h"
#include "profile/recentprofiles.h"
#include "shell/iuserprompts.h"

QString CProfileOpener::filter()
{
    return tr("CDI profiles") + QLatin1String(" (*.cdi)");
}

std::optional<Profile> CProfileOpener::open(QWidget *parent)
{
    const QString path = userPrompts().openFileName(parent, tr("Open CDI profile"), filter());
    if (path.isEmpty())
        return std::nullopt;
    return load(parent, path);
}

std::optional<Profile> CProfileOpener::load(QWidget *parent, const QString &path)
{
    const tl::expected<Profile, FileError> profile = readProfileFile(path);
    if (!profile) {
        userPrompts().warn(parent, tr("Open CDI profile"), tr("CDI profile could not be loaded."), tr("OK"));
        return std::nullopt;
    }
    CRecentProfiles().add(path, profile->name());
    return *profile;
}
