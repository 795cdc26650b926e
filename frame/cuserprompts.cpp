#include "frame/iuserprompts.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

namespace {

class CDialogPrompts : public IUserPrompts
{
public:
    int ask(QWidget *parent, const QString &title, const QString &text, const QStringList &buttons,
        int defaultButton, int escapeButton) override
    {
        QMessageBox box(QMessageBox::Question, title, text, QMessageBox::NoButton, parent);
        QList<QPushButton *> pushButtons;
        for (const QString &label : buttons)
            pushButtons.append(box.addButton(label, QMessageBox::ActionRole));
        if (defaultButton >= 0 && defaultButton < pushButtons.size())
            box.setDefaultButton(pushButtons.at(defaultButton));
        if (escapeButton >= 0 && escapeButton < pushButtons.size())
            box.setEscapeButton(pushButtons.at(escapeButton));
        box.exec();
        return pushButtons.indexOf(qobject_cast<QPushButton *>(box.clickedButton()));
    }

    void warn(QWidget *parent, const QString &title, const QString &text, const QString &button) override
    {
        QMessageBox box(QMessageBox::Warning, title, text, QMessageBox::NoButton, parent);
        box.addButton(button, QMessageBox::AcceptRole);
        box.exec();
    }

    void inform(QWidget *parent, const QString &title, const QString &text, const QString &button) override
    {
        QMessageBox box(QMessageBox::Information, title, text, QMessageBox::NoButton, parent);
        box.addButton(button, QMessageBox::AcceptRole);
        box.exec();
    }

    QString openFileName(QWidget *parent, const QString &title, const QString &filter) override
    {
        return QFileDialog::getOpenFileName(parent, title, QString(), filter);
    }

    QString saveFileName(
        QWidget *parent, const QString &title, const QString &suggestedPath, const QString &filter) override
    {
        return QFileDialog::getSaveFileName(parent, title, suggestedPath, filter);
    }
};

IUserPrompts *g_prompts = nullptr;

} // namespace

IUserPrompts &userPrompts()
{
    static CDialogPrompts dialogs;
    return g_prompts ? *g_prompts : dialogs;
}

void setUserPrompts(IUserPrompts *prompts)
{
    g_prompts = prompts;
}
