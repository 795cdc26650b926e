#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class ErrorGui;
}

// The small window that reports a data file the program cannot start without. It shows itself
// when built; closing it ends the program.
class ErrorGui : public QWidget
{
    Q_OBJECT

public:
    explicit ErrorGui(const QString &displayText, QWidget *parent = nullptr);
    ~ErrorGui() override;

private slots:
    void onCloseButton();

private:
    std::unique_ptr<Ui::ErrorGui> m_ui;
};
