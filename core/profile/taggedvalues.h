#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

// Every file of the program is a sequence of tagged values: a one-byte tag, then the value,
// multi-byte numbers little-endian.
namespace Tag {
constexpr char Int = 'i';
constexpr char True = 'B';
constexpr char False = 'b';
constexpr char Double = 'd';
constexpr char String = 'Q';
constexpr char OldString = 'S';
} // namespace Tag

// Appends tagged values to a byte buffer.
class TagWriter
{
public:
    explicit TagWriter(QByteArray &out)
        : m_out(out)
    { }

    void writeInt(qint32 value);
    void writeBool(bool value);
    void writeDouble(double value);
    // Written as "Q", the UTF-8 byte length as a tagged int, then the bytes.
    void writeString(const QString &value);

private:
    QByteArray &m_out;
};

// Reads tagged values from a byte buffer. Every read is bounds-checked: a tag past the end
// fails, while the bytes of a number past the end read as zero (older files were cut that way).
class TagReader
{
public:
    explicit TagReader(const QByteArray &data)
        : m_data(data)
    { }

    bool readInt(qint32 &value);
    bool readBool(bool &value);
    bool readDouble(double &value);
    // Accepts both the current "Q" form and the older "S" form.
    bool readString(QString &value);

    qint64 position() const { return m_position; }
    bool atEnd() const { return m_position >= m_data.size(); }

private:
    bool readTag(char &tag);
    quint8 byteAt(qint64 position) const;
    quint64 readLittleEndian(int size);

    const QByteArray &m_data;
    qint64 m_position = 0;
};
