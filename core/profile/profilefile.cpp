#include "profile/profilefile.h"

#include "profile/container.h"
#include "profile/profilerecord.h"

QByteArray profileFileBytes(const Profile &profile)
{
    QByteArray record;
    writeRecord(profile, record);
    return containerBytes({record});
}

tl::expected<Profile, FileError> readProfileFile(QIODevice &in)
{
    tl::expected<RecordCursor, FileError> records = readContainer(in);
    if (!records)
        return tl::make_unexpected(records.error());
    return readRecord(records->next());
}

tl::expected<Profile, FileError> readProfileFile(const QString &path)
{
    return readFileWith(path, [](QIODevice &in) { return readProfileFile(in); });
}

tl::expected<void, FileError> saveProfileFile(const Profile &profile, const QString &path)
{
    return writeFileSafely(path, profileFileBytes(profile));
}
