#include "dialogs/cdisclaimeracceptance.h"

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

bool writeInto(const QString &directory, const QByteArray &bytes)
{
    if (directory.isEmpty())
        return false;
    return writeFileSafely(QDir(directory).filePath(QLatin1String(CDisclaimerAcceptance::kFileName)), bytes)
        == FileWriteError::None;
}

} // namespace

CDisclaimerAcceptance::CDisclaimerAcceptance(const QString &programDirectory, const QString &userDirectory)
    : m_programDirectory(programDirectory)
    , m_userDirectory(userDirectory)
{ }

bool CDisclaimerAcceptance::isAccepted() const
{
    for (const QString &directory : {m_programDirectory, m_userDirectory}) {
        if (!directory.isEmpty() && holdsAcceptance(QDir(directory).filePath(QLatin1String(kFileName))))
            return true;
    }
    return false;
}

void CDisclaimerAcceptance::writeAccepted() const
{
    const QByteArray bytes = acceptedBytes();
    if (writeInto(m_programDirectory, bytes))
        return;
    // The program's own directory is never created; the user's folder may not exist yet.
    if (!m_userDirectory.isEmpty() && QDir().mkpath(m_userDirectory))
        writeInto(m_userDirectory, bytes);
}
