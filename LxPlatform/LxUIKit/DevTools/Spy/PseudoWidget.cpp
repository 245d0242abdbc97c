#include <LxUIKit/DevTools/Spy/PseudoWidget.h>

#include <LxStdUI/LTabBarBase.h>

#include <QAction>
#include <QApplication>
#include <QHash>
#include <QHeaderView>
#include <QLayout>
#include <QListView>
#include <QMenu>
#include <QRegion>
#include <QTabBar>
#include <QTableView>
#include <QTreeView>
#include <QWidget>
#include <QWindow>

#include <array>

// ---- PseudoWidget ----------------------------------------------------------------------------

PseudoWidget::PseudoWidget(QWidget* widget) : m_pObject(widget) {}
PseudoWidget::PseudoWidget(QLayout* layout) : m_pObject(layout), m_pLayout(layout) {}
PseudoWidget::PseudoWidget(QObject* object) : m_pObject(object) {}

PseudoWidget::PseudoWidget(QRect rect, QWidget* container, const QString& text, QObject* object,
                           const QString& className, PseudoWidgetProperties properties) {
    auto info = std::make_shared<PhantomInfo>();
    info->object = object;
    info->container = container;
    info->rect = rect;
    info->text = text;
    info->className = className;
    info->properties = std::move(properties);
    m_pPhantom = std::move(info);
}

PseudoWidget& PseudoWidget::operator=(QWidget* widget) { return *this = PseudoWidget(widget); }
PseudoWidget& PseudoWidget::operator=(QLayout* layout) { return *this = PseudoWidget(layout); }
PseudoWidget& PseudoWidget::operator=(QObject* object) { return *this = PseudoWidget(object); }

void PseudoWidget::clear() {
    m_pObject.clear();
    m_pLayout.clear();
    m_pPhantom.reset();
}

bool PseudoWidget::isWidget() const { return !isPhantom() && m_pObject && m_pObject->isWidgetType(); }
bool PseudoWidget::isLayout() const { return !isPhantom() && !m_pLayout.isNull(); }
bool PseudoWidget::isObject() const {
    return !isPhantom() && m_pObject && !m_pObject->isWidgetType() && m_pLayout.isNull();
}

bool PseudoWidget::isValid() const { return isPhantom() ? !m_pPhantom->container.isNull() : !m_pObject.isNull(); }

QWidget* PseudoWidget::widget() const { return isWidget() ? static_cast<QWidget*>(m_pObject.data()) : nullptr; }
QLayout* PseudoWidget::layout() const { return isLayout() ? m_pLayout.data() : nullptr; }
QObject* PseudoWidget::object() const { return isPhantom() ? nullptr : m_pObject.data(); }

QObject* PseudoWidget::phantomObject() const { return isPhantom() ? m_pPhantom->object.data() : nullptr; }
QWidget* PseudoWidget::phantomContainer() const { return isPhantom() ? m_pPhantom->container.data() : nullptr; }
PseudoWidgetProperties PseudoWidget::phantomProperties() const {
    return isPhantom() ? m_pPhantom->properties : PseudoWidgetProperties();
}

QWidget* PseudoWidget::widgetOrPhantomContainer() const { return isPhantom() ? phantomContainer() : widget(); }

QObject* PseudoWidget::objectOrPhantomContainer() const {
    return isPhantom() ? static_cast<QObject*>(phantomContainer()) : m_pObject.data();
}

QWidget* PseudoWidget::parentWidget() const {
    if (isPhantom())
        return phantomContainer() ? phantomContainer()->parentWidget() : nullptr;
    if (QWidget* w = widget())
        return w->parentWidget();
    if (QLayout* l = layout())
        return l->parentWidget();
    return nullptr;
}

QWidget* PseudoWidget::window() const {
    if (QWidget* w = widgetOrPhantomContainer())
        return w->window();
    if (QLayout* l = layout())
        return l->parentWidget() ? l->parentWidget()->window() : nullptr;
    return nullptr;
}

QRect PseudoWidget::geometry() const {
    if (isPhantom())
        return m_pPhantom->rect;
    if (QWidget* w = widget())
        return w->geometry();
    if (QLayout* l = layout())
        return l->geometry();
    return QRect();
}

QString PseudoWidget::text() const { return isPhantom() ? m_pPhantom->text : objectName(); }

QString PseudoWidget::objectName() const {
    if (isPhantom())
        return m_pPhantom->text;
    return m_pObject ? m_pObject->objectName() : QString();
}

