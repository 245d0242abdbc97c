#pragma once
// LDialogBase: the frameless base of floating windows (flyouts, pop-up panels): no system frame,
// a rounded 1-pixel border in the border colour over the primary background, both following the
// theme. Content goes into contentLayout().

#include <LxStdUI/LxStdUIExport.h>
#include <QDialog>

class QVBoxLayout;

class LXSTDUI_EXPORT LDialogBase : public QDialog {
    Q_OBJECT
public:
    explicit LDialogBase(QWidget* parent = nullptr, Qt::WindowFlags extraFlags = Qt::WindowFlags());

    QVBoxLayout* contentLayout() const { return m_pLayout; }

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    QVBoxLayout* m_pLayout = nullptr;
};

// LFlyouts: a flyout panel that opens next to an anchor widget: below it by default, or on the
// side given, moved back inside the anchor's screen when it would leave it. A tool window, so it
// neither takes a task-bar entry nor blocks its parent.
class LXSTDUI_EXPORT LFlyouts : public LDialogBase {
    Q_OBJECT
public:
    explicit LFlyouts(QWidget* parent = nullptr);

    void setAnchor(QWidget* anchor, Qt::Edge edge = Qt::BottomEdge, int i32Gap = 4);
    // Shows the panel next to its anchor (or where it is when it has none).
    void showAtAnchor();
    // Top-left of the panel for its size next to `anchorRect` (global), kept inside `screen`.
    static QPoint placement(const QRect& anchorRect, const QSize& size, Qt::Edge edge, int i32Gap, const QRect& screen);

private:
    QWidget* m_pAnchor = nullptr;
    Qt::Edge m_enEdge = Qt::BottomEdge;
    int m_i32Gap = 4;
};
