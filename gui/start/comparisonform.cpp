#include "start/comparisonform.h"

#include "profile/profile.h"
#include "profile/profilecomparison.h"
#include "render/bracemarkup.h"
#include "render/mapplotter.h"
#include "shell/caccessibility.h"
#include "shell/cprofilefiles.h"
#include "start/cprofileitem.h"

#include "ui_comparisonform.h"

#include <algorithm>

ComparisonForm::ComparisonForm(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::ComparisonForm>())
{
    m_ui->setupUi(this);
    setToolTips();
    connect(m_ui->addDefaultButton, &QPushButton::clicked, this, &ComparisonForm::onAddDefaultButton);
    connect(m_ui->addCustomButton, &QPushButton::clicked, this, &ComparisonForm::onAddCustomButton);
    connect(m_ui->removeButton, &QPushButton::clicked, this, &ComparisonForm::onRemoveButton);
    connect(m_ui->clearButton, &QPushButton::clicked, this, &ComparisonForm::onClearButton);
    connect(m_ui->showGraphButton, &QPushButton::clicked, this, &ComparisonForm::onShowGraphButton);
    // Remove follows the selection, whether it was made by mouse or keyboard.
    connect(m_ui->list, &QListWidget::itemSelectionChanged, this, &ComparisonForm::updateButtons);
    connect(m_ui->list, &QListWidget::itemChanged, this, [this](QListWidgetItem *item) {
        if (const auto *entry = dynamic_cast<const CProfileItem *>(item))
            emit shownChanged(m_ui->list->row(item), entry->isShown());
    });
    updateButtons();
}

ComparisonForm::~ComparisonForm() = default;

// A new entry takes the first colour no listed entry has, so that no entry changes its colour
// when another is added or removed.
void ComparisonForm::addProfile(const Profile &profile)
{
    std::vector<bool> taken;
    for (int row = 0; row < m_ui->list->count(); ++row) {
        if (const auto *item = dynamic_cast<const CProfileItem *>(m_ui->list->item(row))) {
            taken.resize(std::max(taken.size(), size_t(item->paletteIndex()) + 1));
            taken[size_t(item->paletteIndex())] = true;
        }
    }
    const int free = int(std::find(taken.begin(), taken.end(), false) - taken.begin());
    m_ui->list->addItem(new CProfileItem(profile, free)); // the list owns its items
    updateButtons();
}

std::vector<PlottedMap> ComparisonForm::plottedMaps() const
{
    const std::vector<Profile> listed = profiles();
    const QStringList labels = comparisonLabels(listed);
    std::vector<PlottedMap> maps;
    for (int row = 0; row < m_ui->list->count(); ++row) {
        if (const auto *item = dynamic_cast<const CProfileItem *>(m_ui->list->item(row)))
            maps.push_back(
                {item->profile(), labels.value(int(maps.size())), item->paletteIndex(), item->isShown()});
    }
    return maps;
}

void ComparisonForm::setShown(int row, bool shown)
{
    if (QListWidgetItem *item = m_ui->list->item(row))
        item->setCheckState(shown ? Qt::Checked : Qt::Unchecked);
}

std::vector<Profile> ComparisonForm::profiles() const
{
    std::vector<Profile> listed;
    for (int row = 0; row < m_ui->list->count(); ++row) {
        if (const auto *item = dynamic_cast<const CProfileItem *>(m_ui->list->item(row)))
            listed.push_back(item->profile());
    }
    return listed;
}

void ComparisonForm::retranslate()
{
    m_ui->retranslateUi(this);
    setToolTips();
    for (int row = 0; row < m_ui->list->count(); ++row) {
        if (auto *item = dynamic_cast<CProfileItem *>(m_ui->list->item(row)))
            item->retranslate();
    }
}

void ComparisonForm::setToolTips()
{
    for (QPushButton *button : {m_ui->addDefaultButton, m_ui->addCustomButton, m_ui->removeButton})
        CAccessibility::setMarkedToolTip(button, button->toolTip());
}

// "Show graph" and "Remove all" need something in the list, "Remove" a selected entry.
void ComparisonForm::updateButtons()
{
    const bool filled = m_ui->list->count() > 0;
    m_ui->showGraphButton->setEnabled(filled);
    m_ui->clearButton->setEnabled(filled);
    m_ui->removeButton->setEnabled(!m_ui->list->selectedItems().isEmpty());
}

void ComparisonForm::onAddDefaultButton()
{
    emit templateChoiceRequested();
}

void ComparisonForm::onAddCustomButton()
{
    if (const std::optional<Profile> profile = CProfileFiles::open(this))
        addProfile(*profile);
}

// Takes out the selected entry; the one that moves into its place is selected next, so that
// Remove can be pressed again.
void ComparisonForm::onRemoveButton()
{
    const QList<QListWidgetItem *> selected = m_ui->list->selectedItems();
    if (selected.isEmpty())
        return;
    const int row = m_ui->list->row(selected.first());
    delete m_ui->list->takeItem(row);
    if (m_ui->list->count() > 0)
        m_ui->list->setCurrentRow(std::min(row, m_ui->list->count() - 1));
    updateButtons();
}

void ComparisonForm::onClearButton()
{
    m_ui->list->clear();
    m_ui->list->update();
    updateButtons();
}

void ComparisonForm::onShowGraphButton()
{
    emit graphRequested(plottedMaps());
}
