#include "frmscriptviewer.h"

#include "appfolder.h"
#include "frameservices.h"
#include "moduletypes.h"
#include "msgbox.h"
#include "screenpointer.h"
#include "scriptcanvas.h"
#include "scriptconstants.h"
#include "twips.h"
#include "voreldirection.h"
#include "vorelmodule.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QMdiSubWindow>
#include <QRubberBand>
#include <QScrollBar>
#include <QStyle>

#include <cmath>

using namespace ivr;

namespace {

const QColor BackColour(192, 192, 255);

QString withoutBrackets(const QString &name)
{
    return name.mid(1, name.size() - 2);
}

// A scroll bar property takes a floating-point result rounded half to even.
int toBarValue(double value)
{
    return int(std::nearbyint(value));
}

} // namespace

frmScriptViewer::frmScriptViewer(QWidget *parent)
    : QWidget(parent)
    , m_cmVorelModule([this](qint16 index) { return makeModule(index); })
    , m_VorelDirection1([this](qint16 index) { return makeArrow(index); })
{
    setWindowTitle(QStringLiteral("Vorel Script"));
    setMouseTracking(true);
    setFont(QFont(QStringLiteral("DejaVu Sans"), 8));
    QPalette back = palette();
    back.setColor(QPalette::Window, BackColour);
    setPalette(back);
    setAutoFillBackground(true);
    resize(Twips::toPixels(8025), Twips::toPixels(6300));
    if (appMain())
        setWindowIcon(appMain()->frameIcon());

    m_FileName.clear();
    m_picMain = new ScriptCanvas(this);
    m_picMain->setFixedSize(Twips::toPixels(CanvasWidth), Twips::toPixels(CanvasHeight));
    m_picMain->move(0, 0);
    connect(m_picMain, &ScriptCanvas::mouseMoved, this, &frmScriptViewer::canvasMouseMove);
    connect(m_picMain, &ScriptCanvas::mouseReleased, this, &frmScriptViewer::canvasMouseUp);
    m_dragOutline = new QRubberBand(QRubberBand::Rectangle, m_picMain);

    m_scrlVert = new QScrollBar(Qt::Vertical, this);
    m_scrlHori = new QScrollBar(Qt::Horizontal, this);
    m_scrlVert->setObjectName(QStringLiteral("scrlVert"));
    m_scrlHori->setObjectName(QStringLiteral("scrlHori"));
    for (QScrollBar *bar : {m_scrlVert, m_scrlHori}) {
        bar->setPageStep(3000);
        bar->setSingleStep(300);
    }
    // The bars keep their thickness; the resize step places and stretches them.
    const int thickness = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    m_scrlVert->setGeometry(0, 0, thickness, thickness);
    m_scrlHori->setGeometry(0, 0, thickness, thickness);
    const auto scrollHori = [this](int value) {
        m_picMain->move(Twips::toPixels(value * -1 * 10.0f), m_picMain->y());
    };
    const auto scrollVert = [this](int value) {
        m_picMain->move(m_picMain->x(), Twips::toPixels(value * -1 * 10.0f));
    };
    connect(m_scrlHori, &QScrollBar::valueChanged, this, scrollHori);
    connect(m_scrlHori, &QScrollBar::sliderMoved, this, scrollHori);
    connect(m_scrlVert, &QScrollBar::valueChanged, this, scrollVert);
    connect(m_scrlVert, &QScrollBar::sliderMoved, this, scrollVert);

    m_VorelDirection1.load(0);

    m_cmVorelModule.load(0);
    m_DrawLine.Add(0, *this);
    m_cmVorelModule.at(0)->Create(ModuleTypes::Connected,
                                  withoutBrackets(ScriptConstants::ConnectedModuleKey()));
    m_cmVorelModule.load(1);
    m_DrawLine.Add(1, *this);
    m_cmVorelModule.at(1)->Create(ModuleTypes::EndCall,
                                  withoutBrackets(ScriptConstants::EndModuleKey()));
    const float standingTops[] = {675, 3870};
    for (qint16 i = 0; i <= 1; ++i) {
        VorelModule *module = m_cmVorelModule.at(i);
        module->setLeft(1215);
        module->setTop(standingTops[i]);
        module->setVisible(true);
    }
    m_cmVorelModule.at(0)->moduleData()->definition().setNextModule(
            ScriptConstants::EndModuleKey());
    m_VorelDirection1.load(1);
    m_DrawLine.setLineMatrix(0, 1, 1);
    m_DrawLine.RedefineModule(0, *this, 1, QString());

    m_CommonModule = std::make_shared<ModuleData>();
    m_CommonModule->setModuleType(ModuleTypes::Common);
    m_CommonModule->setName(withoutBrackets(ScriptConstants::ReservedModuleName()));
    m_CommonModule->definition().setBeepFileName(
            AppFolder::file(QStringLiteral("Greeting/beep.wav")));
    m_Changed = false;
}

