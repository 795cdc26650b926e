#include "profile/taggedvalues.h"

#include <cstring>

namespace {

// An old-form string that claims far more bytes than its record holds is damage, not data:
// padding it with zeros would only make a huge string of nothing.
constexpr qint64 kMaxOldStringPadding = 65536;

// A leading U+FEFF is part of the text (names pasted from other programs carry it), not a
// byte-order mark to drop, so that every string reads back exactly as it was written. Qt's
// decoder drops one at the start; the marks there are taken over before it sees the rest.
QString decodeUtf8(const QByteArray &bytes)
{
    static const QByteArray kByteOrderMark("\xEF\xBB\xBF");
    QString text;
    int start = 0;
    while (bytes.mid(start, kByteOrderMark.size()) == kByteOrderMark) {
        text.append(QChar(0xFEFF));
        start += kByteOrderMark.size();
    }
    return text + QString::fromUtf8(bytes.constData() + start, bytes.size() - start);
}

void appendLittleEndian(QByteArray &out, quint64 value, int size)
{
    for (int i = 0; i < size; ++i)
        out.append(char((value >> (8 * i)) & 0xFF));
}

} // namespace

void TagWriter::writeInt(qint32 value)
{
    m_out.append(Tag::Int);
    appendLittleEndian(m_out, quint32(value), 4);
}

void TagWriter::writeBool(bool value)
{
    m_out.append(value ? Tag::True : Tag::False);
}

void TagWriter::writeDouble(double value)
{
    quint64 bits = 0;
    static_assert(sizeof(bits) == sizeof(value), "IEEE 754 double expected");
    std::memcpy(&bits, &value, sizeof(bits));
    m_out.append(Tag::Double);
    appendLittleEndian(m_out, bits, 8);
}

void TagWriter::writeString(const QString &value)
{
    const QByteArray utf8 = value.toUtf8();
    m_out.append(Tag::String);
    writeInt(utf8.size());
    m_out.append(utf8);
}

quint8 TagReader::byteAt(qint64 position) const
{
    if (position < 0 || position >= m_data.size())
        return 0;
    return quint8(m_data.at(int(position)));
}

bool TagReader::readTag(char &tag)
{
    if (atEnd())
        return false;
    tag = char(byteAt(m_position));
    ++m_position;
    return true;
}

quint64 TagReader::readLittleEndian(int size)
{
    quint64 value = 0;
    for (int i = 0; i < size; ++i)
        value |= quint64(byteAt(m_position + i)) << (8 * i);
    m_position += size;
    return value;
}

bool TagReader::readInt(qint32 &value)
{
    char tag = 0;
    if (!readTag(tag) || tag != Tag::Int)
        return false;
    value = qint32(quint32(readLittleEndian(4)));
    return true;
}

bool TagReader::readBool(bool &value)
{
    char tag = 0;
    if (!readTag(tag))
        return false;
    if (tag == Tag::True)
        value = true;
    else if (tag == Tag::False)
        value = false;
    else
        return false;
    return true;
}

bool TagReader::readDouble(double &value)
{
    char tag = 0;
    if (!readTag(tag) || tag != Tag::Double)
        return false;
    const quint64 bits = readLittleEndian(8);
    std::memcpy(&value, &bits, sizeof(value));
    return true;
}

bool TagReader::readString(QString &value)
{
    char tag = 0;
    if (!readTag(tag) || (tag != Tag::String && tag != Tag::OldString))
        return false;
    qint32 length = 0;
    if (!readInt(length) || length < 0)
        return false;

    const qint64 available = qBound(qint64(0), qint64(m_data.size() - m_position), qint64(length));
    const QByteArray bytes = m_data.mid(int(m_position), int(available));
    m_position += length;

    if (tag == Tag::String) {
        // Current form: the text ends at the first zero byte, if any.
        const int zero = bytes.indexOf('\0');
        value = decodeUtf8(zero < 0 ? bytes : bytes.left(zero));
        return true;
    }

    // Older form: bytes past the end of the record count as zeros.
    const qint64 missing = length - available;
    if (missing > kMaxOldStringPadding)
        return false;
    value = decodeUtf8(bytes + QByteArray(int(missing), '\0'));
    return true;
}
