#pragma once

#include "shell/itranslatable.h"

#include <QCoreApplication>
#include <QString>
#include <QVector>

#include <memory>
#include <vector>

class QTranslator;

// Owns the translations and switches the running program between its languages. English is
// the language of the program's own texts; every further language comes from a translation
// file. After each switch the registered parts of the user interface set their texts again.
class CLanguageSwitcher : public ITranslatable
{
    Q_DECLARE_TR_FUNCTIONS(CLanguageSwitcher)

public:
    static constexpr int kEnglish = 0;
    static constexpr int kGerman = 1;
    static constexpr int kLanguageCount = 2;

    // By index, the same everywhere language names are shown: on the Language menu and the
    // disclaimer's language button, so each carries its mnemonic.
    static QString languageName(int language);
    static QString languageCode(int language);
    // German for a locale name such as "de_AT", English for everything else.
    static int languageForLocale(const QString &localeName);

    // The translations are looked for beside the program in that folder (see locateDataFile()).
    explicit CLanguageSwitcher(const QString &programDirectory = QString());
    ~CLanguageSwitcher() override;

    // Loads "lang_<code>.qm" from the program's installation, and Qt's own translation of its dialogs
    // and key names ("qtbase_<code>.qm") from Qt's translation folder. The language is added even
    // when its file is missing: choosing it then simply leaves the texts in English.
    void addLanguage(const QString &code);
    void setLanguage(int language);
    // Not owned; called in registration order.
    void registerListener(ITranslatable *listener);

    int language() const { return m_language; }

    // Another part hands a language choice on with the same call it receives.
    void retranslate(int language) override { setLanguage(language); }

private:
    struct Translation
    {
        std::unique_ptr<QTranslator> program;
        std::unique_ptr<QTranslator> qt;
    };
    // Language n uses translation n - 1; English needs none.
    const QString m_programDirectory;
    std::vector<Translation> m_translations;
    QVector<ITranslatable *> m_listeners;
    int m_installed = -1;
    int m_language = kEnglish;
};
