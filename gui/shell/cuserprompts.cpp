#include "shell/iuserprompts.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>

namespace {

// File dialogs open in the folder where the user last chose a file, the first time in the
// documents folder: never in the program's working folder, where the data files lie.
const char kFolderKey[] = "fileDialogs/lastFolder";

QString startFolder()
{
    const QString last = QSettings().value(QLatin1String(kFolderKey)).toString();
    if (!last.isEmpty() && QFileInfo(last).isDir())
        return last;
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QFileInfo(documents).isDir() ? documents : QDir::homePath();
}

QString remembered(const QString &chosen)
{
    if (!chosen.isEmpty())
        QSettings().setValue(QLatin1String(kFolderKey), QFileInfo(chosen).absolutePath());
    return chosen;
}

// The box's icon is a picture of its kind; screen readers get the kind as its name.
void nameIcon(QMessageBox &box, const char *kind)
{
    if (auto *icon = box.findChild<QLabel *>(QStringLiteral("qt_msgboxex_icon_label")))
        icon->setAccessibleName(QCoreApplication::translate("CDialogPrompts", kind));
}

class CDialogPrompts : public IUserPrompts
{
public:
    int ask(QWidget *parent, const QString &title, const QString &text, const QStringList &buttons,
        int defaultButton, int escapeButton) override
    {
        QMessageBox box(QMessageBox::Question, title, text, QMessageBox::NoButton, parent);
        nameIcon(box, QT_TRANSLATE_NOOP("CDialogPrompts", "Question"));
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
        nameIcon(box, QT_TRANSLATE_NOOP("CDialogPrompts", "Warning"));
        box.addButton(button, QMessageBox::AcceptRole);
        box.exec();
    }

    void inform(QWidget *parent, const QString &title, const QString &text, const QString &button) override
    {
        QMessageBox box(QMessageBox::Information, title, text, QMessageBox::NoButton, parent);
        nameIcon(box, QT_TRANSLATE_NOOP("CDialogPrompts", "Information"));
        box.addButton(button, QMessageBox::AcceptRole);
        box.exec();
    }

    QString openFileName(
        QWidget *parent, const QString &title, const QString &filter, const QString &folder) override
    {
        const QString start = folder.isEmpty() ? startFolder() : folder;
        return remembered(QFileDialog::getOpenFileName(parent, title, start, filter));
    }

    QString saveFileName(
        QWidget *parent, const QString &title, const QString &suggestedPath, const QString &filter) override
    {
        const QString start = QFileInfo(suggestedPath).isAbsolute()
            ? suggestedPath
            : QDir(startFolder()).filePath(suggestedPath);
        return remembered(QFileDialog::getSaveFileName(parent, title, start, filter));
    }
    QString saveFileName(QWidget *parent, const QString &title, const QString &suggestedPath,
        const QStringList &filters, QString &chosenFilter) override
    {
        const QString start = QFileInfo(suggestedPath).isAbsolute()
            ? suggestedPath
            : QDir(startFolder()).filePath(suggestedPath);
        chosenFilter = filters.value(0);
        return remembered(QFileDialog::getSaveFileName(
            parent, title, start, filters.join(QLatin1String(";;")), &chosenFilter));
    }
    std::optional<int> askNumber(
        QWidget *parent, const QString &title, const QString &label, int value, int minimum, int maximum) override
    {
        bool ok = false;
        const int number = QInputDialog::getInt(parent, title, label, value, minimum, maximum, 1, &ok);
        return ok ? std::optional<int>(number) : std::nullopt;
    }
    bool choosePrinter(QWidget *parent, QPrinter &printer) override
    {
        QPrintDialog dialog(&printer, parent);
        return dialog.exec() == QDialog::Accepted;
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
