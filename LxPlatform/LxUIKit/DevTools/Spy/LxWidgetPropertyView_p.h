#pragma once
// Properties and style sheet of the selected item. A real object lists every Qt property (static
// ones from its meta-object, then dynamic ones); writable ones are edited in place, the text read
// by the debug variable parser, and a refusal is shown under the table while the value is put
// back. A phantom lists its record and its extra facts, read-only. Below the table: the style-sheet
// rules that apply to the selected widget (a phantom's container).
#include <LxUIKit/DevTools/Spy/LxUISpyComponent.h>

#include <QLabel>
#include <QPointer>
#include <QTableWidget>
#include <QTextBrowser>
#include <QWidget>

class LxWidgetPropertyView : public QWidget, public ILxUISpyComponent {
    Q_OBJECT
public:
    explicit LxWidgetPropertyView(QWidget* parent);
    void Fill(const PseudoWidget& pw);
    QTableWidget* table() const { return m_pTable; }
    QLabel* statusLabel() const { return m_pStatus; }
    QTextBrowser* styleSheetBrowser() const { return m_pStyle; }

protected:
    void OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool) override { Fill(pw); }

private:
    void AddRow(const QString& name, const QString& value, bool editable);
    void OnItemChanged(QTableWidgetItem* item);

    QPointer<QLabel> m_pTitle;
    QPointer<QTableWidget> m_pTable;
    QPointer<QLabel> m_pStatus;
    QPointer<QTextBrowser> m_pStyle;
    PseudoWidget m_current;
};
