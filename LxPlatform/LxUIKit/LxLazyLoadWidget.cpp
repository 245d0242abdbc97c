#include <LxUIKit/LxLazyLoadWidget.h>

#include <LxUIKit/LxUIKitLog_p.h>

#include <QVBoxLayout>

namespace core {
namespace pattern {

CLazyLoadWidget::CLazyLoadWidget(QWidget* parent, CSafeFunction<QWidget*()> creator)
    : QWidget(parent), m_fnCreator(std::move(creator)) {}

void CLazyLoadWidget::showEvent(QShowEvent* event) {
    if (m_enMode == CreateOnShow && !m_bCreated)
        EnsureCreateContent();
    QWidget::showEvent(event);
}

void CLazyLoadWidget::paintEvent(QPaintEvent* event) {
    if (m_enMode == CreateOnPaint && !m_bCreated)
        EnsureCreateContent();
    QWidget::paintEvent(event);
}

// The content widget fills this container and its size limits become the container's own.
void CLazyLoadWidget::EnsureCreateContent() {
    if (m_bCreated)
        return;
    m_bCreated = true;  // first, so a re-entrant show or paint does not create twice
    if (m_fnCreator.IsCallable()) {
        QWidget* content = m_fnCreator();
        if (content) {
            auto* layout = new QVBoxLayout(this);
            layout->setMargin(0);
            layout->setContentsMargins(0, 0, 0, 0);
            layout->setSizeConstraint(QLayout::SetMinAndMaxSize);
            layout->addWidget(content);
        }
        return;
    }
    // The creator's owner is gone, or no creator was given: a programming error on the
    // caller's side (the container outlived whoever meant to fill it). The widget stays
    // empty.
    LXUIKIT_ASSERT_AT(0, 44);
}

}  // namespace pattern
}  // namespace core
