#include "errorgui.h"

#include "ui_errorgui.h"

ErrorGui::ErrorGui(const QString &displayText, QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::ErrorGui>())
{
    m_ui->setupUi(this);
    m_ui->textEdit->setHtml(displayText);
    connect(m_ui->pushButtonClose, &QPushButton::clicked, this, &ErrorGui::onCloseButton);
    show();
}

ErrorGui::~ErrorGui() = default;

void ErrorGui::onCloseButton()
{
    close();
}
