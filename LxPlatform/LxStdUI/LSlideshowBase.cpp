#include <LxStdUI/LSlideshowBase.h>
#include <LxStdUI/LStdControlStyle_p.h>

#include <QMouseEvent>
#include <QPainter>
#include <QTimer>

#include <cmath>

namespace {
constexpr int kDot = 6;
constexpr int kDotGap = 8;
constexpr int kDotBottom = 10;
constexpr int kDragPixels = 30;

// Paints the indicator dots above the pages; mouse events pass through to the frame.
class DotsOverlay : public QWidget {
public:
    explicit DotsOverlay(LSlideshowBase* parent) : QWidget(parent), m_pFrame(parent) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        if (m_pFrame->visibleCount() < 2)
            return;
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        p.setPen(Qt::NoPen);
        for (int i = 0; i < m_pFrame->count(); ++i) {
            const QRect r = m_pFrame->indicatorRect(i);
            if (r.isEmpty())
                continue;
            p.setBrush(lx_std_ui_detail::Color(i == m_pFrame->currentIndex() ? "ct_button_primary" : "ck_white"));
            p.drawEllipse(r);
        }
    }

private:
    LSlideshowBase* m_pFrame;
};

double RatioValue(LSlideshowBase::WidthHeightRatio r) {
    switch (r) {
    case LSlideshowBase::Ratio_16_9: return 16.0 / 9.0;
    case LSlideshowBase::Ratio_4_3: return 4.0 / 3.0;
    case LSlideshowBase::Ratio_2_1: return 2.0;
    case LSlideshowBase::Ratio_3_1: return 3.0;
    case LSlideshowBase::Ratio_1_1: return 1.0;
    default: return 0;
    }
}
}  // namespace

LSlideshowBase::LSlideshowBase(QWidget* parent, WidthHeightRatio ratio) : QWidget(parent), m_enRatio(ratio) {
    m_pTimer = new QTimer(this);
    m_pTimer->setInterval(m_i32Interval);
    connect(m_pTimer, &QTimer::timeout, this, &LSlideshowBase::next);
    m_pTimer->start();
    m_pDots = new DotsOverlay(this);
    QSizePolicy sp(QSizePolicy::Expanding, QSizePolicy::Preferred);
    sp.setHeightForWidth(ratio != Ratio_Free);
    setSizePolicy(sp);
    lx_std_ui_detail::FollowTheme(this, [this] { update(); });
}

int LSlideshowBase::addWidget(QWidget* widget, bool bVisible) { return insertWidget(-1, widget, bVisible); }

int LSlideshowBase::insertWidget(int index, QWidget* widget, bool bVisible) {
    Prune();
    if (!widget || indexOfWidget(widget) >= 0 || index < -1 || index > count())
        return -1;
    if (index == -1)
        index = count();
    QWidget* current = this->widget(m_i32Current);
    widget->setParent(this);
    widget->setGeometry(rect());
    m_vecPages.insert(m_vecPages.begin() + index, Page{widget, bVisible});
    m_i32Current = current ? indexOfWidget(current) : -1;
    if (m_i32Current < 0 && bVisible)
        m_i32Current = index;
    ShowCurrent();
    return index;
}

bool LSlideshowBase::removeWidget(QWidget* widget) {
    const int index = indexOfWidget(widget);
    if (index < 0)
        return false;
    QWidget* current = this->widget(m_i32Current);
    m_vecPages.erase(m_vecPages.begin() + index);
    m_i32Current = current == widget ? -1 : indexOfWidget(current);
    if (m_i32Current < 0)
        Step(1);
    ShowCurrent();
    return true;
}

int LSlideshowBase::indexOfWidget(QWidget* widget) const {
    for (size_t i = 0; i < m_vecPages.size(); ++i) {
        if (widget && m_vecPages[i].pWidget == widget)
            return int(i);
    }
    return -1;
}

QWidget* LSlideshowBase::widget(int index) const {
    return (index >= 0 && index < count()) ? m_vecPages[size_t(index)].pWidget.data() : nullptr;
}

void LSlideshowBase::setContentWidgetVisible(int index, bool bVisible) {
    if (index < 0 || index >= count())
        return;
    m_vecPages[size_t(index)].bVisible = bVisible;
    if (!bVisible && index == m_i32Current) {
        m_i32Current = -1;
        Step(1);
    } else if (bVisible && m_i32Current < 0) {
        m_i32Current = index;
        Q_EMIT currentChanged(index);
    }
    ShowCurrent();
}

bool LSlideshowBase::isContentWidgetVisible(int index) const {
    return index >= 0 && index < count() && m_vecPages[size_t(index)].bVisible;
}

