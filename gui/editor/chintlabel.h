#pragma once

#include <QLabel>

// Told when the mouse touches one of the editor's floating hint labels.
class CHintLabelListener
{
public:
    virtual ~CHintLabelListener() = default;
    virtual void onHintLabelTouched() = 0;
};

// A small framed label floating over a table or graph ("Click to edit"). It vanishes as soon as
// the mouse passes over it: every press, release or move is reported to the listener and consumed.
class CHintLabel : public QLabel
{
    Q_OBJECT

public:
    CHintLabel(CHintLabelListener *listener, int width, QWidget *parent = nullptr);

    // A text too long for the designed width is set smaller, and only then widens the label.
    void setHintText(const QString &text);

    // The blinker alternates the text between two colours.
    void setTextColor(const QColor &color);
    QColor textColor() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    static constexpr int kPointSize = 12;
    static constexpr int kSmallestPointSize = 9;

    CHintLabelListener *m_listener;
    const int m_designedWidth;
};
