#include <LxUIKit/DevTools/Spy/SpyToolWnd.h>

#include <LxCore/Post.h>
#include <LxStdUI/LFlowLayout.h>
#include <LxStdUI/LIconButton.h>
#include <LxStdUI/LStyleSheetStyleHelper.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/SvgIconRenderer.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/DevTools/LModalBypassHelper.h>
#include <LxUIKit/DevTools/Spy/LxCurrentWidgetHighLightView_p.h>
#include <LxUIKit/DevTools/Spy/LxDesignerView_p.h>
#include <LxUIKit/DevTools/Spy/LxObjectEventView_p.h>
#include <LxUIKit/DevTools/Spy/LxObjectSignalSlotView_p.h>
#include <LxUIKit/DevTools/Spy/LxSpyEntry.h>
#include <LxUIKit/DevTools/Spy/LxUIDebugView_p.h>
#include <LxUIKit/DevTools/Spy/LxWidgetGeometryView_p.h>
#include <LxUIKit/DevTools/Spy/LxWidgetPaletteView_p.h>
#include <LxUIKit/DevTools/Spy/LxWidgetPropertyView_p.h>
#include <LxUIKit/DevTools/Spy/LxWidgetTreeInfoView_p.h>
#include <LxUIKit/DevTools/Spy/LxWindowScaleDebuger_p.h>
#include <LxUIKit/DevTools/Spy/SpyTexts_p.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QAbstractScrollArea>
#include <QApplication>
#include <QCheckBox>
#include <QCursor>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSplitter>
#include <QStyle>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <QWindow>

namespace {

// A tool bar icon, tinted with one colour token whatever colours its SVG was drawn in.
class LxSpyIconButton : public LIconButton {
public:
    LxSpyIconButton(const QString& iconPath, const QString& tip, QWidget* parent) : LIconButton(iconPath, parent) {
        setToolTip(tip);
        setIconSize(QSize(20, 20));
        setHoverBackgroundEnabled(true);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        if (isShowingHoverBackground()) {
            QColor bg = lx_ui_res::Provider::instance()->color(QStringLiteral("ct_bg_hover"));
            if (isDown())
                bg = bg.darker(115);
            painter.setPen(Qt::NoPen);
            painter.setBrush(bg);
            painter.drawRoundedRect(QRectF(rect()), 4, 4);
        }
        const auto renderer = lx_ui_res::SvgIconRenderer::get(iconPath());
        if (!renderer)
            return;
        QPixmap icon = renderer->pixmap(iconSize(), devicePixelRatioF());
        {
            QPainter tint(&icon);
            tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
            QColor c = lx_ui_res::Provider::instance()->color(CSpyToolWnd::IconColorKey());
            if (!isEnabled())
                c.setAlphaF(0.4);
            tint.fillRect(QRect(QPoint(0, 0), iconSize()), c);
        }
        const QSize box = iconSize().boundedTo(size());
        painter.drawPixmap(QRect(QPoint((width() - box.width()) / 2, (height() - box.height()) / 2), box), icon);
    }
};

// Sets the inspector window's opacity from a small menu.
class LxBtnSetWindowOpacity : public LxSpyIconButton {
public:
    LxBtnSetWindowOpacity(QWidget* target, QWidget* parent)
        : LxSpyIconButton(QStringLiteral(":/LxUIKit/spy/icons/spy_opacity.svg"), QStringLiteral("Window opacity"),
                          parent),
          m_pMenu(new QMenu(this)) {
        m_pMenu->setObjectName(QStringLiteral("SpyOpacityMenu"));
        QPointer<QWidget> guard(target);
        for (int percent : {100, 80, 60, 40}) {
            QAction* a = m_pMenu->addAction(QStringLiteral("%1 %").arg(percent));
            QObject::connect(a, &QAction::triggered, this, [guard, percent] {
                if (guard)
                    guard->setWindowOpacity(percent / 100.0);
            });
        }
        // Not exec(): a nested loop would stall the inspected application's events meanwhile.
        QObject::connect(this, &QAbstractButton::clicked, this,
                         [this] { m_pMenu->popup(mapToGlobal(QPoint(0, height()))); });
    }
    QMenu* menu() const { return m_pMenu; }

private:
    QPointer<QMenu> m_pMenu;
};

// While a popup of the application grabs the mouse, wheel turns over the inspector go to the
// vertical scroll bar of the scroll area under the cursor.
class CSpyToolEventFilter : public QObject {
public:
    explicit CSpyToolEventFilter(QWidget* spy) : QObject(spy), m_pSpy(spy) {}
    bool eventFilter(QObject* obj, QEvent* ev) override {
        if (ev->type() != QEvent::Wheel || !QApplication::activePopupWidget() || !m_pSpy)
            return QObject::eventFilter(obj, ev);
        auto* wheel = static_cast<QWheelEvent*>(ev);
        const QPoint global = wheel->globalPosition().toPoint();
        QWidget* child = m_pSpy->childAt(m_pSpy->mapFromGlobal(global));
        QAbstractScrollArea* area = nullptr;
        for (QWidget* w = child; w && !area; w = w->parentWidget())
            area = qobject_cast<QAbstractScrollArea*>(w);
        if (!area || !area->verticalScrollBar())
            return true;  // nothing to scroll here
        QScrollBar* bar = area->verticalScrollBar();
        QWheelEvent copy(bar->mapFromGlobal(global), wheel->globalPosition(), wheel->pixelDelta(), wheel->angleDelta(),
                         wheel->buttons(), wheel->modifiers(), wheel->phase(), wheel->inverted());
        // Straight to the bar: QApplication drops wheel events for other windows while a popup is open.
        static_cast<QObject*>(bar)->event(&copy);
        return true;
    }

private:
    QPointer<QWidget> m_pSpy;
};

PseudoWidget ParentOf(const PseudoWidget& pw) {
    if (pw.isPhantom())
        return PseudoWidget(pw.phantomContainer());
    QWidget* w = pw.widget();
    return (w && !w->isWindow()) ? PseudoWidget(w->parentWidget()) : PseudoWidget();
}

}  // namespace

