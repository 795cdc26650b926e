#include "dialogs/aboutdialog.h"

#include "profile/defaultlibrary.h"
#include "render/summarysheet.h"

#include "ui_aboutdialog.h"

AboutDialog::AboutDialog(const DefaultLibrary *library, QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::AboutDialog>())
    , m_library(library)
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    connect(m_ui->closeButton, &QPushButton::clicked, this, &AboutDialog::close);
    setTexts();
}

AboutDialog::~AboutDialog() = default;

void AboutDialog::retranslate(int language)
{
    Q_UNUSED(language)
    m_ui->retranslateUi(this);
    setTexts();
}

void AboutDialog::setTexts()
{
    m_ui->versionLabel->setText(tr("Version %1").arg(programVersion()));
    m_ui->libraryLabel->setText(m_library
            ? tr("Factory profiles: library %1").arg(libraryNumberText(m_library->libraryValue()))
            : QString());
}
