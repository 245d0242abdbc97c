#pragma once
// The inspector's widget tree: every visible top-level widget of the application (the inspector's
// own windows left out) with its child widgets. It follows the hovered item (shaded row) and the
// selected one (current row, expanded to), shows a picked phantom as a child row of its container,
// and selects what the user clicks. The search box filters rows by class or object name (case
// insensitive), keeping the ancestors of every match; Enter selects the first match.
#include <LxUIKit/DevTools/Spy/LxUISpyComponent.h>

#include <QHash>
#include <QLineEdit>
#include <QPointer>
#include <QTreeWidget>
#include <QWidget>

class LxWidgetTreeInfoView : public QWidget, public ILxUISpyComponent {
    Q_OBJECT
public:
    explicit LxWidgetTreeInfoView(QWidget* parent);
    void Rebuild();
    void ApplySearch(const QString& text);
    QTreeWidget* tree() const { return m_pTree; }
    QLineEdit* searchEdit() const { return m_pSearch; }
    QTreeWidgetItem* itemOf(const QWidget* w) const { return m_items.value(w); }

protected:
    void OnHoveredPseudoWidgetChanged(const PseudoWidget& pw, HoverSource source) override;
    void OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool clicked) override;

private:
    void AddWidget(QWidget* w, QTreeWidgetItem* parentItem);
    QTreeWidgetItem* Ensure(const QWidget* w);
    void OnItemClicked(QTreeWidgetItem* item);

    QPointer<QLineEdit> m_pSearch;
    QPointer<QTreeWidget> m_pTree;
    QHash<const QWidget*, QTreeWidgetItem*> m_items;
    QHash<const QTreeWidgetItem*, QPointer<QWidget>> m_guards;
    QTreeWidgetItem* m_pHoverItem = nullptr;
    QTreeWidgetItem* m_pPhantomItem = nullptr;
    PseudoWidget m_phantom;
};
