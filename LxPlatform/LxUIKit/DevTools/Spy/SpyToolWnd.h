#pragma once
// The widget inspector's window. Opening it switches the application into picking mode: the window
// hides, the cursor becomes a cross, and every mouse move over the application's own windows is
// turned into a hovered item; a click selects the item (and ends picking unless "keep picking" is
// checked). Clicks, keys and wheel turns that pick never reach the application. Esc ends picking.
//
// F2 toggles the Figma mode (the wheel walks the hovered item to its parent, and back down), F3 the
// copy-review mode (the texts of the hovered item and its neighbours are shown beside the cursor).
//
// Choices made here:
// - The working size restored after picking is at least 960 x 640.
// - While another popup of the application grabs the mouse, a click on the inspector is sent to
//   the inspector's widget under the cursor (mapped to its coordinates), so its buttons work.
// - A wheel over a part of the inspector that is not in a scroll area is dropped.
// - The tool bar's icon buttons (opacity: 100 %, 80 %, 60 % or 40 %; clear the selection; read the
//   widget tree again) are drawn in the colour "ck_gray940" in the Light theme and in the theme's
//   text colour in the Dark theme, where that grey would not show.
// - The window follows the theme through its palette (lists, tables, tab bars and text views too).
// - A button at the end of the tab bar lists every view in a menu: in a narrow window the bar
//   scrolls, and the views past its edge stay one click away.
// The window deletes itself when closed; initSpyToolWnd creates a fresh one next time.

#include <LxStdUI/LIconButton.h>
#include <LxUIKit/DevTools/Spy/LxUISpyComponent.h>
#include <LxUIKit/LxUIKitExport.h>

#include <QCheckBox>
#include <QLabel>
#include <QPointer>
#include <QTabWidget>
#include <QToolButton>
#include <QVector>
#include <QWidget>

class LxWidgetTreeInfoView;
class QMouseEvent;
class QWindow;

class LXUIKIT_EXPORT CSpyToolWnd : public QWidget, public ILxUISpyComponent {
    Q_OBJECT
public:
    explicit CSpyToolWnd(QWidget* parent);
    ~CSpyToolWnd() override;

    void StartOrStopEventFilter();
    bool OnHotKey(Qt::Key key, Qt::KeyboardModifiers modifiers) override;
    void InitSize();
    bool eventFilter(QObject* obj, QEvent* ev) override;
    // The top-level widget of the native window that received a mouse event, and the event's
    // position in its coordinates; false when the window is not a widget's.
    static bool GetMousePosAndWidgetFromMouseEvent(QMouseEvent* ev, QWindow* window, QWidget** widget, QPoint* pos);

    QToolButton* startStopButton() const { return m_pStartStopBtn; }
    QCheckBox* figmaCheckBox() const { return m_pFigmaCheck; }
    QCheckBox* copyReviewCheckBox() const { return m_pCopyReviewCheck; }
    QCheckBox* keepPickingCheckBox() const { return m_pKeepPickingCheck; }
    QTabWidget* tabWidget() const { return m_pTabs; }
    LIconButton* opacityButton() const { return m_pOpacityBtn; }
    LIconButton* clearSelectionButton() const { return m_pClearBtn; }
    LIconButton* refreshTreeButton() const { return m_pRefreshTreeBtn; }
    // The colour token of the tool bar's icons in the current theme.
    static QString IconColorKey();
    // The texts shown by the copy-review mode for the last hovered item.
    QStringList copyReviewTexts() const { return m_lstCopyReview; }

protected:
    void showEvent(QShowEvent* ev) override;
    void OnConfigChanged(const Config& previous, const Config& current) override;

private:
    QWidget* CreateToolWidget();
    QToolButton* CreateAllTabsButton();
    void ApplyTheme();
    void SetConfigFlag(bool Config::*flag, bool on);
    void Hover(const PseudoWidget& pw, HoverSource source);
    void WalkFigma(int steps);

    QPointer<QWidget> m_pToolWidget;
    QPointer<QToolButton> m_pStartStopBtn;
    QPointer<QCheckBox> m_pFigmaCheck;
    QPointer<QCheckBox> m_pCopyReviewCheck;
    QPointer<QCheckBox> m_pKeepPickingCheck;
    QPointer<LIconButton> m_pOpacityBtn;
    QPointer<LIconButton> m_pClearBtn;
    QPointer<LIconButton> m_pRefreshTreeBtn;
    QPointer<LxWidgetTreeInfoView> m_pTree;
    QPointer<QTabWidget> m_pTabs;
    QPointer<QObject> m_pSpyToolEventFilter;
    QPointer<QLabel> m_pCopyReviewTip;
    QVector<PseudoWidget> m_figmaStack;  // items walked up from in Figma mode, innermost first
    QStringList m_lstCopyReview;
};

// Creates the inspector window on first use; shows it and starts picking, or hides it.
LXUIKIT_EXPORT void initSpyToolWnd(bool show);
// The inspector window if one exists.
LXUIKIT_EXPORT CSpyToolWnd* currentSpyToolWnd();
