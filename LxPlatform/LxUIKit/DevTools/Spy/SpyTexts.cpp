#include <LxUIKit/DevTools/Spy/SpyTexts_p.h>

#include <QAbstractItemView>
#include <QAction>
#include <QMenu>
#include <QTabBar>
#include <QVariant>
#include <QWidget>

namespace devtools {
namespace spy {

QString WidgetDisplayText(const QWidget* w) {
    if (!w)
        return QString();
    for (const char* name : {"text", "title", "plainText", "placeholderText", "currentText"}) {
        const QVariant v = w->property(name);
        if (v.isValid() && !v.toString().isEmpty())
            return v.toString();
    }
    return w->isWindow() ? w->windowTitle() : QString();
}

QStringList CopyReviewTexts(const PseudoWidget& pw) {
    QStringList out;
    auto add = [&out](const QString& t) {
        if (!t.trimmed().isEmpty() && out.size() < kMaxCopyReviewTexts)
            out << t;
    };
    if (!pw.isValid())
        return out;
    if (!pw.isPhantom()) {
        QWidget* w = pw.widget();
        out << WidgetDisplayText(w);
        if (QWidget* parent = w ? w->parentWidget() : nullptr) {
            for (QObject* o : parent->children()) {
                if (o != w && o->isWidgetType() && !static_cast<QWidget*>(o)->isHidden())
                    add(WidgetDisplayText(static_cast<QWidget*>(o)));
            }
        }
        return out;
    }
    out << pw.text();
    QWidget* c = pw.phantomContainer();
    if (auto* bar = qobject_cast<QTabBar*>(c)) {
        for (int i = 0; i < bar->count(); ++i) {
            if (bar->tabRect(i) != pw.geometry())
                add(bar->tabText(i));
        }
    } else if (auto* menu = qobject_cast<QMenu*>(c)) {
        const auto actions = menu->actions();
        for (QAction* a : actions) {
            if (a != pw.phantomObject() && !a->isSeparator())
                add(a->text());
        }
    } else if (auto* view = qobject_cast<QAbstractItemView*>(c)) {
        const QPoint vp = view->viewport()->mapFrom(view, pw.geometry().center());
        const QModelIndex index = view->indexAt(vp);
        for (int d = 1; d <= 3 && index.isValid(); ++d) {
            for (int row : {index.row() - d, index.row() + d}) {
                const QModelIndex s = index.sibling(row, index.column());
                if (s.isValid())
                    add(s.data(Qt::DisplayRole).toString());
            }
        }
    }
    return out;
}

}  // namespace spy
}  // namespace devtools
