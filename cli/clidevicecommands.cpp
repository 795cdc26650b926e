// The device verbs of sparkwright-cli: the same transactions, bridge and wording as the program.
#include "clicommands.h"

#include "data/datafiles.h"
#include "device/cbridgecomm.h"
#include "device/ccalibrator.h"
#include "device/cimagereader.h"
#include "device/cimporter.h"
#include "device/cpinger.h"
#include "device/exchangetranscript.h"
#include "device/exchangewording.h"
#include "device/serialports.h"
#include "profile/defaultlibrary.h"
#include "profile/profilefile.h"
#include "profile/safefilewriter.h"
#include "render/bracemarkup.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTranslator>

#include <optional>

namespace {

QString hexId(quint16 id)
{
    return QStringLiteral("%1").arg(id, 4, 16, QLatin1Char('0'));
}

// Reads the programmed profile back at once, on the same port, as the program does. The
// programming's result by value: whoever heard its end may hear this one's too.
ExchangeResult readBack(CBridgeComm &bridge, const QString &port, const ExchangeResult programmed)
{
    ExchangeResult read;
    read.exchange = DeviceExchange::ReadBack;
    read.kind = ExchangeResult::Kind::PortLost;
    QEventLoop loop;
    QObject::connect(&bridge, &CBridgeComm::finished, &loop, [&](const ExchangeResult &ended) {
        read = ended;
        loop.quit();
    });
    if (bridge.runTransaction(std::make_unique<CImageReader>(DeviceExchange::ReadBack), port))
        loop.exec();
    return readBackVerdict(programmed, read);
}

} // namespace

bool CliCommands::parseOptions(const QString &verb, const QStringList &arguments, const QStringList &valued,
    const QStringList &switches, QStringList &positional, QMap<QString, QString> &options)
{
    for (int i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments.at(i);
        if (!argument.startsWith(QLatin1String("--"))) {
            positional << argument;
        } else if (switches.contains(argument)) {
            options.insert(argument, QString());
        } else if (!valued.contains(argument)) {
            usage(QStringLiteral("unknown option '%1' for '%2'").arg(argument, verb));
            return false;
        } else if (i + 1 >= arguments.size()) {
            usage(QStringLiteral("option '%1' needs a value").arg(argument));
            return false;
        } else {
            options.insert(argument, arguments.at(++i));
        }
    }
    return true;
}

int CliCommands::ports()
{
    const std::vector<SerialPortEntry> entries = CSystemPortLister().ports();
    const int bridge = findBridgePort(entries);
    m_out << "port\tdescription\tmanufacturer\tUSB ID\tnotes\n";
    for (size_t i = 0; i < entries.size(); ++i) {
        const SerialPortEntry &entry = entries[i];
        QStringList fields {entry.name, entry.description.isEmpty() ? QStringLiteral("-") : entry.description,
            entry.manufacturer.isEmpty() ? QStringLiteral("-") : entry.manufacturer,
            entry.hasIds ? hexId(entry.vendorId) + QLatin1Char(':') + hexId(entry.productId)
                         : QStringLiteral("-")};
        if (int(i) == bridge)
            fields << QStringLiteral("bridge");
        if (entry.isVirtual)
            fields << QStringLiteral("virtual");
        m_out << fields.join(QLatin1Char('\t')) << "\n";
    }
    m_out.flush();
    // Not a failure: the list is what was asked for. On the error stream, so that the list stays
    // a table for scripts.
    if (bridge < 0) {
        m_err << "sparkwright-cli: no CP210x bridge is plugged in and no virtual CDI is running\n";
        m_err.flush();
    }
    return kOk;
}