CSpyToolWnd::CSpyToolWnd(QWidget* parent) : QWidget(parent, Qt::Window) {
    setLayoutDirection(Qt::LeftToRight);
    qApp->installEventFilter(this);
    setAttribute(Qt::WA_DeleteOnClose);
    lx_devtools::LModalBypassHelper::Attach(this);
    resize(200, 200);
    setWindowTitle(QStringLiteral("QT SPY 工具（快捷键 Ctrl+F10）"));

    m_pToolWidget = CreateToolWidget();
    auto* splitter = new QSplitter(Qt::Horizontal, this);
    m_pTree = new LxWidgetTreeInfoView(splitter);
    splitter->addWidget(m_pTree);
    m_pTabs = new QTabWidget(splitter);
    m_pTabs->addTab(new LxWidgetPropertyView(m_pTabs), QStringLiteral("属性&&样式表"));
    m_pTabs->addTab(new LxDesignerView(m_pTabs), QStringLiteral("设计"));
    m_pTabs->addTab(new LxUIDebugView(m_pTabs), QStringLiteral("调试"));
    m_pTabs->addTab(new LxWindowScaleDebuger(m_pTabs), QStringLiteral("窗口缩放调试"));
    m_pTabs->addTab(new LxObjectEventView(m_pTabs), QStringLiteral("事件查看器"));
    m_pTabs->addTab(new LxObjectSignalSlotView(m_pTabs), QStringLiteral("信号&槽"));
    m_pTabs->addTab(new LxWidgetGeometryView(m_pTabs), QStringLiteral("几何"));
    m_pTabs->addTab(new LxWidgetPaletteView(m_pTabs), QStringLiteral("调色板"));
    splitter->addWidget(m_pTabs);
    m_pTabs->setCornerWidget(CreateAllTabsButton(), Qt::TopRightCorner);
    splitter->setStretchFactor(0, 2);
    splitter->setStretchFactor(1, 1);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_pToolWidget);
    layout->addWidget(splitter, 1);

    LxCurrentWidgetHighLightView::Init();
    ApplyTheme();
    LXUIKIT_SAFE_CONNECT(lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this,
                         &CSpyToolWnd::ApplyTheme);

    m_pCopyReviewTip = new QLabel(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput);
    m_pCopyReviewTip->setObjectName(QStringLiteral("SpyCopyReviewTip"));
    m_pCopyReviewTip->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_pCopyReviewTip->setAttribute(Qt::WA_ShowWithoutActivating);
    m_pCopyReviewTip->setStyleSheet(
        QStringLiteral("QLabel { background: #FFFBE6; color: #1F1F1F; border: 1px solid #D9A400; padding: 6px; }"));
}

