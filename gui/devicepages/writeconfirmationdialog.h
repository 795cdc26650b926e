#pragma once

#include "device/exchangeresult.h"

#include <QDialog>

#include <memory>
#include <optional>

class DefaultLibrary;
class Profile;
namespace Ui {
class WriteConfirmationDialog;
}

// The last question before a profile goes into the CDI: what it changes there, as far as the CDI
// let itself be read, and whether the CDI may give the profile back later.
class WriteConfirmationDialog : public QDialog
{
    Q_OBJECT

public:
    explicit WriteConfirmationDialog(QWidget *parent = nullptr);
    ~WriteConfirmationDialog() override;

    // Names the profile and puts the choice back to its default (reimport allowed).
    void setProfile(const Profile &profile);
    // The same, with what programming changes in the CDI. The library names motorbike types.
    void setPreview(const ProgrammingPreview &preview, const DefaultLibrary *library);
    bool allowReimport() const;

public slots:
    void onConfirm();
    void onCancel();

protected:
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void showProfileName();
    void showChanges();
    void fitChanges();

    std::unique_ptr<Ui::WriteConfirmationDialog> m_ui;
    QString m_name;
    bool m_custom = true;
    std::optional<ProgrammingPreview> m_preview;
    const DefaultLibrary *m_library = nullptr;
};