frmScriptViewer::~frmScriptViewer()
{
    setScriptMenuAttached(false);
    unloadDialogs();
    // Every control of a freshly opened script still has its polish request
    // queued until the event loop turns. Deleting a widget with a queued
    // event walks the thread's whole queue, and thousands of controls
    // deleted one by one walk it thousands of times: the requests are
    // dropped in one pass first. Nothing is delivered here, since other
    // windows may be half torn down; a widget dropped by mistake is still
    // polished when it is shown.
    QCoreApplication::removePostedEvents(nullptr, QEvent::PolishRequest);
}

QWidget *frmScriptViewer::picMain()
{
    return m_picMain;
}

VorelModule *frmScriptViewer::makeModule(qint16 index)
{
    auto *module = new VorelModule(index, m_picMain);
    connect(module, &VorelModule::GotFocus, this, [this](qint16 i) {
        if (m_cmVorelModule.exists(i))
            setStatusText(m_cmVorelModule.at(i)->Caption());
    });
    connect(module, &VorelModule::MarkRequest, this, [this](qint16 i, int) {
        if (m_cmVorelModule.exists(i))
            m_cmVorelModule.at(i)->setMark(0);
    });
    // Both requests may come from inside the module's own key or menu
    // handler; deleting the module there would pull the object from under
    // that handler, so they run once it has returned.
    connect(module,
            &VorelModule::PropertyRequest,
            this,
            &frmScriptViewer::EditModule,
            Qt::QueuedConnection);
    connect(module,
            &VorelModule::DeleteRequest,
            this,
            &frmScriptViewer::RemoveModule,
            Qt::QueuedConnection);
    connect(module, &VorelModule::ModuleChanged, this, [this](qint16) { m_Changed = true; });
    connect(module, &VorelModule::ModuleResized, this, [this](qint16 i) {
        m_DrawLine.RedefineModule(i, *this, 3, QString());
    });
    connect(module,
            &VorelModule::MouseDown,
            this,
            [this](qint16 i,
                   Qt::MouseButton button,
                   Qt::KeyboardModifiers,
                   float x,
                   float y,
                   QPointF) { moduleMouseDown(i, button, x, y); });
    connect(module,
            &VorelModule::MouseMove,
            this,
            [this](qint16 i,
                   Qt::MouseButtons buttons,
                   Qt::KeyboardModifiers,
                   float,
                   float,
                   QPointF globalPos) {
                ScreenPointer::set(ScreenPointer::Default);
                moduleMouseMove(i, buttons, globalPos);
            });
    connect(module,
            &VorelModule::MouseUp,
            this,
            [this](qint16 i,
                   Qt::MouseButton button,
                   Qt::KeyboardModifiers,
                   float,
                   float,
                   QPointF globalPos) { moduleMouseUp(i, button, globalPos); });
    return module;
}

VorelDirection *frmScriptViewer::makeArrow(qint16 index)
{
    return new VorelDirection(index, m_picMain->arrows());
}

void frmScriptViewer::setStatusText(const QString &text)
{
    if (appMain())
        appMain()->setStatusText(text);
}

CommonDialog &frmScriptViewer::commonDialog()
{
    if (appMain())
        return appMain()->dlgCommonDialog();
    if (!m_localDialog)
        m_localDialog = std::make_unique<CommonDialog>();
    return *m_localDialog;
}

void frmScriptViewer::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeBars();
}