int LSlideshowBase::visibleCount() const {
    int n = 0;
    for (const Page& p : m_vecPages)
        n += (p.bVisible && p.pWidget) ? 1 : 0;
    return n;
}

void LSlideshowBase::setCurrentIndex(int index) {
    if (!isContentWidgetVisible(index) || index == m_i32Current)
        return;
    m_i32Current = index;
    ShowCurrent();
    Q_EMIT currentChanged(index);
}

void LSlideshowBase::next() { Step(1); }
void LSlideshowBase::previous() { Step(-1); }

void LSlideshowBase::Step(int i32Dir) {
    Prune();
    const int n = count();
    if (n == 0)
        return;
    const int from = m_i32Current < 0 ? (i32Dir > 0 ? n - 1 : 0) : m_i32Current;
    for (int k = 1; k <= n; ++k) {
        const int i = ((from + i32Dir * k) % n + n) % n;
        if (m_vecPages[size_t(i)].bVisible) {
            if (i != m_i32Current) {
                m_i32Current = i;
                ShowCurrent();
                Q_EMIT currentChanged(i);
            }
            return;
        }
    }
}

void LSlideshowBase::ShowCurrent() {
    for (size_t i = 0; i < m_vecPages.size(); ++i) {
        if (QWidget* w = m_vecPages[i].pWidget) {
            w->setGeometry(rect());
            w->setVisible(int(i) == m_i32Current && m_vecPages[i].bVisible);
        }
    }
    if (m_pDots) {
        m_pDots->setGeometry(rect());
        m_pDots->raise();
        m_pDots->update();
    }
    update();
}

void LSlideshowBase::Prune() {
    QWidget* current = widget(m_i32Current);
    const auto gone = std::remove_if(m_vecPages.begin(), m_vecPages.end(), [](const Page& p) { return !p.pWidget; });
    if (gone == m_vecPages.end())
        return;
    m_vecPages.erase(gone, m_vecPages.end());
    m_i32Current = indexOfWidget(current);
}

void LSlideshowBase::setAutoPlayInterval(int i32Ms) {
    m_i32Interval = qMax(0, i32Ms);
    if (m_i32Interval == 0) {
        m_pTimer->stop();
    } else {
        m_pTimer->setInterval(m_i32Interval);
        if (!underMouse())
            m_pTimer->start();
    }
}

int LSlideshowBase::heightForWidth(int w) const {
    const double r = RatioValue(m_enRatio);
    return r > 0 ? int(std::lround(w / r)) : -1;
}

QSize LSlideshowBase::sizeHint() const {
    const int w = 320;
    const int h = hasHeightForWidth() ? heightForWidth(w) : 180;
    return QSize(w, h);
}

QRect LSlideshowBase::indicatorRect(int index) const {
    if (!isContentWidgetVisible(index))
        return QRect();
    int slot = 0;
    for (int i = 0; i < index; ++i)
        slot += m_vecPages[size_t(i)].bVisible ? 1 : 0;
    const int total = visibleCount();
    const int span = total * kDot + (total - 1) * kDotGap;
    const int x0 = (width() - span) / 2;
    return QRect(x0 + slot * (kDot + kDotGap), height() - kDotBottom - kDot, kDot, kDot);
}

void LSlideshowBase::paintEvent(QPaintEvent*) {
    // The frame's own background shows where no page is visible yet.
    QPainter p(this);
    p.fillRect(rect(), lx_std_ui_detail::Color("ct_bg_secondary"));
}

void LSlideshowBase::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    ShowCurrent();
}

void LSlideshowBase::enterEvent(QEvent* e) {
    m_pTimer->stop();
    QWidget::enterEvent(e);
}

void LSlideshowBase::leaveEvent(QEvent* e) {
    if (m_i32Interval > 0)
        m_pTimer->start();
    QWidget::leaveEvent(e);
}

void LSlideshowBase::mousePressEvent(QMouseEvent* e) {
    m_bPressed = e->button() == Qt::LeftButton;
    m_ptPress = e->pos();
    e->accept();
}

void LSlideshowBase::mouseReleaseEvent(QMouseEvent* e) {
    if (!m_bPressed || e->button() != Qt::LeftButton)
        return;
    m_bPressed = false;
    const int dx = e->pos().x() - m_ptPress.x();
    if (dx > kDragPixels) {
        previous();
        return;
    }
    if (dx < -kDragPixels) {
        next();
        return;
    }
    for (int i = 0; i < count(); ++i) {
        if (indicatorRect(i).adjusted(-4, -4, 4, 4).contains(e->pos())) {
            setCurrentIndex(i);
            return;
        }
    }
}
