#include "device/exchangewording.h"

#include "device/serialports.h"
#include "profile/profilecomparison.h"
#include "render/bracemarkup.h"

#include <QCoreApplication>
#include <QLocale>

// Every text here is translated in the context "ExchangeWording", the program's and the tool's alike.

namespace {

// Why a read inside a longer message failed, in a few words.
QString readFailureReason(ExchangeResult::Kind kind)
{
    switch (kind) {
    case ExchangeResult::Kind::NoResponse:
        return QCoreApplication::translate("ExchangeWording", "the CDI did not answer");
    case ExchangeResult::Kind::PortLost:
        return QCoreApplication::translate("ExchangeWording", "the connection to the CDI was lost");
    default:
        return QCoreApplication::translate("ExchangeWording", "CDI sent an invalid response");
    }
}

// Firmware and serial number stand out in the highlight colour of the descriptive texts.
QString highlighted(const QString &value)
{
    return withBraceMarkup(QLatin1Char('{') + value.toHtmlEscaped() + QLatin1Char('}'));
}

// The profile's name in bold in place of the text's "%". Not %1: a name may itself hold a "%1".
QString withProfileName(QString text, const ExchangeResult &result)
{
    const int placeholder = text.indexOf(QLatin1Char('%'));
    if (placeholder >= 0)
        text.replace(placeholder, 1, result.profile ? result.profile->name().toHtmlEscaped() : QString());
    return text;
}

// One difference a line, below the sentence that says which way they read.
QString differenceLines(
    const std::vector<ImageDifference> &differences, const DefaultLibrary *library = nullptr)
{
    QString lines;
    for (const ImageDifference &difference : differences)
        lines += QStringLiteral("<br>") + differenceText(difference, library).toHtmlEscaped();
    return lines;
}

bool isReadBack(const ExchangeResult &result)
{
    return result.kind == ExchangeResult::Kind::ReadBackDiffers
        || result.kind == ExchangeResult::Kind::ReadBackFailed
        || (result.succeeded() && result.readBack != ExchangeResult::ReadBack::NotTried);
}

// The echo proved the frame arrived; reading back tells whether the CDI also holds it.
ExchangeWords readBackWords(const ExchangeResult &result, const DefaultLibrary *library)
{
    switch (result.kind) {
    case ExchangeResult::Kind::ReadBackDiffers:
        return {QCoreApplication::translate("ExchangeWording", "Verification failed"),
            withProfileName(
                QCoreApplication::translate("ExchangeWording",
                    "Your CDI echoed the profile <b>%</b>, but it gives back other values than were "
                    "sent (sent → read back):"),
                result)
                + differenceLines(result.differences, library) + QStringLiteral("<br><br>")
                + QCoreApplication::translate("ExchangeWording",
                    "The CDI may be programmed improperly and should not be used in its current state.")};
    case ExchangeResult::Kind::ReadBackFailed: {
        return {QCoreApplication::translate("ExchangeWording", "Programmed, not verified"),
            withProfileName(
                QCoreApplication::translate("ExchangeWording",
                    "Your CDI echoed the profile <b>%</b>, so it received it, but reading it back "
                    "failed (%1). Whether the CDI holds it is not known: program it again.")
                    .arg(readFailureReason(result.readBackFailure)),
                result)};
    }
    default:
        break;
    }
    const QString programmed = withProfileName(QCoreApplication::translate("ExchangeWording",
                                                   "Your CDI is now programmed with the profile <b>%</b>."),
        result);
    if (result.readBack == ExchangeResult::ReadBack::Verified)
        return {QCoreApplication::translate("ExchangeWording", "Programmed and verified"),
            programmed + QLatin1Char(' ')
                + QCoreApplication::translate(
                    "ExchangeWording", "Read back from the CDI, it matches what was sent byte for byte.")};
    return {QCoreApplication::translate("ExchangeWording", "Programming successful"),
        programmed + QLatin1Char(' ')
            + QCoreApplication::translate("ExchangeWording",
                "The echo confirmed receipt, but the profile cannot be read back: it was programmed "
                "without allowing reimport.")};
}

// Every failed programming may have left the CDI half programmed, so all carry the same warning.
ExchangeWords programmingWords(const ExchangeResult &result, const DefaultLibrary *library)
{
    if (isReadBack(result))
        return readBackWords(result, library);
    if (!result.succeeded()) {
        return {QCoreApplication::translate("ExchangeWording", "Programming failed"),
            QCoreApplication::translate("ExchangeWording",
                "An error occurred during data transmission. The CDI may be programmed improperly and should "
                "not be used in its current state.")};
    }
    // Not %1: a profile name may itself hold a "%1".
    QString text = QCoreApplication::translate(
        "ExchangeWording", "Your CDI is now programmed with the profile <b>%</b>.");
    const int placeholder = text.indexOf(QLatin1Char('%'));
    if (placeholder >= 0)
        text.replace(placeholder, 1, result.profile ? result.profile->name().toHtmlEscaped() : QString());
    return {QCoreApplication::translate("ExchangeWording", "Programming successful"), text};
}

// Rich text even in a message box, which takes text without a tag in its first line as plain.
QString paragraph(const QString &richText)
{
    return QStringLiteral("<p>") + richText + QStringLiteral("</p>");
}

// What gives this user the node. The package's udev rule does for the bridge, without a new
// login; otherwise the node's group, if the group may use it; else only its owner may.
QString permissionAdvice(const DeviceRefusal &refusal)
{
    if (refusal.bridge)
        return QCoreApplication::translate("ExchangeWording",
            "The udev rule of the Sparkwright package gives you the bridge without a new login: install "
            "the package, or copy 70-sparkwright-cp210x.rules to /usr/lib/udev/rules.d, then plug the "
            "bridge in again.");
    if (refusal.groupMayUse) {
        // The command is never broken across lines: it is typed as it stands.
        const QString command
            = QStringLiteral("<nobr>sudo usermod -aG %1 $USER</nobr>").arg(refusal.group.toHtmlEscaped());
        return QCoreApplication::translate(
            "ExchangeWording", "Add your account to this group, then log out and in again: %1")
            .arg(command);
    }
    return QCoreApplication::translate("ExchangeWording", "Only its owner %1 may use it.")
        .arg(refusal.owner.toHtmlEscaped());
}

QString failureTitle(DeviceExchange exchange)
{
    switch (exchange) {
    case DeviceExchange::Ping:
        return QCoreApplication::translate("ExchangeWording", "Test failed");
    case DeviceExchange::Import:
        return QCoreApplication::translate("ExchangeWording", "Import failed");
    case DeviceExchange::ReadHeld:
    case DeviceExchange::ReadBack:
        return QCoreApplication::translate("ExchangeWording", "Reading failed");
    case DeviceExchange::Program:
        break;
    }
    return QCoreApplication::translate("ExchangeWording", "Programming failed");
}

// Silence and a dead line are the connection's, not the CDI's: the words say where to look. On
// the wire nothing answering is a request written without a byte coming back; a lost connection
// is the port failing (a pulled-out bridge, a line hung up).
ExchangeWords connectionWords(const ExchangeResult &result)
{
    const QString port = portPath(result.portName).toHtmlEscaped();
    QString text;
    if (result.kind == ExchangeResult::Kind::PortLost) {
        text = QCoreApplication::translate("ExchangeWording",
            "The connection to the CDI on %1 was lost. Check the cable and the USB bridge, then try again.")
                   .arg(port);
        // A programming cut off after its request may have left the CDI half programmed.
        if (result.exchange == DeviceExchange::Program && result.requestSent)
            text += QLatin1Char(' ')
                + QCoreApplication::translate("ExchangeWording",
                    "The CDI may be programmed improperly and should not be used in its current state.");
        else if (result.exchange == DeviceExchange::Program)
            text += QLatin1Char(' ')
                + QCoreApplication::translate(
                    "ExchangeWording", "Nothing had been sent yet, so the CDI has not been changed.");
    } else if (result.exchange == DeviceExchange::Import) {
        // A CDI programmed without reimport stays silent when asked for its profile.
        text = QCoreApplication::translate("ExchangeWording",
            "Nothing answered on %1. The CDI may have been programmed not to give its profile back; "
            "otherwise no CDI seems to be connected to this port.")
                   .arg(port);
    } else {
        text = QCoreApplication::translate(
            "ExchangeWording", "Nothing answered on %1. No CDI seems to be connected to this port.")
                   .arg(port);
    }
    return {failureTitle(result.exchange), text};
}

} // namespace

