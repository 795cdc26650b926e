#pragma once

#include "device/iwaitform.h"
#include "shell/cbrowserwidget.h"

#include <QTimer>
#include <QWidget>

#include <memory>

class QMovie;
namespace Ui {
class WaitForm;
}

// The progress page: what the exchange with the CDI is doing, then how it ended. The result
// stays until the user moves on; where Back and Next lead is the device flow's decision.
class WaitForm : public QWidget, public CBrowserWidget, public IWaitForm
{
    Q_OBJECT

public:
    explicit WaitForm(QWidget *parent = nullptr);
    ~WaitForm() override;

    void setActive(bool active) override;
    void onBack() override;
    void onNext() override;

    void showActivity(const QString &title, const QString &text) override;
    void showStatus(const QString &text) override;
    void showResult(const QString &title, const QString &text, bool success) override;

    QString title() const;
    QString text() const;
    // The picture shown: busy, success or failure.
    enum class Look
    {
        Busy,
        Success,
        Failure
    };
    Look look() const { return m_look; }

signals:
    void backRequested();
    void nextRequested();

private:
    void showLook(Look look);
    void onTimer();

    std::unique_ptr<Ui::WaitForm> m_ui;
    QMovie *m_movie;
    QTimer m_timer;
    Look m_look = Look::Busy;
    int m_frame = 0;
};
