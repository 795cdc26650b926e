#pragma once

#include <QDialog>
#include <QRect>

#include <memory>
#include <optional>

class CLanguageSwitcher;
class HintCatalog;

namespace Ui {
class HintDialog;
}

// Shows one help text of the hint catalog beside the editor, without blocking it. Once closed,
// it reopens where the user last had it.
class HintDialog : public QDialog
{
    Q_OBJECT

public:
    HintDialog(const HintCatalog *catalog, CLanguageSwitcher &switcher, QWidget *parent = nullptr);
    ~HintDialog() override;

    // Shows hint number n in the current language; a number the catalog does not hold shows nothing.
    void showHint(int number);
    // The hint shown last, -1 before the first.
    int currentHint() const { return m_current; }
    // Sets the texts again in the current language, also when no translation was installed.
    void retranslate();

public slots:
    // The title bar's close button and Escape end here too.
    void reject() override;

protected:
    void changeEvent(QEvent *event) override;

private slots:
    void onClose();

private:
    void showTexts();

    std::unique_ptr<Ui::HintDialog> m_ui;
    const HintCatalog *m_catalog;
    CLanguageSwitcher &m_switcher;
    int m_current = -1;
    std::optional<QRect> m_closedGeometry;
};
