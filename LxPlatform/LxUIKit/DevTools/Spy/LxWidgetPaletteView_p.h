#pragma once
// The palette of the selected widget (a phantom's container): one row per colour role, with the
// active, inactive and disabled colours as swatches and their names.
#include <LxUIKit/DevTools/Spy/LxUISpyComponent.h>

#include <QPointer>
#include <QTableWidget>
#include <QWidget>

class LxWidgetPaletteView : public QWidget, public ILxUISpyComponent {
    Q_OBJECT
public:
    explicit LxWidgetPaletteView(QWidget* parent);
    QTableWidget* table() const { return m_pTable; }

protected:
    void OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool) override;

private:
    QPointer<QTableWidget> m_pTable;
};
