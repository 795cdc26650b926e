#pragma once

#include "render/mapplotter.h"
#include "render/plotfile.h"

#include <QWidget>

#include <memory>
#include <vector>

namespace Ui {
class MultiGraphForm;
}

// The common graph of the comparison: every shown profile's map in its own colour and line
// style over shared axes, with a legend beside it in list order, and under it a table of the
// shown profiles' values point by point, with their differences to the first shown. A click on
// a legend entry hides or shows its profile; the limits are drawn on request, at first only
// when one profile is shown. The graph is drawn again for every change and every new size.
class MultiGraphForm : public QWidget
{
    Q_OBJECT

public:
    explicit MultiGraphForm(QWidget *parent = nullptr);
    ~MultiGraphForm() override;

    // A new comparison: the limits box goes back to its default.
    void setMaps(const std::vector<PlottedMap> &maps);
    const std::vector<PlottedMap> &maps() const { return m_maps; }
    // Hides or shows the map in the row; nothing happens when it already is so.
    void setShown(int row, bool shown);
    const QImage &image() const;
    // The size of the area the graph fills.
    QSize graphSize() const;
    // The graph as it shows, without the hidden maps, for a file.
    PlotDrawing drawing() const;
    // The shown profiles' values for a spreadsheet.
    QByteArray valuesCsv() const;
    void retranslate();

signals:
    // A click on a legend entry hid or showed the map in the row.
    void shownChanged(int row, bool shown);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void render();
    void fillValueTable();
    void setLimitsDefault();
    void fitSplitter();
    std::vector<PlottedMap> shownMaps() const;

    std::unique_ptr<Ui::MultiGraphForm> m_ui;
    std::unique_ptr<MapPlotter> m_plotter;
    std::vector<PlottedMap> m_maps;
    // Set once the user chose whether the limits show; until then they follow the number shown.
    bool m_limitsChosen = false;
};