QString PseudoWidget::className() const {
    if (isPhantom()) {
        if (!m_pPhantom->className.isEmpty())
            return m_pPhantom->className;
        return m_pPhantom->container
                   ? QString::fromLatin1(m_pPhantom->container->metaObject()->className()) + QStringLiteral("::Item")
                   : QString();
    }
    return m_pObject ? QString::fromLatin1(m_pObject->metaObject()->className()) : QString();
}

QPoint PseudoWidget::mapTo(const QWidget* parent, const QPoint& pos) const {
    if (isPhantom()) {
        QWidget* c = phantomContainer();
        return c ? c->mapTo(parent, pos + m_pPhantom->rect.topLeft()) : pos;
    }
    if (QWidget* w = widget())
        return w->mapTo(parent, pos);
    if (QLayout* l = layout())
        return l->parentWidget() ? l->parentWidget()->mapTo(parent, pos + l->geometry().topLeft()) : pos;
    return pos;
}

QPoint PseudoWidget::mapToGlobal(const QPoint& pos) const {
    if (isPhantom()) {
        QWidget* c = phantomContainer();
        return c ? c->mapToGlobal(pos + m_pPhantom->rect.topLeft()) : pos;
    }
    if (QWidget* w = widget())
        return w->mapToGlobal(pos);
    if (QLayout* l = layout())
        return l->parentWidget() ? l->parentWidget()->mapToGlobal(pos + l->geometry().topLeft()) : pos;
    return pos;
}

bool PseudoWidget::isVisible() const {
    if (QWidget* w = widgetOrPhantomContainer())
        return w->isVisible();
    if (QLayout* l = layout())
        return l->parentWidget() && l->parentWidget()->isVisible();
    return false;
}

void PseudoWidget::update() {
    if (isPhantom()) {
        if (QWidget* c = phantomContainer())
            c->update(m_pPhantom->rect);
        return;
    }
    if (QWidget* w = widget())
        w->update();
    else if (QLayout* l = layout())
        l->update();
}

bool PseudoWidget::operator==(const PseudoWidget& other) const {
    if (isPhantom() != other.isPhantom())
        return false;
    if (!isPhantom())
        return m_pObject.data() == other.m_pObject.data() && m_pLayout.data() == other.m_pLayout.data();
    if (m_pPhantom == other.m_pPhantom)
        return true;
    const PhantomInfo& a = *m_pPhantom;
    const PhantomInfo& b = *other.m_pPhantom;
    return a.container.data() == b.container.data() && a.object.data() == b.object.data() && a.rect == b.rect &&
           a.text == b.text && a.className == b.className;
}

PseudoWidget PseudoWidget::FromWidgetPoint(QWidget* top, const QPoint& pos) {
    using namespace devtools::spy;
    if (!top)
        return PseudoWidget();
    QWidget* c = childAtEx(top, pos);
    if (!c)
        return PseudoWidget(c);
    if (IsSpecialWidget(c))
        return FromSpecialWidget(c, c->mapFrom(top, pos));
    if (QWidget* s = GetSpecialWidgetContentParent(c))
        return FromSpecialWidget(s, s->mapFrom(top, pos));
    return PseudoWidget(c);
}

PseudoWidget PseudoWidget::FromWindowPoint(QWindow* window, const QPoint& pos) {
    // Only a widget's own native window leads to a widget; it is found among the top-level widgets
    // through public API.
    QWidget* top = WidgetOfWindow(window);
    return top ? FromWidgetPoint(top, pos) : PseudoWidget();
}

QWidget* PseudoWidget::WidgetOfWindow(QWindow* window) {
    if (!window)
        return nullptr;
    const QWidgetList tops = QApplication::topLevelWidgets();
    for (QWidget* w : tops) {
        if (w->windowHandle() == window)
            return w;
    }
    return nullptr;
}

// ---- hit testing -----------------------------------------------------------------------------

