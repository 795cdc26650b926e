#include "editor/tableform.h"

#include "editor/chintlabel.h"
#include "editor/iprofileeditormain.h"
#include "profile/mapvalidation.h"
#include "profile/profile.h"

#include "ui_tableform.h"

#include <QHeaderView>
#include <QStandardItemModel>
#include <QStyle>

namespace {

constexpr int kRpmColumn = 0;
constexpr int kAngleColumn = 1;

// Sets a flag for the lifetime of the scope and restores its earlier value afterwards.
class GuardScope
{
public:
    explicit GuardScope(bool &flag)
        : m_flag(flag)
        , m_previous(flag)
    {
        m_flag = true;
    }
    ~GuardScope() { m_flag = m_previous; }
    GuardScope(const GuardScope &) = delete;
    GuardScope &operator=(const GuardScope &) = delete;

private:
    bool &m_flag;
    const bool m_previous;
};

void configureHeader(QHeaderView *header)
{
    header->setSectionsClickable(false);
    header->setSectionResizeMode(QHeaderView::Fixed);
    QFont font = header->font();
    font.setBold(true);
    header->setFont(font);
}

} // namespace

TableForm::TableForm(IProfileEditorMain *editor, QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::TableForm>())
    , m_editor(editor)
    , m_model(new QStandardItemModel(kMapPointCount, 2, this))
{
    Q_INIT_RESOURCE(images);
    m_ui->setupUi(this);
    m_ui->tableView->setModel(m_model);

    QHeaderView *horizontal = m_ui->tableView->horizontalHeader();
    configureHeader(horizontal);
    horizontal->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    QHeaderView *vertical = m_ui->tableView->verticalHeader();
    configureHeader(vertical);
    vertical->setFixedWidth(40);
    m_ui->tableView->setColumnWidth(kRpmColumn, 60);
    m_ui->tableView->setColumnWidth(kAngleColumn, 50);
    setHeaderTexts();
    setFixedWidth(m_ui->tableView->minimumWidth());
    m_ui->toolButtonSort->setVisible(false);

    connect(m_ui->tableView->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
        &TableForm::onTableRowChanged);
    connect(m_model, &QStandardItemModel::itemChanged, this, &TableForm::onTableEdited);
    connect(m_ui->toolButtonSort, &QToolButton::clicked, this, &TableForm::onSortButtonClicked);
}

TableForm::~TableForm()
{
    // The view and the model report their own teardown; the form is no longer there to listen.
    disconnect(m_ui->tableView->selectionModel(), nullptr, this, nullptr);
    disconnect(m_model, nullptr, this, nullptr);
}

void TableForm::setHeaderTexts()
{
    // The speed header reads the same in every language.
    const QStringList labels {QStringLiteral("RPM"), tr("Angle")};
    m_model->setHorizontalHeaderLabels(labels);

    // The sections keep their fixed widths; a heading that would be cut off there (the German
    // "Winkel" in bold) gets a slightly smaller bold font instead.
    QHeaderView *header = m_ui->tableView->horizontalHeader();
    const int margin = 2 * header->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header) + 2;
    QFont font = m_ui->tableView->font();
    font.setBold(true);
    auto fits = [&](const QFont &candidate) {
        const QFontMetrics metrics(candidate);
        for (int column = 0; column < labels.size(); ++column) {
            if (metrics.horizontalAdvance(labels.at(column)) + margin > header->sectionSize(column))
                return false;
        }
        return true;
    };
    while (!fits(font)) {
        if (font.pointSizeF() > 7.0)
            font.setPointSizeF(font.pointSizeF() - 0.5);
        else if (font.pointSizeF() <= 0 && font.pixelSize() > 9)
            font.setPixelSize(font.pixelSize() - 1);
        else
            break;
    }
    header->setFont(font);
}

void TableForm::setCellText(int row, int column, const QString &text)
{
    if (QStandardItem *item = m_model->item(row, column))
        item->setText(text);
    else
        m_model->setItem(row, column, new QStandardItem(text));
}

void TableForm::setProfile(Profile *profile)
{
    m_profile = profile;
    if (!m_profile)
        return;
    GuardScope guard(m_updating);
    const IgnitionMap &map = m_profile->map();
    for (int row = 0; row < kMapPointCount; ++row) {
        setCellText(row, kRpmColumn, QString::number(map.point(row).rpm));
        setCellText(row, kAngleColumn, QString::number(map.point(row).angle));
    }
    m_ui->toolButtonSort->setVisible(!map.isStrictlyAscending());
}

int TableForm::currentRow() const
{
    const QModelIndex current = m_ui->tableView->currentIndex();
    return current.isValid() ? current.row() : -1;
}

void TableForm::selectRow(int row)
{
    if (currentRow() == row)
        return;
    GuardScope guard(m_updating);
    m_ui->tableView->selectionModel()->setCurrentIndex(
        m_model->index(row, kAngleColumn), QItemSelectionModel::SelectCurrent);
    m_ui->tableView->setFocus(Qt::OtherFocusReason);
}

void TableForm::setHintLabel(CHintLabel *label)
{
    m_hintLabel = label;
    if (!m_hintLabel)
        return;
    m_hintLabel->setParent(m_ui->tableView);
    centreHintLabel();
}

void TableForm::hideHintLabel()
{
    if (m_hintLabel)
        m_hintLabel->hide();
}

void TableForm::centreHintLabel()
{
    if (!m_hintLabel)
        return;
    const QWidget *view = m_ui->tableView;
    m_hintLabel->move(
        view->width() / 2 - m_hintLabel->width() / 2 - 5, view->height() / 2 - m_hintLabel->height() / 2);
}

void TableForm::retranslate()
{
    m_ui->retranslateUi(this);
    setHeaderTexts();
}

void TableForm::onTableRowChanged(const QModelIndex &current, const QModelIndex &)
{
    if (m_updating)
        return;
    m_editor->onPointSelected(current.isValid() ? current.row() : -1, true);
}

void TableForm::onTableEdited(QStandardItem *item)
{
    if (m_updating || !m_profile || !item)
        return;
    const int row = item->row();
    IgnitionMap map = m_profile->map();
    const MapPoint previous = map.point(row);

    // Whatever parses as a base-10 integer is kept as typed, in or out of range; anything else
    // falls back to the value the point had.
    auto cellValue = [this, row](int column, int fallback) {
        const QStandardItem *cell = m_model->item(row, column);
        if (!cell)
            return 0;
        bool ok = false;
        const int value = cell->text().trimmed().toInt(&ok, 10);
        return ok ? value : fallback;
    };
    const int rpm = cellValue(kRpmColumn, previous.rpm);
    const int angle = cellValue(kAngleColumn, previous.angle);

    {
        // Typed "007" or " 7" reads back as "7".
        GuardScope guard(m_updating);
        setCellText(row, kRpmColumn, QString::number(rpm));
        setCellText(row, kAngleColumn, QString::number(angle));
    }

    map.setPoint(row, rpm, angle);
    m_profile->setMap(map);
    m_editor->onMapChanged(true);
    m_editor->onEdited(IProfileEditorMain::Edit::Cell, row);
}

void TableForm::onSortButtonClicked()
{
    if (!m_profile)
        return;
    m_profile->setMap(sortAscending(m_profile->map()));
    m_editor->onMapChanged(true);
    m_editor->onEdited(IProfileEditorMain::Edit::Sort, -1);
}
