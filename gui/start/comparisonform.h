#pragma once

#include <QWidget>

#include <memory>
#include <vector>

namespace Ui {
class ComparisonForm;
}
class Profile;

// The list of profiles to compare: factory templates and the user's own files, in the order
// they were added, duplicates allowed. "Show graph" hands them to the common graph.
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
    void retranslate();

signals:
    // Add factory template: the start page's template chooser picks it.
    void templateChoiceRequested();
    // Show graph, with the listed profiles in list order.
    void graphRequested(const std::vector<Profile> &profiles);

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
