#pragma once

#include "shellicons.h"

#include <QPixmap>
#include <QWidget>

class QEventLoop;

// The splash window: a frameless picture in the middle of the screen. At
// start it ignores all input; as the about box (ShowMe(true)) it is modal and
// a key press or a mouse button pressed on it closes it.
class frmSplash : public QWidget
{
    Q_OBJECT

public:
    // 7380 x 4245 twips.
    static constexpr QSize ClientSize = ivr::ShellIcons::SplashSize;

    explicit frmSplash(QWidget *parent = nullptr);
    ~frmSplash() override;

    // Shows the window modally and returns once it has been closed.
    void ShowMe(bool closeOnInput);
    bool closesOnInput() const { return m_closeOnInput; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void centre();

    bool m_closeOnInput = false;
    QEventLoop *m_loop = nullptr;
    // Drawn at the first paint; every later paint only copies it.
    QPixmap m_picture;
};
