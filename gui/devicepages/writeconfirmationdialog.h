#pragma once

#include <QDialog>

#include <memory>

class Profile;
namespace Ui {
class WriteConfirmationDialog;
}

// The last question before a profile goes into the CDI: whether the CDI may give it back later.
class WriteConfirmationDialog : public QDialog
{
    Q_OBJECT

public:
    explicit WriteConfirmationDialog(QWidget *parent = nullptr);
    ~WriteConfirmationDialog() override;

    // Names the profile and puts the choice back to its default (reimport allowed).
    void setProfile(const Profile &profile);
    bool allowReimport() const;

public slots:
    void onConfirm();
    void onCancel();

protected:
    void changeEvent(QEvent *event) override;

private:
    void showProfileName();

    std::unique_ptr<Ui::WriteConfirmationDialog> m_ui;
    QString m_name;
    bool m_custom = true;
};
