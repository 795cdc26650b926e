#pragma once

#include "data/cfileerror.h"
#include "profile/defaultlibrary.h"
#include "profile/hintcatalog.h"

#include <QCoreApplication>

#include <optional>

// The two data files the whole program works from, loaded once at start-up from the program's
// own installation and kept until the program ends. Pages get the part they need; the main window
// gets the holder, because the updater reports both versions.
class CDataHolder
{
    Q_DECLARE_TR_FUNCTIONS(CDataHolder)

public:
    // The data files are looked for beside the program in that folder (see locateDataFile()).
    explicit CDataHolder(const QString &programDirectory = QString());

    // The flag is passed on to the library loader: true on a normal start, false when only the
    // version is asked for.
    tl::expected<void, FileError> loadLibrary(bool normalStart);
    tl::expected<void, FileError> loadHints();

    // What the data-file error window says when that file could not be loaded, whatever the
    // reason: the user can only install it again.
    static CFileError libraryFailure();
    static CFileError hintsFailure();

    // Null until loaded.
    const DefaultLibrary *library() const { return m_library ? &*m_library : nullptr; }
    const HintCatalog *hints() const { return m_hints ? &*m_hints : nullptr; }

private:
    const QString m_programDirectory;
    std::optional<DefaultLibrary> m_library;
    std::optional<HintCatalog> m_hints;
};

// The factory templates for the pages that look a template up by motorbike type. Set once the
// windows are built and cleared when the program ends; null before.
const DefaultLibrary *sharedDefaultLibrary();
void setSharedDefaultLibrary(const DefaultLibrary *library);
