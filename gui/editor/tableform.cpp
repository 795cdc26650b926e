#include "editor/tableform.h"

#include "editor/chintlabel.h"
#include "editor/iprofileeditormain.h"
#include "editor/mapcelldelegate.h"
#include "profile/mapvalidation.h"
#include "profile/profile.h"
#include "shell/iuserprompts.h"

#include "ui_tableform.h"

#include <QAccessible>
#include <QAction>
#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QStandardItemModel>
#include <QStyle>

#include <algorithm>
#include <cmath>

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
    m_ui->tableView->setItemDelegate(new MapCellDelegate(m_ui->tableView));
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
    // Return confirms a value and goes on to the next row, as in a spreadsheet. The keyboard is
    // back in the table's cell, and a screen reader hears which one.
    connect(m_ui->tableView->itemDelegate(), &QAbstractItemDelegate::closeEditor, this,
        [this](QWidget *, QAbstractItemDelegate::EndEditHint hint) {
            QTableView *view = m_ui->tableView;
            const QModelIndex current = view->currentIndex();
            view->setFocus(Qt::OtherFocusReason);
            if (hint == QAbstractItemDelegate::SubmitModelCache && current.row() + 1 < kMapPointCount)
                view->setCurrentIndex(current.sibling(current.row() + 1, current.column()));
            else
                announceCurrentCell();
        });
    createActions();
}

// The table's own commands, on its keys and in its context menu.
void TableForm::createActions()
{
    QTableView *view = m_ui->tableView;
    const auto add = [this, view](const QKeySequence &key, void (TableForm::*slot)()) {
        auto *action = new QAction(view);
        if (!key.isEmpty()) {
            action->setShortcut(key);
            action->setShortcutContext(Qt::WidgetShortcut);
        }
        connect(action, &QAction::triggered, this, slot);
        view->addAction(action);
        return action;
    };
    m_copy = add(QKeySequence::Copy, &TableForm::onCopy);
    m_paste = add(QKeySequence::Paste, &TableForm::onPaste);
    // + and - are keys of the angles only (eventFilter): in a speed they start typing as before.
    m_raise = add(QKeySequence(), &TableForm::onRaise);
    m_lower = add(QKeySequence(), &TableForm::onLower);
    view->installEventFilter(this);
    m_setValue = add(QKeySequence(Qt::CTRL | Qt::Key_E), &TableForm::onSetValue);
    m_interpolate = add(QKeySequence(Qt::CTRL | Qt::Key_I), &TableForm::onInterpolate);
    view->setContextMenuPolicy(Qt::ActionsContextMenu);
    setTexts();
}

void TableForm::setTexts()
{
    m_copy->setText(tr("&Copy"));
    m_paste->setText(tr("&Paste"));
    m_raise->setText(tr("&Add one degree") + QLatin1String("\t+"));
    m_lower->setText(tr("&Subtract one degree") + QLatin1String("\t-"));
    m_setValue->setText(tr("Set to &value..."));
    m_interpolate->setText(tr("&Interpolate angles"));
}

