#pragma once
// LFrameLessWnd: a top-level window without the system frame. It draws its own frame and title
// bar (title, a widget of the caller's, minimise / maximise / close buttons) around one content
// widget.
//
// - Dragging: a left-button drag anywhere on the title bar that no child takes for itself (a label
//   does not, a button does) moves the window; the system's own move is used where the platform
//   offers it. A double click on the bar maximises or restores.
// - Resizing: the frame keeps a border strip (resizeBorderWidth(), 6 pixels) around everything;
//   pressing there drags that edge or corner (the cursor shows which), never below the minimum
//   size. Off while maximised or when setResizable(false).
// - Colours follow the theme: background "ct_bg_primary", frame "ct_border", title "ct_text_h1".
// - The close button closes the window (closeEvent reaches subclasses as usual).

#include <LxStdUI/LxStdUIExport.h>
#include <QPointer>
#include <QWidget>

class QHBoxLayout;
class QLabel;
class QVBoxLayout;
class LIconButton;
class LFrameLessTitleBar;

class LXSTDUI_EXPORT LFrameLessWnd : public QWidget {
    Q_OBJECT
public:
    explicit LFrameLessWnd(QWidget* parent = nullptr);
    ~LFrameLessWnd() override;

    void setTitle(const QString& title);
    QString title() const;

    // Placed in the title bar between the title and the window buttons (stretching); the bar takes
    // ownership. nullptr removes it.
    void setTitleBarWidget(QWidget* widget);
    QWidget* titleBarWidget() const { return m_pTitleBarWidget; }
    void setContentWidget(QWidget* widget);
    QWidget* contentWidget() const { return m_pContent; }
    QWidget* titleBar() const;

    void setTitleBarHeight(int i32Height);
    int titleBarHeight() const;
    void setResizable(bool bResizable);
    bool isResizable() const { return m_bResizable; }
    void setResizeBorderWidth(int i32Width);
    int resizeBorderWidth() const { return m_i32Border; }
    void setMinimizeButtonVisible(bool bVisible);
    void setMaximizeButtonVisible(bool bVisible);

    // The frame edges under `pos` (this window's coordinates); none inside the border strip's
    // inner edge, while maximised or when not resizable.
    Qt::Edges edgesAt(const QPoint& pos) const;
    // What the frame and the title bar add around the content widget.
    QSize chromeSize() const;

    void toggleMaximized();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    friend class LFrameLessTitleBar;
    void UpdateMargins();

    QPointer<LFrameLessTitleBar> m_pTitleBar;
    QPointer<QWidget> m_pTitleBarWidget;
    QPointer<QWidget> m_pContent;
    QPointer<QVBoxLayout> m_pLayout;
    int m_i32Border = 6;
    bool m_bResizable = true;
    Qt::Edges m_resizeEdges;
    QPoint m_pressGlobal;
    QRect m_pressGeometry;
};
