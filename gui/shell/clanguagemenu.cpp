#include "shell/clanguagemenu.h"

#include "shell/clanguageswitcher.h"
#include "shell/lazyicon.h"

#include <QAction>
#include <QActionGroup>
#include <QEvent>

namespace {

// Language names stand out a little from ordinary menu entries.
constexpr qreal kNameSizeFactor = 1.15;

} // namespace

CLanguageMenu::CLanguageMenu(CLanguageSwitcher &switcher, QWidget *parent)
    : QMenu(parent)
    , m_switcher(switcher)
{
    // The language in use is checked; choosing one checks it and unchecks the other.
    auto *group = new QActionGroup(this);
    for (int language = 0; language < CLanguageSwitcher::kLanguageCount; ++language) {
        QAction *action = addAction(languageIcon(language), QString());
        action->setCheckable(true);
        group->addAction(action);
        QFont font = action->font();
        if (font.pointSizeF() > 0) {
            font.setPointSizeF(font.pointSizeF() * kNameSizeFactor);
            action->setFont(font);
        }
        connect(action, &QAction::triggered, this, [this, language] { selectLanguage(language); });
        m_actions.append(action);
    }
    retranslateUi();
}

void CLanguageMenu::selectLanguage(int language)
{
    m_switcher.setLanguage(language);
    emit languageSelected(language);
}

QString CLanguageMenu::currentLanguageName() const
{
    return CLanguageSwitcher::languageName(m_switcher.language());
}

QIcon CLanguageMenu::currentLanguageIcon() const
{
    return languageIcon(m_switcher.language());
}

QIcon CLanguageMenu::languageIcon(int language)
{
    return lazyIcon(QStringLiteral(":/Images/lang%1.png").arg(language));
}

void CLanguageMenu::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslateUi();
    QMenu::changeEvent(event);
}

void CLanguageMenu::retranslateUi()
{
    setTitle(tr("Language"));
    for (int language = 0; language < m_actions.size(); ++language) {
        m_actions[language]->setText(CLanguageSwitcher::languageName(language));
        m_actions[language]->setChecked(language == m_switcher.language());
    }
}
