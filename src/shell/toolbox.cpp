#include "toolbox.h"

#include "ivrcheck.h"
#include "moduletypes.h"
#include "selectedmoduletype.h"
#include "toolpictureengine.h"

#include <QIcon>
#include <QLabel>
#include <QVBoxLayout>

namespace ivr {

namespace {

// The tools in screen order; 13 lies between 8 and 9 on purpose. Index 0 is
// the Select tool, every other index is the module type that it arms.
const int kTools[] = {0, 3, 4, 5, 6, 7, 8, 13, 9, 11, 12};

QString tipOf(int index)
{
    return index == 0 ? QStringLiteral("Select") : ModuleTypes::info(index).caption;
}

// The order in which ResetToolbox walks the buttons.
const int kResetOrder[] = {0, 3, 4, 5, 6, 7, 8, 9, 11, 12, 13};

constexpr QSize SelectedPicture{88, 44};
constexpr QSize PlainPicture{70, 35};

// One factor for both sizes, taken from the larger one and the room that the
// button leaves inside its frame.
qreal pictureScale()
{
    const QSize room = ToolboxButton::ButtonSize - QSize(6, 6);
    return qMin(qreal(room.width()) / SelectedPicture.width(),
                qreal(room.height()) / SelectedPicture.height());
}

} // namespace

ToolboxButton::ToolboxButton(int index, const QString &tip, QWidget *parent)
    : QToolButton(parent)
    , m_index(index)
{
    setObjectName(QStringLiteral("cmdModule%1").arg(index));
    setToolTip(tip);
    setAccessibleName(tip);
    setCheckable(true);
    setAutoRaise(true);
    setFixedSize(ButtonSize);
    setFocusPolicy(Qt::TabFocus);
    setMouseTracking(true);
    redraw();
}

void ToolboxButton::setTogglePressed(bool pressed)
{
    setChecked(pressed);
}

void ToolboxButton::setPictureWidth(int width)
{
    m_pictureSize.setWidth(width);
    redraw();
}

void ToolboxButton::setPictureHeight(int height)
{
    m_pictureSize.setHeight(height);
    redraw();
}

void ToolboxButton::redraw()
{
    const QSize shown = (QSizeF(m_pictureSize) * pictureScale()).toSize();
    if (shown == iconSize() && !icon().isNull())
        return;
    setIcon(QIcon(new ToolPictureEngine(m_index, shown)));
    setIconSize(shown);
}

Toolbox::Toolbox(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("XPSideMenu1"));
    setAccessibleName(QStringLiteral("Toolbox"));
    setMouseTracking(true);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(3, 3, 3, 3); // 45 twips
    layout->setSpacing(3);                  // the 540-twip pitch less the button
    for (const int index : kTools) {
        auto *button = new ToolboxButton(index, tipOf(index), this);
        m_buttons.emplace(index, button);
        layout->addWidget(button);
        connect(button, &QToolButton::clicked, this, [this, index] { cmdModule_Click(index); });
    }
    auto *filler = new QLabel(this);
    filler->setObjectName(QStringLiteral("Label1_1"));
    filler->setMouseTracking(true);
    layout->addWidget(filler, 1);

    cmdModule(0)->setTogglePressed(true);
    cmdModule(0)->setPictureHeight(SelectedPicture.height());
    cmdModule(0)->setPictureWidth(SelectedPicture.width());
}

void Toolbox::preparePictures()
{
    for (const int index : kTools) {
        const QSize picture = index == 0 ? SelectedPicture : PlainPicture;
        const QSize shown = (QSizeF(picture) * pictureScale()).toSize();
        ToolPictureEngine(index, shown).pixmap(shown, QIcon::Normal, QIcon::Off);
    }
}

const QList<int> &Toolbox::screenOrder()
{
    static const QList<int> order(std::begin(kTools), std::end(kTools));
    return order;
}

ToolboxButton *Toolbox::cmdModule(int index) const
{
    const auto found = m_buttons.find(index);
    IVR_CHECK(found != m_buttons.end(), return nullptr);
    return found->second;
}

void Toolbox::ResetToolbox()
{
    for (int index : kResetOrder)
        cmdModule(index)->setTogglePressed(false);
    for (int index : kResetOrder)
        cmdModule(index)->setPictureHeight(PlainPicture.height());
    for (int index : kResetOrder)
        cmdModule(index)->setPictureWidth(PlainPicture.width());
}

void Toolbox::cmdModule_Click(int index)
{
    ResetToolbox();
    setSelectedModuleType(qint16(index));
    ToolboxButton *button = cmdModule(index);
    button->setTogglePressed(true);
    button->setPictureHeight(SelectedPicture.height());
    button->setPictureWidth(SelectedPicture.width());
}

} // namespace ivr
