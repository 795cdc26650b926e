#include "app/cdataholder.h"

#include "app/cfileerror.h"
#include "app/datafilelocation.h"

#include <QFile>

const char CDataHolder::kLibraryFileName[] = "default.cds";
const char CDataHolder::kHintsFileName[] = "hints.cdh";

namespace {

const DefaultLibrary *g_sharedLibrary = nullptr;

} // namespace

CDataHolder::CDataHolder() = default;
CDataHolder::~CDataHolder() = default;

// Both files are looked for in the working directory first, then beside the executable and in
// an installation's share folder; a failure names the bare file name either way.
std::unique_ptr<CFileError> CDataHolder::loadLibrary(bool normalStart)
{
    QFile file {locateDataFile(QLatin1String(kLibraryFileName))};
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
    QFile file {locateDataFile(QLatin1String(kHintsFileName))};
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
