#include "i18n/clanguageswitcher.h"

#include <QDebug>
#include <QLocale>
#include <QTranslator>

namespace {

const char *const kNames[CLanguageSwitcher::kLanguageCount] = {
    QT_TRANSLATE_NOOP("CLanguageSwitcher", "English"),
    QT_TRANSLATE_NOOP("CLanguageSwitcher", "German"),
};
const char *const kCodes[CLanguageSwitcher::kLanguageCount] = {"en", "de"};

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

CLanguageSwitcher::CLanguageSwitcher() = default;

CLanguageSwitcher::~CLanguageSwitcher()
{
    // Deleting a translator takes it out of the application as well.
    m_translators.clear();
}

void CLanguageSwitcher::addLanguage(const QString &code)
{
    const QString baseName = QLatin1String("lang_") + code;
    const QString fileName = baseName + QLatin1String(".qm");
    auto translator = std::make_unique<QTranslator>();
    const bool loaded = translator->load(baseName);
    qInfo().noquote() << QLatin1String("loading ") + fileName + QLatin1String(" .. ")
            + QLatin1String(loaded ? "true" : "false");
    m_translators.push_back(std::move(translator));
}

void CLanguageSwitcher::setLanguage(int language)
{
    m_language = language;
    const int wanted = language - 1;
    // Numbers follow the texts: a comma as decimal separator only where the German texts are
    // really shown. Set before the translators change, whose change events redraw the windows.
    const bool translated
        = wanted >= 0 && wanted < int(m_translators.size()) && !m_translators[size_t(wanted)]->isEmpty();
    QLocale::setDefault(QLocale(languageCode(translated ? language : kEnglish)));
    if (m_installed != wanted) {
        if (m_installed >= 0)
            QCoreApplication::removeTranslator(m_translators[size_t(m_installed)].get());
        m_installed = -1;
        if (wanted >= 0 && wanted < int(m_translators.size())) {
            QCoreApplication::installTranslator(m_translators[size_t(wanted)].get());
            m_installed = wanted;
        }
    }
    // Also when nothing changed: choosing the same language again is how a part gets texts that
    // depend on the language, such as the hints, refreshed.
    for (ITranslatable *listener : qAsConst(m_listeners))
        listener->retranslate(language);
}

void CLanguageSwitcher::registerListener(ITranslatable *listener)
{
    m_listeners.append(listener);
}
