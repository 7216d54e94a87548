#include "statuspanels.h"

#include "screenpointer.h"

#include <QDateTime>
#include <QLabel>
#include <QLocale>
#include <QTimer>

namespace ivr {

StatusPanels::StatusPanels(QWidget *parent)
    : QStatusBar(parent)
    , m_text(new QLabel(this))
    , m_date(new QLabel(this))
    , m_time(new QLabel(this))
{
    setObjectName(QStringLiteral("sbStatusBar"));
    setAccessibleName(QStringLiteral("Status bar"));
    setSizeGripEnabled(false);
    setMouseTracking(true);
    m_text->setObjectName(QStringLiteral("sbStatusBarPanel1"));
    m_text->setAccessibleName(QStringLiteral("Module"));
    m_date->setObjectName(QStringLiteral("sbStatusBarPanel2"));
    m_date->setAccessibleName(QStringLiteral("Date"));
    m_time->setObjectName(QStringLiteral("sbStatusBarPanel3"));
    m_time->setAccessibleName(QStringLiteral("Time"));
    for (QLabel *label : {m_text, m_date, m_time}) {
        // A module's name is shown as written, never read as markup.
        label->setTextFormat(Qt::PlainText);
        label->setFrameShape(QFrame::StyledPanel);
        label->setFrameShadow(QFrame::Sunken);
        label->setMouseTracking(true);
    }
    addWidget(m_text, 1);
    addPermanentWidget(m_date);
    addPermanentWidget(m_time);

    tick();
}

void StatusPanels::showEvent(QShowEvent *event)
{
    // The clock only runs once there is a bar to show it on.
    if (!m_clock) {
        m_clock = new QTimer(this);
        connect(m_clock, &QTimer::timeout, this, &StatusPanels::tick);
        m_clock->start(1000);
        tick();
    }
    QStatusBar::showEvent(event);
}

void StatusPanels::setPanelText(const QString &text)
{
    m_text->setText(text);
}

QString StatusPanels::panelText() const
{
    return m_text->text();
}

QString StatusPanels::dateText() const
{
    return m_date->text();
}

QString StatusPanels::timeText() const
{
    return m_time->text();
}

void StatusPanels::mouseMoveEvent(QMouseEvent *event)
{
    ScreenPointer::set(ScreenPointer::Default);
    QStatusBar::mouseMoveEvent(event);
}

void StatusPanels::tick()
{
    const QDateTime now = QDateTime::currentDateTime();
    const QLocale locale;
    m_date->setText(locale.toString(now.date(), QLocale::ShortFormat));
    m_time->setText(locale.toString(now.time(), QLocale::ShortFormat));
}

} // namespace ivr
