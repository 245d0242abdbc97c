#include <LxUIKit/DevTools/Spy/LxUIDebugView_p.h>

#include <LxUIKit/DevTools/Spy/LxCurrentWidgetHighLightView_p.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QBoxLayout>
#include <QFormLayout>
#include <QGraphicsOpacityEffect>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLayout>
#include <QMetaEnum>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {

QString Label(const QWidget* w) {
    const QString cls = QString::fromLatin1(w->metaObject()->className());
    return w->objectName().isEmpty() ? cls : QStringLiteral("%1 \"%2\"").arg(cls, w->objectName());
}

QString SizeText(const QSize& s) { return QStringLiteral("%1 × %2").arg(s.width()).arg(s.height()); }

QString RectText(const QRect& r) {
    return QStringLiteral("(%1, %2) %3 × %4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

QString MarginsText(const QMargins& m) {
    return QStringLiteral("%1, %2, %3, %4").arg(m.left()).arg(m.top()).arg(m.right()).arg(m.bottom());
}

QString PolicyText(QSizePolicy::Policy p) {
    return QLatin1String(QMetaEnum::fromType<QSizePolicy::Policy>().valueToKey(p));
}

bool ExplicitlyHidden(const QWidget* w) {
    return w->testAttribute(Qt::WA_WState_ExplicitShowHide) && w->testAttribute(Qt::WA_WState_Hidden);
}

// A later visible sibling of `c` (so one stacked above it) whose rectangle contains `area` (in the
// parent's coordinates); null when none.
const QWidget* CoveringSibling(const QWidget* c, const QRect& area) {
    const QWidget* parent = c->parentWidget();
    if (!parent)
        return nullptr;
    const QObjectList& siblings = parent->children();
    const int index = siblings.indexOf(const_cast<QWidget*>(c));
    for (int i = index + 1; i < siblings.size(); ++i) {
        QObject* o = siblings.at(i);
        if (!o->isWidgetType())
            continue;
        auto* s = static_cast<const QWidget*>(o);
        // The inspector's own frames are drawn over what they frame; they hide nothing.
        if (s->isWindow() || s->isHidden() || qobject_cast<const LxWidgetRectView*>(s))
            continue;
        if (s->geometry().contains(area))
            return s;
    }
    return nullptr;
}

// Where the widget sits in its parent's layout, nested layouts included; empty when nowhere.
QString PlaceInLayout(QLayout* layout, const QWidget* w) {
    if (!layout)
        return QString();
    const QString cls = QString::fromLatin1(layout->metaObject()->className());
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem* item = layout->itemAt(i);
        if (!item)
            continue;
        if (item->widget() == w) {
            if (auto* grid = qobject_cast<QGridLayout*>(layout)) {
                int row = 0, column = 0, rowSpan = 0, columnSpan = 0;
                grid->getItemPosition(i, &row, &column, &rowSpan, &columnSpan);
                return QStringLiteral("row %1, column %2 (spanning %3 × %4) of %5")
                    .arg(row)
                    .arg(column)
                    .arg(rowSpan)
                    .arg(columnSpan)
                    .arg(cls);
            }
            if (auto* form = qobject_cast<QFormLayout*>(layout)) {
                int row = 0;
                QFormLayout::ItemRole role = QFormLayout::FieldRole;
                form->getItemPosition(i, &row, &role);
                const char* roles[] = {"label", "field", "spanning"};
                return QStringLiteral("row %1, %2 of %3").arg(row).arg(QLatin1String(roles[role])).arg(cls);
            }
            QString text = QStringLiteral("item %1 of %2 in %3").arg(i).arg(layout->count()).arg(cls);
            if (auto* box = qobject_cast<QBoxLayout*>(layout))
                text += QStringLiteral(", stretch %1").arg(box->stretch(i));
            return text;
        }
        if (QLayout* inner = item->layout()) {
            const QString found = PlaceInLayout(inner, w);
            if (!found.isEmpty())
                return QStringLiteral("%1, nested as item %2 of %3").arg(found).arg(i).arg(cls);
        }
    }
    return QString();
}

QString Yes(bool b) { return b ? QStringLiteral("yes") : QStringLiteral("no"); }

void Row(QString& html, const QString& name, const QString& value) {
    html += QStringLiteral("<tr><td><b>%1</b></td><td>%2</td></tr>").arg(name.toHtmlEscaped(), value.toHtmlEscaped());
}

}  // namespace

