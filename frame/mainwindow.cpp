#include "frame/mainwindow.h"

#include "app/cdataholder.h"
#include "i18n/clanguagemenu.h"

#include "ui_mainwindow.h"

MainWindow::MainWindow(CDataHolder &data, CLanguageMenu &languageMenu, QWidget *parent)
    : QMainWindow(parent)
    , m_ui(std::make_unique<Ui::MainWindow>())
    , m_data(data)
{
    m_ui->setupUi(this);
    m_ui->menubar->addMenu(&languageMenu);
}

MainWindow::~MainWindow() = default;

void MainWindow::start()
{ }

void MainWindow::retranslate(int language)
{
    Q_UNUSED(language)
    m_ui->retranslateUi(this);
}
