#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QMetaType>
#include <QString>

#include <vector>

// What went over the line in one exchange, for whoever helps the user find a fault: the port as
// the system lists it and every frame with its time since the port was opened. The progress
// page's details and the command-line tool's --verbose show it as transcriptText() words it.
struct ExchangeTranscript
{
    enum class Direction
    {
        Sent,
        Received,
        // Arrived before the request left, so it cannot be its answer.
        Discarded,
        PortError,
        Closed
    };
    struct Entry
    {
        qint64 ms = 0;
        Direction direction = Direction::Sent;
        QByteArray bytes;
        // PortError: the port's own account.
        QString note;
        // All the bytes that came, of which the first kShownBytes are kept.
        qint64 count = 0;
    };
    static constexpr int kShownBytes = 256;

    QString portName;
    QString description;
    bool hasIds = false;
    quint16 vendorId = 0;
    quint16 productId = 0;
    QDateTime opened;
    std::vector<Entry> entries;
};
Q_DECLARE_METATYPE(ExchangeTranscript)

// Plain text: a header with the program's version, the port, its description and USB IDs, then
// one line per entry with the milliseconds since the opening, the direction and the bytes in hex.
QString transcriptText(const ExchangeTranscript &transcript);
