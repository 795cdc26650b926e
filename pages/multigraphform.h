#pragma once

#include "profile/profile.h"

#include <QWidget>

#include <memory>
#include <vector>

namespace Ui {
class MultiGraphForm;
}
class MapPlotter;

// The common graph of the comparison: every listed profile's map in its own colour over shared
// axes, with a legend in list order. The image fills the widget; it is drawn again for every
// new list and every new size.
class MultiGraphForm : public QWidget
{
    Q_OBJECT

public:
    explicit MultiGraphForm(QWidget *parent = nullptr);
    ~MultiGraphForm() override;

    void setProfiles(const std::vector<Profile> &profiles);
    const std::vector<Profile> &profiles() const { return m_profiles; }
    const QImage &image() const;
    void retranslate();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void render();

    std::unique_ptr<Ui::MultiGraphForm> m_ui;
    std::unique_ptr<MapPlotter> m_plotter;
    std::vector<Profile> m_profiles;
};
