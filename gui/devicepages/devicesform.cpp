#include "devicepages/devicesform.h"

#include "device/serialports.h"
#include "render/bracemarkup.h"
#include "shell/iuserprompts.h"
#include "ui_devicesform.h"

namespace {

QStringList portNames(const std::vector<SerialPortEntry> &ports)
{
    QStringList names;
    for (const SerialPortEntry &port : ports)
        names << port.name;
    return names;
}

} // namespace

DevicesForm::DevicesForm(const IPortLister &ports, QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::DevicesForm>())
    , m_ports(ports.clone())
{
    m_ui->setupUi(this);
    m_poll.setInterval(1500);
    connect(&m_poll, &QTimer::timeout, this, &DevicesForm::pollPorts);
    connect(m_ui->refreshButton, &QPushButton::clicked, this, &DevicesForm::onRefreshList);
    connect(m_ui->retryButton, &QPushButton::clicked, this, &DevicesForm::onRetryAutoDetection);
    connect(m_ui->portList, &QListWidget::itemClicked, this, &DevicesForm::onItemClicked);
    connect(m_ui->portList, &QListWidget::itemActivated, this, [this] { onNext(); });
    retranslate(0);
}

DevicesForm::~DevicesForm() = default;

void DevicesForm::setActive(bool active)
{
    setVisible(active);
    if (active) {
        onRefreshList();
        m_poll.start();
        m_ui->portList->setFocus();
    } else {
        m_poll.stop();
    }
}

void DevicesForm::onBack()
{
    emit backRequested();
}

void DevicesForm::onNext()
{
    const QList<QListWidgetItem *> selected = m_ui->portList->selectedItems();
    if (selected.isEmpty()) {
        userPrompts().warn(this, QStringLiteral("Sparkwright"), tr("No port is selected."), tr("OK"));
        return;
    }
    emit portChosen(selected.first()->data(Qt::UserRole).toString());
}

void DevicesForm::retranslate(int)
{
    m_ui->retranslateUi(this);
    explain();
    setStatusTip(tr("Please select the port of your CDI."));
    if (isVisible())
        onRefreshList();
}

void DevicesForm::onRefreshList()
{
    setEnabled(false);
    const std::vector<SerialPortEntry> ports = m_ports->ports();
    m_listed = portNames(ports);
    m_bridge.clear();
    m_ui->portList->clear();
    for (const SerialPortEntry &port : ports) {
        QString text = port.name;
        if (!port.description.isEmpty())
            text += QStringLiteral(" - ") + port.description;
        if (port.isVirtual)
            text += QStringLiteral(" (") + tr("virtual CDI") + QLatin1Char(')');
        text += QStringLiteral("   Enum: %1, Product ID: %2, Vendor ID: %3")
                    .arg(port.name)
                    .arg(port.hasIds ? port.productId : 0)
                    .arg(port.hasIds ? port.vendorId : 0);
        auto *item = new QListWidgetItem(text, m_ui->portList);
        item->setData(Qt::UserRole, port.name);
        item->setSelected(isBridgePort(port));
        if (item->isSelected() && m_bridge.isEmpty())
            m_bridge = port.name;
    }
    if (m_ui->portList->count() > 0)
        m_ui->portList->setCurrentRow(0, QItemSelectionModel::NoUpdate);
    explain();
    setEnabled(true);
}

// Once a bridge is listed and selected, detection has not failed: the page asks only to confirm.
void DevicesForm::explain()
{
    if (!m_bridge.isEmpty()) {
        m_ui->explanationLabel->setText(withBraceMarkup(
            tr("The {USB/UART bridge} of your CDI was found on %1 and is selected in the list below. Choose "
               "Next to use it, or select another port.")
                .arg(portPath(m_bridge).toHtmlEscaped())));
        return;
    }
    m_ui->explanationLabel->setText(withBraceMarkup(
        tr("Automatic detection of the {USB/UART bridge} that connects your CDI with your computer failed. "
           "Please make sure that it is plugged in and either retry detection or manually select the "
           "appropriate port in the list below.")));
}

void DevicesForm::onRetryAutoDetection()
{
    const QString port = findBridgePort(*m_ports);
    if (port.isEmpty()) {
        userPrompts().warn(this, QStringLiteral("Sparkwright"), tr("Automatic detection failed."), tr("OK"));
        return;
    }
    emit portChosen(port);
}

void DevicesForm::onItemClicked(QListWidgetItem *item)
{
    m_ui->portList->setCurrentItem(item);
}

// Rebuilt only when the ports themselves changed, so that the user's selection stays.
void DevicesForm::pollPorts()
{
    if (portNames(m_ports->ports()) != m_listed)
        onRefreshList();
}
