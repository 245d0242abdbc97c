#pragma once
// The inspector's "debug" tab: why a widget looks the way it does. For the selected widget (a
// phantom's container) it shows its layout (class, spacing, margins) and the place of the widget in
// its parent's layout, its size hints, size limits and size policy, the visibility chain from the
// widget up to its window (isVisible, isHidden, WA_WState_Hidden, explicitly hidden), and, when the
// widget cannot be seen, plain sentences that say why. It refreshes on every selection and on its
// refresh button.
//
// Choices made here:
// - "Cannot be seen" is wider than !isVisible(): a widget Qt calls visible may still have zero size,
//   lie outside what its ancestors show, sit under an opaque sibling, be fully transparent through a
//   QGraphicsOpacityEffect or be in a minimized window. Every such cause found is listed, the most
//   basic first (hidden itself, a hidden ancestor, a minimized window, zero size, transparency,
//   clipping, covering).
// - A sibling covers the widget when it is a later (so higher) visible sibling, of the widget or of
//   one of its ancestors, whose rectangle contains the part of the widget left after clipping. A
//   sibling that paints no background still counts: the sentence names it, which is what one needs
//   to go and look.

#include <LxUIKit/DevTools/Spy/LxUISpyComponent.h>

#include <QPointer>
#include <QPushButton>
#include <QStringList>
#include <QTextBrowser>
#include <QWidget>

class LxUIDebugView : public QWidget, public ILxUISpyComponent {
    Q_OBJECT
public:
    explicit LxUIDebugView(QWidget* parent);

    // Why the widget cannot be seen, one sentence per cause; empty when it can be seen.
    static QStringList NotVisibleReasons(const QWidget* w);
    // The report shown in the tab, as HTML.
    static QString ReportHtml(const PseudoWidget& pw);

    void Refresh();
    QTextBrowser* browser() const { return m_pText; }
    QPushButton* refreshButton() const { return m_pRefresh; }

protected:
    void OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool) override;

private:
    QPointer<QTextBrowser> m_pText;
    QPointer<QPushButton> m_pRefresh;
    PseudoWidget m_current;
};
