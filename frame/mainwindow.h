#pragma once

#include "i18n/itranslatable.h"

#include <QMainWindow>

#include <memory>

namespace Ui {
class MainWindow;
}
class CDataHolder;
class CLanguageMenu;

// The program's one window. It holds the pages and shows one of them at a time.
class MainWindow : public QMainWindow, public ITranslatable
{
    Q_OBJECT

public:
    MainWindow(CDataHolder &data, CLanguageMenu &languageMenu, QWidget *parent = nullptr);
    ~MainWindow() override;

    // Shows the first page.
    void start();
    void retranslate(int language) override;

private:
    std::unique_ptr<Ui::MainWindow> m_ui;
    CDataHolder &m_data;
};
