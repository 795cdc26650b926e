#pragma once

#include "profile/profile.h"

#include <QWidget>

#include <memory>

class MapPlotter;
struct MapValidation;

namespace Ui {
class Summary;
}

// The read-only page that shows one profile before it is saved, printed or programmed: the map
// as a table and as a graph, the notes (when there are any), and one status line with the
// settings. Screen readers get the map as a table and the graph described in words. The form
// keeps its own copy of the profile.
class SummaryForm : public QWidget
{
    Q_OBJECT

public:
    // The caller's mode: the full summary with the notes, or the map and settings only.
    static constexpr int kWithNotes = 0;
    static constexpr int kMapOnly = 1;

    explicit SummaryForm(int mode, QWidget *parent = nullptr);
    ~SummaryForm() override;

    void setProfile(const Profile &profile);
    const Profile &profile() const { return m_profile; }
    int mode() const { return m_mode; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void refresh();
    void showMap(const MapValidation &validation);
    void drawGraph();

    std::unique_ptr<Ui::Summary> m_ui;
    Profile m_profile;
    std::unique_ptr<MapPlotter> m_plotter;
    const int m_mode;
};
