#include "shell/cprofilefiles.h"

#include "profile/fileerror.h"
#include "profile/profilefile.h"
#include "profile/recentprofiles.h"
#include "profile/safefilewriter.h"
#include "shell/iuserprompts.h"

QString CProfileFiles::filter()
{
    return tr("CDI profiles") + QLatin1String(" (*.cdi)");
}

QString CProfileFiles::chooseToOpen(QWidget *parent)
{
    return userPrompts().openFileName(parent, tr("Open CDI profile"), filter());
}

std::optional<Profile> CProfileFiles::open(QWidget *parent)
{
    const QString path = chooseToOpen(parent);
    if (path.isEmpty())
        return std::nullopt;
    return load(parent, path);
}

std::optional<Profile> CProfileFiles::load(QWidget *parent, const QString &path)
{
    const tl::expected<Profile, FileError> profile = readProfileFile(path);
    if (!profile) {
        userPrompts().warn(parent, tr("Open CDI profile"), tr("CDI profile could not be loaded."), tr("OK"));
        return std::nullopt;
    }
    CRecentProfiles().add(path, profile->name());
    return *profile;
}

bool CProfileFiles::write(QWidget *parent, const QString &path, const QString &title,
    const QString &failureHeading, const QByteArray &bytes)
{
    const tl::expected<void, FileError> written = bytes.isEmpty()
        ? tl::make_unexpected(FileError {FileError::Kind::WriteFailed, QString()})
        : writeFileSafely(path, bytes);
    if (!written) {
        userPrompts().warn(
            parent, title, failureHeading + QLatin1String(":\n\n") + fileErrorText(written.error()), tr("OK"));
        return false;
    }
    return true;
}
