#pragma once

#include "profile/defaultlibrary.h"
#include "profile/hintcatalog.h"

#include <QCoreApplication>

#include <memory>

class CFileError;

// The two data files the whole program works from, loaded once at start-up from the program's
// own installation and kept until the program ends. Pages get the part they need; the main window
// gets the holder, because the updater reports both versions.
class CDataHolder
{
    Q_DECLARE_TR_FUNCTIONS(CDataHolder)

public:
    static const char kLibraryFileName[];
    static const char kHintsFileName[];

    // The data files are looked for beside the program in that folder (see locateDataFile()).
    explicit CDataHolder(const QString &programDirectory = QString());
    ~CDataHolder();

    // Null on success. The flag is passed on to the library loader: true on a normal start,
    // false when only the version is asked for.
    std::unique_ptr<CFileError> loadLibrary(bool normalStart);
    std::unique_ptr<CFileError> loadHints();

    // Null until loaded.
    const DefaultLibrary *library() const { return m_library.get(); }
    const HintCatalog *hints() const { return m_hints.get(); }

private:
    const QString m_programDirectory;
    std::unique_ptr<DefaultLibrary> m_library;
    std::unique_ptr<HintCatalog> m_hints;
};

// The factory templates for the pages that look a template up by motorbike type. Set once the
// windows are built and cleared when the program ends; null before.
const DefaultLibrary *sharedDefaultLibrary();
void setSharedDefaultLibrary(const DefaultLibrary *library);
