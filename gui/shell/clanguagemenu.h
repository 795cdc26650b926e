#pragma once

#include <QIcon>
#include <QMenu>
#include <QVector>

class CLanguageSwitcher;

// The "Language" menu: one entry per language, each with its flag. The main window shows it in
// its menu bar and the disclaimer dialog behind its language button.
class CLanguageMenu : public QMenu
{
    Q_OBJECT

public:
    explicit CLanguageMenu(CLanguageSwitcher &switcher, QWidget *parent = nullptr);

    void selectLanguage(int language);
    QString currentLanguageName() const;
    QIcon currentLanguageIcon() const;
    static QIcon languageIcon(int language);

signals:
    // After the switch, for the ones that show the current language.
    void languageSelected(int language);

protected:
    void changeEvent(QEvent *event) override;

private:
    void retranslateUi();

    CLanguageSwitcher &m_switcher;
    QVector<QAction *> m_actions;
};
