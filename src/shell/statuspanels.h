#pragma once

#include <QStatusBar>

class QLabel;
class QTimer;

namespace ivr {

// sbStatusBar: the module text, the date and the time, each in a label of its
// own, so that the bar's passing messages never wipe them.
class StatusPanels : public QStatusBar
{
    Q_OBJECT

public:
    explicit StatusPanels(QWidget *parent = nullptr);

    void setPanelText(const QString &text);
    QString panelText() const;
    QString dateText() const;
    QString timeText() const;

protected:
    void mouseMoveEvent(QMouseEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void tick();

    QLabel *m_text;
    QLabel *m_date;
    QLabel *m_time;
    QTimer *m_clock = nullptr;
};

} // namespace ivr