namespace devtools {
namespace spy {
namespace {

// The inspector's own overlays and the panel mask: never picked. Built once.
const std::array<const char*, 3>& IgnoredClasses() {
    static const std::array<const char*, 3> s_ignored = {"LxWidgetRectView", "CLxPanelBoxMask",
                                                         "LxCurrentWidgetHighLightView"};
    return s_ignored;
}

bool IsIgnored(QObject* o) {
    // The answer depends on the class only: remember it per meta-object, so the hot path is one
    // pointer comparison for the common case of the same class as last time.
    static const QMetaObject* s_lastMeta = nullptr;
    static bool s_lastIgnored = false;
    static QHash<const QMetaObject*, bool> s_known;
    const QMetaObject* mo = o->metaObject();
    if (mo == s_lastMeta)
        return s_lastIgnored;
    auto it = s_known.constFind(mo);
    bool ignored = false;
    if (it != s_known.constEnd()) {
        ignored = it.value();
    } else {
        for (const char* name : IgnoredClasses())
            ignored = ignored || o->qt_metacast(name) != nullptr;
        s_known.insert(mo, ignored);
    }
    s_lastMeta = mo;
    s_lastIgnored = ignored;
    return ignored;
}

PseudoWidgetProperties MakeProps(std::initializer_list<std::pair<QString, QVariant>> items) {
    auto map = QSharedPointer<QMap<QString, QVariant>>::create();
    for (const auto& kv : items)
        map->insert(kv.first, kv.second);
    return map;
}

// The viewport point of pos (in view coordinates) and the viewport's offset in the view.
bool ViewportPoint(QAbstractItemView* view, const QPoint& pos, QPoint* vpPos, QPoint* offset) {
    QWidget* vp = view->viewport();
    if (!vp || !view->model())
        return false;
    *offset = vp->mapTo(view, QPoint(0, 0));
    *vpPos = pos - *offset;
    return vp->rect().contains(*vpPos);
}

PseudoWidget AtMenu(QMenu* menu, const QPoint& pos) {
    const QList<QAction*> actions = menu->actions();
    for (int i = 0; i < actions.size(); ++i) {
        QAction* a = actions[i];
        const QRect r = menu->actionGeometry(a);
        if (!r.contains(pos))
            continue;
        if (a->isSeparator())
            break;  // a separator is part of the menu's frame, not an item
        return PseudoWidget(r, menu, a->text(), a, QString(),
                            MakeProps({{QStringLiteral("index"), i},
                                       {QStringLiteral("checkable"), a->isCheckable()},
                                       {QStringLiteral("checked"), a->isChecked()},
                                       {QStringLiteral("enabled"), a->isEnabled()},
                                       {QStringLiteral("shortcut"), a->shortcut().toString()}}));
    }
    return PseudoWidget(menu);
}

PseudoWidget AtItemView(QAbstractItemView* view, const QPoint& pos, bool withLevel) {
    QPoint vpPos;
    QPoint offset;
    if (!ViewportPoint(view, pos, &vpPos, &offset))
        return PseudoWidget(static_cast<QWidget*>(view));
    // indexAt looks only at the laid-out, visible items, so the cost does not grow with the model.
    const QModelIndex index = view->indexAt(vpPos);
    if (!index.isValid())
        return PseudoWidget(static_cast<QWidget*>(view));
    const QRect r = view->visualRect(index);
    if (!r.contains(vpPos))
        return PseudoWidget(static_cast<QWidget*>(view));
    QMap<QString, QVariant> props{{QStringLiteral("row"), index.row()}, {QStringLiteral("column"), index.column()}};
    if (withLevel) {
        int level = 0;
        for (QModelIndex p = index.parent(); p.isValid(); p = p.parent())
            ++level;
        props.insert(QStringLiteral("level"), level);
    }
    return PseudoWidget(r.translated(offset), view, index.data(Qt::DisplayRole).toString(), nullptr, QString(),
                        QSharedPointer<const QMap<QString, QVariant>>::create(props));
}

// The header cell under pos (in view coordinates), or a null PseudoWidget.
PseudoWidget AtHeader(QTableView* view, QHeaderView* header, const QPoint& pos) {
    if (!header || header->isHidden() || !header->viewport())
        return PseudoWidget();
    QWidget* hvp = header->viewport();
    const QPoint hp = hvp->mapFrom(view, pos);
    if (!hvp->rect().contains(hp))
        return PseudoWidget();
    const bool horizontal = header->orientation() == Qt::Horizontal;
    // logicalIndexAt skips hidden sections and mirrors positions for right-to-left layouts.
    const int section = header->logicalIndexAt(horizontal ? hp.x() : hp.y());
    if (section < 0 || header->isSectionHidden(section) || (!horizontal && view->isRowHidden(section)))
        return PseudoWidget();
    const int start = header->sectionViewportPosition(section);
    const int size = header->sectionSize(section);
    const QRect cell = horizontal ? QRect(start, 0, size, hvp->height()) : QRect(0, start, hvp->width(), size);
    const QRect inView(hvp->mapTo(view, cell.topLeft()), cell.size());
    if (!inView.contains(pos))
        return PseudoWidget();
    const QString text = view->model()->headerData(section, header->orientation(), Qt::DisplayRole).toString();
    return PseudoWidget(inView, view, text, nullptr, QString::fromLatin1(header->metaObject()->className()),
                        MakeProps({{QStringLiteral("section"), section},
                                   {QStringLiteral("orientation"),
                                    horizontal ? QStringLiteral("horizontal") : QStringLiteral("vertical")}}));
}

}  // namespace

QWidget* childAtEx(QWidget* w, const QPoint& pos) {
    if (!w || !w->testAttribute(Qt::WA_WState_Visible))
        return nullptr;
    // Inclusive of the right and bottom edges, unlike QRect::contains on rect().
    if (pos.x() < 0 || pos.y() < 0 || pos.x() > w->width() || pos.y() > w->height())
        return nullptr;
    const QObjectList& children = w->children();
    for (int i = children.size() - 1; i >= 0; --i) {
        QObject* o = children.at(i);
        if (!o->isWidgetType())
            continue;
        auto* child = static_cast<QWidget*>(o);
        if (child->isWindow() || child->testAttribute(Qt::WA_WState_Hidden))
            continue;
        const QPoint p = pos - child->pos();
        if (!child->rect().contains(p))
            continue;
        if (IsIgnored(child))
            continue;
        const QRegion mask = child->mask();
        if (!mask.isEmpty() && !mask.contains(p))
            continue;
        QWidget* deeper = childAtEx(child, p);
        return deeper ? deeper : child;
    }
    return w;
}

bool IsSpecialWidget(QWidget* w) {
    return qobject_cast<QListView*>(w) || qobject_cast<QTableView*>(w) || qobject_cast<QTreeView*>(w) ||
           qobject_cast<QTabBar*>(w) || qobject_cast<QMenu*>(w);
}

QWidget* GetSpecialWidgetContentParent(QWidget* w) {
    if (!w || w->objectName() != QLatin1String("qt_scrollarea_viewport"))
        return nullptr;
    QWidget* p = w->parentWidget();
    if (IsSpecialWidget(p))
        return p;
    if (auto* header = qobject_cast<QHeaderView*>(p)) {
        if (auto* table = qobject_cast<QTableView*>(header->parentWidget()))
            return table;
    }
    return nullptr;
}

PseudoWidget FromSpecialWidget(QWidget* w, const QPoint& pos) {
    if (auto* list = qobject_cast<QListView*>(w))
        return AtItemView(list, pos, false);
    if (auto* table = qobject_cast<QTableView*>(w))
        return PseudoWidgetAtQTableView(table, pos);
    if (auto* tree = qobject_cast<QTreeView*>(w))
        return AtItemView(tree, pos, true);
    if (auto* bar = qobject_cast<QTabBar*>(w))
        return PseudoWidgetAtQTabBar(bar, pos);
    if (auto* menu = qobject_cast<QMenu*>(w))
        return AtMenu(menu, pos);
    return PseudoWidget(w);
}

PseudoWidget PseudoWidgetAtQTableView(QTableView* view, const QPoint& pos) {
    if (!view || !view->viewport() || !view->model())
        return PseudoWidget(static_cast<QWidget*>(view));
    PseudoWidget cell = AtHeader(view, view->horizontalHeader(), pos);
    if (!cell)
        cell = AtHeader(view, view->verticalHeader(), pos);
    if (cell)
        return cell;
    return AtItemView(view, pos, false);
}

PseudoWidget PseudoWidgetAtQTabBar(QTabBar* bar, const QPoint& pos) {
    if (!bar)
        return PseudoWidget(static_cast<QWidget*>(bar));
    auto* lbar = qobject_cast<LTabBarBase*>(bar);
    for (int i = 0; i < bar->count(); ++i) {
        const QRect r = bar->tabRect(i);
        if (!r.contains(pos))
            continue;
        auto props = QSharedPointer<QMap<QString, QVariant>>::create();
        props->insert(QStringLiteral("index"), i);
        QString className;
        if (lbar) {
            props->insert(QStringLiteral("tabID"), lbar->tabID(i));
            props->insert(QStringLiteral("isTabFixed"), lbar->isTabFixed(i));
            props->insert(QStringLiteral("tabTip"), lbar->tabTip(i));
            props->insert(QStringLiteral("isMenuButtonVisible"), lbar->isMenuButtonVisible(i));
            props->insert(QStringLiteral("isCloseButtonVisible"), lbar->isCloseButtonVisible(i));
            className = lbar->tabObjectName(i);
        }
        props->insert(QStringLiteral("isTabVisible"), bar->isTabVisible(i));
        return PseudoWidget(r, bar, bar->tabText(i), nullptr, className, props);
    }
    return PseudoWidget(static_cast<QWidget*>(bar));
}

}  // namespace spy
}  // namespace devtools
