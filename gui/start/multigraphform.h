#pragma once

#include "profile/profile.h"

#include <QWidget>

#include <memory>
#include <vector>

namespace Ui {
class MultiGraphForm;
}
class MapPlotter;

// The common graph of the comparison: every listed profile's map in its own colour and line
// style over shared axes, with a legend in list order beside it, and under it a table of the
// profiles' values side by side with their differences to the first. The graph is drawn again
// for every new list and every new size.
class MultiGraphForm : public QWidget
{
    Q_OBJECT

public:
    explicit MultiGraphForm(QWidget *parent = nullptr);
    ~MultiGraphForm() override;

    void setProfiles(const std::vector<Profile> &profiles);
    const std::vector<Profile> &profiles() const { return m_profiles; }
    const QImage &image() const;
    // The size of the area the graph fills.
    QSize graphSize() const;
    void retranslate();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void render();
    void fillValueTable();

    std::unique_ptr<Ui::MultiGraphForm> m_ui;
    std::unique_ptr<MapPlotter> m_plotter;
    std::vector<Profile> m_profiles;
};
