#pragma once

#include <QByteArray>

// The frame every request and the longer answers travel in: header 4D F6 68, payload from byte 3,
// command at 48, scrambling value at 49 and an XOR checksum in the last byte.
namespace DeviceFrame {
constexpr int kLength = 51;
constexpr int kPingResponseLength = 25;
constexpr int kNonceOffset = 3;
constexpr int kTypeOffset = 3;
constexpr int kPayloadBegin = 4;
constexpr int kPayloadEnd = 48; // first byte after the scrambled payload
constexpr int kCommandOffset = 48;
constexpr int kScramblingOffset = 49;
constexpr int kChecksumOffset = 50;

// A ping's answer: the header, the nonce echoed, the firmware in up to nine characters padded
// with zeros, the serial number in three bytes (most significant first), zeros, the checksum.
constexpr int kFirmwareOffset = 4;
constexpr int kFirmwareLength = 9;
constexpr int kSerialOffset = 13;
constexpr int kSerialLength = 3;

// Set in a profile's flag byte (DeviceImage::kFlagsOffset): the CDI answers a read request with
// the profile, else it stays silent.
constexpr quint8 kReimportBit = 0x20;

enum Command : quint8
{
    Program = 0,
    Ping = 1,
    Read = 2
};

// XOR of all bytes but the last; 0 for frames of fewer than two bytes.
quint8 checksum(const QByteArray &frame);
// Recomputes the last byte after the frame was changed.
void sealChecksum(QByteArray &frame);
bool hasHeader(const QByteArray &frame);
// A fresh 51-byte frame: header, zero payload, the command and its checksum.
QByteArray build(Command command);

// The low byte of a random number, raised to 3: the scrambling divides by it.
quint8 scramblingValue(quint32 random);
// Adds the key stream derived from the type byte and the scrambling value to bytes 4 to 47
// and reseals; unscramble takes it off again. Both only touch frames of full length.
void scramble(QByteArray &frame);
void unscramble(QByteArray &frame);
} // namespace DeviceFrame
