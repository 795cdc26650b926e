#include "data/cdataholder.h"

#include "data/datafiles.h"

namespace {

const DefaultLibrary *g_sharedLibrary = nullptr;

// Keeps what loaded; the reason for a failure goes back to the caller.
template<typename T>
tl::expected<void, FileError> keep(tl::expected<T, FileError> loaded, std::optional<T> &into)
{
    if (!loaded)
        return tl::make_unexpected(loaded.error());
    into = std::move(*loaded);
    return {};
}

} // namespace

CDataHolder::CDataHolder(const QString &programDirectory)
    : m_programDirectory(programDirectory.isEmpty() ? executableDirectory() : programDirectory)
{ }

tl::expected<void, FileError> CDataHolder::loadLibrary(bool normalStart)
{
    return keep(loadInstalledLibrary(normalStart, m_programDirectory), m_library);
}

tl::expected<void, FileError> CDataHolder::loadHints()
{
    return keep(loadInstalledHints(m_programDirectory), m_hints);
}

// A failure names the bare file name, as the user knows it.
CFileError CDataHolder::libraryFailure()
{
    return CFileError(
        tr("The default CDI profiles could not be loaded. The source file is either missing or corrupted or "
           "was created for a newer version of Sparkwright."),
        QLatin1String(kLibraryFileName));
}

CFileError CDataHolder::hintsFailure()
{
    return CFileError(tr("Hints could not be loaded. The source file is either missing or "
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
