#include <LxStdUI/LFrameLessWnd.h>

#include <LxStdUI/FontToken.h>
#include <LxStdUI/LIconButton.h>
#include <LxStdUI/LIconResource.h>
#include <LxStdUI/LxStdUILog_p.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <QWindow>

// The title bar: title, the caller's widget, the window buttons; drags the window.
class LFrameLessTitleBar : public QWidget {
public:
    explicit LFrameLessTitleBar(LFrameLessWnd* wnd) : QWidget(wnd), m_pWnd(wnd) {
        setObjectName(QStringLiteral("LFrameLessTitleBar"));
        setFixedHeight(40);
        m_pLayout = new QHBoxLayout(this);
        m_pLayout->setContentsMargins(12, 0, 4, 0);
        m_pLayout->setSpacing(4);
        m_pTitle = new QLabel(this);
        m_pTitle->setObjectName(QStringLiteral("LFrameLessTitle"));
        m_pTitle->setFont(LFontTokenLoader::font(QStringLiteral("title3")));
        m_pTitle->setVisible(false);
        m_pLayout->addWidget(m_pTitle);
        m_pSlot = new QHBoxLayout;
        m_pSlot->setContentsMargins(0, 0, 0, 0);
        m_pLayout->addLayout(m_pSlot, 1);
        auto makeButton = [this](const char* icon, const char* name) {
            auto* b = new LIconButton(QString::fromLatin1(icon), this);
            b->setObjectName(QString::fromLatin1(name));
            b->setFixedSize(32, 32);
            b->setIconSize(QSize(18, 18));
            b->setHoverBackgroundEnabled(true);
            m_pLayout->addWidget(b);
            return b;
        };
        m_pMin = makeButton(LResource::icon_minimize_normal, "LFrameLessMinimize");
        m_pMax = makeButton(LResource::icon_maximize_normal, "LFrameLessMaximize");
        m_pClose = makeButton(LResource::icon_close_normal, "LFrameLessClose");
        LXSTDUI_SAFE_CONNECT(m_pMin, &QAbstractButton::clicked, wnd, &QWidget::showMinimized);
        LXSTDUI_SAFE_CONNECT(m_pMax, &QAbstractButton::clicked, wnd, &LFrameLessWnd::toggleMaximized);
        LXSTDUI_SAFE_CONNECT(m_pClose, &QAbstractButton::clicked, wnd, &QWidget::close);
        ApplyTheme();
    }

    void ApplyTheme() {
        QPalette pal = m_pTitle->palette();
        const QColor text = lx_ui_res::Provider::instance()->color(QStringLiteral("ct_text_h1"));
        if (text.isValid())
            pal.setColor(QPalette::WindowText, text);
        m_pTitle->setPalette(pal);
    }
    void SyncMaximized(bool bMaximized) {
        m_pMax->setIconPath(
            QString::fromLatin1(bMaximized ? LResource::icon_restore_normal : LResource::icon_maximize_normal));
    }

    QHBoxLayout* m_pLayout = nullptr;
    QHBoxLayout* m_pSlot = nullptr;
    QLabel* m_pTitle = nullptr;
    LIconButton* m_pMin = nullptr;
    LIconButton* m_pMax = nullptr;
    LIconButton* m_pClose = nullptr;

protected:
    void mousePressEvent(QMouseEvent* event) override {
        if (event->button() != Qt::LeftButton || m_pWnd->isMaximized())
            return QWidget::mousePressEvent(event);
        event->accept();
        QWindow* handle = m_pWnd->windowHandle();
        if (handle && handle->startSystemMove())
            return;  // the window system moves it from here on
        m_bDragging = true;
        m_dragOffset = event->globalPos() - m_pWnd->frameGeometry().topLeft();
    }
    void mouseMoveEvent(QMouseEvent* event) override {
        if (!m_bDragging || !(event->buttons() & Qt::LeftButton))
            return QWidget::mouseMoveEvent(event);
        m_pWnd->move(event->globalPos() - m_dragOffset);
        event->accept();
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        m_bDragging = false;
        QWidget::mouseReleaseEvent(event);
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton && m_pMax->isVisible()) {
            m_bDragging = false;
            m_pWnd->toggleMaximized();
            event->accept();
        }
    }

