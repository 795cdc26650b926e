#pragma once

#include "profile/profile.h"
#include "shell/cbrowserwidget.h"
#include "shell/itranslatable.h"

#include <QWidget>

#include <memory>

class CLanguageSwitcher;
class SummaryForm;

namespace Ui {
class CustomForm;
}

// A page that shows one of the user's profiles read-only before it goes further, such as the
// profile about to be programmed into the CDI. It keeps its own copy; where Back and Next lead
// is the main window's decision, so the page only reports them.
class CustomForm : public QWidget, public CBrowserWidget, public ITranslatable
{
    Q_OBJECT

public:
    explicit CustomForm(CLanguageSwitcher &switcher, QWidget *parent = nullptr);
    ~CustomForm() override;

    void setProfile(const Profile &profile);
    const Profile &profile() const { return m_profile; }

    void setActive(bool active) override;
    void onBack() override;
    void onNext() override;
    void retranslate(int language) override;

signals:
    void backRequested();
    void nextRequested();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showProfile();

    std::unique_ptr<Ui::CustomForm> m_ui;
    SummaryForm *m_summary;
    Profile m_profile;
};
