#include "profile/defaultlibrary.h"

#include "profile/container.h"
#include "profile/profilerecord.h"
#include "profile/taggedvalues.h"

const char kLibraryMagic[] = "def";

const Profile *DefaultLibrary::profileAt(int position) const
{
    if (position < 0 || position >= count())
        return nullptr;
    return &m_profiles[size_t(position)];
}

const Profile *DefaultLibrary::profileForType(qint32 motorbikeType) const
{
    for (const Profile &profile : m_profiles) {
        if (profile.motorbikeType() == motorbikeType)
            return &profile;
    }
    return nullptr;
}

tl::expected<DefaultLibrary, FileError> loadDefaultLibrary(QIODevice &in, bool normalStart)
{
    Q_UNUSED(normalStart)
    tl::expected<RecordCursor, FileError> records = readContainer(in);
    if (!records)
        return tl::make_unexpected(records.error());

    const QByteArray header = records->next();
    TagReader reader(header);
    QString magic;
    qint32 format = 0;
    qint32 libraryValue = 0;
    if (!reader.readString(magic) || magic != QLatin1String(kLibraryMagic) || !reader.readInt(format)
        || !reader.readInt(libraryValue))
        return damagedFile();

    DefaultLibrary library;
    library.setLibraryValue(libraryValue);
    while (records->hasNext()) {
        tl::expected<Profile, FileError> profile = readRecord(records->next());
        if (!profile)
            return tl::make_unexpected(profile.error());
        library.append(*profile);
    }
    return library;
}

QByteArray defaultLibraryBytes(const DefaultLibrary &library)
{
    QList<QByteArray> records;
    QByteArray header;
    TagWriter writer(header);
    writer.writeString(QLatin1String(kLibraryMagic));
    writer.writeInt(kLibraryFormat);
    writer.writeInt(library.libraryValue());
    records.append(header);
    for (const Profile &profile : library.profiles()) {
        QByteArray record;
        writeRecord(profile, record);
        records.append(record);
    }
    return containerBytes(records);
}
