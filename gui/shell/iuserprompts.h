#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class QPrinter;
class QWidget;

// Every modal question, warning and file dialog of the program goes through this seam, so that
// tests can answer them without a blocking dialog.
class IUserPrompts
{
public:
    virtual ~IUserPrompts() = default;

    // A question box with the given buttons (left to right); returns the index of the button
    // pressed, or -1 when the box was closed otherwise. escapeButton -1: Escape does nothing.
    virtual int ask(QWidget *parent, const QString &title, const QString &text, const QStringList &buttons,
        int defaultButton, int escapeButton)
        = 0;
    // A warning box with a single button.
    virtual void warn(QWidget *parent, const QString &title, const QString &text, const QString &button) = 0;
    // An information box with a single button; answers that only note a warning note this too.
    virtual void inform(QWidget *parent, const QString &title, const QString &text, const QString &button)
    {
        warn(parent, title, text, button);
    }
    // Empty when cancelled.
    // Starts in the folder last used, or in the given one.
    virtual QString openFileName(
        QWidget *parent, const QString &title, const QString &filter, const QString &folder = QString())
        = 0;
    virtual QString saveFileName(
        QWidget *parent, const QString &title, const QString &suggestedPath, const QString &filter)
        = 0;
    // The save dialog with a choice of file types, the first chosen at first; the type chosen
    // comes back in chosenFilter, so that a name typed without a suffix can get its suffix.
    virtual QString saveFileName(QWidget *parent, const QString &title, const QString &suggestedPath,
        const QStringList &filters, QString &chosenFilter)
    {
        chosenFilter = filters.value(0);
        return saveFileName(parent, title, suggestedPath, filters.join(QLatin1String(";;")));
    }
    // A whole number between the bounds; nothing when cancelled.
    virtual std::optional<int> askNumber(
        QWidget *parent, const QString &title, const QString &label, int value, int minimum, int maximum)
        = 0;
    // The system's print dialog for the printer; false when cancelled.
    virtual bool choosePrinter(QWidget *parent, QPrinter &printer) = 0;
};

// The real dialogs; one instance lives for the whole run.
IUserPrompts &userPrompts();
// Tests install their own answers; null restores the real dialogs.
void setUserPrompts(IUserPrompts *prompts);
