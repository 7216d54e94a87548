#pragma once

#include <QSize>
#include <QToolButton>
#include <QWidget>

#include <map>

namespace ivr {

// One button of the toolbox, cmdModule(index). Its picture is drawn at the
// button's picture size: 70 x 35 when not selected, 88 x 44 when selected,
// both scaled by one factor so that the larger stays whole on the button.
class ToolboxButton : public QToolButton
{
    Q_OBJECT

public:
    ToolboxButton(int index, const QString &tip, QWidget *parent);

    int index() const { return m_index; }
    bool togglePressed() const { return isChecked(); }
    void setTogglePressed(bool pressed);
    QSize pictureSize() const { return m_pictureSize; }
    void setPictureWidth(int width);
    void setPictureHeight(int height);

    static constexpr QSize ButtonSize{67, 33}; // 1005 x 495 twips

private:
    void redraw();

    int m_index;
    QSize m_pictureSize{70, 35};
};

// XPSideMenu1: the column of tools. A click arms a module type for the canvas
// (SelectedModuleType); it makes nothing itself.
class Toolbox : public QWidget
{
    Q_OBJECT

public:
    explicit Toolbox(QWidget *parent = nullptr);

    // The indices in their screen order, from the top.
    static const QList<int> &screenOrder();
    // Draws the pictures a new toolbox shows, ahead of its first paint. They
    // hold no text, so the start does this while the fonts are still loading.
    static void preparePictures();
    ToolboxButton *cmdModule(int index) const;
    void ResetToolbox();

private:
    void cmdModule_Click(int index);

    std::map<int, ToolboxButton *> m_buttons;
};

} // namespace ivr
