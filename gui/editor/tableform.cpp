#include "editor/tableform.h"

#include "editor/chintlabel.h"
#include "editor/iprofileeditormain.h"
#include "profile/mapvalidation.h"
#include "profile/profile.h"

#include "ui_tableform.h"

#include <QEvent>
#include <QHeaderView>
#include <QStandardItemModel>
#include <QStyle>

#include <algorithm>

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
    // Tab and Shift+Tab go on to the settings and the buttons; the arrow keys move in the table.
    m_ui->tableView->setTabKeyNavigation(false);

    QHeaderView *horizontal = m_ui->tableView->horizontalHeader();
    configureHeader(horizontal);
    horizontal->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    configureHeader(m_ui->tableView->verticalHeader());
    setHeaderTexts();
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
    // The speed header reads as in the graph and the summary ("U/min" in German).
    m_model->setHorizontalHeaderLabels({tr("RPM"), tr("Angle")});
    fitColumns();
}

// The columns are as wide as the widest value a point may hold ("20000" rpm, "49" degrees) or
// their bold heading, in the fonts now in use, and the form as wide as its table: a larger
// system font or a longer heading widens the table instead of cutting its numbers.
void TableForm::fitColumns()
{
    QTableView *view = m_ui->tableView;
    const QFontMetrics cellMetrics(view->font());
    // Room for the cell's own margins and for the editor's frame while a value is typed.
    const int cellPadding = 2 * view->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, view) + 12;
    QHeaderView *header = view->horizontalHeader();
    const QFontMetrics headerMetrics(header->font());
    const int headerPadding = 2 * header->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header) + 4;
    const QString widest[] = {QString::number(kMaxRpm), QString::number(kMaxAngle)};
    int tableWidth = 2 * view->frameWidth();
    for (int column : {kRpmColumn, kAngleColumn}) {
        const QString heading = m_model->headerData(column, Qt::Horizontal).toString();
        const int width = std::max(cellMetrics.horizontalAdvance(widest[column]) + cellPadding,
            headerMetrics.horizontalAdvance(heading) + headerPadding);
        view->setColumnWidth(column, width);
        tableWidth += width;
    }
    QHeaderView *vertical = view->verticalHeader();
    const int rowNumbers = QFontMetrics(vertical->font()).horizontalAdvance(QString::number(kMapPointCount))
        + 2 * vertical->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, vertical) + 12;
    vertical->setFixedWidth(std::max(40, rowNumbers));
    tableWidth += vertical->width();
    // Ten rows do not always fit the height the editor gives the table.
    tableWidth += view->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, view);
    view->setFixedWidth(tableWidth);
    setFixedWidth(tableWidth);
}

void TableForm::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fitColumns();
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

void TableForm::showValidation(const MapValidation &validation)
{
    if (!m_profile)
        return;
    GuardScope guard(m_updating);
    // A translucent red reads on light and dark palettes alike, with the palette's own text.
    const QBrush faulty(QColor(230, 40, 40, 90));
    for (int row = 0; row < kMapPointCount; ++row) {
        for (int column : {kRpmColumn, kAngleColumn}) {
            QStandardItem *item = m_model->item(row, column);
            if (!item)
                continue;
            const QString message = validation.cellMessage(row, column, m_profile->map());
            item->setToolTip(message);
            item->setData(message.isEmpty() ? QVariant() : QVariant(faulty), Qt::BackgroundRole);
            // Screen readers say why the cell is marked.
            item->setData(message.isEmpty() ? QVariant() : QVariant(message), Qt::AccessibleDescriptionRole);
        }
    }
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
    // Over the column headings, never over a value: the hint is about the values.
    const QWidget *view = m_ui->tableView;
    m_hintLabel->move(view->width() / 2 - m_hintLabel->width() / 2 - 5, 0);
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
    // A value that fell back, or was typed as it stood, changes nothing and is no step to undo.
    if (rpm == previous.rpm && angle == previous.angle)
        return;

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