void frmScriptViewer::placeBars()
{
    const QWidget *frame = appMain() ? appMain()->frameWidget() : nullptr;
    if (isMinimized() || (m_subWindow && m_subWindow->isMinimized())
        || (frame && frame->isMinimized()))
        return;
    const QSize outer = m_subWindow ? m_subWindow->size() : frameGeometry().size();
    const double W = Twips::fromPixels(outer.width());
    const double H = Twips::fromPixels(outer.height());
    const int SW = width();
    const int SH = height();

    m_scrlVert->move(SW - m_scrlVert->width(), m_scrlVert->y());
    m_scrlVert->resize(m_scrlVert->width(), SH - m_scrlHori->height());
    m_scrlHori->move(m_scrlHori->x(), SH - m_scrlHori->height());
    m_scrlHori->resize(SW - m_scrlVert->width(), m_scrlHori->height());

    // A window larger than the canvas gets a maximum below zero; the bar
    // then stands still at 0 instead of pushing the canvas away from the
    // corner.
    const int vertMax = toBarValue((CanvasHeight - H) / 10);
    const int horiMax = toBarValue((CanvasWidth - W) / 10);
    m_scrlVert->setRange(0, qMax(0, vertMax));
    m_scrlHori->setRange(0, qMax(0, horiMax));
    // Both bars step by the vertical maximum, the horizontal one too.
    const int small = qMax(0, toBarValue(vertMax / 100.0));
    const int large = qMax(0, toBarValue(vertMax / 10.0));
    m_scrlVert->setSingleStep(small);
    m_scrlHori->setSingleStep(small);
    m_scrlVert->setPageStep(large);
    m_scrlHori->setPageStep(large);
}

bool frmScriptViewer::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::ParentChange:
    case QEvent::Show:
        followSubWindow();
        break;
    case QEvent::WindowActivate:
        if (!m_subWindow)
            setScriptMenuAttached(true);
        break;
    case QEvent::WindowDeactivate:
        if (!m_subWindow)
            setScriptMenuAttached(false);
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void frmScriptViewer::followSubWindow()
{
    auto *sub = qobject_cast<QMdiSubWindow *>(parentWidget());
    if (sub == m_subWindow)
        return;
    if (m_subWindow)
        disconnect(m_subWindow, nullptr, this, nullptr);
    m_subWindow = sub;
    if (!sub)
        return;
    connect(sub,
            &QMdiSubWindow::windowStateChanged,
            this,
            [this](Qt::WindowStates, Qt::WindowStates now) {
                setScriptMenuAttached(now.testFlag(Qt::WindowActive));
                placeBars();
            });
    if (sub->windowState().testFlag(Qt::WindowActive))
        setScriptMenuAttached(true);
}

void frmScriptViewer::setScriptMenuAttached(bool attached)
{
    disconnect(m_waveFilesClick);
    disconnect(m_propertyClick);
    if (!attached || !appMain())
        return;
    if (QAction *waveFiles = appMain()->mnuWaveFiles())
        m_waveFilesClick
                = connect(waveFiles, &QAction::triggered, this, &frmScriptViewer::editWaveFiles);
    if (QAction *property = appMain()->mnuProperty())
        m_propertyClick
                = connect(property, &QAction::triggered, this, &frmScriptViewer::editCommonModule);
}

QSize frmScriptViewer::sizeHint() const
{
    // The client area as laid out; the MDI area sizes new, restored and
    // cascaded windows from it.
    return {Twips::toPixels(8025), Twips::toPixels(6300)};
}

void frmScriptViewer::mouseMoveEvent(QMouseEvent *event)
{
    QWidget::mouseMoveEvent(event);
    // Only moves over the window itself, not those its children pass on.
    if (!childAt(event->position().toPoint()))
        ScreenPointer::set(ScreenPointer::Default);
}

void frmScriptViewer::closeEvent(QCloseEvent *event)
{
    if (m_queryAnswered || QueryUnload()) {
        event->accept();
        // Only now: a refused close leaves the dialog open.
        unloadDialogs();
    } else {
        event->ignore();
    }
}

bool frmScriptViewer::QueryUnload()
{
    if (!m_Changed)
        return true;
    const auto answer = MsgBox::show(QStringLiteral("Do you want to save changes you made to ")
                                             + windowTitle(),
                                     QMessageBox::Question,
                                     QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    switch (answer) {
    case QMessageBox::Yes:
        // A save that worked keeps the window open, now clean; the user
        // closes it again. A save that failed or was cancelled lets it go.
        return !SaveScript(false);
    case QMessageBox::No:
        return true;
    default:
        return false;
    }
}
