#pragma once

#include "shell/itranslatable.h"

#include <QDialog>

#include <memory>

namespace Ui {
class AboutDialog;
}
class DefaultLibrary;

// The about box: the program's name, its version, the number of the factory library it works
// with, our copyright and the licence (GPL version 3 or later).
class AboutDialog : public QDialog, public ITranslatable
{
    Q_OBJECT

public:
    AboutDialog(const DefaultLibrary *library, QWidget *parent = nullptr);
    ~AboutDialog() override;

    void retranslate(int language) override;

private:
    void setTexts();

    std::unique_ptr<Ui::AboutDialog> m_ui;
    const DefaultLibrary *m_library;
};
