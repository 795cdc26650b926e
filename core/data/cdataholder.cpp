#include "data/cdataholder.h"

#include "data/cfileerror.h"
#include "data/datafilelocation.h"

#include <QFile>

const char CDataHolder::kLibraryFileName[] = "default.cds";
const char CDataHolder::kHintsFileName[] = "hints.cdh";

namespace {

const DefaultLibrary *g_sharedLibrary = nullptr;

} // namespace

CDataHolder::CDataHolder(const QString &programDirectory)
    : m_programDirectory(programDirectory.isEmpty() ? executableDirectory() : programDirectory)
{ }

CDataHolder::~CDataHolder() = default;

// A failure names the bare file name, as the user knows it.
std::unique_ptr<CFileError> CDataHolder::loadLibrary(bool normalStart)
{
    QFile file {locateDataFile(QLatin1String(kLibraryFileName), m_programDirectory)};
    if (file.open(QIODevice::ReadOnly))
        m_library = loadDefaultLibrary(file, normalStart);
    if (m_library)
        return nullptr;
    return std::make_unique<CFileError>(
        tr("The default CDI profiles could not be loaded. The source file is either missing or corrupted or "
           "was created for a newer version of Sparkwright."),
        QLatin1String(kLibraryFileName));
}

std::unique_ptr<CFileError> CDataHolder::loadHints()
{
    QFile file {locateDataFile(QLatin1String(kHintsFileName), m_programDirectory)};
    if (file.open(QIODevice::ReadOnly))
        m_hints = loadHintCatalog(file);
    if (m_hints)
        return nullptr;
    return std::make_unique<CFileError>(tr("Hints could not be loaded. The source file is either missing or "
                                           "corrupted or was created for a newer version of Sparkwright."),
        QLatin1String(kHintsFileName));
}

const DefaultLibrary *sharedDefaultLibrary()
{
    return g_sharedLibrary;
}

void setSharedDefaultLibrary(const DefaultLibrary *library)
{
    g_sharedLibrary = library;
}
