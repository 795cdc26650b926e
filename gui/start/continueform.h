#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class ContinueForm;
}
class IContinueMain;

// A panel on the start page that offers to go on with the profile last opened in the editor:
// a text naming the profile and a button. The start page sets the texts and decides where the
// button leads.
class ContinueForm : public QWidget
{
    Q_OBJECT

public:
    explicit ContinueForm(QWidget *parent = nullptr);
    ~ContinueForm() override;

    void setContinueMain(IContinueMain *main);
    void setTexts(const QString &richText, const QString &buttonText);

private slots:
    void onButtonClicked();

private:
    std::unique_ptr<Ui::ContinueForm> m_ui;
    IContinueMain *m_main = nullptr;
};