bool TableForm::eventFilter(QObject *watched, QEvent *event)
{
    // While a value is typed the keys go to the cell's editor, not to the view.
    if (watched == m_ui->tableView && event->type() == QEvent::KeyPress
        && m_ui->tableView->currentIndex().column() == kAngleColumn) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Plus || key == Qt::Key_Minus) {
            addDegrees(key == Qt::Key_Plus ? 1 : -1);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void TableForm::onCopy()
{
    QGuiApplication::clipboard()->setText(selectedText());
}

void TableForm::onPaste()
{
    paste(QGuiApplication::clipboard()->text());
}

void TableForm::onRaise()
{
    addDegrees(1);
}

void TableForm::onLower()
{
    addDegrees(-1);
}

void TableForm::onSetValue()
{
    const QList<int> rows = selectedRows();
    if (!m_profile || rows.isEmpty())
        return;
    const QPair<int, int> columns = selectedColumns();
    const MapPoint first = m_profile->map().point(rows.first());
    const bool angles = columns.first == kAngleColumn;
    const std::optional<int> value = userPrompts().askNumber(this, tr("Set to value"),
        angles ? tr("Angle for the selected points:") : tr("Value for the selected cells:"),
        angles ? first.angle : first.rpm, 0, angles ? kMaxAngle : kMaxRpm);
    if (value)
        setSelectedCells(*value);
}

void TableForm::onInterpolate()
{
    interpolateSelectedAngles();
}

QList<int> TableForm::selectedRows() const
{
    QList<int> rows;
    for (const QModelIndex &index : m_ui->tableView->selectionModel()->selectedIndexes()) {
        if (!rows.contains(index.row()))
            rows << index.row();
    }
    if (rows.isEmpty() && currentRow() >= 0)
        rows << currentRow();
    std::sort(rows.begin(), rows.end());
    return rows;
}

QPair<int, int> TableForm::selectedColumns() const
{
    int first = kAngleColumn;
    int last = kRpmColumn;
    const QModelIndexList selected = m_ui->tableView->selectionModel()->selectedIndexes();
    for (const QModelIndex &index : selected) {
        first = std::min(first, index.column());
        last = std::max(last, index.column());
    }
    if (selected.isEmpty()) {
        const int column = m_ui->tableView->currentIndex().isValid() ? m_ui->tableView->currentIndex().column()
                                                                    : kAngleColumn;
        return {column, column};
    }
    return {first, last};
}

QString TableForm::selectedText() const
{
    if (!m_profile)
        return QString();
    const QPair<int, int> columns = selectedColumns();
    QStringList lines;
    for (const int row : selectedRows()) {
        const MapPoint point = m_profile->map().point(row);
        QStringList cells;
        for (int column = columns.first; column <= columns.second; ++column)
            cells << QString::number(column == kRpmColumn ? point.rpm : point.angle);
        lines << cells.join(QLatin1Char('\t'));
    }
    return lines.join(QLatin1Char('\n')) + (lines.isEmpty() ? QString() : QStringLiteral("\n"));
}

bool TableForm::paste(const QString &text)
{
    if (!m_profile)
        return false;
    // Rows by line, cells by tab, semicolon, comma or blanks, as spreadsheets and editors give
    // them; empty lines at the end do not count.
    QStringList lines = QString(text).remove(QLatin1Char('\r')).split(QLatin1Char('\n'));
    while (!lines.isEmpty() && lines.constLast().trimmed().isEmpty())
        lines.removeLast();
    const QModelIndex current = m_ui->tableView->currentIndex();
    const int firstRow = current.isValid() ? current.row() : 0;
    const int firstColumn = current.isValid() ? current.column() : kRpmColumn;
    static const QRegularExpression separators(QStringLiteral("[\\t;,\\s]+"));
    QList<QList<int>> block;
    int width = 0;
    for (const QString &line : lines) {
        QList<int> values;
        for (const QString &cell : line.trimmed().split(separators, Qt::SkipEmptyParts)) {
            bool ok = false;
            const int value = cell.toInt(&ok, 10);
            if (!ok) {
                userPrompts().warn(this, tr("Paste"),
                    tr("Only whole numbers can be pasted into the map; \"%1\" is not one. Nothing was changed.")
                        .arg(cell.left(40)),
                    tr("OK"));
                return false;
            }
            values << value;
        }
        width = std::max(width, int(values.size()));
        block << values;
    }
    if (block.isEmpty() || width == 0) {
        userPrompts().warn(this, tr("Paste"), tr("The clipboard holds no numbers to paste."), tr("OK"));
        return false;
    }
    if (firstRow + block.size() > kMapPointCount || firstColumn + width > 2) {
        userPrompts().warn(this, tr("Paste"),
            tr("%1 rows of %2 values do not fit into the map from row %3 on: it has 10 rows of speed "
               "and angle. Nothing was changed.")
                .arg(block.size())
                .arg(width)
                .arg(firstRow + 1),
            tr("OK"));
        return false;
    }
    IgnitionMap map = m_profile->map();
    for (int i = 0; i < block.size(); ++i) {
        MapPoint point = map.point(firstRow + i);
        for (int j = 0; j < block[i].size(); ++j) {
            if (firstColumn + j == kRpmColumn)
                point.rpm = block[i][j];
            else
                point.angle = block[i][j];
        }
        map.setPoint(firstRow + i, point.rpm, point.angle);
    }
    applyMap(map, int(IProfileEditorMain::Edit::Paste));
    return true;
}

void TableForm::addDegrees(int degrees)
{
    if (!m_profile)
        return;
    IgnitionMap map = m_profile->map();
    for (const int row : selectedRows())
        map.setPoint(row, map.point(row).rpm, map.point(row).angle + degrees);
    applyMap(map, int(IProfileEditorMain::Edit::Operation));
}

void TableForm::setSelectedCells(int value)
{
    if (!m_profile)
        return;
    const QPair<int, int> columns = selectedColumns();
    IgnitionMap map = m_profile->map();
    for (const int row : selectedRows()) {
        MapPoint point = map.point(row);
        if (columns.first == kRpmColumn)
            point.rpm = value;
        if (columns.second == kAngleColumn)
            point.angle = value;
        map.setPoint(row, point.rpm, point.angle);
    }
    applyMap(map, int(IProfileEditorMain::Edit::Operation));
}

void TableForm::interpolateSelectedAngles()
{
    const QList<int> rows = selectedRows();
    if (!m_profile || rows.size() < 3)
        return;
    IgnitionMap map = m_profile->map();
    const MapPoint first = map.point(rows.first());
    const MapPoint last = map.point(rows.last());
    for (int row = rows.first() + 1; row < rows.last(); ++row) {
        // Over the speeds where they rise, else evenly over the rows.
        const double share = last.rpm > first.rpm
            ? double(map.point(row).rpm - first.rpm) / (last.rpm - first.rpm)
            : double(row - rows.first()) / (rows.last() - rows.first());
        const int angle = int(std::lround(first.angle + share * (last.angle - first.angle)));
        map.setPoint(row, map.point(row).rpm, angle);
    }
    applyMap(map, int(IProfileEditorMain::Edit::Operation));
}

// One step for the whole change; a change that changes nothing is none.
void TableForm::applyMap(const IgnitionMap &map, int editKind)
{
    if (map == m_profile->map())
        return;
    m_profile->setMap(map);
    m_editor->onMapChanged(true);
    m_editor->onEdited(IProfileEditorMain::Edit(editKind), -1);
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
    setTexts();
}

void TableForm::announceCurrentCell()
{
    const QModelIndex current = m_ui->tableView->currentIndex();
    if (!QAccessible::isActive() || !current.isValid())
        return;
    QAccessibleInterface *table = QAccessible::queryAccessibleInterface(m_ui->tableView);
    QAccessibleInterface *cell = table && table->tableInterface()
        ? table->tableInterface()->cellAt(current.row(), current.column())
        : nullptr;
    if (cell) {
        QAccessibleEvent focus(cell, QAccessible::Focus);
        QAccessible::updateAccessibility(&focus);
    }
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
