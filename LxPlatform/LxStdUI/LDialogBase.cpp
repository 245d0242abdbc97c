#include <LxStdUI/LDialogBase.h>
#include <LxStdUI/LStdControlStyle_p.h>

#include <QGuiApplication>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QVBoxLayout>

LDialogBase::LDialogBase(QWidget* parent, Qt::WindowFlags extraFlags)
    : QDialog(parent, Qt::FramelessWindowHint | Qt::Dialog | extraFlags) {
    setAttribute(Qt::WA_TranslucentBackground);
    m_pLayout = new QVBoxLayout(this);
    m_pLayout->setContentsMargins(12, 12, 12, 12);
    lx_std_ui_detail::FollowTheme(this, [this] { update(); });
}

void LDialogBase::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(lx_std_ui_detail::Color("ct_border"), 1));
    p.setBrush(lx_std_ui_detail::Color("ct_bg_primary"));
    p.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);
}

LFlyouts::LFlyouts(QWidget* parent) : LDialogBase(parent, Qt::Tool) {}

void LFlyouts::setAnchor(QWidget* anchor, Qt::Edge edge, int i32Gap) {
    m_pAnchor = anchor;
    m_enEdge = edge;
    m_i32Gap = i32Gap;
}

QPoint LFlyouts::placement(const QRect& a, const QSize& s, Qt::Edge edge, int gap, const QRect& screen) {
    QPoint pt;
    switch (edge) {
    case Qt::TopEdge: pt = QPoint(a.left(), a.top() - gap - s.height()); break;
    case Qt::LeftEdge: pt = QPoint(a.left() - gap - s.width(), a.top()); break;
    case Qt::RightEdge: pt = QPoint(a.right() + 1 + gap, a.top()); break;
    case Qt::BottomEdge: pt = QPoint(a.left(), a.bottom() + 1 + gap); break;
    }
    if (!screen.isEmpty()) {
        pt.setX(qBound(screen.left(), pt.x(), qMax(screen.left(), screen.right() + 1 - s.width())));
        pt.setY(qBound(screen.top(), pt.y(), qMax(screen.top(), screen.bottom() + 1 - s.height())));
    }
    return pt;
}

void LFlyouts::showAtAnchor() {
    if (m_pAnchor) {
        const QRect a(m_pAnchor->mapToGlobal(QPoint(0, 0)), m_pAnchor->size());
        QScreen* screen = QGuiApplication::screenAt(a.center());
        const QRect avail = screen ? screen->availableGeometry() : QRect();
        adjustSize();
        move(placement(a, size(), m_enEdge, m_i32Gap, avail));
    }
    show();
}
