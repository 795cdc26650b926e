#pragma once

#include <QWidget>

#include <memory>
#include <vector>

namespace Ui {
class ComparisonForm;
}
class Profile;
struct PlottedMap;

// The list of profiles to compare: factory templates and the user's own files, in the order
// they were added, duplicates allowed. Each keeps its colour while it is listed, and its check
// box says whether the graph shows it. "Show graph" hands them to the common graph.
class ComparisonForm : public QWidget
{
    Q_OBJECT

public:
    explicit ComparisonForm(QWidget *parent = nullptr);
    ~ComparisonForm() override;

    // Appends a copy.
    void addProfile(const Profile &profile);
    // Copies of the listed profiles, in list order.
    std::vector<Profile> profiles() const;
    // The listed profiles as the graph draws them: legend texts, colours, shown or hidden.
    std::vector<PlottedMap> plottedMaps() const;
    // Checks or clears the check box of the entry in the row.
    void setShown(int row, bool shown);
    void retranslate();

signals:
    // Add factory template: the start page's template chooser picks it.
    void templateChoiceRequested();
    // Show graph, with the listed profiles in list order.
    void graphRequested(const std::vector<PlottedMap> &maps);
    // The user checked or cleared the check box of the entry in the row.
    void shownChanged(int row, bool shown);

private slots:
    void onAddDefaultButton();
    void onAddCustomButton();
    void onRemoveButton();
    void onClearButton();
    void onShowGraphButton();

private:
    void updateButtons();
    void setToolTips();

    std::unique_ptr<Ui::ComparisonForm> m_ui;
};
