#pragma once
// Frames the hovered item (blue, dashed) and the selected item (red) of the inspector, phantoms
// included. Each frame is a child of the item's window, raised above its siblings and transparent
// to the mouse; the hit test skips it by class, so it never takes input or gets picked.
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

private:
    LxCurrentWidgetHighLightView();
    static void Place(QPointer<LxWidgetRectView>& frame, bool hover, const PseudoWidget& pw);
    static LxWidgetRectView* MakeFrame(bool hover);
    QPointer<LxWidgetRectView> m_pHover;
    QPointer<LxWidgetRectView> m_pSelected;
};
