#pragma once
// What the widget inspector finds under a point: a real widget, a layout, any other object, or a
// "phantom", an item that users see as separate but that is drawn by one widget (a cell or row of a
// list, table or tree view, a cell of a table header, a tab of a tab bar, a menu action).
//
// Choices made here:
// - A layout is kept in both guarded pointers: the object pointer (so object() works for every real
//   kind) and the layout pointer, which alone tells a layout apart.
// - Two phantoms are equal when they have the same container, object, rectangle, text and class
//   label; their property maps are not compared (they only describe the same item twice).
// - Views are searched through their public API (indexAt, visualRect, header sections), so a hit test
//   costs the same for ten rows as for a million.
// - List, tree and table cells carry the properties "row" and "column"; tree cells add "level"
//   (0 for top-level items); header cells carry "section" and "orientation" ("horizontal" or
//   "vertical"); menu actions carry "index", "checkable", "checked", "enabled" and "shortcut".
// - The hit-test free functions live in devtools::spy.

#include <LxUIKit/LxUIKitExport.h>

#include <QMap>
#include <QPointer>
#include <QRect>
#include <QSharedPointer>
#include <QString>
#include <QVariant>

#include <memory>

class QLayout;
class QObject;
class QTabBar;
class QTableView;
class QWidget;
class QWindow;

using PseudoWidgetProperties = QSharedPointer<const QMap<QString, QVariant>>;

class LXUIKIT_EXPORT PseudoWidget {
public:
    struct PhantomInfo {
        QPointer<QObject> object;     // the object behind the item (a menu's QAction), may be null
        QPointer<QWidget> container;  // the widget that draws the item
        QRect rect;                   // in the container's coordinates
        QString text;
        QString className;
        PseudoWidgetProperties properties;
    };

    PseudoWidget() = default;
    PseudoWidget(QWidget* widget);  // NOLINT(google-explicit-constructor): a widget is a pseudo widget
    PseudoWidget(QLayout* layout);  // NOLINT(google-explicit-constructor)
    PseudoWidget(QObject* object);  // NOLINT(google-explicit-constructor)
    PseudoWidget(QRect rect, QWidget* container, const QString& text, QObject* object, const QString& className,
                 PseudoWidgetProperties properties);

    PseudoWidget& operator=(QWidget* widget);
    PseudoWidget& operator=(QLayout* layout);
    PseudoWidget& operator=(QObject* object);
    void clear();

    bool isWidget() const;
    bool isLayout() const;
    bool isObject() const;
    bool isPhantom() const { return m_pPhantom != nullptr; }

    bool isValid() const;
    explicit operator bool() const { return isValid(); }
    bool isNull() const { return !isValid(); }

    QWidget* widget() const;
    QLayout* layout() const;
    QObject* object() const;
    operator QWidget*() const { return widget(); }  // NOLINT(google-explicit-constructor)
    operator QLayout*() const { return layout(); }  // NOLINT(google-explicit-constructor)

    const PhantomInfo* phantomInfo() const { return m_pPhantom.get(); }
    QObject* phantomObject() const;
    QWidget* phantomContainer() const;
    PseudoWidgetProperties phantomProperties() const;

    QWidget* widgetOrPhantomContainer() const;
    QObject* objectOrPhantomContainer() const;
    QWidget* parentWidget() const;
    QWidget* window() const;

    QRect geometry() const;
    QRect rect() const { return QRect(QPoint(0, 0), geometry().size()); }
    QSize size() const { return geometry().size(); }
    QString text() const;
    QString objectName() const;
    // The class shown for the item: the phantom's label (or "<container class>::Item" when the label
    // is empty), the meta-object class name of a real object, empty when null.
    QString className() const;

    QPoint mapTo(const QWidget* parent, const QPoint& pos) const;
    QPoint mapToGlobal(const QPoint& pos) const;
    bool isVisible() const;
    void update();

    bool operator==(const PseudoWidget& other) const;
    bool operator!=(const PseudoWidget& other) const { return !(*this == other); }

    // What lies under pos (in top's coordinates).
    static PseudoWidget FromWidgetPoint(QWidget* top, const QPoint& pos);
    // The same for a native window; only widget windows (a QWindow backed by a widget) answer.
    static PseudoWidget FromWindowPoint(QWindow* window, const QPoint& pos);
    // The top-level widget whose native window is window, or null.
    static QWidget* WidgetOfWindow(QWindow* window);

private:
    QPointer<QObject> m_pObject;
    QPointer<QLayout> m_pLayout;
    std::shared_ptr<const PhantomInfo> m_pPhantom;
};

namespace devtools {
namespace spy {

// The deepest visible real widget under pos (in w's coordinates): w itself when no child matches,
// null when w is null, not visible or pos lies outside it (edges count as inside). Windows, hidden
// children, the inspector's own overlays and masked-out parts of children are skipped.
LXUIKIT_EXPORT QWidget* childAtEx(QWidget* w, const QPoint& pos);
// List, table and tree views, tab bars and menus (subclasses included).
LXUIKIT_EXPORT bool IsSpecialWidget(QWidget* w);
// The view that owns a scroll-area viewport (a table's header viewport maps to the table).
LXUIKIT_EXPORT QWidget* GetSpecialWidgetContentParent(QWidget* w);
// The item of a special widget under pos (in w's coordinates), or w itself.
LXUIKIT_EXPORT PseudoWidget FromSpecialWidget(QWidget* w, const QPoint& pos);
LXUIKIT_EXPORT PseudoWidget PseudoWidgetAtQTableView(QTableView* view, const QPoint& pos);
LXUIKIT_EXPORT PseudoWidget PseudoWidgetAtQTabBar(QTabBar* bar, const QPoint& pos);

}  // namespace spy
}  // namespace devtools
