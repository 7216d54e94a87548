#include "frmsplash.h"

#include "shellicons.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>

frmSplash::frmSplash(QWidget *parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint)
{
    setObjectName(QStringLiteral("frmSplash"));
    setAccessibleName(QStringLiteral("Brindlewave IVR Script Designer"));
    setFixedSize(ClientSize);
    setFocusPolicy(Qt::StrongFocus);
    centre();
}

frmSplash::~frmSplash()
{
    if (m_loop)
        m_loop->quit();
}

void frmSplash::centre()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    QRect area = QRect(QPoint(0, 0), ClientSize);
    area.moveCenter(screen->geometry().center());
    move(area.topLeft());
}

void frmSplash::ShowMe(bool closeOnInput)
{
    m_closeOnInput = closeOnInput;
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_DeleteOnClose, false);
    show();
    raise();
    activateWindow();
    setFocus();
    QEventLoop loop;
    m_loop = &loop;
    loop.exec(QEventLoop::DialogExec);
    m_loop = nullptr;
}

void frmSplash::paintEvent(QPaintEvent *)
{
    if (m_picture.size() != size())
        m_picture = ivr::ShellIcons::splash(size());
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_picture);
}

void frmSplash::keyPressEvent(QKeyEvent *event)
{
    if (m_closeOnInput)
        close();
    event->accept();
}

void frmSplash::mousePressEvent(QMouseEvent *event)
{
    if (m_closeOnInput)
        close();
    event->accept();
}

void frmSplash::closeEvent(QCloseEvent *event)
{
    event->accept();
    if (m_loop)
        m_loop->quit();
}
