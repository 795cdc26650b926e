#pragma once

#include <QList>
#include <QPointer>
#include <QWidget>

class CHintLabel;
class QTimer;

// Draws the eye to the editor's hint labels the first time a profile is shown: the labels
// appear, their text alternates between black and blue, and after eight seconds they go.
class CBlinker : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kTickInterval = 50; // milliseconds
    static constexpr int kTicksPerColour = 5;
    static constexpr int kTickCount = 160;

    explicit CBlinker(QWidget *parent = nullptr);

    // Not owned; labels deleted meanwhile are skipped.
    void setLabels(const QList<CHintLabel *> &labels);
    // Shows the labels in black and starts counting.
    void startBlinking();
    // Stops counting and leaves the labels as they are.
    void stopBlinking();
    bool isRunning() const { return m_running; }
    int ticks() const { return m_ticks; }

public slots:
    // One step of the timer; the timer calls it, and so can a test that will not wait for it.
    void tick();

private:
    void colourLabels(bool blue);

    QTimer *m_timer;
    QList<QPointer<CHintLabel>> m_labels;
    bool m_running = false;
    int m_ticks = 0;
    bool m_blue = false;
};