LxUIDebugView::LxUIDebugView(QWidget* parent) : QWidget(parent) {
    m_pRefresh = new QPushButton(QStringLiteral("Refresh"), this);
    m_pRefresh->setToolTip(QStringLiteral("Read the selected widget again"));
    m_pText = new QTextBrowser(this);
    auto* v = new QVBoxLayout(this);
    v->setContentsMargins(0, 0, 0, 0);
    auto* top = new QHBoxLayout;
    top->addWidget(m_pRefresh);
    top->addStretch(1);
    v->addLayout(top);
    v->addWidget(m_pText, 1);
    LXUIKIT_SAFE_CONNECT(m_pRefresh.data(), &QPushButton::clicked, this, &LxUIDebugView::Refresh);
    OnSelectedPseudoWidgetChanged(SelectedPseudoWidget(), false);
}

void LxUIDebugView::OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool) {
    m_current = pw;
    Refresh();
}

void LxUIDebugView::Refresh() {
    const int scroll = m_pText->verticalScrollBar() ? m_pText->verticalScrollBar()->value() : 0;
    m_pText->setHtml(ReportHtml(m_current));
    if (m_pText->verticalScrollBar())
        m_pText->verticalScrollBar()->setValue(scroll);
}

QStringList LxUIDebugView::NotVisibleReasons(const QWidget* w) {
    QStringList out;
    if (!w)
        return out;
    if (w->isHidden()) {
        if (ExplicitlyHidden(w))
            out << QStringLiteral("The widget itself is hidden: hide() or setVisible(false) was called on it.");
        else if (w->isWindow())
            out << QStringLiteral("The window has not been shown yet.");
        else
            out << QStringLiteral(
                "The widget itself is hidden: it was added after its parent was shown, and "
                "show() was never called on it.");
    }
    for (const QWidget* p = w->isWindow() ? nullptr : w->parentWidget(); p;
         p = p->isWindow() ? nullptr : p->parentWidget()) {
        if (p->isHidden()) {
            out << QStringLiteral("Its ancestor %1 is hidden, and so is everything inside it.").arg(Label(p));
            break;
        }
    }
    if (w->window()->isMinimized())
        out << QStringLiteral("Its window %1 is minimized.").arg(Label(w->window()));
    if (w->width() <= 0 || w->height() <= 0) {
        out << QStringLiteral("It has zero size (%1).").arg(SizeText(w->size()));
        return out;  // nothing to clip or cover
    }
    for (const QWidget* p = w; p; p = p->isWindow() ? nullptr : p->parentWidget()) {
        auto* effect = qobject_cast<QGraphicsOpacityEffect*>(p->graphicsEffect());
        if (effect && effect->isEnabled() && qFuzzyIsNull(effect->opacity())) {
            out << (p == w ? QStringLiteral("It is fully transparent: its QGraphicsOpacityEffect has opacity 0.")
                           : QStringLiteral("It is fully transparent: the QGraphicsOpacityEffect of its ancestor %1 "
                                            "has opacity 0.")
                                 .arg(Label(p)));
            break;
        }
    }
    // Walk up, keeping the part of the widget each ancestor still shows.
    QRect area = w->rect();
    bool covered = false;
    for (const QWidget* c = w; !c->isWindow() && c->parentWidget(); c = c->parentWidget()) {
        const QWidget* parent = c->parentWidget();
        const QRect inParent = area.translated(c->pos()) & parent->rect();
        if (inParent.isEmpty()) {
            if (c == w)
                out << QStringLiteral(
                           "It lies outside its parent's rectangle: its geometry is %1, and its parent "
                           "%2 is %3.")
                           .arg(RectText(w->geometry()), Label(parent), SizeText(parent->size()));
            else
                out << QStringLiteral("It lies outside what its ancestor %1 shows: %2 is at %3 in a parent of %4.")
                           .arg(Label(parent), Label(c), RectText(c->geometry()), SizeText(parent->size()));
            break;
        }
        if (!covered) {
            if (const QWidget* s = CoveringSibling(c, inParent)) {
                covered = true;
                out << (c == w ? QStringLiteral("It is fully covered by its sibling %1, which lies above it.")
                                     .arg(Label(s))
                               : QStringLiteral("Its ancestor %1 is fully covered there by its sibling %2.")
                                     .arg(Label(c), Label(s)));
            }
        }
        area = inParent;
    }
    return out;
}

