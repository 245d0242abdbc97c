#include <LxStdUI/LFlowLayout.h>

#include <QWidget>

#include <algorithm>

LFlowLayout::LFlowLayout(QWidget* parent, int margin, int hSpacing, int vSpacing)
    : QLayout(parent), m_i32HSpace(hSpacing), m_i32VSpace(vSpacing) {
    if (margin >= 0)
        setContentsMargins(margin, margin, margin, margin);
}

LFlowLayout::~LFlowLayout() {
    while (QLayoutItem* item = takeAt(0))
        delete item;
}

void LFlowLayout::addItem(QLayoutItem* item) { m_items.append(item); }

QLayoutItem* LFlowLayout::takeAt(int index) {
    if (index < 0 || index >= m_items.size())
        return nullptr;
    QLayoutItem* item = m_items.takeAt(index);
    invalidate();
    return item;
}

int LFlowLayout::horizontalSpacing() const {
    return m_i32HSpace >= 0 ? m_i32HSpace : SmartSpacing(QStyle::PM_LayoutHorizontalSpacing);
}

int LFlowLayout::verticalSpacing() const {
    return m_i32VSpace >= 0 ? m_i32VSpace : SmartSpacing(QStyle::PM_LayoutVerticalSpacing);
}

QSize LFlowLayout::minimumSize() const {
    QSize size;
    for (const QLayoutItem* item : m_items)
        size = size.expandedTo(item->minimumSize());
    const QMargins m = contentsMargins();
    return size + QSize(m.left() + m.right(), m.top() + m.bottom());
}

void LFlowLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    DoLayout(rect, false);
}

int LFlowLayout::DoLayout(const QRect& rect, bool testOnly) const {
    const QMargins m = contentsMargins();
    const QRect area = rect.adjusted(m.left(), m.top(), -m.right(), -m.bottom());
    int x = area.x();
    int y = area.y();
    int lineHeight = 0;
    for (QLayoutItem* item : m_items) {
        const QWidget* w = item->widget();
        if (w && w->isHidden())
            continue;
        int spaceX = horizontalSpacing();
        if (spaceX < 0 && w)
            spaceX = w->style()->layoutSpacing(QSizePolicy::PushButton, QSizePolicy::PushButton, Qt::Horizontal);
        int spaceY = verticalSpacing();
        if (spaceY < 0 && w)
            spaceY = w->style()->layoutSpacing(QSizePolicy::PushButton, QSizePolicy::PushButton, Qt::Vertical);
        spaceX = std::max(spaceX, 0);
        spaceY = std::max(spaceY, 0);
        const QSize hint = item->sizeHint();
        int nextX = x + hint.width() + spaceX;
        if (nextX - spaceX > area.right() + 1 && lineHeight > 0) {
            x = area.x();
            y = y + lineHeight + spaceY;
            nextX = x + hint.width() + spaceX;
            lineHeight = 0;
        }
        if (!testOnly)
            item->setGeometry(QRect(QPoint(x, y), hint));
        x = nextX;
        lineHeight = std::max(lineHeight, hint.height());
    }
    return y + lineHeight - rect.y() + m.bottom();
}

int LFlowLayout::SmartSpacing(QStyle::PixelMetric pm) const {
    QObject* parent = this->parent();
    if (!parent)
        return -1;
    if (parent->isWidgetType()) {
        auto* pw = static_cast<QWidget*>(parent);
        return pw->style()->pixelMetric(pm, nullptr, pw);
    }
    return static_cast<QLayout*>(parent)->spacing();
}
