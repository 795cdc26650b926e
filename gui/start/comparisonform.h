#pragma once

#include <QWidget>

#include <memory>
#include <vector>

namespace Ui {
class ComparisonForm;
}
class CComparisonParent;
class IBrowserMain;
class Profile;

// The list of profiles to compare: factory templates and the user's own files, in the order
// they were added, duplicates allowed. "Show graph" hands them to the common graph.
class ComparisonForm : public QWidget
{
    Q_OBJECT

public:
    explicit ComparisonForm(QWidget *parent = nullptr);
    ~ComparisonForm() override;

    // Not owned; both are set once the start page and the main window exist.
    void setComparisonParent(CComparisonParent *parent);
    void setBrowserMain(IBrowserMain *main);

    // Appends a copy.
    void addProfile(const Profile &profile);
    // Copies of the listed profiles, in list order.
    std::vector<Profile> profiles() const;
    void retranslate();

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
    CComparisonParent *m_parent = nullptr;
    IBrowserMain *m_main = nullptr;
};