CSpyToolWnd::~CSpyToolWnd() {
    qApp->removeEventFilter(this);
    if (ms_config.picking) {
        Config c = ms_config;
        c.picking = false;
        NotifyConfigChanged(c, this);
        QGuiApplication::restoreOverrideCursor();
    }
    delete m_pCopyReviewTip.data();
    LxCurrentWidgetHighLightView::Release();
}

QWidget* CSpyToolWnd::CreateToolWidget() {
    auto* bar = new QWidget(this);
    auto* flow = new LFlowLayout(bar, 0);
    m_pStartStopBtn = new QToolButton(bar);
    m_pStartStopBtn->setText(QStringLiteral("▶"));
    m_pStartStopBtn->setToolTip(QStringLiteral("Start spy."));
    LXUIKIT_SAFE_CONNECT(m_pStartStopBtn.data(), &QToolButton::clicked, this, &CSpyToolWnd::StartOrStopEventFilter);
    m_pFigmaCheck = new QCheckBox(QStringLiteral("Figma 模式（快捷键 F2）"), bar);
    m_pFigmaCheck->setToolTip(
        QStringLiteral("开启Figma模式后，鼠标选中并hover控件时，可以通过滚动鼠标滚轮切换相对的父窗口"));
    m_pCopyReviewCheck = new QCheckBox(QStringLiteral("文案走查模式（快捷键 F3）"), bar);
    m_pKeepPickingCheck = new QCheckBox(QStringLiteral("持续选中控件，不关闭窗口"), bar);
    m_pFigmaCheck->setChecked(ms_config.figmaMode);
    m_pCopyReviewCheck->setChecked(ms_config.copyReviewMode);
    m_pKeepPickingCheck->setChecked(ms_config.keepPicking);
    LXUIKIT_SAFE_CONNECT(m_pFigmaCheck.data(), &QCheckBox::toggled, this,
                         [this](bool on) { SetConfigFlag(&Config::figmaMode, on); });
    LXUIKIT_SAFE_CONNECT(m_pCopyReviewCheck.data(), &QCheckBox::toggled, this,
                         [this](bool on) { SetConfigFlag(&Config::copyReviewMode, on); });
    LXUIKIT_SAFE_CONNECT(m_pKeepPickingCheck.data(), &QCheckBox::toggled, this,
                         [this](bool on) { SetConfigFlag(&Config::keepPicking, on); });
    m_pOpacityBtn = new LxBtnSetWindowOpacity(this, bar);
    m_pOpacityBtn->setObjectName(QStringLiteral("SpyOpacityButton"));
    m_pClearBtn = new LxSpyIconButton(QStringLiteral(":/LxUIKit/spy/icons/spy_clear_selection.svg"),
                                      QStringLiteral("Clear the selection"), bar);
    m_pClearBtn->setObjectName(QStringLiteral("SpyClearSelectionButton"));
    LXUIKIT_SAFE_CONNECT(m_pClearBtn.data(), &QAbstractButton::clicked, this, [this] {
        NotifySelectedPseudoWidgetChanged(PseudoWidget(), this);
        NotifyHoveredPseudoWidgetChanged(PseudoWidget(), HoverSource::View, this);
    });
    m_pRefreshTreeBtn = new LxSpyIconButton(QStringLiteral(":/LxUIKit/spy/icons/spy_refresh_tree.svg"),
                                            QStringLiteral("Read the widget tree again"), bar);
    m_pRefreshTreeBtn->setObjectName(QStringLiteral("SpyRefreshTreeButton"));
    LXUIKIT_SAFE_CONNECT(m_pRefreshTreeBtn.data(), &QAbstractButton::clicked, this, [this] {
        if (m_pTree)
            m_pTree->Rebuild();
    });
    for (QWidget* w : {static_cast<QWidget*>(m_pStartStopBtn.data()), static_cast<QWidget*>(m_pFigmaCheck.data()),
                       static_cast<QWidget*>(m_pCopyReviewCheck.data()),
                       static_cast<QWidget*>(m_pKeepPickingCheck.data()), static_cast<QWidget*>(m_pOpacityBtn.data()),
                       static_cast<QWidget*>(m_pClearBtn.data()), static_cast<QWidget*>(m_pRefreshTreeBtn.data())})
        flow->addWidget(w);
    return bar;
}

