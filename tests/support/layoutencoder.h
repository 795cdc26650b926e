#pragma once

// The file layouts written out by hand, independent of the program's writers, so that the tests
// compare the program against the layout and not against itself; and the tests' own file access.
#include "profile/profile.h"
#include "profile/profilerecord.h"

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QStringList>

#include <array>
#include <cstring>

inline QByteArray littleEndian(quint64 value, int size)
{
    QByteArray out;
    for (int i = 0; i < size; ++i)
        out.append(char((value >> (8 * i)) & 0xFF));
    return out;
}

// Tagged values: 'i' and four bytes, 'B' or 'b' (a bool), 'd' and eight bytes, all lowest byte first;
// a string is 'Q' (older files: 'S'), its UTF-8 length as a tagged int, then the bytes.
inline QByteArray tInt(qint32 value)
{
    return 'i' + littleEndian(quint32(value), 4);
}

inline QByteArray tDouble(double value)
{
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof(bits));
    return 'd' + littleEndian(bits, 8);
}

inline QByteArray tString(const QString &value)
{
    const QByteArray utf8 = value.toUtf8();
    return 'Q' + tInt(utf8.size()) + utf8;
}

// One record: 'U', its length in three bytes, then its bytes.
inline QByteArray framed(const QByteArray &record)
{
    return 'U' + littleEndian(quint32(record.size()), 3) + record;
}

// The container: "cdi", a zero byte, the record count in two bytes, then the framed records.
inline QByteArray handContainer(const QList<QByteArray> &records)
{
    QByteArray out = QByteArray("cdi", 3) + '\0' + littleEndian(quint32(records.size()), 2);
    for (const QByteArray &record : records)
        out += framed(record);
    return out;
}

// The library's header record: its magic, format 1 and its value.
inline QByteArray libraryHeader(const QString &magic = QStringLiteral("def"), qint32 value = 7)
{
    return tString(magic) + tInt(1) + tInt(value);
}

// The hint catalog's record: value, format, hint count, language count, then per hint and
// language a title and a text.
inline QByteArray hintsRecord(
    qint32 catalogValue, qint32 format, qint32 hints, qint32 languages, const QStringList &texts)
{
    QByteArray out = tInt(catalogValue) + tInt(format) + tInt(hints) + tInt(languages);
    for (const QString &text : texts)
        out += tString(text);
    return out;
}

// The profile record, item by item in file order; the defaults are those of a new profile.
struct HandRecord
{
    qint32 version = 1, motorbikeType = 0, templateType = 0; // the template type only from version 1 on
    bool isCustom = true, auxFlag = false;
    QString name = QStringLiteral("Unnamed"), notes;
    qint32 flagByte = 0, voltage = 200;
    bool edgeSelectable = true, modeOne = false;
    double k1Rising = 0.0, k1Falling = 0.0;
    std::array<qint32, kMapPointCount> rpm {}, angle {};
    double k0 = 0.0, k1 = 0.0, k2 = 0.0;
    QStringList trailing {QString(), QString()};

    QByteArray bytes() const
    {
        const auto tBool = [](bool value) { return QByteArray(1, value ? 'B' : 'b'); };
        QByteArray out
            = tInt(version) + tInt(motorbikeType) + (version > 0 ? tInt(templateType) : QByteArray());
        out += tBool(isCustom) + tBool(auxFlag) + tString(name) + tString(notes);
        out += tInt(flagByte) + tInt(voltage) + tBool(edgeSelectable) + tBool(modeOne);
        out += tDouble(k1Rising) + tDouble(k1Falling);
        for (int i = 0; i < kMapPointCount; ++i)
            out += tInt(rpm[i]) + tInt(angle[i]);
        out += tDouble(k0) + tDouble(k1) + tDouble(k2) + tInt(trailing.size());
        for (const QString &text : trailing)
            out += tString(text);
        return out;
    }
};

// Every field of the profile that a file keeps, as the record holds it (checked byte for byte
// on its own), in hex: profiles compare equal when these compare equal.
inline QByteArray fieldsOf(const Profile &profile)
{
    QByteArray record;
    writeRecord(profile, record);
    return record.toHex();
}

inline IgnitionMap mapOf(
    const std::array<qint32, kMapPointCount> &rpm, const std::array<qint32, kMapPointCount> &angle)
{
    IgnitionMap map;
    for (int i = 0; i < kMapPointCount; ++i)
        map.setPoint(i, rpm[i], angle[i]);
    return map;
}

// Reads the bytes through one of the readers that take a device.
template<typename Read> auto readBytes(QByteArray bytes, Read read)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return read(buffer);
}

// The file's bytes; empty when it cannot be read.
inline QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Puts the bytes in the file's place; a null array leaves no file at all.
inline bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile::remove(path);
    QFile file(path);
    return bytes.isNull() || (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}
