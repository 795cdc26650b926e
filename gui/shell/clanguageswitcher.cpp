#include "shell/clanguageswitcher.h"

#include "data/datafilelocation.h"
#include "shell/caccessibility.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QLoggingCategory>
#include <QTimer>
#include <QTranslator>

// Which translation was loaded from where; silent unless asked for with
// QT_LOGGING_RULES="sparkwright.language.debug=true".
Q_LOGGING_CATEGORY(lcLanguage, "sparkwright.language", QtWarningMsg)

namespace {

const char *const kNames[CLanguageSwitcher::kLanguageCount] = {
    QT_TRANSLATE_NOOP("CLanguageSwitcher", "&English"),
    QT_TRANSLATE_NOOP("CLanguageSwitcher", "&German"),
};
const char *const kCodes[CLanguageSwitcher::kLanguageCount] = {"en", "de"};

// Where Qt keeps its own translations ("qtbase_de.qm"); Qt 6 renamed the query.
QString qtTranslationsFolder()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return QLibraryInfo::path(QLibraryInfo::TranslationsPath);
#else
    return QLibraryInfo::location(QLibraryInfo::TranslationsPath);
#endif
}

bool isLanguage(int language)
{
    return language >= 0 && language < CLanguageSwitcher::kLanguageCount;
}

} // namespace

QString CLanguageSwitcher::languageName(int language)
{
    return isLanguage(language) ? tr(kNames[language]) : QString();
}

QString CLanguageSwitcher::languageCode(int language)
{
    return isLanguage(language) ? QLatin1String(kCodes[language]) : QString();
}

int CLanguageSwitcher::languageForLocale(const QString &localeName)
{
    return localeName.left(2).toLower() == QLatin1String(kCodes[kGerman]) ? kGerman : kEnglish;
}

CLanguageSwitcher::CLanguageSwitcher(const QString &programDirectory)
    : m_programDirectory(programDirectory.isEmpty() ? executableDirectory() : programDirectory)
{ }

CLanguageSwitcher::~CLanguageSwitcher()
{
    // Deleting a translator takes it out of the application as well.
    m_translations.clear();
}

void CLanguageSwitcher::addLanguage(const QString &code)
{
    const QString baseName = QLatin1String("lang_") + code;
    const QString fileName = baseName + QLatin1String(".qm");
    Translation translation {std::make_unique<QTranslator>(), std::make_unique<QTranslator>()};
    const QString path = locateDataFile(fileName, m_programDirectory);
    const bool loaded = translation.program->load(path);
    qCDebug(lcLanguage).noquote() << (loaded ? "loaded" : "could not load") << path;
    // Without the program's own translation the whole program stays English, Qt's dialogs too.
    if (loaded) {
        const QString qtFolder = qtTranslationsFolder();
        const bool qtLoaded = translation.qt->load(QLatin1String("qtbase_") + code, qtFolder);
        qCDebug(lcLanguage).noquote() << (qtLoaded ? "loaded" : "could not load") << "Qt's own from" << qtFolder;
    }
    m_translations.push_back(std::move(translation));
}

void CLanguageSwitcher::setLanguage(int language)
{
    const CAccessibility::TextSnapshot before = CAccessibility::TextSnapshot::take();
    m_language = language;
    const int wanted = language - 1;
    // Numbers follow the texts: a comma as decimal separator only where the German texts are
    // really shown. Set before the translators change, whose change events redraw the windows.
    const bool translated = wanted >= 0 && wanted < int(m_translations.size())
        && !m_translations[size_t(wanted)].program->isEmpty();
    QLocale::setDefault(QLocale(languageCode(translated ? language : kEnglish)));
    if (m_installed != wanted) {
        if (m_installed >= 0) {
            const Translation &installed = m_translations[size_t(m_installed)];
            QCoreApplication::removeTranslator(installed.qt.get());
            QCoreApplication::removeTranslator(installed.program.get());
        }
        m_installed = -1;
        if (wanted >= 0 && wanted < int(m_translations.size())) {
            // The program's own texts are looked up first: the last installed is asked first.
            QCoreApplication::installTranslator(m_translations[size_t(wanted)].qt.get());
            QCoreApplication::installTranslator(m_translations[size_t(wanted)].program.get());
            m_installed = wanted;
        }
    }
    // Also when nothing changed: choosing the same language again is how a part gets texts that
    // depend on the language, such as the hints, refreshed.
    for (ITranslatable *listener : qAsConst(m_listeners))
        listener->retranslate(language);
    // The widgets set most of their texts again on the change events the translators posted;
    // what changed is told once those have been handled.
    if (!before.isEmpty()) {
        QTimer::singleShot(
            0, qApp, [before] { QTimer::singleShot(0, qApp, [before] { before.announceChanges(); }); });
    }
}

void CLanguageSwitcher::registerListener(ITranslatable *listener)
{
    m_listeners.append(listener);
}