QString CSpyToolWnd::IconColorKey() {
    // Reads on the light surfaces of the Light theme; in the Dark theme that dark grey would vanish
    // into the background, so the theme's text colour takes over.
    return lx_ui_theme::Manager::instance()->isDark() ? QStringLiteral("ct_text_h1") : QStringLiteral("ck_gray940");
}

void CSpyToolWnd::ApplyTheme() {
    // Plain Qt controls take the theme through the palette; tables, trees and tab bars included.
    setPalette(lx_ui_theme::ThemedPalette(style()->standardPalette()));
    setAutoFillBackground(true);
    update();
}

void CSpyToolWnd::SetConfigFlag(bool Config::*flag, bool on) {
    if (ms_config.*flag == on)
        return;
    Config c = ms_config;
    c.*flag = on;
    NotifyConfigChanged(c, this);
    if (!ms_config.copyReviewMode && m_pCopyReviewTip)
        m_pCopyReviewTip->hide();
}

void CSpyToolWnd::OnConfigChanged(const Config&, const Config& current) {
    // Another component changed the configuration: mirror it on the check boxes.
    const QSignalBlocker b1(m_pFigmaCheck.data());
    const QSignalBlocker b2(m_pCopyReviewCheck.data());
    const QSignalBlocker b3(m_pKeepPickingCheck.data());
    m_pFigmaCheck->setChecked(current.figmaMode);
    m_pCopyReviewCheck->setChecked(current.copyReviewMode);
    m_pKeepPickingCheck->setChecked(current.keepPicking);
}

void CSpyToolWnd::StartOrStopEventFilter() {
    const bool wasPicking = ms_config.picking;
    QPointer<CSpyToolWnd> guard(this);
    if (wasPicking) {
        m_pStartStopBtn->setText(QStringLiteral("▶"));
        m_pStartStopBtn->setDown(false);
        core::post::ToMain([guard] {
            if (guard)
                guard->InitSize();
        });
        show();
        raise();
    } else {
        m_pStartStopBtn->setText(QStringLiteral("■"));
        m_pStartStopBtn->setDown(true);
        hide();
    }
    Config c = ms_config;
    c.picking = !wasPicking;
    NotifyConfigChanged(c, nullptr);
    m_figmaStack.clear();
    if (!c.picking) {
        if (m_pCopyReviewTip)
            m_pCopyReviewTip->hide();
        QGuiApplication::restoreOverrideCursor();
        return;
    }
    const QPoint saved = QCursor::pos();
    QCursor::setPos(0, 0);
    // Putting the cursor back makes Qt deliver a fresh move under it, so the first hover comes at once.
    core::post::ToMainDelay(
        [guard, saved] {
            if (guard)
                QCursor::setPos(saved);
        },
        100);
    QGuiApplication::setOverrideCursor(Qt::CrossCursor);
}

bool CSpyToolWnd::OnHotKey(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    if (key == Qt::Key_F2) {
        m_pFigmaCheck->toggle();
        return true;
    }
    if (key == Qt::Key_F3) {
        m_pCopyReviewCheck->toggle();
        return true;
    }
    // The window itself is the sender: it must not be offered its own key again.
    return NotifyHotKey(key, modifiers, this);
}