private:
    LFrameLessWnd* m_pWnd;
    bool m_bDragging = false;
    QPoint m_dragOffset;
};

LFrameLessWnd::LFrameLessWnd(QWidget* parent) : QWidget(parent, Qt::Window | Qt::FramelessWindowHint) {
    setObjectName(QStringLiteral("LFrameLessWnd"));
    setMouseTracking(true);
    setAttribute(Qt::WA_Hover);
    m_pLayout = new QVBoxLayout(this);
    m_pLayout->setSpacing(0);
    m_pTitleBar = new LFrameLessTitleBar(this);
    m_pLayout->addWidget(m_pTitleBar);
    m_pLayout->addStretch(1);
    UpdateMargins();
    LXSTDUI_SAFE_CONNECT(lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this, [this] {
        if (m_pTitleBar)
            m_pTitleBar->ApplyTheme();
        update();
    });
}

LFrameLessWnd::~LFrameLessWnd() = default;

void LFrameLessWnd::setTitle(const QString& title) {
    setWindowTitle(title);
    m_pTitleBar->m_pTitle->setText(title);
    m_pTitleBar->m_pTitle->setVisible(!title.isEmpty());
}

QString LFrameLessWnd::title() const { return windowTitle(); }

void LFrameLessWnd::setTitleBarWidget(QWidget* widget) {
    if (m_pTitleBarWidget == widget)
        return;
    if (m_pTitleBarWidget)
        m_pTitleBarWidget->deleteLater();
    m_pTitleBarWidget = widget;
    if (widget)
        m_pTitleBar->m_pSlot->addWidget(widget);
}

void LFrameLessWnd::setContentWidget(QWidget* widget) {
    if (m_pContent == widget)
        return;
    if (m_pContent)
        m_pContent->deleteLater();
    // The stretch holds the place while there is no content.
    if (m_pLayout->count() > 1 && m_pLayout->itemAt(1)->spacerItem())
        delete m_pLayout->takeAt(1);
    m_pContent = widget;
    if (widget)
        m_pLayout->addWidget(widget, 1);
    else
        m_pLayout->addStretch(1);
}

QWidget* LFrameLessWnd::titleBar() const { return m_pTitleBar; }

void LFrameLessWnd::setTitleBarHeight(int i32Height) { m_pTitleBar->setFixedHeight(qMax(0, i32Height)); }

int LFrameLessWnd::titleBarHeight() const { return m_pTitleBar->height(); }

void LFrameLessWnd::setResizable(bool bResizable) {
    m_bResizable = bResizable;
    if (!bResizable)
        unsetCursor();
}

void LFrameLessWnd::setResizeBorderWidth(int i32Width) {
    m_i32Border = qMax(1, i32Width);
    UpdateMargins();
}

void LFrameLessWnd::setMinimizeButtonVisible(bool bVisible) { m_pTitleBar->m_pMin->setVisible(bVisible); }

void LFrameLessWnd::setMaximizeButtonVisible(bool bVisible) { m_pTitleBar->m_pMax->setVisible(bVisible); }

void LFrameLessWnd::UpdateMargins() {
    const int m = isMaximized() ? 0 : m_i32Border;
    m_pLayout->setContentsMargins(m, m, m, m);
}

QSize LFrameLessWnd::chromeSize() const {
    const QMargins m = m_pLayout->contentsMargins();
    return QSize(m.left() + m.right(), m.top() + m.bottom() + m_pTitleBar->height());
}

