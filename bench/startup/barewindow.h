#pragma once

#include <QApplication>
#include <QMainWindow>
#include <QMdiArea>
#include <QMenuBar>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>

#include <cstdio>

// The window both bare programs show: a frame like the designer's, and a
// line on standard output right after its first paint.
class BareWindow : public QMainWindow
{
public:
    BareWindow()
    {
        setWindowTitle(QStringLiteral("Bare frame"));
        setCentralWidget(new QMdiArea(this));
        QMenu *file = menuBar()->addMenu(QStringLiteral("&File"));
        QAction *quit = file->addAction(QStringLiteral("E&xit"));
        connect(quit, &QAction::triggered, this, &QWidget::close);
        addToolBar(QStringLiteral("Toolbar"))->addAction(quit);
        statusBar()->showMessage(QStringLiteral("Ready"));
        resize(433, 433);
    }

protected:
    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::Paint && !m_painted) {
            m_painted = true;
            QTimer::singleShot(0, qApp, [] {
                std::fputs("first-paint\n", stdout);
                std::fflush(stdout);
                QCoreApplication::exit(0);
            });
        }
        return QMainWindow::event(event);
    }

private:
    bool m_painted = false;
};
