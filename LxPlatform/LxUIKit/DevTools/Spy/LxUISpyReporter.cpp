#include <LxUIKit/DevTools/Spy/LxUISpyReporter.h>

#include <LxUIKit/LxUIKitLog_p.h>

#include <QWidget>

namespace {

bool g_bReportEnabled = false;

QString NameOrClass(const QObject* o) {
    return o->objectName().isEmpty() ? QStringLiteral("[%1]").arg(QLatin1String(o->metaObject()->className()))
                                     : o->objectName();
}

// The reporter listens as a component for as long as the process runs. The component registry is
// touched first, so that it is built before (and torn down after) the reporter.
ILxUISpyReporter& Reporter() {
    struct Instance : ILxUISpyReporter {};
    (void)ILxUISpyComponent::ComponentCount();
    static Instance s_reporter;
    return s_reporter;
}

}  // namespace

void ILxUISpyReporter::SetEnabled(bool enabled) {
    if (enabled)
        (void)Reporter();
    g_bReportEnabled = enabled;
}

bool ILxUISpyReporter::IsEnabled() { return g_bReportEnabled; }

QString ILxUISpyReporter::ObjectPath(const PseudoWidget& pw) {
    QStringList steps;
    if (const QWidget* w = pw.widgetOrPhantomContainer()) {
        for (const QWidget* p = w; p; p = p->isWindow() ? nullptr : p->parentWidget())
            steps.prepend(NameOrClass(p));
    } else if (const QObject* o = pw.object()) {
        for (const QObject* p = o; p;
             p = (p->isWidgetType() && static_cast<const QWidget*>(p)->isWindow()) ? nullptr : p->parent())
            steps.prepend(NameOrClass(p));
    }
    return steps.join(QLatin1Char('/'));
}

QString ILxUISpyReporter::ReportText(const PseudoWidget& pw, bool clicked) {
    if (!pw.isValid())
        return QString();
    // A phantom's own name is that of the object behind it (a menu's action), if any; its text
    // comes separately below.
    QString name = pw.objectName();
    if (pw.isPhantom())
        name = pw.phantomObject() ? pw.phantomObject()->objectName() : QString();
    QString text =
        QStringLiteral("spy pick (%1): class=%2 objectName=%3 path=%4")
            .arg(clicked ? QStringLiteral("click") : QStringLiteral("select"), pw.className(), name, ObjectPath(pw));
    if (QWidget* window = pw.window()) {
        const QRect r(pw.mapTo(window, QPoint(0, 0)), pw.size());
        text +=
            QStringLiteral(" geometry=(%1, %2 %3x%4) in window").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
    }
    if (pw.isPhantom()) {
        const QWidget* c = pw.phantomContainer();
        text += QStringLiteral(" container=%1#%2 text=\"%3\"")
                    .arg(QLatin1String(c->metaObject()->className()), c->objectName(), pw.text());
    }
    return text;
}

void ILxUISpyReporter::OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool clicked) {
    if (!g_bReportEnabled || !pw.isValid())
        return;
    LX_LOG(::FrameWork::kLogReport, "LxUIKit", "{}", ReportText(pw, clicked));
}
