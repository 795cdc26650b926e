#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class ContinueForm;
}

// A panel on the start page that offers to go on with the profile last opened in the editor:
// a text naming the profile and a button. The start page sets the texts and decides where the
// button leads.
class ContinueForm : public QWidget
{
    Q_OBJECT

public:
    explicit ContinueForm(QWidget *parent = nullptr);
    ~ContinueForm() override;

    void setTexts(const QString &richText, const QString &buttonText);

signals:
    // The panel's button was pressed.
    void continueRequested();

private:
    std::unique_ptr<Ui::ContinueForm> m_ui;
};
