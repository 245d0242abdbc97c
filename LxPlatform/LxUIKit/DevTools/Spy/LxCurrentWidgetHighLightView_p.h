#pragma once
// Frames the hovered item (blue, dashed) and the selected item (red) of the inspector, phantoms
// included. Each frame is a child of the item's window, raised above its siblings and transparent
// to the mouse; the hit test skips it by class, so it never takes input or gets picked.
// A frame follows its item's widget (the container of a phantom): it hides with it (a page switched
// away, a closed panel) and comes back, placed anew, when the widget shows, moves or resizes. A move
// of an ancestor alone is not followed.
#include <LxUIKit/DevTools/Spy/LxUISpyComponent.h>

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QWidget>

class LxWidgetRectView : public QWidget {
    Q_OBJECT
public:
    LxWidgetRectView(const QColor& color, Qt::PenStyle style);

protected:
    void paintEvent(QPaintEvent*) override;

private:
    QColor m_color;
    Qt::PenStyle m_penStyle;
};

class LxCurrentWidgetHighLightView : public QObject, public ILxUISpyComponent {
    Q_OBJECT
public:
    static LxCurrentWidgetHighLightView* Init();  // creates the overlay once
    static void Release();
    static LxCurrentWidgetHighLightView* Instance();
    LxWidgetRectView* hoverFrame() const { return m_pHover; }
    LxWidgetRectView* selectionFrame() const { return m_pSelected; }
    ~LxCurrentWidgetHighLightView() override;

protected:
    void OnHoveredPseudoWidgetChanged(const PseudoWidget& pw, HoverSource) override;
    void OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool) override;
    void OnConfigChanged(const Config& previous, const Config& current) override;
    bool eventFilter(QObject* obj, QEvent* ev) override;

private:
    LxCurrentWidgetHighLightView();
    static void Place(QPointer<LxWidgetRectView>& frame, bool hover, const PseudoWidget& pw);
    static LxWidgetRectView* MakeFrame(bool hover);
    // Watches the widget behind pw for the frame's sake, leaving the one watched before.
    void Follow(QPointer<QWidget>& watched, const PseudoWidget& pw);

    QPointer<LxWidgetRectView> m_pHover;
    QPointer<LxWidgetRectView> m_pSelected;
    PseudoWidget m_hovered;
    PseudoWidget m_selected;
    QPointer<QWidget> m_pHoverTarget;
    QPointer<QWidget> m_pSelectedTarget;
};
