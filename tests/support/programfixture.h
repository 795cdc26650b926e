#pragma once

// The whole program as a user meets it after the disclaimer: the data files from the build
// folder, the pages and dialogs built and wired the way a normal start does it, the main window
// shown. Every dialog is answered by ScriptedPrompts, which also notes what the user was shown.
#include "cstartup.h"
#include "data/cdataholder.h"
#include "data/cfileerror.h"
#include "editor/editorform.h"
#include "mainwindow.h"
#include "shell/clanguagemenu.h"
#include "shell/clanguageswitcher.h"
#include "support/widgettestmain.h"

#include <QAbstractButton>
#include <QLabel>
#include <QTest>

#include <memory>

// The editor words its own prompt; Program::prompt() gives this in its place.
const char kEditorPrompt[] = "<the editor's own prompt>";
const char kConfirmPrompt[] = "Please confirm programming the CDI with this profile.";

class Program
{
public:
    Program()
    {
        setUserPrompts(&prompts);
        QVERIFY2(data.loadLibrary(true), "default.cds missing in the build folder");
        QVERIFY2(data.loadHints(), "hints.cdh missing in the build folder");
        menu = std::make_unique<CLanguageMenu>(switcher);
        windows = std::make_unique<CProgramWindows>(data, switcher, *menu);
        QVERIFY(QTest::qWaitForWindowExposed(&window()));
        window().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window()));
    }

    ~Program()
    {
        windows.reset();
        menu.reset();
        setUserPrompts(nullptr);
    }

    // False when the data files or the window could not be had; the constructor said why.
    bool ready() const { return windows && window().isActiveWindow(); }
    MainWindow &window() const { return windows->mainWindow(); }
    template<typename T = QWidget> T *child(const char *name) const
    {
        return window().findChild<T *>(QLatin1String(name));
    }
    QAbstractButton *button(const char *name) const { return child<QAbstractButton>(name); }
    QString prompt() const
    {
        const QString text = child<QLabel>("promptLabel")->text();
        const EditorForm *editor = window().findChild<EditorForm *>(); // null until first shown
        if (editor && editor->isVisible() && !text.isEmpty() && text == editor->statusTip())
            return QLatin1String(kEditorPrompt);
        return text;
    }
    void click(const char *name) const
    {
        QAbstractButton *target = button(name);
        QVERIFY2(target, name);
        QVERIFY2(target->isVisible() && target->isEnabled(), name);
        QTest::mouseClick(target, Qt::LeftButton);
    }
    const Profile &firstTemplate() const { return *data.library()->profileAt(0); }

    ScriptedPrompts prompts;
    CDataHolder data;
    CLanguageSwitcher switcher;
    std::unique_ptr<CLanguageMenu> menu;
    std::unique_ptr<CProgramWindows> windows;
};
