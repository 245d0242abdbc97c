#include <LxUIKit/DevTools/Spy/LxCurrentWidgetHighLightView_p.h>

#include <QEvent>
#include <QPainter>

LxWidgetRectView::LxWidgetRectView(const QColor& color, Qt::PenStyle style)
    : QWidget(nullptr), m_color(color), m_penStyle(style) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
}

void LxWidgetRectView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    QPen pen(m_color, 2, m_penStyle);
    p.setPen(pen);
    p.drawRect(rect().adjusted(1, 1, -1, -1));
}

namespace {
// Made on first use, not when the library loads.
QPointer<LxCurrentWidgetHighLightView>& Highlight() {
    static QPointer<LxCurrentWidgetHighLightView> s_highlight;
    return s_highlight;
}
}  // namespace

LxWidgetRectView* LxCurrentWidgetHighLightView::MakeFrame(bool hover) {
    auto* frame = hover ? new LxWidgetRectView(QColor(0x1E, 0x80, 0xFF), Qt::DashLine)
                        : new LxWidgetRectView(QColor(0xF0, 0x3C, 0x3C), Qt::SolidLine);
    frame->setObjectName(hover ? QStringLiteral("SpyHoverFrame") : QStringLiteral("SpySelectionFrame"));
    return frame;
}

LxCurrentWidgetHighLightView::LxCurrentWidgetHighLightView() {
    m_selected = SelectedPseudoWidget();
    Follow(m_pSelectedTarget, m_selected);
    Place(m_pSelected, false, m_selected);
}

LxCurrentWidgetHighLightView::~LxCurrentWidgetHighLightView() {
    delete m_pHover.data();
    delete m_pSelected.data();
}

LxCurrentWidgetHighLightView* LxCurrentWidgetHighLightView::Init() {
    if (!Highlight())
        Highlight() = new LxCurrentWidgetHighLightView();
    return Highlight();
}

void LxCurrentWidgetHighLightView::Release() { delete Highlight().data(); }

LxCurrentWidgetHighLightView* LxCurrentWidgetHighLightView::Instance() { return Highlight(); }

void LxCurrentWidgetHighLightView::Place(QPointer<LxWidgetRectView>& frame, bool hover, const PseudoWidget& pw) {
    QWidget* window = pw.isValid() ? pw.window() : nullptr;
    if (!window || !pw.isVisible() || (!pw.isWidget() && !pw.isPhantom())) {
        if (frame)
            frame->hide();
        return;
    }
    // A frame dies with the window it was placed in; make a new one then.
    if (!frame)
        frame = MakeFrame(hover);
    if (frame->parentWidget() != window)
        frame->setParent(window);
    const QRect r(pw.mapTo(window, QPoint(0, 0)), pw.size());
    frame->setGeometry(r);
    frame->raise();
    frame->show();
}

void LxCurrentWidgetHighLightView::Follow(QPointer<QWidget>& watched, const PseudoWidget& pw) {
    QWidget* target = pw.isValid() ? pw.widgetOrPhantomContainer() : nullptr;
    if (watched == target)
        return;
    // The other frame may watch the same widget: keep the filter for it.
    QWidget* other = (&watched == &m_pHoverTarget) ? m_pSelectedTarget.data() : m_pHoverTarget.data();
    if (watched && watched != other)
        watched->removeEventFilter(this);
    watched = target;
    if (target)
        target->installEventFilter(this);
}

bool LxCurrentWidgetHighLightView::eventFilter(QObject* obj, QEvent* ev) {
    const QEvent::Type type = ev->type();
    if (type != QEvent::Hide && type != QEvent::Show && type != QEvent::Move && type != QEvent::Resize)
        return QObject::eventFilter(obj, ev);
    const auto follow = [&](QPointer<LxWidgetRectView>& frame, bool hover, const PseudoWidget& pw,
                            const QPointer<QWidget>& target) {
        if (obj != target.data())
            return;
        if (type == QEvent::Hide) {
            if (frame)
                frame->hide();
        } else if (!hover || ms_config.picking) {
            Place(frame, hover, pw);
        }
    };
    follow(m_pSelected, false, m_selected, m_pSelectedTarget);
    follow(m_pHover, true, m_hovered, m_pHoverTarget);
    return QObject::eventFilter(obj, ev);
}

void LxCurrentWidgetHighLightView::OnHoveredPseudoWidgetChanged(const PseudoWidget& pw, HoverSource) {
    m_hovered = pw;
    Follow(m_pHoverTarget, pw);
    Place(m_pHover, true, pw);
}

void LxCurrentWidgetHighLightView::OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool) {
    m_selected = pw;
    Follow(m_pSelectedTarget, pw);
    Place(m_pSelected, false, pw);
}

void LxCurrentWidgetHighLightView::OnConfigChanged(const Config&, const Config& current) {
    if (!current.picking && m_pHover)
        m_pHover->hide();
}
