#pragma once

// The main function of a QtTest executable that drives widgets, and what such tests share.
//
// The offscreen platform that the tests run on never frees the screen it sets up while the
// application object is built, and LeakSanitizer would report that at every exit. Only the
// allocations made while the application object is built are left out of the leak check;
// everything the tests themselves allocate is still checked.
#include "shell/iuserprompts.h"
#include "support/layoutencoder.h"

#include <QApplication>
#include <QCheckBox>
#include <QHash>
#include <QPrinter>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTemporaryDir>
#include <QTranslator>
#include <QtTest>

#include <memory>

#if defined(__SANITIZE_ADDRESS__)
#define SPARKWRIGHT_LEAK_CHECKED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define SPARKWRIGHT_LEAK_CHECKED 1
#endif
#endif
#ifdef SPARKWRIGHT_LEAK_CHECKED
#include <sanitizer/lsan_interface.h>
#endif

inline std::unique_ptr<QApplication> createTestApplication(int &argc, char **argv)
{
#ifdef SPARKWRIGHT_LEAK_CHECKED
    const __lsan::ScopedDisabler platformSetUp;
#endif
    auto application = std::make_unique<QApplication>(argc, argv);
    application->setAttribute(Qt::AA_Use96Dpi, true);
    return application;
}

namespace WidgetTest {

// Clicks the box itself, where the user clicks, not its label.
inline void clickCheckBox(QCheckBox *box)
{
    QStyleOptionButton option;
    option.initFrom(box);
    const QRect indicator = box->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, box);
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, indicator.center());
}

// A translation given as "context|source" -> text; installed, it changes the language of
// every window without a translation file.
class Translator : public QTranslator
{
public:
    explicit Translator(QHash<QString, QString> texts)
        : m_texts(std::move(texts))
    { }
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return m_texts.value(QString::fromUtf8(context) + QLatin1Char('|') + QString::fromUtf8(source));
    }

private:
    const QHash<QString, QString> m_texts;
};

} // namespace WidgetTest

// Answers every dialog of the program in the user's place and notes what the user was shown.
class ScriptedPrompts : public IUserPrompts
{
public:
    struct Shown
    {
        QString kind; // "ask", "warn", "inform", "open" or "save"
        QString title;
        QString text; // the file filter for file dialogs
        QStringList buttons; // the suggested path for the save dialog, the folder for the open dialog
        int defaultButton = -1;
        int escapeButton = -1;
    };

    QList<Shown> shown;
    QList<int> askAnswers;
    QStringList fileAnswers;
    QList<int> numberAnswers;
    // The file type chosen in the next save dialog that offers several; none: the first.
    QStringList filterAnswers;

    int ask(QWidget *, const QString &title, const QString &text, const QStringList &buttons,
        int defaultButton, int escapeButton) override
    {
        shown.append({QStringLiteral("ask"), title, text, buttons, defaultButton, escapeButton});
        return askAnswers.isEmpty() ? -1 : askAnswers.takeFirst();
    }
    void warn(QWidget *, const QString &title, const QString &text, const QString &button) override
    {
        shown.append({QStringLiteral("warn"), title, text, {button}});
    }
    void inform(QWidget *, const QString &title, const QString &text, const QString &button) override
    {
        shown.append({QStringLiteral("inform"), title, text, {button}});
    }
    QString openFileName(
        QWidget *, const QString &title, const QString &filter, const QString &folder) override
    {
        shown.append(
            {QStringLiteral("open"), title, filter, folder.isEmpty() ? QStringList() : QStringList {folder}});
        return fileAnswers.isEmpty() ? QString() : fileAnswers.takeFirst();
    }
    QString saveFileName(
        QWidget *, const QString &title, const QString &suggestedPath, const QString &filter) override
    {
        shown.append({QStringLiteral("save"), title, filter, {suggestedPath}});
        return fileAnswers.isEmpty() ? QString() : fileAnswers.takeFirst();
    }
    QString saveFileName(QWidget *parent, const QString &title, const QString &suggestedPath,
        const QStringList &filters, QString &chosenFilter) override
    {
        chosenFilter = filterAnswers.isEmpty() ? filters.value(0) : filterAnswers.takeFirst();
        return saveFileName(parent, title, suggestedPath, filters.join(QLatin1String(";;")));
    }
    std::optional<int> askNumber(QWidget *, const QString &title, const QString &label, int, int, int) override
    {
        shown.append({QStringLiteral("number"), title, label, {}});
        return numberAnswers.isEmpty() ? std::nullopt : std::optional<int>(numberAnswers.takeFirst());
    }
    // The next file answer is a printer that writes PDF there; none cancels.
    bool choosePrinter(QWidget *, QPrinter &printer) override
    {
        shown.append({QStringLiteral("print"), {}, {}, {}});
        if (fileAnswers.isEmpty())
            return false;
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(fileAnswers.takeFirst());
        return true;
    }

    QStringList titles() const { return each(&Shown::title); }
    QStringList kinds() const { return each(&Shown::kind); }
    QStringList each(QString Shown::*field) const
    {
        QStringList list;
        for (const Shown &item : shown)
            list.append(item.*field);
        return list;
    }
};

#define SPARKWRIGHT_WIDGET_TEST_MAIN(TestObject)                                                             \
    int main(int argc, char *argv[])                                                                         \
    {                                                                                                        \
        /* The user's own settings, the recent profiles among them, stay untouched. */                       \
        const QTemporaryDir settingsHome;                                                                    \
        qputenv("XDG_CONFIG_HOME", settingsHome.path().toLocal8Bit());                                       \
        const std::unique_ptr<QApplication> application = createTestApplication(argc, argv);                 \
        TestObject test;                                                                                     \
        QTEST_SET_MAIN_SOURCE_PATH                                                                           \
        return QTest::qExec(&test, argc, argv);                                                              \
    }
