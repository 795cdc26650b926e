#include "profile/container.h"

#include <QBuffer>
#include <QIODevice>

namespace {

constexpr char kMagic[] = {'c', 'd', 'i'};

} // namespace

QByteArray containerBytes(const QList<QByteArray> &records)
{
    QByteArray out;
    out.append(kMagic, 3);
    out.append('\0');
    const quint16 count = quint16(records.size());
    out.append(char(count & 0xFF));
    out.append(char(count >> 8));
    for (const QByteArray &record : records) {
        const quint32 length = quint32(record.size());
        out.append(kRecordMarker);
        out.append(char(length & 0xFF));
        out.append(char((length >> 8) & 0xFF));
        out.append(char((length >> 16) & 0xFF));
        out.append(record);
    }
    return out;
}

tl::expected<RecordCursor, FileError> readContainer(QIODevice &in)
{
    const QByteArray header = in.read(kContainerHeaderSize);
    if (header.size() != kContainerHeaderSize || !header.startsWith(QByteArray(kMagic, 3)))
        return damagedFile();
    // Byte 3 is reserved and deliberately ignored.
    const int count = quint8(header.at(4)) | (quint8(header.at(5)) << 8);
    if (count == 0)
        return damagedFile();

    QList<QByteArray> records;
    records.reserve(count);
    for (int i = 0; i < count; ++i) {
        const QByteArray recordHeader = in.read(kRecordHeaderSize);
        if (recordHeader.size() != kRecordHeaderSize || recordHeader.at(0) != kRecordMarker)
            return damagedFile();
        const qint64 length = quint8(recordHeader.at(1)) | (quint8(recordHeader.at(2)) << 8)
            | (quint8(recordHeader.at(3)) << 16);
        // Never allocate more than the device can still deliver.
        if (!in.isSequential() && in.size() - in.pos() < length)
            return damagedFile();
        QByteArray record = in.read(length);
        if (record.size() != length)
            return damagedFile();
        records.append(record);
    }
    return RecordCursor(records);
}

tl::expected<RecordCursor, FileError> readContainer(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    if (!buffer.open(QIODevice::ReadOnly))
        return damagedFile();
    return readContainer(buffer);
}