ExchangeWords activityWords(DeviceExchange exchange)
{
    switch (exchange) {
    case DeviceExchange::Ping:
        return {QCoreApplication::translate("ExchangeWording", "Testing"),
            QCoreApplication::translate("ExchangeWording", "Sending ping to CDI")};
    case DeviceExchange::Import:
        return {QCoreApplication::translate("ExchangeWording", "Importing"),
            QCoreApplication::translate("ExchangeWording", "Requesting data from CDI")};
    case DeviceExchange::Program:
        return {QCoreApplication::translate("ExchangeWording", "Programming"),
            QCoreApplication::translate("ExchangeWording", "Sending profile data to the CDI")};
    case DeviceExchange::ReadHeld:
        return {QCoreApplication::translate("ExchangeWording", "Reading the CDI"),
            QCoreApplication::translate("ExchangeWording", "Asking the CDI for the profile it holds")};
    case DeviceExchange::ReadBack:
        return {QCoreApplication::translate("ExchangeWording", "Verifying"),
            QCoreApplication::translate("ExchangeWording", "Reading the profile back from the CDI")};
    }
    return {};
}

QString waitingWords()
{
    return QCoreApplication::translate("ExchangeWording", "Waiting for response");
}

ExchangeWords resultWords(const ExchangeResult &result, const DefaultLibrary *library)
{
    if (result.kind == ExchangeResult::Kind::NoResponse || result.kind == ExchangeResult::Kind::PortLost)
        return connectionWords(result);
    if (result.exchange == DeviceExchange::Program)
        return programmingWords(result, library);
    switch (result.kind) {
    case ExchangeResult::Kind::Succeeded:
        if (result.exchange == DeviceExchange::Import)
            return {QCoreApplication::translate("ExchangeWording", "Import OK"),
                QCoreApplication::translate(
                    "ExchangeWording", "Imported profile data will be sent to editor shortly.")};
        return {QCoreApplication::translate("ExchangeWording", "Test successful"),
            QCoreApplication::translate("ExchangeWording",
                "Your CDI responded as expected. Firmware %1 and serial number %2 were reported.")
                .arg(highlighted(result.firmware), highlighted(QString::number(result.serialNumber)))};
    case ExchangeResult::Kind::WrongNonce:
        return {QCoreApplication::translate("ExchangeWording", "Test failed"),
            QCoreApplication::translate(
                "ExchangeWording", "Your CDI responded but an error occurred during data transmission.")};
    case ExchangeResult::Kind::UnknownType:
        return {QCoreApplication::translate("ExchangeWording", "Import failed"),
            QCoreApplication::translate("ExchangeWording",
                "Imported profile data corresponds to an invalid or unknown motorbike type")
                + QStringLiteral(" (index=%1).").arg(result.typeIndex)};
    case ExchangeResult::Kind::BadValue:
        // The double blank is how users have always seen it.
        return {QCoreApplication::translate("ExchangeWording", "Import failed"),
            QCoreApplication::translate("ExchangeWording", "Received invalid profile data ")
                + QStringLiteral(" (") + result.detail + QStringLiteral(").")};
    case ExchangeResult::Kind::NoResponse:
    case ExchangeResult::Kind::WrongLength:
    case ExchangeResult::Kind::BadHeader:
    case ExchangeResult::Kind::BadChecksum:
    case ExchangeResult::Kind::WrongEcho:
    case ExchangeResult::Kind::PortLost:
    case ExchangeResult::Kind::ReadBackDiffers:
    case ExchangeResult::Kind::ReadBackFailed:
        break;
    }
    return {failureTitle(result.exchange),
        QCoreApplication::translate("ExchangeWording", "CDI sent an invalid response")};
}