int CliCommands::deviceExchange(const QString &verb, const QStringList &arguments)
{
    QStringList positional;
    QMap<QString, QString> options;
    QStringList switches = verb == QLatin1String("program")
        ? QStringList {QStringLiteral("--no-reimport"), QStringLiteral("--no-verify")}
        : QStringList();
    switches << QStringLiteral("--verbose");
    if (!parseOptions(verb, arguments, {QStringLiteral("--port"), QStringLiteral("--language")}, switches,
            positional, options))
        return kUsageError;
    if (positional.size() != (verb == QLatin1String("ping") ? 0 : 1))
        return usage(QStringLiteral("wrong number of arguments for '%1'").arg(verb));
    QTranslator translator;
    int status = kOk;
    if (!installLanguage(verb, options.value(QStringLiteral("--language")), translator, status))
        return status;

    std::unique_ptr<CCommunicator> transaction;
    tl::expected<DefaultLibrary, FileError> library;
    if (verb == QLatin1String("ping")) {
        transaction = std::make_unique<CPinger>(*QRandomGenerator::global());
    } else if (verb == QLatin1String("import")) {
        // Before the CDI is asked: what it gives would otherwise be lost.
        const tl::expected<void, FileError> writable = checkWritable(positional.at(0));
        if (!writable)
            return fileError(positional.at(0), writable.error());
        library = loadInstalledLibrary();
        if (!library)
            return fileError(QLatin1String(kLibraryFileName), library.error());
        transaction
            = std::make_unique<CImporter>(std::make_shared<const DefaultLibrary>(std::move(*library)));
    } else {
        Profile profile;
        if (!readProfile(positional.at(0), profile))
            return kFileError;
        if (!CCalibrator::isProgrammable(profile)) {
            m_err << positional.at(0) << ": " << refusalWords({DeviceRefusal::Kind::InvalidMap, {}, {}, {}})
                  << "\n";
            m_err.flush();
            return kUsageError;
        }
        transaction = std::make_unique<CCalibrator>(
            profile, !options.contains(QStringLiteral("--no-reimport")), *QRandomGenerator::global());
    }

    QString port = options.value(QStringLiteral("--port"));
    if (port.isEmpty()) {
        port = findBridgePort(CSystemPortLister());
        if (port.isEmpty()) {
            m_err << "sparkwright-cli: no CDI found: no CP210x bridge is plugged in and no virtual CDI is "
                     "running (see sparkwright-cli ports)\n";
            m_err.flush();
            return kUsageError;
        }
    }

    CBridgeComm bridge;
    ExchangeResult result;
    QEventLoop loop;
    QObject::connect(&bridge, &CBridgeComm::finished, &loop, [&](const ExchangeResult &ended) {
        result = ended;
        loop.quit();
    });
    const tl::expected<void, DeviceRefusal> started = bridge.runTransaction(std::move(transaction), port);
    if (!started) {
        m_err << "sparkwright-cli: " << plainRefusalWords(started.error()) << "\n";
        m_err.flush();
        return kUsageError;
    }
    loop.exec();
    // Before the result, which may still fail to be written: what went over the line, for support.
    const bool verbose = options.contains(QStringLiteral("--verbose"));
    if (verbose) {
        m_err << transcriptText(bridge.transcript());
        m_err.flush();
    }
    if (result.exchange == DeviceExchange::Program && result.succeeded()) {
        if (!mayReadBack(result)) {
            result.readBack = ExchangeResult::ReadBack::NotAllowed;
        } else if (!options.contains(QStringLiteral("--no-verify"))) {
            result = readBack(bridge, port, result);
            if (verbose) {
                m_err << transcriptText(bridge.transcript());
                m_err.flush();
            }
        }
    }

    // Motorbike types in a read back's differences go by their templates' names where it is found.
    if (result.kind == ExchangeResult::Kind::ReadBackDiffers && (!library || library->count() == 0))
        library = loadInstalledLibrary();
    const ExchangeWords words = resultWords(result, library ? &*library : nullptr);
    QString text = words.text;
    text.replace(QLatin1String("<br>"), QLatin1String("\n"));
    if (result.succeeded() && result.exchange == DeviceExchange::Import && result.profile) {
        // As the editor takes it over: the user's own profile from now on. There is no editor
        // here: the result says where the file went, once it is there.
        result.profile->setKind(ProfileKind::Custom);
        const int written = writeOutput(positional.at(0), profileFileBytes(*result.profile));
        if (written != kOk)
            return written;
        text = importSavedWords(QFileInfo(positional.at(0)).absoluteFilePath());
    }
    if (!words.title.isEmpty())
        m_out << withoutMarkup(words.title) << "\n";
    m_out << withoutMarkup(text) << "\n";
    m_out.flush();
    return result.succeeded() ? kOk : kFileError;
}