Qt::Edges LFrameLessWnd::edgesAt(const QPoint& pos) const {
    Qt::Edges edges;
    if (!m_bResizable || isMaximized() || !rect().contains(pos))
        return edges;
    // Corners are easier to grab with a slightly wider strip.
    const int grip = m_i32Border;
    if (pos.x() < grip)
        edges |= Qt::LeftEdge;
    else if (pos.x() >= width() - grip)
        edges |= Qt::RightEdge;
    if (pos.y() < grip)
        edges |= Qt::TopEdge;
    else if (pos.y() >= height() - grip)
        edges |= Qt::BottomEdge;
    return edges;
}

void LFrameLessWnd::toggleMaximized() {
    if (isMaximized())
        showNormal();
    else
        showMaximized();
}

namespace {
Qt::CursorShape CursorFor(Qt::Edges edges) {
    const bool l = edges & Qt::LeftEdge, r = edges & Qt::RightEdge, t = edges & Qt::TopEdge, b = edges & Qt::BottomEdge;
    if ((l && t) || (r && b))
        return Qt::SizeFDiagCursor;
    if ((r && t) || (l && b))
        return Qt::SizeBDiagCursor;
    if (l || r)
        return Qt::SizeHorCursor;
    if (t || b)
        return Qt::SizeVerCursor;
    return Qt::ArrowCursor;
}
}  // namespace

void LFrameLessWnd::mousePressEvent(QMouseEvent* event) {
    const Qt::Edges edges = event->button() == Qt::LeftButton ? edgesAt(event->pos()) : Qt::Edges();
    if (!edges)
        return QWidget::mousePressEvent(event);
    event->accept();
    QWindow* handle = windowHandle();
    if (handle && handle->startSystemResize(edges))
        return;
    m_resizeEdges = edges;
    m_pressGlobal = event->globalPos();
    m_pressGeometry = geometry();
}

void LFrameLessWnd::mouseMoveEvent(QMouseEvent* event) {
    if (!m_resizeEdges) {
        const Qt::Edges edges = edgesAt(event->pos());
        if (edges)
            setCursor(CursorFor(edges));
        else
            unsetCursor();
        return QWidget::mouseMoveEvent(event);
    }
    const QPoint d = event->globalPos() - m_pressGlobal;
    QRect g = m_pressGeometry;
    const QSize minSize = minimumSize().expandedTo(minimumSizeHint()).expandedTo(QSize(1, 1));
    if (m_resizeEdges & Qt::LeftEdge)
        g.setLeft(qMin(g.left() + d.x(), g.right() + 1 - minSize.width()));
    if (m_resizeEdges & Qt::RightEdge)
        g.setRight(qMax(g.right() + d.x(), g.left() + minSize.width() - 1));
    if (m_resizeEdges & Qt::TopEdge)
        g.setTop(qMin(g.top() + d.y(), g.bottom() + 1 - minSize.height()));
    if (m_resizeEdges & Qt::BottomEdge)
        g.setBottom(qMax(g.bottom() + d.y(), g.top() + minSize.height() - 1));
    setGeometry(g);
    event->accept();
}

void LFrameLessWnd::mouseReleaseEvent(QMouseEvent* event) {
    m_resizeEdges = Qt::Edges();
    QWidget::mouseReleaseEvent(event);
}

void LFrameLessWnd::leaveEvent(QEvent* event) {
    if (!m_resizeEdges)
        unsetCursor();
    QWidget::leaveEvent(event);
}

void LFrameLessWnd::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QColor bg = lx_ui_res::Provider::instance()->color(QStringLiteral("ct_bg_primary"));
    if (!bg.isValid())
        bg = palette().color(QPalette::Window);
    painter.fillRect(rect(), bg);
    if (isMaximized())
        return;
    QColor border = lx_ui_res::Provider::instance()->color(QStringLiteral("ct_border"));
    if (!border.isValid())
        border = QColor(0, 0, 0, 60);
    painter.setPen(border);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void LFrameLessWnd::changeEvent(QEvent* event) {
    if (event->type() == QEvent::WindowStateChange) {
        UpdateMargins();
        if (m_pTitleBar)
            m_pTitleBar->SyncMaximized(isMaximized());
        update();
    }
    QWidget::changeEvent(event);
}
