#pragma once
// Geometry of the selected item: its rectangle in its parent (a phantom's in its container), in its
// window and on the screen, its margins, size hints, size limits and size policy.
#include <LxUIKit/DevTools/Spy/LxUISpyComponent.h>

#include <QPointer>
#include <QTextBrowser>
#include <QWidget>

class LxWidgetGeometryView : public QWidget, public ILxUISpyComponent {
    Q_OBJECT
public:
    explicit LxWidgetGeometryView(QWidget* parent);
    // "name: value" lines for the item, in display order.
    static QStringList GeometryLines(const PseudoWidget& pw);

protected:
    void OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool) override;

private:
    QPointer<QTextBrowser> m_pText;
};
