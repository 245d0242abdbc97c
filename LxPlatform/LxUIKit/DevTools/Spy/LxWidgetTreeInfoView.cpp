#include <LxUIKit/DevTools/Spy/LxWidgetTreeInfoView_p.h>

#include <LxUIKit/DevTools/Spy/LxCurrentWidgetHighLightView_p.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <QVBoxLayout>
#include <functional>

namespace {
QString Label(const QWidget* w) {
    QString s = QString::fromLatin1(w->metaObject()->className());
    if (!w->objectName().isEmpty())
        s += QLatin1Char('#') + w->objectName();
    return s;
}

QString GeometryText(const QRect& r) {
    return QStringLiteral("%1,%2 %3×%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

// The inspector's own windows and overlays are not part of the inspected application.
bool IsSpyWidget(const QWidget* w) {
    if (qobject_cast<const LxWidgetRectView*>(w))
        return true;
    for (const QWidget* p = w; p; p = p->parentWidget()) {
        if (p->inherits("CSpyToolWnd") || p->objectName() == QLatin1String("SpyCopyReviewTip"))
            return true;
    }
    return false;
}
}  // namespace

LxWidgetTreeInfoView::LxWidgetTreeInfoView(QWidget* parent) : QWidget(parent) {
    m_pSearch = new QLineEdit(this);
    m_pSearch->setPlaceholderText(QStringLiteral("Search class or object name"));
    m_pSearch->setClearButtonEnabled(true);
    m_pTree = new QTreeWidget(this);
    m_pTree->setColumnCount(2);
    m_pTree->setHeaderLabels({QStringLiteral("Widget"), QStringLiteral("Geometry")});
    m_pTree->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    auto* v = new QVBoxLayout(this);
    v->setContentsMargins(0, 0, 0, 0);
    v->addWidget(m_pSearch);
    v->addWidget(m_pTree, 1);
    LXUIKIT_SAFE_CONNECT(m_pSearch.data(), &QLineEdit::textChanged, this, &LxWidgetTreeInfoView::ApplySearch);
    LXUIKIT_SAFE_CONNECT(m_pSearch.data(), &QLineEdit::returnPressed, this, [this] {
        for (QTreeWidgetItemIterator it(m_pTree, QTreeWidgetItemIterator::NotHidden); *it; ++it) {
            const QString label = (*it)->text(0);
            if (label.contains(m_pSearch->text(), Qt::CaseInsensitive)) {
                OnItemClicked(*it);
                return;
            }
        }
    });
    LXUIKIT_SAFE_CONNECT(m_pTree.data(), &QTreeWidget::itemClicked, this,
                         [this](QTreeWidgetItem* item) { OnItemClicked(item); });
    Rebuild();
    OnSelectedPseudoWidgetChanged(SelectedPseudoWidget(), false);
}

void LxWidgetTreeInfoView::Rebuild() {
    m_pTree->clear();
    m_items.clear();
    m_guards.clear();
    m_pHoverItem = nullptr;
    m_pPhantomItem = nullptr;
    const QWidgetList tops = QApplication::topLevelWidgets();
    for (QWidget* w : tops) {
        if (w->isVisible() && !IsSpyWidget(w))
            AddWidget(w, nullptr);
    }
    if (!m_pSearch->text().isEmpty())
        ApplySearch(m_pSearch->text());
}

void LxWidgetTreeInfoView::AddWidget(QWidget* w, QTreeWidgetItem* parentItem) {
    if (IsSpyWidget(w))
        return;
    auto* item = parentItem ? new QTreeWidgetItem(parentItem) : new QTreeWidgetItem(m_pTree);
    item->setText(0, Label(w));
    item->setText(1, GeometryText(w->geometry()));
    if (!w->isVisible())
        item->setForeground(0, QColor(0x99, 0x99, 0x99));
    m_items.insert(w, item);
    m_guards.insert(item, w);
    for (QObject* o : w->children()) {
        if (o->isWidgetType() && !static_cast<QWidget*>(o)->isWindow())
            AddWidget(static_cast<QWidget*>(o), item);
    }
}

QTreeWidgetItem* LxWidgetTreeInfoView::Ensure(const QWidget* w) {
    if (!w)
        return nullptr;
    QTreeWidgetItem* item = m_items.value(w);
    if (!item || m_guards.value(item) != w) {
        Rebuild();  // the widget appeared after the last build
        item = m_items.value(w);
    }
    return item;
}

void LxWidgetTreeInfoView::ApplySearch(const QString& text) {
    const QString needle = text.trimmed();
    // Post-order: a row stays visible when it matches or any child row does.
    std::function<bool(QTreeWidgetItem*)> visit = [&](QTreeWidgetItem* item) {
        bool any = needle.isEmpty() || item->text(0).contains(needle, Qt::CaseInsensitive);
        for (int i = 0; i < item->childCount(); ++i)
            any = visit(item->child(i)) || any;
        item->setHidden(!any);
        if (!needle.isEmpty() && any)
            item->setExpanded(true);
        return any;
    };
    for (int i = 0; i < m_pTree->topLevelItemCount(); ++i)
        visit(m_pTree->topLevelItem(i));
}

void LxWidgetTreeInfoView::OnHoveredPseudoWidgetChanged(const PseudoWidget& pw, HoverSource) {
    if (m_pHoverItem)
        m_pHoverItem->setBackground(0, QBrush());
    m_pHoverItem = m_items.value(pw.widgetOrPhantomContainer());
    if (m_pHoverItem)
        m_pHoverItem->setBackground(0, QColor(0x1E, 0x80, 0xFF, 60));
}

void LxWidgetTreeInfoView::OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool) {
    delete m_pPhantomItem;
    m_pPhantomItem = nullptr;
    m_phantom = pw;
    QTreeWidgetItem* item = Ensure(pw.widgetOrPhantomContainer());
    if (!item) {
        m_pTree->setCurrentItem(nullptr);
        return;
    }
    if (pw.isPhantom()) {
        m_pPhantomItem = new QTreeWidgetItem(item);
        m_pPhantomItem->setText(0, QStringLiteral("[%1] %2").arg(pw.className(), pw.text()));
        m_pPhantomItem->setText(1, GeometryText(pw.geometry()));
        m_pPhantomItem->setForeground(0, QColor(0x1E, 0x80, 0xFF));
        item = m_pPhantomItem;
    }
    m_pTree->scrollToItem(item);
    const QSignalBlocker block(m_pTree.data());
    m_pTree->setCurrentItem(item);
}

void LxWidgetTreeInfoView::OnItemClicked(QTreeWidgetItem* item) {
    if (!item)
        return;
    if (item == m_pPhantomItem) {
        NotifySelectedPseudoWidgetChanged(m_phantom, this);
        return;
    }
    QWidget* w = m_guards.value(item);
    if (!w) {
        Rebuild();  // the row stood for a widget that is gone
        return;
    }
    delete m_pPhantomItem;
    m_pPhantomItem = nullptr;
    m_phantom = PseudoWidget(w);
    NotifySelectedPseudoWidgetChanged(m_phantom, this);
    NotifyHoveredPseudoWidgetChanged(m_phantom, HoverSource::View, this);
}
