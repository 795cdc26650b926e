#pragma once

#include "profile/fileerror.h"

#include <QByteArray>
#include <QList>

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
// Reads a whole container from an open device; damaged when the header or any record is broken,
// and when it holds no record at all: every file of the program starts with one it needs.
tl::expected<RecordCursor, FileError> readContainer(QIODevice &in);
tl::expected<RecordCursor, FileError> readContainer(const QByteArray &bytes);
