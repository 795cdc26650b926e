#include "editor/hintdialog.h"

#include "profile/hintcatalog.h"
#include "shell/clanguageswitcher.h"

#include "ui_hintdialog.h"

#include <QEvent>

HintDialog::HintDialog(const HintCatalog *catalog, CLanguageSwitcher &switcher, QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::HintDialog>())
    , m_catalog(catalog)
    , m_switcher(switcher)
{
    Q_INIT_RESOURCE(images);
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    connect(m_ui->closeButton, &QPushButton::clicked, this, &HintDialog::onClose);
}

HintDialog::~HintDialog() = default;

void HintDialog::showHint(int number)
{
    if (number < 0 || !m_catalog || number >= m_catalog->count())
        return;
    m_current = number;
    showTexts();
    if (!isVisible() && m_closedGeometry)
        setGeometry(*m_closedGeometry);
    show();
    raise();
    activateWindow();
}

void HintDialog::showTexts()
{
    if (!m_catalog || m_current < 0)
        return;
    const HintText hint = m_catalog->hint(m_current, m_switcher.language());
    m_ui->titleLabel->setText(hint.title);
    m_ui->textBrowser->setHtml(hint.text);
    // The text is what the dialog is about: it reads under the hint's title.
    m_ui->textBrowser->setAccessibleName(hint.title);
}

void HintDialog::retranslate()
{
    m_ui->retranslateUi(this);
    showTexts();
}

void HintDialog::onClose()
{
    if (isVisible())
        m_closedGeometry = geometry();
    hide();
}

void HintDialog::reject()
{
    onClose();
    setResult(QDialog::Rejected);
}

void HintDialog::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QDialog::changeEvent(event);
}