QToolButton* CSpyToolWnd::CreateAllTabsButton() {
    auto* button = new QToolButton(m_pTabs);
    button->setObjectName(QStringLiteral("SpyAllTabsButton"));
    button->setArrowType(Qt::DownArrow);
    button->setAutoRaise(true);
    button->setPopupMode(QToolButton::InstantPopup);
    auto* menu = new QMenu(button);
    button->setMenu(menu);
    // Listed when opened, so tabs a host adds later are there too.
    LXUIKIT_SAFE_CONNECT(menu, &QMenu::aboutToShow, this, [this, menu] {
        menu->clear();
        for (int i = 0; i < m_pTabs->count(); ++i) {
            QAction* action = menu->addAction(m_pTabs->tabText(i));
            action->setCheckable(true);
            action->setChecked(i == m_pTabs->currentIndex());
            QPointer<QTabWidget> tabs = m_pTabs;
            LXUIKIT_SAFE_CONNECT(action, &QAction::triggered, menu, [tabs, i] {
                if (tabs)
                    tabs->setCurrentIndex(i);
            });
        }
    });
    return button;
}

void CSpyToolWnd::InitSize() {
    if (width() < 960 || height() < 640)
        resize(qMax(width(), 960), qMax(height(), 640));
}

bool CSpyToolWnd::GetMousePosAndWidgetFromMouseEvent(QMouseEvent* ev, QWindow* window, QWidget** widget, QPoint* pos) {
    QWidget* top = PseudoWidget::WidgetOfWindow(window);
    if (!ev || !top)
        return false;
    // A widget window's coordinates are its top-level widget's.
    if (widget)
        *widget = top;
    if (pos)
        *pos = ev->pos();
    return true;
}

void CSpyToolWnd::Hover(const PseudoWidget& pw, HoverSource source) {
    NotifyHoveredPseudoWidgetChanged(pw, source, nullptr);
    if (!ms_config.copyReviewMode || !m_pCopyReviewTip)
        return;
    m_lstCopyReview = devtools::spy::CopyReviewTexts(pw);
    if (m_lstCopyReview.isEmpty()) {
        m_pCopyReviewTip->hide();
        return;
    }
    QStringList lines;
    for (int i = 0; i < m_lstCopyReview.size(); ++i) {
        const QString t = m_lstCopyReview[i].toHtmlEscaped();
        lines << (i == 0 ? QStringLiteral("<b>%1</b>").arg(t) : t);
    }
    m_pCopyReviewTip->setText(lines.join(QStringLiteral("<br/>")));
    m_pCopyReviewTip->adjustSize();
    m_pCopyReviewTip->move(QCursor::pos() + QPoint(16, 16));
    m_pCopyReviewTip->show();
}

void CSpyToolWnd::WalkFigma(int steps) {
    PseudoWidget current = HoveredPseudoWidget();
    if (steps < 0) {  // towards the parent
        const PseudoWidget parent = ParentOf(current);
        if (!parent.isValid())
            return;
        m_figmaStack.append(current);
        Hover(parent, HoverSource::Wheel);
    } else if (!m_figmaStack.isEmpty()) {  // back towards the item first hovered
        Hover(m_figmaStack.takeLast(), HoverSource::Wheel);
    }
}

