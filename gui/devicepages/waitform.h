#pragma once

#include "device/exchangeresult.h"
#include "device/exchangetranscript.h"
#include "shell/cbrowserwidget.h"

#include <QTimer>
#include <QWidget>

#include <memory>

class DefaultLibrary;
struct FileError;
class QMovie;
namespace Ui {
class WaitForm;
}

// The progress page: what the exchange with the CDI is doing, then how it ended, in the words
// the command-line tool uses too. The result stays until the user moves on; where Back and Next
// lead is the device flow's decision.
class WaitForm : public QWidget, public CBrowserWidget
{
    Q_OBJECT

public:
    explicit WaitForm(QWidget *parent = nullptr);
    ~WaitForm() override;

    void setActive(bool active) override;
    void onBack() override;
    void onNext() override;

    void showActivity(DeviceExchange exchange);
    void showWaiting();
    void showResult(const ExchangeResult &result);
    // A note below the result of a programming.
    void showCopyNotKept(const FileError &error);
    // A message box: the action did not start.
    void showRefusal(const DeviceRefusal &refusal);
    // The port in use, and in the details every frame so far.
    void showTranscript(const ExchangeTranscript &transcript);
    // Between reading the CDI and programming it, while the user is asked.
    void showConfirmationPending();
    // Names motorbike types in what a read back finds; it must outlive the page.
    void setLibrary(const DefaultLibrary *library) { m_library = library; }

    QString title() const;
    QString text() const;
    QString port() const;
    // What the details show and Copy puts on the clipboard.
    QString details() const;
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
    // From the failure's buttons.
    void retryRequested();
    void otherPortRequested();

protected:
    void changeEvent(QEvent *event) override;

private:
    void showLook(Look look);
    void onTimer();
    void wordDetails();
    void onDetailsToggled(bool open);

    std::unique_ptr<Ui::WaitForm> m_ui;
    QMovie *m_movie;
    QTimer m_timer;
    Look m_look = Look::Busy;
    int m_frame = 0;
    // Every exchange of the action shown, in order: a programming reads the CDI, writes it and
    // reads it back.
    QList<ExchangeTranscript> m_transcripts;
    const DefaultLibrary *m_library = nullptr;
};
