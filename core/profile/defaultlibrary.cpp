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

std::unique_ptr<DefaultLibrary> loadDefaultLibrary(QIODevice &in, bool normalStart)
{
    Q_UNUSED(normalStart)
    std::optional<RecordCursor> records = readContainer(in);
    if (!records || !records->hasNext())
        return nullptr;

    const QByteArray header = records->next();
    TagReader reader(header);
    QString magic;
    qint32 format = 0;
    qint32 libraryValue = 0;
    if (!reader.readString(magic) || magic != QLatin1String(kLibraryMagic) || !reader.readInt(format)
        || !reader.readInt(libraryValue))
        return nullptr;

    auto library = std::make_unique<DefaultLibrary>();
    library->setLibraryValue(libraryValue);
    while (records->hasNext()) {
        std::optional<Profile> profile = readRecord(records->next());
        if (!profile)
            return nullptr;
        library->append(*profile);
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
