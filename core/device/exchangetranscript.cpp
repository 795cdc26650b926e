#include "device/exchangetranscript.h"

#include "device/serialports.h"
#include "programversion.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

QString directionWord(ExchangeTranscript::Direction direction)
{
    switch (direction) {
    case ExchangeTranscript::Direction::Sent:
        return QCoreApplication::translate("ExchangeTranscript", "sent");
    case ExchangeTranscript::Direction::Received:
        return QCoreApplication::translate("ExchangeTranscript", "received");
    case ExchangeTranscript::Direction::Discarded:
        return QCoreApplication::translate("ExchangeTranscript", "discarded");
    case ExchangeTranscript::Direction::PortError:
        return QCoreApplication::translate("ExchangeTranscript", "port error");
    case ExchangeTranscript::Direction::Closed:
        return QCoreApplication::translate("ExchangeTranscript", "closed");
    }
    return QString();
}

QString hexId(quint16 id)
{
    return QStringLiteral("%1").arg(id, 4, 16, QLatin1Char('0'));
}

} // namespace

QString transcriptText(const ExchangeTranscript &transcript)
{
    const QString none = QCoreApplication::translate("ExchangeTranscript", "none");
    QStringList lines {QStringLiteral("Sparkwright %1").arg(QLatin1String(kProgramVersionText)),
        QCoreApplication::translate("ExchangeTranscript", "Port: %1").arg(portPath(transcript.portName)),
        QCoreApplication::translate("ExchangeTranscript", "Description: %1")
            .arg(transcript.description.isEmpty() ? none : transcript.description),
        QCoreApplication::translate("ExchangeTranscript", "USB IDs: %1")
            .arg(transcript.hasIds
                    ? hexId(transcript.vendorId) + QLatin1Char(':') + hexId(transcript.productId)
                    : none),
        QCoreApplication::translate("ExchangeTranscript", "Opened: %1")
            .arg(transcript.opened.toString(Qt::ISODateWithMs))};
    // The bytes start in one column whatever the language's words.
    int width = 0;
    for (const auto direction : {ExchangeTranscript::Direction::Sent, ExchangeTranscript::Direction::Received,
             ExchangeTranscript::Direction::Discarded, ExchangeTranscript::Direction::PortError,
             ExchangeTranscript::Direction::Closed})
        width = std::max(width, int(directionWord(direction).size()));
    for (const ExchangeTranscript::Entry &entry : transcript.entries) {
        QStringList rest;
        if (!entry.bytes.isEmpty())
            rest << QString::fromLatin1(entry.bytes.toHex(' '));
        if (entry.count > entry.bytes.size())
            rest << QCoreApplication::translate("ExchangeTranscript", "... %1 bytes in all").arg(entry.count);
        if (!entry.note.isEmpty())
            rest << entry.note;
        const QString word = directionWord(entry.direction);
        lines << QStringLiteral("%1 ms  ").arg(entry.ms, 6)
                + (rest.isEmpty()
                        ? word
                        : word.leftJustified(width) + QStringLiteral("  ") + rest.join(QLatin1Char(' ')));
    }
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}
