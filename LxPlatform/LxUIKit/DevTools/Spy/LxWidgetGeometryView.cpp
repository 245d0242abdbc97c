#include <LxUIKit/DevTools/Spy/LxWidgetGeometryView_p.h>

#include <QLayout>
#include <QMetaEnum>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace {
QString R(const QRect& r) {
    return QStringLiteral("(%1, %2) %3 × %4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}
QString S(const QSize& s) { return QStringLiteral("%1 × %2").arg(s.width()).arg(s.height()); }
QString M(const QMargins& m) {
    return QStringLiteral("left %1, top %2, right %3, bottom %4")
        .arg(m.left())
        .arg(m.top())
        .arg(m.right())
        .arg(m.bottom());
}
QString Policy(QSizePolicy::Policy p) {
    return QLatin1String(QMetaEnum::fromType<QSizePolicy::Policy>().valueToKey(p));
}
}  // namespace

LxWidgetGeometryView::LxWidgetGeometryView(QWidget* parent) : QWidget(parent) {
    m_pText = new QTextBrowser(this);
    auto* v = new QVBoxLayout(this);
    v->setContentsMargins(0, 0, 0, 0);
    v->addWidget(m_pText);
    OnSelectedPseudoWidgetChanged(SelectedPseudoWidget(), false);
}

QStringList LxWidgetGeometryView::GeometryLines(const PseudoWidget& pw) {
    QStringList out;
    if (!pw.isValid())
        return out;
    const QRect local = pw.geometry();
    QWidget* window = pw.window();
    out << QStringLiteral("%1: %2").arg(pw.isPhantom() ? QStringLiteral("in container") : QStringLiteral("in parent"),
                                        R(local));
    if (window)
        out << QStringLiteral("in window: %1").arg(R(QRect(pw.mapTo(window, QPoint(0, 0)), local.size())));
    out << QStringLiteral("on screen: %1").arg(R(QRect(pw.mapToGlobal(QPoint(0, 0)), local.size())));
    QWidget* w = pw.widget();
    if (!w)
        return out;
    out << QStringLiteral("contents margins: %1").arg(M(w->contentsMargins()));
    if (QLayout* l = w->layout())
        out << QStringLiteral("layout margins: %1, spacing %2").arg(M(l->contentsMargins())).arg(l->spacing());
    out << QStringLiteral("size hint: %1").arg(S(w->sizeHint()));
    out << QStringLiteral("minimum size hint: %1").arg(S(w->minimumSizeHint()));
    out << QStringLiteral("minimum size: %1").arg(S(w->minimumSize()));
    out << QStringLiteral("maximum size: %1").arg(S(w->maximumSize()));
    const QSizePolicy sp = w->sizePolicy();
    out << QStringLiteral("size policy: %1 (stretch %2), %3 (stretch %4)")
               .arg(Policy(sp.horizontalPolicy()))
               .arg(sp.horizontalStretch())
               .arg(Policy(sp.verticalPolicy()))
               .arg(sp.verticalStretch());
    return out;
}

void LxWidgetGeometryView::OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool) {
    const QStringList lines = GeometryLines(pw);
    QString html;
    for (const QString& l : lines) {
        const int colon = l.indexOf(QLatin1Char(':'));
        html += QStringLiteral("<p><b>%1</b>%2</p>")
                    .arg(l.left(colon + 1).toHtmlEscaped(), l.mid(colon + 1).toHtmlEscaped());
    }
    m_pText->setHtml(html.isEmpty() ? QStringLiteral("<i>Nothing selected</i>") : html);
}
