#include "data/cdisclaimeracceptance.h"

#include "profile/container.h"
#include "profile/safefilewriter.h"
#include "profile/taggedvalues.h"

#include <QDir>
#include <QFile>

const char CDisclaimerAcceptance::kFileName[] = "disclaimer.a";

namespace {

// A single record with the same frame as the records of a container, without the container's
// header: the marker "U" and the record's length in three bytes, lowest first.
constexpr int kLengthOffset = 1;
constexpr int kLengthSize = 3;
constexpr qint32 kAccepted = 1;

QByteArray acceptedBytes()
{
    QByteArray record;
    TagWriter(record).writeInt(kAccepted);
    QByteArray out;
    out.append(kRecordMarker);
    for (int i = 0; i < kLengthSize; ++i)
        out.append(char((record.size() >> (8 * i)) & 0xFF));
    return out + record;
}

bool holdsAcceptance(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray header = file.read(kRecordHeaderSize);
    if (header.size() != kRecordHeaderSize || header.at(0) != kRecordMarker)
        return false;
    qint64 length = 0;
    for (int i = 0; i < kLengthSize; ++i)
        length |= qint64(quint8(header.at(kLengthOffset + i))) << (8 * i);
    const QByteArray record = file.read(length);
    if (record.size() != length)
        return false;

    TagReader reader(record);
    qint32 value = 0;
    return reader.readInt(value) && value > 0;
}

} // namespace

CDisclaimerAcceptance::CDisclaimerAcceptance(const QString &userDirectory)
    : m_userDirectory(userDirectory)
{ }

bool CDisclaimerAcceptance::isAccepted() const
{
    return !m_userDirectory.isEmpty()
        && holdsAcceptance(QDir(m_userDirectory).filePath(QLatin1String(kFileName)));
}

void CDisclaimerAcceptance::writeAccepted() const
{
    // The folder may not exist yet on a first start.
    if (!m_userDirectory.isEmpty() && QDir().mkpath(m_userDirectory))
        (void)writeFileSafely(QDir(m_userDirectory).filePath(QLatin1String(kFileName)), acceptedBytes());
}