QString LxUIDebugView::ReportHtml(const PseudoWidget& pw) {
    QWidget* w = pw.widgetOrPhantomContainer();
    if (!w)
        return QStringLiteral("<p><i>Select a widget to see its layout and why it is or is not visible.</i></p>");
    QString html = QStringLiteral("<h3>%1</h3>").arg(Label(w).toHtmlEscaped());
    if (pw.isPhantom())
        html += QStringLiteral("<p>%1 \"%2\" at %3 is drawn by this widget; what follows is the widget's.</p>")
                    .arg(pw.className().toHtmlEscaped(), pw.text().toHtmlEscaped(), RectText(pw.geometry()));

    const QStringList reasons = NotVisibleReasons(w);
    if (reasons.isEmpty()) {
        html += QStringLiteral("<p style=\"color:#2e7d32\"><b>It can be seen.</b></p>");
    } else {
        html += QStringLiteral("<p style=\"color:#c62828\"><b>It cannot be seen:</b></p><ul>");
        for (const QString& r : reasons)
            html += QStringLiteral("<li>%1</li>").arg(r.toHtmlEscaped());
        html += QStringLiteral("</ul>");
    }

    html += QStringLiteral("<h4>Layout</h4><table cellspacing=\"0\" cellpadding=\"2\">");
    if (QLayout* l = w->layout()) {
        Row(html, QStringLiteral("own layout"), QString::fromLatin1(l->metaObject()->className()));
        Row(html, QStringLiteral("spacing"), QString::number(l->spacing()));
        Row(html, QStringLiteral("margins"), MarginsText(l->contentsMargins()));
    } else {
        Row(html, QStringLiteral("own layout"), QStringLiteral("none"));
    }
    QString place;
    if (w->isWindow())
        place = QStringLiteral("a window: no parent layout");
    else if (!w->parentWidget()->layout())
        place = QStringLiteral("placed by hand: the parent has no layout");
    else
        place = PlaceInLayout(w->parentWidget()->layout(), w);
    Row(html, QStringLiteral("in parent's layout"),
        place.isEmpty() ? QStringLiteral("not in the parent's layout (placed by hand)") : place);
    html += QStringLiteral("</table>");

    html += QStringLiteral("<h4>Size</h4><table cellspacing=\"0\" cellpadding=\"2\">");
    Row(html, QStringLiteral("geometry"), RectText(w->geometry()));
    Row(html, QStringLiteral("sizeHint"), SizeText(w->sizeHint()));
    Row(html, QStringLiteral("minimumSizeHint"), SizeText(w->minimumSizeHint()));
    Row(html, QStringLiteral("minimumSize"), SizeText(w->minimumSize()));
    Row(html, QStringLiteral("maximumSize"), SizeText(w->maximumSize()));
    const QSizePolicy sp = w->sizePolicy();
    Row(html, QStringLiteral("sizePolicy"),
        QStringLiteral("%1 (stretch %2), %3 (stretch %4)")
            .arg(PolicyText(sp.horizontalPolicy()))
            .arg(sp.horizontalStretch())
            .arg(PolicyText(sp.verticalPolicy()))
            .arg(sp.verticalStretch()));
    html += QStringLiteral("</table>");

    // One entry per widget rather than a wide table: the tab is narrow, and the flags wrap.
    html += QStringLiteral("<h4>Visibility, up to the window</h4><ul>");
    auto flag = [](const char* name, bool on, bool bad) {
        const QString text = QStringLiteral("%1 %2").arg(QLatin1String(name), Yes(on));
        return bad ? QStringLiteral("<span style=\"color:#c62828\"><b>%1</b></span>").arg(text) : text;
    };
    for (const QWidget* p = w; p; p = p->isWindow() ? nullptr : p->parentWidget()) {
        const bool hidden = p->isHidden();
        html += QStringLiteral("<li><b>%1</b> %2<br/>%3 · %4 · %5 · %6</li>")
                    .arg(Label(p).toHtmlEscaped(), RectText(p->geometry()),
                         flag("isVisible", p->isVisible(), !p->isVisible()), flag("isHidden", hidden, hidden),
                         flag("WA_WState_Hidden", p->testAttribute(Qt::WA_WState_Hidden), false),
                         flag("explicitly hidden", ExplicitlyHidden(p), ExplicitlyHidden(p)));
    }
    html += QStringLiteral("</ul>");
    return html;
}
