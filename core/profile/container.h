#pragma once

#include <QByteArray>
#include <QList>

#include <optional>

class QIODevice;

// The "cdi" container that every data file of the program uses: a six-byte header with the
// record count, then each record framed by "U" and its 24-bit little-endian length.
constexpr int kContainerHeaderSize = 6;
constexpr int kRecordHeaderSize = 4;
constexpr char kRecordMarker = 'U';

// Consumes the records of a container in file order.
class RecordCursor
{
public:
    explicit RecordCursor(QList<QByteArray> records)
        : m_records(std::move(records))
    { }

    bool hasNext() const { return m_next < m_records.size(); }
    QByteArray next() { return hasNext() ? m_records.at(m_next++) : QByteArray(); }
    int count() const { return m_records.size(); }

private:
    QList<QByteArray> m_records;
    int m_next = 0;
};

// The container's bytes for the given records.
QByteArray containerBytes(const QList<QByteArray> &records);
// Writes the container to an open device; false when the device took fewer bytes.
bool writeContainer(const QList<QByteArray> &records, QIODevice &out);
// Reads a whole container from an open device; nothing when the header or any record is broken.
std::optional<RecordCursor> readContainer(QIODevice &in);
std::optional<RecordCursor> readContainer(const QByteArray &bytes);
