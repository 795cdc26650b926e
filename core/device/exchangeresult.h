#pragma once

#include "profile/deviceimage.h"
#include "profile/profile.h"

#include <QMetaType>
#include <QSerialPort>
#include <QString>

#include <optional>

// The three things the program asks of a CDI.
enum class DeviceExchange
{
    Ping,
    Import,
    Program,
    // The profile the CDI holds, read before another is written over it, to show what changes.
    ReadHeld,
    // The profile read back right after programming, to compare with what was sent.
    ReadBack
};

// How one exchange with the CDI ended, as data: the kind of outcome and what the CDI reported.
// The program's pages and the command-line tool word it alike (exchangewording.h).
struct ExchangeResult
{
    enum class Kind
    {
        Succeeded,
        NoResponse, // not a single byte arrived
        WrongLength, // more or fewer bytes than the answer has
        BadHeader,
        BadChecksum,
        WrongNonce, // a ping answer that does not echo the request's nonce
        WrongEcho, // a programming answer other than the profile sent, unscrambled
        UnknownType, // an imported profile of a motorbike type without a factory template
        BadValue, // an imported profile whose map or voltage breaks the device's limits
        PortLost, // the bridge went away, or the request could not be written to it
        ReadBackDiffers, // a programming echoed right, but the CDI gives back other bytes than were sent
        ReadBackFailed, // a programming echoed right, but reading it back did not succeed
    };
    DeviceExchange exchange = DeviceExchange::Ping;
    Kind kind = Kind::NoResponse;
    // What a ping answer reports.
    QString firmware;
    quint32 serialNumber = 0;
    // The profile read by an import, or written by a programming.
    std::optional<Profile> profile;
    // UnknownType: the index of the type in the library (the type byte less one).
    int typeIndex = 0;
    // BadValue: the device image's own account of the value, such as "invalid voltage: 99".
    QString detail;
    // The port the exchange ran on, as the bridge opened it.
    QString portName;
    // PortLost: whether the request, or a part of it, may have reached the CDI before the line
    // went dead. Nothing was sent when the line broke before the request was due.
    bool requestSent = true;

    bool succeeded() const { return kind == Kind::Succeeded; }

    // ReadHeld and ReadBack: the frame as the CDI answered. Program: the frame sent, unscrambled.
    QByteArray image;
    // A programming that succeeded: whether it was read back. The CDI gives a profile back only
    // when it was programmed with reimporting allowed.
    enum class ReadBack
    {
        NotTried,
        NotAllowed,
        Verified
    };
    ReadBack readBack = ReadBack::NotTried;
    // ReadBackDiffers: where what the CDI gives back differs from what was sent.
    std::vector<ImageDifference> differences;
    // ReadBackFailed: how the read ended.
    Kind readBackFailure = Kind::NoResponse;
};
Q_DECLARE_METATYPE(ExchangeResult)

// Before a profile is written: what the CDI holds now and what writing changes. Without an
// answer to the read (a CDI programmed without reimporting stays silent) nothing is compared.
struct ProgrammingPreview
{
    Profile profile; // the one to be written
    bool read = false;
    ExchangeResult::Kind readKind = ExchangeResult::Kind::NoResponse;
    // Held, then to be written.
    std::vector<ImageDifference> differences;
};
Q_DECLARE_METATYPE(ProgrammingPreview)

// Why a device action did not even start.
struct DeviceRefusal
{
    enum class Kind
    {
        InvalidMap, // the profile's map breaks its limits: it is never sent
        Busy, // another exchange still runs
        CannotOpen,
        InUse, // another program holds the port
        NoPermission, // the device node is closed to this user
    };
    Kind kind = Kind::Busy;
    // CannotOpen and the two below: the port, with the port's own account of the failure.
    QString portName;
    QString portError;
    QSerialPort::SerialPortError error = QSerialPort::NoError;
    // InUse: the program holding the port and its process, where its lock file names one.
    QString holder {};
    qint64 holderPid = 0;
    // NoPermission: the device node as the system describes it, such as "crw-rw----" for its
    // access rights, and whether it is a CP210x bridge, which the package's udev rule opens up.
    QString node {};
    QString owner {};
    QString group {};
    QString mode {};
    bool groupMayUse = false;
    bool bridge = false;
};
Q_DECLARE_METATYPE(DeviceRefusal)
