#pragma once

#include "moduledata.h"

#include <QPointF>
#include <QWidget>

class QAction;
class QMenu;

// One module on the canvas. It owns its ModuleData and shows the module's
// picture, name and description. Left and Top are twips as given, shown
// rounded to pixels, so a position read back is the position set.
//
// The control does not move itself: it reports mouse press, move and
// release (x, y in twips inside the module, plus the global position) and
// the canvas does the dragging. Its own gestures: double click or Enter
// asks for the properties, the Delete key asks for deletion, and the
// context menu offers both plus the description and the compact form.
//
// The class lives outside any namespace: its run-time type name must be
// "VorelModule", which the window uses to tell a module from other controls.
class VorelModule : public QWidget
{
    Q_OBJECT

public:
    static constexpr float DefaultWidth = 2355;  // twips, 157 px
    static constexpr float DefaultHeight = 1185; // twips, 79 px
    static constexpr float CompactHeight = 645;  // twips, 43 px: picture and name only

    explicit VorelModule(qint16 index, QWidget *parent = nullptr);
    ~VorelModule() override;

    qint16 Index() const { return m_index; }

    int ModuleType() const;
    QString Caption() const { return m_caption; }
    void setCaption(const QString &caption);
    QString Description() const { return m_description; }
    // Set by the program (no ModuleChanged); the user edits it through the
    // context menu.
    void setDescription(const QString &description);
    bool Compact() const { return m_compact; }
    // Set by the program (no ModuleChanged, no ModuleResized).
    void setCompact(bool compact);
    void setMark(qint16 mark);

    ivr::ModuleDataPtr moduleData() const { return m_moduleData; }
    void Create(int moduleType, const QString &name);
    void Attach(ivr::ModuleDataPtr module);

    // Any float, kept as given; a position far off the canvas is shown at the
    // edge of what can be drawn (Twips::Reach).
    float Left() const { return m_left; }
    float Top() const { return m_top; }
    void setLeft(float left);
    void setTop(float top);
    float Width() const;
    float Height() const;

    // The context menu's Delete, which the window's tests trigger.
    QAction *deleteAction() const { return m_deleteAction; }

signals:
    void GotFocus(qint16 index);
    void MarkRequest(qint16 index, int mark);
    void PropertyRequest(qint16 index);
    void DeleteRequest(qint16 index);
    void ModuleChanged(qint16 index);
    void ModuleResized(qint16 index);
    void MouseDown(qint16 index,
                   Qt::MouseButton button,
                   Qt::KeyboardModifiers shift,
                   float x,
                   float y,
                   QPointF globalPos);
    void MouseMove(qint16 index,
                   Qt::MouseButtons buttons,
                   Qt::KeyboardModifiers shift,
                   float x,
                   float y,
                   QPointF globalPos);
    void MouseUp(qint16 index,
                 Qt::MouseButton button,
                 Qt::KeyboardModifiers shift,
                 float x,
                 float y,
                 QPointF globalPos);

protected:
    void paintEvent(QPaintEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void createActions();
    void editDescription();
    void toggleCompact(bool compact);
    void showModule();
    void applySize();

    qint16 m_index;
    ivr::ModuleDataPtr m_moduleData;
    QString m_caption;
    QString m_description;
    bool m_compact = false;
    qint16 m_mark = 0;
    float m_left = 0;
    float m_top = 0;
    QMenu *m_menu = nullptr;
    QAction *m_propertiesAction = nullptr;
    QAction *m_deleteAction = nullptr;
    QAction *m_descriptionAction = nullptr;
    QAction *m_compactAction = nullptr;
};