bool CSpyToolWnd::eventFilter(QObject* obj, QEvent* ev) {
    const QEvent::Type type = ev->type();
    // Keep the inspector clickable while another popup grabs the mouse.
    if ((type == QEvent::MouseButtonPress || type == QEvent::MouseButtonRelease ||
         type == QEvent::MouseButtonDblClick) &&
        obj->isWidgetType() && obj == QApplication::activePopupWidget() && !qobject_cast<QMenu*>(obj)) {
        auto* me = static_cast<QMouseEvent*>(ev);
        const QPoint global = me->globalPos();
        QWidget* target = QApplication::widgetAt(global);
        if (target && target != this && isAncestorOf(target)) {
            raise();
            QMouseEvent copy(type, target->mapFromGlobal(global), global, me->button(), me->buttons(), me->modifiers());
            QCoreApplication::sendEvent(target, &copy);
            return true;
        }
    }
    // Key events reach the application filter once per receiver on their way; the native window
    // sees each key first and exactly once.
    if (type == QEvent::KeyPress && obj->isWindowType()) {
        auto* ke = static_cast<QKeyEvent*>(ev);
        if (ms_config.picking && ke->key() == Qt::Key_Escape) {
            StartOrStopEventFilter();
            return true;
        }
        if (OnHotKey(Qt::Key(ke->key()), ke->modifiers()))
            return true;
    }
    if (!ms_config.picking || !obj->isWindowType())
        return QObject::eventFilter(obj, ev);
    auto* window = static_cast<QWindow*>(obj);
    if (!PseudoWidget::WidgetOfWindow(window) || window == windowHandle())
        return QObject::eventFilter(obj, ev);

    switch (type) {
    case QEvent::MouseMove: {
        QWidget* top = nullptr;
        QPoint pos;
        if (GetMousePosAndWidgetFromMouseEvent(static_cast<QMouseEvent*>(ev), window, &top, &pos)) {
            const PseudoWidget pw = PseudoWidget::FromWidgetPoint(top, pos);
            if (pw != HoveredPseudoWidget() || !m_figmaStack.isEmpty()) {
                m_figmaStack.clear();
                Hover(pw, HoverSource::Mouse);
            }
        }
        return true;
    }
    case QEvent::MouseButtonPress: {
        QWidget* top = nullptr;
        QPoint pos;
        if (GetMousePosAndWidgetFromMouseEvent(static_cast<QMouseEvent*>(ev), window, &top, &pos)) {
            // In Figma mode the walked-to item is the one meant.
            const PseudoWidget pw =
                m_figmaStack.isEmpty() ? PseudoWidget::FromWidgetPoint(top, pos) : HoveredPseudoWidget();
            NotifySelectedPseudoWidgetChangedAndClicked(pw, nullptr);
            NotifyDebugWindowChanged(window, nullptr);
            if (!ms_config.keepPicking)
                StartOrStopEventFilter();
            else
                raise();
        }
        return true;
    }
    case QEvent::Leave: Hover(PseudoWidget(), HoverSource::Mouse); return QObject::eventFilter(obj, ev);
    case QEvent::Wheel:
        if (ms_config.figmaMode) {
            const int dy = static_cast<QWheelEvent*>(ev)->angleDelta().y();
            if (dy != 0)
                WalkFigma(dy < 0 ? -1 : 1);
        }
        return true;
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease: return true;
    default: return QObject::eventFilter(obj, ev);
    }
}

void CSpyToolWnd::showEvent(QShowEvent* ev) {
    if (!m_pSpyToolEventFilter && window()->windowHandle()) {
        m_pSpyToolEventFilter = new CSpyToolEventFilter(this);
        window()->windowHandle()->installEventFilter(m_pSpyToolEventFilter);
    }
    QWidget::showEvent(ev);
}

namespace {
QPointer<CSpyToolWnd>& SpyWindowSlot() {
    static QPointer<CSpyToolWnd> s_wnd;
    return s_wnd;
}
}  // namespace

void initSpyToolWnd(bool show) {
    QPointer<CSpyToolWnd>& wnd = SpyWindowSlot();
    if (!wnd) {
        wnd = new CSpyToolWnd(nullptr);
        wnd->setAttribute(Qt::WA_ShowWithoutActivating);
    }
    if (!show) {
        wnd->hide();
        return;
    }
    wnd->show();
    QPointer<CSpyToolWnd> guard = wnd;
    core::post::ToMainDelay(
        [guard] {
            if (guard && !ILxUISpyComponent::ms_config.picking)
                guard->StartOrStopEventFilter();
        },
        10);
}

CSpyToolWnd* currentSpyToolWnd() { return SpyWindowSlot().data(); }

namespace devtools {
namespace spy {

void ShowSpyToolWin() { initSpyToolWnd(true); }

QString DumpObjectStyleSheetDebugHtmlText(const QWidget* widget) {
    return LStyleSheetStyleHelper::objectStyleRulesHtmlString(widget);
}

}  // namespace spy
}  // namespace devtools
