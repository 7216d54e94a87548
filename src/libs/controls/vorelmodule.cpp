#include "vorelmodule.h"

#include "ivrcheck.h"
#include "moduleicon.h"
#include "twips.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QInputDialog>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

namespace {

const QColor Face(0xfd, 0xfe, 0xff);
const QColor Frame(0x5d, 0x6d, 0x7e);
const QColor FocusFrame(0x1f, 0x6f, 0xd0);
constexpr int Pad = 4;

// Text from a script is never markup: Qt takes a text that looks like HTML
// as HTML, and a name such as <img src="/dev/zero"> would make it read that
// file. Escaped and wrapped, it is shown exactly as written.
QString shownAsWritten(const QString &text)
{
    if (text.isEmpty())
        return text;
    return QStringLiteral("<p style=\"white-space:pre-wrap\">%1</p>").arg(text.toHtmlEscaped());
}

} // namespace

VorelModule::VorelModule(qint16 index, QWidget *parent)
    : QWidget(parent)
    , m_index(index)
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setFont(QFont(QStringLiteral("DejaVu Sans"), 8));
    createActions();
    applySize();
}

VorelModule::~VorelModule() = default;

void VorelModule::createActions()
{
    m_menu = new QMenu(this);
    m_propertiesAction = m_menu->addAction(tr("&Properties"));
    m_deleteAction = m_menu->addAction(tr("&Delete"));
    m_menu->addSeparator();
    m_descriptionAction = m_menu->addAction(tr("Edit &Description..."));
    m_compactAction = m_menu->addAction(tr("&Compact"));
    m_compactAction->setCheckable(true);

    connect(m_propertiesAction, &QAction::triggered, this, [this] {
        emit PropertyRequest(m_index);
    });
    connect(m_deleteAction, &QAction::triggered, this, [this] { emit DeleteRequest(m_index); });
    connect(m_descriptionAction, &QAction::triggered, this, &VorelModule::editDescription);
    connect(m_compactAction, &QAction::toggled, this, &VorelModule::toggleCompact);
}

int VorelModule::ModuleType() const
{
    IVR_CHECK(m_moduleData, return -1);
    return m_moduleData->ModuleType();
}

void VorelModule::setCaption(const QString &caption)
{
    m_caption = caption;
    setAccessibleName(caption);
    setToolTip(shownAsWritten(caption));
    update();
}

void VorelModule::setDescription(const QString &description)
{
    m_description = description;
    setAccessibleDescription(description);
    update();
}

void VorelModule::setCompact(bool compact)
{
    m_compact = compact;
    const QSignalBlocker quiet(m_compactAction);
    m_compactAction->setChecked(compact);
    applySize();
}

void VorelModule::setMark(qint16 mark)
{
    m_mark = mark;
    update();
}

void VorelModule::Create(int moduleType, const QString &name)
{
    m_moduleData = ivr::ModuleData::createNew(moduleType, name);
    showModule();
}

void VorelModule::Attach(ivr::ModuleDataPtr module)
{
    IVR_CHECK(module, return );
    m_moduleData = std::move(module);
    showModule();
}

void VorelModule::showModule()
{
    const ivr::Definition &definition = m_moduleData->definition();
    setCaption(m_moduleData->Name());
    setDescription(definition.Description());
    setCompact(definition.Compact());
}

void VorelModule::setLeft(float left)
{
    m_left = left;
    move(Twips::toPixels(m_left), Twips::toPixels(m_top));
}

void VorelModule::setTop(float top)
{
    m_top = top;
    move(Twips::toPixels(m_left), Twips::toPixels(m_top));
}

float VorelModule::Width() const
{
    return Twips::fromPixels(width());
}

float VorelModule::Height() const
{
    return Twips::fromPixels(height());
}

void VorelModule::applySize()
{
    const float height = m_compact ? CompactHeight : DefaultHeight;
    setFixedSize(Twips::toPixels(DefaultWidth), Twips::toPixels(height));
    update();
}

void VorelModule::editDescription()
{
    bool ok = false;
    const QString text = QInputDialog::getMultiLineText(
            this,
            tr("Description"),
            shownAsWritten(tr("Description of %1:").arg(m_caption)),
            m_description,
            &ok);
    if (!ok || text == m_description)
        return;
    setDescription(text);
    emit ModuleChanged(m_index);
}

void VorelModule::toggleCompact(bool compact)
{
    if (compact == m_compact)
        return;
    setCompact(compact);
    emit ModuleChanged(m_index);
    emit ModuleResized(m_index);
}

void VorelModule::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const bool focused = hasFocus();
    const QRectF face = QRectF(rect()).adjusted(1, 1, -1, -1);
    p.setPen(QPen(focused ? FocusFrame : Frame, focused ? 2.0 : 1.0));
    p.setBrush(focused ? Face : Face.darker(103));
    p.drawRoundedRect(face, 5, 5);
    if (m_mark != 0) {
        p.setPen(QPen(FocusFrame, 1, Qt::DashLine));
        p.setBrush(Qt::NoBrush);
        p.drawRoundedRect(face.adjusted(2, 2, -2, -2), 4, 4);
    }

    const int type = m_moduleData ? m_moduleData->ModuleType() : -1;
    const QRect icon(QPoint(Pad, Pad), ModuleIcon::SourceSize);
    p.drawPixmap(icon, ModuleIcon::picture(type));

    QFont bold = font();
    bold.setBold(true);
    p.setFont(bold);
    p.setPen(palette().color(QPalette::WindowText));
    const QRect nameBox(
            icon.right() + Pad + 1, Pad, width() - icon.right() - 2 * Pad - 1, icon.height());
    p.drawText(nameBox,
               Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap,
               p.fontMetrics().elidedText(m_caption, Qt::ElideRight, nameBox.width() * 2));
    if (m_compact)
        return;
    p.setFont(font());
    const QRect textBox(
            Pad, icon.bottom() + Pad, width() - 2 * Pad, height() - icon.bottom() - 2 * Pad);
    p.drawText(textBox, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, m_description);
}

void VorelModule::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    update();
    emit GotFocus(m_index);
}

void VorelModule::focusOutEvent(QFocusEvent *event)
{
    QWidget::focusOutEvent(event);
    update();
}

void VorelModule::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Delete:
        emit DeleteRequest(m_index);
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit PropertyRequest(m_index);
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void VorelModule::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        emit MarkRequest(m_index, 1);
    emit MouseDown(m_index,
                   event->button(),
                   event->modifiers(),
                   Twips::fromPixels(event->position().x()),
                   Twips::fromPixels(event->position().y()),
                   event->globalPosition());
}

void VorelModule::mouseMoveEvent(QMouseEvent *event)
{
    emit MouseMove(m_index,
                   event->buttons(),
                   event->modifiers(),
                   Twips::fromPixels(event->position().x()),
                   Twips::fromPixels(event->position().y()),
                   event->globalPosition());
}

void VorelModule::mouseReleaseEvent(QMouseEvent *event)
{
    emit MouseUp(m_index,
                 event->button(),
                 event->modifiers(),
                 Twips::fromPixels(event->position().x()),
                 Twips::fromPixels(event->position().y()),
                 event->globalPosition());
}

void VorelModule::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        emit PropertyRequest(m_index);
}

void VorelModule::contextMenuEvent(QContextMenuEvent *event)
{
    setFocus(Qt::PopupFocusReason);
    m_menu->exec(event->globalPos());
}