QString importSavedWords(const QString &path)
{
    return QCoreApplication::translate("ExchangeWording", "The imported profile was saved as %1.")
        .arg(path.toHtmlEscaped());
}

QString refusalWords(const DeviceRefusal &refusal)
{
    switch (refusal.kind) {
    case DeviceRefusal::Kind::InvalidMap:
        return QCoreApplication::translate("ExchangeWording",
            "The ignition map of this profile is not valid. Correct it before programming the CDI.");
    case DeviceRefusal::Kind::Busy:
        // Deliberately untranslated: a last guard the pages never let the user reach.
        return QStringLiteral("busy");
    case DeviceRefusal::Kind::InUse:
        if (refusal.holder.isEmpty())
            return paragraph(QCoreApplication::translate(
                "ExchangeWording", "%1 is in use by another program. Close it and try again.")
                                 .arg(refusal.portName.toHtmlEscaped()));
        return paragraph(QCoreApplication::translate(
            "ExchangeWording", "%1 is in use by another program: %2 (process %3). Close it and try again.")
                             .arg(refusal.portName.toHtmlEscaped(), refusal.holder.toHtmlEscaped())
                             .arg(refusal.holderPid));
    case DeviceRefusal::Kind::NoPermission:
        return paragraph(QCoreApplication::translate("ExchangeWording",
                   "Permission denied: %1 belongs to the group %2 and has the access rights %3.")
                             .arg(refusal.node.toHtmlEscaped(), refusal.group.toHtmlEscaped(), refusal.mode))
            + paragraph(permissionAdvice(refusal));
    case DeviceRefusal::Kind::CannotOpen:
        break;
    }
    return paragraph(QCoreApplication::translate("ExchangeWording", "Cannot open %1: %2")
                         .arg(refusal.portName.toHtmlEscaped(), refusal.portError.toHtmlEscaped()));
}

QString plainRefusalWords(const DeviceRefusal &refusal)
{
    QString words = refusalWords(refusal);
    words.replace(QLatin1String("</p><p>"), QLatin1String(" "));
    return withoutMarkup(words);
}

QString importedProfileName(const QDate &date)
{
    return QCoreApplication::translate("ExchangeWording", "Imported from CDI %1")
        .arg(QLocale().toString(date, QLocale::ShortFormat));
}

QString previewWords(const ProgrammingPreview &preview, const DefaultLibrary *library)
{
    if (!preview.read) {
        return QCoreApplication::translate("ExchangeWording",
            "The CDI did not give the profile it holds (%1), so what programming changes cannot be "
            "shown. A CDI programmed without allowing reimport keeps its profile to itself. You can "
            "still go on.")
            .arg(readFailureReason(preview.readKind));
    }
    if (preview.differences.empty())
        return QCoreApplication::translate("ExchangeWording", "The CDI already holds this profile");
    return QCoreApplication::translate(
               "ExchangeWording", "Programming changes what the CDI holds (now → after programming):")
        + differenceLines(preview.differences, library);
}

QString confirmationPendingWords()
{
    return QCoreApplication::translate("ExchangeWording", "Waiting for your confirmation");
}
