#include "profile/profilefile.h"

#include "profile/container.h"
#include "profile/profilerecord.h"

#include <QFile>

QByteArray profileFileBytes(const Profile &profile)
{
    QByteArray record;
    writeRecord(profile, record);
    return containerBytes({record});
}

std::optional<Profile> readProfileFile(QIODevice &in)
{
    std::optional<RecordCursor> records = readContainer(in);
    if (!records || !records->hasNext())
        return std::nullopt;
    return readRecord(records->next());
}

std::optional<Profile> readProfileFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return readProfileFile(file);
}

tl::expected<void, FileError> saveProfileFile(const Profile &profile, const QString &path)
{
    return writeFileSafely(path, profileFileBytes(profile));
}
